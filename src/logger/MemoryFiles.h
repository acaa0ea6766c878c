#pragma once

#include "logger/RecordSheet.h"

#include <QString>

#include <chrono>
#include <functional>
#include <string_view>

namespace vorn
{

// The logger's files in the program directory.

inline constexpr std::string_view MemoryFileName = "Memory.xls"; ///< receives the records
inline constexpr std::string_view TemplateFileName = "Mem.ory";  ///< the empty workbook that it begins as

/// Full name of the workbook, whether it exists or not.
QString MemoryFilePath();
bool HasMemoryFile();
/// The process that reads workbooks.
struct SheetReader {
    QString program = {}; ///< empty: the one that the program comes with
    std::chrono::milliseconds patience = std::chrono::minutes(1); ///< one that takes longer is ended
};
/// Has another process read the workbooks from now on; `{}` is the program's own.
void SetSheetReader(const SheetReader &reader);

/// A sheet of a workbook, read by a process of its own, which a damaged file may bring down. The windows are
/// served meanwhile. Throws `WorkbookError`.
RecordSheet ReadSheetBeside(const QString &path, RecordKind kind);

/// Puts a copy of the empty workbook in the place of the old one, which stays if that fails, and returns its
/// column titles. Throws `WorkbookError`.
SheetTitles ReplaceMemoryFile();

/// Does work that touches no window beside the window's thread, and serves the windows until it is done.
/// Throws what the work throws.
void DoBeside(const std::function<void()> &work);

/// Tells what is wrong with a file.
void TellFileFault(std::string_view name, std::string_view what, std::string_view reason);

} // namespace vorn
