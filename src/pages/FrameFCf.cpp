#include "pages/FrameFCf.h"

#include "shell/Controls.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace vorn
{

FrameFCf::FrameFCf() : QGroupBox(QStringLiteral("Input Setting"))
{
    setObjectName(QStringLiteral("FrameFCf"));
    BuildFields();
    FrameGrid grid(this);
    auto *stage = SideBySide({OptionFSel[0], OptionFSel[1]});
    stage->addStretch();
    grid.WideRow(stage);
    grid.Row(LabTTLH, TextHV, LabTTLHu);
    grid.Row(LabTTLL, TextLV, LabTTLLu);
    grid.Row(LabFstate, CheckFilter);
    grid.Row(LabCHW, TextHW, LabCHWu);
    grid.Row(LabCLW, TextLW, LabCLWu);
    grid.Buttons({ComFUpdata});
}

void FrameFCf::BuildFields()
{
    OptionFSel[0] = Named(new QRadioButton(QStringLiteral("&TTL input"), this), "OptionFSel_0");
    OptionFSel[1] = Named(new QRadioButton(QStringLiteral("&Photo input"), this), "OptionFSel_1");
    const auto field = [this](const char *name, const char *accessibleName) {
        return Named(new QLineEdit(this), name, QString::fromLatin1(accessibleName));
    };
    TextHV = field("TextHV", "High trigger level in volts");
    TextLV = field("TextLV", "Low trigger level in volts");
    TextHW = field("TextHW", "Minimum width at high level");
    TextLW = field("TextLW", "Minimum width at low level");
    const auto label = [this](const char *name, const char *caption, QWidget *buddy = nullptr) {
        return MakeLabel(this, QString::fromLatin1(name), caption, buddy);
    };
    LabTTLH = label("LabTTLH", "High trigger level :", TextHV);
    LabTTLL = label("LabTTLL", "Low trigger level :", TextLV);
    LabTTLHu = label("LabTTLHu", "V");
    LabTTLLu = label("LabTTLLu", "V");
    CheckFilter =
        Named(new QCheckBox(QStringLiteral("Disable"), this), "CheckFilter", QStringLiteral("Filter"));
    LabFstate = label("LabFstate", "Filter :", CheckFilter);
    LabCHW = label("LabCHW", "Min. width, high :", TextHW);
    LabCLW = label("LabCLW", "Min. width, low :", TextLW);
    LabCHWu = label("LabCHWu", "us");
    LabCLWu = label("LabCLWu", "us");
    ComFUpdata = Named(new QPushButton(QStringLiteral("Update Fi&lter"), this), "ComFUpdata");
}

} // namespace vorn
