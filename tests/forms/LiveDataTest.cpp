#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "simulator/Simulator.h"

#include "platform/WidgetText.h"
#include "shell/DIO.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QSlider>

using Lines = std::vector<std::string>;

namespace
{

/// COM3 with a peer that answers as the test says.
class LiveDataTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(3)};

    void Open(Operator &op, const std::string &model, const char *state = "_0")
    {
        const std::string key = std::string(state) + "003!!0A" + model;
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("100"));
            main().Nodes.Add("KeyCOM003", key, "(0A) " + model, "vorn4ico", "vorn4icoS");
        });
        Choose(op, key);
    }

    void OpenSlot(Operator &op, const std::string &model, const char *channel = nullptr)
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("100"));
            auto &nodes = main().Nodes;
            nodes.Add("KeyCOM003", "_0003!!0A3900", "(0A) 3900", "vorn5ico", "vorn5icoS");
            nodes.Add("_0003!!0A3900", "_00032!0A" + model, "(S2) " + model, "vorn5cico", "vorn5cicoS");
            if (channel)
                nodes.Add("_00032!0A" + model, "_00032" + std::string(channel) + "0A" + model,
                          std::string("CH ") + channel, "vorn5sico", "vorn5sicoS");
        });
        Choose(op, channel ? "_00032" + std::string(channel) + "0A" + model : "_00032!0A" + model);
    }

    bool Await(Operator &op, const char *name, const std::string &text)
    {
        return op.WaitFor([&] { return Text(name) == text; }, (std::string(name) + " = " + text).c_str());
    }

    bool AwaitLamps(Operator &op, const char *array, const std::string &states)
    {
        return op.WaitFor([&] { return Lamps(array, static_cast<int>(states.size())) == states; },
                          (array + (" = " + states)).c_str());
    }

    /// States of elements 0, 1, ... as "0" and "1".
    std::string Lamps(const char *array, int count)
    {
        std::string states;
        for (int i = 0; i < count; ++i)
            states += Find<vorn::DIO>((array + ("_" + std::to_string(i))).c_str())->value() ? '1' : '0';
        return states;
    }

    /// The commands of one whole round: what is sent from one `first` to the next.
    Lines Round(Operator &op, const std::string &first)
    {
        Lines round;
        op.WaitFor(
            [&] {
                const Lines lines = peer_.Lines();
                auto begin = std::find(lines.begin(), lines.end(), first);
                if (begin == lines.end())
                    return false;
                const auto end = std::find(begin + 1, lines.end(), first);
                if (end == lines.end())
                    return false;
                round.assign(begin, end);
                return true;
            },
            "a round");
        return round;
    }
};

} // namespace

TEST_F(LiveDataTest, AnalogInputsShowValueCountAndPoints)
{
    peer_.Reply("@0ADI", "!0A00201\r");
    peer_.Reply("@0ARE", "!0A00007\r");
    peer_.Reply("#0A", ">+01.234\r");
    Operate([&](Operator &op) {
        Open(op, "7206");
        Await(op, "LabRdv", "+01.234");
        Await(op, "LabACtv", "00007");
        AwaitLamps(op, "ADIO", "0101");
        EXPECT_EQ(op.Gui([&] { return Status(); }), "COM 3  9600  bps    Polling current data....");
    });
}

TEST_F(LiveDataTest, TheOwnTextOfAModuleIsShownUnchanged)
{
    peer_.Reply("#0A", ">-9999.9 OVER\r");
    Operate([&](Operator &op) {
        Open(op, "7209");
        Await(op, "LabRdv", "-9999.9 OVER");
    });
}

TEST_F(LiveDataTest, AReplyOfTheWrongKindLeavesTheField)
{
    peer_.ReplyInTurn("#0A", {">+01.234\r", "!0A+09.999\r"});
    Operate([&](Operator &op) {
        Open(op, "7209");
        Await(op, "LabRdv", "+01.234");
        peer_.Forget();
        Round(op, "#0A");
        EXPECT_EQ(op.Gui([&] { return Text("LabRdv"); }), "+01.234");
    });
}

TEST_F(LiveDataTest, AChecksumOfTheReplyIsCutOff)
{
    peer_.Reply("#0A94", ">+01.2347F\r");
    Operate([&](Operator &op) {
        Open(op, "7209", "_1");
        Await(op, "LabRdv", "+01.234");
    });
}

TEST_F(LiveDataTest, InInitStateTheModuleIsPolledAtZero)
{
    peer_.Reply("#00", ">+05.000\r");
    Operate([&](Operator &op) {
        Open(op, "7209", "*1");
        Await(op, "LabRdv", "+05.000");
    });
}

TEST_F(LiveDataTest, StrainGaugesShowFourOutputsAndTheExcitation)
{
    peer_.Reply("@0ADI", "!0A00A\r");
    peer_.Reply("#0A", ">+01.234\r");
    peer_.Reply("$0A6", "!0A+05.000\r");
    Operate([&](Operator &op) {
        Open(op, "7218");
        AwaitLamps(op, "ADIO", "0101");
        Await(op, "TextAAOv", "+05.000");
        EXPECT_EQ(Round(op, "@0ADI"), (Lines{"@0ADI", "#0A", "$0A6"}));
        op.Retype(Find<QLineEdit>("TextAAOv"), QStringLiteral("7"));
        peer_.Forget();
        EXPECT_EQ(Round(op, "@0ADI"), (Lines{"@0ADI", "#0A"})) << "the entry is the operator's";
        EXPECT_EQ(op.Gui([&] { return Text("TextAAOv"); }), "7");
    });
}

TEST_F(LiveDataTest, DisabledChannelsCostNoTransactionAndStayEmpty)
{
    peer_.Reply("$0A2", "!0A080600\r");
    peer_.Reply("$0A6", "!0A05\r");
    peer_.Reply("#0A0", ">+01.000\r");
    peer_.Reply("#0A2", ">+03.000\r");
    Operate([&](Operator &op) {
        Open(op, "7221");
        Await(op, "LabAIv_2", "+03.000");
        EXPECT_EQ(Round(op, "#0A0"), (Lines{"#0A0", "#0A2", "$0A6"}));
        op.Gui([&] {
            EXPECT_EQ(Text("LabAIv_0"), "+01.000");
            EXPECT_EQ(Text("LabAIs_0"), " V");
            EXPECT_EQ(Text("LabAIv_1"), "");
            EXPECT_EQ(Text("LabAIs_1"), "");
        });
        peer_.Reply("$0A6", "!0A04\r");
        Await(op, "LabAIv_0", "");
        Await(op, "LabAIs_0", "");
    });
}

TEST_F(LiveDataTest, WithoutItsMaskAModuleIsAskedForNoChannelAndKeepsAllFields)
{
    // The page's load and one round get an answer; from then on the module is silent, or refuses.
    for (const char *last : {"", "?0A\r"}) {
        peer_.ReplyInTurn("$0A6", {"!0A05\r", "!0A05\r", last});
        peer_.Reply("#0A0", ">+01.000\r");
        peer_.Reply("#0A2", ">+03.000\r");
        Operate([&](Operator &op) {
            Open(op, "7224");
            Await(op, "LabAIv_2", "+03.000");
            op.WaitFor([&] { return std::ranges::count(peer_.Lines(), "$0A6") > 3; }, "a silent round");
            op.Gui([&] { Find<QLabel>("LabAIv_1")->setText(QStringLiteral("kept")); });
            peer_.Forget();
            op.WaitFor([&] { return peer_.Lines().size() > 3; }, "more silent rounds");
            EXPECT_EQ(std::ranges::count(peer_.Lines(), "$0A6"), std::ssize(peer_.Lines())) << "nothing else";
            op.Gui([&] {
                EXPECT_EQ(Text("LabAIv_0"), "+01.000");
                EXPECT_EQ(Text("LabAIv_1"), "kept");
                EXPECT_EQ(Text("LabAIv_2"), "+03.000");
            });
        });
        peer_.Forget();
    }
}

TEST_F(LiveDataTest, TheMaskOfOneModuleIsNotTheNextOnes)
{
    peer_.Reply("$0A6", "!0A05\r");
    peer_.Reply("#0A0", ">+01.000\r");
    Operate([&](Operator &op) {
        Open(op, "7221");
        Await(op, "LabAIv_0", "+01.000");
        op.Gui([&] { main().Nodes.Add("KeyCOM003", "_0003!!0B7221", "(0B) 7221", "vorn4ico", "vorn4icoS"); });
        Choose(op, "_0003!!0B7221");
        peer_.Forget();
        op.WaitFor([&] { return std::ranges::count(peer_.Lines(), "$0B6") > 2; }, "some silent rounds");
        EXPECT_EQ(std::ranges::count(peer_.Lines(), "#0B0"), 0);
    });
}

TEST_F(LiveDataTest, AnalogOutputsReadBackAndFollowUnlessEdited)
{
    peer_.Reply("$0A2", "!0A320600\r");
    peer_.Reply("$0A8", "!0A02.000\r");
    peer_.Reply("$0A6", "!0A05.500\r");
    Operate([&](Operator &op) {
        Open(op, "7231");
        Await(op, "LabReadBack", "02.000");
        Await(op, "TextAnalogOut", "05.500");
        EXPECT_EQ(op.Gui([&] { return Find<QSlider>("Slider1")->value(); }), 2750);
        op.Retype(Find<QLineEdit>("TextAnalogOut"), QStringLiteral("9"));
        peer_.Reply("$0A8", "!0A03.000\r");
        Await(op, "LabReadBack", "03.000");
        EXPECT_EQ(op.Gui([&] { return Text("TextAnalogOut"); }), "9")
            << "the read-back moves, the entry stays";
    });
}

TEST_F(LiveDataTest, DigitalGroupsShowValueAndPoints)
{
    peer_.Reply("$0A6", "!A52200\r");
    Operate([&](Operator &op) {
        Open(op, "7252");
        Await(op, "LabDHv", "A5");
        Await(op, "LabDLv", "22");
        AwaitLamps(op, "DIOH", "10100101");
        AwaitLamps(op, "DIOL", "01000100");
        Open(op, "7256");
        Await(op, "LabDLv", "A5");
        AwaitLamps(op, "DIOL", "10100101");
        Open(op, "7272");
        op.WaitFor([&] { return Lamps("DIOL", 8).substr(4) == "1010"; }, "the relays");
    });
}

TEST_F(LiveDataTest, CountersShowUnsignedDecimals)
{
    peer_.Reply("$0A2", "!0A500600\r");
    peer_.Reply("#0A0", ">FFFFFFFF\r");
    peer_.Reply("#0A1", ">0000000A\r");
    peer_.Reply("$0A07", "!0A1\r");
    peer_.Reply("$0A17", "!0A0\r");
    peer_.Reply("@0ADI", "!0A002\r");
    Operate([&](Operator &op) {
        Open(op, "7282");
        Await(op, "LabFCv_0", "4294967295");
        Await(op, "LabFCv_1", "10");
        AwaitLamps(op, "CounterOverflow", "10");
    });
}

TEST_F(LiveDataTest, ACountThatCanNotBeReadStaysAsItCame)
{
    peer_.Reply("$0A2", "!0A500600\r");
    peer_.Reply("#0A0", ">?????\r");
    Operate([&](Operator &op) {
        Open(op, "7282");
        Await(op, "LabFCv_0", "?????");
    });
}

TEST_F(LiveDataTest, SlotsShowAllChannelsOfOneReply)
{
    peer_.Reply("#0AS2", ">+01.000-02.500+03.125\r");
    peer_.Reply("$0AS2C1S", "!0A10\r");
    peer_.Reply("$0AS2C2S", "!0A01\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3921");
        Await(op, "TextCH_0", "+01.000");
        Await(op, "TextCH_2", "+03.125");
        AwaitLamps(op, "ChHA", "010");
        AwaitLamps(op, "ChLA", "001");
        EXPECT_EQ(Round(op, "#0AS2"), (Lines{"#0AS2", "$0AS2C0S", "$0AS2C1S", "$0AS2C2S"}));
    });
}

TEST_F(LiveDataTest, SlotRoundsHaveAsManyChannelsAsTheCard)
{
    for (const auto &[model, channels] : {std::pair{"3923", 8}, {"3923H", 8}, {"3925", 7}}) {
        Operate([&](Operator &op) {
            OpenSlot(op, model);
            Lines expected{"#0AS2"};
            for (int i = 0; i < channels; ++i)
                expected.push_back("$0AS2C" + std::to_string(i) + "S");
            EXPECT_EQ(Round(op, "#0AS2"), expected) << model;
        });
        peer_.Forget();
    }
}

TEST_F(LiveDataTest, AnOutputSlotSkipsTheChannelThatIsTypedInto)
{
    for (char channel = '0'; channel < '4'; ++channel)
        peer_.Reply(std::string("$0AS2C") + channel + "6", std::string("!0A0") + channel + ".000\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3931");
        Await(op, "TextCH_3", "03.000");
        op.Gui([&] {
            Find<QLineEdit>("TextCH_2")->setText(QStringLiteral("7"));
            vorn::SetTag(Find("TextCH_2"), "Changed");
        });
        peer_.Forget();
        EXPECT_EQ(Round(op, "$0AS2C06"), (Lines{"$0AS2C06", "$0AS2C16", "$0AS2C36"}));
        EXPECT_EQ(op.Gui([&] { return Text("TextCH_2"); }), "7");
    });
}

TEST_F(LiveDataTest, AChannelIsEmptiedWhenItFallsSilent)
{
    peer_.Reply("#0AS2C5", ">+01.500\r");
    peer_.Reply("$0AS2C5S", "!0A11\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3923", "5");
        Await(op, "LabChannelValue", "+01.500");
        op.WaitFor(
            [&] {
                return Find<vorn::DIO>("ChannelHAlarm")->value() && Find<vorn::DIO>("ChannelLAlarm")->value();
            },
            "the alarms");
        EXPECT_EQ(Round(op, "#0AS2C5"), (Lines{"#0AS2C5", "$0AS2C5S"}));
        peer_.Reply("#0AS2C5", "?0A\r");
        Await(op, "LabChannelValue", "");
    });
}

TEST_F(LiveDataTest, AnOutputChannelReadsBack)
{
    peer_.Reply("$0AS2C16", "!0A10.000\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3931", "1");
        Await(op, "LabReadBack", "10.000");
        EXPECT_EQ(op.Gui([&] { return Text("TextAnalogOut"); }), "10.000");
        EXPECT_EQ(Round(op, "$0AS2C16"), Lines{"$0AS2C16"});
    });
}

TEST_F(LiveDataTest, TheSliderFollowsAnOutputChannelInEngineeringUnitsOnly)
{
    peer_.Reply("$0AS2C16", "!0A10.000\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3931", "1");
        auto *slider = Find<QSlider>("Slider1");
        op.Gui([&] {
            slider->setRange(0, 5000);
            main().OutputFormatCode = "02";
        });
        op.WaitFor([&] { return slider->value() == 5000; }, "the slider at 10 V");
        // What the page of another module may have left behind.
        op.Gui([&] { main().OutputFormatCode = "22"; });
        peer_.Reply("$0AS2C16", "!0A05.000\r");
        Await(op, "TextAnalogOut", "05.000");
        EXPECT_EQ(op.Gui([&] { return slider->value(); }), 5000);
    });
}

TEST_F(LiveDataTest, CountersOfASlotKeepTheirLeadingZeros)
{
    for (char channel = '0'; channel < '4'; ++channel)
        peer_.Reply(std::string("#0AS2C") + channel, ">0000000042\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3962");
        Await(op, "TextCH_3", "0000000042");
        EXPECT_EQ(Round(op, "#0AS2C0"), (Lines{"#0AS2C0", "#0AS2C1", "#0AS2C2", "#0AS2C3", "$0AS2C0S",
                                               "$0AS2C1S", "$0AS2C2S", "$0AS2C3S"}));
    });
}

TEST_F(LiveDataTest, FrequenciesOfASlotAreHundredths)
{
    peer_.Reply("#0AS2C0", ">0000012345\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3962");
        op.Gui([&] {
            Find<QLabel>("LabSRangeLab")->setText(QStringLiteral("Frequency"));
            Find<QLabel>("LabSDataFormatLab")->setText(QStringLiteral("Dec"));
        });
        Await(op, "TextCH_0", "123.45");
        op.Gui([&] { Find<QLabel>("LabSDataFormatLab")->setText(QStringLiteral("Hex")); });
        Await(op, "TextCH_0", "2E9");
    });
}

TEST_F(LiveDataTest, DigitalSlotsShowTheirPairs)
{
    const std::vector<std::tuple<const char *, const char *, const char *, Lines>> rows{
        {"3942", "A5", "22", {"$0AS2M", "$0AS26"}},
        {"3944", "A5", "22", {"$0AS26"}},
        {"3946", "", "22", {"$0AS26"}},
        {"3948", "A5", "22", {"$0AS2M", "$0AS26"}},
        {"3951", "A5", "22", {"$0AS2M", "$0AS26"}},
        {"3953", "", "A5", {"$0AS2M", "$0AS26"}},
        {"3957", "", "A5", {"$0AS2M", "$0AS26"}}};
    peer_.Reply("$0AS26", "!0AA522\r");
    peer_.Reply("$0AS2M", "!0A0000\r");
    for (const auto &[model, high, low, round] : rows) {
        Operate([&](Operator &op) {
            OpenSlot(op, model);
            Await(op, "LabDLv", low);
            if (*high)
                Await(op, "LabDHv", high);
            EXPECT_EQ(Round(op, round.front()), round) << model;
        });
        peer_.Forget();
    }
}

TEST_F(LiveDataTest, FaultyPointsAreMarkedUntilThePageIsLoadedAgain)
{
    peer_.Reply("$0AS26", "!0A0000\r");
    peer_.Reply("$0AS2M", "!0A0280\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3951");
        Await(op, "DIOH_1", "XX  &9");
        Await(op, "DIOL_7", "XX  &7");
        EXPECT_EQ(op.Gui([&] { return Text("DIOL_0"); }), "DO  &0");
        peer_.Reply("$0AS2M", "!0A0000\r");
        peer_.Forget();
        Round(op, "$0AS2M");
        EXPECT_EQ(op.Gui([&] { return Text("DIOH_1"); }), "XX  &9") << "the mark stays";
        Choose(op, "_00032!0A3951");
        EXPECT_EQ(op.Gui([&] { return Text("DIOH_1"); }), "DO  &9");
    });
}

TEST_F(LiveDataTest, AHighSpeedSlotInHexadecimalIsCutInFours)
{
    peer_.Reply("#0AS2", ">0001FFFF00020003000400050006ABCD\r");
    Operate([&](Operator &op) {
        OpenSlot(op, "3923H");
        op.Gui([&] { Find<QLabel>("LabSDataFormatLab")->setText(QStringLiteral("two's complement")); });
        Await(op, "TextCH_7", "ABCD");
        EXPECT_EQ(op.Gui([&] { return Text("TextCH_1"); }), "FFFF");
    });
}

TEST_F(LiveDataTest, ASilentModuleKeepsItsFields)
{
    peer_.Reply("#0A", ">+01.234\r");
    Operate([&](Operator &op) {
        Open(op, "7209");
        Await(op, "LabRdv", "+01.234");
        peer_.Reply("#0A", "");
        peer_.Forget();
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "some silent rounds");
        EXPECT_EQ(op.Gui([&] { return Text("LabRdv"); }), "+01.234");
    });
}

TEST_F(LiveDataTest, ABaseUnitHasNothingToPoll)
{
    Operate([&](Operator &op) {
        Open(op, "3900");
        op.WaitFor([&] { return Status() == "COM 3  9600  bps    Polling current data...."; }, "the status");
        EXPECT_EQ(peer_.Lines(), (Lines{"$0AF", "$0A2"}));
        Choose(op, "KeyCOM003");
        op.WaitFor([&] { return !main().NoYield; }, "the end of the refresh");
    });
}

// Bad replies of every kind, by the simulated modules' faults.

TEST(LiveDataOfAFaultyModule, EveryFaultLeavesAnUnharmedProgram)
{
    for (const char *fault : {"silent", "refuse", "garbage", "split at=3 delay=5", "late delay=200",
                              "noreturn", "innerreturn", "lone", "wrongaddress", "long", "allbytes"}) {
        ProgramRun run;
        vornsim::Rack rack;
        try {
            rack = vornsim::ParseRack(std::string("port 3 speed=9600\nmodule 7206 address=0A\n    fault ") +
                                      fault + "\n");
        } catch (const vornsim::RackError &error) {
            FAIL() << fault << ": " << error.what();
        }
        vornsim::Simulator simulator(std::move(rack), run.ports.Path());
        simulator.Start();
        run.Operate([&](Operator &op) {
            op.Gui([&] {
                run.main().TextTimeOut->setText(QStringLiteral("10"));
                run.main().Nodes.Add("KeyCOM003", "_0003!!0A7206", "(0A) 7206", "vorn4ico", "vorn4icoS");
            });
            run.Choose(op, "_0003!!0A7206");
            op.WaitFor([&] { return simulator.Commands(3).size() > 15; }, fault);
            run.Choose(op, "KeyPC");
            EXPECT_TRUE(op.Gui([&] { return run.Shown("LabPC"); })) << fault;
            op.WaitFor([&] { return !run.main().TransBusy && !run.main().NoYield; },
                       "the end of the refresh");
        });
    }
}
