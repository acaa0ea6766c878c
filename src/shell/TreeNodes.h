#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

#include <string>
#include <string_view>
#include <vector>

class QTreeWidgetItem;

namespace vorn
{

class TreeView;

/// The nodes of the device tree, found by key or, counted from 1, by the order in which they were added. Keys
/// and not pointers are what handlers keep across a yield: a key that has gone is simply not found.
class TreeNodes final
{
public:
    explicit TreeNodes(TreeView &view) : view_(view) {}

    /// Adds a node behind its siblings, or in front of the sibling `before`. A key that exists already is not
    /// added twice; then, and without a parent of that key, the result is false. The root has an empty parent
    /// key.
    bool Add(const std::string &parentKey, const std::string &key, std::string_view text,
             std::string_view image, std::string_view selectedImage, const std::string &before = {});
    /// Removes a node and all below it.
    void Remove(const std::string &key);
    /// Removes all below a node.
    void RemoveChildren(const std::string &key);
    void Rename(const std::string &key, const std::string &newKey);

    bool Contains(const std::string &key) const { return Find(key) != nullptr; }
    int Count() const { return static_cast<int>(order_.size()); }
    /// Key of the node at a place, empty outside 1 to `Count()`.
    std::string KeyAt(int index) const;
    /// Place of a node, 0 for none.
    int IndexOf(const std::string &key) const;

    std::string Text(const std::string &key) const;
    void SetText(const std::string &key, std::string_view text);
    void SetImage(const std::string &key, std::string_view image, std::string_view selectedImage);
    /// Key of the image that a node has now.
    std::string Image(const std::string &key) const;
    std::string ParentKey(const std::string &key) const;
    std::vector<std::string> Children(const std::string &key) const;
    bool HasChildren(const std::string &key) const;

    bool IsExpanded(const std::string &key) const;
    /// Folds or unfolds without any handler.
    void SetExpanded(const std::string &key, bool expanded);

    /// Key of the selected node, empty for none. It follows the view when the click's handler begins, not
    /// when the mouse button goes down: in between, the refresh still belongs to the node that was selected
    /// before.
    std::string Selected() const { return selected_; }
    /// Selects a node without any handler; an unknown key changes nothing.
    void Select(const std::string &key);

private:
    QTreeWidgetItem *Find(const std::string &key) const;
    QIcon Icon(std::string_view image, std::string_view selectedImage);
    void Forget(QTreeWidgetItem *item, std::vector<std::string> &keys);
    void Drop(const std::vector<std::string> &keys);
    void ReselectIfGone();

    TreeView &view_;
    QHash<QString, QTreeWidgetItem *> items_;
    QHash<QString, QIcon> icons_;
    std::vector<std::string> order_;
    std::string selected_;
};

} // namespace vorn
