#include "discovery/ToolStates.h"

#include "protocol/Text.h"

namespace vorn
{

ToolStates ToolbarFor(NodeKind node, bool scopeOnPort, bool expanded)
{
    const bool bus = node == NodeKind::Port && !scopeOnPort;
    const bool module = node == NodeKind::Module;
    return {
        .search = bus, .terminal = bus, .dataScope = bus && !expanded, .saveSet = module, .loadSet = module};
}

ToolStates ToolsMenuFor(std::string_view nodeText, bool scopeOnPort, bool expanded)
{
    const std::string kind = Left(nodeText, 2);
    return ToolbarFor(kind == "PC"   ? NodeKind::PC
                      : kind == "CO" ? NodeKind::Port
                                     : NodeKind::Module,
                      scopeOnPort, expanded);
}

} // namespace vorn
