#include "logger/RecordModel.h"

#include <utility>

namespace vorn
{

void RecordModel::Show(RecordSheet sheet)
{
    beginResetModel();
    sheet_ = std::move(sheet);
    endResetModel();
}

int RecordModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(sheet_.Rows());
}

int RecordModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(sheet_.Columns());
}

QVariant RecordModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    const auto row = static_cast<std::size_t>(index.row());
    return QString::fromStdString(TextOfCell(sheet_.Cell(row, static_cast<std::size_t>(index.column()))));
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= static_cast<int>(sheet_.Columns()))
        return {};
    return QString::fromStdString(sheet_.Titles()[static_cast<std::size_t>(section)]);
}

} // namespace vorn
