#include "Options.h"

#include "BusText.h"

#include <cstdlib>
#include <string_view>

namespace vornsim
{

const char *const Usage = R"(vornsim - a rack of simulated VORN modules behind serial ports

  vornsim [--rack FILE] [--ports FOLDER] [--pace] [--delay MS] [--trace[=FILE]]
  vornsim --list-demo
  vornsim --help

  --rack FILE     the rack to build; without it a demo rack on COM2, COM4
                  and COM6, where another master sends commands
  --ports FOLDER  the folder for the links com<n> to the ports; without it the
                  one where the VORN utility looks for its ports,
                  $XDG_CONFIG_HOME/vorn/ports or ~/.config/vorn/ports
  --pace          bytes take as long as on a wire
  --delay MS      every reply comes so many milliseconds later, at most 60000
  --trace[=FILE]  write the traffic, with the milliseconds since the start
  --list-demo     list the modules of the demo rack

It runs until it is interrupted, and then removes its links.
)";

namespace
{

constexpr std::string_view TracePrefix = "--trace=";
constexpr unsigned GreatestDelay = 60000;

std::string Environment(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

std::chrono::milliseconds Milliseconds(const std::string &option, const std::string &text)
{
    const auto number = ReadDecimal(text);
    if (!number || *number > GreatestDelay)
        throw UsageError(option + " takes milliseconds from 0 to " + std::to_string(GreatestDelay));
    return std::chrono::milliseconds(*number);
}

} // namespace

std::filesystem::path DefaultPorts()
{
    const std::string config = Environment("XDG_CONFIG_HOME");
    if (!config.empty())
        return std::filesystem::path(config) / "vorn" / "ports";
    const std::string home = Environment("HOME");
    if (home.empty())
        throw UsageError("no home folder: --ports is needed");
    return std::filesystem::path(home) / ".config" / "vorn" / "ports";
}

Options ReadOptions(const std::vector<std::string> &arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string &argument = arguments[i];
        const auto value = [&]() -> const std::string & {
            if (i + 1 >= arguments.size() || arguments[i + 1].empty())
                throw UsageError(argument + " needs a value");
            return arguments[++i];
        };
        if (argument == "--rack")
            options.rack = value();
        else if (argument == "--ports")
            options.ports = value();
        else if (argument == "--pace")
            options.pace = true;
        else if (argument == "--delay")
            options.delay = Milliseconds(argument, value());
        else if (argument == "--trace")
            options.trace = true;
        else if (argument.starts_with(TracePrefix) && argument.size() > TracePrefix.size())
            options.trace = true, options.traceFile = argument.substr(TracePrefix.size());
        else if (argument == "--help" || argument == "-h")
            options.help = true;
        else if (argument == "--list-demo")
            options.listDemo = true;
        else
            throw UsageError("unknown option " + argument);
    }
    return options;
}

} // namespace vornsim
