#include "shell/FormMain.h"

#include "platform/Events.h"
#include "platform/HelpViewer.h"
#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/RowList.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

constexpr QSize StartSize(Pixels(9000), Pixels(7000));
constexpr QSize MinimumSize(Pixels(9000), Pixels(7200));
constexpr int TreeWidth = Pixels(2700);

constexpr ListColumn ListColumns[] = {
    {"Init State", 560}, {"Address (Hex)", 900}, {"Model", 600}, {"Description", 4600}};

struct ToolButtonRow {
    const char *key; ///< null for a separator
    const char *tip;
    const char *icon;
};
constexpr ToolButtonRow ToolButtons[] = {
    {"TSaveFile", "Save", "save"},
    {nullptr, nullptr, nullptr},
    {"TSearch", "Search", "search"},
    {"TTerminal", "Terminal", "terminal"},
    {"TScope", "Data scope", "scope"},
    {nullptr, nullptr, nullptr},
    {"TSaveSet", "Save Configuration", "saveset"},
    {"TLoadSet", "Load Configuration", "loadset"},
    {nullptr, nullptr, nullptr},
    {"THelp", "Help", "help"},
};

QIcon ToolIcon(const char *name)
{
    return QIcon(QStringLiteral(":/toolbar/%1.svg").arg(QLatin1String(name)));
}

} // namespace

FormMain::FormMain(const Host &host)
    : Gate([this] { return pageOnShow_; }),
      TreeView1(Named(new TreeView, "TreeView1", QStringLiteral("Device tree"))), Nodes(*TreeView1),
      MSComm1(host.ports), Time(host.clock), PlatformId(host.platformId)
{
    setObjectName(QStringLiteral("FormMain"));
    setWindowTitle(QStringLiteral("VORN 7000/3900 Series Setup / Utility Program"));
    BuildMenus();
    BuildToolbar();
    BuildPanes();
    BuildStatusBar();
    setMinimumSize(MinimumSize);
    resize(StartSize);

    Timer1.setObjectName(QStringLiteral("Timer1"));
    Timer1.setInterval(std::chrono::milliseconds(100));
    Timer1.setSingleShot(true);

    connect(TreeView1, &TreeView::NodeClick, this, [this](const QString &key, bool left) {
        const auto choose = [this, key = FromQString(key), left] {
            NodeLeftClick = left;
            Nodes.Select(key);
            TreeView1_NodeClick(key);
            SelectPage();
        };
        if (left)
            Gate.TakeInPlace({.context = this, .action = choose, .source = TreeView1});
        else
            Gate.Take({.context = this, .action = choose});
    });
}

FormMain::~FormMain() = default;

QAction *FormMain::AddAction(QMenu *menu, const char *name, const char *caption, const char *icon)
{
    auto *action = new QAction(QString::fromLatin1(caption), this);
    action->setObjectName(QString::fromLatin1(name));
    if (icon)
        action->setIcon(ToolIcon(icon));
    menu->addAction(action);
    return action;
}

void FormMain::BuildMenus()
{
    const auto addMenu = [this](const char *name, const char *caption) {
        QMenu *menu = menuBar()->addMenu(QString::fromLatin1(caption));
        menu->setObjectName(QString::fromLatin1(name));
        menu->setToolTipsVisible(true);
        return menu;
    };
    File = addMenu("File", "&File");
    Save = AddAction(File, "Save", "&Save", "save");
    File->addSeparator();
    exit = AddAction(File, "exit", "&Exit");
    connect(exit, &QAction::triggered, this, &QWidget::close);

    Tools = addMenu("Tools", "&Tools");
    Search = AddAction(Tools, "Search", "&Search", "search");
    Terminal = AddAction(Tools, "Terminal", "&Terminal", "terminal");
    Data_Scope = AddAction(Tools, "Data_Scope", "&Data Scope", "scope");
    Tools->addSeparator();
    VORNLoadSet =
        AddAction(Tools, "VORNLoadSet", "&Download configuration file to set environment", "loadset");
    VORNSaveSet = AddAction(Tools, "VORNSaveSet", "&Save configuration file", "saveset");

    Help = addMenu("Help", "&Help");
    VORNHelp = AddAction(Help, "VORNHelp", "&On Line Help", "help");
    VORNHelp->setShortcut(QKeySequence::HelpContents);
    VORNabout = AddAction(Help, "VORNabout", "&About VORN Utility..");
    connect(VORNHelp, &QAction::triggered, this,
            [this] { ShowHelp(HelpPageOfPage ? HelpPageOfPage() : QString()); });

    COM = Named(new QMenu(this), "COM");
    CSearch = AddAction(COM, "CSearch", "Search", "search");
    CTerminal = AddAction(COM, "CTerminal", "Terminal", "terminal");
    CData_Scope = AddAction(COM, "CData_Scope", "Data Scope", "scope");

    VORNModule = Named(new QMenu(this), "VORNModule");
    AVORNLoadSet =
        AddAction(VORNModule, "AVORNLoadSet", "Download configuration file to set environment", "loadset");
    AVORNSaveSet = AddAction(VORNModule, "AVORNSaveSet", "Save configuration file", "saveset");
}

void FormMain::BuildToolbar()
{
    Toolbar1 = Named(new QToolBar(this), "Toolbar1", QStringLiteral("Toolbar"));
    Toolbar1->setWindowTitle(QStringLiteral("Toolbar"));
    Toolbar1->setMovable(false);
    Toolbar1->setIconSize(QSize(24, 24));
    for (const ToolButtonRow &row : ToolButtons) {
        if (!row.key) {
            Toolbar1->addSeparator();
            continue;
        }
        QAction *button = Toolbar1->addAction(ToolIcon(row.icon), QString::fromLatin1(row.tip));
        button->setObjectName(QString::fromLatin1(row.key));
    }
    addToolBar(Toolbar1);
    connect(ToolButton(HelpButton), &QAction::triggered, VORNHelp, &QAction::trigger);
}

QAction *FormMain::ToolButton(int index) const
{
    return Toolbar1->actions().at(index - 1);
}

void FormMain::BuildPanes()
{
    ListView1 = Named(new RowList(ListColumns), "ListView1", QStringLiteral("Modules of the port"));

    Frame1 = Named(new QGroupBox, "Frame1", QStringLiteral("Page"));
    auto *pages = new QWidget;
    pageLayout_ = new QVBoxLayout(pages);
    pageLayout_->setContentsMargins(Rhythm::Margin / 2, Rhythm::Margin / 2, Rhythm::Margin / 2,
                                    Rhythm::Margin);
    pageLayout_->setSpacing(Rhythm::BetweenFrames);
    auto *scroll = Named(new QScrollArea(Frame1), "PageScroll");
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(pages);
    auto *frameLayout = new QVBoxLayout(Frame1);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    frameLayout->addWidget(scroll);

    auto *right = new QWidget;
    auto *rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addWidget(ListView1);
    rightLayout->addWidget(Frame1);

    LabMove = Named(new QSplitter(Qt::Horizontal), "LabMove");
    LabMove->addWidget(TreeView1);
    LabMove->addWidget(right);
    LabMove->setChildrenCollapsible(false);
    LabMove->setStretchFactor(1, 1);
    // Wide enough for a module's text, also in a larger font.
    const int text = TreeView1->fontMetrics().horizontalAdvance(QStringLiteral("(00) 7282D"));
    const int tree = qMax(TreeWidth, text + TreeWidth / 2);
    LabMove->setSizes({tree, StartSize.width() - tree});
    setCentralWidget(LabMove);
}

void FormMain::BuildStatusBar()
{
    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1_1 = Named(new QLabel, "StatusBar1_1", QStringLiteral("Status"));
    StatusBar1_1->setTextFormat(Qt::PlainText);
    // A long text is cut at the window's edge instead of widening the window.
    StatusBar1_1->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(StatusBar1_1, 1);
}

void FormMain::ChooseNode(const std::string &key)
{
    NodeLeftClick = true;
    TreeView1_NodeClick(key);
    SelectPage();
}

/// A click that was not handled takes its selection back: commands go to the port of the selected node.
void FormMain::SelectPage()
{
    if (Nodes.Selected() != pageOnShow_ && Nodes.Contains(pageOnShow_))
        Nodes.Select(pageOnShow_);
}

void FormMain::TreeView1_NodeClick(const std::string &key)
{
    if (nodeClick_)
        nodeClick_(key);
}

void FormMain::OnAction(std::initializer_list<QAction *> entries, const std::function<void()> &handler)
{
    const QObject *source = *entries.begin(); // however it is chosen, it is one action
    for (QAction *entry : entries) {
        actionHandlers_.insert(entry, handler);
        const bool ofContextMenu = COM->actions().contains(entry) || VORNModule->actions().contains(entry);
        if (!ofContextMenu)
            connect(entry, &QAction::triggered, this, [this, source, handler] {
                TakeForPage(this, source, [handler](const NodeKey &) { handler(); });
            });
    }
}

void FormMain::RunAction(QAction *entry)
{
    if (const auto handler = actionHandlers_.value(entry))
        handler();
}

void FormMain::TakeForPage(QObject *context, const Gate::Source &source,
                           const std::function<void(const NodeKey &)> &handler,
                           const std::function<void()> &dropped)
{
    Gate.Take({.context = context,
               .action = [handler, node = NodeKey(pageOnShow_)] { handler(node); },
               .source = source,
               .page = pageOnShow_,
               .dropped = dropped});
}

void FormMain::SetPage(const std::string &key)
{
    SetTag(Frame1, key);
    SetPageOnShow(key);
}

NodeKey FormMain::PageNode() const
{
    return NodeKey(TagOf(Frame1));
}

void FormMain::ArrangePage()
{
    pageLayout_->activate();
    LabMove->refresh();
}

void FormMain::ShowHelp(const QString &page)
{
    if (!help_) {
        help_ = new HelpViewer;
        help_->setAttribute(Qt::WA_DeleteOnClose);
    }
    help_->ShowPage(page);
}

/// The end of the main window is the end of the program, whatever is waiting or looping below.
void FormMain::closeEvent(QCloseEvent *event)
{
    if (MayEnd && !MayEnd()) {
        event->ignore();
        return;
    }
    Q_EMIT Unload();
    MSComm1.SetPortOpen(false);
    EndProgram();
}

} // namespace vorn
