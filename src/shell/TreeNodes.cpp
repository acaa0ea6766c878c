#include "shell/TreeNodes.h"

#include "platform/WidgetText.h"
#include "shell/TreeView.h"

#include <algorithm>
#include <unordered_set>

namespace vorn
{

namespace
{

constexpr int ImageRole = Qt::UserRole + 1;

std::string KeyOf(const QTreeWidgetItem *item)
{
    return item ? FromQString(item->data(0, Qt::UserRole).toString()) : std::string{};
}

QString ImageFile(std::string_view image)
{
    return QStringLiteral(":/tree/%1.svg").arg(ToQString(image));
}

} // namespace

QTreeWidgetItem *TreeNodes::Find(const std::string &key) const
{
    return items_.value(ToQString(key), nullptr);
}

/// One icon a pair of images, shared by all nodes of a kind.
QIcon TreeNodes::Icon(std::string_view image, std::string_view selectedImage)
{
    const QString name = ToQString(image) + QLatin1Char('|') + ToQString(selectedImage);
    auto found = icons_.find(name);
    if (found == icons_.end()) {
        QIcon icon(ImageFile(image));
        icon.addFile(ImageFile(selectedImage), QSize(), QIcon::Selected);
        found = icons_.insert(name, icon);
    }
    return *found;
}

bool TreeNodes::Add(const std::string &parentKey, const std::string &key, std::string_view text,
                    std::string_view image, std::string_view selectedImage, const std::string &before)
{
    QTreeWidgetItem *parent = parentKey.empty() ? view_.invisibleRootItem() : Find(parentKey);
    if (!parent || Contains(key))
        return false;
    auto *item = new QTreeWidgetItem(QStringList{ToQString(text)});
    item->setData(0, Qt::UserRole, ToQString(key));
    item->setData(0, ImageRole, ToQString(image));
    item->setIcon(0, Icon(image, selectedImage));
    QTreeWidgetItem *next = before.empty() ? nullptr : Find(before);
    if (next && next->parent() == parent)
        parent->insertChild(parent->indexOfChild(next), item);
    else
        parent->addChild(item);
    items_.insert(ToQString(key), item);
    order_.push_back(key);
    return true;
}

void TreeNodes::Forget(QTreeWidgetItem *item, std::vector<std::string> &keys)
{
    for (int i = 0; i < item->childCount(); ++i)
        Forget(item->child(i), keys);
    keys.push_back(KeyOf(item));
    items_.remove(ToQString(keys.back()));
}

void TreeNodes::Drop(const std::vector<std::string> &keys)
{
    const std::unordered_set<std::string> gone(keys.begin(), keys.end());
    std::erase_if(order_, [&gone](const std::string &key) { return gone.contains(key); });
}

void TreeNodes::Remove(const std::string &key)
{
    QTreeWidgetItem *item = Find(key);
    if (!item)
        return;
    std::vector<std::string> keys;
    Forget(item, keys);
    Drop(keys);
    delete item;
    ReselectIfGone();
}

void TreeNodes::RemoveChildren(const std::string &key)
{
    QTreeWidgetItem *item = Find(key);
    if (!item)
        return;
    std::vector<std::string> keys;
    const QList<QTreeWidgetItem *> children = item->takeChildren();
    for (QTreeWidgetItem *child : children)
        Forget(child, keys);
    Drop(keys);
    qDeleteAll(children);
    ReselectIfGone();
}

/// The view moves on by itself when its current item goes.
void TreeNodes::ReselectIfGone()
{
    if (!Contains(selected_))
        selected_ = KeyOf(view_.currentItem());
}

void TreeNodes::Rename(const std::string &key, const std::string &newKey)
{
    QTreeWidgetItem *item = Find(key);
    if (!item || Contains(newKey))
        return;
    items_.remove(ToQString(key));
    items_.insert(ToQString(newKey), item);
    item->setData(0, Qt::UserRole, ToQString(newKey));
    std::replace(order_.begin(), order_.end(), key, newKey);
    if (selected_ == key)
        selected_ = newKey;
}

std::string TreeNodes::KeyAt(int index) const
{
    return index >= 1 && index <= Count() ? order_[static_cast<std::size_t>(index - 1)] : std::string{};
}

int TreeNodes::IndexOf(const std::string &key) const
{
    const auto found = std::find(order_.begin(), order_.end(), key);
    return found == order_.end() ? 0 : static_cast<int>(found - order_.begin()) + 1;
}

std::string TreeNodes::Text(const std::string &key) const
{
    const QTreeWidgetItem *item = Find(key);
    return item ? FromQString(item->text(0)) : std::string{};
}

void TreeNodes::SetText(const std::string &key, std::string_view text)
{
    if (QTreeWidgetItem *item = Find(key))
        item->setText(0, ToQString(text));
}

void TreeNodes::SetImage(const std::string &key, std::string_view image, std::string_view selectedImage)
{
    if (QTreeWidgetItem *item = Find(key)) {
        item->setData(0, ImageRole, ToQString(image));
        item->setIcon(0, Icon(image, selectedImage));
    }
}

std::string TreeNodes::Image(const std::string &key) const
{
    const QTreeWidgetItem *item = Find(key);
    return item ? FromQString(item->data(0, ImageRole).toString()) : std::string{};
}

std::string TreeNodes::ParentKey(const std::string &key) const
{
    const QTreeWidgetItem *item = Find(key);
    return item ? KeyOf(item->parent()) : std::string{};
}

std::vector<std::string> TreeNodes::Children(const std::string &key) const
{
    std::vector<std::string> keys;
    if (const QTreeWidgetItem *item = Find(key)) {
        for (int i = 0; i < item->childCount(); ++i)
            keys.push_back(KeyOf(item->child(i)));
    }
    return keys;
}

bool TreeNodes::HasChildren(const std::string &key) const
{
    const QTreeWidgetItem *item = Find(key);
    return item && item->childCount() > 0;
}

bool TreeNodes::IsExpanded(const std::string &key) const
{
    const QTreeWidgetItem *item = Find(key);
    return item && item->isExpanded();
}

void TreeNodes::SetExpanded(const std::string &key, bool expanded)
{
    if (QTreeWidgetItem *item = Find(key))
        view_.SetExpandedSilently(item, expanded);
}

void TreeNodes::Select(const std::string &key)
{
    if (QTreeWidgetItem *item = Find(key)) {
        selected_ = key;
        view_.SelectSilently(item);
    }
}

} // namespace vorn
