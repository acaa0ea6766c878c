#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "platform/WidgetText.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QGroupBox>
#include <QMenu>
#include <QSplitter>
#include <QTest>

using Lines = std::vector<std::string>;

namespace
{

constexpr const char *Port3 = "KeyCOM003";
constexpr const char *Plain = "_0003!!0A7252";
constexpr const char *Init = "*0003!!007206";
constexpr const char *Base = "_1003!!203900";
constexpr const char *Slot = "_10031!203923";
constexpr const char *Channel = "_100317203923";

/// COM3 and COM10 with silent peers; COM3 has a module, one in INIT state, and a base unit.
class DeviceTreeTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(3)};
    RawPeer other_{ports.Link(10)};

    void Plant(Operator &op)
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("150"));
            auto &nodes = main().Nodes;
            nodes.Add(Port3, Plain, "(0A) 7252", "vorn4ico", "vorn4icoS");
            nodes.Add(Port3, Init, "(* ) 7206", "vorn4ico", "vorn4icoS");
            nodes.Add(Port3, Base, "(20) 3900", "vorn5ico", "vorn5icoS");
            nodes.Add(Base, Slot, "(S1) 3923", "vorn5cico", "vorn5cicoS");
            nodes.Add(Slot, Channel, "CH 7", "vorn5sico", "vorn5sicoS");
        });
    }

    void Unfold(Operator &op, const char *key, bool unfold = true)
    {
        op.Gui([&] {
            auto *tree = main().TreeView1;
            const auto items = tree->findItems(vorn::ToQString(main().Nodes.Text(key)), Qt::MatchRecursive);
            items.first()->setExpanded(unfold);
        });
        op.WaitFor(
            [&] { return vorn::TagOf(main().Frame1) == key && main().Nodes.IsExpanded(key) == unfold; }, key);
        op.Settle();
    }

    std::vector<Lines> Rows()
    {
        std::vector<Lines> rows;
        for (int i = 0; i < main().ListView1->topLevelItemCount(); ++i) {
            Lines row;
            for (int column = 0; column < 4; ++column)
                row.push_back(vorn::FromQString(main().ListView1->topLevelItem(i)->text(column)));
            rows.push_back(row);
        }
        return rows;
    }

    /// Opens the Tools menu and tells which of its five entries are on.
    std::string ToolsStates(Operator &op, const char *key)
    {
        op.Gui([&] { main().Nodes.Select(key); });
        op.LookInto(main().Tools);
        return op.Gui([&] {
            std::string states;
            for (const QAction *entry :
                 {main().Search, main().Terminal, main().Data_Scope, main().VORNLoadSet, main().VORNSaveSet})
                states += entry->isEnabled() ? '1' : '0';
            return states;
        });
    }

    /// Right-clicks a node, looks at the menu and leaves it with Escape, or with an entry.
    void RightClick(Operator &op, const char *key, const std::function<void(QMenu &)> &look)
    {
        op.Gui([&] { ClickNode(key, Qt::RightButton); });
        op.WaitFor([] { return qobject_cast<QMenu *>(QApplication::activePopupWidget()) != nullptr; },
                   "the menu");
        op.Gui([&] { look(*qobject_cast<QMenu *>(QApplication::activePopupWidget())); });
        op.Gui([] {
            if (QWidget *menu = QApplication::activePopupWidget())
                QTest::keyClick(menu, Qt::Key_Escape);
        });
        op.WaitFor([] { return QApplication::activePopupWidget() == nullptr; }, "the end of the menu");
        op.Settle();
    }
};

} // namespace

TEST_F(DeviceTreeTest, AnUnfoldedPortShowsItsModules)
{
    Operate([&](Operator &op) {
        Plant(op);
        Unfold(op, Port3);
        op.Gui([&] {
            EXPECT_FALSE(Shown("Frame1"));
            EXPECT_TRUE(Shown("ListView1"));
            EXPECT_EQ(vorn::TagOf(main().ListView1), Port3);
            EXPECT_EQ(Status(), "Display information about the connected modules.");
            EXPECT_EQ(Rows(), (std::vector<Lines>{{" ", " 10  (0A)", "7252", "Digital I/O Module"},
                                                  {"*", "  0  (00)", "7206", "Analog Input Module"},
                                                  {" ", " 32  (20)", "3900", ""},
                                                  {"", "", "", "Slot 1 VORN-3923"}}));
            EXPECT_EQ(main().Nodes.Selected(), Port3);
            EXPECT_EQ(main().LastNodeIndex, main().Nodes.IndexOf(Port3));
            EXPECT_EQ(main().CommPortNo, 3);
            EXPECT_EQ(main().Nodes.Image(Port3), "open");
            EXPECT_TRUE(main().isEnabled());
        });
        EXPECT_TRUE(peer_.Bytes().empty());
    });
}

TEST_F(DeviceTreeTest, AFoldedPortShowsItsPageAgain)
{
    Operate([&](Operator &op) {
        Plant(op);
        Unfold(op, Port3);
        Unfold(op, Port3, false);
        op.Gui([&] {
            EXPECT_TRUE(Shown("FramePort"));
            EXPECT_FALSE(Shown("ListView1"));
            EXPECT_EQ(Text("LabCOM_5"), " COM3");
            EXPECT_EQ(Status(), "COM Port status");
            EXPECT_EQ(main().Nodes.Image(Port3), "close");
        });
    });
}

TEST_F(DeviceTreeTest, OnlyOnePortIsUnfolded)
{
    Operate([&](Operator &op) {
        Plant(op);
        Unfold(op, Port3);
        op.Gui([&] { main().Nodes.Add("KeyCOM010", "_0010!!0A7252", "(0A) 7252", "vorn4ico", "vorn4icoS"); });
        Unfold(op, "KeyCOM010");
        op.Gui([&] {
            EXPECT_FALSE(main().Nodes.IsExpanded(Port3));
            EXPECT_EQ(Rows(), (std::vector<Lines>{{" ", " 10  (0A)", "7252", "Digital I/O Module"}}));
        });
    });
}

TEST_F(DeviceTreeTest, APortWithoutModulesUnfoldsToAnEmptyList)
{
    Operate([&](Operator &op) {
        op.Gui([&] { program().DeviceTree.ExpandNode(Port3); });
        op.Gui([&] {
            EXPECT_EQ(main().ListView1->topLevelItemCount(), 0);
            EXPECT_EQ(vorn::TagOf(main().ListView1), Port3);
        });
    });
}

TEST_F(DeviceTreeTest, FoldingTheRootClearsTheListAndFoldsThePorts)
{
    Operate([&](Operator &op) {
        Plant(op);
        Unfold(op, Port3);
        op.Gui([&] { program().DeviceTree.Collapse("KeyPC"); });
        op.Gui([&] {
            EXPECT_EQ(main().ListView1->topLevelItemCount(), 0);
            EXPECT_FALSE(main().Nodes.IsExpanded(Port3));
        });
    });
}

TEST_F(DeviceTreeTest, ARowOfTheListChoosesItsNode)
{
    Operate([&](Operator &op) {
        Plant(op);
        Unfold(op, Port3);
        op.Gui([&] {
            auto *row = main().ListView1->topLevelItem(3);
            EXPECT_EQ(vorn::FromQString(row->data(0, Qt::UserRole).toString()), Slot);
        });
        op.ClickRow(main().ListView1, 3);
        op.WaitFor([&] { return vorn::TagOf(main().Frame1) == Slot; }, "the slot's page");
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Selected(), Slot);
            EXPECT_TRUE(main().Nodes.IsExpanded(Base));
            EXPECT_TRUE(Shown("FrameSlotIO"));
        });
    });
}

TEST_F(DeviceTreeTest, TheToolsMenuFollowsTheSelection)
{
    Operate([&](Operator &op) {
        Plant(op);
        EXPECT_EQ(ToolsStates(op, "KeyPC"), "00000");
        EXPECT_EQ(ToolsStates(op, Port3), "11100");
        EXPECT_EQ(ToolsStates(op, Plain), "00011");
        EXPECT_EQ(ToolsStates(op, Slot), "00011");
        EXPECT_EQ(ToolsStates(op, Channel), "00011");
        op.Gui([&] { main().ScopeOnPort[3] = true; });
        EXPECT_EQ(ToolsStates(op, Port3), "00000");
        EXPECT_EQ(ToolsStates(op, "KeyCOM010"), "11100");
        op.Gui([&] { main().ScopeOnPort[3] = false; });
        Unfold(op, Port3);
        EXPECT_EQ(ToolsStates(op, Port3), "11000");
    });
}

TEST_F(DeviceTreeTest, ARightClickOnAModuleKeepsThePage)
{
    Operate([&](Operator &op) {
        Plant(op);
        Choose(op, Plain);
        RightClick(op, Init, [&](QMenu &menu) {
            EXPECT_EQ(&menu, main().VORNModule);
            EXPECT_FALSE(main().AVORNSaveSet->isEnabled()) << "only the loaded page's entries are on";
            EXPECT_FALSE(main().AVORNLoadSet->isEnabled());
        });
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Selected(), Plain);
            EXPECT_EQ(vorn::TagOf(main().Frame1), Plain);
            EXPECT_FALSE(main().NodeLeftClick);
        });
        RightClick(op, Plain, [&](QMenu &) {
            EXPECT_TRUE(main().AVORNSaveSet->isEnabled());
            EXPECT_TRUE(main().AVORNLoadSet->isEnabled());
        });
        peer_.Forget();
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh, which goes on");
    });
}

TEST_F(DeviceTreeTest, ARightClickOnAPortOffersTheBusTools)
{
    Operate([&](Operator &op) {
        Plant(op);
        Choose(op, Slot);
        RightClick(op, "KeyCOM010", [&](QMenu &menu) {
            EXPECT_EQ(&menu, main().COM);
            EXPECT_TRUE(main().CSearch->isEnabled() && main().CTerminal->isEnabled() &&
                        main().CData_Scope->isEnabled());
            EXPECT_FALSE(vorn::IsShown(Find("FrameSlotIO"))) << "hidden for the time of the menu";
            EXPECT_EQ(main().CommPortNo, 10);
        });
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Selected(), Slot);
            EXPECT_TRUE(Shown("FrameSlotIO"));
        });
    });
}

TEST_F(DeviceTreeTest, TheContextMenuSearchesTheClickedPort)
{
    other_.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        Plant(op);
        Choose(op, Plain);
        RightClick(op, "KeyCOM010", [&](QMenu &menu) {
            menu.setActiveAction(main().CSearch);
            QTest::keyClick(&menu, Qt::Key_Return);
        });
        op.AnswerInput("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0",
                       "255");
        op.WaitFor([&] { return main().isEnabled() && Status() == "COM Port Status"; }, "end of the search");
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Children("KeyCOM010"), Lines{"_0010!!FF7252"});
            EXPECT_EQ(main().Nodes.Selected(), "KeyCOM010");
            EXPECT_TRUE(Shown("ListView1"));
        });
        EXPECT_EQ(other_.Lines(), Lines{"$FFM"});
    });
}

TEST_F(DeviceTreeTest, TheContextMenuOpensTheBusToolsOfTheClickedPort)
{
    Operate([&](Operator &op) {
        Choose(op, Port3);
        const auto choose = [&](QAction *entry) {
            RightClick(op, "KeyCOM010", [entry](QMenu &menu) {
                menu.setActiveAction(entry);
                QTest::keyClick(&menu, Qt::Key_Return);
            });
        };
        const auto caption = [&](const QPointer<QWidget> &window) {
            return op.Gui([&] { return window ? window->windowTitle().toStdString() : std::string(); });
        };
        choose(main().CTerminal);
        EXPECT_EQ(caption(main().FormFull_Screen), "COM10 Terminal");
        choose(main().CData_Scope);
        EXPECT_EQ(caption(main().ScopeForm[10]), "COM10 Data Scope");
        // Behind the menu the tools are those of the selected port again.
        EXPECT_EQ(op.Gui([&] { return main().Nodes.Selected(); }), Port3);
        op.Trigger(main().ToolButton(vorn::FormMain::TerminalButton));
        EXPECT_EQ(caption(main().FormFull_Screen), "COM3 Terminal");
        RightClick(op, "KeyCOM010", [](QMenu &) {});
        op.Trigger(main().ToolButton(vorn::FormMain::ScopeButton));
        EXPECT_EQ(caption(main().ScopeForm[3]), "COM3 Data Scope");
    });
}

TEST_F(DeviceTreeTest, ASearchThatIsCancelledInTheMenuLetsTheRefreshGoOn)
{
    Operate([&](Operator &op) {
        Plant(op);
        Choose(op, Plain);
        op.WaitFor([&] { return peer_.Lines().size() > 2; }, "the refresh");
        RightClick(op, "KeyCOM010", [&](QMenu &menu) {
            menu.setActiveAction(main().CSearch);
            QTest::keyClick(&menu, Qt::Key_Return);
        });
        op.AnswerInput("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0",
                       nullptr);
        const std::size_t polls = peer_.Lines().size();
        op.WaitFor([&] { return peer_.Lines().size() > polls + 3; }, "more polls");
        EXPECT_TRUE(op.Gui([&] { return main().NoYield; }));
        Choose(op, Init);
        EXPECT_TRUE(other_.Lines().empty());
    });
}

TEST_F(DeviceTreeTest, ASearchFromTheMenuOfASlotPageLeavesNothingOfThatPage)
{
    Operate([&](Operator &op) {
        Plant(op);
        Choose(op, Slot);
        ASSERT_TRUE(op.Gui([&] { return Shown("FrameSlotIO"); }));
        RightClick(op, "KeyCOM010", [&](QMenu &menu) {
            menu.setActiveAction(main().CSearch);
            QTest::keyClick(&menu, Qt::Key_Return);
        });
        op.AnswerInput("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0",
                       "255");
        op.CloseForm("", [](QWidget &box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("COM10 No Modules found !"));
        });
        op.WaitFor([&] { return main().isEnabled() && Status() == "COM Port Status"; }, "end of the search");
        EXPECT_FALSE(op.Gui([&] { return Shown("FrameSlotIO"); }));
    });
}

TEST_F(DeviceTreeTest, ARealRightClickAndTheMenuKeyOpenTheMenuAndKeepThePage)
{
    Operate([&](Operator &op) {
        Plant(op);
        Choose(op, Plain);
        auto *viewport = main().TreeView1->viewport();
        const auto leave = [&] {
            op.WaitFor([] { return QApplication::activePopupWidget() != nullptr; }, "the menu");
            EXPECT_FALSE(op.Gui([&] { return main().NodeLeftClick; }));
            op.Gui([] { QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape); });
            op.WaitFor([&] { return !QApplication::activePopupWidget() && main().Nodes.Selected() == Plain; },
                       "the end of the menu");
            EXPECT_EQ(op.Gui([&] { return vorn::TagOf(main().Frame1); }), Plain);
        };
        op.Gui([&] {
            auto *item = main().TreeView1->findItems(QStringLiteral("(* ) 7206"), Qt::MatchRecursive).first();
            const QPoint place = main().TreeView1->visualItemRect(item).center();
            QTest::mousePress(viewport, Qt::RightButton, {}, place);
            QContextMenuEvent menu(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
            QApplication::sendEvent(viewport, &menu);
            QTest::mouseRelease(viewport, Qt::RightButton, {}, place);
        });
        leave();
        op.Gui([&] {
            QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(), QPoint());
            QApplication::sendEvent(viewport, &menu);
        });
        leave();
    });
}

TEST_F(DeviceTreeTest, AModuleInInitStateIsListedWithTheAddressThatItReports)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().Nodes.Add(Port3, "*0003!!057206", "(* ) 7206", "vorn4ico", "vorn4icoS"); });
        Unfold(op, Port3);
        EXPECT_EQ(op.Gui([&] { return Rows().front(); }).at(0), "*");
        EXPECT_EQ(op.Gui([&] { return Rows().front(); }).at(1), "  5  (05)");
    });
}

TEST_F(DeviceTreeTest, UnfoldingAPortLeavesTheKeyboardInTheTree)
{
    Operate([&](Operator &op) {
        Plant(op);
        op.Gui([&] {
            QApplication::setActiveWindow(&main());
            main().TreeView1->setFocus();
        });
        Unfold(op, Port3);
        EXPECT_TRUE(op.Gui([&] { return main().TreeView1->hasFocus(); }));
    });
}

TEST_F(DeviceTreeTest, UnfoldingInTheMiddleOfATransactionWaitsForItsEnd)
{
    Operate([&](Operator &op) {
        Plant(op);
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("30000")); });
        QMetaObject::invokeMethod(
            &main(), [this] { main().trans("$012", false); }, Qt::QueuedConnection);
        op.WaitFor([&] { return !peer_.Lines().empty(); }, "the command");
        op.Gui([&] {
            main()
                .TreeView1->findItems(QStringLiteral("COM3"), Qt::MatchRecursive)
                .first()
                ->setExpanded(true);
        });
        op.Settle();
        EXPECT_FALSE(op.Gui([&] { return Shown("ListView1"); }));
        peer_.Send("!01\r");
        op.WaitFor([&] { return Shown("ListView1"); }, "the list");
    });
}

TEST_F(DeviceTreeTest, SlotsAndChannelsHaveNoMenu)
{
    Operate([&](Operator &op) {
        Plant(op);
        Choose(op, Plain);
        for (const char *key : {Slot, Channel, "KeyPC"}) {
            op.Gui([&] { ClickNode(key, Qt::RightButton); });
            op.WaitFor([&] { return !main().Gate.IsBusy(); }, "the end of the click");
            EXPECT_EQ(op.Gui([&] { return main().Nodes.Selected(); }), Plain);
            EXPECT_TRUE(op.Gui([] { return QApplication::activePopupWidget() == nullptr; }));
        }
    });
}

TEST_F(DeviceTreeTest, ArrowKeysChooseAndReturnLoadsAgain)
{
    Operate([&](Operator &op) {
        Plant(op);
        Choose(op, Port3);
        op.Press(main().TreeView1, Qt::Key_Down);
        op.WaitFor([&] { return vorn::TagOf(main().Frame1) == "KeyCOM010"; }, "the next port's page");
        op.Gui([&] { vorn::SetTag(main().Frame1, ""); });
        op.Press(main().TreeView1, Qt::Key_Return);
        op.WaitFor([&] { return vorn::TagOf(main().Frame1) == "KeyCOM010"; }, "the page once more");
    });
}

TEST_F(DeviceTreeTest, AMouseClickChoosesAndATwinClickUnfolds)
{
    Operate([&](Operator &op) {
        Plant(op);
        op.Gui([&] {
            auto *tree = main().TreeView1;
            const auto item = tree->findItems(QStringLiteral("COM10"), Qt::MatchRecursive).first();
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                              tree->visualItemRect(item).center());
        });
        op.WaitFor([&] { return vorn::TagOf(main().Frame1) == "KeyCOM010"; }, "the port's page");
        EXPECT_TRUE(op.Gui([&] { return main().NodeLeftClick; }));
        op.Gui([&] {
            auto *tree = main().TreeView1;
            const auto item = tree->findItems(QStringLiteral("COM3"), Qt::MatchRecursive).first();
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                              tree->visualItemRect(item).center());
            QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                               tree->visualItemRect(item).center());
        });
        op.WaitFor([&] { return Shown("ListView1"); }, "the module list");
    });
}

TEST_F(DeviceTreeTest, TheSplitterSharesTheWidth)
{
    Operate([&](Operator &op) {
        const auto before = op.Gui([&] { return main().LabMove->sizes(); });
        op.Gui([&] { main().LabMove->setSizes({before[0] + 60, before[1] - 60}); });
        const auto after = op.Gui([&] { return main().LabMove->sizes(); });
        EXPECT_EQ(after[0], before[0] + 60);
        EXPECT_EQ(after[0] + after[1], before[0] + before[1]);
    });
}

TEST_F(DeviceTreeTest, TheWindowShrinksToItsMinimumOnly)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().resize(10, 10); });
        EXPECT_EQ(op.Gui([&] { return main().size(); }), QSize(600, 480));
        Plant(op);
        Choose(op, Base);
        EXPECT_EQ(op.Gui([&] { return main().size(); }), QSize(600, 480)) << "a page never widens the window";
    });
}
