#pragma once

#include "logger/RecordSheet.h"

#include <QAbstractTableModel>

namespace vorn
{

/// A sheet of the workbook for the grid.
class RecordModel final : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;

    void Show(RecordSheet sheet);
    const RecordSheet &Sheet() const { return sheet_; }

    int rowCount(const QModelIndex &parent) const override;
    int columnCount(const QModelIndex &parent) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    RecordSheet sheet_;
};

} // namespace vorn
