// Digital modules and cards.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

class Digital : public testing::TestWithParam<Conversation>
{
};

TEST_P(Digital, Answers)
{
    Hold(GetParam());
}

const Conversation Conversations[] = {
    {"OutputsAndInputsOf7252",
     "module 7252 address=01 inputs=55",
     {{"$016", "!005500"},
      {"#011001", "!01"},
      {"#011701", "!01"},
      {"$016", "!815500"},
      {"#011000", "!01"},
      {"$016", "!805500"},
      {"#011801", "?01"},
      {"#011002", "?01"},
      {"#0110", "?01"},
      {"#01100G", "?01"},
      {"#012001", "?01"},
      {"@01DI", "?01"}}},
    {"InputsOf7256", "module 7256 address=01 inputs=A5", {{"$016", "!A50000"}, {"#011001", "?01"}}},
    {"InputsOf7258", "module 7258 address=01 inputs=A55A", {{"$016", "!A55A00"}, {"#011001", "?01"}}},
    {"RelaysOf7272",
     "module 7272 address=01 outputs=08",
     {{"$016", "!080000"}, {"#011101", "!01"}, {"$016", "!0A0000"}, {"#011401", "?01"}}},
    {"Card3942FollowsItsDirections",
     "module 3900 address=01\nslot 1 3942 directions=F00F inputs=A5A5 faults=8001",
     {{"$01S17", "!01F00F"},
      {"$01S16", "!01A005"},
      {"#01S11401", "!01"},
      {"#01S11B01", "!01"},
      {"$01S16", "!01A815"},
      {"#01S11001", "?01"},
      {"#01S11F01", "?01"},
      {"$01S1M", "!018001"}}},
    {"Card3944",
     "module 3900 address=01\nslot 0 3944 inputs=1234",
     {{"$01S06", "!011234"}, {"$01S0M", "?01"}, {"#01S01001", "?01"}}},
    {"Card3946", "module 3900 address=01\nslot 0 3946 inputs=34", {{"$01S06", "!010034"}, {"$01S0M", "?01"}}},
    {"Card3948AcknowledgesAsData",
     "module 3900 address=01\nslot 0 3948 inputs=34 outputs=01 faults=10",
     {{"$01S06", "!013401"},
      {"#01S01701", ">"},
      {"$01S06", "!013481"},
      {"#01S01801", "?01"},
      {"$01S0M", "!010010"}}},
    {"Card3951",
     "module 3900 address=01\nslot 4 3951 outputs=8001 faults=0180",
     {{"$01S46", "!018001"},
      {"#01S41A01", "!01"},
      {"$01S46", "!018401"},
      {"$01S4M", "!010180"},
      {"$01S47", "?01"}}},
    {"Card3953HasSixRelays",
     "module 3900 address=01\nslot 0 3953 outputs=20 faults=04",
     {{"$01S06", "!0120"},
      {"#01S01501", "!01"},
      {"#01S01601", "?01"},
      {"#01S01001", "!01"},
      {"$01S06", "!0121"},
      {"$01S0M", "!0104"}}},
    {"Card3957HasEightRelays",
     "module 3900 address=01\nslot 0 3957",
     {{"$01S06", "!0100"},
      {"#01S01701", "!01"},
      {"$01S06", "!0180"},
      {"#01S01801", "?01"},
      {"$01S0M", "!0100"}}},
};

INSTANTIATE_TEST_SUITE_P(Points, Digital, testing::ValuesIn(Conversations), ByName);

TEST(Digital, LiveInputsChangeOnePointAtATime)
{
    RackRunner rack("module 7256 address=01");
    EXPECT_EQ(rack.Ask("$016"), "!000000");
    rack.SetTime(2000);
    EXPECT_EQ(rack.Ask("$016"), "!010000");
    rack.SetTime(4000);
    EXPECT_EQ(rack.Ask("$016"), "!030000");
    rack.SetTime(6000);
    EXPECT_EQ(rack.Ask("$016"), "!020000");
}

TEST(Digital, InputsCanBeSetWhileRunning)
{
    RackRunner rack("module 7258 address=01 inputs=0000");
    rack.Set("01", "inputs", "8001");
    EXPECT_EQ(rack.Ask("$016"), "!800100");
    EXPECT_THROW(rack.Set("01", "inputs", "80"), std::invalid_argument);
    EXPECT_THROW(rack.Set("01", "inputs", "800G"), std::invalid_argument);
}

} // namespace
