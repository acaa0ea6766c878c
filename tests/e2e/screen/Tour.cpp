#include "screen/Tour.h"

#include "Program.h"
#include "consoles/ConsoleForm.h"
#include "platform/WidgetText.h"
#include "protocol/ModelCatalogue.h"
#include "shell/Controls.h"
#include "shell/RowList.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QToolBar>
#include <QTreeWidget>

#include <algorithm>
#include <iostream>
#include <sstream>
#include <thread>

struct TourStop {
    const char *name; ///< of the page, for people
    const char *file; ///< of its picture
    vorn::NodeKind kind;
    std::vector<std::string_view> models; ///< the first node of one of them is visited
    std::vector<const char *> live;       ///< controls of which one gets a value from the module
};

namespace
{

using Kind = vorn::NodeKind;

const TourStop Stops[] = {
    {"analog input", "analog-input", Kind::Module, {"7203", "7203D", "7206", "7209", "7212D"}, {"LabRdv"}},
    {"strain gauge", "strain-gauge", Kind::Module, {"7218"}, {"TextAAOv"}},
    {"eight analog inputs", "eight-inputs", Kind::Module, {"7221", "7224", "7224M"}, {"LabAIv_7"}},
    {"analog output", "analog-output", Kind::Module, {"7231"}, {"LabReadBack"}},
    {"digital input and output",
     "digital",
     Kind::Module,
     {"7252", "7256", "7258", "7272"},
     {"LabDHv", "LabDLv"}},
    {"counter", "counter", Kind::Module, {"7282", "7282D", "7282N"}, {"LabFCv_1"}},
    {"base unit", "base-unit", Kind::Module, {"3900E", "3900"}, {"ListView3900"}},
    {"slot", "slot", Kind::Slot, {"3921", "3923", "3923H", "3925"}, {"TextCH_0"}},
    {"channel", "channel", Kind::Channel, {"3921", "3923", "3923H", "3925"}, {"LabChannelValue"}},
    {"digital slot", "digital-slot", Kind::Slot, {"3942", "3944", "3946", "3948"}, {"LabDHv", "LabDLv"}},
};

constexpr const char *Consoles[] = {"7216", "7221P", "7224P", "7227", "7234", "7254", "7262", "7276"};

/// Large enough for every page to be seen whole.
constexpr Desktop::Size WindowSize{900, 760};
/// A rack without wires answers at once, so that a search need not wait long at the addresses where nobody
/// is.
const char *const TimeOut = "20";

/// What a control holds of the module, whether or not it is on show.
QString Value(const QWidget *control)
{
    if (const auto *label = qobject_cast<const QLabel *>(control))
        return label->text();
    if (const auto *field = qobject_cast<const QLineEdit *>(control))
        return field->text();
    if (const auto *list = qobject_cast<const QTreeWidget *>(control))
        return list->topLevelItemCount() > 0 ? QString::number(list->topLevelItemCount()) : QString();
    return {};
}

/// Place of a widget, or of a part of it, on the screen.
QRect OnScreen(const QWidget &widget, const QRect &part)
{
    return {widget.mapToGlobal(part.topLeft()), part.size()};
}

QTreeWidgetItem *FindItem(const QTreeWidget &view, const std::string &key)
{
    for (QTreeWidgetItemIterator i(const_cast<QTreeWidget *>(&view)); *i; ++i) {
        if (vorn::FromQString((*i)->data(0, Qt::UserRole).toString()) == key)
            return *i;
    }
    return nullptr;
}

} // namespace

Tour::Tour(vorn::Program &program, Desktop &desktop, std::filesystem::path folder)
    : program_(program), desktop_(desktop), folder_(std::move(folder))
{
}

void Tour::Walk()
{
    OpenWindow();
    TakePicture("port-page");
    ShortenTimeOut();
    UseTerminal();
    UseDataScope();
    Search();
    TakePicture("module-list");
    for (const TourStop &stop : Stops)
        Visit(stop);
    for (const char *model : Consoles)
        VisitConsole(model);
    ShowHelp();
    PrintTree();
}

/// Waits for something in the program. A message box that comes up meanwhile is the end of the tour.
void Tour::Await(const std::function<bool()> &condition, const std::string &what) const
{
    std::string box;
    const auto look = [&] {
        if (const auto *message = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
            box = vorn::FromQString(message->windowTitle() + QStringLiteral(": ") + message->text());
        return condition();
    };
    const bool came = Desktop::WaitFor([&] { return Gui(look) || !box.empty(); });
    if (!box.empty())
        throw std::runtime_error("waiting for " + what + ", but the program says: " + box);
    if (!came)
        throw std::runtime_error(what + " doesn't come");
}

void Tour::Click(const std::function<QRect()> &place) const
{
    const QPoint middle = Gui(place).center();
    desktop_.Click(middle.x(), middle.y());
}

void Tour::TakePicture(const char *name, const std::function<QWidget *()> &window) const
{
    const std::filesystem::path file = folder_ / (std::string(name) + ".png");
    const bool taken = Gui([&] {
        QWidget *shown = window();
        if (!shown)
            return false;
        shown->repaint();
        const QRect frame = shown->frameGeometry();
        return shown->screen()
            ->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height())
            .save(QString::fromStdString(file.string()));
    });
    if (!taken)
        throw std::runtime_error("the picture " + file.string() + " can't be taken");
    std::cout << "  " << file.string() << std::endl;
}

void Tour::TakePicture(const char *name) const
{
    TakePicture(name, [this]() -> QWidget * { return &program_.Main; });
}

void Tour::OpenWindow()
{
    vorn::FormMain &main = program_.Main;
    Await([&] { return main.isActiveWindow(); }, "the main window");
    const std::string window = desktop_.ActiveWindow();
    desktop_.Resize(window, WindowSize);
    Await([&] { return main.width() == WindowSize.width && main.height() == WindowSize.height; },
          "the larger main window");
    const std::string port = Gui([&] { return main.Nodes.KeyAt(2); });
    std::cout << "Pictures:" << std::endl;
    Choose(port);
}

void Tour::ShortenTimeOut()
{
    QPointer<QLineEdit> field = program_.Main.TextTimeOut;
    Click([&] { return OnScreen(*field, field->rect()); });
    Await([&] { return field->hasFocus(); }, "the time-out field");
    desktop_.Press({"ctrl+a"});
    desktop_.Type(TimeOut);
    Await([&] { return field->text() == QLatin1String(TimeOut); }, "the shorter time-out");
}

void Tour::PressTool(int button)
{
    vorn::FormMain &main = program_.Main;
    Click([&] {
        const QWidget *tool = main.Toolbar1->widgetForAction(main.ToolButton(button));
        return OnScreen(*tool, tool->rect());
    });
}

/// Asks the first address of the port for its model.
void Tour::UseTerminal()
{
    vorn::FormMain &main = program_.Main;
    PressTool(vorn::FormMain::TerminalButton);
    Await([&] { return main.FormFull_Screen && main.FormFull_Screen->isActiveWindow(); }, "the terminal");
    desktop_.Type("$01M");
    desktop_.Press({"Return"});
    Await(
        [&] {
            const auto *log = main.FormFull_Screen->findChild<QPlainTextEdit *>(QStringLiteral("Text1"));
            return log->blockCount() > 2;
        },
        "the reply in the terminal");
    TakePicture("terminal", [&] { return main.FormFull_Screen.data(); });
    desktop_.Press({"alt+x"});
    Await([&] { return main.FormFull_Screen.isNull() && main.isActiveWindow(); }, "the end of the terminal");
}

/// Listens at the last port for a while, on which the demo rack has another master.
void Tour::UseDataScope()
{
    vorn::FormMain &main = program_.Main;
    const std::string first = Gui([&] { return main.Nodes.KeyAt(2); });
    const std::string last = Gui([&] { return main.Nodes.Children(std::string(vorn::KeyPC)).back(); });
    if (last != first)
        Choose(last);
    PressTool(vorn::FormMain::ScopeButton);
    const auto scope = [&]() -> QWidget * {
        for (const QPointer<QWidget> &form : main.ScopeForm) {
            if (form && form->isVisible())
                return form.data();
        }
        return nullptr;
    };
    Await([&] { return scope() && scope()->isActiveWindow(); }, "the data scope");
    desktop_.Press({"alt+t"});
    Await([&] { return !scope()->findChild<QWidget *>(QStringLiteral("CmdStart"))->isEnabled(); },
          "the start of the data scope");
    std::this_thread::sleep_for(std::chrono::seconds(2)); // for lines of another master, if there is one
    TakePicture("data-scope", scope);
    Gui([&] { return scope()->close(); });
    Await([&] { return !scope() && main.isActiveWindow(); }, "the end of the data scope");
    if (last != first)
        Choose(first);
}

void Tour::Search()
{
    vorn::FormMain &main = program_.Main;
    Click([&] {
        const QWidget *button = main.Toolbar1->widgetForAction(main.ToolButton(vorn::FormMain::SearchButton));
        return OnScreen(*button, button->rect());
    });
    Await(
        [] {
            return QApplication::activeModalWidget() && QApplication::activeModalWidget()->isActiveWindow();
        },
        "the question for the start address");
    TakePicture("search-start", [] { return QApplication::activeModalWidget(); });
    desktop_.Press({"Return"});
    Await([&] { return main.FormScan && main.FormScan->isActiveWindow(); }, "the search");
    AwaitSearch();
}

/// A search lasts as long as there are addresses: it is waited for as long as it gets on.
void Tour::AwaitSearch()
{
    vorn::FormMain &main = program_.Main;
    const auto address = [&] {
        return main.FormScan ? main.FormScan->findChild<QLabel *>(QStringLiteral("LabScaningD"))->text()
                             : QString();
    };
    bool pictured = false;
    for (QString last = Gui(address); !last.isEmpty(); last = Gui(address)) {
        if (!pictured && last.toInt() > 0) {
            TakePicture("search", [&] { return main.FormScan.data(); });
            pictured = true;
        }
        Await([&] { return address() != last; }, "the next address of the search");
    }
    const std::string port = Gui([&] { return main.Nodes.KeyAt(2); });
    Await([&] { return main.isEnabled() && main.Nodes.IsExpanded(port) && main.ListView1->isVisible(); },
          "the end of the search");
}

void Tour::Visit(const TourStop &stop)
{
    const std::string key = Gui([&] { return FirstNode(stop); });
    if (key.empty()) {
        std::cout << "  (no " << stop.name << " on this rack)" << std::endl;
        return;
    }
    const auto control = [&](const char *name) {
        return program_.Main.findChild<QWidget *>(QLatin1String(name));
    };
    const auto value = [&](const char *name) { return Value(control(name)); };
    // Pages share controls: one may still hold what the page before left there.
    const auto before = Gui([&] {
        QHash<QLatin1String, QString> texts;
        for (const char *name : stop.live)
            texts[QLatin1String(name)] = value(name);
        return texts;
    });
    Choose(key);
    const auto filled = [&] {
        return std::ranges::any_of(stop.live, [&](const char *name) {
            return control(name)->isVisible() && !value(name).isEmpty() &&
                   value(name) != before[QLatin1String(name)];
        });
    };
    Await(filled, std::string("a value on the page of ") + stop.name);
    TakePicture(stop.file);
}

/// Opens the console of a model, waits until it polls, and leaves it by the keyboard.
void Tour::VisitConsole(const char *model)
{
    const std::string key = Gui([&] { return FirstNode({model, model, Kind::Module, {model}, {}}); });
    if (key.empty())
        return;
    Reveal(key);
    Click([&] { return PlaceOf(key); });
    const auto console = [] { return qobject_cast<vorn::ConsoleForm *>(QApplication::activeModalWidget()); };
    Await([&] { return console() && console()->isActiveWindow() && console()->tmrTimer.isActive(); },
          std::string("the console of ") + model);
    TakePicture((std::string("console-") + model).c_str(), console);
    desktop_.Press({"Escape"});
    Await([&] { return !console() && vorn::TagOf(program_.Main.Frame1) == key; }, "the end of the console");
}

std::string Tour::FirstNode(const TourStop &stop) const
{
    const vorn::TreeNodes &nodes = program_.Main.Nodes;
    const std::string port = nodes.KeyAt(2);
    for (int i = 3; i <= nodes.Count(); ++i) {
        const std::string key = nodes.KeyAt(i);
        const vorn::NodeKey node(key);
        if (nodes.ParentKey(key) == vorn::KeyPC || node.port() != vorn::PortOfPortKey(port))
            continue;
        if (node.kind() == stop.kind && std::ranges::find(stop.models, node.model()) != stop.models.end())
            return key;
    }
    return {};
}

/// Where a node's text is on the screen; it is in sight.
QRect Tour::PlaceOf(const std::string &key) const
{
    const vorn::TreeView &tree = *program_.Main.TreeView1;
    const QRect place = tree.visualItemRect(FindItem(tree, key));
    return OnScreen(*tree.viewport(), place.intersected(tree.viewport()->rect()));
}

void Tour::Unfold(const std::string &key)
{
    const vorn::TreeNodes &nodes = program_.Main.Nodes;
    if (Gui([&] { return nodes.IsExpanded(key); }))
        return;
    Choose(key);
    desktop_.Press({"Right"});
    Await([&] { return nodes.IsExpanded(key); }, "what is below " + Gui([&] { return nodes.Text(key); }));
}

/// Unfolds what the node is in, and turns the wheel until it is in sight.
void Tour::Reveal(const std::string &key)
{
    const vorn::TreeView &tree = *program_.Main.TreeView1;
    const std::string parent = Gui([&] { return program_.Main.Nodes.ParentKey(key); });
    if (!parent.empty())
        Unfold(parent);
    const auto above = [&] { return tree.visualItemRect(FindItem(tree, key)).top() < 0; };
    const auto below = [&] {
        return tree.visualItemRect(FindItem(tree, key)).bottom() > tree.viewport()->rect().bottom();
    };
    const auto scrolled = [&] { return tree.verticalScrollBar()->value(); };
    const QPoint middle = Gui([&] { return OnScreen(tree, tree.rect()).center(); });
    while (Gui([&] { return above() || below(); })) {
        const int before = Gui(scrolled);
        if (Gui(above))
            desktop_.WheelUp(middle.x(), middle.y());
        else
            desktop_.WheelDown(middle.x(), middle.y());
        Await([&] { return scrolled() != before; }, "the end of the tree");
    }
}

void Tour::Choose(const std::string &key)
{
    vorn::FormMain &main = program_.Main;
    Reveal(key);
    Click([&] { return PlaceOf(key); });
    Await([&] { return vorn::TagOf(main.Frame1) == key && main.Nodes.Selected() == key; },
          "the page of " + Gui([&] { return main.Nodes.Text(key); }));
}

void Tour::ShowHelp()
{
    const auto viewer = []() -> QWidget * {
        QWidget *window = QApplication::activeWindow();
        return window && window->objectName() == QLatin1String("HelpViewer") ? window : nullptr;
    };
    desktop_.Press({"F1"});
    Await([&] { return viewer() != nullptr; }, "the help page");
    TakePicture("help", viewer);
    desktop_.Press({"Escape"});
    Await([&] { return program_.Main.isActiveWindow(); }, "the main window behind the help page");
}

void Tour::PrintTree() const
{
    const vorn::TreeNodes &nodes = program_.Main.Nodes;
    std::ostringstream lines;
    const std::function<void(const std::string &, int)> print = [&](const std::string &key, int depth) {
        lines << std::string(static_cast<std::size_t>(2 + 2 * depth), ' ') << nodes.Text(key) << "\n";
        for (const std::string &child : nodes.Children(key))
            print(child, depth + 1);
    };
    Gui([&] {
        print(nodes.KeyAt(1), 0);
        return true;
    });
    std::cout << "The tree:\n" << lines.str() << std::flush;
}
