#include "consoles/ConsoleTables.h"

#include "platform/RuntimeError.h"
#include "protocol/Number.h"
#include "protocol/Text.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace vorn
{

namespace
{

// clang-format off
constexpr InputType Sensor[] = {
    // code, caption, unit, span, zero
    {"20", "Pt-100(.385) -50 to 150'C", "", "140ohm",  "80ohm"},
    {"21", "Pt-100(.385) 0 to 100'C",   "", "140ohm",  "100ohm"},
    {"22", "Pt-100(.385) 0 to 200'C",   "", "180ohm",  "100ohm"},
    {"23", "Pt-100(.385) 0 to 400'C",   "", "250ohm",  "100ohm"},
    {"24", "Pt-100(.385) +/-200'C",     "", "180ohm",  "20ohm"},
    {"25", "Pt-100(.392) -50 to 150'C", "", "140ohm",  "80ohm"},
    {"26", "Pt-100(.392) 0 to 100'C",   "", "140ohm",  "100ohm"},
    {"27", "Pt-100(.392) 0 to 200'C",   "", "180ohm",  "100ohm"},
    {"28", "Pt-100(.392) 0 to 400'C",   "", "250ohm",  "100ohm"},
    {"29", "Pt-100(.392) +/-200'C",     "", "180ohm",  "20ohm"},
    {"2A", "Pt-1000  -40 to 160'C",     "", "1600ohm", "850ohm"},
    {"2B", "Balc0-500 -30 to 120'C",    "", "750ohm",  "400ohm"},
    {"2C", "Ni-604 -80 to 100'C",       "", "1000ohm", "400ohm"},
    {"2D", "Ni-604 0 to 100'C",         "", "1000ohm", "600ohm"},
};

constexpr std::string_view UniversalZero = "0.00mV";
constexpr InputType Universal[] = {
    {"02", "+/- 100mV",       "", "+156.25mV",   UniversalZero, "-156.25mV"},
    {"03", "+/- 500mV",       "", "+625mV",      UniversalZero, "-625mV"},
    {"04", "+/- 1V",          "", "+1.25V",      UniversalZero, "-1.25V"},
    {"05", "+/- 2.5V",        "", "+2.5V",       UniversalZero, "-2.5V"},
    {"09", "+/- 5V",          "", "+5V",         UniversalZero, "-5V"},
    {"08", "+/- 10V",         "", "+10V",        UniversalZero, "-10V"},
    {"0D", "+/- 20mA",        "", "+20mA",       UniversalZero, "-20mA"},
    {"0E", "J : 0~760'C",     "", "+78.125mV",   UniversalZero, "-78.125mV"},
    {"0F", "K : 0~1000'C",    "", "+78.125mV",   UniversalZero, "-78.125mV"},
    {"10", "T : -100~400'C",  "", "+39.0625mV",  UniversalZero, "-39.0625mV"},
    {"11", "E : 0~1000'C",    "", "+78.125mV",   UniversalZero, "-78.125mV"},
    {"12", "R : 500~1750'C",  "", "+39.0625mV",  UniversalZero, "-39.0625mV"},
    {"13", "S : 500~1750'C",  "", "+19.53mV",    UniversalZero, "-19.53mV"},
    {"14", "B : 500~1800'C",  "", "+19.53mV",    UniversalZero, "-19.53mV"},
};

constexpr InputType Signal[] = {
    {"08", "+/- 10V",       " V",  "10V",   "0.00V"},
    {"09", "+/- 5V",        " V",  "5V",    "0.00V"},
    {"0A", "+/- 1V",        " V",  "1V",    "0.00V"},
    {"0B", "+/- 500mV",     " mV", "500mV", "0.00mV"},
    {"0C", "+/- 150mV",     " mV", "150mV", "0.00mV"},
    {"0D", "+/- 0 - 20mA",  " mA", "20mA",  "0.00mA"},
    {"07", "4 - 20mA",      " mA", "20mA",  "0.00mA"},
};

// The small letters of two common codes are deliberate: they are read in capitals and written so.
constexpr InputType Thermocouple[] = {
    {"06", "+/- 0 - 20mA", " mA", "20mA", "0.00mA", "", "06"},
    {"07", "+/- 4 - 20mA", " mA", "20mA", "0.00mA", "", "07"},
    {"0E", "J type",       "",    "50mV", "0.00mV", "", "0e"},
    {"0F", "K type",       "",    "50mV", "0.00mV", "", "0f"},
    {"10", "T type",       "",    "22mV", "0.00mV", "", "10"},
    {"11", "E type",       "",    "78mV", "0.00mV", "", "11"},
    {"12", "R type",       "",    "22mV", "0.00mV", "", "12"},
    {"13", "S type",       "",    "19mV", "0.00mV", "", "13"},
    {"14", "B type",       "",    "15mV", "0.00mV", "", "14"},
};

constexpr OutputKind Outputs[] = {
    {"30", "0 - 20mA", 0, 20},
    {"31", "4 - 20mA", 4, 20},
    {"32", "+/- 10V", -10, 10},
};

constexpr std::string_view Slew[] = {
    "immediate change", "0.0625 V/sec", "0.125   V/sec", "0.250   V/sec", "0.500   V/sec", "1.000   V/sec",
    "2.000   V/sec",    "4.000   V/sec", "8.000   V/sec", "16.00   V/sec", "32.00   V/sec", "64.00   V/sec",
};
// clang-format on

constexpr unsigned ChecksumBit = 0x40;

template <class Rows, class Column>
int PositionOf(const Rows &rows, Column column, std::string_view text)
{
    const auto found = std::ranges::find(rows, text, column);
    return found == std::end(rows) ? -1 : static_cast<int>(found - std::begin(rows));
}

} // namespace

constinit const InputTypes SensorTypes = Sensor;
constinit const InputTypes UniversalTypes = Universal;
constinit const InputTypes SignalTypes = Signal;
constinit const InputTypes ThermocoupleTypes = Thermocouple;
constinit const std::span<const OutputKind> OutputKinds = Outputs;
constinit const std::span<const std::string_view> SlewRates = Slew;

int PositionOfCode(InputTypes types, std::string_view code)
{
    return PositionOf(types, &InputType::code, code);
}

int PositionOfCaption(InputTypes types, std::string_view caption)
{
    return PositionOf(types, &InputType::caption, caption);
}

std::string_view CaptionOfCode(InputTypes types, std::string_view code)
{
    const int position = PositionOfCode(types, code);
    return position < 0 ? std::string_view{} : types[static_cast<std::size_t>(position)].caption;
}

int PositionOfOutput(std::string_view code)
{
    return PositionOf(OutputKinds, &OutputKind::code, code);
}

std::string SlewByte(int position, bool checksum)
{
    return HexByte(position * 4 + static_cast<int>(checksum ? ChecksumBit : 0));
}

int SlewPosition(std::string_view formatByte)
{
    const auto bits = static_cast<unsigned>(HexVal(formatByte));
    return static_cast<int>((bits & ~ChecksumBit) / 4);
}

std::string AOString(std::string_view text)
{
    constexpr std::size_t Digits = 2;
    constexpr std::size_t Decimals = 3;
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    text = text.substr(0, text.find_last_not_of(' ') + 1);
    const char sign = !text.empty() && IsSign(text.front()) ? text.front() : '+';
    if (!text.empty() && IsSign(text.front()))
        text.remove_prefix(1);
    while (text.size() > Digits && text.front() == '0' && IsDigit(text[1]))
        text.remove_prefix(1);
    const std::size_t point = text.find('.');
    const std::string whole(text.substr(0, point));
    const std::string decimals = point == std::string_view::npos ? "" : Mid(text, point + 2, Decimals);
    return sign + PadLeft(whole, Digits, '0') + "." + PadRight(decimals, Decimals, '0');
}

int CoefficientValue(std::string_view hex)
{
    const int value = static_cast<int>(HexVal(hex));
    return value > 127 ? value - 256 : value;
}

std::string CoefficientText(int value)
{
    return (value < 0 ? "-" : "") + PadLeft(std::to_string(std::abs(value)), 3, '0');
}

} // namespace vorn
