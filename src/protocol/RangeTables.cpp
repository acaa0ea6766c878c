#include "protocol/RangeTables.h"

#include "protocol/ModelTable.h"
#include "protocol/Text.h"

#include <algorithm>
#include <array>

namespace vorn
{

namespace
{

constexpr LimitBounds Within(double bound, int digits)
{
    return {.lower = -bound, .upper = bound, .digits = digits};
}

constexpr LimitBounds Between(double lower, double upper, int digits)
{
    return {.lower = lower, .upper = upper, .digits = digits, .crossed = true};
}

// clang-format off
constexpr RangeRow Thermocouple[] = {
    // code, caption, unit, limits, calibration at span and at zero
    {"00", "+/-       15  mV",                    "mV", Within(15, 2),         " 15 mV",  " 0 mV"},
    {"01", "+/-       50  mV",                    "mV", Within(50, 2),         " 50 mV",  " 0 mV"},
    {"02", "+/-     100  mV",                     "mV", Within(100, 3),        " 100 mV", " 0 mV"},
    {"03", "+/-     500  mV",                     "mV", Within(500, 3),        " 500 mV", " 0 mV"},
    {"04", "+/-          1 V",                    " V", Within(1, 1),          "  1 V",   " 0  V"},
    {"05", "+/-       2.5 V",                     " V", Within(2.5, 1),        " 2.5 V",  " 0  V"},
    {"06", "+/-       20  mA",                    "mA", Within(20, 2),         " 20 mA",  " 0 mA"},
    {"0E", "Type J Thermocouple 0'C to 760'C",    "'C", Between(0, 760, 3),    " 50 mV",  " 0 mV"},
    {"0F", "Type K Thermocouple 0'C to 1000'C",   "'C", Between(0, 1000, 4),   " 50 mV",  " 0 mV"},
    {"10", "Type T Thermocouple -100'C to 400'C", "'C", Between(-100, 400, 3), " 22 mV",  " 0 mV"},
    {"11", "Type E Thermocouple 0'C to 1000'C",   "'C", Between(0, 1000, 4),   " 80 mV",  " 0 mV"},
    {"12", "Type R Thermocouple 500'C to 1750'C", "'C", Between(500, 1750, 4), " 22 mV",  " 0 mV"},
    {"13", "Type S Thermocouple 500'C to 1750'C", "'C", Between(500, 1750, 4), " 22 mV",  " 0 mV"},
    // Its limits end below the range.
    {"14", "Type B Thermocouple 500'C to 1860'C", "'C", Between(500, 1800, 4), " 15 mV",  " 0 mV"},
};

constexpr RangeRow Voltage[] = {
    {"08", "+/-     10   V", " V", Within(10, 2),  " 10 V",   " 0  V"},
    {"09", "+/-      5   V", " V", Within(5, 1),   "  5 V",   " 0  V"},
    {"0A", "+/-      1   V", " V", Within(1, 1),   "  1 V",   " 0  V"},
    {"0B", "+/-    500  mV", "mV", Within(500, 3), " 500 mV", " 0 mV"},
    {"0C", "+/-    150  mV", "mV", Within(150, 3), " 150 mV", " 0 mV"},
    {"0D", "+/-     20  mA", "mA", Within(20, 2),  " 20 mA",  " 0 mA"},
};

constexpr RangeRow StrainGauge[] = {
    {"00", "+/-     15  mV", "mV", Within(15, 2),  " 15 mV",  " 0 mV"},
    {"01", "+/-     50  mV", "mV", Within(50, 2),  " 50 mV",  " 0 mV"},
    {"02", "+/-    100  mV", "mV", Within(100, 3), " 100 mV", " 0 mV"},
    {"03", "+/-    500  mV", "mV", Within(500, 3), " 500 mV", " 0 mV"},
    {"06", "+/-     20  mA", "mA", Within(20, 2),  " 20 mA",  " 0 mA"},
};

constexpr RangeRow Sensor[] = {
    {"20", "Pt.00385 -200 to 100'C", "'C", {}, "140 Ohms", "60 Ohms"},
    {"21", "Pt.00385 0 to 100'C",    "'C", {}, "140 Ohms", "60 Ohms"},
    {"22", "Pt.00385 0 to 200'C",    "'C", {}, "200 Ohms", "60 Ohms"},
    {"23", "Pt.00385 0 to 600'C",    "'C", {}, "440 Ohms", "60 Ohms"},
    {"24", "Pt.00391 +/-100'C",      "'C", {}, "140 Ohms", "60 Ohms"},
    {"25", "Pt.00391 0 to 100'C",    "'C", {}, "140 Ohms", "60 Ohms"},
    {"26", "Pt.00391 0 to 200'C",    "'C", {}, "200 Ohms", "60 Ohms"},
    {"27", "Pt.00391 0 to 600'C",    "'C", {}, "440 Ohms", "60 Ohms"},
    {"28", "Ni -80 to 100'C",        "'C", {}, "200 Ohms", "60 Ohms"},
    {"29", "Ni 0 to 100'C",          "'C", {}, "200 Ohms", "60 Ohms"},
    {"2A", "Cu 25'C 0 to 120'C",     "'C", {}, "?? Ohms"},
    {"2B", "Cu 0'C 0 to 120'C",      "'C", {}, "?? Ohms"},
    {"",   "T1 -50 to 150'C",        "'C"}, // no code in either direction
};

constexpr RangeRow Output[] = {{"30", "0 to 20 mA", "mA"}, {"31", "4 to 20 mA", "mA"}, {"32", "0 to 10  V", " V"}};

constexpr RangeRow Counter[] = {{"50", "Counter", ""}, {"51", "Freguency", "Hz"}};

constexpr RangeRow SensorCard[] = {
    {"20", "Pt.00385 +/-100'C",   "'C", {}, "140 Ohms", "60 Ohms"},
    {"21", "Pt.00385 0 to 100'C", "'C", {}, "140 Ohms", "60 Ohms"},
    {"22", "Pt.00385 0 to 200'C", "'C", {}, "200 Ohms", "60 Ohms"},
    {"23", "Pt.00385 0 to 600'C", "'C", {}, "440 Ohms", "60 Ohms"},
    {"24", "Pt.00391 +/-100'C",   "'C", {}, "140 Ohms", "60 Ohms"},
    {"25", "Pt.00391 0 to 100'C", "'C", {}, "140 Ohms", "60 Ohms"},
    {"26", "Pt.00391 0 to 200'C", "'C", {}, "200 Ohms", "60 Ohms"},
    {"27", "Pt.00391 0 to 600'C", "'C", {}, "440 Ohms", "60 Ohms"},
    {"28", "Ni -80 to 100'C",     "'C", {}, "200 Ohms", "60 Ohms"},
    {"29", "Ni 0 to 100'C",       "'C", {}, "200 Ohms", "60 Ohms"},
};

constexpr RangeRow VoltageCard[] = {
    {"08", "+/-  10  V", " V", {}, " 10 V",   " 0  V"},
    {"09", "+/-   5  V", " V", {}, "  5 V",   " 0  V"},
    {"0A", "+/-   1  V", " V", {}, "  1 V",   " 0  V"},
    {"0B", "+/- 500 mV", "mV", {}, " 500 mV", " 0 mV"},
    {"0C", "+/- 150 mV", "mV", {}, " 150 mV", " 0 mV"},
    {"0D", "+/-  20 mA", "mA", {}, " 20 mA",  " 0 mA"},
};

constexpr RangeRow FastVoltageCard[] = {
    {"00", "+/-  10  V",  " V", {}, "  10  V",  "   0  V"},
    {"01", "0 to 10  V",  " V", {}, "  10  V",  "   0  V"},
    {"02", "+/-  5  V",   " V", {}, "   5  V",  "   0  V"},
    {"03", "0 to 5  V",   " V", {}, "   5  V",  "   0  V"},
    {"04", "+/-  2.5  V", " V", {}, " 2.5  V",  "   0  V"},
    {"05", "0 to 2.5  V", " V", {}, " 2.5  V",  "   0  V"},
    {"06", "+/-  1 V",    " V", {}, "   1  V",  "   0  V"},
    {"07", "0 to 1 V",    " V", {}, "   1  V",  "   0  V"},
    {"08", "+/-  500 mV", "mV", {}, " 500 mV",  "   0 mV"},
    {"09", "0 to 500 mV", "mV", {}, " 500 mV",  "   0 mV"},
    {"0A", "4 to 20 mA",  "mA", {}, "  20 mA ", "   0 mA"},
    {"0B", "0 to 20 mA",  "mA", {}, "  20 mA",  "   0 mA"},
};

constexpr RangeRow ThermocoupleCard[] = {
    {"00", "+/-  15 mV",            "mV", {}, " 15 mV",  " 0 mV"},
    {"01", "+/-  50 mV",            "mV", {}, " 50 mV",  " 0 mV"},
    {"02", "+/- 100 mV",            "mV", {}, " 100 mV", " 0 mV"},
    {"03", "+/- 500 mV",            "mV", {}, " 500 mV", " 0 mV"},
    {"04", "+/-   1  V",            " V", {}, "  1 V",   " 0  V"},
    {"05", "+/- 2.5  V",            " V", {}, " 2.5 V",  " 0  V"},
    {"06", "+/-  20 mA",            "mA", {}, " 20 mA",  " 0 mA"},
    {"0E", "T/C Type J 0~760'C",    "'C", {}, " 50 mV",  " 0 mV"},
    {"0F", "T/C Type K 0~1370'C",   "'C", {}, " 50 mV",  " 0 mV"},
    {"10", "T/C Type T -100~400'C", "'C", {}, " 22 mV",  " 0 mV"},
    {"11", "T/C Type E 0~1000'C",   "'C", {}, " 80 mV",  " 0 mV"},
    {"12", "T/C Type R 500~1750'C", "'C", {}, " 22 mV",  " 0 mV"},
    {"13", "T/C Type S 500~1750'C", "'C", {}, " 22 mV",  " 0 mV"},
    {"14", "T/C Type B 500~1800'C", "'C", {}, " 15 mV",  " 0 mV"},
    {"15", "T/C Type N 0~1300'C",   "'C"}, // no calibration is known for it
};

constexpr RangeRow CounterCard[] = {
    {"00", "Bi-direction counter", ""}, {"01", "Up/Down counter", ""}, {"02", "Frequency", "Hz"}};
// clang-format on

constexpr std::string_view DataFormats[] = {"Engineering units", "% of FSR", "2's complement of Hex", "Ohms"};
constexpr std::size_t CommonFormats = 3; // the fourth is the RTD module's
constexpr std::string_view IntegrationTimes[] = {"50 ms (60Hz)", "60 ms (50Hz)"};
constexpr std::string_view CounterGates[] = {"Low", "High", "None"};
constexpr std::string_view FrequencyGates[] = {"0.1 sec", "1 sec"};
constexpr std::string_view VoltageSlewRates[] = {
    "Immediate change", "0.0625 V/sec", "0.125 V/sec", "0.250 V/sec", "0.500 V/sec", "1.000 V/sec",
    "2.000 V/sec",      "4.000 V/sec",  "8.000 V/sec", "16.00 V/sec", "32.00 V/sec", "64.00 V/sec"};
constexpr std::string_view CurrentSlewRates[] = {
    "Immediate change", "0.125 mA/sec", "0.250 mA/sec", "0.500 mA/sec", "1.000 mA/sec", "2.000 mA/sec",
    "4.000 mA/sec",     "8.000 mA/sec", "16.00 mA/sec", "32.00 mA/sec", "64.00 mA/sec", "128.0 mA/sec"};
constexpr std::string_view AnalogAlarmModes[] = {"Disable", "Momentary", "Latch"};
constexpr std::string_view CounterAlarmModes[] = {"Disable", "Latch"};

std::span<const RangeRow> RangesOf(std::string_view model, bool card)
{
    const ModelRow *row = FindModel(model);
    return row && row->ranges && row->IsCard() == card ? row->ranges->rows : std::span<const RangeRow>{};
}

std::optional<int> PositionIn(std::span<const RangeRow> rows, std::string_view code)
{
    const auto found = std::ranges::find(rows, code, &RangeRow::code);
    if (found == rows.end() || code.empty())
        return std::nullopt;
    return static_cast<int>(found - rows.begin());
}

std::string_view CodeAt(std::span<const RangeRow> rows, int position)
{
    return position >= 0 && position < static_cast<int>(rows.size())
               ? rows[static_cast<std::size_t>(position)].code
               : std::string_view{};
}

std::optional<RangeDecode> DecodeIn(const RangeTable &table, std::string_view code)
{
    const auto position = PositionIn(table.rows, code);
    if (!position)
        return std::nullopt;
    const RangeRow &row = table.rows[static_cast<std::size_t>(*position)];
    return RangeDecode{.position = *position,
                       .unit = row.unit,
                       .setsRdu = table.setsRdu,
                       .setsAunit = table.setsAunit,
                       .setsAOS = table.setsAOS,
                       .setsFCs = table.setsFCs && !row.unit.empty()};
}

/// Row of a type code for the calibration of a model: in its own list, else in the first list that holds the
/// code.
const RangeRow *CalibrationRow(std::string_view model, std::string_view code)
{
    const ModelRow *row = FindModel(model);
    if (!row || !row->All().Has(Feature::Calibration) || code.empty())
        return nullptr;
    const auto in = [code](const RangeTable &table) -> const RangeRow * {
        const auto found = std::ranges::find(table.rows, code, &RangeRow::code);
        return found == table.rows.end() ? nullptr : &*found;
    };
    if (row->ranges) {
        const RangeRow *own = in(*row->ranges);
        if (own || row->ranges->apart)
            return own;
    }
    for (const RangeTable *table : {&ThermocoupleRanges, &VoltageRanges, &SensorRanges}) {
        if (const RangeRow *found = in(*table))
            return found;
    }
    return nullptr;
}

} // namespace

constinit const RangeTable ThermocoupleRanges{.rows = Thermocouple, .setsRdu = true, .setsAunit = true};
constinit const RangeTable VoltageRanges{.rows = Voltage, .setsRdu = true, .setsAunit = true};
constinit const RangeTable StrainGaugeRanges{.rows = StrainGauge, .setsRdu = true, .setsAunit = true};
constinit const RangeTable SensorRanges{.rows = Sensor, .setsRdu = true};
constinit const RangeTable OutputRanges{.rows = Output, .setsAOS = true};
constinit const RangeTable CounterRanges{.rows = Counter, .setsFCs = true};
constinit const RangeTable SensorCardRanges{.rows = SensorCard};
constinit const RangeTable VoltageCardRanges{.rows = VoltageCard};
constinit const RangeTable FastVoltageCardRanges{.rows = FastVoltageCard, .apart = true};
constinit const RangeTable ThermocoupleCardRanges{.rows = ThermocoupleCard};
constinit const RangeTable CounterCardRanges{.rows = CounterCard};

std::span<const RangeRow> ModuleRanges(std::string_view model)
{
    return RangesOf(model, false);
}

std::span<const RangeRow> SlotRanges(std::string_view model)
{
    return RangesOf(model, true);
}

std::optional<RangeDecode> DecodeRange(std::string_view model, std::string_view code)
{
    const ModelRow *row = FindModel(model);
    if (row && row->ranges && !row->IsCard()) {
        if (const auto decode = DecodeIn(*row->ranges, code))
            return decode;
    }
    for (const RangeTable *table :
         {&ThermocoupleRanges, &VoltageRanges, &SensorRanges, &OutputRanges, &CounterRanges}) {
        if (const auto decode = DecodeIn(*table, code))
            return decode;
    }
    return std::nullopt;
}

std::optional<int> SlotRangePosition(std::string_view code)
{
    for (const RangeTable *table : {&ThermocoupleCardRanges, &VoltageCardRanges, &SensorCardRanges}) {
        if (const auto position = PositionIn(table->rows, code))
            return position;
    }
    return std::nullopt;
}

std::optional<int> ChannelRangePosition(std::string_view model, std::string_view code)
{
    return PositionIn(SlotRanges(model), code);
}

std::string_view ChannelUnit(std::string_view model, std::string_view code)
{
    const auto position = ChannelRangePosition(model, code);
    return position ? SlotRanges(model)[static_cast<std::size_t>(*position)].unit : std::string_view{};
}

std::string_view RangeCode(std::string_view model, int position)
{
    const ModelRow *row = FindModel(model);
    return row && !row->rangeCode.empty() ? row->rangeCode : CodeAt(ModuleRanges(model), position);
}

std::string_view SlotRangeCode(std::string_view model, int position)
{
    return CodeAt(SlotRanges(model), position);
}

LimitBounds BoundsAt(std::string_view model, int position)
{
    const auto rows = ModuleRanges(model);
    return position >= 0 && position < static_cast<int>(rows.size())
               ? rows[static_cast<std::size_t>(position)].limits
               : LimitBounds{};
}

std::string_view CalibrationSpan(std::string_view model, std::string_view code)
{
    const RangeRow *row = CalibrationRow(model, code);
    return row ? row->span : std::string_view{};
}

std::string_view CalibrationZero(std::string_view model, std::string_view code)
{
    const RangeRow *row = CalibrationRow(model, code);
    return row ? row->zero : std::string_view{};
}

bool IsCounterModel(std::string_view model)
{
    return Has(model, Feature::Counters);
}

bool HasDataFormatList(std::string_view model)
{
    return Has(model, Feature::DataFormats);
}

bool HasIntegrationTime(std::string_view model)
{
    return Has(model, Feature::ChannelInputs) && Has(model, Feature::IntegrationTime);
}

bool UsesThermocoupleRanges(std::string_view model)
{
    return Has(model, Feature::ColdJunction);
}

bool HasModuleAlarm(std::string_view model)
{
    return Has(model, Feature::ModuleAlarm);
}

Captions DataFormatCaptions(std::string_view model)
{
    if (HasIntegrationTime(model))
        return IntegrationTimes;
    if (!HasDataFormatList(model))
        return {};
    const Captions all(DataFormats);
    return Has(model, Feature::Ohms) ? all : all.first(CommonFormats);
}

Captions GateCaptions(bool counter)
{
    return counter ? Captions(CounterGates) : Captions(FrequencyGates);
}

Captions SlewRateCaptions(bool voltage)
{
    return voltage ? Captions(VoltageSlewRates) : Captions(CurrentSlewRates);
}

Captions SlotFormatCaptions(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row ? row->formats : Captions{};
}

Captions SlotTimeCaptions(std::string_view model)
{
    return Has(model, Feature::IntegrationTime) && !HasIntegrationTime(model) ? Captions(IntegrationTimes)
                                                                              : Captions{};
}

Captions ChannelAlarmModes(std::string_view model)
{
    if (Has(model, Feature::CardCounters))
        return CounterAlarmModes;
    return Has(model, Feature::CardInputs) || Has(model, Feature::CardOutputs) ? Captions(AnalogAlarmModes)
                                                                               : Captions{};
}

std::string_view DataFormatUnit(int position)
{
    constexpr int Percent = 1;
    constexpr int Hexadecimal = 2;
    return position == Percent ? " %" : position == Hexadecimal ? "Hex" : std::string_view{};
}

std::string CaptionUnit(std::string_view caption)
{
    constexpr std::size_t UnitLength = 2;
    return Right(caption, UnitLength);
}

bool HasSlotFormatList(std::string_view model)
{
    return !SlotFormatCaptions(model).empty();
}

bool HasSlotTimeList(std::string_view model)
{
    return Has(model, Feature::CardOutputs) || !SlotTimeCaptions(model).empty();
}

int SlewRatePosition(std::string_view formatBits)
{
    int position = 0;
    for (std::size_t character = 3; character <= 6; ++character)
        position = position * 2 + (CharAt(formatBits, character) == '1' ? 1 : 0);
    return position;
}

} // namespace vorn
