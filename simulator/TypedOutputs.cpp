// The analog outputs of 7234: type, startup and stop value of each channel, emergency inputs, calibration.

#include "Calibration.h"
#include "Outputs.h"
#include "Record.h"
#include "Takers.h"

#include <algorithm>

namespace vornsim
{

namespace
{

std::string ChannelText(const Command &command)
{
    return "C" + std::to_string(command.match.channel);
}

Taken TakeOutput(const Unit &unit, int channel, std::string_view text)
{
    return ReadRangeText(unit.Range(channel), text) ? Taken(text) : std::nullopt;
}

/// A kept value; one that lies outside a new type counts as that type's nearer end.
double KeptValue(const Unit &unit, std::string_view name, int channel)
{
    const RangeRow &range = unit.Range(channel);
    return std::clamp(ReadNumber(unit.Kept(name, channel)).value_or(range.low), range.low, range.high);
}

template <const char *Name>
std::string ReadKept(const Unit &unit, int channel)
{
    return RangeText(unit.Range(channel), KeptValue(unit, Name, channel));
}
constexpr char StartupName[] = "startup";
constexpr char StopName[] = "stop";

std::string ReadOutput(const Unit &unit, int channel)
{
    return RangeText(unit.Range(channel), unit.Channel(channel).target);
}

std::string ReadBack(const Unit &unit, int channel)
{
    return RangeText(unit.Range(channel), unit.Channel(channel).output);
}

void OutputWritten(Unit &unit, int channel)
{
    unit.Channel(channel).target = KeptValue(unit, "output", channel);
    MoveOutput(unit, channel, unit.Channel(channel).target, 0);
}

/// The input of a channel whose emergency flag is set drives its output to the stop value.
bool InEmergency(const Unit &unit, int channel)
{
    return unit.On("emergency", channel) && (ReadHex(unit.Kept("inputs")).value_or(0) >> channel & 1) != 0;
}

void AdvanceOutputs(Unit &unit, double from, double to)
{
    for (int channel = 0; channel < unit.Model().channels; ++channel) {
        const double target =
            InEmergency(unit, channel) ? KeptValue(unit, "stop", channel) : unit.Channel(channel).target;
        MoveOutput(unit, channel, target, to - from);
    }
}

/// "C", the channel, and its type or flag.
Answer ReadOfChannel(Unit &unit, const Command &command)
{
    return Done(ChannelText(command) + unit.Read(command.subject, command.match.channel));
}

constexpr std::string_view Coefficients[] = {"coefficient4mA", "coefficient20mA"};

/// A coefficient as two hexadecimal digits. The one that was read last is the one that steps change.
Answer ReadCoefficient(Unit &unit, const Command &command)
{
    unit.Keep("trimmed", NoChannel, std::string(command.subject));
    const int value = std::stoi(unit.Kept(command.subject, command.match.channel));
    return Done(Hex(static_cast<unsigned long long>(value & 0xFF), 2));
}

/// A step has its sign in the top bit: "0A" is +10, "8A" is -10.
Answer StepCoefficient(Unit &unit, const Command &command)
{
    const unsigned data = ReadHex(command.match.data).value_or(0);
    const int size = static_cast<int>(data & 0x7F);
    const std::string name = unit.Kept("trimmed");
    const int channel = command.match.channel;
    const int value = std::stoi(unit.Kept(name, channel)) + (data & 0x80 ? -size : size);
    if (size == 0 || value < -128 || value > 127)
        return Refused();
    unit.Keep(name, channel, std::to_string(value));
    return Done();
}

Answer ClearCoefficient(Unit &unit, const Command &command)
{
    unit.Keep(command.subject, command.match.channel, "0");
    return Done();
}

Answer BeginCalibration(Unit &, const Command &)
{
    return Done();
}

constexpr SettingRow TypedOutputSettings[] = {
    {"range", "", TakeRange, PerChannel, ReadRange, RangeWritten},
    {StartupName, "", TakeOutput, PerChannel, ReadKept<StartupName>},
    {StopName, "", TakeOutput, PerChannel, ReadKept<StopName>},
    {"output", "", TakeOutput, PerChannel, ReadOutput, OutputWritten},
    {"readback", "", nullptr, PerChannel, ReadBack},
    {"emergency", "0", TakeOneOf<'0', '1'>, PerChannel},
    {"inputs", "0", TakeHex<1>},
    {Coefficients[0], "0", TakeWhole, PerChannel},
    {Coefficients[1], "0", TakeWhole, PerChannel},
    {"trimmed", Coefficients[0], nullptr},
    {"calibration", "", TakeAny, PerChannel},
};

constexpr CommandRow TypedOutputCommands[] = {
    {"#Cc~", WriteSetting, "output"},
    {"$6Cc", ReadSetting, "readback"},
    {"#SCc~", WriteSetting, StartupName},
    {"$DCc", ReadSetting, StartupName},
    {"#ECc~", WriteSetting, StopName},
    {"$ECc", ReadSetting, StopName},
    {"$8Cc", ReadOfChannel, "range"},
    {"$7CcRxx", WriteSetting, "range"},
    {"$BCc", ReadOfChannel, "emergency"},
    {"$ACcb", WriteSetting, "emergency"},
    {"$I", ReadSetting, "inputs"},
    {"$G", BeginCalibration},
    {"$NCc", ReadCoefficient, Coefficients[0]},
    {"$OCc", ReadCoefficient, Coefficients[1]},
    {"$3Ccxx", StepCoefficient},
    {"$0Cc", StoreCalibration, "4mA"},
    {"$1Cc", StoreCalibration, "20mA"},
    {"$PCc", ClearCoefficient, Coefficients[0]},
    {"$QCc", ClearCoefficient, Coefficients[1]},
};

} // namespace

constinit const Feature TypedOutputs{TypedOutputSettings, TypedOutputCommands, AdvanceOutputs};

} // namespace vornsim
