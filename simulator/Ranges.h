#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vornsim
{

/// Data format, the two low bits of the format byte.
enum class DataFormat { Engineering = 0, Percent = 1, Hexadecimal = 2, Ohms = 3 };

/// An input or output range, and how its values are written: sign, integer digits, point, decimals, seven
/// characters.
struct RangeRow {
    std::string_view code;
    double low;
    double high;
    int digits;           ///< integer digits
    bool current = false; ///< milliampere output, whose slew rates differ from those of volts
};

/// The ranges of each kind of model.
extern const std::span<const RangeRow> ThermocoupleRanges;          ///< 7203, 7203D, 7224, 7224M
extern const std::span<const RangeRow> VoltageRanges;               ///< 7206, 7212D, 7221, 3923
extern const std::span<const RangeRow> StrainRanges;                ///< 7218
extern const std::span<const RangeRow> ResistanceRanges;            ///< 7209
extern const std::span<const RangeRow> OutputRanges;                ///< 7231, 3931
extern const std::span<const RangeRow> CounterRanges;               ///< 7282, 7282D, 7282N
extern const std::span<const RangeRow> DigitalRanges;               ///< digital modules
extern const std::span<const RangeRow> SensorRanges;                ///< 7216
extern const std::span<const RangeRow> SignalRanges;                ///< 7221P
extern const std::span<const RangeRow> ThermocoupleOrCurrentRanges; ///< 7224P
extern const std::span<const RangeRow> UniversalRanges;             ///< 7227
extern const std::span<const RangeRow> SignedOutputRanges;          ///< 7234
extern const std::span<const RangeRow> ResistanceCardRanges;        ///< 3921
extern const std::span<const RangeRow> FastVoltageCardRanges;       ///< 3923H
extern const std::span<const RangeRow> ThermocoupleCardRanges;      ///< 3925
extern const std::span<const RangeRow> CounterCardRanges;           ///< 3962

const RangeRow *FindRange(std::span<const RangeRow> ranges, std::string_view code);

/// Seven characters in the unit of the range, such as "+05.123".
std::string RangeText(const RangeRow &range, double value);
/// The value of a text of exactly that form, within the range.
std::optional<double> ReadRangeText(const RangeRow &range, std::string_view text);

/// An input value in a data format: "+05.123", "+050.00", "4000", "+109.73". What lies outside the range
/// reads as the end of all values, "+9999.9", "-9999.9", "7FFF" or "8000".
std::string InputText(const RangeRow &range, DataFormat format, double value);

/// An output value in a data format: "05.500", "+050.00", "800".
std::string OutputText(const RangeRow &range, DataFormat format, double value);
std::optional<double> ReadOutputText(const RangeRow &range, DataFormat format, std::string_view text);

} // namespace vornsim
