// The consoles of 7221P and 7224P, whose modules are asked channel by channel.

#include "support/ConsoleRun.h"

#include "protocol/CommandFrame.h"

namespace
{

class ChannelConsoleTest : public ::testing::Test, public ConsoleRun
{
protected:
    bool IsActive(Operator &op, const std::string &name)
    {
        return op.Gui([&] { return Part(name)->isEnabled(); });
    }
    void ExpectLamp(Operator &op, int channel, const std::string &lamp)
    {
        for (const std::string name : {"Image1", "Image2", "Image3"})
            EXPECT_EQ(IsVisible(op, name + "_" + std::to_string(channel)), name == lamp) << name << channel;
    }
};

const std::string Success = "Configuration is successful!";
const std::string SuccessTitle = "Configuration is successful";
const std::string Invalid = "Configuration is invalid!";
const std::string InvalidTitle = "Configuration is invalid";
const std::string ChannelSet = "Channel Setting is successful!";
const std::string ChannelSetTitle = "Channel Setting is successful";

/// A poll of the eight channels, the mask behind each.
Lines Channels(const std::string &address = "0A", const std::function<std::string(std::string)> &with = {})
{
    Lines lines;
    for (int i = 0; i < 8; ++i) {
        for (const std::string &line : {"#" + address + std::to_string(i), "$" + address + "6"})
            lines.push_back(with ? with(line) : line);
    }
    return lines;
}

Lines Types()
{
    Lines lines{"$0A8C0"};
    for (int i = 0; i < 8; ++i)
        lines.push_back("$0A8C" + std::to_string(i));
    return lines;
}

Lines Joined(std::initializer_list<Lines> parts)
{
    Lines all;
    for (const Lines &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST_F(ChannelConsoleTest, Of7221PLoadsEveryChannelAndShowsItsUnit)
{
    Rack("7221P address=0A range=08 range1=0C range2=07 mask=7F value=+05.000");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7221P");
        EXPECT_EQ(Loaded(), Joined({{"$0A2", "$0AF"}, Channels(), Types()}));
        EXPECT_EQ(op.Gui([&] { return Console()->windowTitle().toStdString(); }), "VORN7221+");
        EXPECT_EQ(TextOf(op, "txtvalue_0"), "+05.000") << "no type was known at the first poll";
        EXPECT_EQ(Poll(op), Channels());
        EXPECT_EQ(TextOf(op, "txtvalue_0"), "+05.000 V");
        EXPECT_EQ(TextOf(op, "txtvalue_1"), "+05.000 mV");
        EXPECT_EQ(TextOf(op, "txtvalue_2"), "+05.000 mA");
        EXPECT_EQ(TextOf(op, "txtRange_2"), "4 - 20mA");
        EXPECT_EQ(TextOf(op, "cboRange"), "+/- 10V");
        EXPECT_TRUE(IsOn(op, "chkEnable_0"));
        EXPECT_FALSE(IsActive(op, "txtvalue_7"));
        EXPECT_TRUE(IsActive(op, "txtvalue_0"));
        EXPECT_FALSE(IsActive(op, "cmdChannelUpdate"));
        Close(op);
        EXPECT_EQ(main().ConsoleAddress, "0A");
    });
}

TEST_F(ChannelConsoleTest, ADisabledChannelKeepsItsLastText)
{
    Rack("7221P address=0A range=08 value=+05.000");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7221P");
        Poll(op);
        rack().SetValue(2, "0A", "mask", "F7");
        rack().SetValue(2, "0A", "value", "+06.000");
        Poll(op);
        EXPECT_EQ(TextOf(op, "txtvalue_3"), "+05.000 V");
        EXPECT_EQ(TextOf(op, "txtvalue_4"), "+06.000 V");
        EXPECT_FALSE(IsActive(op, "txtvalue_3"));
        EXPECT_FALSE(IsActive(op, "txtRange_3"));
        rack().SetValue(2, "0A", "mask", "FF");
        Poll(op);
        EXPECT_TRUE(IsActive(op, "txtvalue_3"));
        rack().SetValue(2, "0A", "value0", "+999999");
        Poll(op);
        EXPECT_EQ(TextOf(op, "txtvalue_0"), "+999999 V") << "over range is shown as it came";
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7221PAChannelUpdateWritesTypeAndMask)
{
    Rack("7221P address=0A range=08 mask=FF");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7221P");
        rack().ClearTrace();
        Pick(op, "cboChannel", 5);
        EXPECT_EQ(Sent(op), (Lines{"$0A8C5"}));
        EXPECT_FALSE(IsActive(op, "cmdChannelUpdate"));
        rack().ClearTrace();
        Pick(op, "cboRange", 0);
        EXPECT_FALSE(IsActive(op, "cmdChannelUpdate")) << "the type that it has";
        Pick(op, "cboRange", 3);
        EXPECT_TRUE(IsActive(op, "cmdChannelUpdate"));
        op.Settle();
        EXPECT_EQ(rack().Commands(2), Lines{}) << "nothing is sent until the update";
        Tick(op, "chkEnable_1");
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(ChannelSet, 64, ChannelSetTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A7C5R0B", "$0A5DF"}));
        EXPECT_EQ(TextOf(op, "txtRange_5"), "+/- 500mV");
        EXPECT_FALSE(IsActive(op, "cmdChannelUpdate"));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7221PEachFailedStepIsTold)
{
    Rack("7221P address=0A range=08 mask=FF\nfault refuse begins=$0A7\nfault refuse begins=$0A5");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7221P");
        Pick(op, "cboRange", 1);
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(Invalid, 16, InvalidTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A7C0R09"}));
        EXPECT_EQ(TextOf(op, "txtRange_0"), "+/- 10V");
        Tick(op, "chkEnable_1");
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(Invalid, 16, InvalidTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A5FE"}));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7221PTheGeneralUpdateIsSentWhenSomethingWasChanged)
{
    Rack("7221P address=0A checksum=yes");
    Operate([&](Operator &op) {
        OpenConsole(op, "_1002!!0A7221P");
        const auto with = [](const std::string &line) { return line + vorn::Checksum(line); };
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), Lines{});
        Enter(op, "txtNewAddress", "200");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{with("%0AC8ff0640"), with("$C82")}));
        EXPECT_EQ(Poll(op), Channels("C8", with));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7221PADisabledChannelIsNotCalibrated)
{
    Rack("7221P address=0A range=08 range1=0C mask=FE restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7221P");
        Press(op, "cmdSpan");
        op.AnswerBox("Please enable the channel first!", 0, "Vorn-7221+ Span Calibration");
        EXPECT_EQ(Sent(op), Lines{});
        Press(op, "cmdZero");
        op.AnswerBox("Please enable the channel first!", 0, "Vorn-7221+ Zero Calibration");
        Pick(op, "cboChannel", 1);
        Sent(op);
        Press(op, "cmdSpan");
        op.AnswerBox("Please apply 150mV to Channel 1", 1, "Vorn-7221+ Span Calibration");
        op.AnswerBox("Span Calibration is successful!", 64, "Span Calibration is successful");
        EXPECT_EQ(Sent(op), (Lines{"$0A0C1"}));
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0A1"});
        Press(op, "cmdZero");
        op.AnswerBox("Please apply 0.00mV to Channel 1", 1, "Vorn-7221+ Zero Calibration");
        op.AnswerBox("Zero Calibration is invalid!", 16, "Zero Calibration is invalid");
        EXPECT_EQ(Sent(op), (Lines{"$0A1C1"}));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, AChoiceDuringTheLoadDoesNothing)
{
    Rack("7221P address=0A range=08 mask=FF");
    Operate([&](Operator &op) {
        rack().SetDelay(2, std::chrono::milliseconds(20));
        ClickConsole(op, "_0002!!0A7221P");
        op.WaitFor([&] { return rack().Commands(2).size() > 4; }, "the load");
        Tick(op, "chkEnable_1");
        EXPECT_FALSE(IsActive(op, "cmdChannelUpdate"));
        AwaitLoaded(op);
        EXPECT_TRUE(IsOn(op, "chkEnable_0")) << "as the module says";
        EXPECT_FALSE(IsActive(op, "cmdChannelUpdate"));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, ASilent7221PFreezes)
{
    Rack("7221P address=0A range=08 mask=FF value=+05.000");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7221P");
        Poll(op);
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse});
        EXPECT_EQ(Poll(op), Channels());
        EXPECT_EQ(TextOf(op, "txtvalue_0"), "+05.000 V");
        EXPECT_TRUE(IsActive(op, "txtvalue_0"));
        Close(op);
    });
}

const Lines More7224P{"$0AB", "$0A3", "$0AY"};

TEST_F(ChannelConsoleTest, Of7224PLoadsItsAdditions)
{
    Rack("7224P address=0A range=0F range1=06 mask=7F wires=04 common=FF format=82 watchdog=0030");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7224P");
        EXPECT_EQ(Loaded(), Joined({{"$0AY", "$0A2", "$0A3", "$0AF"}, Channels(), More7224P, Types()}));
        EXPECT_EQ(op.Gui([&] { return Console()->windowTitle().toStdString(); }), "VORN7224+");
        EXPECT_EQ(TextOf(op, "txtOldWDT"), "0030");
        EXPECT_EQ(TextOf(op, "txtNewCJC"), "+0025.0");
        EXPECT_EQ(TextOf(op, "txtCJCValue"), "+0025.0");
        EXPECT_EQ(TextOf(op, "cboAllChannelRange"), "Not use");
        EXPECT_EQ(TextOf(op, "CmbDataFormat"), "two's complement of hexadecimal");
        EXPECT_EQ(TextOf(op, "cboIntetime"), "60ms (50Hz)");
        EXPECT_EQ(TextOf(op, "txtRange_0"), "K type");
        EXPECT_EQ(Poll(op), Joined({Channels(), More7224P}));
        ExpectLamp(op, 0, "Image3");
        ExpectLamp(op, 2, "Image1");
        ExpectLamp(op, 7, "Image2");
        EXPECT_EQ(TextOf(op, "txtvalue_1").substr(4), " mA");
        EXPECT_EQ(TextOf(op, "txtvalue_0").size(), 4u) << "a thermocouple has no unit";
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7224PAnOpenWireTurnsItsLampAndTheValueStays)
{
    Rack("7224P address=0A range=0E value=+300.00");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7224P");
        rack().SetValue(2, "0A", "wires", "80");
        rack().SetValue(2, "0A", "watchdog", "0099");
        Poll(op);
        ExpectLamp(op, 7, "Image1");
        EXPECT_EQ(TextOf(op, "txtvalue_7"), "+300.00");
        EXPECT_EQ(TextOf(op, "txtOldWDT"), "0099");
        EXPECT_EQ(TextOf(op, "txtNewWDT"), "0000");
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7224PTheGeneralUpdate)
{
    Rack("7224P address=0A range=0E restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7224P");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0AFF0600", "$0A2"})) << "not used is FF";

        Pick(op, "cboAllChannelRange", 4);
        Pick(op, "CmbDataFormat", 2);
        Pick(op, "cboIntetime", 1);
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0A0f0682", "$0A2"}));
        EXPECT_EQ(TextOf(op, "txtRange_0"), "K type");
        EXPECT_EQ(TextOf(op, "txtRange_7"), "K type");
        EXPECT_EQ(TextOf(op, "cboRange"), "K type");
        EXPECT_EQ(rack().Value(2, "0A", "range6"), "0F");

        Pick(op, "cboAllChannelRange", 0);
        Pick(op, "CmbDataFormat", 1);
        Enter(op, "txtNewWDT", "40");
        Enter(op, "txtNewCJC", "-1.8");
        Enter(op, "txtNewAddress", "11");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0BFF0681", "$0B2", "$0BX0040", "$0B9-00C8"}));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7224PInTheInitialState)
{
    Rack("7224P address=0A init=yes range=0E restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "*0002!!0A7224P");
        Tick(op, "chkChecksum");
        Pick(op, "cboIntetime", 1);
        Enter(op, "txtNewWDT", "40");
        Enter(op, "txtNewCJC", "1.8");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox(Success, 64, SuccessTitle);
        EXPECT_EQ(Sent(op), (Lines{"%000AFF06C0", "$002", "$00X0040", "$009+00C8"}));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7224PEachFailureHasItsText)
{
    Rack("7224P address=0A range=0E restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7224P");
        const auto refuse = [&](const char *begin) {
            rack().ClearFaults();
            rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = begin});
        };
        refuse("$0AX");
        Enter(op, "txtNewWDT", "40");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Configuration of WDT is invalid!", 16, InvalidTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0AFF0600", "$0A2", "$0AX0040"}));
        refuse("$0A9");
        Enter(op, "txtNewCJC", "1.8");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Configuration of CJC is invalid!", 16, InvalidTitle);
        EXPECT_EQ(Sent(op), (Lines{"%0A0AFF0600", "$0A2", "$0A9+00C8"}));
        refuse("$0A2");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Read Configuration Status Failed!", 16, InvalidTitle);
        Sent(op);
        refuse("%");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Configuration is invalid!", 16, InvalidTitle);
        const std::string line = "%0A0AFF0600";
        EXPECT_EQ(Sent(op), (Lines{line, line, line, line}));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7224PTheMaskGoesFirst)
{
    Rack("7224P address=0A range=0E mask=FF restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7224P");
        Pick(op, "cboRange", 0);
        Tick(op, "chkEnable_0");
        Press(op, "cmdChannelUpdate");
        op.AnswerBox(ChannelSet, 64, ChannelSetTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A5FF", "$0A7C0R06"}));
        Poll(op);
        EXPECT_EQ(TextOf(op, "txtRange_0"), "+/- 0 - 20mA");

        Pick(op, "cboRange", 3);
        Tick(op, "chkEnable_1");
        Press(op, "cmdChannelUpdate");
        op.AnswerBox("Please enable channel first!", 0, "Notice");
        EXPECT_EQ(Sent(op), (Lines{"$0A5FE"}));

        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0A5"});
        Tick(op, "chkEnable_0");
        Press(op, "cmdChannelUpdate");
        op.AnswerBox("Configuration channel status invalid!", 16, InvalidTitle);
        EXPECT_EQ(Sent(op), (Lines{"$0A5FF"}));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7224PCalibratesByTheChosenType)
{
    Rack("7224P address=0A range=11 restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7224P");
        Press(op, "cmdSpan");
        op.AnswerBox("Please apply 78mV to Channel 0", 1, "Vorn-7224+ Span Calibration");
        op.AnswerBox("Span Calibration is successful!", 64, "Span Calibration is successful");
        EXPECT_EQ(Sent(op), (Lines{"$0A0C0"}));
        Press(op, "cmdZero");
        op.AnswerBox("Please apply 0.00mV to Channel 0", 1, "Vorn-7224+ Zero Calibration");
        op.AnswerBox("Zero Calibration is successful!", 64, "Zero Calibration is successful");
        EXPECT_EQ(Sent(op), (Lines{"$0A1C0"}));
        Close(op);
    });
}

TEST_F(ChannelConsoleTest, Of7224PTheEntriesTakeNumbersOnly)
{
    Rack("7224P address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7224P");
        Enter(op, "txtNewCJC", "-1x.+5.2-");
        EXPECT_EQ(TextOf(op, "txtNewCJC"), "-1.52");
        Enter(op, "txtNewWDT", "1-2.3x");
        EXPECT_EQ(TextOf(op, "txtNewWDT"), "123");
        Close(op);
    });
}

} // namespace
