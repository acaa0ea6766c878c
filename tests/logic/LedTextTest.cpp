#include "tools/LedText.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace
{

using namespace vorn;

struct ValueCase {
    const char *entry;
    const char *value;
};

TEST(LedValue, OfTheSignedDisplay)
{
    constexpr ValueCase Cases[] = {
        {"5", "+050000"},    {"15", "+015000"},        {"1.5", "+01.500"},  {"+5", "+050000"},
        {"-5", "-050000"},   {"-15", "-150000"},       {"+1.5", "+1.5000"}, {"-0.5", "-0.5000"},
        {"-2.5", "-02.500"}, {"123456789", "+012345"}, {"-", "-000000"},    {".5", ".500000"},
        {"+.5", "+.50000"},  {"", "0000000"},
    };
    for (const ValueCase &c : Cases)
        EXPECT_EQ(LedValue("7212D", c.entry), c.value) << "'" << c.entry << "'";
}

TEST(LedValue, OfTheUnsignedDisplays)
{
    constexpr ValueCase Cases[] = {
        {"123", "123.000"},       {"5", "5.00000"},  {"12345", "12345.0"},
        {"1.5", "1.50000"},       {".5", "0.50000"}, {"12.3456", "12.3450"},
        {"1234.5678", "1234.50"}, {"", ".000000"},   {".", "0.00000"},
    };
    for (const char *model : {"7282D", "7282N"}) {
        for (const ValueCase &c : Cases)
            EXPECT_EQ(LedValue(model, c.entry), c.value) << model << " '" << c.entry << "'";
    }
}

TEST(LedValue, OfTheUnsignedDisplaysIsCutToFiveDigits)
{
    for (const char *model : {"7282D", "7282N"}) {
        for (const char *entry : {"123456", "1234567"})
            EXPECT_EQ(LedValue(model, entry), "12345.0") << model << " " << entry;
    }
}

TEST(LedValue, AlwaysHasSevenCharacters)
{
    for (const char *model : {"7212D", "7282D", "7282N"}) {
        for (const char *entry : {"", "1", "+", "-1.", ".", "99999999", "1.2345678", "00000.1"})
            EXPECT_EQ(LedValue(model, entry).size(), 7U) << model << " '" << entry << "'";
    }
}

TEST(DigitPicture, KnowsDigitsAndPoint)
{
    for (char digit = '0'; digit <= '9'; ++digit)
        EXPECT_EQ(DigitPicture(digit), std::string("K") + digit);
    EXPECT_EQ(DigitPicture('.'), "K.");
    for (const char other : {'+', '-', ' ', 'A', '\0'})
        EXPECT_EQ(DigitPicture(other), "") << other;
}

struct PictureCase {
    const char *value;
    std::array<std::string, LedDigits> keys;
};

TEST(LedPictures, OfTheSignedDisplayBeginWithSignAndHalfDigit)
{
    const PictureCase cases[] = {
        {"-150000", {"K-1", "K5", "K0", "K0", "K0"}},
        {"+1.5000", {"K+1.", "K5", "K0", "K0", "K0"}},
        {"+050000", {"", "K5", "K0", "K0", "K0"}},
        {"-050000", {"K-", "K5", "K0", "K0", "K0"}},
        {"-12.345", {"K-1", "K2.", "K3", "K4", "K5"}},
        {"+000000", {"", "K0", "K0", "K0", "K0"}},
        {".500000", {"K.", "K5", "K0", "K0", "K0"}},
        {"+.50000", {"K+.", "K5", "K0", "K0", "K0"}},
        {"+0.5000", {"K.", "K5", "K0", "K0", "K0"}},
        {"-0.5000", {"K-.", "K5", "K0", "K0", "K0"}},
        {"+012345", {"", "K1", "K2", "K3", "K4"}},
        {"0000000", {"", "K0", "K0", "K0", "K0"}},
        {"", {"", "", "", "", ""}},
        {"-", {"K-", "", "", "", ""}},
    };
    for (const PictureCase &c : cases)
        EXPECT_EQ(LedPictures("7212D", c.value), c.keys) << c.value;
}

TEST(LedPictures, OfTheSignedDisplayShowAllFourDigitsOfAnEntry)
{
    using Keys = std::array<std::string, LedDigits>;
    const auto shown = [](const char *entry) { return LedPictures("7212D", LedValue("7212D", entry)); };
    EXPECT_EQ(shown("12.5"), (Keys{"", "K1", "K2.", "K5", "K0"}));
    EXPECT_EQ(shown("-98.76"), (Keys{"K-", "K9", "K8.", "K7", "K6"}));
    EXPECT_EQ(shown("+1.2345"), (Keys{"K+1.", "K2", "K3", "K4", "K5"}));
}

TEST(LedPictures, OfTheUnsignedDisplaysAreFiveDigits)
{
    const PictureCase cases[] = {
        {"123.000", {"K1", "K2", "K3.", "K0", "K0"}},
        {"12345.0", {"K1", "K2", "K3", "K4", "K5."}},
        {"0.50000", {"K0.", "K5", "K0", "K0", "K0"}},
        {"9876.50", {"K9", "K8", "K7", "K6.", "K5"}},
        {"", {"", "", "", "", ""}},
        {"12", {"K1", "K2", "", "", ""}},
    };
    for (const char *model : {"7282D", "7282N"}) {
        for (const PictureCase &c : cases)
            EXPECT_EQ(LedPictures(model, c.value), c.keys) << model << " " << c.value;
    }
}

} // namespace
