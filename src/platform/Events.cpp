#include "platform/Events.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace vorn
{

void DoEvents()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void WaitForEvents(int milliseconds)
{
    QTimer wake;
    wake.setSingleShot(true);
    wake.setTimerType(Qt::PreciseTimer);
    wake.start(milliseconds);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void KeepWindowAlive()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    // Behind a held back key or click the dispatcher doesn't come to the posted events by itself.
    QCoreApplication::sendPostedEvents();
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
