#include "support/PortsFolder.h"
#include "support/RawPeer.h"

#include "platform/MSComm.h"
#include "platform/RuntimeError.h"
#include "platform/SerialPorts.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>

#include <fstream>
#include <numeric>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace std::chrono_literals;
using vorn::MSComm;
using vorn::RuntimeError;
using vorn::SerialPorts;

namespace
{

int ErrorOf(const std::function<void()> &act)
{
    try {
        act();
    } catch (const RuntimeError &error) {
        return error.number();
    }
    return 0;
}

class MSCommTest : public ::testing::Test
{
protected:
    PortsFolder ports_;

    /// Waits until so many characters are there.
    static bool Await(MSComm &comm, int count)
    {
        for (int i = 0; i < 200 && comm.InBufferCount() < count; ++i)
            comm.WaitForInput(50ms);
        return comm.InBufferCount() >= count;
    }

    std::unique_ptr<MSComm> Open(const SerialPorts &machine, int port = 3)
    {
        auto comm = std::make_unique<MSComm>(machine);
        comm->SetCommPort(port);
        comm->SetPortOpen(true);
        return comm;
    }
};

int OpenDescriptors()
{
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        count += entry.is_symlink();
    return count;
}

} // namespace

TEST_F(MSCommTest, SendsAndReceivesEveryByteAsItIs)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    const auto comm = Open(machine);
    std::string all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');

    peer.Send(all);
    ASSERT_TRUE(Await(*comm, 256));
    EXPECT_EQ(comm->Input(), all);

    comm->Output(all + "\r");
    for (int i = 0; i < 200 && peer.Bytes().size() < 257; ++i)
        comm->WaitForInput(10ms);
    EXPECT_EQ(peer.Bytes(), all + "\r");
}

TEST_F(MSCommTest, InputLenLimitsOneReadAndLeavesTheRest)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    const auto comm = Open(machine);
    peer.Send("!0A06\r");
    ASSERT_TRUE(Await(*comm, 6));
    comm->SetInputLen(2);
    EXPECT_EQ(comm->Input(), "!0");
    comm->SetInputLen(0);
    EXPECT_EQ(comm->Input(), "A06\r");
    EXPECT_EQ(comm->Input(), "");
}

TEST_F(MSCommTest, ClearingThrowsAwayWhatCameBefore)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    const auto comm = Open(machine);
    peer.Send("late");
    ASSERT_TRUE(Await(*comm, 4));
    comm->ClearInBuffer();
    EXPECT_EQ(comm->InBufferCount(), 0);
}

TEST_F(MSCommTest, SetsTheLineSpeedAtOpening)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    MSComm comm(machine);
    comm.SetCommPort(3);
    for (const int baud : {1200, 115200, 9600}) {
        comm.SetSettings(std::to_string(baud) + ",N,8,1");
        comm.SetPortOpen(true);
        EXPECT_EQ(peer.Speed(), baud);
        comm.SetPortOpen(false);
    }
}

TEST_F(MSCommTest, RefusesSettingsThatAreNone)
{
    const SerialPorts machine;
    MSComm comm(machine);
    for (const char *settings : {"", ",N,8,1", "9600", "9600,E,7,1", "9601,N,8,1", "fast,N,8,1"})
        EXPECT_EQ(ErrorOf([&] { comm.SetSettings(settings); }), 380) << settings;
    EXPECT_EQ(comm.Settings(), "9600,N,8,1");
}

TEST_F(MSCommTest, NamesAPortThatDoesNotExist)
{
    const SerialPorts machine;
    MSComm comm(machine);
    for (const int port : {0, -1, 7, 256, 32767}) {
        comm.SetCommPort(port);
        EXPECT_EQ(ErrorOf([&] { comm.SetPortOpen(true); }), 8002) << port;
        EXPECT_FALSE(comm.PortOpen());
    }
}

TEST_F(MSCommTest, TakesBrokenLinksAndFilesThatAreNoTerminalsForNoPorts)
{
    std::filesystem::create_symlink("/nowhere/at/all", ports_.Link(3));
    std::ofstream(ports_.Root() / "file") << "text";
    std::filesystem::create_symlink(ports_.Root() / "file", ports_.Link(4));
    std::filesystem::create_symlink(ports_.Root(), ports_.Link(5));
    std::filesystem::create_symlink("/dev/null", ports_.Link(6));
    const SerialPorts machine;
    MSComm comm(machine);
    for (const int port : {3, 4, 5, 6}) {
        comm.SetCommPort(port);
        EXPECT_EQ(ErrorOf([&] { comm.SetPortOpen(true); }), 8002) << port;
    }
}

TEST_F(MSCommTest, TellsAPortThatAnotherControlHolds)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    const auto first = Open(machine);
    MSComm second(machine);
    second.SetCommPort(3);
    EXPECT_EQ(ErrorOf([&] { second.SetPortOpen(true); }), 8005);
    first->SetPortOpen(false);
    EXPECT_EQ(ErrorOf([&] { second.SetPortOpen(true); }), 0);
    EXPECT_EQ(ErrorOf([&] { second.SetPortOpen(true); }), 8005);
}

TEST_F(MSCommTest, TellsAPortThatAnotherProcessHoldsAsRootToo)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    // Another process is another open file description; the lock is all that it shows to root.
    const int other = ::open(ports_.Link(3).c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(other, 0);
    ASSERT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
    MSComm comm(machine);
    comm.SetCommPort(3);
    EXPECT_EQ(ErrorOf([&] { comm.SetPortOpen(true); }), 8005);
    ::close(other);
    EXPECT_EQ(ErrorOf([&] { comm.SetPortOpen(true); }), 0);
}

TEST_F(MSCommTest, NoPathLeaksADescriptor)
{
    RawPeer peer(ports_.Link(3));
    std::ofstream(ports_.Root() / "file") << "text";
    std::filesystem::create_symlink(ports_.Root() / "file", ports_.Link(4));
    const SerialPorts machine;
    const int before = OpenDescriptors();
    for (int i = 0; i < 20; ++i) {
        MSComm comm(machine);
        comm.SetCommPort(i % 2 ? 3 : 4);
        ErrorOf([&] { comm.SetPortOpen(true); });
        if (comm.PortOpen()) {
            MSComm second(machine);
            second.SetCommPort(3);
            ErrorOf([&] { second.SetPortOpen(true); });
        }
    }
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(MSCommTest, AVanishedDeviceIsSilentAndDoesNotSpin)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    const auto comm = Open(machine);
    peer.Send("!0");
    ASSERT_TRUE(Await(*comm, 2));
    peer.Vanish();

    rusage before{};
    ::getrusage(RUSAGE_THREAD, &before);
    for (int i = 0; i < 4; ++i)
        comm->WaitForInput(50ms);
    rusage after{};
    ::getrusage(RUSAGE_THREAD, &after);

    EXPECT_EQ(comm->Input(), "!0");
    EXPECT_EQ(comm->InBufferCount(), 0);
    comm->Output("$0A2\r");
    EXPECT_EQ(comm->InBufferCount(), 0);
    // Four quiet waits switch the thread a handful of times; a spinning wait would never switch at all.
    EXPECT_GE(after.ru_nvcsw - before.ru_nvcsw, 4);
    comm->SetPortOpen(false);
    EXPECT_EQ(ErrorOf([&] { comm->SetPortOpen(true); }), 8002);
}

TEST_F(MSCommTest, RaisesOnCommForArrivals)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    const auto comm = Open(machine);
    std::string heard;
    QObject::connect(comm.get(), &MSComm::OnComm, comm.get(), [&] { heard += comm->Input(); });
    comm->SetRThreshold(1);
    peer.Send("$0A2\r!0A080600\r");
    while (heard.size() < 15)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(heard, "$0A2\r!0A080600\r");
}

TEST_F(MSCommTest, ActingOnAClosedPortIsAnError)
{
    const SerialPorts machine;
    MSComm comm(machine);
    EXPECT_EQ(ErrorOf([&] { comm.Output("x"); }), 8018);
    EXPECT_EQ(ErrorOf([&] { comm.Input(); }), 8018);
    EXPECT_EQ(comm.InBufferCount(), 0);
}

TEST_F(MSCommTest, AMegabyteGoesOutWhole)
{
    RawPeer peer(ports_.Link(3));
    const SerialPorts machine;
    const auto comm = Open(machine);
    const std::string text(1'000'000, 'x');
    comm->Output(text);
    for (int i = 0; i < 2000 && peer.Bytes().size() < text.size(); ++i)
        comm->WaitForInput(10ms);
    EXPECT_EQ(peer.Bytes().size(), text.size());
}
