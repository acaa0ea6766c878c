#include "logger/FrameMAlarmset.h"

#include "shell/Controls.h"

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
        TextHAlarm[e] =
            MakeEntry(this, ElementName("TextHAlarm", i), QStringLiteral("High limit of channel %1").arg(i));
        TextLAlarm[e] =
            MakeEntry(this, ElementName("TextLAlarm", i), QStringLiteral("Low limit of channel %1").arg(i));
        limits->addWidget(
            MakeLabel(this, ElementName("LabMAlarm", i), "CH &" + std::to_string(i) + " :", TextHAlarm[e]),
            i + 1, 0);
        limits->addWidget(TextHAlarm[e], i + 1, 1);
        limits->addWidget(TextLAlarm[e], i + 1, 2);
    }
    CmdMAlarmUpdate = MakeButton(this, QStringLiteral("CmdMAlarmUpdate"), "U&pdate");
    FrameGrid grid(this);
    grid.WideRow(limits);
    grid.Buttons({CmdMAlarmUpdate});
}

} // namespace vorn
