// Analog outputs: 7231, 3931, and the excitation output of 7218.

#include "Calibration.h"
#include "Outputs.h"
#include "Record.h"
#include "Takers.h"

#include <algorithm>
#include <cmath>

namespace vornsim
{

namespace
{

constexpr double VoltsPerSecond = 0.0625; // of slew code 1; each further code doubles it
constexpr double MilliamperesPerSecond = 0.125;

int SlewCode(const Unit &unit, int channel)
{
    return static_cast<int>(ReadHex(unit.Kept("format", channel)).value_or(0) >> 2 & 15);
}

void AdvanceOutputs(Unit &unit, double from, double to)
{
    for (int channel = 0; channel < unit.Model().channels; ++channel)
        MoveOutput(unit, channel, unit.Channel(channel).target, to - from);
}

Taken TakeOutput(const Unit &unit, int channel, std::string_view text)
{
    return ReadOutputText(unit.Range(channel), unit.Format(), text) ? Taken(text) : std::nullopt;
}

double KeptOutput(const Unit &unit, std::string_view name, int channel)
{
    const auto value = ReadOutputText(unit.Range(channel), unit.Format(), unit.Kept(name, channel));
    return value.value_or(unit.Range(channel).low);
}

std::string ReadOutput(const Unit &unit, int channel)
{
    return OutputText(unit.Range(channel), unit.Format(), unit.Channel(channel).target);
}

void OutputWritten(Unit &unit, int channel)
{
    unit.Channel(channel).target = KeptOutput(unit, "output", channel);
    AdvanceOutputs(unit, unit.Now(), unit.Now());
}

std::string ReadBack(const Unit &unit, int channel)
{
    return OutputText(unit.Range(channel), unit.Format(), unit.Channel(channel).output);
}

std::string ReadStartup(const Unit &unit, int channel)
{
    return OutputText(unit.Range(channel), unit.Format(), unit.Channel(channel).startup);
}

/// A new startup value also becomes the present output, as it does when the module is switched on.
void StartupWritten(Unit &unit, int channel)
{
    ChannelState &state = unit.Channel(channel);
    state.startup = state.target = state.output = KeptOutput(unit, "startup", channel);
}

/// A stand-alone module has one output, number 0.
Answer WriteOutput(Unit &unit, const Command &command)
{
    const int channel = std::max(command.match.channel, 0);
    return unit.Write("output", channel, command.match.data) ? Done() : Refused();
}

Answer StoreStartup(Unit &unit, const Command &command)
{
    ChannelState &state = unit.Channel(std::max(command.match.channel, 0));
    state.startup = state.target;
    return {'!', true, {}, Stores};
}

/// The record of a channel, or of the slot, which shows that of channel 0.
Answer ReadChannelRecord(Unit &unit, const Command &command)
{
    return Done(unit.Read("range", command.match.channel) + unit.Kept("format", command.match.channel));
}

Answer WriteChannelRecord(Unit &unit, const Command &command)
{
    const std::string_view data = command.match.data;
    const int channel = command.match.channel;
    if (!TakeRange(unit, channel, data.substr(0, 2)) || !TakeFormat(unit, channel, data.substr(2)))
        return Refused();
    unit.Write("range", channel, data.substr(0, 2));
    unit.Write("format", channel, data.substr(2));
    return {'!', true, {}, Stores};
}

constexpr SettingRow SingleOutputSettings[] = {
    {"startup", "", TakeOutput, PerChannel, ReadStartup, StartupWritten},
    {"output", "", TakeOutput, PerChannel, ReadOutput, OutputWritten},
    {"readback", "", nullptr, PerChannel, ReadBack},
    {"trim", "0", TakeWhole, PerChannel},
    {"calibration", "", TakeAny, PerChannel},
};

constexpr CommandRow SingleOutputCommands[] = {
    {"#~", WriteOutput},
    {"$6", ReadSetting, "output"},
    {"$8", ReadSetting, "readback"},
    {"$0", StoreCalibration, "4mA"},
    {"$1", StoreCalibration, "20mA"},
    {"$3xx", Trim},
    {"$4", StoreStartup},
};

constexpr SettingRow OutputCardSettings[] = {
    {"range", "", TakeRange, PerChannel, ReadRange, RangeWritten},
    {"format", "00", TakeFormat, PerChannel},
    {"startup", "", TakeOutput, PerChannel, ReadStartup, StartupWritten},
    {"output", "", TakeOutput, PerChannel, ReadOutput, OutputWritten},
    {"readback", "", nullptr, PerChannel, ReadBack},
    {"trim", "0", TakeWhole, PerChannel},
    {"calibration", "", TakeAny, PerChannel},
};

constexpr CommandRow OutputCardCommands[] = {
    {"#Cc~", WriteOutput},
    {"$B", ReadChannelRecord},
    {"$CcB", ReadChannelRecord},
    {"$CcAxxxx", WriteChannelRecord},
    {"$Cc6", ReadSetting, "output"},
    {"$Cc0", StoreCalibration, "4mA"},
    {"$Cc1", StoreCalibration, "20mA"},
    {"$Cc3xx", Trim},
    {"$Cc4", StoreStartup},
};

constexpr RangeRow ExcitationRange{"", 0, 10, 2};

/// A value may come with a plus sign.
Taken TakeExcitation(const Unit &, int, std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    return ReadOutputText(ExcitationRange, DataFormat::Engineering, text) ? Taken(text) : std::nullopt;
}

Answer StoreExcitationStartup(Unit &unit, const Command &)
{
    unit.Keep("startup", NoChannel, unit.Kept("excitation"));
    return {'!', true, {}, Stores};
}

constexpr SettingRow ExcitationSettings[] = {
    {"startup", "00.000", TakeExcitation},
    {"excitation", "00.000", TakeExcitation},
    {"trim", "0", TakeWhole},
};

constexpr CommandRow ExcitationCommands[] = {
    {"$6", ReadSetting, "excitation"},
    {"$7~", WriteSetting, "excitation"},
    {"$A", StoreCalibration, "0V"},
    {"$B", StoreCalibration, "10V"},
    {"$Exx", Trim},
    {"$S", StoreExcitationStartup},
};

} // namespace

void MoveOutput(Unit &unit, int channel, double target, double milliseconds)
{
    ChannelState &state = unit.Channel(channel);
    const int code = SlewCode(unit, channel);
    if (code == 0) {
        state.output = target;
        return;
    }
    const double rate = unit.Range(channel).current ? MilliamperesPerSecond : VoltsPerSecond;
    const double step = std::ldexp(rate, code - 1) * milliseconds / 1000;
    state.output += std::clamp(target - state.output, -step, step);
}

Answer Trim(Unit &unit, const Command &command)
{
    const auto step = static_cast<signed char>(ReadHex(command.match.data).value_or(0));
    if (step == 0)
        return Refused();
    const int channel = command.match.channel;
    unit.Keep("trim", channel, std::to_string(std::stoi(unit.Kept("trim", channel)) + step));
    return Done();
}

constinit const Feature SingleOutput{SingleOutputSettings, SingleOutputCommands, AdvanceOutputs};
constinit const Feature OutputCard{OutputCardSettings, OutputCardCommands, AdvanceOutputs};
constinit const Feature Excitation{ExcitationSettings, ExcitationCommands};

} // namespace vornsim
