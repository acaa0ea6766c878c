#pragma once

#include "protocol/NodeKey.h"

#include <string>

namespace vorn
{

/// The general settings of a slot module or of one of its channels as its page holds them. List positions
/// count from 0; -1 is a list with nothing selected.
struct SlotSettings {
    NodeKey node;          ///< of the page
    int range = -1;        ///< `CmbSRange`
    int format = -1;       ///< `CmbSFormat`
    int timeSlewRate = -1; ///< `CmbSTimeSlewRate`: integration time, or slew rate of an output
};

/// The format byte as eight binary characters, bit 7 first.
std::string SlotFormatBits(const SlotSettings &settings);

/// What `CmdSUpdate` writes: "$AASsA" of a slot, "$AASsCcA" of a channel, with type code and format byte.
/// Where each channel has a range of its own, the slot's command leaves the range as it is ("FF"), and that
/// of an input's channel leaves the format. A list position without a code leaves its field out.
std::string SlotUpdateCommand(const SlotSettings &settings);

} // namespace vorn
