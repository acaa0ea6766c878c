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

constexpr int BaudIndex9600 = 3;
constexpr int BaudIndex115200 = 7;
constexpr int TimeOut = 500;

struct Line {
    const char *what;
    int port;
    int baudIndex;
    speed_t speed;
    int records;
};

constexpr Line Lines[] = {
    {"a rack that isn't paced", Stand::FastPort, BaudIndex9600, B9600, 65535},
    {"a rack at 115200 bit/s", Stand::QuickPort, BaudIndex115200, B115200, 2000},
    {"a rack at 9600 bit/s", Stand::SlowPort, BaudIndex9600, B9600, 500},
};

double ResidentMebibytes()
{
    std::ifstream file("/proc/self/statm");
    double size = 0, resident = 0;
    file >> size >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

double BareMicroseconds(const std::string &path, speed_t speed, int count)
{
    const auto start = Steady::now();
    for (int i = 0; i < count; ++i)
        BareTransaction(path, speed, "@09R0000"); // as long as any record's, and its reply
    return Microseconds(Steady::now() - start).count() / count;
}

/// The program's own transactions, one behind the other.
double OwnMicroseconds(Stand &stand, int count)
{
    const auto start = Steady::now();
    for (int i = 0; i < count; ++i)
        stand.Main().trans("@09R0000", false);
    return Microseconds(Steady::now() - start).count() / count;
}

void Transfer(Stand &stand, const Line &line, Figures &figures)
{
    stand.ChoosePort(line.port, line.baudIndex, TimeOut);
    const std::string path = stand.Link(line.port);
    const int bareCount = std::min(line.records, 5000);
    const double before = BareMicroseconds(path, line.speed, bareCount);
    const double ownBefore = OwnMicroseconds(stand, bareCount);
    const double memory = ResidentMebibytes();

    Probe probe;
    const auto start = Steady::now();
    vorn::RecordTransfer(stand.Main(), vorn::NodeKey("_000" + std::to_string(line.port) + "!!097224M"), false)
        .Run();
    const double whole = Microseconds(Steady::now() - start).count() / line.records;
    probe.End();
    const double grown = ResidentMebibytes() - memory;
    const double own = (ownBefore + OwnMicroseconds(stand, bareCount)) / 2;
    const double bare = (before + BareMicroseconds(path, line.speed, bareCount)) / 2;

    const std::string what = std::string(", transfer of records from ") + line.what;
    constexpr double MostTime = 1 / 0.9; // nine tenths of the rate
    figures.Add("time of a record" + what, whole / own, MostTime, "x",
                Decimal(whole, 1) + " us against " + Decimal(own, 1) + " us of a transaction, " +
                    Decimal(whole / bare, 2) + "x of the " + Decimal(bare, 1) + " us of a bare one; " +
                    std::to_string(line.records) + " records");
    figures.Add("longest time without serving events" + what, probe.Longest(), 50, "ms",
                "half within " + Decimal(probe.Middle(), 2) + " ms");
    figures.Note("memory" + what, grown, "MiB", "grown meanwhile");
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
