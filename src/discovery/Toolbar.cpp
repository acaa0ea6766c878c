#include "discovery/Toolbar.h"

#include "discovery/ToolStates.h"
#include "protocol/NodeKey.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"

#include <QAction>
#include <QGroupBox>

namespace vorn
{

void ShowToolbarOf(FormMain &main, const std::string &key)
{
    if (!main.Nodes.Contains(key))
        return;
    const NodeKind kind = NodeKey(key).kind();
    const bool scope =
        kind == NodeKind::Port && main.ScopeOnPort[static_cast<std::size_t>(PortOfPortKey(key))];
    const ToolStates states = ToolbarFor(kind, scope, main.Nodes.IsExpanded(key));
    main.ToolButton(FormMain::SearchButton)->setEnabled(states.search);
    main.ToolButton(FormMain::TerminalButton)->setEnabled(states.terminal);
    main.ToolButton(FormMain::ScopeButton)->setEnabled(states.dataScope);
    main.ToolButton(FormMain::SaveSetButton)->setEnabled(states.saveSet);
    main.ToolButton(FormMain::LoadSetButton)->setEnabled(states.loadSet);
}

void RefreshToolbar(FormMain &main)
{
    ShowToolbarOf(main, TagOf(main.Frame1));
}

} // namespace vorn
