// What the models have in common that hosts have a console for: their record, and the communication watchdog.

#include "Outputs.h"
#include "Record.h"
#include "Takers.h"

#include <algorithm>
#include <cctype>

namespace vornsim
{

namespace
{

constexpr std::string_view NoType = "FF"; ///< leaves the types of the channels as they are

std::string UpperCase(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper;
}

Answer StoreRecord(Unit &unit, std::string_view address, std::string_view line)
{
    if (!TakeHex<2>(unit, NoChannel, address) || !WriteLine(unit, line))
        return Refused();
    unit.Write("address", NoChannel, address);
    return {'!', true, {}, Stores};
}

Answer ReadFreeRecord(Unit &unit, const Command &)
{
    return {'!', false, unit.Kept("address") + "00" + ReadLine(unit), false, true};
}

/// `%AANNTTCCFF`, whatever the type code says: each channel has its own.
Answer WriteFreeRecord(Unit &unit, const Command &command)
{
    const std::string_view data = command.match.data;
    const bool hex = data.size() == 8 && ReadHex(UpperCase(data.substr(2, 2)));
    return hex ? StoreRecord(unit, data.substr(0, 2), data.substr(4)) : Refused();
}

Answer ReadCommonRecord(Unit &unit, const Command &)
{
    return {'!', false, unit.Kept("address") + unit.Kept("common") + ReadLine(unit), false, true};
}

/// The same; the type code is taken in small letters too, and goes to all channels.
Answer WriteCommonRecord(Unit &unit, const Command &command)
{
    const std::string_view data = command.match.data;
    if (data.size() != 8)
        return Refused();
    const std::string type = UpperCase(data.substr(2, 2));
    if (type != NoType && !TakeRange(unit, NoChannel, type))
        return Refused();
    const Answer answer = StoreRecord(unit, data.substr(0, 2), data.substr(4));
    if (answer.lead == '!') {
        unit.Keep("common", NoChannel, type);
        if (type != NoType)
            unit.Write("range", NoChannel, type);
    }
    return answer;
}

/// Outputs go off when no command came for as long as the watchdog says, in tenths of a second.
void AdvanceWatchdog(Unit &unit, double from, double to)
{
    const double time = ReadDecimal(unit.Kept("watchdog")).value_or(0) * 100.0;
    if (time > 0 && to - from > time && unit.Model().outputs > 0)
        unit.WriteOutputs(0);
}

constexpr SettingRow QuickRestartSettings[] = {{"restart", "50", TakeDecimal<60000>}};

constexpr CommandRow FreeRecordCommands[] = {{"$2", ReadFreeRecord}, {"%~", WriteFreeRecord}};

constexpr SettingRow CommonRecordSettings[] = {{"common", NoType, TakeHex<2>}};
constexpr CommandRow CommonRecordCommands[] = {{"$2", ReadCommonRecord}, {"%~", WriteCommonRecord}};

constexpr SettingRow WatchdogSettings[] = {{"watchdog", "0000", TakeDigits<4>}};
constexpr CommandRow WatchdogCommands[] = {
    {"$Y", ReadSetting, "watchdog"},
    {"$X~", WriteSetting, "watchdog"},
};

} // namespace

constinit const Feature QuickRestart{QuickRestartSettings, {}};
constinit const Feature FreeRecord{{}, FreeRecordCommands};
constinit const Feature CommonRecord{CommonRecordSettings, CommonRecordCommands};
constinit const Feature Watchdog{WatchdogSettings, WatchdogCommands, AdvanceWatchdog};

} // namespace vornsim
