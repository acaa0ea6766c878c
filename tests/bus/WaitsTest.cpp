#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "shell/Controls.h"
#include "shell/Module1.h"

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
        ++looks_;
        const double now = seconds_;
        seconds_ = now + step_;
        if (seconds_ >= 86400)
            seconds_ -= 86400;
        return now;
    }
    SetClock(double start, double step) : seconds_(start), step_(step) {}

    int Looks() const { return looks_; }

private:
    mutable int looks_ = 0;
    mutable double seconds_;
    double step_; ///< how far each look moves it on
};

/// The program, loaded, without its refresh.
class ProgramAtRest final
{
public:
    ProgramAtRest(const vorn::SerialPorts &ports, const vorn::Clock &clock)
        : program_({.ports = ports, .clock = clock})
    {
        EXPECT_TRUE(program_.Load());
        Main.Timer1.stop();
    }

private:
    vorn::Program program_;

public:
    vorn::FormMain &Main = program_.Main;
};

/// The main window alone, on a clock of the test's own, COM3 selected.
class WaitTest : public ::testing::Test
{
protected:
    PortsFolder ports_;
    RawPeer peer_{ports_.Link(3)};
    const vorn::SerialPorts machine_;

    using Wait = void (*)(vorn::FormMain &main, const std::string &addr, bool checksum,
                          const vorn::GivenUp &givenUp);

    /// How often a wait asks a module that keeps silent.
    int PollsOf(Wait wait, const std::string &command, const SetClock &clock)
    {
        ProgramAtRest program(machine_, clock);
        program.Main.TextTimeOut->setText(QStringLiteral("1"));
        peer_.Forget();
        wait(program.Main, "05", false, {});
        EXPECT_EQ(program.Main.ReplyText, "");
        for (const std::string &line : peer_.Lines())
            EXPECT_EQ(line, command);
        return static_cast<int>(peer_.Lines().size());
    }
};

} // namespace

TEST_F(WaitTest, WaitModuleReadyGivesUpAfterThirtySeconds)
{
    // One look at the start and one a round: at 5 s a round the seventh round is the first beyond 30 s.
    EXPECT_EQ(PollsOf(vorn::WaitModuleReady, "$052", SetClock(1000, 5)), 6);
}

TEST_F(WaitTest, WaitModuleReadyKeepsItsThirtySecondsAcrossMidnight)
{
    EXPECT_EQ(PollsOf(vorn::WaitModuleReady, "$052", SetClock(86395, 5)), 6);
}

TEST_F(WaitTest, WaitModuleReadyEndsWithTheFirstReplyOfAnyKind)
{
    peer_.ReplyInTurn("$052", {"", "?05\r"});
    const vorn::Clock clock;
    ProgramAtRest program(machine_, clock);
    WaitModuleReady(program.Main, "05", false);
    EXPECT_EQ(program.Main.ReplyText, "?05");
}

TEST_F(WaitTest, WaitModuleReadySendsTheChecksum)
{
    peer_.Reply("$052BB", "!05400640F9\r");
    const vorn::Clock clock;
    ProgramAtRest program(machine_, clock);
    WaitModuleReady(program.Main, "05", true);
    EXPECT_EQ(program.Main.ReplyText, "!05400640F9");
}

TEST_F(WaitTest, AWaitThatIsGivenUpAsksNoMore)
{
    const vorn::Clock clock;
    ProgramAtRest program(machine_, clock);
    program.Main.TextTimeOut->setText(QStringLiteral("1"));
    peer_.Forget();
    int looks = 0;
    WaitModuleReady(program.Main, "05", false, [&looks] { return ++looks > 3; });
    EXPECT_EQ(peer_.Lines(), std::vector<std::string>(3, "$052"));
}

TEST_F(WaitTest, WaitCalibrationDoneAsksForTheStep)
{
    peer_.Reply("$053", "!05\r");
    const vorn::Clock clock;
    ProgramAtRest program(machine_, clock);
    peer_.Forget();
    WaitCalibrationDone(program.Main, "05", false);
    EXPECT_EQ(peer_.Lines(), std::vector<std::string>{"$053"});
}

TEST_F(WaitTest, WaitCalibrationDoneGivesUpAfterThirtySeconds)
{
    EXPECT_EQ(PollsOf(vorn::WaitCalibrationDone, "$053", SetClock(86395, 5)), 6);
}

TEST_F(WaitTest, WaitCalibrationDoneAsksACardByItsBaseUnitsAddressAlone)
{
    peer_.Reply("$053", "!05\r");
    const vorn::Clock clock;
    ProgramAtRest program(machine_, clock);
    vorn::SetTag(program.Main.Frame1, "_00032!053925");
    peer_.Forget();
    WaitCalibrationDone(program.Main, "05", false);
    EXPECT_EQ(peer_.Lines(), std::vector<std::string>{"$053"});
}

TEST_F(WaitTest, WaitTransIdleEndsWhenABusyBusStaysBusy)
{
    const SetClock clock(86399.9375, 0.125);
    ProgramAtRest program(machine_, clock);
    program.Main.TransBusy = true;
    const int before = clock.Looks();
    WaitTransIdle(program.Main);
    // The start, and five looks: the fifth is the first beyond half a second.
    EXPECT_EQ(clock.Looks() - before, 6);
    EXPECT_TRUE(program.Main.TransBusy);
    program.Main.TransBusy = false;
    WaitTransIdle(program.Main);
    EXPECT_LE(clock.Looks() - before, 7) << "an idle bus is not waited for";
}

TEST_F(WaitTest, DelaySecondsEndsAcrossMidnight)
{
    const SetClock clock(86399.9, 0.05);
    vorn::Program program({.ports = machine_, .clock = clock});
    const double before = clock.Timer();
    DelaySeconds(program.Main, 0.2F);
    EXPECT_GT(vorn::ElapsedSeconds(clock, before), 0.2);
}
