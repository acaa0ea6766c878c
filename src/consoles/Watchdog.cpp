#include "consoles/Watchdog.h"

#include "platform/WidgetText.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"

#include <QLabel>
#include <QLineEdit>

namespace vorn
{

Watchdog::Watchdog(QWidget *frame, FrameGrid &rows, std::string_view unit)
    : txtOldWDT(MakeEntry(frame, QStringLiteral("txtOldWDT"), QStringLiteral("Present watchdog time"))),
      txtNewWDT(MakeEntry(frame, QStringLiteral("txtNewWDT"), QStringLiteral("New watchdog time"))),
      lblWDT(MakeLabel(frame, QStringLiteral("lblWDT"), "Comm. WDT :", txtNewWDT)),
      lblSecond(MakeLabel(frame, QStringLiteral("lblSecond"), unit))
{
    SetWritable(*txtOldWDT, false);
    GuardField(txtNewWDT, FieldRule::WatchdogTime);
    const int digits = txtNewWDT->fontMetrics().horizontalAdvance(QStringLiteral("000000"));
    txtOldWDT->setFixedWidth(digits);
    txtNewWDT->setFixedWidth(digits);
    rows.Row(lblWDT, {txtOldWDT, txtNewWDT, lblSecond});
    QObject::connect(txtNewWDT, &QLineEdit::textEdited, txtNewWDT, [this] { WDTChanged = true; });
}

void Watchdog::Show(std::string_view reply)
{
    const QString text = ToQString(Cut(reply, RowOf(Register::Watchdog).value));
    txtOldWDT->setText(text);
    txtNewWDT->setText(text);
}

std::string Watchdog::Value() const
{
    return PadLeft(FromQString(txtNewWDT->text()), 4, '0');
}

} // namespace vorn
