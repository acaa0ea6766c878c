// The console of 7234 and the window that trims its outputs.

#include "support/ConsoleRun.h"

#include "consoles/Form7234Calibration.h"
#include "protocol/CommandFrame.h"

#include <QScrollBar>

namespace
{

class OutputConsoleTest : public ::testing::Test, public ConsoleRun
{
protected:
    void ExpectLamp(Operator &op, int channel, const std::string &lamp)
    {
        for (const std::string name : {"red", "blue", "gray"})
            EXPECT_EQ(IsVisible(op, name + "_" + std::to_string(channel)), name == lamp) << name << channel;
    }
    vorn::Form7234Calibration *Calibration() { return main().findChild<vorn::Form7234Calibration *>(); }
    void AwaitCalibration(Operator &op)
    {
        op.WaitFor([&] { return Calibration() && Calibration()->Timer1.isActive(); }, "the calibration");
        op.Gui([&] { Calibration()->Timer1.setInterval(std::chrono::hours(1)); });
        op.WaitFor([&] { return !main().Gate.IsOnLine(); }, "a free line");
        op.Settle();
    }
    void EndCalibration(Operator &op)
    {
        op.Click(op.Gui([&] { return Calibration()->exit; }));
        op.WaitFor([&] { return !Calibration(); }, "the end of the calibration");
    }
    /// Presses a trim button, and waits for so many lines and the end of the action.
    Lines PressThere(Operator &op, QPushButton *vorn::Form7234Calibration::*button, std::size_t lines)
    {
        rack().ClearTrace();
        op.Gui([&] { (Calibration()->*button)->click(); });
        op.WaitFor([&] { return rack().Commands(2).size() >= lines && !main().Gate.IsOnLine(); },
                   "the command");
        op.Settle();
        return rack().Commands(2);
    }
    std::string Coefficient(Operator &op)
    {
        return op.Gui([&] { return Calibration()->CoeffientText->text().toStdString(); });
    }
};

const std::string Title = "VORN Utility";
const Lines Settings{"$0A6C0", "$0ABC0", "$0A6C1", "$0ABC1", "$0A6C2", "$0ABC2", "$0A6C3",
                     "$0ABC3", "$0A8C0", "$0A8C1", "$0A8C2", "$0A8C3", "$0ADC0", "$0AEC0",
                     "$0ADC1", "$0AEC1", "$0ADC2", "$0AEC2", "$0ADC3", "$0AEC3", "$0AI"};

TEST_F(OutputConsoleTest, LoadsThePageAndEveryChannel)
{
    Rack("7234 address=0A range=30 range1=31 range2=32 format=14 startup1=+05.000 stop2=-03.500 emergency1=1 "
         "emergency2=1 inputs=2");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Lines expected{"$0A2", "$0AF"};
        expected.insert(expected.end(), Settings.begin(), Settings.end());
        EXPECT_EQ(Loaded(), expected);
        EXPECT_EQ(TextOf(op, "CmbSlewRate"), "1.000   V/sec");
        EXPECT_EQ(TextOf(op, "cboRange_0"), "0 - 20mA");
        EXPECT_EQ(TextOf(op, "cboRange_2"), "+/- 10V");
        EXPECT_EQ(TextOf(op, "StartupValue_1"), "+05.000");
        EXPECT_EQ(TextOf(op, "StopValue_2"), "-03.500");
        EXPECT_FALSE(IsOn(op, "Check1_0"));
        EXPECT_TRUE(IsOn(op, "Check1_1"));
        ExpectLamp(op, 0, "gray");
        ExpectLamp(op, 1, "red");
        ExpectLamp(op, 2, "blue");
        EXPECT_EQ(TextOf(op, "ChannelOut"), "CH 1");
        EXPECT_EQ(TextOf(op, "ChannelCal"), "CH 1");
        EXPECT_EQ(TextOf(op, "Directdata"), "+00.000");
        EXPECT_EQ(Poll(op), (Lines{"$0AI", "$0A6C0", "$0A6C1", "$0A6C2", "$0A6C3"}));
        rack().SetValue(2, "0A", "inputs", "4");
        rack().SetClock([] { return 1e7; }); // long enough for any slew rate
        Poll(op);
        ExpectLamp(op, 1, "blue");
        ExpectLamp(op, 2, "red");
        EXPECT_EQ(TextOf(op, "ValueText_2"), "-03.500");
        Close(op);
        EXPECT_EQ(main().ConsoleAddress, "0A");
    });
}

TEST_F(OutputConsoleTest, WhatTheLoadCannotReadIsTold)
{
    Rack("7234 address=0A\nfault refuse begins=$0A2\nfault refuse begins=$0AF\nfault refuse begins=$0AD");
    Operate([&](Operator &op) {
        ClickConsole(op, "_0002!!0A7234");
        op.AnswerBox("Initialize Checksum and Baud Rate Error", 0, Title);
        op.AnswerBox("Initialize Firmware Error", 0, Title);
        for (int i = 0; i < 4; ++i)
            op.AnswerBox("read startup value error", 0, Title);
        AwaitLoaded(op);
        Close(op);
    });
}

TEST_F(OutputConsoleTest, AChannelSetsTheScrollBarToItsRange)
{
    Rack("7234 address=0A range=30 range1=31 range2=32");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Pick(op, "ChannelOut", 1);
        auto *bar = op.Gui([&] { return Part<QScrollBar>("HScroll1"); });
        EXPECT_EQ(op.Gui([&] { return std::pair(bar->minimum(), bar->maximum()); }), std::pair(4000, 20000));
        EXPECT_EQ(TextOf(op, "Directdata"), "+04.000");
        op.Gui([&] { bar->setValue(12500); });
        EXPECT_EQ(TextOf(op, "Directdata"), "12.5");
        op.Gui([&] { bar->setValue(bar->minimum()); });
        EXPECT_EQ(TextOf(op, "Directdata"), "4") << "dragged to the bottom";
        Pick(op, "ChannelOut", 2);
        EXPECT_EQ(op.Gui([&] { return std::pair(bar->minimum(), bar->maximum()); }),
                  std::pair(-10000, 10000));
        Close(op);
    });
}

TEST_F(OutputConsoleTest, AnOutputIsAskedAboutAndSent)
{
    Rack("7234 address=0A range=30 range1=31");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Pick(op, "ChannelOut", 1);
        Enter(op, "Directdata", "12.5");
        Press(op, "Command2");
        op.AnswerBox("The output data is: 12.5", 1, Title);
        op.AnswerBox("Send data successfully", 0, Title);
        EXPECT_EQ(Sent(op), (Lines{"#0AC1+12.500", "$0A6C1"}));
        EXPECT_EQ(TextOf(op, "ValueText_1"), "+12.500");

        Press(op, "Command2");
        op.AnswerBox("The output data is: 12.5", 1, Title, "Cancel");
        EXPECT_EQ(Sent(op), (Lines{"$0A6C1"}));

        for (const char *outside : {"3.999", "20.001", "-5"}) {
            Enter(op, "Directdata", outside);
            Press(op, "Command2");
            op.AnswerBox("The data is invalid", 48, Title);
            EXPECT_EQ(Sent(op), Lines{}) << outside;
        }
        for (const char *none : {"abc", "1.2.3"}) {
            Enter(op, "Directdata", none);
            Press(op, "Command2");
            op.AnswerBox("The data format is invalid", 48, Title);
            EXPECT_EQ(Sent(op), Lines{}) << none;
        }
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Silent, .begins = "#"});
        Enter(op, "Directdata", "4");
        Press(op, "Command2");
        op.AnswerBox("The output data is: 4", 1, Title);
        op.AnswerBox("Send data failed", 0, Title);
        EXPECT_EQ(Sent(op), (Lines{"#0AC1+04.000", "$0A6C1"}));
        Close(op);
    });
}

TEST_F(OutputConsoleTest, ReadReadsAllChannelsAnew)
{
    Rack("7234 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        rack().SetValue(2, "0A", "startup3", "+07.000");
        Press(op, "Command6");
        op.WaitFor([&] { return rack().Commands(2).size() >= Settings.size(); }, "the reading");
        EXPECT_EQ(Sent(op), Settings);
        EXPECT_EQ(TextOf(op, "StartupValue_3"), "+07.000");
        Close(op);
    });
}

Lines FunctionLines(int channel, const std::string &code, const std::string &startup, const std::string &stop,
                    const std::string &flag)
{
    const std::string c = std::to_string(channel);
    return {"$0A7C" + c + "R" + code, "#0ASC" + c + startup, "#0AEC" + c + stop, "$0AAC" + c + flag};
}

TEST_F(OutputConsoleTest, SetWritesTypeValuesAndFlagOfEachChannel)
{
    Rack("7234 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Pick(op, "cboRange_1", 1);
        Enter(op, "StartupValue_1", "4.5");
        Enter(op, "StopValue_1", "20");
        Pick(op, "cboRange_2", 2);
        Enter(op, "StartupValue_2", "-9.75");
        Tick(op, "Check1_2");
        Press(op, "Command7");
        op.AnswerBox("Setup out put type successfully", 0, Title);
        Lines expected;
        for (const Lines &lines : {FunctionLines(0, "30", "+00.000", "+00.000", "0"),
                                   FunctionLines(1, "31", "+04.500", "+20.000", "0"),
                                   FunctionLines(2, "32", "-09.750", "+00.000", "1"),
                                   FunctionLines(3, "30", "+00.000", "+00.000", "0")})
            expected.insert(expected.end(), lines.begin(), lines.end());
        EXPECT_EQ(Sent(op), expected);
        EXPECT_EQ(rack().Value(2, "0A", "range1"), "31");
        EXPECT_EQ(rack().Value(2, "0A", "emergency2"), "1");
        Close(op);
    });
}

TEST_F(OutputConsoleTest, SetStopsAtTheFirstFailureAndWhatWasWrittenStays)
{
    Rack("7234 address=0A");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Enter(op, "StartupValue_0", "1");
        Enter(op, "StartupValue_1", "25");
        Press(op, "Command7");
        op.AnswerBox("The data is invalid on channel 2", 48, Title);
        Lines expected = FunctionLines(0, "30", "+01.000", "+00.000", "0");
        expected.push_back("$0A7C1R30");
        EXPECT_EQ(Sent(op), expected);
        EXPECT_EQ(rack().Value(2, "0A", "startup0"), "+01.000");

        Enter(op, "StartupValue_1", "x");
        Press(op, "Command7");
        op.AnswerBox("The data format is invalid on channel 2", 48, Title);
        Sent(op);

        Enter(op, "StartupValue_1", "2");
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "#0AEC1"});
        Press(op, "Command7");
        op.AnswerBox("The data is invalid on channel 2", 48, Title);
        EXPECT_EQ(Sent(op).back(), "#0AEC1+00.000");

        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0A7C0"});
        Press(op, "Command7");
        op.AnswerBox("Setup out put type failed on channel 1", 16, Title);
        EXPECT_EQ(Sent(op), (Lines{"$0A7C0R30"}));
        Close(op);
    });
}

TEST_F(OutputConsoleTest, TheGeneralUpdateWritesTheSlewRateIfItWasChosen)
{
    Rack("7234 address=0A init=yes format=08");
    Operate([&](Operator &op) {
        OpenConsole(op, "*0002!!0A7234");
        EXPECT_EQ(TextOf(op, "CmbSlewRate"), "0.125   V/sec");
        Pick(op, "CmbSlewRate", 11);
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Configuration is successful!", 64, "Configuration is successful");
        EXPECT_EQ(Sent(op), (Lines{"%000A00062C", "$002"}));
        Pick(op, "CmbSlewRate", 8);
        Tick(op, "chkChecksum");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Configuration is successful!", 64, "Configuration is successful");
        EXPECT_EQ(Sent(op), (Lines{"%000A000660", "$002"}));
        EXPECT_EQ(TextOf(op, "CmbSlewRate"), "8.000   V/sec");
        Press(op, "cmdGeneralUpdate");
        op.AnswerBox("Configuration is successful!", 64, "Configuration is successful");
        EXPECT_EQ(Sent(op), (Lines{"%000A000640", "$002"}));
        EXPECT_EQ(TextOf(op, "CmbSlewRate"), "immediate change") << "what the module now says";
        Close(op);
    });
}

TEST_F(OutputConsoleTest, CalibratesInAWindowOfItsOwnThatGetsThePort)
{
    Rack("7234 address=0A coefficient4mA0=9 restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Press(op, "Command1");
        op.AnswerBox("Apply 4mA Calibration for Channel 1. Please connect METER to Channel 1, and check if "
                     "output value equal 4mA.",
                     1, Title);
        AwaitCalibration(op);
        EXPECT_EQ(rack().Commands(2), (Lines{"$0AG", "#0AC0+04.000", "$0ANC0"}));
        EXPECT_EQ(Coefficient(op), "9");
        EXPECT_EQ(op.Gui([&] { return Calibration()->channel->text().toStdString(); }), "CH1");
        EXPECT_EQ(op.Gui([&] { return Calibration()->value->text().toStdString(); }), "4");
        using Form = vorn::Form7234Calibration;
        EXPECT_EQ(PressThere(op, &Form::Command3, 1), (Lines{"$0A3C001"}));
        EXPECT_EQ(Coefficient(op), "010");
        EXPECT_EQ(PressThere(op, &Form::Command5, 1), (Lines{"$0A3C08A"}));
        EXPECT_EQ(Coefficient(op), "000");
        EXPECT_EQ(PressThere(op, &Form::Command4, 1), (Lines{"$0A3C081"}));
        EXPECT_EQ(Coefficient(op), "-001");
        EXPECT_EQ(PressThere(op, &Form::Command2, 1), (Lines{"$0A3C00A"}));
        EXPECT_EQ(Coefficient(op), "009");
        rack().ClearTrace();
        op.Gui([&] { QMetaObject::invokeMethod(&Calibration()->Timer1, "timeout"); });
        op.WaitFor([&] { return rack().Commands(2).size() == 1 && !main().Gate.IsOnLine(); }, "the tick");
        op.Settle();
        EXPECT_EQ(rack().Commands(2), (Lines{"$0A6C0"}));
        EXPECT_EQ(op.Gui([&] { return Calibration()->value->text().toStdString(); }), "+04.000");

        op.Gui([&] { Calibration()->Command1->click(); });
        op.AnswerBox("Apply 4mA Calibration for Channel 1 Successfully", 0, Title);
        op.Settle();
        EXPECT_EQ(rack().Commands(2).back(), "$0A0C0");
        EndCalibration(op);
        EXPECT_EQ(Poll(op).front(), "$0AI") << "the console has its port back";
        Close(op);
    });
}

TEST_F(OutputConsoleTest, Of20MilliamperesAndPastTheLimit)
{
    Rack("7234 address=0A coefficient20mA2=118 restart=0");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Pick(op, "ChannelCal", 2);
        Press(op, "Command3");
        op.AnswerBox("Apply 20mA Calibration for Channel 3. Please connect METER to Channel 3, and check if "
                     "output value equal 20mA.",
                     1, Title);
        AwaitCalibration(op);
        EXPECT_EQ(rack().Commands(2), (Lines{"$0AG", "#0AC2+20.000", "$0AOC2"}));
        EXPECT_EQ(op.Gui([&] { return Calibration()->value->text().toStdString(); }), "20");
        EXPECT_EQ(Coefficient(op), "118");
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0A3"});
        op.Gui([&] { Calibration()->Command3->click(); });
        op.AnswerBox("Calibration Error", 0, Title);
        op.Settle();
        EXPECT_EQ(Coefficient(op), "118");
        rack().ClearFaults();
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0A1C2"});
        op.Gui([&] { Calibration()->Command1->click(); });
        op.AnswerBox("Apply 20mA Calibration for Channel 3 Failed", 0, Title);
        op.WaitFor([&] { return Calibration()->Timer1.isActive(); }, "the timer");
        rack().ClearTrace();
        op.Gui([&] { Calibration()->Command2->click(); });
        op.WaitFor([&] { return !Calibration()->Timer1.isActive(); }, "the end of the live value");
        op.Settle();
        EXPECT_EQ(rack().Commands(2), Lines{});
        EndCalibration(op);
        Close(op);
    });
}

TEST_F(OutputConsoleTest, OnlyACurrentOutputFrom0IsCalibrated)
{
    Rack("7234 address=0A range=30 range1=32");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Pick(op, "ChannelCal", 1);
        for (const char *button : {"Command1", "Command3", "Command4", "Command5"}) {
            Press(op, button);
            op.AnswerBox("Please set the Channel 2  0~20mA first", 0, Title);
            EXPECT_EQ(Sent(op), Lines{}) << button;
        }
        Pick(op, "ChannelCal", 0);
        Press(op, "Command1");
        op.AnswerBox("Apply 4mA Calibration for Channel 1. Please connect METER to Channel 1, and check if "
                     "output value equal 4mA.",
                     1, Title, "Cancel");
        EXPECT_EQ(Sent(op), Lines{});
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Refuse, .begins = "$0AG"});
        Press(op, "Command1");
        op.AnswerBox("Apply 4mA Calibration for Channel 1. Please connect METER to Channel 1, and check if "
                     "output value equal 4mA.",
                     1, Title);
        EXPECT_EQ(Sent(op), (Lines{"$0AG"}));
        Close(op);
    });
}

TEST_F(OutputConsoleTest, ClearsEachOfTheTwo)
{
    Rack("7234 address=0A coefficient4mA0=9 coefficient20mA0=8");
    Operate([&](Operator &op) {
        OpenConsole(op, "_0002!!0A7234");
        Press(op, "Command4");
        op.AnswerBox("Clear 4mA for Channel1 Successfully", 0, Title);
        EXPECT_EQ(Sent(op), (Lines{"$0APC0"}));
        EXPECT_EQ(rack().Value(2, "0A", "coefficient4mA0"), "0");
        rack().SetFault(2, "0A", {.kind = vornsim::Fault::Kind::Silent, .begins = "$0AQ"});
        Press(op, "Command5");
        op.AnswerBox("Clear 20mA for Channel1 Failed", 0, Title);
        EXPECT_EQ(Sent(op), (Lines{"$0AQC0"}));
        Close(op);
    });
}

TEST_F(OutputConsoleTest, WithChecksumTheValuesAreCutAndTheTrimCarriesIt)
{
    Rack("7234 address=0A checksum=yes restart=0 startup0=+01.000");
    Operate([&](Operator &op) {
        OpenConsole(op, "_1002!!0A7234");
        const auto with = [](const std::string &line) { return line + vorn::Checksum(line); };
        EXPECT_EQ(TextOf(op, "ValueText_0"), "+00.000");
        EXPECT_EQ(TextOf(op, "StartupValue_0"), "+01.000");
        Press(op, "Command1");
        op.AnswerBox("Apply 4mA Calibration for Channel 1. Please connect METER to Channel 1, and check if "
                     "output value equal 4mA.",
                     1, Title);
        AwaitCalibration(op);
        EXPECT_EQ(PressThere(op, &vorn::Form7234Calibration::Command3, 1), (Lines{with("$0A3C001")}));
        EXPECT_EQ(Coefficient(op), "001");
        EndCalibration(op);
        Close(op);
    });
}

} // namespace
