// How the wizard looks in each of its modes: nothing is cut off, and the reference value stands in the gap of
// the instruction. With VORN_PICTURES set to a folder, a picture of each is left there.

#include "support/LateBus.h"
#include "support/Looks.h"
#include "support/ProgramRun.h"

#include "calibration/FormCalibration.h"
#include "platform/WidgetText.h"

#include <gtest/gtest.h>

#include <QPushButton>

namespace
{

struct ModeCase {
    const char *key, *button, *tag;
    const char *reading; ///< label that shows what the module tells; empty for none
};

const ModeCase Modes[] = {
    {"_0002!!017203", "CmdGZero", "Zero", "LabZSv"},
    {"_0002!!017203", "CmdGSpan", "Span", "LabZSv"},
    {"_0002!!017203", "CmdGCJC", "CJC", "LabCJCv"},
    {"_0002!!027218", "CmdG0V", "0V", ""},
    {"_0002!!027218", "CmdG10V", "10V", ""},
    {"_0002!!027218", "CmdGStartup", "Start", ""},
    {"_0002!!037231", "CmdAO4mA", "4mA", ""},
    {"_0002!!037231", "CmdAO20mA", "20mA", ""},
    {"_0002!!037231", "CmdAOStartup", "Start", "LabStartup"},
    {"_00020!043923H", "CmdSSpan", "Span", "LabZSv"},
};

class CalibrationLookTest : public ::testing::TestWithParam<Look>, public ProgramRun
{
protected:
    LateBus bus_{ports.Link(2), "module 7203 address=01 range=0E\n"
                                "module 7218 address=02\n"
                                "module 7231 address=03 range=31 output0=12.000\n"
                                "module 3900E address=04\n"
                                "slot 0 3923H"};

    vorn::FormCalibration *Form() { return Find<vorn::FormCalibration>("FormCalibration"); }

    /// Opens the wizard and waits until it shows what its module tells.
    void Open(Operator &op, const ModeCase &mode)
    {
        Choose(op, mode.key);
        op.Gui([&] { Find<QPushButton>(mode.button)->click(); });
        op.WaitFor(
            [&] {
                return qobject_cast<vorn::FormCalibration *>(QApplication::activeModalWidget()) != nullptr;
            },
            "the wizard");
        if (*mode.reading)
            op.WaitFor([&] { return !Text(mode.reading).empty(); }, mode.reading);
    }

    /// Whether the reference reaches into the words behind the gap.
    bool IsReferenceInGap()
    {
        if (!Form()->LabZSv->isVisible())
            return true;
        const QString line = Form()->LabZS->text();
        const auto behind = line.indexOf(QStringLiteral("to"));
        const int end = Form()->LabZS->fontMetrics().horizontalAdvance(line.left(behind));
        return Form()->LabZSv->geometry().right() < end;
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Looks, CalibrationLookTest, ::testing::ValuesIn(Looks), NameOfLook);

TEST_P(CalibrationLookTest, OfEachModeIsWhole)
{
    const AsSeen asSeen(GetParam());
    Operate([&](Operator &op) {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("500"));
            main().Nodes.Add("KeyCOM002", "_0002!!043900", "(04) 3900", "vorn5ico", "vorn5icoS");
            for (const char *key : {"_0002!!017203", "_0002!!027218", "_0002!!037231"})
                main().Nodes.Add("KeyCOM002", key, key, "vorn4ico", "vorn4icoS");
            main().Nodes.Add("_0002!!043900", "_00020!043923H", "(S0) 3923H", "vorn5cico", "vorn5cicoS");
        });
        for (const ModeCase &mode : Modes) {
            Open(op, mode);
            op.Gui([&] {
                LayOut();
                EXPECT_EQ(PartsCutOff(*Form()), "") << mode.button;
                EXPECT_TRUE(IsReferenceInGap()) << mode.button;
                TakePicture(*Form(), GetParam(), vorn::NodeKey(mode.key).model() + "-" + mode.tag);
            });
            op.CloseForm("FormCalibration");
            AwaitActions(op);
        }
    });
}
