// The wizard on a bus whose replies come later than the operator acts, and by keyboard alone.

#include "support/LateBus.h"
#include "support/ProgramRun.h"

#include "calibration/FormCalibration.h"
#include "platform/WidgetText.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <memory>

using Lines = std::vector<std::string>;

namespace
{

constexpr const char *Done = "Calibration is successful !";
constexpr const char *DoneTitle = "Calibration is successful";
constexpr const char *Failed = "Calibration failure !";
constexpr const char *FailedTitle = "Calibration failure";

class QuickCalibrationTest : public ::testing::Test, public ProgramRun
{
protected:
    std::unique_ptr<LateBus> bus_;

    std::string Module(const std::string &model, const std::string &settings = {})
    {
        bus_ =
            std::make_unique<LateBus>(ports.Link(2), "module " + model + " address=0A restart=0 " + settings);
        return "_0002!!0A" + model;
    }
    void Open(Operator &op, const std::string &key, const char *timeOut = "30000")
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QString::fromLatin1(timeOut));
            main().Nodes.Add("KeyCOM002", key, key, "vorn4ico", "vorn4icoS");
        });
        Choose(op, key);
        bus_->Forget();
    }
    vorn::FormCalibration *Form() { return Find<vorn::FormCalibration>("FormCalibration"); }
    bool IsOpen()
    {
        return qobject_cast<vorn::FormCalibration *>(QApplication::activeModalWidget()) != nullptr;
    }
    void OpenBy(Operator &op, const char *button)
    {
        op.Gui([&] { Find<QPushButton>(button)->click(); });
        // Keys are for the window that is active.
        op.WaitFor([&] { return IsOpen() && Form()->isActiveWindow(); }, "the wizard");
    }
    /// Has the reply to the next line that begins so wait for `Release`, and awaits that line.
    void AwaitHeld(Operator &op, const char *line)
    {
        op.WaitFor([&] { return bus_->Held().starts_with(line); }, line);
    }
    bool AwaitSent(Operator &op, const std::string &line, int count = 1)
    {
        return op.WaitFor([&] { return CountOf(line) >= count; }, line.c_str());
    }
    int CountOf(const std::string &line) { return static_cast<int>(std::ranges::count(bus_->Lines(), line)); }
    Lines LinesThatBegin(const std::string &head)
    {
        Lines lines = bus_->Lines();
        std::erase_if(lines, [&](const std::string &line) { return !line.starts_with(head); });
        return lines;
    }
    std::string Label(QLabel *label) { return vorn::FromQString(label->text()); }
    void Close(Operator &op)
    {
        op.CloseForm("FormCalibration");
        AwaitActions(op);
    }
};

/// A wait that the window can be closed in.
struct ClosingCase {
    const char *name, *module, *settings, *button;
    const char *press; ///< button of the window; empty for none
    const char *held;
};

void PrintTo(const ClosingCase &c, std::ostream *out)
{
    *out << c.name;
}

class ClosingCalibrationTest : public QuickCalibrationTest, public ::testing::WithParamInterface<ClosingCase>
{
};

std::string NameOf(const ::testing::TestParamInfo<ClosingCase> &info)
{
    return info.param.name;
}

const ClosingCase Closings[] = {
    {"TheReference", "7206", "", "CmdGZero", "", "$0A2"},
    {"TheDriving", "7231", "range=31", "CmdAO4mA", "", "#0A04.000"},
    {"TheStep", "7206", "", "CmdGZero", "ComZero", "$0A1"},
    {"TheTrim", "7231", "range=31", "CmdAO4mA", "ComCTrim_0", "$0A301"},
    {"TheTemperature", "7203", "range=0E", "CmdGCJC", "", "$0A3"},
    {"TheOffset", "7203", "range=0E", "CmdGCJC", "ComZero", "$0A9"},
    {"TheStartupValue", "7231", "range=31", "CmdAOStartup", "", "$0A6"},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Waits, ClosingCalibrationTest, ::testing::ValuesIn(Closings), NameOf);

TEST_P(ClosingCalibrationTest, NothingGoesOnBehindIt)
{
    const ClosingCase &c = GetParam();
    const std::string key = Module(c.module, c.settings);
    Operate([&](Operator &op) {
        Open(op, key);
        if (!*c.press)
            bus_->Hold(c.held);
        OpenBy(op, c.button);
        if (*c.press) {
            bus_->Hold(c.held);
            op.Gui([&] { Form()->findChild<QPushButton *>(QString::fromLatin1(c.press))->click(); });
        }
        AwaitHeld(op, c.held);
        bus_->Forget();
        op.Gui([&] {
            Form()->ComZero->click(); // for a window that goes
            QTest::keyClick(Form(), Qt::Key_Escape);
        });
        bus_->Release();
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
        });
        op.WaitFor([&] { return bus_->Lines().size() > 6; }, "the refresh");
        for (const char *line : {"$0A0", "$0A1", "$0A4", "$0A9+0000", "$0A301", "#0A04.000"})
            EXPECT_EQ(CountOf(line), 0) << line;
        EXPECT_EQ(CountOf("$0A2"), 0) << "no ready wait";
    });
}

TEST_F(QuickCalibrationTest, TheOffsetIsTheOneThatStoodThereAtThePress)
{
    const std::string key = Module("7203", "range=0E");
    Operate([&](Operator &op) {
        Open(op, key);
        OpenBy(op, "CmdGCJC");
        bus_->Hold("$0A3");
        AwaitHeld(op, "$0A3");
        op.Gui([&] {
            Form()->TextCJC->selectAll();
            QTest::keyClicks(Form()->TextCJC, QStringLiteral("1"));
            Form()->ComZero->click();
            Form()->ComZero->click();
            QTest::keyClicks(Form()->TextCJC, QStringLiteral("8"));
        });
        bus_->Release();
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(LinesThatBegin("$0A9"), Lines{"$0A9+006F"});
        op.Gui([&] { EXPECT_EQ(vorn::FromQString(Form()->TextCJC->text()), "18") << "typed behind it"; });
        Close(op);
    });
}

TEST_F(QuickCalibrationTest, TheNextOffsetTypedWhileOneIsSentStays)
{
    const std::string key = Module("7203", "range=0E");
    Operate([&](Operator &op) {
        Open(op, key);
        OpenBy(op, "CmdGCJC");
        bus_->Hold("$0A9");
        op.Gui([&] { Form()->ComZero->click(); });
        AwaitHeld(op, "$0A9");
        op.Gui([&] {
            Form()->TextCJC->selectAll();
            QTest::keyClicks(Form()->TextCJC, QStringLiteral("-5"));
        });
        bus_->Release();
        op.AnswerBox(Done, 64, DoneTitle);
        op.Gui([&] { EXPECT_EQ(vorn::FromQString(Form()->TextCJC->text()), "-5"); });
        Close(op);
    });
}

TEST_F(QuickCalibrationTest, ATrimPressedTwiceInOneTransactionIsOneStep)
{
    const std::string key = Module("7231", "range=31");
    Operate([&](Operator &op) {
        Open(op, key);
        bus_->Hold("#0A04.000");
        OpenBy(op, "CmdAO4mA");
        AwaitHeld(op, "#0A04.000");
        op.Gui([&] {
            Form()->ComCTrim[1]->click();
            Form()->ComCTrim[1]->click();
        });
        bus_->Release();
        AwaitSent(op, "$0A3FF");
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0A3FF"), 1);
        EXPECT_EQ(CountOf("$0A0"), 1);
        Close(op);
    });
}

TEST_F(QuickCalibrationTest, AModuleLostUnderTheWizardShowsAndFails)
{
    const std::string key = Module("7231", "range=31 output0=12.000");
    Operate([&](Operator &op) {
        Open(op, key, "250");
        OpenBy(op, "CmdAOStartup");
        op.WaitFor([&] { return Label(Form()->LabStartup) == "12.000"; }, "the value");
        bus_->Silence(true);
        op.WaitFor([&] { return Label(Form()->LabAnswer) == "The module doesn't answer."; }, "the loss");
        op.Gui([&] {
            EXPECT_EQ(Label(Form()->LabStartup), "");
            Form()->ComZero->click();
        });
        op.AnswerBox(Failed, 16, FailedTitle);
        bus_->Silence(false);
        op.WaitFor([&] { return Label(Form()->LabStartup) == "12.000"; }, "the module again");
        op.Gui([&] { EXPECT_EQ(Label(Form()->LabAnswer), ""); });
        Close(op);
    });
}

TEST_F(QuickCalibrationTest, AnAdapterPulledInTheReadyWaitIsToldOnce)
{
    const std::string key = Module("7206");
    Operate([&](Operator &op) {
        Open(op, key);
        OpenBy(op, "CmdGZero");
        AwaitSent(op, "$0A2");
        op.Settle();
        bus_->Hold("$0A2");
        op.Gui([&] { Form()->ComZero->click(); });
        AwaitHeld(op, "$0A2");
        bus_->Silence(true);
        bus_->Pull();
        bus_->Release();
        op.AnswerBox(Done, 64, DoneTitle); // the reply that was on its way
        EXPECT_EQ(CountOf("$0A1"), 1);
        op.CloseForm("FormCalibration");
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number"); // the refresh, which ends with it
        AwaitActions(op);
    });
}

TEST_F(QuickCalibrationTest, LiveReadingComesBackWithTheAdapter)
{
    const std::string key = Module("7203", "range=0E");
    Operate([&](Operator &op) {
        Open(op, key, "250");
        OpenBy(op, "CmdGCJC");
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0025.0"; }, "the temperature");
        bus_->Pull();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.WaitFor([&] { return Label(Form()->LabCJCv).empty(); }, "the loss");
        bus_->PlugIn();
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Done, 64, DoneTitle);
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0025.0"; }, "the temperature again");
        op.Gui([&] { EXPECT_EQ(Label(Form()->LabAnswer), ""); });
        Close(op);
    });
}

// By keyboard alone.

TEST_F(QuickCalibrationTest, ReturnExecutesOnlyWhereTheFocusIsOnTheButton)
{
    const std::string key = Module("7203", "range=0E");
    Operate([&](Operator &op) {
        Open(op, key);
        OpenBy(op, "CmdGCJC");
        op.Gui([&] {
            EXPECT_EQ(Form()->focusWidget(), Form()->TextCJC);
            QTest::keyClick(Form()->TextCJC, Qt::Key_Return);
        });
        op.Settle();
        EXPECT_TRUE(op.Gui([&] { return IsOpen(); }));
        EXPECT_EQ(LinesThatBegin("$0A9"), Lines{}) << "a stray Return calibrates nothing";
        op.Gui([&] {
            QTest::keyClick(Form()->TextCJC, Qt::Key_Tab);
            EXPECT_EQ(Form()->focusWidget(), Form()->ComZero);
            QTest::keyClick(Form()->ComZero, Qt::Key_Return);
        });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(LinesThatBegin("$0A9"), Lines{"$0A9+0000"});
        op.Gui([&] { QTest::keyClick(Form(), Qt::Key_Escape); });
        AwaitActions(op);
        EXPECT_FALSE(op.Gui([&] { return IsOpen(); }));
    });
}

TEST_F(QuickCalibrationTest, TheTabKeyGoesFromTheTrimsToTheButtonsInTheirOrder)
{
    const std::string key = Module("7231", "range=31");
    Operate([&](Operator &op) {
        Open(op, key);
        OpenBy(op, "CmdAO4mA");
        op.Gui([&] {
            Lines order;
            for (int i = 0; i < 5; ++i) {
                QWidget *focus = Form()->focusWidget();
                ASSERT_NE(focus, nullptr);
                order.push_back(vorn::FromQString(focus->objectName()));
                QTest::keyClick(focus, Qt::Key_Tab);
            }
            EXPECT_EQ(order, (Lines{"ComCTrim_0", "ComCTrim_1", "ComZero", "Command1", "Command2"}));
            EXPECT_EQ(Form()->focusWidget(), Form()->ComCTrim[0]) << "round and round";
        });
        op.Gui([&] { QTest::keyClick(Form(), Qt::Key_Down); });
        AwaitSent(op, "$0A3FF");
        Close(op);
    });
}

TEST_F(QuickCalibrationTest, ReturnBehindTheOpeningClosesAndExecutesNothing)
{
    const std::string key = Module("7206");
    Operate([&](Operator &op) {
        Open(op, key);
        OpenBy(op, "CmdGZero");
        op.Gui([&] {
            EXPECT_EQ(Form()->focusWidget(), Form()->Command1);
            QTest::keyClick(Form()->Command1, Qt::Key_Tab, Qt::ShiftModifier);
            EXPECT_EQ(Form()->focusWidget(), Form()->ComZero);
            QTest::keyClick(Form()->ComZero, Qt::Key_Tab);
            QTest::keyClick(Form()->Command1, Qt::Key_Return);
        });
        AwaitActions(op);
        EXPECT_FALSE(op.Gui([&] { return IsOpen(); }));
        EXPECT_EQ(CountOf("$0A1"), 0);
    });
}

TEST_F(QuickCalibrationTest, AnotherSizeOfTheWindowRepeatsTheOpeningStep)
{
    const std::string key = Module("7206");
    Operate([&](Operator &op) {
        Open(op, key);
        OpenBy(op, "CmdGZero");
        op.WaitFor([&] { return CountOf("$0A2") == 1 && !main().Gate.IsOnLine(); }, "the end of the step");
        op.Gui([&] {
            Form()->resize(Form()->width() + 40, Form()->height());
            Form()->resize(Form()->width() + 40, Form()->height() + 8);
        });
        AwaitSent(op, "$0A2", 2);
        op.Settle();
        EXPECT_EQ(CountOf("$0A2"), 2);
        Close(op);
    });
}
