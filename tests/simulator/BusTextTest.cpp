#include "simulator/BusText.h"

#include <gtest/gtest.h>

namespace
{

using namespace vornsim;

TEST(BusText, ChecksumIsTheLowByteOfTheSum)
{
    EXPECT_EQ(Checksum("$012"), "B7");
    EXPECT_EQ(Checksum(""), "00");
    EXPECT_EQ(Checksum("\xFF\xFF"), "FE");
}

TEST(BusText, ALineGivesUpOnlyTheRightChecksum)
{
    EXPECT_EQ(WithoutChecksum("$012B7"), "$012");
    EXPECT_EQ(WithoutChecksum("$012B8"), std::nullopt);
    EXPECT_EQ(WithoutChecksum("$012b7"), std::nullopt);
    EXPECT_EQ(WithoutChecksum("B7"), std::nullopt);
    EXPECT_EQ(WithoutChecksum(""), std::nullopt);
}

TEST(BusText, HexadecimalKnowsNoSmallLetters)
{
    EXPECT_EQ(ReadHex("FFFFFFFF"), 0xFFFFFFFFU);
    EXPECT_EQ(ReadHex("0a"), std::nullopt);
    EXPECT_EQ(ReadHex(""), std::nullopt);
    EXPECT_EQ(ReadHex("123456789"), std::nullopt);
    EXPECT_EQ(Hex(0x1AB, 2), "AB");
    EXPECT_EQ(Hex(10, 4), "000A");
}

TEST(BusText, DecimalTexts)
{
    EXPECT_EQ(ReadDecimal("4294967295"), 4294967295U);
    EXPECT_EQ(ReadDecimal("4294967296"), std::nullopt);
    EXPECT_EQ(ReadDecimal("-1"), std::nullopt);
    EXPECT_EQ(ReadDecimal(""), std::nullopt);
    EXPECT_EQ(Decimal(42, 5), "00042");
}

TEST(BusText, NumbersHaveOneSignAndOnePoint)
{
    EXPECT_EQ(ReadNumber("-12.5"), -12.5);
    EXPECT_EQ(ReadNumber("+.5"), 0.5);
    EXPECT_EQ(ReadNumber("3"), 3);
    for (const char *text : {"", "+", "1.2.3", "--1", "1e3", " 1", "1 ", "inf", "0x1"})
        EXPECT_EQ(ReadNumber(text), std::nullopt) << text;
}

TEST(BusText, EscapesGoBothWays)
{
    const std::string bytes("\0\r\n\\A\x80\xFF", 7);
    EXPECT_EQ(Escape(bytes), "\\x00\\r\\n\\\\A\\x80\\xFF");
    EXPECT_EQ(Unescape(Escape(bytes)), bytes);
    EXPECT_EQ(Unescape("\\q"), std::nullopt);
    EXPECT_EQ(Unescape("\\x8"), std::nullopt);
    EXPECT_EQ(Unescape("a\\"), std::nullopt);
}

} // namespace
