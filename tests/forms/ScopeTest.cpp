#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "platform/MSComm.h"
#include "platform/RuntimeError.h"
#include "platform/TopmostWindow.h"
#include "tools/FormFull_Screen.h"
#include "tools/FormScope.h"
#include "tools/LogView.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QFileDialog>
#include <QListWidget>
#include <QPushButton>

#include <filesystem>
#include <fstream>
#include <sstream>

using Scope = vorn::FormScope;

namespace
{

/// A scope on COM3, listening to a raw peer.
class ScopeTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(3)};

    void Operate(const std::function<void(Operator &)> &steps)
    {
        ProgramRun::Operate([&](Operator &op) {
            op.Trigger(main().ToolButton(vorn::FormMain::ScopeButton));
            ASSERT_TRUE(op.WaitFor([&] { return scope() && scope()->isVisible(); }, "the scope"));
            steps(op);
        });
    }

    Scope *scope(std::size_t port = 3)
    {
        return main().ScopeOnPort[port] ? qobject_cast<Scope *>(main().ScopeForm[port].data()) : nullptr;
    }
    std::string Log(Operator &op)
    {
        return op.Gui([&] { return scope()->Text1->Text(); });
    }
    void Start(Operator &op)
    {
        op.Click(scope()->CmdStart);
        ASSERT_TRUE(op.WaitFor([&] { return !scope()->CmdStart->isEnabled(); }, "the start"));
    }
    /// Sends bytes and waits for what the log then is to be.
    void Pass(Operator &op, const std::string &bytes, const std::string &log)
    {
        peer_.Send(bytes);
        op.WaitFor([&] { return scope()->Text1->Length() >= log.size(); }, "the lines");
        EXPECT_EQ(Log(op), log);
    }
    /// Sends a piece and waits until it was taken in.
    void PassPiece(Operator &op, const std::string &bytes)
    {
        auto *control = op.Gui([&] { return scope()->findChild<vorn::MSComm *>(QStringLiteral("MSComm1")); });
        std::size_t taken = 0;
        const auto connection = op.Gui(
            [&] { return QObject::connect(control, &vorn::MSComm::OnComm, scope(), [&] { ++taken; }); });
        peer_.Send(bytes);
        op.WaitFor([&] { return taken > 0; }, "the piece");
        op.Gui([&] { QObject::disconnect(connection); });
    }
    void Filter(Operator &op, std::initializer_list<int> addresses)
    {
        op.Gui([&] {
            for (const int address : addresses)
                scope()->ListFilter->item(address)->setSelected(true);
        });
        op.Click(scope()->CmdUpdate);
        op.WaitFor([&] { return !scope()->CmdUpdate->isEnabled(); }, "the update");
        op.Gui([&] { scope()->CheckFilter->setChecked(true); });
    }
    bool PortIsFree(int port)
    {
        const vorn::SerialPorts machine;
        vorn::MSComm other(machine);
        other.SetCommPort(port);
        try {
            other.SetPortOpen(true);
        } catch (const vorn::RuntimeError &) {
            return false;
        }
        return true;
    }
};

} // namespace

TEST_F(ScopeTest, ShowsEveryLineThatPasses)
{
    Operate([&](Operator &op) {
        EXPECT_EQ(op.Gui([&] { return scope()->windowTitle(); }), QStringLiteral("COM3 Data Scope"));
        Start(op);
        Pass(op, "$012\r", "$012\r\r\n");
        Pass(op, "!01400600\r", "$012\r\r\n!01400600\r\r\n");
        op.Gui([&] { scope()->Text1->Flush(); });
        EXPECT_EQ(op.Gui([&] { return scope()->Text1->toPlainText(); }), QStringLiteral("$012\n!01400600\n"));
        EXPECT_EQ(peer_.Bytes(), "") << "a scope sends nothing";
    });
}

TEST_F(ScopeTest, HasItsCaptionsAndStandsAboveOtherWindows)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            const std::pair<const QAbstractButton *, const char *> captions[] = {
                {scope()->CheckFilter, "&Filter"},  {scope()->CmdUpdate, "&UpDate"},
                {scope()->CmdClear, "&Clear Text"}, {scope()->CmdStart, "S&tart"},
                {scope()->CmdStop, "Sto&p"},        {scope()->CmdSave, "&Save to File"}};
            for (const auto &[button, caption] : captions)
                EXPECT_EQ(button->text(), QLatin1String(caption));
            EXPECT_TRUE(scope()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
            for (int i = 0; i < 256; ++i)
                EXPECT_EQ(scope()->ListFilter->item(i)->text(),
                          QStringLiteral("%1").arg(i, 2, 16, QLatin1Char('0')).toUpper());
            EXPECT_FALSE(scope()->CmdUpdate->isEnabled());
            scope()->ListFilter->item(7)->setSelected(true);
            EXPECT_TRUE(scope()->CmdUpdate->isEnabled());
        });
    });
}

TEST_F(ScopeTest, ListensAt9600WhateverThePortPageSays)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().CmbPBaudrate->setCurrentIndex(7); });
        Start(op);
        EXPECT_EQ(peer_.Speed(), 9600);
    });
}

TEST_F(ScopeTest, APieceWithoutACarriageReturnWaitsForTheRest)
{
    Operate([&](Operator &op) {
        Start(op);
        PassPiece(op, "$0");
        EXPECT_EQ(Log(op), "");
        PassPiece(op, "12");
        EXPECT_EQ(Log(op), "");
        Pass(op, "\r", "$012\r\r\n");
    });
}

TEST_F(ScopeTest, TheFilterShowsTheChosenAddressOnly)
{
    Operate([&](Operator &op) {
        EXPECT_FALSE(op.Gui([&] { return scope()->CmdUpdate->isEnabled(); }));
        Filter(op, {0x0A});
        Start(op);
        Pass(op, "$0A2\r", "$0A2\r\r\n");
        PassPiece(op, "$0B2\r");
        Pass(op, "!0A400600\r", "$0A2\r\r\n!0A400600\r\r\n");
    });
}

TEST_F(ScopeTest, WithNothingSelectedTextPilesUpUntilASelectionIsMade)
{
    Operate([&](Operator &op) {
        op.Gui([&] { scope()->CheckFilter->setChecked(true); });
        Start(op);
        PassPiece(op, "$0A2\r");
        PassPiece(op, "$0B2\r");
        EXPECT_EQ(Log(op), "");
        Filter(op, {0x0A});
        Pass(op, "$0C2\r", "$0A2\r$0B2\r$0C2\r\r\n");
    });
}

TEST_F(ScopeTest, TwentyOneAddressesCanBeShownAndMoreIsTold)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            EXPECT_EQ(scope()->ListFilter->count(), 256);
            EXPECT_EQ(scope()->ListFilter->item(0)->text(), QStringLiteral("00"));
            EXPECT_EQ(scope()->ListFilter->item(255)->text(), QStringLiteral("FF"));
            for (int i = 0; i < 22; ++i)
                scope()->ListFilter->item(i)->setSelected(true);
        });
        op.Click(scope()->CmdUpdate);
        op.AnswerBox("Up to 21 addresses can be shown !", 16, "Too many addresses");
        op.Settle();
        EXPECT_TRUE(op.Gui([&] { return scope()->CmdUpdate->isEnabled(); }));
        op.Gui([&] { scope()->ListFilter->item(0)->setSelected(false); });
        Filter(op, {});
        Start(op);
        Pass(op, "$152\r", "$152\r\r\n");
    });
}

TEST_F(ScopeTest, StopLetsThePortGoAndStartTakesItAgain)
{
    Operate([&](Operator &op) {
        EXPECT_TRUE(PortIsFree(3)) << "nothing is held before the start";
        Start(op);
        EXPECT_FALSE(PortIsFree(3));
        op.Click(scope()->CmdStop);
        op.WaitFor([&] { return scope()->CmdStart->isEnabled(); }, "the stop");
        EXPECT_TRUE(PortIsFree(3));
        Start(op);
        Pass(op, "$012\r", "$012\r\r\n");
    });
}

TEST_F(ScopeTest, ClearEmptiesTheLog)
{
    Operate([&](Operator &op) {
        Start(op);
        Pass(op, "$012\r", "$012\r\r\n");
        op.Click(scope()->CmdClear);
        EXPECT_EQ(Log(op), "");
        Pass(op, "$022\r", "$022\r\r\n");
    });
}

TEST_F(ScopeTest, APortThatIsHeldOrMissingIsTold)
{
    Operate([&](Operator &op) {
        const vorn::SerialPorts machine;
        vorn::MSComm holder(machine);
        holder.SetCommPort(3);
        holder.SetPortOpen(true);
        op.Click(scope()->CmdStart);
        op.AnswerBox("Port already open !", 16, "Port already open");
        EXPECT_TRUE(op.Gui([&] { return scope()->CmdStart->isEnabled(); }));
        holder.SetPortOpen(false);
        std::filesystem::remove(ports.Link(3));
        op.Click(scope()->CmdStart);
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        EXPECT_TRUE(op.Gui([&] { return scope()->CmdStart->isEnabled(); }));
    });
}

TEST_F(ScopeTest, ADeviceThatIsNoSerialLineIsTold)
{
    Operate([&](Operator &op) {
        std::filesystem::remove(ports.Link(3));
        std::filesystem::create_symlink("/dev/null", ports.Link(3));
        op.Click(scope()->CmdStart);
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        EXPECT_TRUE(op.Gui([&] { return scope()->CmdStart->isEnabled(); }));
        EXPECT_FALSE(op.Gui([&] { return scope()->findChild<vorn::MSComm *>()->PortOpen(); }));
    });
}

TEST_F(ScopeTest, ADeviceThatVanishesIsSilence)
{
    Operate([&](Operator &op) {
        Start(op);
        Pass(op, "$012\r", "$012\r\r\n");
        peer_.Vanish();
        op.Settle();
        op.Click(scope()->CmdStop);
        op.WaitFor([&] { return scope()->CmdStart->isEnabled(); }, "the stop");
        EXPECT_EQ(Log(op), "$012\r\r\n");
    });
}

TEST_F(ScopeTest, LosesNoByteOfALongStream)
{
    Operate([&](Operator &op) {
        Start(op);
        std::string sent;
        for (int i = 0; i < 20'000; ++i)
            sent += "!01+" + std::to_string(i) + "\r";
        peer_.Send(sent);
        op.WaitFor(
            [&] {
                std::string log = scope()->Text1->Text();
                std::erase(log, '\n');
                return log.ends_with("\r\r") && log.find("!01+19999\r") != std::string::npos;
            },
            "the last line");
        // Entries end with one more carriage return and a line feed; what is inside stands as it came.
        std::string log = Log(op);
        for (std::size_t end = log.find("\r\r\n"); end != std::string::npos; end = log.find("\r\r\n", end))
            log.replace(end, 3, "\r");
        EXPECT_EQ(log, sent);
    });
}

TEST_F(ScopeTest, TheWholeLogIsSaved)
{
    const std::filesystem::path path = ports.Root() / "scope.txt";
    Operate([&](Operator &op) {
        op.Click(scope()->CmdSave);
        op.Settle();
        EXPECT_FALSE(op.Gui([] { return QApplication::activeModalWidget() != nullptr; }));
        Start(op);
        Pass(op, "$012\r", "$012\r\r\n");
        op.Click(scope()->CmdSave);
        op.AwaitBox("the dialog");
        EXPECT_FALSE(op.Gui([] { return vorn::SomeWindowIsTopmost(); }));
        Pass(op, "$022\r", "$012\r\r\n$022\r\r\n");
        op.AnswerFile("Save As ---", "DataScope.txt", path.string(), [](QFileDialog &dialog) {
            EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Data scope File(*.txt)")});
            EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("txt"));
            EXPECT_EQ(dialog.directory().canonicalPath(), QCoreApplication::applicationDirPath());
        });
        op.WaitFor([&] { return std::filesystem::exists(path); }, "the file");
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        EXPECT_EQ(bytes.str(), "$012\r\r\n$022\r\r\n") << "what passed under the dialog, too";
        EXPECT_TRUE(op.Gui([] { return vorn::SomeWindowIsTopmost(); }));
    });
}

TEST_F(ScopeTest, WhileItIsOpenThePortOffersNeitherSearchNorTerminal)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            EXPECT_FALSE(main().ToolButton(vorn::FormMain::SearchButton)->isEnabled());
            EXPECT_FALSE(main().ToolButton(vorn::FormMain::TerminalButton)->isEnabled());
        });
        op.LookInto(main().Tools);
        op.Gui([&] {
            EXPECT_FALSE(main().Search->isEnabled());
            EXPECT_FALSE(main().Terminal->isEnabled());
            EXPECT_FALSE(main().Data_Scope->isEnabled());
        });
        Start(op);
        op.Gui([&] { scope()->close(); });
        op.Gui([&] {
            EXPECT_FALSE(main().ScopeOnPort[3]);
            EXPECT_TRUE(main().ToolButton(vorn::FormMain::SearchButton)->isEnabled());
            EXPECT_TRUE(main().ToolButton(vorn::FormMain::TerminalButton)->isEnabled());
        });
        op.LookInto(main().Tools);
        op.Gui([&] {
            EXPECT_TRUE(main().Search->isEnabled());
            EXPECT_TRUE(main().Terminal->isEnabled());
            EXPECT_TRUE(main().Data_Scope->isEnabled());
        });
        EXPECT_TRUE(PortIsFree(3));
        op.WaitFor([&] { return main().ScopeForm[3].isNull(); }, "the end of the window");
    });
}

TEST_F(ScopeTest, TheMenuTurnsTheToolbarOffForThePortAsWell)
{
    RawPeer four(ports.Link(4));
    Operate([&](Operator &op) {
        using vorn::FormMain;
        const auto states = [&] {
            return op.Gui([&] {
                std::string on;
                for (const auto button :
                     {FormMain::SearchButton, FormMain::TerminalButton, FormMain::ScopeButton})
                    on += main().ToolButton(button)->isEnabled() ? '1' : '0';
                return on;
            });
        };
        Choose(op, "KeyCOM004");
        EXPECT_EQ(states(), "111");
        op.Trigger(main().Data_Scope);
        op.WaitFor([&] { return scope(4) != nullptr; }, "the second scope");
        EXPECT_EQ(states(), "000");
        op.Gui([&] { scope(3)->close(); });
        EXPECT_EQ(states(), "000") << "the port on show has a scope still";
        op.Gui([&] { scope(4)->close(); });
        EXPECT_EQ(states(), "111");
    });
}

TEST_F(ScopeTest, ClosedOverAModulesPageItLeavesTheBusToolsOff)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("20")); });
        op.Gui([&] { main().Nodes.Add("KeyCOM003", "_0003!!0A7252", "(0A) 7252", "vorn4ico", "vorn4icoS"); });
        Choose(op, "_0003!!0A7252");
        op.Gui([&] { scope()->close(); });
        EXPECT_FALSE(op.Gui([&] { return main().ToolButton(vorn::FormMain::SearchButton)->isEnabled(); }));
        EXPECT_FALSE(op.Gui([&] { return main().ToolButton(vorn::FormMain::TerminalButton)->isEnabled(); }));
        op.Trigger(main().Search);
        AwaitActions(op);
        EXPECT_FALSE(op.Gui([] { return QApplication::activeModalWidget() != nullptr; }))
            << "a module can't be searched";
        EXPECT_TRUE(op.Gui([&] { return main().Nodes.Contains("_0003!!0A7252"); }));
    });
}

TEST_F(ScopeTest, ClosedWhileAPageLoadsItLeavesTheToolsOfThatPage)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("60000")); });
        op.Gui([&] { main().Nodes.Add("KeyCOM003", "_0003!!0A7252", "(0A) 7252", "vorn4ico", "vorn4icoS"); });
        op.Gui([&] { LeftClick("_0003!!0A7252"); });
        op.WaitFor([&] { return !peer_.Lines().empty(); }, "the first command of the load");
        op.Gui([&] { scope()->close(); });
        peer_.OnLine([](const std::string &, const RawPeer::Writer &write) { write("?0A\r"); });
        peer_.Send("?0A\r");
        op.WaitFor([&] { return vorn::TagOf(main().Frame1) == "_0003!!0A7252"; }, "the page");
        op.Gui([&] {
            EXPECT_FALSE(main().ToolButton(vorn::FormMain::SearchButton)->isEnabled());
            EXPECT_FALSE(main().ToolButton(vorn::FormMain::TerminalButton)->isEnabled());
            EXPECT_TRUE(main().ToolButton(vorn::FormMain::SaveSetButton)->isEnabled());
        });
    });
}

TEST_F(ScopeTest, ItsDialogsWaitForTheTransaction)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("60000")); });
        op.Gui([&] { scope()->Text1->Append("$012\r\r\n"); });
        QMetaObject::invokeMethod(
            &main(), [&] { main().trans("$052", false); }, Qt::QueuedConnection);
        op.WaitFor([&] { return !peer_.Lines().empty(); }, "the command");
        op.Click(scope()->CmdSave);
        op.Click(scope()->CmdSave);
        op.Settle();
        EXPECT_FALSE(op.Gui([] { return QApplication::activeModalWidget() != nullptr; }));
        peer_.Send("!05\r");
        op.AnswerFile("Save As ---", "DataScope.txt", "");
        op.Settle();
        EXPECT_FALSE(op.Gui([] { return QApplication::activeModalWidget() != nullptr; }));
    });
}

TEST_F(ScopeTest, StartWaitsForTheLastTransactionOfTheTerminalThatItCloses)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("60000")); });
        op.Gui([&] { main().Terminal->setEnabled(true); });
        op.Trigger(main().Terminal);
        auto *terminal =
            op.Gui([&] { return qobject_cast<vorn::FormFull_Screen *>(main().FormFull_Screen.data()); });
        op.Gui([&] { terminal->TextCommand->setText(QStringLiteral("$052")); });
        op.Click(terminal->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "a command that waits for its reply");
        op.Click(scope()->CmdStart);
        op.WaitFor([&] { return main().FormFull_Screen == nullptr; }, "the end of the terminal");
        EXPECT_TRUE(op.Gui([&] { return scope()->CmdStart->isEnabled(); }));
        peer_.Send("!05\r");
        op.WaitFor([&] { return !scope()->CmdStart->isEnabled(); }, "the start");
        Pass(op, "$012\r", "$012\r\r\n");
    });
}

TEST_F(ScopeTest, AStartThatWaitsIsTakenBackByStopAndByClosing)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("60000")); });
        const auto inTransaction = [&](const std::function<void()> &steps) {
            peer_.Forget();
            QMetaObject::invokeMethod(
                &main(), [&] { main().trans("$052", false); }, Qt::QueuedConnection);
            op.WaitFor([&] { return !peer_.Lines().empty(); }, "the command");
            steps();
            peer_.Send("!05\r");
            op.WaitFor([&] { return !main().Gate.IsOnLine(); }, "the reply");
            op.Settle();
        };
        inTransaction([&] {
            op.Click(scope()->CmdStart);
            op.Settle();
            op.Click(scope()->CmdStop);
            op.Settle();
        });
        EXPECT_TRUE(PortIsFree(3));
        inTransaction([&] {
            op.Click(scope()->CmdStart);
            op.Settle();
            op.Gui([&] { scope()->close(); });
        });
        EXPECT_TRUE(PortIsFree(3));
    });
}

TEST_F(ScopeTest, TheMenuOpensOneWindowForAPort)
{
    Operate([&](Operator &op) {
        Scope *first = scope();
        op.Gui([&] { main().Data_Scope->setEnabled(true); });
        op.Trigger(main().Data_Scope);
        op.Settle();
        EXPECT_EQ(scope(), first);
    });
}

TEST_F(ScopeTest, TwoPortsCanBeWatchedAtOnce)
{
    RawPeer ten(ports.Link(10));
    Operate([&](Operator &op) {
        Choose(op, "KeyCOM010");
        op.Trigger(main().Data_Scope);
        op.WaitFor([&] { return scope(10) != nullptr; }, "the second scope");
        EXPECT_EQ(op.Gui([&] { return scope(10)->windowTitle(); }), QStringLiteral("COM10 Data Scope"));
        Start(op);
        op.Click(scope(10)->CmdStart);
        ten.Send("$0A2\r");
        Pass(op, "$012\r", "$012\r\r\n");
        op.WaitFor([&] { return scope(10)->Text1->Text() == "$0A2\r\r\n"; }, "the line on the other port");
        op.Gui([&] { scope(10)->close(); });
        Pass(op, "$022\r", "$012\r\r\n$022\r\r\n");
    });
}

TEST_F(ScopeTest, UnfoldingThePortClosesIt)
{
    Operate([&](Operator &op) {
        Start(op);
        op.Gui([&] { main().Nodes.Add("KeyCOM003", "_0003!!0A7252", "(0A) 7252", "vorn4ico", "vorn4icoS"); });
        op.Press(main().TreeView1, Qt::Key_Right);
        op.WaitFor([&] { return main().ScopeForm[3].isNull(); }, "the end of the window");
        EXPECT_FALSE(op.Gui([&] { return main().ScopeOnPort[3]; }));
        EXPECT_TRUE(PortIsFree(3));
    });
}

TEST_F(ScopeTest, StartClosesTheTerminalOfThePort)
{
    RawPeer thirtyOne(ports.Link(31));
    RawPeer four(ports.Link(4));
    Operate([&](Operator &op) {
        const auto openTerminal = [&](const char *port) {
            Choose(op, port);
            op.Gui([&] { main().Terminal->setEnabled(true); });
            op.Trigger(main().Terminal);
            op.WaitFor([&] { return main().FormFull_Screen != nullptr; }, "the terminal");
        };
        openTerminal("KeyCOM004");
        Start(op);
        EXPECT_TRUE(op.Gui([&] { return main().FormFull_Screen != nullptr; }))
            << "another port's terminal stays";
        op.Click(scope()->CmdStop);
        openTerminal("KeyCOM031");
        Start(op);
        op.Settle();
        EXPECT_FALSE(op.Gui([&] { return main().FormFull_Screen != nullptr; }))
            << "one character is compared";
    });
}

TEST_F(ScopeTest, ASearchOnAnotherPortLeavesItAlone)
{
    RawPeer four(ports.Link(4));
    four.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("200")); });
        Start(op);
        Choose(op, "KeyCOM004");
        Search(op, "255");
        op.WaitFor([&] { return main().Nodes.Contains("_0004!!FF7252"); }, "the module");
        Pass(op, "$012\r", "$012\r\r\n");
        EXPECT_TRUE(op.Gui([&] { return scope()->CmdStop->isEnabled(); }));
    });
}
