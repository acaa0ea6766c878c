// Whatever runs, whatever comes meanwhile: the bus carries the one, then the other, and nothing in between.
//
// Each running action is stopped in the middle by a reply that the test holds back; then the operator acts,
// and the reply goes out. What the two do when they are alone is measured first, on a program that does
// nothing else; together they must do the same, one behind the other.

#include "support/LateBus.h"
#include "support/ProgramRun.h"

#include "simulator/Simulator.h"

#include "protocol/PollList.h"
#include "shell/DIO.h"
#include "tools/FormFull_Screen.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>

using Lines = std::vector<std::string>;

namespace
{

const std::string OtherModule = "_0002!!017256";
const std::string CardOfUnit = "_00022!0A3951";
const char *const Patient = "30000"; ///< Time Out that no test lives to see

const std::string Updated = "64 / Configuration is successful / Configuration is successful !";

const std::string NothingFound = "16 / COM2 No Modules found ! / Please Check:\n\n"
                                 "   <1> Communication port and baudrate \n"
                                 "   <2> Power supply voltage ( +10 to +30 VDC) \n"
                                 "   <3> Power wiring\n"
                                 "   <4> Communication line wiring\n"
                                 "   <5> Firmware version\n\n"
                                 "Then execute the 'Search' function to repeat scan";

enum class Source { None, ModuleUpdate };

/// What a model's line in the rack says so that its page shows what is acted on.
std::string SettingsOf(const std::string &model)
{
    if (model == "3900")
        return " slots=-,-,3951";
    if (model == "7282")
        return " range=50 stage=0"; // a counter with the TTL input
    return {};
}

/// The program with the module that all is about at 0A, and another one at 01.
class Bench : public ProgramRun
{
public:
    explicit Bench(const std::string &model) : model_(model), key_("_0002!!0A" + model) {}

    const std::string &Model() const { return model_; }
    const std::string &Key() const { return key_; }
    LateBus &Bus() { return bus_; }

    void AddNodes(Operator &op)
    {
        op.Gui([&] {
            SetTimeOut(Patient);
            auto &nodes = main().Nodes;
            nodes.Add("KeyCOM002", OtherModule, "(01) 7256", "vorn4ico", "vorn4icoS");
            nodes.Add("KeyCOM002", key_, "(0A) " + model_, "vorn4ico", "vorn4icoS");
            if (model_ == "3900")
                nodes.Add(key_, CardOfUnit, "(S2) 3951", "vorn5cico", "vorn5cicoS");
        });
    }
    void SetTimeOut(const char *milliseconds)
    {
        main().TextTimeOut->setText(QString::fromLatin1(milliseconds));
    }
    void AwaitHeld(Operator &op, const std::string &begin)
    {
        op.WaitFor([&] { return !bus_.Held().empty(); }, ("the line " + begin).c_str());
    }

    void Press(const char *name) { Click(Find<QPushButton>(name)); }
    static void Click(QWidget *widget)
    {
        ASSERT_TRUE(widget && widget->isVisible() && widget->isEnabled());
        QTest::mouseClick(widget, Qt::LeftButton);
    }
    void Lamp(const char *name)
    {
        auto *lamp = Find<vorn::DIO>(name);
        ASSERT_TRUE(lamp->isVisible()) << name;
        QTest::mouseClick(lamp, Qt::LeftButton, {}, QPoint(14, lamp->height() / 2));
    }
    void Slide(Qt::Key key)
    {
        auto *slider = Find<QSlider>("Slider1");
        ASSERT_TRUE(slider->isVisible());
        QTest::keyClick(slider, key);
    }
    void Enter(const char *text)
    {
        auto *entry = Find<QLineEdit>("TextAnalogOut");
        ASSERT_TRUE(entry->isVisible());
        QTest::keyClick(entry, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(entry, QString::fromLatin1(text));
        QTest::keyClick(entry, Qt::Key_Return);
    }
    vorn::FormFull_Screen *Terminal()
    {
        return qobject_cast<vorn::FormFull_Screen *>(main().FormFull_Screen.data());
    }

private:
    std::string model_, key_;
    LateBus bus_{ports.Link(2), "module 7256 address=01 restart=0\nmodule " + model_ +
                                    " address=0A restart=0" + SettingsOf(model_)};
};

/// Something that is going on when the operator acts.
struct Running {
    std::string name;
    std::string model = {}; ///< empty: any, as the act wants it
    std::string held = {};  ///< begin of the line whose reply is held back; "*" for any, empty for a box
    std::function<void(Operator &, Bench &)> prepare = {}; ///< before the page is chosen
    std::function<void(Operator &, Bench &)> open = {};    ///< on the page, before anything is held back
    std::function<void(Operator &, Bench &)> begin;
    std::vector<std::string> boxes = {}; ///< that come of it: style, title, text
    Qt::CursorShape pointer = Qt::ArrowCursor;
    Source source = Source::None;
    bool reachable = true;    ///< the main window takes clicks meanwhile
    bool leaves = false;      ///< the page goes when it runs
    bool loading = false;     ///< what a load shows last isn't on the screen yet
    bool onItsOwnPage = true; ///< false: on the port's page, with nothing of a module on the screen
};

/// Something that the operator does meanwhile.
struct Act {
    std::string name;
    std::string models = "7272"; ///< whose pages have the control; the first is the one for any
    bool needsControl = false;   ///< only those models' pages have it
    bool ofPage = false;         ///< dropped with the page
    std::function<void(Bench &)> act;
    std::vector<std::string> shown = {}; ///< boxes and menus that come of it
    Source source = Source::None;
    bool hiddenInLoad = false;
    bool choosesOther = false; ///< the page of the other module is on show behind it
};

/// Prints what a parameter is called.
void PrintTo(const Running &running, std::ostream *stream)
{
    *stream << running.name;
}

void OpenTerminal(Operator &op, Bench &bench)
{
    op.Gui([&] {
        auto &main = bench.main();
        Bench::Click(main.Toolbar1->widgetForAction(main.ToolButton(vorn::FormMain::TerminalButton)));
    });
    bench.AwaitActions(op);
}

void SendFromTerminal(Bench &bench)
{
    QTest::keyClicks(bench.Terminal()->TextCommand, QStringLiteral("$012"));
    Bench::Click(bench.Terminal()->CmdSend);
}

/// Does something to the page on the window's thread.
std::function<void(Operator &, Bench &)> OnPage(const std::function<void(Bench &)> &act)
{
    return [act](Operator &op, Bench &bench) { op.Gui([&] { act(bench); }); };
}

std::function<void(Operator &, Bench &)> Press(const char *button)
{
    return OnPage([button](Bench &bench) { bench.Press(button); });
}

// clang-format off
const std::vector<Running> &RunningActions()
{
    static const std::vector<Running> actions{
        {.name = "PageLoad", .held = "$0AF",
         .begin = OnPage([](Bench &bench) { bench.LeftClick(bench.Key()); }),
         .pointer = Qt::WaitCursor, .loading = true},
        {.name = "Refresh", .held = "*",
         .begin = OnPage([](Bench &) {})},
        {.name = "NodeThatWaits", .held = "*",
         .begin = [](Operator &op, Bench &bench) {
             bench.AwaitHeld(op, "of the refresh");
             op.Gui([&] { bench.LeftClick(OtherModule); });
         },
         .leaves = true},
        {.name = "ModuleUpdate", .held = "%0A",
         .begin = Press("CmdMUpdate"), .boxes = {Updated}, .source = Source::ModuleUpdate},
        {.name = "ReadyWait", .held = "$0A2",
         .begin = Press("CmdMUpdate"), .boxes = {Updated},
         .pointer = Qt::WaitCursor, .source = Source::ModuleUpdate},
        {.name = "AlarmUpdate", .model = "7206", .held = "@0AD",
         .begin = Press("CmdAlarmUpdata"),
         .boxes = {"64 / Alarm setting is complete ! / Alarm setting is complete !"}},
        {.name = "MappingUpdate", .model = "7212D", .held = "$0AA",
         .begin = Press("CmdLinearUpdata"), .boxes = {Updated}},
        {.name = "CounterUpdate", .model = "7282", .held = "$0A3",
         .open = [](Operator &op, Bench &bench) {
             op.Gui([&] { bench.Press("CmdCounterSet_0"); });
             bench.AwaitActions(op);
         },
         .begin = Press("ComCUpdata"),
         .boxes = {"64 / Counter setting is complete ! / Counter setting is complete !"},
         .pointer = Qt::WaitCursor},
        {.name = "FilterUpdate", .model = "7282", .held = "$0A1H",
         .begin = Press("ComFUpdata"),
         .boxes = {"64 / Filter setting is complete ! / Filter setting is complete !"}},
        {.name = "ChannelMask", .model = "7221", .held = "$0A5",
         .begin = OnPage([](Bench &bench) { QTest::keyClick(bench.Find("CheckAI_1"), Qt::Key_Space); })},
        {.name = "Lamp", .model = "7272", .held = "#0A1",
         .begin = OnPage([](Bench &bench) { bench.Lamp("DIOL_4"); })},
        {.name = "Slider", .model = "7231", .held = "#0A",
         .begin = OnPage([](Bench &bench) { bench.Slide(Qt::Key_PageUp); })},
        {.name = "Entry", .model = "7231", .held = "#0A",
         .begin = OnPage([](Bench &bench) { bench.Enter("2"); })},
        {.name = "Search", .held = "$FFM",
         .begin = [](Operator &op, Bench &bench) {
             bench.Search(op, "255");
         },
         .boxes = {NothingFound}, .pointer = Qt::BusyCursor, .reachable = false, .onItsOwnPage = false},
        {.name = "TerminalSend", .held = "$012",
         .prepare = OpenTerminal, .begin = OnPage(SendFromTerminal)},
        {.name = "BoxOpen",
         .begin = [](Operator &op, Bench &bench) {
             op.Gui([&] { bench.Press("CmdMUpdate"); });
             op.AwaitBox("the box");
         },
         .boxes = {Updated}, .source = Source::ModuleUpdate, .reachable = false},
    };
    return actions;
}

const std::vector<Act> &Acts()
{
    static const std::vector<Act> acts{
        {.name = "node, left", .act = [](Bench &bench) { bench.LeftClick(OtherModule); },
         .choosesOther = true},
        {.name = "node, right",
         .act = [](Bench &bench) { bench.ClickNode("KeyCOM002", Qt::RightButton); }, .shown = {"menu COM"}},
        {.name = "row of a list", .models = "3900", .needsControl = true, .ofPage = true,
         .act = [](Bench &bench) {
             auto *list = bench.Find<QTreeWidget>("ListView3900");
             const QPoint row = list->visualItemRect(list->topLevelItem(0)).center();
             QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
             QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row);
         }},
        {.name = "Update", .models = "7206 7212D 7221 7231 7272 7282", .needsControl = true, .ofPage = true,
         .act = [](Bench &bench) { bench.Press("CmdMUpdate"); }, .shown = {Updated},
         .source = Source::ModuleUpdate},
        {.name = "lamp", .models = "7272 7206 7212D", .needsControl = true, .ofPage = true,
         .act = [](Bench &bench) { bench.Lamp(bench.Model() == "7272" ? "DIOL_5" : "ADIO_0"); }},
        {.name = "slider", .models = "7231", .needsControl = true, .ofPage = true,
         .act = [](Bench &bench) { bench.Slide(Qt::Key_End); }, .hiddenInLoad = true},
        {.name = "Return in an entry", .models = "7231", .needsControl = true, .ofPage = true,
         .act = [](Bench &bench) { bench.Enter("5"); }, .hiddenInLoad = true},
        {.name = "menu", .ofPage = true,
         .act = [](Bench &bench) { bench.main().VORNabout->trigger(); }, .shown = {"window frmAbout"}},
        {.name = "toolbar", .act = [](Bench &bench) {
             auto &main = bench.main();
             Bench::Click(main.Toolbar1->widgetForAction(main.ToolButton(vorn::FormMain::HelpButton)));
         }},
        {.name = "F1", .act = [](Bench &bench) { QTest::keyClick(&bench.main(), Qt::Key_F1); }},
    };
    return acts;
}
// clang-format on

bool HasControl(const Act &act, const std::string &model)
{
    return !act.needsControl || (" " + act.models + " ").find(" " + model + " ") != std::string::npos;
}

/// What was seen on the bus and on the screen.
struct Seen {
    Lines lines; ///< without those of the refresh
    Lines boxes;
    std::string page;
    Qt::CursorShape pointer = Qt::ArrowCursor;
    bool help = false;
};

std::string FirstModel(const std::string &models)
{
    return models.substr(0, models.find(' '));
}

/// Lines of the refresh, which come as often as there is time for them.
std::set<std::string> Polls(const std::string &key)
{
    std::set<std::string> polls;
    const vorn::NodeKey node(key);
    for (const vorn::PollStep &step : vorn::PollSteps(node)) {
        for (int channel = 0; channel < step.channels; ++channel)
            polls.insert(vorn::Query(step.reg, node, channel));
    }
    return polls;
}

bool HelpIsOpen()
{
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget *window) {
        return window->isVisible() && window->objectName() == QLatin1String("HelpViewer");
    });
}

/// Answers whatever comes on the screen until nothing is left to do.
Lines AnswerAll(Operator &op, Bench &bench)
{
    using namespace std::chrono_literals;
    Lines shown;
    const auto deadline = std::chrono::steady_clock::now() + Operator::Patience;
    const auto step = [&] {
        if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
            shown.push_back("menu " + menu->objectName().toStdString());
            QTest::keyClick(menu, Qt::Key_Escape);
        } else if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            const int style = box->icon() == QMessageBox::Information ? 64 : 16;
            shown.push_back(std::to_string(style) + " / " + box->windowTitle().toStdString() + " / " +
                            box->text().toStdString());
            box->accept();
        } else if (QWidget *window = QApplication::activeModalWidget()) {
            shown.push_back("window " + window->objectName().toStdString());
            window->close();
        } else {
            return !bench.main().Gate.IsBusy();
        }
        return false;
    };
    while (!op.Gui(step)) {
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "There is no end of it behind " << ::testing::PrintToString(shown);
            break;
        }
        std::this_thread::sleep_for(2ms);
    }
    return shown;
}

/// The window paints and its timers tick while a reply is held back.
void ExpectServed(Operator &op, Bench &bench)
{
    struct Painted final : QObject {
        bool seen = false;
        bool eventFilter(QObject *, QEvent *event) override
        {
            seen |= event->type() == QEvent::Paint;
            return false;
        }
    };
    Painted *painted = nullptr;
    bool ticked = false;
    op.Gui([&] {
        painted = new Painted;
        bench.main().TreeView1->viewport()->installEventFilter(painted);
        bench.main().TreeView1->viewport()->update();
        QTimer::singleShot(0, &bench.main(), [&] { ticked = true; });
    });
    const auto deadline = std::chrono::steady_clock::now() + Operator::Patience;
    while (!op.Gui([&] { return painted->seen && ticked; })) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "The window isn't served";
            return;
        }
    }
    op.Gui([&] { delete painted; });
}

bool IsReachable(Bench &bench)
{
    return bench.main().isEnabled() && !QApplication::activeModalWidget();
}

/// Runs an action, an act of the operator's, or both, the act while the action is held up; `anyway` also when
/// the window takes no clicks.
Seen Drive(const std::string &model, const Running *running, const Act *act, bool anyway = false)
{
    Seen seen;
    Bench bench(model);
    bench.Operate([&](Operator &op) {
        bench.AddNodes(op);
        if (running && running->prepare)
            running->prepare(op, bench);
        if (!running || running->onItsOwnPage)
            bench.Choose(op, bench.Key());
        if (running && running->open)
            running->open(op, bench);
        bench.Bus().Forget();
        if (running) {
            if (!running->held.empty())
                bench.Bus().Hold(running->held == "*" ? "" : running->held);
            running->begin(op, bench);
            if (!running->held.empty())
                bench.AwaitHeld(op, running->held);
            op.Gui([&] {
                EXPECT_EQ(bench.main().cursor().shape(), running->pointer);
                EXPECT_EQ(IsReachable(bench), running->reachable);
            });
            ExpectServed(op, bench);
        }
        if (act) {
            op.Gui([&] {
                if (anyway || IsReachable(bench))
                    act->act(bench);
            });
            if (running && !running->held.empty()) {
                const Lines before = bench.Bus().Lines();
                ExpectServed(op, bench);
                EXPECT_EQ(bench.Bus().Lines(), before) << "nothing goes out in between";
                EXPECT_TRUE(op.Gui([] {
                    return !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
                })) << "nothing opens in between";
            }
        }
        seen.help = op.Gui([] { return HelpIsOpen(); });
        if (running && !running->onItsOwnPage) {
            op.Gui([&] { bench.SetTimeOut("1"); });
            bench.Bus().Send("?FF\r"); // nobody else is there to end the wait
        }
        bench.Bus().Release();
        seen.boxes = AnswerAll(op, bench);
        op.Gui([&] {
            seen.page = vorn::TagOf(bench.main().Frame1);
            seen.pointer = bench.main().cursor().shape();
            for (QWidget *window : QApplication::topLevelWidgets()) {
                if (window->objectName() == QLatin1String("HelpViewer"))
                    window->close();
            }
        });
        std::set<std::string> polls = Polls(bench.Key());
        for (const std::string &other : {OtherModule, CardOfUnit})
            polls.merge(Polls(other));
        for (const std::string &line : bench.Bus().Lines()) {
            if (!polls.contains(line))
                seen.lines.push_back(line);
        }
    });
    return seen;
}

Lines Joined(Lines first, const Lines &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class OverlapTest : public ::testing::TestWithParam<Running>
{
};

} // namespace

TEST_P(OverlapTest, OneComesBehindTheOther)
{
    const Running &running = GetParam();
    for (const Act &act : Acts()) {
        SCOPED_TRACE(running.name + ", meanwhile " + act.name);
        const std::string model = running.model.empty() ? FirstModel(act.models) : running.model;
        if (!HasControl(act, model) || (act.hiddenInLoad && running.loading))
            continue; // not on the screen
        const bool isUpdate = running.source == Source::ModuleUpdate;
        if (model == "3900" && (isUpdate || running.held == "*"))
            continue; // a base unit has no refresh, and takes an update in its INIT state only

        const Seen first = Drive(model, &running, nullptr);
        EXPECT_EQ(first.boxes, running.boxes);
        const Seen second = Drive(model, nullptr, &act);
        EXPECT_EQ(second.boxes, act.shown);
        const Seen both = Drive(model, &running, &act);

        const bool asked = running.reachable;
        const bool dropped = act.ofPage && running.leaves;
        const bool same = act.source != Source::None && act.source == running.source;
        // A node that is chosen in place of one that waits is loaded once.
        const bool inPlace = running.leaves && act.choosesOther;
        const bool runs = asked && !dropped && !same && !inPlace;
        EXPECT_EQ(both.lines, runs ? Joined(first.lines, second.lines) : first.lines);
        EXPECT_EQ(both.boxes, runs ? Joined(first.boxes, act.shown) : first.boxes);
        EXPECT_EQ(both.page, runs && !running.leaves ? second.page : first.page);
        EXPECT_EQ(both.pointer, Qt::ArrowCursor);
        EXPECT_EQ(both.help, asked && second.help) << "help opens at once";
    }
}

// Each in a process of its own, which the closing ends.
class OverlapDeathTest : public ::testing::TestWithParam<Running>
{
};

TEST_P(OverlapDeathTest, TheWindowCloses)
{
    const Running &running = GetParam();
    const Act close{.name = "close", .act = [](Bench &bench) {
                        if (!HasFailure())
                            bench.main().close();
                    }};
    const std::string model = running.model.empty() ? "7272" : running.model;
    EXPECT_EXIT(Drive(model, &running, &close, true), ::testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(All, OverlapDeathTest, ::testing::ValuesIn(RunningActions()),
                         [](const auto &parameter) { return parameter.param.name; });

INSTANTIATE_TEST_SUITE_P(All, OverlapTest, ::testing::ValuesIn(RunningActions()),
                         [](const auto &parameter) { return parameter.param.name; });

// The same on a bus that really is late.

class LateReplies : public ::testing::TestWithParam<int>
{
};

TEST_P(LateReplies, WhatIsClickedReachesItsOwnModule)
{
    ProgramRun run;
    vornsim::Simulator rack(vornsim::ParseRack("port 2 speed=9600 delay=" + std::to_string(GetParam()) +
                                               "\nmodule 7272 address=01,02 restart=0\n"),
                            run.ports.Path());
    rack.Start();
    run.Operate([&](Operator &op) {
        const std::string first = "_0002!!017272";
        const std::string second = "_0002!!027272";
        op.Gui([&] {
            run.main().TextTimeOut->setText(QString::fromLatin1(Patient));
            run.main().Nodes.Add("KeyCOM002", first, "(01) 7272", "vorn4ico", "vorn4icoS");
            run.main().Nodes.Add("KeyCOM002", second, "(02) 7272", "vorn4ico", "vorn4icoS");
        });
        run.Choose(op, first);
        rack.ClearTrace();
        op.WaitFor([&] { return !rack.Commands(2).empty(); }, "the refresh");
        op.Gui([&] {
            auto *lamp = run.Find<vorn::DIO>("DIOL_4");
            QTest::mouseClick(lamp, Qt::LeftButton, {}, QPoint(14, lamp->height() / 2));
            Bench::Click(run.Find<QPushButton>("CmdMUpdate"));
            run.LeftClick(second);
        });
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        run.AwaitActions(op);
        Lines writes;
        for (const std::string &line : rack.Commands(2)) {
            if (line.front() != '$')
                writes.push_back(line);
        }
        EXPECT_EQ(writes, (Lines{"#011001", "%0101400600"}));
        EXPECT_EQ(op.Gui([&] { return vorn::TagOf(run.main().Frame1); }), second);
    });
}

INSTANTIATE_TEST_SUITE_P(Milliseconds, LateReplies, ::testing::Values(300, 1200));
