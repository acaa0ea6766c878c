#pragma once

#include "protocol/NodeKey.h"
#include "protocol/RangeTables.h"
#include "protocol/Registers.h"
#include "protocol/SlotRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

class FormMain;

/// What the record of a module says: reply of "$AA2", "!AATTCCFF", of a base unit "!AACCFF".
struct ModuleRecord {
    explicit ModuleRecord(std::string_view reply, bool ofBaseUnit);

    std::string typeCode; ///< empty of a base unit
    char baudDigit;       ///< the second digit of the baud code
    std::string bits;     ///< format byte as eight binary characters; empty when the record has none

    int FormatPosition() const; ///< of the data format, 0 to 3
};

/// Whether a type code is one of the voltages and currents of a module for thermocouples: then there is no
/// cold junction to calibrate.
bool IsVoltageOfThermocoupleModel(std::string_view model, std::string_view typeCode);

/// One read of a page from its module, handed from frame to frame in their order on the page. It keeps what
/// several of them need.
class PageReading final
{
public:
    PageReading(FormMain &main, NodeKey node);

    const NodeKey node;
    const std::string model;
    std::optional<ModuleRecord>
        record; ///< nothing if the module didn't tell it: then its registers aren't asked
    std::optional<RangeDecode> range;  ///< what the type code of the record selects
    std::optional<SlotRecord> slot;    ///< nothing if the slot's card didn't tell it
    std::optional<SlotRecord> channel; ///< of the channel on show, where each channel has its own
    std::string inputUnit;             ///< unit of the live value by the range alone

    /// Asks for a register; nothing if it isn't told. Behind a port that was refused nothing more is sent.
    std::optional<std::string> Read(Register reg, int index = 0);
    /// The same for the slot of a channel that is on show, where `index` names one of all its channels.
    std::optional<std::string> ReadOfSlot(Register reg, int index);
    /// The reply as it came.
    const std::string &Reply() const;

private:
    std::optional<std::string> ReadOf(const NodeKey &from, Register reg, int index);

    FormMain &main_;
    bool refused_ = false;
};

} // namespace vorn
