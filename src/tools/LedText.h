#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vorn
{

/// Digits of the front display, from left to right.
inline constexpr int LedDigits = 5;

/// An entry as the seven characters that "$AA9" takes. 7212D: sign, "0" or "1", the rest, filled with "0".
/// 7282D and 7282N: digits with a point behind the fifth at the latest, filled with "0".
std::string LedValue(std::string_view model, std::string_view entry);

/// Key of a character's picture: "K0" to "K9", "K."; empty for the blank picture.
std::string DigitPicture(char character);

/// Keys of the five pictures that show a value: on 7212D one that sign and half digit share, "K-1", and four
/// digits, otherwise five digits. A digit with a point behind it is one picture, "K3."; an empty key is the
/// blank picture.
std::array<std::string, LedDigits> LedPictures(std::string_view model, std::string_view value);

} // namespace vorn
