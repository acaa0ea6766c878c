#include "RackRunner.h"

#include "simulator/BusText.h"
#include "simulator/Models.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace
{

using namespace vornsim;

class DemoRackTest : public testing::Test
{
protected:
    DemoRackTest() : simulator_(DemoRack(), folder_.Path()) { simulator_.Start(); }

    TemporaryFolder folder_;
    Simulator simulator_;
};

TEST_F(DemoRackTest, HasItsPortsAt9600)
{
    EXPECT_EQ(simulator_.Ports(), (std::vector<int>{2, 4, 6}));
    for (const int port : simulator_.Ports())
        EXPECT_EQ(simulator_.LineSpeed(port), 9600);
}

TEST_F(DemoRackTest, HasTrafficOfAnotherMasterToWatch)
{
    RawPeer listener(simulator_.Link(6));
    std::string before;
    // What passed while the port was being opened may be a part: the second reply has all in front of it.
    for (int replies = 0; replies < 2;) {
        const std::string line = listener.ReadLine();
        ASSERT_FALSE(line.empty()) << "silence after " << before;
        replies += line == "!0AVORN7221" ? 1 : 0;
        if (replies < 2)
            before = line;
    }
    EXPECT_EQ(before, "$0AM");
}

TEST_F(DemoRackTest, ASearchFindsEveryModel)
{
    std::set<std::string> models;
    for (const int port : {2, 4}) {
        RawPeer peer(simulator_.Link(port));
        for (const std::string &line : simulator_.Describe(port)) {
            const std::string address = line.substr(0, 2);
            if (line.find("19200") != std::string::npos)
                peer.SetSpeed(19200);
            std::string command = "$" + address + "M";
            const bool checksum =
                line.find("checksum") != std::string::npos && line.find("INIT") == std::string::npos;
            if (checksum)
                command += Checksum(command);
            std::string reply = peer.Ask(command);
            peer.SetSpeed(9600);
            ASSERT_EQ(reply.substr(0, 3), "!" + address) << line;
            if (checksum)
                reply.resize(reply.size() - 2);
            models.insert(reply.substr(reply.find("VORN") == std::string::npos ? 3 : 7));
        }
    }
    std::set<std::string> expected;
    for (const ModelRow &model : AllModels()) {
        if (!model.IsCard())
            expected.emplace(model.name);
    }
    EXPECT_EQ(models, expected);
}

TEST_F(DemoRackTest, ItsBaseUnitsHoldEveryCard)
{
    RawPeer peer(simulator_.Link(2));
    EXPECT_EQ(peer.Ask("$20T"), "!202123"
                                "3H"
                                "2531425162");
    EXPECT_EQ(peer.Ask("$21T" + Checksum("$21T")), "!214446485357" + Checksum("!214446485357"));
}

TEST_F(DemoRackTest, HasAModuleInInitState)
{
    RawPeer peer(simulator_.Link(4));
    EXPECT_EQ(peer.Ask("$002"), "!05400640");
    EXPECT_EQ(peer.Ask("$00M"), "!00VORN7252");
}

} // namespace
