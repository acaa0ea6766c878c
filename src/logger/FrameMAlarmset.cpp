#include "logger/FrameMAlarmset.h"

#include "logger/LoggerSettings.h"
#include "platform/Dialogs.h"
#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "shell/SelectAllOnFocus.h"

#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

FrameMAlarmset::FrameMAlarmset(FormMain &main) : PageFrame(main, "FrameMAlarmset", "Alarm Limits")
{
    auto *limits = new QGridLayout;
    limits->setHorizontalSpacing(Rhythm::LabelToField);
    limits->setVerticalSpacing(Rhythm::BetweenRows);
    limits->addWidget(MakeLabel(this, QStringLiteral("LabMHigh"), "High limit"), 0, 1);
    limits->addWidget(MakeLabel(this, QStringLiteral("LabMLow"), "Low limit"), 0, 2);
    for (int i = 0; i < Channels; ++i) {
        const auto e = static_cast<std::size_t>(i);
        TextHAlarm[e] = MakeLimit("TextHAlarm", i, QStringLiteral("High limit of channel %1").arg(i));
        TextLAlarm[e] = MakeLimit("TextLAlarm", i, QStringLiteral("Low limit of channel %1").arg(i));
        limits->addWidget(
            MakeLabel(this, ElementName("LabMAlarm", i), "CH &" + std::to_string(i) + " :", TextHAlarm[e]),
            i + 1, 0);
        limits->addWidget(TextHAlarm[e], i + 1, 1);
        limits->addWidget(TextLAlarm[e], i + 1, 2);
    }
    CmdMAlarmUpdate = MakeButton(this, QStringLiteral("CmdMAlarmUpdate"), "U&pdate");
    Writes(CmdMAlarmUpdate, [this] {
        return [this, updates = Updates()](const NodeKey &node) { CmdMAlarmUpdate_Click(node, updates); };
    });
    FrameGrid grid(this);
    grid.WideRow(limits);
    grid.Buttons({CmdMAlarmUpdate});
}

QLineEdit *FrameMAlarmset::MakeLimit(const char *array, int channel, const QString &accessibleName)
{
    QLineEdit *limit = MakeEntry(this, ElementName(array, channel), accessibleName);
    SelectAllOnFocus(limit);
    GuardField(limit, FieldRule::ModuleLimit);
    connect(limit, &QLineEdit::textEdited, this,
            [this, channel] { changed_[static_cast<std::size_t>(channel)] = true; });
    return limit;
}

void FrameMAlarmset::ReadLimits(const NodeKey &node)
{
    for (int i = 0; i < Channels; ++i) {
        if (!Send(main(), node, Query(Register::MemoryLimits, node, i)))
            continue;
        const LimitTexts limits = ReadMemoryLimits(main().ReplyText);
        ShowText(TextHAlarm[static_cast<std::size_t>(i)], limits.high);
        ShowText(TextLAlarm[static_cast<std::size_t>(i)], limits.low);
    }
    NoteChanged();
}

/// Of what was changed only what was so behind the press of the present action counts from here on.
void FrameMAlarmset::NoteChanged()
{
    for (std::size_t i = 0; i < changed_.size(); ++i)
        changed_[i] = IsTouched(TextHAlarm[i]) || IsTouched(TextLAlarm[i]);
}

/// The limits of one module are none of another, which may not answer.
void FrameMAlarmset::Leave()
{
    PageFrame::Leave();
    for (std::size_t i = 0; i < changed_.size(); ++i) {
        TextHAlarm[i]->clear();
        TextLAlarm[i]->clear();
    }
    ClearChanged();
}

void FrameMAlarmset::AllowLimits(int storageMode)
{
    constexpr const char *NotUsed = "The storage mode doesn't use this limit.";
    bool any = false;
    for (std::size_t i = 0; i < changed_.size(); ++i) {
        const bool used = IsLimitUsed(storageMode, i);
        any = any || used;
        for (QLineEdit *limit : {TextHAlarm[i], TextLAlarm[i]}) {
            SetWritable(*limit, used); // its colour
            Allow(limit, used, NotUsed);
        }
    }
    Allow(CmdMAlarmUpdate, any, "The storage mode uses no limits.");
}

std::vector<FrameMAlarmset::Update> FrameMAlarmset::Updates() const
{
    std::vector<Update> updates;
    for (int i = 0; i < Channels; ++i) {
        const auto e = static_cast<std::size_t>(i);
        if (changed_[e])
            updates.push_back({i, MemoryLimitText(FromQString(TextHAlarm[e]->text())) +
                                      MemoryLimitText(FromQString(TextLAlarm[e]->text()))});
    }
    return updates;
}

void FrameMAlarmset::CmdMAlarmUpdate_Click(const NodeKey &node, const std::vector<Update> &updates)
{
    main().NowStatus("Alarm Limit setting is processing , Please wait moment....");
    RefreshHold hold(main());
    hold.Keep();
    for (const auto &[channel, limits] : updates) {
        if (!Store(main(), node, Write(Register::MemoryLimits, node, limits, channel)))
            MsgBox("Channel " + std::to_string(channel) + " Alarm Limit setting error !",
                   MsgBoxStyle::Critical, "Alarm Limit setting error");
    }
    NoteChanged();
    ReloadTab(node);
    MsgBox("Alarm Limit setting is complete !", MsgBoxStyle::Information, "Alarm Limit setting is complete");
    main().NowStatus("");
}

} // namespace vorn
