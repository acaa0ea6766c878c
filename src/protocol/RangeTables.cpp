#include "protocol/RangeTables.h"

#include "protocol/Text.h"

#include <algorithm>
#include <array>

namespace vorn
{

namespace
{

constexpr RangeRow Thermocouple[] = {
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

constexpr RangeRow Voltage[] = {
    {"08", "+/-     10   V", " V"}, {"09", "+/-      5   V", " V"}, {"0A", "+/-      1   V", " V"},
    {"0B", "+/-    500  mV", "mV"}, {"0C", "+/-    150  mV", "mV"}, {"0D", "+/-     20  mA", "mA"},
};

constexpr RangeRow StrainGauge[] = {
    {"00", "+/-     15  mV", "mV"}, {"01", "+/-     50  mV", "mV"}, {"02", "+/-    100  mV", "mV"},
    {"03", "+/-    500  mV", "mV"}, {"06", "+/-     20  mA", "mA"},
};

constexpr RangeRow Resistance[] = {
    {"20", "Pt.00385 -200 to 100'C", "'C"}, {"21", "Pt.00385 0 to 100'C", "'C"},
    {"22", "Pt.00385 0 to 200'C", "'C"},    {"23", "Pt.00385 0 to 600'C", "'C"},
    {"24", "Pt.00391 +/-100'C", "'C"},      {"25", "Pt.00391 0 to 100'C", "'C"},
    {"26", "Pt.00391 0 to 200'C", "'C"},    {"27", "Pt.00391 0 to 600'C", "'C"},
    {"28", "Ni -80 to 100'C", "'C"},        {"29", "Ni 0 to 100'C", "'C"},
    {"2A", "Cu 25'C 0 to 120'C", "'C"},     {"2B", "Cu 0'C 0 to 120'C", "'C"},
    {"", "T1 -50 to 150'C", "'C"}, // no code in either direction
};

constexpr RangeRow AnalogOutput[] = {
    {"30", "0 to 20 mA", "mA"}, {"31", "4 to 20 mA", "mA"}, {"32", "0 to 10  V", " V"}};

constexpr RangeRow Counter[] = {{"50", "Counter", ""}, {"51", "Freguency", "Hz"}};

constexpr RangeRow Slot3921[] = {
    {"20", "Pt.00385 +/-100'C", "'C"},   {"21", "Pt.00385 0 to 100'C", "'C"},
    {"22", "Pt.00385 0 to 200'C", "'C"}, {"23", "Pt.00385 0 to 600'C", "'C"},
    {"24", "Pt.00391 +/-100'C", "'C"},   {"25", "Pt.00391 0 to 100'C", "'C"},
    {"26", "Pt.00391 0 to 200'C", "'C"}, {"27", "Pt.00391 0 to 600'C", "'C"},
    {"28", "Ni -80 to 100'C", "'C"},     {"29", "Ni 0 to 100'C", "'C"},
};

constexpr RangeRow Slot3923[] = {
    {"08", "+/-  10  V", " V"}, {"09", "+/-   5  V", " V"}, {"0A", "+/-   1  V", " V"},
    {"0B", "+/- 500 mV", "mV"}, {"0C", "+/- 150 mV", "mV"}, {"0D", "+/-  20 mA", "mA"},
};

constexpr RangeRow Slot3923H[] = {
    {"00", "+/-  10  V", " V"},  {"01", "0 to 10  V", " V"},  {"02", "+/-  5  V", " V"},
    {"03", "0 to 5  V", " V"},   {"04", "+/-  2.5  V", " V"}, {"05", "0 to 2.5  V", " V"},
    {"06", "+/-  1 V", " V"},    {"07", "0 to 1 V", " V"},    {"08", "+/-  500 mV", "mV"},
    {"09", "0 to 500 mV", "mV"}, {"0A", "4 to 20 mA", "mA"},  {"0B", "0 to 20 mA", "mA"},
};

constexpr RangeRow Slot3925[] = {
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

constexpr RangeRow Slot3962[] = {
    {"00", "Bi-direction counter", ""}, {"01", "Up/Down counter", ""}, {"02", "Frequency", "Hz"}};

struct ModelRanges {
    std::string_view model;
    std::span<const RangeRow> rows;
};

constexpr ModelRanges ModuleRangeTable[] = {
    {"7203", Thermocouple}, {"7203D", Thermocouple}, {"7224", Thermocouple}, {"7224M", Thermocouple},
    {"7206", Voltage},      {"7212D", Voltage},      {"7221", Voltage},      {"7209", Resistance},
    {"7218", StrainGauge},  {"7231", AnalogOutput},  {"7282", Counter},      {"7282D", Counter},
    {"7282N", Counter},
};

constexpr ModelRanges SlotRangeTable[] = {
    {"3921", Slot3921}, {"3923", Slot3923},     {"3923H", Slot3923H},
    {"3925", Slot3925}, {"3931", AnalogOutput}, {"3962", Slot3962},
};

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
constexpr std::string_view Formats3921[] = {"Engineering unit", "Ohms"};
constexpr std::string_view Formats3923H[] = {"Engineering unit", "two's complement"};
constexpr std::string_view Formats3962[] = {"Dec", "Hex"};
constexpr std::string_view AnalogAlarmModes[] = {"Disable", "Momentary", "Latch"};
constexpr std::string_view CounterAlarmModes[] = {"Disable", "Latch"};

std::span<const RangeRow> RangesIn(std::span<const ModelRanges> table, std::string_view model)
{
    const auto found = std::ranges::find(table, model, &ModelRanges::model);
    return found == table.end() ? std::span<const RangeRow>{} : found->rows;
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

} // namespace

std::span<const RangeRow> ModuleRanges(std::string_view model)
{
    return RangesIn(ModuleRangeTable, model);
}

std::span<const RangeRow> SlotRanges(std::string_view model)
{
    return RangesIn(SlotRangeTable, model);
}

std::optional<RangeDecode> DecodeRange(std::string_view model, std::string_view code)
{
    // The strain gauge module's shorter list moves one code.
    if (model == "7218" && code == "06")
        return RangeDecode{.position = 4, .unit = "mA", .setsRdu = true, .setsAunit = true};
    const auto in = [code](std::span<const RangeRow> rows,
                           const RangeDecode &sets) -> std::optional<RangeDecode> {
        const auto position = PositionIn(rows, code);
        if (!position)
            return std::nullopt;
        RangeDecode decode = sets;
        decode.position = *position;
        decode.unit = rows[static_cast<std::size_t>(*position)].unit;
        return decode;
    };
    constexpr RangeDecode Input{.position = 0, .unit = {}, .setsRdu = true, .setsAunit = true};
    constexpr RangeDecode Sensor{.position = 0, .unit = {}, .setsRdu = true};
    constexpr RangeDecode Output{.position = 0, .unit = {}, .setsAOS = true};
    if (auto decode = in(Thermocouple, Input))
        return decode;
    if (auto decode = in(Voltage, Input))
        return decode;
    if (auto decode = in(Resistance, Sensor))
        return decode;
    if (auto decode = in(AnalogOutput, Output))
        return decode;
    const RangeDecode mode{.position = 0, .unit = {}, .setsFCs = code == "51"};
    return in(Counter, mode);
}

std::optional<int> SlotRangePosition(std::string_view code)
{
    for (const std::span<const RangeRow> rows :
         {std::span<const RangeRow>(Slot3925), std::span<const RangeRow>(Slot3923),
          std::span<const RangeRow>(Slot3921)}) {
        if (const auto position = PositionIn(rows, code))
            return position;
    }
    return std::nullopt;
}

std::string_view RangeCode(std::string_view model, int position)
{
    return IsDigitalModel(model) ? "40" : CodeAt(ModuleRanges(model), position);
}

std::string_view SlotRangeCode(std::string_view model, int position)
{
    return CodeAt(SlotRanges(model), position);
}

bool IsDigitalModel(std::string_view model)
{
    return IsOneOf(model, {"7252", "7256", "7258", "7272"});
}

bool IsCounterModel(std::string_view model)
{
    return IsOneOf(model, {"7282", "7282D", "7282N"});
}

bool HasDataFormatList(std::string_view model)
{
    return IsOneOf(model, {"7203", "7203D", "7206", "7209", "7212D", "7218", "7231"});
}

bool HasIntegrationTime(std::string_view model)
{
    return IsOneOf(model, {"7221", "7224", "7224M"});
}

bool UsesThermocoupleRanges(std::string_view model)
{
    return IsOneOf(model, {"7203", "7203D", "7224", "7224M"});
}

bool HasModuleAlarm(std::string_view model)
{
    return IsOneOf(model, {"7203", "7203D", "7206", "7212D", "7218"});
}

Captions DataFormatCaptions(std::string_view model)
{
    if (HasIntegrationTime(model))
        return IntegrationTimes;
    if (!HasDataFormatList(model))
        return {};
    const Captions all(DataFormats);
    return model == "7209" ? all : all.first(CommonFormats);
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
    if (model == "3921")
        return Formats3921;
    if (model == "3923H")
        return Formats3923H;
    if (model == "3962")
        return Formats3962;
    return {};
}

Captions SlotTimeCaptions(std::string_view model)
{
    return IsOneOf(model, {"3921", "3923", "3925"}) ? Captions(IntegrationTimes) : Captions{};
}

Captions ChannelAlarmModes(std::string_view model)
{
    if (model == "3962")
        return CounterAlarmModes;
    return IsOneOf(model, {"3921", "3931", "3923", "3923H", "3925"}) ? Captions(AnalogAlarmModes)
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
    return model == "3931" || !SlotTimeCaptions(model).empty();
}

int SlewRatePosition(std::string_view formatBits)
{
    int position = 0;
    for (std::size_t character = 3; character <= 6; ++character)
        position = position * 2 + (CharAt(formatBits, character) == '1' ? 1 : 0);
    return position;
}

} // namespace vorn
