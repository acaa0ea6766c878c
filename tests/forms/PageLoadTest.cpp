#include "support/RackOfOne.h"
#include "support/RawPeer.h"

#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "shell/DIO.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTreeWidget>

using Lines = std::vector<std::string>;

namespace
{

struct LoadCase {
    const char *model;
    const char *settings; ///< of the simulated module
    Lines load;           ///< what the page's load sends, in order
    Lines poll;           ///< the first round of the refresh
};

void PrintTo(const LoadCase &row, std::ostream *out)
{
    *out << row.model << " " << row.settings;
}

const Lines AlarmReads{"@0ADI", "@0ARH", "@0ARL"};
const Lines AnalogPoll{"@0ADI", "@0ARE", "#0A"};

Lines Join(std::initializer_list<Lines> parts)
{
    Lines all;
    for (const Lines &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

const Lines CounterReads{"$0AF", "$0A2",  "$0A8",  "$0AA",  "$0A50", "$0A51", "@0ADI",
                         "$0AB", "$0A0H", "$0A0L", "$0A1H", "$0A1L", "$0A4"};
const Lines FrequencyReads{"$0AF",  "$0A2",  "$0A8",  "$0A50", "$0A51", "$0AB",
                           "$0A0H", "$0A0L", "$0A1H", "$0A1L", "$0A4"};
const Lines CounterPoll{"#0A0", "#0A1", "@0ADI", "$0A07", "$0A17"};

const std::vector<LoadCase> Cases{
    {"7203", "", Join({{"$0AF", "$0A2"}, AlarmReads}), AnalogPoll},
    {"7203D", "", Join({{"$0AF", "$0A2"}, AlarmReads}), AnalogPoll},
    {"7206", "", Join({{"$0AF", "$0A2"}, AlarmReads}), AnalogPoll},
    {"7209", "", {"$0AF", "$0A2"}, {"#0A"}},
    {"7212D", "", Join({{"$0AF", "$0A2"}, AlarmReads, {"$0AB", "$0A3", "$0A5"}}), AnalogPoll},
    {"7218", "", Join({{"$0AF", "$0A2"}, AlarmReads}), {"@0ADI", "#0A", "$0A6"}},
    {"7221", "mask=85", {"$0AF", "$0A2", "$0A6"}, {"$0A6", "#0A0", "#0A2", "#0A7"}},
    {"7224", "mask=00", {"$0AF", "$0A2", "$0A6"}, {"$0A6", "$0A6"}},
    {"7224M", "mask=02", {"$0AF", "$0A2", "$0A6"}, {"$0A6", "#0A1"}},
    {"7231", "", {"$0AF", "$0A2"}, {"$0A8", "$0A6"}},
    {"7252", "", {"$0AF", "$0A2"}, {"$0A6"}},
    {"7256", "", {"$0AF", "$0A2"}, {"$0A6"}},
    {"7258", "", {"$0AF", "$0A2"}, {"$0A6"}},
    {"7272", "", {"$0AF", "$0A2"}, {"$0A6"}},
    {"7282", "range=50", CounterReads, CounterPoll},
    {"7282", "range=51", FrequencyReads, {"#0A0", "#0A1", "#0A0"}},
    {"7282D", "range=50", CounterReads, CounterPoll},
    {"7282N", "range=50", CounterReads, CounterPoll},
};

class EveryModel : public ::testing::TestWithParam<LoadCase>, public RackOfOne
{
};

class PageLoadTest : public ::testing::Test, public RackOfOne
{
};

} // namespace

TEST_P(EveryModel, LoadsAndPollsWithExactlyTheseCommands)
{
    const LoadCase &row = GetParam();
    Rack(std::string(row.model) + " address=0A " + row.settings);
    Operate([&](Operator &op) {
        Open(op, std::string("_0002!!0A") + row.model);
        const Lines expected = Join({row.load, row.poll});
        ASSERT_TRUE(AwaitCommands(op, expected.size()));
        Lines sent = rack().Commands(2);
        sent.resize(expected.size());
        EXPECT_EQ(sent, expected);
        EXPECT_EQ(op.Gui([&] { return Text("Frame1"); }), std::string("VORN-") + row.model);
        EXPECT_EQ(op.Gui([&] { return Text("LabAddr"); }), "0A (Hex)");
        EXPECT_EQ(op.Gui([&] { return Text("TextAddress"); }), "10");
        EXPECT_EQ(op.Gui([&] { return Text("LabMFVv"); }), rack().Value(2, "0A", "version"));
    });
}

INSTANTIATE_TEST_SUITE_P(Models, EveryModel, ::testing::ValuesIn(Cases), [](const auto &row) {
    std::string name = std::string(row.param.model) + "_" + row.param.settings;
    for (char &c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    }
    return name;
});

TEST_F(PageLoadTest, EveryCommandOfAChecksumModuleCarriesItsChecksum)
{
    Rack("7206 address=0A checksum=yes range=09 value=+1.2345");
    Operate([&](Operator &op) {
        Open(op, "_1002!!0A7206");
        ASSERT_TRUE(AwaitCommands(op, 8));
        const Lines sent = rack().Commands(2);
        int i = 0;
        for (const char *command : {"$0AF", "$0A2", "@0ADI", "@0ARH", "@0ARL", "@0ADI", "@0ARE", "#0A"})
            EXPECT_EQ(sent[static_cast<std::size_t>(i++)], command + vorn::Checksum(command));
        op.WaitFor([&] { return Text("LabRdv") == "+1.2345"; }, "the value without its checksum");
        EXPECT_EQ(op.Gui([&] { return Find<QCheckBox>("CheckChecksum")->isChecked(); }), true);
        EXPECT_EQ(op.Gui([&] { return Text("CheckChecksum"); }), "Enable");
    });
}

TEST_F(PageLoadTest, AModuleInInitStateIsAskedAtZeroWithoutChecksum)
{
    Rack("7206 address=0A init=yes checksum=yes");
    Operate([&](Operator &op) {
        AddNode(op, "*1002!!0A7206");
        rack().ClearTrace();
        Choose(op, "*1002!!0A7206");
        ASSERT_TRUE(AwaitCommands(op, 6));
        EXPECT_EQ(rack().Commands(2).at(0), "$00F");
        EXPECT_EQ(rack().Commands(2).at(5), "@00DI");
        op.Gui([&] {
            EXPECT_EQ(Text("LabAddr"), "00 (Hex)");
            for (const char *name : {"CmbBaudrate", "CheckChecksum", "CmdMUpdate", "TextAddress"})
                EXPECT_TRUE(Find(name)->isEnabled()) << name;
        });
    });
}

TEST_F(PageLoadTest, OutsideItsInitStateAModuleKeepsBaudRateAndChecksum)
{
    Rack("7206 address=0A");
    Operate([&](Operator &op) {
        Open(op, "_0002!!0A7206");
        op.Gui([&] {
            EXPECT_FALSE(Find("CmbBaudrate")->isEnabled());
            EXPECT_FALSE(Find("CheckChecksum")->isEnabled());
            EXPECT_FALSE(Find("CmbBaudrate")->toolTip().isEmpty()) << "a disabled control tells why";
            EXPECT_TRUE(Find("TextAddress")->isEnabled());
            EXPECT_TRUE(Find("CmdMUpdate")->isEnabled());
            EXPECT_EQ(Position("CmbBaudrate"), 3);
        });
    });
}

TEST_F(PageLoadTest, ABaseUnitOutsideItsInitStateCanNotBeWritten)
{
    Rack("3900 address=0A slots=3944,-,3962");
    Operate([&](Operator &op) {
        AddNode(op, "_0002!!0A3900");
        op.Gui([&] {
            main().Nodes.Add("_0002!!0A3900", "_00020!0A3944", "(S0) 3944/D", "vorn5cico", "vorn5cicoS");
            main().Nodes.Add("_0002!!0A3900", "_00022!0A3962", "(S2) 3962", "vorn5cico", "vorn5cicoS");
        });
        rack().ClearTrace();
        Choose(op, "_0002!!0A3900");
        op.Gui([&] {
            EXPECT_EQ(rack().Commands(2), (Lines{"$0AF", "$0A2"}));
            for (const char *name :
                 {"TextAddress", "CmbBaudrate", "CheckChecksum", "CmdDownLoadF", "CmdMUpdate"})
                EXPECT_FALSE(Find(name)->isEnabled()) << name;
            EXPECT_EQ(Position("CmbBaudrate"), 3) << "its record has no type field";
            const auto *slots_ = Find<QTreeWidget>("ListView3900");
            ASSERT_EQ(slots_->topLevelItemCount(), 2);
            EXPECT_EQ(slots_->topLevelItem(0)->text(0), QStringLiteral("  0"));
            EXPECT_EQ(slots_->topLevelItem(0)->text(1), QStringLiteral("VORN-3944/D"));
            EXPECT_EQ(slots_->topLevelItem(1)->text(0), QStringLiteral("  2"));
            EXPECT_EQ(slots_->topLevelItem(1)->text(2), QStringLiteral("Counter/Frequency input module"));
        });
    });
}

TEST_F(PageLoadTest, ABaseUnitAtZeroCanBeWritten)
{
    Rack("3900 address=00");
    Operate([&](Operator &op) {
        Open(op, "_0002!!003900");
        op.Gui([&] {
            EXPECT_FALSE(Find("TextAddress")->isEnabled());
            for (const char *name : {"CmbBaudrate", "CheckChecksum", "CmdMUpdate"})
                EXPECT_TRUE(Find(name)->isEnabled()) << name;
        });
    });
}

TEST_F(PageLoadTest, RangeUnitsAndFormatFollowTheRecord)
{
    Rack("7206 address=0A range=0B format=01");
    Operate([&](Operator &op) {
        Open(op, "_0002!!0A7206");
        op.Gui([&] {
            EXPECT_EQ(Position("CmbRange"), 3);
            EXPECT_EQ(Text("CmbRange"), "+/-    500  mV");
            EXPECT_EQ(Position("CmbDataFormat"), 1);
            EXPECT_EQ(Text("LabRdu"), " %");
            EXPECT_EQ(Text("LabAunit_0"), "mV");
            EXPECT_EQ(Text("LabAunit_1"), "mV");
        });
    });
}

// The choice between counter and frequency, as the operator makes it.

TEST_F(PageLoadTest, ChoosingFrequencyHidesWhatCountsAndChoosingCounterBringsItBack)
{
    Rack("7282 address=0A range=50 stage=1");
    Operate([&](Operator &op) {
        Open(op, "_0002!!0A7282");
        auto *range = Find<QComboBox>("CmbRange");
        op.WaitFor([&] { return vorn::IsShown(Find("FrameFCf")); }, "the page");
        op.Gui([&] {
            EXPECT_EQ(Text("LabDataformat"), "&Enable gate :");
            EXPECT_TRUE(vorn::IsShown(Find("ComFUpdata")));
            Find("FrameFC")->show();
        });
        // Down from "Counter" to "Freguency".
        op.Press(range, Qt::Key_Down);
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(range->currentIndex(), 1);
            EXPECT_EQ(Text("LabDataformat"), "&Frequency gate :");
            EXPECT_EQ(Entries("CmbDataFormat"), (Lines{"0.1 sec", "1 sec"}));
            EXPECT_EQ(Text("LabFCs_0"), "Hz");
            EXPECT_EQ(Text("LabFCs_1"), "Hz");
            for (const char *name :
                 {"FrameFC", "CmdCounterSet_0", "CounterOverflow_1", "CounterDO_0", "TextHW"})
                EXPECT_FALSE(vorn::IsShown(Find(name))) << name;
            EXPECT_FALSE(vorn::IsShown(Find("ComFUpdata"))) << "the photo input has no levels to update";
        });
        op.Press(range, Qt::Key_Up);
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(range->currentIndex(), 0);
            EXPECT_EQ(Text("LabDataformat"), "&Enable gate :");
            EXPECT_EQ(Position("CmbDataFormat"), -1);
            EXPECT_EQ(Text("LabFCs_0"), "");
            for (const char *name :
                 {"CmdCounterSet_0", "CounterOverflow_1", "CounterDO_0", "TextHW", "ComFUpdata"})
                EXPECT_TRUE(vorn::IsShown(Find(name))) << name;
        });
    });
}

TEST_F(PageLoadTest, ChoosingFrequencyKeepsTheFilterUpdateOfTheTtlInput)
{
    Rack("7282 address=0A range=50 stage=0");
    Operate([&](Operator &op) {
        Open(op, "_0002!!0A7282");
        op.WaitFor([&] { return vorn::IsShown(Find("FrameFCf")); }, "the page");
        op.Press(Find("CmbRange"), Qt::Key_Down);
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_TRUE(vorn::IsShown(Find("ComFUpdata"))) << "its levels";
            EXPECT_TRUE(vorn::IsShown(Find("TextHV")));
            EXPECT_FALSE(vorn::IsShown(Find("TextHW")));
        });
    });
}

TEST_F(PageLoadTest, ChoosingARangeOfAnotherModelChangesThatListOnly)
{
    Rack("7206 address=0A range=08 format=00");
    Operate([&](Operator &op) {
        Open(op, "_0002!!0A7206");
        op.WaitFor([&] { return Position("CmbRange") == 0; }, "the range");
        const auto formats = op.Gui([&] { return Entries("CmbDataFormat"); });
        const auto label = op.Gui([&] { return Text("LabDataformat"); });
        op.Press(Find("CmbRange"), Qt::Key_Down);
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(Position("CmbRange"), 1);
            EXPECT_EQ(Entries("CmbDataFormat"), formats);
            EXPECT_EQ(Position("CmbDataFormat"), 0);
            EXPECT_EQ(Text("LabDataformat"), label);
        });
    });
}

// With a peer that answers by hand: what the simulated modules would never say.

namespace
{

class OddRepliesTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(2)};

    void Open(Operator &op, const std::string &model)
    {
        const std::string key = "_0002!!0A" + model;
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("150"));
            main().Nodes.Add("KeyCOM002", key, "(0A) " + model, "vorn4ico", "vorn4icoS");
        });
        Choose(op, key);
    }
    int Position(const char *list) { return Find<QComboBox>(list)->currentIndex(); }
};

} // namespace

TEST_F(OddRepliesTest, TheStrainGaugesShorterListMovesOneCode)
{
    peer_.Reply("$0A2", "!0A060600\r");
    Operate([&](Operator &op) {
        Open(op, "7218");
        EXPECT_EQ(op.Gui([&] { return Position("CmbRange"); }), 4);
        EXPECT_EQ(op.Gui([&] { return Text("CmbRange"); }), "+/-     20  mA");
        Open(op, "7203");
        EXPECT_EQ(op.Gui([&] { return Position("CmbRange"); }), 6);
    });
}

TEST_F(OddRepliesTest, ACodeBeyondTheListChangesNothingButTheUnits)
{
    peer_.Reply("$0A2", "!0A0E0600\r");
    Operate([&](Operator &op) {
        Open(op, "7206");
        op.Gui([&] {
            EXPECT_EQ(Position("CmbRange"), -1);
            EXPECT_EQ(Text("LabRdu"), "'C");
            EXPECT_EQ(Text("LabAunit_0"), "'C");
        });
    });
}

TEST_F(OddRepliesTest, AnUnknownCodeSelectsNothing)
{
    peer_.Reply("$0A2", "!0A7F0F00\r");
    Operate([&](Operator &op) {
        Open(op, "7206");
        EXPECT_EQ(op.Gui([&] { return Position("CmbRange"); }), -1);
        EXPECT_EQ(op.Gui([&] { return Position("CmbBaudrate"); }), -1);
    });
}

TEST_F(OddRepliesTest, ARecordWithoutAFormatByteLeavesWhatThatWouldTell)
{
    Operate([&](Operator &op) {
        peer_.Reply("$0A2", "!0A080640\r");
        Open(op, "7206");
        EXPECT_EQ(op.Gui([&] { return Position("CmbDataFormat"); }), 0);
        peer_.Reply("$0A2", "!0A0806\r");
        for (const char *model : {"7206", "7221"}) {
            Open(op, model);
            op.Gui([&] {
                EXPECT_EQ(Text("CmbRange"), "+/-     10   V") << model;
                EXPECT_EQ(Position("CmbBaudrate"), 3) << model;
                EXPECT_EQ(Position("CmbDataFormat"), -1) << model;
                EXPECT_TRUE(Find<QCheckBox>("CheckChecksum")->isChecked()) << model << ": as before";
            });
        }
        peer_.Reply("$0A2", "!0A3206\r");
        Open(op, "7231");
        EXPECT_EQ(op.Gui([&] { return Position("CmbSlowRate"); }), -1);
        EXPECT_EQ(op.Gui([&] { return main().OutputFormatCode; }), "02") << "engineering units of its range";
        peer_.Reply("$0A2", "!0A5106\r");
        Open(op, "7282");
        EXPECT_EQ(op.Gui([&] { return Position("CmbDataFormat"); }), -1);
    });
}

TEST_F(OddRepliesTest, ABaseUnitsRecordHasNoTypeField)
{
    peer_.Reply("$0A2", "!0A0740\r");
    Operate([&](Operator &op) {
        Open(op, "3900");
        op.Gui([&] {
            EXPECT_EQ(Position("CmbBaudrate"), 4);
            EXPECT_EQ(Text("CheckChecksum"), "Enable");
        });
        peer_.Reply("$0A2", "!0A0600\r");
        Choose(op, "_0002!!0A3900");
        op.Gui([&] {
            EXPECT_EQ(Position("CmbBaudrate"), 3);
            EXPECT_EQ(Text("CheckChecksum"), "Disable");
        });
    });
}

TEST_F(OddRepliesTest, ColdJunctionCalibrationIsForThermocouplesOnly)
{
    Operate([&](Operator &op) {
        peer_.Reply("$0A2", "!0A0E0600\r");
        Open(op, "7203");
        EXPECT_TRUE(op.Gui([&] { return vorn::IsShown(Find("CmdGCJC")); }));
        peer_.Reply("$0A2", "!0A050600\r");
        Choose(op, "_0002!!0A7203");
        EXPECT_FALSE(op.Gui([&] { return vorn::IsShown(Find("CmdGCJC")); }));
    });
}

TEST_F(OddRepliesTest, ASilentModuleLeavesThePageAndThePointer)
{
    Operate([&](Operator &op) {
        Open(op, "7206");
        op.Gui([&] {
            EXPECT_EQ(Position("CmbRange"), -1);
            EXPECT_EQ(Position("CmbDataFormat"), -1);
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
        });
        ASSERT_TRUE(op.WaitFor([&] { return peer_.Lines().size() >= 3; }, "the first poll"));
        EXPECT_EQ(peer_.Lines().at(0), "$0AF");
        EXPECT_EQ(peer_.Lines().at(1), "$0A2");
        EXPECT_EQ(peer_.Lines().at(2), "@0ADI") << "the record's refusal skips all that follows";
    });
}

TEST_F(OddRepliesTest, RefusedExtrasAreSkippedOneByOne)
{
    peer_.Reply("$0A2", "!0A080600\r");
    peer_.Reply("@0ADI", "?0A\r");
    peer_.Reply("@0ARH", "!0A+05.000\r");
    peer_.Reply("@0ARL", "?0A\r");
    Operate([&](Operator &op) {
        Open(op, "7206");
        EXPECT_EQ(op.Gui([&] { return Text("TextHighValue"); }), "+05.000");
        EXPECT_EQ(op.Gui([&] { return Text("TextLowValue"); }), "");
        EXPECT_EQ(op.Gui([&] { return Position("CmdAlarmsetting"); }), -1);
    });
}

TEST_F(OddRepliesTest, TheAlarmModeCaptionsTheOutputs)
{
    peer_.Reply("$0A2", "!0A080600\r");
    Operate([&](Operator &op) {
        peer_.Reply("@0ADI", "!0A2000\r");
        Open(op, "7206");
        op.Gui([&] {
            EXPECT_EQ(Text("CmdAlarmsetting"), "LATCH");
            EXPECT_EQ(Text("ADIO_0"), "Lo - Alarm");
            EXPECT_EQ(Text("ADIO_1"), "Hi - Alarm");
        });
        peer_.Reply("@0ADI", "!0A0000\r");
        Choose(op, "_0002!!0A7206");
        op.Gui([&] {
            EXPECT_EQ(Text("ADIO_0"), "DO &0 ");
            EXPECT_EQ(Text("ADIO_1"), "DO &1 ");
        });
    });
}

TEST_F(OddRepliesTest, AnOptionThatDoesNotExistStopsTheLoadAndFurtherClicks)
{
    peer_.Reply("$0A2", "!0A500600\r");
    peer_.Reply("$0A8", "!0A7\r");
    Operate([&](Operator &op) {
        const std::string key = "_0002!!0A7282D";
        op.Gui([&] {
            main().Nodes.Add("KeyCOM002", key, "(0A) 7282D", "vorn4ico", "vorn4icoS");
            main().Nodes.Add("KeyCOM002", "_0002!!0B7252", "(0B) 7252", "vorn4ico", "vorn4icoS");
            LeftClick(key);
        });
        op.WaitFor([&] { return peer_.Lines().size() == 3; }, "the load");
        AwaitActions(op);
        EXPECT_EQ(peer_.Lines(), (Lines{"$0AF", "$0A2", "$0A8"}));
        op.Gui([&] {
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor) << "the pointer is restored";
            EXPECT_NE(vorn::TagOf(main().Frame1), key);
            LeftClick("_0002!!0B7252");
        });
        op.Settle();
        EXPECT_EQ(peer_.Lines().size(), 3U);
        EXPECT_TRUE(op.Gui([&] { return main().PauseRefresh; }));
    });
}

TEST_F(OddRepliesTest, CounterExtrasFillTheCounterFrames)
{
    peer_.Reply("$0A2", "!0A500600\r");
    peer_.Reply("$0A8", "!0A1\r");
    peer_.Reply("$0AA", "!0A2\r");
    peer_.Reply("$0A50", "!0A0\r");
    peer_.Reply("$0A51", "!0A1\r");
    peer_.Reply("@0ADI", "!0A200\r");
    peer_.Reply("$0AB", "!0A1\r");
    peer_.Reply("$0A0H", "!0A00123\r");
    peer_.Reply("$0A0L", "!0A65000\r");
    peer_.Reply("$0A1H", "!0A24\r");
    peer_.Reply("$0A1L", "!0A08\r");
    peer_.Reply("$0A4", "!0A1\r");
    Operate([&](Operator &op) {
        Open(op, "7282D");
        op.Gui([&] {
            EXPECT_TRUE(Find<QRadioButton>("OptionLED_1")->isChecked());
            EXPECT_EQ(Text("LabDataformat"), "&Enable gate :");
            EXPECT_EQ(Text("CmbDataFormat"), "None");
            EXPECT_EQ(Text("LabFCs_0"), "STOP");
            EXPECT_EQ(Text("LabFCs_1"), "START");
            EXPECT_EQ(Text("CounterDO_0"), "HIGH");
            EXPECT_EQ(Text("CounterDO_1"), "HIHI");
            EXPECT_FALSE(Find("CounterDO_0")->isEnabled());
            EXPECT_TRUE(vorn::IsShown(Find("CmdCClearLatch")));
            EXPECT_TRUE(Find<QRadioButton>("OptionFSel_1")->isChecked());
            EXPECT_EQ(Text("TextHW"), "00123");
            EXPECT_EQ(Text("TextLW"), "65000");
            EXPECT_EQ(Text("TextHV"), "2.4");
            EXPECT_EQ(Text("TextLV"), "0.8");
            EXPECT_EQ(Text("CheckFilter"), "Enable");
            EXPECT_TRUE(Shown("FrameFCdata"));
            EXPECT_TRUE(Shown("FrameFCf"));
            EXPECT_FALSE(vorn::IsShown(Find("TextHV"))) << "the photo input has no trigger levels";
        });
    });
}

TEST_F(OddRepliesTest, ThePresetModeOfEachCounterIsABitOfOneDigit)
{
    peer_.Reply("$0A2", "!0A500600\r");
    peer_.Reply("@0ADI", "!0A200\r");
    Operate([&](Operator &op) {
        Open(op, "7282");
        op.Gui([&] {
            EXPECT_EQ(Text("CounterDO_0"), "DO &0");
            EXPECT_TRUE(Find("CounterDO_0")->isEnabled());
            EXPECT_EQ(Text("CounterDO_1"), "CH 1");
            EXPECT_FALSE(Find("CounterDO_1")->isEnabled());
        });
    });
}

TEST_F(OddRepliesTest, FrequencyUseHidesWhatCounts)
{
    peer_.Reply("$0A2", "!0A510604\r");
    Operate([&](Operator &op) {
        Open(op, "7282");
        op.Gui([&] {
            EXPECT_EQ(Text("CmbRange"), "Freguency");
            EXPECT_EQ(Text("LabDataformat"), "&Frequency gate :");
            EXPECT_EQ(Text("CmbDataFormat"), "1 sec");
            EXPECT_EQ(Text("LabFCs_0"), "Hz");
            for (const char *name :
                 {"CounterDO_0", "CounterOverflow_1", "CmdClear_0", "CmdCounterSet_1", "TextHW"})
                EXPECT_FALSE(vorn::IsShown(Find(name))) << name;
        });
    });
}

TEST_F(OddRepliesTest, LinearMappingIsCutByPosition)
{
    peer_.Reply("$0A2", "!0A080600\r");
    peer_.Reply("$0AB", "!0A1\r");
    peer_.Reply("$0A3", "!0A-05.000+10.000\r");
    peer_.Reply("$0A5", "!0A+000.00+100.00\r");
    Operate([&](Operator &op) {
        Open(op, "7212D");
        op.Gui([&] {
            EXPECT_EQ(Text("CheckLinearScaling"), "Enable");
            EXPECT_EQ(Text("TextMLowLimit"), "-05.000");
            EXPECT_EQ(Text("TextMHighLimit"), "+10.000");
            EXPECT_EQ(Text("TextSLowLimit"), "+000.00");
            EXPECT_EQ(Text("TextSHighLimit"), "+100.00");
            EXPECT_EQ(Text("LabLunit_3"), " V");
        });
    });
}

TEST_F(OddRepliesTest, TheAnalogOutputsScaleFollowsRangeAndFormat)
{
    Operate([&](Operator &op) {
        peer_.Reply("$0A2", "!0A310614\r");
        Open(op, "7231");
        op.Gui([&] {
            EXPECT_EQ(main().OutputFormatCode, "01");
            const auto *slider = Find<QSlider>("Slider1");
            EXPECT_EQ(slider->maximum(), 3200);
            EXPECT_EQ(slider->pageStep(), 200);
            EXPECT_EQ(slider->tickInterval(), 20);
            EXPECT_TRUE(vorn::IsShown(Find("CmdAO4mA")));
            EXPECT_EQ(Text("CmbSlowRate"), "2.000 mA/sec");
            EXPECT_EQ(Text("LabAOS_1"), "mA");
            EXPECT_TRUE(Shown("FrameAOut"));
        });
        peer_.Reply("$0A2", "!0A320602\r");
        Choose(op, "_0002!!0A7231");
        op.Gui([&] {
            EXPECT_EQ(main().OutputFormatCode, "22");
            EXPECT_EQ(Find<QSlider>("Slider1")->maximum(), 4095);
            EXPECT_FALSE(vorn::IsShown(Find("CmdAO20mA")));
            EXPECT_EQ(Text("LabAOS_0"), "Hex");
        });
    });
}

TEST_F(OddRepliesTest, TheChannelMaskTicksItsChannels)
{
    peer_.Reply("$0A2", "!0A080680\r");
    peer_.Reply("$0A6", "!0A81\r");
    Operate([&](Operator &op) {
        Open(op, "7221");
        op.Gui([&] {
            EXPECT_EQ(Text("CmbDataFormat"), "60 ms (50Hz)");
            for (int i = 0; i < 8; ++i)
                EXPECT_EQ(Find<QCheckBox>(("CheckAI_" + std::to_string(i)).c_str())->isChecked(),
                          i == 0 || i == 7)
                    << i;
        });
    });
}
