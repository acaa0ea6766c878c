#include "pages/ChannelAlarms.h"

#include "protocol/ModelTable.h"
#include "protocol/RangeTables.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"

namespace vorn
{

namespace
{

constexpr std::string_view Anywhere = "*"; ///< in place of a slot and of a channel: no output

Register Of(AlarmLevel level, Register high, Register low)
{
    return level == AlarmLevel::High ? high : low;
}

/// Modes in the order of the list. The alarms of a counter card always latch.
std::string_view ModeLetters(std::string_view model)
{
    return Has(model, Feature::CardCounters) ? "DL" : "DML";
}

std::string OrAnywhere(const std::string &text)
{
    return text.empty() ? std::string(Anywhere) : text;
}

} // namespace

std::optional<std::string> ChannelModeCommand(const NodeKey &node, AlarmLevel level, int mode)
{
    const std::string_view letters = ModeLetters(node.model());
    if (Has(node.model(), Feature::CardCounters) || mode <= 0 || mode >= static_cast<int>(letters.size()))
        return std::nullopt;
    return Write(Of(level, Register::HighAlarmMode, Register::LowAlarmMode), node,
                 letters.substr(static_cast<std::size_t>(mode), 1));
}

std::string ChannelEnableCommand(const NodeKey &node, AlarmLevel level, int mode)
{
    return Write(Of(level, Register::HighAlarmEnable, Register::LowAlarmEnable), node, mode == 0 ? "D" : "E");
}

std::string ChannelLimitCommand(const NodeKey &node, AlarmLevel level, std::string_view limit)
{
    constexpr std::size_t CounterDigits = 10;
    std::string text(limit);
    if (Has(node.model(), Feature::CardCounters))
        text = PadLeft(std::move(text), CounterDigits, '0');
    return Write(Of(level, Register::HighChannelLimit, Register::LowChannelLimit), node, text);
}

std::string ChannelConnectionCommand(const NodeKey &node, AlarmLevel level, const ChannelAlarm &alarm)
{
    const std::string slot = OrAnywhere(alarm.drivesOutput ? alarm.outputSlot : std::string());
    const std::string channel = OrAnywhere(alarm.drivesOutput ? alarm.outputChannel : std::string());
    return Write(Of(level, Register::HighConnection, Register::LowConnection), node,
                 "S" + slot + "C" + channel);
}

std::string FilterScaleCommand(const NodeKey &node, std::string_view text)
{
    constexpr std::size_t Digits = 5;
    return Write(Register::FilterScale, node, PadLeft(std::string(text), Digits, '0'));
}

std::string InitialCountCommand(const NodeKey &node, std::string_view text)
{
    constexpr std::size_t Digits = 10;
    return Write(Register::InitialChannelCount, node, PadLeft(std::string(text), Digits, '0'));
}

std::string CounterStateCommand(const NodeKey &node, bool start)
{
    return Write(Register::ChannelState, node, start ? "1" : "0");
}

std::optional<int> ChannelModePosition(std::string_view model, std::string_view letter)
{
    const std::size_t position =
        letter.size() == 1 ? ModeLetters(model).find(letter) : std::string_view::npos;
    return position == std::string_view::npos ? std::nullopt : std::optional(static_cast<int>(position));
}

AlarmConnection ReadConnection(std::string_view value)
{
    constexpr std::size_t SlotAt = 2, ChannelAt = 4; // in "SsCc"
    const std::string slot = Mid(value, SlotAt, 1);
    if (slot == Anywhere)
        return {.drivesOutput = false, .slot = {}, .channel = {}};
    const int channel = HexDigitValue(CharAt(value, ChannelAt));
    return {
        .drivesOutput = true, .slot = slot, .channel = channel < 0 ? std::string() : std::to_string(channel)};
}

} // namespace vorn
