#include "ProgramOnScreen.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

ProgramOnScreen::ProgramOnScreen()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "vorn-screen.XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no folder for the test");
    home_ = pattern;
    for (const char *folder : {"config", "data", "run"})
        std::filesystem::create_directories(home_ / folder);
    std::filesystem::create_directories(home_ / "config/vorn/ports");
    std::filesystem::permissions(home_ / "run", std::filesystem::perms::owner_all);
}

ProgramOnScreen::~ProgramOnScreen()
{
    program.reset();
    rack.reset();
    std::error_code ignored;
    std::filesystem::remove_all(home_, ignored);
}

Child::Variables ProgramOnScreen::Variables() const
{
    Child::Variables variables = desktop.Variables();
    variables["XDG_CONFIG_HOME"] = home_ / "config";
    variables["XDG_DATA_HOME"] = home_ / "data";
    variables["XDG_RUNTIME_DIR"] = home_ / "run";
    variables["LC_ALL"] = "C.UTF-8";
    return variables;
}

std::filesystem::path ProgramOnScreen::Link() const
{
    return home_ / "config/vorn/ports" / ("com" + std::to_string(Port));
}

void ProgramOnScreen::StartRack(const std::string &description)
{
    std::ofstream(home_ / "rack") << description;
    rack = std::make_unique<Child>(
        Child::Command{RACK_FILE, "--rack", home_ / "rack", "--trace=" + Record().string()}, Variables(),
        Child::Output::Pass);
    ASSERT_TRUE(Desktop::WaitFor([&] { return std::filesystem::exists(Link()); }))
        << "the rack doesn't start";
}

std::unique_ptr<Child> ProgramOnScreen::NewProgram() const
{
    return std::make_unique<Child>(Child::Command{PROGRAM_FILE}, Variables(), Child::Output::Pass);
}

void ProgramOnScreen::StartProgram()
{
    program = NewProgram();
    mainWindow = desktop.AwaitWindow(Title::Main);
    ASSERT_FALSE(mainWindow.empty()) << "the main window doesn't come";
    ASSERT_TRUE(Desktop::WaitFor([&] { return desktop.ActiveWindow() == mainWindow; }));
}

void ProgramOnScreen::OpenSearch()
{
    // The magnifying glass; it stands where the window's look puts it.
    desktop.ClickIn(mainWindow, 58, 38);
    const std::string question = desktop.AwaitWindow(Title::StartAddress);
    ASSERT_FALSE(question.empty()) << "the question for the start address doesn't come";
    ASSERT_TRUE(Desktop::WaitFor([&] { return desktop.ActiveWindow() == question; }));
}

void ProgramOnScreen::Search(const std::string &startAddress)
{
    ASSERT_NO_FATAL_FAILURE(OpenSearch());
    desktop.Type(startAddress);
    const int before = Commands("$FFM"); // a search may have ended before the key press is told to be done
    desktop.Press({"Return"});
    // The last address is asked twice when nobody answers, with a checksum at last.
    ASSERT_TRUE(Desktop::WaitFor([&] { return Commands("$FFM") > before; }))
        << "the search doesn't come to its end; on the wire:\n"
        << Traffic();
    ASSERT_TRUE(desktop.AwaitNoWindow(Title::Search)) << "the progress window stays";
    ASSERT_TRUE(Desktop::WaitFor([&] { return desktop.ActiveWindow() == mainWindow; }));
}

void ProgramOnScreen::SetTimeOut(const std::string &milliseconds)
{
    desktop.Press({"Tab", "Tab", "ctrl+a"}); // from the tree over the baudrate
    desktop.Type(milliseconds);
    desktop.Press({"ctrl+a", "ctrl+c", "shift+Tab", "shift+Tab"});
    ASSERT_EQ(CopiedText(), milliseconds) << "the keyboard isn't in the time-out field";
}

std::string ProgramOnScreen::CopiedText() const
{
    return Child({CLIPBOARD_FILE}, Variables(), Child::Output::Read).ReadAll(Desktop::Patience);
}

std::string ProgramOnScreen::PresentNode() const
{
    desktop.Press({"ctrl+c"});
    return CopiedText();
}

std::string ProgramOnScreen::BoxText(const std::string &window) const
{
    // A triple click marks the whole text, which stands above the button.
    const Desktop::Size size = desktop.SizeOf(window);
    desktop.ClickIn(window, size.width / 2, size.height / 4, 3);
    return Child({CLIPBOARD_FILE, "marked"}, Variables(), Child::Output::Read).ReadAll(Desktop::Patience);
}

std::string ProgramOnScreen::Traffic() const
{
    std::ostringstream bytes;
    bytes << std::ifstream(Record()).rdbuf();
    return bytes.str();
}

int ProgramOnScreen::Commands(const std::string &begin) const
{
    std::ifstream record(Record());
    int count = 0;
    for (std::string line; std::getline(record, line);)
        count += line.find(" < " + begin) != std::string::npos;
    return count;
}

bool ProgramOnScreen::AwaitCommands(const std::string &begin, int more) const
{
    const int before = Commands(begin);
    return Desktop::WaitFor([&] { return Commands(begin) >= before + more; });
}

bool ProgramOnScreen::PortIsFree() const
{
    const int port = ::open(Link().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    const bool free = port >= 0 && ::flock(port, LOCK_EX | LOCK_NB) == 0;
    if (port >= 0)
        ::close(port);
    return free;
}

void ProgramOnScreen::ExpectCloseEnds()
{
    desktop.Close(mainWindow);
    EXPECT_EQ(program->AwaitExit(Desktop::Patience), 0);
    EXPECT_TRUE(PortIsFree());
}

void ProgramOnScreen::KeepPicture(const std::string &name) const
{
    const std::string test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    EXPECT_TRUE(desktop.TakePicture(std::filesystem::path(PICTURES_FOLDER) / (test + "-" + name + ".png")));
}
