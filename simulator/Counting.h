#pragma once

#include "Unit.h"

#include <optional>
#include <string>
#include <string_view>

namespace vornsim
{

/// What 7282 and 3962 share: the settings "running", "rate" (pulses a second), "count", "overflow" and
/// "frequency" (hertz or "live").
struct CountLimits {
    double initial;
    double greatest;
    bool open; ///< the gate lets the pulses pass
};

/// Adds the pulses of a time span to the count. Behind the greatest value it goes on at the initial one and
/// sets the overflow.
void Count(Unit &unit, int channel, double milliseconds, const CountLimits &limits);

/// Whole pulses counted so far.
unsigned Counted(const Unit &unit, int channel);

/// Frequency at the input, in hertz.
double Frequency(const Unit &unit, int channel);

/// @name Handlers of those settings
/// @{
std::optional<std::string> TakeFrequency(const Unit &, int, std::string_view text);
std::string ReadFrequency(const Unit &, int channel); ///< whole hertz
std::string ReadCount(const Unit &, int channel);
void CountWritten(Unit &, int channel);
std::string ReadOverflow(const Unit &, int channel);
/// @}

} // namespace vornsim
