#pragma once

#include "protocol/NodeKey.h"
#include "protocol/Registers.h"

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

/// Stands for as many channels as a model has.
inline constexpr int PerChannel = 0;

/// One command of a poll list.
struct PollStep {
    Register reg; ///< whose query is sent, and whose reply counts
    PollEffect effect;
    PollCondition condition = PollCondition::Always;
    int channels = 1; ///< the command is sent for channel 0 to `channels` - 1
};

/// Poll list of a module, a slot or a channel; empty for what has nothing to poll.
std::vector<PollStep> PollSteps(const NodeKey &node);

/// Places of hexadecimal pairs in a reply about digital points, counted from 1; 0 for none. Bit i of a pair
/// is element i of its row of indicators.
struct PairPlaces {
    std::size_t high = 0;
    std::size_t low = 0;
    int firstLow = 0; ///< element of the low row that bit 0 is
};
PairPlaces DigitalSlotPlaces(std::string_view model); ///< of the values
PairPlaces FaultPlaces(std::string_view model);       ///< of the marks of faulty points

/// Caption of a faulty point: its kind letters overwritten with "XX".
std::string FaultCaption(std::string_view caption);

/// Values of all channels in the reply of "#AASs". `hexadecimal` channels are four characters wide, others
/// seven.
std::vector<std::string> SlotTexts(std::string_view model, std::string_view reply, bool hexadecimal);

/// Value of a counter channel: frequencies are divided by 100, decimal or hexadecimal; counts stand as they
/// come.
std::string CounterText(std::string_view payload, bool frequency, std::string_view format);

} // namespace vorn
