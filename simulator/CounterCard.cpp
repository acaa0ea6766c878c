// The counter and frequency card 3962.

#include "Counting.h"
#include "Record.h"
#include "Takers.h"

#include <cmath>

namespace vornsim
{

namespace
{

constexpr std::string_view FrequencyMode = "02";
constexpr double Greatest = 4294967295.0;

void AdvanceCounts(Unit &unit, double from, double to)
{
    if (unit.Read("range") == FrequencyMode)
        return;
    for (int channel = 0; channel < unit.Model().channels; ++channel) {
        const double initial = ReadDecimal(unit.Kept("initial", channel)).value_or(0);
        Count(unit, channel, to - from, {initial, Greatest, true});
    }
}

/// Ten decimal or eight hexadecimal digits. A frequency is counted in hundredths of a hertz.
Answer ReadCounter(Unit &unit, const Command &command)
{
    const int channel = command.match.channel;
    const unsigned value = unit.Read("range") == FrequencyMode
                               ? static_cast<unsigned>(std::lround(Frequency(unit, channel) * 100))
                               : Counted(unit, channel);
    return Data(unit.Format() == DataFormat::Hexadecimal ? Hex(value, 8) : Decimal(value, 10));
}

/// One pair of digits for each channel.
Answer ReadOverflows(Unit &unit, const Command &)
{
    std::string all;
    for (int channel = 0; channel < unit.Model().channels; ++channel)
        all += "0" + ReadOverflow(unit, channel);
    return Done(all);
}

Answer ClearCounter(Unit &unit, const Command &command)
{
    const int channel = command.match.channel;
    unit.Channel(channel).count = ReadDecimal(unit.Kept("initial", channel)).value_or(0);
    unit.Channel(channel).overflow = false;
    return Done();
}

Answer ReadMode(Unit &unit, const Command &)
{
    return Done(unit.Read("range") + unit.Kept("format"));
}

Answer WriteMode(Unit &unit, const Command &command)
{
    const std::string_view data = command.match.data;
    if (!TakeRange(unit, NoChannel, data.substr(0, 2)) || !TakeFormat(unit, NoChannel, data.substr(2)))
        return Refused();
    unit.Write("range", NoChannel, data.substr(0, 2));
    unit.Write("format", NoChannel, data.substr(2));
    return {'!', true, {}, Stores};
}

/// The channels of this card can't be disabled.
Answer ReadMask(Unit &unit, const Command &)
{
    return Done(Hex(LowBits(unit.Model().channels), 2));
}

constexpr SettingRow CounterSettings[] = {
    {"range", "", TakeRange, false, ReadRange},
    {"format", "00", TakeFormat},
    {"filter", "00100", TakeDigits<5, 65535>},
    {"initial", "0000000000", TakeDigits<10>, PerChannel},
    {"running", "1", TakeOneOf<'0', '1'>, PerChannel},
    {"rate", "10", TakeDecimal<1000000>, PerChannel},
    {"count", "0", TakeDecimal<>, PerChannel, ReadCount, CountWritten},
    {"overflow", "", nullptr, PerChannel, ReadOverflow},
    {"frequency", "live", TakeFrequency, PerChannel, ReadFrequency},
};

constexpr CommandRow CounterCommands[] = {
    {"#Cc", ReadCounter},
    {"$B", ReadMode},
    {"$Axxxx", WriteMode},
    {"$6", ReadMask},
    {"$7", ReadOverflows},
    {"$0", ReadSetting, "filter"},
    {"$0ddddd", WriteSetting, "filter", Stores},
    {"$Cc5", ReadSetting, "running"},
    {"$Cc5b", WriteSetting, "running"},
    {"$Cc6", ClearCounter},
    {"@CcG", ReadSetting, "initial"},
    {"@CcPdddddddddd", WriteSetting, "initial", Stores},
};

} // namespace

constinit const Feature CounterCard{CounterSettings, CounterCommands, AdvanceCounts};

} // namespace vornsim
