#include "firmware/DownloadRun.h"

#include "firmware/FirmwareFrame.h"
#include "platform/Animation.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Number.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/FormScan.h"
#include "shell/Module1.h"

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorn
{

namespace
{

constexpr std::string_view EnterDownload = "$00D";
constexpr std::string_view SetSpeedCommand = "&00S"; ///< the digit of the speed follows
constexpr std::string_view IsThere = "&00A";
constexpr std::string_view AskPermission = "&00D";
constexpr std::string_view StartImage = "&00E";
constexpr char CarriageReturn = '\r';

constexpr int StartSpeed = 3; ///< list position of 9600, at which units and loaders start
constexpr int Tries = 11;
constexpr int TriesOfLoader = 129; ///< for the loader's first answer
constexpr int MostRounds = 13201;  ///< of asking for permission, for each block
constexpr int MostSends = 133;     ///< of each block
constexpr double BlockWait = 0.5;  ///< seconds for a permission, and for the reply to a block
constexpr int ShortestReply = 2;   ///< one lone byte counts as nothing
constexpr float AfterSpeed = 1;    ///< seconds
constexpr float AfterStart = 3;

bool IsPlainYes(std::string_view reply)
{
    return reply == "!00";
}

int BitsPerSecond(int selection)
{
    return static_cast<int>(Val(BaudSpeedText(StartSpeed + selection)));
}

} // namespace

DownloadRun::DownloadRun(FormMain &main, const FirmwareImage &loader, const FirmwareImage &mainImage,
                         int selection)
    : main_(main), loader_(loader), mainImage_(mainImage), selection_(selection),
      timeLeft_(loader.Blocks() + mainImage.Blocks(), BitsPerSecond(selection))
{
    main_.MayEnd = [this] { return MayBreakOff("End the program and break off the firmware download?"); };
}

DownloadRun::~DownloadRun()
{
    main_.MayEnd = {};
}

DownloadRun::Outcome DownloadRun::Run()
{
    const DisabledWindow disabled(main_);
    auto *window = new FormScan(main_, ProgressOf::Download);
    window->ProgressBar1->setRange(0, DownloadBar::End);
    connect(window, &FormScan::CloseAsked, this,
            [this] { broken_ = broken_ || MayBreakOff("Break off the firmware download?"); });
    ShowWork("Entering download mode");
    window->show();
    window->Animation1->Open(QStringLiteral("filedisk"));
    window->Animation1->Play();

    const Outcome outcome = Steps();
    if (Window())
        Window()->close();
    main_.CmbPBaudrate->setCurrentIndex(StartSpeed);
    return broken_ ? Outcome::BrokenOff : outcome;
}

DownloadRun::Outcome DownloadRun::Steps()
{
    if (!Ask(EnterDownload, Tries, IsPlainYes))
        return Outcome::SetupFailed;
    SwitchSpeed();
    ShowBar(DownloadBar::SpeedSet);
    if (!SetSpeed() || !Ask(IsThere, Tries, IsPlainYes))
        return Outcome::SetupFailed;
    ShowBar(DownloadBar::LoaderBegins);

    stage_ = DownloadStage::Loader;
    bool failed = false;
    downlowfile(loader_, failed);
    ShowBar(DownloadBar::LoaderSent);
    return failed ? Outcome::TransferFailed : LoadMain();
}

DownloadRun::Outcome DownloadRun::LoadMain()
{
    stage_ = DownloadStage::Switching;
    ShowWork("Starting the loader");
    Start();
    ShowBar(DownloadBar::LoaderStarted);
    main_.CmbPBaudrate->setCurrentIndex(StartSpeed);
    if (!Ask(IsThere, TriesOfLoader, SaysReady))
        return Outcome::TransferFailed;
    SwitchSpeed();
    if (!SetSpeed())
        return Outcome::SetupFailed;
    ShowBar(DownloadBar::MainBegins);

    stage_ = DownloadStage::Main;
    bool failed = false;
    downlowfile(mainImage_, failed);
    if (failed)
        return Outcome::TransferFailed;
    stage_ = DownloadStage::Starting;
    ShowWork("Starting the new firmware");
    ShowBar(DownloadBar::MainSent);
    Start();
    main_.CmbPBaudrate->setCurrentIndex(StartSpeed);
    ShowBar(DownloadBar::End);
    return Outcome::Completed;
}

/// Sends a command until its reply is the right one. A port that is refused, or a bus that an error has
/// silenced, would refuse the next try as well.
bool DownloadRun::Ask(std::string_view command, int tries, bool (*accepts)(std::string_view reply))
{
    for (int i = 0; i < tries && !broken_; ++i) {
        main_.trans(std::string(command), false);
        if (main_.PortRefused || main_.TransBusy)
            return false;
        if (accepts(main_.ReplyText))
            return true;
    }
    return false;
}

/// The unit confirms its new speed at that speed.
bool DownloadRun::SetSpeed()
{
    return Ask(std::string(SetSpeedCommand) + std::to_string(selection_ + 1), Tries, IsPlainYes);
}

/// Unit and port change their speed together.
void DownloadRun::SwitchSpeed()
{
    SendDirect(std::string(SetSpeedCommand) + std::to_string(selection_ + 1));
    main_.CmbPBaudrate->setCurrentIndex(StartSpeed + selection_);
    Delay(AfterSpeed);
}

/// Has the unit start what was loaded.
void DownloadRun::Start()
{
    SendDirect(StartImage);
    Delay(AfterStart);
}

/// Writes a line by the settings of the last transaction, and waits for nothing. A port that can't be opened
/// is told by the next transaction.
void DownloadRun::SendDirect(std::string_view command)
{
    if (broken_ || !OpenPort())
        return;
    main_.MSComm1.Output(std::string(command) + CarriageReturn);
    ClosePort();
}

void DownloadRun::Delay(float seconds)
{
    if (broken_)
        return;
    DelaySeconds(main_, seconds);
    timeLeft_.Waited(static_cast<double>(seconds));
}

bool DownloadRun::OpenPort()
{
    try {
        main_.MSComm1.SetPortOpen(true);
        return true;
    } catch (const RuntimeError &) {
        return false;
    }
}

void DownloadRun::ClosePort()
{
    main_.MSComm1.SetInputLen(0);
    main_.MSComm1.SetPortOpen(false);
}

/// Sends an image block by block, to a loader that listens on the port of the last transaction.
void DownloadRun::downlowfile(const FirmwareImage &image, bool &failed)
{
    failed = true;
    if (!OpenPort())
        return;
    const auto close = qScopeGuard([this] { ClosePort(); });
    const std::string name = stage_ == DownloadStage::Main ? "Main image" : "Loader image";
    std::size_t position = 0;
    for (int block = 0; block < image.Blocks(); ++block) {
        const double start = main_.Time.Timer();
        ShowBar(DownloadBar::AtBlock(image.Blocks(), block));
        ShowWork(name + ", block " + std::to_string(block + 1) + " of " + std::to_string(image.Blocks()));
        DoEvents();
        if (!AwaitPermission())
            return;
        const std::string frame = BlockFrame(block, image.Block(position));
        position += BlockSize;
        if (!SendBlock(frame, position))
            return;
        timeLeft_.BlockSent(ElapsedSeconds(main_.Time, start));
    }
    failed = broken_;
}

bool DownloadRun::AwaitPermission()
{
    for (int round = 0; round < MostRounds; ++round) {
        main_.MSComm1.Output(std::string(AskPermission) + CarriageReturn);
        if (PermissionComes())
            return !broken_;
        if (broken_ || main_.MSComm1.HungUp())
            return false;
        if (round == 0)
            ShowWork("The unit gives no answer. Waiting for it");
    }
    return false;
}

/// The end of the permission's line is waited for, too: it would stand in front of the reply to the block.
bool DownloadRun::PermissionComes()
{
    std::string received;
    const double start = main_.Time.Timer();
    double elapsed = 0;
    do {
        elapsed = ElapsedSeconds(main_.Time, start);
        if (main_.MSComm1.InBufferCount() >= (received.empty() ? ShortestReply : 1))
            received += main_.MSComm1.Input();
        if (PermissionIn(received) == Permission::Whole)
            return true;
    } while (AwaitInput(elapsed));
    return PermissionIn(received) == Permission::Given;
}

/// @param position  place of the next block in the file
bool DownloadRun::SendBlock(const std::string &frame, std::size_t &position)
{
    for (int i = 0; i < MostSends; ++i) {
        const Sent sent = SendFrame(frame);
        if (sent == Sent::Accepted)
            return true;
        if (broken_ || (sent == Sent::Silence && !AwaitLoader(position)))
            return false;
    }
    return false;
}

/// A reply is judged when it is whole, so that its rest isn't taken for that to the next frame.
DownloadRun::Sent DownloadRun::SendFrame(const std::string &frame)
{
    MSComm &port = main_.MSComm1;
    const auto backToText = qScopeGuard([&port] { port.SetInputLen(0); });
    port.ClearInBuffer(); // what came before this frame is no reply to it
    port.Output(frame);
    std::string reply;
    const double start = main_.Time.Timer();
    double elapsed = 0;
    do {
        elapsed = ElapsedSeconds(main_.Time, start);
        if (port.InBufferCount() < (reply.empty() ? ShortestReply : 1))
            continue;
        port.SetInputLen(static_cast<int>(BlockReplySize - reply.size()));
        reply += port.Input();
        if (JudgeBlockReply(frame, reply) == BlockVerdict::Accepted)
            return Sent::Accepted;
        if (reply.size() >= BlockReplySize || reply.back() == CarriageReturn)
            return Sent::Again;
    } while (AwaitInput(elapsed));
    return reply.empty() ? Sent::Silence : Sent::Again;
}

/// Asks a loader that fell silent until it is ready again, however long that takes. Each round moves the next
/// blocks one byte on in the file.
bool DownloadRun::AwaitLoader(std::size_t &position)
{
    ClosePort();
    ShowWork("The unit gives no answer. Waiting for it");
    do {
        main_.trans(std::string(AskPermission), false);
        ++position;
        if (broken_ || main_.PortRefused || main_.TransBusy)
            return false;
    } while (!SaysReady(main_.ReplyText));
    return OpenPort();
}

/// Serves the windows until something comes. False when nothing more is to be waited for.
/// @param elapsed  seconds waited so far, read before the last look at the line: what came while the process
///                 had no turn isn't late
bool DownloadRun::AwaitInput(double elapsed)
{
    constexpr double Slice = 50; // milliseconds between two looks at the line, whatever failed to wake it
    const double left = 1000 * (BlockWait - elapsed);
    if (left <= 0 || broken_)
        return false;
    main_.MSComm1.WaitForInputOrEvents(
        std::chrono::milliseconds(std::lround(std::ceil(std::min(left, Slice)))));
    return true;
}

/// What came while the box was up is still there when the waits look next.
bool DownloadRun::MayBreakOff(std::string_view question)
{
    if (std::exchange(asking_, true))
        return false;
    const auto asked = qScopeGuard([this] { asking_ = false; });
    return MsgBox(std::string(question) + "\r\r" + std::string(StateLeftAt(stage_)), MsgBoxStyle::Question,
                  DownloadTitle) == MsgBoxResult::Yes;
}

/// Null when a refused port has closed it.
FormScan *DownloadRun::Window() const
{
    return qobject_cast<FormScan *>(main_.FormScan.data());
}

void DownloadRun::ShowBar(int value)
{
    if (Window())
        Window()->ProgressBar1->setValue(value);
}

void DownloadRun::ShowWork(const std::string &text)
{
    if (!Window())
        return;
    Window()->Label1->setText(ToQString(text));
    Window()->LabTimeLeft->setText(ToQString(timeLeft_.Text()));
}

} // namespace vorn
