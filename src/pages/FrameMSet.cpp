#include "pages/FrameMSet.h"

#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "shell/Controls.h"
#include "shell/SelectAllOnFocus.h"
#include "shell/UpDown.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace vorn
{

namespace
{

constexpr int LowestAddress = 0;
constexpr int HighestAddress = 255;
constexpr std::array<const char *, 3> LedCaptions{"&CH 0", "C&H 1", "&External input"};

} // namespace

FrameMSet::FrameMSet() : QGroupBox(QStringLiteral("Module Setting"))
{
    setObjectName(QStringLiteral("FrameMSet"));
    BuildFields();
    BuildButtons();

    FrameGrid grid(this);
    grid.Row(LabMFV, LabMFVv);
    grid.Row(MakeLabel(this, QStringLiteral("LabAddress"), "&Address :", TextAddress),
             {TextAddress, UpDownAddr, LabAddr});
    grid.Row(LabRange, CmbRange);
    grid.Row(LabDataformat, CmbDataFormat);
    grid.Row(LabSlewRate, CmbSlowRate);
    grid.Row(MakeLabel(this, QStringLiteral("LabBaudrate"), "&Baudrate :", CmbBaudrate), CmbBaudrate);
    grid.Row(MakeLabel(this, QStringLiteral("LabChecksum"), "Chec&ksum :", CheckChecksum), CheckChecksum);
    grid.Row(LabLED, {OptionLED[0], OptionLED[1], OptionLED[2]});
    grid.Buttons({CmdLED, CmdDownLoadF, CmdMUpdate});
}

void FrameMSet::BuildFields()
{
    LabMFVv = MakeValue(this, QStringLiteral("LabMFVv"), QStringLiteral("Firmware version"));
    LabMFV = MakeLabel(this, QStringLiteral("LabMFV"), "Firmware version :");
    TextAddress = Named(new QLineEdit(this), "TextAddress", QStringLiteral("Address, decimal"));
    TextAddress->setMaxLength(3);
    TextAddress->setFixedWidth(TextAddress->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16);
    SelectAllOnFocus(TextAddress);
    UpDownAddr = Named(new UpDown(TextAddress, LowestAddress, HighestAddress), "UpDownAddr");
    LabAddr = MakeValue(this, QStringLiteral("LabAddr"), QStringLiteral("Address, hexadecimal"));

    CmbRange = Named(new QComboBox(this), "CmbRange", QStringLiteral("Range"));
    CmbDataFormat = Named(new QComboBox(this), "CmbDataFormat", QStringLiteral("Data format"));
    CmbSlowRate = Named(new QComboBox(this), "CmbSlowRate", QStringLiteral("Slew rate"));
    CmbBaudrate = Named(new QComboBox(this), "CmbBaudrate", QStringLiteral("Baudrate"));
    for (QComboBox *list : {CmbRange, CmbDataFormat, CmbSlowRate, CmbBaudrate}) {
        // Long captions are cut in the field, not in the list: the page stays as narrow as its window.
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(14);
    }
    for (const BaudRow &row : BaudRows)
        CmbBaudrate->addItem(ToQString(row.caption));
    CmbBaudrate->setCurrentIndex(-1);
    CheckChecksum =
        Named(new QCheckBox(QStringLiteral("Disable"), this), "CheckChecksum", QStringLiteral("Checksum"));
    connect(CheckChecksum, &QCheckBox::toggled, this, [this](bool on) {
        CheckChecksum->setText(on ? QStringLiteral("Enable") : QStringLiteral("Disable"));
    });

    LabRange = MakeLabel(this, QStringLiteral("LabRange"), "&Input range :", CmbRange);
    LabDataformat = MakeLabel(this, QStringLiteral("LabDataformat"), "&Data format :", CmbDataFormat);
    LabSlewRate = MakeLabel(this, QStringLiteral("LabSlewRate"), "Sle&w rate :", CmbSlowRate);
    for (std::size_t i = 0; i < OptionLED.size(); ++i)
        OptionLED[i] = Named(new QRadioButton(QString::fromLatin1(LedCaptions[i]), this),
                             ElementName("OptionLED", static_cast<int>(i)));
    LabLED = MakeLabel(this, QStringLiteral("LabLED"), "LED display :");
}

void FrameMSet::BuildButtons()
{
    CmdLED = Named(new QPushButton(QStringLiteral("  LED   Displa&y"), this), "CmdLED");
    CmdDownLoadF = Named(new QPushButton(QStringLiteral("Download &Firmware"), this), "CmdDownLoadF");
    CmdMUpdate = Named(new QPushButton(QStringLiteral("&Update"), this), "CmdMUpdate");
}

} // namespace vorn
