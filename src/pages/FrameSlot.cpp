#include "pages/FrameSlot.h"

#include "shell/Controls.h"

#include <QComboBox>
#include <QPushButton>

namespace vorn
{

FrameSlot::FrameSlot() : QGroupBox(QStringLiteral("Slot Setting"))
{
    setObjectName(QStringLiteral("FrameSlot"));
    const auto list = [this](const char *name, const char *accessibleName) {
        auto *choice = Named(new QComboBox(this), name, QString::fromLatin1(accessibleName));
        choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        choice->setMinimumContentsLength(20);
        return choice;
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
    const auto button = [this](const char *name, const char *caption) {
        return Named(new QPushButton(QString::fromLatin1(caption), this), name);
    };
    CmdSUpdate = button("CmdSUpdate", "&Update");
    CmdSZero = button("CmdSZero", "    &Zero Calibration");
    CmdSSpan = button("CmdSSpan", "   &Span Calibration");
    CmdSCJC = button("CmdSCJC", "    C&JC Calibration");

    FrameGrid grid(this);
    grid.Row(LabSRange, {LabSRangeLab, CmbSRange});
    grid.Row(MakeLabel(this, QStringLiteral("LabSFormat"), "&Data Format :", CmbSFormat),
             {LabSDataFormatLab, CmbSFormat});
    grid.Row(LabSTimeSlewrate, {LabS_time_slewrate, CmbSTimeSlewRate});
    grid.Buttons({CmdSUpdate});
    grid.WideRow(InPairs({CmdSZero, CmdSSpan, CmdSCJC}));
}

} // namespace vorn
