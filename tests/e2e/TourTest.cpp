// The tour that ./run makes where there is no display.

#include "ProgramOnScreen.h"

class TourTest : public ProgramOnScreen
{
protected:
    static constexpr std::chrono::seconds PatienceForAll{60};
};

TEST_F(TourTest, PrintsTheTreeAndTakesPictures)
{
    const std::filesystem::path folder = std::filesystem::path(PICTURES_FOLDER) / "tour";
    std::filesystem::remove_all(folder);
    StartRack(
        "port 2\nmodule 7203 address=00\nmodule 3900 address=01\nslot 2 3925\nmodule 7234 address=02\n");
    Child tour({TOUR_FILE, folder}, Variables(), Child::Output::ReadBoth);
    const std::string text = tour.ReadAll(PatienceForAll);
    EXPECT_EQ(tour.AwaitExit(Desktop::Patience), 0) << text;
    EXPECT_NE(text.find("    COM2\n"
                        "      (00) 7203\n"
                        "      (01) 3900\n"
                        "        (S2) 3925\n"
                        "          CH 0\n"),
              std::string::npos)
        << text;
    for (const char *picture : {"port-page", "search", "module-list", "analog-input", "base-unit", "slot",
                                "channel", "console-7234"})
        EXPECT_TRUE(std::filesystem::exists(folder / (std::string(picture) + ".png"))) << picture;
}

TEST_F(TourTest, FailsWithoutARack)
{
    Child tour({TOUR_FILE, PICTURES_FOLDER}, Variables(), Child::Output::Discard);
    EXPECT_EQ(tour.AwaitExit(PatienceForAll), 1);
}
