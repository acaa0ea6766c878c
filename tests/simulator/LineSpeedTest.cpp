// Line speed and checksum: what a module hears at all.

#include "RackRunner.h"

#include "simulator/BusText.h"

#include <gtest/gtest.h>

namespace
{

using vornsim::Checksum;

TEST(LineSpeed, AModuleAnswersAtItsOwnSpeedOnly)
{
    RackRunner rack("module 7252 address=01 baud=19200\nmodule 7252 address=02");
    EXPECT_TRUE(rack.IsSilent("$01M"));
    EXPECT_EQ(rack.Ask("$02M"), "!02VORN7252");
    EXPECT_EQ(rack.Rack().LineSpeed(1), 9600);

    rack.Peer().SetSpeed(19200);
    EXPECT_EQ(rack.Peer().Ask("$01M"), "!01VORN7252");
    EXPECT_EQ(rack.Rack().LineSpeed(1), 19200);
    rack.Peer().Write("$02M\r");
    EXPECT_EQ(rack.Peer().Ask("$01M"), "!01VORN7252"); // and nothing of 02 before it
}

TEST(LineSpeed, EverySpeedIsUnderstood)
{
    for (const int speed : {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200}) {
        RackRunner rack("module 7252 address=01", "port 1 speed=" + std::to_string(speed));
        EXPECT_EQ(rack.Ask("$01M"), "!01VORN7252") << speed;
        EXPECT_EQ(rack.Rack().LineSpeed(1), speed);
    }
}

TEST(LineSpeed, ANewSpeedHoldsOutsideInit)
{
    RackRunner rack("module 7252 address=05 init=yes restart=0");
    EXPECT_EQ(rack.Ask("%0005400A00"), "!00");
    EXPECT_EQ(rack.Ask("$002"), "!05400A00");
    rack.Set("00", "init", "no");
    EXPECT_TRUE(rack.IsSilent("$052"));
    rack.Peer().SetSpeed(115200);
    EXPECT_EQ(rack.Peer().Ask("$052"), "!05400A00");
    EXPECT_EQ(rack.Value("05", "baud"), "115200");
}

TEST(Checksum, AModuleWithChecksumHearsOnlyTheRightOne)
{
    RackRunner rack("module 7252 address=01 checksum=yes inputs=55");
    EXPECT_EQ(rack.Ask("$012B7"), "!01400640" + Checksum("!01400640"));
    EXPECT_EQ(rack.Ask("$01M" + Checksum("$01M")), "!01VORN7252" + Checksum("!01VORN7252"));
    EXPECT_EQ(rack.Ask("$016" + Checksum("$016")), "!005500" + Checksum("!005500"));
    for (const char *line : {"$012", "$012B8", "$012b7", "$01M", "B7"})
        EXPECT_TRUE(rack.IsSilent(line)) << line;
}

TEST(Checksum, ARefusalHasOneToo)
{
    RackRunner rack("module 7252 address=01 checksum=yes");
    EXPECT_EQ(rack.Ask("$01Q" + Checksum("$01Q")), "?01" + Checksum("?01"));
}

TEST(Checksum, WithoutChecksumItsCharactersAreAWrongCommand)
{
    RackRunner rack("module 7252 address=05");
    EXPECT_EQ(rack.Ask("$05M" + Checksum("$05M")), "?05");
}

TEST(Checksum, CardsSpeakWithTheirBaseUnits)
{
    RackRunner rack("module 3900 address=01 checksum=yes slots=3923\n");
    rack.Set("01", "slot0.value", "1");
    EXPECT_EQ(rack.Ask("#01S0C0" + Checksum("#01S0C0")), ">+01.000" + Checksum(">+01.000"));
    EXPECT_TRUE(rack.IsSilent("#01S0C0"));
}

} // namespace
