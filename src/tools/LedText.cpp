#include "tools/LedText.h"

#include "protocol/Text.h"

#include <cstddef>

namespace vorn
{

namespace
{

constexpr std::size_t ValueLength = 7;

bool HasSign(std::string_view model)
{
    return model == "7212D";
}

std::string SignedValue(std::string_view entry)
{
    std::string value(entry);
    if (IsDigit(CharAt(value, 1)))
        value.insert(0, "+0");
    // Behind the sign the display has a half digit, which knows "0" and "1" only.
    if (IsSign(CharAt(value, 1)) && IsDigit(CharAt(value, 2)) && CharAt(value, 2) > '1')
        value.insert(1, "0");
    return Left(PadRight(std::move(value), ValueLength, '0'), ValueLength);
}

std::string UnsignedValue(std::string_view entry)
{
    constexpr std::size_t Length = ValueLength - 1; // digits and point
    std::string value(entry);
    if (value.starts_with('.'))
        value.insert(0, "0");
    value = value.find('.') == std::string::npos ? Left(value, LedDigits) + "." : Left(value, Length);
    return PadRight(std::move(value), Length, '0') + "0";
}

/// Picture in the place of the sign: blank in front of a value that begins "+0".
std::string SignPicture(std::string_view value)
{
    const char sign = CharAt(value, 1);
    if (!IsSign(sign) || value.starts_with("+0"))
        return {};
    return std::string("K") + sign;
}

} // namespace

std::string LedValue(std::string_view model, std::string_view entry)
{
    return HasSign(model) ? SignedValue(entry) : UnsignedValue(entry);
}

std::string DigitPicture(char character)
{
    return IsDigit(character) || character == '.' ? std::string("K") + character : std::string{};
}

std::array<std::string, LedDigits> LedPictures(std::string_view model, std::string_view value)
{
    std::array<std::string, LedDigits> pictures;
    std::size_t picture = 0;
    std::size_t position = 1;
    if (HasSign(model)) {
        pictures[picture++] = SignPicture(value);
        position += IsSign(CharAt(value, 1)) ? 1 : 0;
    }
    while (picture < pictures.size() && position <= value.size()) {
        const char digit = CharAt(value, position++);
        pictures[picture] = DigitPicture(digit);
        if (IsDigit(digit) && CharAt(value, position) == '.') {
            pictures[picture] += '.';
            ++position;
        }
        ++picture;
    }
    return pictures;
}

} // namespace vorn
