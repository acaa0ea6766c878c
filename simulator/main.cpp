#include "BusText.h"
#include "Module.h"
#include "Options.h"
#include "Simulator.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace
{

using namespace vornsim;

constexpr int UsageExit = 2;

Rack ReadRack(const Options &options)
{
    if (!options.rack)
        return DemoRack();
    std::ifstream file(*options.rack, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.is_open() || file.bad())
        throw std::runtime_error("can't read " + options.rack->string());
    try {
        return ParseRack(text);
    } catch (const RackError &error) {
        throw std::runtime_error(options.rack->string() + ": " + error.what());
    }
}

void ListDemo()
{
    for (const PortDescription &port : DemoRack().ports) {
        std::cout << "COM" << port.number << "  " << port.speed << "\n";
        for (const ModuleDescription &module : port.modules)
            std::cout << "    " << Module(module, 0).Describe() << "\n";
    }
}

void ListPorts(const Simulator &simulator)
{
    for (const int port : simulator.Ports()) {
        std::cout << "COM" << port << "  " << simulator.Link(port).string() << " -> "
                  << simulator.Terminal(port) << "\n";
        for (const std::string &line : simulator.Describe(port))
            std::cout << "    " << line << "\n";
    }
    std::cout.flush();
}

void TraceTo(std::ostream &out, int port, const TraceRecord &record)
{
    std::ostringstream line;
    line.precision(3);
    line << std::fixed << record.milliseconds << " COM" << port
         << (record.direction == TraceRecord::Direction::FromHost ? " < " : " > ") << Escape(record.bytes)
         << "\n";
    out << line.str() << std::flush;
}

/// Blocks the signals that end the program in all threads, so that `sigwait` receives them.
sigset_t HoldEndSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

int RunRack(const Options &options)
{
    Rack rack = ReadRack(options);
    for (PortDescription &port : rack.ports) {
        port.pace = port.pace || options.pace;
        port.delay = options.delay.value_or(port.delay);
    }

    std::ofstream traceFile;
    if (options.traceFile) {
        traceFile.open(*options.traceFile, std::ios::binary);
        if (!traceFile)
            throw std::runtime_error("can't write " + options.traceFile->string() + ": " +
                                     std::strerror(errno));
    }

    const sigset_t signals = HoldEndSignals();
    Simulator simulator(rack, options.ports.empty() ? DefaultPorts() : options.ports);
    std::ostream &traceOut = options.traceFile ? traceFile : std::cout;
    if (options.trace)
        simulator.SetTraceListener(
            [&](int port, const TraceRecord &record) { TraceTo(traceOut, port, record); });
    ListPorts(simulator);
    simulator.Start();
    int signal = 0;
    sigwait(&signals, &signal);
    simulator.Stop();
    return 0;
}

} // namespace

int main(int count, char **arguments)
{
    try {
        const Options options = ReadOptions({arguments + 1, arguments + count});
        if (options.help) {
            std::cout << Usage;
            return 0;
        }
        if (options.listDemo) {
            ListDemo();
            return 0;
        }
        return RunRack(options);
    } catch (const UsageError &error) {
        std::cerr << "vornsim: " << error.what() << "\n\n" << Usage;
        return UsageExit;
    } catch (const std::exception &error) {
        std::cerr << "vornsim: " << error.what() << "\n";
        return 1;
    }
}
