#include "shell/RowList.h"

#include "platform/WidgetText.h"
#include "shell/Controls.h"

#include <QKeyEvent>

namespace vorn
{

namespace
{

QString KeyOf(const QTreeWidgetItem *row)
{
    return row->data(0, Qt::UserRole).toString();
}

} // namespace

RowList::RowList(std::span<const ListColumn> columns) : columns_(columns)
{
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    QStringList captions;
    for (const ListColumn &column : columns)
        captions << QString::fromLatin1(column.caption);
    setHeaderLabels(captions);
    FitColumns();
    connect(this, &QTreeWidget::itemClicked, this,
            [this](const QTreeWidgetItem *row) { Q_EMIT RowClick(KeyOf(row)); });
    connect(this, &QTreeWidget::itemDoubleClicked, this,
            [this](const QTreeWidgetItem *row) { Q_EMIT RowDblClick(KeyOf(row)); });
}

void RowList::AddRow(const std::string &key, const QStringList &texts)
{
    auto *row = new QTreeWidgetItem(this, texts);
    row->setData(0, Qt::UserRole, ToQString(key));
}

QTreeWidgetItem *RowList::RowOf(const std::string &key) const
{
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (KeyOf(topLevelItem(i)) == ToQString(key))
            return topLevelItem(i);
    }
    return nullptr;
}

void RowList::FitColumns()
{
    for (int i = 0; i < columnCount(); ++i) {
        resizeColumnToContents(i);
        setColumnWidth(i, qMax(columnWidth(i), Pixels(columns_[static_cast<std::size_t>(i)].twips)));
    }
}

void RowList::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && currentItem())
        Q_EMIT RowDblClick(KeyOf(currentItem()));
    else
        QTreeWidget::keyPressEvent(event);
}

} // namespace vorn
