#include "shell/TreeView.h"

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

    connect(this, &QTreeWidget::itemClicked, this,
            [this](const QTreeWidgetItem *item) { Q_EMIT NodeClick(KeyOf(item), left_); });
    connect(this, &QTreeWidget::itemExpanded, this, [this](const QTreeWidgetItem *item) {
        if (!silent_)
            Q_EMIT Expand(KeyOf(item));
    });
    connect(this, &QTreeWidget::itemCollapsed, this, [this](const QTreeWidgetItem *item) {
        if (!silent_)
            Q_EMIT Collapse(KeyOf(item));
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
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton)
        left_ = event->button() == Qt::LeftButton;
    QTreeWidget::mousePressEvent(event);
}

/// Moving the selection by keyboard chooses the node, as a click does; Return chooses the present one again.
void TreeView::keyPressEvent(QKeyEvent *event)
{
    const QTreeWidgetItem *before = currentItem();
    QTreeWidget::keyPressEvent(event);
    const bool again = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (currentItem() && (currentItem() != before || again))
        Q_EMIT NodeClick(KeyOf(currentItem()), true);
}

void TreeView::contextMenuEvent(QContextMenuEvent *event)
{
    QTreeWidgetItem *item =
        event->reason() == QContextMenuEvent::Mouse ? itemAt(event->pos()) : currentItem();
    event->accept();
    if (!item)
        return;
    SelectSilently(item);
    Q_EMIT NodeClick(KeyOf(item), false);
}

QString TreeView::KeyOf(const QTreeWidgetItem *item)
{
    return item->data(0, Qt::UserRole).toString();
}

} // namespace vorn
