#include "shell/ToolStates.h"

namespace vorn
{

ToolStates ToolbarFor(NodeKind node, bool scopeOnPort, bool expanded)
{
    const bool bus = node == NodeKind::Port && !scopeOnPort;
    const bool module = node == NodeKind::Module;
    return {
        .search = bus, .terminal = bus, .dataScope = bus && !expanded, .saveSet = module, .loadSet = module};
}

ToolStates ToolsMenuFor(NodeKind node, bool scopeOnPort, bool expanded)
{
    const bool card = node == NodeKind::Slot || node == NodeKind::Channel;
    return ToolbarFor(card ? NodeKind::Module : node, scopeOnPort, expanded);
}

} // namespace vorn
