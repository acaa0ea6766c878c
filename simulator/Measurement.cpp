#include "Measurement.h"

#include "BusText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace vornsim
{

namespace
{

constexpr double Period = 20000; // milliseconds of one wave
constexpr double Turn = 2 * std::numbers::pi;

struct Wave {
    double middle;
    double height;
    double phase;
};

/// Each module and channel has a phase of its own, so that the values on a page don't all move alike.
Wave WaveOf(const Unit &unit, int channel)
{
    const RangeRow &range = unit.Range(channel);
    return {(range.low + range.high) / 2, 0.4 * (range.high - range.low), 0.7 * unit.Seed() + 0.9 * channel};
}

std::optional<double> Fixed(const Unit &unit, int channel)
{
    const std::string text = unit.Kept("value", channel);
    if (text == "live")
        return std::nullopt;
    return ReadNumber(text).value_or(std::numeric_limits<double>::infinity());
}

/// Whether the wave passes through the angle `top` on its way from `start` to `end`.
bool Passes(double start, double end, double top)
{
    return std::floor((end - top) / Turn) != std::floor((start - top) / Turn);
}

} // namespace

double Measured(const Unit &unit, int channel, double at)
{
    if (const auto fixed = Fixed(unit, channel))
        return *fixed;
    const Wave wave = WaveOf(unit, channel);
    return wave.middle + wave.height * std::sin(Turn * at / Period + wave.phase);
}

Extremes MeasuredBetween(const Unit &unit, int channel, double from, double to)
{
    const double first = Measured(unit, channel, from);
    const double last = Measured(unit, channel, to);
    Extremes extremes{std::min(first, last), std::max(first, last)};
    if (Fixed(unit, channel))
        return extremes;
    const Wave wave = WaveOf(unit, channel);
    const double start = Turn * from / Period + wave.phase;
    const double end = Turn * to / Period + wave.phase;
    if (Passes(start, end, Turn / 4))
        extremes.greatest = wave.middle + wave.height;
    if (Passes(start, end, Turn * 3 / 4))
        extremes.least = wave.middle - wave.height;
    return extremes;
}

std::optional<std::string> TakeValue(const Unit &, int, std::string_view text)
{
    if (text == "live" || text.size() == 7 || ReadNumber(text))
        return std::string(text);
    return std::nullopt;
}

std::string ReadValue(const Unit &unit, int channel)
{
    std::string kept = unit.Kept("value", channel);
    const bool verbatim = kept != "live" && kept.size() == 7;
    if (verbatim && (unit.Format() == DataFormat::Engineering || !ReadNumber(kept)))
        return kept;
    return InputText(unit.Range(channel), unit.Format(), Measured(unit, channel, unit.Now()));
}

} // namespace vornsim
