#pragma once

#include <cstdint>

namespace vorn
{

/// What a calibration sets right.
enum class CalibrationMode : std::uint8_t {
    Zero,               ///< of an analog input
    Span,               ///< of an analog input
    CJC,                ///< cold junction temperature of a thermocouple input
    ZeroVolts,          ///< excitation output
    TenVolts,           ///< excitation output
    FourMilliamperes,   ///< analog output
    TwentyMilliamperes, ///< analog output
    Startup,            ///< value that an output puts out behind each start
};

} // namespace vorn
