#include "logger/SheetRecords.h"

#include <algorithm>
#include <bit>
#include <initializer_list>

namespace vorn
{

namespace
{

/// Kinds of records.
namespace Id
{
constexpr unsigned Begin = 0x0809;
constexpr unsigned End = 0x000A;
constexpr unsigned CodePage = 0x0042;
constexpr unsigned Font = 0x0031;
constexpr unsigned CellFormat = 0x00E0;
constexpr unsigned Style = 0x0293;
constexpr unsigned SheetPlace = 0x0085;
constexpr unsigned BookWindow = 0x003D;
constexpr unsigned DefaultColumnWidth = 0x0055;
constexpr unsigned Dimensions = 0x0200;
constexpr unsigned SheetWindow = 0x023E;
constexpr unsigned ShortNumber = 0x027E;
constexpr unsigned LongNumber = 0x0203;
constexpr unsigned Label = 0x0204;
constexpr unsigned Filling = 0x1FFE; // nobody knows it
} // namespace Id

constexpr unsigned Biff8 = 0x0600;
constexpr unsigned OfWorkbook = 0x0005;
constexpr unsigned OfWorksheet = 0x0010;

constexpr int StyleFormats = 15; // that a workbook has before those of its cells
constexpr unsigned PlainCell = StyleFormats;
constexpr unsigned TitleCell = StyleFormats + 1;

/// A record: its kind, the length of its body, and the body's numbers, low byte first.
class Body final
{
public:
    Body()
    {
        constexpr std::size_t LongestCell = 40;
        bytes_.reserve(LongestCell);
        bytes_.append(FillingHeader, '\0');
    }

    Body &Words(std::initializer_list<unsigned> words)
    {
        for (const unsigned word : words)
            Add(word, 2);
        return *this;
    }
    Body &Long(std::uint32_t number) { return Add(number, 4); }
    Body &Number(double number) { return Add(std::bit_cast<std::uint64_t>(number), 8); }
    Body &Bytes(std::initializer_list<unsigned> bytes)
    {
        for (const unsigned byte : bytes)
            Add(byte, 1);
        return *this;
    }
    /// Characters of one byte each.
    Body &Text(std::string_view text)
    {
        bytes_ += '\0';
        bytes_ += text;
        return *this;
    }

    Body &Zeros(std::size_t count)
    {
        bytes_.append(count, '\0');
        return *this;
    }

    /// Ends it.
    std::string Record(unsigned id)
    {
        const std::size_t length = bytes_.size() - FillingHeader;
        Put(0, id);
        Put(2, length);
        return std::move(bytes_);
    }

private:
    Body &Add(std::uint64_t number, int bytes)
    {
        for (int i = 0; i < bytes; ++i)
            bytes_ += static_cast<char>(number >> (8 * i) & 0xFF);
        return *this;
    }
    void Put(std::size_t at, std::size_t word)
    {
        bytes_[at] = static_cast<char>(word & 0xFF);
        bytes_[at + 1] = static_cast<char>(word >> 8 & 0xFF);
    }

    std::string bytes_;
};

std::string BeginOf(unsigned kind)
{
    constexpr unsigned Build = 0x0DBB, Year = 0x07CC;
    return Body().Words({Biff8, kind, Build, Year}).Long(0x41).Long(Biff8 / 0x100).Record(Id::Begin);
}

std::string FontOf(bool bold)
{
    constexpr unsigned Height = 200, Automatic = 0x7FFF; // 10 points
    const unsigned weight = bold ? 700 : 400;
    const std::string_view name = "Arial";
    return Body()
        .Words({Height, 0, Automatic, weight, 0})
        .Bytes({0, 0, 0, 0, static_cast<unsigned>(name.size())})
        .Text(name)
        .Record(Id::Font);
}

/// A format of cells; one of a style, which has no parent, or of cells, which follow style 0.
std::string FormatOf(unsigned font, bool style)
{
    const unsigned parent = style ? 0xFFF5 : 0x0001;
    const unsigned used = style ? 0xF400 : 0x0800;
    return Body().Words({font, 0, parent, 0x0020, used, 0, 0, 0, 0, 0x20C0}).Record(Id::CellFormat);
}

std::string LabelCell(int row, int column, unsigned format, std::string_view text)
{
    return Body()
        .Words({static_cast<unsigned>(row), static_cast<unsigned>(column), format,
                static_cast<unsigned>(text.size())})
        .Text(text)
        .Record(Id::Label);
}

std::string ShortCell(int row, int column, int value)
{
    constexpr unsigned WholeNumber = 2; // in the two lowest bits
    return Body()
        .Words({static_cast<unsigned>(row), static_cast<unsigned>(column), PlainCell})
        .Long(static_cast<std::uint32_t>(value) << 2U | WholeNumber)
        .Record(Id::ShortNumber);
}

std::string LongCell(int row, int column, double value)
{
    return Body()
        .Words({static_cast<unsigned>(row), static_cast<unsigned>(column), PlainCell})
        .Number(value)
        .Record(Id::LongNumber);
}

} // namespace

std::string Globals(const std::array<std::uint32_t, 2> &begins)
{
    constexpr unsigned Unicode = 1200;
    constexpr int Fonts = 5; // font 4 doesn't exist: the fifth is number 5
    std::string bytes = BeginOf(OfWorkbook) + Body().Words({Unicode}).Record(Id::CodePage);
    bytes += Body().Words({0, 0, 0x3000, 0x2000, 0x0038, 0, 0, 1, 600}).Record(Id::BookWindow);
    for (int font = 0; font < Fonts; ++font)
        bytes += FontOf(font == Fonts - 1);
    for (int format = 0; format < StyleFormats; ++format)
        bytes += FormatOf(0, true);
    bytes += FormatOf(0, false) + FormatOf(Fonts, false);
    bytes += Body().Words({0x8000}).Bytes({0, 0xFF}).Record(Id::Style);
    for (std::size_t i = 0; i < begins.size(); ++i) {
        const std::string_view name = SheetNames.at(i);
        bytes += Body()
                     .Long(begins.at(i))
                     .Words({0})
                     .Bytes({static_cast<unsigned>(name.size())})
                     .Text(name)
                     .Record(Id::SheetPlace);
    }
    return bytes + Body().Record(Id::End);
}

std::string SheetHead(const std::vector<std::string> &titles, int rows)
{
    constexpr unsigned ColumnWidth = 12;
    std::string bytes = BeginOf(OfWorksheet);
    bytes += Body().Words({ColumnWidth}).Record(Id::DefaultColumnWidth);
    bytes += Body()
                 .Long(0)
                 .Long(static_cast<std::uint32_t>(rows))
                 .Words({0, static_cast<unsigned>(titles.size()), 0})
                 .Record(Id::Dimensions);
    for (std::size_t i = 0; i < titles.size(); ++i)
        bytes += LabelCell(0, static_cast<int>(i), TitleCell, titles[i]);
    return bytes;
}

std::string SheetEnd()
{
    const std::string window = Body().Words({0x06B6, 0, 0, 0x0040, 0, 0, 0, 0, 0}).Record(Id::SheetWindow);
    return window + Body().Record(Id::End);
}

std::string RowCells(int row, const LoggerRecord &record, RecordKind kind)
{
    std::string cells = ShortCell(row, 0, record.number) + ShortCell(row, 1, record.channel) +
                        LabelCell(row, 2, PlainCell, record.value);
    if (kind == RecordKind::Event)
        cells += LongCell(row, 3, record.timeStamp);
    return cells;
}

std::string FillingBegin(std::size_t bytes)
{
    return Filling(bytes).substr(0, FillingHeader);
}

std::string Filling(std::size_t bytes)
{
    return bytes == 0 ? std::string() : Body().Zeros(bytes - FillingHeader).Record(Id::Filling);
}

std::size_t RowBytesOf(std::string_view page)
{
    const auto word = [page](std::size_t at) {
        return static_cast<unsigned char>(page[at]) + 256U * static_cast<unsigned char>(page[at + 1]);
    };
    std::size_t at = 0;
    while (at + FillingHeader <= page.size() && word(at) != Id::Filling)
        at += FillingHeader + word(at + 2);
    return std::min(at, page.size());
}

} // namespace vorn
