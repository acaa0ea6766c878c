// How the pages look, at the usual font size and at one and a half of it, on a light and on a dark palette:
// nothing is cut off, and no page is wider than the window at its start size. With VORN_PICTURES set to a
// folder, a picture of each page is left there.

#include "support/Looks.h"
#include "support/RackOfOne.h"

#include "logger/RecordWorkbook.h"
#include "platform/ProgramDirectory.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <gtest/gtest.h>

#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTemporaryDir>

namespace
{

class PageLookTest : public ::testing::TestWithParam<Look>, public RackOfOne
{
protected:
    /// What is cut off of the page on show, and whether it is too wide at the usual font.
    std::string CutOff()
    {
        std::string cut = PartsCutOff(*main().Frame1);
        const auto *scroll = main().Frame1->findChild<QScrollArea *>(QStringLiteral("PageScroll"));
        const int beyond = scroll->horizontalScrollBar()->maximum();
        if (GetParam().scale == 1.0 && beyond > 0)
            cut += " the page by " + std::to_string(beyond);
        return cut;
    }

    void Look(Operator &op, const std::string &key, const std::string &parent)
    {
        op.Gui([&] {
            main().Nodes.Add(parent, key, key, "vorn4ico", "vorn4icoS");
            main().Nodes.SetExpanded("KeyCOM002", true);
        });
        Choose(op, key);
        op.WaitFor(
            [&] { return !main().Frame1->isHidden() && Status().find("Polling") != std::string::npos; },
            "the refresh");
        ExpectWhole(op, vorn::NodeKey(key).model() + key.substr(5, 2));
    }
    /// Nothing of what is on show is cut off.
    void ExpectWhole(Operator &op, const std::string &name)
    {
        op.Gui([&] {
            LayOut();
            EXPECT_EQ(CutOff(), "") << name;
            TakePicture(main(), GetParam(), name);
        });
    }
};

class PageArrangementTest : public ::testing::Test, public RackOfOne
{
protected:
    QPoint Place(const char *name)
    {
        const auto *control = Find(name);
        return control->mapTo(&main(), QPoint(0, 0));
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Looks, PageLookTest, ::testing::ValuesIn(Looks), NameOfLook);

TEST_P(PageLookTest, OfModulesIsWhole)
{
    const AsSeen asSeen(GetParam());
    std::string rack;
    int address = 1;
    std::vector<std::string> keys;
    for (const vorn::ModelRow &row : vorn::AllModels()) {
        if (row.IsCard() || row.page == vorn::PageName::None)
            continue;
        const std::string text = vorn::PadLeft(vorn::Hex(static_cast<std::uint32_t>(address++)), 2, '0');
        rack += (rack.empty() ? "" : "\nmodule ") + std::string(row.model) + " address=" + text;
        keys.push_back("_0002!!" + text + std::string(row.model));
    }
    Rack(rack);
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("500")); });
        for (const std::string &key : keys)
            Look(op, key, "KeyCOM002");
    });
}

TEST_P(PageLookTest, OfSlotsAndChannelsIsWhole)
{
    const AsSeen asSeen(GetParam());
    std::string rack = "3900E address=01\n";
    std::vector<const vorn::ModelRow *> cards;
    for (const vorn::ModelRow &row : vorn::AllModels()) {
        if (row.IsCard())
            cards.push_back(&row);
    }
    constexpr std::size_t Slots = 8;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        if (i == Slots)
            rack += "module 3900E address=02\n";
        rack += "slot " + std::to_string(i % Slots) + " " + std::string(cards[i]->model) + "\n";
    }
    Rack(rack);
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("500"));
            for (const char *unit : {"_0002!!013900", "_0002!!023900"})
                main().Nodes.Add("KeyCOM002", unit, unit, "vorn5ico", "vorn5icoS");
        });
        for (std::size_t i = 0; i < cards.size(); ++i) {
            const std::string address = i < Slots ? "01" : "02";
            const std::string unit = "_0002!!" + address + "3900";
            const std::string slot =
                "_0002" + std::to_string(i % Slots) + "!" + address + std::string(cards[i]->model);
            Look(op, slot, unit);
            if (cards[i]->channelPage != vorn::PageName::None)
                Look(op, vorn::ChannelKey(slot, '1'), slot);
        }
    });
}

TEST_P(PageLookTest, OfTheLoggersTabsIsWhole)
{
    const AsSeen asSeen(GetParam());
    const QTemporaryDir files;
    vorn::SetProgramDirectory(files.path());
    const std::string folder = files.path().toStdString();
    vorn::RecordWorkbook book(folder + "/Memory.xls", vorn::OwnSheetTitles());
    constexpr int Records = 400;
    book.Begin(vorn::RecordKind::Standard, Records);
    for (int i = 0; i < Records; ++i)
        book.Add({i, i % 8, "+" + std::to_string(i * i % 1000 / 10) + "." + std::to_string(i % 10)});
    book.Finish();
    Rack("7224M address=0A memory=FF021003C");
    Operate([&](Operator &op) {
        Look(op, "_0002!!0A7224M", "KeyCOM002");
        for (const char *tab : {"Memory", "Limits", "Records"}) {
            op.Gui([&] {
                auto *strip = Find<QTabBar>("TabStrip1");
                strip->setCurrentIndex(strip->currentIndex() + 1);
            });
            AwaitActions(op);
            ExpectWhole(op, std::string("7224M-") + tab);
        }
        op.Click(Find("CmdMemoryDataRead"));
        AwaitActions(op);
        ExpectWhole(op, "7224M-Plot");
    });
    vorn::SetProgramDirectory({});
}

TEST_F(PageArrangementTest, CalibrationButtonsOfOneWidthStandInOneRowWhereThereIsRoom)
{
    Rack("7203 address=0A range=0E");
    Operate([&](Operator &op) {
        Open(op, "_0002!!0A7203");
        op.Gui([&] {
            const QSize start = main().size();
            main().resize(1200, 900);
            LayOut();
            for (const char *button : {"CmdGSpan", "CmdGCJC"}) {
                EXPECT_EQ(Place(button).y(), Place("CmdGZero").y());
                EXPECT_NEAR(Find(button)->width(), Find("CmdGZero")->width(), 1);
            }
            main().resize(start);
            LayOut();
            EXPECT_EQ(Place("CmdGSpan").y(), Place("CmdGZero").y());
            EXPECT_EQ(Place("CmdGCJC").x(), Place("CmdGZero").x()) << "in the next row";
        });
    });
}

TEST_F(PageArrangementTest, FieldsOfAllFramesOfAPageStandInOneColumn)
{
    Rack("3900E address=0A\nslot 2 3923 range=08");
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM002", "_0002!!0A3900", "(0A) 3900", "vorn5ico", "vorn5icoS");
            main().Nodes.Add("_0002!!0A3900", "_0002210A3923", "CH 1", "vorn5sico", "vorn5sicoS");
        });
        Choose(op, "_0002210A3923");
        op.Gui([&] {
            LayOut();
            for (const char *field : {"LabSDataFormatLab", "LabChannelValue", "HAlarmType", "HAlarmOutSlot"})
                EXPECT_EQ(Place(field).x(), Place("LabSRangeLab").x()) << field;
        });
    });
}
