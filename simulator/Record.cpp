// The record, the name and the firmware version of every module, and the slots of a base unit.

#include "Record.h"

#include "Takers.h"

#include <algorithm>
#include <array>

namespace vornsim
{

namespace
{

struct BaudRow {
    std::string_view speed;
    std::string_view code;
};

constexpr std::array<BaudRow, 8> Bauds{{{"1200", "03"},
                                        {"2400", "04"},
                                        {"4800", "05"},
                                        {"9600", "06"},
                                        {"19200", "07"},
                                        {"38400", "08"},
                                        {"57600", "09"},
                                        {"115200", "0A"}}};

constexpr unsigned ChecksumBit = 0x40;
constexpr unsigned SlewBits = 0x3C;
constexpr unsigned GreatestSlew = 11;

std::string_view BaudCode(std::string_view speed)
{
    const auto *row =
        std::find_if(Bauds.begin(), Bauds.end(), [&](const BaudRow &b) { return b.speed == speed; });
    return row == Bauds.end() ? std::string_view{} : row->code;
}

std::string_view BaudSpeed(std::string_view code)
{
    const auto *row =
        std::find_if(Bauds.begin(), Bauds.end(), [&](const BaudRow &b) { return b.code == code; });
    return row == Bauds.end() ? std::string_view{} : row->speed;
}

Taken TakeBaud(const Unit &, int, std::string_view speed)
{
    return BaudCode(speed).empty() ? std::nullopt : Taken(speed);
}

/// The record of a base unit has no range field.
bool HasRangeField(const Unit &unit)
{
    return unit.Model().slots == 0;
}

std::string RecordFields(const Unit &unit)
{
    return (HasRangeField(unit) ? unit.Read("range") : "") + ReadLine(unit);
}

/// The record holds the stored address also in INIT state, where the module answers at 00.
Answer ReadRecord(Unit &unit, const Command &)
{
    return {'!', false, unit.Kept("address") + RecordFields(unit), false, true};
}

/// Whether a write leaves line speed and checksum as they are, which it must outside of INIT state.
bool LineKept(const Unit &unit, std::string_view speed, unsigned format)
{
    const unsigned present = ReadHex(unit.Kept("format")).value_or(0);
    return speed == unit.Kept("baud") && ((format ^ present) & ChecksumBit) == 0;
}

/// `%AANNTTCCFF`; `%AANNCCFF` on a base unit, whose address is set by switches and doesn't change.
Answer WriteRecord(Unit &unit, const Command &command)
{
    const std::string_view data = command.match.data;
    const bool ranged = HasRangeField(unit);
    if (data.size() != (ranged ? 8U : 6U))
        return Refused();
    const std::string_view range = ranged ? data.substr(2, 2) : "";
    if (ranged && !TakeRange(unit, NoChannel, range))
        return Refused();
    if (!WriteLine(unit, data.substr(data.size() - 4)))
        return Refused();
    if (ranged) {
        unit.Write("address", NoChannel, data.substr(0, 2));
        unit.Write("range", NoChannel, range);
    }
    return {'!', true, {}, Stores};
}

Answer ReadModel(Unit &unit, const Command &)
{
    return Done((unit.On("family") ? "VORN" : "") + std::string(unit.Model().name));
}

std::string ReadChecksum(const Unit &unit, int)
{
    return ReadHex(unit.Kept("format")).value_or(0) & ChecksumBit ? "yes" : "no";
}

void ChecksumWritten(Unit &unit, int)
{
    const unsigned format = ReadHex(unit.Kept("format")).value_or(0);
    unit.Keep("format", NoChannel,
              Hex(unit.On("checksum") ? format | ChecksumBit : format & ~ChecksumBit, 2));
}

constexpr SettingRow IdentitySettings[] = {
    {"address", "01", TakeHex<2>},
    {"init", "no", TakeYesNo},
    {"range", "", TakeRange, false, ReadRange, RangeWritten},
    {"baud", "9600", TakeBaud},
    {"format", "00", TakeFormat},
    {"checksum", "no", TakeYesNo, false, ReadChecksum, ChecksumWritten},
    {"family", "yes", TakeYesNo},
    {"version", "B1.02", TakeAny},
    {"restart", "300", TakeDecimal<60000>},
};

constexpr CommandRow IdentityCommands[] = {
    {"$2", ReadRecord}, {"%xxxxxx", WriteRecord},       {"%xxxxxxxx", WriteRecord},
    {"$M", ReadModel},  {"$F", ReadSetting, "version"},
};

Answer EnterDownload(Unit &unit, const Command &)
{
    unit.Keep("download", NoChannel, "yes");
    return Done();
}

constexpr SettingRow BaseSettings[] = {
    {"slots", "", nullptr},        {"download", "no", TakeYesNo},
    {"echo", "2", TakeDecimal<2>}, {"loaderstart", "500", TakeDecimal<60000>},
    {"images", "", TakeAny},
};
constexpr CommandRow BaseCommands[] = {{"$T", ReadSetting, "slots"}, {"$D", EnterDownload}};

} // namespace

std::string ReadLine(const Unit &unit)
{
    return std::string(BaudCode(unit.Kept("baud"))) + unit.Kept("format");
}

bool WriteLine(Unit &unit, std::string_view fields)
{
    const std::string_view speed = BaudSpeed(fields.substr(0, 2));
    const std::string_view format = fields.substr(2);
    if (speed.empty() || !TakeFormat(unit, NoChannel, format))
        return false;
    if (!unit.On("init") && !LineKept(unit, speed, ReadHex(format).value_or(0)))
        return false;
    unit.Write("baud", NoChannel, speed);
    unit.Write("format", NoChannel, format);
    return true;
}

Taken TakeRange(const Unit &unit, int, std::string_view code)
{
    return FindRange(unit.Model().ranges, code) ? Taken(code) : std::nullopt;
}

std::string ReadRange(const Unit &unit, int channel)
{
    const std::string kept = unit.Kept("range", channel);
    return kept.empty() ? std::string(unit.Model().range) : kept;
}

void RangeWritten(Unit &unit, int channel)
{
    const int first = channel == NoChannel ? 0 : channel;
    const int last = channel == NoChannel ? unit.Model().channels - 1 : channel;
    for (int i = first; i <= last; ++i) {
        const RangeRow &range = unit.Range(i);
        ChannelState &state = unit.Channel(i);
        state.target = std::clamp(state.target, range.low, range.high);
        state.output = std::clamp(state.output, range.low, range.high);
        state.startup = std::clamp(state.startup, range.low, range.high);
    }
}

Taken TakeFormat(const Unit &unit, int, std::string_view text)
{
    const ModelRow &model = unit.Model();
    const auto bits = text.size() == 2 ? ReadHex(text) : std::nullopt;
    const unsigned known = model.formatBits | (model.IsCard() ? 0 : ChecksumBit);
    if (!bits || (*bits & ~known) != 0)
        return std::nullopt;
    if (model.dataFormats.find(static_cast<char>('0' + (*bits & 3))) == std::string_view::npos)
        return std::nullopt;
    if ((model.formatBits & SlewBits) == SlewBits && (*bits & SlewBits) >> 2 > GreatestSlew)
        return std::nullopt;
    return std::string(text);
}

constinit const Feature Identity{IdentitySettings, IdentityCommands};
constinit const Feature BaseUnit{BaseSettings, BaseCommands};

} // namespace vornsim
