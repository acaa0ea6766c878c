#include "configuration/ConfigurationFile.h"

#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"

#include <algorithm>
#include <array>

namespace vorn
{

namespace
{

constexpr std::size_t ValueColumn = 25; ///< from 1
constexpr std::size_t LineWidth = 50;
constexpr std::size_t ValueInReply = 4; ///< position of a value in a reply

/// Words of the alarm modes of an input module, by their digit.
constexpr std::array<std::string_view, 3> AlarmWords{"Disable", "MOMENTARY", "LATCH"};
constexpr std::array<std::string_view, 3> AlarmLetters{"D", "M", "L"};

std::vector<std::string> AlarmModeCommands(const NodeKey &node, std::string_view letter)
{
    if (letter == "D")
        return {Write(Register::DisableAlarm, node)};
    return {Write(Register::EnableAlarm, node, letter)};
}

/// Of a counter with presets each bit is the alarm of one counter. Without checksum a disabled alarm goes out
/// in the query's spelling: files have been replayed so from the start, and modules in the field answer it.
std::vector<std::string> PresetAlarmCommands(const NodeKey &node, std::string_view digit)
{
    constexpr int CountersOfModule = 2;
    const std::string bits = HexToBin("0" + std::string(digit));
    std::vector<std::string> commands;
    for (int i = 0; i < CountersOfModule; ++i) {
        const std::string counter = std::to_string(i);
        if (Bit(bits, i))
            commands.push_back(Write(Register::EnableAlarm, node, counter));
        else
            commands.push_back(node.checksum() ? Write(Register::DisableAlarm, node, counter)
                                               : Query(Register::CounterStatus, node) + counter);
    }
    return commands;
}

std::vector<std::string> CounterAlarmCommands(const NodeKey &node, std::string_view digit)
{
    if (Has(node.model(), Feature::Presets))
        return PresetAlarmCommands(node, digit);
    for (std::size_t mode = 0; mode < AlarmLetters.size(); ++mode) {
        if (digit == std::to_string(mode))
            return AlarmModeCommands(node, AlarmLetters[mode]);
    }
    return {};
}

std::vector<std::string> ChannelModeCommands(const RecordStep &record, const NodeKey &node,
                                             std::string_view letter)
{
    const Register enable =
        record.reg == Register::HighAlarmMode ? Register::HighAlarmEnable : Register::LowAlarmEnable;
    if (letter == "D")
        return {Write(enable, node, "D", record.index)};
    return {Write(record.reg, node, letter, record.index), Write(enable, node, "E", record.index)};
}

} // namespace

std::string RecordLine(std::string_view label, std::string_view value)
{
    std::string line = PadRight(Left(label, ValueColumn - 1), ValueColumn - 1, ' ') + std::string(value);
    return Left(PadRight(std::move(line), LineWidth, ' '), LineWidth) + "\r\n";
}

std::string RecordValue(std::string_view line, std::size_t width)
{
    return Mid(line, ValueColumn, width);
}

bool HoldsFromValue(std::string_view line, std::string_view text)
{
    return line.size() >= ValueColumn && line.substr(ValueColumn - 1).find(text) != std::string_view::npos;
}

std::string SavedValue(Register reg, std::string_view reply)
{
    const RegisterRow &row = RowOf(reg);
    const std::string value = Mid(reply, ValueInReply, row.recordWidth);
    if (row.form != RecordForm::AlarmWord)
        return value;
    for (std::size_t mode = 0; mode < AlarmWords.size(); ++mode) {
        if (value == std::to_string(mode))
            return std::string(AlarmWords[mode]);
    }
    return {};
}

std::vector<std::string> LoadCommands(const RecordStep &record, const NodeKey &node, std::string_view line)
{
    const RegisterRow &row = RowOf(record.reg);
    const std::string value = RecordValue(line, row.recordWidth);
    switch (row.form) {
    case RecordForm::Plain:
        break;
    case RecordForm::SameAddress:
        return {Write(record.reg, node, node.busAddress() + value)};
    case RecordForm::AddressZero:
        return {Write(record.reg, node, "00" + value)};
    case RecordForm::Compared:
        return {};
    case RecordForm::AlarmWord:
        return AlarmModeCommands(node, value);
    case RecordForm::CounterAlarm:
        return CounterAlarmCommands(node, value);
    case RecordForm::ChannelAlarmModes:
        return ChannelModeCommands(record, node, value);
    }
    return {Write(record.reg, node, value, record.index)};
}

int SavedSlots(std::string_view configurationReply)
{
    constexpr double Head = 3, Pair = 2;
    const double last = (static_cast<double>(configurationReply.size()) - Head) / Pair - 1;
    return static_cast<int>(RoundHalfEven(last)) + 1;
}

NodeKey CardOfSlot(const NodeKey &unit, std::string_view slotTypes, int slot)
{
    constexpr std::size_t Pair = 2;
    const ModelRow *card = FindCard(Mid(slotTypes, static_cast<std::size_t>(slot) * Pair + 1, Pair));
    if (!card || card->records.empty())
        return {};
    return NodeKey(SlotKey(unit.text(), static_cast<char>('0' + slot), card->model));
}

const std::string &ConfigurationLines::Next()
{
    if (at_ >= text_.size())
        return line_;
    const std::size_t end = std::min(text_.find_first_of("\r\n", at_), text_.size());
    line_ = text_.substr(at_, end - at_);
    at_ = end + (text_.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    return line_;
}

} // namespace vorn
