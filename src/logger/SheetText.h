#pragma once

#include "logger/RecordSheet.h"

#include <string>
#include <string_view>

namespace vorn
{

// A sheet as a text, for the way from the process that reads workbooks to the program.

/// The number of columns, then a line for each title and each cell: "n" and a number, "t" and a text in which
/// "\" and the line end are escaped, or "e" for an empty one; a "." ends it.
std::string SheetText(const RecordSheet &sheet);

/// The sheet of a text. Throws `WorkbookError` for one that isn't whole.
RecordSheet ParseSheetText(std::string_view text);

} // namespace vorn
