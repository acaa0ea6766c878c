#include "platform/Clock.h"

#include <chrono>
#include <ctime>

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
    std::timespec now{};
    std::tm local{};
    std::timespec_get(&now, TIME_UTC);
    localtime_r(&now.tv_sec, &local);
    const int seconds = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
    return seconds + static_cast<double>(now.tv_nsec) / 1e9;
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
