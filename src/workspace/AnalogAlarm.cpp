#include "workspace/AnalogAlarm.h"

#include "pages/AlarmLimits.h"
#include "pages/FrameASet.h"
#include "pages/FrameFCdata.h"
#include "pages/FrameGen.h"
#include "pages/FrameMSet.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "workspace/Pages.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

AnalogAlarm::AnalogAlarm(FormMain &main, Pages &pages) : main_(main), pages_(pages)
{
    OnClick(pages.FrameASet->CmdAlarmUpdata, this, [this] { CmdAlarmUpdata_Click(); });
    GuardField(pages.FrameASet->TextHighValue, FieldRule::ModuleLimit);
    GuardField(pages.FrameASet->TextLowValue, FieldRule::ModuleLimit);

    const auto clear = [this](QPushButton *button, auto command) {
        OnClick(button, this, [this, command] {
            const NodeKey node = main_.PageNode();
            Send(main_, node, command(node));
        });
    };
    clear(pages.FrameGen->CmdClearLatch, ClearLatchCommand);
    clear(pages.FrameGen->CmdClearCount, ClearEventsCommand);
    clear(pages.FrameFCdata->CmdCClearLatch, ClearLatchCommand);
    for (int i = 0; i < FrameFCdata::Counters; ++i)
        clear(pages.FrameFCdata->CmdClear[static_cast<std::size_t>(i)],
              [i](const NodeKey &node) { return ClearCounterCommand(node, i); });
}

void AnalogAlarm::CmdAlarmUpdata_Click()
{
    main_.NowStatus("Now Alarm setting is processing , Please wait moment....");
    main_.HoldRefresh();
    DoEvents();
    const NodeKey node = main_.PageNode();
    WriteMode(node);
    WriteLimits(node);
    MsgBox("Alarm setting is complete !", MsgBoxStyle::Information, "Alarm setting is complete !");
    Reload(main_);
}

void AnalogAlarm::WriteMode(const NodeKey &node)
{
    // Without a selection nothing is sent, and the reply that stands is judged.
    if (const auto command = AlarmModeCommand(node, pages_.FrameASet->CmdAlarmsetting->currentIndex()))
        Send(main_, node, *command);
    if (IsAccepted(main_.ReplyText))
        WaitStored(main_, node);
    else
        MsgBox("Alarm state setting error !", MsgBoxStyle::Critical, "Alarm state setting error");
}

void AnalogAlarm::WriteLimits(const NodeKey &node)
{
    const LimitPair typed{.low = FromQString(pages_.FrameASet->TextLowValue->text()),
                          .high = FromQString(pages_.FrameASet->TextHighValue->text())};
    if (!AreLimitsInOrder(typed)) {
        MsgBox("High Alarm Limit Value < Low Alarm Limit value", MsgBoxStyle::Critical,
               "Alarm Limit setting error !");
        return;
    }
    const LimitPair limits = WireAlarmLimits(node.model(), pages_.FrameMSet->CmbRange->currentIndex(), typed);
    if (!Store(main_, node, HighLimitCommand(node, limits.high)))
        MsgBox("High Alarm Limit setting error !", MsgBoxStyle::Critical, "High Alarm Limit setting error");
    if (!Store(main_, node, LowLimitCommand(node, limits.low)))
        MsgBox("Low Alarm Limit setting error !", MsgBoxStyle::Critical, "Low Alarm Limit setting error");
}

} // namespace vorn
