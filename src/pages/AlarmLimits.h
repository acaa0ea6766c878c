#pragma once

#include "protocol/NodeKey.h"
#include "protocol/RangeTables.h"

#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

/// Two limits as texts, in the unit of the range that they belong to.
struct LimitPair {
    std::string low;
    std::string high;

    friend bool operator==(const LimitPair &, const LimitPair &) = default;
};

/// Whether the numeric value of the low text is strictly below that of the high text.
bool AreLimitsInOrder(const LimitPair &limits);

/// Both texts in the seven characters of the wire, with at least `digits` integer digits.
LimitPair FormatLimits(const LimitPair &limits, int digits);

/// Mode of a module's alarm by list position: 0 "@AADA" disable, 1 "@AAEAM" momentary, 2 "@AAEAL" latch.
/// Nothing for any other position.
std::optional<std::string> AlarmModeCommand(const NodeKey &node, int position);

/// Limits as they are written: in wire form if they pass the test of their bounds; otherwise, and without
/// bounds, as typed.
LimitPair WireLimits(const LimitBounds &bounds, const LimitPair &typed);

/// The same for the alarm limits of a model, whose bounds go with the list position of `CmbRange`. As typed
/// on models without an alarm.
LimitPair WireAlarmLimits(std::string_view model, int range, const LimitPair &typed);

std::string HighLimitCommand(const NodeKey &node, std::string_view limit); ///< "@AAHI" and the limit
std::string LowLimitCommand(const NodeKey &node, std::string_view limit);  ///< "@AALO" and the limit
std::string ClearLatchCommand(const NodeKey &node);                        ///< "@AACA"
std::string ClearEventsCommand(const NodeKey &node);                       ///< "@AACE", the event count
std::string ClearCounterCommand(const NodeKey &node, int counter);         ///< "$AA6" and the counter

/// Elements of `CmdClearChLatch`: "$AASsCcCH" clears the high latch, "$AASsCcCL" the low one, "$AASsCc6" the
/// count.
enum class ChannelClear { HighLatch, LowLatch, Count };
std::string ClearChannelCommand(const NodeKey &node, ChannelClear what);

/// Captions of `ADIO` 0 and 1 for the text of the alarm mode list: outputs while the alarm is disabled, else
/// alarms.
struct AlarmPointCaptions {
    std::string_view first;
    std::string_view second;
};
AlarmPointCaptions AlarmPointCaptionsFor(std::string_view mode);

} // namespace vorn
