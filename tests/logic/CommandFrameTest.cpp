#include "protocol/CommandFrame.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace vorn;

TEST(Checksum, IsTheLowByteOfTheSumOfAllCharacters)
{
    EXPECT_EQ(Checksum("$012"), "B7");
    EXPECT_EQ(Checksum("#01"), "84");
    EXPECT_EQ(Checksum("%0102400600"), "12");
    EXPECT_EQ(Checksum("\xFF\xFF"), "FE");
}

TEST(Checksum, HasOneDigitBelowSixteen)
{
    EXPECT_EQ(Checksum(""), "0");
    EXPECT_EQ(Checksum("\x0F"), "F");
    EXPECT_EQ(Checksum("\x10"), "10");
}

TEST(Checksum, OverflowsAboveTheSigned16BitRange)
{
    EXPECT_EQ(Checksum(std::string(128, '\xFF') + std::string(1, 127)), "FF"); // 32767
    try {
        Checksum(std::string(128, '\xFF') + std::string(1, '\x80')); // 32768
        FAIL() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.number(), RuntimeErrorNumber::Overflow);
    }
}

TEST(IsAccepted, LooksAtTheFirstCharacterOnly)
{
    EXPECT_TRUE(IsAccepted("!01"));
    EXPECT_TRUE(IsAccepted("!"));
    EXPECT_TRUE(IsAccepted(">+01.500", '>'));
    EXPECT_FALSE(IsAccepted("?01"));
    EXPECT_FALSE(IsAccepted(""));
    EXPECT_FALSE(IsAccepted(" !01"));
    EXPECT_FALSE(IsAccepted("!01", '>'));
    EXPECT_FALSE(IsAccepted(">01"));
}

TEST(Payload, LeavesOutAddressAndChecksum)
{
    EXPECT_EQ(Payload("!0106", false), "06");
    EXPECT_EQ(Payload("!010683", true), "06");
    EXPECT_EQ(DataPayload(">+001.00", false), "+001.00");
    EXPECT_EQ(DataPayload(">+001.007B", true), "+001.00");
}

TEST(Payload, OfAShortReplyIsEmpty)
{
    for (const char *reply : {"", "!", "!0", "!01", "!011", "!01AB"})
        EXPECT_EQ(Payload(reply, true), "") << reply;
    for (const char *reply : {"", ">", ">1", ">12"})
        EXPECT_EQ(DataPayload(reply, true), "") << reply;
    EXPECT_EQ(Payload("!01", false), "");
}

struct BaudCase {
    const char *caption, *code, *speed;
};

TEST(BaudTable, HasItsEightRows)
{
    constexpr BaudCase Rows[] = {
        {"1200  bps", "03", "1200"},    {"2400  bps", "04", "2400"},    {"4800  bps", "05", "4800"},
        {"9600  bps", "06", "9600"},    {" 19.2  kbps", "07", "19200"}, {" 38.4  kbps", "08", "38400"},
        {" 57.6  kbps", "09", "57600"}, {"115.2 kbps", "0A", "115200"},
    };
    ASSERT_EQ(BaudRows.size(), std::size(Rows));
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(BaudRows[static_cast<std::size_t>(i)].caption, Rows[i].caption);
        EXPECT_EQ(BaudCode(i), Rows[i].code);
        EXPECT_EQ(BaudSpeedText(i), Rows[i].speed);
        EXPECT_EQ(BaudIndexFromDigit(Rows[i].code[1]), i);
    }
}

TEST(BaudTable, KnowsNothingOutsideIt)
{
    for (const int index : {-1, 8, 100}) {
        EXPECT_EQ(BaudCode(index), "");
        EXPECT_EQ(BaudSpeedText(index), "");
    }
    for (const char digit : {'0', '2', 'B', 'a', '\0', ' '})
        EXPECT_EQ(BaudIndexFromDigit(digit), std::nullopt) << digit;
}

struct ModelCase {
    const char *reply;
    bool checksum;
    const char *model;
    const char *shortReply;
};

TEST(ReduceModelReply, TakesOutFamilyWordAndChecksum)
{
    constexpr ModelCase Cases[] = {
        {"!00VORN7254", false, "7254", "!007254"},    {"!007254", false, "7254", "!007254"},
        {"!0AVORN7252C7", true, "7252", "!0A7252"},   {"!0A7252C7", true, "7252", "!0A7252"},
        {"!00VORN3900E", false, "3900", "!003900"},   {"!003900E", false, "3900", "!003900"},
        {"!00VORN3900E9A", true, "3900", "!003900"},  {"!057221P", false, "7221P", "!057221P"},
        {"!00VORN3923H", false, "3923H", "!003923H"}, {"!003900", false, "3900", "!003900"},
    };
    for (const ModelCase &c : Cases) {
        const ModelReply reduced = ReduceModelReply(c.reply, c.checksum);
        EXPECT_EQ(reduced.model, c.model) << c.reply;
        EXPECT_EQ(reduced.reply, c.shortReply) << c.reply;
    }
}

TEST(ReduceModelReply, DropsModelsOfOtherFamilies)
{
    EXPECT_EQ(ReduceModelReply("!008017", false).model, "");
    EXPECT_EQ(ReduceModelReply("!00X7252", false).model, "");
    EXPECT_EQ(ReduceModelReply("!00VORN8017", false).model, "");
    EXPECT_EQ(ReduceModelReply("!00", false).model, "");
    EXPECT_EQ(ReduceModelReply("!", true).model, "");
    EXPECT_EQ(ReduceModelReply("", true).model, "");
}

TEST(ReduceModelReply, FindsTheFamilyWordAnywhereYetCutsAtEight)
{
    const ModelReply shifted = ReduceModelReply("!00 VORN7252", false); // the word begins at 5
    EXPECT_EQ(shifted.model, "");
    EXPECT_EQ(shifted.reply, "!00N7252");
    EXPECT_EQ(ReduceModelReply("!00abcd7252VORN", false).model, "7252VORN");
}

TEST(Checksum, KeepsTheLastTwoDigitsOfALargerSum)
{
    EXPECT_EQ(Checksum("\xFF"), "FF");
    EXPECT_EQ(Checksum("\xFF\x01"), "00"); // 256
    EXPECT_EQ(Checksum("\xFF\x02"), "01");
    EXPECT_EQ(Checksum("\x80\x80"), "00");
}

TEST(ReduceModelReply, KnowsTheFamilyWordInUpperCaseOnly)
{
    EXPECT_EQ(ReduceModelReply("!00vorn7252", false).model, "");
    EXPECT_EQ(ReduceModelReply("!00vorn7252", false).reply, "!00vorn7252");
}

TEST(ReduceModelReply, OfTheFamilyWordAloneHasNoModel)
{
    for (const char *reply : {"!00VORN", "!00VORNC7"}) {
        const ModelReply reduced = ReduceModelReply(reply, true);
        EXPECT_EQ(reduced.model, "") << reply;
    }
    EXPECT_EQ(ReduceModelReply("!00VORN", false).reply, "!00");
}

TEST(ReduceModelReply, KeepsModelsOfBothFamiliesForTheCatalogueToJudge)
{
    EXPECT_EQ(ReduceModelReply("!007290", false).model, "7290");
    EXPECT_EQ(ReduceModelReply("!003999", false).model, "3999");
    EXPECT_EQ(ReduceModelReply("!003900EX", false).model, "3900EX") << "only the whole text is folded";
    EXPECT_EQ(ReduceModelReply("!003900e", false).model, "3900e");
    EXPECT_EQ(ReduceModelReply("!008017", false).reply, "!008017");
}

} // namespace
