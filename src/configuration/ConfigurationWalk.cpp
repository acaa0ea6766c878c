#include "configuration/ConfigurationWalk.h"

#include "configuration/ConfigurationFile.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"

namespace vorn
{

namespace
{

constexpr std::size_t SlotTypesWidth = 8; ///< of four slots

bool IsUnit(const NodeKey &node)
{
    return Has(node.model(), Feature::Slots);
}

} // namespace

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

bool ConfigurationWalk::Save()
{
    text_ = RecordLine(ModuleNameLabel, node_.model());
    if (node_.kind() == NodeKind::Module)
        AddEntries(node_);
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
    if (!Send(main_, node_, Query(reg, entry.node, index)))
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
    if (IsUnit(node_)) {
        if (!HasCardsOf(lines))
            return false;
        AddCards(slotTypes_, LoadedSlots);
    }
    for (const Entry &entry : entries_) {
        Step(entry);
        if (RowOf(entry.record.reg).form != RecordForm::Compared && !LoadEntry(entry, lines.Next()))
            return false;
    }
    return true;
}

/// The cards of the file must be those in the unit.
bool ConfigurationWalk::HasCardsOf(ConfigurationLines &lines)
{
    if (!Send(main_, node_, Query(Register::SlotTypes, node_)))
        return false;
    slotTypes_ = Left(SavedValue(Register::SlotTypes, main_.ReplyText), SlotTypesWidth);
    return HoldsFromValue(lines.Next(), slotTypes_);
}

bool ConfigurationWalk::LoadEntry(const Entry &entry, std::string_view line)
{
    for (const std::string &command : LoadCommands(entry.record, entry.node, line)) {
        if (!Send(main_, node_, command))
            return false;
        WaitModuleReady(main_, node_.busAddress(), node_.checksum());
    }
    return true;
}

} // namespace vorn
