#include "protocol/Text.h"

#include <gtest/gtest.h>

namespace
{

using namespace vorn;

TEST(Text, CutsByPositionsFromOne)
{
    EXPECT_EQ(Mid("!01400600", 4, 2), "40");
    EXPECT_EQ(Mid("!01400600", 1, 1), "!");
    EXPECT_EQ(Mid("!01400600", 8), "00");
    EXPECT_EQ(Left("!01400600", 3), "!01");
    EXPECT_EQ(Right("!01400600", 2), "00");
    EXPECT_EQ(CharAt("!01", 1), '!');
    EXPECT_EQ(CharAt("!01", 3), '1');
}

TEST(Text, PastTheEndThereIsLessOrNothing)
{
    EXPECT_EQ(Mid("!01", 3, 5), "1");
    EXPECT_EQ(Mid("!01", 4), "");
    EXPECT_EQ(Mid("!01", 99, 2), "");
    EXPECT_EQ(Mid("!01", 0, 2), "");
    EXPECT_EQ(Mid("", 1), "");
    EXPECT_EQ(Left("ab", 5), "ab");
    EXPECT_EQ(Right("ab", 5), "ab");
    EXPECT_EQ(Right("", 2), "");
    EXPECT_EQ(CharAt("!01", 4), '\0');
    EXPECT_EQ(CharAt("!01", 0), '\0');
    EXPECT_EQ(CharAt("", 1), '\0');
}

TEST(Text, BytesOfAllValuesSurvive)
{
    const std::string bytes("\0\x80\xFF", 3);
    EXPECT_EQ(Mid(bytes, 1), bytes);
    EXPECT_EQ(Mid(bytes, 2, 1), "\x80");
    EXPECT_EQ(CharAt(bytes, 3), '\xFF');
}

TEST(Text, PaddingNeverCuts)
{
    EXPECT_EQ(PadLeft("7", 3, '0'), "007");
    EXPECT_EQ(PadLeft("1234", 3, '0'), "1234");
    EXPECT_EQ(PadLeft("", 2, ' '), "  ");
    EXPECT_EQ(PadRight("1.5", 6, '0'), "1.5000");
    EXPECT_EQ(PadRight("1234", 3, '0'), "1234");
}

TEST(Text, DigitsOfEitherBase)
{
    for (int c = 0; c < 256; ++c) {
        const char character = static_cast<char>(c);
        EXPECT_EQ(IsDigit(character), std::string("0123456789").find(character) != std::string::npos) << c;
        EXPECT_EQ(IsHexDigit(character),
                  std::string("0123456789ABCDEFabcdef").find(character) != std::string::npos)
            << c;
        EXPECT_EQ(IsSign(character), character == '+' || character == '-') << c;
    }
    EXPECT_EQ(HexDigitValue('9'), 9);
    EXPECT_EQ(HexDigitValue('A'), 10);
    EXPECT_EQ(HexDigitValue('f'), 15);
    EXPECT_EQ(HexDigitValue('G'), -1);
}

TEST(Text, OneOfComparesWholeTexts)
{
    EXPECT_TRUE(IsOneOf("7203D", {"7203", "7203D"}));
    EXPECT_FALSE(IsOneOf("7203d", {"7203", "7203D"}));
    EXPECT_FALSE(IsOneOf("720", {"7203", "7203D"}));
    EXPECT_FALSE(IsOneOf("", {"7203"}));
}

TEST(Text, CutsOfNoLengthAreEmpty)
{
    EXPECT_EQ(Mid("!01", 1, 0), "");
    EXPECT_EQ(Left("!01", 0), "");
    EXPECT_EQ(Right("!01", 0), "");
    EXPECT_EQ(Left("", 0), "");
    EXPECT_EQ(PadRight("", 2, '0'), "00");
    EXPECT_EQ(PadLeft("ab", 2, '0'), "ab");
    EXPECT_EQ(PadLeft("ab", 0, '0'), "ab");
}

} // namespace
