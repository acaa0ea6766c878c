// Bytes that take their time. Only their order and pieces are looked at, and that nothing comes too early.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

using vornsim::TraceRecord;

std::string Joined(const std::vector<TraceRecord> &trace, TraceRecord::Direction direction)
{
    std::string bytes;
    for (const TraceRecord &record : trace) {
        if (record.direction == direction)
            bytes += record.bytes;
    }
    return bytes;
}

TEST(Pacing, AReplyComesByteByByteAtLowSpeeds)
{
    RackRunner rack("module 7252 address=01", "port 1 pace=yes");
    rack.Rack().ClearTrace();
    EXPECT_EQ(rack.Peer().Ask("$01M"), "!01VORN7252");
    const auto trace = rack.Rack().Trace(1);
    EXPECT_EQ(Joined(trace, TraceRecord::Direction::FromHost), "$01M\r");
    EXPECT_EQ(Joined(trace, TraceRecord::Direction::ToHost), "!01VORN7252\r");
    ASSERT_EQ(trace.size(), 13U); // one read, twelve bytes
    constexpr double byteTime = 10.0 / 9600 * 1000;
    for (std::size_t i = 1; i < trace.size(); ++i)
        EXPECT_GE(trace[i].milliseconds - trace[0].milliseconds,
                  (5 + static_cast<double>(i)) * byteTime - 0.01)
            << i;
}

TEST(Pacing, PiecesHoldAMillisecondAtHighSpeeds)
{
    RackRunner rack("module 7252 address=01 version=0123456789012345678901234567890",
                    "port 1 speed=115200 pace=yes");
    rack.Rack().ClearTrace();
    EXPECT_EQ(rack.Peer().Ask("$01F"), "!010123456789012345678901234567890");
    std::vector<std::size_t> sizes;
    for (const std::string &piece : rack.Pieces())
        sizes.push_back(piece.size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{11, 11, 11, 2})); // 35 bytes, 11 to the millisecond
}

TEST(Pacing, RepliesKeepTheOrderOfTheCommands)
{
    RackRunner rack("module 7252 address=01\nmodule 7256 address=02", "port 1 pace=yes speed=57600");
    rack.Peer().Write("$01M\r$02M\r$01F\r");
    EXPECT_EQ(rack.Peer().ReadLine(), "!01VORN7252");
    EXPECT_EQ(rack.Peer().ReadLine(), "!02VORN7256");
    EXPECT_EQ(rack.Peer().ReadLine(), "!01B1.02");
}

TEST(Pacing, WithoutItAReplyIsOnePiece)
{
    RackRunner rack("module 7252 address=01");
    rack.Rack().ClearTrace();
    EXPECT_EQ(rack.Peer().Ask("$01M"), "!01VORN7252");
    EXPECT_EQ(rack.Rack().Trace(1).size(), 2U);
}

} // namespace
