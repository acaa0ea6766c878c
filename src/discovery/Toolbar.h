#pragma once

#include <string>

namespace vorn
{

class FormMain;

/// Enables the toolbar's buttons that a node offers; a key that is in the tree no more leaves them alone.
void ShowToolbarOf(FormMain &main, const std::string &key);

/// The same for the node whose page is on show, after something but the choice of a node has changed.
void RefreshToolbar(FormMain &main);

} // namespace vorn
