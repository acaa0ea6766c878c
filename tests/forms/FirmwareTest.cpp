// A whole firmware download, with all that can go wrong in it. The time of day stands still: the told waits
// pass when a test lets them.

#include "support/ProgramRun.h"

#include "simulator/Simulator.h"

#include "firmware/DownloadF.h"
#include "firmware/FirmwareFrame.h"
#include "platform/Animation.h"
#include "platform/Events.h"
#include "platform/ProgramDirectory.h"
#include "platform/WidgetText.h"
#include "shell/FormScan.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <algorithm>
#include <map>

using Lines = std::vector<std::string>;
using vornsim::Fault;
using vornsim::ImageKind;

namespace
{

const std::string Title = "VORN-3900 Download Firmware";
const std::string Unit = "_0002!!003900";
const std::string SpeedError = "  Baudrate setting error \nDo you want to entry download process?";
const std::string SetupError = "Download process setting error \nPlease reset device and retry";
const std::string TransferError = "Download process error \nPlease reset device ans retry";
const std::string NotFound = "File Not Found \nPlease chick file name";
const std::string Completed = "Firmware Download is completed ";
constexpr std::size_t BlockSize = 128;

std::string Instructions(const std::string &image)
{
    return "(1). Connect the COM port of the host computer with the\n"
           "       RS-232 port on the VORN-3900.\n"
           "\n"
           "(2). Make sure the image file :   " +
           image +
           "\n"
           "       has copied to current directory.\n"
           "\n"
           "(3). Set address 0 in VORN-3900 and reset it.\n"
           "\n"
           "     Do you want to entry download process?";
}

/// Bytes in which no two blocks are alike, and every byte occurs everywhere.
std::string ImageBytes(int blocks, unsigned seed)
{
    std::string bytes(static_cast<std::size_t>(blocks) * BlockSize, '\0');
    unsigned state = seed;
    for (char &byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24U);
    }
    return bytes;
}

/// A frame as it must go over the line.
std::string Frame(int number, const std::string &bytes)
{
    std::string frame{static_cast<char>(number / 256), static_cast<char>(number % 256)};
    frame += bytes;
    unsigned sum = 0;
    for (const char c : frame)
        sum += static_cast<unsigned char>(c);
    return frame + static_cast<char>(sum & 255) + '\r';
}

std::string NameOf(const std::string &image, int block)
{
    const std::string digits = std::to_string(block);
    return image + std::string(4 - digits.size(), '0') + digits;
}

/// What goes out for an image whose blocks are all taken at once.
void AddImage(Lines &lines, const std::string &image, int blocks)
{
    for (int block = 0; block < blocks; ++block) {
        lines.emplace_back("&00D");
        lines.push_back(NameOf(image, block));
    }
}

class FirmwareTest : public ::testing::Test, public ProgramRun
{
protected:
    FirmwareTest()
    {
        vorn::SetProgramDirectory(files_.path());
        clock.timeOfDay = 1000;
        Write("Hk8200h.img", loader_);
        Write("Qtlod.img", main_);
    }
    ~FirmwareTest() override { vorn::SetProgramDirectory({}); }

    QTemporaryDir files_;
    const std::string loader_ = ImageBytes(32, 1);
    const std::string main_ = ImageBytes(1024, 2);

    QString Path(const char *name) const { return QDir(files_.path()).filePath(QString::fromLatin1(name)); }
    void Write(const char *name, const std::string &bytes) const
    {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }

    void Rack(const std::string &module = "3900")
    {
        rack_.reset();
        rack_ = std::make_unique<vornsim::Simulator>(
            vornsim::ParseRack("port 2\nmodule " + module +
                               " address=00 slots=3921,-,3953 restart=0 loaderstart=0\n"),
            ports.Path());
        rack_->Start();
    }
    vornsim::Simulator &rack() { return *rack_; }
    void Faulty(Fault fault) { rack_->SetFault(2, "00", std::move(fault)); }
    /// Blocks that are never heard, so often. The operator lets the time for a reply pass.
    void Lose(const std::string &name, int times)
    {
        lost_[name] = times;
        Faulty({.kind = Fault::Kind::Silent, .begins = name, .times = times});
    }

    Lines Sent() { return rack_->Commands(2); }
    std::ptrdiff_t CountSent(const std::string &line) { return std::ranges::count(Sent(), line); }
    std::string BytesSent()
    {
        std::string bytes;
        for (const vornsim::TraceRecord &record : rack_->Trace(2)) {
            if (record.direction == vornsim::TraceRecord::Direction::FromHost)
                bytes += record.bytes;
        }
        return bytes;
    }

    void OpenUnit(Operator &op)
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("500"));
            main().Nodes.Add("KeyCOM002", Unit, "(00 ) 3900", "vorn5ico", "vorn5icoS");
            main().Nodes.Add(Unit, "_00020!003962", "(S0) 3962", "vorn5cico", "vorn5cicoS");
        });
        Choose(op, Unit);
        rack_->ClearTrace();
    }
    void Begin(Operator &op, const char *image = "Hk8200h.img", const char *answer = "Yes")
    {
        OpenUnit(op);
        op.Click(Find("CmdDownLoadF"));
        op.AnswerBox(Instructions(image), 36, Title, answer);
    }
    /// Answers the question for the line speed; a negative position is Cancel.
    void AnswerSpeed(Operator &op, int position)
    {
        op.WaitFor([] { return qobject_cast<vorn::DownloadF *>(QApplication::activeModalWidget()); },
                   "DownloadF");
        op.Gui([&] {
            auto *dialog = qobject_cast<vorn::DownloadF *>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            if (position >= 0)
                dialog->Combo1->setCurrentIndex(position);
            (position < 0 ? dialog->Command2 : dialog->Command1)->click();
        });
    }
    void AnswerImage(Operator &op, const std::string &name, const char *offered = "QTLOD.img")
    {
        op.AnswerFile(Title, offered, name);
    }
    void BeginTransfer(Operator &op, int speed = 3)
    {
        Begin(op);
        AnswerSpeed(op, speed);
        AnswerImage(op, "QTLOD.img");
    }

    static bool BoxIsUp()
    {
        return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr;
    }
    vorn::FormScan *Window() { return qobject_cast<vorn::FormScan *>(main().FormScan.data()); }

    /// Waits for something while a box may be up, which may be what comes.
    static void Await(Operator &op, const std::function<bool()> &come, const char *what)
    {
        const auto deadline = std::chrono::steady_clock::now() + Operator::Patience;
        while (!op.Gui(come)) {
            if (std::chrono::steady_clock::now() > deadline)
                FAIL() << "This never came: " << what;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }
    /// Lets the told waits pass, and those for what is lost, until something comes.
    void Pass(Operator &op, const std::function<bool()> &come, const char *what)
    {
        const auto look = [&] {
            if (come())
                return true;
            const Lines sent = Sent();
            const std::string last = sent.empty() ? std::string() : sent.back();
            if (last == "&00E" || last.starts_with("&00S"))
                *clock.timeOfDay += 4;
            else if (const auto lost = lost_.find(last);
                     lost != lost_.end() && std::ranges::count(sent, last) <= lost->second)
                *clock.timeOfDay += 0.6;
            return false;
        };
        Await(op, look, what);
    }
    void PassToBox(Operator &op, const std::string &text, int style, const char *button = "OK")
    {
        Pass(op, BoxIsUp, text.c_str());
        op.AnswerBox(text, style, Title, button);
        AwaitActions(op);
    }
    /// Waits until a line has been sent, without letting time pass.
    void AwaitSent(Operator &op, const std::string &line)
    {
        op.WaitFor([&] { return CountSent(line) > 0; }, line.c_str());
    }
    /// Lets time pass until a line has been sent.
    void PassTo(Operator &op, const std::string &line)
    {
        Pass(
            op, [&] { return CountSent(line) > 0; }, line.c_str());
    }

    void ExpectPutBack(Operator &op)
    {
        op.Gui([&] {
            EXPECT_EQ(main().CmbPBaudrate->currentIndex(), 3);
            EXPECT_TRUE(main().isEnabled());
            EXPECT_EQ(main().cursor().shape(), Qt::ArrowCursor);
            EXPECT_EQ(main().FormScan, nullptr);
            EXPECT_FALSE(main().MSComm1.PortOpen());
            EXPECT_FALSE(main().MayEnd);
        });
    }
    Lines Slots(Operator &op)
    {
        return op.Gui([&] {
            Lines texts;
            for (const std::string &key : main().Nodes.Children(Unit))
                texts.push_back(main().Nodes.Text(key));
            return texts;
        });
    }
    std::string Received(ImageKind kind) { return rack_->Image(2, "00", kind); }

private:
    std::unique_ptr<vornsim::Simulator> rack_;
    std::map<std::string, int> lost_;
};

/// The lines of a download in which nothing goes wrong, from the press of the button on.
Lines WholeDownload(const std::string &speed, int loaderBlocks)
{
    Lines lines{"$00M", "$00F", "$00M", "$00D", speed, speed, "&00A"};
    AddImage(lines, "loader", loaderBlocks);
    for (const std::string &line : {std::string("&00E"), std::string("&00A"), speed, speed})
        lines.push_back(line);
    AddImage(lines, "main", 1024);
    lines.emplace_back("&00E");
    lines.emplace_back("$00T");
    return lines;
}

/// Closes a window as the operator does by its frame.
void CloseByFrame(QWidget *window)
{
    QCloseEvent event;
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
}

} // namespace

TEST_F(FirmwareTest, AWholeDownloadSendsEveryByteInItsOrder)
{
    Rack();
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassToBox(op, Completed, 64);
        EXPECT_EQ(Sent(), WholeDownload("&00S4", 32));

        std::string bytes = "$00M\r$00F\r$00M\r$00D\r&00S4\r&00S4\r&00A\r";
        for (int block = 0; block < 32; ++block)
            bytes += "&00D\r" +
                     Frame(block, loader_.substr(static_cast<std::size_t>(block) * BlockSize, BlockSize));
        bytes += "&00E\r&00A\r&00S4\r&00S4\r";
        for (int block = 0; block < 1024; ++block)
            bytes +=
                "&00D\r" + Frame(block, main_.substr(static_cast<std::size_t>(block) * BlockSize, BlockSize));
        EXPECT_TRUE(BytesSent() == bytes + "&00E\r$00T\r");
        EXPECT_TRUE(Received(ImageKind::Loader) == loader_);
        EXPECT_TRUE(Received(ImageKind::Main) == main_);

        ExpectPutBack(op);
        EXPECT_EQ(Slots(op), (Lines{"(S0) 3921", "(S2) 3953"}));
        op.Gui([&] {
            EXPECT_NE(Status(), "Now Download Firmware Program is processing , Please wait moment....");
            EXPECT_FALSE(main().Nodes.IsExpanded(Unit));
            EXPECT_EQ(main().Nodes.Children("_00020!003921").size(), 3U);
            EXPECT_EQ(Find<QTreeWidget>("ListView3900")->topLevelItemCount(), 2) << "the page's list as well";
        });
    });
}

TEST_F(FirmwareTest, TheExtendedUnitHasImagesOfItsOwn)
{
    Write("Hk8200e.img", ImageBytes(32, 5));
    Write("Qtlode.img", ImageBytes(1025, 6));
    Rack("3900E family=no");
    Operate([&](Operator &op) {
        Begin(op, "Hk8200e.img");
        EXPECT_EQ(Sent(), (Lines{"$00M"})) << "its version doesn't count";
        AnswerSpeed(op, 1);
        op.AnswerFile(Title, "QTLODE.img", Path("Qtlode.img").toStdString(), [&](QFileDialog &dialog) {
            EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("Qtlode.img"));
            EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Download File (Qtlode.img)(*.img)")});
            EXPECT_EQ(QDir(dialog.directory()), QDir(files_.path()));
            EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        });
        PassToBox(op, Completed, 64);
        Lines expected = WholeDownload("&00S2", 32);
        expected.erase(expected.begin() + 1); // no version
        EXPECT_EQ(Sent(), expected);
        EXPECT_TRUE(Received(ImageKind::Loader) == ImageBytes(32, 5));
        EXPECT_TRUE(Received(ImageKind::Main) == ImageBytes(1025, 6).substr(0, 1024 * BlockSize));
    });
}

TEST_F(FirmwareTest, TheExtendedUnitIsKnownWithItsFamilyToo)
{
    Rack("3900E family=yes");
    Operate([&](Operator &op) { Begin(op, "Hk8200e.img", "No"); });
}

TEST_F(FirmwareTest, AnEarlierUnitTakesTheLongLoaderAt9600)
{
    Write("Download.img", ImageBytes(166, 7));
    Rack("3900 version=A2.00");
    Operate([&](Operator &op) {
        Begin(op, "Download.img");
        AnswerSpeed(op, 0);
        op.AnswerFile(Title, "QTLOD.img", "qtlod.img", [&](QFileDialog &dialog) {
            EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("Qtlod.img"));
            EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Download File (Qtlod.img)(*.img)")});
        });
        PassToBox(op, Completed, 64);
        EXPECT_EQ(Sent(), WholeDownload("&00S1", 166));
        EXPECT_TRUE(Received(ImageKind::Loader) == ImageBytes(166, 7));
        EXPECT_TRUE(Received(ImageKind::Main) == main_);
    });
}

TEST_F(FirmwareTest, AUnitThatDoesNotSayWhatItIsCountsAsAnEarlierOne)
{
    Rack();
    Operate([&](Operator &op) {
        OpenUnit(op);
        Faulty({.kind = Fault::Kind::Silent});
        op.Click(Find("CmdDownLoadF"));
        op.AnswerBox(Instructions("Download.img"), 36, Title, "No");
        AwaitActions(op);
        EXPECT_EQ(Sent(), (Lines{"$00M", "$00F", "$00T"}));
        EXPECT_EQ(Slots(op), Lines{});
    });
}

TEST_F(FirmwareTest, NoToTheInstructionsRebuildsTheSlotsAllTheSame)
{
    Rack();
    Operate([&](Operator &op) {
        OpenUnit(op);
        op.Gui([&] { main().Nodes.SetExpanded(Unit, true); });
        op.Click(Find("CmdDownLoadF"));
        op.AnswerBox(Instructions("Hk8200h.img"), 36, Title, "No");
        AwaitActions(op);
        EXPECT_EQ(Sent(), (Lines{"$00M", "$00F", "$00T"}));
        EXPECT_EQ(Slots(op), (Lines{"(S0) 3921", "(S2) 3953"}));
        EXPECT_FALSE(op.Gui([&] { return main().Nodes.IsExpanded(Unit); }));
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, TheSpeedIsAskedForAsLongAsTheOperatorWantsTo)
{
    Rack();
    Operate([&](Operator &op) {
        Begin(op);
        op.WaitFor([] { return QApplication::activeModalWidget() != nullptr; }, "DownloadF");
        op.Gui([] {
            auto *dialog = qobject_cast<vorn::DownloadF *>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            EXPECT_EQ(dialog->windowTitle().toStdString(), Title);
            EXPECT_EQ(dialog->Combo1->currentIndex(), 3);
            QStringList speeds;
            for (int i = 0; i < dialog->Combo1->count(); ++i)
                speeds << dialog->Combo1->itemText(i);
            EXPECT_EQ(speeds, (QStringList{QStringLiteral("   9600  bps"), QStringLiteral(" 19200  bps"),
                                           QStringLiteral(" 38400  bps"), QStringLiteral(" 57600  bps")}));
            EXPECT_EQ(dialog->findChild<QLabel *>(QStringLiteral("Label1"))->text(),
                      QStringLiteral("Baudrate selection : "));
            EXPECT_EQ(dialog->Command1->text(), QStringLiteral("&OK"));
            EXPECT_EQ(dialog->Command2->text(), QStringLiteral("&Cancel"));
        });
        AnswerSpeed(op, -1);
        op.AnswerBox(SpeedError, 36, Title, "Yes");
        op.CloseForm("DownloadF");
        op.AnswerBox(SpeedError, 36, Title, "Yes");
        AnswerSpeed(op, -1);
        op.AnswerBox(SpeedError, 36, Title, "No");
        AwaitActions(op);
        EXPECT_EQ(Sent(), (Lines{"$00M", "$00F"})) << "the slots aren't read";
        EXPECT_EQ(Slots(op), (Lines{"(S0) 3962"}));
    });
}

TEST_F(FirmwareTest, LeavingEarlyKeepsTheSpeedOfThePortPage)
{
    Rack("3900 baud=19200");
    Operate([&](Operator &op) {
        OpenUnit(op);
        op.Gui([&] { main().CmbPBaudrate->setCurrentIndex(4); });
        op.Click(Find("CmdDownLoadF"));
        op.AnswerBox(Instructions("Hk8200h.img"), 36, Title, "Yes");
        AnswerSpeed(op, -1);
        op.AnswerBox(SpeedError, 36, Title, "No");
        AwaitActions(op);
        EXPECT_EQ(op.Gui([&] { return main().CmbPBaudrate->currentIndex(); }), 4);
    });
}

TEST_F(FirmwareTest, AnImageOfAnotherNameIsRefusedWhateverItHolds)
{
    Write("MYQTLOD.IMG", main_);
    Write("Other.img", main_);
    Rack();
    Operate([&](Operator &op) {
        Begin(op);
        AnswerSpeed(op, 3);
        for (const char *name : {"MYQTLOD.IMG", "Other.img", "Hk8200h.img"}) {
            AnswerImage(op, name);
            op.AnswerBox("Selected Download filename incorrect", 16, Title);
        }
        AnswerImage(op, "");
        op.AnswerBox("Do you want to quit download process?", 36, Title, "No");
        AnswerImage(op, "");
        op.AnswerBox("Do you want to quit download process?", 36, Title, "Yes");
        op.AnswerBox("Exit Download process\nPlease reset device and retry", 16, Title);
        op.AnswerBox(NotFound, 16, Title);
        AwaitActions(op);
        EXPECT_EQ(Sent(), (Lines{"$00M", "$00F", "$00M"}));
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, ImagesThatAreNotThereAreToldBeforeAnythingIsSent)
{
    Rack();
    Operate([&](Operator &op) {
        Begin(op);
        AnswerSpeed(op, 3);
        AnswerImage(op, "Qtlod-nowhere.img");
        op.AnswerBox(NotFound, 16, Title);
        AwaitActions(op);
        QFile::remove(Path("Hk8200h.img"));
        op.Click(Find("CmdDownLoadF"));
        op.AnswerBox(Instructions("Hk8200h.img"), 36, Title, "Yes");
        AnswerSpeed(op, 3);
        AnswerImage(op, "Qtlod.img");
        op.AnswerBox(NotFound, 16, Title);
        AwaitActions(op);
        EXPECT_EQ(CountSent("$00D"), 0);
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, ImagesThatCannotFillTheirBlocksAreToldBeforeAnythingIsSent)
{
    Rack();
    Write("Qtlod-short.img", main_.substr(1));
    Write("Qtlod-empty.img", "");
    Operate([&](Operator &op) {
        OpenUnit(op);
        const auto refused = [&](const char *image, const std::string &text) {
            op.Click(Find("CmdDownLoadF"));
            op.AnswerBox(Instructions("Hk8200h.img"), 36, Title, "Yes");
            AnswerSpeed(op, 3);
            AnswerImage(op, image);
            op.AnswerBox(text, 16, Title);
            AwaitActions(op);
        };
        refused("Qtlod-short.img",
                "Image file too short :\nQtlod-short.img\n131071 bytes, 131072 are needed");
        refused("Qtlod-empty.img", "Image file too short :\nQtlod-empty.img\n0 bytes, 131072 are needed");
        Write("Hk8200h.img", loader_.substr(0, 100));
        refused("Qtlod.img", "Image file too short :\nHk8200h.img\n100 bytes, 4096 are needed");
        QFile::remove(Path("Hk8200h.img"));
        QDir(files_.path()).mkdir(QStringLiteral("Hk8200h.img"));
        refused("Qtlod.img", "Image file is no file :\nHk8200h.img");
        EXPECT_EQ(CountSent("$00D"), 0);
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, AnImageThatVanishesOnItsWayIsSentAllTheSame)
{
    Rack();
    Operate([&](Operator &op) {
        BeginTransfer(op);
        AwaitSent(op, "$00D");
        QFile::remove(Path("Qtlod.img"));
        Write("Hk8200h.img", "");
        PassToBox(op, Completed, 64);
        EXPECT_TRUE(Received(ImageKind::Loader) == loader_);
        EXPECT_TRUE(Received(ImageKind::Main) == main_);
    });
}

TEST_F(FirmwareTest, TheProgressWindowTellsWhatGoesOn)
{
    Rack();
    Lose("main0007", 1);
    Operate([&](Operator &op) {
        BeginTransfer(op);
        AwaitSent(op, "&00S4");
        op.Gui([&] {
            ASSERT_TRUE(Window());
            EXPECT_EQ(Status(), "Now Download Firmware Program is processing , Please wait moment....");
            EXPECT_EQ(Window()->windowTitle(), QStringLiteral("Download Firmware"));
            EXPECT_EQ(vorn::TagOf(Window()), "Download");
            EXPECT_EQ(Window()->ProgressBar1->minimum(), 0);
            EXPECT_EQ(Window()->ProgressBar1->maximum(), 1300);
            EXPECT_EQ(Window()->ProgressBar1->value(), 0) << "the wait behind the speed isn't over";
            EXPECT_TRUE(Window()->Animation1->IsPlaying());
            EXPECT_FALSE(Window()->Command1->isEnabled());
            EXPECT_FALSE(main().isEnabled());
            EXPECT_EQ(main().cursor().shape(), Qt::WaitCursor);
            EXPECT_EQ(main().CmbPBaudrate->currentIndex(), 6);
        });
        // Each step of the bar, where nothing else can happen until time passes.
        op.Gui([&] { *clock.timeOfDay += 4; });
        AwaitSent(op, "&00E");
        op.Gui([&] {
            EXPECT_EQ(Window()->ProgressBar1->value(), 186);
            *clock.timeOfDay += 4;
        });
        op.WaitFor([&] { return CountSent("&00S4") == 3; }, "the speed of the loader");
        op.Gui([&] {
            EXPECT_EQ(Window()->ProgressBar1->value(), 221);
            *clock.timeOfDay += 4;
        });
        AwaitSent(op, "main0007");
        op.Gui([&] {
            EXPECT_EQ(Window()->ProgressBar1->value(), 248);
            EXPECT_EQ(Window()->Label1->text(), QStringLiteral("Main image, block 8 of 1024"));
            EXPECT_TRUE(Window()->LabTimeLeft->text().startsWith(QStringLiteral("About ")));
        });
        op.Gui([&] { *clock.timeOfDay += 0.6; });
        op.WaitFor([&] { return CountSent("&00E") == 2; }, "the start of the main image");
        op.Gui([&] { EXPECT_EQ(Window()->ProgressBar1->value(), 1265); });
        PassToBox(op, Completed, 64);
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, ARefusedBlockIsSentAgainWithoutAnotherPermission)
{
    Rack();
    Faulty({.kind = Fault::Kind::Refuse, .begins = "loader0003", .times = 2});
    Faulty({.kind = Fault::Kind::Garbage, .begins = "main0005", .times = 1, .length = 9});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassToBox(op, Completed, 64);
        Lines expected = WholeDownload("&00S4", 32);
        expected.insert(std::ranges::find(expected, "loader0003"), 2, "loader0003");
        expected.insert(std::ranges::find(expected, "main0005"), "main0005");
        EXPECT_EQ(Sent(), expected);
        EXPECT_TRUE(Received(ImageKind::Loader) == loader_);
        EXPECT_TRUE(Received(ImageKind::Main) == main_);
    });
}

TEST_F(FirmwareTest, ATornReplyMeansSendAgain)
{
    Rack();
    Lose("main0002", 1); // its time passes as that of a lost one does
    Faulty({.kind = Fault::Kind::NoReturn, .begins = "main0002", .times = 1});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassToBox(op, Completed, 64);
        Lines expected = WholeDownload("&00S4", 32);
        expected.insert(std::ranges::find(expected, "main0002"), "main0002");
        EXPECT_EQ(Sent(), expected) << "no recovery, no permission";
        EXPECT_TRUE(Received(ImageKind::Main) == main_);
    });
}

TEST_F(FirmwareTest, AReplyInPiecesIsOneReply)
{
    Rack();
    Faulty({.kind = Fault::Kind::Split, .begins = "main000", .delay = std::chrono::milliseconds(5), .at = 2});
    Faulty({.kind = Fault::Kind::Split,
            .begins = "&00D",
            .times = 20,
            .delay = std::chrono::milliseconds(5),
            .at = 2});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassToBox(op, Completed, 64);
        EXPECT_EQ(Sent(), WholeDownload("&00S4", 32));
    });
}

TEST_F(FirmwareTest, AReplyWithoutEchoAcceptsABlock)
{
    Rack("3900 echo=0");
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassToBox(op, Completed, 64);
        EXPECT_EQ(Sent(), WholeDownload("&00S4", 32));
        EXPECT_TRUE(Received(ImageKind::Main) == main_);
    });
}

TEST_F(FirmwareTest, ASilentUnitIsAskedAnewAndTheFileMovesOn)
{
    Rack();
    Lose("main0003", 1);
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassToBox(op, Completed, 64);
        Lines expected = WholeDownload("&00S4", 32);
        const auto block = std::ranges::find(expected, "main0003");
        expected.insert(block, {"main0003", "&00D"});
        EXPECT_EQ(Sent(), expected);
        // The frame itself is sent again as it was; all that follow begin one byte later in the file.
        const std::size_t behind = 4 * BlockSize;
        EXPECT_TRUE(Received(ImageKind::Main) == main_.substr(0, behind) + main_.substr(behind + 1) + '\0');
    });
}

TEST_F(FirmwareTest, EveryRoundOfAskingAnewMovesTheFileOn)
{
    Rack();
    Lose("loader0001", 1);
    Write("Hk8200h.img", loader_ + "behind the blocks");
    Operate([&](Operator &op) {
        BeginTransfer(op);
        AwaitSent(op, "&00S4");
        Pass(
            op, [&] { return CountSent("loader0001") == 1; }, "the block that is lost");
        Faulty({.kind = Fault::Kind::Refuse, .begins = "&00D", .times = 3});
        PassToBox(op, Completed, 64);
        const std::string file = loader_ + "behind the blocks";
        const std::size_t behind = 2 * BlockSize;
        EXPECT_TRUE(Received(ImageKind::Loader) ==
                    file.substr(0, behind) + file.substr(behind + 4, 30 * BlockSize));
    });
}

TEST_F(FirmwareTest, APermissionThatDoesNotComeIsAskedForAgain)
{
    Rack();
    Faulty({.kind = Fault::Kind::Silent, .begins = "&00D", .times = 1});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "&00D");
        op.Gui([&] { *clock.timeOfDay += 0.6; });
        PassToBox(op, Completed, 64);
        Lines expected = WholeDownload("&00S4", 32);
        expected.insert(std::ranges::find(expected, "&00D"), "&00D");
        EXPECT_EQ(Sent(), expected);
    });
}

TEST_F(FirmwareTest, APermissionIsAskedForSoManyTimes)
{
    Rack();
    Faulty({.kind = Fault::Kind::Silent, .begins = "&00D"});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "&00D");
        // No faster than the rack hears it.
        op.Gui([&] {
            clock.looked = [&] {
                *clock.timeOfDay += 0.6;
                (void)Received(ImageKind::Loader);
            };
        });
        PassToBox(op, TransferError, 16);
        EXPECT_EQ(CountSent("&00D"), 13201);
        EXPECT_EQ(CountSent("loader0000"), 0);
        EXPECT_EQ(Slots(op), (Lines{"(S0) 3962"})) << "the tree is left alone";
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, ABlockIsSentSoManyTimes)
{
    Rack();
    Faulty({.kind = Fault::Kind::Refuse, .begins = "main0001"});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassToBox(op, TransferError, 16);
        EXPECT_EQ(CountSent("main0001"), 133);
        EXPECT_EQ(CountSent("&00D"), 34);
        EXPECT_EQ(Sent().back(), "main0001");
        EXPECT_TRUE(op.Gui([&] { return main().Nodes.Contains(Unit); }));
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, ALoaderThatDoesNotStartFailsTheTransfer)
{
    Rack();
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "loader0003"); // well behind the first request
        Faulty({.kind = Fault::Kind::Refuse, .begins = "&00A"});
        PassToBox(op, TransferError, 16);
        EXPECT_EQ(CountSent("&00A"), 1 + 129);
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, ALoaderThatStartsLateIsWaitedFor)
{
    Rack();
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "loader0003"); // well behind the first request
        Faulty({.kind = Fault::Kind::Refuse, .begins = "&00A", .times = 128});
        PassToBox(op, Completed, 64);
        EXPECT_EQ(CountSent("&00A"), 1 + 129);
    });
}

TEST_F(FirmwareTest, ACommandThatIsNeverAnsweredTakesTheUnitOutOfTheTree)
{
    for (const auto &[begins, sent] : {std::pair{"$00D", 11}, {"&00S", 12}, {"&00A", 11}}) {
        SCOPED_TRACE(begins);
        Rack();
        Faulty({.kind = Fault::Kind::Refuse, .begins = begins});
        Operate([&, begins = begins, sent = sent](Operator &op) {
            BeginTransfer(op);
            PassToBox(op, SetupError, 16);
            const Lines lines = Sent();
            EXPECT_EQ(std::ranges::count_if(
                          lines, [&](const std::string &line) { return line.starts_with(begins); }),
                      sent);
            op.Gui([&] {
                EXPECT_FALSE(main().Nodes.Contains(Unit));
                EXPECT_EQ(main().Nodes.Selected(), "KeyCOM002");
                EXPECT_EQ(vorn::TagOf(main().Frame1), "KeyCOM002") << "the page of what is then selected";
            });
            ExpectPutBack(op);
        });
    }
}

TEST_F(FirmwareTest, AShortCommandIsAnsweredAtItsEleventhTry)
{
    Rack();
    Faulty({.kind = Fault::Kind::Refuse, .begins = "$00D", .times = 10});
    Faulty({.kind = Fault::Kind::WrongAddress, .begins = "&00A", .times = 10});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassToBox(op, Completed, 64);
        EXPECT_EQ(CountSent("$00D"), 11);
        EXPECT_EQ(CountSent("&00A"), 12);
    });
}

TEST_F(FirmwareTest, TheSpeedOfTheLoaderIsSetupAgain)
{
    Rack();
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "loader0003"); // well behind the first setup
        Faulty({.kind = Fault::Kind::Refuse, .begins = "&00S"});
        PassToBox(op, SetupError, 16);
        EXPECT_EQ(CountSent("&00S4"), 2 + 12);
        EXPECT_FALSE(op.Gui([&] { return main().Nodes.Contains(Unit); }));
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, ToCloseTheWindowAsksFirst)
{
    Rack();
    Faulty({.kind = Fault::Kind::Silent, .begins = "main0100", .times = 1});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "main0100");
        const std::string question = "Break off the firmware download?\n\nThe main image has been sent in "
                                     "part only. The unit stays in its "
                                     "loader until it is reset; then the download must be repeated.";
        op.Gui([&] { vorn::Queue(Window(), [this] { QTest::keyClick(Window(), Qt::Key_Escape); }); });
        op.AnswerBox(question, 36, Title, "No");
        op.Gui([&] {
            ASSERT_TRUE(Window());
            EXPECT_TRUE(Window()->isVisible());
            vorn::Queue(Window(), [this] { CloseByFrame(Window()); });
        });
        op.AnswerBox(question, 36, Title, "Yes");
        AwaitActions(op);
        EXPECT_EQ(Sent().back(), "main0100") << "nothing more is sent";
        EXPECT_EQ(Slots(op), (Lines{"(S0) 3962"}));
        ExpectPutBack(op);
        EXPECT_EQ(rack().Value(2, "00", "download"), "yes");
    });
}

TEST_F(FirmwareTest, AReplyThatComesWhileTheQuestionStandsCounts)
{
    Rack();
    Faulty({.kind = Fault::Kind::Late,
            .begins = "main0050",
            .times = 1,
            .delay = std::chrono::milliseconds(1500)});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "main0050");
        op.Gui([&] { vorn::Queue(Window(), [this] { QTest::keyClick(Window(), Qt::Key_Escape); }); });
        op.AwaitBox("the question");
        Await(
            op, [&] { return rack().Trace(2).back().direction == vornsim::TraceRecord::Direction::ToHost; },
            "the late reply");
        op.Gui([&] { *clock.timeOfDay += 60; });
        op.AnswerBox(
            "Break off the firmware download?\n\nThe main image has been sent in part only. The unit stays "
            "in its loader until it is reset; then the download must be repeated.",
            36, Title, "No");
        PassToBox(op, Completed, 64);
        EXPECT_EQ(Sent(), WholeDownload("&00S4", 32));
        EXPECT_TRUE(Received(ImageKind::Main) == main_);
    });
}

TEST_F(FirmwareTest, TheMainWindowAsksToo)
{
    Rack();
    Operate([&](Operator &op) {
        BeginTransfer(op);
        AwaitSent(op, "&00S4");
        op.Gui([&] { vorn::Queue(&main(), [&] { main().close(); }); });
        op.AnswerBox(
            "End the program and break off the firmware download?\n\nNo part of an image has been sent. The "
            "unit stays in download mode until it is reset.",
            36, Title, "No");
        EXPECT_TRUE(op.Gui([&] { return main().isVisible(); }));
        PassToBox(op, Completed, 64);
    });
}

TEST_F(FirmwareTest, ASecondPressAndClicksElsewhereDoNotInterfere)
{
    Rack();
    Operate([&](Operator &op) {
        OpenUnit(op);
        op.Gui([&] {
            QTest::mouseClick(Find("CmdDownLoadF"), Qt::LeftButton);
            QTest::mouseClick(Find("CmdDownLoadF"), Qt::LeftButton);
        });
        op.AnswerBox(Instructions("Hk8200h.img"), 36, Title, "Yes");
        AnswerSpeed(op, 3);
        AnswerImage(op, "Qtlod.img");
        AwaitSent(op, "&00S4");
        op.Gui([&] {
            QTest::mouseClick(Find("CmdMUpdate"), Qt::LeftButton);
            LeftClick("KeyCOM002");
            main().ToolButton(vorn::FormMain::SearchButton)->trigger();
        });
        PassToBox(op, Completed, 64);
        EXPECT_EQ(Sent(), WholeDownload("&00S4", 32));
        EXPECT_EQ(op.Gui([&] { return vorn::TagOf(main().Frame1); }), Unit);
    });
}

TEST_F(FirmwareTest, APulledAdapterFailsTheTransfer)
{
    Rack();
    Faulty({.kind = Fault::Kind::Silent, .begins = "main0009", .times = 1});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "main0009");
        rack().Pull(2);
        op.Gui([&] { *clock.timeOfDay += 0.6; });
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox(TransferError, 16, Title);
        AwaitActions(op);
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, AnAdapterPulledWhilePermissionIsAskedForFailsTheTransferToo)
{
    Rack();
    Faulty({.kind = Fault::Kind::Silent, .begins = "&00D"});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "&00D");
        rack().Vanish(2);
        op.Gui([&] { clock.looked = [&] { *clock.timeOfDay += 0.02; }; });
        op.AnswerBox(TransferError, 16, Title);
        AwaitActions(op);
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, AnAdapterPulledBeforeTheFirstCommandIsToldOnce)
{
    Rack();
    Operate([&](Operator &op) {
        Begin(op);
        AnswerSpeed(op, 3);
        op.WaitFor([] { return qobject_cast<QFileDialog *>(QApplication::activeModalWidget()); },
                   "the file dialog");
        rack().Pull(2);
        AnswerImage(op, "QTLOD.img");
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox(SetupError, 16, Title);
        AwaitActions(op);
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, AnEndlessWaitForASilentUnitCanBeBrokenOff)
{
    Rack();
    Faulty({.kind = Fault::Kind::Silent, .begins = "main0030"});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "main0030");
        Faulty({.kind = Fault::Kind::Silent, .begins = "&00D"});
        const auto asked = CountSent("&00D");
        op.Gui([&] { *clock.timeOfDay += 0.6; });
        op.WaitFor([&] { return CountSent("&00D") > asked + 1; }, "the second round of asking again");
        op.Gui([&] {
            EXPECT_EQ(Window()->Label1->text(), QStringLiteral("The unit gives no answer. Waiting for it"));
            vorn::Queue(Window(), [this] { CloseByFrame(Window()); });
        });
        op.AnswerBox(
            "Break off the firmware download?\n\nThe main image has been sent in part only. The unit stays "
            "in its loader until it is reset; then the download must be repeated.",
            36, Title, "Yes");
        AwaitActions(op);
        EXPECT_EQ(CountSent("main0030"), 1);
        EXPECT_EQ(op.Gui([&] { return Status(); }), "Firmware download broken off, please reset the unit");
        ExpectPutBack(op);
    });
}

TEST_F(FirmwareTest, AReplyThatComesTooLateIsOvercome)
{
    Rack();
    Faulty({.kind = Fault::Kind::Late,
            .begins = "main0020",
            .times = 1,
            .delay = std::chrono::milliseconds(150)});
    Operate([&](Operator &op) {
        BeginTransfer(op);
        PassTo(op, "main0020");
        op.Gui([&] { *clock.timeOfDay += 0.6; });
        PassToBox(op, Completed, 64);
        const auto rounds = static_cast<std::size_t>(CountSent("&00D") - 32 - 1024);
        EXPECT_GE(rounds, 1U);
        const std::size_t behind = 21 * BlockSize;
        EXPECT_TRUE(Received(ImageKind::Main) ==
                    main_.substr(0, behind) + main_.substr(behind + rounds) + std::string(rounds, '\0'));
    });
}

TEST_F(FirmwareTest, AReplyThatCameWhileTheProcessHadNoTurnIsNotLate)
{
    Rack();
    Faulty({.kind = Fault::Kind::Late,
            .begins = "main0005",
            .times = 1,
            .delay = std::chrono::milliseconds(20)});
    Operate([&](Operator &op) {
        int looks = 0; // since the block is on the line; the first one is that of the begin
        op.Gui([&] {
            clock.looked = [&] {
                if (looks == 2 || CountSent("main0005") == 0 || ++looks != 2)
                    return;
                while (main().MSComm1.InBufferCount() < static_cast<int>(vorn::BlockReplySize))
                    std::this_thread::yield();
                *clock.timeOfDay += 0.6;
            };
        });
        BeginTransfer(op);
        PassToBox(op, Completed, 64);
        op.Gui([&] { clock.looked = {}; });
        EXPECT_EQ(looks, 2);
        EXPECT_EQ(Sent(), WholeDownload("&00S4", 32)) << "no block is sent again";
    });
}

TEST_F(FirmwareTest, MidnightIsNoEndlessWait)
{
    Rack();
    clock.timeOfDay = 86399.5;
    Operate([&](Operator &op) {
        BeginTransfer(op);
        AwaitSent(op, "&00S4");
        op.Gui([&] { clock.timeOfDay = 0.6; });
        AwaitSent(op, "&00E");
        PassToBox(op, Completed, 64);
        EXPECT_EQ(Sent(), WholeDownload("&00S4", 32));
    });
}
