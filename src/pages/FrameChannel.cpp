#include "pages/FrameChannel.h"

#include "pages/AlarmLimits.h"
#include "pages/FrameSlot.h"
#include "pages/FrameSlotIO.h"
#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/PageCommand.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace vorn
{

namespace
{

constexpr std::array<const char *, 3> ClearCaptions{"Clear Hi&gh Latch", "Clear &Low Latch", "Clear C&ount"};

} // namespace

FrameChannel::FrameChannel(FormMain &main, const FrameSlot &settings)
    : PageFrame(main, "FrameChannel", "Channel"), settings_(settings)
{
    LabChannelValue = MakeLiveValue(this, QStringLiteral("LabChannelValue"), QStringLiteral("Value"));
    LabChannelUnit = MakeLabel(this, QStringLiteral("LabChannelUnit"), "");
    ChannelHAlarm = Named(new DIO(this), "ChannelHAlarm");
    ChannelHAlarm->SetCaption(QStringLiteral("High alarm"));
    ChannelLAlarm = Named(new DIO(this), "ChannelLAlarm");
    ChannelLAlarm->SetCaption(QStringLiteral("Low alarm"));
    CheckChEnable =
        MakeStateBox(this, QStringLiteral("CheckChEnable"), {}, "&Channel Enable", "&Channel Disable");
    High = BuildSide(QStringLiteral("H"), QStringLiteral("High"));
    Low = BuildSide(QStringLiteral("L"), QStringLiteral("Low"));
    CmdChAlarmUpdate = MakeButton(this, QStringLiteral("CmdChAlarmUpdate"), "U&pdate");
    for (std::size_t i = 0; i < CmdClearChLatch.size(); ++i) {
        CmdClearChLatch[i] =
            MakeButton(this, ElementName("CmdClearChLatch", static_cast<int>(i)), ClearCaptions[i]);
        OnClick(main, CmdClearChLatch[i], this, [this, i](const NodeKey &node) {
            Send(this->main(), node, ClearChannelCommand(node, static_cast<ChannelClear>(i)));
        });
    }
    BuildCount();

    FrameGrid grid(this);
    grid.Row(MakeLabel(this, QStringLiteral("LabChannel"), "Value :"), LabChannelValue, LabChannelUnit);
    auto *alarms = SideBySide({ChannelHAlarm, ChannelLAlarm});
    alarms->addStretch();
    grid.WideRow(alarms);
    grid.WideRow(CheckChEnable);
    grid.WideRow(BuildAlarms());
    grid.WideRow(FrameCount);
    grid.WideRow(InPairs({CmdClearChLatch[0], CmdClearChLatch[1], CmdClearChLatch[2], CmdChAlarmUpdate}));
}

FrameChannel::AlarmSide FrameChannel::BuildSide(const QString &letter, const QString &side)
{
    const auto entry = [&](const char *name, const char *what) {
        QLineEdit *field =
            MakeEntry(this, letter + QString::fromLatin1(name), side + QString::fromLatin1(what));
        field->setMinimumWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
        return field;
    };
    AlarmSide controls;
    controls.Type =
        MakeChoice(this, letter + QStringLiteral("AlarmType"), side + QStringLiteral(" alarm mode"), 8);
    controls.Limit = entry("AlarmLimit", " alarm limit");
    controls.DOMap = MakeStateBox(this, QStringLiteral("CheckDOMap") + letter,
                                  side + QStringLiteral(" alarm drives an output"));
    controls.OutSlot = entry("AlarmOutSlot", " alarm output slot");
    controls.OutChannel = entry("AlarmOutChannel", " alarm output channel");
    return controls;
}

QLayout *FrameChannel::BuildAlarms()
{
    auto *table = new QGridLayout;
    table->setHorizontalSpacing(Rhythm::LabelToField);
    table->setVerticalSpacing(Rhythm::BetweenRows);
    int row = 0;
    table->addWidget(MakeLabel(this, QStringLiteral("LabHAlarm"), "High"), row, 1);
    table->addWidget(MakeLabel(this, QStringLiteral("LabLAlarm"), "Low"), row, 2);
    const auto line = [&](const char *name, const char *caption, QWidget *high, QWidget *low) {
        ++row;
        table->addWidget(MakeLabel(this, QString::fromLatin1(name), caption), row, 0);
        table->addWidget(high, row, 1);
        table->addWidget(low, row, 2);
    };
    line("LabAlarmType", "Alarm mode :", High.Type, Low.Type);
    line("LabAlarmLimit", "Limit :", High.Limit, Low.Limit);
    line("LabAlarmMap", "Output :", High.DOMap, Low.DOMap);
    line("LabAlarmSlot", "Output slot :", High.OutSlot, Low.OutSlot);
    line("LabAlarmChannel", "Output channel :", High.OutChannel, Low.OutChannel);
    table->setColumnStretch(1, 1);
    table->setColumnStretch(2, 1);
    return table;
}

void FrameChannel::BuildCount()
{
    FrameCount = Named(new QGroupBox(QStringLiteral("Counter"), this), "FrameCount");
    TextFilterScale =
        MakeEntry(FrameCount, QStringLiteral("TextFilterScale"), QStringLiteral("Digital filter scale"));
    TextCInitial = MakeEntry(FrameCount, QStringLiteral("TextCInitial"), QStringLiteral("Initial count"));
    OptionC[0] = Named(new QRadioButton(QStringLiteral("STO&P"), FrameCount), "OptionC_0");
    OptionC[1] = Named(new QRadioButton(QStringLiteral("STA&RT"), FrameCount), "OptionC_1");
    CounterChOverflow = Named(new DIO(FrameCount), "CounterChOverflow");
    CounterChOverflow->SetCaption(QStringLiteral("Overflow"));
    FrameGrid grid(FrameCount);
    grid.Row(MakeLabel(FrameCount, QStringLiteral("LabFilterScale"), "Filter scale :", TextFilterScale),
             TextFilterScale);
    grid.Row(MakeLabel(FrameCount, QStringLiteral("LabCInitial"), "Initial count :", TextCInitial),
             TextCInitial);
    auto *state = SideBySide({OptionC[1], OptionC[0], CounterChOverflow});
    state->addStretch();
    grid.WideRow(state);
}

void FrameChannel::LoadRangeTables(const std::string &model)
{
    for (const AlarmSide *side : {&High, &Low})
        FillList(side->Type, ChannelAlarmModes(model));
}

void FrameChannel::ShowLive(const LiveReply &reply)
{
    switch (reply.step.effect) {
    case PollEffect::ChannelReading: // empty without an answer
        LabChannelValue->setText(reply.accepted ? ToQString(reply.payload) : QString());
        break;
    case PollEffect::ChannelCount:
        LabChannelValue->setText(reply.accepted ? ToQString(CounterChannelText(settings_, reply.payload))
                                                : QString());
        break;
    case PollEffect::ChannelAlarm:
        if (reply.accepted) {
            ChannelHAlarm->SetValue(IsSetAt(reply.text, 4));
            ChannelLAlarm->SetValue(IsSetAt(reply.text, 5));
        }
        break;
    default:
        break;
    }
}

} // namespace vorn
