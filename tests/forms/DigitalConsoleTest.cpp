#include "support/ConsoleRun.h"

#include "protocol/CommandFrame.h"

namespace
{

class DigitalConsoleTest : public ::testing::Test, public ConsoleRun
{
};

const std::string Success = "Configuration is successful!";
const std::string SuccessTitle = "Configuration is successful";
const std::string Failure = "Configuration is invalid";
const std::string Refused = "Configuration Baud Rate and Checksum is invalid!";

TEST_F(DigitalConsoleTest, LoadsTheGeneralPageAndTheInputs)
{
    Rack("7254 address=0A inputs=A53C");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7254");
        EXPECT_EQ(Loaded(), (Lines{"$0A2", "$0AF", "$0A6"}));
        EXPECT_EQ(op.Gui([&] { return Console()->windowTitle().toStdString(); }), "VORN-7254");
        EXPECT_EQ(TextOf(op, "txtOldAddress"), "0A");
        EXPECT_EQ(TextOf(op, "txtNewAddress"), "10");
        EXPECT_EQ(TextOf(op, "cboBaudRate"), "9600   bps");
        EXPECT_EQ(TextOf(op, "txtFirmware"), "B1.02");
        EXPECT_FALSE(IsOn(op, "chkChecksum"));
        EXPECT_FALSE(op.Gui([&] { return Part("cboBaudRate")->isEnabled(); }));
        EXPECT_FALSE(op.Gui([&] { return Part("chkChecksum")->isEnabled(); }));
        EXPECT_EQ(TextOf(op, "LabDLv"), "3C");
        EXPECT_EQ(TextOf(op, "LabDHv"), "A5");
        for (int i = 0; i < 8; ++i) {
            EXPECT_EQ(IsOn(op, "DIOL_" + std::to_string(i)), (0x3C >> i & 1) != 0) << i;
            EXPECT_EQ(IsOn(op, "DIOH_" + std::to_string(i)), (0xA5 >> i & 1) != 0) << i;
        }
        EXPECT_EQ(op.Gui([&] { return Part<vorn::DIO>("DIOH_7")->Caption().toStdString(); }), "DI &15");
        rack().SetValue(2, "0A", "inputs", "0180");
        EXPECT_EQ(Poll(op), (Lines{"$0A6"}));
        EXPECT_EQ(TextOf(op, "LabDHv"), "01");
        EXPECT_TRUE(IsOn(op, "DIOL_7"));
        Close(op);
        EXPECT_EQ(main().ConsoleAddress, "0A");
    });
}

TEST_F(DigitalConsoleTest, AModuleInInitialStateIsAddressedAs00AndShowsAStar)
{
    Rack("7254 address=0A init=yes checksum=yes inputs=0000");
    Operate([&](Operator &op) {
        OpenConsole(op, "*1002!!0A7254");
        EXPECT_EQ(Loaded(), (Lines{"$002", "$00F", "$006"})) << "without checksum";
        EXPECT_EQ(TextOf(op, "txtOldAddress"), "*0A");
        EXPECT_EQ(TextOf(op, "txtNewAddress"), "10");
        EXPECT_TRUE(IsOn(op, "chkChecksum")) << "the stored setting";
        EXPECT_EQ(TextOf(op, "txtFirmware"), "B1.02");
        EXPECT_TRUE(op.Gui([&] { return Part("cboBaudRate")->isEnabled(); }));

        Pick(op, "cboBaudRate", 7);
        Tick(op, "chkChecksum");
        Enter(op, "txtNewAddress", "5");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0005400A00", "$002"}));
        EXPECT_EQ(TextOf(op, "txtOldAddress"), "*05");
        EXPECT_EQ(TextOf(op, "txtNewAddress"), "05");
        EXPECT_EQ(TextOf(op, "cboBaudRate"), "115.2K bps");
        EXPECT_EQ(op.Gui([&] { return Console()->NodeKey.text(); }), "*1002!!057254");
        EXPECT_EQ(main().ConsoleNewAddress, "05");

        Tick(op, "chkChecksum");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0005400A40", "$002"}));
        EXPECT_EQ(Poll(op), (Lines{"$006"})) << "the initial state knows no checksum";
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, WithChecksumEveryCommandCarriesIt)
{
    Rack("7254 address=0A checksum=yes inputs=0000");
    Operate([&](Operator &op) {
        OpenConsole(op, "_1002!!0A7254");
        const auto with = [](const std::string &line) { return line + vorn::Checksum(line); };
        EXPECT_EQ(Loaded(), (Lines{with("$0A2"), with("$0AF"), with("$0A6")}));
        EXPECT_EQ(TextOf(op, "txtFirmware"), "B1.02") << "less the checksum of the reply";
        Enter(op, "txtNewAddress", "11");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{with("%0A0B400640"), with("$0B2")}));
        EXPECT_EQ(TextOf(op, "txtOldAddress"), "0B");
        EXPECT_EQ(Poll(op), (Lines{with("$0B6")}));
        Close(op);
        EXPECT_EQ(main().ConsoleAddress, "0B");
    });
}

TEST_F(DigitalConsoleTest, ARefusedUpdateIsTriedFourTimesAndRestoresTheCheckBox)
{
    Rack("7254 address=0A init=yes inputs=0000\nfault refuse begins=%");
    Operate([&](Operator &op) {
        OpenConsole(op, "*0002!!0A7254");
        Tick(op, "chkChecksum");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Refused, 16, Failure);
        const std::string line = "%000A400640";
        EXPECT_EQ(Sent(op), (Lines{line, line, line, line}));
        EXPECT_FALSE(IsOn(op, "chkChecksum"));
        EXPECT_EQ(TextOf(op, "txtOldAddress"), "*0A");
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, ACheckReadThatFailsRepeatsTheWholeUpdate)
{
    Rack("7254 address=0A inputs=0000\nfault refuse begins=$0A2");
    Operate([&](Operator &op) {
        ClickConsole(op, "_0002!!0A7254");
        AwaitLoaded(op);
        EXPECT_EQ(Loaded(), (Lines{"$0A2", "$0A2", "$0A2", "$0A2", "$0AF", "$0A6"}));
        EXPECT_EQ(TextOf(op, "cboBaudRate"), "") << "the design state, and no message";
        op.Gui([&] { Part<QComboBox>("cboBaudRate")->setCurrentIndex(3); });
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Read Configuration is invalid!", 16, Failure);
        const std::string write = "%0A0A400600";
        EXPECT_EQ(Sent(op), (Lines{write, "$0A2", write, "$0A2", write, "$0A2", write, "$0A2"}));
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, ASilentModuleLeavesAnEmptyPageAndFrozenValues)
{
    Rack("7254 address=0A inputs=1234\nfault silent begins=$0A2\nfault silent begins=$0AF");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7254");
        EXPECT_EQ(Loaded(), (Lines{"$0A2", "$0A2", "$0A2", "$0A2", "$0AF", "$0AF", "$0AF", "$0AF", "$0A6"}));
        EXPECT_EQ(TextOf(op, "txtFirmware"), "");
        EXPECT_EQ(TextOf(op, "LabDHv"), "12");
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Silent});
        EXPECT_EQ(Poll(op), (Lines{"$0A6"}));
        EXPECT_EQ(TextOf(op, "LabDHv"), "12");
        EXPECT_EQ(op.Gui([&] { return Console()->Reply; }), "");
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, AReplyCutOffInMidLineLeavesTheEarlierOne)
{
    Rack("7254 address=0A inputs=1234");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7254");
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::NoReturn});
        rack().SetValue(2, "0A", "inputs", "FFFF");
        Poll(op);
        EXPECT_EQ(op.Gui([&] { return Console()->Reply; }), "!1234");
        EXPECT_EQ(TextOf(op, "LabDHv"), "12");
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, TheNewAddressEndsAt255)
{
    Rack("7254 address=0A inputs=0000");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7254");
        Enter(op, "txtNewAddress", "256");
        EXPECT_EQ(TextOf(op, "txtNewAddress"), "25");
        Enter(op, "txtNewAddress", "255");
        EXPECT_EQ(TextOf(op, "txtNewAddress"), "255");
        Enter(op, "txtNewAddress", "x-1");
        EXPECT_EQ(TextOf(op, "txtNewAddress"), "1");
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, AClickOnAnOutputOf7262SendsAllEight)
{
    Rack("7262 address=0A inputs=81 outputs=A0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7262");
        EXPECT_EQ(Loaded(), (Lines{"$0A2", "$0AF", "$0A6"}));
        EXPECT_EQ(TextOf(op, "LabDLv"), "81");
        EXPECT_EQ(TextOf(op, "LabDHv"), "A0");
        EXPECT_EQ(TextOf(op, "LabDL"), "Data(In)");
        EXPECT_EQ(TextOf(op, "LabDH"), "Data(Out)");
        EXPECT_EQ(op.Gui([&] { return Part<vorn::DIO>("DIOH_0")->Caption().toStdString(); }), "DO &0");
        rack().ClearTrace();
        op.Press(Part("DIOH_0"), Qt::Key_Space);
        EXPECT_EQ(Sent(op), (Lines{"#0A00A1"}));
        EXPECT_EQ(rack().Value(2, "0A", "outputs"), "A1");
        rack().ClearTrace();
        op.Press(Part("DIOL_0"), Qt::Key_Space);
        op.Settle();
        EXPECT_EQ(rack().Commands(2), Lines{}) << "an input is no switch";
        Poll(op);
        EXPECT_EQ(TextOf(op, "LabDHv"), "A1");
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, ARefusedOutputIsTriedFourTimes)
{
    Rack("7262 address=0A inputs=00 outputs=00\nfault refuse begins=#");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7262");
        rack().ClearTrace();
        op.Press(Part("DIOH_7"), Qt::Key_Space);
        op.AnswerBox("Setup is invalid, please try again", 0, "VORN Utility");
        EXPECT_EQ(Sent(op), (Lines{"#0A0080", "#0A0080", "#0A0080", "#0A0080"}));
        Poll(op);
        EXPECT_FALSE(IsOn(op, "DIOH_7")) << "the module didn't take it";
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, Of7276TheOutputsAndTheWatchdog)
{
    Rack("7276 address=0A outputs=05 watchdog=0100");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7276");
        EXPECT_EQ(Loaded(), (Lines{"$0A2", "$0AF", "$0AY", "$0A6"}));
        EXPECT_EQ(TextOf(op, "txtOldWDT"), "0100");
        EXPECT_EQ(TextOf(op, "txtNewWDT"), "0100");
        EXPECT_EQ(TextOf(op, "LabDLv"), "05");
        EXPECT_TRUE(IsOn(op, "DIOL_2"));
        rack().ClearTrace();
        op.Press(Part("DIOL_1"), Qt::Key_Space);
        EXPECT_EQ(Sent(op), (Lines{"#0A0007"}));
        EXPECT_EQ(TextOf(op, "LabDLv"), "07");

        Press(op, "Command1");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0A400600", "$0A2"})) << "the watchdog wasn't touched";

        Enter(op, "txtNewWDT", "50");
        Press(op, "Command1");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0A400600", "$0A2", "$0AX0050", "$0AY"}));
        EXPECT_EQ(TextOf(op, "txtOldWDT"), "0050");
        EXPECT_EQ(TextOf(op, "txtNewWDT"), "0050");
        Close(op);
        EXPECT_EQ(main().ConsoleAddress, "") << "this window has no handler of its closing";
    });
}

TEST_F(DigitalConsoleTest, ASmallWatchdogTimeIsAskedAbout)
{
    Rack("7276 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7276");
        const std::string question = "The comm WDT is too small, do you want to use the value?";
        Enter(op, "txtNewWDT", "19");
        Press(op, "Command1");
        op.AnswerBox(question, 1, "Waring");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0A400600", "$0A2", "$0AX0019", "$0AY"}));

        Enter(op, "txtNewWDT", "0");
        Press(op, "Command1");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0A400600", "$0A2", "$0AX0000", "$0AY"})) << "0 needs no question";

        Enter(op, "txtNewWDT", "7");
        Press(op, "Command1");
        op.AnswerBox(question, 1, "Waring", "Cancel");
        op.Settle();
        EXPECT_EQ(rack().Commands(2), (Lines{"%0A0A400600", "$0A2"}));
        EXPECT_FALSE(op.Gui([&] { return Timer()->isActive(); })) << "the timer stays disabled";
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, AWatchdogTimeOfMoreThanFourDigitsGoesOutAsTyped)
{
    Rack("7276 address=0A\nfault refuse begins=$0AY");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7276");
        Enter(op, "txtNewWDT", "12345");
        Press(op, "Command1");
        op.AnswerBox("Configuration is invalid!", 16, Failure);
        EXPECT_EQ(Sent(op), (Lines{"%0A0A400600", "$0A2", "$0AX12345", "$0AY"})) << "no success box";
        Close(op);
    });
}

TEST_F(DigitalConsoleTest, ADead7276TellsAtEachTick)
{
    Rack("7276 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7276");
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Silent});
        for (int i = 0; i < 2; ++i) {
            rack().ClearTrace();
            op.Gui([&] { QMetaObject::invokeMethod(Timer(), "timeout"); });
            op.AwaitMessage("Setup is invalid");
            EXPECT_FALSE(
                op.Gui([&] { return main().findChild<vorn::ConsoleForm *>()->tmrTimer.isActive(); }));
            op.AnswerBox("Setup is invalid, please try again", 0, "VORN Utility");
            EXPECT_EQ(Sent(op), (Lines{"$0A6"}));
        }
        Close(op);
    });
}

} // namespace
