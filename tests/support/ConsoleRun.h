#pragma once

#include "support/RackOfOne.h"

#include "consoles/ConsoleForm.h"
#include "shell/DIO.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QTimer>

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

/// A console on a simulated module at 0A on COM2. Its timer ticks when the test says so.
class ConsoleRun : public RackOfOne
{
public:
    /// A console waits a tenth of a second for a reply: too little for a busy machine.
    ConsoleRun() { clock.slowness = 10; }

    /// Clicks the module's node, and waits until its console has loaded. `begin` is what it sent.
    void OpenConsole(Operator &op, const std::string &key)
    {
        ClickConsole(op, key);
        AwaitLoaded(op);
    }

    void ClickConsole(Operator &op, const std::string &key)
    {
        AddNode(op, key);
        rack().ClearTrace();
        op.Gui([&] { LeftClick(key); });
    }

    void AwaitLoaded(Operator &op)
    {
        bool halted = false;
        op.WaitFor(
            [&] {
                if (!Console())
                    return false;
                if (!halted) // before the load starts it, if the machine lets us
                    Timer()->setInterval(std::chrono::hours(1));
                halted = true;
                loaded_ = rack().Commands(2);
                return Timer()->isActive();
            },
            "the console");
        op.Settle();
        op.WaitFor([&] { return !main().Gate.IsOnLine(); }, "the end of the first tick");
    }

    /// What was sent until the console had loaded.
    const Lines &Loaded() const { return loaded_; }

    vorn::ConsoleForm *Console()
    {
        auto *console = qobject_cast<vorn::ConsoleForm *>(QApplication::activeModalWidget());
        return console ? console : main().findChild<vorn::ConsoleForm *>();
    }
    QTimer *Timer() { return &Console()->tmrTimer; }

    template <class Control = QWidget>
    Control *Part(const std::string &name)
    {
        return Console()->findChild<Control *>(QString::fromStdString(name));
    }
    std::string TextOf(Operator &op, const std::string &name)
    {
        return op.Gui([&] {
            auto *part = Part(name);
            if (!part)
                return "no " + name;
            if (const auto *entry = qobject_cast<QLineEdit *>(part))
                return entry->text().toStdString();
            if (const auto *list = qobject_cast<QComboBox *>(part))
                return list->currentText().toStdString();
            return vorn::CaptionOf(part);
        });
    }
    bool IsOn(Operator &op, const std::string &name)
    {
        return op.Gui([&] {
            auto *part = Part(name);
            if (auto *point = qobject_cast<vorn::DIO *>(part))
                return point->value();
            return qobject_cast<QAbstractButton *>(part)->isChecked();
        });
    }
    bool IsVisible(Operator &op, const std::string &name)
    {
        return op.Gui([&] { return !Part(name)->isHidden(); });
    }

    /// Presses a button and waits for so many lines.
    void Press(Operator &op, const std::string &button)
    {
        rack().ClearTrace();
        op.Gui([&] { Part<QAbstractButton>(button)->click(); });
    }
    void Enter(Operator &op, const std::string &entry, const std::string &text)
    {
        op.Gui([&] {
            auto *field = Part<QLineEdit>(entry);
            field->selectAll();
            QTest::keyClicks(field, QString::fromStdString(text));
        });
    }
    void Pick(Operator &op, const std::string &list, int index)
    {
        op.Gui([&] { PickEntry(*Part<QComboBox>(list), index); });
    }
    void Tick(Operator &op, const std::string &box)
    {
        op.Gui([&] { Part<QAbstractButton>(box)->click(); });
    }

    /// The lines since the last press, when what was pressed has ended.
    Lines Sent(Operator &op)
    {
        op.WaitFor([&] { return Timer()->isActive() && !Console()->Updating && !main().Gate.IsOnLine(); },
                   "the end of the action");
        op.Settle();
        return rack().Commands(2);
    }

    /// One tick: what it sent.
    Lines Poll(Operator &op)
    {
        rack().ClearTrace();
        op.Gui([&] { QMetaObject::invokeMethod(Timer(), "timeout"); });
        op.Settle();
        op.Settle();
        Lines lines;
        // A poll is a row of transactions without a pause: it has ended when the line stays free.
        op.WaitFor(
            [&] {
                const bool same = lines.size() == rack().Commands(2).size() && !main().Gate.IsOnLine();
                lines = rack().Commands(2);
                return same && !lines.empty();
            },
            "the poll");
        return lines;
    }

    void Close(Operator &op)
    {
        op.Gui([&] { Console()->close(); });
        op.WaitFor([&] { return !Console(); }, "the end of the console");
    }

private:
    Lines loaded_;
};
