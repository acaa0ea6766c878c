#pragma once

#include "protocol/NodeKey.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorn
{

/// What the reply of a poll command does on the page.
enum class PollEffect {
    AnalogPoints, ///< input and outputs of an analog module
    StrainPoints, ///< the four outputs of 7218
    EventCount,
    Reading,
    ExcitationEntry,
    ChannelMask,
    MaskedReading, ///< one channel of the 7221 family
    OutputReadBack,
    OutputEntry,
    TwoGroups, ///< high and low digital group
    LowGroup,
    Relays,
    Count,
    CounterOutputs,
    Overflow,
    SlotReadings, ///< all channels of a slot in one reply
    SlotAlarm,
    ChannelReading,
    ChannelAlarm,
    SlotOutput,    ///< one output of the 3931 slot page
    ChannelOutput, ///< the output of a 3931 channel page
    SlotCount,
    ChannelCount,
    SlotFaults,
    SlotPoints,
};

/// When a poll command is sent at all.
enum class PollCondition {
    Always,
    NotEditing,     ///< the operator isn't working on the output entry
    CounterRange,   ///< the counter module counts
    ChannelEnabled, ///< the channel's bit of the mask is set
    NotTyped,       ///< the operator isn't typing into the channel's entry
};

/// One command of a poll list.
struct PollStep {
    std::string_view
        command; ///< pattern: "AA" address, "s" slot, "c" channel of the page, "i" channel number
    char expect; ///< first character of a reply that counts
    PollEffect effect;
    PollCondition condition = PollCondition::Always;
    int channels = 1; ///< the command is sent for channel 0 to `channels` - 1
};

/// Poll list of a module, a slot or a channel; empty for what has nothing to poll.
std::span<const PollStep> PollSteps(const NodeKey &node);

/// A pattern with its address, slot and channels filled in.
std::string ExpandCommand(std::string_view pattern, const NodeKey &node, int channel = 0);

/// Places of the hexadecimal pairs of a digital slot's "$AASs6" and "$AASsM" replies, counted from 1; 0 for
/// none.
struct PairPlaces {
    std::size_t high;
    std::size_t low;
};
PairPlaces DigitalSlotPlaces(std::string_view model);
PairPlaces FaultPlaces(std::string_view model);

/// Caption of a faulty point: its kind letters overwritten with "XX".
std::string FaultCaption(std::string_view caption);

/// Values of all channels in the reply of "#AASs". `hexadecimal` channels are four characters wide, others
/// seven.
std::vector<std::string> SlotTexts(std::string_view model, std::string_view reply, bool hexadecimal);

/// Value of a counter channel: frequencies are divided by 100, decimal or hexadecimal; counts stand as they
/// come.
std::string CounterText(std::string_view payload, bool frequency, std::string_view format);

} // namespace vorn
