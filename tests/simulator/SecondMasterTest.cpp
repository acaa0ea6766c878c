// Traffic of another master, as a passive listener hears it.

#include "RackRunner.h"

#include "simulator/BusText.h"

#include <gtest/gtest.h>

namespace
{

using vornsim::Master;

TEST(SecondMaster, ItsCommandsAndTheirAnswersAreHeardInTurn)
{
    RackRunner rack("module 7252 address=0A\nmodule 7206 address=0B value=1\n"
                    "master every=5 send=$0AM,#0B,$0CM times=4");
    for (const char *line : {"$0AM", "!0AVORN7252", "#0B", ">+01.000", "$0CM", "$0AM", "!0AVORN7252"})
        EXPECT_EQ(rack.Peer().ReadLine(), line);
    EXPECT_EQ(rack.Ask("$0AF"), "!0AB1.02"); // the fourth was the last
    EXPECT_EQ(rack.Rack().Commands(1), (std::vector<std::string>{"$0AF", "$FFF"}));
}

TEST(SecondMaster, LinesAreCutAtAnyByte)
{
    RackRunner rack("module 7252 address=0A");
    rack.Rack().SetMaster(1, {.send = {"$0AM"}, .cut = 3, .gap = std::chrono::milliseconds(20), .times = 1});
    EXPECT_EQ(rack.Peer().ReadBytes(17), "$0AM\r!0AVORN7252\r");
    EXPECT_EQ(rack.Pieces(), (std::vector<std::string>{"$0A", "M\r", "!0A", "VORN7252\r"}));
    const auto trace = rack.Rack().Trace(1);
    EXPECT_GE(trace[1].milliseconds - trace[0].milliseconds, 19.9);
    EXPECT_GE(trace[3].milliseconds - trace[2].milliseconds, 0);
    EXPECT_GE(trace[3].milliseconds - trace[0].milliseconds, 39.9);
}

TEST(SecondMaster, EveryCutGivesTheSameLines)
{
    for (std::size_t cut = 1; cut < 13; ++cut) {
        RackRunner rack("module 7252 address=0A");
        rack.Rack().SetMaster(
            1, {.send = {"$0AM"}, .cut = cut, .gap = std::chrono::milliseconds(1), .times = 1});
        EXPECT_EQ(rack.Peer().ReadLine(), "$0AM") << cut;
        EXPECT_EQ(rack.Peer().ReadLine(), "!0AVORN7252") << cut;
    }
}

TEST(SecondMaster, SpeaksWithChecksumWhenToldTo)
{
    RackRunner rack("module 7252 address=0A checksum=yes\nmaster send=$0AM checksum=yes times=1");
    EXPECT_EQ(rack.Peer().ReadLine(), "$0AM" + vornsim::Checksum("$0AM"));
    EXPECT_EQ(rack.Peer().ReadLine(), "!0AVORN7252" + vornsim::Checksum("!0AVORN7252"));
}

TEST(SecondMaster, AtItsFastestNothingIsLost)
{
    RackRunner rack("module 7282 address=0A rate=0\nmaster every=0 send=#0A0,#0A1 times=20000");
    for (int i = 0; i < 20000; ++i) {
        ASSERT_EQ(rack.Peer().ReadLine(), i % 2 == 0 ? "#0A0" : "#0A1") << i;
        ASSERT_EQ(rack.Peer().ReadLine(), ">00000000") << i;
    }
}

TEST(SecondMaster, CanBeStopped)
{
    RackRunner rack("module 7252 address=0A\nmaster every=1 send=$0AM");
    EXPECT_EQ(rack.Peer().ReadLine(), "$0AM");
    rack.Rack().StopMaster(1);
    rack.Rack().ClearTrace();
    rack.Peer().Write("$0AF\r");
    std::string line;
    do
        line = rack.Peer().ReadLine();
    while (line == "$0AM" || line == "!0AVORN7252");
    EXPECT_EQ(line, "!0AB1.02");
    ASSERT_EQ(rack.Rack().Trace(1).size(), 2U);
}

} // namespace
