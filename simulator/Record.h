#pragma once

#include "Unit.h"

#include <optional>
#include <string>
#include <string_view>

namespace vornsim
{

/// @name The settings "range" and "format", which modules and cards share
/// @{
std::optional<std::string> TakeRange(const Unit &, int channel, std::string_view code);
std::string ReadRange(const Unit &, int channel);
/// An output that lies outside a new range goes to the nearer end of it.
void RangeWritten(Unit &, int channel);
std::optional<std::string> TakeFormat(const Unit &, int channel, std::string_view text);
/// @}

} // namespace vornsim
