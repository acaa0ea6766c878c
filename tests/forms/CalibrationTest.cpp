#include "support/BeepCount.h"
#include "support/LateBus.h"
#include "support/RackOfOne.h"
#include "support/RawPeer.h"

#include "calibration/FormCalibration.h"
#include "shell/Controls.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>

using Lines = std::vector<std::string>;

namespace
{

constexpr const char *Done = "Calibration is successful !";
constexpr const char *DoneTitle = "Calibration is successful";
constexpr const char *Failed = "Calibration failure !";
constexpr const char *FailedTitle = "Calibration failure";

std::string ModuleKey(const std::string &model, char port = '2', const char *head = "_0")
{
    return std::string(head) + "00" + port + "!!0A" + model;
}

class CalibrationTest : public ::testing::Test, public RackOfOne
{
protected:
    std::unique_ptr<RawPeer> peer_;

    void Peer() { peer_ = std::make_unique<RawPeer>(ports.Link(3)); }

    void AddKey(Operator &op, const std::string &key, const char *timeOut)
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QString::fromLatin1(timeOut));
            main().Nodes.Add(std::string("KeyCOM00") + key[4], key, "(0A) " + vorn::NodeKey(key).model(),
                             "vorn4ico", "vorn4icoS");
        });
        Choose(op, key);
    }
    void OpenOnPeer(Operator &op, const std::string &key)
    {
        AddKey(op, key, "100");
        peer_->Forget();
    }
    void OpenOnRack(Operator &op, const std::string &key)
    {
        AddKey(op, key, "250");
        rack().ClearTrace();
    }

    vorn::FormCalibration *Form() { return Find<vorn::FormCalibration>("FormCalibration"); }
    bool IsOpen(Operator &op)
    {
        return op.Gui([&] {
            return qobject_cast<vorn::FormCalibration *>(QApplication::activeModalWidget()) != nullptr;
        });
    }
    /// Presses a button of the page and waits until the wizard is there.
    void OpenBy(Operator &op, const char *button)
    {
        op.Click(Find(button));
        op.WaitFor(
            [&] {
                const auto *form = qobject_cast<vorn::FormCalibration *>(QApplication::activeModalWidget());
                return form && form->isActiveWindow(); // keys are for the window that is active
            },
            "the wizard");
    }
    void Close(Operator &op)
    {
        op.CloseForm("FormCalibration");
        AwaitActions(op);
    }
    bool AwaitSent(Operator &op, const std::string &line, int count = 1)
    {
        return op.WaitFor([&] { return std::ranges::count(Sent(), line) >= count; }, line.c_str());
    }
    Lines Sent() { return peer_ ? peer_->Lines() : rack().Commands(2); }
    int CountOf(const std::string &line) { return static_cast<int>(std::ranges::count(Sent(), line)); }
    std::string Label(QLabel *label) { return vorn::FromQString(label->text()); }
};

struct OpeningCase {
    const char *name, *module, *button, *tag;
    const char *first; ///< the line that the opening sends; empty for none
};

void PrintTo(const OpeningCase &c, std::ostream *out)
{
    *out << c.name;
}

class CalibrationOpeningTest : public CalibrationTest, public ::testing::WithParamInterface<OpeningCase>
{
};

std::string NameOf(const ::testing::TestParamInfo<OpeningCase> &info)
{
    return info.param.name;
}

const OpeningCase Openings[] = {
    {"GZero", "7203 range=0E", "CmdGZero", "Zero", "$0A2"},
    {"GSpan", "7206", "CmdGSpan", "Span", "$0A2"},
    {"GCJC", "7203D range=0E", "CmdGCJC", "CJC", ""},
    {"G0V", "7218", "CmdG0V", "0V", "$0A7+00.000"},
    {"G10V", "7218", "CmdG10V", "10V", "$0A7+10.000"},
    {"GStartup", "7218", "CmdGStartup", "Start", ""},
    {"AIZero", "7221", "CmdAIZero", "Zero", "$0A2"},
    {"AISpan", "7224", "CmdAISpan", "Span", "$0A2"},
    {"AICJC", "7224M range=0E", "CmdAICJC", "CJC", ""},
    {"AO4mA", "7231 range=31", "CmdAO4mA", "4mA", "#0A04.000"},
    {"AO20mA", "7231 range=31", "CmdAO20mA", "20mA", "#0A20.000"},
    {"AOStartup", "7231 range=31", "CmdAOStartup", "Start", ""},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Buttons, CalibrationOpeningTest, ::testing::ValuesIn(Openings), NameOf);

TEST_P(CalibrationOpeningTest, OpensInItsMode)
{
    const OpeningCase &c = GetParam();
    const std::string module = c.module;
    const std::string model = module.substr(0, module.find(' '));
    Rack(model + " address=0A restart=20 " + module.substr(model.size()));
    Operate([&](Operator &op) {
        OpenOnRack(op, ModuleKey(model));
        OpenBy(op, c.button);
        if (*c.first)
            AwaitSent(op, c.first);
        op.Gui([&] {
            EXPECT_EQ(vorn::TagOf(Form()), c.tag);
            EXPECT_EQ(vorn::FromQString(Form()->windowTitle()), "VORN-" + model + "  Calibration");
            EXPECT_EQ(Status(), "VORN-  Calibration") << "the model of the opening before";
            const bool trims = std::string("0V 10V 4mA 20mA Start").find(c.tag) != std::string::npos;
            const bool cjc = c.tag == std::string("CJC"), start = c.tag == std::string("Start");
            EXPECT_EQ(Form()->LabZS->isVisible(), !cjc);
            EXPECT_EQ(Form()->LabZSv->isVisible(), !cjc && !trims);
            EXPECT_EQ(Form()->ComCTrim[0]->isVisible(), trims);
            EXPECT_EQ(Form()->ComCTrim[1]->isVisible(), trims);
            EXPECT_EQ(Form()->TextCJC->isVisible(), cjc);
            EXPECT_EQ(Form()->LabCJC->isVisible(), cjc);
            EXPECT_EQ(Form()->LabCJCi->isVisible(), cjc || start);
            EXPECT_EQ(Form()->LabStartup->isVisible(), start);
            EXPECT_EQ(Form()->LabUnit->isVisible(), start);
        });
        Close(op);
        OpenBy(op, c.button);
        op.Gui([&] { EXPECT_EQ(Status(), "VORN-" + model + "  Calibration"); });
        Close(op);
    });
}

TEST_F(CalibrationTest, ZeroAndSpanShowTheirReference)
{
    Rack("7203 address=0A range=10 restart=20");
    Operate([&](Operator &op) {
        OpenOnRack(op, ModuleKey("7203"));
        OpenBy(op, "CmdGSpan");
        op.WaitFor([&] { return Label(Form()->LabZSv) == " 22 mV"; }, "the reference");
        op.Gui([&] {
            EXPECT_EQ(Label(Form()->LabZS),
                      "Apply                            to  the input terminal of the module.");
            EXPECT_GT(Form()->LabZSv->x(), 0) << "in the gap";
        });
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0A0"), 1);
        EXPECT_EQ(rack().Value(2, "0A", "calibration"), "span");
        EXPECT_TRUE(IsOpen(op)) << "for the next step";
        Close(op);
        OpenBy(op, "CmdGZero");
        op.WaitFor([&] { return Label(Form()->LabZSv) == " 0 mV"; }, "the reference");
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0A1"), 1);
        Close(op);
    });
}

TEST_F(CalibrationTest, ARangeWithoutAReferenceShowsNone)
{
    Peer();
    peer_->Reply("$0A2", "!0A070600\r");
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7203", '3'));
        OpenBy(op, "CmdGSpan");
        AwaitSent(op, "$0A2");
        op.Settle();
        op.Gui([&] { EXPECT_EQ(Label(Form()->LabZSv), ""); });
        Close(op);
    });
}

TEST_F(CalibrationTest, ARefusedOrSilentStepIsAFailureAndChangesNoPointer)
{
    Peer();
    for (const char *answer : {"?0A\r", "", ">0A\r"}) {
        peer_->Reply("$0A1", answer);
        Operate([&](Operator &op) {
            OpenOnPeer(op, ModuleKey("7206", '3'));
            OpenBy(op, "CmdGZero");
            op.Gui([&] { Form()->ComZero->click(); });
            op.AnswerBox(Failed, 16, FailedTitle);
            EXPECT_EQ(CountOf("$0A1"), 1);
            op.Gui([&] { EXPECT_EQ(Status(), "Now Calibration is processing , Please wait moment...."); });
            EXPECT_TRUE(IsOpen(op));
            Close(op);
        });
    }
}

TEST_F(CalibrationTest, AModuleThatDoesntAnswerShowsAsSuch)
{
    Peer();
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7206", '3'));
        OpenBy(op, "CmdGZero");
        op.WaitFor([&] { return Label(Form()->LabAnswer) == "The module doesn't answer."; },
                   "the silence told");
        peer_->Reply("$0A1", "?0A\r");
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Failed, 16, FailedTitle);
        op.Gui([&] { EXPECT_EQ(Label(Form()->LabAnswer), ""); });
        Close(op);
    });
}

TEST_F(CalibrationTest, ALateModuleStillCountsAsCalibrated)
{
    Peer();
    peer_->Reply("$0A1", "!0A\r");
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7206", '3'));
        OpenBy(op, "CmdGZero");
        peer_->Forget();
        op.Gui([&] { Form()->ComZero->click(); });
        AwaitSent(op, "$0A2", 3);
        op.Gui([&] {
            EXPECT_EQ(Form()->cursor().shape(), Qt::WaitCursor);
            EXPECT_EQ(main().cursor().shape(), Qt::WaitCursor);
            clock.timeOfDay = std::fmod(clock.Timer() + 31, 86400);
        });
        op.AnswerBox(Done, 64, DoneTitle);
        op.Gui([&] {
            EXPECT_EQ(Form()->cursor().shape(), Qt::ArrowCursor);
            clock.timeOfDay.reset();
        });
        Close(op);
    });
}

// Cold junction.

TEST_F(CalibrationTest, TheOffsetGoesOutInCountsAndTheEntryIsReset)
{
    Rack("7203 address=0A range=0E restart=20");
    Operate([&](Operator &op) {
        OpenOnRack(op, ModuleKey("7203"));
        OpenBy(op, "CmdGCJC");
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0025.0"; }, "the temperature");
        op.Gui([&] {
            EXPECT_EQ(Label(Form()->LabCJC), "CJC Temperature   =");
            EXPECT_EQ(Label(Form()->LabCJCi), "Input CJC offset (-99.9 to 99.9 'C) =");
            EXPECT_EQ(vorn::FromQString(Form()->TextCJC->text()), "+0.0");
            Form()->TextCJC->selectAll();
            QTest::keyClicks(Form()->TextCJC, QStringLiteral("-12.3"));
            Form()->ComZero->click();
        });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0A9-0557"), 1);
        op.Gui([&] { EXPECT_EQ(vorn::FromQString(Form()->TextCJC->text()), "+0.0"); });
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0012.7"; }, "the new temperature");
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0A9+0000"), 1);
        Close(op);
    });
}

TEST_F(CalibrationTest, AnOffsetThatIsNoNumberSendsNothing)
{
    Rack("7203 address=0A range=0E");
    Operate([&](Operator &op) {
        OpenOnRack(op, ModuleKey("7203"));
        OpenBy(op, "CmdGCJC");
        for (const char *text : {"", "-", "295"}) {
            op.Gui([&] {
                Form()->TextCJC->setText(QString::fromLatin1(text));
                Form()->ComZero->click();
            });
            op.AnswerBox("CJC offset is not a valid number !", 16, FailedTitle);
            op.Gui([&] { EXPECT_EQ(vorn::FromQString(Form()->TextCJC->text()), text); });
        }
        const Lines sent = Sent();
        EXPECT_TRUE(
            std::ranges::none_of(sent, [](const std::string &line) { return line.starts_with("$0A9"); }));
        Close(op);
    });
}

TEST_F(CalibrationTest, TheOffsetEntryTakesSignedNumbersUpTo590)
{
    Rack("7203 address=0A range=0E");
    Operate([&](Operator &op) {
        OpenOnRack(op, ModuleKey("7203"));
        OpenBy(op, "CmdGCJC");
        op.Gui([&] {
            const auto typed = [&](const char *keys) {
                Form()->TextCJC->clear();
                QTest::keyClicks(Form()->TextCJC, QString::fromLatin1(keys));
                return vorn::FromQString(Form()->TextCJC->text());
            };
            EXPECT_EQ(typed("-1+2.3.4x"), "-12.34");
            EXPECT_EQ(typed("591"), "59");
            EXPECT_EQ(typed("-590"), "-590");
        });
        Close(op);
    });
}

TEST_F(CalibrationTest, AColdJunctionThatFallsSilentIsCleared)
{
    Peer();
    peer_->Reply("$0A2", "!0A0E0640\r");
    peer_->Reply("$0A3", ">+0025.0\r");
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7203", '3'));
        OpenBy(op, "CmdGCJC");
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0025.0"; }, "the temperature");
        peer_->Reply("$0A3", "?0A\r");
        const int before = CountOf("$0A3");
        op.WaitFor([&] { return CountOf("$0A3") > before + 2; }, "more readings");
        op.Gui([&] { EXPECT_EQ(Label(Form()->LabCJCv), "+0025.0") << "a refusal leaves it alone"; });
        peer_->Reply("$0A3", "");
        op.WaitFor([&] { return Label(Form()->LabCJCv).empty(); }, "the silence");
        Close(op);
    });
}

TEST_F(CalibrationTest, ACheckedModulesTemperatureLosesItsChecksum)
{
    Peer();
    peer_->Reply("$0A3D8", ">+0025.0D1\r");
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7203", '3', "_1"));
        OpenBy(op, "CmdGCJC");
        op.WaitFor([&] { return !peer_->Lines().empty() && peer_->Lines().back().starts_with("$0A3"); },
                   "a reading");
        peer_->Reply(peer_->Lines().back(), ">+0025.0D1\r");
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0025.0"; }, "the temperature");
        Close(op);
    });
}

TEST_F(CalibrationTest, ACardIsCalibratedBehindItsBaseUnit)
{
    Rack("3900E address=0A restart=20\nslot 2 3925 range=0E");
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().Nodes.Add("KeyCOM002", "_0002!!0A3900", "(0A) 3900", "vorn5ico", "vorn5icoS");
            main().Nodes.Add("_0002!!0A3900", "_00022!0A3925", "(S2) 3925", "vorn5cico", "vorn5cicoS");
            main().TextTimeOut->setText(QStringLiteral("250"));
        });
        Choose(op, "_00022!0A3925");
        OpenBy(op, "CmdSSpan");
        op.WaitFor([&] { return Label(Form()->LabZSv) == " 50 mV"; }, "the reference");
        op.Gui([&] {
            EXPECT_EQ(Label(Form()->LabZS),
                      "Apply                            to  the channel 0 of this slot.");
            Form()->ComZero->click();
        });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0AS20"), 1);
        Close(op);
        OpenBy(op, "CmdSCJC");
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0025.0"; }, "the temperature");
        rack().ClearTrace();
        op.Gui([&] {
            Form()->TextCJC->setText(QStringLiteral("1"));
            Form()->ComZero->click();
        });
        AwaitSent(op, "$0A3"); // the wait asks the base unit, which knows no cold junction: it refuses, which
                               // is an answer
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0AS29+006F"), 1);
        Close(op);
    });
}

// Outputs.

TEST_F(CalibrationTest, AnOutputIsDrivenTrimmedAndStored)
{
    Rack("7231 address=0A range=31 restart=20");
    Operate([&](Operator &op) {
        OpenOnRack(op, ModuleKey("7231"));
        OpenBy(op, "CmdAO4mA");
        AwaitSent(op, "#0A04.000");
        op.Gui([&] {
            EXPECT_EQ(Label(Form()->LabZS), "       Attach meter to output terminal of the module");
            Form()->ComCTrim[0]->click();
        });
        AwaitSent(op, "$0A301");
        op.Settle();
        op.Gui([&] { Form()->ComCTrim[1]->click(); });
        AwaitSent(op, "$0A3FF");
        op.Settle();
        op.Gui([&] { QTest::keyClick(Form(), Qt::Key_Up); });
        AwaitSent(op, "$0A301", 2);
        EXPECT_EQ(rack().Value(2, "0A", "trim0"), "1");
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0A0"), 1);
        Close(op);
        EXPECT_EQ(CountOf("#0A04.000"), 1) << "the output stays where it was driven to";
    });
}

TEST_F(CalibrationTest, TheStartupValueIsReadTrimmedAndStored)
{
    Rack("7231 address=0A range=31 restart=20 output0=12.000");
    Operate([&](Operator &op) {
        OpenOnRack(op, ModuleKey("7231"));
        OpenBy(op, "CmdAOStartup");
        op.WaitFor([&] { return Label(Form()->LabStartup) == "12.000"; }, "the value");
        op.Gui([&] {
            EXPECT_EQ(Label(Form()->LabUnit), "mA");
            EXPECT_EQ(Label(Form()->LabCJCi), "Startup output value =");
            Form()->ComCTrim[0]->click();
        });
        op.WaitFor([&] { return Label(Form()->LabStartup) == "12.005"; }, "the next value");
        EXPECT_EQ(CountOf("#0A12.005"), 1);
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(CountOf("$0A4"), 1);
        EXPECT_EQ(rack().Value(2, "0A", "startup0"), "12.005");
        Close(op);
    });
}

TEST_F(CalibrationTest, AnUnknownStartupValueIsNotTrimmed)
{
    BeepCount beeps;
    Peer();
    peer_->Reply("$0A2", "!0A310600\r");
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7231", '3'));
        OpenBy(op, "CmdAOStartup");
        AwaitSent(op, "$0A6");
        op.WaitFor([&] { return Label(Form()->LabStartup).empty(); }, "the silence");
        op.Gui([&] {
            EXPECT_EQ(beeps.Take(), 0);
            Form()->ComCTrim[0]->click();
        });
        op.WaitFor([&] { return beeps.Take() == 1; }, "the beep");
        const Lines sent = Sent();
        EXPECT_TRUE(
            std::ranges::none_of(sent, [](const std::string &line) { return line.starts_with("#0A"); }));
        Close(op);
    });
}

TEST_F(CalibrationTest, TheStartupLabelOfTheExcitationShowsTheLastReply)
{
    Peer();
    peer_->Reply("$0A2", "!0A000600\r");
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7218", '3'));
        OpenBy(op, "CmdGStartup");
        op.Gui([&] { main().ReplyText = "!0A+09.995"; });
        op.WaitFor([&] { return Label(Form()->LabStartup) == "+09.995"; }, "the reply");
        peer_->Forget();
        op.Gui([&] { Form()->ComCTrim[0]->click(); });
        AwaitSent(op, "$0A7+010000");
        EXPECT_EQ(Sent().size(), 1U) << "nothing is read";
        Close(op);
    });
}

// In a hurry.

TEST_F(CalibrationTest, ClosedInAWaitNothingGoesOn)
{
    Peer();
    peer_->Reply("$0A1", "!0A\r");
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7206", '3'));
        OpenBy(op, "CmdGZero");
        op.Gui([&] { Form()->ComZero->click(); });
        AwaitSent(op, "$0A2", 3);
        op.Gui([&] { Form()->Command1->click(); });
        AwaitActions(op);
        EXPECT_FALSE(IsOpen(op));
        op.Gui([&] {
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "no box for a window that has gone";
        });
        peer_->Forget();
        op.WaitFor([&] { return CountOf("#0A") > 1; }, "the refresh");
        EXPECT_EQ(CountOf("$0A2"), 0);
        EXPECT_EQ(CountOf("$0A1"), 0);
    });
}

TEST_F(CalibrationTest, APressWhileOneRunsIsIgnoredAndNoneIsSentTwice)
{
    Rack("7206 address=0A restart=200");
    Operate([&](Operator &op) {
        OpenOnRack(op, ModuleKey("7206"));
        OpenBy(op, "CmdGZero");
        op.Gui([&] {
            Form()->ComZero->click();
            Form()->ComZero->click();
        });
        op.AnswerBox(Done, 64, DoneTitle);
        op.Settle();
        EXPECT_EQ(CountOf("$0A1"), 1);
        EXPECT_TRUE(IsOpen(op));
        Close(op);
    });
}

TEST_F(CalibrationTest, LiveReadingGoesOnBesideTheReadyWait)
{
    Peer();
    peer_->Reply("$0A2", "!0A0E0640\r");
    peer_->Reply("$0A9+0000", "!0A\r");
    Operate([&](Operator &op) {
        OpenOnPeer(op, ModuleKey("7203", '3'));
        OpenBy(op, "CmdGCJC");
        peer_->Forget();
        op.Gui([&] { Form()->ComZero->click(); });
        AwaitSent(op, "$0A9+0000");
        peer_->Reply("$0A3", ">+0025.0\r");
        op.AnswerBox(Done, 64, DoneTitle);
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0025.0"; }, "the temperature");
        Close(op);
    });
}

TEST_F(CalibrationTest, APulledAdapterIsToldOnceAndTheWizardClosesAsEver)
{
    LateBus bus(ports.Link(2), "module 7203 address=0A range=0E");
    Operate([&](Operator &op) {
        AddKey(op, ModuleKey("7203"), "250");
        OpenBy(op, "CmdGCJC");
        op.WaitFor([&] { return Label(Form()->LabCJCv) == "+0025.0"; }, "the temperature");
        bus.Pull();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.WaitFor([&] { return Label(Form()->LabAnswer) == "The module doesn't answer."; },
                   "the loss shown");
        op.Gui([&] { EXPECT_EQ(Label(Form()->LabCJCv), ""); });
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox(Failed, 16, FailedTitle);
        op.CloseForm("FormCalibration");
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number"); // the refresh, which ends with it
        AwaitActions(op);
    });
}

TEST_F(CalibrationTest, OpensForTheModuleThatWasOnShowAndClosesByEscape)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A restart=0\nmodule 7206 address=0B restart=0");
    Operate([&](Operator &op) {
        AddKey(op, ModuleKey("7206"), "30000");
        const std::string second = "_0002!!0B7206";
        op.Gui([&] { main().Nodes.Add("KeyCOM002", second, "(0B) 7206", "vorn4ico", "vorn4icoS"); });
        bus.Hold("#0A");
        op.WaitFor([&] { return !bus.Held().empty(); }, "a poll on the line");
        op.Gui([&] {
            LeftClick(second);
            Find<QPushButton>("CmdGZero")->click(); // the page that is still on show
        });
        bus.Release();
        AwaitActions(op);
        EXPECT_FALSE(IsOpen(op)) << "the page has changed before its turn";
        bus.Hold("#0B");
        op.WaitFor([&] { return !bus.Held().empty(); }, "a poll on the line");
        op.Gui([&] {
            Find<QPushButton>("CmdGZero")->click();
            LeftClick(ModuleKey("7206"));
        });
        bus.Release();
        op.WaitFor(
            [&] {
                return qobject_cast<vorn::FormCalibration *>(QApplication::activeModalWidget()) != nullptr;
            },
            "the wizard");
        op.Gui([&] { Form()->ComZero->click(); });
        op.AnswerBox(Done, 64, DoneTitle);
        EXPECT_EQ(std::ranges::count(bus.Lines(), "$0B1"), 1);
        EXPECT_EQ(std::ranges::count(bus.Lines(), "$0A1"), 0);
        op.Gui([&] { QTest::keyClick(Form(), Qt::Key_Escape); });
        AwaitActions(op);
        EXPECT_FALSE(IsOpen(op));
    });
}
