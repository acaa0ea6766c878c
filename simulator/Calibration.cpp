#include "Calibration.h"

#include "Takers.h"

#include <array>
#include <cstdio>

namespace vornsim
{

namespace
{

constexpr double DegreesPerCount = 0.009;
constexpr double TerminalTemperature = 25; // degrees Celsius, before any offset

/// Offsets add up.
Answer AddColdJunctionOffset(Unit &unit, const Command &command)
{
    const std::string &data = command.match.data;
    const int counts = static_cast<int>(ReadHex(std::string_view(data).substr(1)).value_or(0));
    const int present = std::stoi(unit.Kept("cjcoffset"));
    unit.Keep("cjcoffset", NoChannel, std::to_string(present + (data.front() == '-' ? -counts : counts)));
    unit.Keep("calibration", NoChannel, "cjc");
    return {'!', true, {}, Stores};
}

/// The temperature of the terminals: sign, four digits, point and one decimal.
std::string ReadColdJunction(const Unit &unit, int)
{
    std::array<char, 32> text{};
    const double offset = std::stoi(unit.Kept("cjcoffset")) * DegreesPerCount;
    std::snprintf(text.data(), text.size(), "%+07.1f", TerminalTemperature + offset);
    return text.data();
}

constexpr SettingRow ZeroSpanSettings[] = {{"calibration", "", TakeAny}};
constexpr CommandRow ZeroSpanCommands[] = {
    {"$0", StoreCalibration, "span"},
    {"$1", StoreCalibration, "zero"},
};

constexpr CommandRow ChannelZeroSpanCommands[] = {
    {"$Cc0", StoreCalibration, "span"},
    {"$Cc1", StoreCalibration, "zero"},
};

constexpr SettingRow ColdJunctionSettings[] = {
    {"cjcoffset", "0", nullptr},
    {"cjc", "", nullptr, false, ReadColdJunction},
};
constexpr CommandRow ColdJunctionCommands[] = {
    {"$9sxxxx", AddColdJunctionOffset},
    {"$3", ReadProcess, "cjc"},
};

} // namespace

Answer StoreCalibration(Unit &unit, const Command &command)
{
    unit.Keep("calibration", command.match.channel, std::string(command.subject));
    return {'!', true, {}, Stores};
}

constinit const Feature ZeroSpan{ZeroSpanSettings, ZeroSpanCommands};
constinit const Feature ChannelZeroSpan{{}, ChannelZeroSpanCommands};
constinit const Feature ColdJunction{ColdJunctionSettings, ColdJunctionCommands};

} // namespace vornsim
