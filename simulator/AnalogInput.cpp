// The values of analog inputs, of stand-alone modules and of slot cards, and their channel masks.

#include "Measurement.h"
#include "Record.h"
#include "Takers.h"

namespace vornsim
{

namespace
{

bool Enabled(const Unit &unit, int channel)
{
    return ReadHex(ReadMask(unit, 0)).value_or(0) >> channel & 1;
}

Answer ReadRangeAndFormat(Unit &unit, const Command &command)
{
    return Done(unit.Read("range", command.match.channel) + unit.Kept("format"));
}

Answer WriteRangeAndFormat(Unit &unit, const Command &command)
{
    const std::string_view data = command.match.data;
    if (!TakeRange(unit, NoChannel, data.substr(0, 2)) || !TakeFormat(unit, NoChannel, data.substr(2)))
        return Refused();
    unit.Write("range", NoChannel, data.substr(0, 2));
    unit.Write("format", NoChannel, data.substr(2));
    return {'!', true, {}, Stores};
}

constexpr SettingRow SingleSettings[] = {{"value", "live", TakeValue, PerChannel, ReadValue}};
constexpr CommandRow SingleCommands[] = {{"#", ReadProcess, "value"}};

constexpr SettingRow MultiSettings[] = {
    {"mask", "", TakeMask, false, ReadMask},
    {"value", "live", TakeValue, PerChannel, ReadValue},
};

constexpr CommandRow MultiCommands[] = {
    {"#c", ReadChannel, "value"},
    {"$6", ReadSetting, "mask"},
    {"$5xx", WriteSetting, "mask", Stores},
};

constexpr SettingRow CardRecordSettings[] = {
    {"range", "", TakeRange, false, ReadRange, RangeWritten},
    {"format", "00", TakeFormat},
};

constexpr CommandRow CardRecordCommands[] = {
    {"$B", ReadRangeAndFormat},
    {"$Axxxx", WriteRangeAndFormat},
};

constexpr SettingRow FastRecordSettings[] = {
    {"range", "", TakeRange, PerChannel, ReadRange, RangeWritten},
    {"format", "00", TakeFormat},
};

// "FF" in either field of a write leaves that field as it is. Of a fast card the format belongs to the slot
// and the range to the channel: what a write says of the other one must be possible, and is let go.
Answer WriteFastRecord(Unit &unit, const Command &command)
{
    constexpr std::string_view AsItIs = "FF";
    const int channel = command.match.channel;
    const std::string_view range = std::string_view(command.match.data).substr(0, 2);
    const std::string_view format = std::string_view(command.match.data).substr(2);
    const bool ofSlot = channel == NoChannel;
    if ((range != AsItIs && !TakeRange(unit, ofSlot ? 0 : channel, range)) ||
        (format != AsItIs && !TakeFormat(unit, NoChannel, format)))
        return Refused();
    if (ofSlot && format != AsItIs)
        unit.Write("format", NoChannel, format);
    if (!ofSlot && range != AsItIs)
        unit.Write("range", channel, range);
    return {'!', true, {}, Stores};
}

constexpr CommandRow FastRecordCommands[] = {
    {"$B", ReadRangeAndFormat},
    {"$Axxxx", WriteFastRecord},
    {"$CcB", ReadRangeAndFormat},
    {"$CcAxxxx", WriteFastRecord},
};

constexpr CommandRow CardInputCommands[] = {
    {"#", ReadAllChannels},
    {"#Cc", ReadChannel, "value"},
};

constexpr SettingRow MaskSettings[] = {{"mask", "", TakeMask, false, ReadMask}};
constexpr CommandRow MaskCommands[] = {
    {"$6", ReadSetting, "mask"},
    {"$5xx", WriteSetting, "mask", Stores},
};

} // namespace

Taken TakeMask(const Unit &unit, int, std::string_view text)
{
    const auto bits = text.size() == 2 ? ReadHex(text) : std::nullopt;
    return bits && (*bits & ~LowBits(unit.Model().channels)) == 0 ? Taken(text) : std::nullopt;
}

std::string ReadMask(const Unit &unit, int)
{
    const std::string kept = unit.Kept("mask");
    return kept.empty() ? Hex(LowBits(unit.Model().channels), 2) : kept;
}

Answer ReadChannel(Unit &unit, const Command &command)
{
    return Enabled(unit, command.match.channel) ? ReadProcess(unit, command) : Refused();
}

Answer ReadAllChannels(Unit &unit, const Command &)
{
    const std::size_t width = unit.Format() == DataFormat::Hexadecimal ? 4 : 7;
    std::string all;
    for (int channel = 0; channel < unit.Model().channels; ++channel)
        all += Enabled(unit, channel) ? unit.Read("value", channel) : std::string(width, ' ');
    return Data(all);
}

constinit const Feature SingleInput{SingleSettings, SingleCommands};
constinit const Feature MultiInput{MultiSettings, MultiCommands};
constinit const Feature CardRecord{CardRecordSettings, CardRecordCommands};
constinit const Feature FastCardRecord{FastRecordSettings, FastRecordCommands};
constinit const Feature CardInputs{SingleSettings, CardInputCommands};
constinit const Feature ChannelMask{MaskSettings, MaskCommands};

} // namespace vornsim
