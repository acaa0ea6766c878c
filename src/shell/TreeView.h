#pragma once

#include <QTreeWidget>

namespace vorn
{

/// The device tree's view. It turns mouse, keyboard and menu key into the few events that the program
/// handles, and raises them from the event loop, so that a handler may yield as long as it likes.
class TreeView final : public QTreeWidget
{
    Q_OBJECT

public:
    explicit TreeView(QWidget *parent = nullptr);

    /// Folds or unfolds without raising `Expand` or `Collapse`.
    void SetExpandedSilently(QTreeWidgetItem *item, bool expanded);
    /// Selects an item, unfolding what hides it, without raising any event.
    void SelectSilently(QTreeWidgetItem *item);

Q_SIGNALS:
    void MouseDown(Qt::MouseButton button);
    /// A node was chosen: by a click of either button, by the keyboard, or by the menu key.
    void NodeClick(const QString &key);
    void Expand(const QString &key);
    void Collapse(const QString &key);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    QString KeyOf(const QTreeWidgetItem *item) const;
    void RaiseNodeClick(const QTreeWidgetItem *item);

    bool silent_ = false;
};

} // namespace vorn
