// One transaction against the least that a host can do on the same line.

#include "BareTransaction.h"
#include "Figures.h"
#include "Measures.h"
#include "Stand.h"

#include "support/RawPeer.h"

#include "protocol/NodeKey.h"

#include <stdexcept>

namespace
{

constexpr int BaudIndex9600 = 3;
constexpr int BaudIndex115200 = 7;
constexpr int TimeOut = 500; // a busy machine is no reason to miss an answer

void Transaction(vorn::FormMain &main)
{
    main.trans(BareCommand, false);
    if (main.ReplyText.empty())
        throw std::runtime_error("the program gets no answer");
}

template <class Step>
double MicrosecondsEach(int count, Step step)
{
    const auto start = Steady::now();
    for (int i = 0; i < count; ++i)
        step();
    return Microseconds(Steady::now() - start).count() / count;
}

struct Line {
    const char *what;
    int port;
    int baudIndex;
    speed_t speed;
    double limit;
    int rounds;
    int count;
};

constexpr double NoLimit = 0;

constexpr Line Lines[] = {
    {"one transaction with a rack that isn't paced", Stand::FastPort, BaudIndex9600, B9600, 1.25, 41, 100},
    {"one transaction with a peer in the same process", Stand::BarePort, BaudIndex9600, B9600, NoLimit, 41,
     100},
    {"one transaction with a rack at 115200 bit/s", Stand::QuickPort, BaudIndex115200, B115200, 1.05, 21, 20},
    {"one transaction with a rack at 9600 bit/s", Stand::SlowPort, BaudIndex9600, B9600, 1.01, 21, 5},
};

/// Bare and whole transactions take turns, so that what else the machine does touches both alike.
void Compare(Stand &stand, const Line &line, Figures &figures)
{
    stand.ChoosePort(line.port, line.baudIndex, TimeOut);
    vorn::FormMain &main = stand.Main();
    const std::string path = stand.Link(line.port);
    std::vector<double> bare, whole, ratios;
    for (int round = 0; round < line.rounds; ++round) {
        bare.push_back(MicrosecondsEach(line.count, [&] { BareTransaction(path, line.speed); }));
        whole.push_back(MicrosecondsEach(line.count, [&] { Transaction(main); }));
        ratios.push_back(whole.back() / bare.back());
    }
    const std::string what(line.what);
    const std::string detail =
        Decimal(Median(whole), 1) + " us against " + Decimal(Median(bare), 1) + " us bare";
    if (line.limit == NoLimit)
        figures.Note(what, Median(ratios), "x", detail);
    else
        figures.Add(what, Median(ratios), line.limit, "x", detail);
}

} // namespace

void MeasureTransactions(Stand &stand, Figures &figures)
{
    // A peer that does nothing but answer, on the next core: shows what the program adds, with nothing to
    // hide it.
    RawPeer peer(stand.Link(Stand::BarePort));
    peer.Reply(BareCommand, "!017203\r");
    stand.Main().Nodes.Add(std::string(vorn::KeyPC), vorn::PortKey(Stand::BarePort),
                           vorn::PortText(Stand::BarePort), "close", "Terminal");
    for (const Line &line : Lines)
        Compare(stand, line, figures);
}
