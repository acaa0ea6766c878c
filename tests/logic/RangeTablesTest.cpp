#include "protocol/RangeTables.h"

#include "protocol/Number.h"
#include "protocol/Text.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace
{

using namespace vorn;

struct RangeCase {
    const char *code, *caption, *unit;
};

struct SlewCase {
    const char *bits, *voltage, *current;
};

constexpr RangeCase Thermocouples[] = {
    {"00", "+/-       15  mV", "mV"},
    {"01", "+/-       50  mV", "mV"},
    {"02", "+/-     100  mV", "mV"},
    {"03", "+/-     500  mV", "mV"},
    {"04", "+/-          1 V", " V"},
    {"05", "+/-       2.5 V", " V"},
    {"06", "+/-       20  mA", "mA"},
    {"0E", "Type J Thermocouple 0'C to 760'C", "'C"},
    {"0F", "Type K Thermocouple 0'C to 1000'C", "'C"},
    {"10", "Type T Thermocouple -100'C to 400'C", "'C"},
    {"11", "Type E Thermocouple 0'C to 1000'C", "'C"},
    {"12", "Type R Thermocouple 500'C to 1750'C", "'C"},
    {"13", "Type S Thermocouple 500'C to 1750'C", "'C"},
    {"14", "Type B Thermocouple 500'C to 1860'C", "'C"},
};

constexpr RangeCase Voltages[] = {
    {"08", "+/-     10   V", " V"}, {"09", "+/-      5   V", " V"}, {"0A", "+/-      1   V", " V"},
    {"0B", "+/-    500  mV", "mV"}, {"0C", "+/-    150  mV", "mV"}, {"0D", "+/-     20  mA", "mA"},
};

constexpr RangeCase StrainGauge[] = {
    {"00", "+/-     15  mV", "mV"}, {"01", "+/-     50  mV", "mV"}, {"02", "+/-    100  mV", "mV"},
    {"03", "+/-    500  mV", "mV"}, {"06", "+/-     20  mA", "mA"},
};

constexpr RangeCase Sensors[] = {
    {"20", "Pt.00385 -200 to 100'C", "'C"}, {"21", "Pt.00385 0 to 100'C", "'C"},
    {"22", "Pt.00385 0 to 200'C", "'C"},    {"23", "Pt.00385 0 to 600'C", "'C"},
    {"24", "Pt.00391 +/-100'C", "'C"},      {"25", "Pt.00391 0 to 100'C", "'C"},
    {"26", "Pt.00391 0 to 200'C", "'C"},    {"27", "Pt.00391 0 to 600'C", "'C"},
    {"28", "Ni -80 to 100'C", "'C"},        {"29", "Ni 0 to 100'C", "'C"},
    {"2A", "Cu 25'C 0 to 120'C", "'C"},     {"2B", "Cu 0'C 0 to 120'C", "'C"},
    {"", "T1 -50 to 150'C", "'C"},
};

constexpr RangeCase AnalogOutput[] = {
    {"30", "0 to 20 mA", "mA"},
    {"31", "4 to 20 mA", "mA"},
    {"32", "0 to 10  V", " V"},
};

constexpr RangeCase Counters[] = {{"50", "Counter", ""}, {"51", "Freguency", "Hz"}};

constexpr RangeCase Slot3921[] = {
    {"20", "Pt.00385 +/-100'C", "'C"},   {"21", "Pt.00385 0 to 100'C", "'C"},
    {"22", "Pt.00385 0 to 200'C", "'C"}, {"23", "Pt.00385 0 to 600'C", "'C"},
    {"24", "Pt.00391 +/-100'C", "'C"},   {"25", "Pt.00391 0 to 100'C", "'C"},
    {"26", "Pt.00391 0 to 200'C", "'C"}, {"27", "Pt.00391 0 to 600'C", "'C"},
    {"28", "Ni -80 to 100'C", "'C"},     {"29", "Ni 0 to 100'C", "'C"},
};

// The unit of these two lists' entries is what their captions end with.
constexpr RangeCase Slot3923[] = {
    {"08", "+/-  10  V", " V"}, {"09", "+/-   5  V", " V"}, {"0A", "+/-   1  V", " V"},
    {"0B", "+/- 500 mV", "mV"}, {"0C", "+/- 150 mV", "mV"}, {"0D", "+/-  20 mA", "mA"},
};

constexpr RangeCase Slot3923H[] = {
    {"00", "+/-  10  V", " V"},  {"01", "0 to 10  V", " V"},  {"02", "+/-  5  V", " V"},
    {"03", "0 to 5  V", " V"},   {"04", "+/-  2.5  V", " V"}, {"05", "0 to 2.5  V", " V"},
    {"06", "+/-  1 V", " V"},    {"07", "0 to 1 V", " V"},    {"08", "+/-  500 mV", "mV"},
    {"09", "0 to 500 mV", "mV"}, {"0A", "4 to 20 mA", "mA"},  {"0B", "0 to 20 mA", "mA"},
};

constexpr RangeCase Slot3925[] = {
    {"00", "+/-  15 mV", "mV"},
    {"01", "+/-  50 mV", "mV"},
    {"02", "+/- 100 mV", "mV"},
    {"03", "+/- 500 mV", "mV"},
    {"04", "+/-   1  V", " V"},
    {"05", "+/- 2.5  V", " V"},
    {"06", "+/-  20 mA", "mA"},
    {"0E", "T/C Type J 0~760'C", "'C"},
    {"0F", "T/C Type K 0~1370'C", "'C"},
    {"10", "T/C Type T -100~400'C", "'C"},
    {"11", "T/C Type E 0~1000'C", "'C"},
    {"12", "T/C Type R 500~1750'C", "'C"},
    {"13", "T/C Type S 500~1750'C", "'C"},
    {"14", "T/C Type B 500~1800'C", "'C"},
    {"15", "T/C Type N 0~1300'C", "'C"},
};

constexpr RangeCase Slot3931[] = {
    {"30", "0 to 20 mA", "mA"},
    {"31", "4 to 20 mA", "mA"},
    {"32", "0 to 10  V", " V"},
};

constexpr RangeCase Slot3962[] = {
    {"00", "Bi-direction counter", ""},
    {"01", "Up/Down counter", ""},
    {"02", "Frequency", "Hz"},
};

constexpr SlewCase SlewRates[] = {
    {"0000", "Immediate change", "Immediate change"}, {"0001", "0.0625 V/sec", "0.125 mA/sec"},
    {"0010", "0.125 V/sec", "0.250 mA/sec"},          {"0011", "0.250 V/sec", "0.500 mA/sec"},
    {"0100", "0.500 V/sec", "1.000 mA/sec"},          {"0101", "1.000 V/sec", "2.000 mA/sec"},
    {"0110", "2.000 V/sec", "4.000 mA/sec"},          {"0111", "4.000 V/sec", "8.000 mA/sec"},
    {"1000", "8.000 V/sec", "16.00 mA/sec"},          {"1001", "16.00 V/sec", "32.00 mA/sec"},
    {"1010", "32.00 V/sec", "64.00 mA/sec"},          {"1011", "64.00 V/sec", "128.0 mA/sec"},
};
struct ModelCase {
    const char *model;
    std::span<const RangeCase> rows;
};

const ModelCase Modules[] = {
    {"7203", Thermocouples}, {"7203D", Thermocouples}, {"7224", Thermocouples}, {"7224M", Thermocouples},
    {"7206", Voltages},      {"7212D", Voltages},      {"7221", Voltages},      {"7209", Sensors},
    {"7218", StrainGauge},   {"7231", AnalogOutput},   {"7282", Counters},      {"7282D", Counters},
    {"7282N", Counters},
};

const ModelCase SlotModules[] = {{"3921", Slot3921}, {"3923", Slot3923}, {"3923H", Slot3923H},
                                 {"3925", Slot3925}, {"3931", Slot3931}, {"3962", Slot3962}};

void ExpectRows(std::span<const RangeRow> rows, const ModelCase &expected)
{
    ASSERT_EQ(rows.size(), expected.rows.size()) << expected.model;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].code, expected.rows[i].code) << expected.model << " " << i;
        EXPECT_EQ(rows[i].caption, expected.rows[i].caption) << expected.model << " " << i;
        EXPECT_EQ(rows[i].unit, expected.rows[i].unit) << expected.model << " " << i;
    }
}

TEST(ModuleRanges, HoldEveryEntryInOrder)
{
    for (const ModelCase &c : Modules)
        ExpectRows(ModuleRanges(c.model), c);
}

TEST(SlotRanges, HoldEveryEntryInOrder)
{
    for (const ModelCase &c : SlotModules)
        ExpectRows(SlotRanges(c.model), c);
}

TEST(Ranges, OfOtherModelsAreEmpty)
{
    for (const char *model : {"7252", "7256", "7258", "7272", "3900", "7216", "3942", "3921", ""})
        EXPECT_TRUE(ModuleRanges(model).empty()) << model;
    for (const char *model : {"3942", "3944", "3946", "3948", "3951", "3953", "3957", "7203", ""})
        EXPECT_TRUE(SlotRanges(model).empty()) << model;
}

TEST(RangeCode, OfEveryListPosition)
{
    for (const ModelCase &c : Modules) {
        for (std::size_t i = 0; i < c.rows.size(); ++i)
            EXPECT_EQ(RangeCode(c.model, static_cast<int>(i)), c.rows[i].code) << c.model << " " << i;
        EXPECT_EQ(RangeCode(c.model, -1), "") << c.model;
        EXPECT_EQ(RangeCode(c.model, static_cast<int>(c.rows.size())), "") << c.model;
    }
    for (const ModelCase &c : SlotModules) {
        for (std::size_t i = 0; i < c.rows.size(); ++i)
            EXPECT_EQ(SlotRangeCode(c.model, static_cast<int>(i)), c.rows[i].code) << c.model << " " << i;
        EXPECT_EQ(SlotRangeCode(c.model, -1), "") << c.model;
        EXPECT_EQ(SlotRangeCode(c.model, static_cast<int>(c.rows.size())), "") << c.model;
    }
}

TEST(RangeCode, OfDigitalModelsIsConstant)
{
    for (const char *model : {"7252", "7256", "7258", "7272"}) {
        for (const int position : {-1, 0, 5})
            EXPECT_EQ(RangeCode(model, position), "40") << model;
    }
    EXPECT_EQ(RangeCode("3900", 0), "");
}

TEST(RangeCode, OfTheLastSensorIsEmpty)
{
    EXPECT_EQ(ModuleRanges("7209")[12].caption, "T1 -50 to 150'C");
    EXPECT_EQ(RangeCode("7209", 12), "");
    EXPECT_EQ(DecodeRange("7209", ""), std::nullopt);
}

/// Which units a code sets: R of the live value, A of the alarm limits, O of the outputs, F of the
/// frequencies.
struct DecodeCase {
    const char *code;
    int position;
    const char *unit;
    const char *sets;
};

constexpr DecodeCase Chain[] = {
    {"00", 0, "mV", "RA"},  {"01", 1, "mV", "RA"},  {"02", 2, "mV", "RA"},  {"03", 3, "mV", "RA"},
    {"04", 4, " V", "RA"},  {"05", 5, " V", "RA"},  {"06", 6, "mA", "RA"},  {"08", 0, " V", "RA"},
    {"09", 1, " V", "RA"},  {"0A", 2, " V", "RA"},  {"0B", 3, "mV", "RA"},  {"0C", 4, "mV", "RA"},
    {"0D", 5, "mA", "RA"},  {"0E", 7, "'C", "RA"},  {"0F", 8, "'C", "RA"},  {"10", 9, "'C", "RA"},
    {"11", 10, "'C", "RA"}, {"12", 11, "'C", "RA"}, {"13", 12, "'C", "RA"}, {"14", 13, "'C", "RA"},
    {"20", 0, "'C", "R"},   {"21", 1, "'C", "R"},   {"22", 2, "'C", "R"},   {"23", 3, "'C", "R"},
    {"24", 4, "'C", "R"},   {"25", 5, "'C", "R"},   {"26", 6, "'C", "R"},   {"27", 7, "'C", "R"},
    {"28", 8, "'C", "R"},   {"29", 9, "'C", "R"},   {"2A", 10, "'C", "R"},  {"2B", 11, "'C", "R"},
    {"30", 0, "mA", "O"},   {"31", 1, "mA", "O"},   {"32", 2, " V", "O"},   {"50", 0, "", ""},
    {"51", 1, "Hz", "F"},
};

void ExpectDecode(const char *model, const DecodeCase &c)
{
    const auto decode = DecodeRange(model, c.code);
    ASSERT_TRUE(decode) << model << " " << c.code;
    const std::string sets = c.sets;
    EXPECT_EQ(decode->position, c.position) << model << " " << c.code;
    EXPECT_EQ(decode->unit, c.unit) << model << " " << c.code;
    EXPECT_EQ(decode->setsRdu, sets.find('R') != std::string::npos) << model << " " << c.code;
    EXPECT_EQ(decode->setsAunit, sets.find('A') != std::string::npos) << model << " " << c.code;
    EXPECT_EQ(decode->setsAOS, sets.find('O') != std::string::npos) << model << " " << c.code;
    EXPECT_EQ(decode->setsFCs, sets.find('F') != std::string::npos) << model << " " << c.code;
}

TEST(DecodeRange, IsOneChainForAllModels)
{
    for (const ModelCase &model : Modules) {
        for (const DecodeCase &c : Chain) {
            const bool exception = std::string(model.model) == "7218" && std::string(c.code) == "06";
            if (!exception)
                ExpectDecode(model.model, c);
        }
    }
}

TEST(DecodeRange, MovesOneCodeOnTheStrainGaugeModel)
{
    ExpectDecode("7218", {"06", 4, "mA", "RA"});
    ExpectDecode("7203", {"06", 6, "mA", "RA"});
    EXPECT_EQ(ModuleRanges("7218")[4].caption, "+/-     20  mA");
}

TEST(DecodeRange, MayNameAPositionThatTheListDoesNotHave)
{
    const auto decode = DecodeRange("7206", "0E");
    ASSERT_TRUE(decode);
    EXPECT_EQ(decode->position, 7);
    EXPECT_EQ(ModuleRanges("7206").size(), 6U);
}

TEST(DecodeRange, KnowsNoOtherCode)
{
    std::set<std::string> known;
    for (const DecodeCase &c : Chain)
        known.insert(c.code);
    for (int value = 0; value < 256; ++value) {
        const std::string code = HexByte(value);
        EXPECT_EQ(DecodeRange("7203", code).has_value(), known.contains(code)) << code;
    }
    for (const char *code : {"", "0", "0e", "000", " 0"})
        EXPECT_EQ(DecodeRange("7203", code), std::nullopt) << code;
}

TEST(DecodeRange, FindsEveryCodeOfAModelAtItsOwnPosition)
{
    for (const ModelCase &c : Modules) {
        for (std::size_t i = 0; i < c.rows.size(); ++i) {
            if (*c.rows[i].code == '\0')
                continue;
            const auto decode = DecodeRange(c.model, c.rows[i].code);
            ASSERT_TRUE(decode) << c.model << " " << c.rows[i].code;
            EXPECT_EQ(decode->position, static_cast<int>(i)) << c.model << " " << c.rows[i].code;
            EXPECT_EQ(decode->unit, c.rows[i].unit);
        }
    }
}

TEST(SlotRangePosition, IsOneChainForAllSlots)
{
    std::map<std::string, int> chain;
    for (int i = 0; i <= 6; ++i)
        chain[HexByte(i)] = i;
    for (int i = 0; i <= 7; ++i)
        chain[HexByte(0x0E + i)] = 7 + i;
    for (int i = 0; i <= 5; ++i)
        chain[HexByte(0x08 + i)] = i;
    for (int i = 0; i <= 9; ++i)
        chain[HexByte(0x20 + i)] = i;
    for (int value = 0; value < 256; ++value) {
        const std::string code = HexByte(value);
        const auto position = SlotRangePosition(code);
        EXPECT_EQ(position.value_or(-1), chain.contains(code) ? chain[code] : -1) << code;
    }
    EXPECT_EQ(SlotRangePosition(""), std::nullopt);
}

TEST(CaptionUnit, IsWhatACaptionEndsWith)
{
    for (const ModelCase &c : Modules) {
        if (IsCounterModel(c.model))
            continue;
        for (const RangeCase &row : c.rows)
            EXPECT_EQ(CaptionUnit(row.caption), row.unit) << row.caption;
    }
    for (const ModelCase &c : SlotModules) {
        if (std::string(c.model) == "3962")
            continue;
        for (const RangeCase &row : c.rows)
            EXPECT_EQ(CaptionUnit(row.caption), row.unit) << row.caption;
    }
    EXPECT_EQ(CaptionUnit(""), "");
}

std::vector<std::string> Texts(Captions captions)
{
    return {captions.begin(), captions.end()};
}

using List = std::vector<std::string>;

TEST(DataFormatCaptions, OfEveryModel)
{
    const List common{"Engineering units", "% of FSR", "2's complement of Hex"};
    for (const char *model : {"7203", "7203D", "7206", "7212D", "7218", "7231"}) {
        EXPECT_EQ(Texts(DataFormatCaptions(model)), common) << model;
        EXPECT_TRUE(HasDataFormatList(model));
    }
    EXPECT_EQ(Texts(DataFormatCaptions("7209")), (List{common[0], common[1], common[2], "Ohms"}));
    for (const char *model : {"7221", "7224", "7224M"}) {
        EXPECT_EQ(Texts(DataFormatCaptions(model)), (List{"50 ms (60Hz)", "60 ms (50Hz)"})) << model;
        EXPECT_TRUE(HasIntegrationTime(model));
        EXPECT_FALSE(HasDataFormatList(model));
    }
    for (const char *model : {"7252", "7256", "7258", "7272", "7282", "7282D", "7282N", "3900", "3921"}) {
        EXPECT_TRUE(DataFormatCaptions(model).empty()) << model;
        EXPECT_FALSE(HasIntegrationTime(model));
        EXPECT_FALSE(HasDataFormatList(model));
    }
}

TEST(DataFormatUnit, ReplacesTheUnitOfPercentAndHexadecimal)
{
    EXPECT_EQ(DataFormatUnit(0), "");
    EXPECT_EQ(DataFormatUnit(1), " %");
    EXPECT_EQ(DataFormatUnit(2), "Hex");
    EXPECT_EQ(DataFormatUnit(3), "");
    EXPECT_EQ(DataFormatUnit(-1), "");
}

TEST(GateCaptions, FollowTheInputMode)
{
    EXPECT_EQ(Texts(GateCaptions(true)), (List{"Low", "High", "None"}));
    EXPECT_EQ(Texts(GateCaptions(false)), (List{"0.1 sec", "1 sec"}));
}

TEST(SlewRates, HaveTheirListPositionInFourBits)
{
    const List voltage = Texts(SlewRateCaptions(true));
    const List current = Texts(SlewRateCaptions(false));
    ASSERT_EQ(voltage.size(), std::size(SlewRates));
    ASSERT_EQ(current.size(), std::size(SlewRates));
    for (std::size_t i = 0; i < std::size(SlewRates); ++i) {
        EXPECT_EQ(voltage[i], SlewRates[i].voltage);
        EXPECT_EQ(current[i], SlewRates[i].current);
        for (const char *around : {"0000", "1111"}) {
            const std::string bits = Left(around, 2) + SlewRates[i].bits + Right(around, 2);
            EXPECT_EQ(SlewRatePosition(bits), static_cast<int>(i)) << bits;
        }
    }
    EXPECT_EQ(SlewRatePosition("00111100"), 15) << "a position that no list has";
    EXPECT_EQ(SlewRatePosition(""), 0);
}

TEST(SlotLists, OfEveryModel)
{
    EXPECT_EQ(Texts(SlotFormatCaptions("3921")), (List{"Engineering unit", "Ohms"}));
    EXPECT_EQ(Texts(SlotFormatCaptions("3923H")), (List{"Engineering unit", "two's complement"}));
    EXPECT_EQ(Texts(SlotFormatCaptions("3962")), (List{"Dec", "Hex"}));
    for (const char *model : {"3923", "3925", "3931", "3942"}) {
        EXPECT_TRUE(SlotFormatCaptions(model).empty()) << model;
        EXPECT_FALSE(HasSlotFormatList(model)) << model;
    }
    for (const char *model : {"3921", "3923", "3925"}) {
        EXPECT_EQ(Texts(SlotTimeCaptions(model)), (List{"50 ms (60Hz)", "60 ms (50Hz)"})) << model;
        EXPECT_TRUE(HasSlotTimeList(model));
    }
    for (const char *model : {"3923H", "3962", "3942"}) {
        EXPECT_TRUE(SlotTimeCaptions(model).empty()) << model;
        EXPECT_FALSE(HasSlotTimeList(model)) << model;
    }
    EXPECT_TRUE(SlotTimeCaptions("3931").empty());
    EXPECT_TRUE(HasSlotTimeList("3931")) << "cleared, and filled when the range is known";
}

TEST(ChannelAlarmModes, OfEveryModel)
{
    for (const char *model : {"3921", "3931", "3923", "3923H", "3925"})
        EXPECT_EQ(Texts(ChannelAlarmModes(model)), (List{"Disable", "Momentary", "Latch"})) << model;
    EXPECT_EQ(Texts(ChannelAlarmModes("3962")), (List{"Disable", "Latch"}));
    for (const char *model : {"3942", "7203", "7282", ""})
        EXPECT_TRUE(ChannelAlarmModes(model).empty()) << model;
}

TEST(ModelGroups, HaveTheirMembersOnly)
{
    const std::vector<std::string> all{"7203", "7203D", "7206",  "7209", "7212D", "7218", "7221",
                                       "7224", "7224M", "7231",  "7252", "7256",  "7258", "7272",
                                       "7282", "7282D", "7282N", "3900", "3921",  "3923", "3923H",
                                       "3962", "7216",  "7221P", ""};
    const auto members = [&](bool (*test)(std::string_view)) {
        std::string names;
        for (const std::string &model : all)
            names += test(model) ? model + " " : "";
        return names;
    };
    EXPECT_EQ(members(IsDigitalModel), "7252 7256 7258 7272 ");
    EXPECT_EQ(members(IsCounterModel), "7282 7282D 7282N ");
    EXPECT_EQ(members(UsesThermocoupleRanges), "7203 7203D 7224 7224M ");
    EXPECT_EQ(members(HasModuleAlarm), "7203 7203D 7206 7212D 7218 ");
    EXPECT_EQ(members(HasIntegrationTime), "7221 7224 7224M ");
    EXPECT_EQ(members(HasDataFormatList), "7203 7203D 7206 7209 7212D 7218 7231 ");
}

TEST(Ranges, SpellTheFrequencyEntryInTwoWays)
{
    EXPECT_EQ(ModuleRanges("7282")[1].caption, "Freguency");
    EXPECT_EQ(SlotRanges("3962")[2].caption, "Frequency");
}

TEST(Ranges, HoldNoCodeTwice)
{
    const auto expectUnique = [](std::span<const RangeRow> rows, const char *model) {
        std::set<std::string_view> codes;
        for (const RangeRow &row : rows)
            EXPECT_TRUE(codes.insert(row.code).second) << model << " " << row.code;
    };
    for (const ModelCase &c : Modules)
        expectUnique(ModuleRanges(c.model), c.model);
    for (const ModelCase &c : SlotModules)
        expectUnique(SlotRanges(c.model), c.model);
}

TEST(SlotRangePosition, FindsEveryCodeOfTheSlotsThatItServes)
{
    for (const ModelCase &c : SlotModules) {
        const std::string model = c.model;
        if (model == "3923H" || model == "3931")
            continue; // their channels are read by lists of their own
        for (std::size_t i = 0; i < c.rows.size(); ++i)
            EXPECT_EQ(SlotRangePosition(c.rows[i].code), static_cast<int>(i)) << model << " " << i;
    }
}

} // namespace
