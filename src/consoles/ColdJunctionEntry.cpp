#include "consoles/ColdJunctionEntry.h"

#include "consoles/InputConsole.h"
#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"

#include <QLabel>
#include <QLineEdit>

namespace vorn
{

ColdJunctionEntry::ColdJunctionEntry(QWidget *frame, FrameGrid &rows, std::string_view label)
    : txtNewCJC(MakeEntry(frame, QStringLiteral("txtNewCJC"), QStringLiteral("Cold-junction offset"))),
      lblCJC(MakeLabel(frame, QStringLiteral("lblCJC"), label, txtNewCJC)),
      lblCentigrade(MakeLabel(frame, QStringLiteral("lblCentigrade"), "'C"))
{
    GuardField(txtNewCJC, FieldRule::ColdJunction);
    txtNewCJC->setFixedWidth(txtNewCJC->fontMetrics().horizontalAdvance(QStringLiteral("+00000.000")));
    rows.Row(lblCJC, {txtNewCJC, lblCentigrade});
    QObject::connect(txtNewCJC, &QLineEdit::textEdited, txtNewCJC, [this] { CJCChanged = true; });
}

void ColdJunctionEntry::Show(std::string_view reply)
{
    txtNewCJC->setText(ToQString(ReadingAt(reply, 0)));
}

} // namespace vorn
