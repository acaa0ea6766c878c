#pragma once

#include "logger/LoggerRecord.h"
#include "logger/RecordWorkbook.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <variant>
#include <vector>

namespace vorn
{

/// What a cell of a sheet holds; a program that the workbook went through may have put anything into it.
using SheetCell = std::variant<std::monostate, double, std::string>;

/// Text of a cell as it is shown and exported.
std::string TextOfCell(const SheetCell &cell);

/// A sheet of a workbook, read as a whole: its titles and the rows below them. Texts are UTF-8.
class RecordSheet final
{
public:
    RecordSheet() = default;
    RecordSheet(std::vector<std::string> titles, std::vector<SheetCell> cells);

    const std::vector<std::string> &Titles() const { return titles_; }
    std::size_t Columns() const { return titles_.size(); }
    std::size_t Rows() const { return titles_.empty() ? 0 : cells_.size() / titles_.size(); }
    const SheetCell &Cell(std::size_t row, std::size_t column) const
    {
        return cells_.at(row * titles_.size() + column);
    }

private:
    std::vector<std::string> titles_;
    std::vector<SheetCell> cells_;
};

/// Reads the sheet of a kind of records. Throws `WorkbookError` for a file that is no workbook, is damaged,
/// or lacks the sheet. Some damages are the end of the process.
RecordSheet ReadRecordSheet(const std::filesystem::path &path, RecordKind kind);

} // namespace vorn
