#include "pages/OutputScale.h"

#include "protocol/Number.h"
#include "protocol/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace vorn;

struct ScaleCase {
    const char *code;
    SliderRange range;
};

TEST(SliderRange, OfEveryOutputFormatCode)
{
    constexpr ScaleCase Cases[] = {
        {"00", {0, 4000, 200, 1, 20}},   {"01", {0, 3200, 200, 1, 20}},   {"02", {0, 5000, 500, 1, 25}},
        {"10", {0, 10000, 1000, 1, 50}}, {"11", {0, 10000, 1000, 1, 50}}, {"12", {0, 10000, 1000, 1, 50}},
        {"20", {0, 4095, 256, 1, 20}},   {"21", {0, 4095, 256, 1, 20}},   {"22", {0, 4095, 256, 1, 20}},
    };
    for (const ScaleCase &c : Cases) {
        const auto range = SliderRangeFor(c.code);
        ASSERT_TRUE(range) << c.code;
        EXPECT_EQ(range->min, c.range.min) << c.code;
        EXPECT_EQ(range->max, c.range.max) << c.code;
        EXPECT_EQ(range->largeStep, c.range.largeStep) << c.code;
        EXPECT_EQ(range->smallStep, c.range.smallStep) << c.code;
        EXPECT_EQ(range->tick, c.range.tick) << c.code;
    }
}

TEST(SliderRange, IsUnknownForOtherCodes)
{
    for (const char *code : {"", "0", "03", "30", "-1-1", "0-1"})
        EXPECT_FALSE(SliderRangeFor(code)) << code;
}

struct ValueCase {
    const char *code;
    const char *text;
    int value;
};

TEST(SliderValue, ScalesAText)
{
    constexpr ValueCase Cases[] = {
        {"00", "20.000", 4000}, {"00", "05.500", 1100},  {"00", "0", 0},       {"00", "+12.5", 2500},
        {"01", "04.000", 0},    {"01", "20.000", 3200},  {"01", "12", 1600},   {"02", "10.000", 5000},
        {"02", "2.5", 1250},    {"10", "+050.00", 5000}, {"12", "100", 10000}, {"20", "FFF", 4095},
        {"20", "0ff", 255},     {"21", "", 0},           {"00", "", 0},
    };
    for (const ValueCase &c : Cases)
        EXPECT_EQ(SliderValue(c.code, c.text), c.value) << c.code << " " << c.text;
}

TEST(SliderValue, RoundsHalvesToEven)
{
    EXPECT_EQ(SliderValue("00", "0.0025"), 0); // 0.5
    EXPECT_EQ(SliderValue("00", "0.0075"), 2); // 1.5
    EXPECT_EQ(SliderValue("00", "0.0125"), 2); // 2.5
    EXPECT_EQ(SliderValue("02", "0.001"), 0);  // 0.5
    EXPECT_EQ(SliderValue("02", "0.003"), 2);  // 1.5
    EXPECT_EQ(SliderValue("10", "0.005"), 0);  // 0.5
}

TEST(SliderValue, MayLieOutsideTheScale)
{
    EXPECT_EQ(SliderValue("01", "0"), -800);
    EXPECT_EQ(SliderValue("00", "25"), 5000);
    EXPECT_EQ(SliderValue("00", std::string(400, '9')), 2147483647);
    EXPECT_EQ(SliderValue("03", "5"), 0) << "no scale";
}

struct TextCase {
    const char *code;
    int value;
    const char *text;
};

TEST(SliderText, IsTheInverseInWireForm)
{
    constexpr TextCase Cases[] = {
        {"00", 0, "00.000"},      {"00", 1, "00.005"},   {"00", 1100, "05.500"}, {"00", 4000, "20.000"},
        {"00", 200, "01.000"},    {"01", 0, "04.000"},   {"01", 3200, "20.000"}, {"01", 1, "04.005"},
        {"02", 5000, "10.000"},   {"02", 1, "00.002"},   {"02", 2750, "05.500"}, {"10", 5000, "+050.00"},
        {"11", 10000, "+100.00"}, {"12", 50, "+000.50"}, {"10", 0, "+000.00"},   {"20", 0, "000"},
        {"20", 255, "0FF"},       {"22", 4095, "FFF"},
    };
    for (const TextCase &c : Cases)
        EXPECT_EQ(SliderText(c.code, c.value), c.text) << c.code << " " << c.value;
}

TEST(SliderText, OfTheFourToTwentyRangeBeginsAtFourMilliamperes)
{
    EXPECT_EQ(SliderText("01", 0), "04.000");
}

TEST(SliderText, ReadsBackAsTheSamePosition)
{
    for (const char *code : {"00", "01", "02", "10", "20"}) {
        const auto range = SliderRangeFor(code);
        ASSERT_TRUE(range);
        for (int value = range->min; value <= range->max; ++value)
            ASSERT_EQ(SliderValue(code, SliderText(code, value)), value) << code;
    }
}

/// Thousandths of an engineering value as two digits, point, three decimals.
std::string EngineeringText(int thousandths)
{
    return PadLeft(std::to_string(thousandths / 1000), 2, '0') + "." +
           PadLeft(std::to_string(thousandths % 1000), 3, '0');
}

struct EngineeringCase {
    const char *code;
    int last, start, step; ///< last position; thousandths at position 0 and for each further one
};

TEST(SliderText, OfEveryEngineeringPosition)
{
    constexpr EngineeringCase Cases[] = {{"00", 4000, 0, 5}, {"01", 3200, 4000, 5}, {"02", 5000, 0, 2}};
    for (const EngineeringCase &c : Cases) {
        for (int value = 0; value <= c.last; ++value) {
            const std::string text = EngineeringText(c.start + value * c.step);
            ASSERT_EQ(SliderText(c.code, value), text) << c.code << " " << value;
            ASSERT_EQ(SliderValue(c.code, text), value) << c.code << " " << text;
        }
    }
}

TEST(SliderText, OfEveryPercentPositionWhateverTheRange)
{
    for (const char *code : {"10", "11", "12"}) {
        for (int value = 0; value <= 10000; ++value) {
            const std::string text = "+" + PadLeft(std::to_string(value / 100), 3, '0') + "." +
                                     PadLeft(std::to_string(value % 100), 2, '0');
            ASSERT_EQ(SliderText(code, value), text) << code << " " << value;
            ASSERT_EQ(SliderValue(code, text), value) << code << " " << text;
        }
    }
}

TEST(SliderText, OfEveryHexadecimalPositionWhateverTheRange)
{
    for (const char *code : {"20", "21", "22"}) {
        for (int value = 0; value <= 4095; ++value) {
            const std::string text = HexByte(value / 16) + HexByte(value % 16).substr(1);
            ASSERT_EQ(SliderText(code, value), text) << code << " " << value;
            ASSERT_EQ(SliderValue(code, text), value) << code << " " << text;
        }
    }
}

} // namespace
