// The consoles of 7216 and 7227, whose modules give all channels in one reply.

#include "support/ConsoleRun.h"

#include "protocol/CommandFrame.h"

#include <QListWidget>

namespace
{

class ScanConsoleTest : public ::testing::Test, public ConsoleRun
{
protected:
    Lines OpenWires(Operator &op)
    {
        return op.Gui([&] {
            Lines lines;
            const auto *list = Part<QListWidget>("lstOpenWiring");
            for (int i = 0; i < list->count(); ++i)
                lines.push_back(list->item(i)->text().toStdString());
            return lines;
        });
    }
    void ExpectLamp(Operator &op, int channel, const std::string &lamp)
    {
        for (const std::string name : {"ledGreen", "ledRed", "ledGray"})
            EXPECT_EQ(IsVisible(op, name + "_" + std::to_string(channel)), name == lamp) << name << channel;
    }
};

const std::string Success = "Configuration is successful!";
const std::string SuccessTitle = "Configuration is successful";
const std::string Invalid = "Configuration is invalid!";
const std::string InvalidTitle = "Configuration is invalid";
const std::string ChannelSet = "Channel Setting is successful!";
const std::string ChannelSetTitle = "Channel Setting is successful";

const Lines Poll7216{"$0A6", "$0AB", "#0A"};

TEST_F(ScanConsoleTest, Of7216LoadsPageTypesAndChannel)
{
    Rack("7216 address=0A range=22 range5=2D mask=2F wires=02 format=03 watchdog=0150 value=+100.00");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        EXPECT_EQ(Loaded(), (Lines{"$0AY", "$0A2", "$0AF", "$0A6", "$0AB", "#0A", "$0A8C0", "$0A8C1",
                                   "$0A8C2", "$0A8C3", "$0A8C4", "$0A8C5", "$0A8C0"}));
        EXPECT_EQ(TextOf(op, "txtOldWDT"), "0150");
        EXPECT_EQ(TextOf(op, "txtNewWDT"), "0150");
        EXPECT_EQ(TextOf(op, "CmbDataFormat"), "Ohms");
        EXPECT_EQ(TextOf(op, "txtRange_0"), "Pt-100(.385) 0 to 200'C");
        EXPECT_EQ(TextOf(op, "txtRange_5"), "Ni-604 0 to 100'C");
        EXPECT_EQ(TextOf(op, "cboChannel"), "channel 0 ");
        EXPECT_EQ(TextOf(op, "cboType"), "Pt-100(.385) 0 to 200'C");
        EXPECT_TRUE(IsOn(op, "chkChannel"));
        EXPECT_EQ(TextOf(op, "txtvalue_4"), "") << "it is disabled";
        EXPECT_EQ(TextOf(op, "txtvalue_5"), "+138.50");
        EXPECT_EQ(op.Gui([&] { return Part<QLabel>("txtvalue_4")->backgroundRole(); }), QPalette::Button);
        EXPECT_EQ(op.Gui([&] { return Part<QLabel>("txtRange_5")->backgroundRole(); }), QPalette::Base);
        ExpectLamp(op, 0, "ledGreen");
        ExpectLamp(op, 1, "ledRed");
        ExpectLamp(op, 4, "ledGray");
        EXPECT_EQ(OpenWires(op), (Lines{"Channel 1 is open wiring or over/under range!"}));
        op.Click(Part("cmdExit"));
        op.WaitFor([&] { return !Console(); }, "the end of the console");
        EXPECT_EQ(main().ConsoleAddress, "0A");
    });
}

TEST_F(ScanConsoleTest, AWiringFaultAddsALineThatGoesWithIt)
{
    Rack("7216 address=0A value=+010.00");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        EXPECT_EQ(OpenWires(op), Lines{});
        rack().SetValue(2, "0A", "wires", "21");
        EXPECT_EQ(ConsoleRun::Poll(op), Poll7216);
        ConsoleRun::Poll(op);
        EXPECT_EQ(OpenWires(op), (Lines{"Channel 0 is open wiring or over/under range!",
                                        "Channel 5 is open wiring or over/under range!"}))
            << "once each";
        rack().SetValue(2, "0A", "wires", "20");
        ConsoleRun::Poll(op);
        EXPECT_EQ(OpenWires(op), (Lines{"Channel 5 is open wiring or over/under range!"}));
        ExpectLamp(op, 0, "ledGreen");
        rack().SetValue(2, "0A", "mask", "1F");
        ConsoleRun::Poll(op);
        ExpectLamp(op, 5, "ledGray");
        EXPECT_EQ(TextOf(op, "txtvalue_5"), "");
        Close(op);
    });
}

TEST_F(ScanConsoleTest, ASilentModuleLeavesTheLastValues)
{
    Rack("7216 address=0A value=+010.00");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Silent});
        EXPECT_EQ(ConsoleRun::Poll(op), (Lines{"$0A6"}));
        EXPECT_EQ(TextOf(op, "txtvalue_0"), "+010.00");
        rack().ClearFaults();
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0AB"});
        EXPECT_EQ(ConsoleRun::Poll(op), (Lines{"$0A6", "$0AB"}));
        rack().ClearFaults();
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Silent, .begins = "#"});
        EXPECT_EQ(ConsoleRun::Poll(op), Poll7216);
        EXPECT_EQ(TextOf(op, "txtvalue_0"), "+010.00");
        Close(op);
    });
}

TEST_F(ScanConsoleTest, SilenceAtTheLoadIsAskedOnceAndTheTypesStop)
{
    Rack("7216 address=0A\nfault silent");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        EXPECT_EQ(Loaded(), (Lines{"$0AY", "$0A2", "$0AF", "$0A6", "$0A8C0", "$0A8C0"}));
        EXPECT_EQ(TextOf(op, "txtOldWDT"), "");
        EXPECT_EQ(TextOf(op, "txtRange_0"), "");
        Close(op);
    });
}

TEST_F(ScanConsoleTest, AChannelUpdateWritesMaskAndTypeAsFarAsTheyWereChanged)
{
    Rack("7216 address=0A range=20 mask=3F value=+010.00");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        Press(op, "cmdChannelUpdate");
        EXPECT_EQ(Sent(op), Lines{}) << "nothing was changed";

        rack().ClearTrace();
        Pick(op, "cboChannel", 3);
        EXPECT_EQ(Sent(op), (Lines{"$0A8C3"}));
        Pick(op, "cboType", 10);
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(ChannelSet, 64, ChannelSetTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A7C3R2A"}));
        EXPECT_EQ(TextOf(op, "txtRange_3"), "Pt-1000  -40 to 160'C");
        EXPECT_EQ(TextOf(op, "txtRange_0"), "Pt-100(.385) -50 to 150'C");

        Tick(op, "chkChannel");
        Pick(op, "cboType", 1);
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(ChannelSet, 64, ChannelSetTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A537", "$0A7C3R21"}));
        ConsoleRun::Poll(op);
        EXPECT_EQ(TextOf(op, "txtvalue_3"), "");
        ExpectLamp(op, 3, "ledGray");

        Press(op, "cmdChannelUpdate");
        EXPECT_EQ(Sent(op), Lines{}) << "the flags are clear";
        Close(op);
    });
}

TEST_F(ScanConsoleTest, AStepOfAChannelUpdateThatFailsIsTold)
{
    Rack("7216 address=0A mask=3F\nfault refuse begins=$0A5");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        Tick(op, "chkChannel");
        Pick(op, "cboType", 2);
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(Invalid, 16, InvalidTitle);
        op.AnswerBox(ChannelSet, 64, ChannelSetTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A53E", "$0A7C0R22"})) << "one step succeeded";
        Tick(op, "chkChannel");
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(Invalid, 16, InvalidTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A53F"})) << "no step succeeded";
        Close(op);
    });
}

TEST_F(ScanConsoleTest, ChoosingAChannelForgetsWhatWasChosenForTheOneBefore)
{
    Rack("7216 address=0A range=20 range4=29 mask=2F");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        Pick(op, "cboType", 5);
        Tick(op, "chkChannel");
        rack().ClearTrace();
        Pick(op, "cboChannel", 4);
        EXPECT_EQ(Sent(op), (Lines{"$0A8C4"}));
        EXPECT_EQ(TextOf(op, "cboType"), "Pt-100(.392) +/-200'C");
        EXPECT_FALSE(IsOn(op, "chkChannel"));
        Press(op, "cmdChannelUpdate");
        EXPECT_EQ(Sent(op), Lines{});
        Close(op);
    });
}

TEST_F(ScanConsoleTest, OfChannelsChosenOneAfterTheOtherTheLastIsRead)
{
    Rack("7216 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        rack().ClearTrace();
        op.Gui([&] {
            for (const int channel : {1, 4, 2})
                PickEntry(*Part<QComboBox>("cboChannel"), channel);
        });
        op.Settle();
        EXPECT_EQ(Sent(op), (Lines{"$0A8C2"}));
        Close(op);
    });
}

TEST_F(ScanConsoleTest, AnUpdateGoesToTheChannelThatWasOnShowAtThePress)
{
    Rack("7216 address=0A range=20 mask=3F");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        rack().ClearTrace();
        op.Gui([&] {
            PickEntry(*Part<QComboBox>("cboType"), 4);
            Part<QAbstractButton>("chkChannel")->click();
            Part<QAbstractButton>("cmdChannelUpdate")->click();
            Part<QAbstractButton>("cmdChannelUpdate")->click();
            PickEntry(*Part<QComboBox>("cboChannel"), 3);
        });
        op.AnswerBox(ChannelSet, 64, ChannelSetTitle);
        op.WaitFor([&] { return rack().Commands(2).size() == 3; }, "the other channel");
        EXPECT_EQ(Sent(op), (Lines{"$0A53E", "$0A7C0R24", "$0A8C3"}));
        EXPECT_EQ(TextOf(op, "txtRange_0"), "Pt-100(.385) +/-200'C");
        EXPECT_EQ(TextOf(op, "txtRange_3"), "Pt-100(.385) -50 to 150'C");
        EXPECT_EQ(TextOf(op, "cboType"), "Pt-100(.385) -50 to 150'C");
        EXPECT_TRUE(IsOn(op, "chkChannel"));
        Close(op);
    });
}

TEST_F(ScanConsoleTest, TheGeneralUpdateSendsOnlyWhatWasChanged)
{
    Rack("7216 address=0A watchdog=0100");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), Lines{});

        Pick(op, "CmbDataFormat", 1);
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0A000603", "$0A2"}));
        EXPECT_EQ(TextOf(op, "CmbDataFormat"), "Ohms");

        Enter(op, "txtNewWDT", "20");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0AX0020", "$0AY"}));
        EXPECT_EQ(TextOf(op, "txtOldWDT"), "0020");
        EXPECT_EQ(TextOf(op, "txtNewWDT"), "0020");

        Enter(op, "txtNewAddress", "12");
        Enter(op, "txtNewWDT", "12345");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Invalid, 16, InvalidTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0C000603", "$0C2", "$0CX12345", "$0CY"})) << "no success box";
        EXPECT_EQ(TextOf(op, "txtOldAddress"), "0C");
        EXPECT_EQ(ConsoleRun::Poll(op), (Lines{"$0C6", "$0CB", "#0C"}));
        Close(op);
    });
}

TEST_F(ScanConsoleTest, InTheInitialStateAllGoesTo00AndTheByteHoldsTheChecksum)
{
    Rack("7216 address=0A init=yes format=03");
    Operate([&](Operator &op) {
        OpenConsole(op, "*0002!!0A7216");
        EXPECT_EQ(Loaded(), (Lines{"$00Y", "$002", "$00F", "$006", "$00B", "#00", "$008C0", "$008C1",
                                   "$008C2", "$008C3", "$008C4", "$008C5", "$008C0"}));
        Tick(op, "chkChecksum");
        EXPECT_EQ(TextOf(op, "chkChecksum"), "Enable");
        Enter(op, "txtNewWDT", "7");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%000A000643", "$002", "$00X0007", "$00Y"}));
        EXPECT_TRUE(IsOn(op, "chkChecksum"));
        Press(op, "cmdSpanCal");
        op.AnswerBox("Please apply 140ohm to Channel 0", 1, "Vorn-7216 Span Calibration");
        op.AnswerBox("Span Calibration is successful!", 64, "Span Calibration is successful");
        EXPECT_EQ(Sent(op), (Lines{"$000C0"}));
        Close(op);
    });
}

TEST_F(ScanConsoleTest, ACalibrationAsksForItsValue)
{
    Rack("7216 address=0A range=23 range2=2C restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        Press(op, "cmdZeroCalE");
        op.AnswerBox("Please apply 100ohm to Channel 0", 1, "Vorn-7216 Zero Calibration");
        op.AnswerBox("Zero Calibration is successful!", 64, "Zero Calibration is successful");
        EXPECT_EQ(Sent(op), (Lines{"$0A1C0"}));
        EXPECT_EQ(rack().Value(2, "0A", "calibration0"), "zero");

        Pick(op, "cboChannel", 2);
        Sent(op);
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Silent, .begins = "$0A0"});
        Press(op, "cmdSpanCal");
        op.AnswerBox("Please apply 1000ohm to Channel 2", 1, "Vorn-7216 Span Calibration");
        op.AnswerBox("Span Calibration is invalid!", 16, "Span Calibration is invalid");
        EXPECT_EQ(Sent(op), (Lines{"$0A0C2"}));
        Close(op);
    });
}

TEST_F(ScanConsoleTest, ACancelledCalibrationIsJudgedByTheReplyOfTheLastPoll)
{
    Rack("7216 address=0A range=23");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7216");
        ConsoleRun::Poll(op);
        Press(op, "cmdSpanCal");
        op.AnswerBox("Please apply 250ohm to Channel 0", 1, "Vorn-7216 Span Calibration", "Cancel");
        op.AnswerBox("Span Calibration is invalid!", 16, "Span Calibration is invalid");
        EXPECT_EQ(Sent(op), Lines{});
        Close(op);
    });
}

TEST_F(ScanConsoleTest, WithChecksumAllCommandsCarryIt)
{
    Rack("7216 address=0A checksum=yes value=+010.00");
    Operate([&](Operator &op) {
        OpenConsole(op, "_1002!!0A7216");
        const auto with = [](const std::string &line) { return line + vorn::Checksum(line); };
        EXPECT_EQ(ConsoleRun::Poll(op), (Lines{with("$0A6"), with("$0AB"), with("#0A")}));
        EXPECT_EQ(TextOf(op, "txtFirmware"), "B1.02");
        EXPECT_EQ(TextOf(op, "txtvalue_5"), "+010.00");
        Pick(op, "cboType", 3);
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(ChannelSet, 64, ChannelSetTitle);
        EXPECT_EQ(Sent(op), (Lines{with("$0A7C0R23")}));
        Close(op);
    });
}

const Lines Load7227{"$0AY",   "$0A2",   "$0A3",   "$0AF",   "$0A6",   "$0AB",   "#0A",    "$0A3",  "$0A8C0",
                     "$0A8C1", "$0A8C2", "$0A8C3", "$0A8C4", "$0A8C5", "$0A8C6", "$0A8C7", "$0A8C0"};

TEST_F(ScanConsoleTest, Of7227LoadsAndPollsWithItsColdJunction)
{
    Rack("7227 address=0A range=0F range7=02 mask=7F wires=04 value=+0500.0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7227");
        EXPECT_EQ(Loaded(), Load7227);
        EXPECT_EQ(op.Gui([&] { return Part<QComboBox>("cboRange")->currentIndex(); }), 8);
        EXPECT_EQ(TextOf(op, "cboRange"), "K : 0~1000'C");
        EXPECT_EQ(TextOf(op, "txtRange_7"), "+/- 100mV");
        EXPECT_EQ(TextOf(op, "txtNewCJC"), "+0025.0");
        EXPECT_EQ(TextOf(op, "txtCJCValue"), "+0025.0");
        EXPECT_EQ(TextOf(op, "txtvalue_6"), "+0500.0");
        EXPECT_EQ(TextOf(op, "txtvalue_7"), "");
        EXPECT_EQ(TextOf(op, "chkChannel"), "Disable/Enable");
        EXPECT_EQ(TextOf(op, "cboChannel"), "Ch  0");
        ExpectLamp(op, 2, "ledRed");
        ExpectLamp(op, 7, "ledGray");
        EXPECT_EQ(ConsoleRun::Poll(op), (Lines{"$0A6", "$0AB", "#0A", "$0A3"}));
        Close(op);
    });
}

TEST_F(ScanConsoleTest, Of7227EachCalibrationHasItsCommandAndTexts)
{
    Rack("7227 address=0A range=0F restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7227");
        Press(op, "cmdZero");
        op.AnswerBox("Please apply 0.00mV to Channel 0", 1, "Vorn-7227 Zero Calibration");
        op.AnswerBox("Zero Calibration is successful!", 64, "Zero Calibration is successful");
        EXPECT_EQ(Sent(op), (Lines{"$0A1C0"}));
        Press(op, "cmdSpan");
        op.AnswerBox("Please apply +78.125mV to Channel 0", 1, "Vorn-7227 Span Calibration");
        op.AnswerBox("Span Calibration is successful!", 64, "Span Calibration is successful");
        EXPECT_EQ(Sent(op), (Lines{"$0A0C0"}));
        Press(op, "cmdNSpan");
        op.AnswerBox("Please apply -78.125mV to Channel 0", 1, "Vorn-7227 Span Calibration");
        op.AnswerBox("Negative Gain Calibration is successful!", 64,
                     "Negative Gain Calibration is successful");
        EXPECT_EQ(Sent(op), (Lines{"$0ANC0"}));
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0AN"});
        Press(op, "cmdNSpan");
        op.AnswerBox("Please apply -78.125mV to Channel 0", 1, "Vorn-7227 Span Calibration");
        op.AnswerBox("Negative Gain Calibration is invalid!", 16, "Negative Gain Calibration is invalid");
        Sent(op);
        Close(op);
    });
}

TEST_F(ScanConsoleTest, Of7227TheColdJunctionOffsetGoesOutInCounts)
{
    Rack("7227 address=0A restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7227");
        Enter(op, "txtNewCJC", "-1.8");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A9-00C8"}));
        Enter(op, "txtNewCJC", "+0.5");
        Enter(op, "txtNewWDT", "300");
        Enter(op, "txtNewAddress", "11");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0B000600", "$0B2", "$0BX0300", "$0BY", "$0B9+0038"}));
        for (const std::string bad : {"", "-", "600"}) {
            Enter(op, "txtNewCJC", "1");
            op.Gui([&] { Part<QLineEdit>("txtNewCJC")->clear(); });
            Enter(op, "txtNewCJC", bad);
            Press(op, "cmdGeneralUpdate");
            op.AnswerBox("CJC offset is not a valid number !", 16, "Calibration failure");
            EXPECT_EQ(Sent(op), Lines{}) << bad;
        }
        rack().SetFault(2, "0B", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0B9"});
        Enter(op, "txtNewCJC", "1");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Invalid, 16, InvalidTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0B9+006F"}));
        Close(op);
    });
}

TEST_F(ScanConsoleTest, Of7227TheReadBackDecidesTheChecksumBox)
{
    Rack("7227 address=0A init=yes");
    Operate([&](Operator &op) {
        OpenConsole(op, "*0002!!0A7227");
        Tick(op, "chkChecksum");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%000A000640", "$002"}));
        EXPECT_TRUE(IsOn(op, "chkChecksum"));
        Tick(op, "chkChecksum");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%000A000600", "$002"}));
        EXPECT_FALSE(IsOn(op, "chkChecksum"));
        Close(op);
    });
}

} // namespace
