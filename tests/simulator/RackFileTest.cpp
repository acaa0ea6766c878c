#include "RackRunner.h"

#include "simulator/Module.h"
#include "simulator/Rack.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace
{

using namespace vornsim;

TEST(RackFile, PortsModulesSlotsFaultsAndMasters)
{
    const Rack rack = ParseRack("# a rack\n"
                                "port 2 speed=19200 pace=yes # with a comment\n"
                                "\n"
                                "\tmodule 7221 address=05 value3=+01.234\r\n"
                                "fault late delay=70 begins=#05 times=3 at=4 length=9 seed=8 text=a\\x20b\n"
                                "module 3900E address=0A slots=3921,-,3962\n"
                                "slot 4 3931 range1=31\n"
                                "port 4 delay=300\n"
                                "fault silent\n"
                                "master every=50 send=$0AM,#0A0 cut=3 gap=7 times=9 checksum=yes\n");
    ASSERT_EQ(rack.ports.size(), 2U);
    const PortDescription &first = rack.ports[0];
    EXPECT_EQ(first.number, 2);
    EXPECT_EQ(first.speed, 19200);
    EXPECT_TRUE(first.pace);
    EXPECT_EQ(first.delay.count(), 0);
    ASSERT_EQ(first.modules.size(), 2U);
    EXPECT_EQ(first.modules[0].model, "7221");
    ASSERT_EQ(first.modules[0].faults.size(), 1U);
    const Fault &fault = first.modules[0].faults[0];
    EXPECT_EQ(fault.kind, Fault::Kind::Late);
    EXPECT_EQ(fault.delay.count(), 70);
    EXPECT_EQ(fault.begins, "#05");
    EXPECT_EQ(fault.times, 3);
    EXPECT_EQ(fault.at, 4U);
    EXPECT_EQ(fault.length, 9U);
    EXPECT_EQ(fault.seed, 8U);
    EXPECT_EQ(fault.text, "a b");
    const auto &cards = first.modules[1].cards;
    ASSERT_EQ(cards.size(), 3U);
    EXPECT_EQ(cards.at(0).model, "3921");
    EXPECT_EQ(cards.at(2).model, "3962");
    EXPECT_EQ(cards.at(4).model, "3931");

    const PortDescription &second = rack.ports[1];
    EXPECT_EQ(second.speed, 9600);
    EXPECT_FALSE(second.pace);
    EXPECT_EQ(second.delay.count(), 300);
    ASSERT_EQ(second.faults.size(), 1U);
    ASSERT_TRUE(second.master);
    EXPECT_EQ(second.master->every.count(), 50);
    EXPECT_EQ(second.master->send, (std::vector<std::string>{"$0AM", "#0A0"}));
    EXPECT_EQ(second.master->cut, 3U);
    EXPECT_EQ(second.master->gap.count(), 7);
    EXPECT_EQ(second.master->times, 9);
    EXPECT_TRUE(second.master->checksum);
}

TEST(RackFile, OneLineForManyModules)
{
    const Rack rack = ParseRack("port 1\nmodules 7256 address=01,03..05,FF inputs=55\n");
    std::string addresses;
    for (const ModuleDescription &module : rack.ports[0].modules)
        addresses += Module(module, 0).Address() + " ";
    EXPECT_EQ(addresses, "01 03 04 05 FF ");
}

/// The replies of modules at one address follow each other in the order of the rack.
TEST(RackFile, ModulesCanShareAnAddress)
{
    RackRunner rack("module 7252 address=01\nmodule 7256 address=01 shared=yes\n"
                    "fault silent begins=$01F\nmodule 7252 address=02");
    rack.Peer().Write("$01M\r");
    EXPECT_EQ(rack.Peer().ReadLine(), "!01VORN7252");
    EXPECT_EQ(rack.Peer().ReadLine(), "!01VORN7256");
    EXPECT_EQ(rack.Ask("$01F"), "!01B1.02"); // the other one is silent
    EXPECT_EQ(rack.Ask("$02M"), "!02VORN7252");
    rack.Set("01", "version", "first"); // asked for by its address, the first of them is meant
    EXPECT_EQ(rack.Ask("$01F"), "!01first");
}

TEST(RackFile, AModuleInInitStateCanStandBesideOneAt00)
{
    RackRunner rack("module 7252 address=00\nmodule 7256 address=05 init=yes shared=yes");
    rack.Peer().Write("$002\r");
    EXPECT_EQ(rack.Peer().ReadLine(), "!00400600");
    EXPECT_EQ(rack.Peer().ReadLine(), "!05400600");
    EXPECT_TRUE(rack.IsSilent("$052"));
}

TEST(RackFile, ARangeOfAddressesCanBeShared)
{
    const Rack rack =
        ParseRack("port 1\nmodules 7256 address=01..03\nmodules 7252 address=02..04 shared=yes\n");
    std::string modules;
    for (const ModuleDescription &module : rack.ports[0].modules)
        modules += Module(module, 0).Address() + ":" + module.model + " ";
    EXPECT_EQ(modules, "01:7256 02:7256 03:7256 02:7252 03:7252 04:7252 ");
}

TEST(RackFile, SettingsDontDependOnTheirOrder)
{
    EXPECT_NO_THROW(ParseRack("port 1\nmodule 7203 high=+700.00 range=0E address=01\n"));
    EXPECT_NO_THROW(ParseRack("port 1\nmodule 7231 output=+050.00 format=01 range=31 address=01\n"));
}

struct ErrorCase {
    const char *text;
    int line;
    const char *message;
};

TEST(RackFile, EveryErrorHasItsLine)
{
    const ErrorCase cases[] = {
        {"", 1, "line 1: no port in the rack"},
        {"\n# nothing\n", 3, "line 3: no port in the rack"},
        {"prot 1", 1, "line 1: unknown word \"prot\""},
        {"\nmodule 7252 address=01", 2, "line 2: \"module\" before any port"},
        {"master send=$01M", 1, "line 1: \"master\" before any port"},
        {"fault silent", 1, "line 1: \"fault\" before any port"},
        {"port", 1, "line 1: \"port\" needs a number"},
        {"port 0", 1, "line 1: \"0\" is no port number from 1 to 255"},
        {"port 256", 1, "line 1: \"256\" is no port number from 1 to 255"},
        {"port two", 1, "line 1: \"two\" is no port number from 1 to 255"},
        {"port 1\nport 1", 2, "line 2: port 1 is there already"},
        {"port 1 speed=300", 1, "line 1: \"300\" is no speed"},
        {"port 1 pace=on", 1, "line 1: \"on\" is no pace"},
        {"port 1 width=8", 1, "line 1: \"port\" has no key \"width\""},
        {"port 1 fast", 1, "line 1: \"fast\" is no key=value"},
        {"port 1\n\n\n\n\n\nmodule 7290 address=01", 7, "line 7: unknown model \"7290\""},
        {"port 1\nmodule 3923 address=01", 2, "line 2: unknown model \"3923\""},
        {"port 1\nmodule", 2, "line 2: \"module\" needs a model"},
        {"port 1\nmodule 7252", 2, "line 2: \"module\" needs address="},
        {"port 1\nmodule 7252 address=5", 2, "line 2: \"5\" is no address"},
        {"port 1\nmodule 7252 address=0a", 2, "line 2: \"0a\" is no address"},
        {"port 1\nmodules 7252 address=05..01", 2, "line 2: \"05..01\" is no address"},
        {"port 1\nmodule 7252 address=01\nmodule 7256 address=01\n", 3,
         "line 3: address 01 is taken already"},
        {"port 1\nmodule 7252 address=00\nmodule 7256 address=05 init=yes\n", 3,
         "line 3: address 00 is taken already"},
        {"port 1\nmodule 7252 address=01 shared=yes\nmodule 7256 address=01\n", 3,
         "line 3: address 01 is taken already"},
        {"port 1\nmodule 7252 address=01\nmodule 7256 address=01 shared=no\n", 3,
         "line 3: address 01 is taken already"},
        {"port 1\nmodule 7252 address=01 shared=yes\nmodule 7252 address=02,02\n", 3,
         "line 3: address 02 is taken already"},
        {"port 1\nmodule 7252 address=01 shared=maybe\n", 2, "line 2: \"maybe\" is no shared"},
        {"port 1\nmodule 7252 address=01 inputs=00\nmodule 7221 address=02 value=1 value=2\n", 3,
         "line 3: \"value\" is given twice"},
        {"port 1\nmodule 7252 address=01 address=02\n", 2, "line 2: \"address\" is given twice"},
        {"port 1 speed=9600 pace=no speed=1200", 1, "line 1: \"speed\" is given twice"},
        {"port 1 delay=-1", 1, "line 1: \"-1\" is no delay"},
        {"port 1\nfault late delay=1 delay=2", 2, "line 2: \"delay\" is given twice"},
        {"port 1\nmaster send=$01M\nmaster send=$02M", 3, "line 3: the port has a master already"},
        {"port 1\nmodule 3900 address=01\nslot 1 3923\nslot 2 3923 mask=01 mask=02", 4,
         "line 4: \"mask\" is given twice"},
        {"port 1\nmodule 3900 address=01\nslot 1 3923\nslot 1 3921", 4, "line 4: slot 1 has a card already"},
        {"port 1\nmodule 3900 address=01 slots=-,3923\nslot 0 3921\nslot 1 3923", 4,
         "line 4: slot 1 has a card already"},
        {"port 1\nmodule 7252 address=01 colour=red\n", 2, "line 2: a 7252 has no setting \"colour\""},
        {"port 1\nmodule 7252 address=01 value=1\n", 2, "line 2: a 7252 has no setting \"value\""},
        {"port 1\nmodule 7221 address=01 value8=1\n", 2, "line 2: a 7221 has no setting \"value8\""},
        {"port 1\nmodule 7221 address=01 value=one\n", 2, "line 2: a 7221 can't take \"one\" as value"},
        {"port 1\nmodule 7221 address=01 range=00\n", 2, "line 2: a 7221 can't take \"00\" as range"},
        {"port 1\nmodule 7221 address=01 family=maybe\n", 2, "line 2: a 7221 can't take \"maybe\" as family"},
        {"port 1\nmodule 7231 address=01 trim=much\n", 2, "line 2: a 7231 can't take \"much\" as trim"},
        {"port 1\nslot 0 3923", 2, "line 2: \"slot\" before any module"},
        {"port 1\nmodule 3900 address=01\nslot x 3923", 3, "line 3: \"x\" is no slot"},
        {"port 1\nmodule 3900 address=01\nslot 0", 3, "line 3: \"slot\" needs a card"},
        {"port 1\nmodule 3900 address=01\nslot 0 7252", 3, "line 3: unknown card \"7252\""},
        {"port 1\nmodule 3900 address=01\nslot 5 3923", 3, "line 3: a 3900 has no slot 5"},
        {"port 1\nmodule 7252 address=01\nslot 0 3923", 3, "line 3: a 7252 has no slot 0"},
        {"port 1\nmodule 3900 address=01\n\nslot 0 3923 range=FF\nport 2", 4,
         "line 4: a 3923 can't take \"FF\" as range"},
        {"port 1\nmodules 3900 address=01..04 slots=3923,9999\n", 2, "line 2: unknown card \"9999\""},
        {"port 1\nfault broken", 2, "line 2: unknown fault \"broken\""},
        {"port 1\nfault late delay=soon", 2, "line 2: \"soon\" is no delay"},
        {"port 1\nfault late text=\\q", 2, "line 2: \"\\q\" is no text"},
        {"port 1\nfault late size=1", 2, "line 2: \"fault\" has no key \"size\""},
        {"port 1\nmaster every=10", 2, "line 2: \"master\" needs send="},
        {"port 1\nmaster loud=yes", 2, "line 2: \"master\" has no key \"loud\""},
    };
    for (const ErrorCase &c : cases) {
        try {
            (void)ParseRack(c.text);
            ADD_FAILURE() << "taken: " << c.text;
        } catch (const RackError &error) {
            EXPECT_STREQ(error.what(), c.message);
            EXPECT_EQ(error.line(), c.line) << c.text;
        }
    }
}

TEST(RackFile, TheExampleCanBeBuilt)
{
    std::ifstream file(VORNSIM_EXAMPLE);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(ParseRack(text).ports.size(), 3U);
}

} // namespace
