#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "platform/SingleInstance.h"
#include "platform/WidgetText.h"
#include "shell/frmAbout.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QToolBar>
#include <QTreeWidget>

#include <cstdlib>
#include <fstream>

using Lines = std::vector<std::string>;

TEST(Start, ShowsTheMachinesPortsAndSelectsTheFirst)
{
    ProgramRun run;
    RawPeer two(run.ports.Link(2));
    RawPeer four(run.ports.Link(4));
    run.Operate([&](Operator &op) {
        op.Gui([&] {
            const auto &nodes = run.main().Nodes;
            EXPECT_EQ(nodes.Text("KeyPC"), "PC");
            EXPECT_EQ(nodes.Children("KeyPC"), (Lines{"KeyCOM002", "KeyCOM004"}));
            EXPECT_EQ(nodes.Text("KeyCOM002"), "COM2");
            EXPECT_EQ(nodes.Image("KeyPC"), "pc");
            EXPECT_EQ(nodes.Image("KeyCOM002"), "close");
            EXPECT_TRUE(nodes.IsExpanded("KeyPC"));
            EXPECT_FALSE(nodes.IsExpanded("KeyCOM002"));
            EXPECT_EQ(nodes.Selected(), "KeyCOM002");
            EXPECT_EQ(vorn::TagOf(run.main().Frame1), "KeyCOM002");
            EXPECT_EQ(run.main().PortBaudList, (Lines{"32", "34"}));
            EXPECT_TRUE(run.Shown("FramePort"));
            EXPECT_EQ(run.Text("LabCOM_5"), " COM2");
            EXPECT_EQ(run.main().CmbPBaudrate->currentIndex(), 3);
        });
        EXPECT_TRUE(two.Bytes().empty()) << "the probe sends nothing";
    });
}

TEST(Start, TheTimeOutFollowsThePlatform)
{
    for (const auto &[platform, text] : {std::pair{2, "80"}, {1, "100"}, {0, "100"}}) {
        ProgramRun run(platform);
        RawPeer peer(run.ports.Link(2));
        run.Operate([&](Operator &op) { EXPECT_EQ(op.Gui([&] { return run.Text("TextTimeOut"); }), text); });
    }
}

TEST(Start, AMachineWithoutPortsIsToldAndShowsNoWindow)
{
    ProgramRun run;
    std::filesystem::create_symlink("/nowhere", run.ports.Link(5));
    std::ofstream(run.ports.Root() / "file") << "text";
    std::filesystem::create_symlink(run.ports.Root() / "file", run.ports.Link(6));
    const vorn::SerialPorts machine;
    const vorn::Clock clock;
    vorn::Program program({.ports = machine, .clock = clock});
    bool loaded = true;
    Operator::Run([&](Operator &op) {
        QMetaObject::invokeMethod(
            qApp, [&] { loaded = program.Load(); }, Qt::QueuedConnection);
        op.AnswerBox("Host PC COMport is Disable!", 16, "VORN Utility");
        op.Settle();
    });
    EXPECT_FALSE(loaded);
    EXPECT_FALSE(program.Main.isVisible());
}

TEST(Start, ASecondInstanceSeesTheFirst)
{
    ProgramRun run;
    ::setenv("XDG_RUNTIME_DIR", run.ports.Root().c_str(), 1);
    {
        const vorn::SingleInstance first;
        EXPECT_FALSE(first.PrevInstance());
        const vorn::SingleInstance second;
        EXPECT_TRUE(second.PrevInstance());
    }
    const vorn::SingleInstance next;
    EXPECT_FALSE(next.PrevInstance()) << "what an ended instance leaves behind blocks nobody";
}

namespace
{

class WindowTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(2)};
};

} // namespace

TEST_F(WindowTest, HasItsCaptionAndStartSize)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            EXPECT_EQ(main().windowTitle(), QStringLiteral("VORN 7000/3900 Series Setup / Utility Program"));
            EXPECT_EQ(main().width(), 600);
            EXPECT_EQ(main().minimumSize(), QSize(600, 480));
        });
    });
}

TEST_F(WindowTest, MenusCarryTheirCaptions)
{
    const std::vector<std::pair<const char *, const char *>> captions{
        {"Save", "&Save"},
        {"exit", "&Exit"},
        {"Search", "&Search"},
        {"Terminal", "&Terminal"},
        {"Data_Scope", "&Data Scope"},
        {"VORNLoadSet", "&Download configuration file to set environment"},
        {"VORNSaveSet", "&Save configuration file"},
        {"CSearch", "Search"},
        {"CTerminal", "Terminal"},
        {"CData_Scope", "Data Scope"},
        {"AVORNLoadSet", "Download configuration file to set environment"},
        {"AVORNSaveSet", "Save configuration file"},
        {"VORNabout", "&About VORN Utility.."},
        {"VORNHelp", "&On Line Help"}};
    Operate([&](Operator &op) {
        op.Gui([&] {
            for (const auto &[name, caption] : captions) {
                const auto *action = main().findChild<QAction *>(QString::fromLatin1(name));
                ASSERT_TRUE(action) << name;
                EXPECT_EQ(action->text(), QString::fromLatin1(caption));
            }
            EXPECT_EQ(main().Tools->title(), QStringLiteral("&Tools"));
            EXPECT_EQ(main().File->title(), QStringLiteral("&File"));
            EXPECT_EQ(main().Help->title(), QStringLiteral("&Help"));
        });
    });
}

TEST_F(WindowTest, ToolbarButtonsStandInTheirPlaces)
{
    const std::vector<std::pair<const char *, const char *>> buttons{{"TSaveFile", "Save"},
                                                                     {"", ""},
                                                                     {"TSearch", "Search"},
                                                                     {"TTerminal", "Terminal"},
                                                                     {"TScope", "Data scope"},
                                                                     {"", ""},
                                                                     {"TSaveSet", "Save Configuration"},
                                                                     {"TLoadSet", "Load Configuration"},
                                                                     {"", ""},
                                                                     {"THelp", "Help"}};
    Operate([&](Operator &op) {
        op.Gui([&] {
            ASSERT_EQ(main().Toolbar1->actions().size(), static_cast<qsizetype>(buttons.size()));
            for (int i = 1; i <= 10; ++i) {
                const QAction *button = main().ToolButton(i);
                const auto &[key, tip] = buttons[static_cast<std::size_t>(i - 1)];
                EXPECT_EQ(button->isSeparator(), *key == '\0') << i;
                EXPECT_EQ(button->objectName(), QString::fromLatin1(key)) << i;
                if (!button->isSeparator()) {
                    // What is not available yet says so behind its name.
                    EXPECT_EQ(button->toolTip().section(QLatin1Char(':'), 0, 0), QString::fromLatin1(tip))
                        << i;
                    EXPECT_FALSE(button->icon().isNull()) << i;
                }
            }
        });
    });
}

TEST_F(WindowTest, TheListsHaveTheirColumns)
{
    struct Column {
        const char *caption;
        int twips;
    };
    const auto expectColumns = [](const QTreeWidget &list, const std::vector<Column> &columns) {
        ASSERT_EQ(list.columnCount(), static_cast<int>(columns.size()));
        for (int i = 0; i < list.columnCount(); ++i) {
            const Column &column = columns[static_cast<std::size_t>(i)];
            EXPECT_EQ(vorn::FromQString(list.headerItem()->text(i)), column.caption);
            EXPECT_GE(list.columnWidth(i), column.twips / 15) << column.caption;
        }
    };
    Operate([&](Operator &op) {
        op.Gui([&] {
            expectColumns(
                static_cast<const QTreeWidget &>(*main().ListView1),
                {{"Init State", 560}, {"Address (Hex)", 900}, {"Model", 600}, {"Description", 4600}});
            expectColumns(*Find<QTreeWidget>("ListView3900"),
                          {{"Slot", 450}, {"Module", 1500}, {"Description", 4600}});
        });
    });
}

TEST_F(WindowTest, ThePortPageHasItsTexts)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            EXPECT_EQ(Find<QGroupBox>("FramePort")->title(), QStringLiteral("Host COM Setting"));
            const std::pair<const char *, const char *> texts[] = {
                {"LabPort_0", "Serial Port"},  {"LabPort_1", "&Baudrate"}, {"LabPort_2", "Data Bits"},
                {"LabPort_3", "Stop Bits"},    {"LabPort_4", "Parity"},    {"LabPort_5", "&Time Out"},
                {"LabPort_7", "&Pretix Char"}, {"LabCOM_2", " 8"},         {"LabCOM_3", " 1"},
                {"LabCOM_4", " None"},         {"LabPort_6", "ms"}};
            for (const auto &[name, text] : texts)
                EXPECT_EQ(Text(name), text) << name;
            EXPECT_EQ(Find<QLabel>("LabPort_1")->buddy(), Find("CmbPBaudrate"));
            EXPECT_EQ(Find<QLabel>("LabPort_5")->buddy(), Find("TextTimeOut"));
            EXPECT_EQ(Find<QLabel>("LabPort_7")->buddy(), Find("TextPretix"));
            EXPECT_EQ(Text("TextPretix"), "");
            const auto *speeds = Find<QComboBox>("CmbPBaudrate");
            Lines captions;
            for (int i = 0; i < speeds->count(); ++i)
                captions.push_back(vorn::FromQString(speeds->itemText(i)));
            EXPECT_EQ(captions, (Lines{"1200  bps", "2400  bps", "4800  bps", "9600  bps", " 19.2  kbps",
                                       " 38.4  kbps", " 57.6  kbps", "115.2 kbps"}));
            EXPECT_EQ(speeds->currentIndex(), 3);
        });
    });
}

TEST_F(WindowTest, ThePCPageNamesVersionAndModules)
{
    Operate([&](Operator &op) {
        Choose(op, "KeyPC");
        op.Gui([&] {
            EXPECT_TRUE(Shown("LabPC"));
            EXPECT_FALSE(Shown("FramePort"));
            EXPECT_EQ(Status(), "Welcome to use VORN Utility");
            const std::string text = Text("LabPC");
            EXPECT_TRUE(text.starts_with("Version 1.50\n\n   for Windows 95/98/NT4.0/2000/XP\n\n"
                                         "   Support VORN Module\n\n   VORN-7000 Series\n"));
            EXPECT_NE(text.find("\n\n   VORN-3900/485 Series\n"), std::string::npos);
            for (const char *model : {"7203D", "7221+", "7224+", "7282N", "3923H", "3962"})
                EXPECT_NE(text.find(model), std::string::npos) << model;
            EXPECT_EQ(text.back(), '\n');
        });
    });
}

TEST_F(WindowTest, TheAboutBoxHasAVersionOfItsOwn)
{
    Operate([&](Operator &op) {
        op.Trigger(main().VORNabout);
        op.CloseForm("frmAbout", [](QWidget &form) {
            EXPECT_EQ(form.windowTitle(), QStringLiteral("About VORN Utility Software"));
            EXPECT_EQ(form.findChild<QLabel *>(QStringLiteral("lblVersion"))->text(),
                      QStringLiteral("Version : 2.00"));
            EXPECT_EQ(form.findChild<QLabel *>(QStringLiteral("lblTitle"))->text(),
                      QStringLiteral("VORN Utility Software"));
        });
        op.Trigger(main().VORNabout);
        op.WaitFor([] { return QApplication::activeModalWidget() != nullptr; }, "the box");
        op.Click(op.Gui([] { return QApplication::activeModalWidget()->findChild<QPushButton *>(); }));
        op.WaitFor([] { return QApplication::activeModalWidget() == nullptr; }, "the end of the box");
    });
}

TEST_F(WindowTest, TimeOutAndPrefixSelectTheirTextOnFocus)
{
    Operate([&](Operator &op) {
        auto *timeOut = Find<QLineEdit>("TextTimeOut");
        auto *prefix = Find<QLineEdit>("TextPretix");
        op.Gui([&] { prefix->setText(QStringLiteral("@@")); });
        op.Click(timeOut);
        op.WaitFor([&] { return timeOut->selectedText() == QStringLiteral("80"); }, "the selection");
        op.Press(timeOut, Qt::Key_Tab);
        op.WaitFor([&] { return prefix->selectedText() == QStringLiteral("@@"); }, "the selection");
    });
}

TEST_F(WindowTest, EveryNamedControlTellsAssistiveTechnologyItsName)
{
    Operate([&](Operator &op) {
        op.Gui([&] {
            for (const QWidget *control : main().findChildren<QWidget *>()) {
                const bool field =
                    qobject_cast<const QLineEdit *>(control) || qobject_cast<const QComboBox *>(control);
                const QString name = control->objectName();
                if (field && !name.isEmpty() && !name.startsWith(QLatin1String("qt_"))) {
                    EXPECT_FALSE(control->accessibleName().isEmpty()) << name.toStdString();
                }
            }
        });
    });
}
