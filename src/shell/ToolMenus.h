#pragma once

#include <string>

namespace vorn
{

class FormMain;

// The five tools stand in the toolbar, in the Tools menu and in the context menus. What a node offers is
// enabled, the rest disabled; what is greyed out stays so.

/// Toolbar, for the node of a key. A key that is in the tree no more leaves it alone.
void ShowToolbarOf(FormMain &main, const std::string &key);
/// The same for the page on show, after something but the choice of a node has changed.
void RefreshToolbar(FormMain &main);

/// Tools menu, for the selected node.
void ShowToolsMenu(FormMain &main);

/// Context menu of a port, and of a module: that of the page on show offers its files.
void ShowMenuOfPort(FormMain &main, const std::string &key);
void ShowMenuOfModule(FormMain &main, const std::string &key);

} // namespace vorn
