#include "support/ProgramRun.h"
#include "support/RackOfOne.h"
#include "support/RawPeer.h"

#include "platform/TopmostWindow.h"
#include "tools/FormFull_Screen.h"
#include "tools/LogRecord.h"
#include "tools/LogView.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <filesystem>
#include <fstream>
#include <sstream>

using vorn::LogView;
using Terminal = vorn::FormFull_Screen;
using Lines = std::vector<std::string>;

namespace
{

constexpr double Noon = 12 * 3600 + 34 * 60 + 56;

std::string Record(const std::string &text, int column = vorn::SentColumn)
{
    return vorn::LogRecord(text, "12:34:56", column);
}

/// Log of one exchange that took no time.
std::string ExchangeOf(const std::string &command, const std::string &reply, const std::string &sent = {},
                       const std::string &replied = {})
{
    return sent + Record(command) + "\r\n" + replied + Record(reply) + "0(ms)\r\n";
}

/// A terminal on COM3, with a raw peer behind the port. Time stands still.
class TerminalTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(3)};

    void SetUp() override
    {
        clock.timeOfDay = Noon;
        clock.ticks = 1000;
        peer_.Reply("$012", "!01400600\r");
        peer_.Reply("$022", "!02400600\r");
    }

    void Operate(const std::function<void(Operator &)> &steps)
    {
        ProgramRun::Operate([&](Operator &op) {
            op.Trigger(main().ToolButton(vorn::FormMain::TerminalButton));
            ASSERT_TRUE(op.WaitFor([&] { return terminal() && terminal()->isVisible(); }, "the terminal"));
            steps(op);
            op.Gui([&] {
                if (terminal())
                    terminal()->close();
            });
        });
    }

    Terminal *terminal() { return qobject_cast<Terminal *>(main().FormFull_Screen.data()); }
    std::string Log(Operator &op)
    {
        return op.Gui([&] { return terminal()->Text1->Text(); });
    }
    bool AwaitLog(Operator &op, const std::string &log)
    {
        const bool came =
            op.WaitFor([&] { return terminal()->Text1->Text().size() >= log.size(); }, "the log");
        EXPECT_EQ(Log(op), log);
        return came;
    }
    std::string Response(Operator &op)
    {
        return op.Gui([&] { return terminal()->LabResponse->text().toStdString(); });
    }
    /// Stops the sending and lets the last round end.
    void Stop(Operator &op)
    {
        op.Click(terminal()->CmdStop);
        op.WaitFor([&] { return main().TerminalStop && !main().TerminalOwnsPort; }, "the end of the round");
    }
    /// For conditions, which are asked on the window's thread.
    bool Shows(const char *response) { return terminal()->LabResponse->text() == QLatin1String(response); }
    bool Enabled(Operator &op, const QWidget *control)
    {
        return op.Gui([&] { return control->isEnabled(); });
    }
    void Command(Operator &op, const char *command)
    {
        op.Gui([&] { terminal()->TextCommand->setText(QString::fromLatin1(command)); });
    }

    /// Writes a command file and has it chosen in the terminal.
    std::filesystem::path PlayFile(Operator &op, const std::string &bytes)
    {
        const std::filesystem::path path = WriteFile(bytes);
        op.Gui([&] { terminal()->OptionSel[1]->click(); });
        op.Gui([&] { terminal()->TextFileName->setText(QString::fromStdString(path.string())); });
        return path;
    }
    std::filesystem::path WriteFile(const std::string &bytes)
    {
        const std::filesystem::path path = ports.Root() / "commands.txt";
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    static std::string ReadFile(const std::filesystem::path &path)
    {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        return bytes.str();
    }

    /// Fills the log up so that the next record doesn't fit.
    void FillLog(Operator &op)
    {
        op.Gui([&] {
            LogView &log = *terminal()->Text1;
            log.Append(std::string(LogView::Capacity - log.Length() - 10, 'x'));
        });
    }

    /// Numbers of the log's records whose number ends with `mark`.
    static Lines Numbers(const std::string &log, char mark)
    {
        Lines numbers;
        std::istringstream lines(log);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t at = line.find(mark);
            if (at != std::string::npos && at < 6)
                numbers.push_back(line.substr(0, at));
        }
        return numbers;
    }
};

} // namespace

TEST_F(TerminalTest, ASingleCommandIsSentAndLoggedToTheColumn)
{
    Operate([&](Operator &op) {
        EXPECT_EQ(op.Gui([&] { return terminal()->windowTitle(); }), QStringLiteral("COM3 Terminal"));
        op.Type(terminal()->TextCommand, QStringLiteral("$012"));
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012", "!01400600"));
        EXPECT_EQ(peer_.Bytes(), "$012\r");
        EXPECT_EQ(Response(op), "!01400600");
        const std::string log = Log(op);
        EXPECT_EQ(log.substr(0, 82),
                  "$012" + std::string(47, ' ') + "\t12:34:56" + std::string(20, ' ') + "\r\n");
        EXPECT_FALSE(op.Gui([&] { return main().TerminalOwnsPort; }));
    });
}

TEST_F(TerminalTest, HasItsCaptionsAndStandsAboveOtherWindows)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            const Terminal &form = *terminal();
            const std::pair<const QAbstractButton *, const char *> captions[] = {
                {form.OptionSel[0], "Single Command"},
                {form.OptionSel[1], "Command File"},
                {form.OptionSChecksum, "CheckSum"},
                {form.OptionCChecksum, "CheckSum"},
                {form.Comincludtxt, "Browse ..."},
                {form.CmdSend, "&Send"},
                {form.CmdContinueSend, "&Continue Send"},
                {form.CmdStop, "S&top"},
                {form.OptRingBuffer, "Ring Buffer"},
                {form.CmdSave, "Save to &File"},
                {form.cmdExit, "E&xit"}};
            for (const auto &[button, caption] : captions)
                EXPECT_EQ(button->text(), QLatin1String(caption));
            EXPECT_EQ(form.findChild<QLabel *>(QStringLiteral("LabFile"))->text(), QStringLiteral("File  :"));
            EXPECT_EQ(form.findChild<QLabel *>(QStringLiteral("Label1"))->text(),
                      QStringLiteral("Response:"));
            EXPECT_TRUE(form.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
            EXPECT_EQ(form.focusWidget(), form.TextCommand);
        });
    });
}

TEST_F(TerminalTest, ReturnInTheCommandFieldSends)
{
    Operate([&](Operator &op) {
        op.Type(terminal()->TextCommand, QStringLiteral("$012"));
        op.Press(terminal()->TextCommand, Qt::Key_Return);
        AwaitLog(op, ExchangeOf("$012", "!01400600"));
    });
}

TEST_F(TerminalTest, TheChecksumIsShownAndSent)
{
    peer_.Reply("$012B7", "!01400600A1\r");
    Operate([&](Operator &op) {
        Command(op, "$012");
        op.Click(terminal()->OptionSChecksum);
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012B7", "!01400600A1"));
        EXPECT_EQ(peer_.Bytes(), "$012B7\r");
        EXPECT_EQ(op.Gui([&] { return terminal()->TextCommand->text(); }), QStringLiteral("$012"));
    });
}

TEST_F(TerminalTest, ALongCommandIsCutInTheLogAndGoesOutWhole)
{
    const std::string command(60, 'A');
    peer_.Reply(command, "!\r!\r");
    Operate([&](Operator &op) {
        Command(op, command.c_str());
        op.Click(terminal()->CmdSend);
        AwaitLog(op, std::string(51, 'A') + "\t12:34:56" + std::string(20, ' ') + "\r\n" + Record("!\r!") +
                         "0(ms)\r\n");
        EXPECT_EQ(peer_.Bytes(), command + "\r");
    });
}

TEST_F(TerminalTest, ASilentBusLogsTimeOutWithTheTimeThatItTook)
{
    clock.ticks.reset();
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("40")); });
        Command(op, "$032");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return Shows("Time out !"); }, "the time-out");
        const std::string log = Log(op);
        const std::string head = Record("$032") + "\r\n" + Record("Time out !");
        ASSERT_TRUE(log.starts_with(head)) << log;
        ASSERT_TRUE(log.ends_with("(ms)\r\n"));
        const int elapsed = std::stoi(log.substr(head.size()));
        EXPECT_GT(elapsed, 40);
        EXPECT_LT(elapsed, 2000);
    });
}

TEST_F(TerminalTest, ContinueSendNumbersItsRoundsAndTheHundredthShowsItsHundred)
{
    Operate([&](Operator &op) {
        op.Gui([&] { terminal()->Text1->Append("old\r\n"); });
        Command(op, "$012");
        op.Click(terminal()->CmdContinueSend);
        EXPECT_FALSE(Enabled(op, terminal()->CmdSend));
        EXPECT_FALSE(Enabled(op, terminal()->CmdContinueSend));
        ASSERT_TRUE(op.WaitFor([&] { return peer_.Lines().size() > 101; }, "a hundred rounds"));
        Stop(op);
        EXPECT_TRUE(Enabled(op, terminal()->CmdSend));
        EXPECT_TRUE(Enabled(op, terminal()->CmdContinueSend));
        const std::string log = Log(op);
        EXPECT_TRUE(log.starts_with(ExchangeOf("$012", "!01400600", "   1> ", "   1< ")))
            << "what was before has gone";
        const std::size_t round = ExchangeOf("$012", "!01400600", "   1> ", "   1< ").size();
        EXPECT_EQ(log.substr(99 * round, round), ExchangeOf("$012", "!01400600", " 100> ", " 100< "));
        EXPECT_EQ(log.size(), peer_.Lines().size() * round);
    });
}

TEST_F(TerminalTest, StopEndsTheSendingAndSingleCommandsHaveNoNumber)
{
    Operate([&](Operator &op) {
        Command(op, "$012");
        op.Click(terminal()->CmdContinueSend);
        ASSERT_TRUE(op.WaitFor([&] { return peer_.Lines().size() > 3; }, "some rounds"));
        Stop(op);
        const std::string log = Log(op);
        const std::size_t sent = peer_.Lines().size();
        op.Press(terminal()->TextCommand, Qt::Key_Return);
        AwaitLog(op, log + ExchangeOf("$012", "!01400600"));
        EXPECT_EQ(peer_.Lines().size(), sent + 1);
    });
}

TEST_F(TerminalTest, AStopAndAStartInOneGoRunOneLoop)
{
    Operate([&](Operator &op) {
        Command(op, "$012");
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "some rounds");
        op.Gui([&] {
            terminal()->Text1->Append("the first loop\r\n");
            terminal()->CmdStop->click();
            terminal()->CmdContinueSend->setEnabled(true);
            terminal()->CmdContinueSend->click();
        });
        op.WaitFor(
            [&] {
                const std::string log = terminal()->Text1->Text();
                return log.find("the first loop") == std::string::npos && Numbers(log, '>').size() > 20;
            },
            "rounds of the second loop");
        Stop(op);
        const Lines numbers = Numbers(Log(op), '>');
        for (std::size_t i = 0; i < numbers.size(); ++i)
            EXPECT_EQ(std::stoi(numbers[i]), static_cast<int>(i) + 1);
    });
}

TEST_F(TerminalTest, AStopTakesBackAStartThatWaitsForItsTurn)
{
    Operate([&](Operator &op) {
        Command(op, "$012");
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "some rounds");
        op.Gui([&] {
            terminal()->CmdStop->click();
            terminal()->CmdContinueSend->setEnabled(true);
            terminal()->CmdContinueSend->click();
            terminal()->CmdStop->click();
        });
        op.WaitFor([&] { return main().TerminalStop && !main().Gate.IsOnLine(); }, "the end of the round");
        const std::string log = Log(op);
        op.Click(terminal()->CmdSend);
        AwaitLog(op, log + ExchangeOf("$012", "!01400600"));
    });
}

TEST_F(TerminalTest, AStopLeavesThePortToTheTransactionThatRuns)
{
    Operate([&](Operator &op) {
        Command(op, "$099");
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("60000")); });
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "a command that waits for its reply");
        op.Click(terminal()->CmdStop);
        op.WaitFor([&] { return terminal()->CmdSend->isEnabled(); }, "the stop");
        EXPECT_TRUE(op.Gui([&] { return main().TerminalOwnsPort; }));
        peer_.Send("!09\r");
        op.WaitFor([&] { return !main().TerminalOwnsPort; }, "the end of the round");
        EXPECT_EQ(Log(op), ExchangeOf("$099", "!09", "   1> ", "   1< "));
    });
}

TEST_F(TerminalTest, ASendBehindAStopDoesNotBringTheLoopBack)
{
    Operate([&](Operator &op) {
        PlayFile(op, "$052\n$062\n");
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("60000")); });
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "a command that waits for its reply");
        op.Click(terminal()->CmdStop);
        op.Click(terminal()->CmdSend);
        op.Gui(
            [&] { clock.ticks = *clock.ticks + 1000; }); // a long round, behind which others get their turn
        peer_.Send("!05\r");
        op.WaitFor([&] { return peer_.Lines().size() == 2; }, "the command of the send");
        peer_.Send("!05\r");
        op.WaitFor([&] { return !main().TerminalOwnsPort; }, "the end of the send");
        op.Settle();
        EXPECT_EQ(peer_.Lines(), (Lines{"$052", "$062"})) << "the next line, and no more";
        EXPECT_EQ(Numbers(Log(op), '>'), (Lines{"   1", "   1"}));
        EXPECT_TRUE(Enabled(op, terminal()->CmdContinueSend));
    });
}

TEST_F(TerminalTest, AStopLeavesTheFileOpenAndContinueSendBeginsItAnew)
{
    Operate([&](Operator &op) {
        PlayFile(op, "$012\n$022\n$012\n$022\n");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "the first line");
        Stop(op);
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 2; }, "the next send");
        EXPECT_EQ(peer_.Lines().back(), "$022") << "the next line";
        peer_.Forget();
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 6; }, "some lines");
        Stop(op);
        const Lines played = peer_.Lines();
        EXPECT_EQ(played.front(), "$012") << "the first line";
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() > played.size(); }, "a line");
        EXPECT_EQ(peer_.Lines().back(), played.back() == "$012" ? "$022" : "$012")
            << "the one behind the last";
    });
}

TEST_F(TerminalTest, EachSendPlaysOneLineOfTheFile)
{
    Operate([&](Operator &op) {
        PlayFile(op, "$012\r\n$022");
        op.Click(terminal()->CmdSend);
        std::string log = ExchangeOf("$012", "!01400600", "   1> ", "   1< ");
        AwaitLog(op, log);
        op.Click(terminal()->CmdSend);
        log += ExchangeOf("$022", "!02400600", "   1> ", "   1< ");
        AwaitLog(op, log);
        EXPECT_EQ(Response(op), "") << "lines of a file leave the response alone";
        op.Click(terminal()->CmdSend);
        log += ExchangeOf("$012", "!01400600", "   1> ", "   1< ");
        AwaitLog(op, log);
        EXPECT_EQ(peer_.Bytes(), "$012\r$022\r$012\r") << "from the top again behind the end";
    });
}

TEST_F(TerminalTest, ContinueSendPlaysTheFileOverAndOver)
{
    peer_.Reply("$012B7", "!01400600A1\r");
    peer_.Reply("$022B8", "!02400600A2\r");
    Operate([&](Operator &op) {
        PlayFile(op, "$012\n$022\n");
        op.Click(terminal()->OptionCChecksum);
        op.Click(terminal()->CmdContinueSend);
        const std::string pass = ExchangeOf("$012B7", "!01400600A1", "   1> ", "   1< ") +
                                 ExchangeOf("$022B8", "!02400600A2", "   2> ", "   2< ");
        op.WaitFor([&] { return terminal()->Text1->Text().size() >= 3 * pass.size(); }, "three passes");
        Stop(op);
        EXPECT_TRUE(Log(op).starts_with(pass + pass + pass));
        EXPECT_TRUE(peer_.Bytes().starts_with("$012B7\r$022B8\r$012B7\r"));
    });
}

TEST_F(TerminalTest, AMissingFileIsTold)
{
    Operate([&](Operator &op) {
        op.Gui([&] { terminal()->OptionSel[1]->click(); });
        for (const char *name : {"", "/nowhere/commands.txt", "/dev/zero", "/tmp"}) {
            op.Gui([&] { terminal()->TextFileName->setText(QString::fromLatin1(name)); });
            op.Press(terminal()->TextFileName, Qt::Key_Return);
            op.AnswerBox("File Not Found !", 16, "File Not Found !");
            op.Click(terminal()->CmdSend);
            op.AnswerBox("File Not Found !", 16, "File Not Found !");
            op.AnswerBox("File Not Open !", 16, "File Not Open !");
        }
        op.Click(terminal()->CmdContinueSend);
        op.AnswerBox("File Not Found !", 16, "File Not Found !");
        op.Settle();
        EXPECT_TRUE(op.Gui([&] { return main().TerminalStop; })) << "the loop has ended";
        EXPECT_TRUE(peer_.Lines().empty());
        EXPECT_EQ(Log(op), "");
    });
}

TEST_F(TerminalTest, ReturnInTheNameOpensTheFile)
{
    Operate([&](Operator &op) {
        const std::filesystem::path path = PlayFile(op, "$012\n");
        op.Press(terminal()->TextFileName, Qt::Key_Return);
        std::filesystem::remove(path);
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012", "!01400600", "   1> ", "   1< "));
    });
}

TEST_F(TerminalTest, AnotherNameMeansAnotherFile)
{
    Operate([&](Operator &op) {
        PlayFile(op, "$012\n$012\n");
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012", "!01400600", "   1> ", "   1< "));
        std::ofstream(ports.Root() / "commands.txt2") << "$022\n";
        op.Type(terminal()->TextFileName, QStringLiteral("2"));
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 2; }, "the second line");
        EXPECT_EQ(peer_.Lines(), (Lines{"$012", "$022"}));
    });
}

TEST_F(TerminalTest, TurningToASingleCommandLetsTheFileGo)
{
    Operate([&](Operator &op) {
        PlayFile(op, "$012\n$022\n");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "the first line");
        op.Click(terminal()->OptionSel[0]);
        op.Click(terminal()->OptionSel[1]);
        op.Click(terminal()->CmdSend);
        op.AnswerBox("File Not Found !", 16, "File Not Found !");
        op.AnswerBox("File Not Open !", 16, "File Not Open !");
        EXPECT_EQ(peer_.Lines(), Lines{"$012"});
    });
}

TEST_F(TerminalTest, AnEmptyFilePlaysNothing)
{
    Operate([&](Operator &op) {
        PlayFile(op, "");
        op.Click(terminal()->CmdSend);
        op.Settle();
        op.Click(terminal()->CmdContinueSend);
        op.Settle();
        EXPECT_FALSE(op.Gui([&] { return main().TerminalStop; }));
        Stop(op);
        EXPECT_EQ(Log(op), "");
        EXPECT_TRUE(peer_.Lines().empty());
    });
}

TEST_F(TerminalTest, ABinaryFileGoesOutByteForByte)
{
    std::string line;
    for (int c = 0; c < 256; ++c) {
        if (c != '\r' && c != '\n')
            line += static_cast<char>(c);
    }
    peer_.OnLine([](const std::string &, const RawPeer::Writer &write) { write("!\xFF\r"); });
    Operate([&](Operator &op) {
        PlayFile(op, line + "\n\n");
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf(line, "!\xFF", "   1> ", "   1< "));
        EXPECT_EQ(peer_.Bytes(), line + "\r");
        peer_.Forget();
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return !peer_.Lines().empty(); }, "the empty line");
        EXPECT_EQ(peer_.Bytes(), "\r");
    });
}

TEST_F(TerminalTest, ALineOfAMegabyteHarmsNothing)
{
    clock.ticks.reset();
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("100")); });
        PlayFile(op, std::string(1'000'000, 'x') + "\r\n$012\r\n");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return terminal()->Text1->Text().ends_with("(ms)\r\n"); }, "the end of the line");
        EXPECT_TRUE(Log(op).starts_with("   1> " + Record(std::string(100, 'x')) + "\r\n   1< "));
        op.Click(terminal()->OptionCChecksum);
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Bytes().ends_with("$012B7\r"); }, "the next line");
    });
}

TEST_F(TerminalTest, TooLongForAChecksumIsToldAndTheBusStaysAlive)
{
    Operate([&](Operator &op) {
        op.Gui([&] { terminal()->TextCommand->setText(QString(200, QChar(0xFF))); });
        op.Click(terminal()->OptionSChecksum);
        op.Click(terminal()->CmdSend);
        op.AnswerBox("Checksum overflow !", 16, "Checksum overflow !");
        EXPECT_TRUE(peer_.Lines().empty());
        op.Click(terminal()->OptionSChecksum);
        Command(op, "$012");
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012", "!01400600"));
    });
}

TEST_F(TerminalTest, AnOverflowInTheLoopEndsItForGood)
{
    peer_.Reply("$012B7", "!01400600A1\r");
    Operate([&](Operator &op) {
        op.Gui([&] { terminal()->TextCommand->setText(QString(200, QChar(0xFF))); });
        op.Click(terminal()->OptionSChecksum);
        op.Click(terminal()->CmdContinueSend);
        op.AnswerBox("Checksum overflow !", 16, "Checksum overflow !");
        Command(op, "$012");
        op.Press(terminal()->TextCommand, Qt::Key_Return);
        AwaitLog(op, ExchangeOf("$012B7", "!01400600A1"));
        op.Click(terminal()->CmdStop);
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 4; }, "rounds of another loop");
        Stop(op);
    });
}

TEST_F(TerminalTest, AnOverflowAtTheEndOfAFileClosesIt)
{
    Operate([&](Operator &op) {
        PlayFile(op, "$012\n" + std::string(200, '\xFF'));
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012", "!01400600", "   1> ", "   1< "));
        op.Click(terminal()->OptionCChecksum);
        op.Click(terminal()->CmdSend);
        op.AnswerBox("Checksum overflow !", 16, "Checksum overflow !");
        op.Click(terminal()->OptionCChecksum);
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 2; }, "the first line again");
        EXPECT_EQ(peer_.Lines(), (Lines{"$012", "$012"}));
    });
}

TEST_F(TerminalTest, TheDialogsShowTextFilesAndBeginInTheProgramsFolder)
{
    const std::filesystem::path elsewhere = ports.Root() / "elsewhere";
    std::filesystem::create_directory(elsewhere);
    const auto expect = [](const QFileDialog &dialog, const QString &folder) {
        EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Terminal Patch File(*.txt)")});
        EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("txt"));
        EXPECT_EQ(dialog.directory().canonicalPath(), QDir(folder).canonicalPath());
    };
    const auto programs = [&](QFileDialog &dialog) {
        expect(dialog, QCoreApplication::applicationDirPath());
        EXPECT_TRUE(dialog.directory().exists(QStringLiteral("Terminal-Example.txt")));
    };
    Operate([&](Operator &op) {
        op.Click(terminal()->OptionSel[1]);
        op.Click(terminal()->Comincludtxt);
        op.AnswerFile("Open", "*.txt", "", programs);
        op.Gui([&] { terminal()->Text1->Append("line\r\n"); });
        op.Click(terminal()->CmdSave);
        op.AnswerFile("Save As ---", "Terminal.txt", (elsewhere / "log").string(), programs);
        op.WaitFor([&] { return std::filesystem::exists(elsewhere / "log.txt"); }, "the file");
        op.Click(terminal()->CmdSave);
        op.AnswerFile("Save As ---", "Terminal.txt", "", [&](QFileDialog &dialog) {
            expect(dialog, QString::fromStdString(elsewhere.string()));
        });
    });
}

TEST_F(TerminalTest, WhatGoesOutIsTheCommandThatWasAskedFor)
{
    Operate([&](Operator &op) {
        QLineEdit *entry = terminal()->TextCommand;
        const auto send = [&](const char *command) {
            op.Gui([&] { entry->setText(QString::fromLatin1(command)); });
            op.Press(entry, Qt::Key_Return);
        };
        send("$052");
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "a command that waits for its reply");
        for (const char *command : {"$022", "$022", "$012"})
            send(command);
        Command(op, "$0");
        peer_.Send("!05\r");
        AwaitLog(op, ExchangeOf("$052", "!05") + ExchangeOf("$022", "!02400600") +
                         ExchangeOf("$012", "!01400600"));
        EXPECT_EQ(peer_.Lines(), (Lines{"$052", "$022", "$012"}));
    });
}

TEST_F(TerminalTest, SaveWaitsForTheTransactionAndTakesWhatComesUnderTheDialog)
{
    const std::filesystem::path path = ports.Root() / "log.txt";
    Operate([&](Operator &op) {
        Command(op, "$052");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "the command");
        op.Click(terminal()->CmdSave);
        op.Click(terminal()->CmdSave);
        op.Settle();
        EXPECT_FALSE(op.Gui([] { return QApplication::activeModalWidget() != nullptr; }));
        peer_.Send("!05\r");
        op.AwaitBox("the dialog");
        EXPECT_FALSE(op.Gui([&] { return main().Gate.IsOnLine(); })) << "the port is free under the dialog";
        op.Gui([&] { terminal()->Text1->Append("came while the dialog was open\r\n"); });
        op.AnswerFile("Save As ---", "Terminal.txt", path.string());
        op.WaitFor([&] { return std::filesystem::exists(path); }, "the file");
        EXPECT_EQ(ReadFile(path), ExchangeOf("$052", "!05") + "came while the dialog was open\r\n");
        op.Settle();
        EXPECT_FALSE(op.Gui([] { return QApplication::activeModalWidget() != nullptr; }))
            << "the second click came while the first was waiting";
    });
}

TEST_F(TerminalTest, WhatWaitsComesOneDialogAfterTheOther)
{
    const std::filesystem::path saved = ports.Root() / "log.txt";
    const std::filesystem::path commands = ports.Root() / "other.txt";
    std::ofstream(commands) << "$022\n";
    Operate([&](Operator &op) {
        PlayFile(op, "$052\n");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "the command");
        op.Click(terminal()->CmdSave);
        op.Click(terminal()->Comincludtxt);
        op.Click(terminal()->CmdContinueSend);
        op.Click(terminal()->CmdSend);
        peer_.Send("!05\r");
        op.AwaitBox("the first dialog");
        op.Settle();
        EXPECT_EQ(peer_.Lines().size(), 1U) << "nothing goes out under a dialog";
        op.AnswerFile("Save As ---", "Terminal.txt", saved.string());
        op.AnswerFile("Open", "*.txt", commands.string());
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "the loop");
        EXPECT_EQ(peer_.Lines()[1], "$022");
        EXPECT_EQ(ReadFile(saved), ExchangeOf("$052", "!05", "   1> ", "   1< "));
        Stop(op);
        const Lines numbers = Numbers(Log(op), '>');
        EXPECT_EQ(numbers.front(), "   1");
        EXPECT_EQ(numbers.size() + 1, peer_.Lines().size()) << "the send behind the start of a loop is none";
    });
}

TEST_F(TerminalTest, BrowseTakesTheChosenName)
{
    const std::filesystem::path path = WriteFile("$012\n");
    Operate([&](Operator &op) {
        op.Gui([&] { terminal()->OptionSel[1]->click(); });
        op.Click(terminal()->Comincludtxt);
        EXPECT_FALSE(op.Gui([&] { return vorn::SomeWindowIsTopmost(); })) << "nothing lies above the dialog";
        op.AnswerFile("Open", "*.txt", path.string());
        EXPECT_TRUE(op.Gui([&] { return vorn::SomeWindowIsTopmost(); }));
        EXPECT_EQ(op.Gui([&] { return terminal()->TextFileName->text().toStdString(); }), path.string());
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 1; }, "the loop");
        Stop(op);
        EXPECT_TRUE(op.Gui([&] { return main().TerminalStop; }));
        op.Click(terminal()->Comincludtxt);
        op.AnswerFile("Open", "*.txt", "");
        EXPECT_FALSE(op.Gui([&] { return main().TerminalStop; }));
        EXPECT_EQ(op.Gui([&] { return terminal()->TextFileName->text().toStdString(); }), path.string());
    });
}

TEST_F(TerminalTest, TheSourceDecidesWhichFieldsAreOpen)
{
    Operate([&](Operator &op) {
        Terminal &form = *terminal();
        const auto open = [&] {
            return op.Gui([&] {
                return std::vector<bool>{form.TextCommand->isEnabled(), form.OptionSChecksum->isEnabled(),
                                         form.TextFileName->isEnabled(), form.Comincludtxt->isEnabled(),
                                         form.OptionCChecksum->isEnabled()};
            });
        };
        EXPECT_TRUE(op.Gui([&] { return form.OptionSel[0]->isChecked(); }));
        EXPECT_EQ(open(), (std::vector<bool>{true, true, false, false, false}));
        Command(op, "$012");
        op.Click(form.CmdSend);
        op.WaitFor([&] { return Shows("!01400600"); }, "the reply");
        op.Click(form.OptionSel[1]);
        EXPECT_EQ(open(), (std::vector<bool>{false, false, true, true, true}));
        EXPECT_EQ(op.Gui([&] { return form.TextCommand->text(); }), QString());
        EXPECT_EQ(Response(op), "");
        op.Type(form.TextFileName, QStringLiteral("x"));
        op.Click(form.OptionSel[0]);
        EXPECT_EQ(open(), (std::vector<bool>{true, true, false, false, false}));
        EXPECT_EQ(op.Gui([&] { return form.TextFileName->text(); }), QString());
    });
}

TEST_F(TerminalTest, TogglesGoOffAtTheSecondClickAndNoteWhatTheyWere)
{
    Operate([&](Operator &op) {
        op.Click(terminal()->OptionSel[1]);
        const auto clickOff = [&] {
            op.Click(terminal()->OptionCChecksum);
            op.Click(terminal()->OptionCChecksum);
            return op.Gui([&] { return terminal()->OptionCChecksum->isChecked(); });
        };
        EXPECT_FALSE(clickOff());
        op.Click(terminal()->OptionSel[0]);
        for (QRadioButton *toggle : {terminal()->OptionSChecksum, terminal()->OptRingBuffer}) {
            const auto state = [&] {
                return op.Gui([&] { return vorn::TagOf(toggle) + (toggle->isChecked() ? " on" : " off"); });
            };
            op.Click(toggle);
            EXPECT_EQ(state(), "0 on");
            op.Click(toggle);
            EXPECT_EQ(state(), "1 off");
            op.Press(toggle, Qt::Key_Space);
            EXPECT_EQ(state(), "0 on");
        }
        EXPECT_TRUE(op.Gui([&] { return terminal()->OptionSel[0]->isChecked(); })) << "no part of its group";
    });
}

TEST_F(TerminalTest, TheWholeLogIsSaved)
{
    const std::filesystem::path path = ports.Root() / "log.txt";
    Operate([&](Operator &op) {
        op.Click(terminal()->CmdSave);
        op.Settle();
        EXPECT_FALSE(op.Gui([] { return QApplication::activeModalWidget() != nullptr; }))
            << "an empty log has nothing to save";
        const std::string log = std::string("a\r\0\xFF", 4) + std::string(200'000, 'x') + "\r\n";
        op.Gui([&] { terminal()->Text1->Append(log); });
        op.Click(terminal()->CmdSave);
        EXPECT_FALSE(op.Gui([&] { return terminal()->windowFlags().testFlag(Qt::WindowStaysOnTopHint); }));
        op.AnswerFile("Save As ---", "Terminal.txt", path.string());
        op.WaitFor([&] { return std::filesystem::exists(path); }, "the file");
        EXPECT_EQ(ReadFile(path), log);
        EXPECT_TRUE(op.Gui([&] { return terminal()->windowFlags().testFlag(Qt::WindowStaysOnTopHint); }));
    });
}

TEST_F(TerminalTest, ALogThatCanNotBeWrittenIsTold)
{
    const std::string path = "/proc/vorn.txt"; // nobody makes files there
    Operate([&](Operator &op) {
        op.Gui([&] { terminal()->Text1->Append("$012\r\n"); });
        op.Click(terminal()->CmdSave);
        op.AnswerFile("Save As ---", "Terminal.txt", path);
        op.AnswerBox(path + " could not be written !\n\nNo such file or directory", 16, "Save As ---");
    });
}

TEST_F(TerminalTest, AFullLogEndsTheSendingAndIsSaved)
{
    const std::filesystem::path path = ports.Root() / "log.txt";
    Operate([&](Operator &op) {
        Command(op, "$012");
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "some rounds");
        op.Gui([&] {
            LogView &log = *terminal()->Text1;
            log.Append(std::string(LogView::Capacity - log.Length() - 500, 'x'));
        });
        op.AnswerFile("Save As ---", "Terminal.txt", path.string());
        op.WaitFor([&] { return std::filesystem::exists(path); }, "the file");
        const std::string log = Log(op);
        EXPECT_GT(log.size(), LogView::Capacity - 500);
        EXPECT_EQ(ReadFile(path), log);
        EXPECT_TRUE(op.Gui([&] { return main().TerminalStop; }));
        EXPECT_FALSE(op.Gui([&] { return main().TerminalOwnsPort; }));
        EXPECT_TRUE(Enabled(op, terminal()->CmdSend));
        EXPECT_FALSE(Enabled(op, terminal()->CmdContinueSend));
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012", "!01400600")); // the next send begins with an empty log
    });
}

TEST_F(TerminalTest, AFileThatFillsTheLogIsClosed)
{
    Operate([&](Operator &op) {
        PlayFile(op, "$012\n$022\n$012\n$022\n");
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012", "!01400600", "   1> ", "   1< "));
        FillLog(op);
        op.Click(terminal()->CmdSend);
        op.AnswerFile("Save As ---", "Terminal.txt", "");
        op.Settle();
        EXPECT_TRUE(op.Gui([&] { return main().TerminalStop; }));
        EXPECT_EQ(peer_.Lines(), Lines{"$012"}) << "a line that can't be logged isn't sent";
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 4; }, "some lines");
        Stop(op);
        EXPECT_TRUE(Log(op).starts_with(ExchangeOf("$012", "!01400600", "   1> ", "   1< ") +
                                        ExchangeOf("$022", "!02400600", "   2> ", "   2< ")));
        op.Settle();
        const std::string log = Log(op);
        const std::size_t played = peer_.Lines().size();
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() > played && !main().TerminalOwnsPort; }, "a line");
        EXPECT_TRUE(Log(op).starts_with(log)) << "cleared once is enough";
    });
}

TEST_F(TerminalTest, ATypedLineThatTheLogHasNoRoomForIsThereStill)
{
    Operate([&](Operator &op) {
        FillLog(op);
        op.Type(terminal()->Text1, QStringLiteral("$012"));
        op.Press(terminal()->Text1, Qt::Key_Return);
        op.AnswerFile("Save As ---", "Terminal.txt", "");
        op.Settle();
        EXPECT_TRUE(Log(op).ends_with("x$012"));
        EXPECT_TRUE(peer_.Lines().empty());
        op.Click(terminal()->OptRingBuffer);
        op.Press(terminal()->Text1, Qt::Key_Return);
        AwaitLog(op, "$012" + Record("", vorn::TypedColumn) + "\r\n" +
                         Record("!01400600", vorn::TypedColumn) + "\r\n");
    });
}

TEST_F(TerminalTest, AFileGoesOnInARingBuffer)
{
    Operate([&](Operator &op) {
        op.Click(terminal()->OptRingBuffer);
        PlayFile(op, "$012\n$022\n");
        FillLog(op);
        op.Click(terminal()->CmdSend);
        const std::string first = ExchangeOf("$012", "!01400600", "   1> ", "   1< ");
        op.WaitFor([&] { return terminal()->Text1->Length() == first.size(); }, "a log begun again");
        EXPECT_EQ(Log(op), first);
        op.Click(terminal()->CmdSend);
        AwaitLog(op, first + ExchangeOf("$022", "!02400600", "   1> ", "   1< "));
    });
}

TEST_F(TerminalTest, ARingBufferBeginsAnewAndGoesOn)
{
    Operate([&](Operator &op) {
        op.Click(terminal()->OptRingBuffer);
        Command(op, "$012");
        FillLog(op);
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return Shows("!01400600"); }, "the reply");
        EXPECT_EQ(Log(op), ExchangeOf("$012", "!01400600"));
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "some rounds");
        op.Gui([&] {
            LogView &log = *terminal()->Text1;
            log.Append(std::string(LogView::Capacity - log.Length() - 500, 'x'));
        });
        op.WaitFor([&] { return terminal()->Text1->Length() < LogView::Capacity / 2; }, "a log begun again");
        const std::size_t sent = peer_.Lines().size();
        op.WaitFor([&] { return peer_.Lines().size() > sent + 3; }, "more rounds");
    });
}

TEST_F(TerminalTest, ALineTypedIntoTheLogIsSent)
{
    Operate([&](Operator &op) {
        LogView *text = terminal()->Text1;
        op.Type(text, QStringLiteral("$012"));
        op.Press(text, Qt::Key_Return);
        std::string log =
            "$012" + Record("", vorn::TypedColumn) + "\r\n" + Record("!01400600", vorn::TypedColumn) + "\r\n";
        AwaitLog(op, log);
        EXPECT_EQ(peer_.Bytes(), "$012\r");
        op.Gui([&] { text->moveCursor(QTextCursor::Start); });
        op.Type(text, QStringLiteral("$02"));
        op.Type(text, QStringLiteral("2"));
        op.Press(text, Qt::Key_Return);
        log +=
            "$022" + Record("", vorn::TypedColumn) + "\r\n" + Record("!02400600", vorn::TypedColumn) + "\r\n";
        AwaitLog(op, log);
        EXPECT_EQ(peer_.Bytes(), "$012\r$022\r");
        EXPECT_EQ(log.substr(4 + 45, 9), "\t12:34:56");
    });
}

TEST_F(TerminalTest, LinesTypedWhileACommandRunsAreSentInTheirTurn)
{
    Operate([&](Operator &op) {
        LogView *text = terminal()->Text1;
        const auto typed = [](const std::string &command, const std::string &reply) {
            return command + Record("", vorn::TypedColumn) + "\r\n" + Record(reply, vorn::TypedColumn) +
                   "\r\n";
        };
        Command(op, "$052");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "the command");
        for (const char *line : {"$022", "$012", "", ""}) {
            op.Type(text, QString::fromLatin1(line));
            op.Press(text, Qt::Key_Return);
        }
        op.Type(text, QStringLiteral("$0"));
        peer_.Send("!05\r");
        const std::string log =
            ExchangeOf("$052", "!05") + typed("$022", "!02400600") + typed("$012", "!01400600");
        AwaitLog(op, log + "$0");
        EXPECT_EQ(peer_.Lines(), (Lines{"$052", "$022", "$012"})) << "a Return on nothing piles up nothing";
        op.Type(text, QStringLiteral("22"));
        op.Press(text, Qt::Key_Return);
        AwaitLog(op, log + typed("$022", "!02400600"));
    });
}

TEST_F(TerminalTest, ATypedLineWithoutReplyIsATimeOut)
{
    clock.ticks.reset();
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("30")); });
        op.Type(terminal()->Text1, QStringLiteral("$092"));
        op.Press(terminal()->Text1, Qt::Key_Return);
        AwaitLog(op, "$092" + Record("", vorn::TypedColumn) + "\r\n" +
                         Record("Time out !", vorn::TypedColumn) + "\r\n");
    });
}

TEST_F(TerminalTest, ThePortIsTheOneOfTheCaption)
{
    RawPeer ten(ports.Link(10));
    Operate([&](Operator &op) {
        op.Gui([&] { main().Nodes.Select("KeyCOM010"); });
        Command(op, "$012");
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$012", "!01400600"));
        EXPECT_EQ(op.Gui([&] { return main().CommPortNo; }), 3);
        EXPECT_TRUE(ten.Lines().empty());
        Choose(op, "KeyCOM010");
        op.Trigger(main().ToolButton(vorn::FormMain::TerminalButton));
        EXPECT_EQ(op.Gui([&] { return terminal()->windowTitle(); }), QStringLiteral("COM10 Terminal"));
        ten.Reply("$0A2", "!0A400600\r");
        Command(op, "$0A2");
        op.Click(terminal()->CmdSend);
        AwaitLog(op, ExchangeOf("$0A2", "!0A400600"));
    });
}

TEST_F(TerminalTest, APortThatHasGoneEndsTheSending)
{
    Operate([&](Operator &op) {
        std::filesystem::remove(ports.Link(3));
        Command(op, "$012");
        op.Click(terminal()->CmdContinueSend);
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.Settle();
        EXPECT_TRUE(op.Gui([&] { return main().TerminalStop; }));
        EXPECT_FALSE(op.Gui([&] { return main().TransBusy; }));
    });
}

TEST_F(TerminalTest, WhereNothingCameTheReplyBeforeDoesNotStandIn)
{
    Operate([&](Operator &op) {
        Command(op, "$012");
        op.Click(terminal()->CmdSend);
        std::string log = ExchangeOf("$012", "!01400600");
        AwaitLog(op, log);
        const std::filesystem::path device = std::filesystem::read_symlink(ports.Link(3));
        std::filesystem::remove(ports.Link(3));
        op.Click(terminal()->CmdSend);
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        log += ExchangeOf("$012", "Time out !");
        AwaitLog(op, log);
        std::filesystem::create_symlink(device, ports.Link(3));
        op.Gui([&] { main().ReplyText = "!01400600"; });
        op.Gui([&] { main().TransBusy = true; }); // a silenced bus
        op.Press(terminal()->TextCommand, Qt::Key_Return);
        log += ExchangeOf("$012", "Time out !");
        AwaitLog(op, log);
        op.Gui([&] { main().TransBusy = false; });
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 4; }, "rounds on the port that is back");
        Stop(op);
    });
}

TEST_F(TerminalTest, TheTerminalEntryOpensItAfresh)
{
    Operate([&](Operator &op) {
        Terminal *first = terminal();
        Command(op, "$012");
        op.Trigger(main().Terminal);
        EXPECT_NE(terminal(), first);
        EXPECT_EQ(op.Gui([&] { return terminal()->TextCommand->text(); }), QString());
    });
}

TEST_F(TerminalTest, ExitEndsALoopAndTheWindow)
{
    Operate([&](Operator &op) {
        Command(op, "$012");
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "some rounds");
        op.Press(terminal(), Qt::Key_X, Qt::AltModifier);
        op.WaitFor([&] { return !terminal() && !main().TransBusy; }, "the end of the loop");
        op.Settle();
        op.Gui([&] { main().trans("$022", false); });
        op.WaitFor([&] { return peer_.Lines().back() == "$022"; }, "the next command");
        op.Settle();
        EXPECT_EQ(peer_.Lines().back(), "$022") << "nothing more comes from the loop";
    });
}

TEST_F(TerminalTest, ClosingInTheMiddleOfATransactionWaitsForItsEnd)
{
    Operate([&](Operator &op) {
        peer_.OnLine([](const std::string &, const RawPeer::Writer &) {});
        Command(op, "$052");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return main().TransBusy; }, "the transaction");
        op.Gui([&] { terminal()->close(); });
        EXPECT_FALSE(op.Gui([&] { return terminal() != nullptr; }));
        peer_.Send("!05\r");
        op.WaitFor([&] { return !main().TransBusy; }, "the end of the transaction");
        op.Settle();
        EXPECT_FALSE(op.Gui([&] { return main().TerminalOwnsPort; }));
    });
}

TEST_F(TerminalTest, WhatWaitsWhenItIsClosedIsNotBegun)
{
    Operate([&](Operator &op) {
        Command(op, "$052");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines().size() == 1; }, "the command");
        op.Type(terminal()->Text1, QStringLiteral("$022"));
        op.Press(terminal()->Text1, Qt::Key_Return);
        op.Click(terminal()->CmdSend);
        op.Click(terminal()->CmdSave);
        op.Gui([&] { terminal()->close(); });
        peer_.Send("!05\r");
        op.WaitFor([&] { return !main().Gate.IsOnLine(); }, "the end of the transaction");
        op.Settle();
        EXPECT_EQ(peer_.Lines(), Lines{"$052"});
        EXPECT_FALSE(op.Gui([] { return QApplication::activeModalWidget() != nullptr; }));
    });
}

TEST_F(TerminalTest, ASearchClosesTheTerminalAndFindsWhatIsThere)
{
    clock.ticks.reset();
    peer_.Reply("$FFM", "!FF7252\r");
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("200")); });
        Command(op, "$012");
        op.Click(terminal()->CmdContinueSend);
        op.WaitFor([&] { return peer_.Lines().size() > 3; }, "some rounds");
        Search(op, "255");
        op.WaitFor([&] { return main().Nodes.Contains("_0003!!FF7252"); }, "the module");
        EXPECT_FALSE(op.Gui([&] { return terminal() != nullptr; }));
    });
}

TEST_F(TerminalTest, AClickInTheMiddleOfATransactionWaitsForItsTurn)
{
    Operate([&](Operator &op) {
        peer_.OnLine([](const std::string &, const RawPeer::Writer &) {});
        Command(op, "$052");
        op.Click(terminal()->CmdSend);
        op.WaitFor([&] { return peer_.Lines() == Lines{"$052"}; }, "the command");
        op.Click(terminal()->CmdSend);
        op.Click(terminal()->CmdSend);
        EXPECT_EQ(peer_.Lines(), Lines{"$052"});
        peer_.Send("!05\r");
        op.WaitFor([&] { return peer_.Lines().size() == 2; }, "the second command");
        peer_.Send("!06\r");
        AwaitLog(op, ExchangeOf("$052", "!05") + ExchangeOf("$052", "!06"));
        EXPECT_EQ(peer_.Lines().size(), 2U) << "the third click came while the second was waiting";
    });
}

namespace
{

class TerminalBesidesAPage : public ::testing::Test, public RackOfOne
{
};

} // namespace

TEST_F(TerminalBesidesAPage, TheSendLoopAndTheRefreshBothGoOn)
{
    Rack("7221 address=0A");
    Operate([&](Operator &op) {
        AddNode(op, "_0002!!0A7221");
        op.Trigger(main().ToolButton(vorn::FormMain::TerminalButton));
        auto *terminal = op.Gui([&] { return qobject_cast<Terminal *>(main().FormFull_Screen.data()); });
        op.Gui([&] { terminal->TextCommand->setText(QStringLiteral("$0AM")); });
        op.Click(terminal->CmdContinueSend);
        op.WaitFor([&] { return rack().Commands(2).size() > 3; }, "some rounds");
        Choose(op, "_0002!!0A7221");
        const auto sent = [&](const char *command) {
            const auto commands = rack().Commands(2);
            return std::ranges::count(commands, command);
        };
        rack().ClearTrace();
        op.WaitFor([&] { return sent("$0AM") > 5 && sent("#0A0") > 5; }, "both kinds of commands");
        EXPECT_EQ(op.Gui([&] { return Text("LabAddr"); }), "0A (Hex)");
        op.Click(terminal->CmdStop);
        Choose(op, "KeyCOM002");
    });
}
