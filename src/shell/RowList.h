#pragma once

#include <QTreeWidget>

#include <span>
#include <string>

namespace vorn
{

/// A column of a list: its caption and the width that it is designed with, in twips.
struct ListColumn {
    const char *caption;
    int twips;
};

/// A list of rows, each with a node's key. Which click chooses a row doesn't depend on the desktop's
/// settings.
class RowList final : public QTreeWidget
{
    Q_OBJECT

public:
    explicit RowList(std::span<const ListColumn> columns);

    void AddRow(const std::string &key, const QStringList &texts);
    /// The row of a key; null if there is none.
    QTreeWidgetItem *RowOf(const std::string &key) const;
    /// Gives each column its designed width, or more where a text needs it.
    void FitColumns();

Q_SIGNALS:
    void RowClick(const QString &key);
    void RowDblClick(const QString &key); ///< a double click, and Return on the chosen row

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::span<const ListColumn> columns_;
};

} // namespace vorn
