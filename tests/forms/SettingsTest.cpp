#include "support/BeepCount.h"
#include "support/RackOfOne.h"
#include "support/RawPeer.h"

#include "protocol/CommandFrame.h"
#include "shell/DIO.h"
#include "tools/FormLED.h"
#include "tools/SevenSegment.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <map>

using Lines = std::vector<std::string>;

namespace
{

constexpr const char *UpdateDone = "Configuration is successful !";
constexpr const char *UpdateDoneTitle = "Configuration is successful";

/// A page on a rack of one module, and what a handler sends apart from the refresh.
class SettingsTest : public ::testing::Test, public RackOfOne
{
protected:
    void OpenModel(Operator &op, const std::string &model, const char *state = "_0",
                   const char *address = "0A")
    {
        Open(op, std::string(state) + "002!!" + address + model);
    }

    /// Does the steps on the page of a module, whose line in the rack begins with its model.
    void OnPage(const std::string &module, const std::function<void(Operator &)> &steps)
    {
        Rack(module);
        Operate([&](Operator &op) {
            OpenModel(op, module.substr(0, module.find(' ')));
            steps(op);
        });
    }

    /// The commands that the module heard and that write something: all but the reads of load and refresh.
    Lines Writes(std::initializer_list<const char *> prefixes)
    {
        Lines writes;
        for (const std::string &line : rack().Commands(2)) {
            const bool wanted =
                std::ranges::any_of(prefixes, [&](const char *p) { return line.starts_with(p); });
            if (wanted)
                writes.push_back(line);
        }
        return writes;
    }

    void Press(Operator &op, const char *button) { op.Click(Find(button)); }

    void SetText(Operator &op, const char *field, const char *text)
    {
        op.Gui([&] { Find<QLineEdit>(field)->setText(QString::fromLatin1(text)); });
    }
    void SelectEntry(Operator &op, const char *list, int position)
    {
        op.Gui([&] { Find<QComboBox>(list)->setCurrentIndex(position); });
    }
    vorn::DIO *Point(const char *name) { return Find<vorn::DIO>(name); }

    void ClickLamp(Operator &op, const char *name)
    {
        op.Gui([&] {
            vorn::DIO *point = Point(name);
            QTest::mouseClick(point, Qt::LeftButton, Qt::NoModifier, QPoint(14, point->height() / 2));
        });
        op.Settle();
    }
    bool AwaitWrite(Operator &op, const std::string &command)
    {
        return op.WaitFor([&] { return std::ranges::count(rack().Commands(2), command) > 0; },
                          command.c_str());
    }
};

} // namespace

// The general settings.

TEST_F(SettingsTest, AnUpdateWritesTheRecordOfThePage)
{
    OnPage("7206 address=0A range=08 restart=20", [&](Operator &op) {
        SelectEntry(op, "CmbRange", 4);
        SelectEntry(op, "CmbDataFormat", 1);
        rack().ClearTrace();
        Press(op, "CmdMUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        EXPECT_EQ(Writes({"%"}), Lines{"%0A0A0C0601"});
        op.WaitFor([&] { return Text("CmbRange") == "+/-    150  mV" && Text("LabRdu") == " %"; },
                   "the reload");
        EXPECT_EQ(rack().Value(2, "0A", "range"), "0C");
        op.WaitFor([&] { return main().cursor().shape() == Qt::ArrowCursor; }, "the pointer");
    });
}

TEST_F(SettingsTest, ARefusedUpdateIsToldAndThePageLoadedAgain)
{
    OnPage("7209 address=0A range=23 restart=20", [&](Operator &op) {
        SelectEntry(op, "CmbRange", 12);
        rack().ClearTrace();
        Press(op, "CmdMUpdate");
        op.AnswerBox("Configuration is invalid !", 16, "Configuration is invalid");
        EXPECT_EQ(Writes({"%"}), Lines{"%0A0A0600"}) << "the entry without a code sends no type";
        op.WaitFor([&] { return Text("CmbRange") == "Pt.00385 0 to 600'C"; }, "what the module holds");
    });
}

TEST_F(SettingsTest, ANewAddressMovesTheNodeToItsPlace)
{
    Rack("7206 address=0A restart=20\nmodule 7206 address=05\nmodule 7206 address=20");
    Operate([&](Operator &op) {
        AddNode(op, "_0002!!057206");
        AddNode(op, "_0002!!0A7206");
        AddNode(op, "_0002!!207206");
        Choose(op, "_0002!!0A7206");
        SetText(op, "TextAddress", "48");
        EXPECT_EQ(op.Gui([&] { return Text("LabAddr"); }), "30 (Hex)");
        rack().ClearTrace();
        Press(op, "CmdMUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        EXPECT_EQ(Writes({"%"}), Lines{"%0A30080600"});
        op.WaitFor([&] { return vorn::TagOf(main().Frame1) == "_0002!!307206"; },
                   "the page under its new key");
        op.Gui([&] {
            EXPECT_EQ(main().Nodes.Children("KeyCOM002"),
                      (Lines{"_0002!!057206", "_0002!!207206", "_0002!!307206"}));
            EXPECT_EQ(main().Nodes.Text("_0002!!307206"), "(30) 7206");
            EXPECT_EQ(main().Nodes.Selected(), "_0002!!307206");
        });
        op.WaitFor([&] { return std::ranges::count(rack().Commands(2), "#30") > 0; },
                   "the refresh at the new address");
    });
}

TEST_F(SettingsTest, ANodeThatStaysInOrderChangesItsTextOnly)
{
    OnPage("7206 address=0A restart=20", [&](Operator &op) {
        SetText(op, "TextAddress", "16");
        Press(op, "CmdMUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        op.WaitFor([&] { return main().Nodes.Children("KeyCOM002") == Lines{"_0002!!107206"}; },
                   "the new key");
        EXPECT_EQ(op.Gui([&] { return main().Nodes.Text("_0002!!107206"); }), "(10) 7206");
    });
}

TEST_F(SettingsTest, TheSameAddressKeepsNodeAndKey)
{
    OnPage("7206 address=0A restart=20", [&](Operator &op) {
        Press(op, "CmdMUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        EXPECT_EQ(op.Gui([&] { return main().Nodes.Children("KeyCOM002"); }), Lines{"_0002!!0A7206"});
    });
}

TEST_F(SettingsTest, AnAddressInUseIsRefusedBeforeAnythingIsSent)
{
    Rack("7206 address=0A");
    Operate([&](Operator &op) {
        AddNode(op, "_1002!!0B7252");
        OpenModel(op, "7206");
        SetText(op, "TextAddress", "11");
        rack().ClearTrace();
        Press(op, "CmdMUpdate");
        op.AnswerBox("The new address ID is duplicated !", 16, "Configuration is invalid");
        op.WaitFor([&] { return Text("TextAddress") == "10"; }, "the reload");
        EXPECT_TRUE(Writes({"%"}).empty());
    });
}

TEST_F(SettingsTest, InInitStateBaudRateAndChecksumAreWrittenAndTheKeyKeepsItsStar)
{
    Rack("7206 address=0A init=yes restart=20");
    Operate([&](Operator &op) {
        OpenModel(op, "7206", "*0");
        SelectEntry(op, "CmbBaudrate", 4);
        op.Gui([&] { Find<QCheckBox>("CheckChecksum")->click(); });
        SetText(op, "TextAddress", "5");
        rack().ClearTrace();
        Press(op, "CmdMUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        EXPECT_EQ(Writes({"%"}), Lines{"%0005080740"});
        op.WaitFor([&] { return main().Nodes.Children("KeyCOM002").front().front() == '*'; }, "the star");
    });
}

TEST_F(SettingsTest, ACounterModuleGetsItsGateBehindTheRecord)
{
    OnPage("7282 address=0A range=50 restart=20", [&](Operator &op) {
        SelectEntry(op, "CmbDataFormat", 1);
        rack().ClearTrace();
        Press(op, "CmdMUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        EXPECT_EQ(Writes({"%", "$0AA1"}), (Lines{"%0A0A500600", "$0AA1"}));
    });
}

TEST_F(SettingsTest, ASecondClickOnARunningUpdateIsIgnored)
{
    OnPage("7206 address=0A restart=200", [&](Operator &op) {
        rack().ClearTrace();
        op.Gui([&] {
            Find<QPushButton>("CmdMUpdate")->click();
            Find<QPushButton>("CmdMUpdate")->click();
        });
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        op.Settle();
        EXPECT_EQ(Writes({"%"}).size(), 1U);
    });
}

TEST_F(SettingsTest, AnUpdateThatTheModuleRefusesShowsWhatItHolds)
{
    RawPeer peer(ports.Link(3));
    peer.Reply("$0A2", "!0A080600\r");
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM003", "_0003!!0A7206", "(0A) 7206", "vorn4ico", "vorn4icoS");
        });
        Choose(op, "_0003!!0A7206");
        peer.Reply("%0A0A080600", "?0A\r");
        Press(op, "CmdMUpdate");
        op.AnswerBox("Configuration is invalid !", 16, "Configuration is invalid");
        op.WaitFor([&] { return Text("CmbRange") == "+/-     10   V"; }, "what the module holds");
    });
}

TEST_F(SettingsTest, AModuleThatNeverComesBackIsReportedAsWritten)
{
    RawPeer peer(ports.Link(3));
    peer.Reply("$0A2", "!0A080600\r");
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM003", "_0003!!0A7206", "(0A) 7206", "vorn4ico", "vorn4icoS");
        });
        Choose(op, "_0003!!0A7206");
        peer.Reply("$0A2", "");
        peer.Reply("%0A0A080600", "!0A\r");
        peer.Forget();
        Press(op, "CmdMUpdate");
        op.WaitFor([&] { return std::ranges::count(peer.Lines(), "$0A2") > 2; }, "the wait for the module");
        // The wait looks at the clock, not at how often it has asked.
        op.Gui([&] { clock.timeOfDay = std::fmod(clock.Timer() + 31, 86400); });
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        op.Gui([&] { clock.timeOfDay.reset(); });
    });
}

TEST_F(SettingsTest, ABaseUnitsRecordIsWrittenWithoutAType)
{
    RawPeer peer(ports.Link(3));
    peer.Reply("$002", "!000640\r");
    peer.Reply("%00000740", "!00\r");
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM003", "_0003!!003900", "(00) 3900", "vorn4ico", "vorn4icoS");
        });
        Choose(op, "_0003!!003900");
        SelectEntry(op, "CmbBaudrate", 4);
        peer.Forget();
        Press(op, "CmdMUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        ASSERT_FALSE(peer.Lines().empty());
        EXPECT_EQ(peer.Lines().front(), "%00000740");
        EXPECT_EQ(op.Gui([&] { return main().Nodes.Children("KeyCOM003"); }), Lines{"_1003!!003900"})
            << "from here on the unit speaks with checksum";
    });
}

TEST_F(SettingsTest, WhatIsChangedWhileAnUpdateRunsStays)
{
    RawPeer peer(ports.Link(3));
    std::atomic<bool> ready = true;
    peer.OnLine([&](const std::string &line, const RawPeer::Writer &write) {
        const std::map<std::string, std::string> replies{{"%0A0A080600", "!0A\r"},
                                                         {"$0A2", "!0A080600\r"},
                                                         {"@0ADI", "!0A00000\r"},
                                                         {"@0ARH", "!0A+10.000\r"},
                                                         {"@0ARL", "!0A-10.000\r"}};
        const auto reply = replies.find(line);
        if (reply != replies.end() && ready)
            write(reply->second);
        if (line.front() == '%')
            ready = false; // it restarts
    });
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM003", "_0003!!0A7206", "(0A) 7206", "vorn4ico", "vorn4icoS");
        });
        Choose(op, "_0003!!0A7206");
        auto *limit = Find<QLineEdit>("TextHighValue");
        EXPECT_EQ(op.Gui([&] { return Text("TextHighValue"); }), "+10.000");
        Press(op, "CmdMUpdate");
        op.WaitFor([&] { return !ready; }, "the restart");
        op.Gui([&] { limit->clear(); });
        op.Type(limit, QStringLiteral("5"));
        op.Press(Find("CmbDataFormat"), Qt::Key_Down);
        ready = true;
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        AwaitActions(op);
        op.Gui([&] {
            EXPECT_EQ(Text("TextHighValue"), "5") << "typed in the wait";
            EXPECT_EQ(Text("CmbDataFormat"), "% of FSR") << "chosen in the wait";
            EXPECT_EQ(Text("TextLowValue"), "-10.000");
        });
        Choose(op, "_0003!!0A7206");
        EXPECT_EQ(op.Gui([&] { return Text("TextHighValue"); }), "+10.000") << "loaded when asked for";
        EXPECT_EQ(op.Gui([&] { return Text("CmbDataFormat"); }), "Engineering units");
    });
}

TEST_F(SettingsTest, TheAddressFieldTakesDecimalsUpTo255)
{
    OnPage("7206 address=0A", [&](Operator &op) {
        auto *field = Find<QLineEdit>("TextAddress");
        op.Gui([&] {
            field->setFocus();
            field->selectAll();
        });
        op.Type(field, QStringLiteral("2x-56"));
        EXPECT_EQ(op.Gui([&] { return field->text(); }), QStringLiteral("25"));
        op.Type(field, QStringLiteral("5"));
        EXPECT_EQ(op.Gui([&] { return Text("LabAddr"); }), "FF (Hex)");
        op.Gui([&] {
            field->selectAll();
            QApplication::clipboard()->setText(QStringLiteral("999"));
            field->paste();
        });
        EXPECT_EQ(op.Gui([&] { return field->text(); }), QStringLiteral("255"))
            << "pasting brings in no more than typing";
    });
}

TEST_F(SettingsTest, APageOfDigitsIsNoEntry)
{
    OnPage("7206 address=0A", [&](Operator &op) {
        auto *limit = Find<QLineEdit>("TextHighValue");
        const QString held = op.Gui([&] { return limit->text(); });
        EXPECT_FALSE(held.isEmpty());
        op.Gui([&] {
            limit->selectAll();
            QApplication::clipboard()->setText(QString(30'000, u'1'));
            limit->paste();
        });
        EXPECT_EQ(op.Gui([&] { return limit->text(); }), held);
    });
}

TEST_F(SettingsTest, ATickOfAChannelWritesTheMask)
{
    OnPage("7221 address=0A mask=03 restart=20", [&](Operator &op) {
        rack().ClearTrace();
        op.Gui([&] { Find<QCheckBox>("CheckAI_7")->click(); });
        AwaitWrite(op, "$0A583");
        op.WaitFor([&] { return main().isEnabled() && rack().Value(2, "0A", "mask") == "83"; }, "the mask");
        op.WaitFor([&] { return !Text("LabAIv_7").empty(); }, "the channel's value");
    });
}

TEST_F(SettingsTest, TheFilterBoxWritesAndCaptionsItself)
{
    OnPage("7282 address=0A range=50 filter=0 restart=20", [&](Operator &op) {
        op.Gui([&] { Find<QCheckBox>("CheckFilter")->click(); });
        AwaitWrite(op, "$0A41");
        op.WaitFor([&] { return Text("CheckFilter") == "Enable"; }, "the caption");
    });
}

// Outputs.

TEST_F(SettingsTest, AClickOnAnOutputSwitchesItAndTheRefreshConfirms)
{
    OnPage("7252 address=0A outputs=00", [&](Operator &op) {
        ClickLamp(op, "DIOH_3");
        AwaitWrite(op, "#0A1301");
        op.WaitFor([&] { return Text("LabDHv") == "08" && Point("DIOH_3")->value(); }, "the read-back");
        ClickLamp(op, "DIOH_3");
        AwaitWrite(op, "#0A1300");
        op.WaitFor([&] { return Text("LabDHv") == "00"; }, "the read-back");
        rack().ClearTrace();
        ClickLamp(op, "DIOL_2");
        AwaitCommands(op, 4);
        EXPECT_TRUE(Writes({"#"}).empty()) << "an input sends nothing";
    });
}

TEST_F(SettingsTest, RelaysCountFromTheFifthIndicator)
{
    OnPage("7272 address=0A outputs=00", [&](Operator &op) {
        ClickLamp(op, "DIOL_6");
        AwaitWrite(op, "#0A1201");
        op.WaitFor([&] { return Text("LabDLv") == "04"; }, "the read-back");
    });
}

TEST_F(SettingsTest, AnalogModulesWriteAllTheirOutputsInOneByte)
{
    OnPage("7206 address=0A alarm=0 outputs=00", [&](Operator &op) {
        ClickLamp(op, "ADIO_1");
        AwaitWrite(op, "@0ADO02");
        op.WaitFor([&] { return Point("ADIO_1")->value(); }, "the read-back");
        ClickLamp(op, "ADIO_0");
        AwaitWrite(op, "@0ADO03");
    });
}

TEST_F(SettingsTest, AClickOnTheInputOfAnAnalogModuleSendsNothing)
{
    OnPage("7206 address=0A alarm=0 outputs=00", [&](Operator &op) {
        ASSERT_EQ(op.Gui([&] { return Text("ADIO_3").substr(0, 2); }), "DI");
        ASSERT_TRUE(op.Gui([&] { return Find("ADIO_3")->isEnabled(); }));
        rack().ClearTrace();
        ClickLamp(op, "ADIO_3");
        AwaitCommands(op, 6);
        EXPECT_TRUE(Writes({"@0ADO"}).empty());
    });
}

TEST_F(SettingsTest, ACounterModuleWritesBothItsOutputsInOneByte)
{
    OnPage("7282 address=0A range=50 outputs=00", [&](Operator &op) {
        ClickLamp(op, "CounterDO_0");
        AwaitWrite(op, "@0ADO01");
        op.WaitFor([&] { return Point("CounterDO_0")->value(); }, "the read-back");
        ClickLamp(op, "CounterDO_1");
        AwaitWrite(op, "@0ADO03");
    });
}

TEST_F(SettingsTest, ACounterOutputThatAnAlarmOwnsSendsNothing)
{
    OnPage("7282D address=0A range=50 alarm=1", [&](Operator &op) {
        op.WaitFor([&] { return Text("CounterDO_0") == "HIGH"; }, "the alarm's captions");
        for (const char *caption : {"HIGH", "CH 0"}) {
            EXPECT_FALSE(op.Gui([&] { return Find("CounterDO_0")->isEnabled(); })) << caption;
            rack().ClearTrace();
            ClickLamp(op, "CounterDO_0");
            // Neither would it if it were enabled.
            op.Gui([&] {
                vorn::SetCaption(Point("CounterDO_0"), caption);
                Point("CounterDO_0")->SetEnabled(true);
            });
            ClickLamp(op, "CounterDO_0");
            AwaitCommands(op, 6);
            EXPECT_TRUE(Writes({"@0ADO"}).empty()) << caption;
            op.Gui([&] { Point("CounterDO_0")->SetEnabled(false); });
        }
    });
}

TEST_F(SettingsTest, TheStrainGaugeHasFourOutputs)
{
    OnPage("7218 address=0A alarm=0 outputs=00", [&](Operator &op) {
        ClickLamp(op, "ADIO_3");
        AwaitWrite(op, "@0ADO08");
        op.WaitFor([&] { return Point("ADIO_3")->value(); }, "the read-back");
    });
}

TEST_F(SettingsTest, TheExcitationGoesOutInItsWireFormAndOnEnter)
{
    OnPage("7218 address=0A excitation=01.000", [&](Operator &op) {
        auto *entry = Find<QLineEdit>("TextAAOv");
        op.WaitFor([&] { return !entry->text().isEmpty(); }, "the value of the module");
        op.Gui([&] {
            entry->setFocus();
            entry->selectAll();
        });
        op.Type(entry, QStringLiteral("5.5.x"));
        EXPECT_EQ(op.Gui([&] { return entry->text(); }), QStringLiteral("5.5"));
        EXPECT_TRUE(op.Gui([&] { return main().OutputEditing; }));
        rack().ClearTrace();
        AwaitCommands(op, 6);
        EXPECT_EQ(op.Gui([&] { return entry->text(); }), QStringLiteral("5.5"))
            << "the refresh leaves it alone";
        op.Press(entry, Qt::Key_Return);
        AwaitWrite(op, "$0A705.500");
        EXPECT_FALSE(op.Gui([&] { return main().OutputEditing; }));
        SetText(op, "TextAAOv", "7");
        Press(op, "CmdAOsend");
        AwaitWrite(op, "$0A707.000");
    });
}

TEST_F(SettingsTest, TheAnalogOutputIsTypedAndRead)
{
    OnPage("7231 address=0A range=32 output=01.000", [&](Operator &op) {
        op.WaitFor([&] { return Text("TextAnalogOut") == "01.000"; }, "the value of the module");
        auto *entry = Find<QLineEdit>("TextAnalogOut");
        op.Gui([&] {
            entry->setFocus();
            entry->selectAll();
        });
        op.Type(entry, QStringLiteral("5.5"));
        op.Press(entry, Qt::Key_Return);
        AwaitWrite(op, "#0A05.500");
        op.WaitFor(
            [&] { return Text("TextAnalogOut") == "05.500" && Find<QSlider>("Slider1")->value() == 2750; },
            "the read-back");
    });
}

TEST_F(SettingsTest, TheSliderSendsItsValueAndFourMilliampereAtItsFoot)
{
    OnPage("7231 address=0A range=31 output=10.000", [&](Operator &op) {
        op.WaitFor([&] { return Find<QSlider>("Slider1")->value() == 1200; }, "the value of the module");
        op.Gui([&] { Find<QSlider>("Slider1")->setValue(0); });
        AwaitWrite(op, "#0A04.000");
        op.Gui([&] { Find<QSlider>("Slider1")->setFocus(); });
        EXPECT_TRUE(op.Gui([&] { return main().OutputEditing; })) << "held while the slider has the focus";
        op.Press(Find("Slider1"), Qt::Key_Right);
        AwaitWrite(op, "#0A04.005");
        op.Gui([&] { Find("CmdSendAO")->setFocus(); });
        EXPECT_FALSE(op.Gui([&] { return main().OutputEditing; }));
    });
}

TEST_F(SettingsTest, AScrolledSliderSendsItsOwnValueWhateverThePollBrings)
{
    OnPage("7231 address=0A range=32 output=01.000", [&](Operator &op) {
        auto *slider = Find<QSlider>("Slider1");
        op.WaitFor([&] { return slider->value() == 500; }, "the value of the module");
        op.Gui([&] {
            EXPECT_FALSE(main().OutputEditing);
            // The wheel, which gives no focus and holds no button.
            const QPointF place(slider->rect().center());
            QWheelEvent wheel(place, slider->mapToGlobal(place), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(slider, &wheel);
            EXPECT_TRUE(main().OutputEditing) << "no poll begins that would set the slider";
            // One that was under way brings the value from before.
            const QSignalBlocker quiet(slider);
            EXPECT_GT(slider->value(), 500);
            slider->setValue(500);
        });
        op.WaitFor([&] { return rack().Value(2, "0A", "output") > "01.000"; }, "the new output");
        op.WaitFor([&] { return slider->value() > 500 && !main().OutputEditing; }, "the read-back");
    });
}

TEST_F(SettingsTest, TheMouseHoldsTheSliderUntilItsButtonIsUpAndTheValueSent)
{
    OnPage("7231 address=0A range=32 output=01.000", [&](Operator &op) {
        auto *slider = Find<QSlider>("Slider1");
        op.WaitFor([&] { return slider->value() == 500; }, "the value of the module");
        op.Gui([&] { QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, slider->rect().center()); });
        op.Gui([&] { slider->setValue(1000); });
        AwaitWrite(op, "#0A02.000");
        EXPECT_TRUE(op.Gui([&] { return main().OutputEditing; })) << "the button is down";
        op.Gui([&] {
            slider->setValue(1500);
            QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, slider->rect().center());
            EXPECT_TRUE(main().OutputEditing) << "a value waits to be sent";
        });
        AwaitWrite(op, "#0A03.000");
        op.WaitFor([&] { return !main().OutputEditing; }, "the end of the drag");
    });
}

TEST_F(SettingsTest, KeysThatOnlyMoveLeaveAnOutputEntryToTheRefresh)
{
    OnPage("7218 address=0A excitation=01.000", [&](Operator &op) {
        auto *entry = Find<QLineEdit>("TextAAOv");
        op.WaitFor([&] { return !entry->text().isEmpty(); }, "the value of the module");
        const auto editing = [&] { return op.Gui([&] { return main().OutputEditing; }); };
        op.Gui([&] { entry->setFocus(); });
        for (const auto key : {Qt::Key_Left, Qt::Key_Home, Qt::Key_Shift, Qt::Key_Alt, Qt::Key_Tab}) {
            op.Press(entry, key);
            EXPECT_FALSE(editing()) << key;
        }
        op.Press(entry, Qt::Key_C, Qt::ControlModifier);
        EXPECT_FALSE(editing()) << "copying changes nothing";
        op.Press(entry, Qt::Key_Backspace);
        EXPECT_TRUE(editing());
        op.Press(entry, Qt::Key_Return);
        op.WaitFor([&] { return !main().OutputEditing; }, "the value on its way");
        op.Press(entry, Qt::Key_X);
        EXPECT_TRUE(editing()) << "a refused character takes the entry into the operator's hands, too";
    });
}

TEST_F(SettingsTest, AnEntryThatIsSelectedWholeStaysSoUnderTheRefresh)
{
    OnPage("7218 address=0A excitation=01.000", [&](Operator &op) {
        auto *entry = Find<QLineEdit>("TextAAOv");
        const auto selected = [&] { return entry->selectedText().toStdString(); };
        op.WaitFor([&] { return Text("TextAAOv") == "01.000"; }, "the value of the module");
        op.Gui([&] { entry->setFocus(); });
        rack().ClearTrace();
        AwaitCommands(op, 8);
        EXPECT_EQ(op.Gui(selected), "01.000") << "the same value again";
        rack().SetValue(2, "0A", "excitation", "02.000");
        op.WaitFor([&] { return Text("TextAAOv") == "02.000"; }, "the new value");
        EXPECT_EQ(op.Gui(selected), "02.000");
        op.Type(entry, QStringLiteral("5.5"));
        EXPECT_EQ(op.Gui([&] { return Text("TextAAOv"); }), "5.5");
        op.Press(entry, Qt::Key_Return);
        AwaitWrite(op, "$0A705.500");
    });
}

TEST_F(SettingsTest, AValueThatChangesLeavesTheCursorOfItsEntryInPlace)
{
    OnPage("7218 address=0A excitation=01.000", [&](Operator &op) {
        auto *entry = Find<QLineEdit>("TextAAOv");
        op.WaitFor([&] { return Text("TextAAOv") == "01.000"; }, "the value of the module");
        op.Gui([&] {
            entry->setFocus();
            QCoreApplication::sendPostedEvents(); // the focus selects the whole entry
            entry->setCursorPosition(2);
        });
        rack().SetValue(2, "0A", "excitation", "02.000");
        op.WaitFor([&] { return Text("TextAAOv") == "02.000"; }, "the new value");
        EXPECT_EQ(op.Gui([&] { return entry->cursorPosition(); }), 2);
        op.Gui([&] { entry->setSelection(3, 2); });
        rack().SetValue(2, "0A", "excitation", "03.456");
        op.WaitFor([&] { return Text("TextAAOv") == "03.456"; }, "the next value");
        EXPECT_EQ(op.Gui([&] { return entry->selectedText().toStdString(); }), "45");
    });
}

TEST_F(SettingsTest, AnOutputBeyondTheSlidersScaleIsRefusedWhereItIsTyped)
{
    OnPage("7231 address=0A range=31 output=04.000", [&](Operator &op) {
        auto *entry = Find<QLineEdit>("TextAnalogOut");
        op.WaitFor([&] { return Text("TextAnalogOut") == "04.000"; }, "the value of the module");
        rack().ClearTrace();
        BeepCount beeps;
        for (const char *value : {"25", "3.9"}) {
            op.Gui([&] { entry->clear(); });
            op.Type(entry, QString::fromLatin1(value));
            op.Press(entry, Qt::Key_Return);
            AwaitActions(op);
            EXPECT_EQ(op.Gui([&] { return Text("TextAnalogOut"); }), value) << "it stays to be mended";
            EXPECT_EQ(op.Gui([&] { return beeps.Take(); }), 1);
        }
        EXPECT_EQ(Writes({"#0A"}), Lines{});
        op.Gui([&] { entry->clear(); });
        op.Type(entry, QStringLiteral("12"));
        op.Press(entry, Qt::Key_Return);
        AwaitWrite(op, "#0A12.000");
        EXPECT_EQ(Writes({"#0A"}), Lines{"#0A12.000"});
    });
}

TEST_F(SettingsTest, WithoutAKnownRangeAnOutputHasNoSlider)
{
    RawPeer peer(ports.Link(3));
    peer.Reply("$0A2", "!0A400600\r");
    peer.Reply("$0A6", "!0A01.000\r");
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM003", "_0003!!0A7231", "(0A) 7231", "vorn4ico", "vorn4icoS");
        });
        Choose(op, "_0003!!0A7231");
        op.Gui([&] {
            EXPECT_FALSE(Find("Slider1")->isEnabled());
            EXPECT_FALSE(Find("CmdSendAO")->isEnabled());
            EXPECT_FALSE(Find("Slider1")->toolTip().isEmpty()) << "it says why";
        });
        auto *entry = Find<QLineEdit>("TextAnalogOut");
        op.Gui([&] { entry->clear(); });
        op.Type(entry, QStringLiteral("1"));
        op.Press(entry, Qt::Key_Return);
        AwaitActions(op);
        EXPECT_TRUE(
            std::ranges::none_of(peer.Lines(), [](const std::string &line) { return line.front() == '#'; }));
    });
}

TEST_F(SettingsTest, TheModuleListFollowsAModuleToItsNewAddress)
{
    Rack("7206 address=0A restart=20");
    Operate([&](Operator &op) {
        AddNode(op, "_0002!!0A7206");
        Choose(op, "KeyCOM002");
        op.Press(main().TreeView1, Qt::Key_Right); // unfolds the port
        AwaitActions(op);
        Choose(op, "_0002!!0A7206");
        SetText(op, "TextAddress", "11");
        Press(op, "CmdMUpdate");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        AwaitActions(op);
        Choose(op, "KeyCOM002");
        op.Gui([&] {
            const auto *list = main().ListView1;
            ASSERT_EQ(list->topLevelItemCount(), 1);
            EXPECT_EQ(list->topLevelItem(0)->text(1), QStringLiteral(" 11  (0B)"));
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                              list->visualItemRect(list->topLevelItem(0)).center());
        });
        AwaitActions(op);
        EXPECT_EQ(op.Gui([&] { return vorn::TagOf(main().Frame1); }), "_0002!!0B7206");
    });
}

TEST_F(SettingsTest, TheButtonsOfAChannelClearItsLatchesAndItsCount)
{
    RawPeer peer(ports.Link(3));
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("1"));
            auto &nodes = main().Nodes;
            nodes.Add("KeyCOM003", "_0003!!0A3900", "(0A) 3900", "vorn5ico", "vorn5icoS");
            nodes.Add("_0003!!0A3900", "_00032!0A3962", "(S2) 3962", "vorn5cico", "vorn5cicoS");
            nodes.Add("_00032!0A3962", "_0003210A3962", "CH 1", "vorn5sico", "vorn5sicoS");
        });
        Choose(op, "_0003210A3962");
        for (const auto &[button, command] : {std::pair{"CmdClearChLatch_0", "$0AS2C1CH"},
                                              {"CmdClearChLatch_1", "$0AS2C1CL"},
                                              {"CmdClearChLatch_2", "$0AS2C16"}}) {
            Press(op, button);
            op.WaitFor([&] { return std::ranges::count(peer.Lines(), command) == 1; }, command);
        }
    });
}

TEST_F(SettingsTest, ADisplaySourceThatIsNoDigitLeavesTheOptionAndThePageAlive)
{
    RawPeer peer(ports.Link(3));
    peer.Reply("$FA2", "!FA500600\r");
    peer.ReplyInTurn("$FA8", {"!FA1\r", "!FA\r", "!FAZ\r"});
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM003", "_0003!!FA7282D", "(FA) 7282D", "vorn4ico", "vorn4icoS");
        });
        for (int load = 0; load < 3; ++load) {
            Choose(op, "_0003!!FA7282D");
            EXPECT_TRUE(op.Gui([&] { return Find<QRadioButton>("OptionLED_1")->isChecked(); })) << load;
        }
        EXPECT_EQ(std::ranges::count(peer.Lines(), "$FAA"), 3) << "each load goes on";
    });
}

TEST_F(SettingsTest, TheRefreshLeavesTheCursorOfAnEntryInItsPlace)
{
    OnPage("7231 address=0A range=32 output=01.000", [&](Operator &op) {
        auto *entry = Find<QLineEdit>("TextAnalogOut");
        op.WaitFor([&] { return Text("TextAnalogOut") == "01.000"; }, "the value of the module");
        op.Gui([&] {
            entry->setFocus();
            entry->setSelection(0, 2);
        });
        rack().ClearTrace();
        AwaitCommands(op, 8);
        EXPECT_EQ(op.Gui([&] { return entry->selectedText().toStdString(); }), "01");
        op.Type(entry, QStringLiteral("7"));
        EXPECT_EQ(op.Gui([&] { return Text("TextAnalogOut"); }), "7.000");
    });
}

TEST_F(SettingsTest, APastedOutputIsTheOperators)
{
    OnPage("7231 address=0A range=32 output=01.000", [&](Operator &op) {
        op.WaitFor([&] { return Text("TextAnalogOut") == "01.000"; }, "the value of the module");
        auto *entry = Find<QLineEdit>("TextAnalogOut");
        op.Gui([&] {
            QApplication::clipboard()->setText(QStringLiteral("7.5"));
            entry->selectAll();
            entry->paste();
            EXPECT_TRUE(main().OutputEditing);
        });
        rack().ClearTrace();
        AwaitCommands(op, 4);
        EXPECT_EQ(op.Gui([&] { return entry->text(); }), QStringLiteral("7.5"))
            << "the refresh leaves it alone";
        op.Press(entry, Qt::Key_Return);
        AwaitWrite(op, "#0A07.500");
    });
}

TEST_F(SettingsTest, HexadecimalOutputsTakeThreeDigits)
{
    OnPage("7231 address=0A range=30 format=02", [&](Operator &op) {
        auto *entry = Find<QLineEdit>("TextAnalogOut");
        op.WaitFor([&] { return !entry->text().isEmpty(); }, "the value of the module");
        op.Retype(entry, QString());
        op.Press(entry, Qt::Key_Delete);
        op.Type(entry, QStringLiteral("x7.FF1"));
        EXPECT_EQ(op.Gui([&] { return entry->text(); }), QStringLiteral("7FF"));
        op.Press(entry, Qt::Key_Return);
        AwaitWrite(op, "#0A7FF");
    });
}

// Alarms.

TEST_F(SettingsTest, AnAlarmIsWrittenModeAndLimits)
{
    OnPage("7206 address=0A range=08 restart=20", [&](Operator &op) {
        SelectEntry(op, "CmdAlarmsetting", 2);
        SetText(op, "TextHighValue", "7.5");
        SetText(op, "TextLowValue", "-2");
        rack().ClearTrace();
        Press(op, "CmdAlarmUpdata");
        op.AnswerBox("Alarm setting is complete !", 64, "Alarm setting is complete !");
        EXPECT_EQ(Writes({"@0AEA", "@0ADA", "@0AHI", "@0ALO"}),
                  (Lines{"@0AEAL", "@0AHI+07.500", "@0ALO-02.000"}));
        op.WaitFor([&] { return Text("TextHighValue") == "+07.500" && Text("ADIO_0") == "Lo - Alarm"; },
                   "the reload");
        EXPECT_EQ(rack().Value(2, "0A", "alarm"), "2");
    });
}

TEST_F(SettingsTest, EqualLimitsAreRefusedAndTheClosingBoxStillComes)
{
    OnPage("7206 address=0A range=08 restart=20", [&](Operator &op) {
        SelectEntry(op, "CmdAlarmsetting", 0);
        SetText(op, "TextHighValue", "5");
        SetText(op, "TextLowValue", "5.0");
        rack().ClearTrace();
        Press(op, "CmdAlarmUpdata");
        op.AnswerBox("High Alarm Limit Value < Low Alarm Limit value", 16, "Alarm Limit setting error !");
        op.AnswerBox("Alarm setting is complete !", 64, "Alarm setting is complete !");
        EXPECT_EQ(Writes({"@0AEA", "@0ADA", "@0AHI", "@0ALO"}), Lines{"@0ADA"});
    });
}

TEST_F(SettingsTest, EachRefusedAlarmWriteIsToldAndTheNextOneStillSent)
{
    OnPage("7206 address=0A range=08\n    fault refuse begins=@0AEA", [&](Operator &op) {
        SelectEntry(op, "CmdAlarmsetting", 1);
        SetText(op, "TextHighValue", "500");
        SetText(op, "TextLowValue", "-500");
        rack().ClearTrace();
        Press(op, "CmdAlarmUpdata");
        op.AnswerBox("Alarm state setting error !", 16, "Alarm state setting error");
        // Beyond the range the limits go out as typed, and the module refuses both.
        op.AnswerBox("High Alarm Limit setting error !", 16, "High Alarm Limit setting error");
        op.AnswerBox("Low Alarm Limit setting error !", 16, "Low Alarm Limit setting error");
        op.AnswerBox("Alarm setting is complete !", 64, "Alarm setting is complete !");
        EXPECT_EQ(Writes({"@0AEA", "@0AHI", "@0ALO"}), (Lines{"@0AEAM", "@0AHI500", "@0ALO-500"}));
    });
}

TEST_F(SettingsTest, ASilentModuleGivesABoxForEachWrite)
{
    OnPage("7206 address=0A range=08", [&](Operator &op) {
        SelectEntry(op, "CmdAlarmsetting", 1);
        SetText(op, "TextHighValue", "5");
        SetText(op, "TextLowValue", "1");
        vornsim::Fault fault;
        fault.kind = vornsim::Fault::Kind::Silent;
        rack().SetFault(2, "0A", fault);
        Press(op, "CmdAlarmUpdata");
        op.AnswerBox("Alarm state setting error !", 16, "Alarm state setting error");
        op.AnswerBox("High Alarm Limit setting error !", 16, "High Alarm Limit setting error");
        op.AnswerBox("Low Alarm Limit setting error !", 16, "Low Alarm Limit setting error");
        op.AnswerBox("Alarm setting is complete !", 64, "Alarm setting is complete !");
    });
}

TEST_F(SettingsTest, ClearButtonsSendTheirCommandsAndNothingElse)
{
    OnPage("7206 address=0A events=7", [&](Operator &op) {
        Press(op, "CmdClearLatch");
        AwaitWrite(op, "@0ACA");
        Press(op, "CmdClearCount");
        AwaitWrite(op, "@0ACE");
    });
}

TEST_F(SettingsTest, TheClearButtonsOfACounterModuleSendTheirCommands)
{
    OnPage("7282D address=0A range=50 alarm=2", [&](Operator &op) {
        op.WaitFor([&] { return Shown("CmdCClearLatch"); }, "the latching alarm");
        Press(op, "CmdClear_0");
        AwaitWrite(op, "$0A60");
        Press(op, "CmdClear_1");
        AwaitWrite(op, "$0A61");
        Press(op, "CmdCClearLatch");
        AwaitWrite(op, "@0ACA");
    });
}

TEST_F(SettingsTest, WithoutAnAlarmModeNothingIsSentAndTheReplyThatStandsIsJudged)
{
    for (const bool accepts : {true, false}) {
        RawPeer peer(ports.Link(3));
        peer.OnLine([accepts](const std::string &, const RawPeer::Writer &write) {
            write(accepts ? "!0A\r" : "?0A\r");
        });
        Operate([&](Operator &op) {
            op.Gui([&] {
                main().Nodes.Add("KeyCOM003", "_0003!!0A7206", "(0A) 7206", "vorn4ico", "vorn4icoS");
            });
            Choose(op, "_0003!!0A7206");
            SelectEntry(op, "CmdAlarmsetting", -1);
            SetText(op, "TextHighValue", "5");
            SetText(op, "TextLowValue", "1");
            peer.Forget();
            Press(op, "CmdAlarmUpdata");
            if (!accepts) {
                op.AnswerBox("Alarm state setting error !", 16, "Alarm state setting error");
                op.AnswerBox("High Alarm Limit setting error !", 16, "High Alarm Limit setting error");
                op.AnswerBox("Low Alarm Limit setting error !", 16, "Low Alarm Limit setting error");
            }
            op.AnswerBox("Alarm setting is complete !", 64, "Alarm setting is complete !");
            const Lines lines = peer.Lines();
            for (const char *mode : {"@0ADA", "@0AEAM", "@0AEAL"})
                EXPECT_EQ(std::ranges::count(lines, mode), 0) << mode;
            EXPECT_EQ(std::ranges::count(lines, "@0AHI5"), 1) << "the limits follow all the same";
            EXPECT_EQ(std::ranges::count(lines, "@0ALO1"), 1);
        });
    }
}

TEST_F(SettingsTest, LimitFieldsTakeNumbersOnly)
{
    OnPage("7206 address=0A", [&](Operator &op) {
        auto *field = Find<QLineEdit>("TextHighValue");
        op.Gui([&] {
            field->setFocus();
            field->clear();
        });
        op.Type(field, QStringLiteral("a+1e2.b5"));
        EXPECT_EQ(op.Gui([&] { return field->text(); }), QStringLiteral("+12.5"));
    });
}

// Counters.

TEST_F(SettingsTest, ChoosingACounterReadsItAndAnUpdateWritesIt)
{
    OnPage(
        "7282 address=0A range=50 restart=20 max0=000003E8 preset0=000001F4 initial0=00000007",
        [&](Operator &op) {
            rack().ClearTrace();
            Press(op, "CmdCounterSet_0");
            op.WaitFor([&] { return Shown("FrameFC") && Text("TextCMax") == "1000"; }, "the counter");
            EXPECT_EQ(Writes({"$0A5", "$0A3", "@0AG", "@0ARP"}), (Lines{"$0A50", "$0A30", "@0AG0", "@0ARP"}));
            op.Gui([&] {
                EXPECT_EQ(Text("FrameFC"), "Counter 0");
                EXPECT_EQ(Text("TextCPV"), "500");
                EXPECT_EQ(Text("TextCIV"), "7");
                EXPECT_EQ(Text("LabHvalue"), "Preset &value :");
                EXPECT_FALSE(vorn::IsShown(Find("CmbFC0Amode")));
            });
            SetText(op, "TextCMax", "4294967295");
            SetText(op, "TextCPV", "255");
            SetText(op, "TextCIV", "0");
            rack().ClearTrace();
            Press(op, "ComCUpdata");
            op.AnswerBox("Counter setting is complete !", 64, "Counter setting is complete !");
            EXPECT_EQ(Writes({"$0A30F", "@0APA", "@0AP0", "@0ADA0", "@0AEA0"}),
                      (Lines{"$0A30FFFFFFFF", "@0APA000000FF", "@0AP000000000", "@0ADA0"}));
        });
}

TEST_F(SettingsTest, CounterOneOfADisplayModelHasItsMaximumOnly)
{
    OnPage("7282D address=0A range=50 restart=20", [&](Operator &op) {
        Press(op, "CmdCounterSet_1");
        op.WaitFor([&] { return Shown("FrameFC"); }, "the counter");
        op.Gui([&] {
            for (const char *name : {"CmbFC0Amode", "CheckPresetMode", "Labmode", "LabHvalue", "LabHHvalue",
                                     "TextCPV", "TextCIV"})
                EXPECT_FALSE(vorn::IsShown(Find(name))) << name;
        });
        SetText(op, "TextCMax", "100");
        rack().ClearTrace();
        Press(op, "ComCUpdata");
        op.AnswerBox("Counter setting is complete !", 64, "Counter setting is complete !");
        EXPECT_EQ(Writes({"$0A310", "@0APA", "@0AP0", "@0AP1", "@0ASA", "@0ADA", "@0AEA"}),
                  Lines{"$0A3100000064"});
    });
}

TEST_F(SettingsTest, EachRefusedCounterWriteIsToldAndTheNextOneStillSent)
{
    struct Row {
        const char *model;
        const char *address;
        int counter;
        std::vector<std::pair<const char *, const char *>> boxes; ///< text and title
    };
    const std::pair maximum0{"Counter 0 Maximum Value setting error !",
                             "Maximum Counter Value setting error"};
    const std::pair maximum1{"Counter 1 Maximum Value setting error !",
                             "Maximum Counter Value setting error"};
    const Row rows[] = {
        {"7282",
         "0A",
         0,
         {maximum0,
          {"Counter 0 Alarm Limit setting error !", "Alarm Limit setting error"},
          {"Counter 0 Initial Value setting error !", "Initial Counter Value setting error"}}},
        {"7282",
         "0A",
         1,
         {maximum1,
          {"Counter 1 Alarm Limit setting error !", "Alarm Limit setting error"},
          {"Counter 1 Initial Value setting error !", "Initial Counter Value setting error"}}},
        {"7282N",
         "0B",
         0,
         {maximum0,
          {"Counter 0 Alarm Low Limit setting error !", "Alarm Limit setting error"},
          {"Counter 0 Alarm High Limit setting error !", "Alarm Limit setting error"}}},
        {"7282N", "0B", 1, {maximum1}},
    };
    Rack("7282 address=0A range=50 restart=20\nmodule 7282N address=0B range=50 restart=20");
    const auto set = [&](const Row &row, vornsim::Fault::Kind kind) {
        vornsim::Fault fault;
        fault.kind = kind;
        rack().SetFault(2, row.address, fault);
    };
    Operate([&](Operator &op) {
        for (const Row &row : rows) {
            OpenModel(op, row.model, "_0", row.address);
            const std::string counter = std::to_string(row.counter);
            Press(op, ("CmdCounterSet_" + counter).c_str());
            op.WaitFor([&] { return Shown("FrameFC") && Text("FrameFC") == "Counter " + counter; },
                       "the counter");
            set(row, vornsim::Fault::Kind::Refuse);
            Press(op, "ComCUpdata");
            for (const auto &[text, title] : row.boxes)
                op.AnswerBox(text, 16, title);
            op.AnswerBox("Counter setting is complete !", 64, "Counter setting is complete !");
            set(row, vornsim::Fault::Kind::None);
        }
    });
}

TEST_F(SettingsTest, AnEntryThatIsNoNumberIsToldAsTheWritesFailure)
{
    OnPage("7282 address=0A range=50 restart=20", [&](Operator &op) {
        Press(op, "CmdCounterSet_1");
        op.WaitFor([&] { return Shown("FrameFC"); }, "the counter");
        SetText(op, "TextCMax", "many");
        Press(op, "ComCUpdata");
        op.AnswerBox("Counter 1 Maximum Value setting error !", 16, "Maximum Counter Value setting error");
        op.AnswerBox("Counter setting is complete !", 64, "Counter setting is complete !");
    });
}

TEST_F(SettingsTest, ACaptionWithoutACounterSendsNothing)
{
    OnPage("7282 address=0A range=50 restart=20", [&](Operator &op) {
        Press(op, "CmdCounterSet_0");
        op.WaitFor([&] { return Shown("FrameFC"); }, "the counter");
        op.Gui([&] { vorn::SetCaption(Find("FrameFC"), "Counter X"); });
        rack().ClearTrace();
        Press(op, "ComCUpdata");
        op.AnswerBox("Counter setting is complete !", 64, "Counter setting is complete !");
        EXPECT_TRUE(Writes({"$0A3", "@0AP"}).empty());
    });
}

TEST_F(SettingsTest, StartAndStopAreReadBack)
{
    OnPage("7282 address=0A range=50 running1=1 restart=20", [&](Operator &op) {
        Press(op, "CmdCounterSet_1");
        op.WaitFor([&] { return Shown("FrameFC"); }, "the counter");
        op.Gui([&] { Find<QRadioButton>("OptionCch0S_0")->click(); });
        AwaitWrite(op, "$0A510");
        op.WaitFor([&] { return Text("LabFCs_1") == "STOP"; }, "the state");
        op.Gui([&] { Find<QRadioButton>("OptionCch0S_1")->click(); });
        AwaitWrite(op, "$0A511");
        op.WaitFor([&] { return Text("LabFCs_1") == "START"; }, "the state");
    });
}

TEST_F(SettingsTest, TheInputStageShowsItsFields)
{
    OnPage("7282 address=0A range=50 stage=0 restart=20", [&](Operator &op) {
        op.Gui([&] { Find<QRadioButton>("OptionFSel_1")->click(); });
        AwaitWrite(op, "$0AB1");
        op.WaitFor([&] { return !vorn::IsShown(Find("TextHV")); }, "the photo input");
        EXPECT_TRUE(op.Gui([&] { return vorn::IsShown(Find("ComFUpdata")); }));
        op.Gui([&] { Find<QRadioButton>("OptionFSel_0")->click(); });
        AwaitWrite(op, "$0AB0");
        op.WaitFor([&] { return vorn::IsShown(Find("TextHV")); }, "the TTL input");
    });
}

TEST_F(SettingsTest, TheFilterWritesLevelsThenWidths)
{
    OnPage("7282 address=0A range=50 stage=0 restart=20", [&](Operator &op) {
        SetText(op, "TextHV", "2.4");
        SetText(op, "TextLV", ".8");
        SetText(op, "TextHW", "50");
        SetText(op, "TextLW", "60");
        rack().ClearTrace();
        Press(op, "ComFUpdata");
        op.AnswerBox("Filter setting is complete !", 64, "Filter setting is complete !");
        EXPECT_EQ(
            Writes({"$0A0H", "$0A0L", "$0A1H", "$0A1L"}),
            (Lines{"$0A1H24", "$0A1L08", "$0A0H00050", "$0A0L00060", "$0A0H", "$0A0L", "$0A1H", "$0A1L"}));
    });
}

TEST_F(SettingsTest, TheFilterOfThePhotoInputHasNoLevelsToWrite)
{
    OnPage("7282 address=0A range=50 stage=1 restart=20", [&](Operator &op) {
        op.WaitFor([&] { return Shown("ComFUpdata") && !vorn::IsShown(Find("TextHV")); }, "the photo input");
        SetText(op, "TextHW", "50");
        SetText(op, "TextLW", "60");
        rack().ClearTrace();
        Press(op, "ComFUpdata");
        op.AnswerBox("Filter setting is complete !", 64, "Filter setting is complete !");
        EXPECT_EQ(Writes({"$0A0H", "$0A0L", "$0A1H", "$0A1L"}),
                  (Lines{"$0A0H00050", "$0A0L00060", "$0A0H", "$0A0L", "$0A1H", "$0A1L"}));
    });
}

TEST_F(SettingsTest, EachRefusedFilterWriteIsToldAndTheNextOneStillSent)
{
    OnPage("7282 address=0A range=50 stage=0 restart=20", [&](Operator &op) {
        op.WaitFor([&] { return Shown("ComFUpdata"); }, "the filter");
        vornsim::Fault fault;
        fault.kind = vornsim::Fault::Kind::Refuse;
        rack().SetFault(2, "0A", fault);
        Press(op, "ComFUpdata");
        for (const char *text : {"Non-isolated High Trigger Level setting error !",
                                 "Non-isolated Low Trigger Level setting error !",
                                 "Min Input Single Width at High Level setting error !",
                                 "Min Input Single Width at Low Level setting error !"})
            op.AnswerBox(text, 16, "Filter setting error");
        op.AnswerBox("Filter setting is complete !", 64, "Filter setting is complete !");
    });
}

// Linear mapping.

TEST_F(SettingsTest, AMappingIsWrittenSwitchInputOutput)
{
    OnPage("7212D address=0A range=08 restart=20", [&](Operator &op) {
        op.Gui([&] { Find<QCheckBox>("CheckLinearScaling")->setChecked(true); });
        SetText(op, "TextMLowLimit", "-5");
        SetText(op, "TextMHighLimit", "5");
        SetText(op, "TextSLowLimit", "0");
        SetText(op, "TextSHighLimit", "100");
        rack().ClearTrace();
        Press(op, "CmdLinearUpdata");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        EXPECT_EQ(Writes({"$0AA", "$0A6", "$0A7"}),
                  (Lines{"$0AA1", "$0A6-05.000+05.000", "$0A7+000.00+100.00"}));
        op.WaitFor([&] { return Text("TextSHighLimit") == "+100.00"; }, "the reload");
    });
}

TEST_F(SettingsTest, AMappingThatIsOffHasItsRangesWrittenAllTheSame)
{
    OnPage("7212D address=0A range=08 restart=20", [&](Operator &op) {
        op.Gui([&] { Find<QCheckBox>("CheckLinearScaling")->setChecked(false); });
        SetText(op, "TextMLowLimit", "-5");
        SetText(op, "TextMHighLimit", "5");
        SetText(op, "TextSLowLimit", "0");
        SetText(op, "TextSHighLimit", "100");
        rack().ClearTrace();
        Press(op, "CmdLinearUpdata");
        op.AnswerBox(UpdateDone, 64, UpdateDoneTitle);
        EXPECT_EQ(Writes({"$0AA", "$0A6", "$0A7"}),
                  (Lines{"$0AA0", "$0A6-05.000+05.000", "$0A7+000.00+100.00"}));
    });
}

TEST_F(SettingsTest, EqualInputLimitsOfAMappingAreRefused)
{
    OnPage("7212D address=0A range=08 restart=20", [&](Operator &op) {
        SetText(op, "TextMLowLimit", "5");
        SetText(op, "TextMHighLimit", "5");
        rack().ClearTrace();
        Press(op, "CmdLinearUpdata");
        op.AnswerBox("Low limit input value must be lower then high limit input value !", 16,
                     "Input Setting failure");
        EXPECT_EQ(Writes({"$0AA", "$0A6", "$0A7"}), Lines{"$0AA0"});
    });
}

TEST_F(SettingsTest, ARefusedMappingStopsThere)
{
    OnPage("7212D address=0A range=08 restart=20", [&](Operator &op) {
        SetText(op, "TextMLowLimit", "-50");
        SetText(op, "TextMHighLimit", "5");
        rack().ClearTrace();
        Press(op, "CmdLinearUpdata");
        op.AnswerBox("Input Setting failure !", 16, "Input Setting failure");
        EXPECT_EQ(Writes({"$0A6", "$0A7"}), Lines{"$0A6-505"}) << "beyond the bound as typed";
    });
}

// The LED display.

TEST_F(SettingsTest, TheDisplayOfTheMappingModelIsTakenWrittenAndGivenBack)
{
    OnPage("7212D address=0A", [&](Operator &op) {
        Press(op, "CmdLED");
        op.WaitFor([] { return qobject_cast<vorn::FormLED *>(QApplication::activeModalWidget()); },
                   "the display");
        AwaitWrite(op, "$0A82");
        auto *form = op.Gui([] { return qobject_cast<vorn::FormLED *>(QApplication::activeModalWidget()); });
        op.Type(form->Text1, QStringLiteral("+1.5"));
        op.Press(form->Text1, Qt::Key_Return);
        AwaitWrite(op, "$0A9+1.5000");
        op.WaitFor([&] { return form->Image[0]->Picture() == "K+1."; }, "the digits");
        op.Gui([&] {
            EXPECT_EQ(form->Image[1]->Picture(), "K5");
            EXPECT_EQ(form->Image[2]->Picture(), "K0");
            form->cmdExit->click();
        });
        AwaitWrite(op, "$0A81");
    });
}

TEST_F(SettingsTest, TheDisplaysEntryTakesOnePointAndDropsTheSecond)
{
    OnPage("7212D address=0A", [&](Operator &op) {
        Press(op, "CmdLED");
        op.WaitFor([] { return qobject_cast<vorn::FormLED *>(QApplication::activeModalWidget()); },
                   "the display");
        auto *form = op.Gui([] { return qobject_cast<vorn::FormLED *>(QApplication::activeModalWidget()); });
        op.Type(form->Text1, QStringLiteral("+1.5.x"));
        EXPECT_EQ(op.Gui([&] { return form->Text1->text(); }), QStringLiteral("+1.5"));
        op.Gui([&] { form->cmdExit->click(); });
    });
}

TEST_F(SettingsTest, TheExternalDisplayOfACounterModelOpensTheWindow)
{
    OnPage("7282D address=0A range=50", [&](Operator &op) {
        op.Gui([&] { Find<QRadioButton>("OptionLED_0")->click(); });
        AwaitWrite(op, "$0A80");
        op.Gui([&] { Find<QRadioButton>("OptionLED_2")->click(); });
        op.WaitFor([] { return qobject_cast<vorn::FormLED *>(QApplication::activeModalWidget()); },
                   "the display");
        auto *form = op.Gui([] { return qobject_cast<vorn::FormLED *>(QApplication::activeModalWidget()); });
        op.Type(form->Text1, QStringLiteral("-123456"));
        op.Press(form->Text1, Qt::Key_Return);
        AwaitWrite(op, "$0A912345.0");
        rack().ClearTrace();
        op.Gui([&] { form->close(); });
        AwaitCommands(op, 5);
        EXPECT_TRUE(Writes({"$0A8"}).empty()) << "this model keeps its display mode";
    });
}
