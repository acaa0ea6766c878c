#include "logger/RecordSeries.h"

#include "protocol/Number.h"

#include <cmath>
#include <map>
#include <optional>
#include <utility>

namespace vorn
{

namespace
{

constexpr std::size_t NumberColumn = 0, ChannelColumn = 1, ValueColumn = 2, TimeStampColumn = 3;

std::optional<double> NumberIn(const RecordSheet &sheet, std::size_t row, std::size_t column)
{
    if (column >= sheet.Columns())
        return std::nullopt;
    const SheetCell &cell = sheet.Cell(row, column);
    if (const auto *number = std::get_if<double>(&cell))
        return std::isfinite(*number) ? std::optional(*number) : std::nullopt;
    const std::string text = TextOfCell(cell);
    const bool begins = text.find_first_of("0123456789") <= 1; // behind a sign at most
    return begins ? std::optional(Val(text)) : std::nullopt;
}

std::string CsvField(const std::string &text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + "\"";
}

template <class FieldAt>
std::string CsvLine(std::size_t columns, const FieldAt &fieldAt)
{
    std::string line;
    for (std::size_t column = 0; column < columns; ++column)
        line += (column > 0 ? "," : "") + CsvField(fieldAt(column));
    return line + "\r\n";
}

} // namespace

std::vector<ChannelSeries> SeriesOf(const RecordSheet &sheet, RecordKind kind)
{
    const std::size_t along = kind == RecordKind::Event ? TimeStampColumn : NumberColumn;
    std::map<int, ChannelSeries> lines;
    for (std::size_t row = 0; row < sheet.Rows(); ++row) {
        const auto x = NumberIn(sheet, row, along);
        const auto channel = NumberIn(sheet, row, ChannelColumn);
        const auto y = NumberIn(sheet, row, ValueColumn);
        constexpr double MostChannels = 16; // a record's channel has one hexadecimal digit
        if (!x || !y || !channel || *channel < 0 || *channel >= MostChannels)
            continue;
        ChannelSeries &line = lines[static_cast<int>(*channel)];
        line.channel = static_cast<int>(*channel);
        line.x.push_back(*x);
        line.y.push_back(*y);
    }
    std::vector<ChannelSeries> series;
    series.reserve(lines.size());
    for (auto &[channel, line] : lines)
        series.push_back(std::move(line));
    return series;
}

std::string CsvText(const RecordSheet &sheet)
{
    std::string text =
        CsvLine(sheet.Columns(), [&sheet](std::size_t column) { return sheet.Titles()[column]; });
    for (std::size_t row = 0; row < sheet.Rows(); ++row)
        text += CsvLine(sheet.Columns(),
                        [&sheet, row](std::size_t column) { return TextOfCell(sheet.Cell(row, column)); });
    return text;
}

} // namespace vorn
