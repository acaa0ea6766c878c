#include "pages/LinearMapping.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace vorn;

const NodeKey Node("_0003!!0A7212D");

TEST(LinearMapping, CommandsHoldLowAndHighLimit)
{
    EXPECT_EQ(MappingSwitchCommand(Node, true), "$0AA1");
    EXPECT_EQ(MappingSwitchCommand(Node, false), "$0AA0");
    EXPECT_EQ(MappingInputCommand(Node, {"-10.000", "+10.000"}), "$0A6-10.000+10.000");
    EXPECT_EQ(MappingOutputCommand(Node, {"+000.00", "+100.00"}), "$0A7+000.00+100.00");
    EXPECT_EQ(MappingSwitchCommand(NodeKey("*0003!!057212D"), true), "$00A1");
}

struct InputCase {
    int range;
    const char *bound, *above, *wire;
};

TEST(WireInputLimits, HoldBothLimitsAgainstTheBound)
{
    constexpr InputCase Cases[] = {{0, "10", "10.01", "10.000"},  {1, "5", "5.001", "5.0000"},
                                   {2, "1", "1.001", "1.0000"},   {3, "500", "500.1", "500.00"},
                                   {4, "150", "150.1", "150.00"}, {5, "20", "20.01", "20.000"}};
    for (const InputCase &c : Cases) {
        const std::string bound = c.bound;
        const std::string wire = c.wire;
        EXPECT_EQ(WireInputLimits("7212D", c.range, {"-" + bound, bound}),
                  (LimitPair{"-" + wire, "+" + wire}))
            << c.range;
        const LimitPair highAbove{"0", c.above};
        EXPECT_EQ(WireInputLimits("7212D", c.range, highAbove), highAbove) << c.range;
        const LimitPair lowAbove{"-" + std::string(c.above), "0"};
        EXPECT_EQ(WireInputLimits("7212D", c.range, lowAbove), lowAbove) << c.range;
    }
}

TEST(WireInputLimits, OfAnUnknownRangeStayAsTyped)
{
    const LimitPair typed{"1", "2"};
    EXPECT_EQ(WireInputLimits("7212D", -1, typed), typed);
    EXPECT_EQ(WireInputLimits("7212D", 6, typed), typed);
}

struct DigitsCase {
    const char *low, *high;
    int digits;
};

TEST(OutputDigits, AreThoseOfTheLongerLimit)
{
    constexpr DigitsCase Cases[] = {
        {"0", "100", 3},      {"0", "9.75", 1}, {"-100", "5", 4}, {"-5", "5", 2},   {"1000", "2", 4},
        {"+0012.50", "3", 2}, {".5", ".75", 1}, {"0", ".5", 1},   {"-.5", ".5", 2}, {"", "", 1},
    };
    for (const DigitsCase &c : Cases)
        EXPECT_EQ(OutputDigits({c.low, c.high}), c.digits) << c.low << " " << c.high;
}

TEST(WireOutputLimits, ShareTheNumberOfDigits)
{
    EXPECT_EQ(WireOutputLimits({"0", "100"}), (LimitPair{"+000.00", "+100.00"}));
    EXPECT_EQ(WireOutputLimits({"0", "9.75"}), (LimitPair{"+0.0000", "+9.7500"}));
    EXPECT_EQ(WireOutputLimits({"-5", "5"}), (LimitPair{"-05.000", "+05.000"}));
    EXPECT_EQ(WireOutputLimits({".25", ".5"}), (LimitPair{"+0.2500", "+0.5000"}));
}

TEST(WireOutputLimits, NeverExceedSevenCharacters)
{
    for (const char *high : {"123456789", "999999999999", "0.000001"}) {
        const LimitPair wire = WireOutputLimits({"-1", high});
        EXPECT_EQ(wire.low.size(), 7U) << high;
        EXPECT_EQ(wire.high.size(), 7U) << high;
    }
}

} // namespace
