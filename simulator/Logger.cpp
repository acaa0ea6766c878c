// The memory of 7224M: its configuration, the limits of its channels, and the records. The content of a
// record is computed from its number, so that a test can check a transfer.

#include "Takers.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace vornsim
{

namespace
{

constexpr unsigned MixedEventStart = 0x3FFC; // first address of event records in mixed mode

enum class Storage { Standard = 0, Event = 1, Mixed = 2 };

Storage StorageMode(const Unit &unit)
{
    return static_cast<Storage>(unit.Kept("memory").at(3) - '0');
}

/// The configuration: channel mask, stand-alone flag, storage mode, storage type, interval.
Taken TakeMemory(const Unit &, int, std::string_view text)
{
    const bool known = text.size() == 9 && ReadHex(text.substr(0, 2)) && (text[2] == '0' || text[2] == '1') &&
                       text[3] >= '0' && text[3] <= '2' && (text[4] == '0' || text[4] == '1') &&
                       ReadHex(text.substr(5));
    return known ? Taken(text) : std::nullopt;
}

/// High limit, then low limit; each is a sign, the number of decimals, and four hexadecimal digits.
Taken TakeLimits(const Unit &, int, std::string_view text)
{
    return MatchCommand("sdxxxxsdxxxx", text, 0) ? Taken(text) : std::nullopt;
}

/// A record: channel, decimals and sign, magnitude. An event record also has a time stamp at its end.
std::string Record(unsigned number, bool event)
{
    const unsigned channel = number % 8;
    const unsigned flags = 2U << 1 | (number % 3 == 0 ? 1U : 0); // two decimals, every third value below zero
    const std::string value = Hex(channel, 1) + Hex(flags, 1) + Hex(number * 37 % 10000, 4);
    return event ? value + Hex(0x10000U + number * 60, 8) : value;
}

Answer ReadRecordAt(Unit &unit, const Command &command)
{
    const unsigned address = ReadHex(command.match.data).value_or(0);
    const Storage mode = StorageMode(unit);
    const unsigned eventStart = mode == Storage::Mixed ? MixedEventStart : 0;
    const unsigned records = ReadDecimal(unit.Kept("records")).value_or(0);
    const unsigned events = ReadDecimal(unit.Kept("eventrecords")).value_or(0);
    const bool ofEvents = mode == Storage::Mixed && address >= MixedEventStart;
    if (mode != Storage::Event && !ofEvents && address < records)
        return Done(Record(address, false));
    if (mode != Storage::Standard && address >= eventStart && address - eventStart < events)
        return Done(Record(address - eventStart, true));
    return Refused();
}

Answer CountRecords(Unit &unit, const Command &command)
{
    const Storage without = command.subject == "records" ? Storage::Event : Storage::Standard;
    const unsigned count = ReadDecimal(unit.Kept(command.subject)).value_or(0);
    return Done(Hex(StorageMode(unit) == without ? 0 : count, 4));
}

/// While it records, each sampling interval adds a record of each channel that is logged, as far as the
/// memory goes. Events don't come by themselves.
void Sample(Unit &unit, double from, double to)
{
    constexpr unsigned Most = 65535;
    const std::string memory = unit.Kept("memory");
    const double interval = 1000.0 * ReadHex(std::string_view(memory).substr(5)).value_or(0); // milliseconds
    if (interval <= 0 || unit.Kept("recording") != "1" || StorageMode(unit) == Storage::Event)
        return;
    const auto channels = static_cast<double>(
        std::popcount(ReadHex(std::string_view(memory).substr(0, 2)).value_or(0) & LowBits(8)));
    const double samples = std::floor(to / interval) - std::floor(from / interval);
    const unsigned most = StorageMode(unit) == Storage::Mixed ? MixedEventStart : Most;
    const double records = ReadDecimal(unit.Kept("records")).value_or(0) + samples * channels;
    unit.Keep("records", NoChannel, std::to_string(static_cast<unsigned>(std::min<double>(records, most))));
}

constexpr SettingRow LoggerSettings[] = {
    {"memory", "FF000000A", TakeMemory},       {"limits", "+22710-00000", TakeLimits, PerChannel},
    {"recording", "0", TakeOneOf<'0', '1'>},   {"records", "24", TakeDecimal<65535>},
    {"eventrecords", "6", TakeDecimal<65535>},
};

constexpr CommandRow LoggerCommands[] = {
    {"@D", ReadSetting, "memory"},    {"@C~", WriteSetting, "memory", Stores},
    {"@Bc", ReadSetting, "limits"},   {"@Ac~", WriteSetting, "limits", Stores},
    {"@T", ReadSetting, "recording"}, {"@Sb", WriteSetting, "recording"},
    {"@N", CountRecords, "records"},  {"@L", CountRecords, "eventrecords"},
    {"@Rxxxx", ReadRecordAt},
};

} // namespace

constinit const Feature Logger{LoggerSettings, LoggerCommands, Sample};

} // namespace vornsim
