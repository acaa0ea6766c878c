// A hurried operator: clicks, keys, menus, entries and pulled adapters at random, on the real program and a
// rack with faults and late replies. The same seed does the same things, though the program's own timing may
// differ.
//
//   vornhurry [--seed N] [--seconds S]
//
// The run itself is a process of its own, which ends when the operator closes the window, whatever is going
// on then; only status 0 passes.

#include "support/Operator.h"
#include "support/PortsFolder.h"

#include "simulator/Simulator.h"

#include "Program.h"
#include "calibration/FormCalibration.h"
#include "consoles/ConsoleWindow.h"
#include "platform/Clock.h"
#include "platform/ProgramDirectory.h"
#include "platform/SerialPorts.h"
#include "shell/DIO.h"
#include "shell/FormScan.h"
#include "shell/RowList.h"
#include "tools/FormFull_Screen.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProcess>
#include <QSlider>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

const char *const RackText =
    "port 2 speed=9600 delay=15\n"
    "module 7272 address=01,02 restart=50\n"
    "module 7206 address=05 restart=300\n"
    "module 7231 address=06 restart=50\n"
    "module 7221 address=08 restart=50\n"
    "module 3900 address=0A slots=3951,3923,-,3962\n"
    "module 7224M address=0B memory=FF020000A records=30 eventrecords=20 restart=50\n"
    "module 7221P address=0C restart=50\n"
    "module 7234 address=0D restart=50\n"
    "port 3 speed=9600 delay=30\n"
    "module 7282 address=07 range=50 stage=0 restart=50\n"
    "module 7212D address=09 restart=50\n"
    "port 4 speed=9600 delay=60\n"
    "module 7256 address=01\n"
    "module 7276 address=02 restart=50\n"
    "module 7216 address=03 restart=50\n"
    "module 7272 address=FE restart=50\n";
constexpr int RackPorts[] = {2, 3, 4};
/// Ports with false and late replies. The modules of the other one tell their display by a digit, and behind
/// a digit above 2, which a reply to another question may hold in its place, no click is handled any more.
constexpr int FaultyPorts[] = {2, 4};

/// Without being served for so long, the window counts as dead. Far above what is wanted (50 ms), so that a
/// loaded machine doesn't fail by chance; the longest time seen is printed.
constexpr auto Dead = 2s;
constexpr auto Patience = 90s; ///< for the end of what runs; a ready wait alone takes up to 30 s

class Hurry
{
public:
    Hurry(unsigned seed, int seconds) : random_(seed), seconds_(seconds) {}

    [[noreturn]] void Run();

private:
    using Address = std::pair<int, std::string>; ///< port, two digits

    void Operate();
    void Serve();
    void Act();
    bool AnswerModal();
    void AnswerMenu(QMenu &menu);
    void ClickNode();
    void Press();
    void ChooseTab();
    void Type();
    void Slide();
    void ClickRow();
    void Tool();
    void Leave(QWidget &window);
    void Disturb();
    void CheckWrites();
    void CheckRefresh();
    void Fail(const std::string &what);
    std::string State();

    int Below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }
    template <class Widget>
    Widget *Any(const std::function<bool(Widget *)> &wanted = {});
    QWidgetList OtherWindows();
    QWidget *AnyWindow();

    std::mt19937 random_;
    int seconds_;
    int acts_ = 0;
    std::string last_; ///< what was done last
    Clock::duration longest_{};
    std::set<Address> onShow_; ///< modules whose page was on show at an act since all was idle

    QTemporaryDir files_; ///< stands in for the program directory
    PortsFolder folder_;
    vornsim::Simulator rack_{vornsim::ParseRack(RackText), folder_.Path()};
    vorn::SerialPorts ports_;
    vorn::Clock clock_;
    vorn::Program program_{{.ports = ports_, .clock = clock_}};
    Operator hand_;
    std::thread thread_;
};

void Hurry::Fail(const std::string &what)
{
    std::printf("FAILED behind act %d (%s): %s\n", acts_, last_.c_str(), what.c_str());
    std::fflush(stdout);
    std::_Exit(1);
}

/// What the window is at, for one who looks for the cause.
std::string Hurry::State()
{
    const vorn::FormMain &main = program_.Main;
    std::string state = "page " + main.PageOnShow() + ", selected " + main.Nodes.Selected();
    const std::pair<const char *, bool> flags[] = {
        {"action runs", main.Gate.IsRunning()}, {"actions", main.Gate.IsBusy()},
        {"on line", main.Gate.IsOnLine()},      {"refresh pauses", main.PauseRefresh},
        {"refresh runs", main.NoYield},         {"port refused", main.PortRefused}};
    for (const auto &[name, set] : flags)
        state += set ? std::string(", ") + name : std::string{};
    for (const QWidget *window : QApplication::topLevelWidgets())
        state +=
            window->isVisible() ? ", window \"" + window->windowTitle().toStdString() + '"' : std::string{};
    return state;
}

void Hurry::Run()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    if (!QFile::copy(programs.filePath(QStringLiteral("Mem.ory")),
                     files_.filePath(QStringLiteral("Mem.ory"))))
        Fail("no empty workbook");
    vorn::SetProgramDirectory(files_.path());
    rack_.Start();
    if (!program_.Load())
        Fail("no ports");
    program_.Main.TextTimeOut->setText(QStringLiteral("120"));
    auto &nodes = program_.Main.Nodes;
    for (const char *module :
         {"017272", "027272", "057206", "067231", "087221", "0A3900", "0B7224M", "0C7221P", "0D7234"}) {
        const std::string text = module;
        nodes.Add("KeyCOM002", "_0002!!" + text, "(" + text.substr(0, 2) + ") " + text.substr(2), "vorn4ico",
                  "vorn4icoS");
    }
    nodes.Add("_0002!!0A3900", "_000200A3951", "(S0) 3951", "vorn5cico", "vorn5cicoS");
    nodes.Add("KeyCOM003", "_0003!!077282", "(07) 7282", "vorn4ico", "vorn4icoS");
    nodes.Add("KeyCOM003", "_0003!!097212D", "(09) 7212D", "vorn4ico", "vorn4icoS");
    for (const char *module : {"017256", "027276", "037216"}) {
        const std::string text = module;
        nodes.Add("KeyCOM004", "_0004!!" + text, "(" + text.substr(0, 2) + ") " + text.substr(2), "vorn4ico",
                  "vorn4icoS");
    }
    program_.Main.show();
    thread_ = std::thread([this] { Operate(); });
    for (;;)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

/// The operator, on a thread of his own, as the program's handlers loop inside the event loop.
void Hurry::Operate()
{
    const auto end = Clock::now() + std::chrono::seconds(seconds_);
    while (Clock::now() < end) {
        hand_.Gui([this] { Act(); });
        for (int i = Below(6); i > 0; --i)
            Serve();
        if (Below(40) == 0)
            Disturb();
    }
    CheckRefresh();
    // Somewhere in the middle of something.
    for (int i = Below(20); i > 0; --i) {
        hand_.Gui([this] { Act(); });
        Serve();
    }
    std::printf(
        "%d acts, longest without being served %lld ms\n", acts_,
        static_cast<long long>(std::chrono::duration_cast<std::chrono::milliseconds>(longest_).count()));
    std::fflush(stdout);
    hand_.Gui([this] { program_.Main.close(); });
    Fail("the window doesn't close");
}

/// Has an event served, and takes the time until it is.
void Hurry::Serve()
{
    const auto start = Clock::now();
    hand_.Gui([] {});
    longest_ = std::max(longest_, Clock::now() - start);
    if (longest_ > Dead)
        Fail("the window wasn't served in time");
    std::this_thread::sleep_for(2ms); // the pace of the hand
}

template <class Widget>
Widget *Hurry::Any(const std::function<bool(Widget *)> &wanted)
{
    QWidget *window = AnyWindow();
    QList<Widget *> all = window->findChildren<Widget *>();
    all.removeIf([&](Widget *widget) {
        return !widget->isVisible() || !widget->isEnabled() || (wanted && !wanted(widget));
    });
    return all.isEmpty() ? nullptr : all.at(Below(static_cast<int>(all.size())));
}

/// The windows beside the main window that are no modal ones.
QWidgetList Hurry::OtherWindows()
{
    QWidgetList windows;
    const auto append = [&windows](const QPointer<QWidget> &window) {
        if (window && window->isVisible())
            windows.append(window);
    };
    append(program_.Main.FormFull_Screen);
    append(program_.Main.FormScan);
    for (const int port : RackPorts)
        append(program_.Main.ScopeForm[static_cast<std::size_t>(port)]);
    return windows;
}

/// The modal window if there is one, else mostly the main window.
QWidget *Hurry::AnyWindow()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    const QWidgetList windows = QWidgetList{&program_.Main} + OtherWindows();
    return Below(3) ? windows.first() : windows.at(Below(static_cast<int>(windows.size())));
}

void Hurry::Act()
{
    CheckWrites();
    ++acts_;
    if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
        AnswerMenu(*menu);
        return;
    }
    if (QWidget *popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    if (AnswerModal())
        return;
    using Way = void (Hurry::*)();
    constexpr Way ways[] = {&Hurry::ClickNode, &Hurry::ClickNode, &Hurry::ClickNode, &Hurry::Tool,
                            &Hurry::Press,     &Hurry::Press,     &Hurry::ChooseTab, &Hurry::Type,
                            &Hurry::Slide,     &Hurry::ClickRow};
    const int first =
        QApplication::activeModalWidget() ? 4 : 0; // what a modal window lies above is out of reach
    (this->*ways[first + Below(static_cast<int>(std::size(ways)) - first)])();
}

void Hurry::AnswerMenu(QMenu &menu)
{
    last_ = "menu";
    for (int i = Below(4); i > 0; --i)
        QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Below(2) ? Qt::Key_Return : Qt::Key_Escape);
}

/// A modal window that stays open, as a page does.
bool IsWorkedIn(const QWidget *modal)
{
    return qobject_cast<const vorn::ConsoleWindow *>(modal) ||
           qobject_cast<const vorn::FormCalibration *>(modal);
}

bool Hurry::AnswerModal()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal)
        return false;
    if (!IsWorkedIn(modal))
        last_ = "window " + modal->windowTitle().toStdString();
    if (Below(4) == 0)
        return true; // looks at it for a while
    if (auto *box = qobject_cast<QMessageBox *>(modal)) {
        const auto buttons = box->buttons();
        buttons.at(Below(static_cast<int>(buttons.size())))->click();
    } else if (auto *input = qobject_cast<QInputDialog *>(modal)) {
        if (Below(3)) {
            input->setTextValue(QString::number(235 + Below(25)));
            input->accept();
        } else {
            input->reject();
        }
    } else if (!IsWorkedIn(modal) || Below(12) == 0) {
        modal->close();
    } else {
        return false;
    }
    return true;
}

void Hurry::ClickNode()
{
    vorn::TreeView *tree = program_.Main.TreeView1;
    std::vector<QTreeWidgetItem *> items;
    for (QTreeWidgetItemIterator item(tree); *item; ++item) {
        if (tree->visualItemRect(*item).isValid())
            items.push_back(*item);
    }
    if (items.empty() || !tree->isEnabled())
        return;
    QTreeWidgetItem *item = items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))];
    last_ = "node " + item->text(0).toStdString();
    tree->scrollToItem(item);
    const QPoint place = tree->visualItemRect(item).center();
    if (Below(8) == 0) {
        QTest::mouseClick(tree->viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(tree->viewport(), &menu);
    } else if (Below(8) == 0) {
        QTest::keyClick(tree, Below(2) ? Qt::Key_Right : Qt::Key_Left);
    } else {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
    }
}

/// A button, a tick or a lamp.
void Hurry::Press()
{
    if (auto *lamp = Below(2) ? Any<vorn::DIO>() : nullptr) {
        last_ = "lamp " + lamp->objectName().toStdString();
        QTest::mouseClick(lamp, Qt::LeftButton, {}, QPoint(14, lamp->height() / 2));
    } else if (auto *button = Any<QAbstractButton>()) {
        last_ = "button " + button->objectName().toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
    }
}

void Hurry::ChooseTab()
{
    if (auto *tabs = Any<QTabBar>()) {
        last_ = "tab";
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(Below(tabs->count())).center());
    }
}

/// Types into an entry that says nothing of the line itself, which a wrong text silences for good.
void Hurry::Type()
{
    auto *entry = Any<QLineEdit>([](QLineEdit *line) {
        return line->objectName() != QLatin1String("TextTimeOut") &&
               line->objectName() != QLatin1String("TextPretix");
    });
    if (!entry)
        return;
    last_ = "entry " + entry->objectName().toStdString();
    const bool terminal = entry->objectName() == QLatin1String("TextCommand");
    if (Below(2))
        QTest::keyClick(entry, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(entry, terminal ? QStringLiteral("$012") : QString::number(Below(300)));
    if (Below(2))
        QTest::keyClick(entry, Qt::Key_Return);
}

void Hurry::Slide()
{
    constexpr Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End};
    if (auto *slider = Any<QSlider>()) {
        last_ = "slider";
        for (int i = 1 + Below(5); i > 0; --i)
            QTest::keyClick(slider, keys[Below(5)]);
    } else if (auto *list = Any<QComboBox>([](QComboBox *box) {
                   return box->objectName() != QLatin1String("CmbPBaudrate") &&
                          box->objectName() != QLatin1String("CmbBaudrate");
               })) {
        last_ = "list " + list->objectName().toStdString();
        QTest::keyClick(list, Below(2) ? Qt::Key_Down : Qt::Key_Up);
    }
}

void Hurry::ClickRow()
{
    auto *list = Any<vorn::RowList>();
    if (!list || list->topLevelItemCount() == 0)
        return;
    last_ = "row of " + list->objectName().toStdString();
    const QTreeWidgetItem *row = list->topLevelItem(Below(list->topLevelItemCount()));
    const QPoint place = list->visualItemRect(row).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    if (Below(2))
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
}

/// Closes a window. A search is stopped by its button, as closing by anything but its frame lets it run on.
void Hurry::Leave(QWidget &window)
{
    if (auto *search = qobject_cast<vorn::FormScan *>(&window))
        QTest::mouseClick(search->Command1, Qt::LeftButton);
    else
        window.close();
}

/// Toolbar, menus, F1, and the frames of other windows.
void Hurry::Tool()
{
    last_ = "tool";
    vorn::FormMain &main = program_.Main;
    QWidget *window = AnyWindow();
    if (window != &main) {
        if (Below(3) == 0)
            Leave(*window);
        return;
    }
    if (!main.isEnabled())
        return;
    const int button = std::array{3, 4, 5, 10}[static_cast<std::size_t>(Below(4))];
    if (Below(6) == 0)
        QTest::keyClick(&main, Qt::Key_F1);
    else if (Below(6) == 0)
        main.VORNabout->trigger();
    else if (QWidget *tool = main.Toolbar1->widgetForAction(main.ToolButton(button)); tool->isEnabled())
        QTest::mouseClick(tool, Qt::LeftButton);
}

/// What happens to the rack: faults come and go, adapters are pulled and plugged in.
void Hurry::Disturb()
{
    const int port = FaultyPorts[Below(2)];
    switch (Below(6)) {
    case 0:
        rack_.Pull(RackPorts[Below(3)]);
        break;
    case 1:
    case 2:
        for (const int each : RackPorts)
            rack_.Return(each);
        break;
    case 3:
        rack_.SetDelay(port, std::chrono::milliseconds(Below(200)));
        break;
    case 4: {
        using enum vornsim::Fault::Kind;
        constexpr vornsim::Fault::Kind kinds[] = {Silent,      Refuse, Garbage,      Split, Late,    NoReturn,
                                                  InnerReturn, Lone,   WrongAddress, Long,  AllBytes};
        const auto kind = kinds[Below(static_cast<int>(std::size(kinds)))];
        rack_.SetFault(port, "", {.kind = kind, .times = 1 + Below(20)});
        break;
    }
    default:
        rack_.ClearFaults();
        break;
    }
}

/// Whether a line switches, sets or configures something. Lines that some models take for a question and
/// others for a write are left out.
bool IsWrite(const std::string &line)
{
    if (line.size() < 4)
        return false;
    const std::string verb = line.substr(3, 2);
    switch (line.front()) {
    case '%':
        return line.substr(1, 2) != "00"; // a search tries those
    case '@':
        return std::ranges::count(
                   std::vector<std::string>{"DO", "EA", "DA", "CA", "CE", "HI", "LO", "PA", "SA"}, verb) > 0;
    case '#':
        return line.size() >= 7 && line[3] != 'S';
    default:
        return false;
    }
}

/// No write goes to a module whose page wasn't on show at an act since all was idle.
void Hurry::CheckWrites()
{
    for (const int port : RackPorts) {
        for (const std::string &line : rack_.Commands(port)) {
            if (IsWrite(line) && !onShow_.contains({port, line.substr(1, 2)}))
                Fail("a write to a module that wasn't on show: COM" + std::to_string(port) + " " + line);
        }
    }
    rack_.ClearTrace();
    vorn::FormMain &main = program_.Main;
    if (!main.Gate.IsBusy() && !main.Gate.IsOnLine())
        onShow_.clear();
    const std::string &page = main.PageOnShow();
    if (page.starts_with("_") || page.starts_with("*"))
        onShow_.insert({vorn::NodeKey(page).port(), vorn::NodeKey(page).busAddress()});
    for (const auto *console : main.findChildren<vorn::ConsoleWindow *>())
        onShow_.insert({console->NodeKey.port(), console->NodeKey.busAddress()});
}

/// When all is over and a module is chosen, its values are read on and on.
void Hurry::CheckRefresh()
{
    for (const int port : RackPorts)
        rack_.Return(port);
    rack_.ClearFaults();
    const std::string key = "_0004!!017256";
    const auto deadline = Clock::now() + Patience;
    const auto await = [&](const char *what, const std::function<bool()> &condition) {
        while (!hand_.Gui(condition)) {
            if (Clock::now() > deadline)
                Fail(std::string("this never came: ") + what + "; " + hand_.Gui([this] { return State(); }));
            Serve();
        }
    };
    await("the end of all actions", [&] {
        CheckWrites();
        if (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        else if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
        else if (const QWidgetList others = OtherWindows(); !others.isEmpty())
            Leave(*others.first());
        else
            return !program_.Main.Gate.IsBusy();
        return false;
    });
    hand_.Gui([&] {
        vorn::FormMain &main = program_.Main;
        if (!main.Nodes.Contains(key))
            main.Nodes.Add("KeyCOM004", key, "(01) 7256", "vorn4ico", "vorn4icoS");
        vorn::TreeView *tree = main.TreeView1;
        for (QTreeWidgetItemIterator item(tree); *item; ++item) {
            if ((*item)->data(0, Qt::UserRole).toString() != QString::fromStdString(key))
                continue;
            for (QTreeWidgetItem *parent = (*item)->parent(); parent; parent = parent->parent())
                tree->SetExpandedSilently(parent, true);
            tree->scrollToItem(*item);
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(*item).center());
        }
    });
    last_ = "the last node";
    await("the refresh", [&] { return std::ranges::count(rack_.Commands(4), "$016") > 3; });
}

int RunChild(unsigned seed, int seconds)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--child"), QStringLiteral("--seed"), QString::number(seed),
                 QStringLiteral("--seconds"), QString::number(seconds)});
    const bool ended = child.waitForFinished((seconds + 150) * 1000);
    const QByteArray output = child.readAll();
    const bool passed = ended && child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0 &&
                        output.contains("longest without being served");
    if (!passed)
        std::printf("%s\nFAILED with --seed %u --seconds %d (%s)\n", output.constData(), seed, seconds,
                    ended ? "status" : "no end");
    else
        std::printf("%s", output.mid(output.lastIndexOf('\n', output.size() - 2) + 1).constData());
    return passed ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    ::setenv("LC_ALL", "C.UTF-8", 1);
    QLocale::setDefault(QLocale::c());
    QApplication application(argc, argv);
    vorn::InitResources();
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList words = QApplication::arguments();
    const auto number = [&](const char *name, int otherwise) {
        const qsizetype at = words.indexOf(QLatin1String(name));
        return at > 0 && at + 1 < words.size() ? words.at(at + 1).toInt() : otherwise;
    };
    const auto seed = static_cast<unsigned>(number("--seed", 1));
    const int seconds = number("--seconds", 15);
    if (!words.contains(QLatin1String("--child")))
        return RunChild(seed, seconds);
    Hurry(seed, seconds).Run();
}
