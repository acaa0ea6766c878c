// The analog output module 7231.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

class AnalogOutput : public testing::TestWithParam<Conversation>
{
};

TEST_P(AnalogOutput, Answers)
{
    Hold(GetParam());
}

const Conversation Conversations[] = {
    {"EngineeringUnits",
     "module 7231 address=01 range=32",
     {{"$016", "!0100.000"},
      {"$018", "!0100.000"},
      {"#0105.500", "!01"},
      {"$016", "!0105.500"},
      {"$018", "!0105.500"},
      {"#0110.001", "?01"},
      {"#015.500", "?01"},
      {"#01+05.50", "?01"},
      {"#01", "?01"},
      {"$016", "!0105.500"}}},
    {"CurrentFrom4",
     "module 7231 address=01 range=31",
     {{"$016", "!0104.000"}, {"#0103.000", "?01"}, {"#0112.000", "!01"}}},
    {"Percent",
     "module 7231 address=01 range=31 format=01",
     {{"#01+050.00", "!01"},
      {"$016", "!01+050.00"},
      {"#01+100.01", "?01"},
      {"#01-000.01", "?01"},
      {"#0105.500", "?01"}}},
    {"Hexadecimal",
     "module 7231 address=01 range=30 format=02",
     {{"#01800", "!01"},
      {"$016", "!01800"},
      {"#01FFF", "!01"},
      {"#01FFFF", "?01"},
      {"#01fff", "?01"},
      {"#01FF", "?01"}}},
    {"ANewFormatShowsTheSameOutput",
     "module 7231 address=01 range=32 output=05.000 restart=0",
     {{"%0101320601", "!01"}, {"$016", "!01+050.00"}, {"%0101300600", "!01"}, {"$016", "!0105.000"}}},
    {"AnOutputOutsideANewRangeGoesToItsEnd",
     "module 7231 address=01 range=30 output=20.000 restart=0",
     {{"%0101320600", "!01"}, {"$016", "!0110.000"}, {"%0101310600", "!01"}, {"#0104.000", "!01"}}},
    {"Calibration",
     "module 7231 address=01 range=30 output=07.000 restart=0",
     {{"$010", "!01"},
      {"$011", "!01"},
      {"$01301", "!01"},
      {"$013FF", "!01"},
      {"$01300", "?01"},
      {"$013", "?01"},
      {"$014", "!01"}}},
};

INSTANTIATE_TEST_SUITE_P(Modules, AnalogOutput, testing::ValuesIn(Conversations), ByName);

TEST(AnalogOutput, TheReadBackRunsAtTheSlewRate)
{
    RackRunner rack("module 7231 address=01 range=32 format=14"); // 1 V a second
    EXPECT_EQ(rack.Ask("#0103.000"), "!01");
    EXPECT_EQ(rack.Ask("$016"), "!0103.000");
    EXPECT_EQ(rack.Ask("$018"), "!0100.000");
    rack.SetTime(1500);
    EXPECT_EQ(rack.Ask("$018"), "!0101.500");
    rack.SetTime(10000);
    EXPECT_EQ(rack.Ask("$018"), "!0103.000");
    EXPECT_EQ(rack.Ask("#0102.000"), "!01");
    rack.SetTime(10250);
    EXPECT_EQ(rack.Ask("$018"), "!0102.750");
}

TEST(AnalogOutput, CurrentRangesHaveRatesOfTheirOwn)
{
    RackRunner rack("module 7231 address=01 range=30 format=04"); // 0.125 mA a second
    EXPECT_EQ(rack.Ask("#0120.000"), "!01");
    rack.SetTime(8000);
    EXPECT_EQ(rack.Ask("$018"), "!0101.000");
}

TEST(AnalogOutput, TheStartupValueIsTheOutputWhenItWasStored)
{
    RackRunner rack("module 7231 address=01 range=30 output=07.000 restart=0");
    EXPECT_EQ(rack.Value("01", "startup"), "00.000");
    EXPECT_EQ(rack.Ask("$014"), "!01");
    EXPECT_EQ(rack.Value("01", "startup"), "07.000");
    EXPECT_EQ(rack.Ask("$010"), "!01");
    EXPECT_EQ(rack.Value("01", "calibration"), "4mA");
}

} // namespace
