#include "pages/AlarmLimits.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace vorn
{

void PrintTo(const LimitPair &limits, std::ostream *out)
{
    *out << limits.low << " .. " << limits.high;
}

} // namespace vorn

namespace
{

using namespace vorn;

const NodeKey Module("_0003!!0A7203");
const NodeKey Channel("_0003120A3923");

TEST(AlarmModeCommand, BelongsToTheListPosition)
{
    EXPECT_EQ(AlarmModeCommand(Module, 0), "@0ADA");
    EXPECT_EQ(AlarmModeCommand(Module, 1), "@0AEAM");
    EXPECT_EQ(AlarmModeCommand(Module, 2), "@0AEAL");
    EXPECT_EQ(AlarmModeCommand(Module, -1), std::nullopt) << "nothing selected, nothing sent";
    EXPECT_EQ(AlarmModeCommand(Module, 3), std::nullopt);
    EXPECT_EQ(AlarmModeCommand(NodeKey("*0003!!057203"), 0), "@00DA");
}

TEST(AlarmCommands, HoldLimitsAndElements)
{
    EXPECT_EQ(HighLimitCommand(Module, "+15.000"), "@0AHI+15.000");
    EXPECT_EQ(LowLimitCommand(Module, "-5"), "@0ALO-5");
    EXPECT_EQ(ClearLatchCommand(Module), "@0ACA");
    EXPECT_EQ(ClearEventsCommand(Module), "@0ACE");
    EXPECT_EQ(ClearCounterCommand(Module, 0), "$0A60");
    EXPECT_EQ(ClearCounterCommand(Module, 1), "$0A61");
    EXPECT_EQ(ClearChannelCommand(Channel, ChannelClear::HighLatch), "$0AS1C2CH");
    EXPECT_EQ(ClearChannelCommand(Channel, ChannelClear::LowLatch), "$0AS1C2CL");
    EXPECT_EQ(ClearChannelCommand(Channel, ChannelClear::Count), "$0AS1C26");
}

TEST(AreLimitsInOrder, NeedsTheLowStrictlyBelowTheHigh)
{
    EXPECT_TRUE(AreLimitsInOrder({"1", "2"}));
    EXPECT_TRUE(AreLimitsInOrder({"-5", "+5"}));
    EXPECT_TRUE(AreLimitsInOrder({"", "1"}));
    EXPECT_FALSE(AreLimitsInOrder({"2", "2"})) << "equal limits are refused, too";
    EXPECT_FALSE(AreLimitsInOrder({"2.0", "2"}));
    EXPECT_FALSE(AreLimitsInOrder({"3", "2"}));
    EXPECT_FALSE(AreLimitsInOrder({"", ""}));
}

struct BoundCase {
    std::vector<const char *> models;
    int range;
    const char *bound;    ///< highest magnitude that passes
    const char *above;    ///< first one that doesn't
    const char *wire;     ///< of the bound
    const char *wireHalf; ///< of 0.5
};

const std::vector<BoundCase> Bounds{
    {{"7203", "7203D"}, 0, "15", "15.01", "15.000", "00.500"},
    {{"7203", "7203D"}, 1, "50", "50.01", "50.000", "00.500"},
    {{"7203", "7203D"}, 2, "100", "100.1", "100.00", "000.50"},
    {{"7203", "7203D"}, 3, "500", "500.1", "500.00", "000.50"},
    {{"7203", "7203D"}, 4, "1", "1.001", "1.0000", "0.5000"},
    {{"7203", "7203D"}, 5, "2.5", "2.501", "2.5000", "0.5000"},
    {{"7203", "7203D"}, 6, "20", "20.01", "20.000", "00.500"},
    {{"7206", "7212D"}, 0, "10", "10.01", "10.000", "00.500"},
    {{"7206", "7212D"}, 1, "5", "5.001", "5.0000", "0.5000"},
    {{"7206", "7212D"}, 2, "1", "1.001", "1.0000", "0.5000"},
    {{"7206", "7212D"}, 3, "500", "500.1", "500.00", "000.50"},
    {{"7206", "7212D"}, 4, "150", "150.1", "150.00", "000.50"},
    {{"7206", "7212D"}, 5, "20", "20.01", "20.000", "00.500"},
    {{"7218"}, 0, "15", "15.01", "15.000", "00.500"},
    {{"7218"}, 1, "50", "50.01", "50.000", "00.500"},
    {{"7218"}, 2, "100", "100.1", "100.00", "000.50"},
    {{"7218"}, 3, "500", "500.1", "500.00", "000.50"},
    {{"7218"}, 4, "20", "20.01", "20.000", "00.500"},
};

TEST(WireAlarmLimits, HoldSymmetricRangesAgainstTheirBound)
{
    for (const BoundCase &c : Bounds) {
        for (const char *model : c.models) {
            const std::string bound = c.bound;
            const std::string above = c.above;
            const std::string wire = c.wire;
            const std::string half = c.wireHalf;
            EXPECT_EQ(WireAlarmLimits(model, c.range, {"-" + bound, bound}),
                      (LimitPair{"-" + wire, "+" + wire}))
                << model << " " << c.range;
            EXPECT_EQ(WireAlarmLimits(model, c.range, {"-0.5", "0.5"}), (LimitPair{"-" + half, "+" + half}))
                << model << " " << c.range;
            for (const LimitPair &typed : {LimitPair{"0.5", above}, LimitPair{"-" + above, "0.5"}})
                EXPECT_EQ(WireAlarmLimits(model, c.range, typed), typed) << model << " " << c.range;
        }
    }
}

struct TemperatureCase {
    int range;
    const char *lower, *upper;
    const char *wireLower, *wireUpper; ///< of the ends
    const char *belowLower, *aboveUpper;
};

constexpr TemperatureCase Temperatures[] = {
    {7, "0", "760", "+000.00", "+760.00", "-0.1", "760.1"},
    {8, "0", "1000", "+0000.0", "+1000.0", "-0.1", "1000.1"},
    {9, "-100", "400", "-100.00", "+400.00", "-100.1", "400.1"},
    {10, "0", "1000", "+0000.0", "+1000.0", "-0.1", "1000.1"},
    {11, "500", "1750", "+0500.0", "+1750.0", "499.9", "1750.1"},
    {12, "500", "1750", "+0500.0", "+1750.0", "499.9", "1750.1"},
    {13, "500", "1800", "+0500.0", "+1800.0", "499.9", "1800.1"},
};

TEST(WireAlarmLimits, CrossTheEndsOfTemperatureRanges)
{
    for (const char *model : {"7203", "7203D"}) {
        for (const TemperatureCase &c : Temperatures) {
            // The high limit at the lower end and the low limit at the upper end just pass.
            EXPECT_EQ(WireAlarmLimits(model, c.range, {c.upper, c.lower}),
                      (LimitPair{c.wireUpper, c.wireLower}))
                << model << " " << c.range;
            EXPECT_EQ(WireAlarmLimits(model, c.range, {c.lower, c.upper}),
                      (LimitPair{c.wireLower, c.wireUpper}))
                << model << " " << c.range;
            const LimitPair highBelow{c.lower, c.belowLower};
            EXPECT_EQ(WireAlarmLimits(model, c.range, highBelow), highBelow) << model << " " << c.range;
            const LimitPair lowAbove{c.aboveUpper, c.upper};
            EXPECT_EQ(WireAlarmLimits(model, c.range, lowAbove), lowAbove) << model << " " << c.range;
        }
    }
}

TEST(WireAlarmLimits, LetAHighLimitFarAboveATemperatureRangePass)
{
    EXPECT_EQ(WireAlarmLimits("7203", 7, {"100", "5000"}), (LimitPair{"+100.00", "05000.0"}));
}

TEST(WireAlarmLimits, FailOnANegativeHighLimitAlone)
{
    const LimitPair typed{"-5", "-1"};
    EXPECT_EQ(WireAlarmLimits("7203", 7, typed), typed);
}

TEST(WireAlarmLimits, OutsideTheTableStayAsTyped)
{
    const LimitPair typed{"1", "2"};
    EXPECT_EQ(WireAlarmLimits("7203", 14, typed), typed);
    EXPECT_EQ(WireAlarmLimits("7203", -1, typed), typed);
    EXPECT_EQ(WireAlarmLimits("7206", 6, typed), typed);
    EXPECT_EQ(WireAlarmLimits("7206", 7, typed), typed) << "temperature ranges are the thermocouple models'";
    EXPECT_EQ(WireAlarmLimits("7218", 5, typed), typed);
    for (const char *model : {"7209", "7221", "7224", "7231", ""})
        EXPECT_EQ(WireAlarmLimits(model, 0, typed), typed) << model;
}

TEST(WireAlarmLimits, SurviveAnyText)
{
    EXPECT_EQ(WireAlarmLimits("7203", 0, {"", "abc"}), (LimitPair{"+00.000", "+00.000"}));
    const LimitPair huge{"0", std::string(400, '9')};
    EXPECT_EQ(WireAlarmLimits("7203", 0, huge), huge);
    EXPECT_EQ(WireAlarmLimits("7203", 7, huge).high.size(), 7U);
}

TEST(AlarmPointCaptions, ShowOutputsWhileTheAlarmIsDisabled)
{
    EXPECT_EQ(AlarmPointCaptionsFor("Disable").first, "DO &0 ");
    EXPECT_EQ(AlarmPointCaptionsFor("Disable").second, "DO &1 ");
    for (const char *mode : {"MOMENTARY", "LATCH", ""}) {
        EXPECT_EQ(AlarmPointCaptionsFor(mode).first, "Lo - Alarm") << mode;
        EXPECT_EQ(AlarmPointCaptionsFor(mode).second, "Hi - Alarm") << mode;
    }
}

} // namespace
