#pragma once

class QWidget;

namespace vorn
{

/// Keeps a window above the others, or lets it go. No move, no resize; a window on show stays on show.
void SetTopmost(QWidget &window, bool topmost);

} // namespace vorn
