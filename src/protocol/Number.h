#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorn
{

/// Value of the number that a text begins with: leading blanks, one sign, digits, one point. Stops at the
/// first other character; nothing readable gives 0. No exponent, no grouping, whatever the locale. A number
/// beyond the range of the type gives its largest value.
double Val(std::string_view text);

/// Value of the hexadecimal digits that a text begins with; 0 for none. Limited as `Val` is.
double HexVal(std::string_view text);

/// Strict read of a whole decimal text with blanks around it.
/// Throws 13 (type mismatch) for a text that is no number.
double CDbl(std::string_view text);

/// Strict reads, rounded half to even. Throw 13 for a text that is no number, 6 (overflow) beyond the range
/// of the type.
std::int32_t CLng(std::string_view text);
std::int16_t CInt(std::string_view text);

/// Nearest whole number; a half goes to the even neighbour. Beyond the range of the type, its nearest value.
std::int64_t RoundHalfEven(double value);

/// A value with single precision; beyond the range of the type, its nearest value.
float ToSingle(double value);

/// Upper-case hexadecimal text, no padding.
std::string Hex(std::uint32_t value);

/// Two upper-case hexadecimal digits of 0 to 255.
std::string HexByte(int value);

/// Shortest decimal text of a value with up to 15 (`double`) or 7 (`float`) significant digits: "." as point,
/// no exponent, no trailing zeros, one "0" in front of the point of a value below one: "0.8", "-0.5".
std::string TextOf(double value);
std::string TextOfSingle(float value);

} // namespace vorn
