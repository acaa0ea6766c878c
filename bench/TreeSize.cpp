// The largest tree that there can be: at every address a base unit of eight slots with eight channels each.

#include "Figures.h"
#include "Measures.h"
#include "Stand.h"

#include "shell/RowList.h"

#include <QApplication>
#include <QTreeWidget>

#include <stdexcept>

namespace
{

constexpr int TimeOut = 80;
constexpr int Addresses = 256;
constexpr int NodesOfUnit = 1 + 8 + 8 * 8;

struct Times {
    double search; ///< milliseconds, with the bus, the nodes and the list
    double unfold; ///< milliseconds, with the painting
    double Both() const { return search + unfold; }
};

void UnfoldAll(vorn::FormMain &main, const std::string &key)
{
    for (const std::string &child : main.Nodes.Children(key)) {
        if (main.Nodes.HasChildren(child)) {
            main.Nodes.SetExpanded(child, true);
            UnfoldAll(main, child);
        }
    }
}

/// The units stand at the last addresses, so that a search from the first of them on asks nobody else.
Times BuildAndUnfold(Stand &stand, int units)
{
    stand.ChoosePort(Stand::TreePort, Baud9600, TimeOut);
    vorn::FormMain &main = stand.Main();
    const std::string key = vorn::PortKey(Stand::TreePort);
    main.Nodes.RemoveChildren(key);
    const int before = main.Nodes.Count();
    Times times{};
    times.search = stand.Search(Addresses - units).count();
    const auto start = Steady::now();
    UnfoldAll(main, key);
    QApplication::processEvents();
    main.repaint();
    times.unfold = Milliseconds(Steady::now() - start).count();
    if (main.Nodes.Count() - before != units * NodesOfUnit ||
        main.ListView1->topLevelItemCount() != units * 9)
        throw std::runtime_error("the search didn't find all that is there");
    main.Nodes.RemoveChildren(key);
    return times;
}

} // namespace

void MeasureTree(Stand &stand, Figures &figures)
{
    const Times small = BuildAndUnfold(stand, 64);
    const Times half = BuildAndUnfold(stand, 128);
    const Times full = BuildAndUnfold(stand, 256);
    const auto detail = [](const Times &times) {
        return "found and listed in " + Decimal(times.search, 0) + " ms, unfolded in " +
               Decimal(times.unfold, 0) + " ms";
    };
    const std::string what = " base units of 8 slots of 8 channels, found and unfolded";
    figures.Note("64" + what, small.Both() / 1000, "s", detail(small));
    figures.Note("128" + what, half.Both() / 1000, "s", detail(half));
    figures.Add("256" + what, full.Both() / 1000, 2, "s", detail(full));
    figures.Add("growth from 64 to 256 base units, 4 being linear", full.Both() / small.Both(), 5, "x",
                "from 128 to 256: " + Decimal(full.Both() / half.Both(), 2));
}
