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

#include <utility>

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
    OnClick(main, CmdMAlarmUpdate, this, [this](const NodeKey &node) { CmdMAlarmUpdate_Click(node); });
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
    for (std::size_t i = 0; i < changed_.size(); ++i)
        changed_[i] = IsTouched(TextHAlarm[i]) || IsTouched(TextLAlarm[i]);
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

void FrameMAlarmset::CmdMAlarmUpdate_Click(const NodeKey &node)
{
    main().NowStatus("Alarm Limit setting is processing , Please wait moment....");
    RefreshHold hold(main());
    hold.Keep();
    // What is typed from here on belongs to the next update.
    const auto changed = std::exchange(changed_, {});
    std::array<std::string, Channels> limits;
    for (std::size_t i = 0; i < limits.size(); ++i)
        limits[i] = MemoryLimitText(FromQString(TextHAlarm[i]->text())) +
                    MemoryLimitText(FromQString(TextLAlarm[i]->text()));
    for (int i = 0; i < Channels; ++i) {
        const auto e = static_cast<std::size_t>(i);
        if (changed[e] && !Store(main(), node, Write(Register::MemoryLimits, node, limits[e], i)))
            MsgBox("Channel " + std::to_string(i) + " Alarm Limit setting error !", MsgBoxStyle::Critical,
                   "Alarm Limit setting error");
    }
    ReloadTab(node);
    MsgBox("Alarm Limit setting is complete !", MsgBoxStyle::Information, "Alarm Limit setting is complete");
}

} // namespace vorn
