// Digital inputs and outputs, of stand-alone modules and of slot cards. The models differ in where the bits
// of their points stand in a reply. A layout has one character for each pair of hexadecimal digits of the
// reply:
//
//     I, J  inputs 0-7, 8-15        O, P  outputs 0-7, 8-15      f, F  faults 0-7, 8-15
//     d, D  directions 0-7, 8-15    x, X  points 0-7, 8-15, each by its direction
//     0     nothing, always "00"

#include "Outputs.h"
#include "Takers.h"

namespace vornsim
{

namespace
{

constexpr double InputStep = 2000; // milliseconds between two changes of the live inputs

unsigned Inputs(const Unit &unit)
{
    const std::string kept = unit.Kept("inputs");
    if (kept != "live")
        return ReadHex(kept).value_or(0);
    const auto step = static_cast<unsigned>(unit.Now() / InputStep) + unit.Seed();
    return (step ^ step >> 1) & LowBits(unit.Model().inputs); // a Gray code: one point changes at a time
}

/// A set bit makes the point an input.
unsigned Directions(const Unit &unit)
{
    return ReadHex(unit.Kept("directions")).value_or(0);
}

unsigned Points(const Unit &unit)
{
    return (Inputs(unit) & Directions(unit)) | (unit.Outputs() & ~Directions(unit));
}

unsigned Pair(const Unit &unit, char kind)
{
    switch (kind) {
    case 'I':
        return Inputs(unit);
    case 'J':
        return Inputs(unit) >> 8;
    case 'O':
        return unit.Outputs();
    case 'P':
        return unit.Outputs() >> 8;
    case 'f':
        return ReadHex(unit.Kept("faults")).value_or(0);
    case 'F':
        return ReadHex(unit.Kept("faults")).value_or(0) >> 8;
    case 'd':
        return Directions(unit);
    case 'D':
        return Directions(unit) >> 8;
    case 'x':
        return Points(unit);
    case 'X':
        return Points(unit) >> 8;
    default:
        return 0;
    }
}

std::string Layout(const Unit &unit, std::string_view layout)
{
    std::string text;
    for (const char kind : layout)
        text += Hex(Pair(unit, kind), 2);
    return text;
}

/// A slot card's reply has the address behind the "!".
Answer ReadPoints(Unit &unit, const Command &command)
{
    return Done(Layout(unit, command.subject));
}

/// A stand-alone module leaves the address out; the points follow the "!" directly.
Answer ReadBarePoints(Unit &unit, const Command &command)
{
    return {'!', false, Layout(unit, command.subject), false};
}

/// Range 40 (digital) and format 00, which can't be changed.
Answer ReadFixedRecord(Unit &, const Command &command)
{
    return Done(std::string(command.subject));
}

/// Writes one output: its number, then "00" or "01". `subject` is the first character of the reply.
Answer WritePoint(Unit &unit, const Command &command)
{
    const std::string &data = command.match.data;
    const unsigned point = ReadHex(data.substr(0, 1)).value_or(0);
    const auto on = ReadHex(data.substr(1));
    if (point >= static_cast<unsigned>(unit.Model().outputs) || !on || *on > 1)
        return Refused();
    if (Directions(unit) >> point & 1)
        return Refused();
    const unsigned bit = 1U << point;
    unit.WriteOutputs(*on ? unit.Outputs() | bit : unit.Outputs() & ~bit);
    return command.subject == ">" ? Data({}) : Done();
}

/// Writes all outputs at once.
Answer WritePointByte(Unit &unit, const Command &command)
{
    return unit.Write("outputs", NoChannel, command.match.data) ? Data({}) : Refused();
}

Taken TakeInputs(const Unit &unit, int, std::string_view text)
{
    const int points = unit.Model().inputs;
    if (text == "live")
        return "live";
    const auto bits = static_cast<int>(text.size()) == PointDigits(points) ? ReadHex(text) : std::nullopt;
    return bits && (*bits & ~LowBits(points)) == 0 ? Taken(text) : std::nullopt;
}

std::string ReadInputs(const Unit &unit, int)
{
    return Hex(Inputs(unit), PointDigits(unit.Model().inputs));
}

constexpr SettingRow PointSettings[] = {
    {"inputs", "live", TakeInputs, false, ReadInputs},
    {"outputs", "00", TakeOutputs, false, ReadOutputs, OutputsWritten},
};

constexpr CommandRow Commands7252[] = {{"$6", ReadBarePoints, "OI0"}, {"#1xxx", WritePoint, "!"}};
constexpr CommandRow Commands7256[] = {{"$6", ReadBarePoints, "I00"}};
constexpr CommandRow Commands7258[] = {{"$6", ReadBarePoints, "JI0"}};
constexpr CommandRow Commands7272[] = {{"$6", ReadBarePoints, "O00"}, {"#1xxx", WritePoint, "!"}};

constexpr CommandRow Commands7254[] = {{"$6", ReadBarePoints, "JI"}};
constexpr CommandRow Commands7262[] = {{"$6", ReadBarePoints, "OI"}, {"#00xx", WritePointByte}};
constexpr CommandRow Commands7276[] = {{"$6", ReadBarePoints, "O"}, {"#00xx", WritePointByte}};

constexpr SettingRow Settings3942[] = {
    {"directions", "FF00", TakeHex<4>}, // a fresh card: 0-7 outputs, 8-15 inputs
    {"faults", "0000", TakeHex<4>},
};
constexpr SettingRow FaultSettings16[] = {{"faults", "0000", TakeHex<4>}};
constexpr SettingRow FaultSettings8[] = {{"faults", "00", TakeHex<2>}};

constexpr CommandRow Commands3942[] = {{"$B", ReadFixedRecord, "4000"},
                                       {"$6", ReadPoints, "Xx"},
                                       {"$7", ReadPoints, "Dd"},
                                       {"$M", ReadPoints, "Ff"},
                                       {"#1xxx", WritePoint, "!"}};
constexpr CommandRow Commands3944[] = {{"$6", ReadPoints, "JI"}};
constexpr CommandRow Commands3946[] = {{"$6", ReadPoints, "0I"}};
constexpr CommandRow Commands3948[] = {
    {"$6", ReadPoints, "IO"}, {"$M", ReadPoints, "0f"}, {"#1xxx", WritePoint, ">"}};
constexpr CommandRow Commands3951[] = {
    {"$6", ReadPoints, "PO"}, {"$M", ReadPoints, "Ff"}, {"#1xxx", WritePoint, "!"}};
constexpr CommandRow CommandsRelay[] = {
    {"$6", ReadPoints, "O"}, {"$M", ReadPoints, "f"}, {"#1xxx", WritePoint, "!"}};

} // namespace

Taken TakeOutputs(const Unit &unit, int, std::string_view text)
{
    const int points = unit.Model().outputs;
    const auto bits = static_cast<int>(text.size()) == PointDigits(points) ? ReadHex(text) : std::nullopt;
    return bits && (*bits & ~LowBits(points)) == 0 ? Taken(text) : std::nullopt;
}

std::string ReadOutputs(const Unit &unit, int)
{
    return Hex(unit.Outputs(), PointDigits(unit.Model().outputs));
}

void OutputsWritten(Unit &unit, int)
{
    unit.WriteOutputs(ReadHex(unit.Kept("outputs")).value_or(0));
}

constinit const Feature DigitalPoints{PointSettings, {}};
constinit const Feature Points7252{{}, Commands7252};
constinit const Feature Points7256{{}, Commands7256};
constinit const Feature Points7258{{}, Commands7258};
constinit const Feature Points7272{{}, Commands7272};
constinit const Feature Points7254{{}, Commands7254};
constinit const Feature Points7262{{}, Commands7262};
constinit const Feature Points7276{{}, Commands7276};
constinit const Feature Points3942{Settings3942, Commands3942};
constinit const Feature Points3944{{}, Commands3944};
constinit const Feature Points3946{{}, Commands3946};
constinit const Feature Points3948{FaultSettings8, Commands3948};
constinit const Feature Points3951{FaultSettings16, Commands3951};
constinit const Feature PointsRelay{FaultSettings8, CommandsRelay};

} // namespace vornsim
