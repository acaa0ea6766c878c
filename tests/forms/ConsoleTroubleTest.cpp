// What modules, ports and operators do that no console is made for: it shows nothing untrue, and writes
// nothing that the operator hasn't set.

#include "support/ConsoleRun.h"
#include "support/LateConsoleRun.h"

#include "consoles/Form7234Calibration.h"

#include <QComboBox>
#include <QRadioButton>
#include <QSet>

namespace
{

const std::string Title = "VORN Utility";
const std::string Success = "Configuration is successful!";
const std::string SuccessTitle = "Configuration is successful";
const std::string Invalid = "Configuration is invalid!";
const std::string InvalidTitle = "Configuration is invalid";

class ConsoleTroubleTest : public ::testing::Test, public LateConsoleRun
{
protected:
    ConsoleTroubleTest() { clock.slowness = 10; }

    /// Opens the console; its clock goes on.
    void Load(Operator &op, LateBus &bus, const std::string &model)
    {
        Open(op, bus, "_0002!!0A" + model);
        clock.ticks.reset();
    }
    void Press(Operator &op, const char *button)
    {
        op.Gui([&] { Part<QAbstractButton>(button)->click(); });
    }
    void Poll(Operator &op, LateBus &bus)
    {
        bus.Forget();
        Tick(op);
        op.WaitFor([&] { return !bus.Lines().empty() && !main().Gate.IsOnLine(); }, "the poll");
        AwaitTaken(op);
    }
    /// Waits until all that was taken for the console has run.
    void AwaitTaken(Operator &op)
    {
        bool ended = false;
        op.Gui([&] { main().Gate.Take({.context = Console(), .action = [&ended] { ended = true; }}); });
        op.WaitFor([&] { return ended; }, "the end of all actions");
    }
    bool IsSet(Operator &op, const char *point)
    {
        return op.Gui([&] { return Part<vorn::DIO>(point)->value(); });
    }
    void Close(Operator &op)
    {
        op.Press(op.Gui([&] { return Console(); }), Qt::Key_Escape);
        op.WaitFor([&] { return !Console(); }, "the end of the console");
    }
};

TEST_F(ConsoleTroubleTest, AReadBackWithoutAnAddressLeavesTheOneThatWasAsked)
{
    LateBus bus(ports.Link(2), "module 7262 address=0A outputs=00");
    Operate([&](Operator &op) {
        Load(op, bus, "7262");
        bus.Reply("$0A2", "!\r");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        bus.Forget();
        op.Gui([&] { QTest::keyClick(Part("DIOH_0"), Qt::Key_Space); });
        AwaitTaken(op);
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"#0A0001"}))
            << "not #0001, which is another module's";
        Close(op);
    });
}

TEST_F(ConsoleTroubleTest, AMaskThatNobodyHasReadIsNotWritten)
{
    LateBus bus(ports.Link(2), "module 7216 address=0A mask=2F");
    bus.Reply("$0A6", "!0AZZ\r");
    Operate([&](Operator &op) {
        Load(op, bus, "7216");
        Press(op, "chkChannel");
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(Invalid, 16, InvalidTitle);
        AwaitTaken(op);
        EXPECT_EQ(bus.Lines(), std::vector<std::string>{});

        bus.Reply("$0A6", ""); // the module answers again, and then garbage
        Poll(op, bus);
        bus.Reply("$0A6", "!0A\r");
        Poll(op, bus);
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0A6"}));
        bus.Forget();
        op.Gui([&] { PickEntry(*Part<QComboBox>("cboChannel"), 1); });
        AwaitTaken(op);
        Press(op, "chkChannel");
        Press(op, "cmdChannelUpdate");
        op.AnswerBox("Channel Setting is successful!", 64, "Channel Setting is successful");
        AwaitTaken(op);
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0A8C1", "$0A52D"}))
            << "the others stay as they are";
        Close(op);
    });
}

TEST_F(ConsoleTroubleTest, GarbageInAPollIsNotSentWithTheNextSwitch)
{
    LateBus bus(ports.Link(2), "module 7262 address=0A inputs=00 outputs=81");
    Operate([&](Operator &op) {
        Load(op, bus, "7262");
        for (const char *garbage : {"!\r", "!ZZ00\r", "!00\r", "!0\r"}) {
            bus.Reply("$0A6", garbage);
            Poll(op, bus);
            EXPECT_TRUE(IsSet(op, "DIOH_0") && IsSet(op, "DIOH_7")) << garbage;
        }
        bus.Forget();
        op.Gui([&] { QTest::keyClick(Part("DIOH_1"), Qt::Key_Space); });
        AwaitTaken(op);
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"#0A0083"}));
        Close(op);
    });
}

TEST_F(ConsoleTroubleTest, ASwitchThatTheModuleDidNotTakeIsNotSentWithTheNextOne)
{
    for (const std::string model : {"7262", "7276"}) {
        const std::string row = model == "7262" ? "DIOH_" : "DIOL_";
        LateBus bus(ports.Link(2), "module " + model + " address=0A outputs=01");
        Operate([&](Operator &op) {
            Load(op, bus, model);
            const auto press = [&](const char *point) {
                op.Gui([&] { QTest::keyClick(Part((row + point).c_str()), Qt::Key_Space); });
            };
            press("1"); // taken, and no poll tells so yet
            AwaitTaken(op);
            bus.Silence(true);
            press("7");
            op.AnswerBox("Setup is invalid, please try again", 0, Title);
            AwaitTaken(op);
            EXPECT_FALSE(IsSet(op, (row + "7").c_str()));
            EXPECT_TRUE(IsSet(op, (row + "1").c_str()));
            bus.Silence(false);
            bus.Forget();
            press("2");
            AwaitTaken(op);
            EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"#0A0007"}));
            Close(op);
        });
    }
}

TEST_F(ConsoleTroubleTest, ACalibrationRightBehindAChoiceAsksForTheValueOfThatChannel)
{
    LateBus bus(ports.Link(2), "module 7216 address=0A range=20 range3=2A");
    Operate([&](Operator &op) {
        Load(op, bus, "7216");
        clock.ticks = 1;
        bus.Hold("$0A8C3");
        op.Gui([&] { PickEntry(*Part<QComboBox>("cboChannel"), 3); });
        op.WaitFor([&] { return !bus.Held().empty(); }, "the type");
        Press(op, "cmdSpanCal");
        bus.Release();
        op.AnswerBox("Please apply 1600ohm to Channel 3", 1, "Vorn-7216 Span Calibration");
        op.AnswerBox("Span Calibration is successful!", 64, "Span Calibration is successful");
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0A8C3", "$0A0C3"}));
        clock.ticks.reset();
        Close(op);
    });
}

TEST_F(ConsoleTroubleTest, AnUpdateWithoutAKnownLineSpeedWritesNothing)
{
    LateBus bus(ports.Link(2), "module 7254 address=0A");
    bus.Refuse("$0A2");
    Operate([&](Operator &op) {
        Load(op, bus, "7254");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Configuration Baud Rate and Checksum is invalid!", 16, InvalidTitle);
        AwaitTaken(op);
        EXPECT_EQ(bus.Lines(), std::vector<std::string>{});
        EXPECT_TRUE(op.Gui([&] { return Console()->tmrTimer.isActive(); }));
        Close(op);
    });
}

TEST_F(ConsoleTroubleTest, AnOutputWhoseTypeNobodyHasReadIsNotSet)
{
    LateBus bus(ports.Link(2), "module 7234 address=0A");
    bus.Refuse("$0A8");
    Operate([&](Operator &op) {
        Load(op, bus, "7234");
        Press(op, "Command7");
        op.AnswerBox("Setup out put type failed on channel 1", 16, Title);
        AwaitTaken(op);
        EXPECT_EQ(bus.Lines(), std::vector<std::string>{});
        Close(op);
    });
}

TEST_F(ConsoleTroubleTest, ACoefficientThatIsNoneOpensNoTrim)
{
    LateBus bus(ports.Link(2), "module 7234 address=0A");
    Operate([&](Operator &op) {
        Load(op, bus, "7234");
        bus.Reply("$0ANC0", "!0A\r");
        Press(op, "Command1");
        op.AnswerBox("Apply 4mA Calibration for Channel 1. Please connect METER to Channel 1, and check if "
                     "output value equal 4mA.",
                     1, Title);
        AwaitTaken(op);
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0AG", "#0AC0+04.000", "$0ANC0"}));
        EXPECT_FALSE(op.Gui([&] { return main().findChild<vorn::Form7234Calibration *>(); }));
        Close(op);
    });
}

TEST_F(ConsoleTroubleTest, WhatIsTypedDuringAReadOfAllChannelsCannotBeLost)
{
    LateBus bus(ports.Link(2), "module 7234 address=0A");
    Operate([&](Operator &op) {
        Load(op, bus, "7234");
        bus.Hold("$0ADC0");
        op.Gui([&] { Part("Command6")->setFocus(); });
        Press(op, "Command6");
        op.WaitFor(
            [&] {
                if (bus.Held().empty())
                    return false;
                clock.ticks = clock.GetTickCount(); // its reply isn't late
                return true;
            },
            "the read");
        const auto usable = [&](const char *name) { return op.Gui([&] { return Part(name)->isEnabled(); }); };
        EXPECT_FALSE(usable("Directdata") || usable("ChannelCal") || usable("StartupValue_0"));
        bus.Release();
        clock.ticks.reset();
        AwaitTaken(op);
        EXPECT_TRUE(usable("Directdata"));
        EXPECT_EQ(op.Gui([&] { return Console()->focusWidget(); }), Part("Command6"));
        Close(op);
    });
}

TEST_F(ConsoleTroubleTest, AnUpdateLeavesTheFocusWhereTheOperatorHasPutIt)
{
    LateBus bus(ports.Link(2), "module 7216 address=0A");
    Operate([&](Operator &op) {
        Load(op, bus, "7216");
        const auto focus = [&] {
            return op.Gui([&] { return Console()->focusWidget()->objectName().toStdString(); });
        };
        const auto update = [&](const std::function<void()> &meanwhile) {
            op.Gui([&] {
                Part("cmdGeneralUpdate")->setFocus();
                QTest::keyClicks(Part<QLineEdit>("txtNewAddress"), QStringLiteral("1"));
                Part("cmdGeneralUpdate")->setFocus();
                clock.ticks = 1; // the settling time doesn't end
            });
            Press(op, "cmdGeneralUpdate");
            op.WaitFor([&] { return Console()->Updating; }, "the update");
            op.Gui([&] {
                meanwhile();
                clock.ticks.reset();
            });
            op.AnswerBox(Success, 64, SuccessTitle);
            AwaitTaken(op);
        };
        update([&] { Part("cboType")->setFocus(); });
        EXPECT_EQ(focus(), "cboType");
        op.Gui([&] { Part<QLineEdit>("txtNewAddress")->selectAll(); });
        update([] {});
        EXPECT_EQ(focus(), "cmdGeneralUpdate");
        Close(op);
    });
}

class ConsolePortTest : public ::testing::Test, public ConsoleRun
{
protected:
    vorn::Form7234Calibration *Trim() { return main().findChild<vorn::Form7234Calibration *>(); }
    void OpenTrim(Operator &op)
    {
        OpenConsole(op, "_0002!!0A7234");
        Press(op, "Command1");
        op.AnswerBox("Apply 4mA Calibration for Channel 1. Please connect METER to Channel 1, and check if "
                     "output value equal 4mA.",
                     1, Title);
    }
};

TEST_F(ConsolePortTest, APortThatVanishesUnderTheTrimIsToldOnceAndBothWindowsClose)
{
    Rack("7234 address=0A");
    Operate([&](Operator &op) {
        OpenTrim(op);
        op.WaitFor([&] { return Trim() && Trim()->Timer1.isActive(); }, "the trim");
        rack().Pull(2);
        op.Gui([&] { Trim()->Timer1.setInterval(1); });
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.WaitFor([&] { return !Console(); }, "the end of the console");
        AwaitActions(op);
    });
}

TEST_F(ConsolePortTest, ADead7276IsLeftByEscapeTwice)
{
    Rack("7276 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7276");
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Silent});
        op.Gui([&] { Timer()->setInterval(1); });
        op.AwaitMessage("Setup is invalid, please try again");
        op.Gui([&] {
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
            QTest::keyClick(Console(), Qt::Key_Escape);
        });
        op.WaitFor([&] { return !Console(); }, "the end of the console");
    });
}

class KeyboardTest : public ConsoleRun, public ::testing::TestWithParam<const char *>
{
};

TEST_P(KeyboardTest, ReachesEveryControlByTabAlone)
{
    Rack(std::string(GetParam()) + " address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, std::string("_0002!!0A") + GetParam());
        op.Gui([&] {
            QSet<QWidget *> wanted;
            for (QWidget *part : Console()->findChildren<QWidget *>()) {
                if (part->isVisible() && part->isEnabled() && (part->focusPolicy() & Qt::TabFocus) != 0 &&
                    !part->objectName().isEmpty() && !part->focusProxy())
                    wanted.insert(part);
            }
            EXPECT_EQ(Console()->focusWidget()->objectName().toStdString(), "txtNewAddress");
            EXPECT_GT(wanted.size(), 2);
            for (int i = 0; i < 100 && !wanted.isEmpty(); ++i) {
                wanted.remove(Console()->focusWidget());
                // Radio buttons are one stop, and go on by the arrows.
                if (qobject_cast<QRadioButton *>(Console()->focusWidget())) {
                    wanted.remove(Part("chkEnable_0"));
                    wanted.remove(Part("chkEnable_1"));
                }
                QTest::keyClick(Console()->focusWidget(), Qt::Key_Tab);
            }
            for (const QWidget *part : wanted)
                ADD_FAILURE() << part->objectName().toStdString() << " can't be reached";
        });
        Close(op);
    });
}

INSTANTIATE_TEST_SUITE_P(Consoles, KeyboardTest,
                         ::testing::Values("7216", "7221P", "7224P", "7227", "7234", "7254", "7262", "7276"));

} // namespace
