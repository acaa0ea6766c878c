#include "workspace/PageSelection.h"

#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"
#include "shell/PageFrame.h"
#include "shell/RowList.h"
#include "shell/ToolMenus.h"
#include "workspace/LiveData.h"
#include "workspace/ModulePageLoad.h"
#include "workspace/PageTable.h"
#include "workspace/Pages.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QCursor>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QTabBar>

#include <algorithm>
#include <vector>

namespace vorn
{

namespace
{

const std::string ClassPC = "PC";
const std::string ClassCOM = "COM";
constexpr int SlotListRows = 8;

/// Width that the labels in the first column of a grid need; 0 for a grid without any.
int LabelWidth(const QGridLayout *grid)
{
    int widest = 0;
    for (int row = 0; row < grid->rowCount(); ++row) {
        const QLayoutItem *first = grid->itemAtPosition(row, 0);
        const QLayoutItem *second = grid->itemAtPosition(row, 1);
        const auto *label =
            first && first != second ? qobject_cast<const QLabel *>(first->widget()) : nullptr;
        if (label && !label->isHidden())
            widest = std::max(widest, label->sizeHint().width());
    }
    return widest;
}

/// Has the labels of all frames on show stand in one column. A frame that is but a table of channels has a
/// narrow column of its own: the values need the room.
void AlignLabels(const std::vector<PageFrame *> &frames)
{
    std::vector<QGridLayout *> grids;
    int widest = 0;
    for (const PageFrame *frame : frames) {
        const auto *own = qobject_cast<const QGridLayout *>(frame->layout());
        if (frame->isHidden() || !own || LabelWidth(own) == 0)
            continue;
        for (QGridLayout *grid : frame->findChildren<QGridLayout *>()) {
            const int width = LabelWidth(grid);
            if (width > 0)
                grids.push_back(grid);
            widest = std::max(widest, width);
        }
    }
    for (QGridLayout *grid : grids)
        grid->setColumnMinimumWidth(0, widest);
}

} // namespace

PageSelection::PageSelection(FormMain &main, Pages &pages, ModulePageLoad &load, LiveData &live)
    : main_(main), pages_(pages), load_(load), live_(live)
{
    main.OnNodeClick([this](const std::string &key) { TreeView1_NodeClick(key); });
    connect(&main.Timer1, &QTimer::timeout, this, &PageSelection::Timer1_Tick);
    // Whatever ended the refresh, it comes back when nothing is left to do.
    connect(&main.Gate, &Gate::Idle, this, [this] {
        if (!live_.IsRunning() && !main_.PauseRefresh && !main_.Timer1.isActive())
            main_.Timer1.start();
    });

    const auto onRow = [this](void (PageSelection::*handler)(const std::string &)) {
        return [this, handler](const QString &key) {
            main_.TakeForPage(this, nullptr, [this, handler, key = FromQString(key)](const NodeKey &) {
                (this->*handler)(key);
            });
        };
    };
    connect(pages.ListView3900, &RowList::RowClick, this, onRow(&PageSelection::ListView3900_ItemClick));
    connect(pages.ListView3900, &RowList::RowDblClick, this, onRow(&PageSelection::ListView3900_DblClick));
}

void PageSelection::TreeView1_NodeClick(const std::string &key)
{
    if (!main_.Nodes.Contains(key))
        return; // it has gone or changed its name since the click
    if (main_.NoYield && main_.NodeLeftClick)
        main_.LastNodeIndex = main_.Nodes.IndexOf(main_.Nodes.Selected());
    main_.PauseRefresh = true;
    WaitTransIdle(main_);
    if (ClickGuard)
        return;
    ClickGuard = true;
    try {
        Classify(key);
        if (main_.NodeLeftClick)
            LeftClick(key);
        else
            RightClick(key);
    } catch (const RuntimeError &) {
        // The handler ends here, silently and with `ClickGuard` set.
        main_.Frame1->setUpdatesEnabled(true);
    }
}

void PageSelection::Classify(const std::string &key)
{
    const NodeKey node(key);
    if (node.kind() == NodeKind::PC) {
        NodeClass = ClassPC;
        return;
    }
    NodeClass = node.kind() == NodeKind::Port ? ClassCOM : node.model();
    NotePort(key);
    main_.CommPortNo = main_.SelectedPort;
}

/// Keeps the port of the selection, which terminal and scope are opened on; the PC has none.
void PageSelection::NotePort(const std::string &key)
{
    if (key != KeyPC)
        main_.SelectedPort = NodeKey(key).port();
}

void PageSelection::LeftClick(const std::string &key)
{
    ShowToolbarOf(main_, key);
    const bool ofModule = NodeClass != ClassPC && NodeClass != ClassCOM;
    SetCaption(main_.Frame1, ofModule ? PageCaption(NodeKey(key)) : std::string{});
    main_.LastNodeIndex = main_.Nodes.IndexOf(key);
    live_.End(); // that of the page before
    main_.ArrangePage();
    main_.OutputEditing = false; // what was typed and not sent goes with its page
    if (key != main_.PageOnShow()) {
        for (PageFrame *frame : pages_.Frames())
            frame->Leave();
    }
    ShowPage(key);
    AlignLabels(pages_.Frames());
    main_.SetPageOnShow(key);
    // The page is painted before the bus is used.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    main_.repaint();

    if (ofModule && !IsConsoleModel(NodeClass))
        load_.LoadModulePage(key);
    main_.SetPage(key);
    RefreshToolbar(main_); // a scope may have been closed while the page was loading
    ClickGuard = false;
    const bool portRefused = ofModule && main_.PortRefused; // told once; the next click tries again
    if (main_.NodeLeftClick && ofModule && NodeClass != BaseUnitModel && !portRefused) {
        main_.PauseRefresh = false;
        live_.PollLiveData(key);
    }
    main_.Timer1.start();
}

/// Hides what the last page showed and shows what belongs to the node, without painting in between.
void PageSelection::ShowPage(const std::string &key)
{
    if (NodeClass == ClassCOM && IsPortPageOnShow(key))
        return;
    main_.Frame1->setUpdatesEnabled(false);
    Apply(ResetPage());
    if (NodeClass == ClassPC) {
        main_.NowStatus("Welcome to use VORN Utility");
        pages_.LabPC->show();
        main_.ListView1->hide();
        main_.Frame1->show();
    } else if (NodeClass == ClassCOM) {
        ShowPort(key);
    } else if (IsConsoleModel(NodeClass)) {
        main_.Frame1->setUpdatesEnabled(true);
        ShowConsole(key);
    } else {
        ShowModule(key);
    }
    main_.Frame1->setUpdatesEnabled(true);
}

bool PageSelection::IsPortPageOnShow(const std::string &key) const
{
    return !main_.Nodes.IsExpanded(key) && TagOf(main_.Frame1) == key && IsShown(pages_.FramePort) &&
           IsShown(main_.Frame1);
}

void PageSelection::ShowPort(const std::string &key)
{
    const bool list = main_.Nodes.IsExpanded(key);
    if (!list) {
        SetCaption(pages_.Control("LabCOM_5"), " " + main_.Nodes.Text(key));
        pages_.FramePort->show();
    }
    main_.Frame1->setHidden(list);
    main_.ListView1->setHidden(!list);
    main_.NowStatus(list ? "Display information about the connected modules." : "COM Port status");
}

void PageSelection::ShowModule(const std::string &key)
{
    const NodeKey node(key);
    const PageDescription *page = node.kind() == NodeKind::Channel ? ChannelPage(NodeClass)
                                  : node.kind() == NodeKind::Slot  ? SlotPage(NodeClass)
                                                                   : ModulePage(NodeClass);
    if (page)
        Apply(*page);
    const QSignalBlocker noTabChange(pages_.TabStrip1); // it is no change by the operator
    pages_.TabStrip1->setCurrentIndex(0);
    if (NodeClass == BaseUnitModel)
        FillSlotList(key);
    main_.ListView1->hide();
    main_.Frame1->show();
}

void PageSelection::Apply(const PageDescription &page)
{
    for (const std::string &name : page.hidden) {
        if (QWidget *control = pages_.Control(name))
            control->hide();
    }
    for (const std::string &name : page.shown) {
        if (QWidget *control = pages_.Control(name))
            control->show();
    }
    for (const std::string &name : page.enabled) {
        if (QWidget *control = pages_.Control(name))
            control->setEnabled(true);
    }
    for (const auto &[name, caption] : page.captions) {
        if (QWidget *control = pages_.Control(name))
            SetCaption(control, caption);
    }
}

void PageSelection::FillSlotList(const std::string &key)
{
    pages_.ListView3900->clear();
    int row = 0;
    for (const std::string &child : main_.Nodes.Children(key)) {
        if (row++ == SlotListRows)
            break;
        const NodeKey slot(child);
        const SlotListRow description = SlotListRowOf(slot.model());
        pages_.ListView3900->AddRow(child, {ToQString(std::string("  ") + slot.slot()),
                                            ToQString(description.name), ToQString(description.description)});
    }
}

/// Shows the console above the page as the reset left it, and takes up the refresh state again behind it.
void PageSelection::ShowConsole(const std::string &key)
{
    const NoYieldHold noYield(main_);
    main_.ListView1->hide();
    main_.Frame1->show();
    const std::string speed(BaudSpeedText(main_.CmbPBaudrate->currentIndex()));
    main_.SelectedNodeKey = key;
    Q_EMIT ConsoleAsked(NodeClass, speed);
}

void PageSelection::RightClick(const std::string &key)
{
    if (main_.LastNodeIndex == 0)
        main_.LastNodeIndex = 1;
    const std::string page = TagOf(main_.Frame1);
    const NodeKind kind = NodeKey(key).kind();
    if (kind == NodeKind::Port)
        PopupCOM(key);
    else if (kind == NodeKind::Module)
        PopupVORNModule(key);
    if (main_.Nodes.Count() > 0)
        main_.Nodes.Select(main_.Nodes.KeyAt(main_.LastNodeIndex));
    NotePort(main_.Nodes.Selected());
    ClickGuard = false;
    // An action that put up another page leaves the old page's refresh to end.
    if (TagOf(main_.Frame1) == page)
        main_.PauseRefresh = false;
    main_.Timer1.start();
}

void PageSelection::PopupCOM(const std::string &key)
{
    main_.CommPortNo = PortOfPortKey(key);
    ShowMenuOfPort(main_, key);
    QWidget *slotIO = pages_.Control("FrameSlotIO");
    const bool shown = IsShown(slotIO);
    slotIO->hide();
    QAction *chosen = Popup(main_.COM);
    slotIO->setVisible(shown);
    RunChosen(chosen);
}

void PageSelection::PopupVORNModule(const std::string &key)
{
    ShowMenuOfModule(main_, key);
    RunChosen(Popup(main_.VORNModule));
}

QAction *PageSelection::Popup(QMenu *menu)
{
    return menu->exec(QCursor::pos());
}

/// Runs what was chosen from a context menu, while the node that the menu belongs to is selected. The action
/// may choose nodes itself, so that the guard is lifted for it.
void PageSelection::RunChosen(QAction *chosen)
{
    ClickGuard = false;
    if (chosen)
        main_.RunAction(chosen);
}

void PageSelection::Timer1_Tick()
{
    if (main_.Gate.IsBusy() || main_.Gate.IsOnLine())
        return; // a menu may have selected another node; the end of what runs brings the next tick
    if (TagOf(main_.Frame1) != main_.Nodes.Selected())
        main_.Nodes.Select(main_.Nodes.KeyAt(main_.LastNodeIndex));
    const std::string selected = main_.Nodes.Selected();
    if (TagOf(main_.Frame1) != selected)
        return;
    const NodeKind kind = NodeKey(selected).kind();
    if (kind == NodeKind::PC || kind == NodeKind::Port)
        return;
    if (live_.IsRunning() || main_.PortRefused)
        return; // a refused port was told once; the next click tries again
    main_.PauseRefresh = false;
    live_.PollLiveData(selected);
}

void PageSelection::ListView3900_ItemClick(const std::string &key)
{
    if (key == TagOf(main_.Frame1))
        return;
    const std::string selected = main_.Nodes.Selected();
    if (NodeKey(selected).model() == BaseUnitModel && !main_.Nodes.IsExpanded(selected))
        main_.Nodes.SetExpanded(selected, true);
    main_.Nodes.Select(key);
}

void PageSelection::ListView3900_DblClick(const std::string &key)
{
    ListView3900_ItemClick(key);
    const std::string selected = main_.Nodes.Selected();
    if (TagOf(main_.Frame1) == selected)
        return;
    main_.ChooseNode(selected);
}

} // namespace vorn
