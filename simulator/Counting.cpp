#include "Counting.h"

#include "BusText.h"

#include <cmath>
#include <numbers>

namespace vornsim
{

namespace
{

constexpr double FrequencyPeriod = 20000; // milliseconds of the wave of a live frequency
constexpr double MiddleFrequency = 1000;  // hertz
constexpr double FrequencySwing = 500;

} // namespace

void Count(Unit &unit, int channel, double milliseconds, const CountLimits &limits)
{
    if (!limits.open || !unit.On("running", channel))
        return;
    ChannelState &state = unit.Channel(channel);
    state.count += ReadDecimal(unit.Kept("rate", channel)).value_or(0) * milliseconds / 1000;
    const double places = limits.greatest - limits.initial + 1;
    if (state.count < limits.greatest + 1 || places < 1)
        return;
    state.overflow = true;
    state.count = limits.initial + std::fmod(state.count - limits.initial, places);
}

unsigned Counted(const Unit &unit, int channel)
{
    return static_cast<unsigned>(unit.Channel(channel).count);
}

double Frequency(const Unit &unit, int channel)
{
    const std::string kept = unit.Kept("frequency", channel);
    if (kept != "live")
        return ReadNumber(kept).value_or(0);
    const double angle =
        2 * std::numbers::pi * unit.Now() / FrequencyPeriod + 0.7 * unit.Seed() + 0.9 * channel;
    return MiddleFrequency + FrequencySwing * std::sin(angle);
}

std::optional<std::string> TakeFrequency(const Unit &, int, std::string_view text)
{
    const auto hertz = ReadNumber(text);
    if (text == "live" || (hertz && *hertz >= 0 && *hertz <= 1e6))
        return std::string(text);
    return std::nullopt;
}

std::string ReadFrequency(const Unit &unit, int channel)
{
    return std::to_string(std::lround(Frequency(unit, channel)));
}

std::string ReadCount(const Unit &unit, int channel)
{
    return std::to_string(Counted(unit, channel));
}

void CountWritten(Unit &unit, int channel)
{
    unit.Channel(channel).count = ReadDecimal(unit.Kept("count", channel)).value_or(0);
}

std::string ReadOverflow(const Unit &unit, int channel)
{
    return unit.Channel(channel).overflow ? "1" : "0";
}

} // namespace vornsim
