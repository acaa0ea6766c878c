#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

/// Two upper-case hexadecimal characters to eight binary ones, bit 7 first; characters behind them are
/// ignored. A character outside "0" to "9", "A" to "F" repeats the four bits of the one before it, and adds
/// none in first place.
std::string HexToBin(std::string_view hex);

/// Up to eight binary characters to two hexadecimal ones. The argument is filled to eight with "0" in front.
/// Characters other than "0" and "1" give "INPUT ERROR".
std::string BinToHex(std::string &bin);

/// Decimal text to eight hexadecimal characters; a value above the unsigned 32-bit range loses its top.
/// Throws 13 for a text that is no number, 6 below the signed 32-bit range.
std::string DecToHex8(std::string_view text);

/// Eight hexadecimal characters to decimal text, unsigned. Throws 13 for a text that is no hexadecimal
/// number.
std::string Hex8ToDec(std::string_view hex);

/// A value with one decimal as two digits without its point: "2.5" is "25", "0.5" is "05".
std::string DotlessTwoDigit(std::string_view text);

/// A value as seven characters: sign, integer part with at least `digits` digits, fraction part. Above
/// 10^`digits` the sign is "0".
void FormatSigned7(std::string &out, int digits, float value);

/// An output value in the wire form of a data format: "0" engineering units ("05.500"), "1" percent of span
/// ("+005.50"), "2" hexadecimal ("0FF"); any other leaves it alone. The argument is changed; the result is
/// the same text.
std::string FormatOutputValue(std::string &text, char formatDigit);

/// A cold-junction offset in degrees Celsius as it goes out: sign and four hexadecimal digits of 0.009
/// degrees. Nothing for a text that is no number, or one with more counts than `mostCounts`.
std::optional<std::string> ColdJunctionCounts(std::string_view text, int mostCounts);

/// Bit 0 to 7 of eight binary characters: character 8 - bit is "1".
bool Bit(std::string_view bin8, int bit);
/// Sets bit 0 to 7 of eight binary characters; a text that isn't eight long stays as it is.
void SetBit(std::string &bin8, int bit, bool set);
/// Puts a number into the bits from `lowest` on; only bits that it sets change.
void SetNumber(std::string &bin8, int lowest, int number);

} // namespace vorn
