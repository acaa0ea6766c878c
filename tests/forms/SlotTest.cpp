#include "support/RackOfOne.h"
#include "support/RawPeer.h"

#include "shell/Controls.h"
#include "shell/DIO.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>

#include <algorithm>
#include <memory>

using Lines = std::vector<std::string>;
using Replies = std::vector<std::pair<std::string, std::string>>; // in the order of the asking

namespace
{

constexpr const char *UpdateDone = "Configuration is successful !";
constexpr const char *UpdateDoneTitle = "Configuration is successful";
constexpr const char *AlarmDone = "Alarm setting is complete !";

/// What the page of a slot or a channel asks its card, and where the refresh begins.
struct Load {
    const char *name;
    std::string model;
    char channel; ///< '!' for the slot
    Replies talk;
    std::string firstPoll;
    std::size_t behindSlot = 0; ///< lines that aren't sent when the slot doesn't tell its configuration
};

void PrintTo(const Load &load, std::ostream *out)
{
    *out << load.name;
}

std::string Key(const std::string &model, char channel = '!', char port = '3')
{
    return std::string("_000") + port + "2" + channel + "0A" + model;
}

Replies ChannelAnswers(const std::string &head, const std::string &tail, int count, const std::string &answer)
{
    Replies replies;
    for (int i = 0; i < count; ++i)
        replies.emplace_back(head + std::to_string(i) + tail, answer);
    return replies;
}

Replies Join(std::initializer_list<Replies> parts)
{
    Replies all;
    for (const Replies &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

const Replies Alarms{{"$0AS2C1AH", "!0AM\r"},        {"$0AS2C1AL", "!0AL\r"},
                     {"$0AS2C1RHU", "!0A+1.0000\r"}, {"$0AS2C1RLU", "!0A-1.0000\r"},
                     {"$0AS2C1RHC", "!0AS1CB\r"},    {"$0AS2C1RLC", "!0AS*C*\r"}};

const std::vector<Load> &Loads()
{
    static const std::vector<Load> loads{
        {"3921", "3921", '!', {{"$0AS2B", "!0A2183\r"}}, "#0AS2"},
        {"3923", "3923", '!', {{"$0AS2B", "!0A0900\r"}}, "#0AS2"},
        {"3925", "3925", '!', {{"$0AS2B", "!0A0E80\r"}}, "#0AS2"},
        {"3923H", "3923H", '!',
         Join({{{"$0AS2B", "!0A0000\r"}}, ChannelAnswers("$0AS2C", "B", 8, "!0A08FF\r")}), "#0AS2", 8},
        {"3923HHex", "3923H", '!', {{"$0AS2B", "!0A0002\r"}}, "#0AS2"},
        {"3931", "3931", '!',
         Join({{{"$0AS2B", "!0A3000\r"}}, ChannelAnswers("$0AS2C", "B", 4, "!0A3200\r")}), "$0AS2C06", 4},
        {"3962", "3962", '!', {{"$0AS2B", "!0A0202\r"}}, "#0AS2C0"},
        {"3942", "3942", '!', {{"$0AS2B", "!0A4000\r"}, {"$0AS27", "!0AF00F\r"}}, "$0AS2M", 1},
        {"3944", "3944", '!', {{"$0AS2B", "!0A4000\r"}}, "$0AS26"},
        {"3946", "3946", '!', {{"$0AS2B", "!0A4000\r"}}, "$0AS26"},
        {"3948", "3948", '!', {{"$0AS2B", "!0A4000\r"}}, "$0AS2M"},
        {"3951", "3951", '!', {{"$0AS2B", "!0A4000\r"}}, "$0AS2M"},
        {"3953", "3953", '!', {{"$0AS2B", "!0A4000\r"}}, "$0AS2M"},
        {"3957", "3957", '!', {{"$0AS2B", "!0A4000\r"}}, "$0AS2M"},
        {"3921Channel", "3921", '1', Join({{{"$0AS2B", "!0A2000\r"}, {"$0AS26", "!0A02\r"}}, Alarms}),
         "#0AS2C1"},
        {"3923Channel", "3923", '1', Join({{{"$0AS2B", "!0A0B00\r"}, {"$0AS26", "!0A02\r"}}, Alarms}),
         "#0AS2C1"},
        {"3925Channel", "3925", '1', Join({{{"$0AS2B", "!0A0E00\r"}, {"$0AS26", "!0A02\r"}}, Alarms}),
         "#0AS2C1"},
        {"3923HChannel", "3923H", '1',
         Join({{{"$0AS2B", "!0A0000\r"}},
               ChannelAnswers("$0AS2C", "B", 8, "!0A08FF\r"),
               {{"$0AS2C1B", "!0A08FF\r"}, {"$0AS26", "!0A02\r"}, {"$0AS2C1B", "!0A08FF\r"}},
               Alarms}),
         "#0AS2C1", 9}, // and the format isn't known then: no channel is asked for its unit
        {"3923HHexChannel", "3923H", '1',
         Join({{{"$0AS2B", "!0A0002\r"}, {"$0AS26", "!0A02\r"}, {"$0AS2C1B", "!0A08FF\r"}}, Alarms}),
         "#0AS2C1"},
        {"3931Channel", "3931", '1',
         Join({{{"$0AS2B", "!0A3000\r"}},
               ChannelAnswers("$0AS2C", "B", 4, "!0A3104\r"),
               {{"$0AS26", "!0A02\r"}, {"$0AS2C1B", "!0A3104\r"}}}),
         "$0AS2C16", 4},
        {"3962Channel", "3962", '1',
         Join({{{"$0AS2B", "!0A0000\r"},
                {"$0AS2B", "!0A0000\r"},
                {"$0AS20", "!0A00100\r"},
                {"$0AS2C15", "!0A1\r"},
                {"$0AS27", "!0A00010000\r"},
                {"@0AS2C1G", "!0A0000000042\r"},
                {"$0AS26", "!0A0F\r"}},
               Alarms}),
         "#0AS2C1"},
    };
    return loads;
}

class SlotTest : public ::testing::Test, public RackOfOne
{
protected:
    std::unique_ptr<RawPeer> peer_;

    void Peer() { peer_ = std::make_unique<RawPeer>(ports.Link(3)); }

    void AddPeerNode(Operator &op, const std::string &key)
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("150"));
            if (!main().Nodes.Contains("_0003!!0A3900"))
                main().Nodes.Add("KeyCOM003", "_0003!!0A3900", "(0A) 3900", "vorn5ico", "vorn5icoS");
            main().Nodes.Add("_0003!!0A3900", key, "(S2) " + vorn::NodeKey(key).model(), "vorn5cico",
                             "vorn5cicoS");
        });
    }

    /// Chooses a node on the raw peer, and gives what was sent before the refresh began.
    Lines LoadLines(Operator &op, const std::string &key, const std::string &firstPoll)
    {
        peer_->Forget();
        Choose(op, key);
        op.WaitFor([&] { return std::ranges::count(peer_->Lines(), firstPoll) > 0; }, "the refresh");
        Lines lines = peer_->Lines();
        lines.erase(std::ranges::find(lines, firstPoll), lines.end());
        return lines;
    }

    void Card(const std::string &card, const std::string &settings = {})
    {
        Rack("3900E address=0A restart=20\nslot 2 " + card + " " + settings);
    }
    /// Opens the page of the card in slot 2, or of one of its channels.
    void OpenCard(Operator &op, const std::string &model, char channel = '!')
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM002", "_0002!!0A3900", "(0A) 3900", "vorn5ico", "vorn5icoS");
            main().Nodes.Add("_0002!!0A3900", Key(model, channel, '2'), "(S2) " + model, "vorn5cico",
                             "vorn5cicoS");
        });
        Choose(op, Key(model, channel, '2'));
        rack().ClearTrace();
    }

    /// The lines from `first` on, without the ready waits: the refresh may have been in the middle of a poll,
    /// and goes on behind an update.
    Lines LinesFrom(const std::string &first, std::size_t count)
    {
        Lines lines = rack().Commands(2);
        lines.erase(lines.begin(), std::ranges::find(lines, first));
        std::erase(lines, "$0A2");
        lines.resize(std::min(lines.size(), count));
        return lines;
    }
    /// Lines that begin so and have something behind it, which their queries haven't.
    Lines WritesOf(const std::vector<std::string> &heads)
    {
        Lines writes;
        for (const std::string &line : rack().Commands(2)) {
            if (std::ranges::any_of(heads, [&](const std::string &head) {
                    return line.starts_with(head) && line.size() > head.size();
                }))
                writes.push_back(line);
        }
        return writes;
    }

    void Press(Operator &op, const char *button) { op.Click(Find(button)); }
    void SelectEntry(Operator &op, const char *list, int position)
    {
        op.Gui([&] { Find<QComboBox>(list)->setCurrentIndex(position); });
    }
    void SetText(Operator &op, const char *field, const char *text)
    {
        op.Gui([&] { Find<QLineEdit>(field)->setText(QString::fromLatin1(text)); });
    }
    void Tick(Operator &op, const char *box, bool on)
    {
        op.Gui([&] {
            auto *check = Find<QCheckBox>(box);
            if (check->isChecked() != on)
                check->click();
        });
    }
};

class SlotLoadTest : public SlotTest, public ::testing::WithParamInterface<Load>
{
};

std::string NameOf(const ::testing::TestParamInfo<Load> &info)
{
    return info.param.name;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Cards, SlotLoadTest, ::testing::ValuesIn(Loads()), NameOf);

TEST_P(SlotLoadTest, AsksForItsRegistersInOrder)
{
    const Load &load = GetParam();
    Peer();
    for (const auto &[line, reply] : load.talk)
        peer_->Reply(line, reply);
    Operate([&](Operator &op) {
        AddPeerNode(op, Key(load.model, load.channel));
        Lines asked;
        for (const auto &[line, reply] : load.talk)
            asked.push_back(line);
        EXPECT_EQ(LoadLines(op, Key(load.model, load.channel), load.firstPoll), asked);
    });
}

/// Behind a refusal, or silence, everything else is asked for all the same, but for what the slot's
/// configuration would have had the page ask for.
TEST_P(SlotLoadTest, GoesOnBehindEachRefusalAndEachSilence)
{
    const Load &load = GetParam();
    Peer();
    Operate([&](Operator &op) {
        AddPeerNode(op, Key(load.model, load.channel));
        for (const char *bad : {"?0A\r", ""}) {
            for (std::size_t step = 0; step < load.talk.size(); ++step) {
                for (const auto &[line, reply] : load.talk)
                    peer_->Reply(line, reply);
                peer_->Reply(load.talk[step].first, bad);
                Lines asked;
                for (std::size_t i = 0; i < load.talk.size(); ++i) {
                    const bool dependent = step == 0 && i > 0 && i <= load.behindSlot;
                    if (!dependent)
                        asked.push_back(load.talk[i].first);
                }
                EXPECT_EQ(LoadLines(op, Key(load.model, load.channel), load.firstPoll), asked)
                    << "refused: " << load.talk[step].first;
            }
        }
    });
}

// What the pages show.

TEST_F(SlotTest, ASensorCardShowsRangeFormatAndTime)
{
    Card("3921", "range=23 format=83");
    Operate([&](Operator &op) {
        OpenCard(op, "3921");
        op.Gui([&] {
            EXPECT_EQ(Position("CmbSRange"), 3);
            EXPECT_EQ(Position("CmbSFormat"), 1);
            EXPECT_EQ(Position("CmbSTimeSlewRate"), 1);
            EXPECT_EQ(Text("LabCHunit_0"), "Ohms");
            EXPECT_EQ(Text("LabCHunit_7"), "Ohms");
        });
    });
}

TEST_F(SlotTest, TheColdJunctionIsOfferedForThermocouplesOnly)
{
    Card("3925", "range=0F");
    Operate([&](Operator &op) {
        OpenCard(op, "3925");
        op.Gui([&] {
            EXPECT_TRUE(Shown("CmdSCJC"));
            EXPECT_EQ(Text("LabCHunit_0"), "'C");
        });
        rack().SetValue(2, "0A", "slot2.range", "05");
        Choose(op, Key("3925", '!', '2'));
        op.Gui([&] {
            EXPECT_FALSE(Shown("CmdSCJC"));
            EXPECT_EQ(Text("LabCHunit_0"), " V");
        });
    });
}

TEST_F(SlotTest, AFastCardHasAUnitForEachChannel)
{
    Card("3923H", "range0=00 range1=08 range2=0A");
    Operate([&](Operator &op) {
        OpenCard(op, "3923H");
        op.Gui([&] {
            EXPECT_EQ(Text("LabCHunit_0"), " V");
            EXPECT_EQ(Text("LabCHunit_1"), "mV");
            EXPECT_EQ(Text("LabCHunit_2"), "mA");
        });
        rack().SetValue(2, "0A", "slot2.format", "02");
        Choose(op, Key("3923H", '!', '2'));
        op.Gui([&] { EXPECT_EQ(Text("LabCHunit_2"), "HEX"); });
    });
}

TEST_F(SlotTest, AnOutputCardKeepsTheRangeOfEachChannelInATag)
{
    Card("3931", "range0=30 range1=31 range2=32");
    Operate([&](Operator &op) {
        OpenCard(op, "3931");
        op.Gui([&] {
            EXPECT_EQ(vorn::TagOf(Find("LabCHunit_0")), "00");
            EXPECT_EQ(vorn::TagOf(Find("LabCHunit_1")), "01");
            EXPECT_EQ(vorn::TagOf(Find("LabCHunit_2")), "02");
            EXPECT_EQ(Text("LabCHunit_2"), " V");
        });
    });
}

TEST_F(SlotTest, AUniversalCardTellsTheDirectionOfEachPoint)
{
    Peer();
    peer_->Reply("$0AS2B", "!0A4000\r");
    peer_->Reply("$0AS27", "!0A8205\r"); // inputs: 15, 9, 2, 0
    Operate([&](Operator &op) {
        AddPeerNode(op, Key("3942"));
        LoadLines(op, Key("3942"), "$0AS2M");
        op.Gui([&] {
            const Lines low{"DI  0", "DO  &1", "DI  2", "DO  &3", "DO  &4", "DO  &5", "DO  &6", "DO  &7"};
            const Lines high{"DO  &8",  "DI  9",   "DO  1&0", "DO  1&1",
                             "DO  1&2", "DO  1&3", "DO  1&4", "DI  15"};
            for (int i = 0; i < 8; ++i) {
                const auto at = static_cast<std::size_t>(i);
                EXPECT_EQ(Text(("DIOL_" + std::to_string(i)).c_str()), low[at]);
                EXPECT_EQ(Text(("DIOH_" + std::to_string(i)).c_str()), high[at]);
            }
        });
        peer_->Reply("$0AS27", "?0A\r");
        LoadLines(op, Key("3942"), "$0AS2M");
        op.Gui([&] {
            EXPECT_EQ(Text("DIOL_0"), "DO &0") << "as it was before anybody told";
            EXPECT_EQ(Text("DIOH_7"), "DO &0");
        });
    });
}

TEST_F(SlotTest, AChannelPageShowsItsAlarms)
{
    Card("3923", "range=08 mask=FF high5=+05.000 low5=-05.000 highenabled5=1 highmode5=L highout5=S3CB");
    Operate([&](Operator &op) {
        OpenCard(op, "3923", '5');
        op.Gui([&] {
            EXPECT_EQ(Text("LabSRangeLab"), "+/-  10  V");
            EXPECT_EQ(Text("LabChannelUnit"), " V");
            EXPECT_TRUE(Find<QCheckBox>("CheckChEnable")->isChecked());
            EXPECT_EQ(Text("CheckChEnable"), "&Channel Enable");
            EXPECT_EQ(Text("HAlarmType"), "Latch");
            EXPECT_EQ(Text("LAlarmType"), "Disable");
            EXPECT_EQ(Text("HAlarmLimit"), "+05.000");
            EXPECT_EQ(Text("LAlarmLimit"), "-05.000");
            EXPECT_TRUE(Find<QCheckBox>("CheckDOMapH")->isChecked());
            EXPECT_EQ(Text("HAlarmOutSlot"), "3");
            EXPECT_EQ(Text("HAlarmOutChannel"), "11");
            EXPECT_FALSE(Find<QCheckBox>("CheckDOMapL")->isChecked());
            EXPECT_EQ(Text("LAlarmOutSlot"), "");
            EXPECT_EQ(Text("LAlarmOutChannel"), "");
        });
    });
}

TEST_F(SlotTest, ADisabledChannelSaysSo)
{
    Card("3921", "range=20 mask=05");
    Operate([&](Operator &op) {
        OpenCard(op, "3921", '1');
        op.Gui([&] {
            EXPECT_FALSE(Find<QCheckBox>("CheckChEnable")->isChecked());
            EXPECT_EQ(Text("CheckChEnable"), "&Channel Disable");
        });
        op.Gui([&] { Find<QCheckBox>("CheckChEnable")->click(); });
        AwaitActions(op);
        op.Gui([&] { EXPECT_EQ(Text("CheckChEnable"), "&Channel Enable"); });
        EXPECT_TRUE(WritesOf({"$0AS25"}).empty()) << "the box alone writes nothing";
    });
}

TEST_F(SlotTest, ACounterChannelShowsItsItemsUnlessItMeasuresFrequency)
{
    Peer();
    for (const auto &[line, reply] : Loads().back().talk)
        peer_->Reply(line, reply);
    Operate([&](Operator &op) {
        AddPeerNode(op, Key("3962", '1'));
        LoadLines(op, Key("3962", '1'), "#0AS2C1");
        op.Gui([&] {
            EXPECT_TRUE(Shown("FrameCount"));
            EXPECT_FALSE(Shown("CheckChEnable"));
            EXPECT_EQ(Text("LabChannelUnit"), "");
            EXPECT_EQ(Text("TextFilterScale"), "00100");
            EXPECT_EQ(Text("TextCInitial"), "0000000042");
            EXPECT_TRUE(Find<QRadioButton>("OptionC_1")->isChecked());
            EXPECT_EQ(Find<vorn::DIO>("CounterChOverflow")->value(), true);
            EXPECT_EQ(Text("LAlarmType"), "Latch") << "position 1 on this card";
            EXPECT_EQ(Text("HAlarmType"), "") << "a letter that the list doesn't have";
        });
        peer_->Reply("$0AS2B", "!0A0200\r");
        peer_->Reply("$0AS2C15", "!0A0\r");
        peer_->Reply("$0AS27", "!0A00000000\r");
        LoadLines(op, Key("3962", '1'), "#0AS2C1");
        op.Gui([&] {
            EXPECT_FALSE(Shown("FrameCount"));
            EXPECT_EQ(Text("LabChannelUnit"), "Hz");
            EXPECT_TRUE(Find<QRadioButton>("OptionC_0")->isChecked());
            EXPECT_EQ(Find<vorn::DIO>("CounterChOverflow")->value(), false);
        });
    });
}

TEST_F(SlotTest, AnOutputChannelHasASliderForItsRange)
{
    Card("3931", "range1=31 format1=08 output1=12.000");
    Operate([&](Operator &op) {
        OpenCard(op, "3931", '1');
        op.Gui([&] {
            EXPECT_EQ(Position("CmbSRange"), 1);
            EXPECT_EQ(Position("CmbSTimeSlewRate"), 2);
            EXPECT_EQ(Text("LabS_time_slewrate"), "0.250 mA/sec") << "the texts follow the whole load";
            EXPECT_EQ(Text("LabSRangeLab"), "4 to 20 mA");
            EXPECT_EQ(Text("LabAOS_0"), "mA");
            EXPECT_EQ(Text("LabAOS_1"), "mA");
            EXPECT_TRUE(Shown("FrameAOut"));
            EXPECT_TRUE(Shown("CmdAO4mA"));
            EXPECT_EQ(main().OutputFormatCode, "01");
            EXPECT_EQ(Find<QSlider>("Slider1")->maximum(), 3200);
        });
        rack().SetValue(2, "0A", "slot2.range1", "32");
        Choose(op, Key("3931", '1', '2'));
        op.Gui([&] {
            EXPECT_FALSE(Shown("CmdAO4mA"));
            EXPECT_EQ(Text("LabAOS_0"), " V");
            EXPECT_EQ(Entries("CmbSTimeSlewRate").at(1), "0.0625 V/sec");
            EXPECT_EQ(Find<QSlider>("Slider1")->maximum(), 5000);
        });
    });
}

TEST_F(SlotTest, ASilentOutputChannelCantBeDriven)
{
    Peer();
    Operate([&](Operator &op) {
        AddPeerNode(op, Key("3931", '1'));
        LoadLines(op, Key("3931", '1'), "$0AS2C16");
        op.Gui([&] {
            EXPECT_FALSE(Find("Slider1")->isEnabled());
            EXPECT_FALSE(Find("CmdSendAO")->isEnabled());
        });
    });
}

// `CmdSUpdate`.

TEST_F(SlotTest, AnUpdateOfASlotWritesItsConfiguration)
{
    Card("3921", "range=20");
    Operate([&](Operator &op) {
        OpenCard(op, "3921");
        SelectEntry(op, "CmbSRange", 9);
        SelectEntry(op, "CmbSFormat", 1);
        SelectEntry(op, "CmbSTimeSlewRate", 1);
        Press(op, "CmdSUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(WritesOf({"$0AS2A"}), Lines{"$0AS2A2983"});
        EXPECT_GE(std::ranges::count(rack().Commands(2), "$0A2"), 1) << "the ready wait";
        op.Gui([&] { EXPECT_EQ(Text("CmbSRange"), "Ni 0 to 100'C"); });
        EXPECT_EQ(rack().Value(2, "0A", "slot2.range"), "29");
    });
}

TEST_F(SlotTest, AFastCardsPagesSendDifferentCommands)
{
    Card("3923H", "range5=00");
    Operate([&](Operator &op) {
        OpenCard(op, "3923H");
        SelectEntry(op, "CmbSFormat", 1);
        Press(op, "CmdSUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(WritesOf({"$0AS2A"}), Lines{"$0AS2AFF02"});
        op.Gui([&] {
            main().Nodes.Add(Key("3923H", '!', '2'), Key("3923H", '5', '2'), "(C5)", "vorn5sico",
                             "vorn5sicoS");
        });
        Choose(op, Key("3923H", '5', '2'));
        SelectEntry(op, "CmbSRange", 11);
        rack().ClearTrace();
        Press(op, "CmdSUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(WritesOf({"$0AS2C5A"}).front(), "$0AS2C5A0BFF");
        op.Gui([&] { EXPECT_EQ(Text("CmbSRange"), "0 to 20 mA"); });
    });
}

TEST_F(SlotTest, ARefusedUpdateIsToldAndThePageLoadedAnew)
{
    Card("3923", "range=08");
    Operate([&](Operator &op) {
        OpenCard(op, "3923");
        SelectEntry(op, "CmbSRange", -1);
        Press(op, "CmdSUpdate");
        op.AnswerBox("Configuration is invalid !", 16, "Configuration is invalid");
        AwaitActions(op);
        EXPECT_EQ(WritesOf({"$0AS2A"}), Lines{"$0AS2A00"});
        op.Gui([&] { EXPECT_EQ(Text("CmbSRange"), "+/-  10  V"); });
    });
}

TEST_F(SlotTest, ASecondPressWhileAnUpdateRunsIsIgnored)
{
    Card("3923", "range=08");
    Operate([&](Operator &op) {
        OpenCard(op, "3923");
        op.Gui([&] {
            Find<QPushButton>("CmdSUpdate")->click();
            Find<QPushButton>("CmdSUpdate")->click();
        });
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(WritesOf({"$0AS2A"}), Lines{"$0AS2A0800"});
    });
}

// `CmdChAlarmUpdate`.

TEST_F(SlotTest, AnAlarmUpdateWritesMaskModesLimitsAndConnectionsInOrder)
{
    Card("3923", "range=08 mask=FF");
    Operate([&](Operator &op) {
        OpenCard(op, "3923", '5');
        SelectEntry(op, "HAlarmType", 2);
        SelectEntry(op, "LAlarmType", 0);
        SetText(op, "HAlarmLimit", "+5.5");
        SetText(op, "LAlarmLimit", "-5.5");
        Tick(op, "CheckDOMapH", true);
        SetText(op, "HAlarmOutSlot", "3");
        SetText(op, "HAlarmOutChannel", "12");
        Tick(op, "CheckChEnable", false);
        rack().ClearTrace();
        Press(op, "CmdChAlarmUpdate");
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        EXPECT_EQ(LinesFrom("$0AS26", 9),
                  (Lines{"$0AS26", "$0AS25DF", "$0AS2C5AHL", "$0AS2C5AHEE", "$0AS2C5AHU+5.5",
                         "$0AS2C5AHCS3C12", "$0AS2C5ALED", "$0AS2C5ALU-5.5", "$0AS2C5ALCS*C*"}));
        AwaitActions(op);
        EXPECT_EQ(rack().Value(2, "0A", "slot2.mask"), "DF");
        EXPECT_EQ(rack().Value(2, "0A", "slot2.highout5"), "S3CC");
    });
}

TEST_F(SlotTest, EachWriteOfAnAlarmUpdateWaitsUntilTheModuleIsReady)
{
    Card("3923", "range=08 mask=FF");
    Operate([&](Operator &op) {
        OpenCard(op, "3923", '5');
        SelectEntry(op, "HAlarmType", 1);
        SelectEntry(op, "LAlarmType", 1);
        rack().ClearTrace();
        Press(op, "CmdChAlarmUpdate");
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        const Lines lines = rack().Commands(2);
        const auto isWrite = [](const std::string &line) {
            return line.starts_with("$0AS2") && line != "$0AS26" && line != "$0AS2C5S"; // but for reads
        };
        int writes = 0;
        for (std::size_t i = 0; i + 1 < lines.size() && writes < 9; ++i) {
            if (!isWrite(lines[i]))
                continue;
            ++writes;
            EXPECT_EQ(lines[i + 1], "$0A2") << "behind " << lines[i];
        }
        EXPECT_EQ(writes, 9);
        AwaitActions(op);
    });
}

TEST_F(SlotTest, AnUnknownMaskEndsAnAlarmUpdateWithoutAWord)
{
    Peer();
    for (const char *mask : {"", "?0A\r", "!0A\r"}) {
        peer_->Reply("$0AS26", mask);
        Operate([&](Operator &op) {
            AddPeerNode(op, Key("3923", '5'));
            LoadLines(op, Key("3923", '5'), "#0AS2C5");
            peer_->Forget();
            Press(op, "CmdChAlarmUpdate");
            AwaitActions(op);
            op.WaitFor([&] { return std::ranges::count(peer_->Lines(), "#0AS2C5") > 1; }, "the refresh");
            EXPECT_EQ(std::ranges::count_if(
                          peer_->Lines(), [](const std::string &line) { return line.starts_with("$0AS25"); }),
                      0);
            EXPECT_EQ(std::ranges::count(peer_->Lines(), "$0AS2C5AH"), 0) << "the page isn't loaded again";
        });
    }
}

TEST_F(SlotTest, EachFailureOfAnAlarmUpdateIsToldAndTheNextStepFollows)
{
    Peer();
    peer_->Reply("$0AS2B", "!0A0800\r");
    peer_->Reply("$0AS26", "!0A00\r");
    Operate([&](Operator &op) {
        AddPeerNode(op, Key("3923", '5'));
        LoadLines(op, Key("3923", '5'), "#0AS2C5");
        SelectEntry(op, "HAlarmType", 1);
        SelectEntry(op, "LAlarmType", 2);
        Tick(op, "CheckChEnable", true);
        peer_->Forget();
        Press(op, "CmdChAlarmUpdate");
        op.AnswerBox("Channel Enable/Disable setting error !", 16, "Channel state setting error");
        for (const char *side : {"High", "Low"}) {
            const std::string title = std::string(side) + " Alarm state setting error";
            op.AnswerBox("Alarm state setting error !", 16, title);
            op.AnswerBox("Enable/Disable Alarm setting error !", 16, title);
            op.AnswerBox("Alarm Limit setting error !", 16, title);
            op.AnswerBox("Alarm Connection setting error !", 16, title);
        }
        const Lines lines = peer_->Lines();
        const auto first = std::ranges::find(lines, "$0AS2520");
        ASSERT_NE(first, lines.end());
        EXPECT_EQ(Lines(first, lines.end()),
                  (Lines{"$0AS2520", "$0AS2C5AHM", "$0AS2C5AHEE", "$0AS2C5AHU", "$0AS2C5AHCS*C*",
                         "$0AS2C5ALL", "$0AS2C5ALEE", "$0AS2C5ALU", "$0AS2C5ALCS*C*"}));
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
    });
}

TEST_F(SlotTest, ACounterChannelIsUpdatedWithoutMaskAndModeAndWithItsItems)
{
    Card("3962", "range=00");
    Operate([&](Operator &op) {
        OpenCard(op, "3962", '1');
        SelectEntry(op, "HAlarmType", 1);
        SelectEntry(op, "LAlarmType", 0);
        SetText(op, "HAlarmLimit", "123");
        SetText(op, "LAlarmLimit", "7");
        SetText(op, "TextFilterScale", "50");
        SetText(op, "TextCInitial", "42");
        op.Gui([&] { Find<QRadioButton>("OptionC_1")->click(); });
        rack().ClearTrace();
        Press(op, "CmdChAlarmUpdate");
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        EXPECT_EQ(LinesFrom("$0AS2C1AHEE", 9), (Lines{"$0AS2C1AHEE", "$0AS2C1AHU0000000123", "$0AS2C1AHCS*C*",
                                                      "$0AS2C1ALED", "$0AS2C1ALU0000000007", "$0AS2C1ALCS*C*",
                                                      "$0AS2000050", "@0AS2C1P0000000042", "$0AS2C151"}));
        AwaitActions(op);
        EXPECT_EQ(rack().Value(2, "0A", "slot2.filter"), "00050");
    });
}

TEST_F(SlotTest, TheItemsOfACounterThatRefusesThemAreTold)
{
    Peer();
    peer_->Reply("$0AS2B", "!0A0000\r");
    for (const char *line : {"$0AS2C1AHEE", "$0AS2C1AHU0000000000", "$0AS2C1AHCS*C*", "$0AS2C1ALEE",
                             "$0AS2C1ALU0000000000", "$0AS2C1ALCS*C*", "$0A2"})
        peer_->Reply(line, "!0A\r");
    Operate([&](Operator &op) {
        AddPeerNode(op, Key("3962", '1'));
        LoadLines(op, Key("3962", '1'), "#0AS2C1");
        Press(op, "CmdChAlarmUpdate");
        op.AnswerBox("Digital filter Scale setting error !", 16, "Digital filter Scale setting error");
        op.AnswerBox("Initial Counter Value setting error !", 16, "Initial Counter Value setting error");
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
    });
}

TEST_F(SlotTest, InFrequencyUseTheCounterItemsStayUnwritten)
{
    Card("3962", "range=02");
    Operate([&](Operator &op) {
        OpenCard(op, "3962", '1');
        rack().ClearTrace();
        Press(op, "CmdChAlarmUpdate");
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
        EXPECT_TRUE(WritesOf({"$0AS20", "@0AS2C1P", "$0AS2C15"}).empty());
    });
}

TEST_F(SlotTest, WhatIsTypedWhileAnAlarmUpdateRunsStays)
{
    Card("3923", "range=08 mask=FF");
    Operate([&](Operator &op) {
        OpenCard(op, "3923", '5');
        Press(op, "CmdChAlarmUpdate");
        op.WaitFor([&] { return !WritesOf({"$0AS25"}).empty(); }, "the first write");
        op.Gui([&] {
            Find<QLineEdit>("HAlarmLimit")->clear();
            QTest::keyClicks(Find<QLineEdit>("HAlarmLimit"), QStringLiteral("+7"));
        });
        op.AnswerBox(AlarmDone, 64, AlarmDone);
        AwaitActions(op);
        op.Gui([&] { EXPECT_EQ(Text("HAlarmLimit"), "+7"); });
        EXPECT_NE(rack().Value(2, "0A", "slot2.high5"), "+07.000") << "it was typed behind the press";
    });
}

// Filters.

TEST_F(SlotTest, TheFieldsOfAChannelTakeWhatTheyCanHold)
{
    Card("3923", "range=08");
    Operate([&](Operator &op) {
        OpenCard(op, "3923", '5');
        op.Gui([&] {
            const auto typed = [&](const char *field, const char *keys) {
                auto *entry = Find<QLineEdit>(field);
                entry->clear();
                QTest::keyClicks(entry, QString::fromLatin1(keys));
                return vorn::FromQString(entry->text());
            };
            EXPECT_EQ(typed("HAlarmLimit", "-1.5.2+x"), "-1.52");
            EXPECT_EQ(typed("LAlarmLimit", "655358"), "65535");
            EXPECT_EQ(typed("HAlarmOutSlot", "5"), "");
            EXPECT_EQ(typed("HAlarmOutSlot", "4"), "4");
            EXPECT_EQ(typed("HAlarmOutChannel", "16"), "1");
            EXPECT_EQ(typed("LAlarmOutChannel", "15"), "15");
        });
    });
}

TEST_F(SlotTest, TheFilterScaleIsJudgedByTheHighLimit)
{
    Card("3962", "range=00");
    Operate([&](Operator &op) {
        OpenCard(op, "3962", '1');
        op.Gui([&] {
            auto *scale = Find<QLineEdit>("TextFilterScale");
            Find<QLineEdit>("HAlarmLimit")->setText(QStringLiteral("6500"));
            scale->clear();
            QTest::keyClicks(scale, QStringLiteral("0199999"));
            EXPECT_EQ(vorn::FromQString(scale->text()), "0") << "65001 and more is too much";
            Find<QLineEdit>("HAlarmLimit")->setText(QStringLiteral("1"));
            QTest::keyClicks(scale, QStringLiteral("99999"));
            EXPECT_EQ(vorn::FromQString(scale->text()), "099999");
        });
    });
}

// The outputs of a slot page.

TEST_F(SlotTest, ChangedOutputsAreSentAndOthersNot)
{
    Card("3931", "range0=30 range1=31 range2=32");
    Operate([&](Operator &op) {
        OpenCard(op, "3931");
        op.WaitFor([&] { return !Text("TextCH_3").empty(); }, "the refresh");
        op.Gui([&] {
            for (const auto &[field, text] : {std::pair{"TextCH_0", "12.5"}, std::pair{"TextCH_2", "7"}}) {
                auto *entry = Find<QLineEdit>(field);
                entry->selectAll();
                QTest::keyClicks(entry, QString::fromLatin1(text));
                EXPECT_EQ(vorn::TagOf(entry), "Changed");
            }
        });
        Press(op, "CmdSlotSendAO");
        AwaitActions(op);
        EXPECT_EQ(WritesOf({"#0AS2C"}), (Lines{"#0AS2C012.500", "#0AS2C207.000"}));
        op.Gui([&] { EXPECT_EQ(vorn::TagOf(Find("TextCH_0")), ""); });
        op.WaitFor([&] { return Text("TextCH_2") == "07.000"; }, "the value as the card has it");
        EXPECT_EQ(rack().Value(2, "0A", "slot2.output0"), "12.500");
    });
}

TEST_F(SlotTest, ATypedOutputStaysWhileTheOthersGoOn)
{
    Card("3931", "range0=30 range1=30");
    Operate([&](Operator &op) {
        OpenCard(op, "3931");
        op.WaitFor([&] { return !Text("TextCH_3").empty(); }, "the refresh");
        op.Gui([&] {
            Find<QLineEdit>("TextCH_2")->selectAll();
            QTest::keyClicks(Find<QLineEdit>("TextCH_2"), QStringLiteral("3."));
        });
        rack().SetValue(2, "0A", "slot2.output0", "19.000");
        op.WaitFor([&] { return Text("TextCH_0") == "19.000"; }, "the other channels");
        rack().ClearTrace();
        op.WaitFor([&] { return std::ranges::count(rack().Commands(2), "$0AS2C36") > 2; }, "two rounds");
        EXPECT_EQ(std::ranges::count(rack().Commands(2), "$0AS2C26"), 0);
        op.Gui([&] { EXPECT_EQ(Text("TextCH_2"), "3."); });
    });
}

TEST_F(SlotTest, ReturnSendsTheOutputsAndOnAnEmptyEntryGivesItBack)
{
    Card("3931", "range0=30");
    Operate([&](Operator &op) {
        OpenCard(op, "3931");
        op.WaitFor([&] { return !Text("TextCH_3").empty(); }, "the refresh");
        op.Gui([&] {
            auto *entry = Find<QLineEdit>("TextCH_0");
            entry->selectAll();
            QTest::keyClicks(entry, QStringLiteral("2"));
            QTest::keyClick(entry, Qt::Key_Return);
            QTest::keyClick(entry, Qt::Key_Return);
        });
        AwaitActions(op);
        EXPECT_EQ(WritesOf({"#0AS2C"}), Lines{"#0AS2C002.000"});
        op.Gui([&] {
            auto *entry = Find<QLineEdit>("TextCH_1");
            entry->selectAll();
            QTest::keyClick(entry, Qt::Key_Backspace);
            EXPECT_EQ(vorn::TagOf(entry), "Changed");
            QTest::keyClick(entry, Qt::Key_Return);
            EXPECT_EQ(vorn::TagOf(entry), "");
        });
        op.WaitFor([&] { return !Text("TextCH_1").empty(); }, "the refresh");
        EXPECT_EQ(WritesOf({"#0AS2C"}).size(), 1U);
    });
}

TEST_F(SlotTest, AnOutputEntryKeepsToItsRange)
{
    Card("3931", "range0=30 range1=32");
    Operate([&](Operator &op) {
        OpenCard(op, "3931");
        op.Gui([&] {
            const auto typed = [&](const char *field, const char *keys) {
                auto *entry = Find<QLineEdit>(field);
                entry->clear();
                QTest::keyClicks(entry, QString::fromLatin1(keys));
                return vorn::FromQString(entry->text());
            };
            EXPECT_EQ(typed("TextCH_0", "21"), "2");
            EXPECT_EQ(typed("TextCH_0", "20"), "20");
            EXPECT_EQ(typed("TextCH_1", "11"), "1");
            EXPECT_EQ(typed("TextCH_1", "10"), "10");
            EXPECT_EQ(typed("TextCH_0", "-1.2.3x"), "1.23");
        });
    });
}

TEST_F(SlotTest, OutputsTypedForOneSlotAreNotSentToTheNext)
{
    Rack("3900E address=0A\nslot 2 3931 range0=30\nslot 3 3931 range0=30");
    Operate([&](Operator &op) {
        OpenCard(op, "3931");
        const std::string second = "_00023!0A3931";
        op.Gui([&] { main().Nodes.Add("_0002!!0A3900", second, "(S3) 3931", "vorn5cico", "vorn5cicoS"); });
        op.Gui([&] {
            Find<QLineEdit>("TextCH_0")->selectAll();
            QTest::keyClicks(Find<QLineEdit>("TextCH_0"), QStringLiteral("19"));
        });
        Choose(op, second);
        rack().ClearTrace();
        Press(op, "CmdSlotSendAO");
        AwaitActions(op);
        EXPECT_TRUE(WritesOf({"#0AS3C", "#0AS2C"}).empty());
    });
}

// Digital cards.

TEST_F(SlotTest, ARefusedPointIsToldOnTheCardThatJudges)
{
    Peer();
    peer_->Reply("$0AS2B", "!0A4000\r");
    peer_->Reply("#0AS21301", "?0A\r");
    Operate([&](Operator &op) {
        AddPeerNode(op, Key("3948"));
        LoadLines(op, Key("3948"), "$0AS2M");
        const auto click = [&](const char *name) {
            op.Gui([&] {
                auto *point = Find<vorn::DIO>(name);
                QTest::mouseClick(point, Qt::LeftButton, {}, QPoint(14, point->height() / 2));
            });
        };
        click("DIOL_3");
        op.AnswerBox("DO is Invalid!", 16, "DO invalid");
        AwaitActions(op);
        EXPECT_EQ(std::ranges::count(peer_->Lines(), "#0AS21301"), 1);
        peer_->Forget();
        click("DIOH_3");
        AwaitActions(op);
        EXPECT_TRUE(std::ranges::none_of(peer_->Lines(), [](const std::string &line) {
            return line.starts_with("#0AS21");
        })) << "an input";
    });
}

TEST_F(SlotTest, APointOfAUniversalCardActsByItsDirection)
{
    Card("3942", "directions=00F0");
    Operate([&](Operator &op) {
        OpenCard(op, "3942");
        op.Gui([&] {
            for (const char *name : {"DIOL_4", "DIOL_0", "DIOH_2"}) {
                auto *point = Find<vorn::DIO>(name);
                QTest::mouseClick(point, Qt::LeftButton, {}, QPoint(14, point->height() / 2));
            }
        });
        AwaitActions(op);
        EXPECT_EQ(WritesOf({"#0AS21"}), (Lines{"#0AS21001", "#0AS21A01"})) << "point 4 is an input";
    });
}
