#include "logger/SheetText.h"

#include "protocol/Number.h"

#include <charconv>
#include <cstddef>
#include <utility>

namespace vorn
{

namespace
{

constexpr std::string_view End = ".";

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '\\')
            escaped += "\\\\";
        else if (c == '\n')
            escaped += "\\n";
        else
            escaped += c;
    }
    return escaped;
}

std::string Unescaped(std::string_view text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size())
            plain += text[i];
        else
            plain += text[++i] == 'n' ? '\n' : text[i];
    }
    return plain;
}

std::string LineOf(const SheetCell &cell)
{
    if (const auto *number = std::get_if<double>(&cell))
        return "n" + TextOf(*number) + "\n";
    if (const auto *text = std::get_if<std::string>(&cell))
        return "t" + Escaped(*text) + "\n";
    return "e\n";
}

[[noreturn]] void Refuse()
{
    throw WorkbookError("The file is no workbook, or is damaged");
}

template <class Number>
Number NumberOf(std::string_view text)
{
    Number number{};
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc() || end != text.data() + text.size())
        Refuse();
    return number;
}

SheetCell CellOfLine(std::string_view line)
{
    const std::string_view value = line.substr(1);
    switch (line.front()) {
    case 'n':
        return NumberOf<double>(value);
    case 't':
        return Unescaped(value);
    case 'e':
        return {};
    default:
        Refuse();
    }
}

/// Takes the next line off a text.
std::string_view NextLine(std::string_view &text)
{
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos || end == 0)
        Refuse();
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    return line;
}

} // namespace

std::string SheetText(const RecordSheet &sheet)
{
    std::string text = std::to_string(sheet.Columns()) + "\n";
    for (const std::string &title : sheet.Titles())
        text += LineOf(title);
    for (std::size_t row = 0; row < sheet.Rows(); ++row) {
        for (std::size_t column = 0; column < sheet.Columns(); ++column)
            text += LineOf(sheet.Cell(row, column));
    }
    return text + std::string(End) + "\n";
}

RecordSheet ParseSheetText(std::string_view text)
{
    const auto columns = NumberOf<unsigned>(NextLine(text));
    std::vector<std::string> titles;
    while (titles.size() < columns)
        titles.push_back(TextOfCell(CellOfLine(NextLine(text))));
    std::vector<SheetCell> cells;
    for (std::string_view line = NextLine(text); line != End; line = NextLine(text))
        cells.push_back(CellOfLine(line));
    if (columns == 0 ? !cells.empty() : cells.size() % columns != 0)
        Refuse();
    return {std::move(titles), std::move(cells)};
}

} // namespace vorn
