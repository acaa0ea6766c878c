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

TEST(KeepWindowAlive, LeavesQueuedHandlersForLater)
{
    EXPECT_EQ(OrderOfServing(vorn::KeepWindowAlive), "begin end ");
    QObject context;
    std::string order;
    vorn::Queue(&context, [&] { order += "first "; });
    vorn::Queue(&context, [&] { order += "second "; });
    vorn::KeepWindowAlive();
    vorn::KeepWindowAlive();
    EXPECT_EQ(order, "");
    vorn::DoEvents();
    vorn::DoEvents();
    EXPECT_EQ(order, "first second ");
}

TEST(KeepWindowAlive, LeavesKeysAndClicksForLaterAndLosesNone)
{
    QWidget window;
    QLineEdit field(&window);
    QPushButton button(&window);
    field.resize(100, 30);
    button.setGeometry(0, 40, 100, 30);
    button.setFocusPolicy(Qt::NoFocus);
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, &window, [&] { ++clicks; });
    window.resize(120, 80);
    window.show();
    QApplication::setActiveWindow(&window);
    field.setFocus();
    QWindow *handle = window.windowHandle();
    QMetaObject::invokeMethod(
        &window,
        [&] {
            QTest::mouseClick(handle, Qt::LeftButton, {}, button.geometry().center());
            QTest::keyClick(handle, Qt::Key_A);
        },
        Qt::QueuedConnection);
    vorn::KeepWindowAlive();
    vorn::KeepWindowAlive();
    EXPECT_EQ(clicks, 0);
    EXPECT_FALSE(button.isDown());
    EXPECT_EQ(field.text(), QString());
    vorn::DoEvents();
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(button.isDown());
    EXPECT_EQ(field.text(), QStringLiteral("a"));
}

TEST(YieldDepth, TellsWhetherAHandlerIsBelow)
{
    QObject context;
    int inside = 0;
    EXPECT_EQ(vorn::YieldDepth(), 0);
    vorn::Queue(&context, [&] { inside = vorn::YieldDepth(); });
    vorn::DoEvents();
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(vorn::YieldDepth(), 0);
}

} // namespace
