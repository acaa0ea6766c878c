#pragma once

#include "logger/LoggerRecord.h"
#include "logger/RecordWorkbook.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn
{

// The records of a workbook stream (BIFF8), as bytes.

/// No row takes more bytes, the header of a filling record included.
inline constexpr std::size_t LongestRow = 80;

/// The least that a filling record takes.
inline constexpr std::size_t FillingHeader = 4;

/// What stands in front of the sheets. `begins` are their places in the stream.
std::string Globals(const std::array<std::uint32_t, 2> &begins);
/// The beginning of a sheet of so many rows, its titles included.
std::string SheetHead(const std::vector<std::string> &titles, int rows);
std::string SheetEnd();
/// The cells of a row, counted from 0.
std::string RowCells(int row, const LoggerRecord &record, RecordKind kind);

/// The header of a record that readers pass over, so many bytes in all; nothing for no bytes.
std::string FillingBegin(std::size_t bytes);
/// That record.
std::string Filling(std::size_t bytes);
/// Bytes of a page in front of the filling record that it ends with.
std::size_t RowBytesOf(std::string_view page);

} // namespace vorn
