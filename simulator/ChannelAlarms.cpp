// Alarms of the channels of a slot card. The high and the low alarm work alike; the names of their settings
// begin with "high" and "low".

#include "ChannelAlarms.h"

#include "Counting.h"
#include "Measurement.h"
#include "Takers.h"

namespace vornsim
{

namespace
{

constexpr std::string_view Nowhere = "S*C*";
constexpr std::string_view CounterFrequency = "02";
constexpr std::size_t CounterLimitDigits = 10;

bool IsCounter(const Unit &unit)
{
    return unit.Has("count");
}

std::string Side(const Command &command, std::string_view rest)
{
    return (command.match.side == 'H' ? "high" : "low") + std::string(rest);
}

/// A counter's limit has ten digits. Any other limit is a number within the range and is kept in the form in
/// which the range writes its values.
Taken TakeLimit(const Unit &unit, int channel, std::string_view text)
{
    if (IsCounter(unit))
        return text.size() == CounterLimitDigits && ReadDecimal(text) ? Taken(text) : std::nullopt;
    const auto value = ReadNumber(text);
    const RangeRow &range = unit.Range(channel);
    return value && *value >= range.low && *value <= range.high ? Taken(RangeText(range, *value))
                                                                : std::nullopt;
}

std::string Limit(const Unit &unit, std::string_view name, int channel, double end)
{
    std::string kept = unit.Kept(name, channel);
    if (!kept.empty())
        return kept;
    return IsCounter(unit) ? Decimal(static_cast<unsigned>(end), CounterLimitDigits)
                           : RangeText(unit.Range(channel), end);
}

std::string ReadHigh(const Unit &unit, int channel)
{
    return Limit(unit, "high", channel, unit.Range(channel).high);
}

std::string ReadLow(const Unit &unit, int channel)
{
    return Limit(unit, "low", channel, unit.Range(channel).low);
}

/// "S", slot, "C", output; the output is one hexadecimal digit or a decimal number up to 15. Slot and output
/// may both be "*", which means no connection.
Taken TakeConnection(const Unit &, int, std::string_view text)
{
    if (text == Nowhere)
        return std::string(text);
    if (text.size() < 4 || text[0] != 'S' || text[1] < '0' || text[1] > '7' || text[2] != 'C')
        return std::nullopt;
    const std::string_view point = text.substr(3);
    const auto number = point.size() == 1 ? ReadHex(point) : ReadDecimal(point);
    if (!number || *number > 15 || point.size() > 2)
        return std::nullopt;
    return std::string(text.substr(0, 3)) + Hex(*number, 1);
}

void ConnectionWritten(Unit &unit, int)
{
    unit.SetConnects();
}

Extremes Observed(const Unit &unit, int channel, double from, double to)
{
    if (!IsCounter(unit))
        return MeasuredBetween(unit, channel, from, to);
    const bool frequency = unit.Read("range") == CounterFrequency;
    const double value = frequency ? Frequency(unit, channel) : Counted(unit, channel);
    return {value, value};
}

bool Latches(const Unit &unit, std::string_view name, int channel)
{
    return !unit.Has(name) || unit.Kept(name, channel) == "L"; // a card without alarm modes always latches
}

void AdvanceChannel(Unit &unit, int channel, double from, double to)
{
    ChannelState &state = unit.Channel(channel);
    const bool high = unit.On("highenabled", channel);
    const bool low = unit.On("lowenabled", channel);
    const bool latchHigh = Latches(unit, "highmode", channel);
    const bool latchLow = Latches(unit, "lowmode", channel);
    state.high =
        high && ((latchHigh && state.high) || Observed(unit, channel, latchHigh ? from : to, to).greatest >=
                                                  ReadNumber(ReadHigh(unit, channel)).value_or(0));
    state.low = low && ((latchLow && state.low) || Observed(unit, channel, latchLow ? from : to, to).least <=
                                                       ReadNumber(ReadLow(unit, channel)).value_or(0));
}

void AdvanceAlarms(Unit &unit, double from, double to)
{
    for (int channel = 0; channel < unit.Model().channels; ++channel) {
        if (unit.On("highenabled", channel) || unit.On("lowenabled", channel))
            AdvanceChannel(unit, channel, from, to);
        else
            unit.Channel(channel).high = unit.Channel(channel).low = false;
    }
}

void HighWritten(Unit &unit, int channel)
{
    unit.Channel(channel).high = false;
    AdvanceChannel(unit, channel, unit.Now(), unit.Now());
}

void LowWritten(Unit &unit, int channel)
{
    unit.Channel(channel).low = false;
    AdvanceChannel(unit, channel, unit.Now(), unit.Now());
}

std::string ReadStates(const Unit &unit, int channel)
{
    const ChannelState &state = unit.Channel(channel);
    return std::string(state.high ? "1" : "0") + (state.low ? "1" : "0");
}

/// "D" when disabled, otherwise "M" or "L".
Answer ReadMode(Unit &unit, const Command &command)
{
    const int channel = command.match.channel;
    if (!unit.On(Side(command, "enabled"), channel))
        return Done("D");
    return Done(Latches(unit, Side(command, "mode"), channel) ? "L" : "M");
}

Answer Enable(Unit &unit, const Command &command)
{
    unit.Write(Side(command, "enabled"), command.match.channel, command.match.data == "E" ? "1" : "0");
    return {'!', true, {}, Stores};
}

Answer ReadSide(Unit &unit, const Command &command)
{
    return Done(unit.Read(Side(command, command.subject), command.match.channel));
}

Answer WriteSide(Unit &unit, const Command &command)
{
    const bool taken = unit.Write(Side(command, command.subject), command.match.channel, command.match.data);
    return taken ? Answer{'!', true, {}, Stores} : Refused();
}

Answer ClearLatch(Unit &unit, const Command &command)
{
    if (command.match.side == 'H')
        HighWritten(unit, command.match.channel);
    else
        LowWritten(unit, command.match.channel);
    return Done();
}

constexpr SettingRow ModeSettings[] = {
    {"highmode", "M", TakeOneOf<'M', 'L'>, PerChannel, nullptr, HighWritten},
    {"lowmode", "M", TakeOneOf<'M', 'L'>, PerChannel, nullptr, LowWritten},
    {"events", "0", TakeDecimal<>, PerChannel},
};

Answer ClearEvents(Unit &unit, const Command &command)
{
    unit.Keep("events", command.match.channel, "0");
    return Done();
}

constexpr CommandRow ModeCommands[] = {
    {"$CcAhm", WriteSide, "mode"},
    {"$Cc6", ClearEvents},
};

constexpr SettingRow AlarmSettings[] = {
    {"high", "", TakeLimit, PerChannel, ReadHigh, HighWritten},
    {"low", "", TakeLimit, PerChannel, ReadLow, LowWritten},
    {"highenabled", "0", TakeOneOf<'0', '1'>, PerChannel, nullptr, HighWritten},
    {"lowenabled", "0", TakeOneOf<'0', '1'>, PerChannel, nullptr, LowWritten},
    {"highout", Nowhere, TakeConnection, PerChannel, nullptr, ConnectionWritten},
    {"lowout", Nowhere, TakeConnection, PerChannel, nullptr, ConnectionWritten},
    {"alarms", "", nullptr, PerChannel, ReadStates},
};

constexpr CommandRow AlarmCommands[] = {
    {"$CcS", ReadSetting, "alarms"}, {"$CcAh", ReadMode},      {"$CcAhEe", Enable},
    {"$CcAhU~", WriteSide, ""},      {"$CcRhU", ReadSide, ""}, {"$CcAhC~", WriteSide, "out"},
    {"$CcRhC", ReadSide, "out"},     {"$CcCh", ClearLatch},
};

} // namespace

std::optional<Connection> AlarmConnection(const Unit &unit, std::string_view name, int channel)
{
    const std::string text = unit.Kept(name, channel);
    if (text.empty() || text == Nowhere)
        return std::nullopt;
    return Connection{text[1] - '0', static_cast<int>(ReadHex(text.substr(3)).value_or(0))};
}

constinit const Feature ChannelModes{ModeSettings, ModeCommands};
constinit const Feature ChannelAlarms{AlarmSettings, AlarmCommands, AdvanceAlarms};

} // namespace vornsim
