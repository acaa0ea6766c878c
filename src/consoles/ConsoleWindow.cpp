#include "consoles/ConsoleWindow.h"

#include "platform/Clock.h"
#include "platform/Events.h"
#include "platform/HelpViewer.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/ModelCatalogue.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/LineExchange.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vorn
{

namespace
{

constexpr std::int64_t TimeOut = 100; ///< milliseconds, for the beginning of a reply and again for its end

void MsgBoxOfPort(int error)
{
    switch (error) {
    case RuntimeErrorNumber::PortAlreadyOpen:
        MsgBox("Port already open !", MsgBoxStyle::Critical, "Port already open");
        break;
    case RuntimeErrorNumber::InvalidProperty:
        MsgBox("Invalid baud rate !", MsgBoxStyle::Critical, "Invalid baud rate");
        break;
    default:
        MsgBox("Invalid Port Number !", MsgBoxStyle::Critical, "Invalid Port Number");
        break;
    }
}

/// The window has closed: the running action is left.
struct ConsoleClosed {
};

} // namespace

ConsoleWindow::ConsoleWindow(FormMain &main, const char *name, const char *caption)
    : QDialog(&main), MSComm(main.MSComm1.Ports()), main_(main)
{
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(QString::fromLatin1(caption));

    body_ = new QWidget;
    rows_ = new QVBoxLayout(body_);
    rows_->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    rows_->setSpacing(Rhythm::BetweenFrames);
    auto *scroll = Named(new QScrollArea(this), "ConsoleScroll");
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(body_);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);

    auto *help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, &ConsoleWindow::ShowHelp);
    connect(&main, &FormMain::Unload, this, [this] { MSComm.SetPortOpen(false); });
}

void ConsoleWindow::Run()
{
    FitScreen();
    Alive = true;
    main_.Gate.Take({.context = this, .action = [this] { Act([this] { Load(); }); }});
    exec();
}

/// As large as its frames want to be, and as the smallest screen that the program is used on has room for.
void ConsoleWindow::FitScreen()
{
    constexpr QSize SmallestScreen(1024, 768);
    constexpr QSize FrameAndBar(24, 72);
    // Return in an entry presses no button: each update is meant.
    for (QPushButton *button : findChildren<QPushButton *>())
        button->setAutoDefault(false);
    // What only shows a text is no stop on the way through the window.
    for (QLineEdit *field : findChildren<QLineEdit *>()) {
        if (field->isReadOnly())
            field->setFocusPolicy(Qt::ClickFocus);
    }
    body_->ensurePolished();
    const QSize room = SmallestScreen - FrameAndBar;
    QSize wanted = body_->sizeHint() + QSize(4, 4);
    // A scroll bar for the one direction takes from the other.
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 4;
    if (wanted.width() > room.width())
        wanted.rheight() += bar;
    if (wanted.height() > room.height())
        wanted.rwidth() += bar;
    resize(wanted.boundedTo(room));
}

void ConsoleWindow::Load()
{
    OpenPort();
    Form_Load();
}

void ConsoleWindow::OpenPort()
{
    try {
        MSComm.SetCommPort(NodeKey.port());
        MSComm.SetSettings(ConsoleBaud + ",N,8,1");
        MSComm.SetPortOpen(true);
        PortTold = false;
    } catch (const RuntimeError &error) {
        TellPort(error.number());
    }
}

/// A port that can't be used any more is told once, and the window closes.
void ConsoleWindow::TellPort(int error)
{
    if (!std::exchange(PortTold, true))
        MsgBoxOfPort(error);
    reject();
    LeaveIfClosed();
}

void ConsoleWindow::done(int result)
{
    Unload();
    QDialog::done(result);
}

/// A transaction that runs lets the port go by itself: the line isn't pulled from under its wait.
void ConsoleWindow::Unload()
{
    if (!Alive)
        return;
    for (QTimer *timer : findChildren<QTimer *>())
        timer->stop();
    if (!onLine_)
        MSComm.SetPortOpen(false);
    Form_Unload();
    Alive = false;
}

void ConsoleWindow::LeaveIfClosed() const
{
    if (!Alive)
        throw ConsoleClosed{};
}

void ConsoleWindow::trans(std::string &command, bool checksum)
{
    LeaveIfClosed();
    onLine_ = true;
    {
        const Gate::OnLine line(main_.Gate);
        try {
            if (checksum)
                command += Checksum(command);
            MSComm.SetInputLen(0);
            MSComm.ClearInBuffer();
            LineExchange exchange(MSComm, main_.Time);
            const auto [outcome, reply] = exchange.Run(command, TimeOut, [this] { return Alive; });
            if (outcome != LineExchange::Outcome::Broken)
                Reply = reply;
        } catch (const RuntimeError &) {
            // `Reply` stays as it stood.
        }
    }
    onLine_ = false;
    if (!Alive)
        MSComm.SetPortOpen(false);
    LeaveIfClosed();
    if (MSComm.HasGone())
        TellPort(RuntimeErrorNumber::InvalidPort);
}

bool ConsoleWindow::Ask(std::string command, char lead)
{
    trans(command, UsesChecksum());
    return IsAccepted(Reply, lead);
}

bool ConsoleWindow::AskFor(Register reg, int index)
{
    return Ask(Query(reg, BusAddress(), index), RowOf(reg).lead);
}

bool ConsoleWindow::Tell(Register reg, std::string_view value, int index, char lead)
{
    return Ask(Write(reg, BusAddress(), value, index), lead);
}

std::string ConsoleWindow::Data() const
{
    return Payload(Reply, UsesChecksum());
}

void ConsoleWindow::Yield(int times)
{
    for (int i = 0; i < times; ++i)
        DoEvents();
    LeaveIfClosed();
}

void ConsoleWindow::Wait(std::int64_t milliseconds)
{
    const std::uint32_t start = main_.Time.GetTickCount();
    for (;;) {
        const std::int64_t left = milliseconds - ElapsedTicks(main_.Time, start);
        if (left <= 0)
            break;
        WaitForEvents(static_cast<int>(left));
        LeaveIfClosed();
    }
}

MsgBoxResult ConsoleWindow::Box(std::string_view text, MsgBoxStyle style, std::string_view title)
{
    const MsgBoxResult answer = MsgBox(text, style, title);
    LeaveIfClosed();
    return answer;
}

void ConsoleWindow::Act(const std::function<void()> &action)
{
    if (!Alive)
        return;
    ++acting_;
    const auto end = qScopeGuard([this] { --acting_; });
    try {
        action();
    } catch (const ConsoleClosed &) {
        // What the action had done by then stands.
    }
}

void ConsoleWindow::OnPress(QAbstractButton *button, const std::function<void()> &handler)
{
    OnPressWith(button, [handler] { return handler; });
}

void ConsoleWindow::OnPressWith(QAbstractButton *button, const std::function<std::function<void()>()> &taken)
{
    connect(button, &QAbstractButton::clicked, this, [this, button, taken] {
        if (pressed_.contains(button))
            return;
        pressed_.insert(button);
        main_.Gate.Take({.context = this, .action = [this, button, handler = taken()] {
                             const auto end = qScopeGuard([this, button] { pressed_.remove(button); });
                             Act(handler);
                         }});
    });
}

void ConsoleWindow::Take(const QObject *source, const std::function<void()> &action)
{
    main_.Gate.TakeInPlace({.context = this, .action = [this, action] { Act(action); }, .source = source});
}

void ConsoleWindow::OnTick(QTimer &timer, const std::function<void()> &handler)
{
    connect(&timer, &QTimer::timeout, this, [this, &timer, handler] {
        if (acting_ > 0)
            return;
        const auto tick = [this, &timer, handler] {
            if (timer.isActive()) // an action that came first may have stopped it
                Act(handler);
        };
        main_.Gate.Take({.context = this, .action = tick, .source = &timer, .ofLoop = true});
    });
}

/// In a window of this one, since all others are shut while it is open.
void ConsoleWindow::ShowHelp()
{
    if (!help_) {
        help_ = new HelpViewer(this);
        help_->setWindowFlag(Qt::Window);
        help_->setAttribute(Qt::WA_DeleteOnClose);
    }
    help_->ShowPage(ToQString(ModelHelpPage(NodeKey.model())));
}

} // namespace vorn
