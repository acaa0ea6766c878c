#include "shell/FieldFilter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace vorn;
using enum FieldRule;

struct RuleCase {
    FieldRule rule;
    const char *name;
    std::string intoEmpty; ///< keys that an empty field takes, besides backspace
};

const std::string Digits = "0123456789";

const std::vector<RuleCase> Rules{
    {ModuleLimit, "ModuleLimit", Digits + ".+-\r"},
    {TriggerLevel, "TriggerLevel", Digits + ".\r"},
    {InputWidth, "InputWidth", Digits + "\r"},
    {MappingLimit, "MappingLimit", Digits + ".+-"},
    {ChannelLimit, "ChannelLimit", Digits + ".+-"},
    {CounterLimit, "CounterLimit", Digits},
    {OutputChannel, "OutputChannel", Digits},
    {OutputSlot, "OutputSlot", "01234"},
    {InitialCount, "InitialCount", Digits},
    {SamplingInterval, "SamplingInterval", Digits},
    {FilterScale, "FilterScale", Digits},
    {Address, "Address", Digits},
    {DecimalOutput, "DecimalOutput", Digits + "."},
    {HexOutput, "HexOutput", Digits + "ABCDEFabcdef"},
    {VoltageOutput, "VoltageOutput", Digits + ".\r"},
    {CurrentOutput, "CurrentOutput", Digits + ".\r"},
    {SignedDisplay, "SignedDisplay", Digits + ".+-\r"},
    {UnsignedDisplay, "UnsignedDisplay", Digits + ".\r"},
    {WatchdogTime, "WatchdogTime", Digits},
    {ColdJunction, "ColdJunction", Digits + ".+-"},
};

TEST(AcceptKey, IntoAnEmptyFieldTakesItsAllowedKeysOnly)
{
    for (const RuleCase &c : Rules) {
        for (int code = 0; code < 256; ++code) {
            const char key = static_cast<char>(code);
            const bool allowed = key == Backspace || c.intoEmpty.find(key) != std::string::npos;
            EXPECT_EQ(AcceptKey(c.rule, "", 0, 0, key).accepted, allowed) << c.name << " " << code;
        }
    }
}

TEST(AcceptKey, OfAConsolesAddress)
{
    EXPECT_FALSE(AcceptKey(ConsoleAddress, "", 0, 0, Backspace).accepted);
    EXPECT_TRUE(AcceptKey(ConsoleAddress, "1", 1, 0, Backspace).accepted);
    EXPECT_TRUE(AcceptKey(ConsoleAddress, "25", 2, 0, '5').accepted);
    EXPECT_FALSE(AcceptKey(ConsoleAddress, "25", 2, 0, '6').accepted);
    EXPECT_FALSE(AcceptKey(ConsoleAddress, "12", 0, 0, '3').accepted) << "312 would come of it";
    EXPECT_TRUE(AcceptKey(ConsoleAddress, "256", 0, 3, '9').accepted) << "the selection goes";
    EXPECT_FALSE(AcceptKey(ConsoleAddress, "", 0, 0, '-').accepted);
    EXPECT_FALSE(AcceptText(ConsoleAddress, "256"));
}

TEST(AcceptKey, OfAColdJunctionOffset)
{
    EXPECT_TRUE(AcceptText(ColdJunction, "-99.9"));
    EXPECT_TRUE(AcceptText(ColdJunction, "+.5"));
    EXPECT_FALSE(AcceptText(ColdJunction, "1-"));
    EXPECT_FALSE(AcceptText(ColdJunction, "--1"));
    EXPECT_FALSE(AcceptText(ColdJunction, "1.2.3"));
    EXPECT_FALSE(AcceptText(ColdJunction, "x"));
}

TEST(AcceptKey, BackspaceAlwaysPassesAndDeletesByItself)
{
    for (const RuleCase &c : Rules) {
        const FieldVerdict verdict = AcceptKey(c.rule, "123456789012", 2, 3, Backspace);
        EXPECT_TRUE(verdict.accepted) << c.name;
        EXPECT_FALSE(verdict.deletesSelection) << c.name;
    }
}

struct KeyCase {
    FieldRule rule;
    const char *text;
    char key;
    bool accepted;
};

/// Typed at the end, with nothing selected.
void ExpectTyped(const std::vector<KeyCase> &cases)
{
    for (const KeyCase &c : cases)
        EXPECT_EQ(AcceptKey(c.rule, c.text, std::string(c.text).size(), 0, c.key).accepted, c.accepted)
            << Rules[static_cast<std::size_t>(c.rule)].name << " '" << c.text << "' " << c.key;
}

TEST(AcceptKey, OfModuleLimitsAndLevelsRefusesNothingFurther)
{
    ExpectTyped({{ModuleLimit, "1.5", '.', true},
                 {ModuleLimit, "1.5", '-', true},
                 {ModuleLimit, "123456789012345", '1', true},
                 {TriggerLevel, "1.5", '.', true},
                 {TriggerLevel, "1.5", '-', false},
                 {InputWidth, "123456", '7', true},
                 {InputWidth, "1", '.', false}});
}

TEST(AcceptKey, OfMappingLimits)
{
    ExpectTyped({{MappingLimit, "1", '+', false},
                 {MappingLimit, "1", '-', false},
                 {MappingLimit, "-", '+', false},
                 {MappingLimit, "-1", '.', true},
                 {MappingLimit, "-1.5", '.', false},
                 {MappingLimit, "12345678", '9', true},
                 {MappingLimit, "123456789", '0', false},
                 {MappingLimit, "123456789", '.', false},
                 {MappingLimit, "1234567890", '1', false}});
    EXPECT_TRUE(AcceptKey(MappingLimit, "1234567890", 10, 0, Backspace).accepted);
}

TEST(AcceptKey, OfChannelLimits)
{
    ExpectTyped({{ChannelLimit, "6553", '5', true},
                 {ChannelLimit, "6553", '6', false},
                 {ChannelLimit, "-6553", '5', true},
                 {ChannelLimit, "-6553", '6', false},
                 {ChannelLimit, "65535", '.', true},
                 {ChannelLimit, "65535.", '1', false},
                 {ChannelLimit, "1.5", '.', false},
                 {ChannelLimit, "1", '-', false}});
}

TEST(AcceptKey, OfCounterLimitsAndInitialCounts)
{
    for (const FieldRule rule : {CounterLimit, InitialCount})
        ExpectTyped({{rule, "429496729", '5', true},
                     {rule, "429496729", '6', true},
                     {rule, "429496729", '7', false},
                     {rule, "4294967296", '0', false},
                     {rule, "1", '-', false}});
}

TEST(AcceptKey, OfOutputChannelAndSlot)
{
    ExpectTyped({{OutputChannel, "1", '5', true},
                 {OutputChannel, "1", '6', false},
                 {OutputChannel, "15", '0', false},
                 {OutputChannel, "0", '9', true},
                 {OutputSlot, "4", '4', true},
                 {OutputSlot, "4", '5', false}});
}

TEST(AcceptKey, OfSamplingIntervalAndFilterScale)
{
    ExpectTyped({{SamplingInterval, "6553", '5', true},
                 {SamplingInterval, "6553", '6', false},
                 {FilterScale, "6500", '0', true},
                 {FilterScale, "6500", '1', false}});
}

TEST(AcceptKey, OfTheFilterScaleIsJudgedOnTheHighLimitsText)
{
    // The caller passes the text of the other field: its own, however long, doesn't matter.
    EXPECT_EQ(TypeText(FilterScale, "64999", 5, 0, "9", "1").text, "649999");
    EXPECT_EQ(TypeText(FilterScale, "1", 1, 0, "9", "6500").text, "1");
    EXPECT_TRUE(AcceptText(FilterScale, "99999", ""));
    EXPECT_FALSE(AcceptText(FilterScale, "1", "65001"));
}

TEST(AcceptKey, OfTheAddressStaysWithin255InThreeDigits)
{
    ExpectTyped({{Address, "25", '5', true},
                 {Address, "25", '6', false},
                 {Address, "9", '9', true},
                 {Address, "99", '9', false},
                 {Address, "00", '1', true},
                 {Address, "001", '1', false}});
    EXPECT_TRUE(AcceptKey(Address, "200", 0, 3, '5').accepted) << "replaces the selected text";
    EXPECT_FALSE(AcceptKey(Address, "55", 0, 0, '3').accepted) << "355";
}

TEST(AcceptKey, OfOutputsTakesOnePoint)
{
    ExpectTyped({{DecimalOutput, "5", '.', true},
                 {DecimalOutput, "5.", '.', false},
                 {DecimalOutput, "5", '-', false},
                 {DecimalOutput, "5", Enter, true},
                 {DecimalOutput, "", Enter, false}});
    EXPECT_TRUE(AcceptKey(DecimalOutput, "5.5", 0, 3, '.').accepted) << "the point is selected";
    EXPECT_FALSE(AcceptKey(DecimalOutput, "5.5", 0, 1, '.').accepted);
}

TEST(AcceptKey, OfHexadecimalOutputsTakesThreeDigits)
{
    ExpectTyped({{HexOutput, "FF", 'F', true},
                 {HexOutput, "ff", 'f', true},
                 {HexOutput, "FFF", '0', false},
                 {HexOutput, "F", 'G', false},
                 {HexOutput, "F", '.', false},
                 {HexOutput, "F", Enter, true},
                 {HexOutput, "", Enter, false}});
    EXPECT_TRUE(AcceptKey(HexOutput, "FFF", 0, 3, '0').accepted);
}

TEST(AcceptKey, OfSlotOutputsStaysWithinTheRange)
{
    ExpectTyped({{VoltageOutput, "1", '0', true},
                 {VoltageOutput, "1", '1', false},
                 {VoltageOutput, "10", '.', true},
                 {VoltageOutput, "10.", '0', true},
                 {VoltageOutput, "10.", '1', false},
                 {VoltageOutput, "9.5", '.', false},
                 {CurrentOutput, "2", '0', true},
                 {CurrentOutput, "2", '1', false},
                 {CurrentOutput, "1", '1', true}});
    EXPECT_TRUE(AcceptKey(VoltageOutput, "10.000", 0, 6, '5').accepted);
}

TEST(AcceptKey, OfTheDisplayEntryKeepsItANumber)
{
    ExpectTyped({{SignedDisplay, "1", '+', false},
                 {SignedDisplay, "-", '5', true},
                 {SignedDisplay, "-", '-', false},
                 {SignedDisplay, "-1.5", '.', false},
                 {UnsignedDisplay, "1", '.', true},
                 {UnsignedDisplay, "1.", '.', false},
                 {UnsignedDisplay, "", '-', false},
                 {SignedDisplay, "", Enter, true}});
    EXPECT_TRUE(AcceptKey(SignedDisplay, "15", 0, 0, '-').accepted) << "in first place";
    EXPECT_FALSE(AcceptKey(SignedDisplay, "-15", 0, 0, '5').accepted) << "a sign may not come second";
    EXPECT_TRUE(AcceptKey(SignedDisplay, "-15", 0, 1, '+').accepted) << "replaces the sign";
}

TEST(AcceptKey, DeletesTheSelectionFirstWhereTheFieldDoes)
{
    for (const FieldRule rule : {MappingLimit, ChannelLimit, CounterLimit, OutputChannel}) {
        const FieldVerdict taken = AcceptKey(rule, "12", 0, 2, '1');
        EXPECT_TRUE(taken.accepted);
        EXPECT_TRUE(taken.deletesSelection);
    }
    const FieldVerdict refused = AcceptKey(OutputChannel, "125", 2, 1, '9'); // "12" and "9"
    EXPECT_FALSE(refused.accepted);
    EXPECT_TRUE(refused.deletesSelection) << "the key is dropped, the selection is gone all the same";
    EXPECT_TRUE(AcceptKey(MappingLimit, "123456789", 0, 1, '9').accepted) << "eight are left";
    EXPECT_TRUE(AcceptKey(MappingLimit, "1.5", 0, 3, '-').accepted) << "empty behind the deletion";
    EXPECT_FALSE(AcceptKey(MappingLimit, "1.5", 0, 3, 'x').deletesSelection) << "no allowed key";
    EXPECT_FALSE(AcceptKey(MappingLimit, "1.5", 3, 0, '5').deletesSelection) << "nothing is selected";
}

TEST(AcceptKey, JudgesTheTextWithTheKeyBehindItWhereverTheCursorStands)
{
    EXPECT_FALSE(AcceptKey(ChannelLimit, "6553", 0, 0, '6').accepted);
    EXPECT_FALSE(AcceptKey(InitialCount, "4294967296", 0, 10, '1').accepted)
        << "the selection stays in the sum";
    EXPECT_FALSE(AcceptKey(SamplingInterval, "6553", 0, 0, '6').accepted);
}

TEST(AcceptKey, TakesASelectionThatReachesOutOfTheText)
{
    EXPECT_TRUE(AcceptKey(Address, "25", 9, 5, '5').accepted);
    EXPECT_TRUE(AcceptKey(MappingLimit, "25", 1, 500, '5').accepted);
}

struct TextCase {
    FieldRule rule;
    const char *text;
    bool accepted;
};

TEST(AcceptText, IsWhatCouldHaveBeenTyped)
{
    const std::vector<TextCase> cases{
        {ModuleLimit, "+12.5", true},
        {ModuleLimit, "12a", false},
        {ModuleLimit, "12\r", false},
        {MappingLimit, "-100.5", true},
        {MappingLimit, "1-1", false},
        {MappingLimit, "1234567890", false},
        {ChannelLimit, "-65535", true},
        {ChannelLimit, "65536", false},
        {CounterLimit, "4294967296", true},
        {CounterLimit, "4294967297", false},
        {OutputChannel, "15", true},
        {OutputChannel, "16", false},
        {OutputSlot, "4", true},
        {OutputSlot, "5", false},
        {InitialCount, "4294967297", false},
        {SamplingInterval, "65536", false},
        {Address, "255", true},
        {Address, "256", false},
        {Address, "-1", false},
        {Address, "1.5", false},
        {DecimalOutput, "5.5", true},
        {DecimalOutput, "5.5.5", false},
        {DecimalOutput, "5,5", false},
        {HexOutput, "FFF", true},
        {HexOutput, "FFFF", false},
        {VoltageOutput, "10.001", false},
        {CurrentOutput, "20", true},
        {SignedDisplay, "-1.5", true},
        {UnsignedDisplay, "-1.5", false},
        {ModuleLimit, "", true},
        {ModuleLimit, " 5", false},
        {TriggerLevel, "2.4\n", false},
        {InputWidth, "\x08", false},
    };
    for (const TextCase &c : cases)
        EXPECT_EQ(AcceptText(c.rule, c.text), c.accepted)
            << Rules[static_cast<std::size_t>(c.rule)].name << " " << c.text;
}

struct PasteCase {
    FieldRule rule;
    const char *text;
    std::size_t start, length;
    const char *pasted;
    const char *result;
    std::size_t cursor;
    bool complete;
};

TEST(TypeText, BringsNothingInThatTypingWouldRefuse)
{
    const std::vector<PasteCase> cases{
        {ModuleLimit, "", 0, 0, "12.5 mV", "12.5", 4, false},
        {ModuleLimit, "100", 0, 3, "-5", "-5", 2, true},
        {ModuleLimit, "15", 1, 0, "00", "1005", 3, true},
        {Address, "", 0, 0, "0x1F", "01", 2, false},
        {Address, "200", 0, 3, "255", "255", 3, true},
        {Address, "2", 1, 0, "999", "29", 2, false},
        {MappingLimit, "", 0, 0, "12345678901234", "123456789", 9, false},
        {MappingLimit, "5", 0, 1, "-1.5.5", "-1.55", 5, false},
        {OutputChannel, "15", 0, 2, "99", "9", 1, false},
        {OutputChannel, "125", 2, 1, "99", "12", 2, false},
        {HexOutput, "", 0, 0, "12G3", "123", 3, false},
        {DecimalOutput, "1.5", 3, 0, ".2", "1.52", 4, false},
        {VoltageOutput, "", 0, 0, "12.5", "1.5", 3, false},
        {UnsignedDisplay, "", 0, 0, "1\r\n2\b3", "123", 3, false},
        {ModuleLimit, "5", 1, 0, "", "5", 1, true},
        {ModuleLimit, "5", 0, 1, "x", "5", 0, false},
    };
    for (const PasteCase &c : cases) {
        const FieldContent content = TypeText(c.rule, c.text, c.start, c.length, c.pasted);
        EXPECT_EQ(content.text, c.result) << c.pasted;
        EXPECT_EQ(content.cursor, c.cursor) << c.pasted;
        EXPECT_EQ(content.complete, c.complete) << c.pasted;
        EXPECT_EQ(TypeText(c.rule, c.text, c.start, c.length, c.pasted).text, c.result);
    }
}

} // namespace
