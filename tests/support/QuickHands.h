#pragma once

#include "support/LateBus.h"
#include "support/ProgramRun.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <string>
#include <vector>

/// What a quick hand does on the pages of a program whose bus is late: for the window's thread, without
/// waiting for anything.
class QuickHands : public ProgramRun
{
protected:
    /// Types into an entry in place of what it holds.
    void Enter(const char *name, const char *text)
    {
        auto *entry = Find<QLineEdit>(name);
        QTest::keyClick(entry, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(entry, QString::fromLatin1(text));
    }
    /// Chooses an entry of a list.
    void Pick(const char *name, int position)
    {
        auto *list = Find<QComboBox>(name);
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 0; i < position; ++i)
            QTest::keyClick(list, Qt::Key_Down);
        ASSERT_EQ(list->currentIndex(), position);
    }
    void Press(const char *button)
    {
        auto *pressed = Find<QAbstractButton>(button);
        ASSERT_TRUE(pressed->isVisible() && pressed->isEnabled()) << button;
        pressed->click();
    }

    /// Waits for a line and holds back its reply.
    static void Hold(Operator &op, LateBus &bus, const std::string &line)
    {
        bus.Hold(line);
        op.WaitFor([&] { return !bus.Held().empty(); }, ("the line " + line).c_str());
    }
    static std::vector<std::string> LinesThatBegin(LateBus &bus, const std::string &head)
    {
        std::vector<std::string> lines = bus.Lines();
        std::erase_if(lines, [&](const std::string &line) { return !line.starts_with(head); });
        return lines;
    }
};
