// Analog inputs that have a type each: 7216, 7221P, 7224P, 7227.

#include "Calibration.h"
#include "Measurement.h"
#include "Record.h"
#include "Takers.h"

namespace vornsim
{

namespace
{

/// "C", the channel, "R", its type.
Answer ReadType(Unit &unit, const Command &command)
{
    const int channel = command.match.channel;
    return Done("C" + std::to_string(channel) + "R" + unit.Read("range", channel));
}

constexpr SettingRow TypedInputSettings[] = {
    {"range", "", TakeRange, PerChannel, ReadRange, RangeWritten},
    {"mask", "", TakeMask, false, ReadMask},
    {"value", "live", TakeValue, PerChannel, ReadValue},
    {"calibration", "", TakeAny, PerChannel},
};

// A mask or a type is in force at once: hosts write one behind the other.
constexpr CommandRow TypedInputCommands[] = {
    {"#", ReadAllChannels},
    {"#c", ReadChannel, "value"},
    {"$6", ReadSetting, "mask"},
    {"$5xx", WriteSetting, "mask"},
    {"$8Cc", ReadType},
    {"$7CcRxx", WriteSetting, "range"},
    {"$0Cc", StoreCalibration, "span"},
    {"$1Cc", StoreCalibration, "zero"},
};

constexpr SettingRow OpenWiringSettings[] = {{"wires", "00", TakeMask}};
constexpr CommandRow OpenWiringCommands[] = {{"$B", ReadSetting, "wires"}};

constexpr CommandRow NegativeSpanCommands[] = {{"$NCc", StoreCalibration, "negative"}};

} // namespace

constinit const Feature TypedInputs{TypedInputSettings, TypedInputCommands};
constinit const Feature OpenWiring{OpenWiringSettings, OpenWiringCommands};
constinit const Feature NegativeSpan{{}, NegativeSpanCommands};

} // namespace vornsim
