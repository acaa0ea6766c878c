#pragma once

#include "protocol/Features.h"
#include "protocol/NodeKey.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vorn
{

/// What modules, base units and slot cards hold, and what they can be told to do.
enum class Register : std::uint8_t {
    None,

    // Everything with an address of its own.
    ModelText,
    FirmwareVersion,
    Configuration,     ///< range, baud and format codes
    BaseConfiguration, ///< of a base unit: baud and format codes
    SlotTypes,

    // A single analog input.
    Reading,
    AlarmStatus, ///< alarm mode, outputs and digital input
    HighAlarm,
    LowAlarm,
    EnableAlarm,  ///< value "M" momentary, "L" latching; of a counter with presets: its digit
    DisableAlarm, ///< no value; of a counter with presets: its digit
    ClearLatch,
    EventCount,
    ClearEvents,
    OutputByte, ///< all outputs at once, bit i is output i
    ColdJunctionTemperature,
    MappingSwitch,
    MappingInput,  ///< low and high limit
    MappingOutput, ///< low and high limit
    Excitation,

    // Analog inputs behind a mask.
    ChannelReading, ///< index: channel
    ChannelMask,
    MemoryConfiguration,
    MemoryLimits, ///< index: channel
    Recording,
    StandardRecords, ///< number of them, four hexadecimal digits
    EventRecords,
    MemoryRecord, ///< value of the command: address, four hexadecimal digits

    // An analog output.
    OutputValue, ///< as it was commanded
    OutputReadBack,

    // Digital points.
    Points,
    PointOutput, ///< value: output digit and "01" or "00"

    // Counters. Index: counter.
    Count,
    CounterStatus, ///< outputs and alarm state
    CountOverflow,
    ClearCount,
    InputStage,
    Gate,
    CountMaximum,
    CountState,
    InputFilter,
    HighWidth,
    LowWidth,
    HighLevel,
    LowLevel,
    LowCountLimit,  ///< or the preset of counter 0
    HighCountLimit, ///< or the preset of counter 1
    InitialCount,

    // Front displays.
    DisplaySource, ///< "2" is the host; of a signed display "1" is the module itself
    DisplayValue,

    // A slot card.
    SlotConfiguration, ///< range and format codes
    SlotMask,
    SlotReadings, ///< all channels in one reply
    SlotPoints,
    SlotFaults,
    SlotDirections,
    SlotPointOutput, ///< value: output digit and "01" or "00"

    // A channel of a slot card. Index: channel, where the node doesn't name one.
    ChannelConfiguration, ///< range and format codes
    SlotChannelReading,
    ChannelAlarms, ///< state of the high and the low alarm
    HighAlarmMode, ///< written as "M" or "L"
    LowAlarmMode,
    HighAlarmEnable, ///< value "E" enabled, "D" disabled
    LowAlarmEnable,
    HighChannelLimit,
    LowChannelLimit,
    HighConnection, ///< "S", slot, "C", channel of the output that the alarm drives; "*" for none
    LowConnection,
    ClearHighLatch,
    ClearLowLatch,
    ClearChannelCount,
    ChannelOutput, ///< as it was commanded
    FilterScale,   ///< of all counters of the card
    ChannelState,
    ChannelOverflow, ///< of all counters of the card, two characters each
    InitialChannelCount,

    // Calibration. What is at the terminals is stored; the value of a trim is a signed step, "01" or "FF".
    SpanCalibration,    ///< of an analog output: the present output is 4 mA
    ZeroCalibration,    ///< of an analog output: the present output is 20 mA
    ColdJunctionOffset, ///< value: sign and four hexadecimal digits, 0.009 degrees Celsius a count
    ExcitationZero,     ///< the present excitation is 0 V
    ExcitationFull,     ///< the present excitation is 10 V
    ExcitationTrim,
    ExcitationStartup, ///< the present excitation is put out behind each start
    OutputTrim,
    OutputStartup,
    SlotSpanCalibration,
    SlotZeroCalibration,
    SlotColdJunction, ///< temperature
    SlotColdJunctionOffset,
    ChannelSpanCalibration,
    ChannelZeroCalibration,
    ChannelTrim,
    ChannelStartup,

    // A model with a console. Index: channel.
    PointByte, ///< all outputs at once, bit i is output i
    Watchdog,  ///< of the communication: 0.1 seconds, four digits
    AllReadings,
    OpenWiring,      ///< bit i is channel i
    ChannelType,     ///< type code of a channel
    ChannelSpan,     ///< calibrates; no value
    ChannelZero,     ///< calibrates; no value
    ChannelNegative, ///< calibrates; no value
    OutputOfChannel,
    OutputType,      ///< type code of an output
    EmergencyFlag,   ///< "1": the emergency input drives the output to its stop value
    EmergencyInputs, ///< one hexadecimal digit, bit i is input i
    StartupOfChannel,
    StopOfChannel,
    OutputCalibration, ///< gets the outputs ready to be calibrated; no value
    Coefficient4mA,    ///< two hexadecimal digits, signed
    Coefficient20mA,
    Clear4mA,   ///< no value
    Clear20mA,  ///< no value
    TrimOutput, ///< step: "01" to "7F" up, "81" to "FF" down
    Store4mA,   ///< no value
    Store20mA,  ///< no value
};

/// Where a reply holds something: position from 1, and characters; 0 for all up to the checksum characters.
struct Place {
    std::size_t position = 4;
    std::size_t width = 0;
};

/// How a record of a configuration file is made from its register and written back.
enum class RecordForm : std::uint8_t {
    Plain,             ///< the value as it is read goes behind the write command
    SameAddress,       ///< the module's own address goes between command and value
    AddressZero,       ///< "00" goes between command and value
    Compared,          ///< never written; must be what the module says
    AlarmWord,         ///< the mode digit as a word, of which the first letter is written
    CounterAlarm,      ///< the mode digit; with presets bit i enables the alarm of counter i
    ChannelAlarmModes, ///< the mode letter; "D" disables, another is written and then the alarm enabled
};

/// A register: the one place where its commands are spelt. In a pattern, "AA" behind the first character is
/// the address, "s" the slot, "c" the channel of the node or, when it has none, the index, "i" the index.
struct RegisterRow {
    Register id;
    std::string_view query; ///< pattern; empty for what can only be written
    std::string_view write; ///< pattern, the value goes behind; empty for what can only be read
    Features of;            ///< models with any of these have it
    char lead = '!';        ///< first character of a reply to the query that counts
    Place value = {};       ///< where that reply holds the value
    /// Label of its record in a configuration file: "{s}" slot, "{c}" channel, "{i}" index, "{code}" code of
    /// the slot card. Empty for what has none.
    std::string_view label = {};
    std::size_t recordWidth = 0; ///< characters of the record's value, from position 4 of the reply
    RecordForm form = RecordForm::Plain;
};

const RegisterRow &RowOf(Register reg);
std::span<const RegisterRow> AllRegisters();

/// The line that reads a register of a node. `index` is a counter, a channel or an output from 0 on.
std::string Query(Register reg, const NodeKey &node, int index = 0);
/// The same for a register of a module that is known by its address alone.
std::string Query(Register reg, std::string_view address, int index = 0);
/// The line that writes a value, or what goes without a value.
std::string Write(Register reg, const NodeKey &node, std::string_view value = {}, int index = 0);
std::string Write(Register reg, std::string_view address, std::string_view value = {}, int index = 0);

/// Value of a register in the reply to its query; nothing for a reply that doesn't begin as it must.
std::optional<std::string> ValueOf(Register reg, const NodeKey &node, std::string_view reply);

/// Part of a reply that holds more than its register's value.
std::string Cut(std::string_view reply, Place place);

/// Places of what some replies hold beside the value.
namespace ReplyPlace
{
inline constexpr Place Outputs{5, 2};      ///< of AlarmStatus, CounterStatus: bit i is output i
inline constexpr Place DigitalInput{8, 1}; ///< of AlarmStatus
inline constexpr Place LowLimit{4, 7};     ///< of MappingInput, MappingOutput
inline constexpr Place HighLimit{11, 7};
inline constexpr Place HighAlarmState{4, 1}; ///< of ChannelAlarms
inline constexpr Place LowAlarmState{5, 1};
inline constexpr Place HighDirections{4, 2}; ///< of SlotDirections
inline constexpr Place LowDirections{6, 2};
inline constexpr Place RangeCode{4, 2}; ///< of Configuration and SlotConfiguration
} // namespace ReplyPlace

/// A pattern with its address, slot, channel and index filled in.
std::string ExpandCommand(std::string_view pattern, const NodeKey &node, int index = 0);

/// Label of a register's record in a configuration file.
std::string RecordLabel(Register reg, const NodeKey &node, int index = 0);

} // namespace vorn
