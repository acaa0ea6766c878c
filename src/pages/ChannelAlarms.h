#pragma once

#include "protocol/NodeKey.h"

#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

enum class AlarmLevel { High, Low };

/// Settings of one alarm of a slot channel as its page holds them.
struct ChannelAlarm {
    int mode = -1;             ///< position in the list of modes; 0 disables
    std::string limit;         ///< as typed
    bool drivesOutput = false; ///< the check box of the connection
    std::string outputSlot;    ///< digit, or empty
    std::string outputChannel; ///< decimal, or empty
};

/// "$AASsCcAHM" momentary, "$AASsCcAHL" latch, for positions 1 and 2. Nothing for others, nor on a counter
/// card, whose alarms know no mode.
std::optional<std::string> ChannelModeCommand(const NodeKey &node, AlarmLevel level, int mode);
/// "$AASsCcAHED" for position 0, "$AASsCcAHEE" for any other.
std::string ChannelEnableCommand(const NodeKey &node, AlarmLevel level, int mode);
/// "$AASsCcAHU" and the limit as typed; of a counter card in ten digits.
std::string ChannelLimitCommand(const NodeKey &node, AlarmLevel level, std::string_view limit);
/// "$AASsCcAHCSxCy": slot x and channel y of the output that the alarm drives, "*" for what is empty, and for
/// both without a connection.
std::string ChannelConnectionCommand(const NodeKey &node, AlarmLevel level, const ChannelAlarm &alarm);

std::string FilterScaleCommand(const NodeKey &node, std::string_view text);  ///< "$AASs0", five digits
std::string InitialCountCommand(const NodeKey &node, std::string_view text); ///< "@AASsCcP", ten digits
std::string CounterStateCommand(const NodeKey &node, bool start);            ///< "$AASsCc51" or "$AASsCc50"

/// List position of a mode letter that the module answers: "D", "M", "L"; nothing for any other, or for one
/// that the model's list doesn't have.
std::optional<int> ChannelModePosition(std::string_view model, std::string_view letter);

/// The output that an alarm drives, as the module tells it: "SsCc" or "S*C*".
struct AlarmConnection {
    bool drivesOutput;
    std::string slot;
    std::string channel; ///< decimal
};
AlarmConnection ReadConnection(std::string_view value);

} // namespace vorn
