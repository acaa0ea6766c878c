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
        EXPECT_EQ(Sent("$0A3"), (Lines{"$0A31", "$0A3000000064", "$0A31", "$0A31"}));
        EXPECT_EQ(Sent("@0AP"), (Lines{"@0APA0000000A", "@0AP000000001"}));
        EXPECT_EQ(Sent("@0ADA"), Lines{"@0ADA0"});
        EXPECT_EQ(Sent("$0A5"), (Lines{"$0A51", "$0A51", "$0A501", "$0A50", "$0A51"}));
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

// Presses that come before the one before has had its turn, or while it runs.

TEST_F(QuickUpdateTest, OfUpdatesThatWaitTheLastOneIsWritten)
{
    On("7272", "", [&](Operator &op) {
        Open(op, "$0A6");
        op.Gui([&] {
            for (const char *address : {"11", "12", "12"}) {
                Enter("TextAddress", address);
                Press("CmdMUpdate");
            }
        });
        Release(op, "Configuration is successful !", "Configuration is successful");
        EXPECT_EQ(Sent("%"), Lines{"%0A0C400600"});
    });
}

TEST_F(QuickUpdateTest, OfOtherValuesBehindTheOneThatRuns)
{
    On("7206", "range=08", [&](Operator &op) {
        Open(op, "#0A");
        op.Gui([&] { Press("CmdAlarmUpdata"); });
        bus_->Hold("@0AHI");
        bus_->Release();
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the first limit");
        op.Gui([&] {
            Press("CmdAlarmUpdata"); // by the same values: one press too many
            Enter("TextHighValue", "+9");
            Press("CmdAlarmUpdata");
        });
        bus_->Release();
        for (int update = 0; update < 2; ++update)
            op.AnswerBox("Alarm setting is complete !", 64, "Alarm setting is complete !");
        AwaitActions(op);
        EXPECT_EQ(Sent("@0AHI"), (Lines{"@0AHI+10.000", "@0AHI+09.000"}));
        EXPECT_EQ(op.Gui([&] { return Text("TextHighValue"); }), "+09.000");
    });
}

TEST_F(QuickUpdateTest, PressedWhileThePageLoadsByWhatHadBeenTyped)
{
    On("7272", "", [&](Operator &op) {
        Open(op, "$0A6");
        bus_->Release();
        AwaitActions(op);
        bus_->Hold("$0AF");
        op.Gui([&] { LeftClick(key_); });
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the load");
        bus_->Forget();
        op.Gui([&] {
            Enter("TextAddress", "11");
            Press("CmdMUpdate");
            Enter("TextAddress", "12");
        });
        Release(op, "Configuration is successful !", "Configuration is successful");
        EXPECT_EQ(Sent("%"), Lines{"%0A0B400600"});
        EXPECT_EQ(op.Gui([&] { return Text("TextAddress"); }), "12") << "it is for the next one";
    });
}

TEST_F(QuickUpdateTest, OfOptionsTheLastOnePressedCounts)
{
    On("7282D", "range=50 stage=0", [&](Operator &op) {
        Open(op, "#0A0");
        op.Gui([&] {
            for (const char *option : {"OptionFSel_1", "OptionFSel_0", "OptionFSel_1"})
                Press(option);
            for (const char *option : {"OptionLED_1", "OptionLED_0", "OptionLED_1", "OptionLED_1"})
                Press(option);
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("$0AB"), (Lines{"$0AB1", "$0AB"}));
        EXPECT_EQ(Sent("$0A8"), Lines{"$0A81"});
        EXPECT_FALSE(op.Gui([&] { return Find("TextHV")->isVisible(); })) << "levels are of the TTL input";
    });
}

TEST_F(QuickUpdateTest, AStopBehindAStartThatWaitsBehindAStop)
{
    On("7282", "range=50", [&](Operator &op) {
        Open(op, "#0A0");
        op.Gui([&] { Press("CmdCounterSet_0"); });
        bus_->Release();
        AwaitActions(op);
        bus_->Forget();
        bus_->Hold("$0A500");
        op.Gui([&] { Press("OptionCch0S_0"); });
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the stop");
        op.Gui([&] {
            Press("OptionCch0S_1");
            Press("OptionCch0S_0");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("$0A50"), (Lines{"$0A500", "$0A50", "$0A500", "$0A50"}));
        EXPECT_EQ(op.Gui([&] { return Text("LabFCs_0"); }), "STOP");
    });
}

TEST_F(QuickUpdateTest, TheOptionOfACounterThatRefusesShowsWhatItDoes)
{
    On("7282", "range=50", [&](Operator &op) {
        Open(op, "#0A0");
        bus_->Refuse("$0A500");
        op.Gui([&] { Press("CmdCounterSet_0"); });
        bus_->Release();
        AwaitActions(op);
        op.Gui([&] { Press("OptionCch0S_0"); });
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(Text("LabFCs_0"), "START");
            EXPECT_TRUE(Find<QAbstractButton>("OptionCch0S_1")->isChecked());
        });
    });
}

// A tick that the module refuses goes back to what it holds.

TEST_F(QuickUpdateTest, ATickOfAChannelThatIsRefused)
{
    On("7221", "range=08 mask=03", [&](Operator &op) {
        Open(op, "#0A");
        bus_->Refuse("$0A5");
        op.Gui([&] {
            Press("CheckAI_0");
            Press("CheckAI_7");
            Press("CheckAI_7");
            Press("CheckAI_7");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("$0A5"), (Lines{"$0A502", "$0A583", "$0A503", "$0A583"}));
        op.Gui([&] {
            EXPECT_TRUE(Find<QAbstractButton>("CheckAI_0")->isChecked());
            EXPECT_FALSE(Find<QAbstractButton>("CheckAI_7")->isChecked());
        });
    });
}

TEST_F(QuickUpdateTest, ATickOfAChannelOfAModuleThatDoesNotTellItsChannels)
{
    On("7221", "range=08 mask=03", [&](Operator &op) {
        Open(op, "#0A");
        bus_->Refuse("$0A6");
        op.Gui([&] {
            Press("CheckAI_0");
            Press("CheckAI_7");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("$0A5"), Lines{});
        op.Gui([&] {
            EXPECT_TRUE(Find<QAbstractButton>("CheckAI_0")->isChecked());
            EXPECT_FALSE(Find<QAbstractButton>("CheckAI_7")->isChecked());
        });
    });
}

TEST_F(QuickUpdateTest, ATickOfTheFilterThatIsRefused)
{
    On("7282", "range=50 filter=0", [&](Operator &op) {
        Open(op, "#0A0");
        bus_->Refuse("$0A4");
        op.Gui([&] {
            for (int press = 0; press < 3; ++press)
                Press("CheckFilter");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("$0A4"), (Lines{"$0A41", "$0A40", "$0A41"}));
        EXPECT_EQ(op.Gui([&] { return Text("CheckFilter"); }), "Disable");
    });
}

// The counters share a frame: what is pressed and typed is for the one in its caption.

class QuickCounterTest : public QuickUpdateTest
{
protected:
    /// Puts counter 0 on show, and then waits for a line whose reply is held back.
    void OpenCounter0(Operator &op, const std::string &held)
    {
        Open(op, "#0A0");
        op.Gui([&] { Press("CmdCounterSet_0"); });
        bus_->Release();
        AwaitActions(op);
        HoldPoll(op, held);
    }
    /// Presses on while the reply to a line is held back.
    void Behind(Operator &op, const std::string &line, const std::function<void()> &act)
    {
        bus_->Hold(line);
        bus_->Release();
        op.WaitFor([&] { return !bus_->Held().empty(); }, line.c_str());
        op.Gui(act);
    }
};

TEST_F(QuickCounterTest, IsStoppedThatStandsInTheCaptionAlsoWhileItIsRead)
{
    On("7282", "range=50", [&](Operator &op) {
        OpenCounter0(op, "#0A0");
        op.Gui([&] { Press("CmdCounterSet_1"); });
        Behind(op, "$0A31", [&] {
            EXPECT_EQ(Text("FrameFC"), "Counter 1");
            Press("CmdCounterSet_0");
            Press("OptionCch0S_0");
            Enter("TextCMax", "100");
            Press("ComCUpdata");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("$0A51"), (Lines{"$0A51", "$0A510", "$0A51"}));
        EXPECT_EQ(Sent("$0A50"), (Lines{"$0A50", "$0A50"})) << "counter 0 is read alone";
        EXPECT_EQ(Sent("$0A3"), (Lines{"$0A31", "$0A30", "$0A30"})) << "what counter 1 holds came too late";
        EXPECT_EQ(op.Gui([&] { return Text("FrameFC"); }), "Counter 0");
    });
}

TEST_F(QuickCounterTest, IsStoppedWhileTheOtherOneIsBeingStopped)
{
    On("7282", "range=50", [&](Operator &op) {
        OpenCounter0(op, "#0A0");
        op.Gui([&] {
            Press("CmdCounterSet_1");
            Press("OptionCch0S_0");
        });
        Behind(op, "$0A500", [&] {
            EXPECT_EQ(Text("FrameFC"), "Counter 1");
            Press("OptionCch0S_0");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("$0A500"), Lines{"$0A500"});
        EXPECT_EQ(Sent("$0A510"), Lines{"$0A510"});
        op.Gui([&] {
            EXPECT_TRUE(Find<QAbstractButton>("OptionCch0S_0")->isChecked());
            EXPECT_EQ(Text("LabFCs_1"), "STOP");
        });
    });
}

TEST_F(QuickCounterTest, HasNothingOfWhatWasTypedForTheOtherOne)
{
    On("7282", "range=50", [&](Operator &op) {
        OpenCounter0(op, "#0A0");
        op.Gui([&] {
            Press("CmdCounterSet_1");
            Enter("TextCMax", "100"); // below "Counter 0"
        });
        bus_->Release();
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(Text("FrameFC"), "Counter 1");
            EXPECT_EQ(Text("TextCMax"), "4294967295");
        });
    });
}

TEST_F(QuickCounterTest, StaysOnShowWhileTheOtherOneIsUpdated)
{
    On("7282", "range=50", [&](Operator &op) {
        OpenCounter0(op, "#0A0");
        op.Gui([&] {
            Press("CmdCounterSet_1");
            Press("ComCUpdata"); // of counter 0
        });
        Behind(op, "@0APA", [&] {
            EXPECT_EQ(Text("FrameFC"), "Counter 1");
            Enter("TextCMax", "100");
            Press("ComCUpdata"); // of counter 1
            Enter("TextCMax", "77");
        });
        bus_->Release();
        for (int update = 0; update < 2; ++update)
            op.AnswerBox("Counter setting is complete !", 64, "Counter setting is complete !");
        AwaitActions(op);
        EXPECT_EQ(Sent("$0A310"), Lines{"$0A3100000064"});
        op.Gui([&] {
            EXPECT_EQ(Text("FrameFC"), "Counter 1");
            EXPECT_EQ(Text("TextCMax"), "77");
        });
    });
}

TEST_F(QuickCounterTest, AGateOfTheOtherInputModeIsNoneOfThisOne)
{
    On("7282", "range=50", [&](Operator &op) {
        OpenCounter0(op, "#0A0");
        op.Gui([&] { Press("ComCUpdata"); });
        Behind(op, "$0A30", [&] {
            Pick("CmbDataFormat", 1);
            Pick("CmbRange", 1);
            EXPECT_EQ(Find<QComboBox>("CmbDataFormat")->currentIndex(), -1);
        });
        Release(op, "Counter setting is complete !", "Counter setting is complete !");
        EXPECT_EQ(op.Gui([&] { return Find<QComboBox>("CmbDataFormat")->currentIndex(); }), -1);
    });
}

TEST_F(QuickCounterTest, IsNotShownOnThePageOfAFrequency)
{
    On("7282", "range=50", [&](Operator &op) {
        OpenCounter0(op, "#0A0");
        op.Gui([&] {
            Press("ComCUpdata");
            Pick("CmbRange", 1);
            EXPECT_FALSE(Find("FrameFC")->isVisible());
        });
        Release(op, "Counter setting is complete !", "Counter setting is complete !");
        EXPECT_FALSE(op.Gui([&] { return Find("FrameFC")->isVisible(); }));
    });
}
