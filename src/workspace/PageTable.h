#pragma once

#include "discovery/NodeKey.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn
{

/// What a page hides, shows, enables and captions, by control names; an element of a control array is
/// "DIOL_3".
struct PageDescription {
    std::vector<std::string> hidden;
    std::vector<std::string> shown;
    std::vector<std::string> enabled;
    std::vector<std::pair<std::string, std::string>> captions;
};

/// The state that every page starts from.
const PageDescription &ResetPage();

/// What comes on top of the reset; null for a model without such a page.
const PageDescription *ModulePage(std::string_view model);
const PageDescription *SlotPage(std::string_view model);
const PageDescription *ChannelPage(std::string_view model);

/// Whether the channel texts of a slot page are the operator's entries; elsewhere they only show, on a
/// button-coloured field.
bool AreChannelTextsWritable(std::string_view model);

/// Which tools a node offers. Toolbar buttons and menu entries of one name go together.
struct ToolStates {
    bool search = false;
    bool terminal = false;
    bool dataScope = false;
    bool saveSet = false;
    bool loadSet = false;

    friend bool operator==(const ToolStates &, const ToolStates &) = default;
};

enum class NodeKind { PC, Port, Module, SlotOrChannel };

/// Toolbar of the selected node. `scopeOnPort` and `expanded` are about a port's node.
ToolStates ToolbarFor(NodeKind node, bool scopeOnPort, bool expanded);

/// Entries of the Tools menu by the selected node's text. Slots and channels offer what their module does.
ToolStates ToolsMenuFor(std::string_view nodeText, bool scopeOnPort, bool expanded);

/// Caption of the page of a module, a slot or a channel: "VORN-3923 Channel 7".
std::string PageCaption(const NodeKey &node);

} // namespace vorn
