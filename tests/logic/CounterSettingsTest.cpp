#include "pages/CounterSettings.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace vorn;

const NodeKey Plain("_0003!!0A7282");
const NodeKey WithDisplay("_0003!!0A7282D");

TEST(CounterOfCaption, IsItsLastCharacter)
{
    EXPECT_EQ(CounterOfCaption("Counter 0"), 0);
    EXPECT_EQ(CounterOfCaption("Counter 1"), 1);
    for (const char *caption : {"Counter 2", "Counter", "", "Counter 1 "})
        EXPECT_EQ(CounterOfCaption(caption), std::nullopt) << caption;
}

struct WriteCase {
    const char *command;
    CounterField field;
    const char *text, *title;
};

struct WritesCase {
    std::vector<const char *> models;
    int counter;
    std::vector<WriteCase> writes;
};

constexpr const char *MaximumTitle = "Maximum Counter Value setting error";
constexpr const char *LimitTitle = "Alarm Limit setting error";
constexpr const char *InitialTitle = "Initial Counter Value setting error";

const std::vector<WritesCase> Writes{
    {{"7282"},
     0,
     {{"$0A30", CounterField::Maximum, "Counter 0 Maximum Value setting error !", MaximumTitle},
      {"@0APA", CounterField::Preset, "Counter 0 Alarm Limit setting error !", LimitTitle},
      {"@0AP0", CounterField::Initial, "Counter 0 Initial Value setting error !", InitialTitle}}},
    {{"7282"},
     1,
     {{"$0A31", CounterField::Maximum, "Counter 1 Maximum Value setting error !", MaximumTitle},
      {"@0ASA", CounterField::Preset, "Counter 1 Alarm Limit setting error !", LimitTitle},
      {"@0AP1", CounterField::Initial, "Counter 1 Initial Value setting error !", InitialTitle}}},
    {{"7282D", "7282N"},
     0,
     {{"$0A30", CounterField::Maximum, "Counter 0 Maximum Value setting error !", MaximumTitle},
      {"@0APA", CounterField::Preset, "Counter 0 Alarm Low Limit setting error !", LimitTitle},
      {"@0ASA", CounterField::Initial, "Counter 0 Alarm High Limit setting error !", LimitTitle}}},
    {{"7282D", "7282N"},
     1,
     {{"$0A31", CounterField::Maximum, "Counter 1 Maximum Value setting error !", MaximumTitle}}},
};

TEST(CounterWrites, OfEveryModelAndCounter)
{
    for (const WritesCase &c : Writes) {
        for (const char *model : c.models) {
            const auto writes = CounterWrites(NodeKey(std::string("_0003!!0A") + model), c.counter);
            ASSERT_EQ(writes.size(), c.writes.size()) << model << " " << c.counter;
            for (std::size_t i = 0; i < writes.size(); ++i) {
                EXPECT_EQ(writes[i].command, c.writes[i].command) << model;
                EXPECT_EQ(writes[i].field, c.writes[i].field) << model << " " << writes[i].command;
                EXPECT_EQ(writes[i].failureText, c.writes[i].text) << model;
                EXPECT_EQ(writes[i].failureTitle, c.writes[i].title) << model;
            }
        }
    }
}

TEST(CounterWrites, OfOtherModelsAndCountersAreNone)
{
    EXPECT_TRUE(CounterWrites(Plain, 2).empty());
    EXPECT_TRUE(CounterWrites(NodeKey("_0003!!0A7203"), 0).empty());
}

TEST(CounterModeCommand, OfThePresetModel)
{
    EXPECT_EQ(CounterModeCommand(Plain, 0, true, -1), "@0AEA0");
    EXPECT_EQ(CounterModeCommand(Plain, 1, true, -1), "@0AEA1");
    EXPECT_EQ(CounterModeCommand(Plain, 0, false, 2), "@0ADA0");
    EXPECT_EQ(CounterModeCommand(Plain, 1, false, 2), "@0ADA1");
}

TEST(CounterModeCommand, OfTheModelsWithADisplay)
{
    for (const char *key : {"_0003!!0A7282D", "_0003!!0A7282N"}) {
        const NodeKey node(key);
        EXPECT_EQ(CounterModeCommand(node, 0, false, 0), "@0ADA");
        EXPECT_EQ(CounterModeCommand(node, 0, false, 1), "@0AEAM");
        EXPECT_EQ(CounterModeCommand(node, 0, false, 2), "@0AEAL");
        EXPECT_EQ(CounterModeCommand(node, 0, true, -1), std::nullopt);
        EXPECT_EQ(CounterModeCommand(node, 1, true, 1), std::nullopt) << "counter 1 has no alarm";
    }
    EXPECT_EQ(CounterModeCommand(NodeKey("_0003!!0A7203"), 0, true, 1), std::nullopt);
}

struct ReadCase {
    const char *command;
    CounterReadUse use;
};

void ExpectReads(const NodeKey &node, int counter, const std::vector<ReadCase> &expected)
{
    const auto reads = CounterReads(node, counter);
    ASSERT_EQ(reads.size(), expected.size()) << node.text() << " " << counter;
    for (std::size_t i = 0; i < reads.size(); ++i) {
        EXPECT_EQ(reads[i].command, expected[i].command) << node.text();
        EXPECT_EQ(reads[i].use, expected[i].use) << node.text() << " " << reads[i].command;
    }
}

TEST(CounterReads, OfThePresetModel)
{
    using enum CounterReadUse;
    ExpectReads(
        Plain, 0,
        {{"$0A50", State}, {"$0A30", Maximum}, {"@0ADI", PresetMode}, {"@0AG0", Initial}, {"@0ARP", Preset}});
    ExpectReads(
        Plain, 1,
        {{"$0A51", State}, {"$0A31", Maximum}, {"@0ADI", PresetMode}, {"@0AG1", Initial}, {"@0ARA", Preset}});
}

TEST(CounterReads, OfTheModelsWithADisplay)
{
    using enum CounterReadUse;
    for (const char *key : {"_0003!!0A7282D", "_0003!!0A7282N"}) {
        ExpectReads(NodeKey(key), 0,
                    {{"$0A50", State},
                     {"$0A30", Maximum},
                     {"@0ADI", AlarmMode},
                     {"@0ARP", Preset},
                     {"@0ARA", Initial}});
        ExpectReads(NodeKey(key), 1, {{"$0A51", State}, {"$0A31", Maximum}, {"@0ADI", AlarmMode}});
    }
    EXPECT_TRUE(CounterReads(NodeKey("_0003!!0A7203"), 0).empty());
}

TEST(IsPresetMode, ReadsTheCountersBitOfOneDigit)
{
    for (int digit = 0; digit < 4; ++digit) {
        const std::string payload = std::to_string(digit);
        EXPECT_EQ(IsPresetMode(payload, 0), (digit & 1) != 0) << payload;
        EXPECT_EQ(IsPresetMode(payload, 1), (digit & 2) != 0) << payload;
    }
    EXPECT_TRUE(IsPresetMode("100", 0)) << "what follows the digit doesn't count";
    EXPECT_FALSE(IsPresetMode("200", 0));
    EXPECT_FALSE(IsPresetMode("", 0));
}

TEST(CounterOutput, FollowsThePresetMode)
{
    for (const int counter : {0, 1}) {
        const CounterOutput preset = CounterOutputFor(true, counter);
        EXPECT_EQ(preset.caption, "CH " + std::to_string(counter));
        EXPECT_FALSE(preset.enabled);
        const CounterOutput output = CounterOutputFor(false, counter);
        EXPECT_EQ(output.caption, "DO &" + std::to_string(counter));
        EXPECT_TRUE(output.enabled);
    }
}

TEST(CounterOutput, FollowsTheAlarmOfTheModelsWithADisplay)
{
    EXPECT_EQ(CounterOutputForAlarm('0', 0).caption, "DO &0");
    EXPECT_EQ(CounterOutputForAlarm('0', 1).caption, "DO &1");
    EXPECT_TRUE(CounterOutputForAlarm('0', 0).enabled);
    for (const char mode : {'1', '2'}) {
        EXPECT_EQ(CounterOutputForAlarm(mode, 0).caption, "HIGH");
        EXPECT_EQ(CounterOutputForAlarm(mode, 1).caption, "HIHI");
        EXPECT_FALSE(CounterOutputForAlarm(mode, 0).enabled);
        EXPECT_FALSE(CounterOutputForAlarm(mode, 1).enabled);
    }
}

TEST(CounterCaptions, OfBothKindsOfModels)
{
    const CounterCaptions preset = CounterCaptionsFor("7282");
    EXPECT_EQ(preset.mode, "Preset &mode :");
    EXPECT_EQ(preset.value, "Preset &value :");
    EXPECT_EQ(preset.highValue, "&Initial value :");
    for (const char *model : {"7282D", "7282N"}) {
        const CounterCaptions alarm = CounterCaptionsFor(model);
        EXPECT_EQ(alarm.mode, "&Alarm mode :");
        EXPECT_EQ(alarm.value, "&High alarm value :");
        EXPECT_EQ(alarm.highValue, "H&iHi alarm value :");
    }
}

TEST(CounterRun, StartsAndStops)
{
    EXPECT_EQ(CounterRunCommand(Plain, 0, true), "$0A501");
    EXPECT_EQ(CounterRunCommand(Plain, 1, false), "$0A510");
    EXPECT_EQ(CounterStateCommand(WithDisplay, 1), "$0A51");
    EXPECT_EQ(CounterStateText("0"), "STOP");
    EXPECT_EQ(CounterStateText("00"), "STOP");
    EXPECT_EQ(CounterStateText(""), "STOP");
    EXPECT_EQ(CounterStateText("1"), "START");
}

struct FilterCase {
    FilterField field;
    const char *command;
    const char *text;
};

TEST(FilterRegisters, AreWrittenLevelsFirst)
{
    constexpr FilterCase Cases[] = {
        {FilterField::HighLevel, "$0A1H", "Non-isolated High Trigger Level setting error !"},
        {FilterField::LowLevel, "$0A1L", "Non-isolated Low Trigger Level setting error !"},
        {FilterField::HighWidth, "$0A0H", "Min Input Single Width at High Level setting error !"},
        {FilterField::LowWidth, "$0A0L", "Min Input Single Width at Low Level setting error !"},
    };
    const auto &writes = FilterWrites();
    ASSERT_EQ(writes.size(), std::size(Cases));
    for (std::size_t i = 0; i < writes.size(); ++i) {
        EXPECT_EQ(writes[i].field, Cases[i].field);
        EXPECT_EQ(FilterCommandOf(Plain, writes[i]), Cases[i].command);
        EXPECT_EQ(writes[i].failureText, Cases[i].text);
    }
}

TEST(FilterRegisters, AreReadBackWidthsFirst)
{
    const std::vector<std::string> commands{"$0A0H", "$0A0L", "$0A1H", "$0A1L"};
    const std::vector<FilterField> fields{FilterField::HighWidth, FilterField::LowWidth,
                                          FilterField::HighLevel, FilterField::LowLevel};
    const auto &reads = FilterReads();
    ASSERT_EQ(reads.size(), commands.size());
    for (std::size_t i = 0; i < reads.size(); ++i) {
        EXPECT_EQ(FilterCommandOf(Plain, reads[i]), commands[i]);
        EXPECT_EQ(reads[i].field, fields[i]);
    }
}

struct TextCase {
    FilterField field;
    const char *text;
    const char *result;
};

TEST(FilterWireText, HasTwoDigitsOfALevelAndFiveOfAWidth)
{
    constexpr TextCase Cases[] = {
        {FilterField::HighLevel, "2.4", "24"},  {FilterField::LowLevel, ".5", "05"},
        {FilterField::HighLevel, "3", "03"},    {FilterField::LowLevel, "1.25", "0125"},
        {FilterField::HighWidth, "5", "00005"}, {FilterField::LowWidth, "65535", "65535"},
        {FilterField::LowWidth, "", "00000"},   {FilterField::LowWidth, "123456", "123456"},
    };
    for (const TextCase &c : Cases)
        EXPECT_EQ(FilterWireText(c.field, c.text), c.result) << c.text;
}

TEST(FilterFieldText, DividesLevelsByTen)
{
    constexpr TextCase Cases[] = {
        {FilterField::HighLevel, "24", "2.4"}, {FilterField::LowLevel, "05", "0.5"},
        {FilterField::LowLevel, "30", "3"},    {FilterField::HighWidth, "00005", "00005"},
        {FilterField::LowWidth, "", ""},
    };
    for (const TextCase &c : Cases)
        EXPECT_EQ(FilterFieldText(c.field, c.text), c.result) << c.text;
}

TEST(InputStageCommand, HoldsItsElement)
{
    EXPECT_EQ(InputStageCommand(Plain, 0), "$0AB0");
    EXPECT_EQ(InputStageCommand(Plain, 1), "$0AB1");
}

TEST(DisplaySourceOf, SelectsTheElementOfItsDigit)
{
    EXPECT_EQ(DisplaySourceOf("0"), 0);
    EXPECT_EQ(DisplaySourceOf("1"), 1);
    EXPECT_EQ(DisplaySourceOf("2"), 2);
    EXPECT_EQ(DisplaySourceOf("1Z"), 1);
}

TEST(DisplaySourceOf, LeavesTheOptionForAPayloadWithoutADigit)
{
    for (const char *payload : {"", "Z", "-1", " 1", "\xFF"})
        EXPECT_EQ(DisplaySourceOf(payload), std::nullopt) << payload;
}

TEST(DisplaySourceOf, RefusesADigitWithoutAnElement)
{
    for (const char *payload : {"3", "9", "30"}) {
        try {
            DisplaySourceOf(payload);
            ADD_FAILURE() << payload;
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.number(), 340) << payload;
        }
    }
}

} // namespace
