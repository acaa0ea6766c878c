// How the pages look, at the usual font size and at one and a half of it, on a light and on a dark palette:
// nothing is cut off, and no page is wider than the window at its start size. With VORN_PICTURES set to a
// folder, a picture of each page is left there.

#include "support/RackOfOne.h"

#include "logger/RecordWorkbook.h"
#include "platform/ProgramDirectory.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTemporaryDir>

#include <cstdlib>

namespace
{

struct Look {
    const char *name;
    double scale; ///< of the font
    bool dark;
};

void PrintTo(const Look &look, std::ostream *out)
{
    *out << look.name;
}

constexpr Look Looks[] = {{"light", 1, false}, {"large", 1.5, false}, {"dark", 1, true}};

QPalette DarkPalette()
{
    QPalette palette(QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    return palette;
}

/// The application's font and palette for as long as it lives.
class AsSeen final
{
public:
    explicit AsSeen(const Look &look) : font_(QApplication::font()), palette_(QApplication::palette())
    {
        QFont font = font_;
        font.setPointSizeF(font.pointSizeF() * look.scale);
        QApplication::setFont(font);
        if (look.dark)
            QApplication::setPalette(DarkPalette());
    }
    ~AsSeen()
    {
        QApplication::setFont(font_);
        QApplication::setPalette(palette_);
    }
    AsSeen(const AsSeen &) = delete;
    AsSeen &operator=(const AsSeen &) = delete;

private:
    QFont font_;
    QPalette palette_;
};

/// Whether a control needs more room than it has. Entries and lists scroll what they hold.
bool IsCutOff(const QWidget *control)
{
    const auto *label = qobject_cast<const QLabel *>(control);
    if (label && label->wordWrap())
        return false;
    if (!label && !qobject_cast<const QAbstractButton *>(control))
        return false;
    const QSize needed = control->minimumSizeHint();
    return control->width() < needed.width() || control->height() < needed.height();
}

class PageLookTest : public ::testing::TestWithParam<Look>, public RackOfOne
{
protected:
    /// What is cut off of the page on show, and whether it is too wide at the usual font.
    std::string CutOff()
    {
        std::string cut;
        for (const QWidget *control : main().Frame1->findChildren<QWidget *>()) {
            if (control->isVisible() && !control->objectName().isEmpty() && IsCutOff(control))
                cut += " " + control->objectName().toStdString();
        }
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
            for (int pass = 0; pass < 3; ++pass) // a frame's layout asks for that of the frame around it
                QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
            EXPECT_EQ(CutOff(), "") << name;
            if (const char *folder = std::getenv("VORN_PICTURES"))
                main().grab().save(QStringLiteral("%1/%2-%3.png")
                                       .arg(QString::fromLocal8Bit(folder),
                                            QString::fromLatin1(GetParam().name),
                                            QString::fromStdString(name)));
        });
    }
};

std::string NameOf(const ::testing::TestParamInfo<Look> &info)
{
    return info.param.name;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Looks, PageLookTest, ::testing::ValuesIn(Looks), NameOf);

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
