#pragma once

#include "pages/AlarmLimits.h"
#include "protocol/NodeKey.h"

#include <string>
#include <string_view>

namespace vorn
{

std::string MappingSwitchCommand(const NodeKey &node, bool on);                     ///< "$AAA1" or "$AAA0"
std::string MappingInputCommand(const NodeKey &node, const LimitPair &wireLimits);  ///< "$AA6", low and high
std::string MappingOutputCommand(const NodeKey &node, const LimitPair &wireLimits); ///< "$AA7", low and high

/// The input range as it is written: in wire form if neither limit exceeds the bound of the list position of
/// `CmbRange`; otherwise, and for a position without a bound, as typed.
LimitPair WireInputLimits(std::string_view model, int range, const LimitPair &typed);

/// Integer digits of the output range: the length of the longer of the two limits' texts in front of the
/// point, a sign included.
int OutputDigits(const LimitPair &typed);

/// The output range as it is written: always in wire form, with `OutputDigits`.
LimitPair WireOutputLimits(const LimitPair &typed);

} // namespace vorn
