#pragma once

#include "Unit.h"

#include <optional>
#include <string>
#include <string_view>

namespace vornsim
{

/// How the channels of a counter model run: the settings "running", "rate" (pulses a second), "count",
/// "overflow" and "frequency" (hertz or "live"), which 7282 and 3962 share.
struct CountLimits {
    double initial;
    double greatest;
    bool open; ///< nothing holds the pulses back
};

/// Counts the pulses of a stretch of time. Beyond the greatest value it goes on at the initial one, with the
/// overflow set.
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
