#include "support/ProgramRun.h"

#include "platform/WidgetText.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QTest>
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
        AwaitActions(op);
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

QTreeWidgetItem *ProgramRun::Item(const std::string &key)
{
    for (QTreeWidgetItemIterator item(main().TreeView1); *item; ++item) {
        if ((*item)->data(0, Qt::UserRole).toString() == vorn::ToQString(key))
            return *item;
    }
    ADD_FAILURE() << "no node " << key;
    return nullptr;
}

void ProgramRun::ClickNode(const std::string &key, Qt::MouseButton button)
{
    QTreeWidgetItem *item = Item(key);
    if (!item)
        return;
    vorn::TreeView *tree = main().TreeView1;
    for (QTreeWidgetItem *parent = item->parent(); parent; parent = parent->parent())
        tree->SetExpandedSilently(parent, true);
    tree->scrollToItem(item);
    const QPoint place = tree->visualItemRect(item).center();
    QTest::mouseClick(tree->viewport(), button, {}, place);
    if (button == Qt::RightButton) {
        QContextMenuEvent menu(QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(tree->viewport(), &menu);
    }
}

void ProgramRun::Unfold(const std::string &key)
{
    QTreeWidgetItem *item = Item(key);
    if (!item)
        return;
    vorn::TreeView *tree = main().TreeView1;
    tree->scrollToItem(item);
    const QRect row = tree->visualItemRect(item);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                      QPoint(row.left() - tree->indentation() / 2, row.center().y()));
    EXPECT_TRUE(item->isExpanded()) << key;
}

void ProgramRun::LeftClick(const std::string &key)
{
    ClickNode(key, Qt::LeftButton);
}

void ProgramRun::AwaitActions(Operator &op)
{
    op.WaitFor([&] { return !main().Gate.IsBusy(); }, "the end of all actions");
}

void ProgramRun::Choose(Operator &op, const std::string &key)
{
    op.Gui([&] { LeftClick(key); });
    AwaitActions(op);
    EXPECT_EQ(op.Gui([&] { return vorn::TagOf(main().Frame1); }), key);
}

void ProgramRun::Search(Operator &op, const char *start)
{
    op.Trigger(main().ToolButton(vorn::FormMain::SearchButton));
    op.AnswerInput("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0", start);
}
