// A transfer of a logger's records against as many bare transactions.

#include "BareTransaction.h"
#include "Figures.h"
#include "Measures.h"
#include "Probe.h"
#include "Stand.h"

#include "logger/RecordTransfer.h"
#include "platform/ProgramDirectory.h"

#include <QTemporaryDir>

#include <algorithm>
#include <fstream>

#include <unistd.h>

namespace
{

constexpr int TimeOut = 500;

struct Line {
    const char *what;
    int port;
    LineSpeed speed;
    int records;
    int rounds;
};

constexpr Line Lines[] = {
    {"a rack that isn't paced", Stand::FastPort, Baud9600, 65535, 15},
    {"a rack at 115200 bit/s", Stand::QuickPort, Baud115200, 2000, 3},
    {"a rack at 9600 bit/s", Stand::SlowPort, Baud9600, 500, 3},
};

double ResidentMebibytes()
{
    std::ifstream file("/proc/self/statm");
    double size = 0, resident = 0;
    file >> size >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

/// The command that asks for a record, as a transfer sends it.
std::string RecordCommand(int number)
{
    return "@09R" + vorn::RecordAddress(number);
}

void TransferAll(Stand &stand, const Line &line)
{
    vorn::RecordTransfer(stand.Main(), vorn::NodeKey("_000" + std::to_string(line.port) + "!!097224M"), false)
        .Run();
}

/// In turns, so that what else the machine does touches all alike.
void CompareTransfer(Stand &stand, const Line &line, const std::string &what, Figures &figures)
{
    const std::string path = stand.Link(line.port);
    std::vector<double> whole, own, bare, againstOwn, againstBare;
    const auto transaction = [&](int i) { stand.Main().trans(RecordCommand(i), false); };
    for (int round = 0; round < line.rounds; ++round) {
        bare.push_back(MicrosecondsEach(line.records,
                                        [&](int i) { BareTransaction(path, line.speed, RecordCommand(i)); }));
        const double ownBefore = MicrosecondsEach(line.records / 2, transaction);
        const auto start = Steady::now();
        TransferAll(stand, line);
        whole.push_back(Microseconds(Steady::now() - start).count() / line.records);
        own.push_back((ownBefore + MicrosecondsEach(line.records / 2, transaction)) / 2);
        againstOwn.push_back(whole.back() / own.back());
        againstBare.push_back(whole.back() / bare.back());
    }
    constexpr double MostTime = 1 / 0.9; // nine tenths of the rate
    figures.Add("time of a record" + what, Median(againstOwn), MostTime, "x",
                Decimal(Median(whole), 1) + " us against " + Decimal(Median(own), 1) +
                    " us of a transaction, " + Decimal(Median(againstBare), 3) + "x of the " +
                    Decimal(Median(bare), 1) + " us of a bare one; " + std::to_string(line.records) +
                    " records");
}

/// A transfer of its own: to ask for signs of life takes time, too.
void ProbeTransfer(Stand &stand, const Line &line, const std::string &what, Figures &figures)
{
    const double before = ResidentMebibytes();
    Probe probe;
    TransferAll(stand, line);
    probe.End();
    figures.Add("longest time without serving events" + what, probe.Longest(), 50, "ms",
                "half within " + Decimal(probe.Middle(), 2) + " ms");
    figures.Note("memory" + what, ResidentMebibytes() - before, "MiB", "grown meanwhile");
}

void Transfer(Stand &stand, const Line &line, Figures &figures)
{
    stand.ChoosePort(line.port, line.speed, TimeOut);
    const std::string what = std::string(", transfer of records from ") + line.what;
    ProbeTransfer(stand, line, what, figures);
    CompareTransfer(stand, line, what, figures);
}

} // namespace

void MeasureLogger(Stand &stand, Figures &figures)
{
    const QTemporaryDir folder;
    vorn::SetProgramDirectory(folder.path());
    vorn::WriteEmptyWorkbook(folder.filePath(QStringLiteral("Mem.ory")).toStdString(),
                             vorn::OwnSheetTitles());
    for (const Line &line : Lines)
        Transfer(stand, line, figures);
    vorn::SetProgramDirectory({});
}
