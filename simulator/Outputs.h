#pragma once

#include "Unit.h"

#include <optional>
#include <string>
#include <string_view>

namespace vornsim
{

/// @name The setting "outputs" of every model with digital outputs
/// Two hexadecimal digits for up to eight points, four for more.
/// @{
std::optional<std::string> TakeOutputs(const Unit &, int channel, std::string_view text);
std::string ReadOutputs(const Unit &, int channel);
void OutputsWritten(Unit &, int channel);
/// @}

/// Drives an analog output towards a target for a time, at the slew rate of its format byte.
void MoveOutput(Unit &, int channel, double target, double milliseconds);

/// Number of hexadecimal digits for so many points.
constexpr int PointDigits(int points)
{
    return points > 8 ? 4 : 2;
}

} // namespace vornsim
