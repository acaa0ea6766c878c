#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorn
{

/// The bytes of a log as a view shows them, one line below the other: carriage return and line feed end a
/// line, together with a carriage return right before them. Any other control character but the tab is shown
/// by its code, "<0D>", so that nothing that came is hidden.
std::u16string ShownText(std::string_view bytes);

/// What was typed as bytes. What no byte stands for becomes "?".
std::string BytesOfTyped(std::u16string_view typed);

/// Bytes to drop from the front of a log so that at least `room` bytes get free, up to a line's end if there
/// is one.
std::size_t OldestLines(std::string_view log, std::size_t room);

} // namespace vorn
