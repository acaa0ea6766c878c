// Slots and channels on a bus whose replies come later than the operator acts.

#include "support/QuickHands.h"

#include "platform/WidgetText.h"

#include <QCheckBox>

using Lines = std::vector<std::string>;

namespace
{

const std::string Unit = "_0002!!0A3900";
const std::string VoltageSlot = "_00021!0A3923";
const std::string VoltageChannel = "_0002150A3923";
const std::string OtherChannel = "_0002160A3923";
const std::string OutputSlot = "_00022!0A3931";
const std::string OtherOutputSlot = "_00023!0A3931";
const std::string OutputChannel = "_0002210A3931";
const std::string OtherOutputChannel = "_0002220A3931";

constexpr const char *AlarmDone = "Alarm setting is complete !";

class QuickSlotTest : public ::testing::Test, public QuickHands
{
protected:
    LateBus bus_{ports.Link(2), "module 3900E address=0A restart=0\n"
                                "slot 1 3923 range=08 mask=FF high5=+05.000 high6=+06.000\n"
                                "slot 2 3931 range=30 range1=31 output1=12.000\n"
                                "slot 3 3931 range=30"};

    void Open(Operator &op, const std::string &key)
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("30000"));
            main().Nodes.Add("KeyCOM002", Unit, "(0A) 3900", "vorn5ico", "vorn5icoS");
            for (const std::string &slot : {VoltageSlot, OutputSlot, OtherOutputSlot})
                main().Nodes.Add(Unit, slot, slot, "vorn5cico", "vorn5cicoS");
            for (const std::string &channel : {VoltageChannel, OtherChannel})
                main().Nodes.Add(VoltageSlot, channel, channel, "vorn5sico", "vorn5sicoS");
            for (const std::string &channel : {OutputChannel, OtherOutputChannel})
                main().Nodes.Add(OutputSlot, channel, channel, "vorn5sico", "vorn5sicoS");
        });
        Choose(op, key);
        bus_.Forget();
    }
    void Hold(Operator &op, const std::string &line) { QuickHands::Hold(op, bus_, line); }
    Lines LinesThatBegin(const std::string &head) { return QuickHands::LinesThatBegin(bus_, head); }
};

} // namespace

TEST_F(QuickSlotTest, AnOutputTypedForOneSlotIsNotSentToTheNextWhileThatIsLoading)
{
    Operate([&](Operator &op) {
        Open(op, OutputSlot);
        op.Gui([&] { Enter("TextCH_0", "19"); });
        bus_.Hold("$0AS3B");
        op.Gui([&] { LeftClick(OtherOutputSlot); });
        op.WaitFor([&] { return !bus_.Held().empty(); }, "the load of the other slot");
        op.Gui([&] {
            Press("CmdSlotSendAO");
            QTest::keyClick(Find<QLineEdit>("TextCH_0"), Qt::Key_Return);
        });
        bus_.Release();
        AwaitActions(op);
        EXPECT_EQ(LinesThatBegin("#0AS"), Lines{});
        op.WaitFor([&] { return !LinesThatBegin("$0AS3C06").empty(); }, "channel 0 being read again");
    });
}

TEST_F(QuickSlotTest, AnOutputTypedWhileItsSlotIsLoadingIsSentBehindTheLoad)
{
    Operate([&](Operator &op) {
        Open(op, OutputSlot);
        bus_.Hold("$0AS3B");
        op.Gui([&] { LeftClick(OtherOutputSlot); });
        op.WaitFor([&] { return !bus_.Held().empty(); }, "the load of the other slot");
        op.Gui([&] {
            Enter("TextCH_1", "7");
            Press("CmdSlotSendAO");
            Press("CmdSlotSendAO");
        });
        bus_.Release();
        AwaitActions(op);
        EXPECT_EQ(LinesThatBegin("#0AS"), Lines{"#0AS3C107.000"});
    });
}

TEST_F(QuickSlotTest, AnAlarmUpdateGoesByWhatStoodThereAtThePress)
{
    Operate([&](Operator &op) {
        Open(op, VoltageChannel);
        Hold(op, "#0AS1C5");
        op.Gui([&] {
            Pick("HAlarmType", 2);
            Enter("HAlarmLimit", "+5");
            Enter("LAlarmLimit", "-5");
            Press("CmdChAlarmUpdate");
            Enter("HAlarmLimit", "+7"); // for the next update
            Pick("HAlarmType", 1);
            Find<QCheckBox>("CheckDOMapH")->click();
        });
        bus_.Release();
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
        EXPECT_EQ(LinesThatBegin("$0AS1C5AHM"), Lines{});
        EXPECT_EQ(LinesThatBegin("$0AS1C5AHU"), Lines{"$0AS1C5AHU+5"});
        EXPECT_EQ(LinesThatBegin("$0AS1C5AHC"), Lines{"$0AS1C5AHCS*C*"});
        op.Gui([&] {
            EXPECT_EQ(Text("HAlarmLimit"), "+7") << "the operator's own";
            EXPECT_EQ(Text("HAlarmType"), "Momentary");
            EXPECT_TRUE(Find<QCheckBox>("CheckDOMapH")->isChecked());
            EXPECT_NE(Text("LAlarmLimit"), "-5") << "in the module's form";
        });
    });
}

TEST_F(QuickSlotTest, ASlotUpdateGoesByWhatWasChosenAtThePress)
{
    Operate([&](Operator &op) {
        Open(op, VoltageSlot);
        Hold(op, "#0AS1");
        op.Gui([&] {
            Pick("CmbSRange", 1);
            Press("CmdSUpdate");
            Pick("CmbSRange", 3);
        });
        bus_.Release();
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        AwaitActions(op);
        EXPECT_EQ(LinesThatBegin("$0AS1A"), Lines{"$0AS1A0900"});
        op.Gui([&] { EXPECT_EQ(Find<QComboBox>("CmbSRange")->currentIndex(), 3); });
    });
}

TEST_F(QuickSlotTest, AnUpdatePressedWhileThePageIsLoadingWritesWhatTheModuleHolds)
{
    Operate([&](Operator &op) {
        Open(op, VoltageChannel);
        bus_.Hold("$0AS1C6AH");
        op.Gui([&] { LeftClick(OtherChannel); });
        op.WaitFor([&] { return !bus_.Held().empty(); }, "the load of the other channel");
        op.Gui([&] {
            EXPECT_EQ(Text("HAlarmLimit"), "+05.000") << "of the channel before";
            Press("CmdChAlarmUpdate");
        });
        bus_.Release();
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
        EXPECT_EQ(LinesThatBegin("$0AS1C6AHE"), Lines{"$0AS1C6AHED"});
        EXPECT_EQ(LinesThatBegin("$0AS1C6AHU"), Lines{"$0AS1C6AHU+06.000"});
    });
}

TEST_F(QuickSlotTest, TheValueOfOneOutputIsNotSentToTheNextWhileThatIsLoading)
{
    Operate([&](Operator &op) {
        Open(op, OutputChannel);
        op.WaitFor([&] { return Text("TextAnalogOut") == "12.000"; }, "the refresh");
        bus_.Hold("$0AS2B");
        op.Gui([&] { LeftClick(OtherOutputChannel); });
        op.WaitFor([&] { return !bus_.Held().empty(); }, "the load of the other channel");
        op.Gui([&] { Find<QPushButton>("CmdSendAO")->click(); }); // went down before the load hid it
        bus_.Release();
        AwaitActions(op);
        EXPECT_EQ(LinesThatBegin("#0AS2C"), Lines{});
        op.WaitFor([&] { return Text("TextAnalogOut") == "00.000"; }, "the refresh");
    });
}

TEST_F(QuickSlotTest, WhatWasTypedOnOnePageDoesntComeOverTheNext)
{
    Operate([&](Operator &op) {
        Open(op, VoltageChannel);
        Hold(op, "#0AS1C5");
        op.Gui([&] {
            LeftClick(OtherChannel);
            Enter("HAlarmLimit", "+7"); // still on the page of the first channel
        });
        bus_.Release();
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(main().PageOnShow(), OtherChannel);
            EXPECT_NE(Text("HAlarmLimit"), "+7");
        });
    });
}

TEST_F(QuickSlotTest, TheUnitIsThatOfTheModulesRangeNotOfTheOneChosenMeanwhile)
{
    Operate([&](Operator &op) {
        Open(op, OutputSlot);
        bus_.Hold("$0AS1B");
        op.Gui([&] { LeftClick(VoltageSlot); });
        op.WaitFor([&] { return !bus_.Held().empty(); }, "the load");
        op.Gui([&] { Pick("CmbSRange", 3); }); // +/- 500 mV
        bus_.Release();
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(Text("LabCHunit_0"), " V");
            EXPECT_EQ(Find<QComboBox>("CmbSRange")->currentIndex(), 3) << "the operator's own";
        });
    });
}

TEST_F(QuickSlotTest, TheTextsOfAnOutputAreTheModulesNotThoseChosenMeanwhile)
{
    Operate([&](Operator &op) {
        Open(op, VoltageSlot);
        bus_.Hold("$0AS26");
        op.Gui([&] { LeftClick(OutputChannel); });
        op.WaitFor([&] { return !bus_.Held().empty(); }, "the load");
        op.Gui([&] { Pick("CmbSRange", 2); }); // 0 to 10 V
        bus_.Release();
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(Text("LabSRangeLab"), "4 to 20 mA");
            EXPECT_EQ(Text("LabS_time_slewrate"), "Immediate change");
            EXPECT_EQ(Find<QComboBox>("CmbSRange")->currentIndex(), 2) << "the operator's own";
            const std::string rate = vorn::FromQString(Find<QComboBox>("CmbSTimeSlewRate")->itemText(1));
            EXPECT_NE(rate.find("mA"), std::string::npos) << rate;
        });
    });
}

TEST_F(QuickSlotTest, ButtonsPressedTwiceInOneTransactionActOnce)
{
    Operate([&](Operator &op) {
        Open(op, VoltageChannel);
        Hold(op, "#0AS1C5");
        op.Gui([&] {
            for (const char *button :
                 {"CmdClearChLatch_0", "CmdClearChLatch_1", "CmdClearChLatch_2", "CmdChAlarmUpdate"}) {
                Press(button);
                Press(button);
            }
        });
        bus_.Release();
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
        for (const char *line : {"$0AS1C5CH", "$0AS1C5CL", "$0AS1C56", "$0AS15FF"})
            EXPECT_EQ(LinesThatBegin(line), Lines{line});
    });
}

TEST_F(QuickSlotTest, AnOutputOfAChannelPressedTwiceInOneTransactionGoesOutOnce)
{
    Operate([&](Operator &op) {
        Open(op, OutputChannel);
        Hold(op, "$0AS2C16");
        op.Gui([&] {
            Enter("TextAnalogOut", "12");
            QTest::keyClick(Find<QLineEdit>("TextAnalogOut"), Qt::Key_Return);
            Press("CmdSendAO");
        });
        bus_.Release();
        AwaitActions(op);
        EXPECT_EQ(LinesThatBegin("#0AS2C1"), Lines{"#0AS2C112.000"});
        op.WaitFor([&] { return Text("LabReadBack") == "12.000"; }, "the read-back");
    });
}

TEST_F(QuickSlotTest, ANodeClickedWithinAnAlarmUpdateComesBehindIt)
{
    Operate([&](Operator &op) {
        Open(op, VoltageChannel);
        bus_.Hold("$0AS1C5AHE");
        op.Gui([&] { Press("CmdChAlarmUpdate"); });
        op.WaitFor([&] { return !bus_.Held().empty(); }, "the update");
        op.Gui([&] {
            EXPECT_EQ(main().cursor().shape(), Qt::WaitCursor) << "also between the ready waits";
            LeftClick(OtherChannel);
            Press("CmdChAlarmUpdate"); // of the page that goes
        });
        bus_.Release();
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(main().PageOnShow(), OtherChannel);
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
        });
        EXPECT_EQ(LinesThatBegin("$0AS15"), Lines{"$0AS15FF"});
        EXPECT_EQ(LinesThatBegin("$0AS1C5ALC"), Lines{"$0AS1C5ALCS*C*"});
        EXPECT_EQ(LinesThatBegin("$0AS1C6ALC"), Lines{});
    });
}

TEST_F(QuickSlotTest, AnAdapterPulledInAnAlarmUpdateIsToldOnceAndEachStepFails)
{
    Operate([&](Operator &op) {
        Open(op, VoltageChannel);
        bus_.Hold("$0AS15");
        op.Gui([&] { Press("CmdChAlarmUpdate"); });
        op.WaitFor([&] { return !bus_.Held().empty(); }, "the update");
        bus_.Pull();
        bus_.Release();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        for (const char *side : {"High", "Low"}) {
            const std::string title = std::string(side) + " Alarm state setting error";
            op.AnswerBox("Enable/Disable Alarm setting error !", 16, title);
            op.AnswerBox("Alarm Limit setting error !", 16, title);
            op.AnswerBox("Alarm Connection setting error !", 16, title);
        }
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
        op.Gui([&] { EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor); });
    });
}
