#include "protocol/Conversions.h"

#include "platform/RuntimeError.h"
#include "protocol/Number.h"
#include "protocol/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace vorn
{

namespace
{

constexpr std::string_view HexDigits = "0123456789ABCDEF";
constexpr double LargestSigned = 2147483647;

std::string FourBits(std::size_t value)
{
    std::string bits;
    for (const std::size_t weight : {8U, 4U, 2U, 1U})
        bits += value & weight ? '1' : '0';
    return bits;
}

/// Hexadecimal of a value up to the signed 32-bit range, eight long.
std::string SignedHex8(double value)
{
    const std::int64_t rounded = RoundHalfEven(value);
    if (rounded < std::numeric_limits<std::int32_t>::min())
        throw RuntimeError(RuntimeErrorNumber::Overflow);
    return PadLeft(Hex(static_cast<std::uint32_t>(rounded)), 8, '0');
}

int DigitAt(const std::string &hex, std::size_t index)
{
    return HexDigitValue(hex[index]);
}

/// Sum of three eight-digit numbers; what runs over the top is lost.
std::string AddHex8(const std::string &a, const std::string &b, const std::string &c)
{
    std::string result;
    int carry = 0;
    for (std::size_t i = 8; i-- > 0;) {
        const int sum = carry + DigitAt(a, i) + DigitAt(b, i) + DigitAt(c, i);
        result.insert(result.begin(), HexDigits[static_cast<std::size_t>(sum % 16)]);
        carry = sum / 16;
    }
    return result;
}

double StrictHex(std::string_view hex)
{
    if (hex.empty() || std::any_of(hex.begin(), hex.end(), [](char c) { return HexDigitValue(c) < 0; }))
        throw RuntimeError(RuntimeErrorNumber::TypeMismatch);
    return HexVal(hex);
}

/// Fills a text to `integerDigits` in front of its point and to six characters in all; a text without a point
/// gets one behind. Nothing goes in front of an empty text.
void FillAroundPoint(std::string &text, std::size_t integerDigits)
{
    const std::size_t point = text.find('.');
    if (point == std::string::npos) {
        const std::size_t width = text.empty() ? 0 : integerDigits;
        text = PadLeft(std::move(text), width, '0') + '.';
    } else if (point < integerDigits) {
        text.insert(0, integerDigits - point, '0');
    }
    constexpr std::size_t Width = 6;
    text = PadRight(std::move(text), Width, '0');
}

} // namespace

std::string HexToBin(std::string_view hex)
{
    std::string bits;
    if (hex.empty())
        return bits;
    std::string four;
    for (std::size_t i = 0; i < 2; ++i) {
        const std::size_t value = i < hex.size() ? HexDigits.find(hex[i]) : std::string_view::npos;
        if (value != std::string_view::npos)
            four = FourBits(value);
        bits += four;
    }
    return bits;
}

std::string BinToHex(std::string &bin)
{
    if (bin.empty())
        return {};
    bin = Right("00000000" + bin, 8);
    std::string hex;
    for (const std::size_t start : {0U, 4U}) {
        std::size_t value = 0;
        for (std::size_t i = start; i < start + 4; ++i) {
            if (bin[i] != '0' && bin[i] != '1')
                return "INPUT ERROR";
            value = value * 2 + (bin[i] == '1' ? 1 : 0);
        }
        hex += HexDigits[value];
    }
    return hex;
}

std::string DecToHex8(std::string_view text)
{
    if (text.empty())
        return {};
    const double value = CDbl(text);
    if (value <= LargestSigned)
        return SignedHex8(value);
    const double rest = value - LargestSigned;
    if (rest <= LargestSigned)
        return AddHex8("7FFFFFFF", SignedHex8(rest), "00000000");
    constexpr double Unsigned32 = 4294967296;
    return AddHex8("7FFFFFFF", "7FFFFFFF", SignedHex8(std::fmod(rest - LargestSigned, Unsigned32)));
}

std::string Hex8ToDec(std::string_view hex)
{
    if (hex.empty())
        return {};
    return TextOf(StrictHex(Mid(hex, 1, 7)) * 16 + StrictHex(Mid(hex, 8, 1)));
}

std::string DotlessTwoDigit(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '.')
            result += text[i];
        else if (i == 0)
            result += '0';
    }
    return result.size() == 2 ? result : "0" + result;
}

void FormatSigned7(std::string &out, int digits, float value)
{
    constexpr std::size_t Width = 7;
    constexpr std::size_t PointWithin = 4;
    const std::string text = TextOfSingle(value);
    const std::size_t point = text.find('.');
    const bool hasPoint = point < PointWithin;
    std::string integer = hasPoint ? text.substr(0, point) : text;
    const std::string fraction = hasPoint ? text.substr(point) : ".";

    const char first = CharAt(integer, 1);
    char sign = IsDigit(first) || first == '.' || integer.empty() ? '+' : '-';
    if (!integer.empty() && !IsDigit(first))
        integer.erase(0, 1);
    if (std::abs(Val(integer)) > std::pow(10, digits))
        sign = '0';
    else
        integer = PadLeft(std::move(integer), static_cast<std::size_t>(std::max(digits, 0)), '0');
    out = PadRight(Left(sign + integer + fraction, Width), Width, '0');
}

std::string FormatOutputValue(std::string &text, char formatDigit)
{
    switch (formatDigit) {
    case '0':
        FillAroundPoint(text, 2);
        break;
    case '1':
        FillAroundPoint(text, 3);
        text.insert(0, 1, '+');
        break;
    case '2':
        text = PadLeft(std::move(text), 3, '0');
        break;
    default:
        break;
    }
    return text;
}

std::optional<std::string> ColdJunctionCounts(std::string_view text, int mostCounts)
{
    constexpr double DegreesPerCount = 0.009;
    constexpr std::size_t Digits = 4;
    const bool negative = text.starts_with('-');
    if (!text.empty() && IsSign(text.front()))
        text.remove_prefix(1);
    if (text.empty() || IsSign(text.front()))
        return std::nullopt;
    try {
        const std::int64_t counts = RoundHalfEven(CDbl(text) / DegreesPerCount);
        if (counts < 0 || counts > mostCounts)
            return std::nullopt;
        return (negative ? "-" : "+") + PadLeft(Hex(static_cast<std::uint32_t>(counts)), Digits, '0');
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

bool Bit(std::string_view bin8, int bit)
{
    return CharAt(bin8, static_cast<std::size_t>(8 - bit)) == '1';
}

void SetBit(std::string &bin8, int bit, bool set)
{
    if (bin8.size() == 8 && bit >= 0 && bit < 8)
        bin8[static_cast<std::size_t>(7 - bit)] = set ? '1' : '0';
}

void SetNumber(std::string &bin8, int lowest, int number)
{
    for (int bit = lowest; number != 0; ++bit, number /= 2) {
        if (number % 2 != 0)
            SetBit(bin8, bit, true);
    }
}

} // namespace vorn
