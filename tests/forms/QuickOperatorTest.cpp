// An operator who is faster than the bus: acts while a reply is still on its way. What was meant for a module
// reaches that module or none, each thing happens once, and the window stays his.

#include "support/LateBus.h"
#include "support/ProgramRun.h"

#include "platform/WidgetText.h"
#include "shell/DIO.h"
#include "shell/FormScan.h"
#include "tools/FormFull_Screen.h"
#include "tools/FormScope.h"
#include "tools/LogView.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <array>
#include <memory>

using Lines = std::vector<std::string>;

namespace
{

const char *const Patient = "30000"; ///< Time Out that no test lives to see

/// COM2 with modules whose replies the test holds back; COM4 with others if a test wants them.
class QuickOperatorTest : public ::testing::Test, public ProgramRun
{
protected:
    std::unique_ptr<LateBus> bus_, bus4_;

    void Rack(const std::string &modules) { bus_ = std::make_unique<LateBus>(ports.Link(2), modules); }
    void Rack4(const std::string &modules) { bus4_ = std::make_unique<LateBus>(ports.Link(4), modules); }

    std::string AddNode(Operator &op, const std::string &model, const std::string &address, char port = '2')
    {
        const std::string key = std::string("_000") + port + "!!" + address + model;
        op.Gui([&] {
            SetTimeOut(Patient);
            main().Nodes.Add(std::string("KeyCOM00") + port, key, "(" + address + ") " + model, "vorn4ico",
                             "vorn4icoS");
        });
        return key;
    }
    void SetTimeOut(const char *milliseconds)
    {
        main().TextTimeOut->setText(QString::fromLatin1(milliseconds));
    }

    /// Waits until a line is on the bus whose reply is held back.
    void AwaitHeld(Operator &op, LateBus &bus, const std::string &begin = {})
    {
        bus.Hold(begin);
        op.WaitFor([&] { return !bus.Held().empty(); }, ("the line " + begin).c_str());
    }
    void AwaitRefresh(Operator &op, const std::string &poll)
    {
        bus_->Forget();
        op.WaitFor([&] { return std::ranges::count(bus_->Lines(), poll) > 2; }, "the refresh");
    }
    /// Two modules on COM2, the first one on show, and the reply to a poll of it held back: the keys of both.
    struct TwoNodes {
        std::string first, second;
    };
    TwoNodes HoldRefreshOfFirst(Operator &op)
    {
        TwoNodes nodes{AddNode(op, "7272", "01"), AddNode(op, "7272", "02")};
        Choose(op, nodes.first);
        AwaitRefresh(op, "$016");
        AwaitHeld(op, *bus_, "$016");
        return nodes;
    }
    bool AwaitLine(Operator &op, const std::string &line)
    {
        return op.WaitFor([&] { return std::ranges::count(bus_->Lines(), line) > 0; }, line.c_str());
    }

    /// Clicks on the window's thread, without waiting for anything: what a quick hand does.
    void ClickLamp(const char *name)
    {
        auto *lamp = Find<vorn::DIO>(name);
        ASSERT_TRUE(lamp->isVisible()) << name;
        QTest::mouseClick(lamp, Qt::LeftButton, {}, QPoint(14, lamp->height() / 2));
    }
    void ClickButton(const char *name)
    {
        auto *button = Find<QPushButton>(name);
        ASSERT_TRUE(button->isVisible() && button->isEnabled()) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }
    void ClickTool(int button)
    {
        QWidget *tool = main().Toolbar1->widgetForAction(main().ToolButton(button));
        ASSERT_TRUE(tool->isVisible() && tool->isEnabled()) << button;
        QTest::mouseClick(tool, Qt::LeftButton);
    }

    /// What went out that begins so.
    Lines Sent(const std::string &begin)
    {
        Lines sent;
        std::ranges::copy_if(bus_->Lines(), std::back_inserter(sent),
                             [&](const std::string &line) { return line.starts_with(begin); });
        return sent;
    }
    /// The first lines that went out.
    Lines Head(std::size_t count)
    {
        Lines lines = bus_->Lines();
        lines.resize(std::min(lines.size(), count));
        return lines;
    }
    void ExpectPage(Operator &op, const std::string &key)
    {
        op.Gui([&] {
            EXPECT_EQ(vorn::TagOf(main().Frame1), key);
            EXPECT_EQ(main().Nodes.Selected(), key);
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
        });
    }
    /// Opens the scope of COM2's port page and lets it hear a line, so that there is something to save.
    void OpenScope(Operator &op)
    {
        op.Gui([&] { ClickTool(vorn::FormMain::ScopeButton); });
        AwaitActions(op);
        auto *scope = qobject_cast<vorn::FormScope *>(main().ScopeForm[2].data());
        op.Click(scope->CmdStart);
        AwaitActions(op);
        bus_->Send("!01\r");
        op.WaitFor([&] { return scope->Text1->Length() > 0; }, "a line");
    }
    static bool NoBox() { return QApplication::activeModalWidget() == nullptr; }
};

const std::string TwoRelays = "module 7272 address=01 restart=0\nmodule 7272 address=02 restart=0";

} // namespace

TEST_F(QuickOperatorTest, ALampSwitchesTheRelayOfThePageItWasClickedOn)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        const TwoNodes nodes = HoldRefreshOfFirst(op);
        bus_->Forget();
        op.Gui([&] {
            ClickLamp("DIOL_4");
            LeftClick(nodes.second);
        });
        op.Settle();
        EXPECT_EQ(bus_->Lines(), Lines{}) << "one transaction at a time";
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Head(3), (Lines{"#011001", "$02F", "$022"}));
        EXPECT_EQ(Sent("#02"), Lines{});
        ExpectPage(op, nodes.second);
    });
}

TEST_F(QuickOperatorTest, ALampBehindTheClickOnAnotherNodeSwitchesNothing)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        const TwoNodes nodes = HoldRefreshOfFirst(op);
        op.Gui([&] {
            LeftClick(nodes.second);
            ClickLamp("DIOL_4");
        });
        bus_->Release();
        AwaitActions(op);
        AwaitRefresh(op, "$026");
        EXPECT_EQ(Sent("#"), Lines{});
        EXPECT_FALSE(op.Gui([&] { return Find<vorn::DIO>("DIOL_4")->value(); }));
    });
}

TEST_F(QuickOperatorTest, AnUpdateIsOfThePageThatItWasPressedOn)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        const TwoNodes nodes = HoldRefreshOfFirst(op);
        bus_->Forget();
        op.Gui([&] {
            ClickButton("CmdMUpdate");
            LeftClick(nodes.second);
        });
        bus_->Release();
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        AwaitActions(op);
        EXPECT_EQ(Sent("%"), Lines{"%0101400600"});
        ExpectPage(op, nodes.second);

        AwaitRefresh(op, "$026");
        AwaitHeld(op, *bus_, "$026");
        bus_->Forget();
        op.Gui([&] {
            LeftClick(nodes.first);
            ClickButton("CmdMUpdate");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("%"), Lines{}) << "its page had gone";
        ExpectPage(op, nodes.first);
    });
}

TEST_F(QuickOperatorTest, TwoLampsInOneTransactionBothSwitch)
{
    Rack("module 7206 address=0A restart=0");
    Operate([&](Operator &op) {
        Choose(op, AddNode(op, "7206", "0A"));
        AwaitRefresh(op, "#0A");
        AwaitHeld(op, *bus_, "#0A");
        bus_->Forget();
        op.Gui([&] {
            ClickLamp("ADIO_0");
            ClickLamp("ADIO_1");
        });
        bus_->Release();
        AwaitActions(op);
        EXPECT_EQ(Sent("@0ADO"), (Lines{"@0ADO01", "@0ADO03"}));
    });
}

TEST_F(QuickOperatorTest, APulledAdapterIsToldOnceAndTheNextClickTriesAgain)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        const TwoNodes nodes = HoldRefreshOfFirst(op);
        bus_->Pull();
        bus_->Release();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        // The refresh's own timer has run, and more than once, when a later one has.
        for (int tick = 0; tick < 2; ++tick) {
            op.Gui([&] { main().Timer1.start(); });
            op.WaitFor([&] { return !main().Timer1.isActive(); }, "the timer");
            EXPECT_TRUE(op.Gui(NoBox));
        }

        op.Gui([&] { LeftClick(nodes.second); });
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        AwaitActions(op);
        ExpectPage(op, nodes.second);

        bus_->PlugIn();
        Choose(op, nodes.second);
        AwaitRefresh(op, "$026");
    });
}

TEST_F(QuickOperatorTest, AnAdapterThatIsPulledDuringAPageLoadIsToldOnce)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        const std::string first = AddNode(op, "7272", "01");
        bus_->Hold("$01F");
        op.Gui([&] { LeftClick(first); });
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the load");
        bus_->Pull();
        bus_->Release();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        AwaitActions(op);
        ExpectPage(op, first);
    });
}

TEST_F(QuickOperatorTest, AnAdapterThatIsPulledBehindAnUpdateIsToldOnce)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        Choose(op, AddNode(op, "7272", "01"));
        AwaitRefresh(op, "$016");
        bus_->Hold("$012");
        op.Gui([&] { ClickButton("CmdMUpdate"); });
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the ready wait");
        bus_->Pull();
        bus_->Release();
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number"); // the page's load
        AwaitActions(op);
        EXPECT_EQ(op.Gui([&] { return main().cursor().shape(); }), Qt::ArrowCursor);
    });
}

TEST_F(QuickOperatorTest, AnAdapterThatIsPulledDuringTheReadyWaitIsToldOnce)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        Choose(op, AddNode(op, "7272", "01"));
        AwaitRefresh(op, "$016");
        bus_->Hold("%");
        op.Gui([&] { ClickButton("CmdMUpdate"); });
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the write");
        bus_->Pull();
        bus_->Release();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        AwaitActions(op);
        EXPECT_EQ(op.Gui([&] { return main().cursor().shape(); }), Qt::ArrowCursor);
    });
}

TEST_F(QuickOperatorTest, AnAdapterThatIsPulledDuringASearchIsToldOnce)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        Choose(op, "KeyCOM002");
        op.Gui([&] { SetTimeOut(Patient); });
        bus_->Hold("$01M");
        Search(op, "1");
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the search");
        bus_->Pull();
        bus_->Release();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        AwaitActions(op);
        EXPECT_TRUE(op.Gui([&] { return main().isEnabled() && main().Nodes.Contains("_0002!!017272"); }));
    });
}

// The window can be closed behind the box, by an operator who has done nothing else.
TEST(QuickOperatorDeathTest, TheWindowClosesOnAPulledAdapter)
{
    const auto run = [] {
        ProgramRun program;
        LateBus bus(program.ports.Link(2), TwoRelays);
        program.Operate([&](Operator &op) {
            op.Gui([&] {
                program.main().TextTimeOut->setText(QString::fromLatin1(Patient));
                program.main().Nodes.Add("KeyCOM002", "_0002!!017272", "(01) 7272", "vorn4ico", "vorn4icoS");
            });
            program.Choose(op, "_0002!!017272");
            bus.Hold("$016");
            op.WaitFor([&] { return !bus.Held().empty(); }, "the refresh");
            bus.Pull();
            bus.Release();
            op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
            op.Gui([&] { program.main().close(); });
        });
    };
    EXPECT_EXIT(run(), ::testing::ExitedWithCode(0), "");
}

TEST_F(QuickOperatorTest, AScopeThatIsClosedWaitsForItsFileDialog)
{
    Rack(TwoRelays);
    Rack4("module 7272 address=01");
    Operate([&](Operator &op) {
        AddNode(op, "7272", "01");
        Choose(op, "KeyCOM002");
        OpenScope(op);
        Choose(op, "KeyCOM004");
        op.Gui([&] {
            SetTimeOut(Patient);
            ClickTool(vorn::FormMain::TerminalButton);
        });
        AwaitActions(op);
        auto *terminal = qobject_cast<vorn::FormFull_Screen *>(main().FormFull_Screen.data());
        const QPointer scope = qobject_cast<vorn::FormScope *>(main().ScopeForm[2].data());
        ASSERT_TRUE(terminal && scope);

        // Saved, then unfolded: the dialog stands on the stack, and the scope goes behind it.
        bus4_->Hold();
        op.Gui([&] {
            QTest::keyClicks(terminal->TextCommand, QStringLiteral("$012"));
            QTest::mouseClick(terminal->CmdSend, Qt::LeftButton);
        });
        op.WaitFor([&] { return !bus4_->Held().empty(); }, "the terminal's line");
        op.Gui([&] {
            QTest::mouseClick(scope->CmdSave, Qt::LeftButton);
            Unfold("KeyCOM002");
        });
        EXPECT_TRUE(op.Gui(NoBox)) << "behind the terminal's transaction";
        bus4_->Release();
        op.AnswerFile("Save As ---", "DataScope.txt", "", [&](QFileDialog &) { EXPECT_TRUE(scope); });
        AwaitActions(op);
        op.WaitFor([&] { return scope.isNull(); }, "the end of the scope");
        EXPECT_TRUE(op.Gui([&] { return main().ListView1->isVisible() && !main().ScopeOnPort[2]; }));
    });
}

TEST_F(QuickOperatorTest, AScopeThatIsClosedFirstSavesNothing)
{
    Rack(TwoRelays);
    Rack4("module 7272 address=01");
    Operate([&](Operator &op) {
        AddNode(op, "7272", "01");
        Choose(op, "KeyCOM002");
        OpenScope(op);
        Choose(op, AddNode(op, "7272", "01", '4'));
        const QPointer scope = qobject_cast<vorn::FormScope *>(main().ScopeForm[2].data());
        AwaitHeld(op, *bus4_, "$016");
        op.Gui([&] {
            Unfold("KeyCOM002");
            QTest::mouseClick(scope->CmdSave, Qt::LeftButton);
        });
        bus4_->Release();
        AwaitActions(op);
        op.WaitFor([&] { return scope.isNull(); }, "the end of the scope");
        EXPECT_TRUE(op.Gui(NoBox));
    });
}

TEST_F(QuickOperatorTest, ASearchThatIsAskedForThriceAsksOnce)
{
    Rack(TwoRelays);
    Rack4("module 7272 address=01");
    Operate([&](Operator &op) {
        AddNode(op, "7272", "01", '4');
        // The terminal's transaction on COM4 goes on while COM2's port page is on show.
        Choose(op, "KeyCOM004");
        op.Gui([&] {
            SetTimeOut(Patient);
            ClickTool(vorn::FormMain::TerminalButton);
        });
        AwaitActions(op);
        auto *terminal = qobject_cast<vorn::FormFull_Screen *>(main().FormFull_Screen.data());
        Choose(op, "KeyCOM002");
        bus4_->Hold();
        op.Gui([&] {
            SetTimeOut(Patient);
            QTest::keyClicks(terminal->TextCommand, QStringLiteral("$012"));
            QTest::mouseClick(terminal->CmdSend, Qt::LeftButton);
        });
        op.WaitFor([&] { return !bus4_->Held().empty(); }, "the terminal's line");
        op.Gui([&] {
            for (int i = 0; i < 3; ++i)
                ClickTool(vorn::FormMain::SearchButton);
        });
        EXPECT_TRUE(op.Gui(NoBox));
        bus4_->Release();
        bus_->Hold("$FFM");
        op.AnswerInput("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0",
                       "255");
        op.WaitFor([&] { return !bus_->Held().empty(); }, "the search");
        EXPECT_TRUE(op.Gui(NoBox));
        op.Gui([&] {
            EXPECT_FALSE(main().isEnabled());
            auto *scan = qobject_cast<vorn::FormScan *>(main().FormScan.data());
            ASSERT_TRUE(scan && scan->Command1->isVisible() && scan->Command1->isEnabled());
            QTest::mouseClick(scan->Command1, Qt::LeftButton);
            EXPECT_TRUE(main().StopScan);
        });
        op.Gui([&] { SetTimeOut("1"); });
        bus_->Release();
        bus_->Send("?FF\r");
        ASSERT_TRUE(op.AwaitBox("the report of the search"));
        EXPECT_TRUE(op.Gui([&] { return main().FormScan.isNull(); }));
        op.Gui([&] { QApplication::activeModalWidget()->close(); });
        AwaitActions(op);
        EXPECT_TRUE(op.Gui([&] { return main().isEnabled() && NoBox(); }));
    });
}

TEST_F(QuickOperatorTest, ASearchIsOfThePortThatItWasAskedForOn)
{
    Rack(TwoRelays);
    Rack4("module 7272 address=FE");
    Operate([&](Operator &op) {
        const std::string module = AddNode(op, "7272", "01");
        Choose(op, "KeyCOM004");
        op.Gui([&] { ClickTool(vorn::FormMain::TerminalButton); });
        AwaitActions(op);
        auto *terminal = qobject_cast<vorn::FormFull_Screen *>(main().FormFull_Screen.data());
        bus4_->Hold();
        op.Gui([&] {
            SetTimeOut("250");
            QTest::keyClicks(terminal->TextCommand, QStringLiteral("$FE2"));
            SetTimeOut(Patient);
            QTest::mouseClick(terminal->CmdSend, Qt::LeftButton);
        });
        op.WaitFor([&] { return !bus4_->Held().empty(); }, "the terminal's line");
        op.Gui([&] {
            SetTimeOut("250");
            ClickTool(vorn::FormMain::SearchButton);
            LeftClick(module);
        });
        bus4_->Release();
        bus4_->Hold("$FEM");
        op.AnswerInput("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0",
                       "254");
        op.WaitFor([&] { return !bus4_->Held().empty(); }, "the search");
        op.Gui([&] {
            EXPECT_EQ(main().FormScan->windowTitle(), QStringLiteral("COM4 Searching ..."));
            EXPECT_FALSE(main().isEnabled());
        });
        bus4_->Release();
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_TRUE(main().isEnabled());
            EXPECT_EQ(main().Nodes.Children("KeyCOM004"), Lines{"_0004!!FE7272"});
            EXPECT_FALSE(main().Nodes.HasChildren(module));
        });
        ExpectPage(op, module);
        AwaitRefresh(op, "$016");
    });
}

TEST_F(QuickOperatorTest, UpdatesOfACounterFollowItsLoadOneAfterTheOther)
{
    Rack("module 7282 address=0A range=50 stage=0 restart=0");
    Operate([&](Operator &op) {
        const std::string key = AddNode(op, "7282", "0A");
        Choose(op, key);
        AwaitRefresh(op, "#0A0");
        AwaitHeld(op, *bus_, "#0A0");
        op.Gui([&] {
            LeftClick(key);
            ClickButton("ComFUpdata");
        });
        bus_->Hold("$0A4"); // the last that a load reads of the filter
        bus_->Release();
        op.WaitFor([&] { return bus_->Held() == "$0A4"; }, "the end of the load");
        bus_->Hold("$0A1H");
        bus_->Release();
        op.WaitFor([&] { return bus_->Held().starts_with("$0A1H"); }, "the filter's first write");
        // The long settling behind it.
        bus_->Hold("$0A2");
        bus_->Release();
        op.WaitFor([&] { return bus_->Held() == "$0A2"; }, "the ready wait");
        op.Gui([&] { ClickButton("CmdMUpdate"); });
        bus_->Release();
        op.AnswerBox("Filter setting is complete !", 64, "Filter setting is complete !");
        op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
        AwaitActions(op);
        EXPECT_EQ(Sent("%"), Lines{"%0A0A500600"});
        ExpectPage(op, key);
        EXPECT_TRUE(op.Gui([&] { return Shown("FrameFCf") && Shown("FrameMSet"); }));
        AwaitRefresh(op, "#0A0");
    });
}

TEST_F(QuickOperatorTest, ANodeThatIsClickedDuringARestartIsLoadedBehindTheUpdate)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        const std::string first = AddNode(op, "7272", "01");
        const std::string second = AddNode(op, "7272", "02");
        for (const std::string &other : {second, std::string("KeyPC")}) {
            Choose(op, first);
            AwaitRefresh(op, "$016");
            bus_->Hold("%");
            op.Gui([&] { ClickButton("CmdMUpdate"); });
            op.WaitFor([&] { return !bus_->Held().empty(); }, "the write");
            bus_->Silence(true); // the module restarts behind it
            op.Gui([&] {
                SetTimeOut("5");
                LeftClick(other);
            });
            bus_->Forget();
            bus_->Release();
            op.WaitFor([&] { return bus_->Lines().size() > 3; }, "some silent looks");
            EXPECT_EQ(Sent("$012").size(), bus_->Lines().size()) << "nothing of another page in between";
            op.Gui([&] {
                EXPECT_EQ(vorn::TagOf(main().Frame1), first);
                EXPECT_EQ(main().cursor().shape(), Qt::WaitCursor);
                SetTimeOut("250");
            });
            bus_->Silence(false);
            ASSERT_TRUE(op.AwaitBox("the box of the update"));
            EXPECT_EQ(op.Gui([&] { return main().PageOnShow(); }), first) << "over its own page";
            op.AnswerBox("Configuration is successful !", 64, "Configuration is successful");
            AwaitActions(op);
            ExpectPage(op, other);
            op.Gui([&] { SetTimeOut(Patient); });
            if (other == second)
                AwaitRefresh(op, "$026");
        }
        Choose(op, first); // the bus isn't silent for good
        AwaitRefresh(op, "$016");
    });
}

TEST_F(QuickOperatorTest, ALeftClickStaysOneWhateverButtonComesNext)
{
    Rack(TwoRelays);
    Operate([&](Operator &op) {
        const TwoNodes nodes = HoldRefreshOfFirst(op);
        bus_->Forget();
        op.Gui([&] {
            LeftClick(nodes.second);
            ClickNode("KeyCOM002", Qt::RightButton);
        });
        bus_->Release();
        op.WaitFor([&] { return main().COM->isVisible(); }, "the menu of the port");
        EXPECT_EQ(Head(2), (Lines{"$02F", "$022"})) << "the left click loaded its page first";
        EXPECT_EQ(op.Gui([&] { return vorn::TagOf(main().Frame1); }), nodes.second);
        op.Press(main().COM, Qt::Key_Escape);
        AwaitActions(op);
        ExpectPage(op, nodes.second);
        AwaitRefresh(op, "$026");
    });
}
