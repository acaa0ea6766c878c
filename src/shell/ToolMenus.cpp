#include "shell/ToolMenus.h"

#include "protocol/NodeKey.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/ToolStates.h"

#include <QAction>
#include <QGroupBox>

namespace vorn
{

namespace
{

/// The entries of one menu or of the toolbar; null for what it hasn't.
struct ToolEntries {
    QAction *search = nullptr;
    QAction *terminal = nullptr;
    QAction *dataScope = nullptr;
    QAction *saveSet = nullptr;
    QAction *loadSet = nullptr;
};

void Enable(QAction *entry, bool enabled)
{
    if (entry)
        entry->setEnabled(enabled);
}

void Put(const ToolStates &states, const ToolEntries &entries)
{
    Enable(entries.search, states.search);
    Enable(entries.terminal, states.terminal);
    Enable(entries.dataScope, states.dataScope);
    Enable(entries.saveSet, states.saveSet);
    Enable(entries.loadSet, states.loadSet);
}

ToolStates StatesOf(const FormMain &main, const std::string &key,
                    ToolStates (*statesFor)(NodeKind, bool scopeOnPort, bool expanded))
{
    const NodeKind kind = NodeKey(key).kind();
    const bool scope =
        kind == NodeKind::Port && main.ScopeOnPort[static_cast<std::size_t>(PortOfPortKey(key))];
    return statesFor(kind, scope, main.Nodes.IsExpanded(key));
}

} // namespace

void ShowToolbarOf(FormMain &main, const std::string &key)
{
    if (main.Nodes.Contains(key))
        Put(StatesOf(main, key, ToolbarFor), {.search = main.ToolButton(FormMain::SearchButton),
                                              .terminal = main.ToolButton(FormMain::TerminalButton),
                                              .dataScope = main.ToolButton(FormMain::ScopeButton),
                                              .saveSet = main.ToolButton(FormMain::SaveSetButton),
                                              .loadSet = main.ToolButton(FormMain::LoadSetButton)});
}

void RefreshToolbar(FormMain &main)
{
    ShowToolbarOf(main, main.PageNode().text());
}

void ShowToolsMenu(FormMain &main)
{
    Put(StatesOf(main, main.Nodes.Selected(), ToolsMenuFor), {.search = main.Search,
                                                              .terminal = main.Terminal,
                                                              .dataScope = main.Data_Scope,
                                                              .saveSet = main.VORNSaveSet,
                                                              .loadSet = main.VORNLoadSet});
}

void ShowMenuOfPort(FormMain &main, const std::string &key)
{
    Put(StatesOf(main, key, ToolbarFor),
        {.search = main.CSearch, .terminal = main.CTerminal, .dataScope = main.CData_Scope});
}

void ShowMenuOfModule(FormMain &main, const std::string &key)
{
    const bool loaded = key == main.PageNode().text();
    Put({.saveSet = loaded, .loadSet = loaded}, {.saveSet = main.AVORNSaveSet, .loadSet = main.AVORNLoadSet});
}

} // namespace vorn
