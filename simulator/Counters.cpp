// The counter modules 7282, 7282D and 7282N.

#include "Counting.h"
#include "Outputs.h"
#include "Takers.h"

#include <cmath>

namespace vornsim
{

namespace
{

constexpr int CounterChannels = 2;
constexpr std::string_view FrequencyMode = "51";
constexpr std::string_view NoGate = "2";

double HexValue(const Unit &unit, std::string_view name, int channel)
{
    return ReadHex(unit.Kept(name, channel)).value_or(0);
}

/// Only 7282 has an initial value.
double InitialValue(const Unit &unit, int channel)
{
    return unit.Has("initial") ? HexValue(unit, "initial", channel) : 0;
}

bool GateOpen(const Unit &unit)
{
    const std::string gate = unit.Kept("gate");
    return gate == NoGate || gate == unit.Kept("gateinput");
}

void AdvanceCounters(Unit &unit, double from, double to)
{
    if (unit.Read("range") == FrequencyMode)
        return;
    for (int channel = 0; channel < CounterChannels; ++channel)
        Count(unit, channel, to - from,
              {InitialValue(unit, channel), HexValue(unit, "max", channel), GateOpen(unit)});
}

/// Counts, or hertz in frequency mode, as eight hexadecimal digits.
Answer ReadCounter(Unit &unit, const Command &command)
{
    const int channel = command.match.channel;
    if (unit.Read("range") == FrequencyMode)
        return Data(Hex(static_cast<unsigned>(std::lround(Frequency(unit, channel))), 8));
    return Data(Hex(Counted(unit, channel), 8));
}

Answer ClearCounter(Unit &unit, const Command &command)
{
    ChannelState &state = unit.Channel(command.match.channel);
    state.count = InitialValue(unit, command.match.channel);
    state.overflow = false;
    return Done();
}

constexpr SettingRow CounterSettings[] = {
    {"running", "1", TakeOneOf<'0', '1'>, PerChannel},
    {"rate", "10", TakeDecimal<1000000>, PerChannel},
    {"max", "FFFFFFFF", TakeHex<8>, PerChannel},
    {"count", "0", TakeDecimal<>, PerChannel, ReadCount, CountWritten},
    {"overflow", "", nullptr, PerChannel, ReadOverflow},
    {"frequency", "live", TakeFrequency, PerChannel, ReadFrequency},
    {"gate", "2", TakeOneOf<'0', '1', '2'>},
    {"gateinput", "0", TakeOneOf<'0', '1'>},
    {"stage", "0", TakeOneOf<'0', '1'>},
    {"filter", "0", TakeOneOf<'0', '1'>},
    {"widthhigh", "00002", TakeDigits<5, 65535>},
    {"widthlow", "00002", TakeDigits<5, 65535>},
    {"levelhigh", "24", TakeDigits<2, 50>},
    {"levellow", "08", TakeDigits<2, 50>},
    {"outputs", "00", TakeOutputs, false, ReadOutputs, OutputsWritten},
};

constexpr CommandRow CounterCommands[] = {
    {"#c", ReadCounter},
    {"$c7", ReadSetting, "overflow"},
    {"$6c", ClearCounter},
    {"$5c", ReadSetting, "running"},
    {"$5cb", WriteSetting, "running"},
    {"$3c", ReadSetting, "max"},
    {"$3cxxxxxxxx", WriteSetting, "max", Stores},
    {"$A", ReadSetting, "gate"},
    {"$At", WriteSetting, "gate"},
    {"$B", ReadSetting, "stage"},
    {"$Bb", WriteSetting, "stage"},
    {"$4", ReadSetting, "filter"},
    {"$4b", WriteSetting, "filter", Stores},
    {"$0H", ReadSetting, "widthhigh"},
    {"$0L", ReadSetting, "widthlow"},
    {"$0Hddddd", WriteSetting, "widthhigh", Stores},
    {"$0Lddddd", WriteSetting, "widthlow", Stores},
    {"$1H", ReadSetting, "levelhigh"},
    {"$1L", ReadSetting, "levellow"},
    {"$1Hdd", WriteSetting, "levelhigh", Stores},
    {"$1Ldd", WriteSetting, "levellow", Stores},
    {"@DOxx", WriteSetting, "outputs"},
};

// The commands that read a preset name counter 0 "P" and counter 1 "A"; those that write it name them "P" and
// "S".
Answer ReadPreset0(Unit &unit, const Command &)
{
    return Done(unit.Kept("preset", 0));
}

Answer ReadPreset1(Unit &unit, const Command &)
{
    return Done(unit.Kept("preset", 1));
}

Answer WritePreset0(Unit &unit, const Command &command)
{
    return unit.Write("preset", 0, command.match.data) ? Answer{'!', true, {}, Stores} : Refused();
}

Answer WritePreset1(Unit &unit, const Command &command)
{
    return unit.Write("preset", 1, command.match.data) ? Answer{'!', true, {}, Stores} : Refused();
}

/// On 7282 each counter has its own alarm, which goes off at the counter's preset.
DrivenOutputs DrivePresetOutputs(const Unit &unit)
{
    DrivenOutputs driven;
    for (int channel = 0; channel < CounterChannels; ++channel) {
        if (!unit.On("alarm", channel))
            continue;
        driven.owned |= 1U << channel;
        if (Counted(unit, channel) >= HexValue(unit, "preset", channel))
            driven.set |= 1U << channel;
    }
    return driven;
}

/// One digit with bit n for the alarm of counter n, then the outputs.
Answer ReadPresetStatus(Unit &unit, const Command &)
{
    const unsigned alarms = (unit.On("alarm", 0) ? 1U : 0) | (unit.On("alarm", 1) ? 2U : 0);
    return Done(Hex(alarms, 1) + Hex(unit.Outputs(), 2));
}

Answer SetPresetAlarm(Unit &unit, const Command &command)
{
    unit.Write("alarm", command.match.channel, command.subject);
    return Done();
}

constexpr SettingRow PresetSettings[] = {
    {"preset", "0000FFFF", TakeHex<8>, PerChannel},
    {"initial", "00000000", TakeHex<8>, PerChannel},
    {"alarm", "0", TakeOneOf<'0', '1'>, PerChannel},
};

constexpr CommandRow PresetCommands[] = {
    {"@DI", ReadPresetStatus},
    {"@DIc", ReadPresetStatus}, // the digit makes no difference
    {"@Gc", ReadSetting, "initial"},
    {"@Pcxxxxxxxx", WriteSetting, "initial", Stores},
    {"@RP", ReadPreset0},
    {"@RA", ReadPreset1},
    {"@PAxxxxxxxx", WritePreset0},
    {"@SAxxxxxxxx", WritePreset1},
    {"@EAc", SetPresetAlarm, "1"},
    {"@DAc", SetPresetAlarm, "0"},
};

/// On 7282D and 7282N only counter 0 has alarms: the high limit drives output 0, the high-high limit
/// output 1.
void AdvanceCounterAlarm(Unit &unit, double, double)
{
    const std::string mode = unit.Kept("alarm");
    ChannelState &high = unit.Channel(0);
    ChannelState &highHigh = unit.Channel(1);
    const bool latch = mode == "2";
    const bool enabled = mode != "0";
    high.high = enabled && ((latch && high.high) || Counted(unit, 0) >= HexValue(unit, "preset", 0));
    highHigh.high = enabled && ((latch && highHigh.high) || Counted(unit, 0) >= HexValue(unit, "preset", 1));
}

void CounterAlarmWritten(Unit &unit, int)
{
    unit.Channel(0).high = unit.Channel(1).high = false;
    AdvanceCounterAlarm(unit, 0, 0);
}

DrivenOutputs DriveAlarmOutputs(const Unit &unit)
{
    if (unit.Kept("alarm") == "0")
        return {};
    return {3, (unit.Channel(0).high ? 1U : 0) | (unit.Channel(1).high ? 2U : 0)};
}

Answer ReadAlarmStatus(Unit &unit, const Command &)
{
    return Done(unit.Kept("alarm") + Hex(unit.Outputs(), 2));
}

Answer SetAlarm(Unit &unit, const Command &command)
{
    unit.Write("alarm", NoChannel, command.subject);
    return Done();
}

Answer ClearLatch(Unit &unit, const Command &)
{
    CounterAlarmWritten(unit, 0);
    return Done();
}

constexpr SettingRow AlarmSettings[] = {
    {"preset", "0000FFFF", TakeHex<8>, PerChannel},
    {"alarm", "0", TakeOneOf<'0', '1', '2'>, false, nullptr, CounterAlarmWritten},
};

constexpr CommandRow AlarmCommands[] = {
    {"@DI", ReadAlarmStatus},      {"@RP", ReadPreset0},          {"@RA", ReadPreset1},
    {"@PAxxxxxxxx", WritePreset0}, {"@SAxxxxxxxx", WritePreset1}, {"@DA", SetAlarm, "0"},
    {"@EAM", SetAlarm, "1"},       {"@EAL", SetAlarm, "2"},       {"@CA", ClearLatch},
};

} // namespace

constinit const Feature Counters{CounterSettings, CounterCommands, AdvanceCounters};
constinit const Feature PresetCounters{PresetSettings, PresetCommands, nullptr, DrivePresetOutputs};
constinit const Feature AlarmCounters{AlarmSettings, AlarmCommands, AdvanceCounterAlarm, DriveAlarmOutputs};

} // namespace vornsim
