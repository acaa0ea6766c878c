#include "pages/FrameASet.h"

#include "shell/Controls.h"
#include "shell/SelectAllOnFocus.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

FrameASet::FrameASet() : QGroupBox(QStringLiteral("Alarm Setting"))
{
    setObjectName(QStringLiteral("FrameASet"));
    CmdAlarmsetting = Named(new QComboBox(this), "CmdAlarmsetting", QStringLiteral("Alarm mode"));
    CmdAlarmsetting->addItems(
        {QStringLiteral("Disable"), QStringLiteral("MOMENTARY"), QStringLiteral("LATCH")});
    CmdAlarmsetting->setCurrentIndex(-1);
    TextHighValue = Named(new QLineEdit(this), "TextHighValue", QStringLiteral("High alarm limit"));
    TextLowValue = Named(new QLineEdit(this), "TextLowValue", QStringLiteral("Low alarm limit"));
    SelectAllOnFocus(TextHighValue);
    SelectAllOnFocus(TextLowValue);
    for (std::size_t i = 0; i < LabAunit.size(); ++i)
        LabAunit[i] = MakeLabel(this, ElementName("LabAunit", static_cast<int>(i)), "");
    CmdAlarmUpdata = Named(new QPushButton(QStringLiteral("U&pdate"), this), "CmdAlarmUpdata");

    FrameGrid grid(this);
    grid.Row(MakeLabel(this, QStringLiteral("LabAmode"), "Alarm &mode :", CmdAlarmsetting), CmdAlarmsetting);
    grid.Row(MakeLabel(this, QStringLiteral("LabAhigh"), "Hi&gh limit :", TextHighValue), TextHighValue,
             LabAunit[0]);
    grid.Row(MakeLabel(this, QStringLiteral("LabAlow"), "Lo&w limit :", TextLowValue), TextLowValue,
             LabAunit[1]);
    grid.Buttons({CmdAlarmUpdata});
}

} // namespace vorn
