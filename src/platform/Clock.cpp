#include "platform/Clock.h"

#include <QTime>

#include <chrono>

namespace vorn
{

std::uint32_t Clock::GetTickCount() const
{
    using namespace std::chrono;
    return static_cast<std::uint32_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

double Clock::Timer() const
{
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

std::int64_t ElapsedTicks(const Clock &clock, std::uint32_t start)
{
    return static_cast<std::uint32_t>(clock.GetTickCount() - start);
}

double ElapsedSeconds(const Clock &clock, double start)
{
    constexpr double SecondsPerDay = 86400;
    const double now = clock.Timer();
    return (now < start ? now + SecondsPerDay : now) - start;
}

} // namespace vorn
