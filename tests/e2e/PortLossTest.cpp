// The rack goes away under a running program.

#include "ProgramOnScreen.h"

#include <csignal>

using PortLossTest = ProgramOnScreen;

TEST_F(PortLossTest, IsToldOnceAndTheNextClickTriesAgain)
{
    const std::string description = "port 2\nmodule 7203 address=F8\n";
    const std::string box = "^Invalid Port Number$";
    StartRack(description);
    StartProgram();
    Search("248");
    desktop.Press({"Down"});
    ASSERT_TRUE(AwaitCommands("#F8", 3));

    rack->Signal(SIGTERM);
    EXPECT_EQ(rack->AwaitExit(Desktop::Patience), 0);
    const std::string window = desktop.AwaitWindow(box);
    ASSERT_FALSE(window.empty()) << "the program doesn't notice";
    EXPECT_EQ(BoxText(window), "Invalid Port Number !");
    KeepPicture("box");
    EXPECT_TRUE(program->Running());

    StartRack(description);
    desktop.Press({"Return"});
    EXPECT_TRUE(desktop.AwaitNoWindow(box));
    desktop.Press({"Return"}); // on the node in the tree
    EXPECT_TRUE(AwaitCommands("#F8", 3)) << "the refresh is back";
    ExpectCloseEnds();
}
