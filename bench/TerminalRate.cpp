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

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <span>
#include <vector>

namespace
{

constexpr double Limit = 1 / 0.95; ///< in time, of a rate that is to reach 95 %
constexpr int TimeOut = 500;

struct Line {
    const char *what;
    int port;
    LineSpeed speed;
    int lines;
    int rounds;
    bool limited = true; ///< no bus is as fast as a rack that isn't paced
};

constexpr Line Lines[] = {
    {"command file of 100,000 lines, rack that isn't paced", Stand::FastPort, Baud9600, 100'000, 5, false},
    {"command file of 2,000 lines, rack at 115200 bit/s", Stand::QuickPort, Baud115200, 2'000, 3},
    {"command file of 300 lines, rack at 9600 bit/s", Stand::SlowPort, Baud9600, 300, 3},
};

constexpr Line LongLine[] = {
    {"command file of 100,000 lines, rack at 115200 bit/s", Stand::QuickPort, Baud115200, 100'000, 1},
};

/// Number of the round that was logged last; 0 if there is none.
int LastRound(const vorn::LogView &log)
{
    const std::string_view all = log.Log();
    const std::string text(all.substr(all.size() - std::min<std::size_t>(all.size(), 200)));
    const std::size_t end = text.rfind('<');
    return end == std::string::npos ? 0 : std::atoi(text.substr(text.rfind('\n', end) + 1, end).c_str());
}

/// Microseconds that a line takes in one pass through the file: from the click to the last look at the log
/// before the next pass, over the lines that were sent until then. The looks are rare, so as not to be
/// measured themselves.
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
    Milliseconds time{};
    bool done = false;
    const auto start = Steady::now();
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, terminal, [&] {
        const int round = LastRound(*terminal->Text1);
        if (round == 0)
            return; // the log was full and has just been emptied
        done = done || round < last;
        if (done)
            return;
        last = round;
        time = Steady::now() - start;
    });
    look.start(std::chrono::milliseconds(50));
    terminal->CmdContinueSend->click();
    while (!done)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    terminal->cmdExit->click();
    Stand::Rest(std::chrono::milliseconds(200));
    return Microseconds(time).count() / last;
}

void MeasureLines(Stand &stand, Figures &figures, std::span<const Line> lines)
{
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "vorn-commands.txt";
    for (const Line &line : lines) {
        {
            std::ofstream commands(file, std::ios::binary);
            for (int i = 0; i < line.lines; ++i)
                commands << BareCommand << "\r\n";
        }
        stand.ChoosePort(line.port, line.speed, TimeOut);
        const std::string path = stand.Link(line.port);
        // In turns, and the shortest of each: what else the machine does only ever lengthens a time.
        std::vector<double> terminal, trans, bare;
        for (int round = 0; round < line.rounds; ++round) {
            bare.push_back(MicrosecondsEach(line.lines, [&](int) { BareTransaction(path, line.speed); }));
            trans.push_back(
                MicrosecondsEach(line.lines, [&](int) { stand.Main().trans(BareCommand, false); }));
            terminal.push_back(TerminalPass(stand, file));
        }
        const double time = *std::ranges::min_element(terminal);
        const std::string detail =
            "shortest of " + std::to_string(line.rounds) + ", " + Decimal(time * line.lines / 1e6, 2) + " s";
        const std::string againstLoop = std::string(line.what) + ", against a loop of transactions";
        const double ratio = time / *std::ranges::min_element(trans);
        if (line.limited)
            figures.Add(againstLoop, ratio, Limit, "x", detail);
        else
            figures.Note(againstLoop, ratio, "x", detail);
        figures.Note(std::string(line.what) + ", against open, write, read, close",
                     time / *std::ranges::min_element(bare), "x", detail);
    }
    std::filesystem::remove(file);
}

} // namespace

void MeasureTerminal(Stand &stand, Figures &figures)
{
    MeasureLines(stand, figures, Lines);
}

void MeasureTerminalAtLength(Stand &stand, Figures &figures)
{
    MeasureLines(stand, figures, LongLine);
}
