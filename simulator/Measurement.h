#pragma once

#include "Unit.h"

namespace vornsim
{

/// The value at a channel's input, in the unit of its range: a fixed one, or a slow wave within the range. A
/// fixed text that is no number counts as beyond the range.
double Measured(const Unit &unit, int channel, double at);

struct Extremes {
    double least;
    double greatest;
};

/// The least and the greatest value between two times, both included.
Extremes MeasuredBetween(const Unit &unit, int channel, double from, double to);

/// @name The setting "mask" of the enabled channels
/// @{
std::optional<std::string> TakeMask(const Unit &, int channel, std::string_view text);
std::string ReadMask(const Unit &, int channel);
/// @}

/// @name Commands that read values
/// @{
Answer ReadChannel(Unit &, const Command &);     ///< a channel that the mask disables is refused
Answer ReadAllChannels(Unit &, const Command &); ///< side by side; a disabled one leaves its place blank
/// @}

/// @name The setting "value" of every model with analog inputs
/// @{
std::optional<std::string> TakeValue(const Unit &, int channel, std::string_view text);
std::string ReadValue(const Unit &, int channel);
/// @}

} // namespace vornsim
