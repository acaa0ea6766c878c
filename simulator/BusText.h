#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornsim
{

/// The end of every line on the bus.
inline constexpr char Return = '\r';

bool IsHex(char c);     ///< "0" to "9", "A" to "F"; modules take no small letters
bool IsDecimal(char c); ///< "0" to "9"

/// The lowest digits of a value as upper-case hexadecimal text, with zeros in front.
std::string Hex(unsigned long long value, int digits);
/// Decimal text with zeros in front.
std::string Decimal(unsigned long long value, int digits);

/// The value of a text of upper-case hexadecimal digits, at most eight; nothing for any other text.
std::optional<unsigned> ReadHex(std::string_view text);
/// The value of a text of decimal digits up to 4294967295; nothing for any other text.
std::optional<unsigned> ReadDecimal(std::string_view text);
/// The value of a decimal number with or without sign and point; nothing for any other text.
std::optional<double> ReadNumber(std::string_view text);

/// The two characters behind a line of a module with checksum: the low byte of the sum of its characters.
std::string Checksum(std::string_view line);
/// The line without its two checksum characters, nothing when they are missing or wrong.
std::optional<std::string_view> WithoutChecksum(std::string_view line);

std::vector<std::string> Split(std::string_view text, char separator);

/// Readable form of bus bytes: `\r`, `\n`, `\\` and `\x80` for what doesn't print.
std::string Escape(std::string_view bytes);
/// The bytes of such a text; nothing when an escape is broken.
std::optional<std::string> Unescape(std::string_view text);

} // namespace vornsim
