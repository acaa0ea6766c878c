#include "platform/TopmostWindow.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace vorn
{

void SetTopmost(QWidget &window, bool topmost)
{
    if (window.windowFlags().testFlag(Qt::WindowStaysOnTopHint) == topmost)
        return;
    if (!window.windowHandle()) {
        window.setWindowFlag(Qt::WindowStaysOnTopHint, topmost);
        return;
    }
    // Told to the window system directly: by way of the widget the window would be hidden and made again.
    window.overrideWindowFlags(window.windowFlags().setFlag(Qt::WindowStaysOnTopHint, topmost));
    window.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
}

bool SomeWindowIsTopmost()
{
    const auto windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [](const QWidget *window) {
        return window->isVisible() && window->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    });
}

TopmostPause::TopmostPause(QWidget &window) : window_(window)
{
    SetTopmost(window, false);
}

TopmostPause::~TopmostPause()
{
    SetTopmost(window_, true);
}

} // namespace vorn
