#include "logger/LoggerRecord.h"

#include <gtest/gtest.h>

using namespace vorn;

namespace
{

struct Case {
    const char *name;
    RecordKind kind;
    const char *reply;
    std::optional<LoggerRecord> record;
};

const Case Cases[] = {
    {"TwoDecimalsMinus", RecordKind::Standard, "!0935014D", LoggerRecord{7, 3, "-3.33"}},
    {"WholeNumberPlus", RecordKind::Standard, "!0900FFFF", LoggerRecord{7, 0, "+65535"}},
    {"ZeroMinus", RecordKind::Standard, "!09010000", LoggerRecord{7, 0, "-0"}},
    {"ZeroPlus", RecordKind::Standard, "!09F40000", LoggerRecord{7, 15, "+0"}},
    {"SevenDecimals", RecordKind::Standard, "!090FFFFF", LoggerRecord{7, 0, "-0.0065535"}},
    {"TrailingZerosGo", RecordKind::Standard, "!090404E2", LoggerRecord{7, 0, "+12.5"}},
    {"ChecksumBehindIsNoPart", RecordKind::Standard, "!0900000A3F", LoggerRecord{7, 0, "+10"}},
    {"Event", RecordKind::Event, "!0924004A00010078", LoggerRecord{7, 2, "+0.74", 65656}},
    {"LateEvent", RecordKind::Event, "!0924004AFFFFFFFF", LoggerRecord{7, 2, "+0.74", 4294967295U}},
    {"Refused", RecordKind::Standard, "?09", std::nullopt},
    {"Silence", RecordKind::Standard, "", std::nullopt},
    {"CutOff", RecordKind::Standard, "!0935014", std::nullopt},
    {"NoTimeStamp", RecordKind::Event, "!0935014D", std::nullopt},
    {"Garbage", RecordKind::Standard, "!09xyzzyx", std::nullopt},
};

class DecodedRecord : public testing::TestWithParam<Case>
{
};

} // namespace

TEST_P(DecodedRecord, IsAsSent)
{
    EXPECT_EQ(DecodeRecord(GetParam().kind, 7, GetParam().reply), GetParam().record);
}

INSTANTIATE_TEST_SUITE_P(Replies, DecodedRecord, testing::ValuesIn(Cases),
                         [](const testing::TestParamInfo<Case> &tested) {
                             return std::string(tested.param.name);
                         });

TEST(RecordCount, IsHexadecimalBehindAnAcceptedReply)
{
    EXPECT_EQ(RecordCount("!09000A"), 10);
    EXPECT_EQ(RecordCount("!09FFFF3F"), MostRecords);
    EXPECT_EQ(RecordCount("?09000A"), 0);
    EXPECT_EQ(RecordCount(""), 0);
    EXPECT_EQ(RecordCount("!09"), 0);
}

TEST(RecordAddress, OfEventsIsBehindTheStandardRecordsInMixedModeOnly)
{
    EXPECT_EQ(RecordAddress(FirstRecord(RecordKind::Event, true)), "3FFC");
    EXPECT_EQ(FirstRecord(RecordKind::Event, true), 16380);
    EXPECT_EQ(FirstRecord(RecordKind::Event, false), 0);
    EXPECT_EQ(FirstRecord(RecordKind::Standard, true), 0);
    EXPECT_EQ(RecordAddress(10), "000A");
    EXPECT_EQ(RecordAddress(65534), "FFFE");
}
