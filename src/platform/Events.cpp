#include "platform/Events.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace vorn
{

namespace
{

int depth = 0;

class Yield final
{
public:
    Yield() { ++depth; }
    ~Yield() { --depth; }
    Yield(const Yield &) = delete;
    Yield &operator=(const Yield &) = delete;
};

/// What delivers the like of an event later. A clone of a mouse event would share its place with those that
/// follow, so that one is made anew.
std::function<void()> DeliveryOf(QObject *receiver, const QEvent &event)
{
    if (const auto *mouse = dynamic_cast<const QMouseEvent *>(&event)) {
        return [receiver, type = mouse->type(), position = mouse->position(), scene = mouse->scenePosition(),
                global = mouse->globalPosition(), button = mouse->button(), buttons = mouse->buttons(),
                modifiers = mouse->modifiers(), device = mouse->pointingDevice()] {
            QMouseEvent later(type, position, scene, global, button, buttons, modifiers, device);
            QCoreApplication::sendEvent(receiver, &later);
        };
    }
    return [receiver, later = std::shared_ptr<QEvent>(event.clone())] {
        QCoreApplication::sendEvent(receiver, later.get());
    };
}

/// While it lives, keys, clicks and queued handlers are kept back; at its end they are put in the queue
/// again. Everything else is served, the wish to close a window included, which the window system would hold
/// back together with the input if the event loop were told to.
class InputHold final : public QObject
{
public:
    InputHold()
    {
        active = this;
        QCoreApplication::instance()->installEventFilter(this);
    }

    ~InputHold() override
    {
        active = nullptr;
        QCoreApplication::instance()->removeEventFilter(this);
        for (const Kept &kept : kept_) {
            if (kept.context)
                Queue(kept.context, kept.handler);
        }
    }

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (!IsInput(*receiver, *event))
            return false;
        Keep(receiver, DeliveryOf(receiver, *event));
        return true;
    }

    void Keep(QObject *context, const std::function<void()> &handler) { kept_.push_back({context, handler}); }

    static InputHold *active;

private:
    struct Kept {
        QPointer<QObject> context;
        std::function<void()> handler;
    };

    /// Input as the window system delivers it, before any control has seen it; and the shortcuts that it
    /// makes of keys by itself.
    static bool IsInput(const QObject &receiver, const QEvent &event)
    {
        switch (event.type()) {
        case QEvent::Shortcut:
            return true;
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::InputMethod:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
            return receiver.isWindowType();
        default:
            return false;
        }
    }

    std::vector<Kept> kept_;
};

InputHold *InputHold::active = nullptr;

} // namespace

// A handler that runs from a posted event has others of the same batch behind it. The event dispatcher takes
// those for served, so each yield sends them by itself.

void DoEvents()
{
    const Yield yield;
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void WaitForEvents(int milliseconds)
{
    const Yield yield;
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

int YieldDepth()
{
    return depth;
}

void Queue(QObject *context, std::function<void()> handler)
{
    QMetaObject::invokeMethod(
        context,
        [context, handler = std::move(handler)] {
            if (InputHold::active)
                InputHold::active->Keep(context, handler);
            else
                handler();
        },
        Qt::QueuedConnection);
}

void EndProgram()
{
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

} // namespace vorn
