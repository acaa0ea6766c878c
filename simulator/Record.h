#pragma once

#include "Unit.h"

#include <optional>
#include <string>
#include <string_view>

namespace vornsim
{

/// @name Baud code and format byte of a record, two hexadecimal digits each
/// @{
std::string ReadLine(const Unit &);
/// False for what the model hasn't got, and for a change of line speed or checksum outside of INIT state.
bool WriteLine(Unit &, std::string_view fields);
/// @}

/// @name The settings "range" and "format", which modules and cards share
/// @{
std::optional<std::string> TakeRange(const Unit &, int channel, std::string_view code);
std::string ReadRange(const Unit &, int channel);
/// An output that lies outside a new range goes to the nearer end of it.
void RangeWritten(Unit &, int channel);
std::optional<std::string> TakeFormat(const Unit &, int channel, std::string_view text);
/// @}

} // namespace vornsim
