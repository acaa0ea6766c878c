#include "screen/Desktop.h"

#include <chrono>
#include <cstdlib>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace
{

using namespace std::chrono_literals;

constexpr auto Look = 10ms;

} // namespace

Desktop::Desktop()
    // The server chooses a free number, and writes it where it is told to.
    : server_(std::make_unique<Child>(Child::Command{"Xvfb", "-displayfd", "1", "-screen", "0",
                                                     "1280x1024x24", "-noreset", "-nolisten", "tcp"},
                                      Child::Variables{}, Child::Output::Read))
{
    const std::string number = server_->ReadLine(Patience);
    if (number.empty())
        throw std::runtime_error("Xvfb doesn't start");
    display_ = ":" + number;
    manager_ = std::make_unique<Child>(Child::Command{"openbox", "--sm-disable"}, Variables());
    const auto managed = [this] {
        return Run({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"}).find("window id") != std::string::npos;
    };
    if (!WaitFor([&] { return !manager_->Running() || managed(); }) || !manager_->Running())
        throw std::runtime_error("openbox doesn't start");
}

Desktop::Desktop(Runner runner) : runner_(std::move(runner)) {}

Desktop::~Desktop() = default;

Child::Variables Desktop::Variables() const
{
    return {{"DISPLAY", display_}, {"WAYLAND_DISPLAY", ""}, {"QT_QPA_PLATFORM", "xcb"}};
}

bool Desktop::WaitFor(const std::function<bool()> &condition)
{
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(Look);
    }
    return true;
}

std::string Desktop::Run(const Child::Command &command) const
{
    if (runner_)
        return runner_(command);
    Child tool(command, Variables(), Child::Output::Read);
    std::string text = tool.ReadAll(Patience);
    tool.AwaitExit(1s);
    return text;
}

/// Asks the window manager, one window at a time: one that goes meanwhile hides no other.
std::vector<std::string> Desktop::Windows(const std::string &title) const
{
    const std::regex wanted(title);
    const std::regex id("0x[0-9a-f]+");
    const std::string list = Run({"xprop", "-root", "-notype", "_NET_CLIENT_LIST"});
    std::vector<std::string> windows;
    for (auto i = std::sregex_iterator(list.begin(), list.end(), id); i != std::sregex_iterator(); ++i) {
        const std::string name = Run({"xprop", "-id", i->str(), "-notype", "_NET_WM_NAME"});
        const std::size_t begin = name.find('"');
        const std::size_t end = name.rfind('"');
        if (begin < end && end != std::string::npos &&
            std::regex_search(name.substr(begin + 1, end - begin - 1), wanted))
            windows.push_back(std::to_string(std::stoul(i->str(), nullptr, 16)));
    }
    return windows;
}

std::string Desktop::AwaitWindow(const std::string &title) const
{
    std::vector<std::string> windows;
    WaitFor([&] { return !(windows = Windows(title)).empty(); });
    return windows.empty() ? std::string{} : windows.front();
}

bool Desktop::AwaitNoWindow(const std::string &title) const
{
    return WaitFor([&] { return Windows(title).empty(); });
}

std::string Desktop::ActiveWindow() const
{
    std::string window = Run({"xdotool", "getactivewindow"});
    while (!window.empty() && window.back() == '\n')
        window.pop_back();
    return window;
}

Desktop::Size Desktop::SizeOf(const std::string &window) const
{
    std::istringstream lines(Run({"xdotool", "getwindowgeometry", "--shell", window}));
    Size size;
    for (std::string line; std::getline(lines, line);) {
        const std::string name = line.substr(0, line.find('='));
        const int value = std::atoi(line.substr(line.find('=') + 1).c_str());
        if (name == "WIDTH")
            size.width = value;
        else if (name == "HEIGHT")
            size.height = value;
    }
    return size;
}

bool Desktop::TakePicture(const std::filesystem::path &file, const std::string &window) const
{
    std::filesystem::create_directories(file.parent_path());
    std::filesystem::remove(file);
    if (window.empty())
        Run({"import", "-silent", "-window", "root", file.string()});
    else
        Run({"import", "-silent", "-frame", "-window", window, file.string()});
    return std::filesystem::exists(file) && std::filesystem::file_size(file) > 0;
}

bool Desktop::Activate(const std::string &window) const
{
    Run({"xdotool", "windowactivate", window});
    return WaitFor([&] { return ActiveWindow() == window; });
}

void Desktop::Press(const std::vector<std::string> &keys) const
{
    Child::Command command{"xdotool", "key", "--clearmodifiers"};
    command.insert(command.end(), keys.begin(), keys.end());
    Run(command);
}

void Desktop::Type(const std::string &text) const
{
    Run({"xdotool", "type", "--clearmodifiers", "--delay", "2", text});
}

void Desktop::AtPlace(int x, int y, const char *button) const
{
    Run({"xdotool", "mousemove", std::to_string(x), std::to_string(y), "click", button});
}

void Desktop::Click(int x, int y) const
{
    AtPlace(x, y, "1");
}

void Desktop::WheelUp(int x, int y) const
{
    AtPlace(x, y, "4");
}

void Desktop::WheelDown(int x, int y) const
{
    AtPlace(x, y, "5");
}

void Desktop::ClickIn(const std::string &window, int x, int y, int times) const
{
    Run({"xdotool", "mousemove", "--window", window, std::to_string(x), std::to_string(y), "click",
         "--repeat", std::to_string(times), "--delay", "20", "1"});
}

void Desktop::Resize(const std::string &window, Size size) const
{
    Run({"xdotool", "windowsize", window, std::to_string(size.width), std::to_string(size.height)});
}

void Desktop::ShrinkByMouse(const std::string &window, int pixels) const
{
    constexpr int Steps = 4; // the window manager wants to see a movement
    const Size size = SizeOf(window);
    const std::string step = std::to_string(-pixels / Steps);
    // With Alt held the right button takes the frame's nearest corner from anywhere in the window.
    Run({"xdotool", "mousemove", "--window", window, std::to_string(size.width - 20),
         std::to_string(size.height - 20)});
    Run({"xdotool", "keydown", "alt", "mousedown", "3"});
    for (int i = 0; i < Steps; ++i)
        Run({"xdotool", "mousemove_relative", "--sync", "--", step, step});
    Run({"xdotool", "mouseup", "3", "keyup", "alt"});
}

void Desktop::Close(const std::string &window) const
{
    Activate(window);
    Press({"alt+F4"});
}
