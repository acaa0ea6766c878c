#include "pages/ChannelAlarms.h"

#include <gtest/gtest.h>

namespace
{

using namespace vorn;

const NodeKey Input("_0003150A3923");
const NodeKey Counter("_0003120A3962");

TEST(ChannelModeCommand, IsSentForMomentaryAndLatch)
{
    EXPECT_EQ(ChannelModeCommand(Input, AlarmLevel::High, 1), "$0AS1C5AHM");
    EXPECT_EQ(ChannelModeCommand(Input, AlarmLevel::High, 2), "$0AS1C5AHL");
    EXPECT_EQ(ChannelModeCommand(Input, AlarmLevel::Low, 1), "$0AS1C5ALM");
    EXPECT_EQ(ChannelModeCommand(Input, AlarmLevel::Low, 2), "$0AS1C5ALL");
    for (const int none : {-1, 0, 3})
        EXPECT_EQ(ChannelModeCommand(Input, AlarmLevel::High, none), std::nullopt) << none;
}

TEST(ChannelModeCommand, IsNeverSentToACounterCard)
{
    for (const int mode : {-1, 0, 1, 2})
        EXPECT_EQ(ChannelModeCommand(Counter, AlarmLevel::High, mode), std::nullopt) << mode;
}

TEST(ChannelEnableCommand, DisablesInTheFirstModeOnly)
{
    EXPECT_EQ(ChannelEnableCommand(Input, AlarmLevel::High, 0), "$0AS1C5AHED");
    EXPECT_EQ(ChannelEnableCommand(Input, AlarmLevel::High, 1), "$0AS1C5AHEE");
    EXPECT_EQ(ChannelEnableCommand(Input, AlarmLevel::Low, 2), "$0AS1C5ALEE");
    EXPECT_EQ(ChannelEnableCommand(Input, AlarmLevel::Low, -1), "$0AS1C5ALEE");
    EXPECT_EQ(ChannelEnableCommand(Counter, AlarmLevel::High, 1), "$0AS1C2AHEE");
}

TEST(ChannelLimitCommand, IsAsTypedAndTenDigitsOnACounterCard)
{
    EXPECT_EQ(ChannelLimitCommand(Input, AlarmLevel::High, "+1.5"), "$0AS1C5AHU+1.5");
    EXPECT_EQ(ChannelLimitCommand(Input, AlarmLevel::Low, ""), "$0AS1C5ALU");
    EXPECT_EQ(ChannelLimitCommand(Counter, AlarmLevel::High, "123"), "$0AS1C2AHU0000000123");
    EXPECT_EQ(ChannelLimitCommand(Counter, AlarmLevel::Low, ""), "$0AS1C2ALU0000000000");
    EXPECT_EQ(ChannelLimitCommand(Counter, AlarmLevel::Low, "12345678901"), "$0AS1C2ALU12345678901");
}

TEST(ChannelConnectionCommand, NamesSlotAndChannelOfTheOutput)
{
    ChannelAlarm alarm{
        .mode = 1, .limit = "", .drivesOutput = true, .outputSlot = "3", .outputChannel = "12"};
    EXPECT_EQ(ChannelConnectionCommand(Input, AlarmLevel::High, alarm), "$0AS1C5AHCS3C12");
    alarm.outputChannel.clear();
    EXPECT_EQ(ChannelConnectionCommand(Input, AlarmLevel::High, alarm), "$0AS1C5AHCS3C*");
    alarm.outputSlot.clear();
    EXPECT_EQ(ChannelConnectionCommand(Input, AlarmLevel::Low, alarm), "$0AS1C5ALCS*C*");
    alarm = {.mode = 1, .limit = "", .drivesOutput = false, .outputSlot = "3", .outputChannel = "12"};
    EXPECT_EQ(ChannelConnectionCommand(Input, AlarmLevel::Low, alarm), "$0AS1C5ALCS*C*") << "switched off";
}

TEST(CounterCommands, FillTheirDigits)
{
    EXPECT_EQ(FilterScaleCommand(Counter, "5"), "$0AS1000005");
    EXPECT_EQ(FilterScaleCommand(Counter, ""), "$0AS1000000");
    EXPECT_EQ(InitialCountCommand(Counter, "42"), "@0AS1C2P0000000042");
    EXPECT_EQ(CounterStateCommand(Counter, true), "$0AS1C251");
    EXPECT_EQ(CounterStateCommand(Counter, false), "$0AS1C250");
}

TEST(ChannelModePosition, GoesByTheListOfTheModel)
{
    EXPECT_EQ(ChannelModePosition("3923", "D"), 0);
    EXPECT_EQ(ChannelModePosition("3923", "M"), 1);
    EXPECT_EQ(ChannelModePosition("3923", "L"), 2);
    EXPECT_EQ(ChannelModePosition("3962", "D"), 0);
    EXPECT_EQ(ChannelModePosition("3962", "L"), 1);
    for (const char *letter : {"", "X", "DM"})
        EXPECT_EQ(ChannelModePosition("3923", letter), std::nullopt) << letter;
    EXPECT_EQ(ChannelModePosition("3962", "M"), std::nullopt);
}

TEST(ReadConnection, TellsSlotAndChannel)
{
    AlarmConnection connection = ReadConnection("S3CB");
    EXPECT_TRUE(connection.drivesOutput);
    EXPECT_EQ(connection.slot, "3");
    EXPECT_EQ(connection.channel, "11");
    connection = ReadConnection("S*C*");
    EXPECT_FALSE(connection.drivesOutput);
    EXPECT_EQ(connection.slot, "");
    EXPECT_EQ(connection.channel, "");
}

} // namespace
