#include "shell/Module1.h"

#include "platform/Clock.h"
#include "platform/Events.h"
#include "protocol/Text.h"
#include "shell/FormMain.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace vorn
{

namespace
{

constexpr double ReadySeconds = 30;
constexpr double IdleSeconds = 0.5;
constexpr double DeadBusPause = 0.02; // seconds

void Sleep(double seconds)
{
    if (seconds > 0)
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

} // namespace

std::string FormatOutputValue(const FormMain &main, std::string &text)
{
    return FormatOutputValue(text, CharAt(main.OutputFormatCode, 1));
}

void WaitModuleReady(FormMain &main, const std::string &addr, bool checksum)
{
    const double start = main.Time.Timer();
    do {
        if (main.NoYield)
            KeepWindowAlive();
        else
            DoEvents();
        if (ElapsedSeconds(main.Time, start) > ReadySeconds)
            return;
        if (main.TransBusy) // a dead bus takes no transaction: nothing to spin for
            main.NoYield ? Sleep(DeadBusPause) : WaitForEvents(static_cast<int>(1000 * DeadBusPause));
        main.trans("$" + addr + "2", checksum);
    } while (main.ReplyText.empty());
}

void WaitCalibrationDone(FormMain &main, const std::string &addr, bool checksum)
{
    const double start = main.Time.Timer();
    do {
        DoEvents();
        if (ElapsedSeconds(main.Time, start) > ReadySeconds)
            return;
        if (main.TransBusy)
            WaitForEvents(static_cast<int>(1000 * DeadBusPause));
        main.trans("$" + addr + "3", checksum);
    } while (main.ReplyText.empty());
}

void DelaySeconds(const FormMain &main, float seconds)
{
    const double start = main.Time.Timer();
    for (double gone = 0; gone <= static_cast<double>(seconds); gone = ElapsedSeconds(main.Time, start))
        Sleep(std::max(0.001, static_cast<double>(seconds) - gone));
}

void WaitTransIdle(const FormMain &main)
{
    constexpr double Look = 0.005; // seconds between two looks at the flag
    const double start = main.Time.Timer();
    while (main.TransBusy && ElapsedSeconds(main.Time, start) <= IdleSeconds)
        Sleep(Look);
}

} // namespace vorn
