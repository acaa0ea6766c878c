// The one serial transaction of the main window, and its two companions.

#include "shell/FormMain.h"

#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Number.h"
#include "protocol/Text.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace vorn
{

namespace
{

constexpr char CarriageReturn = '\r';

/// One lone character counts as nothing.
constexpr int ShortestReply = 2;

} // namespace

void FormMain::trans(std::string &cmd, bool checksum)
{
    if (TransBusy)
        return;
    TransBusy = true;
    PortRefused = false;
    ++transactions_;
    const auto end = qScopeGuard([this] { EndTransaction(); });
    try {
        Transact(cmd, checksum);
        if (MSComm1.PortOpen())
            MSComm1.SetPortOpen(false);
        TransBusy = false;
    } catch (const RuntimeError &error) {
        TransError(error.number());
    }
}

void FormMain::WhenIdle(QObject *context, const std::function<void()> &handler)
{
    if (InTransaction())
        waiting_.push_back({context, handler});
    else
        handler();
}

void FormMain::EndTransaction()
{
    if (--transactions_ > 0)
        return;
    for (const Waiting &waiting : std::exchange(waiting_, {})) {
        if (waiting.context)
            Queue(waiting.context, [this, waiting] { WhenIdle(waiting.context, waiting.handler); });
    }
}

void FormMain::Transact(std::string &cmd, bool checksum)
{
    if (TextTimeOut->text().isEmpty())
        TextTimeOut->setText(QStringLiteral("10"));
    const std::int64_t timeOut = CLng(FromQString(TextTimeOut->text()));
    if (checksum)
        cmd += Checksum(cmd);

    CommPortNo = PortOfTransaction();
    MSComm1.SetCommPort(CommPortNo);
    MSComm1.SetSettings(std::string(BaudSpeedText(CmbPBaudrate->currentIndex())) + ",N,8,1");
    MSComm1.SetInputLen(0);
    MSComm1.SetPortOpen(true);
    MSComm1.ClearInBuffer();
    MSComm1.Output(FromQString(TextPretix->text()) + cmd + CarriageReturn);

    const std::uint32_t start = Time.GetTickCount();
    while (MSComm1.InBufferCount() < ShortestReply) {
        const std::int64_t elapsed = ElapsedTicks(Time, start);
        if (elapsed > timeOut)
            break;
        WaitForLine(std::max<std::int64_t>(timeOut - elapsed, 1), !NoYield);
    }
    if (MSComm1.InBufferCount() < ShortestReply) {
        ReplyText.clear();
        return;
    }
    AwaitReply(timeOut);
}

/// Collects the reply up to its carriage return, with a time-out of its own. Without one, `ReplyText` stays
/// as it was. Text behind a carriage return inside the last piece doubles that piece's head: handlers rely on
/// positions from the front, and nothing else cuts the reply.
void FormMain::AwaitReply(std::int64_t timeOut)
{
    std::string collected;
    std::string chunk;
    const std::uint32_t start = Time.GetTickCount();
    for (;;) {
        const std::int64_t elapsed = ElapsedTicks(Time, start);
        if (elapsed > timeOut)
            return;
        if (MSComm1.InBufferCount() > 0)
            chunk = MSComm1.Input();
        const std::size_t lineEnd = chunk.find(CarriageReturn);
        if (lineEnd != std::string::npos) {
            if (chunk.back() != CarriageReturn)
                collected += chunk.substr(0, lineEnd + 1);
            chunk.pop_back();
            ReplyText = collected + chunk;
            return;
        }
        collected += chunk;
        chunk.clear();
        WaitForLine(timeOut - elapsed + 1, false);
    }
}

/// Waits for the line, at most `time` milliseconds. A wait that may not yield and lasts keeps the window
/// painted and closable all the same.
void FormMain::WaitForLine(std::int64_t time, bool yield)
{
    using std::chrono::milliseconds;
    constexpr std::int64_t Patience = 1000; // without any window event
    constexpr std::int64_t Slice = 50; // between two looks at the line, whatever woke or failed to wake it

    if (yield) {
        DoEvents();
        if (MSComm1.InBufferCount() < ShortestReply)
            MSComm1.WaitForInputOrEvents(milliseconds(std::clamp<std::int64_t>(time, 0, Slice)));
    } else if (time <= Patience) {
        MSComm1.WaitForInput(milliseconds(std::max<std::int64_t>(time, 0)));
    } else {
        KeepWindowAlive();
        MSComm1.WaitForInput(milliseconds(Slice));
    }
}

int FormMain::PortOfTransaction() const
{
    if (TerminalOwnsPort && FormFull_Screen)
        return static_cast<int>(Val(Mid(FromQString(FormFull_Screen->windowTitle()), 4, 3)));
    const std::string selected = Nodes.Selected();
    const std::string parent = Nodes.ParentKey(selected);
    if (parent.empty())
        throw RuntimeError(RuntimeErrorNumber::ObjectNotSet);
    return static_cast<int>(parent == KeyPC ? Val(Mid(selected, 7)) : Val(Mid(selected, 3, 3)));
}

void FormMain::TransError(int number)
{
    const auto refuse = [this](const char *text, const char *title) {
        TerminalStop = true;
        if (FormScan)
            FormScan->close();
        StopScan = true;
        TransBusy = false;
        PortRefused = true;
        MsgBox(text, MsgBoxStyle::Critical, title);
    };
    switch (number) {
    case RuntimeErrorNumber::InvalidPort:
        refuse("Invalid Port Number !", "Invalid Port Number");
        break;
    case RuntimeErrorNumber::PortAlreadyOpen:
        refuse("Port already open !", "Port already open");
        break;
    default:
        // Nothing is shown and `TransBusy` stays on: the program goes on with a silent bus.
        break;
    }
}

bool FormMain::checkcomm(int port)
{
    bool result = false;
    try {
        MSComm1.SetCommPort(port);
        MSComm1.SetPortOpen(true);
        result = true;
        MSComm1.SetPortOpen(false);
    } catch (const RuntimeError &error) {
        if (error.number() == RuntimeErrorNumber::InvalidPort)
            result = false;
        else if (error.number() == RuntimeErrorNumber::PortAlreadyOpen)
            result = true;
    }
    return result;
}

void FormMain::SetPortBaud(int port, int baudIndex)
{
    const std::string number = std::to_string(port);
    for (std::string &entry : PortBaudList) {
        if (Mid(entry, 2) == number)
            entry = std::to_string(baudIndex) + number;
    }
}

void FormMain::NowStatus(std::string_view text)
{
    StatusBar1_1->setText(ToQString(text));
}

} // namespace vorn
