// From the start of the program's process to its painted window, with a port of every number.

#include "Figures.h"
#include "Measures.h"
#include "Stand.h"

#include "screen/Desktop.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace
{

using namespace std::chrono_literals;

constexpr int Ports = 255;
constexpr int Starts = 9;
constexpr double MostSeconds = 0.2;
constexpr double MostMebibytes = 80;

std::string RackOfAllPorts()
{
    std::ostringstream text;
    for (int port = 1; port <= Ports; ++port)
        text << "port " << port << "\nmodule 7203 address=01\n";
    return text.str();
}

double ResidentKibibytes(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:"))
            return std::stod(line.substr(6));
    }
    return 0;
}

/// The window stands in the middle of the screen, where nothing but black was before: its tree is white
/// there.
bool IsPainted(QScreen &screen)
{
    constexpr int White = 250;
    const QPoint tree = screen.geometry().center() + QPoint(-220, 90);
    const QImage image = screen.grabWindow(0, tree.x(), tree.y(), 1, 1).toImage();
    return qGray(image.pixel(0, 0)) >= White;
}

} // namespace

int WatchStart(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QScreen &screen = *QGuiApplication::primaryScreen();
    if (IsPainted(screen))
        return 1;
    const auto start = Steady::now();
    Child program({PROGRAM_FILE});
    while (!IsPainted(screen)) {
        if (Steady::now() - start > 20s)
            return 1;
    }
    const double milliseconds = Milliseconds(Steady::now() - start).count();
    std::cout << milliseconds << " " << ResidentKibibytes(program.Id()) << std::endl;
    return 0;
}

void MeasureStart(Figures &figures)
{
    const RackProcess rack(RackOfAllPorts());
    std::vector<double> seconds, mebibytes;
    const Desktop desktop;
    for (int i = 0; i < Starts; ++i) {
        Child watch({"/proc/self/exe", "--watch-start"}, desktop.Variables(), Child::Output::Read);
        std::istringstream line(watch.ReadLine(30s));
        double milliseconds = 0, kibibytes = 0;
        if (!(line >> milliseconds >> kibibytes) || watch.AwaitExit(10s) != 0)
            throw std::runtime_error("the program's window doesn't come");
        seconds.push_back(milliseconds / 1000);
        mebibytes.push_back(kibibytes / 1024);
        if (!desktop.AwaitNoWindow(".*"))
            throw std::runtime_error("the program's window stays");
    }
    const std::string detail =
        "middle of " + std::to_string(Starts) + " starts, " + std::to_string(Ports) + " ports";
    figures.Add("start to painted window", Median(seconds), MostSeconds, "s", detail);
    figures.Add("resident memory then", Median(mebibytes), MostMebibytes, "MiB", detail);
}
