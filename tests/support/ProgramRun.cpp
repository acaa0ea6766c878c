#include "support/ProgramRun.h"

#include "platform/WidgetText.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QTreeWidgetItemIterator>

ProgramRun::ProgramRun(int platformId) : platformId_(platformId) {}

ProgramRun::~ProgramRun() = default;

void ProgramRun::Operate(const std::function<void(Operator &)> &steps)
{
    serialPorts_ = std::make_unique<vorn::SerialPorts>();
    program_ = std::make_unique<vorn::Program>(
        vorn::Host{.ports = *serialPorts_, .clock = clock, .platformId = platformId_});
    Operator::Run([&](Operator &op) {
        const bool loaded = op.Gui([&] {
            if (!program_->Load())
                return false;
            program_->Main.show();
            return true;
        });
        if (loaded)
            steps(op);
        // Let every loop end, so that the handlers return.
        const auto ended = [&] {
            main().Timer1.stop();
            main().StopScan = true;
            main().PauseRefresh = true;
            main().TerminalStop = true;
            return !main().NoYield;
        };
        op.WaitFor(ended, "end of the refresh");
        // A tick that waited for its turn may have begun another.
        op.Settle();
        op.WaitFor(ended, "end of the last refresh");
    });
    QCoreApplication::sendPostedEvents();
    program_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::string ProgramRun::Text(const char *name)
{
    QWidget *control = Find(name);
    if (!control) {
        ADD_FAILURE() << "no control " << name;
        return {};
    }
    if (const auto *field = qobject_cast<QLineEdit *>(control))
        return vorn::FromQString(field->text());
    if (const auto *list = qobject_cast<QComboBox *>(control))
        return vorn::FromQString(list->currentText());
    return vorn::CaptionOf(control);
}

bool ProgramRun::Shown(const char *name)
{
    QWidget *control = Find(name);
    if (!control) {
        ADD_FAILURE() << "no control " << name;
        return false;
    }
    return control->isVisible();
}

void ProgramRun::LeftClick(const std::string &key)
{
    // As the mouse does it: the view moves at once, the program follows when the click is handled.
    for (QTreeWidgetItemIterator item(main().TreeView1); *item; ++item) {
        if ((*item)->data(0, Qt::UserRole).toString() == vorn::ToQString(key))
            main().TreeView1->SelectSilently(*item);
    }
    Q_EMIT main().TreeView1->MouseDown(Qt::LeftButton);
    QMetaObject::invokeMethod(
        main().TreeView1, [this, key] { Q_EMIT main().TreeView1->NodeClick(vorn::ToQString(key)); },
        Qt::QueuedConnection);
}

void ProgramRun::Choose(Operator &op, const std::string &key)
{
    op.Gui([&] {
        // A mark that the page's load takes away again, so that choosing the page on show can be awaited too.
        vorn::SetTag(main().Frame1, "");
        LeftClick(key);
    });
    op.WaitFor([&] { return vorn::TagOf(main().Frame1) == key; }, ("page of " + key).c_str());
}

void ProgramRun::Search(Operator &op, const char *start)
{
    op.Trigger(main().ToolButton(vorn::FormMain::SearchButton));
    op.AnswerInput("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0", start);
}
