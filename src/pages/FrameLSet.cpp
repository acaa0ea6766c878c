#include "pages/FrameLSet.h"

#include "shell/Controls.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

FrameLSet::FrameLSet() : QGroupBox(QStringLiteral("Linear Mapping"))
{
    setObjectName(QStringLiteral("FrameLSet"));
    CheckLinearScaling = Named(new QCheckBox(QStringLiteral("Disable"), this), "CheckLinearScaling",
                               QStringLiteral("Linear mapping"));
    connect(CheckLinearScaling, &QCheckBox::toggled, this, [this](bool on) {
        CheckLinearScaling->setText(on ? QStringLiteral("Enable") : QStringLiteral("Disable"));
    });
    const auto field = [this](const char *name, const char *accessibleName) {
        return Named(new QLineEdit(this), name, QString::fromLatin1(accessibleName));
    };
    TextMLowLimit = field("TextMLowLimit", "Input low limit");
    TextMHighLimit = field("TextMHighLimit", "Input high limit");
    TextSLowLimit = field("TextSLowLimit", "Output low limit");
    TextSHighLimit = field("TextSHighLimit", "Output high limit");
    for (std::size_t i = 0; i < LabLunit.size(); ++i)
        LabLunit[i] = MakeLabel(this, ElementName("LabLunit", static_cast<int>(i)), "");
    CmdLinearUpdata = Named(new QPushButton(QStringLiteral("Update Ma&pping"), this), "CmdLinearUpdata");

    FrameGrid grid(this);
    grid.Row(MakeLabel(this, QStringLiteral("LabLinear"), "Mappin&g :", CheckLinearScaling),
             CheckLinearScaling);
    grid.Row(MakeLabel(this, QStringLiteral("LabMLow"), "Input low :", TextMLowLimit), TextMLowLimit,
             LabLunit[0]);
    grid.Row(MakeLabel(this, QStringLiteral("LabMHigh"), "Input high :", TextMHighLimit), TextMHighLimit,
             LabLunit[1]);
    grid.Row(MakeLabel(this, QStringLiteral("LabSLow"), "Output low :", TextSLowLimit), TextSLowLimit,
             LabLunit[2]);
    grid.Row(MakeLabel(this, QStringLiteral("LabSHigh"), "Output high :", TextSHighLimit), TextSHighLimit,
             LabLunit[3]);
    grid.Buttons({CmdLinearUpdata});
}

} // namespace vorn
