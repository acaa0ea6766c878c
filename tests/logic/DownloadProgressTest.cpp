#include "firmware/DownloadProgress.h"
#include "shell/TimeLeft.h"

#include <gtest/gtest.h>

using namespace vorn;

TEST(DownloadBar, CountsBlocksBehindTheirImagesBeginning)
{
    EXPECT_EQ(DownloadBar::AtBlock(32, 0), 20);
    EXPECT_EQ(DownloadBar::AtBlock(32, 31), 51);
    EXPECT_EQ(DownloadBar::AtBlock(166, 165), 185);
    EXPECT_EQ(DownloadBar::AtBlock(1024, 0), 241);
    EXPECT_EQ(DownloadBar::AtBlock(1024, 1023), 1264);
}

TEST(DownloadTimeLeft, BeginsWithTheLinesOwnTimeAndTheWaits)
{
    EXPECT_DOUBLE_EQ(SecondsOfBlock(9600), 145 * 10 / 9600.0);
    EXPECT_DOUBLE_EQ(DownloadTimeLeft(1056, 57600).Seconds(), 8 + 1056 * 1450 / 57600.0);
}

TEST(DownloadTimeLeft, FollowsTheSpeedOfTheLastBlocks)
{
    DownloadTimeLeft left(1056, 57600);
    for (int block = 0; block < 100; ++block)
        left.BlockSent(0.5);
    EXPECT_NEAR(left.Seconds(), 8 + 956 * 0.5, 2);
    for (int block = 0; block < 100; ++block)
        left.BlockSent(0.025);
    EXPECT_NEAR(left.Seconds(), 8 + 856 * 0.025, 2);
}

TEST(DownloadTimeLeft, IsNeverNegative)
{
    DownloadTimeLeft left(1, 9600);
    left.BlockSent(1);
    for (const double seconds : {1, 3, 1, 3})
        left.Waited(seconds);
    EXPECT_EQ(left.Seconds(), 0);
    EXPECT_EQ(left.Text(), "About 0 s left");
    left.Waited(3);
    EXPECT_EQ(left.Seconds(), 0);
}

TEST(DownloadTimeLeft, IsToldInMinutesAndSeconds)
{
    EXPECT_EQ(DownloadTimeLeft(0, 9600).Text(), "About 8 s left");
    EXPECT_EQ(DownloadTimeLeft(1056, 9600).Text(), "About 2 min 48 s left"); // 167.5 s
    DownloadTimeLeft minute(0, 9600);
    minute.Waited(-52);
    EXPECT_EQ(minute.Text(), "About 1 min 0 s left");
    minute.Waited(1);
    EXPECT_EQ(minute.Text(), "About 59 s left");
}

TEST(TimeLeftText, TellsHoursOfAFullMemory)
{
    EXPECT_EQ(TimeLeftText(3599.1), "About 1 h 0 min 0 s left");
    EXPECT_EQ(TimeLeftText(2 * 3600 + 61), "About 2 h 1 min 1 s left");
}

TEST(StateLeft, IsToldForEveryStage)
{
    EXPECT_EQ(StateLeftAt(DownloadStage::Preparing),
              "No part of an image has been sent. The unit stays in download mode until it is reset.");
    EXPECT_EQ(
        StateLeftAt(DownloadStage::Main),
        "The main image has been sent in part only. The unit stays in its loader until it is reset; then the "
        "download must be repeated.");
    for (const auto stage : {DownloadStage::Loader, DownloadStage::Switching, DownloadStage::Starting})
        EXPECT_NE(StateLeftAt(stage).find("eset"), std::string_view::npos);
}
