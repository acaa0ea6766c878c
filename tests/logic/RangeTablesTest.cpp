#include "protocol/RangeTables.h"

#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "simulator/Models.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace vorn;

struct SlewCase {
    const char *bits, *voltage, *current;
};

using List = std::vector<std::string>;

// Captions of the range lists, in their order. Codes and ends of the ranges are the simulator's own.

const List Thermocouples{
    "+/-       15  mV",
    "+/-       50  mV",
    "+/-     100  mV",
    "+/-     500  mV",
    "+/-          1 V",
    "+/-       2.5 V",
    "+/-       20  mA",
    "Type J Thermocouple 0'C to 760'C",
    "Type K Thermocouple 0'C to 1000'C",
    "Type T Thermocouple -100'C to 400'C",
    "Type E Thermocouple 0'C to 1000'C",
    "Type R Thermocouple 500'C to 1750'C",
    "Type S Thermocouple 500'C to 1750'C",
    "Type B Thermocouple 500'C to 1860'C",
};

const List Voltages{
    "+/-     10   V", "+/-      5   V", "+/-      1   V",
    "+/-    500  mV", "+/-    150  mV", "+/-     20  mA",
};

const List StrainGauge{
    "+/-     15  mV", "+/-     50  mV", "+/-    100  mV", "+/-    500  mV", "+/-     20  mA",
};

const List Sensors{
    "Pt.00385 -200 to 100'C", "Pt.00385 0 to 100'C", "Pt.00385 0 to 200'C", "Pt.00385 0 to 600'C",
    "Pt.00391 +/-100'C",      "Pt.00391 0 to 100'C", "Pt.00391 0 to 200'C", "Pt.00391 0 to 600'C",
    "Ni -80 to 100'C",        "Ni 0 to 100'C",       "Cu 25'C 0 to 120'C",  "Cu 0'C 0 to 120'C",
    "T1 -50 to 150'C",
};

const List AnalogOutput{
    "0 to 20 mA",
    "4 to 20 mA",
    "0 to 10  V",
};

const List Counters{
    "Counter",
    "Freguency",
};

const List Slot3921{
    "Pt.00385 +/-100'C", "Pt.00385 0 to 100'C", "Pt.00385 0 to 200'C", "Pt.00385 0 to 600'C",
    "Pt.00391 +/-100'C", "Pt.00391 0 to 100'C", "Pt.00391 0 to 200'C", "Pt.00391 0 to 600'C",
    "Ni -80 to 100'C",   "Ni 0 to 100'C",
};

const List Slot3923{
    "+/-  10  V", "+/-   5  V", "+/-   1  V", "+/- 500 mV", "+/- 150 mV", "+/-  20 mA",
};

const List Slot3923H{
    "+/-  10  V", "0 to 10  V", "+/-  5  V",   "0 to 5  V",   "+/-  2.5  V", "0 to 2.5  V",
    "+/-  1 V",   "0 to 1 V",   "+/-  500 mV", "0 to 500 mV", "4 to 20 mA",  "0 to 20 mA",
};

const List Slot3925{
    "+/-  15 mV",
    "+/-  50 mV",
    "+/- 100 mV",
    "+/- 500 mV",
    "+/-   1  V",
    "+/- 2.5  V",
    "+/-  20 mA",
    "T/C Type J 0~760'C",
    "T/C Type K 0~1370'C",
    "T/C Type T -100~400'C",
    "T/C Type E 0~1000'C",
    "T/C Type R 500~1750'C",
    "T/C Type S 500~1750'C",
    "T/C Type B 500~1800'C",
    "T/C Type N 0~1300'C",
};

const List Slot3931{
    "0 to 20 mA",
    "4 to 20 mA",
    "0 to 10  V",
};

const List Slot3962{
    "Bi-direction counter",
    "Up/Down counter",
    "Frequency",
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
    const List &captions;
};

const ModelCase Modules[] = {
    {"7203", Thermocouples}, {"7203D", Thermocouples}, {"7224", Thermocouples}, {"7224M", Thermocouples},
    {"7206", Voltages},      {"7212D", Voltages},      {"7221", Voltages},      {"7209", Sensors},
    {"7218", StrainGauge},   {"7231", AnalogOutput},   {"7282", Counters},      {"7282D", Counters},
    {"7282N", Counters},
};

const ModelCase SlotModules[] = {{"3921", Slot3921}, {"3923", Slot3923}, {"3923H", Slot3923H},
                                 {"3925", Slot3925}, {"3931", Slot3931}, {"3962", Slot3962}};

/// Codes of a model's ranges as its simulated module knows them; empty texts for entries behind them, which
/// have no code.
List CodesOf(const ModelCase &c)
{
    const vornsim::ModelRow *module = vornsim::FindModule(c.model);
    const vornsim::ModelRow *simulated = module ? module : vornsim::FindCard(c.model);
    List codes;
    for (const vornsim::RangeRow &range : simulated->ranges)
        codes.emplace_back(range.code);
    codes.resize(c.captions.size());
    return codes;
}

void ExpectRows(std::span<const RangeRow> rows, const ModelCase &expected)
{
    const List codes = CodesOf(expected);
    ASSERT_EQ(rows.size(), expected.captions.size()) << expected.model;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].code, codes[i]) << expected.model << " " << i;
        EXPECT_EQ(rows[i].caption, expected.captions[i]) << expected.model << " " << i;
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
    const auto expectCodes = [](const ModelCase &c, std::string_view (*code)(std::string_view, int)) {
        const List codes = CodesOf(c);
        for (std::size_t i = 0; i < codes.size(); ++i)
            EXPECT_EQ(code(c.model, static_cast<int>(i)), codes[i]) << c.model << " " << i;
        EXPECT_EQ(code(c.model, -1), "") << c.model;
        EXPECT_EQ(code(c.model, static_cast<int>(codes.size())), "") << c.model;
    };
    for (const ModelCase &c : Modules)
        expectCodes(c, RangeCode);
    for (const ModelCase &c : SlotModules)
        expectCodes(c, SlotRangeCode);
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
    std::string code;
    int position;
    std::string unit;
    std::string sets;
};

/// The chain that decodes all codes: one list of each kind, as simulated modules know them.
std::vector<DecodeCase> Chain()
{
    std::vector<DecodeCase> chain;
    const auto append = [&chain](const ModelCase &c, const char *sets) {
        const List codes = CodesOf(c);
        for (std::size_t i = 0; i < codes.size(); ++i) {
            if (!codes[i].empty())
                chain.push_back({codes[i], static_cast<int>(i), CaptionUnit(c.captions[i]), sets});
        }
    };
    append({"7203", Thermocouples}, "RA");
    append({"7206", Voltages}, "RA");
    append({"7209", Sensors}, "R");
    append({"7231", AnalogOutput}, "O");
    chain.insert(chain.end(), {{"50", 0, "", ""}, {"51", 1, "Hz", "F"}});
    return chain;
}

void ExpectDecode(const char *model, const DecodeCase &c)
{
    const auto decode = DecodeRange(model, c.code);
    ASSERT_TRUE(decode) << model << " " << c.code;
    const std::string &sets = c.sets;
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
        for (const DecodeCase &c : Chain()) {
            const bool exception = std::string(model.model) == "7218" && c.code == "06";
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
    for (const DecodeCase &c : Chain())
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
        const List codes = CodesOf(c);
        for (std::size_t i = 0; i < codes.size(); ++i) {
            if (codes[i].empty())
                continue;
            const auto decode = DecodeRange(c.model, codes[i]);
            ASSERT_TRUE(decode) << c.model << " " << codes[i];
            EXPECT_EQ(decode->position, static_cast<int>(i)) << c.model << " " << codes[i];
            EXPECT_EQ(decode->unit, ModuleRanges(c.model)[i].unit);
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
    const auto expectUnits = [](const ModelCase &c, std::span<const RangeRow> rows) {
        for (std::size_t i = 0; i < rows.size(); ++i)
            EXPECT_EQ(CaptionUnit(c.captions[i]), rows[i].unit) << c.captions[i];
    };
    for (const ModelCase &c : Modules) {
        if (!IsCounterModel(c.model))
            expectUnits(c, ModuleRanges(c.model));
    }
    for (const ModelCase &c : SlotModules) {
        if (c.model != std::string("3962"))
            expectUnits(c, SlotRanges(c.model));
    }
    EXPECT_EQ(CaptionUnit(""), "");
}

TEST(Ranges, OfCountersHaveAUnitForFrequenciesOnly)
{
    for (const char *model : {"7282", "7282D", "7282N"}) {
        EXPECT_EQ(ModuleRanges(model)[0].unit, "") << model;
        EXPECT_EQ(ModuleRanges(model)[1].unit, "Hz") << model;
    }
    EXPECT_EQ(SlotRanges("3962")[0].unit, "");
    EXPECT_EQ(SlotRanges("3962")[1].unit, "");
    EXPECT_EQ(SlotRanges("3962")[2].unit, "Hz");
}

std::vector<std::string> Texts(Captions captions)
{
    return {captions.begin(), captions.end()};
}

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
    EXPECT_EQ(members([](std::string_view model) { return Has(model, Feature::Points); }),
              "7252 7256 7258 7272 ");
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
        const List codes = CodesOf(c);
        for (std::size_t i = 0; i < codes.size(); ++i)
            EXPECT_EQ(SlotRangePosition(codes[i]), static_cast<int>(i)) << model << " " << i;
    }
}

struct ReferenceCase {
    const char *model, *codes, *span, *zero;
};

TEST(Calibration, AppliesTheReferenceOfTheRange)
{
    constexpr ReferenceCase Cases[] = {
        {"7203", "00", " 15 mV", " 0 mV"},
        {"7218", "03", " 500 mV", " 0 mV"},
        {"7224", "04", "  1 V", " 0  V"},
        {"3925", "05", " 2.5 V", " 0  V"},
        {"7218", "06", " 20 mA", " 0 mA"},
        {"7206", "08", " 10 V", " 0  V"},
        {"7221", "0C", " 150 mV", " 0 mV"},
        {"7212D", "0D", " 20 mA", " 0 mA"},
        {"7203D", "0E 0F", " 50 mV", " 0 mV"},
        {"7224M", "10 12 13", " 22 mV", " 0 mV"},
        {"3925", "11", " 80 mV", " 0 mV"},
        {"3925", "14", " 15 mV", " 0 mV"},
        {"7209", "20 21 24 25", "140 Ohms", "60 Ohms"},
        {"3921", "22 26 28 29", "200 Ohms", "60 Ohms"},
        {"7209", "23 27", "440 Ohms", "60 Ohms"},
        {"7209", "2A 2B", "?? Ohms", ""},
        {"3923", "09", "  5 V", " 0  V"},
        {"3923H", "00 01", "  10  V", "   0  V"},
        {"3923H", "04 05", " 2.5  V", "   0  V"},
        {"3923H", "08 09", " 500 mV", "   0 mV"},
        {"3923H", "0A", "  20 mA ", "   0 mA"},
        {"3923H", "0B", "  20 mA", "   0 mA"},
    };
    for (const ReferenceCase &c : Cases) {
        std::istringstream codes(c.codes);
        for (std::string code; codes >> code;) {
            EXPECT_EQ(CalibrationSpan(c.model, code), c.span) << c.model << " " << code;
            EXPECT_EQ(CalibrationZero(c.model, code), c.zero) << c.model << " " << code;
        }
    }
}

TEST(Calibration, KnowsAForeignCodeByTheOtherLists)
{
    EXPECT_EQ(CalibrationSpan("7221P", "08"), " 10 V") << "a model with ranges of its console's";
    EXPECT_EQ(CalibrationSpan("7203", "23"), "440 Ohms");
    EXPECT_EQ(CalibrationSpan("3923H", "23"), "") << "whose codes mean other ranges";
}

TEST(Calibration, HasNoReferenceForOtherCodesAndModels)
{
    for (const char *code : {"07", "15", "30", "50", "", "0e"}) {
        EXPECT_EQ(CalibrationSpan("7203", code), "") << code;
        EXPECT_EQ(CalibrationZero("7203", code), "") << code;
    }
    EXPECT_EQ(CalibrationSpan("3925", "15"), "");
    for (const char *model : {"7231", "7252", "7282", "3931", "3962", "7216", "7224P", "7227", ""})
        EXPECT_EQ(CalibrationSpan(model, "00"), "") << model;
}

TEST(Calibration, HasOneReferenceForACodeInAllLists)
{
    std::map<std::string_view, std::pair<std::string_view, std::string_view>> references;
    for (const ModelRow &row : AllModels()) {
        if (!row.ranges || row.ranges->apart || !row.All().Has(Feature::Calibration))
            continue;
        for (const RangeRow &range : row.ranges->rows) {
            const auto known = references.try_emplace(range.code, range.span, range.zero).first;
            EXPECT_EQ(known->second, std::pair(range.span, range.zero)) << row.model << " " << range.code;
        }
    }
    EXPECT_GT(references.size(), 30U);
}

} // namespace
