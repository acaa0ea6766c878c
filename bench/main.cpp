// Prints what the program takes of the machine it runs on. Usage: vornbench [measure ...], all of them by
// default: transactions processor search tree responsiveness terminal scope start; besides these,
// logger, about a minute, firmware, about four minutes long, terminal-at-length and scope-ten-minutes, each
// about ten.

#include "Figures.h"
#include "Measures.h"
#include "Stand.h"

#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace
{

struct Measure {
    const char *name;
    void (*run)(Stand &stand, Figures &figures);
    bool onlyByName = false;
};

constexpr Measure MeasuresOnStand[] = {
    {"transactions", MeasureTransactions},
    {"processor", MeasureProcessorTime},
    {"search", MeasureSearch},
    {"tree", MeasureTree},
    {"responsiveness", MeasureResponsiveness},
    {"terminal", MeasureTerminal},
    {"terminal-at-length", MeasureTerminalAtLength, true},
    {"scope", MeasureScope},
    {"logger", MeasureLogger, true},
    {"firmware", MeasureFirmware, true},
    {"scope-ten-minutes", MeasureScopeForTenMinutes, true},
};

void RunOnStand(int argc, char *argv[], const std::vector<std::string> &wanted, Figures &figures)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    vorn::InitResources();
    QApplication::setQuitOnLastWindowClosed(false);
    Stand stand;
    for (const Measure &measure : MeasuresOnStand) {
        if (wanted.empty() ? !measure.onlyByName : std::ranges::find(wanted, measure.name) != wanted.end())
            measure.run(stand, figures);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const std::vector<std::string> wanted(argv + 1, argv + argc);
    if (wanted == std::vector<std::string>{"--watch-start"})
        return WatchStart(argc, argv);
    try {
        Figures figures;
        RunOnStand(argc, argv, wanted, figures);
        if (wanted.empty() || std::ranges::find(wanted, "start") != wanted.end())
            MeasureStart(figures);
        figures.Print();
        return EXIT_SUCCESS;
    } catch (const std::exception &error) {
        std::cerr << "vornbench: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
}
