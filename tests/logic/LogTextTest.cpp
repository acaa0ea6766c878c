#include "tools/LogText.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace vorn;

TEST(ShownText, EndsALineAtItsCarriageReturnAndLineFeed)
{
    EXPECT_EQ(ShownText("$012\r\n!01\r\n"), u"$012\n!01\n");
    EXPECT_EQ(ShownText("$012\r\r\n!01"), u"$012\n!01") << "the line's own carriage return isn't shown twice";
    EXPECT_EQ(ShownText(""), u"");
}

TEST(ShownText, ShowsACarriageReturnInsideAnEntryByItsCode)
{
    EXPECT_EQ(ShownText("$012\r!01\r\r\n"), u"$012<0D>!01\n");
    EXPECT_EQ(ShownText("\r\r\r\n"), u"<0D>\n");
    EXPECT_EQ(ShownText("a\nb"), u"a<0A>b") << "a lone line feed";
}

TEST(ShownText, HidesNothing)
{
    EXPECT_EQ(ShownText(std::string("\0\x1B\x7F", 3)), u"<00><1B><7F>");
    EXPECT_EQ(ShownText("a\tb"), u"a\tb");
    EXPECT_EQ(ShownText("\xB5\xFF"), u"\u00B5\u00FF");
}

TEST(BytesOfTyped, AreTheCharactersOfTheLine)
{
    EXPECT_EQ(BytesOfTyped(u"$012\u00B5"), "$012\xB5");
    EXPECT_EQ(BytesOfTyped(u"\u4E2D"), "?");
}

TEST(OldestLines, AreWholeLinesWhereThereAreAny)
{
    const std::string log = "one\r\ntwo\r\nthree";
    EXPECT_EQ(OldestLines(log, 0), 0U);
    EXPECT_EQ(OldestLines(log, 1), 5U);
    EXPECT_EQ(OldestLines(log, 5), 5U) << "the first line is just enough";
    EXPECT_EQ(OldestLines(log, 6), 10U);
    EXPECT_EQ(OldestLines(log, 11), 11U) << "the last line has no end";
    EXPECT_EQ(OldestLines(log, 100), log.size());
    EXPECT_EQ(OldestLines("", 1), 0U);
}

} // namespace
