#include "shell/FieldGuard.h"

#include "support/BeepCount.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

using vorn::FieldRule;

namespace
{

class FieldGuardTest : public ::testing::Test
{
protected:
    QLineEdit field_;
    BeepCount beeps_;
    QSignalSpy enters_{&field_, &QLineEdit::returnPressed};

    void Guard(FieldRule rule) { vorn::GuardField(&field_, rule); }
};

} // namespace

TEST_F(FieldGuardTest, ADeletionMayLeaveWhatTypingWouldRefuse)
{
    Guard(FieldRule::VoltageOutput);
    QTest::keyClicks(&field_, QStringLiteral("9.5"));
    field_.setCursorPosition(2);
    QTest::keyClick(&field_, Qt::Key_Backspace);
    EXPECT_EQ(field_.text(), QStringLiteral("95"));
    QTest::keyClick(&field_, Qt::Key_Home);
    QTest::keyClick(&field_, Qt::Key_Delete);
    EXPECT_EQ(field_.text(), QStringLiteral("5"));
}

TEST_F(FieldGuardTest, AnInsertionThatTypingWouldRefuseIsUndone)
{
    Guard(FieldRule::VoltageOutput);
    QTest::keyClicks(&field_, QStringLiteral("9.5"));
    field_.setCursorPosition(1);
    field_.insert(QStringLiteral("9"));
    EXPECT_EQ(field_.text(), QStringLiteral("9.5"));
    field_.selectAll();
    field_.insert(QStringLiteral("11"));
    EXPECT_EQ(field_.text(), QStringLiteral("9.5")) << "fewer characters, but new ones";
}

TEST_F(FieldGuardTest, ADropBringsInNothingThatTypingWouldRefuse)
{
    Guard(FieldRule::OutputChannel);
    const auto drop = [&](const char *text) {
        QMimeData mime;
        mime.setText(QString::fromLatin1(text));
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&field_, &enter);
        QDropEvent event({1.0, 1.0}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&field_, &event);
        return field_.text();
    };
    EXPECT_EQ(drop("16"), QString());
    EXPECT_EQ(drop("x"), QString());
    EXPECT_EQ(drop("12"), QStringLiteral("12"));
}

TEST_F(FieldGuardTest, AnInputMethodBringsInNothingThatTypingWouldRefuse)
{
    Guard(FieldRule::OutputChannel);
    const auto compose = [&](const QString &text) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&field_, &event);
        return field_.text();
    };
    EXPECT_EQ(compose(QStringLiteral(u"\u4E2D")), QString());
    EXPECT_EQ(compose(QStringLiteral("1")), QStringLiteral("1"));
    EXPECT_EQ(compose(QStringLiteral("6")), QStringLiteral("1")) << "16 is beyond the last channel";
    EXPECT_EQ(compose(QStringLiteral("5")), QStringLiteral("15"));
}

TEST_F(FieldGuardTest, ATextOfTheProgramMayBeCutDownToo)
{
    Guard(FieldRule::ChannelLimit);
    field_.setText(QStringLiteral("9999.9"));
    field_.setCursorPosition(5);
    QTest::keyClick(&field_, Qt::Key_Backspace);
    EXPECT_EQ(field_.text(), QStringLiteral("99999"));
}

TEST_F(FieldGuardTest, EnterIsDroppedWhereTheRuleDoesNotTakeIt)
{
    Guard(FieldRule::Address);
    QTest::keyClicks(&field_, QStringLiteral("16"));
    QTest::keyClick(&field_, Qt::Key_Return);
    QTest::keyClick(&field_, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(enters_.count(), 0);
    EXPECT_EQ(field_.text(), QStringLiteral("16"));
}

TEST_F(FieldGuardTest, ARefusedKeyIsHeardAndATakenOneIsNot)
{
    Guard(FieldRule::Address);
    QTest::keyClicks(&field_, QStringLiteral("16"));
    QTest::keyClick(&field_, Qt::Key_Backspace);
    QTest::keyClick(&field_, Qt::Key_Left);
    EXPECT_EQ(beeps_.Take(), 0);
    QTest::keyClicks(&field_, QStringLiteral("x."));
    EXPECT_EQ(beeps_.Take(), 2);
    EXPECT_EQ(field_.text(), QStringLiteral("1"));
}

TEST_F(FieldGuardTest, EnterIsTakenWhereTheRuleTakesIt)
{
    Guard(FieldRule::ModuleLimit);
    QTest::keyClick(&field_, Qt::Key_Return);
    EXPECT_EQ(enters_.count(), 1);
}

TEST_F(FieldGuardTest, AnOutputTakesEnterWithATextOnly)
{
    Guard(FieldRule::DecimalOutput);
    QTest::keyClick(&field_, Qt::Key_Return);
    EXPECT_EQ(enters_.count(), 0);
    QTest::keyClick(&field_, Qt::Key_5);
    QTest::keyClick(&field_, Qt::Key_Return);
    EXPECT_EQ(enters_.count(), 1);
}
