#include "tools/ScopeFilter.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace vorn;

using List = std::vector<std::string>;

TEST(ScopeFilter, WithoutFilterShowsEveryLine)
{
    ScopeFilter scope;
    EXPECT_EQ(scope.Receive("$0A2\r", false, 0), "$0A2\r\r\n");
    EXPECT_EQ(scope.LineBuffer(), "");
    EXPECT_EQ(scope.Receive(">+01.000\r", false, 5), ">+01.000\r\r\n");
}

TEST(ScopeFilter, WaitsForTheRestOfALine)
{
    ScopeFilter scope;
    EXPECT_EQ(scope.Receive("$0", false, 0), "");
    EXPECT_EQ(scope.Receive("A2", false, 0), "");
    EXPECT_EQ(scope.LineBuffer(), "$0A2");
    EXPECT_EQ(scope.Receive("\r", false, 0), "$0A2\r\r\n");
    EXPECT_EQ(scope.LineBuffer(), "");
}

TEST(ScopeFilter, ShowsTwoLinesOfOnePieceAsOneEntry)
{
    ScopeFilter scope;
    EXPECT_EQ(scope.Receive("$0A2\r!0A400600\r", false, 0), "$0A2\r!0A400600\r\r\n");
}

TEST(ScopeFilter, KeepsALineThatEndsInsideAPieceInTheBuffer)
{
    ScopeFilter scope;
    EXPECT_EQ(scope.Receive("$0A2\r!0A", false, 0), "");
    EXPECT_EQ(scope.LineBuffer(), "$0A2\r!0A");
    EXPECT_EQ(scope.Receive("400600\r", false, 0), "$0A2\r!0A400600\r\r\n");
}

TEST(ScopeFilter, ShowsAChosenAddressOnlyAndEmptiesTheBufferEitherWay)
{
    ScopeFilter scope;
    scope.Update(List{"0A"});
    EXPECT_EQ(scope.Receive("$0A2\r", true, 1), "$0A2\r\r\n");
    EXPECT_EQ(scope.LineBuffer(), "");
    EXPECT_EQ(scope.Receive("$0B2\r", true, 1), "");
    EXPECT_EQ(scope.LineBuffer(), "");
    EXPECT_EQ(scope.Receive("!0A400600\r", true, 1), "!0A400600\r\r\n");
}

TEST(ScopeFilter, LooksAtCharactersTwoAndThreeOnly)
{
    ScopeFilter scope;
    scope.Update(List{"01"});
    EXPECT_EQ(scope.Receive(">01.500\r", true, 1), ">01.500\r\r\n") << "passes by accident of its digits";
    EXPECT_EQ(scope.Receive(">+01.500\r", true, 1), "");
    EXPECT_EQ(scope.Receive("01\r", true, 1), "");
    EXPECT_EQ(scope.Receive("\r", true, 1), "");
}

TEST(ScopeFilter, ShowsALineOnceForSeveralAddressesAndStartsTheNextOneClean)
{
    ScopeFilter scope;
    scope.Update(List{"0A", "0A", "0B"});
    EXPECT_EQ(scope.Receive("$0A2\r", true, 3), "$0A2\r\r\n");
    EXPECT_EQ(scope.Receive("$0B2\r", true, 3), "$0B2\r\r\n");
    EXPECT_EQ(scope.Receive("$0C2\r", true, 3), "");
    EXPECT_EQ(scope.LineBuffer(), "");
}

TEST(ScopeFilter, WithNothingSelectedPilesUpUntilASelectionIsMade)
{
    ScopeFilter scope;
    EXPECT_EQ(scope.Receive("$0A2\r", true, 0), "");
    EXPECT_EQ(scope.Receive("$0B2\r", true, 0), "");
    EXPECT_EQ(scope.LineBuffer(), "$0A2\r$0B2\r");
    scope.Update(List{"0A"});
    EXPECT_EQ(scope.Receive("$0C2\r", true, 1), "$0A2\r$0B2\r$0C2\r\r\n");
    EXPECT_EQ(scope.LineBuffer(), "");
}

TEST(ScopeFilter, KeepsTheNewestOfWhatPilesUpForEver)
{
    ScopeFilter scope;
    const std::string piece(1000, 'x');
    for (std::size_t i = 0; i < 2 * ScopeFilter::BufferCapacity / piece.size(); ++i) {
        EXPECT_EQ(scope.Receive(piece, false, 0), "");
        ASSERT_LE(scope.LineBuffer().size(), ScopeFilter::BufferCapacity);
    }
    EXPECT_TRUE(scope.Receive("$0A2\r", false, 0).ends_with("x$0A2\r\r\n"));
}

TEST(ScopeFilter, CountsTheEntriesSelectedNowNotThoseOfTheUpdate)
{
    ScopeFilter scope;
    scope.Update(List{"0A", "0B"});
    EXPECT_EQ(scope.Receive("$0B2\r", true, 1), "") << "one entry is left selected, the list wasn't updated";
    EXPECT_EQ(scope.Receive("$0B2\r", true, 2), "$0B2\r\r\n");
    EXPECT_EQ(scope.Receive("$0C2\r", true, 300), "") << "more than the list can hold";
}

TEST(ScopeFilter, AShorterUpdateLeavesTheEntriesBehindIt)
{
    ScopeFilter scope;
    scope.Update(List{"0A", "0B"});
    scope.Update(List{"0C"});
    EXPECT_EQ(scope.Receive("$0A2\r", true, 2), "");
    EXPECT_EQ(scope.Receive("$0B2\r", true, 2), "$0B2\r\r\n");
    EXPECT_EQ(scope.Receive("$0C2\r", true, 2), "$0C2\r\r\n");
}

List Addresses(int count)
{
    List addresses;
    for (int i = 0; i < count; ++i)
        addresses.push_back({static_cast<char>('0' + i / 10), static_cast<char>('0' + i % 10)});
    return addresses;
}

TEST(ScopeFilter, HoldsTwentyOneAddresses)
{
    ScopeFilter scope;
    EXPECT_NO_THROW(scope.Update(Addresses(21)));
    EXPECT_EQ(scope.Receive("$202\r", true, 21), "$202\r\r\n");
}

TEST(ScopeFilter, RaisesABoundsErrorAtTheTwentySecond)
{
    ScopeFilter scope;
    try {
        scope.Update(Addresses(22));
        FAIL() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.number(), RuntimeErrorNumber::SubscriptOutOfRange);
    }
    EXPECT_EQ(scope.Receive("$202\r", true, 22), "$202\r\r\n") << "the first 21 are written";
    EXPECT_EQ(scope.Receive("$212\r", true, 22), "");
}

} // namespace
