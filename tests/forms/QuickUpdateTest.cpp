// Updates of stand-alone modules on a bus whose replies come later than the operator acts: what is written is
// what the page showed when the button was pressed.

#include "support/QuickHands.h"

#include <functional>

using Lines = std::vector<std::string>;

namespace
{

class QuickUpdateTest : public ::testing::Test, public QuickHands
{
protected:
    std::string key_;
    std::unique_ptr<LateBus> bus_;

    /// Puts up the page of a module and holds back the reply to one of its polls.
    void Open(Operator &op, const std::string &poll)
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("30000"));
            main().Nodes.Add("KeyCOM002", key_, key_, "vorn4ico", "vorn4icoS");
        });
        Choose(op, key_);
        HoldPoll(op, poll);
    }
    void HoldPoll(Operator &op, const std::string &poll)
    {
        Hold(op, *bus_, poll);
        bus_->Forget();
    }
    void On(const std::string &model, const std::string &settings,
            const std::function<void(Operator &)> &steps)
    {
        key_ = "_0002!!0A" + model;
        bus_ =
            std::make_unique<LateBus>(ports.Link(2), "module " + model + " address=0A restart=0 " + settings);
        Operate(steps);
    }
    void Release(Operator &op, const char *text, const char *title)
    {
        bus_->Release();
        op.AnswerBox(text, 64, title);
        AwaitActions(op);
    }
    /// The lines of an update. The refresh goes on behind it: a head is one that no poll begins with.
    Lines Sent(const std::string &head) { return LinesThatBegin(*bus_, head); }
};

} // namespace

TEST_F(QuickUpdateTest, AModulesSettings)
{
    On("7272", "", [&](Operator &op) {
        Open(op, "$0A6");
        op.Gui([&] {
            Enter("TextAddress", "11");
            Press("CmdMUpdate");
            Enter("TextAddress", "12"); // for the next update
        });
        Release(op, "Configuration is successful !", "Configuration is successful");
        EXPECT_EQ(Sent("%"), Lines{"%0A0B400600"});
    });
}

TEST_F(QuickUpdateTest, TheInputModeOfACounterIsInUseAtOnce)
{
    On("7282", "range=50", [&](Operator &op) {
        Open(op, "#0A0");
        op.Gui([&] {
            EXPECT_EQ(Text("LabDataformat"), "&Enable gate :");
            Pick("CmbRange", 1);
            EXPECT_EQ(Text("LabDataformat"), "&Frequency gate :");
            EXPECT_EQ(Find<QComboBox>("CmbDataFormat")->currentIndex(), -1) << "of the gates of a frequency";
            Pick("CmbDataFormat", 1);
            Press("CmdMUpdate");
            Pick("CmbDataFormat", 0);
        });
        Release(op, "Configuration is successful !", "Configuration is successful");
        EXPECT_EQ(Sent("%"), Lines{"%0A0A510604"});
    });
}

TEST_F(QuickUpdateTest, Alarms)
{
    On("7206", "range=08", [&](Operator &op) {
        Open(op, "#0A");
        op.Gui([&] {
            Pick("CmdAlarmsetting", 2);
            Enter("TextHighValue", "+7");
            Enter("TextLowValue", "-7");
            Press("CmdAlarmUpdata");
            Pick("CmdAlarmsetting", 0);
            Pick("CmbRange", 0);
            Enter("TextHighValue", "-9");
            Enter("TextLowValue", "+9");
        });
        Release(op, "Alarm setting is complete !", "Alarm setting is complete !");
        EXPECT_EQ(Sent("@0AE"), Lines{"@0AEAL"});
        EXPECT_EQ(Sent("@0ADA"), Lines{});
        EXPECT_EQ(Sent("@0AHI+"), Lines{"@0AHI+07.000"});
        EXPECT_EQ(Sent("@0ALO-"), Lines{"@0ALO-07.000"});
    });
}

TEST_F(QuickUpdateTest, TheLinearMapping)
{
    On("7212D", "range=08", [&](Operator &op) {
        Open(op, "#0A");
        op.Gui([&] {
            Enter("TextMLowLimit", "-4");
            Enter("TextMHighLimit", "+4");
            Enter("TextSLowLimit", "-50");
            Enter("TextSHighLimit", "+50");
            Press("CmdLinearUpdata");
            Press("CheckLinearScaling");
            Pick("CmbRange", 0);
            for (const char *limit : {"TextMLowLimit", "TextMHighLimit", "TextSLowLimit", "TextSHighLimit"})
                Enter(limit, "+1");
        });
        Release(op, "Configuration is successful !", "Configuration is successful");
        EXPECT_EQ(Sent("$0AA"), Lines{"$0AA0"});
        EXPECT_EQ(Sent("$0A6"), Lines{"$0A6-04.000+04.000"});
        EXPECT_EQ(Sent("$0A7"), Lines{"$0A7-050.00+050.00"});
    });
}

TEST_F(QuickUpdateTest, TheCounterThatIsOnShow)
{
    On("7282", "range=50", [&](Operator &op) {
        Open(op, "#0A0");
        op.Gui([&] { Press("CmdCounterSet_0"); });
        bus_->Release();
        AwaitActions(op);
        HoldPoll(op, "#0A0");
        op.Gui([&] {
            Enter("TextCMax", "100");
            Enter("TextCIV", "1");
            Enter("TextCPV", "10");
            Press("CmdCounterSet_1"); // waits for its turn
            Press("ComCUpdata");
            Press("OptionCch0S_1");
            for (const char *entry : {"TextCMax", "TextCIV", "TextCPV"})
                Enter(entry, "77");
        });
        Release(op, "Counter setting is complete !", "Counter setting is complete !");
        EXPECT_EQ(Sent("$0A3"), (Lines{"$0A31", "$0A3000000064", "$0A30"}));
        EXPECT_EQ(Sent("@0AP"), (Lines{"@0APA0000000A", "@0AP000000001"}));
        EXPECT_EQ(Sent("@0ADA"), Lines{"@0ADA0"});
        EXPECT_EQ(Sent("$0A5"), (Lines{"$0A51", "$0A50", "$0A501", "$0A50"}));
    });
}

TEST_F(QuickUpdateTest, AStopOfTheCounterOnShowTellsNothingOfTheNextOne)
{
    On("7282", "range=50", [&](Operator &op) {
        Open(op, "#0A0");
        op.Gui([&] { Press("CmdCounterSet_0"); });
        bus_->Release();
        AwaitActions(op);
        EXPECT_TRUE(op.Gui([&] { return Find<QAbstractButton>("OptionCch0S_1")->isChecked(); }));
        HoldPoll(op, "#0A0");
        op.Gui([&] {
            Press("CmdCounterSet_1"); // waits for its turn
            Press("OptionCch0S_0");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("$0A5"), (Lines{"$0A51", "$0A500", "$0A50", "$0A51"}));
        op.Gui([&] {
            EXPECT_EQ(Text("FrameFC"), "Counter 1");
            EXPECT_TRUE(Find<QAbstractButton>("OptionCch0S_1")->isChecked()) << "counter 1 goes on";
        });
    });
}

TEST_F(QuickUpdateTest, WhatACounterHoldsThatIsStillBeingRead)
{
    On("7282", "range=50", [&](Operator &op) {
        Open(op, "#0A0");
        bus_->Release();
        op.Gui([&] { Press("CmdCounterSet_0"); });
        AwaitActions(op);
        bus_->Hold("$0A31");
        op.Gui([&] { Press("CmdCounterSet_1"); });
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the reading of the other counter");
        op.Gui([&] {
            EXPECT_EQ(Text("FrameFC"), "Counter 1");
            Enter("TextCPV", "10");
            Press("ComCUpdata");
        });
        bus_->Forget();
        Release(op, "Counter setting is complete !", "Counter setting is complete !");
        EXPECT_EQ(Sent("$0A3"), (Lines{"$0A31FFFFFFFF", "$0A31"}));
        EXPECT_EQ(Sent("@0AS"), Lines{"@0ASA0000000A"});
        EXPECT_EQ(Sent("@0AP"), Lines{"@0AP100000000"});
    });
}

TEST_F(QuickUpdateTest, TheFilter)
{
    On("7282", "range=50 stage=0", [&](Operator &op) {
        Open(op, "#0A0");
        op.Gui([&] {
            Enter("TextHV", "3.5");
            Enter("TextLV", "1.5");
            Enter("TextHW", "20");
            Enter("TextLW", "30");
            Press("ComFUpdata");
            for (const char *entry : {"TextHV", "TextLV"})
                Enter(entry, "2.5");
            for (const char *entry : {"TextHW", "TextLW"})
                Enter(entry, "99");
        });
        Release(op, "Filter setting is complete !", "Filter setting is complete !");
        EXPECT_EQ(Sent("$0A1H"), (Lines{"$0A1H35", "$0A1H"}));
        EXPECT_EQ(Sent("$0A1L"), (Lines{"$0A1L15", "$0A1L"}));
        EXPECT_EQ(Sent("$0A0H"), (Lines{"$0A0H00020", "$0A0H"}));
        EXPECT_EQ(Sent("$0A0L"), (Lines{"$0A0L00030", "$0A0L"}));
    });
}

TEST_F(QuickUpdateTest, TheFilterOfTheInputStageChosenBeforeIt)
{
    On("7282", "range=50 stage=0", [&](Operator &op) {
        Open(op, "#0A0");
        op.Gui([&] {
            Enter("TextHV", "3.5");
            Enter("TextHW", "20");
            Enter("TextLW", "30");
            Press("OptionFSel_1");
            Press("ComFUpdata");
        });
        Release(op, "Filter setting is complete !", "Filter setting is complete !");
        EXPECT_EQ(Sent("$0A1H"), (Lines{"$0A1H", "$0A1H"})) << "no trigger level is written";
        EXPECT_EQ(Sent("$0A1L"), (Lines{"$0A1L", "$0A1L"}));
        EXPECT_EQ(Sent("$0A0H"), (Lines{"$0A0H", "$0A0H00020", "$0A0H"}));
        EXPECT_EQ(Sent("$0A0L"), (Lines{"$0A0L", "$0A0L00030", "$0A0L"}));
    });
}
