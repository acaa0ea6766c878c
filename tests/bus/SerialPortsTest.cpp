#include "support/PortsFolder.h"

#include "platform/SerialPorts.h"

#include <gtest/gtest.h>

#include <filesystem>

using vorn::NumberPorts;
using vorn::SerialPorts;
using Numbers = std::map<int, std::string>;

TEST(NumberPorts, BuiltInUartsKeepTheirNumberPlusOne)
{
    EXPECT_EQ(NumberPorts({"ttyS0", "ttyS3"}), (Numbers{{1, "ttyS0"}, {4, "ttyS3"}}));
}

TEST(NumberPorts, AdaptersFollowInNaturalOrder)
{
    EXPECT_EQ(NumberPorts({"ttyUSB10", "ttyUSB2", "ttyACM0", "ttyS1"}),
              (Numbers{{2, "ttyS1"}, {3, "ttyACM0"}, {4, "ttyUSB2"}, {5, "ttyUSB10"}}));
}

TEST(NumberPorts, AdaptersAloneBeginAtOne)
{
    EXPECT_EQ(NumberPorts({"ttyUSB0"}), (Numbers{{1, "ttyUSB0"}}));
}

TEST(NumberPorts, NamesThatOnlyLookLikeUartsAreAdapters)
{
    EXPECT_EQ(NumberPorts({"ttySAC0", "ttyS0"}), (Numbers{{1, "ttyS0"}, {2, "ttySAC0"}}));
}

TEST(NumberPorts, NoNumberGoesBeyondTheLast)
{
    EXPECT_EQ(NumberPorts({"ttyS254", "ttyS255", "ttyUSB0"}), (Numbers{{255, "ttyS254"}}));
}

TEST(SerialPorts, AnExistingFolderAloneDecides)
{
    PortsFolder folder;
    const SerialPorts ports;
    EXPECT_EQ(ports.DevicePath(12), folder.Link(12).string());
    EXPECT_EQ(ports.DevicePath(0), "");
    EXPECT_EQ(ports.DevicePath(256), "");
}

TEST(SerialPorts, NeverWritesToTheFolder)
{
    PortsFolder folder;
    const SerialPorts ports;
    (void)ports.DevicePath(1);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}
