#include "RackRunner.h"

#include "simulator/BusText.h"

#include <gtest/gtest.h>

namespace
{

using vornsim::Fault;
using Kind = vornsim::Fault::Kind;

const std::string TwoModules = "module 7252 address=01\nmodule 7256 address=02";

TEST(Fault, ASilentModuleHearsNothing)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Silent});
    EXPECT_TRUE(rack.IsSilent("#011001"));
    EXPECT_EQ(rack.Value("01", "outputs"), "00");
    EXPECT_EQ(rack.Ask("$02M"), "!02VORN7256");
    rack.Rack().ClearFaults();
    EXPECT_EQ(rack.Ask("#011001"), "!01");
    EXPECT_EQ(rack.Value("01", "outputs"), "01");
}

TEST(Fault, ARefusingModuleDoesNothing)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Refuse});
    EXPECT_EQ(rack.Ask("#011001"), "?01");
    EXPECT_EQ(rack.Value("01", "outputs"), "00");
}

TEST(Fault, OnlyCommandsThatBeginSoAndOnlySoOften)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Silent, .begins = "$01M", .times = 2});
    EXPECT_TRUE(rack.IsSilent("$01M"));
    EXPECT_EQ(rack.Ask("$012"), "!01400600");
    EXPECT_TRUE(rack.IsSilent("$01M"));
    EXPECT_EQ(rack.Ask("$01M"), "!01VORN7252");
}

TEST(Fault, TheLatestThatFitsActs)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Silent});
    rack.Rack().SetFault(1, "01", {.kind = Kind::Refuse, .begins = "$01M"});
    EXPECT_EQ(rack.Ask("$01M"), "?01");
    EXPECT_TRUE(rack.IsSilent("$012"));
    rack.Rack().SetFault(1, "01", {.kind = Kind::None});
    EXPECT_EQ(rack.Ask("$012"), "!01400600");
    EXPECT_EQ(rack.Ask("$01M"), "?01");
}

TEST(Fault, APortsFaultMeetsEveryModule)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "", {.kind = Kind::Refuse, .times = 3});
    EXPECT_EQ(rack.Peer().Ask("$01M"), "?01");
    EXPECT_EQ(rack.Peer().Ask("$02M"), "?02");
    EXPECT_EQ(rack.Peer().Ask("$FFF"), "?FF");
    EXPECT_EQ(rack.Peer().Ask("$01M"), "!01VORN7252");
}

TEST(Fault, ASplitReplyComesInTwoPieces)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Split, .delay = std::chrono::milliseconds(20), .at = 4});
    EXPECT_EQ(rack.Peer().Ask("$01M"), "!01VORN7252");
    EXPECT_EQ(rack.Pieces(), (std::vector<std::string>{"!01V", "ORN7252\r"}));
    const auto trace = rack.Rack().Trace(1);
    EXPECT_GE(trace[2].milliseconds - trace[0].milliseconds, 20);
}

TEST(Fault, ALateReplyIsWhole)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Late, .delay = std::chrono::milliseconds(40)});
    rack.Rack().ClearTrace();
    EXPECT_EQ(rack.Peer().Ask("$01M"), "!01VORN7252");
    const auto trace = rack.Rack().Trace(1);
    ASSERT_EQ(trace.size(), 2U);
    EXPECT_GE(trace[1].milliseconds - trace[0].milliseconds, 40);
}

TEST(Fault, AllRepliesOfAPortCanComeLater)
{
    RackRunner rack(TwoModules, "port 1 delay=30");
    rack.Rack().SetFault(1, "01", {.kind = Kind::Late, .times = 1, .delay = std::chrono::milliseconds(20)});
    const auto gap = [&rack](std::string_view line, std::string_view reply) {
        rack.Rack().ClearTrace();
        EXPECT_EQ(rack.Peer().Ask(line), reply);
        const auto trace = rack.Rack().Trace(1);
        EXPECT_EQ(trace.size(), 2U);
        return trace.back().milliseconds - trace.front().milliseconds;
    };
    EXPECT_GE(gap("$01M", "!01VORN7252"), 50); // on top of a fault's own delay
    EXPECT_GE(gap("$01M", "!01VORN7252"), 30);
    rack.Rack().SetDelay(1, std::chrono::milliseconds(60));
    EXPECT_GE(gap("$02M", "!02VORN7256"), 60);
}

TEST(Fault, NoReplyOvertakesALateOne)
{
    RackRunner rack(TwoModules, "port 1 delay=100");
    rack.Peer().Write("$01M\r");
    rack.Rack().SetDelay(1, std::chrono::milliseconds(0));
    rack.Peer().Write("$02M\r");
    EXPECT_EQ(rack.Peer().ReadLine(), "!01VORN7252");
    EXPECT_EQ(rack.Peer().ReadLine(), "!02VORN7256");
}

TEST(Fault, TheCarriageReturnIsMissing)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::NoReturn});
    rack.Peer().Write("$01M\r");
    EXPECT_EQ(rack.Peer().ReadBytes(11), "!01VORN7252");
    EXPECT_EQ(rack.Ask("$02M"), "!02VORN7256");
}

TEST(Fault, TextBehindTheCarriageReturnComesWithIt)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::InnerReturn, .text = "XY"});
    rack.Peer().Write("$01M\r");
    EXPECT_EQ(rack.Peer().ReadBytes(14), "!01VORN7252\rXY");
    EXPECT_EQ(rack.Pieces(), std::vector<std::string>{"!01VORN7252\rXY"});
}

TEST(Fault, ALoneCharacter)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Lone});
    rack.Peer().Write("$01M\r");
    EXPECT_EQ(rack.Peer().ReadBytes(1), "!");
    EXPECT_EQ(rack.Ask("$02M"), "!02VORN7256");
}

TEST(Fault, TheWrongAddressHasARightChecksum)
{
    RackRunner rack("module 7206 address=01 value=0 checksum=yes");
    rack.Rack().SetFault(1, "01", {.kind = Kind::WrongAddress});
    EXPECT_EQ(rack.Ask("$01M" + vornsim::Checksum("$01M")), "!02VORN7206" + vornsim::Checksum("!02VORN7206"));
    EXPECT_EQ(rack.Ask("#01" + vornsim::Checksum("#01")), ">+00.000" + vornsim::Checksum(">+00.000"));
}

TEST(Fault, TheWrongAddressStandsInARecordToo)
{
    RackRunner rack("module 7252 address=0F init=yes\nmodule 3900 address=05\n"
                    "module 7206 address=0A checksum=yes",
                    "port 1\nfault wrongaddress");
    EXPECT_EQ(rack.Peer().Ask("$002"), "!10400600"); // the stored address, which the record tells
    EXPECT_EQ(rack.Peer().Ask("$052"), "!060600");
    EXPECT_EQ(rack.Peer().Ask("$0A2" + vornsim::Checksum("$0A2")),
              "!0B080640" + vornsim::Checksum("!0B080640"));
    EXPECT_EQ(rack.Value("00", "address"), "0F"); // only the reply is wrong
}

TEST(Fault, ALongReplyArrivesWhole)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Long});
    rack.Peer().Write("$01M\r");
    const std::string bytes = rack.Peer().ReadBytes(10240);
    ASSERT_EQ(bytes.size(), 10240U);
    EXPECT_EQ(bytes.substr(0, 15), "!01VORN72521234");
    EXPECT_EQ(bytes.find('\r'), 10239U);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Long, .length = 20});
    EXPECT_EQ(rack.Ask("$01M"), "!01VORN725212345678");
}

TEST(Fault, EveryByteOnce)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::AllBytes});
    rack.Peer().Write("$01M\r");
    const std::string bytes = rack.Peer().ReadBytes(257);
    ASSERT_EQ(bytes.size(), 257U);
    for (std::size_t i = 0; i < 256; ++i)
        EXPECT_EQ(static_cast<unsigned char>(bytes[i]), i);
    EXPECT_EQ(bytes[256], '\r');
}

TEST(Fault, GarbageIsTheSameForTheSameSeed)
{
    const auto garbage = [](unsigned seed) {
        RackRunner rack(TwoModules);
        rack.Rack().SetFault(1, "01", {.kind = Kind::Garbage, .length = 3000, .seed = seed});
        rack.Peer().Write("$01M\r");
        return rack.Peer().ReadBytes(3000);
    };
    const std::string first = garbage(7);
    ASSERT_EQ(first.size(), 3000U);
    EXPECT_EQ(garbage(7), first);
    EXPECT_NE(garbage(8), first);
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_NE(first.find(static_cast<char>(byte)), std::string::npos) << byte;
}

TEST(Fault, GarbageDiffersFromTimeToTime)
{
    RackRunner rack(TwoModules);
    rack.Rack().SetFault(1, "01", {.kind = Kind::Garbage, .length = 16});
    rack.Peer().Write("$01M\r");
    const std::string first = rack.Peer().ReadBytes(16);
    rack.Peer().Write("$01M\r");
    EXPECT_NE(rack.Peer().ReadBytes(16), first);
}

TEST(Fault, FromTheRackFile)
{
    RackRunner rack("module 7252 address=01\n"
                    "fault silent begins=$01M times=1\n"
                    "fault innerreturn begins=$012 text=\\x80\\r\n"
                    "module 7256 address=02",
                    "port 1\nfault refuse begins=$02");
    EXPECT_TRUE(rack.IsSilent("$01M"));
    EXPECT_EQ(rack.Ask("$01M"), "!01VORN7252");
    EXPECT_EQ(rack.Ask("$02M"), "?02");
    rack.Peer().Write("$012\r");
    EXPECT_EQ(rack.Peer().ReadBytes(12), "!01400600\r\x80\r");
}

TEST(Fault, AnUnknownAddressIsToldApart)
{
    RackRunner rack(TwoModules);
    EXPECT_THROW(rack.Rack().SetFault(1, "33", {.kind = Kind::Silent}), std::invalid_argument);
    EXPECT_THROW(rack.Rack().SetFault(9, "", {.kind = Kind::Silent}), std::invalid_argument);
}

} // namespace
