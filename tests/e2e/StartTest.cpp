// How the program starts: once, with ports, and no smaller than it may be.

#include "ProgramOnScreen.h"

#include <csignal>

namespace
{

const std::string OneModule = "port 2\nmodule 7203 address=F8\n";

/// Notes every window that the window manager ever gets to see, also one that is gone again at once.
class WindowRecord final
{
public:
    explicit WindowRecord(const Desktop &desktop)
        : spy_({"xprop", "-root", "-spy", "_NET_CLIENT_LIST"}, desktop.Variables(), Child::Output::Read)
    {
        first_ = spy_.ReadLine(Desktop::Patience);
    }

    bool SawNothingBefore() const { return first_.find("0x") == std::string::npos; }

    /// The lists of windows from the first window on, until there is none any more.
    std::vector<std::string> Lists()
    {
        std::vector<std::string> lists;
        for (std::string line = spy_.ReadLine(Desktop::Patience); !line.empty();
             line = spy_.ReadLine(Desktop::Patience)) {
            if (line.find("0x") != std::string::npos)
                lists.push_back(line);
            else if (!lists.empty())
                break;
        }
        return lists;
    }

private:
    Child spy_;
    std::string first_;
};

} // namespace

using StartTest = ProgramOnScreen;

TEST_F(StartTest, PutsUpTheFirstPort)
{
    StartRack(OneModule);
    StartProgram();
    EXPECT_EQ(PresentNode(), "COM2");
    KeepPicture("port-page");
    ExpectCloseEnds();
}

TEST_F(StartTest, ASecondOneSaysSoAndTheFirstGoesOn)
{
    StartRack(OneModule);
    StartProgram();
    const auto second = NewProgram();
    const std::string box = desktop.AwaitWindow("^VORN ERROR MESSAGE$");
    ASSERT_FALSE(box.empty());
    EXPECT_EQ(BoxText(box), "VORN 7000/3900 Series Setup / Utility Program is already running !!");
    KeepPicture("box");
    desktop.Press({"Return"});
    EXPECT_EQ(second->AwaitExit(Desktop::Patience), 0);
    EXPECT_EQ(desktop.Windows(Title::Main).size(), 1U);

    ASSERT_TRUE(desktop.Activate(mainWindow));
    Search("248");
    EXPECT_GT(Commands("$F8M"), 0);
    ExpectCloseEnds();
}

TEST_F(StartTest, ACrashedOneLeavesTheNextOneAlone)
{
    StartRack(OneModule);
    StartProgram();
    program->Signal(SIGKILL);
    EXPECT_EQ(program->AwaitExit(Desktop::Patience), 128 + SIGKILL);
    ASSERT_TRUE(desktop.AwaitNoWindow(Title::Main));
    StartProgram();
    ExpectCloseEnds();
}

TEST_F(StartTest, WithoutAPortItSaysSoAndEnds)
{
    WindowRecord record(desktop);
    ASSERT_TRUE(record.SawNothingBefore());
    program = NewProgram();
    const std::string box = desktop.AwaitWindow("^VORN Utility$");
    ASSERT_FALSE(box.empty());
    EXPECT_EQ(BoxText(box), "Host PC COMport is Disable!");
    KeepPicture("box");
    desktop.Press({"Return"});
    EXPECT_EQ(program->AwaitExit(Desktop::Patience), 0);
    // The box was the only window there ever was.
    const std::vector<std::string> lists = record.Lists();
    ASSERT_FALSE(lists.empty());
    for (const std::string &list : lists) {
        EXPECT_EQ(list, lists.front());
        EXPECT_EQ(list.find(','), std::string::npos);
    }
}

TEST_F(StartTest, TheWindowIsNeverSmallerThanItsMinimum)
{
    constexpr Desktop::Size Minimum{600, 480};
    StartRack(OneModule);
    StartProgram();
    EXPECT_EQ(desktop.SizeOf(mainWindow), Minimum);
    desktop.Resize(mainWindow, {900, 700});
    EXPECT_TRUE(Desktop::WaitFor([&] { return desktop.SizeOf(mainWindow) == Desktop::Size{900, 700}; }));
    // A drag that begins while the window manager still places the window takes hold of nothing.
    const auto shrunk = [&] {
        desktop.ShrinkByMouse(mainWindow, 600);
        return desktop.SizeOf(mainWindow) == Minimum;
    };
    EXPECT_TRUE(Desktop::WaitFor(shrunk));
    EXPECT_TRUE(shrunk()) << "it gets smaller still";
    KeepPicture("smallest");
    ExpectCloseEnds();
}
