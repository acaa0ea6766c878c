// Saving and loading when something goes wrong, or somebody is in a hurry: files that can't be, modules that
// fall silent, ports that go, clicks in the middle.

#include "support/ConfigurationRun.h"
#include "support/LateBus.h"

#include "protocol/Registers.h"
#include "shell/JobProgress.h"
#include "shell/TreeView.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QProgressBar>
#include <QStatusBar>
#include <QStyleOptionProgressBar>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>

#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <mutex>

namespace
{

const std::string Saved7206 = FileOf({{"Module Name", "7206"},
                                      {"Configuration Status", "080600"},
                                      {"Alarm Status", "LATCH"},
                                      {"High Alarm", "+05.000"},
                                      {"Low Alarm", "-05.000"}});

class ConfigurationTroubleTest : public ConfigurationTest
{
protected:
    /// Chooses a file of that name, and does something between the choice and the reading or writing.
    void ChooseAnd(Operator &op, QAction *entry, const char *name, const std::function<void()> &meanwhile)
    {
        const bool saving = entry == main().VORNSaveSet;
        op.Trigger(entry);
        op.AnswerFile(
            saving ? "Save As ---" : "Load As ---", "7206.txt", Path(name),
            [&](QFileDialog &dialog) { QObject::connect(&dialog, &QDialog::finished, &dialog, meanwhile); });
    }

    void ExpectSaveFault(Operator &op, const std::string &name, const std::string &reason)
    {
        op.AnswerBox(name + " could not be written !\n\n" + reason, 16, "Save As ---");
        op.AnswerBox(SaveFault, 16, SaveFaultTitle);
        AwaitActions(op);
    }
    void ExpectLoadFault(Operator &op, const std::string &name, const std::string &reason)
    {
        op.AnswerBox(name + " could not be read !\n\n" + reason, 16, "Load As ---");
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        AwaitActions(op);
    }

    /// Files in the test's folder.
    std::vector<std::string> Folder() const
    {
        std::vector<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder_.path().toStdString()))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }

    /// A peer that gives these lines an answer, and refuses all others; one of them may be told to `Fail`.
    void FailAt(const Lines &lines, const std::string &answer)
    {
        Peer();
        peer_->OnLine([this, lines, answer](const std::string &line, const RawPeer::Writer &write) {
            const std::lock_guard lock(mutex_);
            if (line == failing_)
                write(failure_);
            else
                write(std::ranges::count(lines, line) > 0 ? answer : "?0A\r");
        });
    }
    void Fail(const std::string &line, const std::string &failure)
    {
        const std::lock_guard lock(mutex_);
        failing_ = line;
        failure_ = failure;
    }
    void TearDown() override { peer_.reset(); } // it asks for what fails

    static bool Writes(const std::string &line)
    {
        return line.starts_with("%") || line.starts_with("@0AEA") || line.starts_with("@0ADA") ||
               line.starts_with("@0AHI") || line.starts_with("@0ALO");
    }

private:
    std::mutex mutex_;
    std::string failing_;
    std::string failure_;
};

} // namespace

// Files.

TEST_F(ConfigurationTroubleTest, AFullDiskKeepsTheOldFile)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    Put(Path("file.txt"), "old");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206", "5000");
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit full = before;
        full.rlim_cur = 100;
        bus.Hold("@0ARL");
        Save(op, "7206", Path("file.txt"));
        op.WaitFor([&] { return !bus.Held().empty(); }, "the last record");
        setrlimit(RLIMIT_FSIZE, &full);
        bus.Release();
        op.AwaitMessage("the full disk");
        setrlimit(RLIMIT_FSIZE, &before);
        ExpectSaveFault(op, Path("file.txt"), "File too large");
        EXPECT_EQ(Read(Path("file.txt")), "old");
        EXPECT_EQ(Folder(), Lines{"file.txt"}) << "nothing else is left behind";
    });
}

TEST_F(ConfigurationTroubleTest, ADeviceThatIsFullStaysADevice)
{
    if (!std::filesystem::is_character_file("/dev/full"))
        GTEST_SKIP() << "this machine has no device that is always full";
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    std::filesystem::create_symlink("/dev/full", Path("full.txt"));
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        Save(op, "7206", Path("full.txt"));
        ExpectSaveFault(op, Path("full.txt"), "No space left on device");
        op.Trigger(main().Save);
        op.AnswerFile("Save As ---", "VORN.txt", Path("full.txt"));
        op.AnswerBox(Path("full.txt") + " could not be written !\n\nNo space left on device", 16,
                     "Save As ---");
        AwaitActions(op);
        EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
        EXPECT_TRUE(std::filesystem::is_symlink(Path("full.txt")));
    });
}

/// Opening a pipe that nobody reads would wait for good.
TEST_F(ConfigurationTroubleTest, APipeIsNoFile)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    ASSERT_EQ(mkfifo(Path("pipe.txt").c_str(), 0600), 0);
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        Save(op, "7206", Path("pipe.txt"));
        ExpectSaveFault(op, Path("pipe.txt"), "It is no file.");
        op.Trigger(main().Save);
        op.AnswerFile("Save As ---", "VORN.txt", Path("pipe.txt"));
        op.AnswerBox(Path("pipe.txt") + " could not be written !\n\nIt is no file.", 16, "Save As ---");
        AwaitActions(op);
        Load(op, "7206", Path("pipe.txt"));
        ExpectLoadFault(op, Path("pipe.txt"), "It is no file.");
    });
}

TEST_F(ConfigurationTroubleTest, AFolderIsNoFile)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        const auto makeFolder = [path = Path("file.txt")] {
            std::filesystem::remove(path);
            std::filesystem::create_directory(path);
        };
        ChooseAnd(op, main().VORNSaveSet, "file.txt", makeFolder);
        ExpectSaveFault(op, Path("file.txt"), "Filename refers to a directory");
        std::filesystem::remove(Path("file.txt"));
        Put(Path("file.txt"), Saved7206);
        bus.Forget();
        ChooseAnd(op, main().VORNLoadSet, "file.txt", makeFolder);
        ExpectLoadFault(op, Path("file.txt"), "It is no file.");
        EXPECT_TRUE(std::ranges::none_of(bus.Lines(), Writes));
    });
}

/// The module isn't asked for what can't be kept, and nothing is made or removed in the folder.
TEST_F(ConfigurationTroubleTest, AFileThatCantBeWrittenIsToldBeforeTheModuleIsAsked)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        std::filesystem::create_directory(Path("folder"));
        op.Trigger(main().VORNSaveSet);
        op.AwaitBox("the dialog");
        bus.Forget();
        op.AnswerFile("Save As ---", "7206.txt", Path("folder/file.txt"), [&](QFileDialog &dialog) {
            QObject::connect(&dialog, &QDialog::finished, &dialog,
                             [path = Path("folder")] { std::filesystem::remove(path); });
        });
        op.AwaitMessage("the reason");
        EXPECT_EQ(bus.Lines(), Lines{});
        ExpectSaveFault(op, Path("folder/file.txt"), "No such file or directory");
        EXPECT_EQ(Folder(), Lines{});
    });
}

TEST_F(ConfigurationTroubleTest, ALinkToAFileThatIsYetToBeStaysALink)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    std::filesystem::create_symlink(Path("target.txt"), Path("link.txt"));
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        Save(op, "7206", Path("link.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        EXPECT_TRUE(std::filesystem::is_symlink(Path("link.txt")));
        EXPECT_EQ(Read(Path("target.txt")).size(), 52U * 5);
    });
}

TEST_F(ConfigurationTroubleTest, AFileOfMoreThanAMegabyteIsTold)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    Put(Path("large.txt"), Saved7206 + std::string(1 << 20, 'x'));
    Put(Path("long.txt"), Padded("Module Name", 24) + std::string(1'000'000, 'x') + "7206\r\n");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        bus.Forget();
        Load(op, "7206", Path("large.txt"));
        ExpectLoadFault(op, Path("large.txt"), "It is too large for a configuration file.");
        EXPECT_TRUE(std::ranges::none_of(bus.Lines(), Writes));
        bus.Forget();
        Load(op, "7206", Path("long.txt"));
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        EXPECT_EQ(std::ranges::count(bus.Lines(), "%0A0Axxxxxx"), 1) << "the line goes out once more";
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTroubleTest, LinesEndAsOtherSystemsEndThem)
{
    for (const char *end : {"\n", "\r"}) {
        LateBus bus(ports.Link(2), "module 7206 address=0A restart=0");
        std::string text = Saved7206;
        for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;)
            text.replace(at, 2, end);
        text.pop_back();
        Put(Path("file.txt"), text);
        Operate([&](Operator &op) {
            Show(op, "_0002!!0A7206");
            bus.Forget();
            Load(op, "7206", Path("file.txt"));
            op.AnswerBox(LoadDone, 64, LoadDoneTitle);
            Lines writes = bus.Lines();
            std::erase_if(writes, [](const std::string &line) { return !Writes(line); });
            EXPECT_EQ(writes, (Lines{"%0A0A080600", "@0AEAL", "@0AHI+05.000", "@0ALO-05.000"}));
            AwaitActions(op);
        });
    }
}

TEST_F(ConfigurationTroubleTest, BytesThatAreNoTextAreRefusedByTheModule)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A restart=0");
    std::string text = Saved7206;
    text.replace(52 + 24, 6, std::string("\0\xFF\x01\t\n\0", 6));
    Put(Path("file.txt"), text);
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        bus.Forget();
        Load(op, "7206", Path("file.txt"));
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        const Lines sent = bus.Lines();
        EXPECT_EQ(std::ranges::count_if(sent, Writes), 1);
        EXPECT_EQ(std::ranges::count(sent, "%0A0A" + std::string("\0\xFF\x01\t", 4)), 1);
        AwaitActions(op);
    });
}

// Modules.

/// Answers that end a walk: a refusal, silence, and what isn't meant for a setting.
constexpr const char *Failures[] = {"?0A\r", "", ">0A\r"};

/// At each record in turn a module of all its lines fails.
TEST_F(ConfigurationTroubleTest, TheFirstRecordThatFailsEndsASave)
{
    const Lines queries{"$0A2", "@0ADI", "@0ARH", "@0ARL", "$0AB", "$0A3", "$0A5"};
    FailAt(queries, "!0A1000000\r");
    Operate([&](Operator &op) {
        Show(op, "_0003!!0A7212D");
        for (const char *failure : Failures) {
            for (std::size_t i = 0; i < queries.size(); ++i) {
                Fail(queries[i], failure);
                Save(op, "7212D", Path("file.txt"));
                op.AwaitMessage("the fault");
                Fail({}, {});
                EXPECT_EQ(peer_->Lines().back(), queries[i]) << "nothing is asked behind it";
                op.AnswerBox(SaveFault, 16, SaveFaultTitle);
                const std::string text = Read(Path("file.txt"));
                EXPECT_EQ(text.size(), 52 * (1 + i)) << queries[i] << " " << failure;
                EXPECT_EQ(text.substr(0, 52), FileOf({{"Module Name", "7212D"}}));
                AwaitActions(op);
            }
        }
    });
}

TEST_F(ConfigurationTroubleTest, TheFirstRecordThatFailsEndsALoad)
{
    const Lines writes{"%0A0A080600", "@0AEAL", "@0AHI+05.000", "@0ALO-05.000"};
    FailAt(writes, "!0A\r");
    Put(Path("file.txt"), Saved7206);
    Operate([&](Operator &op) {
        Show(op, "_0003!!0A7206");
        for (const char *failure : Failures) {
            for (std::size_t i = 0; i < writes.size(); ++i) {
                Fail(writes[i], failure);
                op.Trigger(main().VORNLoadSet);
                op.AwaitBox("the dialog");
                peer_->Forget();
                op.AnswerFile("Load As ---", "7206.txt", Path("file.txt"));
                op.AwaitMessage("the fault");
                Fail({}, {});
                EXPECT_EQ(peer_->Lines().back(), writes[i]) << "nothing is sent behind it";
                EXPECT_EQ(peer_->Lines().size(), 2 * i + 1) << writes[i] << " " << failure;
                op.AnswerBox(LoadFault, 16, LoadFaultTitle);
                AwaitActions(op);
            }
        }
    });
}

TEST_F(ConfigurationTroubleTest, AShortAnswerLeavesItsValueShort)
{
    Peer();
    peer_->Reply("$0A2", "!0A08\r");
    peer_->Reply("@0ADI", "!0A\r");
    peer_->Reply("@0ARH", "!\r\r");
    peer_->Reply("@0ARL", "!0A+05.000\r");
    Operate([&](Operator &op) {
        Show(op, "_0003!!0A7206", "250");
        Save(op, "7206", Path("file.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        EXPECT_EQ(Read(Path("file.txt")), FileOf({{"Module Name", "7206"},
                                                  {"Configuration Status", "08"},
                                                  {"Alarm Status", ""},
                                                  {"High Alarm", ""},
                                                  {"Low Alarm", "+05.000"}}));
        AwaitActions(op);
    });
}

/// An answer without its end leaves the reply before it in place: that must not be filed under this label.
TEST_F(ConfigurationTroubleTest, AnAnswerWithoutItsEndIsNone)
{
    Peer();
    peer_->Reply("$0A2", "!0A080600\r");
    peer_->Reply("@0ADI", "!0A200");
    Put(Path("load.txt"), Saved7206);
    peer_->Reply("%0A0A080600", "!0A\r");
    peer_->Reply("@0AEAL", "!0");
    Operate([&](Operator &op) {
        Show(op, "_0003!!0A7206");
        Save(op, "7206", Path("file.txt"));
        op.AnswerBox(SaveFault, 16, SaveFaultTitle);
        EXPECT_EQ(Read(Path("file.txt")),
                  FileOf({{"Module Name", "7206"}, {"Configuration Status", "080600"}}));
        AwaitActions(op);
        Load(op, "7206", Path("load.txt"));
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        EXPECT_EQ(std::ranges::count(peer_->Lines(), "@0AHI+05.000"), 0);
        AwaitActions(op);
    });
}

/// An unexpected error silences the bus for good: nothing is filed, and nothing counts as written.
TEST_F(ConfigurationTroubleTest, ASilencedBusIsAFault)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A restart=0");
    Put(Path("load.txt"), Saved7206);
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206", "5000");
        for (QAction *entry : {main().VORNSaveSet, main().VORNLoadSet}) {
            op.Trigger(entry);
            op.AwaitBox("the dialog");
            bus.Forget();
            op.Gui([&] {
                main().ReplyText = "!0A080600"; // the last one that came
                main().TextTimeOut->setText(QStringLiteral("long"));
            });
            const bool saving = entry == main().VORNSaveSet;
            op.AnswerFile(saving ? "Save As ---" : "Load As ---", "7206.txt",
                          Path(saving ? "file.txt" : "load.txt"));
            op.AnswerBox(saving ? SaveFault : LoadFault, 16, saving ? SaveFaultTitle : LoadFaultTitle);
            EXPECT_EQ(bus.Lines(), Lines{});
            AwaitActions(op);
        }
        EXPECT_EQ(Read(Path("file.txt")), FileOf({{"Module Name", "7206"}}));
    });
}

TEST_F(ConfigurationTroubleTest, AReplyThatComesTooLateIsNotTakenForTheNextOne)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206", "250");
        bus.Hold("@0ARH");
        Save(op, "7206", Path("file.txt"));
        op.AwaitMessage("the fault");
        bus.Release();
        op.AnswerBox(SaveFault, 16, SaveFaultTitle);
        EXPECT_EQ(Read(Path("file.txt")).size(), 52U * 3);
        AwaitActions(op);
        Save(op, "7206", Path("file.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        EXPECT_EQ(Read(Path("file.txt")).size(), 52U * 5);
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTroubleTest, SlotTypesThatCameShortMatchNoFile)
{
    Peer();
    Put(Path("file.txt"),
        FileOf({{"Module Name", "3900"}, {"I/O type", "21000000"}, {"Configuration Status", "0640"}}));
    Operate([&](Operator &op) {
        Show(op, "_0003!!0A3900");
        for (const char *reply : {"!0A\r", "!0A21\r"}) {
            peer_->Reply("$0AT", reply);
            op.Trigger(main().VORNLoadSet);
            op.AwaitBox("the dialog");
            peer_->Forget();
            op.AnswerFile("Load As ---", "3900.txt", Path("file.txt"));
            op.AwaitMessage("the fault");
            EXPECT_EQ(peer_->Lines(), Lines{"$0AT"});
            op.AnswerBox(LoadFault, 16, LoadFaultTitle);
            AwaitActions(op);
        }
    });
}

/// With checksum a third slot is filed; the fourth then gets the last line once more.
TEST_F(ConfigurationTroubleTest, AUnitWithChecksumFilesThreeSlotsAndLoadsFour)
{
    Peer();
    peer_->OnLine([](const std::string &line, const RawPeer::Writer &write) {
        if (line.starts_with("$0AT"))
            write("!0A31313131CC\r");
        else if (line.starts_with("$0A2"))
            write("!0A0640CC\r");
        else if (line.starts_with("$0AS") && line.find('B') != std::string::npos)
            write("!0A31" + line.substr(4, 1) + line.substr(6, 1) + "CC\r");
        else
            write("!0ACC\r");
    });
    Operate([&](Operator &op) {
        Show(op, "_1003!!0A3900");
        Save(op, "3900", Path("file.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        std::vector<std::pair<std::string, std::string>> file{
            {"Module Name", "3900"}, {"I/O type", "31313131"}, {"Configuration Status", "0640"}};
        for (const char *at : {"00", "01", "02", "03", "10", "11", "12", "13", "20", "21", "22", "23"})
            file.emplace_back(std::string("S") + at[0] + "C" + at[1] + " 31 Configuration",
                              std::string("31") + at);
        EXPECT_EQ(Read(Path("file.txt")), FileOf(file));
        peer_->Forget();
        Load(op, "3900", Path("file.txt"));
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        Lines sent = peer_->Lines();
        std::erase_if(sent, [](const std::string &line) { return !line.starts_with("$0AS3"); });
        ASSERT_GE(sent.size(), 4U);
        for (std::size_t j = 0; j < 4; ++j)
            EXPECT_EQ(sent[j].substr(0, 12), "$0AS3C" + std::to_string(j) + "A3123");
        AwaitActions(op);
    });
}

// Clicks in the middle.

/// Two ports, a module of the same address and model on each. Whatever node the operator chooses meanwhile, a
/// walk stays with the module that it began with.
TEST_F(ConfigurationTroubleTest, AWalkStaysWithItsModule)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A restart=0");
    LateBus other(ports.Link(4), "module 7206 address=0A restart=0");
    Put(Path("load.txt"), Saved7206);
    Operate([&](Operator &op) {
        op.Gui([&] { main().Nodes.Add("KeyCOM004", "_0004!!0A7206", "(0A) 7206", "vorn4ico", "vorn4icoS"); });
        Show(op, "_0002!!0A7206", "30000");
        const std::function<void()> ways[] = {
            [&] { LeftClick("_0004!!0A7206"); },
            [&] { QTest::keyClick(main().TreeView1, Qt::Key_End); },
            [&] {
                LeftClick("KeyCOM004");
                main().ToolButton(vorn::FormMain::SearchButton)->trigger();
            },
        };
        for (const auto &way : ways) {
            for (QAction *entry : {main().VORNSaveSet, main().VORNLoadSet}) {
                const bool saving = entry == main().VORNSaveSet;
                bus.Hold(saving ? "@0ARH" : "@0AEAL"); // the refresh asks for neither
                if (saving)
                    Save(op, "7206", Path("file.txt"));
                else
                    Load(op, "7206", Path("load.txt"));
                op.WaitFor([&] { return !bus.Held().empty(); }, "the walk");
                op.Gui(way);
                op.Settle();
                bus.Forget();
                other.Forget();
                bus.Release();
                op.AwaitMessage("the end");
                EXPECT_EQ(other.Lines(), Lines{});
                EXPECT_EQ(bus.Lines(),
                          (saving ? Lines{"@0ARL"}
                                  : Lines{"$0A2", "@0AHI+05.000", "$0A2", "@0ALO-05.000", "$0A2"}));
                op.AnswerBox(saving ? SaveDone : LoadDone, 64, saving ? SaveDoneTitle : LoadDoneTitle);
                AwaitActions(op);
                Choose(op, "_0002!!0A7206");
            }
        }
    });
}

TEST_F(ConfigurationTroubleTest, APulledAdapterEndsASaveAndIsToldOnce)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    Put(Path("file.txt"), "old");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206", "5000");
        bus.Hold("@0ARH");
        Save(op, "7206", Path("file.txt"));
        op.WaitFor([&] { return !bus.Held().empty(); }, "the walk");
        bus.Pull();
        bus.Release();
        op.AwaitMessage("the port");
        EXPECT_EQ(Read(Path("file.txt")), "old") << "while the box is open";
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox(SaveFault, 16, SaveFaultTitle);
        AwaitActions(op);
        EXPECT_EQ(Read(Path("file.txt")).size(), 52U * 4);
        EXPECT_EQ(bus.Lines().back(), "@0ARH");
        bus.PlugIn();
        Choose(op, "_0002!!0A7206");
        Save(op, "7206", Path("file.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTroubleTest, TheToolbarAndThePopUpMenuDoTheSame)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A restart=0");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206", "5000");
        for (const bool popUp : {false, true}) {
            const auto choose = [&](QAction *button, QAction *entry) {
                if (!popUp)
                    return op.Trigger(button);
                op.Gui([&] { ClickNode("_0002!!0A7206", Qt::RightButton); });
                op.WaitFor([] { return QApplication::activePopupWidget() != nullptr; }, "the menu");
                op.Gui([&] {
                    EXPECT_TRUE(entry->isEnabled());
                    main().VORNModule->setActiveAction(entry);
                    QTest::keyClick(main().VORNModule, Qt::Key_Return);
                });
            };
            choose(main().ToolButton(vorn::FormMain::SaveSetButton), main().AVORNSaveSet);
            op.AnswerFile("Save As ---", "7206.txt", Path("file.txt"));
            op.AnswerBox(SaveDone, 64, SaveDoneTitle);
            AwaitActions(op);
            choose(main().ToolButton(vorn::FormMain::LoadSetButton), main().AVORNLoadSet);
            op.AnswerFile("Load As ---", "7206.txt", Path("file.txt"));
            op.AnswerBox(LoadDone, 64, LoadDoneTitle);
            AwaitActions(op);
        }
    });
}

// Progress.

/// Each reply comes only when the window has served an event behind its line: if it didn't, the walk would
/// end with a fault.
TEST_F(ConfigurationTroubleTest, TheWindowIsServedInEachTransaction)
{
    std::mutex mutex;
    std::condition_variable changed;
    Lines bars;
    Peer();
    Put(Path("load.txt"), Saved7206);
    bool walking = false;
    peer_->OnLine([&](const std::string &line, const RawPeer::Writer &write) {
        std::unique_lock lock(mutex);
        if (walking) {
            const std::size_t before = bars.size();
            QMetaObject::invokeMethod(
                &main(),
                [&, line] {
                    const std::lock_guard served(mutex);
                    const auto *bar = Find<QProgressBar>("StatusBar1_2");
                    bars.push_back(line + ": " + (bar ? bar->text().toStdString() : "nothing"));
                    changed.notify_all();
                },
                Qt::QueuedConnection);
            changed.wait_for(lock, Operator::Patience, [&] { return bars.size() > before; });
        }
        if (line == "@0ADI")
            write("!0A2000100\r");
        else if (line == "$0AT")
            write("!0A31FFFFFF\r");
        else
            write("!0A0640000\r");
    });
    const auto walk = [&](Operator &op, QAction *entry, const char *title, const std::string &offered,
                          const char *name) {
        op.Trigger(entry);
        op.AwaitBox(title);
        {
            const std::lock_guard lock(mutex);
            walking = true;
            bars.clear();
        }
        op.AnswerFile(title, offered, Path(name));
        op.AwaitMessage("the end");
        const std::lock_guard lock(mutex);
        walking = false;
    };
    Operate([&](Operator &op) {
        Show(op, "_0003!!0A7206", "30000");
        walk(op, main().VORNSaveSet, "Save As ---", "7206.txt", "file.txt");
        EXPECT_EQ(bars, (Lines{"$0A2: Configuration Status  1 / 4", "@0ADI: Alarm Status  2 / 4",
                               "@0ARH: High Alarm  3 / 4", "@0ARL: Low Alarm  4 / 4"}));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        walk(op, main().VORNLoadSet, "Load As ---", "7206.txt", "load.txt");
        EXPECT_EQ(bars,
                  (Lines{"%0A0A080600: Configuration Status  1 / 4", "$0A2: Configuration Status  1 / 4",
                         "@0AEAL: Alarm Status  2 / 4", "$0A2: Alarm Status  2 / 4",
                         "@0AHI+05.000: High Alarm  3 / 4", "$0A2: High Alarm  3 / 4",
                         "@0ALO-05.000: Low Alarm  4 / 4", "$0A2: Low Alarm  4 / 4"}));
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        AwaitActions(op);
        Put(Path("unit.txt"),
            FileOf({{"Module Name", "3900"}, {"I/O type", "31FFFFFF"}, {"Configuration Status", "0640"}}));
        Show(op, "_0003!!0A3900", "30000");
        walk(op, main().VORNLoadSet, "Load As ---", "3900.txt", "unit.txt");
        EXPECT_EQ(Lines(bars.begin(), bars.begin() + 4),
                  (Lines{"$0AT: I/O type  1 / 2", "%0A000640: Configuration Status  2 / 6",
                         "$0A2: Configuration Status  2 / 6", "$0AS0C0A0640: S0C0 31 Configuration  3 / 6"}));
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        AwaitActions(op);
    });
    peer_.reset(); // it asks for what ends here
}

TEST_F(ConfigurationTroubleTest, TheBarHasRoomForEveryRecord)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    Operate([&](Operator &op) {
        op.Gui([&] {
            const QFont font = QApplication::font();
            for (const double scale : {1.0, 1.5}) {
                QFont scaled = font;
                scaled.setPointSizeF(font.pointSizeF() * scale);
                QApplication::setFont(scaled);
                vorn::JobProgress progress(main());
                auto *bar = Find<QProgressBar>("StatusBar1_2");
                for (int i = 0; i < 99; ++i)
                    progress.Step("", 222);
                main().statusBar()->layout()->activate();
                QStyleOptionProgressBar option;
                option.initFrom(bar);
                option.textVisible = true;
                const int room =
                    bar->style()->subElementRect(QStyle::SE_ProgressBarContents, &option, bar).width();
                if (scale == 1.0) { // the window is as wide as at the start
                    auto *status = Find<QLabel>("StatusBar1_1");
                    main().NowStatus("Now Configuration is processing , Please wait moment....");
                    EXPECT_LE(status->fontMetrics().horizontalAdvance(status->text()), status->width());
                }
                for (const vorn::RegisterRow &row : vorn::AllRegisters()) {
                    for (const char *key : {"_0002!!0A7206", "_00022!0A3923", "_00022!0A3923H"}) {
                        progress.Step(vorn::RecordLabel(row.id, vorn::NodeKey(key), 4), 222);
                        EXPECT_LE(bar->fontMetrics().horizontalAdvance(bar->text()), room)
                            << bar->text().toStdString() << " at " << scale;
                    }
                }
            }
            QApplication::setFont(font);
        });
    });
}
