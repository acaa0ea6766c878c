#include "tools/FormFull_Screen.h"

#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/ProgramDirectory.h"
#include "platform/RuntimeError.h"
#include "platform/TopmostWindow.h"
#include "platform/WidgetText.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "tools/LogFile.h"
#include "tools/LogRecord.h"
#include "tools/LogView.h"

#include <QButtonGroup>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace vorn
{

namespace
{

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view TimeOut = "Time out !";

/// Rounds are sent in one go for so long; between two of them the window is served by the transaction's
/// waits.
constexpr std::int64_t RoundsAtOnce = 20; // milliseconds

/// Pause behind a round that sent nothing: an empty file, or a bus that is silenced.
constexpr std::chrono::milliseconds IdleRound(50);

/// An option button that goes off again at a second click. Its tag notes what it was when it was pressed.
QRadioButton *MakeToggle(QWidget *parent, const char *name, const char *caption, const char *accessibleName)
{
    auto *toggle = Named(new QRadioButton(QString::fromLatin1(caption), parent), name,
                         QString::fromLatin1(accessibleName));
    toggle->setAutoExclusive(false);
    QObject::connect(toggle, &QAbstractButton::pressed, toggle,
                     [toggle] { SetTag(toggle, toggle->isChecked() ? "1" : "0"); });
    return toggle;
}

/// Where the command files are that come with the program.
QString CommandFilesFolder()
{
    const QString example = ProgramFile(QStringLiteral("Terminal-Example.txt"));
    return example.isEmpty() ? ProgramDirectory() : QFileInfo(example).absolutePath();
}

} // namespace

FormFull_Screen::FormFull_Screen(FormMain &main) : QWidget(nullptr, Qt::Window), main_(main)
{
    setObjectName(QStringLiteral("FormFull_Screen"));
    setWindowTitle(ToQString("COM" + std::to_string(main.SelectedPort) + " Terminal"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->setSpacing(Rhythm::Margin);
    layout->addWidget(BuildSource());
    layout->addLayout(BuildButtons());
    Text1 = Named(new LogView(LogView::WhenFull::RaiseError, true, this), "Text1", QStringLiteral("Log"));
    layout->addWidget(Text1, 1);
    constexpr int RecordWidth = 108; // characters of a numbered record with its elapsed time, and the frame
    const int wanted = Text1->fontMetrics().horizontalAdvance(QLatin1Char('0')) * RecordWidth;
    resize(qMin(wanted, screen()->availableGeometry().width()), wanted * 2 / 3);
    Wire();

    auto *help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, [this] { main_.ShowHelp(QStringLiteral("terminal")); });

    OptionSel[0]->setChecked(true);
    OptionSel_Click();
    SetTopmost(*this, true);
}

QWidget *FormFull_Screen::BuildSource()
{
    auto *frame = Named(new QGroupBox(QStringLiteral("Command"), this), "FrameCommand");
    OptionSel[0] = Named(new QRadioButton(QStringLiteral("Single Command"), frame), "OptionSel_0");
    OptionSel[1] = Named(new QRadioButton(QStringLiteral("Command File"), frame), "OptionSel_1");
    auto *group = new QButtonGroup(this);
    group->addButton(OptionSel[0], 0);
    group->addButton(OptionSel[1], 1);
    TextCommand = Named(new QLineEdit(frame), "TextCommand", QStringLiteral("Command"));
    OptionSChecksum = MakeToggle(frame, "OptionSChecksum", "CheckSum", "Send the command with its checksum");
    TextFileName = Named(new QLineEdit(frame), "TextFileName", QStringLiteral("Command file"));
    Comincludtxt = Named(new QPushButton(QStringLiteral("Browse ..."), frame), "Comincludtxt");
    OptionCChecksum =
        MakeToggle(frame, "OptionCChecksum", "CheckSum", "Send the lines of the file with their checksum");
    LabResponse = MakeValue(frame, QStringLiteral("LabResponse"), QStringLiteral("Response"));
    // A long reply is cut at the window's edge instead of widening the window.
    LabResponse->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    LabResponse->setFrameShape(QFrame::StyledPanel);
    LabResponse->setMinimumHeight(TextCommand->sizeHint().height());

    auto *grid = new QGridLayout(frame);
    grid->setContentsMargins(Rhythm::Margin, Rhythm::Margin / 2, Rhythm::Margin, Rhythm::Margin);
    grid->setHorizontalSpacing(Rhythm::LabelToField);
    grid->setVerticalSpacing(Rhythm::BetweenRows);
    grid->addWidget(OptionSel[0], 0, 0);
    grid->addWidget(TextCommand, 0, 1, 1, 3);
    grid->addWidget(OptionSChecksum, 0, 4);
    grid->addWidget(OptionSel[1], 1, 0);
    grid->addWidget(MakeLabel(frame, QStringLiteral("LabFile"), "File  :", TextFileName), 1, 1);
    grid->addWidget(TextFileName, 1, 2);
    grid->addWidget(Comincludtxt, 1, 3);
    grid->addWidget(OptionCChecksum, 1, 4);
    grid->addWidget(MakeLabel(frame, QStringLiteral("Label1"), "Response:"), 2, 0);
    grid->addWidget(LabResponse, 2, 1, 1, 3);
    grid->setColumnStretch(2, 1);
    return frame;
}

QLayout *FormFull_Screen::BuildButtons()
{
    const auto button = [this](const char *name, const char *caption) {
        return MakeButton(this, QString::fromLatin1(name), caption);
    };
    CmdSend = button("CmdSend", "&Send");
    CmdContinueSend = button("CmdContinueSend", "&Continue Send");
    CmdStop = button("CmdStop", "S&top");
    OptRingBuffer = MakeToggle(this, "OptRingBuffer", "Ring Buffer", "A full log starts over");
    CmdSave = button("CmdSave", "Save to &File");
    cmdExit = button("cmdExit", "E&xit");
    auto *row = SideBySide({CmdSend, CmdContinueSend, CmdStop, OptRingBuffer});
    row->addStretch();
    row->addWidget(CmdSave);
    row->addWidget(cmdExit);
    return row;
}

void FormFull_Screen::Wire()
{
    const auto send = [this](const std::string &command) { CmdSend_Click(command); };
    connect(CmdSend, &QPushButton::clicked, this, [this, send] { TakeSend(CmdSend, send); });
    connect(CmdContinueSend, &QPushButton::clicked, this,
            [this] { TakeSend(CmdContinueSend, [this](const std::string &) { CmdContinueSend_Click(); }); });
    connect(TextCommand, &QLineEdit::returnPressed, this, [this] {
        TakeSend(TextCommand, [this](const std::string &command) { TRANS_RESPONSE(command); });
    });
    connect(Text1, &LogView::ReturnPressed, this, &FormFull_Screen::Text1_Return);
    connect(CmdStop, &QPushButton::clicked, this, &FormFull_Screen::CmdStop_Click);
    connect(CmdSave, &QPushButton::clicked, this, [this] { Take(CmdSave, [this] { CmdSave_Click(); }); });
    connect(Comincludtxt, &QPushButton::clicked, this,
            [this] { Take(Comincludtxt, [this] { Comincludtxt_Click(); }); });
    connect(TextFileName, &QLineEdit::returnPressed, this,
            [this] { Take(TextFileName, [this] { OpenFile(); }); });
    // The file that is open is the one whose name stands in the field.
    connect(TextFileName, &QLineEdit::textChanged, this, [this] { file_.Close(); });
    connect(cmdExit, &QPushButton::clicked, this, &QWidget::close);
    for (QRadioButton *option : OptionSel)
        connect(option, &QRadioButton::clicked, this, &FormFull_Screen::OptionSel_Click);
}

void FormFull_Screen::OptionSel_Click()
{
    const bool single = OptionSel[0]->isChecked();
    TextCommand->setEnabled(single);
    OptionSChecksum->setEnabled(single);
    for (QWidget *control : {static_cast<QWidget *>(TextFileName), static_cast<QWidget *>(Comincludtxt),
                             static_cast<QWidget *>(OptionCChecksum)})
        control->setEnabled(!single);
    if (single) {
        TextFileName->clear();
        TextCommand->setFocus();
    } else {
        TextCommand->clear();
        LabResponse->clear();
        TextFileName->setFocus();
    }
}

/// The command is taken when it is asked for, whatever is typed until its turn comes. The same once more
/// while it waits is dropped, so that a held key piles up nothing. A stop takes back what still waits, unless
/// it was asked for again after it.
void FormFull_Screen::TakeSend(const QObject *source, const std::function<void(const std::string &)> &send)
{
    const std::pair asked(loop_.Ask(), FromQString(TextCommand->text()));
    const auto [waiting, isNew] = asked_.try_emplace(source, asked);
    if (!isNew && std::exchange(waiting->second, asked) == asked)
        return;
    Take(nullptr, [this, source, send, asked] {
        if (const auto last = asked_.find(source); last != asked_.end() && last->second == asked)
            asked_.erase(last);
        if (loop_.Holds(asked.first))
            send(asked.second);
    });
}

void FormFull_Screen::CmdSend_Click(const std::string &command)
{
    if (!CmdSend->isEnabled())
        return; // the loop was started before its turn came
    if (loop_.BeginSend())
        Text1->Clear();
    if (OptionSel[0]->isChecked()) {
        TRANS_RESPONSE(command);
        return;
    }
    main_.TerminalStop = false;
    loop_.CountAnew();
    if (!file_.IsOpen())
        OpenFile();
    Trans_File();
}

void FormFull_Screen::CmdContinueSend_Click()
{
    if (!CmdContinueSend->isEnabled())
        return;
    Text1->Clear();
    loop_.BeginLoop();
    file_.Close(); // the loop begins with the first line
    CmdSend->setEnabled(false);
    CmdContinueSend->setEnabled(false);
    main_.TerminalStop = false;
    AskForRounds(loop_.Ask());
}

/// The loop goes round by round through the gate, so that whatever else is asked for gets its turn.
void FormFull_Screen::AskForRounds(SendLoop::Ticket ticket)
{
    Take(
        nullptr, [this, ticket] { SendRounds(ticket); }, true);
}

void FormFull_Screen::SendRounds(SendLoop::Ticket ticket)
{
    const auto goesOn = [&] { return loop_.Holds(ticket) && loop_.IsLooping() && !main_.TerminalStop; };
    const std::uint32_t start = main_.Time.GetTickCount();
    bool sent = true;
    while (goesOn() && sent) {
        sent = SendRound();
        if (main_.NoYield || ElapsedTicks(main_.Time, start) >= RoundsAtOnce)
            break; // the refresh, and who else waits
    }
    if (goesOn())
        QTimer::singleShot(sent ? std::chrono::milliseconds(0) : IdleRound, this,
                           [this, ticket] { AskForRounds(ticket); });
    else if (loop_.Holds(ticket))
        loop_.Stop();
}

/// One round of the send loop; false if nothing could go out.
bool FormFull_Screen::SendRound()
{
    const bool silenced = main_.TransBusy;
    if (OptionSel[0]->isChecked()) {
        loop_.NextRound();
        TRANS_RESPONSE(FromQString(TextCommand->text()));
        return !silenced;
    }
    if (!file_.IsOpen()) {
        OpenFile();
        loop_.CountAnew();
    }
    if (file_.IsOpen())
        Trans_File();
    else
        main_.TerminalStop = true;
    return !silenced && loop_.Rounds() > 0;
}

/// Works at any moment. The file stays open: the next send plays its next line.
void FormFull_Screen::CmdStop_Click()
{
    main_.TerminalStop = true;
    loop_.Stop();
    CmdSend->setEnabled(true);
    CmdContinueSend->setEnabled(true);
}

void FormFull_Screen::TRANS_RESPONSE(const std::string &command)
{
    main_.CommPortNo = static_cast<int>(Val(Mid(FromQString(windowTitle()), 4, 1)));
    LabResponse->clear();
    Exchange([&] { Transmit(command, OptionSChecksum->isChecked(), loop_.IsLooping(), LabResponse); });
}

void FormFull_Screen::Trans_File()
{
    if (!file_.IsOpen()) {
        Tell("File Not Open !");
        return;
    }
    const auto close = qScopeGuard([this] {
        if (file_.AtEnd())
            file_.Close();
    });
    if (file_.AtEnd() || main_.TerminalStop)
        return;
    const std::string line = file_.ReadLine();
    loop_.NextRound();
    Exchange([&] { Transmit(line, OptionCChecksum->isChecked(), true); });
}

/// Sends a command and logs it and its reply, or the text that stands in for one; `numbered` puts the round's
/// number in front of both, `response` shows the reply, too.
void FormFull_Screen::Transmit(std::string command, bool checksum, bool numbered, QLabel *response)
{
    const auto prefixed = [&](std::string (*prefix)(double), const std::string &record) {
        return (numbered ? prefix(loop_.Rounds()) : std::string{}) + record;
    };
    AddToLog(prefixed(SentPrefix, LogRecord(SentText(command, checksum), TimeOfDay())));
    const std::uint32_t start = main_.Time.GetTickCount();
    const std::string reply = Ask(std::move(command), checksum);
    const std::string elapsed = ElapsedText(ElapsedTicks(main_.Time, start));
    if (response)
        response->setText(ToQString(reply));
    AddToLog(prefixed(ReplyPrefix, LogRecord(reply, TimeOfDay())) + elapsed);
}

/// Sends a command and returns its reply, or the text that stands in for one, whatever kept the bus from
/// answering.
std::string FormFull_Screen::Ask(std::string command, bool checksum)
{
    main_.ReplyText.clear();
    main_.trans(command, checksum);
    if (main_.ReplyText.empty())
        main_.ReplyText = TimeOut;
    return main_.ReplyText;
}

/// Return in the log. What was typed is taken at once and waits its turn, so that nothing that comes
/// meanwhile gets into it; a held key piles up nothing.
void FormFull_Screen::Text1_Return()
{
    const std::string cmd = Text1->TakeTyped();
    if (cmd.empty() && typedLines_ > 0)
        return;
    ++typedLines_;
    Take(nullptr, [this, cmd] {
        const auto done = qScopeGuard([this] { --typedLines_; });
        Exchange([&] {
            auto back = qScopeGuard([&] { Text1->PutTyped(cmd); });
            AddToLog(cmd + LogRecord({}, TimeOfDay(), TypedColumn));
            back.dismiss();
            AddToLog(LogRecord(Ask(cmd, false), TimeOfDay(), TypedColumn));
        });
    });
}

/// Sends and logs on the caption's port. When the log has run full and isn't a ring, the sending ends and
/// the log can be saved.
void FormFull_Screen::Exchange(const std::function<void()> &exchange)
{
    main_.TerminalOwnsPort = true;
    const auto release = qScopeGuard([this] { main_.TerminalOwnsPort = false; });
    try {
        exchange();
    } catch (const RuntimeError &error) {
        if (error.number() != RuntimeErrorNumber::OutOfMemory)
            throw;
        main_.TerminalStop = true;
        loop_.LogIsFull();
        file_.Close();
        CmdSend->setEnabled(true);
        main_.TerminalOwnsPort = false;
        CmdSave_Click();
    }
}

/// Puts a line at the end of the log. A ring buffer that is full starts over with it.
void FormFull_Screen::AddToLog(std::string line)
{
    line += LineEnd;
    try {
        Text1->Append(line);
    } catch (const RuntimeError &) {
        if (!OptRingBuffer->isChecked())
            throw;
        Text1->BeginAnew();
        Text1->Append(line);
    }
}

std::string FormFull_Screen::TimeOfDay() const
{
    return TimeOfDayText(main_.Time.Timer());
}

void FormFull_Screen::OpenFile()
{
    try {
        file_.Open(TextFileName->text().toStdU16String());
    } catch (const RuntimeError &) {
        Tell("File Not Found !");
    }
}

void FormFull_Screen::Comincludtxt_Click()
{
    main_.TerminalStop = false;
    const TopmostPause pause(*this);
    const auto name = ShowOpen(this, {.title = QStringLiteral("Open"),
                                      .folder = CommandFilesFolder(),
                                      .fileName = QStringLiteral("*.txt"),
                                      .extension = QStringLiteral("txt"),
                                      .filter = QStringLiteral("Terminal Patch File(*.txt)")});
    if (!name)
        return;
    file_.Close();
    TextFileName->setText(*name);
}

void FormFull_Screen::CmdSave_Click()
{
    SaveLog(*this, *Text1, QStringLiteral("Terminal Patch File(*.txt)"), QStringLiteral("Terminal.txt"),
            saveFolder_);
}

/// Has an action run through the gate, whatever error ends it.
void FormFull_Screen::Take(const QObject *source, const std::function<void()> &action, bool ofLoop)
{
    const auto run = [this, action] {
        try {
            action();
        } catch (const RuntimeError &) {
            // The one that is left: a command whose characters add up to more than the checksum can hold.
            main_.TerminalStop = true;
            loop_.Stop();
            Tell("Checksum overflow !");
        }
    };
    main_.Gate.Take({.context = this, .action = run, .source = source, .ofLoop = ofLoop});
}

void FormFull_Screen::Tell(const char *text)
{
    MsgBox(text, MsgBoxStyle::Critical, text);
}

void FormFull_Screen::closeEvent(QCloseEvent *)
{
    main_.TerminalStop = true;
    loop_.Stop();
    if (main_.FormFull_Screen == this)
        main_.FormFull_Screen = nullptr;
    main_.Gate.Retire(this);
}

} // namespace vorn
