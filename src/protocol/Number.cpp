#include "protocol/Number.h"

#include "platform/RuntimeError.h"
#include "protocol/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace vorn
{

namespace
{

/// Characters of `text` from `start` on that make up a decimal number: one sign, digits, one point.
std::string_view NumberAt(std::string_view text, std::size_t start)
{
    std::size_t end = start;
    if (end < text.size() && IsSign(text[end]))
        ++end;
    bool point = false;
    while (end < text.size() && (IsDigit(text[end]) || (text[end] == '.' && !point))) {
        point = point || text[end] == '.';
        ++end;
    }
    return text.substr(start, end - start);
}

double ValueOf(std::string_view number)
{
    const bool negative = !number.empty() && number.front() == '-';
    if (!number.empty() && IsSign(number.front()))
        number.remove_prefix(1);
    double value = 0;
    const auto read =
        std::from_chars(number.data(), number.data() + number.size(), value, std::chars_format::fixed);
    const bool whole = number.substr(0, number.find('.')).find_first_not_of('0') != std::string_view::npos;
    if (read.ec == std::errc::result_out_of_range && whole)
        value = std::numeric_limits<double>::max();
    return negative ? -value : value;
}

template <class Integer>
Integer StrictInteger(std::string_view text)
{
    const double value = CDbl(text);
    constexpr double Lowest = std::numeric_limits<Integer>::min();
    constexpr double Highest = std::numeric_limits<Integer>::max();
    if (!(value >= Lowest - 0.5 && value <= Highest + 0.5))
        throw RuntimeError(RuntimeErrorNumber::Overflow);
    const std::int64_t rounded = RoundHalfEven(value);
    if (rounded < std::numeric_limits<Integer>::min() || rounded > std::numeric_limits<Integer>::max())
        throw RuntimeError(RuntimeErrorNumber::Overflow);
    return static_cast<Integer>(rounded);
}

std::string ShortestText(double value, int significantDigits)
{
    if (value == 0 || !std::isfinite(value))
        return "0";
    // The scientific form rounds to the digits wanted; the text is set from its digits and its exponent.
    std::array<char, 64> buffer{};
    const char *end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::scientific, significantDigits - 1)
                          .ptr;
    std::string_view form(buffer.data(), end);
    std::string sign;
    if (form.front() == '-') {
        sign = "-";
        form.remove_prefix(1);
    }
    const std::size_t mark = form.find('e');
    const std::size_t exponentAt = mark + (form[mark + 1] == '+' ? 2 : 1);
    int exponent = 0;
    std::from_chars(form.data() + exponentAt, form.data() + form.size(), exponent);

    std::string digits(form.substr(0, 1));
    digits += form.substr(2, mark - 2);
    digits.erase(digits.find_last_not_of('0') + 1);
    const int inFrontOfPoint = exponent + 1;
    if (inFrontOfPoint <= 0)
        return sign + "0." + std::string(static_cast<std::size_t>(-inFrontOfPoint), '0') + digits;
    const auto integerDigits = static_cast<std::size_t>(inFrontOfPoint);
    if (digits.size() <= integerDigits)
        return sign + PadRight(std::move(digits), integerDigits, '0');
    return sign + digits.insert(integerDigits, 1, '.');
}

} // namespace

double Val(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(' ');
    return start == std::string_view::npos ? 0 : ValueOf(NumberAt(text, start));
}

double HexVal(std::string_view text)
{
    double value = 0;
    for (const char c : text) {
        const int digit = HexDigitValue(c);
        if (digit < 0)
            break;
        value = value * 16 + digit;
    }
    return std::min(value, std::numeric_limits<double>::max());
}

double CDbl(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(' ');
    if (start == std::string_view::npos)
        throw RuntimeError(RuntimeErrorNumber::TypeMismatch);
    const std::string_view whole = text.substr(start, text.find_last_not_of(' ') + 1 - start);
    const bool digits = whole.find_first_of("0123456789") != std::string_view::npos;
    if (!digits || NumberAt(whole, 0).size() != whole.size())
        throw RuntimeError(RuntimeErrorNumber::TypeMismatch);
    return ValueOf(whole);
}

std::int32_t CLng(std::string_view text)
{
    return StrictInteger<std::int32_t>(text);
}

std::int16_t CInt(std::string_view text)
{
    return StrictInteger<std::int16_t>(text);
}

std::int64_t RoundHalfEven(double value)
{
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr double Beyond = 9223372036854775808.0; // 2 to the power 63, the first value that doesn't fit
    if (value >= Beyond)
        return Limits::max();
    if (value < -Beyond)
        return Limits::min();
    const double below = std::floor(value);
    const double part = value - below;
    const bool up = part > 0.5 || (part == 0.5 && std::fmod(below, 2) != 0);
    return static_cast<std::int64_t>(below) + (up ? 1 : 0);
}

float ToSingle(double value)
{
    constexpr double Largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -Largest, Largest));
}

std::string Hex(std::uint32_t value)
{
    std::string text;
    do {
        text.insert(text.begin(), "0123456789ABCDEF"[value % 16]);
        value /= 16;
    } while (value != 0);
    return text;
}

std::string HexByte(int value)
{
    return PadLeft(Hex(static_cast<std::uint32_t>(value)), 2, '0');
}

std::string TextOf(double value)
{
    return ShortestText(value, 15);
}

std::string TextOfSingle(float value)
{
    return ShortestText(static_cast<double>(value), 7);
}

} // namespace vorn
