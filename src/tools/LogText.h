#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorn
{

/// The bytes of a log as a view shows them, beginning at a row: carriage return and line feed end a row,
/// together with a carriage return right before them. A carriage return inside an entry ends one as well, and
/// shows by its code, "<0D>"; so does any other control character but the tab, so that nothing that came is
/// hidden. A row without end is broken, since a view is slow with endless ones.
std::u16string ShownText(std::string_view bytes);

/// Where the row ends, so many rows behind `start`; the end of the log if it has fewer.
std::size_t BehindRows(std::string_view log, std::size_t start, int rows);

/// What was typed as bytes. What no byte stands for becomes "?".
std::string BytesOfTyped(std::u16string_view typed);

/// Bytes to drop from the front of a log so that at least `room` bytes get free, up to a row's end if there
/// is one.
std::size_t OldestRows(std::string_view log, std::size_t room);

} // namespace vorn
