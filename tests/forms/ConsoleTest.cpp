// What all consoles have of their window: port, closing, ticks and clicks that meet.

#include "support/ConsoleRun.h"
#include "support/LateConsoleRun.h"

#include "platform/MSComm.h"
#include "protocol/CommandFrame.h"

#include <QTextBrowser>

namespace
{

class ConsoleTest : public ::testing::Test, public ConsoleRun
{
};

TEST_F(ConsoleTest, APortThatIsHeldIsToldAndTheConsoleCloses)
{
    Rack("7254 address=0A");
    Operate([&](Operator &op) {
        vorn::MSComm holder(main().MSComm1.Ports());
        op.Gui([&] {
            holder.SetCommPort(2);
            holder.SetPortOpen(true);
        });
        ClickConsole(op, "_0002!!0A7254");
        op.AnswerBox("Port already open !", 16, "Port already open");
        op.WaitFor([&] { return !Console(); }, "the end of the console");
        EXPECT_EQ(rack().Commands(2), Lines{});
        op.Gui([&] { holder.SetPortOpen(false); });
    });
}

TEST_F(ConsoleTest, APortThatVanishesIsToldOnceAndTheConsoleCloses)
{
    Rack("7254 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7254");
        rack().Pull(2);
        op.Gui([&] { Timer()->setInterval(1); });
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.WaitFor([&] { return !Console(); }, "the end of the console");
    });
}

TEST_F(ConsoleTest, AConsoleKeepsItsPortFromLoadToUnload)
{
    Rack("7254 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7254");
        EXPECT_TRUE(op.Gui([&] { return Console()->MSComm.PortOpen(); }));
        EXPECT_EQ(op.Gui([&] { return Console()->MSComm.Settings(); }), "9600,N,8,1");
        op.Press(Console(), Qt::Key_Escape);
        op.WaitFor([&] { return !Console(); }, "the end of the console");
        vorn::MSComm other(main().MSComm1.Ports());
        op.Gui([&] {
            other.SetCommPort(2);
            other.SetPortOpen(true);
            other.SetPortOpen(false);
        });
    });
}

TEST_F(ConsoleTest, WithoutALineSpeedItIsToldAndTheConsoleCloses)
{
    Rack("7254 address=0A");
    Operate([&](Operator &op) {
        op.Gui([&] { main().CmbPBaudrate->setCurrentIndex(-1); });
        ClickConsole(op, "_0002!!0A7254");
        op.AnswerBox("Invalid baud rate !", 16, "Invalid baud rate");
        op.WaitFor([&] { return !Console(); }, "the end of the console");
        EXPECT_EQ(rack().Commands(2), Lines{});
    });
}

TEST_F(ConsoleTest, RepliesThatComeASecondLateCountForNothing)
{
    Rack("7254 address=0A inputs=1234");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7254");
        rack().SetDelay(2, std::chrono::seconds(1));
        rack().SetValue(2, "0A", "inputs", "5678");
        op.Gui([&] { clock.slowness = 4; });
        EXPECT_EQ(Poll(op), (Lines{"$0A6"}));
        EXPECT_EQ(TextOf(op, "LabDHv"), "12");
        EXPECT_EQ(op.Gui([&] { return Console()->Reply; }), "");
        op.Press(Console(), Qt::Key_Escape);
        op.WaitFor([&] { return !Console(); }, "the end of the console");
    });
}

TEST_F(ConsoleTest, F1OpensTheHelpOfTheModelInAWindowThatCanBeUsed)
{
    Rack("7254 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7254");
        op.Press(Console(), Qt::Key_F1);
        const auto pages = [&] { return Console()->findChild<QTextBrowser *>(QStringLiteral("HelpPages")); };
        op.WaitFor([&] { return pages() && pages()->isVisible(); }, "the help");
        EXPECT_EQ(op.Gui([&] { return pages()->source().fileName(); }),
                  QStringLiteral("digital-console.html"));
        EXPECT_TRUE(op.Gui([&] { return pages()->isEnabled() && pages()->window() != Console(); }));
        Close(op);
    });
}

class AnyConsoleTest : public ConsoleRun, public ::testing::TestWithParam<const char *>
{
};

TEST_P(AnyConsoleTest, StaysUsableWhateverTheModuleAnswers)
{
    using Kind = vornsim::Fault::Kind;
    clock.slowness = 1; // most polls meet silence
    Rack(std::string(GetParam()) + " address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, std::string("_0002!!0A") + GetParam());
        for (const Kind kind : {Kind::Garbage, Kind::NoReturn, Kind::InnerReturn, Kind::Lone, Kind::Long,
                                Kind::AllBytes, Kind::WrongAddress, Kind::Split}) {
            rack().ClearFaults();
            rack().SetFault(2, "0A", {.kind = kind, .text = "X"});
            EXPECT_FALSE(Poll(op).empty());
        }
        rack().ClearFaults();
        op.Gui([&] { clock.slowness = 10; });
        EXPECT_FALSE(Poll(op).empty());
        EXPECT_TRUE(op.Gui(
            [&] { return vorn::IsAccepted(Console()->Reply) || vorn::IsAccepted(Console()->Reply, '>'); }));
        Close(op);
    });
}

// That of 7276 tells of each reply that it can't take, see there.
INSTANTIATE_TEST_SUITE_P(Consoles, AnyConsoleTest,
                         ::testing::Values("7216", "7221P", "7224P", "7227", "7234", "7254", "7262"));

class LateConsoleTest : public ::testing::Test, public LateConsoleRun
{
};

TEST_F(LateConsoleTest, ATickThatMeetsATransactionIsDropped)
{
    LateBus bus(ports.Link(2), "module 7254 address=0A");
    Operate([&](Operator &op) {
        Open(op, bus, "_0002!!0A7254");
        bus.Hold("$0A6");
        Tick(op);
        op.WaitFor([&] { return bus.Held() == "$0A6"; }, "the poll");
        Tick(op);
        Tick(op);
        bus.Release();
        op.WaitFor([&] { return !main().Gate.IsOnLine(); }, "the reply");
        op.Settle();
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0A6"}));
        Tick(op);
        op.WaitFor([&] { return bus.Lines().size() == 2; }, "the next poll");
        clock.ticks.reset();
        op.Gui([&] { Console()->close(); });
        op.WaitFor([&] { return !Console(); }, "the end");
    });
}

TEST_F(LateConsoleTest, AClickInATransactionRunsBehindItOnce)
{
    LateBus bus(ports.Link(2), "module 7262 address=0A inputs=00 outputs=00");
    Operate([&](Operator &op) {
        Open(op, bus, "_0002!!0A7262");
        bus.Hold("$0A6");
        Tick(op);
        op.WaitFor([&] { return bus.Held() == "$0A6"; }, "the poll");
        op.Gui([&] {
            QTest::keyClick(Part("DIOH_1"), Qt::Key_Space);
            QTest::keyClick(Part("DIOH_2"), Qt::Key_Space);
        });
        op.Settle();
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0A6"})) << "nothing enters a transaction";
        bus.Release();
        op.WaitFor([&] { return bus.Lines().size() == 3; }, "both switches");
        op.Settle();
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0A6", "#0A0002", "#0A0006"}));
        clock.ticks.reset();
        op.Gui([&] { Console()->close(); });
        op.WaitFor([&] { return !Console(); }, "the end");
    });
}

TEST_F(LateConsoleTest, ClosingInATransactionLeavesTheConsoleAndNothingFollows)
{
    LateBus bus(ports.Link(2), "module 7262 address=0A inputs=00 outputs=00");
    Operate([&](Operator &op) {
        Open(op, bus, "_0002!!0A7262");
        bus.Hold("#0A00");
        op.Gui([&] { QTest::keyClick(Part("DIOH_1"), Qt::Key_Space); });
        op.WaitFor([&] { return !bus.Held().empty(); }, "the switch");
        op.Gui([&] {
            Part<QAbstractButton>("cmdGeneralUpdate")->click();
            Console()->close();
        });
        op.WaitFor([&] { return !Console(); }, "the end");
        bus.Release();
        op.Settle();
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"#0A0002"}));
        clock.ticks.reset();
    });
}

TEST_F(LateConsoleTest, ClosingInTheSettlingTimeOfAnUpdateSendsNothingMore)
{
    LateBus bus(ports.Link(2), "module 7254 address=0A");
    Operate([&](Operator &op) {
        Open(op, bus, "_0002!!0A7254");
        op.Gui([&] { Part<QAbstractButton>("cmdGeneralUpdate")->click(); });
        op.Settle();
        op.WaitFor([&] { return Console()->Updating; }, "the update"); // its clock stands still
        op.Gui([&] { Console()->close(); });
        op.WaitFor([&] { return !Console(); }, "the end");
        EXPECT_EQ(bus.Lines(), std::vector<std::string>{});
        clock.ticks.reset();
    });
}

TEST_F(LateConsoleTest, ASwitchInTheSettlingTimeOfAnUpdateRunsBehindIt)
{
    LateBus bus(ports.Link(2), "module 7262 address=0A inputs=00 outputs=00");
    Operate([&](Operator &op) {
        Open(op, bus, "_0002!!0A7262");
        clock.ticks.reset();
        op.Gui([&] { Part<QAbstractButton>("cmdGeneralUpdate")->click(); });
        op.WaitFor([&] { return Console()->Updating; }, "the update");
        op.Gui([&] { QTest::keyClick(Part("DIOH_0"), Qt::Key_Space); });
        op.AnswerBox("Configuration is successful!", 64, "Configuration is successful");
        op.WaitFor([&] { return bus.Lines().size() == 3; }, "the switch");
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"%0A0A400600", "$0A2", "#0A0001"}));
        op.Gui([&] { Console()->close(); });
        op.WaitFor([&] { return !Console(); }, "the end");
    });
}

TEST_F(LateConsoleTest, ATickAboveWhichABoxStandsIsDropped)
{
    LateBus bus(ports.Link(2), "module 7216 address=0A");
    Operate([&](Operator &op) {
        Open(op, bus, "_0002!!0A7216");
        clock.ticks.reset();
        op.Gui([&] { Part<QAbstractButton>("cmdSpanCal")->click(); });
        op.AwaitMessage("Please apply");
        Tick(op);
        Tick(op);
        EXPECT_EQ(bus.Lines(), std::vector<std::string>{});
        op.AnswerBox("Please apply 140ohm to Channel 0", 1, "Vorn-7216 Span Calibration");
        op.AnswerBox("Span Calibration is successful!", 64, "Span Calibration is successful");
        op.Settle();
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0A0C0"}));
        op.Gui([&] { Console()->close(); });
        op.WaitFor([&] { return !Console(); }, "the end");
    });
}

TEST_F(LateConsoleTest, ClosingDuringTheLoadEndsIt)
{
    LateBus bus(ports.Link(2), "module 7224P address=0A");
    Operate([&](Operator &op) {
        bus.Hold("$0A2");
        op.Gui([&] {
            clock.ticks = 1;
            main().Nodes.Add("KeyCOM002", "_0002!!0A7224P", "(0A)", "vorn4ico", "vorn4icoS");
            LeftClick("_0002!!0A7224P");
        });
        op.WaitFor([&] { return bus.Held() == "$0A2"; }, "the record");
        op.Gui([&] { Console()->close(); });
        op.WaitFor([&] { return !Console(); }, "the end");
        bus.Release();
        op.Settle();
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"$0AY", "$0A2"}));
        EXPECT_FALSE(main().MSComm1.PortOpen());
    });
}

TEST_F(LateConsoleTest, ASecondPressOfUpdateIsIgnored)
{
    LateBus bus(ports.Link(2), "module 7254 address=0A");
    Operate([&](Operator &op) {
        Open(op, bus, "_0002!!0A7254");
        clock.ticks.reset();
        op.Gui([&] {
            Part<QAbstractButton>("cmdGeneralUpdate")->click();
            Part<QAbstractButton>("cmdGeneralUpdate")->click();
        });
        op.AnswerBox("Configuration is successful!", 64, "Configuration is successful");
        op.Settle();
        EXPECT_EQ(bus.Lines(), (std::vector<std::string>{"%0A0A400600", "$0A2"}));
        op.Gui([&] { Console()->close(); });
        op.WaitFor([&] { return !Console(); }, "the end");
    });
}

} // namespace
