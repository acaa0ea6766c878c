#include "discovery/DeviceTree.h"

#include "platform/WidgetText.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/RowList.h"
#include "shell/ToolMenus.h"

#include <QAction>
#include <QGroupBox>
#include <QMenu>

#include <utility>

namespace vorn
{

namespace
{

/// Columns of a module's row.
QStringList ModuleColumns(const NodeKey &node)
{
    const int address = static_cast<int>(HexVal(node.address()));
    return {node.isInit() ? QStringLiteral("*") : QStringLiteral(" "),
            ToQString(PadLeft(std::to_string(address), 3, ' ') + "  (" + node.address() + ")"),
            ToQString(node.model()), ToQString(ModelDescription(node.model()))};
}

} // namespace

DeviceTree::DeviceTree(FormMain &main) : main_(main)
{
    const auto onNode = [this](void (DeviceTree::*handler)(const std::string &)) {
        return [this, handler](const QString &key) {
            main_.Gate.Take({.context = this,
                             .action = [this, handler, key = FromQString(key)] { (this->*handler)(key); }});
        };
    };
    connect(main.TreeView1, &TreeView::Expand, this, onNode(&DeviceTree::Expand));
    connect(main.TreeView1, &TreeView::Collapse, this, onNode(&DeviceTree::Collapse));
    connect(main.ListView1, &RowList::RowClick, this, onNode(&DeviceTree::ListView1_ItemClick));
    connect(main.ListView1, &RowList::RowDblClick, this, onNode(&DeviceTree::ListView1_ItemClick));
    connect(main.Tools, &QMenu::aboutToShow, this, [this] { ShowToolsMenu(main_); });
    connect(&main, &FormMain::NodeChanged, this, &DeviceTree::ChangeRow);
    connect(&main, &FormMain::ScopesChanged, this, [this] { RefreshToolbar(main_); });
}

void DeviceTree::Expand(const std::string &key)
{
    if (!main_.Nodes.Contains(key))
        return;
    SetTag(main_.ListView1, key);
    if (NodeKey(key).kind() != NodeKind::PC) {
        main_.Nodes.Select(key);
        main_.LastNodeIndex = main_.Nodes.IndexOf(key);
        if (NodeKey(key).kind() == NodeKind::Port)
            FillList(key);
    }
    main_.ChooseNode(key);
}

void DeviceTree::ExpandNode(const std::string &key)
{
    main_.Nodes.SetExpanded(key, true);
    Expand(key);
}

void DeviceTree::Collapse(const std::string &key)
{
    if (!main_.Nodes.Contains(key))
        return;
    if (NodeKey(key).kind() == NodeKind::PC) {
        main_.ListView1->clear();
        FoldPorts();
    } else {
        FoldSilently(key);
        main_.Nodes.Select(key);
        main_.ChooseNode(key);
    }
    main_.ArrangePage();
}

void DeviceTree::FoldSilently(const std::string &key)
{
    main_.Nodes.SetExpanded(key, false);
    if (NodeKey(key).kind() == NodeKind::Port)
        main_.Nodes.SetImage(key, PortImage.normal, PortImage.selected);
}

void DeviceTree::FoldPorts(const std::string &except)
{
    for (const std::string &port : main_.Nodes.Children(std::string(KeyPC))) {
        if (port != except)
            FoldSilently(port);
    }
}

void DeviceTree::FillList(const std::string &portKey)
{
    main_.Frame1->hide();
    main_.ListView1->show();
    main_.NowStatus("Display information about the connected modules.");

    const int port = PortOfPortKey(portKey);
    const auto index = static_cast<std::size_t>(port);
    if (std::exchange(main_.ScopeOnPort[index], false) && main_.ScopeForm[index])
        main_.ScopeForm[index]->close(); // bus and scope can't share the port

    const DisabledWindow disabled(main_);
    main_.ListView1->clear();
    FoldPorts(portKey);
    main_.CommPortNo = port;
    main_.Nodes.SetImage(portKey, OpenPortImage, PortImage.selected);
    main_.ListView1->setUpdatesEnabled(false);
    for (const std::string &module : main_.Nodes.Children(portKey))
        AddModuleRow(module);
    main_.ListView1->FitColumns();
    main_.ListView1->setUpdatesEnabled(true);
}

void DeviceTree::AddModuleRow(const std::string &key)
{
    const NodeKey node(key);
    main_.ListView1->AddRow(key, ModuleColumns(node));
    if (node.model() != BaseUnitModel)
        return;
    for (const std::string &child : main_.Nodes.Children(key)) {
        const NodeKey slot(child);
        main_.ListView1->AddRow(child,
                                {QString(), QString(), QString(),
                                 ToQString(std::string("Slot ") + slot.slot() + " VORN-" + slot.model())});
    }
}

/// A row follows its module to another address.
void DeviceTree::ChangeRow(const std::string &oldKey, const std::string &newKey)
{
    QTreeWidgetItem *row = main_.ListView1->RowOf(oldKey);
    if (!row)
        return;
    row->setData(0, Qt::UserRole, ToQString(newKey));
    const QStringList columns = ModuleColumns(NodeKey(newKey));
    for (int i = 0; i < columns.size(); ++i)
        row->setText(i, columns.at(i));
}

void DeviceTree::ListView1_ItemClick(const std::string &key)
{
    if (!main_.Nodes.Contains(key))
        return;
    const std::string parent = main_.Nodes.ParentKey(key);
    if (!main_.Nodes.IsExpanded(parent))
        main_.Nodes.SetExpanded(parent, true);
    main_.Nodes.Select(key);
    if (TagOf(main_.Frame1) != key)
        main_.ChooseNode(key);
}

} // namespace vorn
