// The one serial transaction of the main window, and its two companions.

#include "shell/FormMain.h"

#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/LineExchange.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

namespace vorn
{

std::string FormMain::trans(std::string &cmd, bool checksum)
{
    if (TransBusy)
        return ReplyText;
    TransBusy = true;
    PortRefused = false;
    const Gate::OnLine line(Gate);
    try {
        Transact(cmd, checksum);
        if (MSComm1.PortOpen())
            MSComm1.SetPortOpen(false);
        TransBusy = false;
    } catch (const RuntimeError &error) {
        TransError(error.number());
    }
    return ReplyText;
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
    LineExchange exchange(MSComm1, Time);
    const auto [outcome, reply] = exchange.Run(FromQString(TextPretix->text()) + cmd, timeOut);
    if (outcome != LineExchange::Outcome::Broken)
        ReplyText = reply;
}

int FormMain::PortOfTransaction() const
{
    if (TerminalOwnsPort && FormFull_Screen)
        return static_cast<int>(Val(Mid(FromQString(FormFull_Screen->windowTitle()), 4, 3)));
    const NodeKey selected(Nodes.Selected());
    if (selected.kind() == NodeKind::PC)
        throw RuntimeError(RuntimeErrorNumber::ObjectNotSet);
    return selected.port();
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
        ReplyText.clear(); // nothing came
        // An action that goes on with its next command is told once.
        const std::uint64_t action = Gate.RunningNumber();
        if (action == 0 || refusedIn_ != action) {
            refusedIn_ = action;
            MsgBox(text, MsgBoxStyle::Critical, title);
        }
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
