#pragma once

#include <string_view>

namespace vorn
{

/// Bits of the format byte that a module's record ends with; bit 7 is the first of its eight binary
/// characters. What else stands in it, data format and slew rate, is a number.
namespace FormatBit
{
constexpr int Integration = 7; ///< of the eight-channel inputs: 60 ms instead of 50 ms
constexpr int Checksum = 6;
constexpr int SlewRate = 2; ///< lowest of the four bits of an output's slew rate
constexpr int Gate = 2;     ///< of a frequency input: 1 s instead of 0.1 s
} // namespace FormatBit

constexpr int SlewRateCount = 12; ///< slew rates that an output knows

/// Type code of a counter card in frequency use.
inline constexpr std::string_view CounterFrequency = "02";

/// List positions of ranges that the program tells apart.
namespace RangePosition
{
constexpr int Counter = 0;       ///< use of a counter module
constexpr int Frequency = 1;     ///< use of a counter module
constexpr int VoltageOutput = 2; ///< of an analog output: 0 to 10 V
} // namespace RangePosition

} // namespace vorn
