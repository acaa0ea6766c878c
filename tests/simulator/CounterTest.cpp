// The counter modules and the counter card.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

class Counter : public testing::TestWithParam<Conversation>
{
};

TEST_P(Counter, Answers)
{
    Hold(GetParam());
}

const std::vector<Exchange> SharedExchanges{
    {"#010", ">0000000A"},    {"#011", ">00000014"},    {"#012", "?01"},          {"#01", "?01"},
    {"$0150", "!011"},        {"$01500", "!01"},        {"$0150", "!010"},        {"$01511", "!01"},
    {"$0151", "!011"},        {"$01502", "?01"},        {"$0152", "?01"},         {"$0130", "!01FFFFFFFF"},
    {"$01300000FFFF", "!01"}, {"$0130", "!010000FFFF"}, {"$0131", "!01FFFFFFFF"}, {"$0130FFFF", "?01"},
    {"$01300000FFfF", "?01"}, {"$0107", "!010"},        {"$0117", "!010"},        {"$0127", "?01"},
    {"$0160", "!01"},         {"#010", ">00000000"},    {"$0162", "?01"},         {"$01A", "!012"},
    {"$01A0", "!01"},         {"$01A", "!010"},         {"$01A3", "?01"},         {"$01B", "!010"},
    {"$01B1", "!01"},         {"$01B", "!011"},         {"$01B2", "?01"},         {"$014", "!010"},
    {"$0141", "!01"},         {"$014", "!011"},         {"$0142", "?01"},         {"$010H", "!0100002"},
    {"$010H00123", "!01"},    {"$010H", "!0100123"},    {"$010L", "!0100002"},    {"$010L65535", "!01"},
    {"$010L", "!0165535"},    {"$010L65536", "?01"},    {"$010L123", "?01"},      {"$011H", "!0124"},
    {"$011H30", "!01"},       {"$011H", "!0130"},       {"$011L", "!0108"},       {"$011L05", "!01"},
    {"$011L", "!0105"},       {"$011L0125", "?01"},     {"$011H51", "?01"},       {"$011H2.", "?01"},
    {"@01DO03", "!01"},       {"@01DI", "!01003"},      {"@01DO04", "?01"},       {"%0101510604", "!01"},
    {"#010", ">000003E8"},    {"#011", ">00000032"},
};

std::string SharedRack(const std::string &model)
{
    return "module " + model +
           " address=01 restart=0 count0=10 count1=20 rate=0 frequency0=1000 frequency1=50";
}

const Conversation Conversations[] = {
    {"Shared7282", SharedRack("7282"), SharedExchanges},
    {"Shared7282D", SharedRack("7282D"), SharedExchanges},
    {"Shared7282N", SharedRack("7282N"), SharedExchanges},
    {"PresetsOf7282",
     "module 7282 address=01 restart=0 rate=0 count0=256 count1=1 preset0=00000100",
     {{"@01G0", "!0100000000"}, {"@01P00000000A", "!01"}, {"@01G0", "!010000000A"}, {"@01G1", "!0100000000"},
      {"@01P100000014", "!01"}, {"@01G1", "!0100000014"}, {"@01RP", "!0100000100"}, {"@01RA", "!010000FFFF"},
      {"@01PA00000101", "!01"}, {"@01SA00000001", "!01"}, {"@01RP", "!0100000101"}, {"@01RA", "!0100000001"},
      {"@01PA101", "?01"},      {"@01EA0", "!01"},        {"@01DI", "!01100"},      {"@01EA1", "!01"},
      {"@01DI", "!01302"},      {"@01PA00000100", "!01"}, {"@01DI", "!01303"},      {"@01DA1", "!01"},
      {"@01DI", "!01101"},      {"$0160", "!01"},         {"#010", ">0000000A"},    {"@01EA2", "?01"},
      {"@01EAM", "?01"},        {"@01DA", "?01"},         {"@01CA", "?01"},         {"$018", "?01"},
      {"$0182", "?01"},         {"$019123.000", "?01"}}},
    {"AlarmOf7282D",
     "module 7282D address=01 restart=0 rate=0 count0=256",
     {{"@01PA00000100", "!01"},
      {"@01SA00000200", "!01"},
      {"@01RP", "!0100000100"},
      {"@01RA", "!0100000200"},
      {"@01DI", "!01000"},
      {"@01EAM", "!01"},
      {"@01DI", "!01101"},
      {"@01DO02", "!01"},
      {"@01DI", "!01101"},
      {"$0160", "!01"},
      {"@01DI", "!01100"},
      {"@01DA", "!01"},
      {"@01DI", "!01000"},
      {"@01G0", "?01"},
      {"@01P000000000", "?01"},
      {"@01EA0", "?01"},
      {"@01DA1", "?01"}}},
    {"LatchOf7282N",
     "module 7282N address=01 restart=0 rate=0 count0=512 preset0=00000100 preset1=00000200",
     {{"@01EAL", "!01"},
      {"@01DI", "!01203"},
      {"$0160", "!01"},
      {"@01DI", "!01203"},
      {"@01CA", "!01"},
      {"@01DI", "!01200"}}},
    {"Card3962",
     "module 3900 address=01 restart=0\nslot 2 3962 rate=0 count0=1234 count3=255 frequency1=50.25",
     {{"$01S2B", "!010000"},
      {"#01S2C0", ">0000001234"},
      {"$01S2A0102", "!01"},
      {"$01S2B", "!010102"},
      {"#01S2C3", ">000000FF"},
      {"#01S2C4", "?01"},
      {"#01S2", "?01"},
      {"$01S2A0200", "!01"},
      {"#01S2C1", ">0000005025"},
      {"$01S2A0202", "!01"},
      {"#01S2C1", ">000013A1"},
      {"$01S2A0300", "?01"},
      {"$01S2A0001", "?01"},
      {"$01S2A00", "?01"},
      {"$01S26", "!010F"},
      {"$01S2503", "?01"},
      {"$01S27", "!0100000000"},
      {"$01S20", "!0100100"},
      {"$01S200050", "?01"},
      {"$01S2000050", "!01"},
      {"$01S20", "!0100050"},
      {"$01S2065536", "?01"},
      {"$01S2C15", "!011"},
      {"$01S2C150", "!01"},
      {"$01S2C15", "!010"},
      {"$01S2C152", "?01"},
      {"@01S2C0G", "!010000000000"},
      {"@01S2C0P0000000042", "!01"},
      {"@01S2C0G", "!010000000042"},
      {"@01S2C0P42", "?01"},
      {"@01S2C0P4294967296", "?01"},
      {"$01S2A0000", "!01"},
      {"$01S2C06", "!01"},
      {"#01S2C0", ">0000000042"}}},
};

INSTANTIATE_TEST_SUITE_P(Modules, Counter, testing::ValuesIn(Conversations), ByName);

TEST(Counter, CountsWhileItRuns)
{
    RackRunner rack("module 7282 address=01 rate0=100 rate1=3");
    rack.SetTime(2000);
    EXPECT_EQ(rack.Ask("#010"), ">000000C8");
    EXPECT_EQ(rack.Ask("#011"), ">00000006");
    EXPECT_EQ(rack.Ask("$01500"), "!01");
    rack.SetTime(4000);
    EXPECT_EQ(rack.Ask("#010"), ">000000C8");
    EXPECT_EQ(rack.Ask("#011"), ">0000000C");
    EXPECT_EQ(rack.Ask("$01501"), "!01");
    rack.SetTime(5000);
    EXPECT_EQ(rack.Ask("#010"), ">0000012C");
}

TEST(Counter, OverflowsAtItsGreatestValue)
{
    RackRunner rack("module 7282 address=01 rate0=100 max0=0000000F initial0=00000005 count0=5");
    rack.SetTime(100);
    EXPECT_EQ(rack.Ask("#010"), ">0000000F");
    EXPECT_EQ(rack.Ask("$0107"), "!010");
    rack.SetTime(110);
    EXPECT_EQ(rack.Ask("#010"), ">00000005");
    EXPECT_EQ(rack.Ask("$0107"), "!011");
    EXPECT_EQ(rack.Ask("$0117"), "!010");
    EXPECT_EQ(rack.Ask("$0160"), "!01");
    EXPECT_EQ(rack.Ask("$0107"), "!010");
}

TEST(Counter, AGateHoldsThePulsesBack)
{
    RackRunner rack("module 7282N address=01 rate=100 gateinput=1");
    EXPECT_EQ(rack.Ask("$01A0"), "!01"); // open while the gate's input is low
    rack.SetTime(1000);
    EXPECT_EQ(rack.Ask("#010"), ">00000000");
    EXPECT_EQ(rack.Ask("$01A1"), "!01"); // open while it is high
    rack.SetTime(2000);
    EXPECT_EQ(rack.Ask("#010"), ">00000064");
    rack.Set("01", "gateinput", "0");
    rack.SetTime(3000);
    EXPECT_EQ(rack.Ask("#010"), ">00000064");
    EXPECT_EQ(rack.Ask("$01A2"), "!01"); // no gate
    rack.SetTime(4000);
    EXPECT_EQ(rack.Ask("#010"), ">000000C8");
}

TEST(Counter, TheCardCountsAndOverflows)
{
    RackRunner rack("module 3900 address=01\nslot 0 3962 rate=1 rate1=2 count1=4294967295");
    rack.SetTime(1000);
    EXPECT_EQ(rack.Ask("#01S0C0"), ">0000000001");
    EXPECT_EQ(rack.Ask("#01S0C1"), ">0000000001");
    EXPECT_EQ(rack.Ask("$01S07"), "!0100010000");
    EXPECT_EQ(rack.Ask("$01S0C16"), "!01");
    EXPECT_EQ(rack.Ask("$01S07"), "!0100000000");
    EXPECT_EQ(rack.Value("01", "slot0.count0"), "1");
}

TEST(Counter, LiveFrequencyMovesWithTheClock)
{
    RackRunner rack("module 7282 address=01 range=51");
    EXPECT_EQ(rack.Ask("#010"), ">000003E8"); // 1000 Hz
    rack.SetTime(5000);
    EXPECT_EQ(rack.Ask("#010"), ">000005DC"); // 1500 Hz
}

} // namespace
