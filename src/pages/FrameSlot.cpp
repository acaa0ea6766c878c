#include "pages/FrameSlot.h"

#include "shell/Controls.h"

#include <QComboBox>
#include <QPushButton>

namespace vorn
{

namespace
{

constexpr int ChoiceCharacters = 20;

} // namespace

FrameSlot::FrameSlot(FormMain &main) : PageFrame(main, "FrameSlot", "Slot Setting")
{
    const auto list = [this](const char *name, const char *accessibleName) {
        return MakeChoice(this, QString::fromLatin1(name), QString::fromLatin1(accessibleName),
                          ChoiceCharacters);
    };
    CmbSRange = list("CmbSRange", "Range");
    CmbSFormat = list("CmbSFormat", "Data format");
    CmbSTimeSlewRate = list("CmbSTimeSlewRate", "Integration time or slew rate");
    LabSRangeLab = MakeValue(this, QStringLiteral("LabSRangeLab"), QStringLiteral("Range"));
    LabSDataFormatLab = MakeValue(this, QStringLiteral("LabSDataFormatLab"), QStringLiteral("Data format"));
    LabS_time_slewrate = MakeValue(this, QStringLiteral("LabS_time_slewrate"),
                                   QStringLiteral("Integration time or slew rate"));
    LabSRange = MakeLabel(this, QStringLiteral("LabSRange"), "Input &Range :", CmbSRange);
    LabSTimeSlewrate =
        MakeLabel(this, QStringLiteral("LabSTimeSlewrate"), "Integration &Time :", CmbSTimeSlewRate);
    CmdSUpdate = MakeButton(this, QStringLiteral("CmdSUpdate"), "&Update");
    CmdSZero = MakeButton(this, QStringLiteral("CmdSZero"), "    &Zero Calibration");
    CmdSSpan = MakeButton(this, QStringLiteral("CmdSSpan"), "   &Span Calibration");
    CmdSCJC = MakeButton(this, QStringLiteral("CmdSCJC"), "    C&JC Calibration");

    FrameGrid grid(this);
    grid.Row(LabSRange, {LabSRangeLab, CmbSRange});
    grid.Row(MakeLabel(this, QStringLiteral("LabSFormat"), "&Data Format :", CmbSFormat),
             {LabSDataFormatLab, CmbSFormat});
    grid.Row(LabSTimeSlewrate, {LabS_time_slewrate, CmbSTimeSlewRate});
    grid.Buttons({CmdSUpdate});
    grid.WideRow(InPairs({CmdSZero, CmdSSpan, CmdSCJC}));
}

bool FrameSlot::ShowsSecondFormat() const
{
    return CmbSFormat->count() > 1 && LabSDataFormatLab->text() == CmbSFormat->itemText(1);
}

void FrameSlot::LoadRangeTables(const std::string &model)
{
    const auto ranges = SlotRanges(model);
    if (ranges.empty())
        return;
    FillList(CmbSRange, ranges);
    if (HasSlotFormatList(model))
        FillList(CmbSFormat, SlotFormatCaptions(model));
    if (HasSlotTimeList(model))
        FillList(CmbSTimeSlewRate, SlotTimeCaptions(model));
}

void FrameSlot::Load(PageReading &reading)
{
    if (reading.node.kind() == NodeKind::Module)
        return;
    LabSRangeLab->setText(CmbSRange->currentText());
    if (HasSlotFormatList(reading.model))
        LabSDataFormatLab->setText(CmbSFormat->currentText());
    LabS_time_slewrate->setText(CmbSTimeSlewRate->currentText());
}

} // namespace vorn
