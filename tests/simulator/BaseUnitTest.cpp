// Base units and their analog cards.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

class BaseUnit : public testing::TestWithParam<Conversation>
{
};

TEST_P(BaseUnit, Answers)
{
    Hold(GetParam());
}

const Conversation Conversations[] = {
    {"SlotsOf3900E",
     "module 3900E address=0A slots=3921,3923,3923H,3925,3931,3942,3944,3946",
     {{"$0AT", "!0A2123"
               "3H"
               "2531"
               "4244"
               "46"},
      {"$0AM", "!0AVORN3900E"}}},
    {"RemainingCodes",
     "module 3900E address=0A slots=3948,3951,3953,3957,3962,-,-,3962",
     {{"$0AT", "!0A4851535762FFFF62"},
      {"$0AS5B", "?0A"},
      {"$0AS8B", "?0A"},
      {"$0ASXB", "?0A"},
      {"$0AS", "?0A"}}},
    {"FiveSlotsOf3900",
     "module 3900 address=0A slots=-,3953",
     {{"$0AT", "!0AFF53FFFFFF"}, {"$0AS56", "?0A"}}},
    {"NoSlotsOnModules", "module 7252 address=0A", {{"$0AT", "?0A"}, {"$0AS06", "?0A"}}},
    {"Card3921",
     "module 3900 address=01 restart=0\nslot 0 3921 range=22 value=100 value2=50",
     {{"$01S0B", "!012200"},
      {"#01S0", ">+100.00+100.00+050.00"},
      {"#01S0C2", ">+050.00"},
      {"#01S0C3", "?01"},
      {"$01S0A2983", "!01"},
      {"$01S0B", "!012983"},
      {"#01S0C0", ">+138.50"},
      {"$01S0A2A00", "?01"},
      {"$01S0A2001", "?01"},
      {"$01S0A2040", "?01"},
      {"$01S0A20", "?01"},
      {"$01S06", "!0107"},
      {"$01S0505", "!01"},
      {"$01S06", "!0105"},
      {"#01S0", ">+138.50       +119.25"},
      {"#01S0C1", "?01"},
      {"$01S0508", "?01"},
      {"$01S00", "!01"},
      {"$01S01", "!01"},
      {"$01S0C10", "!01"},
      {"$01S0C11", "!01"},
      {"$01S03", "?01"}}},
    {"Card3923",
     "module 3900 address=01 restart=0\nslot 4 3923 value=1",
     {{"$01S4B", "!010800"},
      {"#01S4", ">+01.000+01.000+01.000+01.000+01.000+01.000+01.000+01.000"},
      {"$01S4A0A80", "!01"},
      {"$01S4B", "!010A80"},
      {"#01S4C7", ">+1.0000"},
      {"$01S4A0E00", "?01"},
      {"$01S4A0802", "?01"},
      {"$01S46", "!01FF"}}},
    {"Card3923H",
     "module 3900 address=01 restart=0\nslot 0 3923H value=5 value1=2.5 mask=07 range2=0A",
     {{"$01S0B", "!010000"},
      {"$01S0C2B", "!010A00"},
      {"#01S0", ">+05.000+02.500+05.000                                   "},
      {"$01S0AFF02", "!01"},
      {"$01S0B", "!010002"},
      {"#01S0", ">400020002000                    "},
      {"#01S0C1", ">2000"},
      {"$01S0AFF03", "?01"},
      {"$01S0A0C02", "?01"},
      {"$01S0A0102", "!01"}, // a range that is possible is let go
      {"$01S0B", "!010002"},
      {"$01S0C1A03FF", "!01"},
      {"$01S0C1B", "!010302"},
      {"#01S0C1", ">4000"},
      {"$01S0C1A0CFF", "?01"},
      {"$01S0C1A0303", "?01"},
      {"$01S0C1A0400", "!01"},
      {"$01S0C1B", "!010402"},
      {"$01S0C8A03FF", "?01"}}},
    {"Card3925",
     "module 3900 address=01 restart=0\nslot 0 3925 value=500",
     {{"$01S0B", "!010F00"},
      {"#01S0", ">+0500.0+0500.0+0500.0+0500.0+0500.0+0500.0+0500.0"},
      {"#01S0C7", "?01"},
      {"$01S0A1580", "!01"},
      {"$01S0B", "!011580"},
      {"$01S0A1600", "?01"},
      {"$01S03", ">+0025.0"},
      {"$01S09+0064", "!01"},
      {"$01S03", ">+0025.9"},
      {"$01S06", "!017F"},
      {"$01S0580", "?01"}}},
    {"Card3931",
     "module 3900 address=01 restart=0\nslot 0 3931 range1=31 range2=32",
     {{"$01S0C0B", "!013000"},   {"$01S0C1B", "!013100"},  {"$01S0C06", "!0100.000"},
      {"$01S0C16", "!0104.000"}, {"#01S0C012.345", "!01"}, {"$01S0C06", "!0112.345"},
      {"#01S0C103.000", "?01"},  {"#01S0C210.500", "?01"}, {"#01S0C2", "?01"},
      {"#01S0C405.000", "?01"},  {"$01S0C2A322C", "!01"},  {"$01S0C2B", "!01322C"},
      {"$01S0C0B", "!013000"},   {"$01S0C2A3230", "?01"},  {"$01S0C2A3201", "?01"},
      {"$01S0C2A3300", "?01"},   {"$01S0C00", "!01"},      {"$01S0C01", "!01"},
      {"$01S0C0301", "!01"},     {"$01S0C0300", "?01"},    {"$01S0C04", "!01"},
      {"$01S06", "!010F"},       {"#01S0", "?01"}}},
    {"SlotRecordOf3931",
     "module 3900 address=01 restart=0\nslot 0 3931 range0=31 range1=32 format0=08 format1=0C",
     {{"$01S0B", "!013108"},
      {"$01S0C1B", "!01320C"},
      {"$01S0C0A3204", "!01"},
      {"$01S0B", "!013204"},
      {"$01S0C4B", "?01"},
      {"$01S0A3204", "?01"}}},
    {"SlotRecordOf3942",
     "module 3900 address=01 restart=0\nslot 0 3942 directions=0F0F\nslot 1 3944",
     {{"$01S0B", "!014000"}, {"$01S0C0B", "?01"}, {"$01S0A4000", "?01"}, {"$01S1B", "?01"}}},
};

INSTANTIATE_TEST_SUITE_P(Cards, BaseUnit, testing::ValuesIn(Conversations), ByName);

TEST(BaseUnit, TheCardsSettingsHaveTheSlotInTheirName)
{
    RackRunner rack("module 3900E address=01 restart=0\nslot 6 3931 range=32\nslot 7 3923 value=1");
    EXPECT_EQ(rack.Ask("#01S6C303.250"), "!01");
    EXPECT_EQ(rack.Value("01", "slot6.output3"), "03.250");
    rack.Set("01", "slot7.value4", "-2.5");
    EXPECT_EQ(rack.Ask("#01S7C4"), ">-02.500");
    EXPECT_EQ(rack.Value("01", "slot7.value4"), "-02.500");
    EXPECT_THROW((void)rack.Value("01", "slot0.value0"), std::invalid_argument);
    EXPECT_THROW((void)rack.Value("01", "slot7.value8"), std::invalid_argument);
    EXPECT_THROW(rack.Set("01", "slot7.value", "five"), std::invalid_argument);
    EXPECT_THROW(rack.Set("01", "slots", "FFFF"), std::invalid_argument);
}

TEST(BaseUnit, A256BaseUnitsWithAllSlotsAreOneLine)
{
    const vornsim::Rack rack = vornsim::ParseRack(
        "port 1\nmodules 3900E address=00..FF slots=3923,3923,3923,3923,3923,3923,3923,3923\n");
    const TemporaryFolder folder;
    vornsim::Simulator simulator(rack, folder.Path());
    simulator.Start();
    RawPeer peer(simulator.Link(1));
    for (const char *address : {"00", "7F", "FF"}) {
        EXPECT_EQ(peer.Ask("$" + std::string(address) + "T"),
                  "!" + std::string(address) + "2323232323232323");
        EXPECT_EQ(peer.Ask("#" + std::string(address) + "S7").size(), 57U);
    }
}

} // namespace
