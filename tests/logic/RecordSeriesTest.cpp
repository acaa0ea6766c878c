#include "logger/RecordSeries.h"
#include "logger/SheetText.h"

#include <gtest/gtest.h>

#include <limits>

using namespace vorn;

namespace
{

RecordSheet Events()
{
    return {{"Record", "Channel", "Value", "Time stamp"},
            {0.0, 0.0, "-0.5", 1000.0, 1.0, 3.0, "+1.25", 1060.0, 2.0, 0.0, "-0", 1120.0}};
}

} // namespace

TEST(SeriesOf, HasALineForEachChannel)
{
    EXPECT_EQ(SeriesOf(Events(), RecordKind::Standard),
              (std::vector<ChannelSeries>{{0, {0, 2}, {-0.5, 0}}, {3, {1}, {1.25}}}));
}

TEST(SeriesOf, RunsOverTheTimeStampsOfEvents)
{
    EXPECT_EQ(SeriesOf(Events(), RecordKind::Event),
              (std::vector<ChannelSeries>{{0, {1000, 1120}, {-0.5, 0}}, {3, {1060}, {1.25}}}));
}

TEST(SeriesOf, LeavesOutWhatIsNoRecord)
{
    const RecordSheet foreign(
        {"A", "B", "C"}, {0.0, 0.0, "text", 1.0, {}, "+1", "x", 0.0, "+1", 2.0, 99.0, "+1", "3", "2", 7.5});
    EXPECT_EQ(SeriesOf(foreign, RecordKind::Standard), (std::vector<ChannelSeries>{{2, {3}, {7.5}}}));
    EXPECT_TRUE(SeriesOf(foreign, RecordKind::Event).empty());
    EXPECT_TRUE(SeriesOf({}, RecordKind::Standard).empty());
    constexpr double Endless = std::numeric_limits<double>::infinity();
    const RecordSheet damaged({"A", "B", "C"}, {1.0, 2.0, Endless, Endless, 2.0, "1", 3.0, -Endless, "1"});
    EXPECT_TRUE(SeriesOf(damaged, RecordKind::Standard).empty());
}

TEST(CsvText, HasTitlesAndQuotesWhatNeedsIt)
{
    EXPECT_EQ(CsvText(Events()), "Record,Channel,Value,Time stamp\r\n0,0,-0.5,1000\r\n1,3,+1.25,1060\r\n"
                                 "2,0,-0,1120\r\n");
    EXPECT_EQ(CsvText({{"A,B", "C"}, {"say \"a\"", {}, "two\nlines", 4294967295.0}}),
              "\"A,B\",C\r\n\"say \"\"a\"\"\",\r\n\"two\nlines\",4294967295\r\n");
}

TEST(SheetText, ComesBackAsItWas)
{
    const RecordSheet sheet({"A", "B\\n"}, {1.5, "two\nlines\\", {}, 4294967295.0});
    const RecordSheet back = ParseSheetText(SheetText(sheet));
    EXPECT_EQ(back.Titles(), sheet.Titles());
    ASSERT_EQ(back.Rows(), 2U);
    for (std::size_t row = 0; row < 2; ++row) {
        for (std::size_t column = 0; column < 2; ++column)
            EXPECT_EQ(back.Cell(row, column), sheet.Cell(row, column));
    }
}

TEST(SheetText, ThatIsNotWholeIsRefused)
{
    for (const char *text : {"", "2", "x\n.\n", "1\ntA\nn1\n", "1\ntA\nn1\n.", "2\ntA\ntB\nn1\n.\n",
                             "1\ntA\nn1x\n.\n", "1\ntA\nq\n.\n", "1\ntA\n\n.\n", "-1\n.\n"})
        EXPECT_THROW(ParseSheetText(text), WorkbookError) << text;
}
