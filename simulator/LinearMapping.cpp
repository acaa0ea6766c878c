// The linear mapping of 7212D: an input range, an output range, and whether the mapping is on.

#include "Takers.h"

#include <algorithm>

namespace vornsim
{

namespace
{

/// The two settings that a mapping command reads or writes, by its `subject`.
std::string Low(std::string_view subject)
{
    return std::string(subject) + "low";
}

std::string High(std::string_view subject)
{
    return std::string(subject) + "high";
}

Answer ReadPair(Unit &unit, const Command &command)
{
    return Done(unit.Read(Low(command.subject)) + unit.Read(High(command.subject)));
}

/// Low limit, then high limit, seven characters each. The low limit must be below the high limit.
Answer WritePair(Unit &unit, const Command &command)
{
    const std::string_view data = command.match.data;
    if (data.size() != 14 || ReadNumber(data.substr(0, 7)) >= ReadNumber(data.substr(7)))
        return Refused();
    Unit changed = unit;
    if (!changed.Write(Low(command.subject), NoChannel, data.substr(0, 7)) ||
        !changed.Write(High(command.subject), NoChannel, data.substr(7)))
        return Refused();
    unit = changed;
    return {'!', true, {}, Stores};
}

Taken TakeInputEnd(const Unit &unit, int, std::string_view text)
{
    return ReadRangeText(unit.Range(0), text) ? Taken(text) : std::nullopt;
}

Taken TakeOutputEnd(const Unit &, int, std::string_view text)
{
    const bool sign = text.starts_with('+') || text.starts_with('-');
    return sign && text.size() == 7 && std::count(text.begin(), text.end(), '.') == 1 && ReadNumber(text)
               ? Taken(text)
               : std::nullopt;
}

std::string ReadInputLow(const Unit &unit, int)
{
    const std::string kept = unit.Kept("inputlow");
    return kept.empty() ? RangeText(unit.Range(0), unit.Range(0).low) : kept;
}

std::string ReadInputHigh(const Unit &unit, int)
{
    const std::string kept = unit.Kept("inputhigh");
    return kept.empty() ? RangeText(unit.Range(0), unit.Range(0).high) : kept;
}

constexpr SettingRow MappingSettings[] = {
    {"mapping", "0", TakeOneOf<'0', '1'>},
    {"inputlow", "", TakeInputEnd, false, ReadInputLow},
    {"inputhigh", "", TakeInputEnd, false, ReadInputHigh},
    {"outputlow", "-100.00", TakeOutputEnd},
    {"outputhigh", "+100.00", TakeOutputEnd},
};

constexpr CommandRow MappingCommands[] = {
    {"$B", ReadSetting, "mapping"}, {"$Ab", WriteSetting, "mapping", Stores},
    {"$3", ReadPair, "input"},      {"$5", ReadPair, "output"},
    {"$6~", WritePair, "input"},    {"$7~", WritePair, "output"},
};

} // namespace

constinit const Feature LinearMapping{MappingSettings, MappingCommands};

} // namespace vornsim
