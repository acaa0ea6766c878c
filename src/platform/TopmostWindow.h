#pragma once

class QWidget;

namespace vorn
{

/// Keeps a window above the others, or lets it go. No move, no resize; a window on show stays on show.
void SetTopmost(QWidget &window, bool topmost);

/// Whether some window on show is kept above the others. A dialog that comes up then has to be, too.
bool SomeWindowIsTopmost();

/// Lets a topmost window go for as long as it lives: while that window shows a dialog.
class TopmostPause final
{
public:
    explicit TopmostPause(QWidget &window);
    ~TopmostPause();
    TopmostPause(const TopmostPause &) = delete;
    TopmostPause &operator=(const TopmostPause &) = delete;

private:
    QWidget &window_;
};

} // namespace vorn
