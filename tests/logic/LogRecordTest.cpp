#include "tools/LogRecord.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace vorn;

TEST(LogRecord, HasTheTimeBehindATabInColumn52)
{
    const std::string record = LogRecord("$012", "12:34:56");
    ASSERT_EQ(record.size(), 80U);
    EXPECT_EQ(record, "$012" + std::string(47, ' ') + "\t12:34:56" + std::string(20, ' '));
}

TEST(LogRecord, OfATypedLineHasItInColumn46)
{
    const std::string record = LogRecord("", "12:34:56", TypedColumn);
    EXPECT_EQ(record, std::string(45, ' ') + "\t12:34:56" + std::string(26, ' '));
}

TEST(LogRecord, WritesOverACommandLongerThan51Characters)
{
    const std::string command(60, 'A');
    EXPECT_EQ(LogRecord(command, "12:34:56"), std::string(51, 'A') + "\t12:34:56" + std::string(20, ' '));
    EXPECT_EQ(LogRecord(std::string(51, 'A'), "12:34:56").substr(0, 52), std::string(51, 'A') + "\t");
}

TEST(LogRecord, CutsAtEightyCharacters)
{
    const std::string record = LogRecord(std::string(200, 'B'), "12:34:56");
    EXPECT_EQ(record, std::string(51, 'B') + "\t12:34:56" + std::string(20, 'B'));
    EXPECT_EQ(LogRecord("x", std::string(200, 't')).size(), 80U);
    EXPECT_EQ(LogRecord("x", std::string(200, 't')).substr(51), "\t" + std::string(28, 't'));
}

TEST(LogRecord, KeepsBytesOfAllValues)
{
    const std::string bytes("\0\x80\r", 3);
    EXPECT_EQ(LogRecord(bytes, "t").substr(0, 3), bytes);
}

TEST(LogRecord, OutsideItsColumnsHasNoTime)
{
    EXPECT_EQ(LogRecord("x", "t", 0), "x" + std::string(79, ' '));
    EXPECT_EQ(LogRecord("x", "t", 81), "x" + std::string(79, ' '));
    EXPECT_EQ(LogRecord("x", "t", 80), "x" + std::string(78, ' ') + "\t");
}

TEST(TimeOfDay, HasTwoDigitsEach)
{
    EXPECT_EQ(TimeOfDayText(0), "00:00:00");
    EXPECT_EQ(TimeOfDayText(9 * 3600 + 5 * 60 + 7.99), "09:05:07");
    EXPECT_EQ(TimeOfDayText(86399.999), "23:59:59");
}

struct PrefixCase {
    double round;
    const char *sent;
    const char *reply;
};

TEST(Prefixes, NumberTheRoundsInFourColumns)
{
    constexpr PrefixCase Cases[] = {{0, "   0> ", "   0< "},       {1, "   1> ", "   1< "},
                                    {100, " 100> ", " 100< "},     {9999, "9999> ", "9999< "},
                                    {12345, "12345> ", "12345< "}, {2.75, "   2> ", "   2< "}};
    for (const PrefixCase &c : Cases) {
        EXPECT_EQ(SentPrefix(c.round), c.sent);
        EXPECT_EQ(ReplyPrefix(c.round), c.reply);
    }
}

TEST(ElapsedText, NamesItsUnit)
{
    EXPECT_EQ(ElapsedText(0), "0(ms)");
    EXPECT_EQ(ElapsedText(83), "83(ms)");
}

TEST(SentText, ShowsTheChecksumThatGoesOut)
{
    EXPECT_EQ(SentText("$012", true), "$012B7");
    EXPECT_EQ(SentText("$012", false), "$012");
    EXPECT_EQ(SentText("", true), "0") << "one digit below sixteen";
    EXPECT_THROW(SentText(std::string(200, '\xFF'), true), RuntimeError);
}

} // namespace
