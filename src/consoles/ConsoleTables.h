#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vorn
{

/// An entry of a console's list of input types; its place is the list position.
struct InputType {
    std::string_view code; ///< on the wire
    std::string_view caption;
    std::string_view unit = {};       ///< behind a live value
    std::string_view span = {};       ///< what to apply for span calibration
    std::string_view zero = {};       ///< for zero calibration
    std::string_view negative = {};   ///< for the calibration of the negative end
    std::string_view commonCode = {}; ///< in a record, for all channels at once
};

using InputTypes = std::span<const InputType>;

extern const InputTypes SensorTypes;       ///< 7216
extern const InputTypes UniversalTypes;    ///< 7227
extern const InputTypes SignalTypes;       ///< 7221P
extern const InputTypes ThermocoupleTypes; ///< 7224P

/// Entry of `cboAllChannelRange` that leaves the types of the channels alone, and its code.
inline constexpr InputType NotUsedType{.code = "", .caption = "Not use", .commonCode = "FF"};

/// List position of a code or a caption; -1 if no entry has it.
int PositionOfCode(InputTypes types, std::string_view code);
int PositionOfCaption(InputTypes types, std::string_view caption);
/// Caption of a code; empty if no entry has it.
std::string_view CaptionOfCode(InputTypes types, std::string_view code);

/// A type of the outputs of 7234.
struct OutputKind {
    std::string_view code;
    std::string_view caption;
    double lower;
    double upper;
};
extern const std::span<const OutputKind> OutputKinds;
/// List position of a code; -1 if no entry has it.
int PositionOfOutput(std::string_view code);

/// Entries of `CmbSlewRate`; bits 2 to 5 of the format byte hold the position.
extern const std::span<const std::string_view> SlewRates;
std::string SlewByte(int position, bool checksum);
/// Position in a format byte of two hexadecimal digits.
int SlewPosition(std::string_view formatByte);

/// A number as outputs take it: sign, two integer digits, point, three decimals: "+04.000".
/// Blanks around it and zeros in front don't count.
std::string AOString(std::string_view text);

/// Value of a coefficient, two hexadecimal digits; above 127 it is negative.
int CoefficientValue(std::string_view hex);
/// Three digits, a negative one with its sign: "005", "-012".
std::string CoefficientText(int value);

} // namespace vorn
