#include "discovery/FramePort.h"

#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/SelectAllOnFocus.h"

#include <QComboBox>
#include <QLineEdit>

namespace vorn
{

namespace
{

/// Platforms outside the NT line serve the serial line later.
const char *StartTimeOut(int platformId)
{
    return platformId == Host::PlatformNT ? "80" : "100";
}

constexpr int StartBaudIndex = 3; // 9600
constexpr int FieldWidth = 140;

} // namespace

FramePort::FramePort(FormMain &main) : QGroupBox(QStringLiteral("Host COM Setting"))
{
    setObjectName(QStringLiteral("FramePort"));

    LabCOM_5 = MakeValue(this, QStringLiteral("LabCOM_5"), QStringLiteral("Serial Port"));
    CmbPBaudrate = Named(new QComboBox(this), "CmbPBaudrate", QStringLiteral("Baudrate"));
    for (const BaudRow &row : BaudRows)
        CmbPBaudrate->addItem(ToQString(row.caption));
    CmbPBaudrate->setCurrentIndex(StartBaudIndex);
    TextTimeOut = Named(new QLineEdit(this), "TextTimeOut", QStringLiteral("Time Out in ms"));
    TextTimeOut->setText(QString::fromLatin1(StartTimeOut(main.PlatformId)));
    TextPretix = Named(new QLineEdit(this), "TextPretix", QStringLiteral("Pretix Char"));
    SelectAllOnFocus(TextTimeOut);
    SelectAllOnFocus(TextPretix);
    for (QWidget *field : {static_cast<QWidget *>(CmbPBaudrate), static_cast<QWidget *>(TextTimeOut),
                           static_cast<QWidget *>(TextPretix)})
        field->setMaximumWidth(FieldWidth);

    const auto label = [this](int index, const char *caption, QWidget *buddy = nullptr) {
        return MakeLabel(this, ElementName("LabPort", index), caption, buddy);
    };
    const auto fixed = [this](int index, const char *text, const char *accessibleName) {
        QLabel *value = MakeValue(this, ElementName("LabCOM", index), QString::fromLatin1(accessibleName));
        value->setText(QString::fromLatin1(text));
        return value;
    };
    FrameGrid grid(this);
    grid.Row(label(0, "Serial Port"), LabCOM_5);
    grid.Row(label(1, "&Baudrate", CmbPBaudrate), CmbPBaudrate);
    grid.Row(label(2, "Data Bits"), fixed(2, " 8", "Data Bits"));
    grid.Row(label(3, "Stop Bits"), fixed(3, " 1", "Stop Bits"));
    grid.Row(label(4, "Parity"), fixed(4, " None", "Parity"));
    grid.Row(label(5, "&Time Out", TextTimeOut), TextTimeOut, label(6, "ms"));
    grid.Row(label(7, "&Pretix Char", TextPretix), TextPretix);
    grid.Layout()->setColumnStretch(1, 0);
    grid.Layout()->setColumnStretch(3, 1);

    main.CmbPBaudrate = CmbPBaudrate;
    main.TextTimeOut = TextTimeOut;
    main.TextPretix = TextPretix;
}

} // namespace vorn
