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

TEST(ShownText, EndsARowAtACarriageReturnInsideAnEntryAndShowsItsCode)
{
    EXPECT_EQ(ShownText("$012\r!01\r\r\n"), u"$012<0D>\n!01\n");
    EXPECT_EQ(ShownText("\r\r\r\n"), u"<0D>\n\n");
    EXPECT_EQ(ShownText("a\nb"), u"a<0A>b") << "a lone line feed";
}

TEST(ShownText, BreaksARowWithoutEnd)
{
    EXPECT_EQ(ShownText(std::string(2500, 'x')), std::u16string(1000, 'x') + u'\n' +
                                                     std::u16string(1000, 'x') + u'\n' +
                                                     std::u16string(500, 'x'));
}

TEST(BehindRows, CountsWhatTheViewShowsAsRows)
{
    const std::string log = "one\r\ntwo\rthree\r\r\nfour";
    EXPECT_EQ(BehindRows(log, 0, 0), 0U);
    EXPECT_EQ(BehindRows(log, 0, 1), 5U);
    EXPECT_EQ(BehindRows(log, 0, 2), 9U);
    EXPECT_EQ(BehindRows(log, 5, 2), 17U);
    EXPECT_EQ(BehindRows(log, 0, 100), log.size());
    EXPECT_EQ(BehindRows("", 0, 1), 0U);
    for (int rows = 0; rows < 6; ++rows) {
        const std::size_t cut = BehindRows(log, 0, rows);
        EXPECT_EQ(ShownText(log.substr(0, cut)) + ShownText(log.substr(cut)), ShownText(log)) << rows;
    }
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

TEST(OldestRows, AreWholeRowsWhereThereAreAny)
{
    const std::string log = "one\r\ntwo\r\r\nthr\ree";
    EXPECT_EQ(OldestRows(log, 0), 0U);
    EXPECT_EQ(OldestRows(log, 1), 5U);
    EXPECT_EQ(OldestRows(log, 4), 5U) << "never between the characters of a line end";
    EXPECT_EQ(OldestRows(log, 5), 5U) << "the first row is just enough";
    EXPECT_EQ(OldestRows(log, 6), 11U);
    EXPECT_EQ(OldestRows(log, 10), 11U);
    EXPECT_EQ(OldestRows(log, 11), 11U);
    EXPECT_EQ(OldestRows(log, 12), 15U) << "a carriage return inside an entry";
    EXPECT_EQ(OldestRows(log, 16), 16U) << "the last row has no end";
    EXPECT_EQ(OldestRows("one\r\rtwo\r\n", 5), 5U) << "behind two of them";
    EXPECT_EQ(OldestRows(log, 100), log.size());
    EXPECT_EQ(OldestRows("", 1), 0U);
}

} // namespace
