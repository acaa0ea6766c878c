#include "pages/FrameFC.h"

#include "shell/Controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace vorn
{

FrameFC::FrameFC() : QGroupBox(QStringLiteral("Counter 0"))
{
    setObjectName(QStringLiteral("FrameFC"));
    OptionCch0S[0] = Named(new QRadioButton(QStringLiteral("STO&P"), this), "OptionCch0S_0");
    OptionCch0S[1] = Named(new QRadioButton(QStringLiteral("STA&RT"), this), "OptionCch0S_1");
    const auto field = [this](const char *name, const char *accessibleName) {
        return Named(new QLineEdit(this), name, QString::fromLatin1(accessibleName));
    };
    TextCMax = field("TextCMax", "Maximum count");
    TextCPV = field("TextCPV", "Preset or high alarm value");
    TextCIV = field("TextCIV", "Initial or high-high alarm value");
    CheckPresetMode = Named(new QCheckBox(QStringLiteral("Disable"), this), "CheckPresetMode",
                            QStringLiteral("Preset mode"));
    connect(CheckPresetMode, &QCheckBox::toggled, this, [this](bool on) {
        CheckPresetMode->setText(on ? QStringLiteral("Enable") : QStringLiteral("Disable"));
    });
    CmbFC0Amode = Named(new QComboBox(this), "CmbFC0Amode", QStringLiteral("Alarm mode"));
    CmbFC0Amode->addItems({QStringLiteral("Disable"), QStringLiteral("Momentary"), QStringLiteral("Latch")});
    CmbFC0Amode->setCurrentIndex(-1);
    Labmode = MakeLabel(this, QStringLiteral("Labmode"), "Preset &mode :", CheckPresetMode);
    LabHvalue = MakeLabel(this, QStringLiteral("LabHvalue"), "Preset &value :", TextCPV);
    LabHHvalue = MakeLabel(this, QStringLiteral("LabHHvalue"), "&Initial value :", TextCIV);
    ComCUpdata = Named(new QPushButton(QStringLiteral("Update Cou&nter"), this), "ComCUpdata");

    FrameGrid grid(this);
    auto *state = SideBySide({OptionCch0S[1], OptionCch0S[0]});
    state->addStretch();
    grid.WideRow(state);
    grid.Row(MakeLabel(this, QStringLiteral("LabCMax"), "Ma&ximum count :", TextCMax), TextCMax);
    auto *mode = new QWidget(this);
    auto *modeLayout = new QHBoxLayout(mode);
    modeLayout->setContentsMargins(0, 0, 0, 0);
    modeLayout->addWidget(CheckPresetMode);
    modeLayout->addWidget(CmbFC0Amode, 1);
    grid.Row(Labmode, mode);
    grid.Row(LabHvalue, TextCPV);
    grid.Row(LabHHvalue, TextCIV);
    grid.Buttons({ComCUpdata});
}

} // namespace vorn
