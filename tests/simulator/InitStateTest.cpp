#include "RackRunner.h"

#include "simulator/BusText.h"

#include <gtest/gtest.h>

namespace
{

TEST(InitState, AnswersAt00AndReportsTheStoredAddressInItsRecordOnly)
{
    RackRunner rack("module 7252 address=05 init=yes baud=19200 checksum=yes inputs=00");
    EXPECT_EQ(rack.Ask("$002"), "!05400740");
    EXPECT_EQ(rack.Ask("$00M"), "!00VORN7252");
    EXPECT_EQ(rack.Ask("$00F"), "!00B1.02");
    EXPECT_EQ(rack.Ask("#001001"), "!00");
    EXPECT_EQ(rack.Ask("$00Q"), "?00");
    EXPECT_TRUE(rack.IsSilent("$052"));
}

TEST(InitState, TakesLineSpeedAndChecksumAndStaysInInit)
{
    RackRunner rack("module 7252 address=05 init=yes restart=0");
    EXPECT_EQ(rack.Ask("%002A400A40"), "!00");
    EXPECT_EQ(rack.Ask("$002"), "!2A400A40");
    EXPECT_TRUE(rack.IsSilent("$2A2"));
}

TEST(InitState, OutsideOfItLineSpeedAndChecksumAreRefused)
{
    RackRunner rack("module 7252 address=05 restart=0");
    EXPECT_EQ(rack.Ask("%0505400A00"), "?05");
    EXPECT_EQ(rack.Ask("%0505400640"), "?05");
    EXPECT_EQ(rack.Ask("%0506400640"), "?05");
    EXPECT_EQ(rack.Ask("$052"), "!05400600");
}

TEST(InitState, TheChecksumMayBeSentOnceItIsStored)
{
    RackRunner rack("module 7252 address=00 init=yes restart=0");
    EXPECT_EQ(rack.Ask("$002B6"), "?00"); // "$002" and its checksum, not yet stored
    EXPECT_EQ(rack.Ask("%0000400640"), "!00");
    EXPECT_EQ(rack.Ask("$002" + vornsim::Checksum("$002")), "!00400640");
    EXPECT_EQ(rack.Ask("$002"), "!00400640");
    EXPECT_EQ(rack.Ask("$002FF"), "?00");
    const std::string back = "%0000400600";
    EXPECT_EQ(rack.Ask(back + vornsim::Checksum(back)), "!00");
    EXPECT_EQ(rack.Ask("$002"), "!00400600");
}

TEST(InitState, AModuleReallyAt00RefusesTheChange)
{
    RackRunner rack("module 7252 address=00 restart=0");
    EXPECT_EQ(rack.Ask("$002"), "!00400600");
    EXPECT_EQ(rack.Ask("%0000400640"), "?00");
    EXPECT_EQ(rack.Ask("%0000400600"), "!00");
}

TEST(InitState, LeavingItBringsTheStoredRecordIntoForce)
{
    RackRunner rack("module 7252 address=05 init=yes restart=0");
    EXPECT_EQ(rack.Ask("%0006400640"), "!00");
    rack.Set("00", "init", "no");
    EXPECT_TRUE(rack.IsSilent("$002"));
    EXPECT_TRUE(rack.IsSilent("$062"));
    EXPECT_EQ(rack.Ask("$062" + vornsim::Checksum("$062")), "!06400640" + vornsim::Checksum("!06400640"));
    EXPECT_EQ(rack.Value("06", "checksum"), "yes");
}

TEST(InitState, ABaseUnitTakesItsRecordToo)
{
    RackRunner rack("module 3900 address=05 init=yes restart=0");
    EXPECT_EQ(rack.Ask("$002"), "!050600");
    EXPECT_EQ(rack.Ask("%000009C0"), "?00");
    EXPECT_EQ(rack.Ask("%00000940"), "!00");
    EXPECT_EQ(rack.Ask("$002"), "!050940");
    EXPECT_EQ(rack.Ask("$00T"), "!00FFFFFFFFFF");
}

} // namespace
