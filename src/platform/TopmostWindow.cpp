#include "platform/TopmostWindow.h"

#include <QWidget>

namespace vorn
{

void SetTopmost(QWidget &window, bool topmost)
{
    if (window.windowFlags().testFlag(Qt::WindowStaysOnTopHint) == topmost)
        return;
    const bool shown = window.isVisible();
    const QPoint place = window.pos();
    window.setWindowFlag(Qt::WindowStaysOnTopHint, topmost); // hides the window
    if (shown) {
        window.move(place);
        window.show();
    }
}

} // namespace vorn
