// How fast the terminal plays a command file.

#include "BareTransaction.h"
#include "Figures.h"
#include "Measures.h"
#include "Stand.h"

#include "platform/WidgetText.h"
#include "tools/FormFull_Screen.h"
#include "tools/LogView.h"

#include <QAction>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <filesystem>
#include <fstream>
#include <vector>

namespace
{

constexpr double Limit = 1 / 0.95; ///< in time, of a rate that is to reach 95 %
constexpr int TimeOut = 500;
constexpr int Rounds = 3;

struct Line {
    const char *what;
    int port;
    int baudIndex;
    speed_t speed;
    int lines;
};

constexpr Line Lines[] = {
    {"command file of 100,000 lines, rack that isn't paced", Stand::FastPort, 3, B9600, 100'000},
    {"command file of 2,000 lines, rack at 115200 bit/s", Stand::QuickPort, 7, B115200, 2'000},
    {"command file of 300 lines, rack at 9600 bit/s", Stand::SlowPort, 3, B9600, 300},
};

/// Number of the round that was logged last; 0 if there is none.
int LastRound(const vorn::LogView &log)
{
    const std::string text = log.TextFrom(log.Length() - std::min<std::size_t>(log.Length(), 200));
    const std::size_t end = text.rfind('<');
    return end == std::string::npos ? 0 : std::atoi(text.substr(text.rfind('\n', end) + 1, end).c_str());
}

/// Time of one pass through the file, from the click to the beginning of the next pass.
double TerminalPass(Stand &stand, const std::filesystem::path &file)
{
    vorn::FormMain &main = stand.Main();
    main.Terminal->trigger();
    Stand::Rest(std::chrono::milliseconds(200));
    auto *terminal = qobject_cast<vorn::FormFull_Screen *>(main.FormFull_Screen.data());
    terminal->OptionSel[1]->click();
    terminal->OptRingBuffer->click();
    terminal->TextFileName->setText(QString::fromStdString(file.string()));
    int last = 0;
    bool done = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, terminal, [&] {
        const int round = LastRound(*terminal->Text1);
        if (round == 0)
            return; // a full log has just begun anew
        done = done || round < last;
        last = round;
    });
    look.start(std::chrono::milliseconds(5));
    const auto start = Steady::now();
    terminal->CmdContinueSend->click();
    while (!done)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    const Milliseconds time = Steady::now() - start;
    terminal->cmdExit->click();
    Stand::Rest(std::chrono::milliseconds(200));
    return time.count();
}

template <class Step>
double LoopTime(int count, Step step)
{
    const auto start = Steady::now();
    for (int i = 0; i < count; ++i)
        step();
    return Milliseconds(Steady::now() - start).count();
}

} // namespace

void MeasureTerminal(Stand &stand, Figures &figures)
{
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "vorn-commands.txt";
    for (const Line &line : Lines) {
        {
            std::ofstream commands(file, std::ios::binary);
            for (int i = 0; i < line.lines; ++i)
                commands << BareCommand << "\r\n";
        }
        stand.ChoosePort(line.port, line.baudIndex, TimeOut);
        const std::string path = stand.Link(line.port);
        // In turns, so that what else the machine does touches all alike.
        std::vector<double> terminal, againstTrans, againstBare;
        for (int round = 0; round < Rounds; ++round) {
            const double bare = LoopTime(line.lines, [&] { BareTransaction(path, line.speed); });
            const double trans = LoopTime(line.lines, [&] { stand.Main().trans(BareCommand, false); });
            terminal.push_back(TerminalPass(stand, file));
            againstTrans.push_back(terminal.back() / trans);
            againstBare.push_back(terminal.back() / bare);
        }
        const std::string detail =
            "middle of " + std::to_string(Rounds) + ", " + Decimal(Median(terminal) / 1000, 2) + " s";
        figures.Add(std::string(line.what) + ", against a loop of transactions", Median(againstTrans), Limit,
                    "x", detail);
        figures.Note(std::string(line.what) + ", against open, write, read, close", Median(againstBare), "x",
                     detail);
    }
    std::filesystem::remove(file);
}
