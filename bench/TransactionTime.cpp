// One transaction against the least that a host can do on the same line.

#include "BareTransaction.h"
#include "Figures.h"
#include "Measures.h"
#include "Stand.h"

#include "support/RawPeer.h"

#include "consoles/DigitalConsole.h"
#include "protocol/NodeKey.h"

#include <stdexcept>

namespace
{

constexpr int TimeOut = 500; // a busy machine is no reason to miss an answer

void Transaction(vorn::FormMain &main)
{
    main.trans(BareCommand, false);
    if (main.ReplyText.empty())
        throw std::runtime_error("the program gets no answer");
}

struct Line {
    const char *what;
    int port;
    LineSpeed speed;
    double limit;
    int rounds;
    int count;
};

constexpr double NoLimit = 0;

constexpr Line Lines[] = {
    {"one transaction with a rack that isn't paced", Stand::FastPort, Baud9600, 1.25, 41, 100},
    {"one transaction with a peer in the same process", Stand::BarePort, Baud9600, NoLimit, 41, 100},
    {"one transaction with a rack at 115200 bit/s", Stand::QuickPort, Baud115200, 1.05, 21, 20},
    {"one transaction with a rack at 9600 bit/s", Stand::SlowPort, Baud9600, 1.01, 21, 5},
};

/// Bare and whole transactions take turns, so that what else the machine does touches both alike.
void Compare(Stand &stand, const Line &line, Figures &figures)
{
    stand.ChoosePort(line.port, line.speed, TimeOut);
    vorn::FormMain &main = stand.Main();
    const std::string path = stand.Link(line.port);
    std::vector<double> bare, whole, ratios;
    for (int round = 0; round < line.rounds; ++round) {
        bare.push_back(MicrosecondsEach(line.count, [&](int) { BareTransaction(path, line.speed); }));
        whole.push_back(MicrosecondsEach(line.count, [&](int) { Transaction(main); }));
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

/// A console whose polls can be asked for one by one.
class PolledConsole final : public vorn::TwoRowConsole
{
public:
    explicit PolledConsole(vorn::FormMain &main)
        : TwoRowConsole(main, {.name = "PolledConsole", .caption = "", .interval = 300},
                        {"DIOL", "DI &%1", 0, "LabDL", "Data", "LabDLv"},
                        {"DIOH", "DI &%1", 8, "LabDH", "Data", "LabDHv"})
    {
    }

    void Open(const std::string &key, const std::string &baud)
    {
        NodeKey = vorn::NodeKey(key);
        Address = NodeKey.address();
        ConsoleBaud = baud;
        Alive = true;
        OpenPort();
    }
    void Close()
    {
        MSComm.SetPortOpen(false);
        Alive = false;
    }
    void PollOnce()
    {
        Poll();
        if (Reply.empty())
            throw std::runtime_error("the console gets no answer");
    }
};

/// A poll of a console against the bare transaction that it consists of; both on a port that is open.
void CompareConsole(Stand &stand, Figures &figures)
{
    constexpr int Rounds = 21;
    constexpr int Count = 20;
    const std::string path = stand.Link(Stand::QuickPort);
    PolledConsole console(stand.Main());
    std::vector<double> bare, whole, ratios;
    for (int round = 0; round < Rounds; ++round) {
        {
            const BareExchange exchange(path, Baud115200);
            bare.push_back(MicrosecondsEach(Count, [&](int) { exchange.Run("$036"); }));
        }
        console.Open("_0003!!037254", "115200");
        whole.push_back(MicrosecondsEach(Count, [&](int) { console.PollOnce(); }));
        console.Close();
        ratios.push_back(whole.back() / bare.back());
    }
    figures.Add("one poll of a console at 115200 bit/s", Median(ratios), 1.05, "x",
                Decimal(Median(whole), 1) + " us against " + Decimal(Median(bare), 1) + " us bare");
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
    CompareConsole(stand, figures);
}
