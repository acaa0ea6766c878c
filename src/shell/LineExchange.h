#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace vorn
{

class Clock;
class MSComm;

/// One line out and one line back on a port that is open. The windows are served during the waits.
class LineExchange final
{
public:
    enum class Outcome {
        Silence, ///< nothing came within the time-out; one lone character counts as nothing
        Broken,  ///< a reply began but lost its carriage return, or the wait was broken off
        Reply,
    };

    struct Result {
        Outcome outcome = Outcome::Broken;
        std::string reply; ///< without its carriage return
    };

    LineExchange(MSComm &port, const Clock &clock) : port_(port), clock_(clock) {}

    /// Sends `line` and a carriage return, and waits for a reply: `timeOut` milliseconds for its beginning,
    /// and as long again for its end. `goesOn` is asked while nothing has come; the wait is broken off when
    /// it says no. What the port throws goes through.
    Result Run(std::string_view line, std::int64_t timeOut, const std::function<bool()> &goesOn = {});

private:
    Result Collect(std::int64_t timeOut);
    void Wait(std::int64_t milliseconds, int wanted);

    MSComm &port_;
    const Clock &clock_;
};

} // namespace vorn
