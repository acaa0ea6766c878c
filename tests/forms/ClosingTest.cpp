// Closing the main window ends the process with status 0 at once, from inside any wait, with the ports
// released. Each case runs in a process of its own, which the closing ends.

#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "logger/RecordSheet.h"
#include "platform/ProgramDirectory.h"
#include "shell/Module1.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace
{

/// The program on COM3, its steps queued; closes the window once the peer has heard `line`.
void CloseWhenHeard(const std::string &line, const char *timeOut,
                    const std::function<void(vorn::FormMain &)> &begin)
{
    PortsFolder folder;
    RawPeer peer(folder.Link(3));
    peer.Reply("$FFM", "!FF7252\r");
    peer.Reply("$0A2", "!0A080600\r");
    peer.Reply("@0ADI", "!0A10000\r");
    peer.Reply("%0A0A080600", "!0A\r");
    peer.Reply("@0AN", "!0A0009\r");
    peer.Reply("@0AL", "!0A0000\r");
    for (const char number : {'0', '1', '2'})
        peer.Reply(std::string("@0AR000") + number, std::string("!0A04000") + number + "\r");
    const vorn::SerialPorts machine;
    const vorn::Clock clock;
    vorn::Program program({.ports = machine, .clock = clock});
    if (!program.Load())
        return;
    vorn::FormMain &main = program.Main;
    main.show();
    main.TextTimeOut->setText(QString::fromLatin1(timeOut));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &main, [&] {
        for (const std::string &heard : peer.Lines()) {
            if (heard == line)
                main.close();
        }
    });
    look.start(1);
    QMetaObject::invokeMethod(
        &main, [&] { begin(main); }, Qt::QueuedConnection);
    for (;;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// A folder for files that the process of a case writes and the test looks at. That process begins the test
/// again, and so must be told where it is.
class SharedFolder final
{
public:
    SharedFolder()
    {
        if (const char *told = std::getenv(Name)) {
            path_ = told;
            return;
        }
        std::string pattern = (std::filesystem::temp_directory_path() / "vorn-closing.XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
        ::setenv(Name, path_.c_str(), 1);
        owned_ = true;
    }
    ~SharedFolder()
    {
        if (!owned_)
            return;
        ::unsetenv(Name);
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    SharedFolder(const SharedFolder &) = delete;
    SharedFolder &operator=(const SharedFolder &) = delete;

    std::filesystem::path File(const char *name) const { return path_ / name; }
    std::ptrdiff_t Files() const { return std::distance(std::filesystem::directory_iterator(path_), {}); }

private:
    static constexpr const char *Name = "VORN_TEST_FILES";
    std::filesystem::path path_;
    bool owned_ = false;
};

/// Shows a module and chooses a file by an entry of the menu.
void ChooseFile(vorn::FormMain &main, QAction *entry, const std::filesystem::path &path)
{
    main.Nodes.Add("KeyCOM003", "_0003!!0A7206", "(0A) 7206", "vorn4ico", "vorn4icoS");
    main.Nodes.Select("_0003!!0A7206");
    main.SetPage("_0003!!0A7206");
    entry->setEnabled(true);
    entry->trigger();
    auto *look = new QTimer(&main);
    QObject::connect(look, &QTimer::timeout, look, [look, path] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        look->stop();
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->setText(QString::fromStdString(path.string()));
        QTest::keyClick(name, Qt::Key_Return);
    });
    look->start(1);
}

} // namespace

TEST(ClosingDeathTest, DuringATransaction)
{
    EXPECT_EXIT(CloseWhenHeard("$012", "30000", [](vorn::FormMain &main) { main.trans("$012", false); }),
                ::testing::ExitedWithCode(0), "");
}

TEST(ClosingDeathTest, DuringATransactionThatMayNotYield)
{
    EXPECT_EXIT(CloseWhenHeard("$012", "30000",
                               [](vorn::FormMain &main) {
                                   main.NoYield = true;
                                   main.trans("$012", false);
                               }),
                ::testing::ExitedWithCode(0), "");
}

TEST(ClosingDeathTest, DuringTheReadyWait)
{
    EXPECT_EXIT(
        CloseWhenHeard("$052", "5", [](vorn::FormMain &main) { vorn::WaitModuleReady(main, "05", false); }),
        ::testing::ExitedWithCode(0), "");
}

TEST(ClosingDeathTest, DuringTheRefresh)
{
    EXPECT_EXIT(CloseWhenHeard("#0A", "5",
                               [](vorn::FormMain &main) {
                                   main.Nodes.Add("KeyCOM003", "_0003!!0A7209", "(0A) 7209", "vorn4ico",
                                                  "vorn4icoS");
                                   main.Nodes.Select("_0003!!0A7209");
                                   main.NodeLeftClick = true;
                                   main.TreeView1_NodeClick("_0003!!0A7209");
                               }),
                ::testing::ExitedWithCode(0), "");
}

/// What the file held before stays, and nothing lies beside it.
TEST(ClosingDeathTest, DuringTheSavingOfAConfiguration)
{
    const SharedFolder folder;
    const std::filesystem::path path = folder.File("file.txt");
    std::ofstream(path) << "old";
    EXPECT_EXIT(CloseWhenHeard("@0ARH", "30000",
                               [&](vorn::FormMain &main) { ChooseFile(main, main.VORNSaveSet, path); }),
                ::testing::ExitedWithCode(0), "");
    std::string text;
    std::ifstream(path) >> text;
    EXPECT_EQ(text, "old");
    EXPECT_EQ(folder.Files(), 1);
}

/// The records that came are in the workbook.
TEST(ClosingDeathTest, DuringTheTransferOfRecordsToASilentModule)
{
    const SharedFolder folder;
    vorn::WriteEmptyWorkbook(folder.File("Mem.ory"), vorn::OwnSheetTitles());
    EXPECT_EXIT(CloseWhenHeard(
                    "@0AR0003", "30000",
                    [&](vorn::FormMain &main) {
                        vorn::SetProgramDirectory(QString::fromStdString(folder.File("").string()));
                        main.Nodes.Add("KeyCOM003", "_0003!!0A7224M", "(0A) 7224M", "vorn4ico", "vorn4icoS");
                        main.Nodes.Select("_0003!!0A7224M");
                        main.SetPage("_0003!!0A7224M");
                        main.findChild<QPushButton *>(QStringLiteral("CmdTransferData"))->click();
                    }),
                ::testing::ExitedWithCode(0), "");
    const auto sheet = vorn::ReadRecordSheet(folder.File("Memory.xls"), vorn::RecordKind::Standard);
    ASSERT_EQ(sheet.Rows(), 3U);
    EXPECT_EQ(std::get<std::string>(sheet.Cell(2, 2)), "+0.02");
}

TEST(ClosingDeathTest, DuringTheLoadingOfAConfiguration)
{
    const PortsFolder folder;
    const std::filesystem::path path = folder.Root() / "file.txt";
    for (const char *value : {"7206", "080600", "MOMENTARY", "+05.000", "-05.000"})
        std::ofstream(path, std::ios::app) << std::string(24, ' ') << value << "\r\n";
    EXPECT_EXIT(CloseWhenHeard("@0AEAM", "30000",
                               [&](vorn::FormMain &main) { ChooseFile(main, main.VORNLoadSet, path); }),
                ::testing::ExitedWithCode(0), "");
}
