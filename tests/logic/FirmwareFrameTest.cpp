#include "firmware/FirmwareFrame.h"

#include <gtest/gtest.h>

using namespace vorn;
using namespace std::string_literals;

namespace
{

std::string AllBytes()
{
    std::string bytes;
    for (int i = 0; i < 128; ++i)
        bytes += static_cast<char>(2 * i);
    return bytes;
}

} // namespace

TEST(FirmwareFrame, HoldsNumberBytesSumAndCarriageReturn)
{
    const std::string frame = BlockFrame(0x0302, AllBytes());
    ASSERT_EQ(frame.size(), 132U);
    EXPECT_EQ(frame.substr(0, 2), "\x03\x02");
    EXPECT_EQ(frame.substr(2, 128), AllBytes());
    // 3 + 2 + 2 * (0 + 1 + ... + 127) = 16261 = 0x3F85
    EXPECT_EQ(static_cast<unsigned char>(frame[130]), 0x85);
    EXPECT_EQ(frame[131], '\r');
}

TEST(FirmwareFrame, TheSumIsThatOfUnsignedBytes)
{
    const std::string frame = BlockFrame(0, std::string(128, '\xFF'));
    EXPECT_EQ(static_cast<unsigned char>(frame[130]), 0x80); // 128 * 255 = 0x7F80
}

TEST(FirmwareFrame, NumbersCountFrom0AcrossTheHighByte)
{
    for (const auto &[block, number] : {std::pair{0, "\x00\x00"s},
                                        {13, "\x00\x0D"s},
                                        {255, "\x00\xFF"s},
                                        {256, "\x01\x00"s},
                                        {1023, "\x03\xFF"s}})
        EXPECT_EQ(BlockFrame(block, std::string(128, '\0')).substr(0, 2), number) << block;
}

TEST(BlockReply, IsJudgedByteByByte)
{
    const std::string frame = BlockFrame(0x0142, "xyz" + std::string(125, ' '));
    const struct {
        std::string reply;
        BlockVerdict verdict;
        const char *why;
    } cases[] = {
        {"!\r", BlockVerdict::Accepted, "directly followed by the carriage return"},
        {"!\x42\r", BlockVerdict::Accepted, "one byte repeated"},
        {"!\x42x\r", BlockVerdict::Accepted, "two"},
        {"!\r?!", BlockVerdict::Accepted, "what stands behind doesn't count"},
        {"?00\r", BlockVerdict::Refused, "no exclamation mark"},
        {"\r!\x42\r", BlockVerdict::Refused, "not at the beginning"},
        {"!\x41\r", BlockVerdict::Refused, "another byte than the frame's"},
        {"!\x42y\r", BlockVerdict::Refused, "another second byte"},
        {"!x\r", BlockVerdict::Refused, "the byte of another place"},
        {"!00\r", BlockVerdict::Refused, "a permission that came late"},
        {"!\x42xy", BlockVerdict::Unfinished, "four bytes without end"},
        {"!\x42", BlockVerdict::Unfinished, "torn"},
        {"!", BlockVerdict::Unfinished, "torn"},
        {"", BlockVerdict::Unfinished, "nothing"},
        {"!" + frame.substr(1), BlockVerdict::Accepted, "the whole frame repeated"},
    };
    for (const auto &[reply, verdict, why] : cases)
        EXPECT_EQ(JudgeBlockReply(frame, reply), verdict) << why;
}

TEST(BlockReply, BehindTheWholeFrameEveryByteIsWrong)
{
    const std::string frame = BlockFrame(0, std::string(128, ' ')).substr(0, 131) + ' '; // no end in it
    EXPECT_EQ(JudgeBlockReply(frame, "!" + frame.substr(1)), BlockVerdict::Unfinished);
    EXPECT_EQ(JudgeBlockReply(frame, "!" + frame.substr(1) + " "), BlockVerdict::Refused);
}

TEST(BlockReply, ACarriageReturnOfTheFrameAcceptsAsWell)
{
    EXPECT_EQ(JudgeBlockReply(BlockFrame(13, std::string(128, 'x')), "!\r"), BlockVerdict::Accepted);
}

TEST(Ready, IsSaidByTheBeginningOfAReply)
{
    EXPECT_TRUE(SaysReady("!00"));
    EXPECT_TRUE(SaysReady("!00 and more"));
    EXPECT_FALSE(SaysReady("!0"));
    EXPECT_FALSE(SaysReady("?00"));
    EXPECT_FALSE(SaysReady(" !00"));
    EXPECT_FALSE(SaysReady(""));
}

TEST(Permission, StandsAtTheBeginningOfALine)
{
    const struct {
        std::string received;
        Permission permission;
    } cases[] = {
        {"", Permission::Open},
        {"!0", Permission::Open},
        {"!00", Permission::Given},
        {"!00\r", Permission::Whole},
        {"!00 at once\r", Permission::Whole},
        {"?00\r", Permission::Open},
        {"x!00\r", Permission::Open},
        {"\r!00\r", Permission::Whole}, // the end of an earlier reply, which came late
        {"?00\r!00\r", Permission::Whole},
        {"l\r!00", Permission::Given},
        {"!0\r0\r", Permission::Open},
    };
    for (const auto &[received, permission] : cases)
        EXPECT_EQ(PermissionIn(received), permission) << received;
}
