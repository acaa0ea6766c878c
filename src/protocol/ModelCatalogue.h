#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorn
{

/// Model of the base units; the extended "3900E" is folded to it.
inline constexpr std::string_view BaseUnitModel = "3900";

/// Whether a model is known; one that isn't gets no node. A known one is replaced by its name on the node:
/// "7221P" by "7221+", "7224P" by "7224+".
bool AcceptModel(std::string &model);

/// Description of a stand-alone model in the module list; empty for others.
std::string_view ModelDescription(std::string_view model);

/// Whether a model has a console instead of a page.
bool IsConsoleModel(std::string_view model);

/// Name of the help page about a stand-alone model's or base unit's page.
std::string_view ModelHelpPage(std::string_view model);

/// Slot code of an empty slot.
inline constexpr std::string_view EmptySlotCode = "FF";
/// Slots of a base unit at most, whatever a reply's length says.
inline constexpr std::size_t MostSlots = 8;
/// Slot codes in a "$AAT" reply, slot 0 first, two characters each.
std::vector<std::string> SlotCodes(std::string_view reply, bool checksum);
/// Model of a slot code: "39" and the code, but "3H" is 3923H.
std::string SlotModel(std::string_view code);
/// What the text of a slot's node holds behind "(Sn) ".
std::string SlotNodeText(std::string_view code);
/// Channel nodes of a slot code.
int SlotChannelCount(std::string_view code);

/// Name and description of a slot module in the slot list of a base unit; empty for models that it doesn't
/// know.
struct SlotListRow {
    std::string name;
    std::string_view description;
};
SlotListRow SlotListRowOf(std::string_view model);

/// Image keys of a kind of node.
struct NodeImages {
    std::string_view normal;
    std::string_view selected;
};
inline constexpr NodeImages PCImage{"pc", "PC"};
inline constexpr NodeImages PortImage{"close", "Terminal"};
inline constexpr std::string_view OpenPortImage = "open";
inline constexpr NodeImages ModuleImage{"vorn4ico", "vorn4icoS"};
inline constexpr NodeImages BaseUnitImage{"vorn5ico", "vorn5icoS"};
inline constexpr NodeImages SlotImage{"vorn5cico", "vorn5cicoS"};
inline constexpr NodeImages ChannelImage{"vorn5sico", "vorn5sicoS"};

/// Text of the PC page, line by line.
std::vector<std::string> LabPCLines();

} // namespace vorn
