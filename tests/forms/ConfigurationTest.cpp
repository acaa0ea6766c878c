#include "support/ConfigurationRun.h"
#include "support/LateBus.h"

#include "platform/ProgramDirectory.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <cstdio>

namespace
{

struct RoundTrip {
    const char *model;
    const char *settings; ///< other than those of a fresh module
};

void PrintTo(const RoundTrip &trip, std::ostream *out)
{
    *out << trip.model;
}

// The alarms of 7282 are both on: without checksum one that is off is not switched off again.
const RoundTrip RoundTrips[] = {
    {"7203", "range=10 alarm=2 high=+300.00 low=-010.00"},
    {"7203D", "range=00 alarm=1 high=+12.000 low=-12.000"},
    {"7206", "range=0C alarm=1 high=+100.00 low=-100.00"},
    {"7209", "range=27"},
    {"7212D", "range=09 alarm=2 high=+4.0000 low=-4.0000 mapping=1 inputlow=-2.5000 inputhigh=+2.5000"},
    {"7218", "range=03 alarm=2 high=+400.00 low=-400.00"},
    {"7221", "range=0A mask=5A"},
    {"7224", "range=12 mask=81"},
    {"7224M", "range=04 mask=3C"},
    {"7231", "range=32"},
    {"7252", ""},
    {"7256", ""},
    {"7258", ""},
    {"7272", ""},
    {"7282", "range=50 stage=1 gate=0 max0=00001000 max1=00002000 running0=1 filter=1 widthhigh=00012 "
             "alarm0=1 alarm1=1"},
    {"7282D", "range=51 stage=1 filter=1 levelhigh=24 alarm=2 led=1"},
    {"7282N", "range=50 gate=1 max1=0000FFFF running1=1 widthlow=00100 alarm=1 led=2"},
};

class ConfigurationRoundTripTest : public ConfigurationTest, public ::testing::WithParamInterface<RoundTrip>
{
};

const RoundTrip Cards[] = {
    {"3921", "range=27 mask=05 high1=+100.00 highenabled1=1 highmode1=L highout1=S1C3"},
    {"3923", "range=0A mask=0F high7=+0.5000 low7=-0.5000 lowenabled7=1 lowmode7=M"},
    {"3925", "range=10 mask=11 low6=-050.00 highout6=S0C0"},
    {"3923H", "range0=01 range7=0A mask=C3 high0=+05.000 highenabled0=1 highmode0=M"},
    {"3931", "range0=31 range1=32 range3=30"},
};

class ConfigurationCardTest : public ConfigurationTest, public ::testing::WithParamInterface<RoundTrip>
{
};

std::string NameOf(const ::testing::TestParamInfo<RoundTrip> &info)
{
    return info.param.model;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Modules, ConfigurationRoundTripTest, ::testing::ValuesIn(RoundTrips), NameOf);
INSTANTIATE_TEST_SUITE_P(Cards, ConfigurationCardTest, ::testing::ValuesIn(Cards), NameOf);

/// What one module holds, another one of its kind takes, and tells it again.
TEST_P(ConfigurationRoundTripTest, GivesTheSameFile)
{
    const std::string model = GetParam().model;
    Rack(model + " address=0A restart=0 " + GetParam().settings + "\nmodule " + model +
         " address=0B restart=0");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A" + model);
        Save(op, model, Path("first.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        Show(op, "_0002!!0B" + model);
        Save(op, model, Path("before.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        if (*GetParam().settings) {
            EXPECT_NE(Read(Path("before.txt")), Read(Path("first.txt"))) << "nothing differs to begin with";
        }
        Load(op, model, Path("first.txt"));
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        AwaitActions(op);
        Save(op, model, Path("second.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(Read(Path("second.txt")), Read(Path("first.txt")));
        EXPECT_EQ(Read(Path("first.txt")).substr(24, model.size()), model);
    });
}

/// A unit in INIT state has the address 00 that a replayed file gives it. Only the first two slots are in the
/// file of a unit without checksum.
TEST_P(ConfigurationCardTest, GivesTheSameFileBehindItsBaseUnit)
{
    const std::string card = GetParam().model;
    Rack("3900 address=0A restart=0\nslot 0 " + card + " " + GetParam().settings +
         "\nslot 1 3944\nslot 2 3946\nslot 3 3953" + "\nmodule 3900 address=0B restart=0\nslot 0 " + card +
         "\nslot 1 3944\nslot 2 3946\nslot 3 3953");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A3900");
        Save(op, "3900", Path("first.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        Show(op, "_0002!!0B3900");
        Load(op, "3900", Path("first.txt"));
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        AwaitActions(op);
        Save(op, "3900", Path("second.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(Read(Path("second.txt")), Read(Path("first.txt")));
        EXPECT_GT(Read(Path("first.txt")).size(), 52U * 6);
    });
}

/// With checksum three slots are in the file.
TEST_F(ConfigurationTest, AUnitWithChecksumGivesTheSameFileOfThreeCards)
{
    Rack(
        "3900 address=0A checksum=yes restart=0\nslot 0 3921 range=27 mask=05 low2=+010.00 lowenabled2=1\n"
        "slot 1 3923H range0=01 range7=0A high3=+05.000\nslot 2 3931 range1=32\nslot 3 3944\n"
        "module 3900 address=0B checksum=yes restart=0\nslot 0 3921\nslot 1 3923H\nslot 2 3931\nslot 3 3944");
    Operate([&](Operator &op) {
        Show(op, "_1002!!0A3900");
        Save(op, "3900", Path("first.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        Show(op, "_1002!!0B3900");
        Save(op, "3900", Path("before.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        EXPECT_NE(Read(Path("before.txt")), Read(Path("first.txt"))) << "nothing differs to begin with";
        Load(op, "3900", Path("first.txt"));
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        AwaitActions(op);
        Save(op, "3900", Path("second.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(Read(Path("second.txt")), Read(Path("first.txt")));
        EXPECT_EQ(Read(Path("first.txt")).size(), 52U * (3 + 2 + 3 * 6 + 2 + 8 + 3 * 16 + 4));
    });
}

TEST_F(ConfigurationTest, AFileIsReadByPeople)
{
    Rack("7212D address=0A range=08 alarm=1 high=+05.000 low=-05.000 mapping=1");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7212D");
        Save(op, "7212D", Path("file"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        const std::string text = Read(Path("file.txt"));
        EXPECT_EQ(text.substr(0, 52 * 6), FileOf({{"Module Name", "7212D"},
                                                  {"Configuration Status", "080600"},
                                                  {"Alarm Status", "MOMENTARY"},
                                                  {"High Alarm", "+05.000"},
                                                  {"Low Alarm", "-05.000"},
                                                  {"Linear Mapping", "1"}}));
        EXPECT_EQ(text.substr(52 * 6, 24), Padded("Linear Source", 24));
        EXPECT_EQ(text.size(), 52U * 8);
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTest, ABaseUnitsFileFollowsTheLengthOfItsReplies)
{
    Peer();
    peer_->OnLine([](const std::string &line, const RawPeer::Writer &write) {
        if (line == "$0AT")
            write("!0A21624231\r");
        else if (line == "$0A2")
            write("!0A0640XX\r");
        else if (line.starts_with("$0AS") || line == "$0AF")
            write("!0A00000000\r");
    });
    Operate(
        [&](Operator &op) {
            Show(op, "_0003!!0A3900");
            peer_->Forget();
            Save(op, "3900", Path("file.txt"));
            op.AnswerBox(SaveDone, 64, SaveDoneTitle);
            AwaitActions(op);
            Lines expected{"$0AT", "$0A2", "$0AS0B", "$0AS06"};
            std::vector<std::pair<std::string, std::string>> records{{"Module Name", "3900"},
                                                                     {"I/O type", "21624231"},
                                                                     {"Configuration Status", "0640"},
                                                                     {"S0 21 Configuration", "0000"},
                                                                     {"S0 21 Channel Status", "00"}};
            const std::tuple<const char *, const char *, std::size_t> passes[] = {
                {"A%", "Alarm Mode", 1}, {"R%C", "Connection", 4}, {"R%U", "Limit", 7}};
            for (const auto &[query, label, width] : passes) {
                for (const char j : {'0', '1', '2'}) {
                    for (const char k : {'L', 'H'}) {
                        std::string line = std::string("$0AS0C") + j + query;
                        line[line.find('%')] = k;
                        expected.push_back(line);
                        records.emplace_back(std::string("S0C") + j + " 21 " + k + " " + label,
                                             std::string(width, '0'));
                    }
                }
            }
            Lines sent = peer_->Lines();
            sent.resize(std::min(sent.size(), expected.size()));
            EXPECT_EQ(sent, expected)
                << "slots 0 to 2 by a reply of nine characters, and cards without records left out";
            EXPECT_EQ(Read(Path("file.txt")), FileOf(records));
        });
}

TEST_F(ConfigurationTest, CancelWritesAndSendsNothingAndHoldsTheRefresh)
{
    Rack("7206 address=0A");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        for (QAction *entry : {main().VORNSaveSet, main().VORNLoadSet}) {
            op.Trigger(entry);
            op.AnswerFile(entry == main().VORNSaveSet ? "Save As ---" : "Load As ---", "7206.txt", "");
            AwaitActions(op);
            op.Gui([&] { EXPECT_TRUE(main().PauseRefresh); });
        }
        rack().ClearTrace();
        op.Settle();
        EXPECT_TRUE(rack().Commands(2).empty());
        Choose(op, "_0002!!0A7206");
        op.WaitFor([&] { return std::ranges::count(rack().Commands(2), "#0A") > 1; }, "the refresh");
    });
}

TEST_F(ConfigurationTest, TheDialogsOfferTheModelsNameInTheProgramsFolder)
{
    Rack("7206 address=0A");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        op.Trigger(main().VORNSaveSet);
        op.AnswerFile("Save As ---", "7206.txt", "", [](QFileDialog &dialog) {
            EXPECT_EQ(dialog.directory().absolutePath(), vorn::ProgramDirectory());
            EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Save configuration file(*.txt)")});
            EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("txt"));
        });
        Choose(op, "_0002!!0A7206");
        op.Trigger(main().VORNLoadSet);
        op.AnswerFile("Load As ---", "7206.txt", "", [](QFileDialog &dialog) {
            EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Load configuration file(*.txt)")});
        });
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTest, AModelWithoutRecordsGivesItsNameAlone)
{
    Rack("3900 address=0A\nslot 0 3923");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A3900");
        op.Gui([&] {
            main().Nodes.Add("_0002!!0A3900", "_00020!0A3923", "(S0) 3923", "vorn5cico", "vorn5cicoS");
        });
        Choose(op, "_00020!0A3923");
        op.Gui([&] { main().VORNSaveSet->setEnabled(true); }); // the menu lets it through for cards as well
        Save(op, "3923", Path("file.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(Read(Path("file.txt")), FileOf({{"Module Name", "3923"}}));
        rack().ClearTrace();
        op.Gui([&] { main().VORNLoadSet->setEnabled(true); });
        Load(op, "3923", Path("file.txt"));
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTest, AModelWithAConsoleGivesItsNameAlone)
{
    Rack("7254 address=0A");
    Operate([&](Operator &op) {
        AddNode(op, "_0002!!0A7254");
        op.Gui([&] { LeftClick("_0002!!0A7254"); });
        op.CloseForm("Form7254");
        AwaitActions(op);
        Save(op, "7254", Path("file.txt"));
        op.AnswerBox(SaveDone, 64, SaveDoneTitle); // behind it the console opens again
        EXPECT_EQ(Read(Path("file.txt")), FileOf({{"Module Name", "7254"}}));
        op.CloseForm("Form7254");
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTest, AFileOfAnotherModelSendsNothing)
{
    Rack("7206 address=0A");
    Put(Path("other.txt"), FileOf({{"Module Name", "7203"}, {"Configuration Status", "000600"}}));
    Put(Path("empty.txt"), "");
    Put(Path("binary.txt"), std::string("\0\x01\xff\r7206\n\0", 10));
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        for (const char *name : {"other.txt", "empty.txt", "binary.txt"}) {
            op.Trigger(main().VORNLoadSet);
            op.AwaitBox("the dialog");
            rack().ClearTrace();
            op.AnswerFile("Load As ---", "7206.txt", Path(name));
            op.AwaitMessage("the fault");
            EXPECT_EQ(rack().Commands(2), Lines{}) << name;
            op.AnswerBox(LoadFault, 16, LoadFaultTitle);
            AwaitActions(op);
        }
    });
}

TEST_F(ConfigurationTest, ARefusedRecordEndsTheLoadAndWhatWasWrittenStays)
{
    Rack("7206 address=0A range=08 restart=0");
    Put(Path("file.txt"), FileOf({{"Module Name", "7206"},
                                  {"Configuration Status", "0C0600"},
                                  {"Alarm Status", "LATCH"},
                                  {"High Alarm", "rubbish"},
                                  {"Low Alarm", "-05.000"}}));
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        rack().ClearTrace();
        Load(op, "7206", Path("file.txt"));
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        AwaitActions(op);
        EXPECT_EQ(std::ranges::count(rack().Commands(2), "@0AHIrubbish"), 1);
        EXPECT_EQ(std::ranges::count(rack().Commands(2), "@0ALO-05.000"), 0);
        EXPECT_EQ(rack().Value(2, "0A", "range"), "0C");
        op.Gui(
            [&] { EXPECT_EQ(Text("CmdAlarmsetting"), "LATCH") << "the page shows what the module holds"; });
    });
}

TEST_F(ConfigurationTest, OtherCardsThanTheFilesAreAFault)
{
    Peer();
    peer_->Reply("$0AT", "!0A21000000\r");
    Put(Path("file.txt"),
        FileOf({{"Module Name", "3900"}, {"I/O type", "23000000"}, {"Configuration Status", "0640"}}));
    Operate([&](Operator &op) {
        Show(op, "_0003!!0A3900", "150");
        op.Trigger(main().VORNLoadSet);
        op.WaitFor([] { return QApplication::activeModalWidget() != nullptr; }, "the dialog");
        peer_->Forget();
        op.AnswerFile("Load As ---", "3900.txt", Path("file.txt"));
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        ASSERT_FALSE(peer_->Lines().empty());
        EXPECT_EQ(peer_->Lines().front(), "$0AT");
        AwaitActions(op);
        const Lines sent = peer_->Lines();
        EXPECT_TRUE(std::ranges::none_of(sent, [](const std::string &line) { return line.front() == '%'; }));
        peer_->Reply("$0AT", "?0A\r");
        Load(op, "3900", Path("file.txt"));
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTest, PastTheEndOfAShortFileTheLastValueGoesOut)
{
    Peer();
    peer_->OnLine([](const std::string &line, const RawPeer::Writer &write) {
        write(line == "$0AT" ? "!0A31310000\r" : "!0A\r");
    });
    Put(Path("file.txt"), FileOf({{"Module Name", "3900"},
                                  {"I/O type", "31310000"},
                                  {"Configuration Status", "0640"},
                                  {"S0C0 31 Configuration", "3100"},
                                  {"S0C1 31 Configuration", "3200"}}));
    Operate([&](Operator &op) {
        Show(op, "_0003!!0A3900");
        op.Trigger(main().VORNLoadSet);
        op.WaitFor([] { return QApplication::activeModalWidget() != nullptr; }, "the dialog");
        peer_->Forget();
        op.AnswerFile("Load As ---", "3900.txt", Path("file.txt"));
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        Lines sent = Sent({"$0A2"});
        sent.resize(10);
        EXPECT_EQ(sent,
                  (Lines{"$0AT", "%0A000640", "$0AS0C0A3100", "$0AS0C1A3200", "$0AS0C2A3200", "$0AS0C3A3200",
                         "$0AS1C0A3200", "$0AS1C1A3200", "$0AS1C2A3200", "$0AS1C3A3200"}));
        AwaitActions(op);
    });
}

// Files that aren't there, or can't be.

TEST_F(ConfigurationTest, AFileThatCantBeReadOrWrittenIsToldWithItsName)
{
    Rack("7206 address=0A");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206");
        Put(Path("gone.txt"), "x");
        op.Trigger(main().VORNLoadSet);
        op.AnswerFile("Load As ---", "7206.txt", Path("gone.txt"),
                      [&](QFileDialog &dialog) { // it vanishes between the choice and the reading
                          QObject::connect(&dialog, &QDialog::finished, &dialog,
                                           [path = Path("gone.txt")] { std::remove(path.c_str()); });
                      });
        op.AnswerBox(Path("gone.txt") + " could not be read !\n\nNo such file or directory", 16,
                     "Load As ---");
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        AwaitActions(op);
        rack().ClearTrace();
        Save(op, "7206", "/proc/vorn.txt");
        op.AnswerBox("/proc/vorn.txt could not be written !\n\nNo such file or directory", 16, "Save As ---");
        op.AnswerBox(SaveFault, 16, SaveFaultTitle);
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTest, AnOldFileStaysUntilTheNewOneIsThere)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A");
    Put(Path("file.txt"), "old");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206", "30000");
        bus.Hold("@0ARH");
        Save(op, "7206", Path("file.txt"));
        op.WaitFor([&] { return !bus.Held().empty(); }, "the walk");
        EXPECT_EQ(Read(Path("file.txt")), "old");
        op.Gui([&] {
            EXPECT_EQ(Status(), "Now Save Configuration to file, Please wait moment....");
            const auto *bar = Find<QProgressBar>("StatusBar1_2");
            ASSERT_NE(bar, nullptr);
            EXPECT_EQ(bar->text().toStdString(), "High Alarm  3 / 4");
            EXPECT_EQ(main().cursor().shape(), Qt::WaitCursor);
        });
        bus.Release();
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        EXPECT_EQ(Read(Path("file.txt")).size(), 52U * 5);
        AwaitActions(op);
        op.Gui([&] { EXPECT_EQ(Find("StatusBar1_2"), nullptr); });
    });
}

// In a hurry.

TEST_F(ConfigurationTest, ClicksInTheMiddleWaitForTheEnd)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A\nmodule 7206 address=0B");
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206", "30000");
        op.Gui([&] { main().Nodes.Add("KeyCOM002", "_0002!!0B7206", "(0B) 7206", "vorn4ico", "vorn4icoS"); });
        bus.Hold("@0ARH");
        Save(op, "7206", Path("file.txt"));
        op.WaitFor([&] { return !bus.Held().empty(); }, "the walk");
        op.Gui([&] {
            LeftClick("_0002!!0B7206");
            main().VORNSaveSet->trigger();
            Find<QPushButton>("CmdMUpdate")->click();
        });
        bus.Release();
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        AwaitActions(op);
        EXPECT_EQ(Read(Path("file.txt")).size(), 52U * 5);
        const Lines sent = bus.Lines();
        EXPECT_TRUE(std::ranges::none_of(sent, [](const std::string &line) { return line.front() == '%'; }))
            << "the update was meant for the page that has gone";
        op.Gui([&] { EXPECT_EQ(main().PageOnShow(), "_0002!!0B7206"); });
    });
}

TEST_F(ConfigurationTest, APulledAdapterIsToldOnceAndEndsTheWalk)
{
    LateBus bus(ports.Link(2), "module 7206 address=0A restart=0");
    Put(Path("file.txt"), FileOf({{"Module Name", "7206"},
                                  {"Configuration Status", "080600"},
                                  {"Alarm Status", "LATCH"},
                                  {"High Alarm", "+05.000"},
                                  {"Low Alarm", "-05.000"}}));
    Operate([&](Operator &op) {
        Show(op, "_0002!!0A7206", "250");
        bus.Hold("@0AEAL");
        Load(op, "7206", Path("file.txt"));
        op.WaitFor([&] { return !bus.Held().empty(); }, "the walk");
        bus.Pull();
        bus.Release();
        op.AnswerBox("Invalid Port Number !", 16, "Invalid Port Number");
        op.AnswerBox(LoadFault, 16, LoadFaultTitle);
        AwaitActions(op);
        const Lines sent = bus.Lines();
        EXPECT_EQ(std::ranges::count(sent, "@0AHI+05.000"), 0);
    });
}

// The list of modules.

TEST_F(ConfigurationTest, TheListHoldsPortsModulesAndSlots)
{
    ports.Link(4);
    Rack("7206 address=0A");
    RawPeer fourth(ports.Link(4));
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().SetPortBaud(4, 7);
            main().Nodes.Add("KeyCOM002", "_0002!!0A7206", "(0A) 7206", "vorn4ico", "vorn4icoS");
            main().Nodes.Add("KeyCOM002", "_0002!!0B3900", "(0B) 3900", "vorn5ico", "vorn5icoS");
            main().Nodes.Add("_0002!!0B3900", "_00021!0B3923", "(S1) 3923", "vorn5cico", "vorn5cicoS");
            main().Nodes.Add("_00021!0B3923", "_0002100B3923", "(C0)", "vorn5sico", "vorn5sicoS");
        });
        op.Trigger(main().Save);
        op.AnswerFile("Save As ---", "VORN.txt", Path("list.txt"), [](QFileDialog &dialog) {
            EXPECT_EQ(dialog.nameFilters(),
                      QStringList{QStringLiteral("Save all of connectde modules to file(*.txt)")});
        });
        AwaitActions(op);
        EXPECT_EQ(Read(Path("list.txt")), "COM2\t9600  bps\r\n\t(0A) 7206\r\n\t(0B) 3900\r\n\t\t(S1) 3923\r\n"
                                          "COM4\t115.2 kbps\r\n");
        op.Gui([&] { main().PortBaudList.clear(); });
        op.Trigger(main().ToolButton(vorn::FormMain::SaveFileButton));
        op.AnswerFile("Save As ---", "VORN.txt", Path("list.txt"));
        op.WaitFor([&] { return Read(Path("list.txt")).starts_with("COM2\t\r\n"); }, "an empty baud text");
        op.Trigger(main().Save);
        op.AnswerFile("Save As ---", "VORN.txt", "");
        AwaitActions(op);
    });
}

TEST_F(ConfigurationTest, AListThatCantBeWrittenIsTold)
{
    Rack("7206 address=0A");
    Operate([&](Operator &op) {
        op.Trigger(main().Save);
        op.AnswerFile("Save As ---", "VORN.txt", "/proc/vorn.txt");
        op.AnswerBox("/proc/vorn.txt could not be written !\n\nNo such file or directory", 16, "Save As ---");
        AwaitActions(op);
    });
}
