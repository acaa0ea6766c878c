#include "Ranges.h"

#include "BusText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace vornsim
{

namespace
{

constexpr RangeRow Thermocouple[] = {
    {"00", -15, 15, 2},   {"01", -50, 50, 2},   {"02", -100, 100, 3}, {"03", -500, 500, 3},
    {"04", -1, 1, 1},     {"05", -2.5, 2.5, 1}, {"06", -20, 20, 2},   {"0E", 0, 760, 3},
    {"0F", 0, 1000, 4},   {"10", -100, 400, 3}, {"11", 0, 1000, 4},   {"12", 500, 1750, 4},
    {"13", 500, 1750, 4}, {"14", 500, 1860, 4},
};

constexpr RangeRow Voltage[] = {
    {"08", -10, 10, 2},   {"09", -5, 5, 1},     {"0A", -1, 1, 1},
    {"0B", -500, 500, 3}, {"0C", -150, 150, 3}, {"0D", -20, 20, 2},
};

constexpr RangeRow Strain[] = {
    {"00", -15, 15, 2}, {"01", -50, 50, 2}, {"02", -100, 100, 3}, {"03", -500, 500, 3}, {"06", -20, 20, 2},
};

constexpr RangeRow Resistance[] = {
    {"20", -200, 100, 3}, {"21", 0, 100, 3}, {"22", 0, 200, 3}, {"23", 0, 600, 3},
    {"24", -100, 100, 3}, {"25", 0, 100, 3}, {"26", 0, 200, 3}, {"27", 0, 600, 3},
    {"28", -80, 100, 3},  {"29", 0, 100, 3}, {"2A", 0, 120, 3}, {"2B", 0, 120, 3},
};

constexpr RangeRow Output[] = {
    {"30", 0, 20, 2, true},
    {"31", 4, 20, 2, true},
    {"32", 0, 10, 2, false},
};

// Only the frequency is a measured value with a range; counters count up to 32 bits.
constexpr RangeRow Counter[] = {{"50", 0, 4294967295.0, 10}, {"51", 0, 50000, 5}};
constexpr RangeRow Digital[] = {{"40", 0, 1, 1}};

constexpr RangeRow Sensor[] = {
    {"20", -50, 150, 3}, {"21", 0, 100, 3},   {"22", 0, 200, 3},   {"23", 0, 400, 3}, {"24", -200, 200, 3},
    {"25", -50, 150, 3}, {"26", 0, 100, 3},   {"27", 0, 200, 3},   {"28", 0, 400, 3}, {"29", -200, 200, 3},
    {"2A", -40, 160, 3}, {"2B", -30, 120, 3}, {"2C", -80, 100, 3}, {"2D", 0, 100, 3},
};

constexpr RangeRow Signal[] = {
    {"08", -10, 10, 2},   {"09", -5, 5, 1}, {"0A", -1, 1, 1}, {"0B", -500, 500, 3},
    {"0C", -150, 150, 3}, {"0D", 0, 20, 2}, {"07", 4, 20, 2},
};

constexpr RangeRow ThermocoupleOrCurrent[] = {
    {"06", 0, 20, 2},     {"07", 4, 20, 2},     {"0E", 0, 760, 3},
    {"0F", 0, 1000, 4},   {"10", -100, 400, 3}, {"11", 0, 1000, 4},
    {"12", 500, 1750, 4}, {"13", 500, 1750, 4}, {"14", 500, 1800, 4},
};

constexpr RangeRow Universal[] = {
    {"02", -100, 100, 3}, {"03", -500, 500, 3}, {"04", -1, 1, 1},   {"05", -2.5, 2.5, 1},
    {"09", -5, 5, 1},     {"08", -10, 10, 2},   {"0D", -20, 20, 2}, {"0E", 0, 760, 3},
    {"0F", 0, 1000, 4},   {"10", -100, 400, 3}, {"11", 0, 1000, 4}, {"12", 500, 1750, 4},
    {"13", 500, 1750, 4}, {"14", 500, 1800, 4},
};

constexpr RangeRow SignedOutput[] = {
    {"30", 0, 20, 2, true},
    {"31", 4, 20, 2, true},
    {"32", -10, 10, 2, false},
};

constexpr RangeRow ResistanceCard[] = {
    {"20", -100, 100, 3}, {"21", 0, 100, 3}, {"22", 0, 200, 3}, {"23", 0, 600, 3},   {"24", -100, 100, 3},
    {"25", 0, 100, 3},    {"26", 0, 200, 3}, {"27", 0, 600, 3}, {"28", -80, 100, 3}, {"29", 0, 100, 3},
};

constexpr RangeRow FastVoltageCard[] = {
    {"00", -10, 10, 2},   {"01", 0, 10, 2},  {"02", -5, 5, 1}, {"03", 0, 5, 1},
    {"04", -2.5, 2.5, 1}, {"05", 0, 2.5, 1}, {"06", -1, 1, 1}, {"07", 0, 1, 1},
    {"08", -500, 500, 3}, {"09", 0, 500, 3}, {"0A", 4, 20, 2}, {"0B", 0, 20, 2},
};

constexpr RangeRow ThermocoupleCard[] = {
    {"00", -15, 15, 2},   {"01", -50, 50, 2},   {"02", -100, 100, 3}, {"03", -500, 500, 3},
    {"04", -1, 1, 1},     {"05", -2.5, 2.5, 1}, {"06", -20, 20, 2},   {"0E", 0, 760, 3},
    {"0F", 0, 1370, 4},   {"10", -100, 400, 3}, {"11", 0, 1000, 4},   {"12", 500, 1750, 4},
    {"13", 500, 1750, 4}, {"14", 500, 1800, 4}, {"15", 0, 1300, 4},
};

constexpr RangeRow CounterCard[] = {
    {"00", 0, 4294967295.0, 10}, {"01", 0, 4294967295.0, 10}, {"02", 0, 50000, 5}};

std::string Format(const char *form, int width, int decimals, double value)
{
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), form, width, decimals, value);
    return {text.data(), static_cast<std::size_t>(std::min(length, 63))};
}

/// Sign, integer digits, point and decimals in seven characters.
std::string Signed7(double value, int digits)
{
    return Format("%+0*.*f", 7, std::max(0, 5 - digits), value);
}

/// The greatest magnitude of a range, to which percent and hexadecimal refer.
double FullScale(const RangeRow &range)
{
    return std::max(std::abs(range.low), std::abs(range.high));
}

/// Position of an output in its span, 0 to 1.
double SpanPart(const RangeRow &range, double value)
{
    return (value - range.low) / (range.high - range.low);
}

/// Whether a text has a form: "s" is a sign, "d" a digit, every other character stands for itself.
bool HasForm(std::string_view text, std::string_view form)
{
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char c, char place) {
        return place == 's' ? c == '+' || c == '-' : place == 'd' ? IsDecimal(c) : c == place;
    });
}

constexpr double Tolerance =
    1e-9; // so that the end of a range still belongs to it when it was read from a text

std::optional<double> Within(const RangeRow &range, std::optional<double> value)
{
    if (!value || *value < range.low - Tolerance || *value > range.high + Tolerance)
        return std::nullopt;
    return value;
}

} // namespace

constinit const std::span<const RangeRow> ThermocoupleRanges = Thermocouple;
constinit const std::span<const RangeRow> VoltageRanges = Voltage;
constinit const std::span<const RangeRow> StrainRanges = Strain;
constinit const std::span<const RangeRow> ResistanceRanges = Resistance;
constinit const std::span<const RangeRow> OutputRanges = Output;
constinit const std::span<const RangeRow> CounterRanges = Counter;
constinit const std::span<const RangeRow> DigitalRanges = Digital;
constinit const std::span<const RangeRow> SensorRanges = Sensor;
constinit const std::span<const RangeRow> SignalRanges = Signal;
constinit const std::span<const RangeRow> ThermocoupleOrCurrentRanges = ThermocoupleOrCurrent;
constinit const std::span<const RangeRow> UniversalRanges = Universal;
constinit const std::span<const RangeRow> SignedOutputRanges = SignedOutput;
constinit const std::span<const RangeRow> ResistanceCardRanges = ResistanceCard;
constinit const std::span<const RangeRow> FastVoltageCardRanges = FastVoltageCard;
constinit const std::span<const RangeRow> ThermocoupleCardRanges = ThermocoupleCard;
constinit const std::span<const RangeRow> CounterCardRanges = CounterCard;

const RangeRow *FindRange(std::span<const RangeRow> ranges, std::string_view code)
{
    const auto found =
        std::find_if(ranges.begin(), ranges.end(), [code](const RangeRow &r) { return r.code == code; });
    return found == ranges.end() ? nullptr : &*found;
}

std::string RangeText(const RangeRow &range, double value)
{
    return Signed7(value, range.digits);
}

std::optional<double> ReadRangeText(const RangeRow &range, std::string_view text)
{
    const auto digits = static_cast<std::size_t>(range.digits);
    if (digits > 5)
        return std::nullopt;
    const std::string form = "s" + std::string(digits, 'd') + "." + std::string(5 - digits, 'd');
    return HasForm(text, form) ? Within(range, ReadNumber(text)) : std::nullopt;
}

std::string InputText(const RangeRow &range, DataFormat format, double value)
{
    const bool hexadecimal = format == DataFormat::Hexadecimal;
    if (!Within(range, value))
        return value > range.high ? (hexadecimal ? "7FFF" : "+9999.9") : (hexadecimal ? "8000" : "-9999.9");
    switch (format) {
    case DataFormat::Percent:
        return Signed7(value / FullScale(range) * 100, 3);
    case DataFormat::Hexadecimal:
        return Hex(static_cast<unsigned long long>(std::lround(value / FullScale(range) * 0x7FFF)), 4);
    case DataFormat::Ohms:
        return Signed7(100 + 0.385 * value, 3); // the slope of a platinum sensor serves for all of them
    case DataFormat::Engineering:
        break;
    }
    return RangeText(range, value);
}

std::string OutputText(const RangeRow &range, DataFormat format, double value)
{
    switch (format) {
    case DataFormat::Percent:
        return Signed7(SpanPart(range, value) * 100, 3);
    case DataFormat::Hexadecimal:
        return Hex(static_cast<unsigned long long>(std::lround(SpanPart(range, value) * 0xFFF)), 3);
    default:
        return Format("%0*.*f", 6, 3, value);
    }
}

std::optional<double> ReadOutputText(const RangeRow &range, DataFormat format, std::string_view text)
{
    const double span = range.high - range.low;
    if (format == DataFormat::Hexadecimal) {
        const auto value = text.size() == 3 ? ReadHex(text) : std::nullopt;
        return value ? std::optional(range.low + span * *value / 0xFFF) : std::nullopt;
    }
    if (format == DataFormat::Percent) {
        const auto value = HasForm(text, "sddd.dd") ? ReadNumber(text) : std::nullopt;
        return value ? Within(range, range.low + span * *value / 100) : std::nullopt;
    }
    return HasForm(text, "dd.ddd") ? Within(range, ReadNumber(text)) : std::nullopt;
}

} // namespace vornsim
