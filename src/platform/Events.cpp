#include "platform/Events.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace vorn
{

// The event dispatcher takes posted events for served once it has begun on them. A handler that runs from one
// of them and waits has the others of that batch behind it, so each yield sends what is posted by itself.

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
