#include "consoles/ConsoleTables.h"

#include "protocol/Conversions.h"

#include "simulator/Models.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using namespace vorn;

TEST(ConsoleTables, FindTheirEntriesByCodeAndCaption)
{
    EXPECT_EQ(PositionOfCode(UniversalTypes, "0F"), 8);
    EXPECT_EQ(UniversalTypes[8].span, "+78.125mV");
    EXPECT_EQ(PositionOfCode(SensorTypes, "2D"), 13);
    EXPECT_EQ(SensorTypes[13].zero, "600ohm");
    EXPECT_EQ(PositionOfCode(SignalTypes, "07"), 6);
    EXPECT_EQ(PositionOfCode(ThermocoupleTypes, "0e"), -1) << "read in capitals";
    EXPECT_EQ(ThermocoupleTypes[2].commonCode, "0e") << "written in small letters";
    EXPECT_EQ(PositionOfCode(SensorTypes, ""), -1);
    EXPECT_EQ(PositionOfCaption(SignalTypes, "4 - 20mA"), 6);
    EXPECT_EQ(PositionOfCaption(SignalTypes, ""), -1);
    EXPECT_EQ(CaptionOfCode(SignalTypes, "0D"), "+/- 0 - 20mA");
    EXPECT_EQ(CaptionOfCode(SignalTypes, "FF"), "");
}

TEST(ConsoleTables, OfSensorsCountUpFrom20)
{
    for (std::size_t i = 0; i < SensorTypes.size(); ++i)
        EXPECT_EQ(std::stoul(std::string(SensorTypes[i].code), nullptr, 16), 0x20 + i);
}

TEST(ConsoleTables, HoldTheTypesOfTheirModels)
{
    const auto compare = [](std::string_view model, const auto &rows) {
        std::vector<std::string_view> own;
        for (const auto &row : rows)
            own.push_back(row.code);
        std::vector<std::string_view> theirs;
        for (const vornsim::RangeRow &range : vornsim::FindModule(model)->ranges)
            theirs.push_back(range.code);
        EXPECT_EQ(own, theirs) << model;
    };
    compare("7216", SensorTypes);
    compare("7221P", SignalTypes);
    compare("7224P", ThermocoupleTypes);
    compare("7227", UniversalTypes);
    compare("7234", OutputKinds);
}

struct TextCase {
    const char *text;
    const char *result;
};

TEST(ColdJunctionCounts, AreOf0009Degrees)
{
    constexpr TextCase Cases[] = {
        {"-1.8", "-00C8"},  {"1.8", "+00C8"}, {"+1.8", "+00C8"}, {"0", "+0000"},     {"-0", "-0000"},
        {"0.005", "+0001"}, {".9", "+0064"},  {"99.9", "+2B5C"}, {"-99.9", "-2B5C"}, {"589.8", "+FFFD"}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(ColdJunctionCounts(c.text, 0xFFFF), c.result) << c.text;
    for (const char *none : {"", "+", "-", ".", "x", "1x", "--1", "+-1", "600", "99999999999999"})
        EXPECT_EQ(ColdJunctionCounts(none, 0xFFFF), std::nullopt) << none;
}

TEST(SlewByte, HoldsThePositionInBits2To5)
{
    constexpr const char *On[] = {"40", "44", "48", "4C", "50", "54", "58", "5C", "60", "64", "68", "6C"};
    constexpr const char *Off[] = {"00", "04", "08", "0C", "10", "14", "18", "1C", "20", "24", "28", "2C"};
    ASSERT_EQ(SlewRates.size(), std::size(On));
    for (int i = 0; i < static_cast<int>(std::size(On)); ++i) {
        EXPECT_EQ(SlewByte(i, true), On[i]);
        EXPECT_EQ(SlewByte(i, false), Off[i]);
        EXPECT_EQ(SlewPosition(On[i]), i);
        EXPECT_EQ(SlewPosition(Off[i]), i);
    }
}

TEST(AOString, HasASignTwoDigitsAndThreeDecimals)
{
    constexpr TextCase Cases[] = {
        {"4", "+04.000"},   {"+4", "+04.000"},     {"-4", "-04.000"},     {"12", "+12.000"},
        {"4.5", "+04.500"}, {"-10.25", "-10.250"}, {"12.345", "+12.345"}, {".5", "+00.500"},
        {"5.", "+05.000"},  {"0", "+00.000"},      {"1.2345", "+01.234"}, {" 5 ", "+05.000"},
        {" -5", "-05.000"}, {"007", "+07.000"},    {"-000.5", "-00.500"}, {"0012.5", "+12.500"}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(AOString(c.text), c.result) << c.text;
}

TEST(Coefficient, IsSigned)
{
    EXPECT_EQ(CoefficientValue("00"), 0);
    EXPECT_EQ(CoefficientValue("7F"), 127);
    EXPECT_EQ(CoefficientValue("80"), -128);
    EXPECT_EQ(CoefficientValue("FF"), -1);
    EXPECT_EQ(CoefficientText(5), "005");
    EXPECT_EQ(CoefficientText(10), "010");
    EXPECT_EQ(CoefficientText(0), "000");
    EXPECT_EQ(CoefficientText(-5), "-005");
    EXPECT_EQ(CoefficientText(-120), "-120");
}

} // namespace
