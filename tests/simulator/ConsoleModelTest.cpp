// The models that hosts have a console for.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

class ConsoleModel : public testing::TestWithParam<Conversation>
{
};

TEST_P(ConsoleModel, Answers)
{
    Hold(GetParam());
}

const Conversation Conversations[] = {
    {"SixteenInputs",
     "module 7254 address=01 inputs=A53C",
     {{"$012", "!01400600"}, {"$016", "!A53C"}, {"#010001", "?01"}}},
    {"InputsAndOutputs",
     "module 7262 address=01 inputs=3C outputs=81",
     {{"$016", "!813C"}, {"#010042", ">"}, {"$016", "!423C"}, {"#01004", "?01"}, {"#01104", "?01"}}},
    {"OutputsAndWatchdog",
     "module 7276 address=01 outputs=05",
     {{"$016", "!05"},
      {"#0100F0", ">"},
      {"$016", "!F0"},
      {"$01Y", "!010000"},
      {"$01X0050", "!01"},
      {"$01Y", "!010050"},
      {"$01X12345", "?01"},
      {"$01X5", "?01"},
      {"$01Y", "!010050"}}},
    {"SixSensors",
     "module 7216 address=01 range=22 range5=2D mask=2F wires=02 value=+100.00 restart=0",
     {{"$012", "!01000600"},  {"$016", "!012F"},
      {"$01B", "!0102"},      {"#01", ">+100.00+100.00+100.00+100.00       +100.00"},
      {"$018C0", "!01C0R22"}, {"$018C5", "!01C5R2D"},
      {"$018C6", "?01"},      {"$017C0R2A", "!01"},
      {"$018C0", "!01C0R2A"}, {"$017C0R2E", "?01"},
      {"$0153F", "!01"},      {"$016", "!013F"},
      {"$0140", "?01"},       {"%0101000603", "!01"},
      {"$012", "!01000603"},  {"%0101000601", "?01"},
      {"$010C2", "!01"},      {"$011C2", "!01"},
      {"$01NC2", "?01"},      {"$01X0100", "!01"},
      {"$01Y", "!010100"}}},
    {"UniversalInputs",
     "module 7227 address=01 range=05 value=+2.0000 restart=0",
     {{"#01", ">+2.0000+2.0000+2.0000+2.0000+2.0000+2.0000+2.0000+2.0000"},
      {"$017C7R0F", "!01"},
      {"$018C7", "!01C7R0F"},
      {"$01NC3", "!01"},
      {"$013", ">+0025.0"},
      {"$019-00C8", "!01"},
      {"$013", ">+0023.2"},
      {"%0101000600", "!01"}}},
    {"ChannelByChannel",
     "module 7221P address=01 range=08 mask=7F value=+05.000 restart=0",
     {{"#010", ">+05.000"},
      {"#017", "?01"},
      {"$017C1R07", "!01"},
      {"$018C1", "!01C1R07"},
      {"$01B", "?01"},
      {"%0101ff0600", "!01"},
      {"$012", "!01000600"}}},
    {"TheCommonTypeGoesToAllChannels",
     "module 7224P address=01 range=0E restart=0",
     {{"$012", "!01FF0600"},
      {"$017C3R06", "!01"},
      {"%01010f0602", "!01"},
      {"$012", "!010F0602"},
      {"$018C3", "!01C3R0F"},
      {"%0101FF0680", "!01"},
      {"$012", "!01FF0680"},
      {"$018C3", "!01C3R0F"},
      {"%0101300600", "?01"}}},
    {"FourOutputs",
     "module 7234 address=01 range1=31 range2=32 restart=0",
     {{"$012", "!01000600"},    {"$018C0", "!01C030"},    {"$018C1", "!01C131"},    {"$016C1", "!01+04.000"},
      {"#01C1+12.500", "!01"},  {"$016C1", "!01+12.500"}, {"#01C1+03.999", "?01"},  {"#01C2-10.000", "!01"},
      {"$016C2", "!01-10.000"}, {"#01C212.5", "?01"},     {"$01DC2", "!01-10.000"}, {"#01SC2+01.000", "!01"},
      {"$01DC2", "!01+01.000"}, {"#01EC2-01.500", "!01"}, {"$01EC2", "!01-01.500"}, {"$017C3R32", "!01"},
      {"$018C3", "!01C332"},    {"$01BC3", "!01C30"},     {"$01AC31", "!01"},       {"$01BC3", "!01C31"},
      {"$01AC32", "?01"},       {"$01I", "!010"},         {"%0101000610", "!01"},   {"$012", "!01000610"},
      {"%0101000634", "?01"}}},
    {"OutputCalibration",
     "module 7234 address=01 coefficient4mA1=-3 restart=0",
     {{"$01G", "!01"},
      {"$01NC1", "!01FD"},
      {"$013C10A", "!01"},
      {"$01NC1", "!0107"},
      {"$013C18A", "!01"},
      {"$013C181", "!01"},
      {"$01NC1", "!01FC"},
      {"$01OC1", "!0100"},
      {"$013C101", "!01"},
      {"$01OC1", "!0101"},
      {"$01NC1", "!01FC"},
      {"$013C100", "?01"},
      {"$010C1", "!01"},
      {"$011C1", "!01"},
      {"$01PC1", "!01"},
      {"$01NC1", "!0100"},
      {"$01QC1", "!01"},
      {"$01OC1", "!0100"}}},
};

INSTANTIATE_TEST_SUITE_P(Models, ConsoleModel, testing::ValuesIn(Conversations), ByName);

TEST(ConsoleModel, RestartsSoonBehindItsRecordAndNotBehindAType)
{
    RackRunner rack("module 7216 address=01\nmodule 7216 address=02 restart=60000");
    EXPECT_EQ(rack.Value("01", "restart"), "50");
    EXPECT_EQ(rack.Ask("$0253F"), "!02");
    EXPECT_EQ(rack.Ask("$027C0R21"), "!02");
    EXPECT_EQ(rack.Ask("$02X0001"), "!02");
    EXPECT_EQ(rack.Ask("%0202000600"), "!02");
    EXPECT_TRUE(rack.IsSilent("$022"));
}

TEST(ConsoleModel, TheWatchdogPutsItsOutputsOff)
{
    RackRunner rack("module 7276 address=01 outputs=FF watchdog=0020");
    EXPECT_EQ(rack.Ask("$016"), "!FF");
    rack.SetTime(2000);
    EXPECT_EQ(rack.Ask("$016"), "!FF") << "two seconds are still allowed";
    rack.SetTime(4001);
    EXPECT_EQ(rack.Ask("$016"), "!00");
}

TEST(ConsoleModel, AnEmergencyInputDrivesItsOutputToTheStopValue)
{
    RackRunner rack("module 7234 address=01");
    EXPECT_EQ(rack.Ask("#01C0+10.000"), "!01");
    EXPECT_EQ(rack.Ask("#01EC0+02.000"), "!01");
    rack.Set("01", "inputs", "1");
    EXPECT_EQ(rack.Ask("$01I"), "!011");
    EXPECT_EQ(rack.Ask("$016C0"), "!01+10.000") << "its flag isn't set";
    EXPECT_EQ(rack.Ask("$01AC01"), "!01");
    EXPECT_EQ(rack.Ask("$016C0"), "!01+02.000");
    rack.Set("01", "inputs", "0");
    EXPECT_EQ(rack.Ask("$016C0"), "!01+10.000");
}

TEST(ConsoleModel, AnOutputMovesAtItsSlewRate)
{
    RackRunner rack("module 7234 address=01 range=32 format=14"); // 1 V a second
    EXPECT_EQ(rack.Ask("$016C0"), "!01+00.000");
    EXPECT_EQ(rack.Ask("#01C0-07.000"), "!01");
    rack.SetTime(1500);
    EXPECT_EQ(rack.Ask("$016C0"), "!01-01.500");
}

} // namespace
