#include "shell/LineExchange.h"

#include "platform/Clock.h"
#include "platform/Events.h"
#include "platform/MSComm.h"

#include <algorithm>

namespace vorn
{

namespace
{

constexpr char CarriageReturn = '\r';

/// One lone character counts as nothing.
constexpr int ShortestReply = 2;

} // namespace

LineExchange::Result LineExchange::Run(std::string_view line, std::int64_t timeOut,
                                       const std::function<bool()> &goesOn)
{
    port_.Output(std::string(line) + CarriageReturn);
    const std::uint32_t start = clock_.GetTickCount();
    for (;;) {
        // The time first: what came while the process had no turn isn't late.
        const std::int64_t elapsed = ElapsedTicks(clock_, start);
        if (port_.InBufferCount() >= ShortestReply)
            return Collect(timeOut);
        if (elapsed > timeOut)
            return {Outcome::Silence, {}};
        if (goesOn && !goesOn())
            return {};
        Wait(std::max<std::int64_t>(timeOut - elapsed, 1), ShortestReply);
    }
}

/// Collects the reply up to its carriage return. Text behind a carriage return inside the last piece doubles
/// that piece's head: everything that cuts a reply counts from its front, and finds the first of two replies
/// there.
LineExchange::Result LineExchange::Collect(std::int64_t timeOut)
{
    std::string collected;
    std::string chunk;
    const std::uint32_t start = clock_.GetTickCount();
    for (;;) {
        const std::int64_t elapsed = ElapsedTicks(clock_, start);
        if (elapsed > timeOut)
            return {};
        if (port_.InBufferCount() > 0)
            chunk = port_.Input();
        const std::size_t lineEnd = chunk.find(CarriageReturn);
        if (lineEnd != std::string::npos) {
            if (chunk.back() != CarriageReturn)
                collected += chunk.substr(0, lineEnd + 1);
            chunk.pop_back();
            return {Outcome::Reply, collected + chunk};
        }
        collected += chunk;
        chunk.clear();
        Wait(timeOut - elapsed + 1, 1);
    }
}

/// Serves the windows, and waits for more of the line when not enough of it is there yet.
void LineExchange::Wait(std::int64_t milliseconds, int wanted)
{
    constexpr std::int64_t Slice = 50; // between two looks at the line, whatever woke or failed to wake it
    DoEvents();
    if (port_.InBufferCount() < wanted)
        port_.WaitForInputOrEvents(
            std::chrono::milliseconds(std::clamp<std::int64_t>(milliseconds, 0, Slice)));
}

} // namespace vorn
