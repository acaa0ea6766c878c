// Alarms of the channels of slot cards.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

class CardAlarm : public testing::TestWithParam<Conversation>
{
};

TEST_P(CardAlarm, Answers)
{
    Hold(GetParam());
}

const Conversation Conversations[] = {
    {"ModesAndEnabling",
     "module 3900 address=01 restart=0\nslot 0 3923 value=0",
     {{"$01S0C0AH", "!01D"},
      {"$01S0C0AHM", "!01"},
      {"$01S0C0AH", "!01D"},
      {"$01S0C0AHEE", "!01"},
      {"$01S0C0AH", "!01M"},
      {"$01S0C0AHL", "!01"},
      {"$01S0C0AH", "!01L"},
      {"$01S0C0AL", "!01D"},
      {"$01S0C0ALL", "!01"},
      {"$01S0C0ALEE", "!01"},
      {"$01S0C0AL", "!01L"},
      {"$01S0C0AHED", "!01"},
      {"$01S0C0AH", "!01D"},
      {"$01S0C1AH", "!01D"},
      {"$01S0C8AH", "?01"},
      {"$01S0C0AHX", "?01"},
      {"$01S0C0AHEX", "?01"}}},
    {"Limits",
     "module 3900 address=01 restart=0\nslot 0 3923 range=08",
     {{"$01S0C2RHU", "!01+10.000"},
      {"$01S0C2RLU", "!01-10.000"},
      {"$01S0C2AHU12.5", "?01"},
      {"$01S0C2AHU7.5", "!01"},
      {"$01S0C2RHU", "!01+07.500"},
      {"$01S0C2ALU-3", "!01"},
      {"$01S0C2RLU", "!01-03.000"},
      {"$01S0C2ALU", "?01"},
      {"$01S0C2ALUx", "?01"},
      {"$01S0C3RLU", "!01-10.000"}}},
    {"Connections",
     "module 3900E address=01 restart=0\nslot 0 3923",
     {{"$01S0C0RHC", "!01S*C*"},
      {"$01S0C0AHCS1C3", "!01"},
      {"$01S0C0RHC", "!01S1C3"},
      {"$01S0C0ALCS7C12", "!01"},
      {"$01S0C0RLC", "!01S7CC"},
      {"$01S0C0AHCS*C*", "!01"},
      {"$01S0C0RHC", "!01S*C*"},
      {"$01S0C0AHCS*C1", "?01"},
      {"$01S0C0AHCS1C*", "?01"},
      {"$01S0C0AHCS1C16", "?01"},
      {"$01S0C0AHCS8C1", "?01"},
      {"$01S0C0AHCS1", "?01"}}},
    {"MomentaryStates",
     "module 3900 address=01 restart=0\nslot 0 3923 value=5 high=4 low=-4 value1=-5",
     {{"$01S0C0S", "!0100"},
      {"$01S0C0AHEE", "!01"},
      {"$01S0C0S", "!0110"},
      {"$01S0C1ALEE", "!01"},
      {"$01S0C1S", "!0101"},
      {"$01S0C0CH", "!01"},
      {"$01S0C0S", "!0110"},
      {"$01S0C0AHED", "!01"},
      {"$01S0C0S", "!0100"},
      {"$01S0C0CL", "!01"},
      {"$01S0C06", "!01"},
      {"$01S0C8S", "?01"}}},
    {"CounterCardLatchesOnly",
     "module 3900 address=01 restart=0\nslot 0 3962 rate=0 count0=100",
     {{"$01S0C0AH", "!01D"},
      {"$01S0C0AHM", "?01"},
      {"$01S0C0RHU", "!014294967295"},
      {"$01S0C0RLU", "!010000000000"},
      {"$01S0C0AHU0000000100", "!01"},
      {"$01S0C0RHU", "!010000000100"},
      {"$01S0C0AHU100", "?01"},
      {"$01S0C0AHEE", "!01"},
      {"$01S0C0AH", "!01L"},
      {"$01S0C0S", "!0110"},
      {"$01S0C06", "!01"},
      {"$01S0C0S", "!0110"},
      {"$01S0C0CH", "!01"},
      {"$01S0C0S", "!0100"},
      {"$01S0C0AHCS1C0", "!01"},
      {"$01S0C0RHC", "!01S1C0"}}},
    {"NoAlarmsOn3931", "module 3900 address=01\nslot 0 3931", {{"$01S0C0AH", "?01"}, {"$01S0C0S", "?01"}}},
};

INSTANTIATE_TEST_SUITE_P(Cards, CardAlarm, testing::ValuesIn(Conversations), ByName);

TEST(CardAlarm, ALatchStaysUntilItIsCleared)
{
    RackRunner rack("module 3900 address=01\nslot 0 3925 value=100 high=500 highmode=L highenabled=1");
    EXPECT_EQ(rack.Ask("$01S0C3S"), "!0100");
    rack.Set("01", "slot0.value3", "600");
    EXPECT_EQ(rack.Ask("$01S0C3S"), "!0110");
    rack.Set("01", "slot0.value3", "100");
    EXPECT_EQ(rack.Ask("$01S0C3S"), "!0110");
    EXPECT_EQ(rack.Ask("$01S0C3CL"), "!01");
    EXPECT_EQ(rack.Ask("$01S0C3S"), "!0110");
    EXPECT_EQ(rack.Ask("$01S0C3CH"), "!01");
    EXPECT_EQ(rack.Ask("$01S0C3S"), "!0100");
}

TEST(CardAlarm, AnAlarmDrivesTheOutputThatItIsConnectedTo)
{
    RackRunner rack("module 3900 address=01 restart=0\n"
                    "slot 0 3923 value=0 high2=5 highenabled2=1 highout2=S3CA\n"
                    "slot 3 3951 outputs=0001");
    EXPECT_EQ(rack.Ask("$01S36"), "!010001");
    rack.Set("01", "slot0.value2", "6");
    EXPECT_EQ(rack.Ask("$01S36"), "!010401");
    EXPECT_EQ(rack.Ask("#01S31A00"), "!01"); // the alarm holds it
    EXPECT_EQ(rack.Ask("$01S36"), "!010401");
    rack.Set("01", "slot0.value2", "0");
    EXPECT_EQ(rack.Ask("$01S36"), "!010001");
}

} // namespace
