#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

/// Scale of the output slider: the output value as an integer.
struct SliderRange {
    int min;
    int max;
    int largeStep;
    int smallStep;
    int tick;
};

/// Scale of an output format code, two characters: data format digit, range digit. Nothing for a code without
/// a scale.
std::optional<SliderRange> SliderRangeFor(std::string_view outputFormatCode);

/// Slider value of an output value's text, rounded half to even; not limited to the scale.
int SliderValue(std::string_view outputFormatCode, std::string_view text);

/// Output value of a slider value, in the wire form of the code's data format.
std::string SliderText(std::string_view outputFormatCode, int value);

} // namespace vorn
