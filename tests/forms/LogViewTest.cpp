#include "tools/LogView.h"

#include "support/BeepCount.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <string>

using vorn::LogView;

namespace
{

class LogViewTest : public ::testing::Test
{
protected:
    LogView terminal_{LogView::WhenFull::RaiseError, true};
    BeepCount beeps_;
    LogView scope_{LogView::WhenFull::DropOldest, false};

    void SetUp() override
    {
        for (LogView *log : {&terminal_, &scope_}) {
            log->resize(400, 120);
            log->show();
        }
        terminal_.setFocus();
    }

    static void Lines(LogView &log, int count)
    {
        for (int i = 0; i < count; ++i)
            log.Append("line " + std::to_string(i) + "\r\n");
        log.Flush();
    }

    static std::string Shown(LogView &log)
    {
        log.Flush();
        return log.toPlainText().toStdString();
    }

    static void PasteInto(LogView &log, const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        log.paste();
    }

    static bool AtEnd(const LogView &log)
    {
        return log.verticalScrollBar()->value() == log.verticalScrollBar()->maximum();
    }
};

} // namespace

TEST_F(LogViewTest, KeepsEveryByteAndShowsALineForEachEntry)
{
    const std::string bytes("$012\r!01\r\r\n\0\xB5\x1B\r\n", 16);
    terminal_.Append(bytes);
    EXPECT_EQ(terminal_.Text(), bytes);
    EXPECT_EQ(terminal_.Length(), bytes.size());
    EXPECT_EQ(Shown(terminal_), "$012<0D>\n!01\n<00>\u00B5<1B>\n");
}

TEST_F(LogViewTest, ShowsWhatCameWithoutBeingAskedTo)
{
    terminal_.Append("$012\r\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return terminal_.toPlainText() == QStringLiteral("$012\n"); }));
}

TEST_F(LogViewTest, FollowsTheEndOnlyWhileItIsInView)
{
    Lines(terminal_, 100);
    EXPECT_TRUE(AtEnd(terminal_));
    terminal_.verticalScrollBar()->setValue(20);
    Lines(terminal_, 100);
    EXPECT_EQ(terminal_.verticalScrollBar()->value(), 20);
    terminal_.verticalScrollBar()->setValue(terminal_.verticalScrollBar()->maximum());
    Lines(terminal_, 100);
    EXPECT_TRUE(AtEnd(terminal_));
}

TEST_F(LogViewTest, AChoiceStaysWhileLinesArriveAndCanBeCopied)
{
    terminal_.Append("$012\r!01\r\r\n$022\r\n");
    terminal_.Flush();
    terminal_.selectAll();
    const int anchor = terminal_.textCursor().anchor();
    const int position = terminal_.textCursor().position();
    Lines(terminal_, 50);
    EXPECT_EQ(terminal_.textCursor().anchor(), anchor);
    EXPECT_EQ(terminal_.textCursor().position(), position);
    terminal_.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "$012<0D>\n!01\n$022\n");
}

TEST_F(LogViewTest, WhatIsTypedStandsBehindTheLogWhateverComesMeanwhile)
{
    terminal_.Append("first\r\n");
    terminal_.Flush();
    QTest::keyClicks(&terminal_, QStringLiteral("$012"));
    EXPECT_EQ(terminal_.Text(), "first\r\n$012");
    EXPECT_EQ(terminal_.LogMark(), 7U);
    QTest::keyClick(&terminal_, Qt::Key_Left);
    terminal_.Append("second\r\n");
    EXPECT_EQ(terminal_.Text(), "first\r\nsecond\r\n$012");
    EXPECT_EQ(Shown(terminal_), "first\nsecond\n$012");
    QTest::keyClicks(&terminal_, QStringLiteral("3"));
    EXPECT_EQ(terminal_.Text(), "first\r\nsecond\r\n$0132") << "the caret stays in its place";
}

TEST_F(LogViewTest, AChoiceInTheTypingGoesOnWithIt)
{
    QTest::keyClicks(&terminal_, QStringLiteral("$012"));
    QTest::keyClick(&terminal_, Qt::Key_Home, Qt::ShiftModifier);
    Lines(terminal_, 3);
    EXPECT_EQ(terminal_.textCursor().selectedText(), QStringLiteral("$012"));
    QTest::keyClicks(&terminal_, QStringLiteral("5"));
    EXPECT_TRUE(terminal_.Text().ends_with("line 2\r\n5"));
}

TEST_F(LogViewTest, WhatWasTypedCanBeTaken)
{
    terminal_.Append("first\r\n");
    QTest::keyClicks(&terminal_, QStringLiteral("$012"));
    EXPECT_EQ(terminal_.TakeTyped(), "$012");
    EXPECT_EQ(terminal_.Text(), "first\r\n");
    EXPECT_EQ(Shown(terminal_), "first\n");
    EXPECT_EQ(terminal_.TakeTyped(), "");
    QTest::keyClicks(&terminal_, QStringLiteral("$"));
    EXPECT_EQ(terminal_.Text(), "first\r\n$");
}

TEST_F(LogViewTest, TypingComesBehindWhatIsNotOnTheScreenYet)
{
    terminal_.Append("first\r\n");
    QTest::keyClicks(&terminal_, QStringLiteral("$"));
    EXPECT_EQ(terminal_.Text(), "first\r\n$");
    EXPECT_EQ(Shown(terminal_), "first\n$");
}

TEST_F(LogViewTest, TypingGoesToTheEndWhereverTheCursorIs)
{
    terminal_.Append("first\r\nsecond\r\n");
    terminal_.Flush();
    terminal_.moveCursor(QTextCursor::Start);
    QTest::keyClicks(&terminal_, QStringLiteral("$1"));
    terminal_.selectAll();
    QTest::keyClicks(&terminal_, QStringLiteral("2"));
    EXPECT_EQ(terminal_.Text(), "first\r\nsecond\r\n$12");
}

TEST_F(LogViewTest, DeletingReachesTheTypingOnly)
{
    terminal_.Append("first\r\n");
    terminal_.Flush();
    QTest::keyClicks(&terminal_, QStringLiteral("$1"));
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(&terminal_, Qt::Key_Backspace);
    EXPECT_EQ(terminal_.Text(), "first\r\n");
    EXPECT_EQ(beeps_.Take(), 3) << "where there is nothing typed any more";
    terminal_.selectAll();
    QTest::keyClick(&terminal_, Qt::Key_Delete);
    EXPECT_EQ(terminal_.Text(), "first\r\n");
    terminal_.selectAll();
    QTest::keyClick(&terminal_, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(terminal_.Text(), "first\r\n");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("first\n"))
        << "cut as far as it may be: copied";
}

TEST_F(LogViewTest, AChangeOfTheLogByAnyOtherWayIsTakenBack)
{
    terminal_.Append("first\r\n");
    terminal_.Flush();
    terminal_.selectAll();
    terminal_.cut(); // as the context menu does
    QCoreApplication::processEvents();
    EXPECT_EQ(terminal_.Text(), "first\r\n");
    EXPECT_EQ(Shown(terminal_), "first\n");
    QTest::keyClicks(&terminal_, QStringLiteral("$"));
    EXPECT_EQ(terminal_.Text(), "first\r\n$");
}

TEST_F(LogViewTest, TheTypingStaysWhenAChangeOfTheLogIsTakenBack)
{
    terminal_.Append("first\r\nsecond\r\n");
    terminal_.Flush();
    QTest::keyClicks(&terminal_, QStringLiteral("$012"));
    const auto cut = [&](int from, int to) {
        QTextCursor choice = terminal_.textCursor();
        choice.setPosition(from);
        choice.setPosition(to, QTextCursor::KeepAnchor);
        terminal_.setTextCursor(choice);
        terminal_.cut();
        QCoreApplication::processEvents();
        return terminal_.Text();
    };
    EXPECT_EQ(cut(2, 4), "first\r\nsecond\r\n$012");
    EXPECT_EQ(cut(0, 6), "first\r\nsecond\r\n$012");
    EXPECT_EQ(cut(10, 15), "first\r\nsecond\r\n12") << "what was typed may be cut";
    EXPECT_EQ(Shown(terminal_), "first\nsecond\n12");
}

TEST_F(LogViewTest, AnInsertionIntoTheLogIsTakenBack)
{
    terminal_.Append("first\r\n");
    terminal_.Flush();
    QTest::keyClicks(&terminal_, QStringLiteral("$012"));
    QTextCursor(terminal_.document()).insertText(QStringLiteral("xyz")); // as an assistive tool may do
    EXPECT_EQ(terminal_.TakeTyped(), "$012");
    QCoreApplication::processEvents();
    EXPECT_EQ(Shown(terminal_), "first\n");
}

TEST_F(LogViewTest, WhatWasTakenCanBePutBackInFrontOfTheTyping)
{
    terminal_.Append("first\r\n");
    QTest::keyClicks(&terminal_, QStringLiteral("$012"));
    const std::string taken = terminal_.TakeTyped();
    QTest::keyClicks(&terminal_, QStringLiteral("3"));
    terminal_.PutTyped(taken);
    EXPECT_EQ(terminal_.Text(), "first\r\n$0123");
    EXPECT_EQ(terminal_.LogMark(), 7U);
}

TEST_F(LogViewTest, BegunAnewItKeepsTheTyping)
{
    terminal_.Append("first\r\n");
    QTest::keyClicks(&terminal_, QStringLiteral("$012"));
    terminal_.BeginAnew();
    terminal_.Append("second\r\n");
    EXPECT_EQ(terminal_.Text(), "second\r\n$012");
    EXPECT_EQ(Shown(terminal_), "second\n$012");
    terminal_.Clear();
    EXPECT_EQ(terminal_.Text(), "");
}

TEST_F(LogViewTest, WhatIsBeingComposedIsNotTornApart)
{
    terminal_.Append("first\r\n");
    terminal_.Flush();
    const auto input = [&](const char *composing, const char *committed) {
        QInputMethodEvent event(QString::fromLatin1(composing), {});
        event.setCommitString(QString::fromLatin1(committed));
        QCoreApplication::sendEvent(&terminal_, &event);
    };
    input("$", "");
    terminal_.Append("second\r\n");
    EXPECT_EQ(Shown(terminal_), "first\n") << "the composition stands behind the first line";
    input("", "$");
    EXPECT_EQ(Shown(terminal_), "first\nsecond\n$");
    EXPECT_EQ(terminal_.TakeTyped(), "$");
}

TEST_F(LogViewTest, ReturnIsToldAndSwallowed)
{
    QSignalSpy returns(&terminal_, &LogView::ReturnPressed);
    QTest::keyClicks(&terminal_, QStringLiteral("$012"));
    QTest::keyClick(&terminal_, Qt::Key_Return);
    QTest::keyClick(&terminal_, Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(&terminal_, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(returns.count(), 3);
    EXPECT_EQ(terminal_.Text(), "$012");
}

TEST_F(LogViewTest, APasteIsOneLineAtTheEnd)
{
    terminal_.Append("first\r\n");
    terminal_.Flush();
    terminal_.moveCursor(QTextCursor::Start);
    PasteInto(terminal_, QStringLiteral("$012\n$022\n"));
    EXPECT_EQ(terminal_.Text(), "first\r\n$012");
    EXPECT_EQ(beeps_.Take(), 1) << "for the line that was left out";
}

TEST_F(LogViewTest, APageOfTextIsNoCommand)
{
    PasteInto(terminal_, QString(100'000, u'x'));
    EXPECT_EQ(terminal_.Text(), "");
    EXPECT_EQ(beeps_.Take(), 1);
    const std::string longest(1000, 'x');
    PasteInto(terminal_, QString::fromStdString(longest));
    QTest::keyClicks(&terminal_, QStringLiteral("x"));
    EXPECT_EQ(terminal_.Text(), longest);
    EXPECT_EQ(beeps_.Take(), 1);
}

TEST_F(LogViewTest, AFullLogRaisesAnErrorAndStaysAsItIs)
{
    const std::string full(LogView::Capacity, 'x');
    terminal_.Append(full);
    try {
        terminal_.Append("y");
        FAIL() << "no error";
    } catch (const vorn::RuntimeError &error) {
        EXPECT_EQ(error.number(), vorn::RuntimeErrorNumber::OutOfMemory);
    }
    EXPECT_EQ(terminal_.Text(), full);
    QTest::keyClicks(&terminal_, QStringLiteral("y"));
    PasteInto(terminal_, QStringLiteral("y"));
    EXPECT_EQ(terminal_.Length(), LogView::Capacity);
    terminal_.Clear();
    EXPECT_EQ(terminal_.Text(), "");
    terminal_.Append("y");
    EXPECT_EQ(Shown(terminal_), "y");
}

TEST_F(LogViewTest, TypingCountsToTheCapacity)
{
    terminal_.Append(std::string(LogView::Capacity - 3, 'x'));
    terminal_.Flush();
    QTest::keyClicks(&terminal_, QStringLiteral("abcd"));
    EXPECT_EQ(terminal_.Length(), LogView::Capacity);
    EXPECT_THROW(terminal_.Append("y"), vorn::RuntimeError);
    EXPECT_EQ(beeps_.Take(), 1);
    EXPECT_EQ(terminal_.TakeTyped(), "abc");
}

TEST_F(LogViewTest, WhereTheOldestGoTheNewestStay)
{
    std::string all;
    for (int i = 0; all.size() < LogView::Capacity + LogView::Capacity / 2; ++i) {
        const std::string line = "!01+" + std::to_string(i) + "\r\r\n";
        all += line;
        scope_.Append(line);
        ASSERT_LE(scope_.Length(), LogView::Capacity);
    }
    const std::string kept = scope_.Text();
    EXPECT_GT(kept.size(), LogView::Capacity / 2);
    EXPECT_TRUE(all.ends_with(kept));
    EXPECT_TRUE(kept.starts_with("!01+")) << "cut between lines";
    EXPECT_TRUE(Shown(scope_).starts_with("!01+"));
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(kept, '\n')) + 1,
              static_cast<std::size_t>(scope_.blockCount()));
    scope_.Append(std::string(LogView::Capacity + 5, 'x'));
    EXPECT_EQ(scope_.Text(), std::string(LogView::Capacity, 'x'));
}

TEST_F(LogViewTest, TheViewKeepsItsPlaceWhenTheOldestGo)
{
    while (scope_.Length() + 20 < LogView::Capacity)
        scope_.Append("0123456789abcdef\r\r\n");
    scope_.Flush();
    const int last = scope_.verticalScrollBar()->maximum();
    scope_.verticalScrollBar()->setValue(last - 10);
    const int blocks = scope_.blockCount();
    scope_.Append("0123456789abcdef\r\r\n0123456789abcdef\r\r\n");
    const int gone = blocks - scope_.blockCount();
    EXPECT_GT(gone, 0);
    EXPECT_EQ(scope_.verticalScrollBar()->value(), last - 10 - gone);
}

TEST_F(LogViewTest, NothingCanBeTypedWhereTypingIsOff)
{
    QSignalSpy returns(&scope_, &LogView::ReturnPressed);
    scope_.Append("line\r\n");
    scope_.setFocus();
    QTest::keyClicks(&scope_, QStringLiteral("abc"));
    QTest::keyClick(&scope_, Qt::Key_Return);
    QTest::keyClick(&scope_, Qt::Key_Backspace);
    PasteInto(scope_, QStringLiteral("x"));
    EXPECT_EQ(scope_.Text(), "line\r\n");
    EXPECT_EQ(returns.count(), 0);
}
