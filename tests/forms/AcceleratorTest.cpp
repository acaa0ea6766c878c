// Keys of the pages: each leads to one control, but where two told captions share a letter.

#include "support/ProgramRun.h"
#include "support/RackOfOne.h"
#include "support/RawPeer.h"

#include "protocol/ModelTable.h"
#include "shell/DIO.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>

#include <map>
#include <set>

namespace
{

using vorn::CaptionOf;

/// Captions with an accelerator that operators know by heart: they stay even where two of them share a
/// letter.
const std::set<std::string> Told{"&File",
                                 "&Tools",
                                 "&Help",
                                 "&Update",
                                 "&Data format :",
                                 "&Input range :",
                                 "&Output range",
                                 "&Input mode",
                                 "&Time Out",
                                 "&Pretix Char",
                                 "&Enable Gate",
                                 "&Enable gate :",
                                 "&Frequency gate :",
                                 "&TTL input",
                                 "&Photo input",
                                 "&External input",
                                 "&CH 0",
                                 "C&H 1",
                                 "&Initial value :",
                                 "Preset &mode :",
                                 "Preset &value :",
                                 "&Alarm mode :",
                                 "&High alarm value :",
                                 "H&iHi alarm value :",
                                 "STO&P",
                                 "STA&RT",
                                 "In&tegration time :",
                                 "Integration &Time :",
                                 "Input &Range :",
                                 "&Output Range",
                                 "&Slew Rate",
                                 "    &Zero Calibration",
                                 "    &Span Calibration",
                                 "   &Span Calibration",
                                 "    C&JC Calibration",
                                 "  &Offset Calibration",
                                 "  Sta&rtup Calibration",
                                 "  &Startup Calibration",
                                 "    &4 mA Calibration",
                                 "    &20 mA Calibration",
                                 "  LED   Displa&y",
                                 "&Channel Enable",
                                 "&Channel Disable",
                                 "U&pdate",
                                 "&Transfer data to host "};

bool IsTold(const std::string &caption)
{
    return Told.contains(caption) || caption.starts_with("DO ") || caption.starts_with("DI ");
}

/// Captions of what is to be seen, by their accelerator.
std::map<QKeySequence, std::vector<std::string>> Accelerators(vorn::FormMain &main)
{
    std::map<QKeySequence, std::vector<std::string>> captions;
    const auto note = [&](const std::string &caption) {
        const QKeySequence key = QKeySequence::mnemonic(vorn::ToQString(caption));
        if (!key.isEmpty())
            captions[key].push_back(caption);
    };
    for (const QAction *menu : main.menuBar()->actions())
        note(vorn::FromQString(menu->text()));
    for (const QWidget *control : main.Frame1->findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(control);
        const bool has = (label && label->buddy()) || qobject_cast<const QAbstractButton *>(control) ||
                         qobject_cast<const vorn::DIO *>(control);
        if (has && control->isVisible())
            note(CaptionOf(control));
    }
    return captions;
}

/// Clashes of which one caption at least is free to choose another letter.
std::string Clashes(vorn::FormMain &main)
{
    std::string clashes;
    for (const auto &[key, captions] : Accelerators(main)) {
        std::set<std::string> different(captions.begin(), captions.end());
        if (captions.size() < 2 || std::ranges::all_of(different, IsTold))
            continue;
        clashes += vorn::FromQString(key.toString()) + ":";
        for (const std::string &caption : captions)
            clashes += " '" + caption + "'";
        clashes += "; ";
    }
    return clashes;
}

class AcceleratorTest : public ::testing::Test, public RackOfOne
{
};

} // namespace

TEST_F(AcceleratorTest, LeadToOneControlOnEachPage)
{
    Rack("3900 address=20");
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("1")); });
        const auto look = [&](const std::string &key) {
            Choose(op, key);
            op.Gui([&] {
                // What a load or a button shows besides.
                if (vorn::Has(vorn::NodeKey(key).model(), vorn::Feature::Counters)) {
                    for (const char *frame : {"FrameFCdata", "FrameFC", "FrameFCf", "CmdCClearLatch"})
                        Find(frame)->show();
                    main().ArrangePage();
                }
                EXPECT_EQ(Clashes(main()), "") << key;
            });
        };
        const std::string unit = "_0002!!203900";
        op.Gui([&] { main().Nodes.Add("KeyCOM002", unit, "(20) 3900", "vorn5ico", "vorn5icoS"); });
        look("KeyCOM002");
        look(unit);
        for (const vorn::ModelRow &row : vorn::AllModels()) {
            const std::string model(row.model);
            if (row.page == vorn::PageName::None || row.kind == vorn::ModelKind::BaseUnit)
                continue;
            if (!row.IsCard()) {
                const std::string key = "_0002!!0A" + model;
                op.Gui([&] { main().Nodes.Add("KeyCOM002", key, "(0A) " + model, "vorn4ico", "vorn4icoS"); });
                look(key);
                continue;
            }
            const std::string slot = vorn::SlotKey(unit, '1', model);
            op.Gui([&] { main().Nodes.Add(unit, slot, "(S1) " + model, "vorn5cico", "vorn5cicoS"); });
            look(slot);
            if (row.channelPage == vorn::PageName::None)
                continue;
            const std::string channel = vorn::ChannelKey(slot, '0');
            op.Gui([&] { main().Nodes.Add(slot, channel, "CH 0", "vorn5sico", "vorn5sicoS"); });
            look(channel);
        }
    });
}
