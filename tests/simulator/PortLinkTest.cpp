// Links, folders, and what becomes of a port when hosts and the simulator come and go.

#include "RackRunner.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

vornsim::Rack TwoPorts()
{
    return vornsim::ParseRack(
        "port 2\nmodule 7252 address=01\nport 40 speed=19200\nmodule 7256 address=02\n");
}

TEST(PortLink, EachPortIsALinkToItsTerminal)
{
    const TemporaryFolder folder;
    vornsim::Simulator simulator(TwoPorts(), folder.Path());
    EXPECT_EQ(simulator.Ports(), (std::vector<int>{2, 40}));
    for (const int port : {2, 40}) {
        const fs::path link = folder.Path() / ("com" + std::to_string(port));
        ASSERT_TRUE(fs::is_symlink(link));
        EXPECT_EQ(fs::read_symlink(link), simulator.Terminal(port));
        EXPECT_TRUE(fs::is_character_file(link));
    }
    EXPECT_EQ(simulator.LineSpeed(2), 9600);
    EXPECT_EQ(simulator.LineSpeed(40), 19200);
}

TEST(PortLink, LinksAndMadeFoldersAreRemovedAtTheEnd)
{
    const TemporaryFolder folder;
    const fs::path inner = folder.Path() / "a" / "b";
    {
        vornsim::Simulator simulator(TwoPorts(), inner);
        simulator.Start();
        EXPECT_TRUE(fs::is_symlink(inner / "com2"));
    }
    EXPECT_FALSE(fs::exists(folder.Path() / "a"));
    EXPECT_TRUE(fs::exists(folder.Path()));
}

TEST(PortLink, AFolderWithOtherThingsStays)
{
    const TemporaryFolder folder;
    const fs::path inner = folder.Path() / "ports";
    {
        vornsim::Simulator simulator(TwoPorts(), inner);
        std::ofstream(inner / "note") << "mine";
    }
    EXPECT_TRUE(fs::exists(inner / "note"));
    EXPECT_FALSE(fs::is_symlink(inner / "com2"));
}

TEST(PortLink, ATakenNameIsAnErrorAndLeavesNothingBehind)
{
    const TemporaryFolder folder;
    std::ofstream(folder.Path() / "com40") << "mine";
    EXPECT_THROW(vornsim::Simulator(TwoPorts(), folder.Path()), std::runtime_error);
    EXPECT_FALSE(fs::is_symlink(folder.Path() / "com2"));
    EXPECT_TRUE(fs::is_regular_file(folder.Path() / "com40"));
}

TEST(PortLink, ALinkInUseIsAnErrorAndADanglingOneIsReplaced)
{
    const TemporaryFolder folder;
    vornsim::Simulator first(TwoPorts(), folder.Path());
    EXPECT_THROW(vornsim::Simulator(TwoPorts(), folder.Path()), std::runtime_error);
    EXPECT_EQ(fs::read_symlink(folder.Path() / "com2"), first.Terminal(2));

    const TemporaryFolder other;
    fs::create_symlink("/dev/pts/none", other.Path() / "com2");
    vornsim::Simulator second(TwoPorts(), other.Path());
    EXPECT_EQ(fs::read_symlink(other.Path() / "com2"), second.Terminal(2));
}

TEST(PortLink, HostsComeAndGoWithoutAHangUp)
{
    RackRunner rack("module 7252 address=01");
    for (int i = 0; i < 100; ++i) {
        RawPeer peer(rack.Rack().Link(1));
        ASSERT_TRUE(peer.Open());
        ASSERT_EQ(peer.Ask("$01M"), "!01VORN7252") << i;
    }
}

TEST(PortLink, TheTerminalIsRawBeforeAnyHostComes)
{
    RackRunner rack("module 7252 address=01");
    const int fd = ::open(rack.Rack().Link(1).c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(fd, 0);
    termios line{};
    ASSERT_EQ(::tcgetattr(fd, &line), 0);
    EXPECT_EQ(line.c_lflag & static_cast<tcflag_t>(ECHO | ICANON | ISIG), 0U);
    EXPECT_EQ(line.c_oflag & static_cast<tcflag_t>(OPOST), 0U);
    EXPECT_EQ(line.c_iflag & static_cast<tcflag_t>(ICRNL | IXON), 0U);
    ::close(fd);
}

TEST(PortLink, AReplyThatNobodyReadIsGoneForTheNextHost)
{
    RackRunner rack("module 7252 address=01\nmodule 7256 address=02");
    rack.Peer().Write("$01M\r");
    pollfd arrived{rack.Peer().Descriptor(), POLLIN, 0};
    ASSERT_EQ(::poll(&arrived, 1, static_cast<int>(Patience / std::chrono::milliseconds(1))), 1);
    rack.Peer().Close();

    // The simulator notices the closing before it takes another host's line.
    RawPeer next(rack.Rack().Link(1));
    next.Write("$02M\r");
    std::string line = next.ReadLine();
    if (line == "!01VORN7252") // the new host was faster than the notice
        line = next.ReadLine();
    EXPECT_EQ(line, "!02VORN7256");
}

/// Takes the exclusive mark off as soon as the last host has gone. Root passes the mark, so it is read back.
TEST(PortLink, AnExclusiveMarkGoesWithTheHostThatSetIt)
{
    RackRunner rack("module 7252 address=01");
    const std::string terminal = rack.Rack().Terminal(1);
    ASSERT_EQ(::ioctl(rack.Peer().Descriptor(), TIOCEXCL), 0);
    EXPECT_EQ(rack.Ask("$01M"), "!01VORN7252");
    int exclusive = 0;
    ASSERT_EQ(::ioctl(rack.Peer().Descriptor(), TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 1); // left alone while the host is there
    rack.Peer().Close();     // as the kernel does for a host that crashed

    const auto until = std::chrono::steady_clock::now() + Patience;
    do {
        const int fd = ::open(terminal.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (fd < 0)
            continue;
        ASSERT_EQ(::ioctl(fd, TIOCGEXCL, &exclusive), 0);
        ::close(fd);
    } while (exclusive != 0 && std::chrono::steady_clock::now() < until);
    EXPECT_EQ(exclusive, 0);
}

TEST(PortLink, TheMarkStaysWhileItsHostIsThereThoughAnotherGoes)
{
    RackRunner rack("module 7252 address=01");
    RawPeer other(rack.Rack().Link(1));
    ASSERT_TRUE(other.Open());
    ASSERT_EQ(::ioctl(rack.Peer().Descriptor(), TIOCEXCL), 0);
    other.Close();
    EXPECT_EQ(rack.Ask("$01M"), "!01VORN7252"); // answered with the closing noticed
    int exclusive = 0;
    ASSERT_EQ(::ioctl(rack.Peer().Descriptor(), TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 1);
}

TEST(PortLink, WhatIsSentWhileNobodyHasThePortOpenIsLost)
{
    RackRunner rack("module 7252 address=01");
    rack.Peer().Close();
    rack.Rack().SetMaster(1, {.send = {"$01M"}, .every = std::chrono::milliseconds(1), .times = 20});
    const auto until = std::chrono::steady_clock::now() + Patience;
    while (rack.Pieces().size() < 40 && std::chrono::steady_clock::now() < until)
        std::this_thread::yield();
    ASSERT_EQ(rack.Pieces().size(), 40U); // commands and replies
    RawPeer late(rack.Rack().Link(1));
    EXPECT_EQ(late.Ask("$01F"), "!01B1.02");
}

TEST(PortLink, AVanishedPortHangsUpAndItsLinkDangles)
{
    RackRunner rack("module 7252 address=01");
    EXPECT_EQ(rack.Ask("$01M"), "!01VORN7252");
    rack.Rack().Vanish(1);
    EXPECT_EQ(rack.Peer().ReadPiece(), "");
    pollfd wait{rack.Peer().Descriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&wait, 1, 0), 1);
    EXPECT_NE(wait.revents & POLLHUP, 0);
    EXPECT_TRUE(fs::is_symlink(rack.Rack().Link(1)));
    EXPECT_FALSE(fs::exists(rack.Rack().Link(1)));
    EXPECT_FALSE(RawPeer(rack.Rack().Link(1)).Open());
    EXPECT_EQ(rack.Rack().Terminal(1), "");
    EXPECT_EQ(rack.Rack().LineSpeed(1), 9600);
    rack.Rack().Vanish(1); // nothing more to lose
    EXPECT_EQ(rack.Value("01", "outputs"), "00");
}

TEST(PortLink, AVanishedPortCanReturn)
{
    RackRunner rack("module 7252 address=01");
    EXPECT_EQ(rack.Ask("#011101"), "!01");
    rack.Rack().Vanish(1);
    rack.Rack().Return(1);
    RawPeer peer(rack.Rack().Link(1));
    ASSERT_TRUE(peer.Open());
    EXPECT_EQ(peer.Ask("$016").substr(0, 3), "!02");
}

TEST(PortLink, APulledPortHangsUpAndItsLinkGoes)
{
    RackRunner rack("module 7252 address=01 outputs=05");
    rack.Rack().Pull(1);
    EXPECT_EQ(rack.Peer().ReadPiece(), "");
    pollfd wait{rack.Peer().Descriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&wait, 1, 0), 1);
    EXPECT_NE(wait.revents & POLLHUP, 0);
    EXPECT_FALSE(fs::is_symlink(rack.Rack().Link(1)));
    EXPECT_FALSE(RawPeer(rack.Rack().Link(1)).Open());
    rack.Rack().Pull(1); // nothing more to lose

    rack.Rack().Return(1);
    const std::string terminal = rack.Rack().Terminal(1);
    EXPECT_EQ(fs::read_symlink(rack.Rack().Link(1)), terminal);
    rack.Rack().Return(1); // there already
    EXPECT_EQ(rack.Rack().Terminal(1), terminal);
    RawPeer peer(rack.Rack().Link(1));
    EXPECT_EQ(peer.Ask("$016"), "!05" + rack.Value("01", "inputs") + "00");
}

TEST(PortLink, TheLinkOfAVanishedPortCanBePulledLater)
{
    RackRunner rack("module 7252 address=01");
    rack.Rack().Vanish(1);
    EXPECT_TRUE(fs::is_symlink(rack.Rack().Link(1)));
    rack.Rack().Pull(1);
    EXPECT_FALSE(fs::is_symlink(rack.Rack().Link(1)));
}

TEST(PortLink, APulledPortStaysAwayWhileItsNameIsTaken)
{
    RackRunner rack("module 7252 address=01");
    rack.Rack().Pull(1);
    std::ofstream(rack.Rack().Link(1)) << "mine";
    EXPECT_THROW(rack.Rack().Return(1), std::runtime_error);
    EXPECT_EQ(rack.Rack().Terminal(1), "");
    EXPECT_TRUE(fs::is_regular_file(rack.Rack().Link(1)));
    fs::remove(rack.Rack().Link(1));
    rack.Rack().Return(1);
    EXPECT_EQ(RawPeer(rack.Rack().Link(1)).Ask("$01M"), "!01VORN7252");
}

/// A reply that was due in an hour goes with the adapter, and holds up nothing behind it.
TEST(PortLink, WhatWasUnderWayGoesWithAPulledPort)
{
    RackRunner rack("module 7252 address=01\nmodule 7256 address=02");
    rack.Rack().SetDelay(1, std::chrono::hours(1));
    rack.Peer().Write("$01M\r$02");
    EXPECT_EQ(rack.Rack().Commands(1), std::vector<std::string>{"$01M"});
    rack.Rack().Pull(1);
    rack.Rack().Return(1);
    rack.Rack().SetDelay(1, std::chrono::milliseconds(0));
    RawPeer peer(rack.Rack().Link(1));
    EXPECT_EQ(peer.Ask("$02M"), "!02VORN7256");
}

TEST(PortLink, TheOtherPortsOutliveAVanishedOne)
{
    const TemporaryFolder folder;
    vornsim::Simulator simulator(TwoPorts(), folder.Path());
    simulator.Start();
    simulator.Vanish(2);
    RawPeer peer(simulator.Link(40), 19200);
    EXPECT_EQ(peer.Ask("$02M"), "!02VORN7256");
}

TEST(PortLink, StoppedAndStartedAgain)
{
    RackRunner rack("module 7252 address=01");
    rack.Rack().Stop();
    rack.Rack().Stop();
    rack.Peer().Write("$01M\r");
    rack.Rack().Start();
    EXPECT_EQ(rack.Peer().ReadLine(), "!01VORN7252");
}

} // namespace
