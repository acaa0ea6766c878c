#pragma once

#include "protocol/ModelTable.h"
#include "protocol/NodeKey.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorn
{

/// Label of the first record of a configuration file, whose value is the model's name.
inline constexpr std::string_view ModuleNameLabel = "Module Name";

/// A record as a line of the file: 50 characters, the label from column 1 and the value from column 25 on,
/// and carriage return and line feed.
std::string RecordLine(std::string_view label, std::string_view value);

/// Value of a record in a line, by its place alone: `width` characters from column 25 on. A shorter line has
/// less.
std::string RecordValue(std::string_view line, std::size_t width);

/// Whether a text stands in a line from column 25 on, at any place.
bool HoldsFromValue(std::string_view line, std::string_view text);

/// The value that is saved for a reply to a record's query.
std::string SavedValue(Register reg, std::string_view reply);

/// What a register's record is written back by: none for a value that stands for nothing, and for what is
/// only compared; two where a mode is written and then its alarm enabled.
std::vector<std::string> LoadCommands(const RecordStep &record, const NodeKey &node, std::string_view line);

/// Number of the slots of a base unit that are saved. It follows the length of the reply to "$AA2", checksum
/// characters included, and not that of the slot types.
int SavedSlots(std::string_view configurationReply);
/// Number of the slots that are loaded.
inline constexpr int LoadedSlots = 4;

/// Key of the card in a slot by its pair of characters in the slot types; an empty key for a card without
/// records, and where there is no card.
NodeKey CardOfSlot(const NodeKey &unit, std::string_view slotTypes, int slot);

/// The lines of a configuration file, one after the other. A line ends with carriage return, line feed, or
/// both.
class ConfigurationLines final
{
public:
    explicit ConfigurationLines(std::string text) : text_(std::move(text)) {}
    /// The next line; behind the last one that line again, and an empty one of an empty file.
    const std::string &Next();

private:
    std::string text_;
    std::size_t at_ = 0;
    std::string line_;
};

} // namespace vorn
