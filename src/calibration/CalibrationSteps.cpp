#include "calibration/CalibrationSteps.h"

#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace vorn
{

namespace
{

bool IsCard(const NodeKey &node)
{
    return node.kind() != NodeKind::Module;
}

/// The register of a module, a slot or a channel, whichever the node is.
Register Of(const NodeKey &node, Register module, Register slot, Register channel)
{
    switch (node.kind()) {
    case NodeKind::Slot:
        return slot;
    case NodeKind::Channel:
        return channel;
    default:
        return module;
    }
}

std::string WriteSpan(const NodeKey &node)
{
    return Write(
        Of(node, Register::SpanCalibration, Register::SlotSpanCalibration, Register::ChannelSpanCalibration),
        node);
}

std::string WriteZero(const NodeKey &node)
{
    return Write(
        Of(node, Register::ZeroCalibration, Register::SlotZeroCalibration, Register::ChannelZeroCalibration),
        node);
}

bool HasExcitation(const NodeKey &node)
{
    return Has(node.model(), Feature::Excitation);
}

bool HasOutput(const NodeKey &node)
{
    const std::string model = node.model();
    return Has(model, Feature::AnalogOutput) || Has(model, Feature::CardOutputs);
}

std::string WriteOutput(const NodeKey &node, std::string_view value)
{
    return Write(IsCard(node) ? Register::ChannelOutput : Register::OutputValue, node, value);
}

/// How an output code steps from value to value, in the unit of the code, and writes them.
struct TrimScale {
    double step;
    double lower, upper;
    std::string_view lowest, highest; ///< texts of the bounds
};

constexpr TrimScale Percent{0.01, 0, 100, "+000.00", "+100.00"};
constexpr TrimScale Hexadecimal{1, 0, 0xFFF, "000", "FFF"};
constexpr TrimScale Current{0.005, 0, 20, "00.000", "20.000"};
constexpr TrimScale LiveZeroCurrent{0.005, 4, 20, "04.000", "20.000"};
constexpr TrimScale Voltage{0.002, 0, 10, "00.000", "10.000"};

const TrimScale *ScaleOf(std::string_view outputCode)
{
    if (IsOneOf(outputCode, {"10", "11", "12"}))
        return &Percent;
    if (IsOneOf(outputCode, {"20", "21", "22"}))
        return &Hexadecimal;
    if (outputCode == "00")
        return &Current;
    if (outputCode == "01")
        return &LiveZeroCurrent;
    return outputCode == "02" ? &Voltage : nullptr;
}

/// A decimal value with its point behind `digits` integer digits, in six characters.
std::string SixCharacters(double value, std::size_t digits)
{
    constexpr std::size_t Width = 6;
    std::string text = TextOf(value);
    if (text.find('.') == std::string::npos)
        text += '.';
    text.insert(0, digits - std::min(digits, text.find('.')), '0');
    return PadRight(std::move(text), Width, '0');
}

std::string TrimmedValue(const TrimScale &scale, std::string_view shown, TrimStep step)
{
    const bool hexadecimal = &scale == &Hexadecimal;
    const double value =
        (hexadecimal ? HexVal(shown) : Val(shown)) + (step == TrimStep::Up ? scale.step : -scale.step);
    if (value > scale.upper)
        return std::string(scale.highest);
    if (value < scale.lower)
        return std::string(scale.lowest);
    if (hexadecimal)
        return PadLeft(Hex(static_cast<std::uint32_t>(value)), scale.lowest.size(), '0');
    return &scale == &Percent ? "+" + SixCharacters(value, 3) : SixCharacters(value, 2);
}

/// The excitation goes out as "0", the number and "000", cut to six characters, whatever comes of it: a whole
/// number has no point then.
std::string TrimmedExcitation(std::string_view shown, TrimStep step)
{
    constexpr double Step = 0.005, Highest = 10;
    constexpr std::size_t Width = 6;
    const double value = Val(shown) + (step == TrimStep::Up ? Step : -Step);
    if (value > Highest)
        return "10.000";
    if (value < 0)
        return "00.000";
    return Left("0" + TextOf(value) + "000", Width);
}

} // namespace

std::string_view ModeTag(CalibrationMode mode)
{
    switch (mode) {
    case CalibrationMode::Zero:
        return "Zero";
    case CalibrationMode::Span:
        return "Span";
    case CalibrationMode::CJC:
        return "CJC";
    case CalibrationMode::ZeroVolts:
        return "0V";
    case CalibrationMode::TenVolts:
        return "10V";
    case CalibrationMode::FourMilliamperes:
        return "4mA";
    case CalibrationMode::TwentyMilliamperes:
        return "20mA";
    case CalibrationMode::Startup:
        break;
    }
    return "Start";
}

bool TrimsOutput(CalibrationMode mode)
{
    return mode != CalibrationMode::Zero && mode != CalibrationMode::Span && mode != CalibrationMode::CJC;
}

std::string_view InstructionLine(CalibrationMode mode, std::string_view model)
{
    if (mode == CalibrationMode::CJC)
        return {};
    if (TrimsOutput(mode))
        return "       Attach meter to output terminal of the module";
    return model.starts_with('7') ? "Apply                            to  the input terminal of the module."
                                  : "Apply                            to  the channel 0 of this slot.";
}

std::string_view PurposeLine(CalibrationMode mode)
{
    switch (mode) {
    case CalibrationMode::Zero:
        return "Execute stores what is at the terminal as the zero point.";
    case CalibrationMode::Span:
        return "Execute stores what is at the terminal as full scale.";
    case CalibrationMode::CJC:
        return "Execute adds the offset to the cold junction temperature.";
    case CalibrationMode::ZeroVolts:
        return "Trim until the meter reads 0 V. Execute stores this point.";
    case CalibrationMode::TenVolts:
        return "Trim until the meter reads 10 V. Execute stores this point.";
    case CalibrationMode::FourMilliamperes:
        return "Trim until the meter reads 4 mA. Execute stores this point.";
    case CalibrationMode::TwentyMilliamperes:
        return "Trim until the meter reads 20 mA. Execute stores this point.";
    case CalibrationMode::Startup:
        break;
    }
    return "Trim to the value wanted. Execute stores it as the value at start.";
}

std::optional<std::string> InputTypeQuery(const NodeKey &node)
{
    const std::string model = node.model();
    if (!Has(model, Feature::Calibration))
        return std::nullopt;
    if (!IsCard(node))
        return Query(Register::Configuration, node);
    return Query(Has(model, Feature::ChannelRanges) ? Register::ChannelConfiguration
                                                    : Register::SlotConfiguration,
                 node.slotNode());
}

std::optional<std::string> ReferenceValue(CalibrationMode mode, std::string_view model,
                                          std::string_view reply)
{
    const std::string code = Cut(reply, ReplyPlace::RangeCode);
    const std::string_view value =
        mode == CalibrationMode::Span ? CalibrationSpan(model, code) : CalibrationZero(model, code);
    return value.empty() ? std::nullopt : std::optional(std::string(value));
}

std::optional<std::string> OpeningCommand(CalibrationMode mode, const NodeKey &node,
                                          std::string_view outputCode)
{
    if (HasExcitation(node) && mode == CalibrationMode::ZeroVolts)
        return Write(Register::Excitation, node, "+00.000");
    if (HasExcitation(node) && mode == CalibrationMode::TenVolts)
        return Write(Register::Excitation, node, "+10.000");
    if (!HasOutput(node) || mode == CalibrationMode::Startup)
        return std::nullopt;
    const bool low = mode == CalibrationMode::FourMilliamperes;
    switch (CharAt(outputCode, 1)) {
    case '1':
        return WriteOutput(node, low ? "+000.00" : "+100.00");
    case '2':
        return WriteOutput(node, low ? "000" : "FFF");
    default:
        return WriteOutput(node, low ? "04.000" : "20.000");
    }
}

std::optional<std::string> OffsetCounts(std::string_view text)
{
    return ColdJunctionCounts(text, std::numeric_limits<std::int16_t>::max());
}

std::string ExecuteCommand(CalibrationMode mode, const NodeKey &node, std::string_view offset)
{
    switch (mode) {
    case CalibrationMode::Span:
    case CalibrationMode::FourMilliamperes:
        return WriteSpan(node);
    case CalibrationMode::Zero:
    case CalibrationMode::TwentyMilliamperes:
        return WriteZero(node);
    case CalibrationMode::CJC:
        return Write(IsCard(node) ? Register::SlotColdJunctionOffset : Register::ColdJunctionOffset, node,
                     offset);
    case CalibrationMode::ZeroVolts:
        return Write(Register::ExcitationZero, node);
    case CalibrationMode::TenVolts:
        return Write(Register::ExcitationFull, node);
    case CalibrationMode::Startup:
        break;
    }
    if (HasExcitation(node))
        return Write(Register::ExcitationStartup, node);
    return Write(IsCard(node) ? Register::ChannelStartup : Register::OutputStartup, node);
}

std::string ColdJunctionQuery(const NodeKey &node)
{
    return Query(IsCard(node) ? Register::SlotColdJunction : Register::ColdJunctionTemperature, node);
}

std::optional<std::string> StartupQuery(const NodeKey &node)
{
    if (!HasOutput(node))
        return std::nullopt;
    return Query(IsCard(node) ? Register::ChannelOutput : Register::OutputValue, node);
}

std::optional<std::string> TrimCommand(const NodeKey &node, TrimStep step)
{
    const std::string_view value = step == TrimStep::Up ? "01" : "FF";
    if (HasExcitation(node))
        return Write(Register::ExcitationTrim, node, value);
    if (!HasOutput(node))
        return std::nullopt;
    return Write(IsCard(node) ? Register::ChannelTrim : Register::OutputTrim, node, value);
}

std::optional<std::string> StartupTrimCommand(const NodeKey &node, TrimStep step, std::string_view shown,
                                              std::string_view outputCode)
{
    if (HasExcitation(node))
        return Write(Register::Excitation, node, "+" + TrimmedExcitation(shown, step));
    if (!HasOutput(node))
        return std::nullopt;
    const TrimScale *scale = ScaleOf(outputCode);
    return WriteOutput(node, scale ? TrimmedValue(*scale, shown, step) : std::string());
}

} // namespace vorn
