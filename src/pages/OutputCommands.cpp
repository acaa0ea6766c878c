#include "pages/OutputCommands.h"

#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/PollList.h"
#include "protocol/Text.h"

#include <algorithm>

namespace vorn
{

namespace
{

/// Elements of a row that switch outputs, and the output that the first of them is.
struct PointRowOutputs {
    std::string_view model;
    PointRow row;
    std::string_view command; ///< in front of the output's digit
    int first;
    int last;
    int firstOutput;
};

constexpr PointRowOutputs Outputs[] = {
    {"7272", PointRow::Low, "#AA1", 4, 7, 0},    {"7252", PointRow::High, "#AA1", 0, 7, 0},
    {"3942", PointRow::Low, "#AASs1", 0, 7, 0},  {"3951", PointRow::Low, "#AASs1", 0, 7, 0},
    {"3953", PointRow::Low, "#AASs1", 0, 7, 0},  {"3957", PointRow::Low, "#AASs1", 0, 7, 0},
    {"3942", PointRow::High, "#AASs1", 0, 7, 8}, {"3951", PointRow::High, "#AASs1", 0, 7, 8},
    {"3948", PointRow::Low, "#AASs1", 0, 7, 0},
};

constexpr char EngineeringUnits = '0';

} // namespace

bool IsOutputCaption(std::string_view caption)
{
    return caption.starts_with("DO");
}

int AnalogModuleOutputs(std::string_view model)
{
    if (model == "7218")
        return 4;
    return IsOneOf(model, {"7203", "7203D", "7206", "7212D"}) ? 2 : 0;
}

std::string OutputByteCommand(const NodeKey &node, std::span<const bool> outputs)
{
    std::string bits = "00000000";
    for (std::size_t i = 0; i < outputs.size(); ++i)
        SetBit(bits, static_cast<int>(i), outputs[i]);
    return ExpandCommand("@AADO", node) + BinToHex(bits);
}

std::optional<std::string> PointCommand(const NodeKey &node, PointRow row, int element, bool set)
{
    const std::string model = node.model();
    const auto *found = std::ranges::find_if(Outputs, [&](const PointRowOutputs &outputs) {
        return outputs.model == model && outputs.row == row && element >= outputs.first &&
               element <= outputs.last;
    });
    if (found == std::end(Outputs))
        return std::nullopt;
    const int output = element - found->first + found->firstOutput;
    return ExpandCommand(found->command, node) + Hex(static_cast<std::uint32_t>(output)) +
           (set ? "01" : "00");
}

bool JudgesPointReply(std::string_view model)
{
    return model == "3948";
}

std::string DisplaySourceCommand(const NodeKey &node, int element)
{
    return ExpandCommand("$AA8i", node, element);
}

std::string ExcitationCommand(const NodeKey &node, std::string text)
{
    return ExpandCommand("$AA7", node) + FormatOutputValue(text, EngineeringUnits);
}

std::string AnalogOutputCommand(const NodeKey &node, std::string_view value)
{
    return ExpandCommand(node.kind() == NodeKind::Module ? "#AA" : "#AASsCc", node) + std::string(value);
}

std::string SlotOutputCommand(const NodeKey &node, int channel, std::string_view text)
{
    constexpr std::size_t Length = 5;
    std::string value = Left(text, Length);
    return ExpandCommand("#AASsCi", node, channel) + FormatOutputValue(value, EngineeringUnits);
}

} // namespace vorn
