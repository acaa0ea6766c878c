// Alarm, digital outputs and event counter of the modules with a single analog input.

#include "Measurement.h"
#include "Outputs.h"
#include "Takers.h"

#include <cmath>

namespace vornsim
{

namespace
{

constexpr unsigned LowAlarmOutput = 1;
constexpr unsigned HighAlarmOutput = 2;

Taken TakeLimit(const Unit &unit, int, std::string_view text)
{
    return ReadRangeText(unit.Range(0), text) ? Taken(text) : std::nullopt;
}

std::string ReadHigh(const Unit &unit, int)
{
    const std::string kept = unit.Kept("high");
    return kept.empty() ? RangeText(unit.Range(0), unit.Range(0).high) : kept;
}

std::string ReadLow(const Unit &unit, int)
{
    const std::string kept = unit.Kept("low");
    return kept.empty() ? RangeText(unit.Range(0), unit.Range(0).low) : kept;
}

void AdvanceAlarm(Unit &unit, double from, double to)
{
    const std::string mode = unit.Kept("alarm");
    ChannelState &state = unit.Channel(0);
    if (mode == "0") {
        state.high = state.low = false;
        return;
    }
    const bool latch = mode == "2";
    const Extremes seen = MeasuredBetween(unit, 0, latch ? from : to, to);
    state.high = (latch && state.high) || seen.greatest >= ReadNumber(ReadHigh(unit, 0)).value_or(0);
    state.low = (latch && state.low) || seen.least <= ReadNumber(ReadLow(unit, 0)).value_or(0);
}

/// The alarm is evaluated at once, so that the next read shows its outputs.
void AlarmWritten(Unit &unit, int)
{
    unit.Channel(0).high = unit.Channel(0).low = false;
    AdvanceAlarm(unit, unit.Now(), unit.Now());
}

DrivenOutputs DriveAlarmOutputs(const Unit &unit)
{
    if (unit.Kept("alarm") == "0")
        return {};
    const ChannelState &state = unit.Channel(0);
    return {LowAlarmOutput | HighAlarmOutput,
            (state.low ? LowAlarmOutput : 0) | (state.high ? HighAlarmOutput : 0)};
}

Answer SetAlarm(Unit &unit, const Command &command)
{
    unit.Write("alarm", NoChannel, command.subject);
    return {'!', true, {}, command.stores};
}

Answer ClearLatch(Unit &unit, const Command &)
{
    AlarmWritten(unit, 0);
    return Done();
}

/// The reply of "@AADI": alarm mode, outputs, input.
Answer ReadAlarmAndPoints(Unit &unit, const Command &)
{
    return Done(unit.Kept("alarm") + Hex(unit.Outputs(), 2) + "0" +
                (unit.Has("input") ? unit.Read("input") : "0"));
}

constexpr SettingRow AlarmSettings[] = {
    {"high", "", TakeLimit, false, ReadHigh},
    {"low", "", TakeLimit, false, ReadLow},
    {"alarm", "0", TakeOneOf<'0', '1', '2'>, false, nullptr, AlarmWritten},
    {"outputs", "00", TakeOutputs, false, ReadOutputs, OutputsWritten},
};

constexpr CommandRow AlarmCommands[] = {
    {"@DI", ReadAlarmAndPoints},           {"@DOxx", WriteSetting, "outputs"},
    {"@DA", SetAlarm, "0", Stores},        {"@EAM", SetAlarm, "1", Stores},
    {"@EAL", SetAlarm, "2", Stores},       {"@RH", ReadSetting, "high"},
    {"@RL", ReadSetting, "low"},           {"@HI~", WriteSetting, "high", Stores},
    {"@LO~", WriteSetting, "low", Stores}, {"@CA", ClearLatch},
};

constexpr double InputPeriod = 6000; // milliseconds from one rise of the digital input to the next
constexpr double EventCapacity = 65536;

/// The live input is low in the first half of its period and high in the second.
std::string ReadInput(const Unit &unit, int)
{
    std::string kept = unit.Kept("input");
    if (kept != "live")
        return kept;
    return std::fmod(unit.Now() / InputPeriod, 1) < 0.5 ? "0" : "1";
}

Taken TakeInput(const Unit &, int, std::string_view text)
{
    return text == "live" || text == "0" || text == "1" ? Taken(text) : std::nullopt;
}

void AdvanceEvents(Unit &unit, double from, double to)
{
    if (unit.Kept("input") == "live")
        unit.Channel(0).count += std::floor(to / InputPeriod + 0.5) - std::floor(from / InputPeriod + 0.5);
}

std::string ReadEvents(const Unit &unit, int)
{
    return Decimal(static_cast<unsigned>(std::fmod(unit.Channel(0).count, EventCapacity)), 5);
}

void EventsWritten(Unit &unit, int)
{
    unit.Channel(0).count = ReadDecimal(unit.Kept("events")).value_or(0);
}

Answer ClearEvents(Unit &unit, const Command &)
{
    unit.Channel(0).count = 0;
    return Done();
}

constexpr SettingRow EventSettings[] = {
    {"input", "live", TakeInput, false, ReadInput},
    {"events", "0", TakeDecimal<65535>, false, ReadEvents, EventsWritten},
};

constexpr CommandRow EventCommands[] = {
    {"@RE", ReadSetting, "events"},
    {"@CE", ClearEvents},
};

} // namespace

constinit const Feature InputAlarm{AlarmSettings, AlarmCommands, AdvanceAlarm, DriveAlarmOutputs};
constinit const Feature EventInput{EventSettings, EventCommands, AdvanceEvents};

} // namespace vornsim
