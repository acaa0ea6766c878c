#include "protocol/Registers.h"

#include "protocol/ModelTable.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace
{

using namespace vorn;

const NodeKey Module("_0003!!0A7203");
const NodeKey Checked("_1003!!0A7203");
const NodeKey Init("*1003!!057203");
const NodeKey Slot("_00031!0A3923");
const NodeKey Channel("_0003120A3923");

TEST(Query, FillsAddressSlotChannelAndIndex)
{
    EXPECT_EQ(Query(Register::Configuration, Module), "$0A2");
    EXPECT_EQ(Query(Register::Configuration, Init), "$002");
    EXPECT_EQ(Query(Register::AlarmStatus, Checked), "@0ADI");
    EXPECT_EQ(Query(Register::ChannelReading, Module, 7), "#0A7");
    EXPECT_EQ(Query(Register::CountOverflow, Module, 1), "$0A17");
    EXPECT_EQ(Query(Register::SlotReadings, Slot), "#0AS1");
    EXPECT_EQ(Query(Register::ChannelAlarms, Channel), "$0AS1C2S");
}

TEST(Query, TakesTheIndexAsChannelWhereTheNodeNamesNone)
{
    EXPECT_EQ(Query(Register::ChannelAlarms, Slot, 6), "$0AS1C6S");
    EXPECT_EQ(Query(Register::ChannelAlarms, Channel, 6), "$0AS1C2S");
    EXPECT_EQ(Write(Register::ChannelOutput, Slot, "05.500", 3), "#0AS1C305.500");
    EXPECT_EQ(Write(Register::ChannelOutput, Channel, "05.500"), "#0AS1C205.500");
}

TEST(Query, TakesAnAddressAlone)
{
    EXPECT_EQ(Query(Register::ModelText, "1F"), "$1FM");
    EXPECT_EQ(Query(Register::Configuration, "00"), "$002");
    EXPECT_EQ(Query(Register::SlotTypes, "0A"), "$0AT");
    EXPECT_EQ(Write(Register::Configuration, "00", "0040064A"), "%000040064A");
    EXPECT_EQ(Write(Register::Gate, "0B", "2"), "$0BA2");
}

TEST(Write, PutsTheValueBehindTheCommand)
{
    EXPECT_EQ(Write(Register::HighAlarm, Module, "+15.000"), "@0AHI+15.000");
    EXPECT_EQ(Write(Register::EnableAlarm, Module, "M"), "@0AEAM");
    EXPECT_EQ(Write(Register::DisableAlarm, Module), "@0ADA");
    EXPECT_EQ(Write(Register::ClearCount, Module, {}, 1), "$0A61");
    EXPECT_EQ(Write(Register::InitialCount, Module, "0000000A", 1), "@0AP10000000A");
    EXPECT_EQ(Write(Register::SlotMask, Slot, "FF"), "$0AS15FF");
    EXPECT_EQ(Write(Register::HighAlarmEnable, Channel, "D"), "$0AS1C2AHED");
    EXPECT_EQ(Write(Register::LowConnection, Channel, "S*C*"), "$0AS1C2ALCS*C*");
}

TEST(ValueOf, CutsTheChecksumOfACheckedModule)
{
    EXPECT_EQ(ValueOf(Register::HighAlarm, Module, "!0A+15.000"), "+15.000");
    EXPECT_EQ(ValueOf(Register::HighAlarm, Checked, "!0A+15.000C7"), "+15.000");
    EXPECT_EQ(ValueOf(Register::Reading, Module, ">+01.234"), "+01.234");
    EXPECT_EQ(ValueOf(Register::Reading, Checked, ">+01.2345E"), "+01.234");
    EXPECT_EQ(ValueOf(Register::FirmwareVersion, Checked, "!0AA1.20C7"), "A1.20");
}

TEST(ValueOf, TakesAPlaceOfItsOwnWhereTheReplyHoldsMore)
{
    const std::string status = "!0A103001";
    EXPECT_EQ(ValueOf(Register::AlarmStatus, Module, status), "1");
    EXPECT_EQ(Cut(status, ReplyPlace::Outputs), "03");
    EXPECT_EQ(Cut(status, ReplyPlace::DigitalInput), "0");
    const std::string mapping = "!0A-10.000+10.000";
    EXPECT_EQ(ValueOf(Register::MappingInput, Module, mapping), "-10.000+10.000");
    EXPECT_EQ(Cut(mapping, ReplyPlace::LowLimit), "-10.000");
    EXPECT_EQ(Cut(mapping, ReplyPlace::HighLimit), "+10.000");
    EXPECT_EQ(ValueOf(Register::Count, Module, ">0000000AC7"), "0000000A");
    EXPECT_EQ(ValueOf(Register::Configuration, Module, "!0A080600"), "080600");
    EXPECT_EQ(ValueOf(Register::BaseConfiguration, Module, "!0A0600"), "0600");
}

TEST(ValueOf, IsMissingInAReplyThatDoesntBeginAsItMust)
{
    for (const char *reply : {"", "?0A", ">+01.234", " !0A1"})
        EXPECT_EQ(ValueOf(Register::HighAlarm, Module, reply), std::nullopt) << reply;
    for (const char *reply : {"", "?0A", "!0A+01.234"})
        EXPECT_EQ(ValueOf(Register::Reading, Module, reply), std::nullopt) << reply;
    EXPECT_EQ(ValueOf(Register::HighAlarm, Module, "!0A"), "") << "an empty value is a value";
    EXPECT_EQ(ValueOf(Register::HighAlarm, Checked, "!"), "");
}

TEST(Registers, AreReadOrWrittenByAPatternOfTheirOwn)
{
    for (const RegisterRow &row : AllRegisters()) {
        EXPECT_FALSE(row.query.empty() && row.write.empty()) << static_cast<int>(row.id);
        for (const std::string_view pattern : {row.query, row.write}) {
            if (pattern.empty())
                continue;
            EXPECT_NE(std::string_view("$%#@").find(pattern.front()), std::string_view::npos) << pattern;
            EXPECT_EQ(pattern.substr(1, 2), "AA") << pattern;
        }
        EXPECT_TRUE(row.lead == '!' || row.lead == '>') << row.query;
        EXPECT_EQ(row.label.empty(), row.recordWidth == 0) << row.query;
    }
}

TEST(Registers, OfOneModelNeverShareAQuery)
{
    for (const ModelRow &model : AllModels()) {
        std::set<std::string_view> queries;
        for (const RegisterRow &row : AllRegisters()) {
            if (row.query.empty() || !model.All().HasAny(row.of))
                continue;
            EXPECT_TRUE(queries.insert(row.query).second) << model.model << " " << row.query;
        }
    }
}

/// A record as configuration files hold it.
struct Record {
    std::string label;
    std::size_t width;
    std::string query;
    std::string write;

    friend bool operator==(const Record &, const Record &) = default;
};

void PrintTo(const Record &record, std::ostream *out)
{
    *out << record.label << " " << record.width << " " << record.query << " " << record.write;
}

std::vector<Record> RecordsOfNode(const char *key)
{
    const NodeKey node(key);
    std::vector<Record> records;
    for (const RecordStep &step : RecordsOf(node)) {
        const RegisterRow &row = RowOf(step.reg);
        records.push_back({RecordLabel(step.reg, node, step.index), row.recordWidth,
                           Query(step.reg, node, step.index),
                           row.write.empty() ? "" : Write(step.reg, node, {}, step.index)});
    }
    return records;
}

using Records = std::vector<Record>;

const Record Status{"Configuration Status", 6, "$0A2", "%0A"};
const Records Alarm{Status,
                    {"Alarm Status", 1, "@0ADI", ""},
                    {"High Alarm", 7, "@0ARH", "@0AHI"},
                    {"Low Alarm", 7, "@0ARL", "@0ALO"}};

Records Behind(Records first, const Records &more)
{
    first.insert(first.end(), more.begin(), more.end());
    return first;
}

TEST(RecordsOf, PlainAndAlarmModules)
{
    for (const char *key : {"_0003!!0A7209", "_0003!!0A7231", "_0003!!0A7252", "_0003!!0A7256",
                            "_0003!!0A7258", "_0003!!0A7272"})
        EXPECT_EQ(RecordsOfNode(key), Records{Status}) << key;
    for (const char *key : {"_0003!!0A7203", "_0003!!0A7203D", "_0003!!0A7206", "_0003!!0A7218"})
        EXPECT_EQ(RecordsOfNode(key), Alarm) << key;
    EXPECT_EQ(RecordsOfNode("_0003!!0A7212D"), Behind(Alarm, {{"Linear Mapping", 1, "$0AB", "$0AA"},
                                                              {"Linear Source", 14, "$0A3", "$0A6"},
                                                              {"Linear Target", 14, "$0A5", "$0A7"}}));
}

TEST(RecordsOf, ChannelModules)
{
    const Records mask{Status, {"Channel Status", 2, "$0A6", "$0A5"}};
    for (const char *key : {"_0003!!0A7221", "_0003!!0A7224"})
        EXPECT_EQ(RecordsOfNode(key), mask) << key;
    Records logger = Behind(mask, {{"Memory Status", 9, "@0AD", "@0AC"}});
    for (const char n : {'0', '1', '2', '3', '4', '5', '6', '7'})
        logger.push_back(
            {std::string("Ch ") + n + " Alarm Limit", 12, std::string("@0AB") + n, std::string("@0AA") + n});
    EXPECT_EQ(RecordsOfNode("_0003!!0A7224M"), logger);
}

TEST(RecordsOf, Counters)
{
    const Records common{Status,
                         {"Input Mode", 1, "$0AB", "$0AB"},
                         {"Gate Mode", 1, "$0AA", "$0AA"},
                         {"C0 Maximun Value", 8, "$0A30", "$0A30"},
                         {"C1 Maximun Value", 8, "$0A31", "$0A31"},
                         {"C0 Start/Stop", 1, "$0A50", "$0A50"},
                         {"C1 Start/Stop", 1, "$0A51", "$0A51"},
                         {"Filter Status", 1, "$0A4", "$0A4"},
                         {"High Width", 5, "$0A0H", "$0A0H"},
                         {"Low Width", 5, "$0A0L", "$0A0L"},
                         {"High Trigger", 2, "$0A1H", "$0A1H"},
                         {"Low Trigger", 2, "$0A1L", "$0A1L"},
                         {"Alarm Status", 1, "@0ADI", ""},
                         {"Low/C0 Limit", 8, "@0ARP", "@0APA"},
                         {"High/C1 Limit", 8, "@0ARA", "@0ASA"}};
    EXPECT_EQ(RecordsOfNode("_0003!!0A7282"), Behind(common, {{"C0 Initial Value", 8, "@0AG0", "@0AP0"},
                                                              {"C1 Initial Value", 8, "@0AG1", "@0AP1"}}));
    for (const char *key : {"_0003!!0A7282D", "_0003!!0A7282N"})
        EXPECT_EQ(RecordsOfNode(key), Behind(common, {{"LED Origin", 1, "$0A8", "$0A8"}})) << key;
}

TEST(RecordsOf, BaseUnit)
{
    EXPECT_EQ(RecordsOfNode("_0003!!0A3900"),
              (Records{{"I/O type", 8, "$0AT", ""}, {"Configuration Status", 4, "$0A2", "%0A"}}));
    EXPECT_EQ(RowOf(Register::SlotTypes).form, RecordForm::Compared);
    EXPECT_EQ(RowOf(Register::BaseConfiguration).form, RecordForm::AddressZero);
    EXPECT_EQ(RowOf(Register::Configuration).form, RecordForm::SameAddress);
}

/// Records of an input card in slot 2: the first ones, then three passes over its channels.
Records CardRecords(const std::string &code, int channels, bool ranges)
{
    const std::string slot = "S2 " + code;
    Records records{{slot + " Configuration", 4, "$0AS2B", "$0AS2A"},
                    {slot + " Channel Status", 2, "$0AS26", "$0AS25"}};
    const auto line = [](int channel, const char *tail) { return "$0AS2C" + std::to_string(channel) + tail; };
    for (int j = 0; ranges && j < channels; ++j)
        records.push_back(
            {"S2C" + std::to_string(j) + " " + code + " Configuration", 4, line(j, "B"), line(j, "A")});
    struct Pass {
        const char *label, *lowQuery, *lowWrite, *highQuery, *highWrite;
        std::size_t width;
    };
    for (const Pass &pass :
         {Pass{" Alarm Mode", "AL", "AL", "AH", "AH", 1}, Pass{" Connection", "RLC", "ALC", "RHC", "AHC", 4},
          Pass{" Limit", "RLU", "ALU", "RHU", "AHU", 7}}) {
        for (int j = 0; j < channels; ++j) {
            const std::string head = "S2C" + std::to_string(j) + " " + code + " ";
            records.push_back(
                {head + "L" + pass.label, pass.width, line(j, pass.lowQuery), line(j, pass.lowWrite)});
            records.push_back(
                {head + "H" + pass.label, pass.width, line(j, pass.highQuery), line(j, pass.highWrite)});
        }
    }
    return records;
}

TEST(RecordsOf, AllOthersHaveNone)
{
    const std::set<std::string_view> with{"7203",  "7203D", "7206", "7209", "7212D", "7218", "7221", "7224",
                                          "7224M", "7231",  "7252", "7256", "7258",  "7272", "7282", "7282D",
                                          "7282N", "3900",  "3921", "3923", "3923H", "3925", "3931"};
    std::set<std::string_view> found;
    for (const ModelRow &row : AllModels()) {
        const NodeKey module("_0003!!0A" + std::string(row.model));
        const NodeKey card("_00032!0A" + std::string(row.model));
        if (!RecordsOf(row.IsCard() ? card : module).empty())
            found.insert(row.model);
    }
    EXPECT_EQ(found, with);
}

TEST(RecordsOf, Cards)
{
    EXPECT_EQ(RecordsOfNode("_00032!0A3921"), CardRecords("21", 3, false));
    EXPECT_EQ(RecordsOfNode("_00032!0A3923"), CardRecords("23", 8, false));
    EXPECT_EQ(RecordsOfNode("_00032!0A3925"), CardRecords("25", 7, false));
    EXPECT_EQ(RecordsOfNode("_00032!0A3923H"), CardRecords("3H", 8, true));
    EXPECT_EQ(RecordsOfNode("_00032!0A3923H")[11].label, "S2C0 3H H Alarm Mode");
    Records outputs;
    for (const char j : {'0', '1', '2', '3'})
        outputs.push_back({std::string("S2C") + j + " 31 Configuration", 4, std::string("$0AS2C") + j + "B",
                           std::string("$0AS2C") + j + "A"});
    EXPECT_EQ(RecordsOfNode("_00032!0A3931"), outputs);
    for (const char *key : {"_00032!0A3942", "_00032!0A3962", "_00032!0A3999"})
        EXPECT_TRUE(RecordsOfNode(key).empty()) << key;
}

TEST(RecordsOf, ConsolesAndUnknownModelsAreNone)
{
    for (const char *key : {"_0003!!0A7216", "_0003!!0A7221P", "_0003!!0A7290", "KeyCOM003", ""})
        EXPECT_TRUE(RecordsOfNode(key).empty()) << key;
}

} // namespace
