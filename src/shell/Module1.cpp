#include "shell/Module1.h"

#include "platform/Clock.h"
#include "platform/Events.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"
#include "shell/FormMain.h"

#include <algorithm>

namespace vorn
{

namespace
{

constexpr double ReadySeconds = 30;
constexpr double IdleSeconds = 0.5;
constexpr int DeadBusPause = 20; // milliseconds

/// Polls until the module answers or 30 seconds have gone. A refused port ends it, too.
void PollUntilReply(FormMain &main, const std::string &command, bool checksum, const GivenUp &givenUp)
{
    const double start = main.Time.Timer();
    do {
        DoEvents();
        if (ElapsedSeconds(main.Time, start) > ReadySeconds || (givenUp && givenUp()))
            return;
        if (main.TransBusy) // a dead bus takes no transaction: nothing to spin for
            WaitForEvents(DeadBusPause);
        main.trans(std::string(command), checksum);
    } while (main.ReplyText.empty() && !main.PortRefused);
}

} // namespace

std::string FormatOutputValue(const FormMain &main, std::string &text)
{
    return FormatOutputValue(text, CharAt(main.OutputFormatCode, 1));
}

void WaitModuleReady(FormMain &main, const std::string &addr, bool checksum, const GivenUp &givenUp)
{
    PollUntilReply(main, Query(Register::Configuration, addr), checksum, givenUp);
}

void WaitCalibrationDone(FormMain &main, const std::string &addr, bool checksum, const GivenUp &givenUp)
{
    PollUntilReply(main, Query(Register::ColdJunctionTemperature, addr), checksum, givenUp);
}

void DelaySeconds(const FormMain &main, float seconds)
{
    const double start = main.Time.Timer();
    for (double gone = 0; gone <= static_cast<double>(seconds); gone = ElapsedSeconds(main.Time, start))
        WaitForEvents(std::max(1, static_cast<int>(1000 * (static_cast<double>(seconds) - gone))));
}

void WaitTransIdle(const FormMain &main)
{
    constexpr int Look = 5; // milliseconds between two looks at the flag
    const double start = main.Time.Timer();
    while (main.TransBusy && ElapsedSeconds(main.Time, start) <= IdleSeconds)
        WaitForEvents(Look);
}

} // namespace vorn
