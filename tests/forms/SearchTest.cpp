#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "simulator/Simulator.h"

#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Number.h"
#include "shell/FormScan.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QProgressBar>
#include <QPushButton>

using Lines = std::vector<std::string>;

namespace
{

const std::string NothingFoundText = "Please Check:\n\n"
                                     "   <1> Communication port and baudrate \n"
                                     "   <2> Power supply voltage ( +10 to +30 VDC) \n"
                                     "   <3> Power wiring\n"
                                     "   <4> Communication line wiring\n"
                                     "   <5> Firmware version\n\n"
                                     "Then execute the 'Search' function to repeat scan";

/// One port, COM3, with a raw peer behind it.
class SearchTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(3)};

    vorn::FormScan *Window() { return qobject_cast<vorn::FormScan *>(main().FormScan.data()); }
    void SetTimeOut(Operator &op, const char *milliseconds)
    {
        op.Gui([&] { main().TextTimeOut->setText(QString::fromLatin1(milliseconds)); });
    }

    bool AwaitEnd(Operator &op)
    {
        return op.WaitFor([&] { return main().isEnabled() && Status() == "COM Port Status"; },
                          "end of the search");
    }

    /// Searches from an address on, to the end; what the peer heard is the result.
    Lines SearchFrom(Operator &op, const char *start)
    {
        peer_.Forget();
        Search(op, start);
        AwaitEnd(op);
        return peer_.Lines();
    }

    Lines Texts(const std::string &key = "KeyCOM003")
    {
        Lines texts;
        for (const std::string &child : main().Nodes.Children(key))
            texts.push_back(main().Nodes.Text(child));
        return texts;
    }
};

} // namespace

TEST_F(SearchTest, AsksEachAddressWithoutAndThenWithChecksum)
{
    peer_.Reply("$FEM", "!FEVORN7252\r");
    peer_.Reply("$FFMF7", "!FF7206A5\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        EXPECT_EQ(SearchFrom(op, "253"), (Lines{"$FDM", "$FDM" + vorn::Checksum("$FDM"), "$FEM", "$FFM",
                                                "$FFM" + vorn::Checksum("$FFM")}));
    });
}

TEST_F(SearchTest, KeysAndTextsTellHowToReachTheModule)
{
    peer_.Reply("$FEM", "!FEVORN7252\r");
    peer_.Reply("$FFM" + vorn::Checksum("$FFM"), "!FFVORN7206A5\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        SearchFrom(op, "254");
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Children("KeyCOM003"), (Lines{"_0003!!FE7252", "_1003!!FF7206"}));
            EXPECT_EQ(Texts(), (Lines{"(FE) 7252", "(FF) 7206"}));
            EXPECT_EQ(main().Nodes.Image("_0003!!FE7252"), "vorn4ico");
        });
    });
}

TEST_F(SearchTest, ThePlusModelsShowAPlusAndKeepTheirPInTheKey)
{
    peer_.Reply("$FFM", "!FF7221P\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        SearchFrom(op, "255");
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Children("KeyCOM003"), Lines{"_0003!!FF7221P"});
            EXPECT_EQ(Texts(), Lines{"(FF) 7221+"});
        });
    });
}

TEST_F(SearchTest, ModelsOutsideTheCatalogueGetNoNode)
{
    for (const char *model : {"7290", "7203d", "VORN5017", "", "17252", "3900X"}) {
        peer_.Reply("$FFM", std::string("!FF") + model + "\r");
        Operate([&](Operator &op) {
            SetTimeOut(op, "250");
            Search(op, "255");
            op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
            AwaitEnd(op);
            EXPECT_FALSE(op.Gui([&] { return main().Nodes.HasChildren("KeyCOM003"); })) << model;
        });
    }
}

TEST_F(SearchTest, AnEmptyBusIsToldWithItsPort)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        Search(op, "250");
        op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
        AwaitEnd(op);
        EXPECT_FALSE(op.Gui([&] { return main().Nodes.IsExpanded("KeyCOM003"); }));
        EXPECT_TRUE(op.Gui([&] { return Shown("FramePort"); }));
    });
}

TEST_F(SearchTest, AStartAddressLeavesOutTheOnesBefore)
{
    peer_.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        const Lines lines = SearchFrom(op, "250");
        EXPECT_EQ(lines.front(), "$FAM");
        EXPECT_EQ(lines.back(), "$FFM");
        EXPECT_EQ(lines.size(), 5U * 2 + 1);
    });
}

TEST_F(SearchTest, AStartTextThatIsNoNumberIsZero)
{
    for (const char *text : {"five", "0x10", "40000", "-"}) {
        peer_.Forget();
        Operate([&](Operator &op) {
            SetTimeOut(op, "250");
            Search(op, text);
            op.WaitFor([&] { return !peer_.Lines().empty(); }, "the first address");
            op.Gui([&] { Window()->Command1->click(); });
            op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
            AwaitEnd(op);
            EXPECT_EQ(peer_.Lines().front(), "$002") << text;
        });
    }
}

TEST_F(SearchTest, AFractionIsRoundedToTheEvenNeighbour)
{
    peer_.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        EXPECT_EQ(SearchFrom(op, "254.5").front(), "$FEM");
        EXPECT_EQ(SearchFrom(op, "253.5").front(), "$FEM");
    });
}

TEST_F(SearchTest, ANegativeStartCountsUpFromTheLastTwoDigits)
{
    peer_.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        Search(op, "-1");
        op.WaitFor([&] { return peer_.Lines().size() >= 2; }, "two addresses");
        op.Gui([&] { Window()->Command1->click(); });
        AwaitEnd(op);
        EXPECT_EQ(peer_.Lines().at(0), "$FFM");
        EXPECT_EQ(peer_.Lines().at(1), "$002");
    });
}

TEST_F(SearchTest, AStartAbove255ScansOnUntilItIsStopped)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        Search(op, "256");
        op.WaitFor([&] { return peer_.Lines().size() > 6; }, "some addresses");
        op.Gui([&] {
            vorn::FormScan *scan = Window();
            EXPECT_EQ(scan->ProgressBar1->value(), 255);
            scan->Command1->click();
        });
        op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
        AwaitEnd(op);
        EXPECT_EQ(peer_.Lines().at(0), "$100M");
        EXPECT_EQ(peer_.Lines().at(2), "$101M");
    });
}

TEST_F(SearchTest, CancelOrAnEmptyAnswerChangesNothing)
{
    peer_.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        SearchFrom(op, "255");
        op.Gui([&] { LeftClick("KeyCOM003"); });
        peer_.Forget();
        for (const char *answer : {static_cast<const char *>(nullptr), ""}) {
            // The port is unfolded; folding it brings the port page and its button back.
            op.Trigger(main().ToolButton(vorn::FormMain::SearchButton));
            op.AnswerInput("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0",
                           answer);
            op.Settle();
            op.Gui([&] {
                EXPECT_TRUE(main().PauseRefresh);
                EXPECT_EQ(Texts(), Lines{"(FF) 7252"});
                EXPECT_TRUE(main().FormScan.isNull());
            });
        }
        EXPECT_TRUE(peer_.Lines().empty());
    });
}

TEST_F(SearchTest, TheProgressWindowTellsWhereTheSearchIs)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "20000");
        Search(op, "171");
        op.WaitFor([&] { return peer_.Lines() == Lines{"$ABM"}; }, "the first address");
        op.Gui([&] {
            vorn::FormScan *scan = Window();
            ASSERT_TRUE(scan);
            EXPECT_EQ(scan->windowTitle(), QStringLiteral("COM3 Searching ..."));
            EXPECT_EQ(vorn::TagOf(scan), "Scan");
            EXPECT_EQ(vorn::CaptionOf(scan->LabScnMsg), "Scanned address =");
            EXPECT_EQ(vorn::CaptionOf(scan->LabScaningH), "AB");
            EXPECT_EQ(vorn::CaptionOf(scan->LabScaningD), "171");
            EXPECT_EQ(scan->ProgressBar1->value(), 171);
            EXPECT_EQ(vorn::CaptionOf(scan->Command1), "Stop Scan");
            EXPECT_TRUE(scan->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
            EXPECT_FALSE(main().isEnabled());
            EXPECT_EQ(main().cursor().shape(), Qt::BusyCursor);
            EXPECT_EQ(Status(), "Searching module, Please wait moment....");
            scan->Command1->click();
        });
        peer_.Send("!AB7252\r");
        AwaitEnd(op);
        op.Gui([&] {
            EXPECT_EQ(Texts(), Lines{"(AB) 7252"}) << "what was found stays";
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
            EXPECT_TRUE(main().FormScan.isNull());
        });
        EXPECT_EQ(peer_.Lines(), Lines{"$ABM"}) << "the stop ends the search within one transaction";
    });
}

TEST_F(SearchTest, AStopDuringAddressZeroEndsRightThere)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "20000");
        Search(op, "0");
        op.WaitFor([&] { return peer_.Lines() == Lines{"$002"}; }, "address 0");
        op.Gui([&] { Window()->Command1->click(); });
        peer_.Send("!00400600\r");
        op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
        AwaitEnd(op);
        EXPECT_EQ(peer_.Lines(), Lines{"$002"});
    });
}

TEST_F(SearchTest, APortThatVanishesEndsTheSearchWithBothMessages)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        std::filesystem::remove(ports.Link(3));
        Search(op, "0");
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
        AwaitEnd(op);
        EXPECT_TRUE(op.Gui([&] { return main().FormScan.isNull() && main().StopScan; }));
    });
}

TEST_F(SearchTest, APortThatIsMissingIsToldOnceAtEveryAddress)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        std::filesystem::remove(ports.Link(3));
        Search(op, "5");
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
        AwaitEnd(op);
    });
}

TEST_F(SearchTest, AnAdapterPulledOutInTheMiddleIsToldOnce)
{
    peer_.OnLine([this](const std::string &line, const RawPeer::Writer &) {
        if (line == "$06M")
            std::filesystem::remove(ports.Link(3));
    });
    Operate([&](Operator &op) {
        SetTimeOut(op, "250"); // time enough for the peer to go
        Search(op, "5");
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
        AwaitEnd(op);
        EXPECT_EQ(peer_.Lines().back(), "$06M");
    });
}

TEST_F(SearchTest, AddressTenIsWrittenInHexadecimal)
{
    for (int address = 10; address <= 12; ++address)
        peer_.Reply("$" + vorn::HexByte(address) + "M", "!" + vorn::HexByte(address) + "7252\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        Search(op, "10");
        op.WaitFor([&] { return peer_.Lines().size() >= 3; }, "three addresses");
        op.Gui([&] { Window()->Command1->click(); });
        AwaitEnd(op);
        const Lines lines = peer_.Lines();
        EXPECT_EQ(Lines(lines.begin(), lines.begin() + 3), (Lines{"$0AM", "$0BM", "$0CM"}));
    });
}

TEST_F(SearchTest, AStartNearTheIntegerLimitEndsThereByItself)
{
    Operate([&](Operator &op) {
        SetTimeOut(op, "1");
        Search(op, "32766");
        op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
        AwaitEnd(op);
        EXPECT_EQ(peer_.Lines(), (Lines{"$7FFEM", "$7FFEM" + vorn::Checksum("$7FFEM"), "$7FFFM",
                                        "$7FFFM" + vorn::Checksum("$7FFFM")}));
    });
}

TEST_F(SearchTest, ASearchReplacesWhatWasBelowThePort)
{
    peer_.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        op.Gui([&] { main().Nodes.Add("KeyCOM003", "_0003!!057206", "(05) 7206", "vorn4ico", "vorn4icoS"); });
        SearchFrom(op, "255");
        EXPECT_EQ(op.Gui([&] { return Texts(); }), Lines{"(FF) 7252"});
    });
}

TEST_F(SearchTest, TheBaudRateOfTheSearchIsNotedForThePort)
{
    peer_.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        EXPECT_EQ(op.Gui([&] { return main().PortBaudList; }), Lines{"33"});
        op.Gui([&] { main().CmbPBaudrate->setCurrentIndex(7); });
        SearchFrom(op, "255");
        EXPECT_EQ(op.Gui([&] { return main().PortBaudList; }), Lines{"73"});
        EXPECT_EQ(peer_.Speed(), 115200);
    });
}

TEST_F(SearchTest, SlotsOfABaseUnitComeWithTheirChannels)
{
    peer_.Reply("$FFM", "!FFVORN3900E\r");
    peer_.Reply("$FFT", "!FF21233H253142FF62\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        EXPECT_EQ(SearchFrom(op, "255"), (Lines{"$FFM", "$FFT"}));
        op.Gui([&] {
            const std::string base = "_0003!!FF3900";
            EXPECT_EQ(main().Nodes.Children("KeyCOM003"), Lines{base});
            EXPECT_EQ(Texts(), Lines{"(FF) 3900"});
            EXPECT_EQ(main().Nodes.Image(base), "vorn5ico");
            EXPECT_EQ(main().Nodes.Children(base),
                      (Lines{"_00030!FF3921", "_00031!FF3923", "_00032!FF3923H", "_00033!FF3925",
                             "_00034!FF3931", "_00035!FF3942", "_00037!FF3962"}));
            EXPECT_EQ(Texts(base), (Lines{"(S0) 3921", "(S1) 3923", "(S2) 3923H", "(S3) 3925", "(S4) 3931",
                                          "(S5) 3942", "(S7) 3962"}));
            EXPECT_EQ(main().Nodes.Children("_00030!FF3921"),
                      (Lines{"_000300FF3921", "_000301FF3921", "_000302FF3921"}));
            EXPECT_EQ(Texts("_00031!FF3923").back(), "CH 7");
            EXPECT_EQ(Texts("_00033!FF3925").size(), 7U);
            EXPECT_EQ(Texts("_00034!FF3931").size(), 4U);
            EXPECT_TRUE(Texts("_00035!FF3942").empty());
            EXPECT_EQ(main().Nodes.Image("_00030!FF3921"), "vorn5cico");
            EXPECT_EQ(main().Nodes.Image("_000300FF3921"), "vorn5sico");
        });
    });
}

TEST_F(SearchTest, SlotsOfAChecksumBaseUnitLeaveOutTheChecksum)
{
    peer_.Reply("$FFM" + vorn::Checksum("$FFM"), "!FF39003C\r");
    peer_.Reply("$FFT" + vorn::Checksum("$FFT"), "!FF51FF4899\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        SearchFrom(op, "255");
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Children("KeyCOM003"), Lines{"_1003!!FF3900"});
            EXPECT_EQ(main().Nodes.Children("_1003!!FF3900"), (Lines{"_10030!FF3951", "_10032!FF3948"}));
            EXPECT_EQ(Texts("_1003!!FF3900"), (Lines{"(S0) 3951/D", "(S2) 3948"}));
        });
    });
}

TEST_F(SearchTest, AnUnknownSlotCodeStillMakesASlot)
{
    peer_.Reply("$FFM", "!FF3900\r");
    peer_.Reply("$FFT", "!FF77\r");
    Operate([&](Operator &op) {
        SetTimeOut(op, "250");
        SearchFrom(op, "255");
        EXPECT_EQ(op.Gui([&] { return Texts("_0003!!FF3900"); }), Lines{"(S0) 3977"});
    });
}

// Address 0, where a module in INIT state answers whatever its address is.

namespace
{

/// Searches address 0 and stops behind it: the peer falls silent, and the stop button is pressed at
/// address 1.
class AddressZeroTest : public SearchTest
{
protected:
    /// What the peer heard at address 0.
    Lines SearchZero(Operator &op)
    {
        SetTimeOut(op, "250");
        peer_.Forget();
        Search(op, "0");
        op.WaitFor([&] { return !peer_.Lines().empty() && peer_.Lines().back() == "$01M"; }, "address 1");
        op.Gui([&] { Window()->Command1->click(); });
        Lines lines = peer_.Lines();
        while (!lines.empty() && lines.back().starts_with("$01M"))
            lines.pop_back();
        return lines;
    }

    void ExpectNode(Operator &op, const std::string &key, const std::string &text)
    {
        AwaitEnd(op);
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Children("KeyCOM003"), Lines{key});
            EXPECT_EQ(main().Nodes.Text(key), text);
        });
    }
};

} // namespace

TEST_F(AddressZeroTest, AModuleWithAnotherStoredAddressIsInInitState)
{
    peer_.Reply("$002", "!05400600\r");
    peer_.Reply("$00M", "!05VORN7252\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op), (Lines{"$002", "$00M"}));
        ExpectNode(op, "*0003!!057252", "(* ) 7252");
    });
}

TEST_F(AddressZeroTest, AChecksumInTheRecordThatIsNotSpokenMeansInitState)
{
    peer_.Reply("$002", "!00400640\r");
    peer_.Reply("$00M", "!007252\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op), (Lines{"$002", "$00M"}));
        ExpectNode(op, "*1003!!007252", "(* ) 7252");
    });
}

TEST_F(AddressZeroTest, AModuleReallySetToZeroRefusesTheChangeAndKeepsItsRecord)
{
    peer_.Reply("$002", "!00080600\r");
    peer_.Reply("%0000080640", "?00\r");
    peer_.Reply("%0000080600", "!00\r");
    peer_.Reply("$00M", "!007206\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op), (Lines{"$002", "%0000080640", "%0000080600", "$002", "$00M"}));
        ExpectNode(op, "_0003!!007206", "(00) 7206");
    });
}

TEST_F(AddressZeroTest, AModuleInInitStateTakesTheChangeAndGetsItsRecordBack)
{
    const std::string withChecksum = "$002" + vorn::Checksum("$002");
    const std::string back = "%0000080600" + vorn::Checksum("%0000080600");
    peer_.ReplyInTurn("$002", {"!00080600\r", "!00080600\r"});
    peer_.Reply("%0000080640", "!00\r");
    peer_.ReplyInTurn(withChecksum, {"", "!0008064041\r"});
    peer_.Reply(back, "!0081\r");
    peer_.Reply("$00M", "!007206\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op),
                  (Lines{"$002", "%0000080640", withChecksum, withChecksum, back, "$002", "$00M"}));
        ExpectNode(op, "*0003!!007206", "(* ) 7206");
    });
}

TEST_F(AddressZeroTest, AChecksumModuleAtZeroIsAskedWithChecksum)
{
    const std::string ask = "$00M" + vorn::Checksum("$00M");
    peer_.Reply(ask, "!00VORN7252C4\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op), (Lines{"$002", ask}));
        ExpectNode(op, "_1003!!007252", "(00) 7252");
    });
}

TEST_F(AddressZeroTest, AChecksumBaseUnitAtZeroReadsItsSlotsWithChecksum)
{
    const std::string ask = "$00M" + vorn::Checksum("$00M");
    const std::string slots = "$00T" + vorn::Checksum("$00T");
    peer_.Reply(ask, "!00390018\r");
    peer_.Reply(slots, "!004418\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op), (Lines{"$002", ask, slots}));
        ExpectNode(op, "_1003!!003900", "(00) 3900");
        EXPECT_EQ(op.Gui([&] { return Texts("_1003!!003900"); }), Lines{"(S0) 3944/D"});
    });
}

TEST_F(AddressZeroTest, ABaseUnitAtZeroHasABlankInItsText)
{
    peer_.Reply("$002", "!000600\r");
    peer_.Reply("%00000640", "?00\r");
    peer_.Reply("%00000600", "!00\r");
    peer_.Reply("$00M", "!003900\r");
    peer_.Reply("$00T", "!0044\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op), (Lines{"$002", "%00000640", "%00000600", "$002", "$00M", "$00T"}));
        ExpectNode(op, "_0003!!003900", "(00 ) 3900");
    });
}

TEST_F(AddressZeroTest, ABaseUnitInInitStateHasItsStar)
{
    peer_.Reply("$002", "!050600\r");
    peer_.Reply("$00M", "!05VORN3900E\r");
    peer_.Reply("$00T", "!0546\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op), (Lines{"$002", "$00M", "$00T"}));
        ExpectNode(op, "*0003!!053900", "(* ) 3900");
        EXPECT_EQ(op.Gui([&] { return main().Nodes.Children("*0003!!053900"); }), Lines{"*00030!053946"});
    });
}

TEST_F(AddressZeroTest, SilenceToTheModelQuestionAddsNothing)
{
    peer_.Reply("$002", "!05400600\r");
    Operate([&](Operator &op) {
        EXPECT_EQ(SearchZero(op), (Lines{"$002", "$00M"}));
        op.AnswerBox(NothingFoundText, 16, "COM3 No Modules found !");
        AwaitEnd(op);
    });
}

// On the simulated rack.

TEST(SearchOfARack, FindsEachModuleOnceWhateverItsChecksumState)
{
    ProgramRun run;
    vornsim::Simulator rack(vornsim::ParseRack("port 2 speed=9600\n"
                                               "module 7252 address=F9\n"
                                               "module 7206 address=FA checksum=yes\n"
                                               "module 7209 address=FB family=no\n"
                                               "module 7221P address=FC\n"
                                               "module 7216 address=FD checksum=yes family=no\n"
                                               "module 7231 address=FE baud=19200\n"
                                               "module 3900E address=FF checksum=yes slots=3923,-,3962\n"),
                            run.ports.Path());
    rack.Start();
    run.Operate([&](Operator &op) {
        op.Gui([&] { run.main().TextTimeOut->setText(QStringLiteral("250")); });
        run.Search(op, "248");
        op.WaitFor([&] { return run.main().isEnabled() && run.Status() == "COM Port Status"; },
                   "end of the search");
        op.Gui([&] {
            EXPECT_EQ(run.main().Nodes.Children("KeyCOM002"),
                      (Lines{"_0002!!F97252", "_1002!!FA7206", "_0002!!FB7209", "_0002!!FC7221P",
                             "_1002!!FD7216", "_1002!!FF3900"}));
            EXPECT_EQ(run.main().Nodes.Children("_1002!!FF3900"), (Lines{"_10020!FF3923", "_10022!FF3962"}));
        });
    });
}

TEST(SearchOfARack, AModuleInInitStateShowsTheAddressThatItReports)
{
    ProgramRun run;
    vornsim::Simulator rack(vornsim::ParseRack("port 2 speed=9600\nmodule 7252 address=05 init=yes\n"),
                            run.ports.Path());
    rack.Start();
    run.Operate([&](Operator &op) {
        op.Gui([&] { run.main().TextTimeOut->setText(QStringLiteral("250")); });
        run.Search(op, "0");
        op.WaitFor([&] { return rack.Commands(2).size() > 3; }, "the addresses behind 0");
        op.Gui([&] { qobject_cast<vorn::FormScan *>(run.main().FormScan.data())->Command1->click(); });
        op.WaitFor([&] { return run.main().isEnabled() && run.Status() == "COM Port Status"; },
                   "end of the search");
        op.Gui([&] {
            const std::string key = run.main().Nodes.Children("KeyCOM002").front();
            EXPECT_EQ(key.front(), '*') << key;
            EXPECT_EQ(run.main().Nodes.Text(key), "(* ) 7252");
        });
    });
}
