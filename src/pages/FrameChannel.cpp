#include "pages/FrameChannel.h"

#include "shell/Controls.h"
#include "shell/DIO.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace vorn
{

namespace
{

constexpr std::array<const char *, 3> ClearCaptions{"Clear &High Latch", "Clear &Low Latch", "Clear C&ount"};

} // namespace

FrameChannel::FrameChannel() : QGroupBox(QStringLiteral("Channel"))
{
    setObjectName(QStringLiteral("FrameChannel"));
    LabChannelValue = MakeLiveValue(this, QStringLiteral("LabChannelValue"), QStringLiteral("Value"));
    LabChannelUnit = MakeLabel(this, QStringLiteral("LabChannelUnit"), "");
    ChannelHAlarm = Named(new DIO(this), "ChannelHAlarm");
    ChannelHAlarm->SetCaption(QStringLiteral("High alarm"));
    ChannelLAlarm = Named(new DIO(this), "ChannelLAlarm");
    ChannelLAlarm->SetCaption(QStringLiteral("Low alarm"));
    CheckChEnable = Named(new QCheckBox(QStringLiteral("&Channel Disable"), this), "CheckChEnable");
    connect(CheckChEnable, &QCheckBox::toggled, this, [this](bool on) {
        CheckChEnable->setText(on ? QStringLiteral("&Channel Enable") : QStringLiteral("&Channel Disable"));
    });
    High = BuildSide(QStringLiteral("H"), QStringLiteral("High"));
    Low = BuildSide(QStringLiteral("L"), QStringLiteral("Low"));
    CmdChAlarmUpdate = Named(new QPushButton(QStringLiteral("U&pdate"), this), "CmdChAlarmUpdate");
    for (std::size_t i = 0; i < CmdClearChLatch.size(); ++i)
        CmdClearChLatch[i] = Named(new QPushButton(QString::fromLatin1(ClearCaptions[i]), this),
                                   ElementName("CmdClearChLatch", static_cast<int>(i)));
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
        auto *field =
            Named(new QLineEdit(this), letter + QString::fromLatin1(name), side + QString::fromLatin1(what));
        field->setMinimumWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
        return field;
    };
    AlarmSide controls;
    controls.Type = Named(new QComboBox(this), letter + QStringLiteral("AlarmType"),
                          side + QStringLiteral(" alarm mode"));
    controls.Type->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    controls.Type->setMinimumContentsLength(8);
    controls.Limit = entry("AlarmLimit", " alarm limit");
    controls.DOMap =
        Named(new QCheckBox(QStringLiteral("Disable"), this), QStringLiteral("CheckDOMap") + letter,
              side + QStringLiteral(" alarm drives an output"));
    connect(controls.DOMap, &QCheckBox::toggled, controls.DOMap, [box = controls.DOMap](bool on) {
        box->setText(on ? QStringLiteral("Enable") : QStringLiteral("Disable"));
    });
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
        Named(new QLineEdit(FrameCount), "TextFilterScale", QStringLiteral("Digital filter scale"));
    TextCInitial = Named(new QLineEdit(FrameCount), "TextCInitial", QStringLiteral("Initial count"));
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

} // namespace vorn
