#include "pages/SlotUpdate.h"

#include "protocol/RangeTables.h"
#include "protocol/SlotRecord.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace vorn;

SlotSettings Slot(const std::string &model, int range = 0, int format = -1, int timeSlewRate = -1)
{
    return {
        .node = NodeKey("_00032!0A" + model), .range = range, .format = format, .timeSlewRate = timeSlewRate};
}

SlotSettings Channel(const std::string &model, int range = 0, int format = -1, int timeSlewRate = -1)
{
    SlotSettings settings = Slot(model, range, format, timeSlewRate);
    settings.node = NodeKey("_000325"
                            "0A" +
                            model);
    return settings;
}

struct CodesCase {
    const char *model;
    std::vector<std::string> codes;
};

const std::vector<CodesCase> SlotCodes{
    {"3921", {"20", "21", "22", "23", "24", "25", "26", "27", "28", "29"}},
    {"3923", {"08", "09", "0A", "0B", "0C", "0D"}},
    {"3925", {"00", "01", "02", "03", "04", "05", "06", "0E", "0F", "10", "11", "12", "13", "14", "15"}},
};

TEST(SlotUpdateCommand, HoldsTheTypeCodeOfEveryListPosition)
{
    for (const CodesCase &c : SlotCodes) {
        for (std::size_t i = 0; i < c.codes.size(); ++i)
            EXPECT_EQ(SlotUpdateCommand(Slot(c.model, static_cast<int>(i))), "$0AS2A" + c.codes[i] + "00")
                << c.model;
        for (const int outside : {-1, static_cast<int>(c.codes.size())})
            EXPECT_EQ(SlotUpdateCommand(Slot(c.model, outside)), "$0AS2A00") << c.model << " " << outside;
    }
    const std::vector<std::string> fast{"00", "01", "02", "03", "04", "05",
                                        "06", "07", "08", "09", "0A", "0B"};
    for (std::size_t i = 0; i < fast.size(); ++i)
        EXPECT_EQ(SlotUpdateCommand(Channel("3923H", static_cast<int>(i))), "$0AS2C5A" + fast[i] + "FF");
    const std::vector<std::string> outputs{"30", "31", "32"};
    for (std::size_t i = 0; i < outputs.size(); ++i)
        EXPECT_EQ(SlotUpdateCommand(Channel("3931", static_cast<int>(i), -1, 0)),
                  "$0AS2C5A" + outputs[i] + "00");
    EXPECT_EQ(SlotUpdateCommand(Channel("3931", 3, -1, 0)), "$0AS2C5A00");
}

TEST(SlotUpdateCommand, HoldsTheDataFormat)
{
    EXPECT_EQ(SlotUpdateCommand(Slot("3921", 0, 0)), "$0AS2A2000");
    EXPECT_EQ(SlotUpdateCommand(Slot("3921", 0, 1)), "$0AS2A2003");
    EXPECT_EQ(SlotUpdateCommand(Slot("3923", 0, 1)), "$0AS2A0800") << "it has no format list";
    EXPECT_EQ(SlotUpdateCommand(Slot("3923H", 4, 0)), "$0AS2AFF00") << "the ranges are its channels'";
    EXPECT_EQ(SlotUpdateCommand(Slot("3923H", 4, 1)), "$0AS2AFF02");
    EXPECT_EQ(SlotUpdateCommand(Channel("3923H", 4, 1)), "$0AS2C5A04FF") << "the format is its slot's";
    EXPECT_EQ(SlotUpdateCommand(Slot("3962", 2, 0)), "$0AS2A0200");
    EXPECT_EQ(SlotUpdateCommand(Slot("3962", 1, 1)), "$0AS2A0102");
    EXPECT_EQ(SlotUpdateCommand(Slot("3962", 1, -1)), "$0AS2A01");
}

TEST(SlotUpdateCommand, HoldsTheIntegrationTime)
{
    for (const char *model : {"3921", "3923", "3925"}) {
        EXPECT_EQ(SlotFormatBits(Slot(model, 0, 0, 1)), "10000000") << model;
        EXPECT_EQ(SlotFormatBits(Slot(model, 0, 0, 0)), "00000000") << model;
    }
    EXPECT_EQ(SlotFormatBits(Slot("3921", 0, 1, 1)), "10000011");
    EXPECT_EQ(SlotFormatBits(Slot("3923H", 0, 0, 1)), "00000000");
    EXPECT_EQ(SlotFormatBits(Slot("3962", 0, 0, 1)), "00000000");
}

TEST(SlotUpdateCommand, HoldsTheSlewRateInTheMiddleBits)
{
    EXPECT_EQ(SlotFormatBits(Channel("3931", 0, -1, 1)), "00000100");
    EXPECT_EQ(SlotFormatBits(Channel("3931", 0, -1, 11)), "00101100");
    EXPECT_EQ(SlotUpdateCommand(Channel("3931", 1, -1, 11)), "$0AS2C5A312C");
    for (const int outside : {-1, 12, 16})
        EXPECT_EQ(SlotFormatBits(Channel("3931", 0, -1, outside)), "00000000") << outside;
}

TEST(SlotUpdateCommand, GoesToZeroInInitState)
{
    SlotSettings settings = Slot("3921", 0, 0, 0);
    settings.node = NodeKey("*00032!0A3921");
    EXPECT_EQ(SlotUpdateCommand(settings), "$00S2A2000");
}

TEST(SlotRecord, IsCutIntoTypeAndFormat)
{
    const SlotRecord record("2083");
    EXPECT_EQ(record.typeCode, "20");
    EXPECT_EQ(record.format, "83");
    EXPECT_EQ(record.FormatPosition("3921"), 1);
    EXPECT_EQ(record.IntegrationTime(), 1);
}

TEST(SlotRecord, HasTheFormatsOfItsModelOnly)
{
    EXPECT_EQ(SlotRecord("2000").FormatPosition("3921"), 0);
    EXPECT_EQ(SlotRecord("2002").FormatPosition("3921"), std::nullopt);
    EXPECT_EQ(SlotRecord("0002").FormatPosition("3923H"), 1);
    EXPECT_EQ(SlotRecord("0003").FormatPosition("3923H"), std::nullopt);
    EXPECT_EQ(SlotRecord("0000").FormatPosition("3962"), 0);
    EXPECT_EQ(SlotRecord("0002").FormatPosition("3962"), 1);
    EXPECT_EQ(SlotRecord("0082").FormatPosition("3962"), std::nullopt) << "its field is no set of bits";
    EXPECT_EQ(SlotRecord("0800").FormatPosition("3923"), std::nullopt) << "it has no list";
}

TEST(SlotRecord, OfAShortReplyTellsNothing)
{
    for (const char *value : {"", "2", "20"}) {
        const SlotRecord record(value);
        EXPECT_EQ(record.FormatPosition("3921"), std::nullopt) << value;
        EXPECT_EQ(record.IntegrationTime(), std::nullopt) << value;
        EXPECT_EQ(record.SlewRate(), 0) << value;
    }
}

TEST(SlotRecord, HasTheSlewRateInQuartersRounded)
{
    EXPECT_EQ(SlotRecord("3000").SlewRate(), 0);
    EXPECT_EQ(SlotRecord("3004").SlewRate(), 1);
    EXPECT_EQ(SlotRecord("302C").SlewRate(), 11);
    EXPECT_EQ(SlotRecord("3006").SlewRate(), 2) << "one and a half goes to the even neighbour";
    EXPECT_EQ(SlotRecord("300A").SlewRate(), 2) << "two and a half as well";
}

TEST(ChannelUnit, GoesByTheCode)
{
    for (const char *code : {"00", "01", "02", "03", "04", "05", "06", "07"})
        EXPECT_EQ(ChannelUnit("3923H", code), " V") << code;
    for (const char *code : {"08", "09"})
        EXPECT_EQ(ChannelUnit("3923H", code), "mV") << code;
    for (const char *code : {"0A", "0B"})
        EXPECT_EQ(ChannelUnit("3923H", code), "mA") << code;
    EXPECT_EQ(ChannelUnit("3931", "30"), "mA");
    EXPECT_EQ(ChannelUnit("3931", "31"), "mA");
    EXPECT_EQ(ChannelUnit("3931", "32"), " V");
    EXPECT_EQ(ChannelUnit("3931", "00"), "");
    EXPECT_EQ(ChannelUnit("3923H", ""), "");
    EXPECT_EQ(ChannelRangePosition("3923H", "0B"), 11);
    EXPECT_EQ(ChannelRangePosition("3931", "32"), 2);
    EXPECT_EQ(ChannelRangePosition("3931", "33"), std::nullopt);
}

} // namespace
