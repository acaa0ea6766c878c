// What the program takes of one processor core while it waits.

#include "Figures.h"
#include "Measures.h"
#include "Stand.h"

#include "consoles/ConsoleWindow.h"
#include "shell/Controls.h"

#include <QApplication>
#include <QTimer>

#include <optional>
#include <stdexcept>

namespace
{

using namespace std::chrono_literals;

/// Share of a core from now until `Percent`.
class Share final
{
public:
    double Percent() const
    {
        const std::chrono::duration<double> wall = Steady::now() - wall_;
        return 100 * (ProcessorSeconds() - processor_) / wall.count();
    }

private:
    Steady::time_point wall_ = Steady::now();
    double processor_ = ProcessorSeconds();
};

double WhileWaiting(Stand &stand)
{
    stand.ChoosePort(Stand::SilentPort, Baud9600, 3000);
    const Share share;
    stand.Main().trans("$01M", false);
    return share.Percent();
}

double WhilePolling(Stand &stand, int port, const LineSpeed &speed)
{
    stand.ChoosePort(port, speed, 80);
    vorn::FormMain &main = stand.Main();
    const std::string portKey = vorn::PortKey(port);
    if (!main.Nodes.HasChildren(portKey)) {
        const std::string key = vorn::ModuleKey(false, '0', portKey.substr(portKey.size() - 3), "!017203");
        main.Nodes.Add(portKey, key, "(01) 7203", "vorn4ico", "vorn4icoS");
    }
    const std::string key = main.Nodes.Children(portKey).front();
    stand.Choose(key);
    Stand::Rest(1s);
    const Share share;
    Stand::Rest(5s);
    const double percent = share.Percent();
    stand.Choose(portKey);
    if (main.ReplyText.empty())
        throw std::runtime_error("nothing was polled");
    return percent;
}

/// Of a console that asks for eight channels and their mask, ten times a second if the line allows it.
double WhileAConsolePolls(Stand &stand)
{
    stand.ChoosePort(Stand::QuickPort, Baud115200, 80);
    const std::string portKey = vorn::PortKey(Stand::QuickPort);
    const std::string key = vorn::ModuleKey(false, '0', portKey.substr(portKey.size() - 3), "!027221P");
    stand.Main().Nodes.Add(portKey, key, "(02) 7221+", "vorn4ico", "vorn4icoS");
    std::optional<double> percent;
    std::string reply;
    QTimer::singleShot(1s, &stand.Main(), [&] {
        auto *console = dynamic_cast<vorn::ConsoleWindow *>(QApplication::activeModalWidget());
        if (!console)
            throw std::runtime_error("the console doesn't open");
        const Share share;
        Stand::Rest(5s);
        percent = share.Percent();
        reply = console->Reply;
        console->close();
    });
    stand.Choose(key); // until the console closes
    stand.Choose(portKey);
    if (!percent || reply.empty())
        throw std::runtime_error("the console polled nothing");
    return *percent;
}

double WhileIdle(Stand &stand)
{
    stand.ChoosePort(Stand::FastPort, Baud9600, 80);
    const Share share;
    Stand::Rest(5s);
    return share.Percent();
}

} // namespace

void MeasureProcessorTime(Stand &stand, Figures &figures)
{
    const std::string ofCore = "of one core";
    figures.Add("waiting for a silent module", WhileWaiting(stand), 5, "%", ofCore);
    figures.Add("polling a page, endlessly fast line", WhilePolling(stand, Stand::FastPort, Baud9600), 5, "%",
                ofCore + ", windows drawn without a screen");
    figures.Add("polling a page, 115200 bit/s", WhilePolling(stand, Stand::QuickPort, Baud115200), 5, "%",
                ofCore);
    figures.Add("polling a page, 9600 bit/s", WhilePolling(stand, Stand::SlowPort, Baud9600), 5, "%", ofCore);
    figures.Add("a console that polls, 115200 bit/s", WhileAConsolePolls(stand), 5, "%", ofCore);
    figures.Add("no bus work", WhileIdle(stand), 1, "%", ofCore);
}
