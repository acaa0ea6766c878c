#pragma once

#include "support/Operator.h"
#include "support/PortsFolder.h"

#include "Program.h"
#include "platform/Clock.h"
#include "platform/SerialPorts.h"
#include "shell/Controls.h"
#include "shell/RowList.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QThread>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QTreeWidgetItem;

/// The machine's time, unless a test stops it.
class TestClock final : public vorn::Clock
{
public:
    std::optional<double> timeOfDay;    ///< seconds since midnight
    std::function<void()> looked;       ///< called at each look at that time, before it is told
    std::optional<std::uint32_t> ticks; ///< stands still: no time-out ever comes
    std::uint32_t slowness = 1;         ///< milliseconds of a tick: time-outs that nobody can set come later
    std::function<void()> ticked;       ///< called at each look at the ticks, before they are told

    std::uint32_t GetTickCount() const override
    {
        if (ticked)
            ticked();
        return ticks ? *ticks : Clock::GetTickCount() / slowness;
    }
    double Timer() const override
    {
        if (looked)
            looked();
        return timeOfDay ? *timeOfDay : Clock::Timer();
    }
};

/// The whole program on ports of the test's own. Ports are made before the program starts, by a simulator or
/// raw peers.
class ProgramRun
{
public:
    explicit ProgramRun(int platformId = vorn::Host::PlatformNT);
    ~ProgramRun();

    PortsFolder ports;
    TestClock clock;

    /// Starts the program and runs the steps of the operator on it; what they began has ended when it
    /// returns.
    void Operate(const std::function<void(Operator &)> &steps);

    vorn::Program &program() { return *program_; }
    vorn::FormMain &main() { return program_->Main; }

    // For the operator's steps, on the window's thread:

    /// A control of the pages, or a window's child, by name.
    /// May be asked from the operator's thread, too.
    template <class Control = QWidget>
    Control *Find(const char *name)
    {
        const auto find = [this, name] {
            return program_->Main.findChild<Control *>(QString::fromLatin1(name));
        };
        if (QThread::currentThread() == qApp->thread())
            return find();
        Control *control = nullptr;
        QMetaObject::invokeMethod(
            qApp, [&control, &find] { control = find(); }, Qt::BlockingQueuedConnection);
        return control;
    }
    /// Caption or text of a control as the screen shows it.
    std::string Text(const char *name);
    bool Shown(const char *name);
    std::string Status() { return Text("StatusBar1_1"); }

    /// Waits until all that the operator has done has had its turn.
    void AwaitActions(Operator &op);
    /// Chooses a node as a left click does, and waits until its page is loaded.
    void Choose(Operator &op, const std::string &key);
    /// A click on a node, without waiting. Its branch is unfolded first, as it is behind a search.
    void LeftClick(const std::string &key);
    void ClickNode(const std::string &key, Qt::MouseButton button);
    /// Clicks on the sign that unfolds a node.
    void Unfold(const std::string &key);
    /// A whole search of the selected port from address `start` on; the tree is filled when it returns.
    void Search(Operator &op, const char *start = "0");

private:
    QTreeWidgetItem *Item(const std::string &key);

    int platformId_;
    std::unique_ptr<vorn::SerialPorts> serialPorts_;
    std::unique_ptr<vorn::Program> program_;
};
