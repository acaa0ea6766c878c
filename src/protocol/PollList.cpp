#include "protocol/PollList.h"

#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/Text.h"

#include <cmath>

namespace vorn
{

std::vector<PollStep> PollSteps(const NodeKey &node)
{
    const ModelRow *row = RowOf(node);
    if (!row)
        return {};
    const auto list = node.kind() == NodeKind::Channel ? row->channelPoll : row->poll;
    std::vector<PollStep> steps(list.begin(), list.end());
    for (PollStep &step : steps) {
        if (step.channels == PerChannel)
            step.channels = row->channels;
    }
    return steps;
}

PairPlaces DigitalSlotPlaces(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row ? row->points : PairPlaces{};
}

PairPlaces FaultPlaces(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row ? row->faults : PairPlaces{};
}

std::string FaultCaption(std::string_view caption)
{
    return "XX" + Mid(caption, 3);
}

std::vector<std::string> SlotTexts(std::string_view model, std::string_view reply, bool hexadecimal)
{
    const ModelRow *row = FindModel(model);
    const std::size_t channels = row && row->channels > 0 ? static_cast<std::size_t>(row->channels) : 8;
    const std::size_t width = hexadecimal ? 4 : 7;
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < channels; ++i)
        texts.push_back(Mid(reply, width * i + 2, width));
    return texts;
}

std::string CounterText(std::string_view payload, bool frequency, std::string_view format)
{
    constexpr double StepsPerHertz = 100;
    if (frequency && format == "Dec")
        return TextOf(Val(payload) / StepsPerHertz);
    if (frequency && format == "Hex")
        return Hex(
            static_cast<std::uint32_t>(std::fmod(std::floor(HexVal(payload) / StepsPerHertz), 4294967296.0)));
    return std::string(payload);
}

} // namespace vorn
