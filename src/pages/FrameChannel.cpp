#include "pages/FrameChannel.h"

#include "pages/AlarmLimits.h"
#include "pages/FrameSlot.h"
#include "pages/FrameSlotIO.h"
#include "pages/ModuleUpdate.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelTable.h"
#include "protocol/Text.h"
#include "shell/ButtonRows.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
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

constexpr std::size_t Bits = 8; ///< of a mask of channels
constexpr std::string_view EngineeringUnits = "Engineering unit";

constexpr std::array<const char *, 3> ClearCaptions{"Clear Hi&gh Latch", "Clear &Low Latch", "Clear C&ount"};

} // namespace

FrameChannel::FrameChannel(FormMain &main, FrameSlot &settings)
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
    Writes(CmdChAlarmUpdate, [this] {
        return [this, settings = ReadSettings()](const NodeKey &node) {
            CmdChAlarmUpdate_Click(node, settings);
        };
    });
    BuildCount();
    GuardFields();

    FrameGrid grid(this);
    grid.Row(MakeLabel(this, QStringLiteral("LabChannel"), "Value :"), LabChannelValue, LabChannelUnit);
    auto *alarms = SideBySide({ChannelHAlarm, ChannelLAlarm});
    alarms->addStretch();
    grid.WideRow(alarms);
    grid.WideRow(CheckChEnable);
    grid.WideRow(BuildAlarms());
    grid.WideRow(FrameCount);
    grid.WideRow(
        new ButtonRows({CmdClearChLatch[0], CmdClearChLatch[1], CmdClearChLatch[2], CmdChAlarmUpdate}));
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

void FrameChannel::GuardFields()
{
    for (const AlarmSide *side : {&High, &Low}) {
        GuardField(side->Limit,
                   [this] { return IsCounterOnShow() ? FieldRule::CounterLimit : FieldRule::ChannelLimit; });
        GuardField(side->OutSlot, FieldRule::OutputSlot);
        GuardField(side->OutChannel, FieldRule::OutputChannel);
    }
    GuardField(TextCInitial, FieldRule::InitialCount);
    GuardField(
        TextFilterScale, [] { return FieldRule::FilterScale; },
        [this] { return FromQString(High.Limit->text()); });
}

bool FrameChannel::IsCounterOnShow() const
{
    return Has(NodeKey(main().PageOnShow()).model(), Feature::CardCounters);
}

void FrameChannel::LoadRangeTables(const std::string &model)
{
    for (const AlarmSide *side : {&High, &Low})
        FillList(side->Type, ChannelAlarmModes(model));
}

void FrameChannel::Load(PageReading &reading)
{
    if (reading.node.kind() != NodeKind::Channel)
        return;
    const bool counter = Has(reading.model, Feature::CardCounters);
    if (counter)
        LoadCount(reading);
    else
        LoadUnit(reading);
    if (const auto mask = reading.Read(Register::SlotMask); mask && HexToBin(*mask).size() == Bits)
        SetTick(CheckChEnable, Bit(HexToBin(*mask), reading.node.channel() - '0'));
    settings_.LoadChannel(reading);
    if (counter || Has(reading.model, Feature::CardInputs))
        LoadAlarms(reading);
}

void FrameChannel::LoadUnit(PageReading &reading)
{
    if (!Has(reading.model, Feature::HexReadings)) {
        LabChannelUnit->setText(ToQString(CaptionUnit(FromQString(settings_.LabSRangeLab->text()))));
    } else if (CaptionOf(settings_.LabSDataFormatLab) != EngineeringUnits) {
        LabChannelUnit->setText(QStringLiteral("HEX"));
    } else if (const auto value = reading.Read(Register::ChannelConfiguration)) {
        const std::string_view unit = ChannelUnit(reading.model, SlotRecord(*value).typeCode);
        if (!unit.empty())
            LabChannelUnit->setText(ToQString(unit));
    }
}

void FrameChannel::LoadCount(PageReading &reading)
{
    if (reading.slot)
        FrameCount->setVisible(reading.slot->typeCode != CounterFrequency);
    if (const auto value = reading.Read(Register::SlotConfiguration);
        value && SlotRangePosition(SlotRecord(*value).typeCode))
        FrameCount->setVisible(SlotRecord(*value).typeCode != CounterFrequency);
    const bool frequency = CaptionOf(settings_.LabSRangeLab).starts_with('F');
    LabChannelUnit->setText(frequency ? QStringLiteral("Hz") : QString());
    if (const auto scale = reading.Read(Register::FilterScale))
        ShowText(TextFilterScale, *scale);
    if (const auto state = reading.Read(Register::ChannelState))
        SetTick(OptionC[*state == "1" ? 1 : 0], true);
    if (const auto all = reading.Read(Register::ChannelOverflow)) {
        const auto at = static_cast<std::size_t>(reading.node.channel() - '0') * 2 + 1;
        const std::string own = Mid(*all, at, 2);
        if (!own.empty())
            CounterChOverflow->SetValue(own != "00");
    }
    if (const auto initial = reading.Read(Register::InitialChannelCount))
        ShowText(TextCInitial, *initial);
}

/// Of each register the high one first.
void FrameChannel::LoadAlarms(PageReading &reading)
{
    const auto both = [&](Register high, Register low, const auto &show) {
        if (const auto value = reading.Read(high))
            show(High, *value);
        if (const auto value = reading.Read(low))
            show(Low, *value);
    };
    both(Register::HighAlarmMode, Register::LowAlarmMode,
         [&](const AlarmSide &side, const std::string &letter) {
             if (const auto position = ChannelModePosition(reading.model, letter))
                 Select(side.Type, *position);
         });
    both(Register::HighChannelLimit, Register::LowChannelLimit,
         [&](const AlarmSide &side, const std::string &limit) { ShowText(side.Limit, limit); });
    both(Register::HighConnection, Register::LowConnection,
         [&](const AlarmSide &side, const std::string &value) { ShowConnection(side, value); });
}

/// A connection ticks its box, so that an update keeps what the module holds.
void FrameChannel::ShowConnection(const AlarmSide &side, const std::string &value)
{
    const AlarmConnection connection = ReadConnection(value);
    SetTick(side.DOMap, connection.drivesOutput);
    ShowText(side.OutSlot, connection.slot);
    ShowText(side.OutChannel, connection.channel);
}

FrameChannel::Settings FrameChannel::ReadSettings() const
{
    const auto alarm = [](const AlarmSide &side) {
        return ChannelAlarm{.mode = side.Type->currentIndex(),
                            .limit = FromQString(side.Limit->text()),
                            .drivesOutput = side.DOMap->isChecked(),
                            .outputSlot = FromQString(side.OutSlot->text()),
                            .outputChannel = FromQString(side.OutChannel->text())};
    };
    std::optional<CounterSettings> count;
    if (IsShown(FrameCount))
        count = CounterSettings{.filterScale = FromQString(TextFilterScale->text()),
                                .initial = FromQString(TextCInitial->text()),
                                .start = OptionC[1]->isChecked()};
    return {.enabled = CheckChEnable->isChecked(), .high = alarm(High), .low = alarm(Low), .count = count};
}

void FrameChannel::CmdChAlarmUpdate_Click(const NodeKey &node, const Settings &settings)
{
    main().NowStatus("Now Alarm setting is processing , Please wait moment....");
    const RefreshHold hold(main());
    DoEvents();
    if (!WriteSettings(node, settings))
        return;
    MsgBox("Alarm setting is complete !", MsgBoxStyle::Information, "Alarm setting is complete !");
    Reload(main());
}

/// False if nothing was written, since the module doesn't tell its mask.
bool FrameChannel::WriteSettings(const NodeKey &node, const Settings &settings)
{
    const Hourglass hourglass(main());
    const bool counter = Has(node.model(), Feature::CardCounters);
    if (!counter && !WriteMask(node, settings.enabled))
        return false;
    WriteAlarm(node, AlarmLevel::High, settings.high);
    WriteAlarm(node, AlarmLevel::Low, settings.low);
    if (counter && settings.count)
        WriteCount(node, *settings.count);
    return true;
}

/// False for a module that doesn't tell its mask: nothing of the update is written then.
bool FrameChannel::WriteMask(const NodeKey &node, bool enabled)
{
    if (!Send(main(), node, Query(Register::SlotMask, node)))
        return false;
    const std::string mask = ValueOf(Register::SlotMask, node, main().ReplyText).value_or("");
    if (HexToBin(mask).size() != Bits)
        return false;
    if (!Store(main(), node,
               Write(Register::SlotMask, node, ChangedMask(mask, node.channel() - '0', enabled))))
        MsgBox("Channel Enable/Disable setting error !", MsgBoxStyle::Critical,
               "Channel state setting error");
    return true;
}

/// A step that fails is told, and the next one follows.
void FrameChannel::WriteAlarm(const NodeKey &node, AlarmLevel level, const ChannelAlarm &alarm)
{
    const auto step = [&](const std::string &command, const char *failure) {
        if (!Store(main(), node, command))
            MsgBox(failure, MsgBoxStyle::Critical,
                   level == AlarmLevel::High ? "High Alarm state setting error"
                                             : "Low Alarm state setting error");
    };
    if (const auto mode = ChannelModeCommand(node, level, alarm.mode))
        step(*mode, "Alarm state setting error !");
    step(ChannelEnableCommand(node, level, alarm.mode), "Enable/Disable Alarm setting error !");
    step(ChannelLimitCommand(node, level, alarm.limit), "Alarm Limit setting error !");
    step(ChannelConnectionCommand(node, level, alarm), "Alarm Connection setting error !");
}

void FrameChannel::WriteCount(const NodeKey &node, const CounterSettings &count)
{
    if (!Store(main(), node, FilterScaleCommand(node, count.filterScale)))
        MsgBox("Digital filter Scale setting error !", MsgBoxStyle::Critical,
               "Digital filter Scale setting error");
    if (!Store(main(), node, InitialCountCommand(node, count.initial)))
        MsgBox("Initial Counter Value setting error !", MsgBoxStyle::Critical,
               "Initial Counter Value setting error");
    Store(main(), node, CounterStateCommand(node, count.start));
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
