// Closing the main window ends the process well, whatever it waits for just then.

#include "ProgramOnScreen.h"

namespace
{

const std::string OneModule = "port 2\nmodule 7203 address=F8\n";
/// Everybody answers a search from F8 on.
const std::string FullEnd = "port 2\nmodule 7203 address=F8..FF\n";
const std::string TenMinutes = "600000";

} // namespace

using CloseTest = ProgramOnScreen;

TEST_F(CloseTest, InASearch)
{
    StartRack(OneModule);
    StartProgram();
    ASSERT_NO_FATAL_FAILURE(OpenSearch());
    desktop.Press({"Return"});
    ASSERT_FALSE(desktop.AwaitWindow(Title::Search).empty());
    ASSERT_TRUE(AwaitCommands("$", 3));
    KeepPicture("search");
    ExpectCloseEnds();
}

TEST_F(CloseTest, InALiveRefresh)
{
    StartRack(OneModule);
    StartProgram();
    Search("248");
    desktop.Press({"Down"});
    ASSERT_TRUE(AwaitCommands("#F8", 3));
    ExpectCloseEnds();
}

TEST_F(CloseTest, WhileTheStartAddressIsAskedFor)
{
    StartRack(OneModule);
    StartProgram();
    ASSERT_NO_FATAL_FAILURE(OpenSearch());
    desktop.Press({"alt+F4"}); // the question first: it keeps the main window from being closed
    ASSERT_TRUE(desktop.AwaitNoWindow(Title::StartAddress));
    EXPECT_TRUE(program->Running());
    EXPECT_EQ(Commands("$"), 0);
    ExpectCloseEnds();
}

TEST_F(CloseTest, InATransactionOfASearchThatLasts)
{
    StartRack(OneModule);
    StartProgram();
    SetTimeOut(TenMinutes);
    ASSERT_NO_FATAL_FAILURE(OpenSearch());
    desktop.Type("16");
    desktop.Press({"Return"});
    ASSERT_TRUE(Desktop::WaitFor([&] { return Commands("$10M") == 1; }));
    KeepPicture("search");
    EXPECT_EQ(Commands("$"), 1);
    ExpectCloseEnds();
}

TEST_F(CloseTest, InATransactionOfAPageLoadThatLasts)
{
    StartRack(FullEnd + "fault silent begins=$F82\n");
    StartProgram();
    SetTimeOut(TenMinutes);
    Search("248");
    desktop.Press({"Down"});
    ASSERT_TRUE(Desktop::WaitFor([&] { return Commands("$F82") == 1; }));
    KeepPicture("page");
    EXPECT_EQ(Commands("$F82"), 1);
    ExpectCloseEnds();
}

TEST_F(CloseTest, InATransactionOfARefreshThatLasts)
{
    StartRack(FullEnd + "fault silent begins=#F8\n");
    StartProgram();
    SetTimeOut(TenMinutes);
    Search("248");
    desktop.Press({"Down"});
    ASSERT_TRUE(Desktop::WaitFor([&] { return Commands("#F8") == 1; }));
    KeepPicture("page");
    EXPECT_EQ(Commands("#F8"), 1);
    ExpectCloseEnds();
}

TEST_F(CloseTest, ByTheMenu)
{
    StartRack(OneModule);
    StartProgram();
    desktop.Press({"alt+f"});
    desktop.Press({"e"});
    EXPECT_EQ(program->AwaitExit(Desktop::Patience), 0);
    EXPECT_TRUE(PortIsFree());
}
