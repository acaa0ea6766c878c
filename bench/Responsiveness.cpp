// How long the program leaves the window alone.

#include "Figures.h"
#include "Measures.h"
#include "Probe.h"
#include "Stand.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <semaphore>
#include <thread>

namespace
{

using namespace std::chrono_literals;

constexpr double MostTime = 50;  // milliseconds, whatever the time-out
constexpr double Allowance = 20; // milliseconds on top of the time-out, for a click

void Report(const Probe &probe, const std::string &what, int timeOut, Figures &figures)
{
    figures.Add(what, probe.Longest(), MostTime, "ms",
                "time-out " + std::to_string(timeOut) + " ms; " + std::to_string(probe.Count()) +
                    " looks, half of them within " + Decimal(probe.Middle(), 2) + " ms");
}

void InASearch(Stand &stand, Figures &figures)
{
    constexpr int TimeOut = 20;
    stand.ChoosePort(Stand::FaultyPort, Baud9600, TimeOut);
    Probe probe;
    stand.Search(0);
    probe.End();
    Report(probe, "longest time without serving events, in a search", TimeOut, figures);
}

/// The place of a node in the tree, in sight.
QPointF PlaceOf(const vorn::TreeView &tree, const std::string &text)
{
    const auto items = tree.findItems(QString::fromStdString(text), Qt::MatchExactly | Qt::MatchRecursive);
    return tree.visualItemRect(items.front()).center();
}

/// A click as the window system brings it.
void ClickNode(vorn::TreeView &tree, const std::string &text)
{
    const QPointF place = PlaceOf(tree, text);
    QWidget *view = tree.viewport();
    const QPointF global = view->mapToGlobal(place);
    for (const auto &[type, held] : {std::pair(QEvent::MouseButtonPress, Qt::LeftButton),
                                     std::pair(QEvent::MouseButtonRelease, Qt::NoButton)})
        QCoreApplication::postEvent(
            view, new QMouseEvent(type, place, global, Qt::LeftButton, held, Qt::NoModifier),
            Qt::HighEventPriority);
}

/// Polls a module that answers all but its reading, so that each round has a wait to its end.
void InARefresh(Stand &stand, Figures &figures)
{
    constexpr int TimeOut = 500;
    stand.ChoosePort(Stand::FastPort, Baud9600, TimeOut);
    vorn::FormMain &main = stand.Main();
    const std::string portKey = vorn::PortKey(Stand::FastPort);
    const std::string healthy = vorn::ModuleKey(false, '0', "002", "!017203");
    const std::string mute = vorn::ModuleKey(false, '0', "002", "!037203");
    main.Nodes.RemoveChildren(portKey);
    main.Nodes.Add(portKey, healthy, "(01) 7203", "vorn4ico", "vorn4icoS");
    main.Nodes.Add(portKey, mute, "(03) 7203", "vorn4ico", "vorn4icoS");
    main.Nodes.SetExpanded(portKey, true);

    Probe probe;
    std::vector<double> clicks;
    Steady::time_point asked;
    const auto taken = QObject::connect(main.TreeView1, &vorn::TreeView::NodeClick, &main, [&] {
        clicks.push_back(Milliseconds(Steady::now() - asked).count());
    });
    std::atomic<bool> clicking = true;
    std::thread hand([&] {
        std::this_thread::sleep_for(1s);
        for (int i = 0; clicking && i < 40; ++i) {
            asked = Steady::now();
            ClickNode(*main.TreeView1, i % 2 ? "(03) 7203" : "(01) 7203");
            std::this_thread::sleep_for(std::chrono::milliseconds(171 + 13 * (i % 7)));
        }
        QMetaObject::invokeMethod(
            &main, [&] { clicking = false; }, Qt::QueuedConnection);
    });
    stand.Choose(mute);
    while (clicking)
        Stand::Rest(20ms);
    hand.join();
    stand.Choose(portKey);
    QObject::disconnect(taken);
    probe.End();
    Report(probe, "longest time without serving events, in a refresh", TimeOut, figures);
    figures.Add("longest time until a click in a refresh is taken",
                *std::max_element(clicks.begin(), clicks.end()), TimeOut + Allowance, "ms",
                std::to_string(clicks.size()) +
                    " clicks between a module that answers and one that doesn't, half of "
                    "them within " +
                    Decimal(Median(clicks), 2) + " ms");
}

/// Updates a module that doesn't answer for three seconds then.
void InAnUpdate(Stand &stand, Figures &figures)
{
    constexpr int TimeOut = 500;
    stand.ChoosePort(Stand::FastPort, Baud9600, TimeOut);
    vorn::FormMain &main = stand.Main();
    const std::string portKey = vorn::PortKey(Stand::FastPort);
    const std::string key = vorn::ModuleKey(false, '0', "002", "!047206");
    main.Nodes.RemoveChildren(portKey);
    main.Nodes.Add(portKey, key, "(04) 7206", "vorn4ico", "vorn4icoS");
    stand.Choose(key);
    Stand::Rest(1s);
    stand.Answers().Message.reset();
    Probe probe;
    main.findChild<QAbstractButton *>(QStringLiteral("CmdMUpdate"))->click();
    while (!stand.Answers().Message || main.Gate.IsBusy())
        Stand::Rest(20ms);
    probe.End();
    stand.Choose(portKey);
    Report(probe, "longest time without serving events, in an update", TimeOut, figures);
}

} // namespace

void MeasureResponsiveness(Stand &stand, Figures &figures)
{
    InASearch(stand, figures);
    InARefresh(stand, figures);
    InAnUpdate(stand, figures);
}
