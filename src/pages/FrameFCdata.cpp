#include "pages/FrameFCdata.h"

#include "pages/AlarmLimits.h"
#include "pages/CounterSettings.h"
#include "pages/FrameMSet.h"
#include "pages/OutputCommands.h"
#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QPushButton>

#include <algorithm>

namespace vorn
{

namespace
{

/// Count of eight hexadecimal characters, unsigned; what can't be read stays as it came.
std::string CountText(const std::string &hex)
{
    const bool readable = hex.size() == 8 && std::ranges::all_of(hex, [](char c) { return IsHexDigit(c); });
    return readable ? Hex8ToDec(hex) : hex;
}

} // namespace

FrameFCdata::FrameFCdata(FormMain &main, const FrameMSet &settings)
    : PageFrame(main, "FrameFCdata", "Live Data"), settings_(settings)
{
    FrameGrid grid(this);
    for (int i = 0; i < Counters; ++i) {
        BuildCounter(i);
        const auto e = static_cast<std::size_t>(i);
        grid.Row(MakeLabel(this, ElementName("LabFC", i), "CH " + std::to_string(i) + " :"), LabFCv[e],
                 LabFCs[e]);
        auto *row = SideBySide({CounterOverflow[e], CounterDO[e]});
        row->setSpacing(0);
        row->addStretch();
        row->addWidget(CmdClear[e]);
        row->addWidget(CmdCounterSet[e]);
        grid.WideRow(row);
    }
    CmdCClearLatch = MakeButton(this, QStringLiteral("CmdCClearLatch"), "C&lear Latch");
    grid.Buttons({CmdCClearLatch});
    OnClick(main, CmdCClearLatch, this,
            [this](const NodeKey &node) { Send(this->main(), node, ClearLatchCommand(node)); });
    connect(&settings, &FrameMSet::InputModeChanged, this, &FrameFCdata::InputModeChanged);
}

void FrameFCdata::BuildCounter(int counter)
{
    const auto e = static_cast<std::size_t>(counter);
    LabFCv[e] = MakeLiveValue(this, ElementName("LabFCv", counter), QStringLiteral("Value %1").arg(counter));
    LabFCs[e] = MakeLabel(this, ElementName("LabFCs", counter), "");
    LabFCs[e]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("START")));
    CounterOverflow[e] = Named(new DIO(this), ElementName("CounterOverflow", counter));
    CounterOverflow[e]->SetCaption(QStringLiteral("Overflow"));
    DIO *point = CounterDO[e] = Named(new DIO(this), ElementName("CounterDO", counter));
    point->SetCaption(QStringLiteral("DO &%1").arg(counter));
    Wire(point, [this, point](const NodeKey &node) { CounterDO_Click(node, *point); });
    CmdClear[e] = MakeButton(this, ElementName("CmdClear", counter), "Clear");
    CmdClear[e]->setAccessibleName(QStringLiteral("Clear counter %1").arg(counter));
    OnClick(main(), CmdClear[e], this,
            [this, counter](const NodeKey &node) { Send(main(), node, ClearCounterCommand(node, counter)); });
    CmdCounterSet[e] = MakeButton(this, ElementName("CmdCounterSet", counter), "Set ...");
    CmdCounterSet[e]->setAccessibleName(QStringLiteral("Settings of counter %1").arg(counter));
}

void FrameFCdata::Load(PageReading &reading)
{
    if (!reading.record || !IsCounterModel(reading.model))
        return;
    if (reading.range && reading.range->setsFCs)
        SetAll(LabFCs, ToQString(reading.range->unit));
    for (int i = 0; i < Counters; ++i) {
        if (const auto state = reading.Read(Register::CountState, i))
            ShowState(i, *state);
    }
    if (const auto status = settings_.IsCounting() ? reading.Read(Register::CounterStatus) : std::nullopt) {
        if (Has(reading.model, Feature::CounterDisplay))
            ShowAlarmMode(CharAt(*status, 1));
        for (int i = 0; Has(reading.model, Feature::Presets) && i < Counters; ++i)
            ShowPresetMode(i, IsPresetMode(*status, i));
    }
    show();
}

void FrameFCdata::InputModeChanged()
{
    const bool counter = settings_.IsCounting();
    for (std::size_t i = 0; i < Counters; ++i)
        ShowAll({CounterDO[i], CounterOverflow[i], CmdClear[i], CmdCounterSet[i]}, counter);
    SetAll(LabFCs, counter ? QString() : QStringLiteral("Hz"));
    if (!counter)
        CmdCClearLatch->hide();
}

/// In frequency use the unit stays where the state would stand.
void FrameFCdata::ShowState(int counter, const std::string &payload)
{
    if (!settings_.IsFrequency())
        LabFCs[static_cast<std::size_t>(counter)]->setText(ToQString(CounterStateText(payload)));
}

void FrameFCdata::ShowOutput(int output, const CounterOutput &state)
{
    DIO *point = CounterDO[static_cast<std::size_t>(output)];
    SetCaption(point, state.caption);
    point->SetEnabled(state.enabled);
}

void FrameFCdata::ShowPresetMode(int counter, bool preset)
{
    ShowOutput(counter, CounterOutputFor(preset, counter));
}

void FrameFCdata::ShowAlarmMode(char mode)
{
    constexpr char Latch = '2';
    if (mode >= '0' && mode <= Latch)
        Q_EMIT AlarmModeRead(mode);
    for (int i = 0; i < Counters; ++i)
        ShowOutput(i, CounterOutputForAlarm(mode, i));
    CmdCClearLatch->setVisible(mode == Latch);
}

void FrameFCdata::ShowLive(const LiveReply &reply)
{
    if (!reply.accepted)
        return;
    const auto counter = static_cast<std::size_t>(reply.channel);
    switch (reply.step.effect) {
    case PollEffect::Count:
        LabFCv[counter]->setText(ToQString(CountText(Mid(reply.text, 2, 8))));
        break;
    case PollEffect::Overflow:
        CounterOverflow[counter]->SetValue(IsSetAt(reply.text, 4));
        break;
    case PollEffect::CounterOutputs:
        SetLamps(CounterDO, HexToBin(Mid(reply.text, 5, 2)));
        break;
    default:
        break;
    }
}

void FrameFCdata::CounterDO_Click(const NodeKey &node, const DIO &clicked)
{
    if (!IsOutputCaption(CaptionOf(&clicked)))
        return;
    std::array<bool, Counters> values{};
    std::ranges::transform(CounterDO, values.begin(), [](const DIO *point) { return point->value(); });
    Send(main(), node, OutputByteCommand(node, values));
}

} // namespace vorn
