// A search from beginning to end, and the pages of what it found.

#include "ProgramOnScreen.h"

using SearchTest = ProgramOnScreen;

TEST_F(SearchTest, FindsWhatIsThereAndOpensItsPage)
{
    StartRack("port 2\n"
              "module 7203 address=F8\n"
              "module 7252 address=FA checksum=yes\n"
              "module 3900 address=FC\n"
              "slot 1 3921\n");
    StartProgram();
    Search("248");
    KeepPicture("module-list");
    EXPECT_EQ(PresentNode(), "COM2");

    desktop.Press({"Down"});
    EXPECT_EQ(PresentNode(), "(F8) 7203");
    EXPECT_TRUE(AwaitCommands("#F8", 3)) << "its page isn't live";
    KeepPicture("analog-input");

    desktop.Press({"Down"});
    EXPECT_EQ(PresentNode(), "(FA) 7252");
    EXPECT_TRUE(AwaitCommands("$FA6", 3)) << "its page isn't live";
    KeepPicture("digital");

    desktop.Press({"Down"});
    EXPECT_EQ(PresentNode(), "(FC) 3900");
    KeepPicture("base-unit");
    desktop.Press({"Right", "Down"});
    EXPECT_EQ(PresentNode(), "(S1) 3921");
    EXPECT_TRUE(AwaitCommands("#FCS1", 3)) << "its page isn't live";
    KeepPicture("slot");
    desktop.Press({"Right", "Down"});
    EXPECT_EQ(PresentNode(), "CH 0");
    EXPECT_TRUE(AwaitCommands("#FCS1C0", 3)) << "its page isn't live";
    KeepPicture("channel");
    ExpectCloseEnds();
}

TEST_F(SearchTest, TellsWhenNobodyIsThere)
{
    StartRack("port 2\nmodule 7203 address=01\n");
    StartProgram();
    ASSERT_NO_FATAL_FAILURE(OpenSearch());
    desktop.Type("250");
    desktop.Press({"Return"});
    const std::string box = desktop.AwaitWindow("^COM2 No Modules found !$");
    ASSERT_FALSE(box.empty());
    EXPECT_EQ(Commands("$FAM"), 2);
    EXPECT_EQ(Commands("$FFM"), 2);
    KeepPicture("box");
    desktop.Press({"Return"});
    EXPECT_TRUE(desktop.AwaitNoWindow("No Modules found"));
    ExpectCloseEnds();
}
