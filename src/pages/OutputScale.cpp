#include "pages/OutputScale.h"

#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Text.h"

#include <algorithm>
#include <limits>

namespace vorn
{

namespace
{

constexpr char Engineering = '0';
constexpr char Percent = '1';
constexpr char Hexadecimal = '2';

struct EngineeringScale {
    char range;
    SliderRange slider;
    int perUnit; ///< slider steps per mA or V
    int offset;  ///< value at slider position 0
};

constexpr EngineeringScale EngineeringScales[] = {
    {'0', {0, 4000, 200, 1, 20}, 200, 0}, // 0 to 20 mA
    {'1', {0, 3200, 200, 1, 20}, 200, 4}, // 4 to 20 mA
    {'2', {0, 5000, 500, 1, 25}, 500, 0}, // 0 to 10 V
};
constexpr SliderRange PercentRange{0, 10000, 1000, 1, 50};
constexpr SliderRange HexRange{0, 4095, 256, 1, 20};
constexpr int StepsPerPercent = 100;

const EngineeringScale *ScaleOf(std::string_view code)
{
    const auto *found = std::ranges::find(EngineeringScales, CharAt(code, 2), &EngineeringScale::range);
    return found == std::end(EngineeringScales) ? nullptr : found;
}

int Rounded(double value)
{
    constexpr double Limit = std::numeric_limits<int>::max();
    return static_cast<int>(RoundHalfEven(std::clamp(value, -Limit, Limit)));
}

} // namespace

std::optional<SliderRange> SliderRangeFor(std::string_view outputFormatCode)
{
    switch (CharAt(outputFormatCode, 1)) {
    case Engineering:
        if (const EngineeringScale *scale = ScaleOf(outputFormatCode))
            return scale->slider;
        return std::nullopt;
    case Percent:
        return PercentRange;
    case Hexadecimal:
        return HexRange;
    default:
        return std::nullopt;
    }
}

int SliderValue(std::string_view outputFormatCode, std::string_view text)
{
    switch (CharAt(outputFormatCode, 1)) {
    case Percent:
        return Rounded(Val(text) * StepsPerPercent);
    case Hexadecimal:
        return Rounded(HexVal(text));
    default:
        break;
    }
    const EngineeringScale *scale = ScaleOf(outputFormatCode);
    return scale ? Rounded((Val(text) - scale->offset) * scale->perUnit) : 0;
}

std::string SliderText(std::string_view outputFormatCode, int value)
{
    const char format = CharAt(outputFormatCode, 1);
    std::string text;
    if (format == Percent) {
        text = TextOf(static_cast<double>(value) / StepsPerPercent);
    } else if (format == Hexadecimal) {
        text = Hex(static_cast<std::uint32_t>(value));
    } else if (const EngineeringScale *scale = ScaleOf(outputFormatCode)) {
        text = TextOf(static_cast<double>(value) / scale->perUnit + scale->offset);
    }
    return FormatOutputValue(text, format);
}

} // namespace vorn
