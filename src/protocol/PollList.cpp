#include "protocol/PollList.h"

#include "protocol/Number.h"
#include "protocol/Text.h"

#include <algorithm>
#include <cmath>

namespace vorn
{

namespace
{

using enum PollEffect;
using enum PollCondition;

constexpr PollStep AnalogInput[] = {
    {"@AADI", '!', AnalogPoints}, {"@AARE", '!', EventCount}, {"#AA", '>', Reading}};
constexpr PollStep Sensor[] = {{"#AA", '>', Reading}};
constexpr PollStep StrainGauge[] = {
    {"@AADI", '!', StrainPoints}, {"#AA", '>', Reading}, {"$AA6", '!', ExcitationEntry, NotEditing}};
constexpr PollStep EightInputs[] = {{"$AA6", '!', ChannelMask},
                                    {"#AAi", '>', MaskedReading, ChannelEnabled, 8}};
constexpr PollStep AnalogOutput[] = {{"$AA8", '!', OutputReadBack}, {"$AA6", '!', OutputEntry, NotEditing}};
constexpr PollStep TwoDigitalGroups[] = {{"$AA6", '!', TwoGroups}};
constexpr PollStep OneDigitalGroup[] = {{"$AA6", '!', LowGroup}};
constexpr PollStep RelayModule[] = {{"$AA6", '!', Relays}};
constexpr PollStep Counter[] = {{"#AAi", '>', Count, Always, 2},
                                {"@AADI", '!', CounterOutputs, CounterRange},
                                {"$AAi7", '!', Overflow, CounterRange, 2}};

constexpr PollStep SlotOf3[] = {{"#AASs", '>', SlotReadings}, {"$AASsCiS", '!', SlotAlarm, Always, 3}};
constexpr PollStep SlotOf7[] = {{"#AASs", '>', SlotReadings}, {"$AASsCiS", '!', SlotAlarm, Always, 7}};
constexpr PollStep SlotOf8[] = {{"#AASs", '>', SlotReadings}, {"$AASsCiS", '!', SlotAlarm, Always, 8}};
constexpr PollStep OutputSlot[] = {{"$AASsCi6", '!', SlotOutput, NotTyped, 4}};
constexpr PollStep CounterSlot[] = {{"#AASsCi", '>', SlotCount, Always, 4},
                                    {"$AASsCiS", '!', SlotAlarm, Always, 4}};
constexpr PollStep FaultySlot[] = {{"$AASsM", '!', SlotFaults}, {"$AASs6", '!', SlotPoints}};
constexpr PollStep DigitalSlot[] = {{"$AASs6", '!', SlotPoints}};

constexpr PollStep InputChannel[] = {{"#AASsCc", '>', ChannelReading}, {"$AASsCcS", '!', ChannelAlarm}};
constexpr PollStep OutputChannel[] = {{"$AASsCc6", '!', ChannelOutput}};
constexpr PollStep CounterChannel[] = {{"#AASsCc", '>', PollEffect::ChannelCount},
                                       {"$AASsCcS", '!', ChannelAlarm}};

struct PollRow {
    std::string_view model;
    std::span<const PollStep> steps;
};

constexpr PollRow ModuleLists[] = {
    {"7203", AnalogInput},     {"7203D", AnalogInput}, {"7206", AnalogInput},      {"7212D", AnalogInput},
    {"7209", Sensor},          {"7218", StrainGauge},  {"7221", EightInputs},      {"7224", EightInputs},
    {"7224M", EightInputs},    {"7231", AnalogOutput}, {"7252", TwoDigitalGroups}, {"7258", TwoDigitalGroups},
    {"7256", OneDigitalGroup}, {"7272", RelayModule},  {"7282", Counter},          {"7282D", Counter},
    {"7282N", Counter},
};

constexpr PollRow SlotLists[] = {
    {"3921", SlotOf3},     {"3923", SlotOf8},     {"3923H", SlotOf8},   {"3925", SlotOf7},
    {"3931", OutputSlot},  {"3962", CounterSlot}, {"3942", FaultySlot}, {"3944", DigitalSlot},
    {"3946", DigitalSlot}, {"3948", FaultySlot},  {"3951", FaultySlot}, {"3953", FaultySlot},
    {"3957", FaultySlot},
};

constexpr PollRow ChannelLists[] = {
    {"3921", InputChannel}, {"3923", InputChannel},  {"3923H", InputChannel},
    {"3925", InputChannel}, {"3931", OutputChannel}, {"3962", CounterChannel},
};

} // namespace

std::span<const PollStep> PollSteps(const NodeKey &node)
{
    const std::span<const PollRow> rows = node.hasChannel() ? std::span<const PollRow>(ChannelLists)
                                          : node.hasSlot()  ? std::span<const PollRow>(SlotLists)
                                                            : std::span<const PollRow>(ModuleLists);
    const auto found = std::ranges::find(rows, node.model(), &PollRow::model);
    return found == rows.end() ? std::span<const PollStep>{} : found->steps;
}

std::string ExpandCommand(std::string_view pattern, const NodeKey &node, int channel)
{
    constexpr std::size_t AfterAddress = 3; // the lead and "AA"
    std::string command(1, pattern.front());
    command += node.busAddress();
    for (const char c : pattern.substr(AfterAddress)) {
        switch (c) {
        case 's':
            command += node.slot();
            break;
        case 'c':
            command += node.channel();
            break;
        case 'i':
            command += std::to_string(channel);
            break;
        default:
            command += c;
        }
    }
    return command;
}

PairPlaces DigitalSlotPlaces(std::string_view model)
{
    if (IsOneOf(model, {"3942", "3944", "3951", "3948"}))
        return {4, 6};
    if (model == "3946")
        return {0, 6};
    return {0, 4}; // 3953, 3957
}

PairPlaces FaultPlaces(std::string_view model)
{
    if (IsOneOf(model, {"3942", "3951"}))
        return {4, 6};
    if (model == "3948")
        return {0, 6};
    return {0, 4}; // 3953, 3957
}

std::string FaultCaption(std::string_view caption)
{
    return "XX" + Mid(caption, 3);
}

std::vector<std::string> SlotTexts(std::string_view model, std::string_view reply, bool hexadecimal)
{
    const std::size_t channels = model == "3921" ? 3 : model == "3925" ? 7 : 8;
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
