#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "core/Module1.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

/// A clock whose time of day the test sets; the tick counter runs as ever.
class SetClock final : public vorn::Clock
{
public:
    double Timer() const override
    {
        const double now = seconds_;
        seconds_ = now + step_;
        if (seconds_ >= 86400)
            seconds_ -= 86400;
        return now;
    }
    SetClock(double start, double step) : seconds_(start), step_(step) {}

private:
    mutable double seconds_;
    double step_; ///< how far each look moves it on
};

/// The main window alone, on a clock of the test's own, COM3 selected.
class WaitTest : public ::testing::Test
{
protected:
    PortsFolder ports_;
    RawPeer peer_{ports_.Link(3)};
    const vorn::SerialPorts machine_;

    int PollsOfWaitModuleReady(const SetClock &clock)
    {
        vorn::Program program({.ports = machine_, .clock = clock});
        EXPECT_TRUE(program.Load());
        program.Main.Timer1.stop();
        program.Main.TextTimeOut->setText(QStringLiteral("1"));
        peer_.Forget();
        WaitModuleReady(program.Main, "05", false);
        EXPECT_EQ(program.Main.ReplyText, "");
        for (const std::string &line : peer_.Lines())
            EXPECT_EQ(line, "$052");
        return static_cast<int>(peer_.Lines().size());
    }
};

} // namespace

TEST_F(WaitTest, WaitModuleReadyGivesUpAfterThirtySeconds)
{
    // One look at the start and one a round: at 5 s a round the seventh round is the first beyond 30 s.
    EXPECT_EQ(PollsOfWaitModuleReady(SetClock(1000, 5)), 6);
}

TEST_F(WaitTest, WaitModuleReadyKeepsItsThirtySecondsAcrossMidnight)
{
    EXPECT_EQ(PollsOfWaitModuleReady(SetClock(86395, 5)), 6);
}

TEST_F(WaitTest, WaitModuleReadyEndsWithTheFirstReplyOfAnyKind)
{
    peer_.ReplyInTurn("$052", {"", "?05\r"});
    const vorn::Clock clock;
    vorn::Program program({.ports = machine_, .clock = clock});
    ASSERT_TRUE(program.Load());
    program.Main.Timer1.stop();
    WaitModuleReady(program.Main, "05", false);
    EXPECT_EQ(program.Main.ReplyText, "?05");
}

TEST_F(WaitTest, WaitModuleReadySendsTheChecksum)
{
    peer_.Reply("$052BB", "!05400640F9\r");
    const vorn::Clock clock;
    vorn::Program program({.ports = machine_, .clock = clock});
    ASSERT_TRUE(program.Load());
    program.Main.Timer1.stop();
    WaitModuleReady(program.Main, "05", true);
    EXPECT_EQ(program.Main.ReplyText, "!05400640F9");
}

TEST_F(WaitTest, WaitCalibrationDoneAsksForTheStep)
{
    peer_.Reply("$053", "!05\r");
    const vorn::Clock clock;
    vorn::Program program({.ports = machine_, .clock = clock});
    ASSERT_TRUE(program.Load());
    program.Main.Timer1.stop();
    peer_.Forget();
    WaitCalibrationDone(program.Main, "05", false);
    EXPECT_EQ(peer_.Lines(), std::vector<std::string>{"$053"});
}

TEST_F(WaitTest, WaitTransIdleEndsWhenABusyBusStaysBusy)
{
    const SetClock clock(86399.9, 0.1);
    vorn::Program program({.ports = machine_, .clock = clock});
    ASSERT_TRUE(program.Load());
    program.Main.Timer1.stop();
    program.Main.TransBusy = true;
    WaitTransIdle(program.Main);
    EXPECT_TRUE(program.Main.TransBusy);
    program.Main.TransBusy = false;
}

TEST_F(WaitTest, DelaySecondsEndsAcrossMidnight)
{
    const SetClock clock(86399.9, 0.05);
    vorn::Program program({.ports = machine_, .clock = clock});
    const double before = clock.Timer();
    DelaySeconds(program.Main, 0.2F);
    EXPECT_GT(vorn::ElapsedSeconds(clock, before), 0.2);
}
