#include "protocol/PollList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace vorn;
using enum PollEffect;
using enum PollCondition;

/// A step with its bytes on the bus, one line for each channel, and the first character that counts.
struct StepCase {
    std::vector<std::string> lines;
    char expect;
    PollEffect effect;
    PollCondition condition = Always;
};

struct ListCase {
    std::vector<const char *> keys;
    std::vector<StepCase> steps;
};

std::vector<std::string> ForChannels(const char *head, int channels, const char *tail)
{
    std::vector<std::string> lines;
    for (int i = 0; i < channels; ++i)
        lines.push_back(head + std::to_string(i) + tail);
    return lines;
}

std::vector<StepCase> InputSlot(int channels)
{
    return {{{"#0AS1"}, '>', SlotReadings}, {ForChannels("$0AS1C", channels, "S"), '!', SlotAlarm}};
}

const std::vector<ListCase> Lists{
    {{"_0003!!0A7203", "_0003!!0A7203D", "_0003!!0A7206", "_1003!!0A7212D"},
     {{{"@0ADI"}, '!', AnalogPoints}, {{"@0ARE"}, '!', EventCount}, {{"#0A"}, '>', Reading}}},
    {{"_0003!!0A7209"}, {{{"#0A"}, '>', Reading}}},
    {{"_0003!!0A7218"},
     {{{"@0ADI"}, '!', StrainPoints}, {{"#0A"}, '>', Reading}, {{"$0A6"}, '!', ExcitationEntry, NotEditing}}},
    {{"_0003!!0A7221", "_0003!!0A7224", "_0003!!0A7224M"},
     {{{"$0A6"}, '!', ChannelMask}, {ForChannels("#0A", 8, ""), '>', MaskedReading, ChannelEnabled}}},
    {{"_0003!!0A7231"}, {{{"$0A8"}, '!', OutputReadBack}, {{"$0A6"}, '!', OutputEntry, NotEditing}}},
    {{"_0003!!0A7252", "_0003!!0A7258"}, {{{"$0A6"}, '!', TwoGroups}}},
    {{"_0003!!0A7256"}, {{{"$0A6"}, '!', LowGroup}}},
    {{"_0003!!0A7272"}, {{{"$0A6"}, '!', Relays}}},
    {{"_0003!!0A7282", "_0003!!0A7282D", "_0003!!0A7282N"},
     {{{"#0A0", "#0A1"}, '>', PollEffect::Count},
      {{"@0ADI"}, '!', CounterOutputs, CounterRange},
      {{"$0A07", "$0A17"}, '!', Overflow, CounterRange}}},
    {{"_00031!0A3921"}, InputSlot(3)},
    {{"_00031!0A3923", "_00031!0A3923H"}, InputSlot(8)},
    {{"_00031!0A3925"}, InputSlot(7)},
    {{"_0003120A3921", "_0003120A3923", "_0003120A3923H", "_0003120A3925"},
     {{{"#0AS1C2"}, '>', ChannelReading}, {{"$0AS1C2S"}, '!', ChannelAlarm}}},
    {{"_00031!0A3931"}, {{ForChannels("$0AS1C", 4, "6"), '!', SlotOutput, NotTyped}}},
    {{"_0003120A3931"}, {{{"$0AS1C26"}, '!', ChannelOutput}}},
    {{"_00031!0A3962"},
     {{ForChannels("#0AS1C", 4, ""), '>', SlotCount}, {ForChannels("$0AS1C", 4, "S"), '!', SlotAlarm}}},
    {{"_0003120A3962"}, {{{"#0AS1C2"}, '>', PollEffect::ChannelCount}, {{"$0AS1C2S"}, '!', ChannelAlarm}}},
    {{"_00031!0A3942", "_00031!0A3948", "_00031!0A3951", "_00031!0A3953", "_00031!0A3957"},
     {{{"$0AS1M"}, '!', SlotFaults}, {{"$0AS16"}, '!', SlotPoints}}},
    {{"_00031!0A3944", "_00031!0A3946"}, {{{"$0AS16"}, '!', SlotPoints}}},
};

TEST(PollSteps, SendTheirBytesInOrder)
{
    for (const ListCase &list : Lists) {
        for (const char *key : list.keys) {
            const NodeKey node(key);
            const auto steps = PollSteps(node);
            ASSERT_EQ(steps.size(), list.steps.size()) << key;
            for (std::size_t i = 0; i < steps.size(); ++i) {
                std::vector<std::string> lines;
                for (int channel = 0; channel < steps[i].channels; ++channel)
                    lines.push_back(Query(steps[i].reg, node, channel));
                EXPECT_EQ(lines, list.steps[i].lines) << key;
                EXPECT_EQ(RowOf(steps[i].reg).lead, list.steps[i].expect) << key << " " << lines.front();
                EXPECT_EQ(steps[i].effect, list.steps[i].effect) << key << " " << lines.front();
                EXPECT_EQ(steps[i].condition, list.steps[i].condition) << key << " " << lines.front();
            }
        }
    }
}

TEST(PollSteps, OfConsolesBaseUnitsAndUnknownModelsAreEmpty)
{
    for (const char *key :
         {"_0003!!0A3900", "_0003!!0A7216", "_0003!!0A7221P", "_0003!!0A7224P", "_0003!!0A7227",
          "_0003!!0A7234", "_0003!!0A7254", "_0003!!0A7262", "_0003!!0A7276", "_00031!0A3999",
          "_0003120A3942", "_0003!!0A3923", "_00031!0A7252", "KeyCOM003", "KeyPC", ""})
        EXPECT_TRUE(PollSteps(NodeKey(key)).empty()) << key;
}

struct ExpandCase {
    const char *pattern, *key;
    int channel;
    const char *command;
};

TEST(ExpandCommand, FillsAddressSlotAndChannels)
{
    constexpr ExpandCase Cases[] = {
        {"$AA2", "_1003!!0A7252", 0, "$0A2"},       {"#AA", "_1003!!FF7209", 0, "#FF"},
        {"#AAi", "_1003!!0A7221", 7, "#0A7"},       {"$AASsCiS", "_10035!0A3923", 6, "$0AS5C6S"},
        {"#AASsCc", "_1003570A3923", 6, "#0AS5C7"}, {"$AASsM", "_10030!0A3942", 0, "$0AS0M"},
        {"@AADI", "*1003!!057203", 0, "@00DI"},     {"$AASs6", "*10031!053946", 0, "$00S16"},
        {"%AA", "_0003!!017252", 0, "%01"},
    };
    for (const ExpandCase &c : Cases)
        EXPECT_EQ(ExpandCommand(c.pattern, NodeKey(c.key), c.channel), c.command) << c.pattern;
}

struct PlaceCase {
    const char *model;
    std::size_t high, low;
};

TEST(DigitalSlotPlaces, OfValuesAndFaults)
{
    constexpr PlaceCase Values[] = {{"3942", 4, 6}, {"3944", 4, 6}, {"3951", 4, 6}, {"3948", 4, 6},
                                    {"3946", 0, 6}, {"3953", 0, 4}, {"3957", 0, 4}};
    for (const PlaceCase &c : Values) {
        EXPECT_EQ(DigitalSlotPlaces(c.model).high, c.high) << c.model;
        EXPECT_EQ(DigitalSlotPlaces(c.model).low, c.low) << c.model;
    }
    constexpr PlaceCase Faults[] = {
        {"3942", 4, 6}, {"3951", 4, 6}, {"3948", 0, 6}, {"3953", 0, 4}, {"3957", 0, 4}};
    for (const PlaceCase &c : Faults) {
        EXPECT_EQ(FaultPlaces(c.model).high, c.high) << c.model;
        EXPECT_EQ(FaultPlaces(c.model).low, c.low) << c.model;
    }
}

TEST(FaultCaption, OverwritesTheKindLetters)
{
    EXPECT_EQ(FaultCaption("DO  &3"), "XX  &3");
    EXPECT_EQ(FaultCaption("DI  12"), "XX  12");
    EXPECT_EQ(FaultCaption("XX  &3"), "XX  &3") << "a second mark changes nothing";
    EXPECT_EQ(FaultCaption("D"), "XX");
}

TEST(SlotTexts, CutSevenCharactersAChannel)
{
    const std::string reply = ">+01.000-02.000+03.000+04.000+05.000+06.000+07.000+08.000";
    using Texts = std::vector<std::string>;
    EXPECT_EQ(SlotTexts("3921", reply, false), (Texts{"+01.000", "-02.000", "+03.000"}));
    EXPECT_EQ(SlotTexts("3925", reply, false).size(), 7U);
    EXPECT_EQ(SlotTexts("3925", reply, false)[6], "+07.000");
    for (const char *model : {"3923", "3923H"}) {
        const Texts texts = SlotTexts(model, reply, false);
        ASSERT_EQ(texts.size(), 8U) << model;
        EXPECT_EQ(texts[0], "+01.000");
        EXPECT_EQ(texts[7], "+08.000");
    }
}

TEST(SlotTexts, CutFourCharactersOfAHexadecimalChannel)
{
    const auto texts = SlotTexts("3923H", ">7FFF8000000100020003000400050006", true);
    ASSERT_EQ(texts.size(), 8U);
    EXPECT_EQ(texts[0], "7FFF");
    EXPECT_EQ(texts[1], "8000");
    EXPECT_EQ(texts[7], "0006");
}

TEST(SlotTexts, OfAShortReplyAreEmptyAtTheEnd)
{
    const auto texts = SlotTexts("3921", ">+01.000-0", false);
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[1], "-0");
    EXPECT_EQ(texts[2], "");
}

struct CountCase {
    const char *payload;
    bool frequency;
    const char *format;
    const char *text;
};

TEST(CounterText, DividesFrequenciesAndLeavesCounts)
{
    constexpr CountCase Cases[] = {
        {"0000012345", true, "Dec", "123.45"},
        {"0000010000", true, "Dec", "100"},
        {"0000000050", true, "Dec", "0.5"},
        {"0000000000", true, "Dec", "0"},
        {"00002710", true, "Hex", "64"},
        {"000000C7", true, "Hex", "1"},
        {"FFFFFFFF", true, "Hex", "28F5C28"},
        {"00000063", true, "Hex", "0"},
        {"0000012345", false, "Dec", "0000012345"},
        {"00002710", false, "Hex", "00002710"},
        {"0000012345", true, "", "0000012345"},
        {"", true, "Dec", "0"},
    };
    for (const CountCase &c : Cases)
        EXPECT_EQ(CounterText(c.payload, c.frequency, c.format), c.text) << c.payload << " " << c.format;
}

TEST(CounterText, SurvivesAnyPayload)
{
    EXPECT_EQ(CounterText("zz", true, "Hex"), "0");
    EXPECT_EQ(CounterText("zz", true, "Dec"), "0");
    EXPECT_FALSE(CounterText(std::string(400, 'F'), true, "Hex").empty());
    EXPECT_FALSE(CounterText(std::string(400, '9'), true, "Dec").empty());
}

TEST(PollSteps, OfAModuleInInitStateGoToAddress00)
{
    for (const ListCase &list : Lists) {
        for (const char *key : list.keys) {
            const NodeKey node("*" + std::string(key).substr(1));
            const auto steps = PollSteps(node);
            ASSERT_EQ(steps.size(), list.steps.size()) << key;
            for (std::size_t i = 0; i < steps.size(); ++i) {
                std::string line = list.steps[i].lines.front();
                line.replace(1, 2, "00");
                EXPECT_EQ(Query(steps[i].reg, node), line) << key;
            }
        }
    }
}

TEST(PollSteps, FollowTheSlotAndChannelDigitsOfTheKey)
{
    for (char slot = '0'; slot <= '7'; ++slot) {
        for (char channel = '0'; channel <= '3'; ++channel) {
            const NodeKey node(std::string("_1003") + slot + channel + "FF3931");
            const auto steps = PollSteps(node);
            ASSERT_EQ(steps.size(), 1U);
            EXPECT_EQ(Query(steps[0].reg, node), std::string("$FFS") + slot + "C" + channel + "6");
        }
    }
}

TEST(FaultCaption, OfEveryKindOfPoint)
{
    EXPECT_EQ(FaultCaption("DO 1&5"), "XX 1&5");
    EXPECT_EQ(FaultCaption("DO  1&5"), "XX  1&5");
    EXPECT_EQ(FaultCaption("DO &0"), "XX &0");
    EXPECT_EQ(FaultCaption(""), "XX");
}

TEST(CounterText, ShowsFrequenciesBelowOneHertz)
{
    EXPECT_EQ(CounterText("0000000005", true, "Dec"), "0.05");
    EXPECT_EQ(CounterText("0000000001", true, "Dec"), "0.01");
    EXPECT_EQ(CounterText("9999999999", true, "Dec"), "99999999.99");
    EXPECT_EQ(CounterText("00000064", true, "Hex"), "1");
    EXPECT_EQ(CounterText("0000", false, "Hex"), "0000");
}

} // namespace
