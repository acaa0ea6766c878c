#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "consoles/ConsoleWindow.h"
#include "platform/Dialogs.h"
#include "platform/WidgetText.h"
#include "protocol/ModelCatalogue.h"
#include "shell/DIO.h"
#include "workspace/PageTable.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QTreeWidget>

#include <sstream>

using Lines = std::vector<std::string>;

namespace
{

/// COM3 with a peer that is silent unless told otherwise.
class PageSelectionTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(3)};

    std::string AddModule(Operator &op, const std::string &model, const char *address = "0A")
    {
        const std::string key = std::string("_0003!!") + address + model;
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("1"));
            main().Nodes.Add("KeyCOM003", key, "(" + std::string(address) + ") " + model, "vorn4ico",
                             "vorn4icoS");
        });
        return key;
    }

    std::string AddSlot(Operator &op, const std::string &model)
    {
        const std::string base = AddModule(op, "3900", "20");
        const std::string key = "_00031!20" + model;
        op.Gui([&] { main().Nodes.Add(base, key, "(S1) " + model, "vorn5cico", "vorn5cicoS"); });
        return key;
    }

    std::string AddChannel(Operator &op, const std::string &model)
    {
        const std::string slot = AddSlot(op, model);
        const std::string channel = vorn::ChannelKey(slot, '2');
        op.Gui([&] { main().Nodes.Add(slot, channel, "CH 2", "vorn5sico", "vorn5sicoS"); });
        return channel;
    }

    void ExpectShown(Operator &op, const std::string &names, bool shown)
    {
        op.Gui([&] {
            std::istringstream stream(names);
            for (std::string name; stream >> name;) {
                ASSERT_TRUE(Find(name.c_str())) << name;
                EXPECT_EQ(vorn::IsShown(Find(name.c_str())), shown) << name;
            }
        });
    }
    std::string ToolStates()
    {
        std::string states;
        for (const int i : {3, 4, 5, 7, 8})
            states += main().ToolButton(i)->isEnabled() ? '1' : '0';
        return states;
    }
};

} // namespace

TEST_F(PageSelectionTest, EveryControlOfThePageTableExists)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            std::vector<const vorn::PageDescription *> pages{&vorn::ResetPage()};
            for (const char *model :
                 {"7203", "7203D", "7206", "7209", "7212D", "7218", "7221", "7224", "7224M", "7231", "7252",
                  "7256", "7258", "7272", "7282", "7282D", "7282N", "3900"}) {
                pages.push_back(vorn::ModulePage(model));
                ASSERT_TRUE(pages.back()) << model;
            }
            for (const char *model : {"3921", "3923", "3923H", "3925", "3931", "3962", "3942", "3944", "3946",
                                      "3948", "3951", "3953", "3957"}) {
                pages.push_back(vorn::SlotPage(model));
                ASSERT_TRUE(pages.back()) << model;
            }
            for (const char *model : {"3921", "3923", "3923H", "3925", "3931", "3962"}) {
                pages.push_back(vorn::ChannelPage(model));
                ASSERT_TRUE(pages.back()) << model;
            }
            for (const vorn::PageDescription *page : pages) {
                for (const auto *names : {&page->hidden, &page->shown, &page->enabled}) {
                    for (const std::string &name : *names)
                        EXPECT_TRUE(program().Pages.Control(name)) << name;
                }
                for (const auto &[name, caption] : page->captions)
                    EXPECT_TRUE(program().Pages.Control(name)) << name;
            }
        });
    });
}

TEST_F(PageSelectionTest, EachModelShowsItsFramesAndNoOthers)
{
    const std::vector<std::pair<const char *, const char *>> frames{
        {"7203", "FrameMSet FrameGen FrameASet"},
        {"7206", "FrameMSet FrameGen FrameASet"},
        {"7209", "FrameMSet FrameGen"},
        {"7212D", "FrameMSet FrameGen FrameASet FrameLSet"},
        {"7218", "FrameMSet FrameGen FrameASet"},
        {"7221", "FrameMSet FrameAIn"},
        {"7224M", "FrameMSet FrameAIn TabStrip1"},
        {"7231", "FrameMSet"},
        {"7252", "FrameMSet FrameDIO"},
        {"7272", "FrameMSet FrameDIO"},
        {"7282", "FrameMSet"},
        {"3900", "FrameMSet ListView3900"}};
    const Lines all{"FramePort",      "FrameMSet",         "FrameASet",   "FrameAOut",    "FrameAIn",
                    "FrameGen",       "FrameLSet",         "FrameDIO",    "FrameFC",      "FrameFCf",
                    "FrameFCdata",    "FrameSlot",         "FrameSlotIO", "FrameChannel", "FrameMemory",
                    "FrameMAlarmset", "FrameMemOperation", "TabStrip1",   "ListView3900", "LabPC"};
    Operate([&](Operator &op) {
        for (const auto &[model, names] : frames) {
            Choose(op, AddModule(op, model));
            op.Gui([&] {
                for (const std::string &name : all) {
                    const bool expected =
                        (" " + std::string(names) + " ").find(" " + name + " ") != std::string::npos;
                    EXPECT_EQ(Shown(name.c_str()), expected) << model << " " << name;
                }
                EXPECT_FALSE(Shown("ListView1"));
                EXPECT_EQ(Text("Frame1"), std::string("VORN-") + model);
            });
        }
    });
}

TEST_F(PageSelectionTest, TheStrainGaugePageHidesTheCountAlone)
{
    Operate([&](Operator &op) {
        Choose(op, AddModule(op, "7218"));
        ExpectShown(
            op,
            "CmdClearLatch ADIO_0 ADIO_1 ADIO_2 ADIO_3 LabAAO TextAAOv CmdAOsend CmdG0V CmdG10V CmdGStartup",
            true);
        ExpectShown(op, "CmdClearCount LabACt LabACtv CmdGCJC", false);
        EXPECT_EQ(op.Gui([&] { return Text("ADIO_3"); }), "DO &3");
        Choose(op, AddModule(op, "7206", "0B"));
        ExpectShown(op, "CmdClearCount LabACt LabACtv ADIO_3", true);
        ExpectShown(op, "ADIO_2 TextAAOv CmdG0V", false);
        EXPECT_EQ(op.Gui([&] { return Text("ADIO_3"); }), "DI");
    });
}

TEST_F(PageSelectionTest, ThePageOfTheSensorModuleCalibratesAnOffset)
{
    Operate([&](Operator &op) {
        Choose(op, AddModule(op, "7209"));
        ExpectShown(op, "ADIO_0 ADIO_1 ADIO_3 LabACt LabACtv CmdClearCount CmdClearLatch", false);
        EXPECT_EQ(op.Gui([&] { return Text("CmdGZero"); }), "  &Offset Calibration");
        Choose(op, AddModule(op, "7203", "0B"));
        EXPECT_EQ(op.Gui([&] { return Text("CmdGZero"); }), "    &Zero Calibration");
    });
}

TEST_F(PageSelectionTest, DigitalPagesCaptionTheirPoints)
{
    Operate([&](Operator &op) {
        Choose(op, AddModule(op, "7252"));
        ExpectShown(op, "DIOL_0 DIOL_6 DIOH_0 DIOH_7 LabDL LabDH LabDHv", true);
        ExpectShown(op, "DIOL_7 CmbRange CmbDataFormat LabRange LabDataformat", false);
        op.Gui([&] {
            EXPECT_EQ(Text("DIOL_6"), "DI  6");
            EXPECT_EQ(Text("DIOH_7"), "DO  &7");
            EXPECT_EQ(Text("LabDL"), "Digital Input");
            EXPECT_EQ(Text("LabDH"), "Digital Output");
        });
        Choose(op, AddModule(op, "7258", "0B"));
        EXPECT_EQ(op.Gui([&] { return Text("DIOH_7"); }), "DI  15");
        Choose(op, AddModule(op, "7272", "0C"));
        ExpectShown(op, "DIOL_4 DIOL_7", true);
        ExpectShown(op, "DIOL_0 DIOL_3 DIOH_0 LabDH LabDHv", false);
        EXPECT_EQ(op.Gui([&] { return Text("DIOL_4"); }), "DO  &0");
        EXPECT_EQ(op.Gui([&] { return Text("LabDL"); }), "Relay Output");
    });
}

TEST_F(PageSelectionTest, SlotPagesShowTheirChannels)
{
    Operate([&](Operator &op) {
        Choose(op, AddSlot(op, "3921"));
        ExpectShown(
            op, "FrameSlot FrameSlotIO CmbSFormat CmbSRange CmbSTimeSlewRate Labch_2 TextCH_2 ChHA_2 ChLA_2",
            true);
        ExpectShown(op, "Labch_3 TextCH_3 LabCHunit_3 ChHA_3", false);
        EXPECT_TRUE(op.Gui([&] { return Find<QLineEdit>("TextCH_0")->isReadOnly(); }));
        Choose(op, AddSlot(op, "3923H"));
        ExpectShown(op, "CmbSFormat TextCH_7", true);
        ExpectShown(op, "LabSRange CmbSRange LabSTimeSlewrate CmbSTimeSlewRate", false);
        Choose(op, AddSlot(op, "3931"));
        ExpectShown(op, "FrameSlotIO CmdSlotSendAO Labch_3 TextCH_3 LabCHunit_3", true);
        ExpectShown(op, "FrameSlot TextCH_4 ChHA_0 ChLA_0", false);
        EXPECT_FALSE(op.Gui([&] { return Find<QLineEdit>("TextCH_0")->isReadOnly(); }));
        Choose(op, AddSlot(op, "3951"));
        op.Gui([&] {
            EXPECT_EQ(Text("Frame1"), "VORN-3951/D");
            EXPECT_EQ(Text("DIOL_7"), "DO  &7");
            EXPECT_EQ(Text("DIOH_0"), "DO  &8");
            EXPECT_EQ(Text("DIOH_1"), "DO  &9");
            EXPECT_EQ(Text("DIOH_2"), "DO 1&0");
            EXPECT_EQ(Text("DIOH_7"), "DO 1&5");
        });
        Choose(op, AddSlot(op, "3953"));
        ExpectShown(op, "DIOL_5", true);
        ExpectShown(op, "DIOL_6 DIOH_0", false);
        Choose(op, AddSlot(op, "3942"));
        ExpectShown(op, "DIOL_0 DIOH_7 LabDHv", true);
        ExpectShown(op, "LabDL LabDH", false);
        EXPECT_EQ(op.Gui([&] { return Text("DIOH_7"); }), "DO &0") << "until its directions are read";
        Choose(op, AddSlot(op, "3948"));
        EXPECT_EQ(op.Gui([&] { return Text("Frame1"); }), "VORN-3948S");
    });
}

TEST_F(PageSelectionTest, ChannelPagesShowOneChannel)
{
    Operate([&](Operator &op) {
        Choose(op, AddChannel(op, "3923"));
        ExpectShown(op, "FrameSlot FrameChannel LabSRangeLab LabSDataFormatLab CheckChEnable", true);
        ExpectShown(op, "CmdSUpdate CmdSZero CmdSSpan CmdSCJC LabSTimeSlewrate CmbSRange FrameSlotIO", false);
        EXPECT_EQ(op.Gui([&] { return Text("LabSDataFormatLab"); }), "Engineering unit");
        EXPECT_EQ(op.Gui([&] { return Text("Frame1"); }), "VORN-3923 Channel 2");
        Choose(op, AddChannel(op, "3931"));
        ExpectShown(op, "CmbSRange CmbSTimeSlewRate CmdSUpdate", true);
        EXPECT_EQ(op.Gui([&] { return Text("LabSRange"); }), "&Output Range");
        EXPECT_EQ(op.Gui([&] { return Text("LabSTimeSlewrate"); }), "&Slew Rate");
        Choose(op, AddChannel(op, "3962"));
        ExpectShown(op, "CheckChEnable CmdSUpdate", false);
        Choose(op, AddSlot(op, "3921"));
        EXPECT_EQ(op.Gui([&] { return Text("LabSRange"); }), "Input &Range :");
    });
}

TEST_F(PageSelectionTest, TheToolbarFollowsTheNode)
{
    Operate([&](Operator &op) {
        EXPECT_EQ(op.Gui([&] { return ToolStates(); }), "11100");
        Choose(op, "KeyPC");
        EXPECT_EQ(op.Gui([&] { return ToolStates(); }), "00000");
        Choose(op, AddModule(op, "7252"));
        EXPECT_EQ(op.Gui([&] { return ToolStates(); }), "00011");
        Choose(op, AddChannel(op, "3923"));
        EXPECT_EQ(op.Gui([&] { return ToolStates(); }), "00000");
        op.Gui([&] { main().ScopeOnPort[3] = true; });
        Choose(op, "KeyCOM003");
        EXPECT_EQ(op.Gui([&] { return ToolStates(); }), "00000");
    });
}

TEST_F(PageSelectionTest, ChoosingTheSameModuleLoadsItAgainAndGoesOnPolling)
{
    peer_.Reply("$0A6", "!02A500\r");
    Operate([&](Operator &op) {
        const std::string key = AddModule(op, "7256");
        Choose(op, key);
        op.WaitFor([&] { return peer_.Lines().size() > 5; }, "the refresh");
        peer_.Forget();
        Choose(op, key);
        op.WaitFor([&] { return peer_.Lines().size() > 5; }, "the refresh");
        const Lines lines = peer_.Lines();
        const auto load = std::find(lines.begin(), lines.end(), "$0AF");
        ASSERT_NE(load, lines.end());
        EXPECT_EQ(*(load + 1), "$0A2");
        EXPECT_EQ(*(load + 2), "$0A6");
        EXPECT_EQ(std::count(lines.begin(), lines.end(), "$0AF"), 1);
    });
}

TEST_F(PageSelectionTest, AClickDuringTheRefreshTakesItOver)
{
    Operate([&](Operator &op) {
        const std::string first = AddModule(op, "7256", "0A");
        const std::string second = AddModule(op, "7256", "0B");
        const std::string third = AddModule(op, "7256", "0C");
        for (const std::string &key : {first, second, third, first}) {
            Choose(op, key);
            peer_.Forget();
            const std::string poll = "$" + vorn::NodeKey(key).address() + "6";
            op.WaitFor(
                [&] {
                    const Lines lines = peer_.Lines();
                    return std::count(lines.begin(), lines.end(), poll) >= 5;
                },
                "the refresh of the chosen module");
            // From its first poll on nothing of another module is sent any more.
            const Lines lines = peer_.Lines();
            const auto begin = std::find(lines.begin(), lines.end(), poll);
            EXPECT_EQ(std::count(begin, lines.end(), poll), lines.end() - begin);
        }
    });
}

TEST_F(PageSelectionTest, OpeningAPortStopsTheRefresh)
{
    Operate([&](Operator &op) {
        Choose(op, AddModule(op, "7256"));
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh");
        Choose(op, "KeyCOM003");
        op.WaitFor([&] { return !main().NoYield; }, "the end of the refresh");
        peer_.Forget();
        op.Settle();
        EXPECT_TRUE(peer_.Lines().empty());
        EXPECT_TRUE(op.Gui([&] { return main().PauseRefresh; }));
    });
}

TEST_F(PageSelectionTest, APortPageThatIsOnShowKeepsItsFields)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("123"));
            LeftClick("KeyCOM003");
        });
        op.Settle();
        EXPECT_TRUE(op.Gui([&] { return Shown("FramePort"); }));
        EXPECT_EQ(op.Gui([&] { return Text("TextTimeOut"); }), "123");
    });
}

TEST_F(PageSelectionTest, AModelWithAConsoleHandsOverToIt)
{
    Operate([&](Operator &op) {
        peer_.OnLine([](const std::string &, const RawPeer::Writer &write) { write("!0200000600\r"); });
        for (const char *model : {"7216", "7221P", "7224P", "7227", "7234", "7254", "7262", "7276"}) {
            const std::string key = AddModule(op, model);
            op.Gui([&] {
                main().CmbPBaudrate->setCurrentIndex(5);
                LeftClick(key);
            });
            op.CloseForm((std::string("Form") + model).c_str(), [&](QWidget &console) {
                EXPECT_EQ(dynamic_cast<vorn::ConsoleWindow &>(console).ConsoleBaud, "38400");
                EXPECT_EQ(main().SelectedNodeKey, key);
                EXPECT_FALSE(Shown("FrameMSet")) << "the page behind it is empty";
                EXPECT_FALSE(Shown("ListView1"));
            });
            peer_.Forget();
            op.WaitFor([&] { return vorn::TagOf(main().Frame1) == key; }, "the end of the click");
            op.WaitFor([&] { return Status() == "COM 3   38.4  kbps    Polling current data...."; },
                       "the status");
            EXPECT_TRUE(peer_.Lines().empty()) << "neither load nor poll";
        }
    });
}

TEST_F(PageSelectionTest, ARowOfTheSlotListSelectsAndADoubleClickLoads)
{
    Operate([&](Operator &op) {
        const std::string slot = AddSlot(op, "3944");
        Choose(op, "_0003!!203900");
        op.ClickRow(Find<QTreeWidget>("ListView3900"), 0);
        op.WaitFor([&] { return main().Nodes.Selected() == slot; }, "the selection");
        EXPECT_TRUE(op.Gui([&] { return main().Nodes.IsExpanded("_0003!!203900"); }));
        op.DoubleClickRow(Find<QTreeWidget>("ListView3900"), 0);
        op.WaitFor([&] { return vorn::TagOf(main().Frame1) == slot; }, "the slot's page");
    });
}

TEST_F(PageSelectionTest, TheTimerBringsAStraySelectionBack)
{
    Operate([&](Operator &op) {
        const std::string key = AddModule(op, "7256");
        Choose(op, key);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh");
        op.Gui([&] {
            main().Nodes.Select("KeyPC");
            main().Timer1.start();
        });
        op.WaitFor([&] { return main().Nodes.Selected() == key; }, "the selection");
    });
}

TEST_F(PageSelectionTest, TheTimerStartsTheRefreshInTheTickThatBringsTheSelectionBack)
{
    Operate([&](Operator &op) {
        const std::string key = AddModule(op, "7256");
        Choose(op, key);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh");
        op.Gui([&] { main().PauseRefresh = true; });
        op.WaitFor([&] { return !main().NoYield; }, "the end of the refresh");
        peer_.Forget();
        op.Gui([&] {
            main().Nodes.Select("KeyPC");
            main().Timer1.start();
        });
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh again");
        EXPECT_EQ(op.Gui([&] { return main().Nodes.Selected(); }), key);
    });
}

TEST_F(PageSelectionTest, TheRefreshNeverBeginsInsideATransactionOrUnderABox)
{
    Operate([&](Operator &op) {
        const std::string key = AddModule(op, "7256");
        Choose(op, key);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh");
        const auto tick = [&] {
            QMetaObject::invokeMethod(&main().Timer1, "timeout", Qt::BlockingQueuedConnection);
            op.Settle();
            EXPECT_EQ(peer_.Lines(), Lines{"$992"});
        };
        op.Gui([&] {
            main().Gate.Take({.context = &main(), .action = [this] {
                                  main().TextTimeOut->setText(QStringLiteral("30000"));
                                  peer_.Forget();
                                  main().trans("$992", false);
                                  vorn::MsgBox("one", vorn::MsgBoxStyle::Critical, "one");
                              }});
        });
        op.WaitFor([&] { return peer_.Lines() == Lines{"$992"}; }, "the command");
        tick();
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("1")); });
        peer_.Send("!99\r");
        ASSERT_TRUE(op.AwaitBox("the box"));
        tick();
        op.AnswerBox("one", 16, "one");
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh again");
    });
}

TEST_F(PageSelectionTest, ANodeThatHasGoneSinceTheClickLeavesTheRefreshAlone)
{
    Operate([&](Operator &op) {
        const std::string key = AddModule(op, "7256");
        Choose(op, key);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh");
        op.Gui([&] { main().TreeView1_NodeClick("_0003!!997256"); });
        const std::size_t polls = peer_.Lines().size();
        op.WaitFor([&] { return peer_.Lines().size() > polls + 3; }, "more polls");
    });
}

TEST_F(PageSelectionTest, ADeviceThatVanishesDuringTheRefreshIsToldAndTheWindowGoesOn)
{
    Operate([&](Operator &op) {
        Choose(op, AddModule(op, "7256"));
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the refresh");
        std::filesystem::remove(ports.Link(3));
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.WaitFor([&] { return !main().NoYield; }, "the end of the refresh");
        Choose(op, "KeyPC");
        EXPECT_TRUE(op.Gui([&] { return Shown("LabPC"); }));
    });
}

TEST(TreeOfManyUnits, ASearchedPortOfManyBaseUnitsIsListedWhole)
{
    ProgramRun run;
    RawPeer peer(run.ports.Link(3));
    run.Operate([&](Operator &op) {
        op.Gui([&] {
            auto &nodes = run.main().Nodes;
            for (int unit = 0; unit < 256; ++unit) {
                char address[3];
                std::snprintf(address, sizeof address, "%02X", static_cast<unsigned>(unit));
                const std::string base = std::string("_0003!!") + address + "3900";
                nodes.Add("KeyCOM003", base, std::string("(") + address + ") 3900", "vorn5ico", "vorn5icoS");
                for (char slot = '0'; slot < '8'; ++slot) {
                    const std::string card = vorn::SlotKey(base, slot, "3923");
                    nodes.Add(base, card, std::string("(S") + slot + ") 3923", "vorn5cico", "vorn5cicoS");
                    for (char channel = '0'; channel < '8'; ++channel)
                        nodes.Add(card, vorn::ChannelKey(card, channel), std::string("CH ") + channel,
                                  "vorn5sico", "vorn5sicoS");
                }
            }
            run.program().DeviceTree.ExpandNode("KeyCOM003");
            EXPECT_EQ(run.main().ListView1->topLevelItemCount(), 256 * 9);
            EXPECT_EQ(nodes.Count(), 2 + 256 * (1 + 8 * 9));
            nodes.RemoveChildren("KeyCOM003");
            EXPECT_EQ(nodes.Count(), 2);
        });
    });
}
