#include "protocol/Conversions.h"

#include "platform/RuntimeError.h"
#include "protocol/Number.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace
{

using namespace vorn;

int ErrorOf(auto convert)
{
    try {
        convert();
    } catch (const RuntimeError &error) {
        return error.number();
    }
    return 0;
}

struct TextCase {
    const char *text;
    const char *result;
};

TEST(HexToBin, ExpandsTheFirstTwoCharacters)
{
    constexpr TextCase Cases[] = {{"80", "10000000"}, {"00", "00000000"},  {"FF", "11111111"},
                                  {"4A", "01001010"}, {"3C6", "00111100"}, {"40 ", "01000000"}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(HexToBin(c.text), c.result) << c.text;
}

TEST(HexToBin, KnowsAllSixteenDigits)
{
    for (int value = 0; value < 256; ++value) {
        const std::string bits = HexToBin(HexByte(value));
        ASSERT_EQ(bits.size(), 8U);
        for (int bit = 0; bit < 8; ++bit)
            EXPECT_EQ(Bit(bits, bit), (value >> bit & 1) != 0) << value;
    }
}

TEST(HexToBin, RepeatsTheBitsBeforeAnUnknownCharacter)
{
    constexpr TextCase Cases[] = {
        {"4", "01000100"}, {"4x", "01000100"}, {"4a", "01000100"}, {"A ", "10101010"}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(HexToBin(c.text), c.result) << c.text;
}

TEST(HexToBin, AddsNothingForAnUnknownCharacterInFirstPlace)
{
    EXPECT_EQ(HexToBin("x4"), "0100");
    EXPECT_EQ(HexToBin("x"), "");
    EXPECT_EQ(HexToBin("xy"), "");
    EXPECT_EQ(HexToBin(""), "");
}

struct BinCase {
    const char *bin;
    const char *hex;
    const char *left; ///< what the argument holds behind the call
};

TEST(BinToHex, FillsItsArgumentToEightCharacters)
{
    constexpr BinCase Cases[] = {{"101", "05", "00000101"},
                                 {"11111111", "FF", "11111111"},
                                 {"01000000", "40", "01000000"},
                                 {"1010101010", "AA", "10101010"},
                                 {"0", "00", "00000000"}};
    for (const BinCase &c : Cases) {
        std::string bin = c.bin;
        EXPECT_EQ(BinToHex(bin), c.hex) << c.bin;
        EXPECT_EQ(bin, c.left) << c.bin;
    }
}

TEST(BinToHex, NamesAnErrorForOtherCharacters)
{
    for (const char *text : {"1012", "x", "0000000 ", "2"}) {
        std::string bin = text;
        EXPECT_EQ(BinToHex(bin), "INPUT ERROR") << text;
    }
    std::string cut = "x00000001"; // the ninth from behind is cut off
    EXPECT_EQ(BinToHex(cut), "01");
}

TEST(BinToHex, LeavesAnEmptyArgumentEmpty)
{
    std::string bin;
    EXPECT_EQ(BinToHex(bin), "");
    EXPECT_EQ(bin, "");
}

TEST(BinToHex, IsTheInverseOfHexToBin)
{
    for (int value = 0; value < 256; ++value) {
        std::string bin = HexToBin(HexByte(value));
        EXPECT_EQ(BinToHex(bin), HexByte(value));
    }
}

TEST(DecToHex8, CoversTheUnsigned32BitRange)
{
    constexpr TextCase Cases[] = {
        {"0", "00000000"},          {"255", "000000FF"},        {"2147483647", "7FFFFFFF"},
        {"2147483648", "80000000"}, {"4294967294", "FFFFFFFE"}, {"4294967295", "FFFFFFFF"},
        {"3000000000", "B2D05E00"}, {" 16 ", "00000010"},       {"", ""}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(DecToHex8(c.text), c.result) << c.text;
}

TEST(DecToHex8, LosesTheTopOfALargerValue)
{
    EXPECT_EQ(DecToHex8("4294967296"), "00000000");
    EXPECT_EQ(DecToHex8("4294967297"), "00000001");
    EXPECT_EQ(DecToHex8("6442450941"), "7FFFFFFD"); // three times the largest signed value
    EXPECT_EQ(DecToHex8("6442450942"), "7FFFFFFE");
    EXPECT_EQ(DecToHex8("99999999999"), "4876E7FF");
}

TEST(DecToHex8, ReadsStrictly)
{
    EXPECT_EQ(DecToHex8("2.5"), "00000002");
    EXPECT_EQ(DecToHex8("3.5"), "00000004");
    EXPECT_EQ(DecToHex8("-1"), "FFFFFFFF");
    EXPECT_EQ(ErrorOf([] { DecToHex8("12a"); }), RuntimeErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorOf([] { DecToHex8(" "); }), RuntimeErrorNumber::TypeMismatch);
    EXPECT_EQ(DecToHex8("-2147483648"), "80000000");
    EXPECT_EQ(ErrorOf([] { DecToHex8("-2147483649"); }), RuntimeErrorNumber::Overflow);
}

TEST(Hex8ToDec, IsUnsigned)
{
    constexpr TextCase Cases[] = {{"FFFFFFFF", "4294967295"}, {"80000000", "2147483648"}, {"000000FF", "255"},
                                  {"00000000", "0"},          {"7FFFFFFF", "2147483647"}, {"", ""}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(Hex8ToDec(c.text), c.result) << c.text;
}

TEST(Hex8ToDec, RaisesForTextThatIsNoNumber)
{
    for (const char *text : {"0000000G", "G0000000", "FF", "0000000"})
        EXPECT_EQ(ErrorOf([&] { Hex8ToDec(text); }), RuntimeErrorNumber::TypeMismatch) << text;
}

TEST(Hex8ToDec, IsTheInverseOfDecToHex8)
{
    for (const char *text : {"0", "1", "65535", "2147483647", "2147483648", "4294967295"})
        EXPECT_EQ(Hex8ToDec(DecToHex8(text)), text);
}

TEST(DotlessTwoDigit, DropsPointsAndFillsOnce)
{
    constexpr TextCase Cases[] = {{"2.5", "25"},    {".5", "05"},   {"5", "05"},   {"12.5", "0125"},
                                  {"1.25", "0125"}, {"3", "03"},    {"2.4", "24"}, {"10", "10"},
                                  {"", "0"},        {".", "00"},    {"0.5", "05"}, {"1.2.3", "0123"},
                                  {"5.", "05"},     {".25", "0025"}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(DotlessTwoDigit(c.text), c.result) << c.text;
}

struct SignedCase {
    int digits;
    float value;
    const char *text;
};

TEST(FormatSigned7, FillsToSevenCharacters)
{
    constexpr SignedCase Cases[] = {
        {2, 1.5F, "+01.500"},  {2, -12.25F, "-12.250"}, {2, 0, "+00.000"},       {2, 15, "+15.000"},
        {3, 100, "+100.00"},   {3, -5, "-005.00"},      {1, 2.5F, "+2.5000"},    {1, -1, "-1.0000"},
        {4, 1000, "+1000.0"},  {4, 760.5F, "+0760.5"},  {3, -99.5F, "-099.50"},  {2, 0.5F, "+00.500"},
        {2, -0.5F, "-00.500"}, {1, 0.25F, "+0.2500"},   {3, 12.125F, "+012.12"},
    };
    for (const SignedCase &c : Cases) {
        std::string out = "old";
        FormatSigned7(out, c.digits, c.value);
        EXPECT_EQ(out, c.text) << c.digits << " " << c.value;
    }
}

TEST(FormatSigned7, SignIsZeroAboveTheLimitOfItsDigits)
{
    constexpr SignedCase Cases[] = {{1, 11.5F, "011.500"},
                                    {2, 101, "0101.00"},
                                    {1, 10, "+10.000"},
                                    {2, -150.5F, "0150.5."},
                                    {2, 100, "+100.00"}};
    for (const SignedCase &c : Cases) {
        std::string out;
        FormatSigned7(out, c.digits, c.value);
        EXPECT_EQ(out, c.text) << c.digits << " " << c.value;
    }
}

TEST(FormatSigned7, LooksForThePointInFourCharactersOnly)
{
    std::string out;
    FormatSigned7(out, 3, -250.5F); // its point is the fifth
    EXPECT_EQ(out, "-250.5.");
    FormatSigned7(out, 4, 1234.5F);
    EXPECT_EQ(out, "+1234.5");
    FormatSigned7(out, 3, 250.5F);
    EXPECT_EQ(out, "+250.50");
}

TEST(FormatSigned7, KeepsTheIntegerPartWhereNoDigitsAreAskedFor)
{
    std::string out;
    FormatSigned7(out, 0, 0.5F);
    EXPECT_EQ(out, "+0.5000");
}

struct OutputCase {
    const char *text;
    char format;
    const char *result;
};

TEST(FormatOutputValue, WritesEveryDataFormat)
{
    constexpr OutputCase Cases[] = {
        {"5.5", '0', "05.500"},    {"12", '0', "12.000"},
        {"5", '0', "05.000"},      {".5", '0', "00.500"},
        {"5.", '0', "05.000"},     {"12.5", '0', "12.500"},
        {"123", '0', "123.00"},    {"123.4567", '0', "123.4567"},
        {"5.5", '1', "+005.50"},   {"5", '1', "+005.00"},
        {"50", '1', "+050.00"},    {"100", '1', "+100.00"},
        {".5", '1', "+000.50"},    {"12.5", '1', "+012.50"},
        {"100.5", '1', "+100.50"}, {"F", '2', "00F"},
        {"FF", '2', "0FF"},        {"FFF", '2', "FFF"},
        {"1FFF", '2', "1FFF"},     {"", '2', "000"},
        {"5.5", '3', "5.5"},       {"5.5", '\0', "5.5"},
    };
    for (const OutputCase &c : Cases) {
        std::string text = c.text;
        EXPECT_EQ(FormatOutputValue(text, c.format), c.result) << c.text << " " << c.format;
        EXPECT_EQ(text, c.result) << "the argument is changed, too";
    }
}

TEST(FormatOutputValue, PutsNothingInFrontOfAnEmptyText)
{
    std::string text;
    EXPECT_EQ(FormatOutputValue(text, '0'), ".00000");
    text.clear();
    EXPECT_EQ(FormatOutputValue(text, '1'), "+.00000");
}

TEST(Bits, AreNumberedFromTheRight)
{
    EXPECT_TRUE(Bit("00000001", 0));
    EXPECT_TRUE(Bit("10000000", 7));
    EXPECT_FALSE(Bit("01111111", 7));
    EXPECT_FALSE(Bit("", 0));
    EXPECT_FALSE(Bit("0001", 0)) << "bit 0 is character 8";
}

TEST(Bits, AreSetInPlace)
{
    for (int bit = 0; bit < 8; ++bit) {
        std::string bits = "00000000";
        SetBit(bits, bit, true);
        EXPECT_EQ(BinToHex(bits), HexByte(1 << bit));
        SetBit(bits, bit, false);
        EXPECT_EQ(bits, "00000000");
    }
    std::string shortText = "0000";
    SetBit(shortText, 0, true);
    EXPECT_EQ(shortText, "0000");
    std::string outside = "00000000";
    SetBit(outside, 8, true);
    SetBit(outside, -1, true);
    EXPECT_EQ(outside, "00000000");
}

TEST(HexToBin, TakesLowerCaseForUnknown)
{
    for (const char digit : {'a', 'b', 'c', 'd', 'e', 'f'}) {
        EXPECT_EQ(HexToBin(std::string("8") + digit), "10001000") << digit;
        EXPECT_EQ(HexToBin(digit + std::string("8")), "1000") << digit;
    }
}

TEST(DecToHex8, ChangesItsWayAtTheSignedLimit)
{
    constexpr TextCase Cases[] = {{"2147483646", "7FFFFFFE"},    {"2147483647.4", "7FFFFFFF"},
                                  {"2147483649", "80000001"},    {"4294967293", "FFFFFFFD"},
                                  {"-2147483648.5", "80000000"}, {"-0.5", "00000000"},
                                  {"-255", "FFFFFF01"},          {"+5", "00000005"}};
    for (const TextCase &c : Cases)
        EXPECT_EQ(DecToHex8(c.text), c.result) << c.text;
    EXPECT_EQ(DecToHex8(std::string(400, '9')).size(), 8U);
}

TEST(DecToHex8, RefusesHexadecimalTextAndExponents)
{
    for (const char *text : {"FF", "&HFF", "1e3", "1,000", "--1", "."})
        EXPECT_EQ(ErrorOf([&] { DecToHex8(text); }), RuntimeErrorNumber::TypeMismatch) << text;
}

TEST(Hex8ToDec, IgnoresWhatFollowsTheEighthCharacter)
{
    EXPECT_EQ(Hex8ToDec("0000001023"), "16");
    EXPECT_EQ(Hex8ToDec("FFFFFFFFzz"), "4294967295");
}

TEST(Hex8ToDec, ReadsEitherCaseAndRefusesSignsAndBlanks)
{
    EXPECT_EQ(Hex8ToDec("ffffffff"), "4294967295");
    for (const char *text : {"-0000001", "+0000001", " 0000001", "0000000 ", "0000.001"})
        EXPECT_EQ(ErrorOf([&] { Hex8ToDec(text); }), RuntimeErrorNumber::TypeMismatch) << text;
}

TEST(Hex8ToDec, OfEverySingleBitIsAPowerOfTwo)
{
    for (int bit = 0; bit < 32; ++bit) {
        const std::uint32_t value = std::uint32_t{1} << bit;
        const std::string decimal = std::to_string(value);
        EXPECT_EQ(Hex8ToDec(DecToHex8(decimal)), decimal);
        EXPECT_EQ(HexVal(DecToHex8(decimal)), value);
    }
}

TEST(FormatSigned7, OfAFractionBelowOneStillHasItsIntegerDigits)
{
    constexpr SignedCase Cases[] = {{2, 0.0001F, "+00.000"}, {2, -0.0001F, "-00.000"}, {3, 0.5F, "+000.50"},
                                    {3, -0.5F, "-000.50"},   {1, -0.125F, "-0.1250"},  {2, 0.01F, "+00.010"}};
    for (const SignedCase &c : Cases) {
        std::string out;
        FormatSigned7(out, c.digits, c.value);
        EXPECT_EQ(out, c.text) << c.digits << " " << c.value;
    }
}

TEST(FormatSigned7, CutsALargeValueToSevenCharacters)
{
    constexpr SignedCase Cases[] = {
        {2, 10000000, "0100000"},  {2, -10000000, "0100000"}, {4, 1372.25F, "+1372.2"},
        {4, 9999.875F, "+9999.8"}, {2, 99.875F, "+99.875"},   {2, -99.875F, "-99.875"},
        {3, 999.9375F, "+999.93"}, {3, -1000, "-1000.0"},     {3, -1001, "01001.0"}};
    for (const SignedCase &c : Cases) {
        std::string out;
        FormatSigned7(out, c.digits, c.value);
        EXPECT_EQ(out, c.text) << c.digits << " " << c.value;
    }
}

TEST(FormatOutputValue, LooksAtTheFirstPointOnly)
{
    constexpr OutputCase Cases[] = {
        {".", '0', "00.000"},       {".", '1', "+000.00"},      {"1.2.3", '0', "01.2.3"},
        {"1.2.3", '1', "+001.2.3"}, {"50.", '1', "+050.00"},    {"12.", '0', "12.000"},
        {"100.", '1', "+100.00"},   {"123.45", '1', "+123.45"}, {"1234.5", '1', "+1234.5"},
        {"1.2345", '0', "01.2345"}, {"1234", '1', "+1234.0"},   {"123456", '0', "123456."},
    };
    for (const OutputCase &c : Cases) {
        std::string text = c.text;
        EXPECT_EQ(FormatOutputValue(text, c.format), c.result) << c.text << " " << c.format;
    }
}

TEST(FormatOutputValue, LeavesEveryOtherFormatAlone)
{
    for (int c = 0; c < 256; ++c) {
        const char format = static_cast<char>(c);
        if (format >= '0' && format <= '2')
            continue;
        std::string text = "5.5";
        EXPECT_EQ(FormatOutputValue(text, format), "5.5") << c;
        EXPECT_EQ(text, "5.5") << c;
    }
}

} // namespace
