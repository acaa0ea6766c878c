#include "protocol/Number.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <string>

namespace
{

using namespace vorn;

int ErrorOf(auto read)
{
    try {
        read();
    } catch (const RuntimeError &error) {
        return error.number();
    }
    return 0;
}

struct ValueCase {
    const char *text;
    double value;
};

TEST(Val, ReadsTheNumberThatATextBeginsWith)
{
    constexpr ValueCase Cases[] = {
        {"12", 12},
        {"  12", 12},
        {"+5", 5},
        {"-12.25", -12.25},
        {".5", 0.5},
        {"-.5", -0.5},
        {"5.", 5},
        {"007", 7},
        {"12 ", 12},
        {"12abc", 12},
        {"1.2.3", 1.2},
        {"10!0A7252", 10},
        {"001!!", 1},
        {"1e3", 1},
        {"1,000", 1},
        {"--5", 0},
        {"+-5", 0},
        {"- 5", 0},
        {"abc", 0},
        {"", 0},
        {" ", 0},
        {".", 0},
        {"+", 0},
        {"&HFF", 0},
        {"inf", 0},
        {"nan", 0},
        {"+001.00", 1},
        {"\t5", 0},
        {"4294967296", 4294967296.0},
    };
    for (const ValueCase &c : Cases)
        EXPECT_EQ(Val(c.text), c.value) << "'" << c.text << "'";
}

TEST(Val, IsLimitedToItsLargestValue)
{
    EXPECT_EQ(Val(std::string(400, '9')), std::numeric_limits<double>::max());
    EXPECT_EQ(Val("-" + std::string(400, '9')), -std::numeric_limits<double>::max());
    EXPECT_EQ(Val("." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(HexVal(std::string(400, 'F')), std::numeric_limits<double>::max());
}

TEST(HexVal, StopsAtTheFirstOtherCharacter)
{
    EXPECT_EQ(HexVal("0A"), 10);
    EXPECT_EQ(HexVal("ff"), 255);
    EXPECT_EQ(HexVal("FFFFFFFF"), 4294967295.0);
    EXPECT_EQ(HexVal("1G"), 1);
    EXPECT_EQ(HexVal(" 1"), 0);
    EXPECT_EQ(HexVal(""), 0);
}

struct IntegerCase {
    const char *text;
    std::int32_t value;
};

TEST(StrictReads, RoundHalvesToEven)
{
    constexpr IntegerCase Cases[] = {{"80", 80},    {" 80 ", 80}, {"0.5", 0},   {"1.5", 2},   {"2.5", 2},
                                     {"3.5", 4},    {"-0.5", 0},  {"-1.5", -2}, {"-2.5", -2}, {"2.4999", 2},
                                     {"2.5001", 3}, {"+7", 7},    {".6", 1}};
    for (const IntegerCase &c : Cases) {
        EXPECT_EQ(CLng(c.text), c.value) << c.text;
        EXPECT_EQ(CInt(c.text), c.value) << c.text;
    }
}

TEST(StrictReads, RefuseATextThatIsNoNumberAsAWhole)
{
    for (const char *text :
         {"", " ", "abc", "12abc", "1 2", "1.2.3", "--1", "+", ".", "1e3", "0x10", "&HFF", "1,5"}) {
        EXPECT_EQ(ErrorOf([&] { CLng(text); }), RuntimeErrorNumber::TypeMismatch) << "'" << text << "'";
        EXPECT_EQ(ErrorOf([&] { CInt(text); }), RuntimeErrorNumber::TypeMismatch) << "'" << text << "'";
        EXPECT_EQ(ErrorOf([&] { CDbl(text); }), RuntimeErrorNumber::TypeMismatch) << "'" << text << "'";
    }
}

TEST(StrictReads, OverflowBeyondTheRangeOfTheType)
{
    EXPECT_EQ(CInt("32767"), 32767);
    EXPECT_EQ(CInt("32767.4"), 32767);
    EXPECT_EQ(ErrorOf([] { CInt("32767.5"); }), RuntimeErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { CInt("32768"); }), RuntimeErrorNumber::Overflow);
    EXPECT_EQ(CInt("-32768"), -32768);
    EXPECT_EQ(CInt("-32768.5"), -32768);
    EXPECT_EQ(ErrorOf([] { CInt("-32769"); }), RuntimeErrorNumber::Overflow);
    EXPECT_EQ(CLng("2147483647"), 2147483647);
    EXPECT_EQ(ErrorOf([] { CLng("2147483648"); }), RuntimeErrorNumber::Overflow);
    EXPECT_EQ(CLng("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ErrorOf([] { CLng(std::string(400, '9')); }), RuntimeErrorNumber::Overflow);
}

TEST(RoundHalfEven, GoesToTheEvenNeighbourAndStaysInRange)
{
    EXPECT_EQ(RoundHalfEven(0.5), 0);
    EXPECT_EQ(RoundHalfEven(1.5), 2);
    EXPECT_EQ(RoundHalfEven(-0.5), 0);
    EXPECT_EQ(RoundHalfEven(-1.5), -2);
    EXPECT_EQ(RoundHalfEven(2.49), 2);
    EXPECT_EQ(RoundHalfEven(1e300), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(RoundHalfEven(-1e300), std::numeric_limits<std::int64_t>::min());
}

TEST(ToSingle, StaysInRange)
{
    EXPECT_EQ(ToSingle(1.5), 1.5F);
    EXPECT_EQ(ToSingle(1e300), std::numeric_limits<float>::max());
    EXPECT_EQ(ToSingle(-1e300), -std::numeric_limits<float>::max());
}

TEST(Hex, IsUpperCaseAndUnpadded)
{
    EXPECT_EQ(Hex(0), "0");
    EXPECT_EQ(Hex(10), "A");
    EXPECT_EQ(Hex(255), "FF");
    EXPECT_EQ(Hex(4294967295U), "FFFFFFFF");
}

TEST(HexByte, HasTwoDigits)
{
    EXPECT_EQ(HexByte(0), "00");
    EXPECT_EQ(HexByte(10), "0A");
    EXPECT_EQ(HexByte(255), "FF");
}

struct TextCase {
    double value;
    const char *text;
};

TEST(TextOf, IsTheShortestDecimalText)
{
    constexpr TextCase Cases[] = {{0, "0"},
                                  {-0.0, "0"},
                                  {1, "1"},
                                  {1.5, "1.5"},
                                  {-12.25, "-12.25"},
                                  {0.5, "0.5"},
                                  {-0.5, "-0.5"},
                                  {100, "100"},
                                  {0.1 + 0.2, "0.3"},
                                  {4294967295.0, "4294967295"},
                                  {1234567.25, "1234567.25"},
                                  {0.001, "0.001"},
                                  {1e15, "1000000000000000"}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(TextOf(c.value), c.text);
}

TEST(TextOf, KeepsFifteenDigitsOfADoubleAndSevenOfASingle)
{
    EXPECT_EQ(TextOf(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(TextOfSingle(1.0F / 3), "0.3333333");
    EXPECT_EQ(TextOfSingle(0.1F), "0.1");
    EXPECT_EQ(TextOfSingle(12.25F), "12.25");
    EXPECT_EQ(TextOfSingle(-250.5F), "-250.5");
    EXPECT_EQ(TextOfSingle(123456.78F), "123456.8");
    EXPECT_EQ(TextOfSingle(0.01F), "0.01");
}

TEST(Numbers, FollowNoLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char *locale : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "C.UTF-8"}) {
        if (!std::setlocale(LC_ALL, locale))
            continue;
        EXPECT_EQ(Val("1.5"), 1.5) << locale;
        EXPECT_EQ(Val("1,5"), 1) << locale;
        EXPECT_EQ(TextOf(1.5), "1.5") << locale;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Val, StopsAtABlankInsideTheNumber)
{
    EXPECT_EQ(Val("1 2"), 1);
    EXPECT_EQ(Val("1. 5"), 1);
    EXPECT_EQ(Val("-7 "), -7);
    EXPECT_EQ(Val("12 Terminal"), 12);
}

TEST(CDbl, ReadsAWholeTextWithBlanksAround)
{
    constexpr ValueCase Cases[] = {{"80", 80},       {"  2.5 ", 2.5}, {"-.5", -0.5},
                                   {"+7.", 7},       {"007", 7},      {"4294967295", 4294967295.0},
                                   {"0.001", 0.001}, {"-0", 0}};
    for (const ValueCase &c : Cases)
        EXPECT_EQ(CDbl(c.text), c.value) << "'" << c.text << "'";
}

struct ErrorCase {
    const char *text;
    int error; ///< 0 for none
};

TEST(StrictReads, RoundBeforeTheLimitOf32BitsIsHeldAgainstThem)
{
    constexpr ErrorCase Cases[] = {
        {"2147483647", 0},  {"2147483647.4", 0}, {"2147483647.5", 6},  {"2147483648", 6},
        {"99999999999", 6}, {"-2147483648", 0},  {"-2147483648.5", 0}, {"-2147483648.6", 6},
        {"-2147483649", 6}, {"-99999999999", 6},
    };
    for (const ErrorCase &c : Cases)
        EXPECT_EQ(ErrorOf([&] { CLng(c.text); }), c.error) << c.text;
    EXPECT_EQ(CLng("2147483647.4"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(CLng("-2147483648.5"), std::numeric_limits<std::int32_t>::min());
}

TEST(StrictReads, RoundBeforeTheLimitOf16BitsIsHeldAgainstThem)
{
    constexpr ErrorCase Cases[] = {
        {"32767", 0},    {"32767.4", 0},  {"32767.5", 6},  {"-32768", 0},
        {"-32768.4", 0}, {"-32768.5", 0}, {"-32768.6", 6}, {"-32769", 6},
    };
    for (const ErrorCase &c : Cases)
        EXPECT_EQ(ErrorOf([&] { CInt(c.text); }), c.error) << c.text;
}

TEST(RoundHalfEven, HoldsAtBothEndsOfItsRange)
{
    EXPECT_EQ(RoundHalfEven(9223372036854774784.0), 9223372036854774784);
    EXPECT_EQ(RoundHalfEven(9223372036854775808.0), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(RoundHalfEven(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(RoundHalfEven(4503599627370495.5), 4503599627370496);
    EXPECT_EQ(RoundHalfEven(-2.500001), -3);
    EXPECT_EQ(RoundHalfEven(0.49999999999999994), 0);
}

TEST(HexByte, OfEveryByteReadsBack)
{
    for (int value = 0; value < 256; ++value) {
        const std::string text = HexByte(value);
        EXPECT_EQ(text.size(), 2U) << value;
        EXPECT_EQ(HexVal(text), value);
    }
}

TEST(TextOf, WritesTinyAndLargeValuesWithoutAnExponent)
{
    constexpr TextCase Cases[] = {
        {1e-10, "0.0000000001"},           {-1e-10, "-0.0000000001"},         {1e20, "100000000000000000000"},
        {-1e20, "-100000000000000000000"}, {1e22, "10000000000000000000000"},
    };
    for (const TextCase &c : Cases)
        EXPECT_EQ(TextOf(c.value), c.text);
}

TEST(TextOf, CarriesWhenTheFifteenthDigitRoundsUp)
{
    EXPECT_EQ(TextOf(0.9999999999999999), "1");
    EXPECT_EQ(TextOf(-0.9999999999999999), "-1");
    EXPECT_EQ(TextOf(999999999999999.9), "1000000000000000");
    EXPECT_EQ(TextOf(123456789012345.6), "123456789012346");
}

struct SingleCase {
    float value;
    const char *text;
};

TEST(TextOfSingle, IsTheShortestDecimalText)
{
    constexpr SingleCase Cases[] = {
        {0, "0"},
        {-0.0F, "0"},
        {-0.5F, "-0.5"},
        {-0.25F, "-0.25"},
        {-99.99F, "-99.99"},
        {0.000001F, "0.000001"},
        {-0.000001F, "-0.000001"},
        {9999.999F, "9999.999"},
        {-9999.999F, "-9999.999"},
        {99999.99F, "99999.99"},
        {16777216, "16777220"},
        {1e10F, "10000000000"},
    };
    for (const SingleCase &c : Cases)
        EXPECT_EQ(TextOfSingle(c.value), c.text);
}

TEST(TextOf, NeverHasMoreThanFifteenDigitsHoweverLargeTheValue)
{
    EXPECT_EQ(TextOf(1e23), "1" + std::string(23, '0'));
    EXPECT_EQ(TextOf(-1e23), "-1" + std::string(23, '0'));
    EXPECT_EQ(TextOf(1e300), "1" + std::string(300, '0'));
    EXPECT_EQ(TextOf(std::numeric_limits<double>::max()), "179769313486232" + std::string(294, '0'));
}

TEST(TextOfSingle, NeverHasMoreThanSevenDigitsHoweverLargeTheValue)
{
    EXPECT_EQ(TextOfSingle(1e20F), "1" + std::string(20, '0'));
    EXPECT_EQ(TextOfSingle(1e23F), "1" + std::string(23, '0'));
    EXPECT_EQ(TextOfSingle(std::numeric_limits<float>::max()), "3402823" + std::string(32, '0'));
}

TEST(TextOf, OfNoFiniteValueIsZero)
{
    EXPECT_EQ(TextOf(std::numeric_limits<double>::infinity()), "0");
    EXPECT_EQ(TextOf(-std::numeric_limits<double>::infinity()), "0");
    EXPECT_EQ(TextOf(std::numeric_limits<double>::quiet_NaN()), "0");
    EXPECT_EQ(TextOfSingle(std::numeric_limits<float>::infinity()), "0");
}

} // namespace
