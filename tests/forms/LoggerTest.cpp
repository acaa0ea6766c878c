// The logging model: its tabs, its memory configuration, its limits, and the transfer of its records.

#include "support/LateBus.h"
#include "support/RackOfOne.h"

#include "logger/MemoryFiles.h"
#include "logger/PlotLibrary.h"
#include "platform/Animation.h"
#include "platform/ProgramDirectory.h"
#include "shell/FormScan.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QTabBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using Lines = std::vector<std::string>;
using vorn::RecordKind;
using vornsim::Fault;

namespace
{

const std::string Logger = "_0002!!0A7224M";
const std::string DataDone = "Data records Transfer is complete !";
const std::string EventsDone = "Event records Transfer is complete !";
const std::string DoneTitle = "Data records Transfer is complete";
const std::string FileTitle = "Data records";

enum Tab { Module, Memory, Limits, Operation };

std::string HexOf(unsigned number, int digits)
{
    char text[16];
    std::snprintf(text, sizeof text, "%0*X", digits, number);
    return text;
}

/// What a simulated logger holds at a place, worked out apart from it.
std::string ValueOfRecord(int number)
{
    const int magnitude = number * 37 % 10000;
    std::string digits = std::to_string(magnitude % 100);
    digits.insert(0, 2 - digits.size(), '0');
    while (!digits.empty() && digits.back() == '0')
        digits.pop_back();
    return (number % 3 == 0 ? "-" : "+") + std::to_string(magnitude / 100) +
           (digits.empty() ? "" : "." + digits);
}

class LoggerTest : public ::testing::Test, public RackOfOne
{
protected:
    LoggerTest() { vorn::SetProgramDirectory(files_.path()); }
    ~LoggerTest() override { vorn::SetProgramDirectory({}); }

    QTemporaryDir files_;

    std::filesystem::path File(const char *name) const { return files_.path().toStdString() + "/" + name; }
    void MakeTemplate() const { vorn::WriteEmptyWorkbook(File("Mem.ory"), vorn::OwnSheetTitles()); }
    /// Answers the box about a file, which tells a reason.
    static void AcceptFault(Operator &op, const std::string &reason)
    {
        op.AwaitBox(reason.c_str());
        op.Gui([&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            EXPECT_TRUE(box->text().contains(QString::fromStdString(reason))) << box->text().toStdString();
            EXPECT_EQ(box->windowTitle().toStdString(), FileTitle);
            EXPECT_EQ(box->icon(), QMessageBox::Critical);
            box->accept();
        });
    }
    static std::string BytesOf(const std::filesystem::path &path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void OnPage(const std::string &settings, const std::function<void(Operator &)> &steps)
    {
        Rack("7224M address=0A restart=0 " + settings);
        Operate([&](Operator &op) {
            Open(op, Logger);
            op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("5000")); }); // whatever the machine does
            steps(op);
        });
    }
    QTabBar *Strip() { return Find<QTabBar>("TabStrip1"); }
    void ClickTab(int tab)
    {
        QTest::mouseClick(Strip(), Qt::LeftButton, Qt::NoModifier, Strip()->tabRect(tab).center());
    }
    /// Chooses a tab and waits until it has been read; the trace begins with its first command.
    void Choose(Operator &op, int tab)
    {
        op.Gui([&] {
            ClickTab(tab);
            rack().ClearTrace();
        });
        AwaitActions(op);
    }
    using ProgramRun::Choose;
    /// What the logger has heard since, without the rounds of the refresh.
    Lines Heard()
    {
        Lines lines = rack().Commands(2);
        std::erase_if(lines, [](const std::string &line) { return line == "$0A6" || line[0] == '#'; });
        return lines;
    }
    std::string VisibleFrames()
    {
        std::string frames;
        for (const char *name :
             {"FrameMSet", "FrameAIn", "FrameMemory", "FrameMAlarmset", "FrameMemOperation"})
            frames += Shown(name) ? std::string(name) + " " : "";
        return frames;
    }
    std::string FrameOnShow(Operator &op)
    {
        return op.Gui([&] { return VisibleFrames(); });
    }
    std::string EntryText(const char *array, int i)
    {
        return FromQ(Find<QLineEdit>((std::string(array) + "_" + std::to_string(i)).c_str())->text());
    }
    static std::string FromQ(const QString &text) { return text.toStdString(); }
    QLineEdit *Limit(const char *array, int i)
    {
        return Find<QLineEdit>((std::string(array) + "_" + std::to_string(i)).c_str());
    }
    void TypeLimit(Operator &op, QLineEdit *limit, const QString &text)
    {
        op.Gui([&] { limit->clear(); });
        op.Type(limit, text);
    }
    bool Ticked(const char *name) { return Find<QAbstractButton>(name)->isChecked(); }
    vorn::FormScan *Window() { return qobject_cast<vorn::FormScan *>(main().FormScan.data()); }

    /// Chooses the fourth tab and begins a transfer.
    void BeginTransfer(Operator &op)
    {
        Choose(op, Operation);
        op.Gui([&] { rack().ClearTrace(); });
        op.Click(Find("CmdTransferData"));
    }
    void Answer(Operator &op, const std::string &text) { op.AnswerBox(text, 64, DoneTitle); }
    void ExpectAfterwards(Operator &op, bool hasFile = true)
    {
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_TRUE(main().isEnabled());
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
            EXPECT_EQ(Status(), ""); // nothing is being processed
            EXPECT_EQ(Find("CmdMemoryDataRead")->isEnabled(), hasFile);
            EXPECT_EQ(main().focusWidget(), Find("CmdTransferData"));
            EXPECT_TRUE(main().PauseRefresh);
        });
    }
    /// A whole transfer with the boxes that it ends with.
    void Transfer(Operator &op, const std::vector<std::string> &boxes)
    {
        BeginTransfer(op);
        for (const std::string &text : boxes)
            Answer(op, text);
        ExpectAfterwards(op);
    }
    /// A sheet of the workbook holds the records from 0 to so many, without those left out.
    void ExpectSheet(RecordKind kind, int count, const std::vector<int> &without = {}) const
    {
        const vorn::RecordSheet sheet = vorn::ReadRecordSheet(File("Memory.xls"), kind);
        std::size_t row = 0;
        for (int number = 0; number < count; ++number) {
            if (std::ranges::count(without, number) > 0)
                continue;
            ASSERT_LT(row, sheet.Rows());
            EXPECT_EQ(std::get<double>(sheet.Cell(row, 0)), number);
            EXPECT_EQ(std::get<double>(sheet.Cell(row, 1)), number % 8);
            EXPECT_EQ(std::get<std::string>(sheet.Cell(row, 2)), ValueOfRecord(number));
            if (kind == RecordKind::Event) {
                EXPECT_EQ(std::get<double>(sheet.Cell(row, 3)), 65536 + number * 60);
            }
            ++row;
        }
        EXPECT_EQ(sheet.Rows(), row);
    }
    static void AddReads(Lines &lines, unsigned first, int count)
    {
        for (int i = 0; i < count; ++i)
            lines.push_back("@0AR" + HexOf(first + static_cast<unsigned>(i), 4));
    }
    /// A transfer sends the queries of both counts, and then those of the records: so many standard ones, and
    /// events from an address on.
    void ExpectLines(int standard, unsigned firstEvent = 0, int events = 0)
    {
        Lines wanted{"@0AN", "@0AL"};
        AddReads(wanted, 0, standard);
        AddReads(wanted, firstEvent, events);
        EXPECT_EQ(rack().Commands(2), wanted);
    }
};

} // namespace

// Tabs.

TEST_F(LoggerTest, ThePageBeginsOnItsFirstTabWithoutReadingTheMemory)
{
    OnPage("", [&](Operator &op) {
        EXPECT_EQ(FrameOnShow(op), "FrameMSet FrameAIn ");
        op.Gui([&] {
            EXPECT_EQ(Strip()->currentIndex(), Module);
            EXPECT_EQ(std::ranges::count(rack().Commands(2), "@0AD"), 0);
        });
    });
}

TEST_F(LoggerTest, TheFirstTabReadsTheStorageModeAndRefreshesAgain)
{
    OnPage("memory=FF020000A", [&](Operator &op) {
        Choose(op, Memory);
        op.WaitFor([&] { return !program().LiveData.IsRunning(); }, "the end of the refresh");
        Choose(op, Module);
        EXPECT_EQ(FrameOnShow(op), "FrameMSet FrameAIn ");
        op.WaitFor([&] { return std::ranges::count(rack().Commands(2), "#0A3") > 1; }, "the refresh");
        op.Gui([&] {
            EXPECT_EQ(Heard(), Lines{"@0AD"});
            EXPECT_EQ(Position("CmbDataStorage"), 2);
            EXPECT_FALSE(main().PauseRefresh);
        });
    });
}

TEST_F(LoggerTest, TheSecondTabShowsTheMemoryConfiguration)
{
    OnPage("memory=B0121003C", [&](Operator &op) {
        Choose(op, Memory);
        EXPECT_EQ(FrameOnShow(op), "FrameMemory ");
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2), Lines{"@0AD"});
            std::string ticked;
            for (int i = 0; i < 8; ++i)
                ticked += Ticked(("CheckCH_" + std::to_string(i)).c_str()) ? '1' : '0';
            EXPECT_EQ(ticked, "00001101"); // channel 0 in front
            EXPECT_EQ(Text("CheckMStandmode"), "YES");
            EXPECT_TRUE(Ticked("CheckMStandmode"));
            EXPECT_EQ(Text("CmbDataStorage"), "Mixed mode");
            EXPECT_TRUE(Ticked("OptionStorageType_1"));
            EXPECT_FALSE(Ticked("OptionStorageType_0"));
            EXPECT_EQ(Text("TextSamplinginterval"), "60");
            EXPECT_TRUE(main().PauseRefresh);
        });
    });
}

TEST_F(LoggerTest, ARefusedMemoryConfigurationLeavesTheControls)
{
    OnPage("memory=FF111003C", [&](Operator &op) {
        Choose(op, Memory);
        op.Gui([&] { rack().SetFault(2, "0A", {.kind = Fault::Kind::Refuse, .begins = "@0AD"}); });
        rack().SetValue(2, "0A", "memory", "000000001");
        Choose(op, Module);
        Choose(op, Memory);
        op.Gui([&] {
            EXPECT_EQ(Text("TextSamplinginterval"), "60");
            EXPECT_EQ(Position("CmbDataStorage"), 1);
            EXPECT_TRUE(Ticked("CheckCH_7"));
        });
        EXPECT_EQ(FrameOnShow(op), "FrameMemory ");
    });
}

TEST_F(LoggerTest, TheThirdTabReadsTheLimitsOfAllChannels)
{
    OnPage("memory=FF010000A limits=+204E2-10064 limits3=-00007+3FFFF", [&](Operator &op) {
        Choose(op, Limits);
        EXPECT_EQ(FrameOnShow(op), "FrameMAlarmset ");
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2), (Lines{"@0AD", "@0AB0", "@0AB1", "@0AB2", "@0AB3", "@0AB4", "@0AB5",
                                                 "@0AB6", "@0AB7"}));
            EXPECT_EQ(EntryText("TextHAlarm", 0), "+12.5");
            EXPECT_EQ(EntryText("TextLAlarm", 0), "-10");
            EXPECT_EQ(EntryText("TextHAlarm", 3), "-7");
            EXPECT_EQ(EntryText("TextLAlarm", 3), "+65.535");
            EXPECT_TRUE(Strip()->isVisible());
        });
    });
}

TEST_F(LoggerTest, TheFourthTabReadsTheRecordingState)
{
    OnPage("recording=1", [&](Operator &op) {
        Choose(op, Operation);
        EXPECT_EQ(FrameOnShow(op), "FrameMemOperation ");
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2), (Lines{"@0AD", "@0AT"}));
            EXPECT_TRUE(Ticked("OptionMOmode_1"));
            EXPECT_FALSE(Find("CmdMemoryDataRead")->isEnabled());
            EXPECT_FALSE(Shown("DBGridReadMemory"));
        });
        rack().SetValue(2, "0A", "recording", "0");
        MakeTemplate();
        vorn::WriteEmptyWorkbook(File("Memory.xls"), vorn::OwnSheetTitles());
        Choose(op, Module);
        Choose(op, Operation);
        op.Gui([&] {
            EXPECT_TRUE(Ticked("OptionMOmode_0"));
            EXPECT_TRUE(Find("CmdMemoryDataRead")->isEnabled());
        });
    });
}

TEST_F(LoggerTest, AChecksumGoesWithEachCommand)
{
    Rack("7224M address=0A restart=0 checksum=yes memory=FF010000A");
    Operate([&](Operator &op) {
        Open(op, "_1002!!0A7224M");
        Choose(op, Operation);
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2), (Lines{"@0ADF5", "@0AT05"}));
            EXPECT_EQ(Position("CmbDataStorage"), 1);
            EXPECT_TRUE(Ticked("OptionMOmode_0"));
        });
    });
}

// The memory configuration.

TEST_F(LoggerTest, AMemoryConfigurationIsWrittenAndReadBack)
{
    OnPage("memory=FF0010000", [&](Operator &op) {
        Choose(op, Memory);
        op.Gui([&] {
            rack().ClearTrace();
            for (int i = 0; i < 8; ++i)
                Find<QCheckBox>(("CheckCH_" + std::to_string(i)).c_str())->setChecked(i == 0 || i == 6);
            Find<QCheckBox>("CheckMStandmode")->setChecked(true);
            Find<QComboBox>("CmbDataStorage")->setCurrentIndex(1);
            Find<QRadioButton>("OptionStorageType_0")->setChecked(true);
            Find<QLineEdit>("TextSamplinginterval")->setText(QStringLiteral("65535"));
        });
        op.Click(Find("CmdMemConfig"));
        op.AwaitBox("the box");
        op.Gui([&] {
            EXPECT_EQ(Status(), "Now Memory Configuration is processing , Please wait moment....");
            EXPECT_EQ(rack().Commands(2), (Lines{"@0AC41111FFFF", "$0A2"}));
        });
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2), (Lines{"@0AC41111FFFF", "$0A2", "@0AD"}));
            EXPECT_EQ(rack().Value(2, "0A", "memory"), "41111FFFF");
            // Written from element 0, it comes back as element 1.
            EXPECT_TRUE(Ticked("OptionStorageType_1"));
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
            EXPECT_EQ(Status(), "");
            EXPECT_TRUE(main().PauseRefresh);
        });
        EXPECT_EQ(FrameOnShow(op), "FrameMemory ");
    });
}

TEST_F(LoggerTest, NoChannelAndNoIntervalAreZeros)
{
    OnPage("memory=FF000000A", [&](Operator &op) {
        Choose(op, Memory);
        op.Gui([&] {
            for (int i = 0; i < 8; ++i)
                Find<QCheckBox>(("CheckCH_" + std::to_string(i)).c_str())->setChecked(false);
            Find<QLineEdit>("TextSamplinginterval")->setText(QStringLiteral("0"));
            rack().ClearTrace();
        });
        op.Click(Find("CmdMemConfig"));
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        AwaitActions(op);
        // Element 0 was read as chosen, so it is written as "1".
        op.Gui([&] { EXPECT_EQ(Heard().front(), "@0AC000010000"); });
    });
}

TEST_F(LoggerTest, ARefusedMemoryConfigurationIsToldAndReadBack)
{
    OnPage("memory=FF000000A", [&](Operator &op) {
        Choose(op, Memory);
        op.Gui([&] {
            rack().SetFault(2, "0A", {.kind = Fault::Kind::Refuse, .begins = "@0AC"});
            Find<QLineEdit>("TextSamplinginterval")->setText(QStringLiteral("99"));
            rack().ClearTrace();
        });
        op.Click(Find("CmdMemConfig"));
        op.AnswerBox("Configuration is invalid !", 16, "Configuration is invalid");
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2), (Lines{"@0ACFF0010063", "@0AD"}));
            EXPECT_EQ(Text("TextSamplinginterval"), "10");
        });
    });
}

TEST_F(LoggerTest, AnIntervalAbove65535CannotBeTyped)
{
    OnPage("memory=FF000000A", [&](Operator &op) {
        Choose(op, Memory);
        op.Gui([&] { Find<QLineEdit>("TextSamplinginterval")->clear(); });
        op.Type(Find("TextSamplinginterval"), QStringLiteral("6a5-536"));
        op.Gui([&] { EXPECT_EQ(Text("TextSamplinginterval"), "6553"); });
    });
}

TEST_F(LoggerTest, TheStandModeTellsItsState)
{
    OnPage("memory=FF000000A", [&](Operator &op) {
        Choose(op, Memory);
        for (const char *state : {"YES", "NO"}) {
            op.Press(Find("CheckMStandmode"), Qt::Key_Space);
            op.Gui([&] { EXPECT_EQ(Text("CheckMStandmode"), state); });
        }
    });
}

TEST_F(LoggerTest, TheStorageModeSaysWhichLimitsCanBeEdited)
{
    OnPage("", [&](Operator &op) {
        const struct {
            int mode;
            const char *enabled;
            bool update;
        } cases[] = {{0, "00000000", false}, {1, "11111111", true}, {2, "00001111", true}};
        for (const auto &one : cases) {
            op.Gui([&] {
                rack().ClearTrace();
                Find<QComboBox>("CmbDataStorage")->setCurrentIndex(one.mode);
                for (const char *array : {"TextHAlarm", "TextLAlarm"}) {
                    std::string enabled;
                    for (int i = 0; i < 8; ++i) {
                        const QLineEdit *limit = Limit(array, i);
                        enabled += limit->isEnabledTo(Find("FrameMAlarmset")) ? '1' : '0';
                        const auto role = enabled.back() == '1' ? QPalette::Base : QPalette::Button;
                        EXPECT_EQ(limit->palette().color(QPalette::Base),
                                  QApplication::palette().color(role));
                    }
                    EXPECT_EQ(enabled, one.enabled) << array << " in mode " << one.mode;
                }
                EXPECT_EQ(Find("CmdMAlarmUpdate")->isEnabledTo(Find("FrameMAlarmset")), one.update);
                EXPECT_EQ(Heard(), Lines{});
            });
        }
    });
}

// Start and stop.

TEST_F(LoggerTest, StartAndStopAreSentAndReadBack)
{
    OnPage("recording=0", [&](Operator &op) {
        Choose(op, Operation);
        op.Gui([&] { rack().ClearTrace(); });
        op.Click(Find("OptionMOmode_1"));
        AwaitActions(op);
        op.Click(Find("OptionMOmode_0"));
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2), (Lines{"@0AS1", "@0AT", "@0AS0", "@0AT"}));
            EXPECT_TRUE(Ticked("OptionMOmode_0"));
            rack().SetFault(2, "0A", {.kind = Fault::Kind::Refuse, .begins = "@0AS"});
        });
        op.Click(Find("OptionMOmode_1"));
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_TRUE(Ticked("OptionMOmode_0")) << "The module doesn't record";
            EXPECT_TRUE(main().PauseRefresh);
        });
    });
}

// The limits.

TEST_F(LoggerTest, OnlyLimitsOfEditedChannelsAreWritten)
{
    OnPage("memory=FF010000A limits=+10064-10064", [&](Operator &op) {
        Choose(op, Limits);
        TypeLimit(op, Limit("TextHAlarm", 2), QStringLiteral("12.50"));
        TypeLimit(op, Limit("TextLAlarm", 5), QStringLiteral("-7"));
        op.Gui([&] { rack().ClearTrace(); });
        op.Click(Find("CmdMAlarmUpdate"));
        op.AwaitBox("the end");
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2),
                      (Lines{"@0AA2+204E2-0000A", "$0A2", "@0AA5+0000A-00007", "$0A2", "@0AD", "@0AB0",
                             "@0AB1", "@0AB2", "@0AB3", "@0AB4", "@0AB5", "@0AB6", "@0AB7"}));
            EXPECT_EQ(EntryText("TextHAlarm", 2), "+12.5");
            EXPECT_EQ(Status(), "Alarm Limit setting is processing , Please wait moment....");
            rack().ClearTrace();
        });
        op.AnswerBox("Alarm Limit setting is complete !", 64, "Alarm Limit setting is complete");
        AwaitActions(op);
        op.Gui([&] { EXPECT_EQ(Status(), ""); });
        // Nothing was edited since.
        op.Click(Find("CmdMAlarmUpdate"));
        op.AnswerBox("Alarm Limit setting is complete !", 64, "Alarm Limit setting is complete");
        op.Gui([&] { EXPECT_EQ(rack().Commands(2).front(), "@0AD"); });
    });
}

TEST_F(LoggerTest, ARefusedLimitIsToldAndTheNextOneWritten)
{
    OnPage("memory=FF010000A", [&](Operator &op) {
        Choose(op, Limits);
        TypeLimit(op, Limit("TextHAlarm", 0), QStringLiteral("99999"));
        TypeLimit(op, Limit("TextHAlarm", 7), QStringLiteral("3"));
        op.Click(Find("CmdMAlarmUpdate"));
        op.AnswerBox("Channel 0 Alarm Limit setting error !", 16, "Alarm Limit setting error");
        op.AnswerBox("Alarm Limit setting is complete !", 64, "Alarm Limit setting is complete");
        op.Gui([&] {
            EXPECT_EQ(EntryText("TextHAlarm", 0), "+100");
            EXPECT_EQ(EntryText("TextHAlarm", 7), "+3");
        });
    });
}

TEST_F(LoggerTest, TheFourthTabForgetsWhatWasEdited)
{
    OnPage("memory=FF010000A", [&](Operator &op) {
        Choose(op, Limits);
        TypeLimit(op, Limit("TextHAlarm", 0), QStringLiteral("5"));
        Choose(op, Operation);
        Choose(op, Limits);
        op.Gui([&] { rack().ClearTrace(); });
        op.Click(Find("CmdMAlarmUpdate"));
        op.AnswerBox("Alarm Limit setting is complete !", 64, "Alarm Limit setting is complete");
        op.Gui([&] { EXPECT_EQ(rack().Commands(2).front(), "@0AD"); });
    });
}

// The transfer.

TEST_F(LoggerTest, StandardRecordsAreTransferred)
{
    MakeTemplate();
    OnPage("memory=FF000000A records=300 eventrecords=9", [&](Operator &op) {
        BeginTransfer(op);
        op.AwaitBox("the end");
        op.Gui([&] {
            EXPECT_EQ(Status(), "Now Read Record Counter is processing , Please wait moment....");
            EXPECT_FALSE(main().isEnabled());
            EXPECT_EQ(Text("MemoryData"), "299");
        });
        Answer(op, DataDone);
        ExpectAfterwards(op);
        ExpectLines(300);
        ExpectSheet(RecordKind::Standard, 300);
        ExpectSheet(RecordKind::Event, 0);
    });
}

TEST_F(LoggerTest, EventRecordsBeginAtZeroInEventMode)
{
    MakeTemplate();
    OnPage("memory=FF010000A records=9 eventrecords=20", [&](Operator &op) {
        Transfer(op, {EventsDone});
        ExpectLines(0, 0, 20);
        ExpectSheet(RecordKind::Standard, 0);
        ExpectSheet(RecordKind::Event, 20);
    });
}

TEST_F(LoggerTest, MixedModeHasItsEventsBehindTheStandardRecords)
{
    MakeTemplate();
    OnPage("memory=FF020000A records=10 eventrecords=3", [&](Operator &op) {
        Transfer(op, {DataDone, EventsDone});
        ExpectLines(10, 0x3FFC, 3);
        ExpectSheet(RecordKind::Standard, 10);
        ExpectSheet(RecordKind::Event, 3);
    });
}

TEST_F(LoggerTest, WithoutRecordsTheFileIsTheTemplateAnewAndNothingIsTold)
{
    MakeTemplate();
    std::ofstream(File("Memory.xls")) << "old";
    OnPage("memory=FF020000A records=0 eventrecords=0", [&](Operator &op) {
        Transfer(op, {});
        EXPECT_EQ(rack().Commands(2), (Lines{"@0AN", "@0AL"}));
        EXPECT_EQ(BytesOf(File("Memory.xls")), BytesOf(File("Mem.ory")));
        op.Gui([&] { EXPECT_EQ(main().FormScan, nullptr); });
    });
}

TEST_F(LoggerTest, ARefusedCountLeavesItsPartOut)
{
    MakeTemplate();
    OnPage("memory=FF020000A records=10 eventrecords=3", [&](Operator &op) {
        op.Gui([&] { rack().SetFault(2, "0A", {.kind = Fault::Kind::Refuse, .begins = "@0AN"}); });
        Transfer(op, {EventsDone});
        ExpectSheet(RecordKind::Standard, 0);
        ExpectSheet(RecordKind::Event, 3);
    });
}

TEST_F(LoggerTest, ARefusedABrokenAndAGarbledRecordGiveNoRow)
{
    MakeTemplate();
    OnPage("memory=FF000000A records=30", [&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("1000"));
            rack().SetFault(2, "0A", {.kind = Fault::Kind::Refuse, .begins = "@0AR0003"});
            rack().SetFault(2, "0A", {.kind = Fault::Kind::Silent, .begins = "@0AR0005"});
            rack().SetFault(2, "0A", {.kind = Fault::Kind::NoReturn, .begins = "@0AR0007"});
            rack().SetFault(2, "0A", {.kind = Fault::Kind::Garbage, .begins = "@0AR0009"});
        });
        Transfer(op, {DataDone});
        ExpectSheet(RecordKind::Standard, 30, {3, 5, 7, 9});
    });
}

TEST_F(LoggerTest, ASecondTransferReplacesTheFirst)
{
    MakeTemplate();
    OnPage("memory=FF000000A records=30", [&](Operator &op) {
        Transfer(op, {DataDone});
        rack().SetValue(2, "0A", "records", "4");
        op.Click(Find("CmdTransferData"));
        Answer(op, DataDone);
        AwaitActions(op);
        ExpectSheet(RecordKind::Standard, 4);
    });
}

TEST_F(LoggerTest, TheRecordsAreShownInTheGrid)
{
    MakeTemplate();
    OnPage("memory=FF020000A records=10 eventrecords=3", [&](Operator &op) {
        Transfer(op, {DataDone, EventsDone});
        const auto cells = [&] {
            std::string text;
            const auto *model = Find<QTableView>("DBGridReadMemory")->model();
            for (int column = 0; column < model->columnCount(); ++column)
                text += model->headerData(column, Qt::Horizontal).toString().toStdString() + "|";
            for (int row = 0; row < model->rowCount(); ++row) {
                text += "\n";
                for (int column = 0; column < model->columnCount(); ++column)
                    text += model->index(row, column).data().toString().toStdString() + "|";
            }
            return text;
        };
        op.Click(Find("OptionDataMode_1"));
        op.Gui([&] { rack().ClearTrace(); });
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_TRUE(Shown("DBGridReadMemory"));
            EXPECT_EQ(cells(),
                      "Record|Channel|Value|Time stamp|\n0|0|-0|65536|\n1|1|+0.37|65596|\n2|2|+0.74|65656|");
        });
        op.Click(Find("OptionDataMode_0"));
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(Find<QTableView>("DBGridReadMemory")->model()->rowCount(), 10);
            EXPECT_EQ(cells().substr(0, 40), "Record|Channel|Value|\n0|0|-0|\n1|1|+0.37|");
            EXPECT_EQ(rack().Commands(2), Lines{});
        });
        Choose(op, Operation);
        op.Gui([&] { EXPECT_TRUE(Shown("DBGridReadMemory")); });
        Choose(op, Module);
        Choose(op, Operation);
        op.Gui([&] { EXPECT_FALSE(Shown("DBGridReadMemory")); });
    });
}

TEST_F(LoggerTest, AForeignFileIsToldInPlaceOfTheGrid)
{
    std::ofstream(File("Memory.xls")) << "no workbook at all";
    OnPage("", [&](Operator &op) {
        Choose(op, Operation);
        op.Click(Find("CmdMemoryDataRead"));
        AcceptFault(op, "Memory.xls can't be read :");
        AwaitActions(op);
        op.Gui([&] { EXPECT_FALSE(Shown("DBGridReadMemory")); });
    });
}

// What goes wrong with the files.

namespace
{

class LoggerFiles : public LoggerTest
{
protected:
    /// A transfer ends with a box about the file, and the old file stays.
    void ExpectRefused(Operator &op, const std::string &reason)
    {
        BeginTransfer(op);
        AcceptFault(op, reason);
        ExpectAfterwards(op);
        EXPECT_EQ(BytesOf(File("Memory.xls")), "old");
    }
};

} // namespace

TEST_F(LoggerFiles, AMissingTemplateKeepsTheOldFile)
{
    std::ofstream(File("Memory.xls")) << "old";
    OnPage("records=10", [&](Operator &op) { ExpectRefused(op, "Mem.ory: The empty workbook is missing"); });
}

TEST_F(LoggerFiles, ADamagedTemplateKeepsTheOldFile)
{
    std::ofstream(File("Memory.xls")) << "old";
    std::ofstream(File("Mem.ory")) << "damaged";
    OnPage("records=10", [&](Operator &op) { ExpectRefused(op, "Mem.ory: The file is no workbook"); });
}

TEST_F(LoggerFiles, AFileThatAnotherProgramHasOpenIsKept)
{
    MakeTemplate();
    std::ofstream(File("Memory.xls")) << "old";
    const int other = ::open(File("Memory.xls").c_str(), O_RDWR);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    OnPage("records=10", [&](Operator &op) { ExpectRefused(op, "The file is open in another program"); });
    ::close(other);
}

TEST_F(LoggerFiles, AFolderInThePlaceOfAFileIsToldAndKept)
{
    std::filesystem::create_directory(File("Memory.xls"));
    OnPage("records=10", [&](Operator &op) {
        std::filesystem::create_directory(File("Mem.ory"));
        BeginTransfer(op);
        AcceptFault(op, "Mem.ory: It is no file.");
        ExpectAfterwards(op, false);
        std::filesystem::remove(File("Mem.ory"));
        MakeTemplate();
        op.Click(Find("CmdTransferData"));
        AcceptFault(op, "Memory.xls: ");
        ExpectAfterwards(op, false);
    });
    EXPECT_TRUE(std::filesystem::is_directory(File("Memory.xls")));
}

TEST_F(LoggerFiles, APipeInThePlaceOfAFileIsNotWaitedFor)
{
    MakeTemplate();
    vorn::WriteEmptyWorkbook(File("Memory.xls"), vorn::OwnSheetTitles());
    OnPage("records=10", [&](Operator &op) {
        Choose(op, Operation);
        for (const char *name : {"Memory.xls", "Mem.ory"}) {
            std::filesystem::remove(File(name));
            ASSERT_EQ(::mkfifo(File(name).c_str(), 0600), 0);
        }
        op.Click(Find("CmdMemoryDataRead"));
        AcceptFault(op, "It is no file.");
        AwaitActions(op);
        op.Click(Find("CmdTransferData"));
        AcceptFault(op, "Mem.ory: It is no file.");
        ExpectAfterwards(op, false);
    });
}

TEST_F(LoggerFiles, AReaderThatIsMissingOrNeverEndsKeepsTheOldFile)
{
    MakeTemplate();
    std::ofstream(File("Memory.xls")) << "old";
    std::ofstream(File("endless")) << "#!/bin/sh\nexec sleep 1000\n";
    std::filesystem::permissions(File("endless"), std::filesystem::perms::owner_all);
    const auto own = qScopeGuard([] { vorn::SetSheetReader({}); });
    OnPage("records=10", [&](Operator &op) {
        const auto readBy = [&](const char *program) {
            op.Gui([&] {
                vorn::SetSheetReader({.program = QString::fromStdString(File(program)),
                                      .patience = std::chrono::milliseconds(100)});
            });
        };
        readBy("nothing");
        ExpectRefused(op, "Mem.ory: The program's reader is missing");
        readBy("endless");
        ExpectRefused(op, "Mem.ory: The file is damaged");
        op.Click(Find("CmdMemoryDataRead"));
        AcceptFault(op, "Memory.xls can't be read :\nThe file is damaged");
    });
}

TEST_F(LoggerFiles, AFolderThatWentIsTold)
{
    MakeTemplate();
    OnPage("records=10", [&](Operator &op) {
        Choose(op, Operation);
        std::filesystem::remove_all(files_.path().toStdString());
        op.Click(Find("CmdTransferData"));
        AcceptFault(op, "Mem.ory: The empty workbook is missing");
        ExpectAfterwards(op, false);
    });
}

TEST_F(LoggerFiles, AFullDiskEndsTheTransferWithAWholeFile)
{
    MakeTemplate();
    std::filesystem::create_symlink("/dev/full", File("Memory.xls.new"));
    OnPage("records=10", [&](Operator &op) {
        BeginTransfer(op);
        AcceptFault(op, "No space left");
        ExpectAfterwards(op);
        ExpectSheet(RecordKind::Standard, 0);
    });
}

// In a hurry.

namespace
{

class HurriedLogger : public LoggerTest
{
protected:
    LateBus &Bus() { return *bus_; }
    void OnBus(const std::string &settings, const std::function<void(Operator &)> &steps)
    {
        MakeTemplate();
        bus_ =
            std::make_unique<LateBus>(ports.Link(2), "module 7224M address=0A restart=0 " + settings +
                                                         "\nmodule 7224M address=0B restart=0 " + settings);
        Operate([&](Operator &op) {
            op.Gui([&] {
                main().TextTimeOut->setText(QStringLiteral("2000"));
                main().Nodes.Add("KeyCOM002", Logger, "(0A) 7224M", "vorn4ico", "vorn4icoS");
                main().Nodes.Add("KeyCOM002", Other, "(0B) 7224M", "vorn4ico", "vorn4icoS");
            });
            Choose(op, Logger);
            steps(op);
        });
    }
    void ToTab(Operator &op, int tab)
    {
        op.Gui([&] { ClickTab(tab); });
        AwaitActions(op);
    }
    void AwaitHeld(Operator &op, const std::string &line)
    {
        op.WaitFor([&] { return Bus().Held() == line; }, line.c_str());
    }
    /// Begins a transfer and waits until its first record has timed out. The clock stands still.
    void BeginWithALateRecord(Operator &op)
    {
        ToTab(op, Operation);
        Bus().Hold("@0AL");
        op.Click(Find("CmdTransferData"));
        AwaitHeld(op, "@0AL");
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("60"));
            clock.timeOfDay = 1000;
        });
        Bus().Hold("@0AR0000");
        Bus().Release();
        AwaitHeld(op, "@0AR0000");
        op.WaitFor([&] { return !main().TransBusy; }, "the end of the time-out");
    }
    const std::string Other = "_0002!!0B7224M";

    std::unique_ptr<LateBus> bus_;
};

} // namespace

TEST_F(HurriedLogger, OfSeveralTabsTheLastOneIsRead)
{
    OnBus("memory=FF010000A", [&](Operator &op) {
        Bus().Hold("#0A");
        op.WaitFor([&] { return !Bus().Held().empty(); }, "the refresh");
        op.Gui([&] {
            ClickTab(Memory);
            ClickTab(Limits);
            ClickTab(Operation);
            Bus().Forget();
        });
        Bus().Release();
        AwaitActions(op);
        EXPECT_EQ(FrameOnShow(op), "FrameMemOperation ");
        EXPECT_EQ(Bus().Lines(), (Lines{"@0AD", "@0AT"}));
    });
}

TEST_F(HurriedLogger, ATabOfAPageThatHasGoneIsNotRead)
{
    OnBus("memory=FF010000A", [&](Operator &op) {
        Bus().Hold("#0A");
        op.WaitFor([&] { return !Bus().Held().empty(); }, "the refresh");
        op.Gui([&] {
            LeftClick(Other);
            ClickTab(Limits);
        });
        Bus().Release();
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(main().PageOnShow(), Other);
            EXPECT_EQ(VisibleFrames(), "FrameMSet FrameAIn ");
            EXPECT_EQ(Strip()->currentIndex(), Module);
        });
        EXPECT_EQ(std::ranges::count(Bus().Lines(), "@0AB0") + std::ranges::count(Bus().Lines(), "@0BB0"), 0);
    });
}

TEST_F(HurriedLogger, ATransferIsBegunOnceAndStoppedWithinATransaction)
{
    OnBus("memory=FF000000A records=100", [&](Operator &op) {
        ToTab(op, Operation);
        Bus().Hold("@0AR0005");
        op.Gui([&] {
            Find<QPushButton>("CmdTransferData")->click();
            Find<QPushButton>("CmdTransferData")->click();
        });
        AwaitHeld(op, "@0AR0005");
        op.Gui([&] {
            ASSERT_TRUE(Window());
            EXPECT_EQ(Window()->windowTitle(), QStringLiteral("Transfer data records to host ..."));
            EXPECT_EQ(vorn::TagOf(Window()), "Memory");
            EXPECT_EQ(Window()->Command1->text(), QStringLiteral("Stop Transfer"));
            EXPECT_EQ(Window()->Label1->text(), QStringLiteral("100"));
            EXPECT_EQ(Window()->ProgressBar1->maximum(), 100);
            EXPECT_TRUE(Window()->Animation1->IsPlaying());
            EXPECT_FALSE(main().isEnabled());
            EXPECT_EQ(main().cursor().shape(), Qt::BusyCursor);
            Window()->Command1->click();
        });
        Bus().Release();
        Answer(op, DataDone);
        ExpectAfterwards(op);
        ExpectSheet(RecordKind::Standard, 6);
        const Lines lines = Bus().Lines();
        EXPECT_EQ(std::ranges::count(lines, "@0AN"), 1);
        EXPECT_EQ(lines.back(), "@0AR0005");
    });
}

TEST_F(HurriedLogger, AStopInTheFirstPartLetsTheSecondTakeOneRecord)
{
    OnBus("memory=FF020000A records=100 eventrecords=5", [&](Operator &op) {
        ToTab(op, Operation);
        Bus().Hold("@0AR0001");
        op.Click(Find("CmdTransferData"));
        AwaitHeld(op, "@0AR0001");
        op.Gui([&] { Window()->Command1->click(); });
        Bus().Hold("@0AR3FFC");
        Bus().Release();
        Answer(op, DataDone);
        AwaitHeld(op, "@0AR3FFC");
        op.Gui([&] {
            EXPECT_EQ(Window()->windowTitle(), QStringLiteral("Transfer event records to host ..."));
            EXPECT_EQ(Window()->ProgressBar1->maximum(), 16385);
            EXPECT_EQ(Window()->Label1->text(), QStringLiteral("16385"));
            EXPECT_EQ(Window()->ProgressBar1->value(), 0);
        });
        Bus().Release();
        Answer(op, EventsDone);
        ExpectAfterwards(op);
        ExpectSheet(RecordKind::Standard, 2);
        ExpectSheet(RecordKind::Event, 1);
    });
}

TEST_F(HurriedLogger, WhatCameIsInTheFileWithinASecond)
{
    OnBus("memory=FF000000A records=100", [&](Operator &op) {
        ToTab(op, Operation);
        Bus().Hold("@0AR0014");
        op.Click(Find("CmdTransferData"));
        AwaitHeld(op, "@0AR0014");
        op.WaitFor(
            [&] { return vorn::ReadRecordSheet(File("Memory.xls"), RecordKind::Standard).Rows() == 20; },
            "the records in the file while the module is silent");
        op.Gui([&] { Window()->Command1->click(); });
        Bus().Release();
        Answer(op, DataDone);
        ExpectAfterwards(op);
    });
}

TEST_F(HurriedLogger, APulledAdapterEndsTheTransferWithWhatCame)
{
    OnBus("memory=FF000000A records=100", [&](Operator &op) {
        ToTab(op, Operation);
        Bus().Hold("@0AR0003");
        op.Click(Find("CmdTransferData"));
        AwaitHeld(op, "@0AR0003");
        Bus().Pull();
        Bus().Release();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        Answer(op, DataDone);
        ExpectAfterwards(op);
        ExpectSheet(RecordKind::Standard, 4);
    });
}

TEST_F(HurriedLogger, ADiskThatFillsWithinATransferEndsItWithWhatCame)
{
    OnBus("memory=FF000000A records=100", [&](Operator &op) {
        ToTab(op, Operation);
        Bus().Hold("@0AR0005");
        op.Click(Find("CmdTransferData"));
        AwaitHeld(op, "@0AR0005");
        op.WaitFor(
            [&] { return vorn::ReadRecordSheet(File("Memory.xls"), RecordKind::Standard).Rows() == 5; },
            "the records in the file");
        rlimit before{};
        ::getrlimit(RLIMIT_FSIZE, &before);
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit full{512, before.rlim_max};
        op.Gui([&] { ::setrlimit(RLIMIT_FSIZE, &full); });
        Bus().Release();
        op.AwaitBox("the fault");
        op.Gui([&] { ::setrlimit(RLIMIT_FSIZE, &before); });
        AcceptFault(op, "It holds the records that were written before.");
        ExpectAfterwards(op);
        op.Gui([&] { EXPECT_EQ(main().FormScan, nullptr); });
        ExpectSheet(RecordKind::Standard, 5);
    });
}

TEST_F(HurriedLogger, ADiskThatIsFullAtTheEndLosesNothing)
{
    OnBus("memory=FF000000A records=9", [&](Operator &op) {
        ToTab(op, Operation);
        Bus().Hold("@0AR0008");
        op.Click(Find("CmdTransferData"));
        AwaitHeld(op, "@0AR0008");
        std::filesystem::create_symlink("/dev/full", File("Memory.xls.new"));
        Bus().Release();
        AcceptFault(op, "It holds the records that were written before.");
        ExpectAfterwards(op);
        ExpectSheet(RecordKind::Standard, 9);
    });
}

TEST_F(HurriedLogger, AnAdapterPulledInTheFirstPartIsToldOnce)
{
    OnBus("memory=FF020000A records=100 eventrecords=5", [&](Operator &op) {
        ToTab(op, Operation);
        Bus().Hold("@0AR0003");
        op.Click(Find("CmdTransferData"));
        AwaitHeld(op, "@0AR0003");
        Bus().Pull();
        Bus().Release();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        Answer(op, DataDone);
        Answer(op, EventsDone);
        ExpectAfterwards(op);
        ExpectSheet(RecordKind::Standard, 4);
        ExpectSheet(RecordKind::Event, 0);
    });
}

TEST_F(HurriedLogger, AReplyThatComesTooLateIsNoOtherRecord)
{
    OnBus("memory=FF000000A records=9", [&](Operator &op) {
        BeginWithALateRecord(op);
        Bus().Release();
        op.Gui([&] {
            EXPECT_EQ(Bus().Lines().back(), "@0AR0000");
            main().TextTimeOut->setText(QStringLiteral("2000"));
            clock.timeOfDay = 1002;
        });
        Answer(op, DataDone);
        ExpectAfterwards(op);
        ExpectSheet(RecordKind::Standard, 9, {0});
    });
}

TEST_F(HurriedLogger, AStopNeedsNotWaitForALateReply)
{
    OnBus("memory=FF000000A records=9", [&](Operator &op) {
        BeginWithALateRecord(op);
        op.Gui([&] { Window()->Command1->click(); });
        Answer(op, DataDone);
        Bus().Release();
        ExpectAfterwards(op);
        ExpectSheet(RecordKind::Standard, 0);
    });
}

TEST_F(HurriedLogger, TheTimeLeftIsToldByTheRecordsSoFar)
{
    OnBus("memory=FF000000A records=100", [&](Operator &op) {
        ToTab(op, Operation);
        op.Gui([&] { clock.timeOfDay = 1000; });
        Bus().Hold("@0AR0005");
        op.Click(Find("CmdTransferData"));
        AwaitHeld(op, "@0AR0005");
        QElapsedTimer since;
        since.start();
        op.WaitFor([&] { return since.elapsed() > 50; }, "the time of the next picture");
        op.Gui([&] {
            EXPECT_TRUE(Window()->LabTimeLeft->isVisible());
            EXPECT_EQ(Window()->LabTimeLeft->text(), QString());
            clock.timeOfDay = 1012;
        });
        Bus().Hold("@0AR0006");
        Bus().Release();
        AwaitHeld(op, "@0AR0006");
        op.Gui([&] {
            EXPECT_EQ(Window()->LabTimeLeft->text(), QStringLiteral("About 3 min 8 s left"));
            Window()->Command1->click();
        });
        Bus().Release();
        Answer(op, DataDone);
        ExpectAfterwards(op);
    });
}

TEST_F(HurriedLogger, WhatOneModuleSaidIsNotShownForAnotherThatRefuses)
{
    OnBus("memory=FF010000A recording=1", [&](Operator &op) {
        for (const int tab : {Memory, Limits, Operation})
            ToTab(op, tab);
        for (const char *begin : {"@0B"})
            Bus().Refuse(begin);
        ProgramRun::Choose(op, Other);
        ToTab(op, Memory);
        op.Gui([&] {
            for (const char *name : {"CheckCH_0", "CheckCH_7", "OptionStorageType_0", "OptionStorageType_1"})
                EXPECT_FALSE(Ticked(name)) << name;
            EXPECT_EQ(Text("TextSamplinginterval"), "");
            EXPECT_EQ(Find<QComboBox>("CmbDataStorage")->currentIndex(), -1);
        });
        ToTab(op, Limits);
        op.Gui([&] {
            EXPECT_EQ(EntryText("TextHAlarm", 0), "");
            EXPECT_EQ(EntryText("TextLAlarm", 7), "");
            EXPECT_FALSE(Find("CmdMAlarmUpdate")->isEnabled());
        });
        ToTab(op, Operation);
        op.Gui([&] { EXPECT_FALSE(Ticked("OptionMOmode_0") || Ticked("OptionMOmode_1")); });
        // The options are options again.
        ProgramRun::Choose(op, Logger);
        ToTab(op, Operation);
        op.Gui([&] { EXPECT_TRUE(Ticked("OptionMOmode_1")); });
        op.Click(Find("OptionMOmode_0"));
        AwaitActions(op);
        op.Gui([&] { EXPECT_TRUE(Ticked("OptionMOmode_0") && !Ticked("OptionMOmode_1")); });
        ToTab(op, Memory);
        op.Click(Find("OptionStorageType_1"));
        op.Gui([&] { EXPECT_TRUE(Ticked("OptionStorageType_1") && !Ticked("OptionStorageType_0")); });
    });
}

TEST_F(HurriedLogger, AConfigurationGoesOutAsItStoodAtThePress)
{
    OnBus("memory=FF010000A", [&](Operator &op) {
        ToTab(op, Memory);
        Bus().Hold("@0AD");
        op.Gui([&] { ClickTab(Operation); });
        AwaitHeld(op, "@0AD");
        op.Gui([&] {
            Find<QLineEdit>("TextSamplinginterval")->setText(QStringLiteral("11"));
            Find<QPushButton>("CmdMemConfig")->click();
            Find<QLineEdit>("TextSamplinginterval")->setText(QStringLiteral("12"));
        });
        Bus().Release();
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        AwaitActions(op);
        EXPECT_EQ(std::ranges::count(Bus().Lines(), "@0ACFF011000B"), 1);
    });
}

TEST_F(HurriedLogger, AnUpdateStaysWithTheModuleThatWasOnShow)
{
    OnBus("memory=FF010000A", [&](Operator &op) {
        ToTab(op, Memory);
        Bus().Hold("@0AC");
        op.Click(Find("CmdMemConfig"));
        op.WaitFor([&] { return !Bus().Held().empty(); }, "the write");
        op.Gui([&] { LeftClick(Other); });
        Bus().Release();
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        AwaitActions(op);
        op.Gui([&] { EXPECT_EQ(main().PageOnShow(), Other); });
        for (const std::string &line : Bus().Lines())
            EXPECT_FALSE(line.starts_with("@0BC"));
    });
}

TEST_F(HurriedLogger, ALimitTypedDuringTheUpdateStaysForTheNext)
{
    OnBus("memory=FF010000A", [&](Operator &op) {
        ToTab(op, Limits);
        TypeLimit(op, Limit("TextHAlarm", 0), QStringLiteral("5"));
        Bus().Hold("@0AA0");
        op.Click(Find("CmdMAlarmUpdate"));
        op.WaitFor([&] { return !Bus().Held().empty(); }, "the write");
        TypeLimit(op, Limit("TextHAlarm", 1), QStringLiteral("6"));
        Bus().Release();
        op.AnswerBox("Alarm Limit setting is complete !", 64, "Alarm Limit setting is complete");
        AwaitActions(op);
        Bus().Forget();
        op.Gui([&] { EXPECT_EQ(EntryText("TextHAlarm", 1), "6"); });
        op.Click(Find("CmdMAlarmUpdate"));
        op.AnswerBox("Alarm Limit setting is complete !", 64, "Alarm Limit setting is complete");
        EXPECT_EQ(Bus().Lines().front().substr(0, 11), "@0AA1+00006");
    });
}

// The plot and the export.

TEST_F(LoggerTest, TheSheetIsPlottedSavedAndExported)
{
    MakeTemplate();
    OnPage("memory=FF020000A records=50 eventrecords=9", [&](Operator &op) {
        Transfer(op, {DataDone, EventsDone});
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        auto *plot = Find<QCustomPlot>("PlotOfRecords");
        op.Gui([&] {
            EXPECT_TRUE(Shown("PlotReadMemory"));
            ASSERT_EQ(plot->graphCount(), 8);
            EXPECT_EQ(plot->graph(1)->name(), QStringLiteral("CH 1"));
            EXPECT_EQ(plot->graph(1)->dataCount(), 7);
            EXPECT_DOUBLE_EQ(plot->graph(1)->data()->at(1)->key, 9);
            EXPECT_DOUBLE_EQ(plot->graph(1)->data()->at(1)->value, -3.33);
            EXPECT_EQ(plot->legend->itemCount(), 8);
        });
        // By the keyboard.
        const auto width = [&] { return op.Gui([&] { return plot->xAxis->range().size(); }); };
        const auto centre = [&] { return op.Gui([&] { return plot->xAxis->range().center(); }); };
        const double whole = width(), middle = centre();
        op.Press(Find("PlotReadMemory"), Qt::Key_Plus);
        EXPECT_LT(width(), whole);
        op.Press(Find("PlotReadMemory"), Qt::Key_Right);
        EXPECT_GT(centre(), middle);
        op.Press(Find("PlotReadMemory"), Qt::Key_Home);
        EXPECT_DOUBLE_EQ(width(), whole);
        EXPECT_DOUBLE_EQ(centre(), middle);

        for (const auto &[name, begin] : {std::pair{"plot.png", "\x89PNG"}, {"plot.svg", "<?xml"}}) {
            op.Click(Find("CmdSavePlot"));
            op.AnswerFile("Save plot", "Memory.png", File(name).string());
            AwaitActions(op);
            EXPECT_TRUE(BytesOf(File(name)).starts_with(begin)) << name;
        }
        op.Click(Find("CmdExportSheet"));
        op.AnswerFile("Export records", "Memory.csv", File("sheet.csv").string());
        AwaitActions(op);
        const std::string csv = BytesOf(File("sheet.csv"));
        EXPECT_TRUE(csv.starts_with("Record,Channel,Value\r\n0,0,-0\r\n1,1,+0.37\r\n")) << csv.substr(0, 60);
        EXPECT_EQ(std::ranges::count(csv, '\n'), 51);

        op.Click(Find("OptionDataMode_1"));
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(plot->xAxis->label(), QStringLiteral("Time stamp"));
            EXPECT_DOUBLE_EQ(plot->graph(0)->data()->at(1)->key, 65536 + 8 * 60);
        });
    });
}

TEST_F(LoggerTest, AFullDiskTakesNeitherPlotNorSheet)
{
    MakeTemplate();
    for (const char *name : {"plot.png", "plot.svg", "sheet.csv"})
        std::filesystem::create_symlink("/dev/full", File(name));
    OnPage("memory=FF000000A records=50", [&](Operator &op) {
        Transfer(op, {DataDone});
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        for (const char *name : {"plot.png", "plot.svg"}) {
            op.Click(Find("CmdSavePlot"));
            op.AnswerFile("Save plot", "Memory.png", File(name).string());
            AcceptFault(op, std::string(name) + " can't be written :\nNo space left");
            AwaitActions(op);
        }
        op.Click(Find("CmdExportSheet"));
        op.AnswerFile("Export records", "Memory.csv", File("sheet.csv").string());
        AcceptFault(op, "sheet.csv can't be written :\nNo space left");
    });
}

TEST_F(LoggerTest, NeitherPlotNorSheetGoesWhereNobodyMayWrite)
{
    MakeTemplate();
    OnPage("memory=FF000000A records=50", [&](Operator &op) {
        Transfer(op, {DataDone});
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        op.Click(Find("CmdSavePlot"));
        op.AnswerFile("Save plot", "Memory.png", "/proc/plot.png");
        AcceptFault(op, "plot.png can't be written :");
        AwaitActions(op);
        op.Click(Find("CmdExportSheet"));
        op.AnswerFile("Export records", "Memory.csv", "/proc/sheet.csv");
        AcceptFault(op, "sheet.csv can't be written :");
    });
}

TEST_F(LoggerTest, ThePlotKeepsItsRecordsInSight)
{
    MakeTemplate();
    OnPage("memory=FF000000A records=50", [&](Operator &op) {
        Transfer(op, {DataDone});
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        auto *plot = Find<QCustomPlot>("PlotOfRecords");
        const auto range = [&] { return op.Gui([&] { return plot->xAxis->range(); }); };
        const QCPRange whole = range();
        const auto press = [&](Qt::Key key, int times) {
            op.Gui([&] {
                for (int i = 0; i < times; ++i)
                    QTest::keyClick(Find("PlotReadMemory"), key);
            });
        };
        press(Qt::Key_Plus, 80);
        EXPECT_GT(range().size(), whole.size() * 1e-6);
        EXPECT_LT(range().size(), whole.size() * 1e-4);
        press(Qt::Key_Minus, 100);
        EXPECT_LE(range().size(), whole.size() * 10);
        EXPECT_GT(range().size(), whole.size() * 5);
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left}) {
            press(key, 60);
            EXPECT_LT(range().lower, whole.upper);
            EXPECT_GT(range().upper, whole.lower);
        }
        press(Qt::Key_Home, 1);
        EXPECT_DOUBLE_EQ(range().size(), whole.size());
    });
}

TEST_F(LoggerTest, ASingleRecordIsPlottedByAScaleOfItsOwn)
{
    MakeTemplate();
    OnPage("memory=FF020000A records=50 eventrecords=1", [&](Operator &op) {
        Transfer(op, {DataDone, EventsDone});
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        op.Click(Find("OptionDataMode_1"));
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        op.Gui([&] {
            const auto *plot = Find<QCustomPlot>("PlotOfRecords");
            EXPECT_DOUBLE_EQ(plot->xAxis->range().center(), 65536);
            EXPECT_LT(plot->xAxis->range().size(), 2);
            EXPECT_LT(plot->yAxis->range().size(), 2);
        });
    });
}

// Workbooks that were damaged. The library that reads them doesn't survive them all, but the program does.

TEST_F(LoggerTest, ADamagedWorkbookIsReadOrRefused)
{
    vorn::RecordWorkbook book(File("Memory.xls"), vorn::OwnSheetTitles());
    book.Begin(RecordKind::Standard, 20);
    for (int i = 0; i < 20; ++i)
        book.Add({i, i % 8, "+1.5"});
    book.Finish();
    const std::string whole = BytesOf(File("Memory.xls"));
    // Some of these bring the reader down: the begin of the directory, and the length of its stream.
    const auto path = QString::fromStdString(File("Memory.xls").string());
    std::size_t read = 0, refused = 0;
    unsigned state = 7;
    const auto random = [&state] { return (state = state * 1664525U + 1013904223U) >> 8U; };
    for (int round = 0; round < 150; ++round) {
        std::string bytes = whole;
        for (int change = 0; change <= round % 3; ++change)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        if (round % 10 == 0)
            bytes.resize(random() % bytes.size());
        std::ofstream(File("Memory.xls"), std::ios::binary) << bytes;
        try {
            (void)vorn::ReadSheetBeside(path, RecordKind::Standard);
            ++read;
        } catch (const vorn::WorkbookError &error) {
            EXPECT_STRNE(error.what(), "");
            ++refused;
        }
    }
    EXPECT_GT(read, 0U);
    EXPECT_GT(refused, 0U);
}

// The program is killed in a transfer, at any moment.

namespace
{

constexpr const char *PortOfKilled = "VORN_TEST_PORT"; ///< device of the rack, for the program that is killed
constexpr const char *FilesOfKilled = "VORN_TEST_FILES"; ///< its program directory

class KilledProgram : public LoggerTest
{
protected:
    std::size_t ReadsHeard()
    {
        const Lines lines = rack().Commands(2);
        return static_cast<std::size_t>(
            std::ranges::count_if(lines, [](const std::string &line) { return line.starts_with("@0AR"); }));
    }
    /// Runs the program below until it is killed, so long behind the first record. Returns how many records
    /// it had asked for a second before.
    std::size_t Kill(std::chrono::milliseconds after)
    {
        using Steady = std::chrono::steady_clock;
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const auto device = std::filesystem::canonical(ports.Link(2));
        environment.insert(QString::fromLatin1(PortOfKilled), QString::fromStdString(device.string()));
        environment.insert(QString::fromLatin1(FilesOfKilled), files_.path());
        environment.insert(QStringLiteral("TMPDIR"), files_.path()); // it can't clear up behind itself
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--gtest_filter=KilledProgram.DISABLED_Transfers"),
                       QStringLiteral("--gtest_also_run_disabled_tests")});
        rack().ClearTrace();
        while (ReadsHeard() == 0 && program.state() != QProcess::NotRunning)
            program.waitForFinished(5);
        const auto end = Steady::now() + after;
        std::size_t secondBefore = 0;
        while (Steady::now() < end) {
            if (end - Steady::now() > std::chrono::seconds(1))
                secondBefore = ReadsHeard();
            program.waitForFinished(5);
        }
        EXPECT_EQ(program.state(), QProcess::Running) << program.readAll().toStdString();
        program.kill();
        program.waitForFinished();
        return secondBefore;
    }
};

} // namespace

TEST_F(KilledProgram, LeavesAWorkbookWithAllThatCameUntilASecondBefore)
{
    MakeTemplate();
    Rack("7224M address=0A restart=0 memory=FF000000A records=65535");
    for (const auto after : {1203, 1450, 1611}) {
        const std::size_t secondBefore = Kill(std::chrono::milliseconds(after));
        const auto rows = vorn::ReadRecordSheet(File("Memory.xls"), RecordKind::Standard).Rows();
        EXPECT_GT(secondBefore, 0U);
        EXPECT_GE(rows + 1, secondBefore); // the last one may have been on its way then
        EXPECT_LE(rows, ReadsHeard());
        ExpectSheet(RecordKind::Standard, static_cast<int>(rows));
    }
}

/// Not a test: what the one above starts and kills.
TEST_F(KilledProgram, DISABLED_Transfers)
{
    ASSERT_TRUE(std::getenv(PortOfKilled) && std::getenv(FilesOfKilled));
    std::filesystem::create_symlink(std::getenv(PortOfKilled), ports.Link(2));
    vorn::SetProgramDirectory(QString::fromLocal8Bit(std::getenv(FilesOfKilled)));
    Operate([&](Operator &op) {
        AddNode(op, Logger);
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("5000")); });
        ProgramRun::Choose(op, Logger);
        op.Gui([&] { ClickTab(Operation); });
        AwaitActions(op);
        op.Click(Find("CmdTransferData"));
        std::this_thread::sleep_for(std::chrono::minutes(1));
    });
}
