#include "logger/RecordSheet.h"

#include "protocol/Number.h"

#include <freexl.h>

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

namespace vorn
{

namespace
{

constexpr std::size_t MostColumns = 16; // more than records have; a foreign sheet shows its first ones

std::string ReasonOf(int code)
{
    if (code == FREEXL_FILE_NOT_FOUND)
        return "The file can't be opened";
    return "The file is no workbook, or is damaged (" + std::to_string(code) + ")";
}

/// An open workbook.
class Book final
{
public:
    explicit Book(const std::filesystem::path &path)
    {
        const int code = freexl_open(path.string().c_str(), &handle_);
        if (code == FREEXL_OK && handle_) // of some damages only the missing handle tells
            return;
        if (handle_)
            freexl_close(handle_);
        throw WorkbookError(ReasonOf(code));
    }
    ~Book() { freexl_close(handle_); }
    Book(const Book &) = delete;
    Book &operator=(const Book &) = delete;

    const void *Handle() const { return handle_; }
    void Choose(std::string_view name) const;

private:
    static void Check(int code)
    {
        if (code != FREEXL_OK)
            throw WorkbookError(ReasonOf(code));
    }

    const void *handle_ = nullptr;
};

bool SameName(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return std::ranges::equal(a, b, {}, lower, lower);
}

/// Selects the sheet of a name, whatever its case.
void Book::Choose(std::string_view name) const
{
    unsigned int sheets = 0;
    Check(freexl_get_info(handle_, FREEXL_BIFF_SHEET_COUNT, &sheets));
    for (unsigned int i = 0; i < sheets && i <= 0xFFFF; ++i) {
        const char *found = nullptr;
        const auto sheet = static_cast<unsigned short>(i);
        Check(freexl_get_worksheet_name(handle_, sheet, &found));
        if (found && SameName(found, name)) {
            Check(freexl_select_active_worksheet(handle_, sheet));
            return;
        }
    }
    throw WorkbookError("The workbook has no sheet \"" + std::string(name) + "\"");
}

SheetCell CellOf(const FreeXL_CellValue &value)
{
    switch (value.type) {
    case FREEXL_CELL_INT:
        return static_cast<double>(value.value.int_value);
    case FREEXL_CELL_DOUBLE:
        return value.value.double_value;
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
    case FREEXL_CELL_DATE:
    case FREEXL_CELL_DATETIME:
    case FREEXL_CELL_TIME:
        return value.value.text_value ? SheetCell(std::string(value.value.text_value)) : SheetCell();
    default:
        return {};
    }
}

SheetCell CellAt(const Book &book, unsigned int row, std::size_t column)
{
    FreeXL_CellValue value{};
    if (freexl_get_cell_value(book.Handle(), row, static_cast<unsigned short>(column), &value) != FREEXL_OK)
        return {};
    return CellOf(value);
}

bool IsEmpty(const SheetCell &cell)
{
    return std::holds_alternative<std::monostate>(cell);
}

RecordSheet ReadSheet(const Book &book, RecordKind kind)
{
    constexpr unsigned int MostRows = MostRecords + 1;
    constexpr std::size_t MostText = 64 << 20; // records need a twentieth of it
    const std::string_view name = SheetNames.at(static_cast<std::size_t>(kind));
    book.Choose(name);
    unsigned int rows = 0;
    unsigned short width = 0;
    freexl_worksheet_dimensions(book.Handle(), &rows, &width);
    const std::size_t columns = std::min<std::size_t>(width, MostColumns);
    std::vector<std::string> titles;
    for (std::size_t column = 0; column < columns && rows > 0; ++column)
        titles.push_back(TextOfCell(CellAt(book, 0, column)));

    std::vector<SheetCell> cells;
    std::size_t texts = 0;
    std::size_t used = 0; // room for rows that never came isn't shown
    for (unsigned int row = 1; row < std::min(rows, MostRows); ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            cells.push_back(CellAt(book, row, column));
            if (!IsEmpty(cells.back()))
                used = row;
            if (const auto *text = std::get_if<std::string>(&cells.back()))
                texts += text->size();
        }
        if (texts > MostText) // a foreign sheet may repeat a long text in all of its cells
            throw WorkbookError("The sheet \"" + std::string(name) + "\" is too large to be shown");
    }
    cells.resize(used * columns);
    return {std::move(titles), std::move(cells)};
}

} // namespace

std::string TextOfCell(const SheetCell &cell)
{
    if (const auto *number = std::get_if<double>(&cell))
        return TextOf(*number);
    const auto *text = std::get_if<std::string>(&cell);
    return text ? *text : std::string();
}

RecordSheet::RecordSheet(std::vector<std::string> titles, std::vector<SheetCell> cells)
    : titles_(std::move(titles)), cells_(std::move(cells))
{
}

RecordSheet ReadRecordSheet(const std::filesystem::path &path, RecordKind kind)
{
    return ReadSheet(Book(path), kind);
}

} // namespace vorn
