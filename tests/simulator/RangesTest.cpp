#include "simulator/Ranges.h"

#include "simulator/Models.h"

#include <gtest/gtest.h>

namespace
{

using namespace vornsim;

const RangeRow &Range(std::span<const RangeRow> ranges, const char *code)
{
    const RangeRow *range = FindRange(ranges, code);
    EXPECT_NE(range, nullptr) << code;
    return *range;
}

TEST(Ranges, ValuesHaveSevenCharactersInEveryRange)
{
    for (const ModelRow &model : AllModels()) {
        for (const RangeRow &range : model.ranges) {
            if (range.digits > 4)
                continue; // counters and frequencies
            EXPECT_EQ(RangeText(range, range.low).size(), 7U) << model.name << range.code;
            EXPECT_EQ(RangeText(range, range.high).size(), 7U) << model.name << range.code;
        }
    }
}

TEST(Ranges, InputTextOfEachFormat)
{
    const RangeRow &range = Range(VoltageRanges, "08");
    EXPECT_EQ(InputText(range, DataFormat::Engineering, 5), "+05.000");
    EXPECT_EQ(InputText(range, DataFormat::Engineering, -0.25), "-00.250");
    EXPECT_EQ(InputText(range, DataFormat::Percent, 5), "+050.00");
    EXPECT_EQ(InputText(range, DataFormat::Hexadecimal, 10), "7FFF");
    EXPECT_EQ(InputText(range, DataFormat::Hexadecimal, -10), "8001");
    EXPECT_EQ(InputText(range, DataFormat::Hexadecimal, 5), "4000");
    EXPECT_EQ(InputText(Range(ResistanceRanges, "23"), DataFormat::Ohms, 100), "+138.50");
}

TEST(Ranges, WhatLiesOutsideIsTheEndOfAllValues)
{
    const RangeRow &range = Range(VoltageRanges, "0A");
    EXPECT_EQ(InputText(range, DataFormat::Engineering, 1.1), "+9999.9");
    EXPECT_EQ(InputText(range, DataFormat::Percent, -1.1), "-9999.9");
    EXPECT_EQ(InputText(range, DataFormat::Hexadecimal, 1.1), "7FFF");
    EXPECT_EQ(InputText(range, DataFormat::Hexadecimal, -1.1), "8000");
}

TEST(Ranges, LimitTextMustHaveTheRangesForm)
{
    const RangeRow &volts = Range(VoltageRanges, "08");
    EXPECT_EQ(ReadRangeText(volts, "+10.000"), 10);
    EXPECT_EQ(ReadRangeText(volts, "-09.500"), -9.5);
    for (const char *text : {"+10.001", "10.0000", "+5.0000", "+005.00", "05.000", "+05.00", "+05.00A", ""})
        EXPECT_EQ(ReadRangeText(volts, text), std::nullopt) << text;
    EXPECT_EQ(ReadRangeText(Range(ThermocoupleRanges, "0F"), "+0760.5"), 760.5);
    EXPECT_EQ(ReadRangeText(Range(ThermocoupleRanges, "0E"), "+760.00"), 760);
    EXPECT_EQ(ReadRangeText(Range(ThermocoupleRanges, "0E"), "-001.00"), std::nullopt);
}

TEST(Ranges, OutputTextOfEachFormat)
{
    const RangeRow &current = Range(OutputRanges, "31");
    EXPECT_EQ(OutputText(current, DataFormat::Engineering, 4), "04.000");
    EXPECT_EQ(OutputText(current, DataFormat::Percent, 12), "+050.00");
    EXPECT_EQ(OutputText(current, DataFormat::Hexadecimal, 20), "FFF");
    EXPECT_EQ(ReadOutputText(current, DataFormat::Engineering, "12.000"), 12);
    EXPECT_EQ(ReadOutputText(current, DataFormat::Percent, "+100.00"), 20);
    EXPECT_EQ(ReadOutputText(current, DataFormat::Hexadecimal, "000"), 4);
    EXPECT_EQ(ReadOutputText(current, DataFormat::Engineering, "03.999"), std::nullopt);
    EXPECT_EQ(ReadOutputText(current, DataFormat::Engineering, "20.001"), std::nullopt);
    EXPECT_EQ(ReadOutputText(current, DataFormat::Engineering, "5.5000"), std::nullopt);
    EXPECT_EQ(ReadOutputText(current, DataFormat::Percent, "100.00"), std::nullopt);
    EXPECT_EQ(ReadOutputText(current, DataFormat::Hexadecimal, "FFFF"), std::nullopt);
    EXPECT_EQ(ReadOutputText(current, DataFormat::Hexadecimal, "fff"), std::nullopt);
}

} // namespace
