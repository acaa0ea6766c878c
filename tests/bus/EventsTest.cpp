#include "platform/Events.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include <functional>
#include <string>

namespace
{

/// Runs a handler from the event loop with another event queued right behind it; tells what was served when.
std::string OrderOfServing(const std::function<void()> &yield)
{
    QObject context;
    std::string order;
    vorn::Queue(&context, [&] {
        order += "begin ";
        yield();
        order += "end ";
    });
    vorn::Queue(&context, [&] { order += "other "; });
    QCoreApplication::processEvents();
    return order;
}

TEST(Yield, ServesWhatWasQueuedBehindTheHandler)
{
    EXPECT_EQ(OrderOfServing(vorn::DoEvents), "begin other end ");
    EXPECT_EQ(OrderOfServing([] { vorn::WaitForEvents(1); }), "begin other end ");
}

TEST(Yield, NestsWithoutServingAnythingTwice)
{
    EXPECT_EQ(OrderOfServing([] {
                  vorn::DoEvents();
                  vorn::DoEvents();
              }),
              "begin other end ");
}

} // namespace
