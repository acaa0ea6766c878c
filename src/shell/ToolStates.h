#pragma once

#include "protocol/NodeKey.h"

namespace vorn
{

/// Which tools a node offers. Toolbar buttons and menu entries of one name go together.
struct ToolStates {
    bool search = false;
    bool terminal = false;
    bool dataScope = false;
    bool saveSet = false;
    bool loadSet = false;

    friend bool operator==(const ToolStates &, const ToolStates &) = default;
};

/// Toolbar of the selected node. `scopeOnPort` and `expanded` are about a port's node.
ToolStates ToolbarFor(NodeKind node, bool scopeOnPort, bool expanded);

/// Entries of the Tools menu. Slots and channels offer what their module does.
ToolStates ToolsMenuFor(NodeKind node, bool scopeOnPort, bool expanded);

} // namespace vorn
