#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "platform/Events.h"

#include <gtest/gtest.h>

#include <QComboBox>

#include <atomic>
#include <memory>
#include <numeric>

using Lines = std::vector<std::string>;

namespace
{

/// The program on one raw port, COM3, its port page on show and selected.
class TransTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(3)};

    /// The program with time enough for the peer to answer on a busy machine.
    void Operate(const std::function<void(Operator &)> &steps)
    {
        ProgramRun::Operate([&](Operator &op) {
            SetTimeOut(op, "300");
            steps(op);
        });
    }

    /// One transaction; the reply as it stands afterwards.
    std::string Trans(Operator &op, std::string cmd, bool checksum = false)
    {
        return op.Gui([&] {
            main().trans(cmd, checksum);
            return main().ReplyText;
        });
    }

    void SetTimeOut(Operator &op, const char *text)
    {
        op.Gui([&] { main().TextTimeOut->setText(QString::fromLatin1(text)); });
    }
};

} // namespace

TEST_F(TransTest, AReplyInOnePieceLosesItsCarriageReturn)
{
    peer_.Reply("$012", "!01\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(Trans(op, "$012"), "!01");
        EXPECT_EQ(peer_.Bytes(), "$012\r");
        EXPECT_FALSE(op.Gui([&] { return main().MSComm1.PortOpen(); }));
        EXPECT_FALSE(op.Gui([&] { return main().TransBusy; }));
    });
}

TEST_F(TransTest, AReplyInTwoPiecesIsJoined)
{
    peer_.OnLine([](const std::string &, const RawPeer::Writer &write) {
        write("!0");
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        write("1\r");
    });
    Operate([&](Operator &op) { EXPECT_EQ(Trans(op, "$012"), "!01"); });
}

TEST_F(TransTest, ALostCarriageReturnLeavesTheReplyBefore)
{
    peer_.Reply("$012", "!01\r");
    peer_.Reply("$022", "!0");
    Operate([&](Operator &op) {
        EXPECT_EQ(Trans(op, "$012"), "!01");
        EXPECT_EQ(Trans(op, "$022"), "!01");
    });
}

TEST_F(TransTest, SilenceEmptiesTheReply)
{
    peer_.Reply("$012", "!01\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(Trans(op, "$012"), "!01");
        EXPECT_EQ(Trans(op, "$022"), "");
    });
}

TEST_F(TransTest, AReplyThatCameWhileTheProcessHadNoTurnIsNotLate)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            int looks = 0;
            clock.ticks = 1000;
            clock.ticked = [&] {
                if (++looks != 2) // the first one that a reply is waited for
                    return;
                peer_.Send("!01\r");
                while (main().MSComm1.InBufferCount() < 4)
                    std::this_thread::yield();
                clock.ticks = 1000000;
            };
            EXPECT_EQ(main().trans("$012", false), "!01");
            clock.ticked = {};
        });
        op.WaitFor([&] { return peer_.Lines() == Lines{"$012"}; }, "the command");
    });
}

TEST_F(TransTest, OneLoneCharacterCountsAsNothing)
{
    peer_.Reply("$012", "!01\r");
    peer_.Reply("$022", "!");
    Operate([&](Operator &op) {
        EXPECT_EQ(Trans(op, "$012"), "!01");
        EXPECT_EQ(Trans(op, "$022"), "");
    });
}

TEST_F(TransTest, TextBehindACarriageReturnDoublesThePiece)
{
    peer_.Reply("$012", "!01\rX");
    Operate([&](Operator &op) { EXPECT_EQ(Trans(op, "$012"), "!01\r!01\r"); });
}

TEST_F(TransTest, TwoLinesInOnePieceKeepTheInnerCarriageReturn)
{
    // The piece ends with a carriage return, so that nothing is doubled.
    peer_.Reply("$012", "!01\r!02\r");
    Operate([&](Operator &op) { EXPECT_EQ(Trans(op, "$012"), "!01\r!02"); });
}

TEST_F(TransTest, TheChecksumGoesIntoTheCallersVariableAndOntoTheWire)
{
    peer_.Reply("$012B7", "!01080640\r");
    Operate([&](Operator &op) {
        std::string cmd = "$012";
        op.Gui([&] { main().trans(cmd, true); });
        EXPECT_EQ(cmd, "$012B7");
        EXPECT_EQ(peer_.Bytes(), "$012B7\r");
    });
}

TEST_F(TransTest, ThePrefixStandsInFrontAndOutsideTheChecksum)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextPretix->setText(QStringLiteral("@")); });
        Trans(op, "$012", true);
        EXPECT_EQ(peer_.Bytes(), "@$012B7\r");
    });
}

TEST_F(TransTest, AnEmptyTimeOutBecomesTen)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "");
        const std::uint32_t start = clock.GetTickCount();
        EXPECT_EQ(Trans(op, "$012"), "");
        EXPECT_GT(vorn::ElapsedTicks(clock, start), 10);
        EXPECT_EQ(op.Gui([&] { return main().TextTimeOut->text(); }), QStringLiteral("10"));
    });
}

TEST_F(TransTest, ATimeOutThatIsNoNumberSilencesTheBusForGood)
{
    peer_.Reply("$012", "!01\r");
    for (const char *text : {"eighty", "80ms", "1e", "--5", "99999999999"}) {
        peer_.Forget();
        Operate([&](Operator &op) {
            SetTimeOut(op, text);
            EXPECT_EQ(Trans(op, "$012"), "") << text;
            EXPECT_TRUE(op.Gui([&] { return main().TransBusy; })) << text;
            SetTimeOut(op, "80");
            EXPECT_EQ(Trans(op, "$012"), "") << text;
            EXPECT_TRUE(peer_.Lines().empty()) << text;
        });
    }
}

TEST_F(TransTest, ATimeOutWithBlanksOrAFractionIsANumber)
{
    peer_.Reply("$012", "!01\r");
    for (const char *text : {" 80 ", "80.4", "79.5"}) {
        Operate([&](Operator &op) {
            SetTimeOut(op, text);
            EXPECT_EQ(Trans(op, "$012"), "!01") << text;
        });
    }
}

TEST_F(TransTest, ANegativeTimeOutWaitsForNothing)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "-5");
        EXPECT_EQ(Trans(op, "$012"), "");
        EXPECT_FALSE(op.Gui([&] { return main().TransBusy; }));
        op.WaitFor([&] { return peer_.Bytes() == "$012\r"; }, "the command");
    });
}

TEST_F(TransTest, AHugeTimeOutWaitsForTheReplyAndKeepsTheWindowAlive)
{
    // The peer answers only when the window has served a step in the middle of the wait.
    Operate([&](Operator &op) {
        SetTimeOut(op, "2147483647");
        QMetaObject::invokeMethod(
            &main(), [this] { main().trans("$012", false); }, Qt::QueuedConnection);
        ASSERT_TRUE(
            op.WaitFor([&] { return peer_.Lines() == Lines{"$012"} && main().TransBusy; }, "the command"));
        peer_.Send("!01\r");
        ASSERT_TRUE(op.WaitFor([&] { return !main().TransBusy; }, "the end of the transaction"));
        EXPECT_EQ(op.Gui([&] { return main().ReplyText; }), "!01");
    });
}

TEST_F(TransTest, ACallInsideARunningTransactionDoesNothing)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "30000");
        QMetaObject::invokeMethod(
            &main(), [this] { main().trans("$012", false); }, Qt::QueuedConnection);
        ASSERT_TRUE(op.WaitFor([&] { return peer_.Lines() == Lines{"$012"}; }, "the command"));
        op.Gui([&] {
            main().ReplyText = "before";
            main().trans("$022", false);
            EXPECT_EQ(main().ReplyText, "before");
        });
        peer_.Send("!01\r");
        ASSERT_TRUE(op.WaitFor([&] { return !main().TransBusy; }, "the end of the transaction"));
        EXPECT_EQ(peer_.Lines(), Lines{"$012"});
        EXPECT_EQ(op.Gui([&] { return main().ReplyText; }), "!01");
    });
}

TEST_F(TransTest, ReturnsTheReplyThatItLeaves)
{
    peer_.Reply("$012", "!01400600\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "50");
        EXPECT_EQ(op.Gui([&] { return main().trans("$012", false); }), "!01400600");
        EXPECT_EQ(op.Gui([&] { return main().trans("$022", false); }), "");
    });
}

TEST_F(TransTest, WindowEventsAreServedAndNoActionBeginsInAnyWait)
{
    // Two characters begin a reply, so that the second wait runs as well.
    peer_.OnLine([](const std::string &, const RawPeer::Writer &write) { write("!0"); });
    Operate([&](Operator &op) {
        SetTimeOut(op, "200");
        bool served = false;
        bool acted = false;
        op.Gui([&] {
            main().Gate.Take({.context = &main(), .action = [&] { acted = true; }});
            vorn::Queue(&main(), [&] { served = true; });
            main().trans("$012", false);
            EXPECT_TRUE(served);
            EXPECT_FALSE(acted);
        });
        op.WaitFor([&] { return acted; }, "the action");
    });
}

TEST_F(TransTest, ARefusedPortLeavesNoReplyOfAnotherTransaction)
{
    peer_.Reply("$012", "!01400600\r");
    Operate([&](Operator &op) {
        Trans(op, "$012");
        const RawPeer other(ports.Link(9));
        std::filesystem::remove(ports.Link(3));
        std::filesystem::copy_symlink(ports.Link(9), ports.Link(3));
        vorn::SerialPorts machine;
        vorn::MSComm holder(machine);
        op.Gui([&] {
            holder.SetCommPort(9);
            holder.SetPortOpen(true);
        });
        QMetaObject::invokeMethod(
            &main(), [this] { main().trans("$022", false); }, Qt::QueuedConnection);
        op.AnswerBox("Port already open !", 16, "Port already open");
        op.WaitFor([&] { return !main().Gate.IsOnLine(); }, "the end of the transaction");
        EXPECT_EQ(op.Gui([&] { return main().ReplyText; }), "");
        op.Gui([&] {
            holder.SetPortOpen(false);
            main().ReplyText = "!01";
        });
        std::filesystem::remove(ports.Link(3));
        QMetaObject::invokeMethod(
            &main(), [this] { main().trans("$022", false); }, Qt::QueuedConnection);
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.WaitFor([&] { return !main().Gate.IsOnLine(); }, "the end of the transaction");
        EXPECT_EQ(op.Gui([&] { return main().ReplyText; }), "");
    });
}

TEST_F(TransTest, TheBaudRateOfThePortPageIsUsed)
{
    Operate([&](Operator &op) {
        for (const auto &[index, baud] : {std::pair{0, 1200}, {3, 9600}, {7, 115200}}) {
            op.Gui([&] { main().CmbPBaudrate->setCurrentIndex(index); });
            Trans(op, "$012");
            EXPECT_EQ(peer_.Speed(), baud);
        }
    });
}

TEST_F(TransTest, NoBaudRateIsRefusedByTheControlAndSilencesTheBus)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().CmbPBaudrate->setCurrentIndex(-1); });
        EXPECT_EQ(Trans(op, "$012"), "");
        EXPECT_TRUE(op.Gui([&] { return main().TransBusy; }));
        EXPECT_TRUE(peer_.Bytes().empty());
    });
}

TEST_F(TransTest, WithoutAParentOfTheSelectionTheBusFallsSilent)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().Nodes.Select("KeyPC"); });
        EXPECT_EQ(Trans(op, "$012"), "");
        EXPECT_TRUE(op.Gui([&] { return main().TransBusy; }));
    });
}

TEST_F(TransTest, ThePortOfAModuleNodeIsReadFromItsKey)
{
    RawPeer ten(ports.Link(10));
    ten.Reply("$0A2", "!0A400600\r");
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().Nodes.Add("KeyCOM010", "_0010!!0A7252", "(0A) 7252", "vorn4ico", "vorn4icoS");
            main().Nodes.Select("_0010!!0A7252");
        });
        EXPECT_EQ(Trans(op, "$0A2"), "!0A400600");
        EXPECT_EQ(op.Gui([&] { return main().CommPortNo; }), 10);
        op.Gui([&] { main().Nodes.Select("KeyCOM003"); });
        Trans(op, "$0A2");
        EXPECT_EQ(op.Gui([&] { return main().CommPortNo; }), 3);
        EXPECT_EQ(peer_.Lines(), Lines{"$0A2"});
    });
}

TEST_F(TransTest, APortThatHasGoneIsToldOnceAndStopsASearch)
{
    Operate([&](Operator &op) {
        std::filesystem::remove(ports.Link(3));
        op.Gui([&] { main().StopScan = main().TerminalStop = false; });
        QMetaObject::invokeMethod(
            &main(), [this] { main().trans("$012", false); }, Qt::QueuedConnection);
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.Settle();
        EXPECT_TRUE(op.Gui([&] { return main().StopScan && main().TerminalStop; }));
        EXPECT_FALSE(op.Gui([&] { return main().TransBusy; }));
    });
}

TEST_F(TransTest, APortThatIsHeldIsTold)
{
    Operate([&](Operator &op) {
        const vorn::SerialPorts machine;
        vorn::MSComm holder(machine);
        holder.SetCommPort(3);
        holder.SetPortOpen(true);
        QMetaObject::invokeMethod(
            &main(), [this] { main().trans("$012", false); }, Qt::QueuedConnection);
        op.AnswerBox("Port already open !", 16, "Port already open");
        op.Settle();
        EXPECT_TRUE(op.Gui([&] { return main().StopScan; }));
        EXPECT_FALSE(op.Gui([&] { return main().TransBusy; }));
        holder.SetPortOpen(false);
    });
}

TEST_F(TransTest, ADeviceThatVanishesInTheMiddleIsSilence)
{
    peer_.OnLine([this](const std::string &, const RawPeer::Writer &write) {
        write("!0");
        peer_.Vanish();
    });
    Operate([&](Operator &op) {
        op.Gui([&] { main().ReplyText = "before"; });
        const std::string reply = Trans(op, "$012");
        EXPECT_TRUE(reply.empty() || reply == "before")
            << "as the two characters were lost with the device or not";
        EXPECT_FALSE(op.Gui([&] { return main().TransBusy || main().MSComm1.PortOpen(); }));
        std::filesystem::remove(ports.Link(3));
    });
}

TEST_F(TransTest, AReplyOfTenKilobytesComesWhole)
{
    const std::string text = "!01" + std::string(10'000, 'x');
    peer_.Reply("$012", text + "\r");
    Operate([&](Operator &op) { EXPECT_EQ(Trans(op, "$012"), text); });
}

TEST_F(TransTest, AReplyOfAllBytesComesAsItIs)
{
    std::string all(255, '\0');
    std::iota(all.begin(), all.end(), '\1');
    std::erase(all, '\r');
    peer_.Reply("$012", all + std::string(1, '\0') + "\r");
    Operate([&](Operator &op) { EXPECT_EQ(Trans(op, "$012"), all + std::string(1, '\0')); });
}

TEST_F(TransTest, AnEndlessReplyEndsWithTheSecondTimeOut)
{
    // Shared with the peer's thread, which may be in its last write when the test has ended.
    const auto stop = std::make_shared<std::atomic<bool>>(false);
    peer_.OnLine([stop](const std::string &, const RawPeer::Writer &write) {
        while (!*stop)
            write("xxxxxxxxxxxxxxxx");
    });
    Operate([&](Operator &op) {
        op.Gui([&] { main().ReplyText = "before"; });
        EXPECT_EQ(Trans(op, "$012"), "before");
        *stop = true;
    });
}

TEST_F(TransTest, CheckcommTellsWhichPortsExist)
{
    Operate([&](Operator &op) {
        EXPECT_TRUE(op.Gui([&] { return main().checkcomm(3); }));
        EXPECT_FALSE(op.Gui([&] { return main().checkcomm(4); }));
        EXPECT_FALSE(op.Gui([&] { return main().MSComm1.PortOpen(); }));
        const vorn::SerialPorts machine;
        vorn::MSComm holder(machine);
        holder.SetCommPort(3);
        holder.SetPortOpen(true);
        EXPECT_TRUE(op.Gui([&] { return main().checkcomm(3); })) << "a held port exists";
        holder.SetPortOpen(false);
    });
}

TEST_F(TransTest, NowStatusWritesPanelOne)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().NowStatus("working ..."); });
        EXPECT_EQ(op.Gui([&] { return Status(); }), "working ...");
    });
}
