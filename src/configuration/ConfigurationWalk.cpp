#include "configuration/ConfigurationWalk.h"

#include "configuration/ConfigurationFile.h"
#include "protocol/Registers.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"

#include <utility>

namespace vorn
{

void ConfigurationWalk::AddEntries(const NodeKey &node)
{
    for (const RecordStep &record : RecordsOf(node))
        entries_.push_back({node, record});
}

void ConfigurationWalk::AddCards(std::string_view slotTypes, int slots)
{
    for (int slot = 0; slot < slots; ++slot)
        AddEntries(CardOfSlot(node_, slotTypes, slot));
}

void ConfigurationWalk::Step(const Entry &entry)
{
    progress_.Step(RecordLabel(entry.record.reg, entry.node, entry.record.index),
                   static_cast<int>(entries_.size()));
}

/// Sends a line of the walk. The reply of another line counts for none: one that lost its end, or a silenced
/// bus, would leave it in place.
bool ConfigurationWalk::Send(std::string line)
{
    main_.ReplyText.clear();
    return vorn::Send(main_, node_, std::move(line));
}

bool ConfigurationWalk::Save()
{
    text_ = RecordLine(ModuleNameLabel, node_.model());
    if (node_.kind() == NodeKind::Module)
        AddEntries(node_);
    // Those of the cards come meanwhile. NOLINTNEXTLINE(modernize-loop-convert)
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (!SaveEntry(entries_[i]))
            return false;
        if (entries_[i].record.reg == Register::BaseConfiguration)
            AddCards(slotTypes_, SavedSlots(main_.ReplyText));
    }
    return true;
}

bool ConfigurationWalk::SaveEntry(const Entry &entry)
{
    const auto &[reg, index] = entry.record;
    Step(entry);
    if (!Send(Query(reg, entry.node, index)))
        return false;
    const std::string value = SavedValue(reg, main_.ReplyText);
    if (reg == Register::SlotTypes)
        slotTypes_ = value;
    text_ += RecordLine(RecordLabel(reg, entry.node, index), value);
    return true;
}

bool ConfigurationWalk::Load(ConfigurationLines &lines)
{
    if (!HoldsFromValue(lines.Next(), node_.model()))
        return false;
    if (node_.kind() == NodeKind::Module)
        AddEntries(node_);
    // Those of the cards come meanwhile. NOLINTNEXTLINE(modernize-loop-convert)
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const Entry entry = entries_[i];
        Step(entry);
        if (entry.record.reg == Register::SlotTypes) {
            if (!HasCardsOf(lines))
                return false;
            AddCards(slotTypes_, LoadedSlots);
        } else if (!LoadEntry(entry, lines.Next())) {
            return false;
        }
    }
    return true;
}

/// The cards of the file must be those in the unit.
bool ConfigurationWalk::HasCardsOf(ConfigurationLines &lines)
{
    if (!Send(Query(Register::SlotTypes, node_)))
        return false;
    slotTypes_ = SavedValue(Register::SlotTypes, main_.ReplyText);
    return slotTypes_.size() == RowOf(Register::SlotTypes).recordWidth &&
           HoldsFromValue(lines.Next(), slotTypes_);
}

bool ConfigurationWalk::LoadEntry(const Entry &entry, std::string_view line)
{
    for (const std::string &command : LoadCommands(entry.record, entry.node, line)) {
        if (!Send(command))
            return false;
        WaitModuleReady(main_, node_.busAddress(), node_.checksum());
    }
    return true;
}

} // namespace vorn
