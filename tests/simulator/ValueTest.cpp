// The interface for tests: settings by name, commands and trace.

#include "RackRunner.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{

using vornsim::TraceRecord;

TEST(Values, WhatIsWrittenOnTheWireIsReadByName)
{
    RackRunner rack("module 7206 address=01 restart=0");
    EXPECT_EQ(rack.Ask("@01HI+05.500"), "!01");
    EXPECT_EQ(rack.Value("01", "high"), "+05.500");
    EXPECT_EQ(rack.Ask("%0107090601"), "!01");
    EXPECT_EQ(rack.Value("07", "address"), "07");
    EXPECT_EQ(rack.Value("07", "range"), "09");
    EXPECT_EQ(rack.Value("07", "format"), "01");
    EXPECT_EQ(rack.Value("07", "baud"), "9600");
    EXPECT_EQ(rack.Value("07", "checksum"), "no");
    EXPECT_EQ(rack.Value("07", "init"), "no");
    EXPECT_EQ(rack.Value("07", "family"), "yes");
}

TEST(Values, WhatIsSetByNameIsReadOnTheWire)
{
    RackRunner rack("module 7221 address=01");
    rack.Set("01", "value3", "-1.25");
    EXPECT_EQ(rack.Ask("#013"), ">-01.250");
    rack.Set("01", "value", "2"); // all channels
    EXPECT_EQ(rack.Ask("#010"), ">+02.000");
    EXPECT_EQ(rack.Ask("#013"), ">+02.000");
    rack.Set("01", "mask", "01");
    EXPECT_EQ(rack.Ask("$016"), "!0101");
    rack.Set("01", "value0", "live");
    rack.SetTime(5000);
    EXPECT_EQ(rack.Ask("#010"), ">+08.000");
}

TEST(Values, UnknownOnesAreErrors)
{
    RackRunner rack("module 7221 address=01");
    EXPECT_THROW((void)rack.Value("01", "excitation"), std::invalid_argument);
    EXPECT_THROW((void)rack.Value("02", "mask"), std::invalid_argument);
    EXPECT_THROW((void)rack.Rack().Value(2, "01", "mask"), std::invalid_argument);
    EXPECT_THROW(rack.Set("01", "mask", "1"), std::invalid_argument);
    EXPECT_THROW(rack.Set("01", "range", "00"), std::invalid_argument);
    EXPECT_THROW(rack.Set("01", "value9", "1"), std::invalid_argument);
    EXPECT_THROW(rack.Set("01", "baud", "300"), std::invalid_argument);
    EXPECT_THROW(rack.Set("01", "format", "01"), std::invalid_argument);
}

TEST(Values, CommandsAreKeptInOrderWithoutTheirEnd)
{
    RackRunner rack("module 7252 address=01");
    rack.Peer().Write("$01");
    rack.Peer().Write("M\r\x80\xFF\r\r$01F\r");
    EXPECT_EQ(rack.Peer().ReadLine(), "!01VORN7252");
    EXPECT_EQ(rack.Peer().ReadLine(), "!01B1.02");
    EXPECT_EQ(rack.Rack().Commands(1), (std::vector<std::string>{"$01M", "\x80\xFF", "", "$01F"}));
    rack.Rack().ClearTrace();
    EXPECT_TRUE(rack.Rack().Commands(1).empty());
    EXPECT_TRUE(rack.Rack().Trace(1).empty());
}

TEST(Values, TheTraceTellsDirectionAndOrder)
{
    RackRunner rack("module 7252 address=01");
    EXPECT_EQ(rack.Peer().Ask("$01M"), "!01VORN7252");
    EXPECT_EQ(rack.Peer().Ask("$01F"), "!01B1.02");
    const auto trace = rack.Rack().Trace(1);
    ASSERT_EQ(trace.size(), 4U);
    const char *expected[] = {"$01M\r", "!01VORN7252\r", "$01F\r", "!01B1.02\r"};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(trace[i].bytes, expected[i]);
        EXPECT_EQ(trace[i].direction == TraceRecord::Direction::FromHost, i % 2 == 0);
        EXPECT_GE(trace[i].milliseconds, i == 0 ? 0 : trace[i - 1].milliseconds);
    }
}

TEST(Values, AnEndlessLineDoesNoHarm)
{
    RackRunner rack("module 7252 address=01");
    rack.Peer().Write(std::string(100000, 'A') + "\r");
    EXPECT_EQ(rack.Ask("$01M"), "!01VORN7252");
    ASSERT_EQ(rack.Rack().Commands(1).size(), 3U);
    EXPECT_EQ(rack.Rack().Commands(1).front(), std::string(4096, 'A'));
}

TEST(Values, ManyThreadsMayAskAtOnce)
{
    RackRunner rack("module 7206 address=01 value=0");
    std::thread setter([&] {
        for (int i = 0; i < 500; ++i)
            rack.Set("01", "value", i % 2 == 0 ? "1" : "2");
    });
    std::thread reader([&] {
        for (int i = 0; i < 500; ++i) {
            const std::string value = rack.Value("01", "value");
            EXPECT_TRUE(value == "+00.000" || value == "+01.000" || value == "+02.000") << value;
            (void)rack.Rack().Trace(1);
        }
    });
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(rack.Peer().Ask("#01").size(), 8U);
    setter.join();
    reader.join();
}

} // namespace
