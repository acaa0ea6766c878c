#pragma once

#include <QTreeWidget>

namespace vorn
{

/// The device tree's view. It turns mouse, keyboard and menu key into the few events that the program
/// handles.
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
    /// A node was chosen: to load its page (`left`, or by the keyboard), or to open its menu (the right
    /// button, or the menu key).
    void NodeClick(const QString &key, bool left);
    void Expand(const QString &key);
    void Collapse(const QString &key);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    static QString KeyOf(const QTreeWidgetItem *item);

    bool silent_ = false; ///< a change by the program
    bool left_ = true;    ///< the left button was the last to go down, of left and right
};

} // namespace vorn
