#include "pages/FrameASet.h"

#include "pages/AlarmLimits.h"
#include "pages/FrameGen.h"
#include "pages/FrameMSet.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/RangeTables.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "shell/SelectAllOnFocus.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

FrameASet::FrameASet(FormMain &main, const FrameMSet &settings, const FrameGen &live)
    : PageFrame(main, "FrameASet", "Alarm Setting"), settings_(settings), live_(live)
{
    BuildFields();
    FrameGrid grid(this);
    grid.Row(MakeLabel(this, QStringLiteral("LabAmode"), "Alarm &mode :", CmdAlarmsetting), CmdAlarmsetting);
    grid.Row(MakeLabel(this, QStringLiteral("LabAhigh"), "Hi&gh limit :", TextHighValue), TextHighValue,
             LabAunit[0]);
    grid.Row(MakeLabel(this, QStringLiteral("LabAlow"), "Lo&w limit :", TextLowValue), TextLowValue,
             LabAunit[1]);
    grid.Buttons({CmdAlarmUpdata});
}

void FrameASet::BuildFields()
{
    CmdAlarmsetting = Named(new QComboBox(this), "CmdAlarmsetting", QStringLiteral("Alarm mode"));
    CmdAlarmsetting->addItems(
        {QStringLiteral("Disable"), QStringLiteral("MOMENTARY"), QStringLiteral("LATCH")});
    CmdAlarmsetting->setCurrentIndex(-1);
    // However the selection comes, by the operator or by a load.
    connect(CmdAlarmsetting, &QComboBox::currentIndexChanged, this, &FrameASet::CmdAlarmsetting_Click);
    TextHighValue = MakeEntry(this, QStringLiteral("TextHighValue"), QStringLiteral("High alarm limit"));
    TextLowValue = MakeEntry(this, QStringLiteral("TextLowValue"), QStringLiteral("Low alarm limit"));
    for (QLineEdit *limit : {TextHighValue, TextLowValue}) {
        SelectAllOnFocus(limit);
        GuardField(limit, FieldRule::ModuleLimit);
    }
    for (std::size_t i = 0; i < LabAunit.size(); ++i)
        LabAunit[i] = MakeLabel(this, ElementName("LabAunit", static_cast<int>(i)), "");
    CmdAlarmUpdata = MakeButton(this, QStringLiteral("CmdAlarmUpdata"), "U&pdate");
    Writes(CmdAlarmUpdata, [this] {
        return [this, entered = ReadEntered()](const NodeKey &node) { CmdAlarmUpdata_Click(node, entered); };
    });
}

void FrameASet::Load(PageReading &reading)
{
    if (!reading.record)
        return;
    if (reading.range && reading.range->setsAunit)
        SetAll(LabAunit, ToQString(reading.range->unit));
    if (!HasModuleAlarm(reading.model))
        return;
    if (const auto mode = reading.Read(Register::AlarmStatus); mode && !mode->empty())
        Select(CmdAlarmsetting, mode->front() - '0');
    if (const auto limit = reading.Read(Register::HighAlarm))
        ShowText(TextHighValue, *limit);
    if (const auto limit = reading.Read(Register::LowAlarm))
        ShowText(TextLowValue, *limit);
}

void FrameASet::CmdAlarmsetting_Click()
{
    const auto captions = AlarmPointCaptionsFor(FromQString(CmdAlarmsetting->currentText()));
    SetCaption(live_.ADIO[0], captions.first);
    SetCaption(live_.ADIO[1], captions.second);
}

FrameASet::Entered FrameASet::ReadEntered() const
{
    return {.mode = CmdAlarmsetting->currentIndex(),
            .range = settings_.CmbRange->currentIndex(),
            .limits = {.low = FromQString(TextLowValue->text()), .high = FromQString(TextHighValue->text())}};
}

void FrameASet::CmdAlarmUpdata_Click(const NodeKey &node, const Entered &entered)
{
    main().NowStatus("Now Alarm setting is processing , Please wait moment....");
    const RefreshHold hold(main());
    DoEvents();
    WriteMode(node, entered.mode);
    WriteLimits(node, entered);
    MsgBox("Alarm setting is complete !", MsgBoxStyle::Information, "Alarm setting is complete !");
    Reload(main());
}

void FrameASet::WriteMode(const NodeKey &node, int mode)
{
    // Without a selection nothing is sent, and the reply that stands is judged.
    if (const auto command = AlarmModeCommand(node, mode))
        Send(main(), node, *command);
    if (IsAccepted(main().ReplyText))
        WaitStored(main(), node);
    else
        MsgBox("Alarm state setting error !", MsgBoxStyle::Critical, "Alarm state setting error");
}

void FrameASet::WriteLimits(const NodeKey &node, const Entered &entered)
{
    if (!AreLimitsInOrder(entered.limits)) {
        MsgBox("High Alarm Limit Value < Low Alarm Limit value", MsgBoxStyle::Critical,
               "Alarm Limit setting error !");
        return;
    }
    const LimitPair limits = WireAlarmLimits(node.model(), entered.range, entered.limits);
    if (!Store(main(), node, HighLimitCommand(node, limits.high)))
        MsgBox("High Alarm Limit setting error !", MsgBoxStyle::Critical, "High Alarm Limit setting error");
    if (!Store(main(), node, LowLimitCommand(node, limits.low)))
        MsgBox("Low Alarm Limit setting error !", MsgBoxStyle::Critical, "Low Alarm Limit setting error");
}

} // namespace vorn
