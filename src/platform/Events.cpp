#include "platform/Events.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace vorn
{

namespace
{

/// While it lives, keys and clicks go nowhere. Everything else is served, the wish to close a window
/// included, which the window system would hold back together with the input if the event loop were told to.
class InputHold final : public QObject
{
public:
    InputHold() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
            return true;
        default:
            return false;
        }
    }
};

} // namespace

// A handler that runs from a posted event has others of the same batch behind it. The event dispatcher takes
// those for served, so each yield sends them by itself.

void DoEvents()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void WaitForEvents(int milliseconds)
{
    QTimer wake;
    wake.setSingleShot(true);
    wake.setTimerType(Qt::PreciseTimer);
    wake.start(milliseconds);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void KeepWindowAlive()
{
    const InputHold hold;
    DoEvents();
}

void Queue(QObject *context, std::function<void()> handler)
{
    QMetaObject::invokeMethod(context, std::move(handler), Qt::QueuedConnection);
}

void EndProgram()
{
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

} // namespace vorn
