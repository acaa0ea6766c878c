#include "pages/OutputCommands.h"

#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"

#include <algorithm>

namespace vorn
{

namespace
{

constexpr char EngineeringUnits = '0';

} // namespace

bool IsOutputCaption(std::string_view caption)
{
    return caption.starts_with("DO");
}

std::string DirectionCaption(int point, bool input)
{
    std::string caption = input ? "DI  " : "DO  ";
    if (point >= 10)
        caption += '1';
    return caption + (input ? "" : "&") + std::to_string(point % 10);
}

int AnalogModuleOutputs(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row && row->All().Has(Feature::SingleInput) ? row->outputs : 0;
}

std::string OutputByteCommand(const NodeKey &node, std::span<const bool> outputs)
{
    std::string bits = "00000000";
    for (std::size_t i = 0; i < outputs.size(); ++i)
        SetBit(bits, static_cast<int>(i), outputs[i]);
    return Write(Register::OutputByte, node, BinToHex(bits));
}

std::optional<std::string> PointCommand(const NodeKey &node, PointRow row, int element, bool set)
{
    const ModelRow *model = RowOf(node);
    if (!model)
        return std::nullopt;
    const auto outputs = std::ranges::find_if(model->switches, [&](const PointOutputs &candidate) {
        return candidate.row == row && element >= candidate.first && element <= candidate.last;
    });
    if (outputs == model->switches.end())
        return std::nullopt;
    const int output = element - outputs->first + outputs->firstOutput;
    return Write(model->IsCard() ? Register::SlotPointOutput : Register::PointOutput, node,
                 Hex(static_cast<std::uint32_t>(output)) + (set ? "01" : "00"));
}

bool JudgesPointReply(std::string_view model)
{
    return Has(model, Feature::JudgedOutputs);
}

std::string DisplaySourceCommand(const NodeKey &node, int element)
{
    return Write(Register::DisplaySource, node, std::to_string(element));
}

std::string ExcitationCommand(const NodeKey &node, std::string text)
{
    return Write(Register::Excitation, node, FormatOutputValue(text, EngineeringUnits));
}

std::string AnalogOutputCommand(const NodeKey &node, std::string_view value)
{
    return Write(node.kind() == NodeKind::Module ? Register::OutputValue : Register::ChannelOutput, node,
                 value);
}

std::string SlotOutputCommand(const NodeKey &node, int channel, std::string_view text)
{
    constexpr std::size_t Length = 5;
    std::string value = Left(text, Length);
    return Write(Register::ChannelOutput, node, FormatOutputValue(value, EngineeringUnits), channel);
}

} // namespace vorn
