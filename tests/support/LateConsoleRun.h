#pragma once

#include "support/LateBus.h"
#include "support/ProgramRun.h"

#include "consoles/ConsoleForm.h"

#include <chrono>
#include <string>

/// A console whose module's replies come when the test says so. Its timer ticks when the test says so.
class LateConsoleRun : public ProgramRun
{
public:
    void Open(Operator &op, LateBus &bus, const std::string &key)
    {
        op.Gui([&] {
            main().Nodes.Add("KeyCOM002", key, "(0A)", "vorn4ico", "vorn4icoS");
            LeftClick(key);
        });
        op.WaitFor([&] { return Console() && Console()->tmrTimer.isActive(); }, "the console");
        op.Gui([&] { Console()->tmrTimer.setInterval(std::chrono::hours(1)); });
        op.WaitFor([&] { return !main().Gate.IsOnLine(); }, "a free line");
        op.Settle();
        bus.Forget();
        clock.ticks = 1; // a reply that is held back is never late
    }
    vorn::ConsoleForm *Console() { return main().findChild<vorn::ConsoleForm *>(); }
    template <class Control = QWidget>
    Control *Part(const char *name)
    {
        return Console()->findChild<Control *>(QLatin1String(name));
    }
    void Tick(Operator &op)
    {
        op.Gui([&] { QMetaObject::invokeMethod(&Console()->tmrTimer, "timeout"); });
        op.Settle();
    }
};
