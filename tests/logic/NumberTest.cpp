#include "core/Number.h"

#include "core/RuntimeError.h"

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
                                  {0.5, ".5"},
                                  {-0.5, "-.5"},
                                  {100, "100"},
                                  {0.1 + 0.2, ".3"},
                                  {4294967295.0, "4294967295"},
                                  {1234567.25, "1234567.25"},
                                  {0.001, ".001"},
                                  {1e15, "1000000000000000"}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(TextOf(c.value), c.text);
}

TEST(TextOf, KeepsFifteenDigitsOfADoubleAndSevenOfASingle)
{
    EXPECT_EQ(TextOf(1.0 / 3), ".333333333333333");
    EXPECT_EQ(TextOfSingle(1.0F / 3), ".3333333");
    EXPECT_EQ(TextOfSingle(0.1F), ".1");
    EXPECT_EQ(TextOfSingle(12.25F), "12.25");
    EXPECT_EQ(TextOfSingle(-250.5F), "-250.5");
    EXPECT_EQ(TextOfSingle(123456.78F), "123456.8");
    EXPECT_EQ(TextOfSingle(0.01F), ".01");
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

} // namespace
