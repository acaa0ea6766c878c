#include "shell/TreeView.h"

#include "platform/Events.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>

namespace vorn
{

TreeView::TreeView(QWidget *parent) : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIconSize(QSize(20, 20));
    setIndentation(14);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(true);

    connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) { RaiseNodeClick(item); });
    connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem *item) {
        if (!silent_)
            Queue(this, [this, key = KeyOf(item)] { Q_EMIT Expand(key); });
    });
    connect(this, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem *item) {
        if (!silent_)
            Queue(this, [this, key = KeyOf(item)] { Q_EMIT Collapse(key); });
    });
}

void TreeView::SetExpandedSilently(QTreeWidgetItem *item, bool expanded)
{
    const bool outer = std::exchange(silent_, true);
    item->setExpanded(expanded);
    silent_ = outer;
}

void TreeView::SelectSilently(QTreeWidgetItem *item)
{
    const bool outer = std::exchange(silent_, true);
    setCurrentItem(item);
    silent_ = outer;
}

void TreeView::mousePressEvent(QMouseEvent *event)
{
    Q_EMIT MouseDown(event->button());
    QTreeWidget::mousePressEvent(event);
}

/// Moving the selection by keyboard chooses the node, as a click does; Return chooses the present one again.
void TreeView::keyPressEvent(QKeyEvent *event)
{
    const QTreeWidgetItem *before = currentItem();
    QTreeWidget::keyPressEvent(event);
    const bool again = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (currentItem() && (currentItem() != before || again)) {
        Q_EMIT MouseDown(Qt::LeftButton);
        RaiseNodeClick(currentItem());
    }
}

void TreeView::contextMenuEvent(QContextMenuEvent *event)
{
    QTreeWidgetItem *item =
        event->reason() == QContextMenuEvent::Mouse ? itemAt(event->pos()) : currentItem();
    event->accept();
    if (!item)
        return;
    setCurrentItem(item);
    Q_EMIT MouseDown(Qt::RightButton);
    RaiseNodeClick(item);
}

QString TreeView::KeyOf(const QTreeWidgetItem *item) const
{
    return item->data(0, Qt::UserRole).toString();
}

void TreeView::RaiseNodeClick(const QTreeWidgetItem *item)
{
    Queue(this, [this, key = KeyOf(item)] { Q_EMIT NodeClick(key); });
}

} // namespace vorn
