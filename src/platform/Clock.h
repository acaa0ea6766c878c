#pragma once

#include <cstdint>

namespace vorn
{

/// The program's time. Waits and log records read it from here, so that tests can put a clock of their own in
/// its place.
class Clock
{
public:
    Clock() = default;
    virtual ~Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;

    /// Milliseconds of a steady counter; wraps after 2^32, so that differences are to be taken unsigned.
    virtual std::uint32_t GetTickCount() const;

    /// Seconds since local midnight, with fractions; falls back to 0 at midnight.
    virtual double Timer() const;
};

/// Milliseconds from `start` to now, right across the wrap of the tick counter.
std::int64_t ElapsedTicks(const Clock &clock, std::uint32_t start);

/// Seconds from `start` (a `Timer` reading) to now, right across midnight.
double ElapsedSeconds(const Clock &clock, double start);

} // namespace vorn
