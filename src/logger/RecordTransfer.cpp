#include "logger/RecordTransfer.h"

#include "logger/MemoryFiles.h"
#include "platform/Animation.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "shell/FormMain.h"
#include "shell/FormScan.h"
#include "shell/TimeLeft.h"

#include <QLabel>
#include <QProgressBar>
#include <QTimer>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace vorn
{

namespace
{

using namespace std::chrono_literals;

constexpr auto BetweenCommits = 200ms; ///< what came until then is safe
constexpr qint64 BetweenPictures = 40; ///< milliseconds
constexpr qint64 BetweenYields = 4;    ///< milliseconds

struct Texts {
    const char *window;
    const char *complete;
};
constexpr std::array<Texts, 2> TextsOf{
    {{"Transfer data records to host ...", "Data records Transfer is complete !"},
     {"Transfer event records to host ...", "Event records Transfer is complete !"}}};

} // namespace

RecordTransfer::RecordTransfer(FormMain &main, NodeKey node, bool mixed)
    : main_(main), node_(std::move(node)), mixed_(mixed)
{
    // The program ends at once where its window is closed.
    connect(&main_, &FormMain::Unload, this, &RecordTransfer::Commit);
}

void RecordTransfer::Run()
{
    try {
        SheetTitles titles = ReplaceMemoryFile();
        book_ = std::make_unique<RecordWorkbook>(MemoryFilePath().toStdString(), std::move(titles));
        const int standard = Count(Register::StandardRecords);
        const int event = Count(Register::EventRecords);
        if (standard > 0)
            Transfer(RecordKind::Standard, standard);
        if (event > 0)
            Transfer(RecordKind::Event, event);
    } catch (const WorkbookError &error) {
        if (Window())
            Window()->close();
        const std::string kept = book_ ? "\rIt holds the records that were written before." : "";
        TellFileFault(MemoryFileName, "can't be written", error.what() + kept);
    }
}

/// Number of records of a kind; none if the module doesn't tell it.
int RecordTransfer::Count(Register count)
{
    return RecordCount(Ask(Query(count, node_)));
}

/// A transaction whose reply is that of its own command: neither what an earlier one left in place, nor what
/// came too late for it.
std::string RecordTransfer::Ask(std::string command)
{
    main_.ReplyText.clear();
    std::string reply = main_.trans(command, node_.checksum());
    if (reply.empty())
        AwaitQuiet();
    return reply;
}

/// Lets a reply come that is late, and go by: nothing in it tells whose it is, so that it would be taken for
/// the next one.
void RecordTransfer::AwaitQuiet()
{
    constexpr double Quiet = 1; // seconds
    constexpr int Look = 20;    // milliseconds between two looks at the clock
    const double begin = main_.Time.Timer();
    while (!main_.StopScan && !main_.TransBusy && ElapsedSeconds(main_.Time, begin) < Quiet)
        WaitForEvents(Look);
}

void RecordTransfer::Transfer(RecordKind kind, int count)
{
    DoBeside([this, kind, count] { book_->Begin(kind, count); });
    ShowWindow(kind, count);
    ReadRecords(kind, count);
    if (!fault_.empty())
        throw WorkbookError(fault_);
    DoBeside([this] { book_->Finish(); });
    if (Window())
        Window()->close();
    MsgBox(TextsOf.at(static_cast<std::size_t>(kind)).complete, MsgBoxStyle::Information,
           "Data records Transfer is complete");
}

void RecordTransfer::ReadRecords(RecordKind kind, int count)
{
    QTimer commits; // ticks in the waits for a silent module, too
    connect(&commits, &QTimer::timeout, this, &RecordTransfer::Commit);
    commits.start(BetweenCommits);
    QElapsedTimer sinceYield;
    sinceYield.start();
    int number = 0;
    begin_ = main_.Time.Timer();
    for (; number < count; ++number) {
        ShowRecord(number, count);
        ReadRecord(kind, number);
        // The waits for the replies serve the windows, too; a bus without waits doesn't get to them.
        if (sinceYield.elapsed() >= BetweenYields) {
            DoEvents();
            sinceYield.start();
        }
        if (main_.StopScan || main_.TransBusy || !fault_.empty())
            break;
    }
    commits.stop();
    shown_.invalidate();
    ShowRecord(std::min(number, count - 1), count); // the last one, however soon it came
    Commit();
}

/// A reply without a whole record gives no row.
void RecordTransfer::ReadRecord(RecordKind kind, int number)
{
    const std::string address = RecordAddress(FirstRecord(kind, mixed_) + number);
    const std::string reply = Ask(Write(Register::MemoryRecord, node_, address));
    if (const auto record = DecodeRecord(kind, number, reply))
        book_->Add(*record);
}

void RecordTransfer::ShowWindow(RecordKind kind, int count)
{
    auto *window = new FormScan(main_, ProgressOf::Memory);
    const int end = FirstRecord(kind, mixed_) + count;
    window->ProgressBar1->setRange(0, end);
    window->ProgressBar1->setValue(0);
    window->Label1->setNum(end);
    window->setWindowTitle(QString::fromLatin1(TextsOf.at(static_cast<std::size_t>(kind)).window));
    window->show();
    window->Animation1->Open(QStringLiteral("filedisk"));
    window->Animation1->Play();
    shown_.invalidate();
}

/// However fast the records come, they are shown 25 times a second at most.
void RecordTransfer::ShowRecord(int number, int count)
{
    if (shown_.isValid() && shown_.elapsed() < BetweenPictures)
        return;
    shown_.start();
    if (Window()) {
        Window()->ProgressBar1->setValue(number);
        ShowTimeLeft(number, count);
    }
    Q_EMIT AtRecord(number);
}

/// By the time that the records took so far; the first ones tell too little.
void RecordTransfer::ShowTimeLeft(int done, int count)
{
    constexpr double Least = 1; // seconds
    const double gone = ElapsedSeconds(main_.Time, begin_);
    if (done > 0 && gone >= Least)
        Window()->LabTimeLeft->setText(QString::fromStdString(TimeLeftText(gone / done * (count - done))));
}

void RecordTransfer::Commit()
{
    try {
        if (book_ && fault_.empty())
            book_->Commit();
    } catch (const WorkbookError &error) {
        fault_ = error.what();
    }
}

/// Null when the operator or a refused port has closed it.
FormScan *RecordTransfer::Window() const
{
    return qobject_cast<FormScan *>(main_.FormScan.data());
}

} // namespace vorn
