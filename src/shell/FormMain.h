#pragma once

#include "platform/MSComm.h"
#include "protocol/CalibrationMode.h"
#include "protocol/NodeKey.h"
#include "shell/Gate.h"
#include "shell/TreeNodes.h"
#include "shell/TreeView.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;
class QToolBar;
class QVBoxLayout;

namespace vorn
{

class Clock;
class HelpViewer;
class RowList;
class SerialPorts;

/// What the machine supplies to the program.
struct Host {
    /// Platform id of the NT line of operating systems, the one with short serial waits.
    static constexpr int PlatformNT = 2;

    const SerialPorts &ports;
    const Clock &clock;
    int platformId = PlatformNT;
};

/// The one main window: tree, module list, page frame, menus, toolbar, status bar, the public state that all
/// handlers share, and the one serial transaction. What the menus do and what the pages hold is attached from
/// outside.
class FormMain final : public QMainWindow
{
    Q_OBJECT

public:
    explicit FormMain(const Host &host);
    ~FormMain() override;

    // The bus.

    /// One transaction: opens the selected port, sends `cmd` (with its checksum appended to it, if asked
    /// for), waits for a reply line and closes the port. The reply is left in `ReplyText`, and returned:
    /// empty if nothing came or the port was refused; a reply that lost its carriage return leaves the reply
    /// before in place. A call inside a running transaction does nothing. The windows are served meanwhile.
    std::string trans(std::string &cmd, bool checksum);
    std::string trans(std::string &&cmd, bool checksum) { return trans(cmd, checksum); }

    /// Whether a COM port exists, by opening it; one that another owner holds exists.
    bool checkcomm(int port);

    /// Shows a text in panel 1 of the status bar.
    void NowStatus(std::string_view text);

    int CommPortNo = 0;         ///< port of the present transaction
    std::string ReplyText;      ///< reply of the last transaction, without its carriage return
    bool TransBusy = false;     ///< a transaction is running, or an unexpected error has silenced the bus
    bool PortRefused = false;   ///< the last transaction found its port missing or held, and told so
    bool NoYield = false;       ///< the bus belongs to the live refresh or to a page load; see `NoYieldHold`
    bool StopScan = false;      ///< a search is to end
    bool PauseRefresh = false;  ///< the live refresh is to end; see `RefreshHold`
    bool OutputEditing = false; ///< the operator works on an output entry; the refresh leaves it alone

    /// Everything that the operator does goes through here.
    class Gate Gate;
    /// Takes an action about the page on show, for which `handler` gets the key of its node; see `Gate` for
    /// its `source`. `dropped` runs in its place when another page has come on show.
    void TakeForPage(QObject *context, const Gate::Source &source,
                     const std::function<void(const NodeKey &)> &handler,
                     const std::function<void()> &dropped = {});

    /// One entry for each port found at start: the digit of its `CmbPBaudrate` position, then its number
    /// ("32" is COM2 at position 3). A search writes the entry of its port.
    std::vector<std::string> PortBaudList;
    void SetPortBaud(int port, int baudIndex);

    // The selection.

    /// Loads the page of a node as a left click does.
    void ChooseNode(const std::string &key);
    /// Chooses a node: loads its page if `NodeLeftClick`, else opens its menu.
    void TreeView1_NodeClick(const std::string &key);
    /// What `TreeView1_NodeClick` runs; the pages attach themselves here.
    void OnNodeClick(std::function<void(const std::string &key)> handler) { nodeClick_ = std::move(handler); }

    /// Key of the node whose page the operator sees, also while that page is still being loaded. Empty before
    /// the first.
    const std::string &PageOnShow() const { return pageOnShow_; }
    void SetPageOnShow(const std::string &key) { pageOnShow_ = key; }
    /// Makes a node that is loaded the one that `Frame1` is tagged with.
    void SetPage(const std::string &key);
    /// Key of the page that is loaded.
    NodeKey PageNode() const;

    bool NodeLeftClick = false;    ///< a node click loads the page (left) instead of opening a menu (right)
    int LastNodeIndex = 0;         ///< place in `Nodes` of the node whose page is shown
    int SelectedPort = 0;          ///< port of the selection
    std::string SelectedNodeKey;   ///< node handed to a console
    std::string ConsoleNewAddress; ///< address that a console gave its module, two hexadecimal digits
    std::string ConsoleAddress;    ///< address that the last console spoke to when it closed
    std::string OutputFormatCode = "00"; ///< data format digit and range digit of the open analog output page

    std::array<bool, 256> ScopeOnPort{};            ///< a data scope is open on that port
    std::array<QPointer<QWidget>, 256> ScopeForm{}; ///< that window
    bool TerminalStop = false;                      ///< the terminal's send loop is to end
    bool TerminalOwnsPort = false;                  ///< the running transaction is the terminal's
    QPointer<QWidget> FormFull_Screen;              ///< the terminal
    QPointer<QWidget> FormScan;                     ///< progress window of a long handler

    // The window.

    TreeView *TreeView1;
    TreeNodes Nodes;
    RowList *ListView1;
    QGroupBox *Frame1; ///< the page of the selected node; its tag is that node's key
    QSplitter *LabMove;
    QTimer Timer1; ///< one-shot that restarts the refresh after a click
    MSComm MSComm1;
    const Clock &Time;
    int PlatformId;

    // Fields of the port page, read at each transaction.
    QPointer<QLineEdit> TextTimeOut; ///< milliseconds
    QPointer<QLineEdit> TextPretix;  ///< sent in front of each command
    QPointer<QComboBox> CmbPBaudrate;

    // Menu entries, by control name.
    QMenu *File, *Tools, *Help;
    QMenu *COM, *VORNModule; ///< context menus of a port and of a module
    QAction *Save, *exit;
    QAction *Search, *Terminal, *Data_Scope, *VORNLoadSet, *VORNSaveSet;
    QAction *CSearch, *CTerminal, *CData_Scope;
    QAction *AVORNLoadSet, *AVORNSaveSet;
    QAction *VORNHelp, *VORNabout;

    // Toolbar; button i counts from 1, separators included.
    static constexpr int SaveFileButton = 1, SearchButton = 3, TerminalButton = 4, ScopeButton = 5,
                         SaveSetButton = 7, LoadSetButton = 8, HelpButton = 10;
    QToolBar *Toolbar1;
    QAction *ToolButton(int index) const;

    /// Attaches one handler to entries of menus and toolbar, for the page that is on show when one is chosen.
    /// An entry of a context menu runs by `RunAction` only, while the node that the menu belongs to is still
    /// selected.
    void OnAction(std::initializer_list<QAction *> entries, const std::function<void()> &handler);
    void RunAction(QAction *entry);

    /// Layout in which the frames of the pages stand one below the other.
    QVBoxLayout *PageLayout() const { return pageLayout_; }
    /// Puts the page into the space left.
    void ArrangePage();
    /// Shows the help page of a subject; the contents if there is none.
    void ShowHelp(const QString &page);
    /// Asked before the program ends at the operator's wish; a work that must not be broken off unawares.
    std::function<bool()> MayEnd;
    /// Names the help page that F1 opens for the page on show.
    std::function<QString()> HelpPageOfPage;

Q_SIGNALS:
    /// The program ends now; what holds a port lets it go.
    void Unload();
    /// A module's node has another key and text.
    void NodeChanged(const std::string &oldKey, const std::string &newKey);
    /// A button of a page opens the calibration of its node.
    void CalibrationAsked(const NodeKey &node, CalibrationMode mode);
    /// A data scope was opened or closed: the port's tools change.
    void ScopesChanged();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void BuildMenus();
    void BuildToolbar();
    void BuildStatusBar();
    void BuildPanes();
    QAction *AddAction(QMenu *menu, const char *name, const char *caption, const char *icon = nullptr);

    void Transact(std::string &cmd, bool checksum);
    int PortOfTransaction() const;
    void TransError(int number);
    void SelectPage();

    std::string pageOnShow_;
    std::optional<std::uint64_t> refusedIn_; ///< action in which a refused port was told; 0 outside of any
    std::function<void(const std::string &)> nodeClick_;
    QHash<QAction *, std::function<void()>> actionHandlers_;
    QVBoxLayout *pageLayout_ = nullptr;
    QLabel *StatusBar1_1 = nullptr;
    QPointer<HelpViewer> help_;
};

} // namespace vorn
