#include "tools/LedText.h"

#include "protocol/ModelTable.h"
#include "protocol/Text.h"

#include <cstddef>

namespace vorn
{

namespace
{

constexpr std::size_t ValueLength = 7;

bool HasSign(std::string_view model)
{
    return Has(model, Feature::SignedDisplay);
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

/// Appends the point to a picture whose character has one behind it, and steps over it.
void TakePoint(std::string &picture, std::string_view value, std::size_t &position)
{
    if (CharAt(value, position) != '.')
        return;
    picture += picture.empty() ? "K." : ".";
    ++position;
}

/// The one picture of sign and half digit: "K+1", "K-", blank for "+0". `position` goes on to the character
/// behind them.
std::string SignPicture(std::string_view value, std::size_t &position)
{
    std::string figures;
    if (IsSign(CharAt(value, position)))
        figures = CharAt(value, position++);
    if (const char half = CharAt(value, position); IsDigit(half)) {
        ++position;
        if (half != '0')
            figures += half;
        else if (figures == "+")
            figures.clear();
    }
    std::string picture = figures.empty() ? std::string{} : "K" + figures;
    TakePoint(picture, value, position);
    return picture;
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
    if (HasSign(model))
        pictures[picture++] = SignPicture(value, position);
    while (picture < pictures.size() && position <= value.size()) {
        const char digit = CharAt(value, position++);
        pictures[picture] = DigitPicture(digit);
        if (IsDigit(digit))
            TakePoint(pictures[picture], value, position);
        ++picture;
    }
    return pictures;
}

} // namespace vorn
