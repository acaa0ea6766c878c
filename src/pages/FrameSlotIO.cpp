#include "pages/FrameSlotIO.h"

#include "pages/EntryKeys.h"
#include "pages/FrameSlot.h"
#include "pages/OutputCommands.h"
#include "platform/WidgetText.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelTable.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "shell/SelectAllOnFocus.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <utility>
#include <vector>

namespace vorn
{

namespace
{

constexpr std::string_view VoltageOutput = "02"; ///< output format code: 0 to 10 V

} // namespace

FrameSlotIO::FrameSlotIO(FormMain &main, const FrameSlot &settings)
    : PageFrame(main, "FrameSlotIO", "Channels"), settings_(settings)
{
    auto *channels = new QGridLayout;
    channels->setHorizontalSpacing(Rhythm::LabelToField);
    channels->setVerticalSpacing(Rhythm::BetweenRows);
    for (int i = 0; i < Channels; ++i)
        BuildChannel(channels, i);
    channels->setColumnStretch(1, 1);
    CmdSlotSendAO = MakeButton(this, QStringLiteral("CmdSlotSendAO"), "Se&nd");
    connect(CmdSlotSendAO, &QPushButton::clicked, this, &FrameSlotIO::CmdSlotSendAO_Click);

    FrameGrid grid(this);
    grid.WideRow(channels);
    grid.Buttons({CmdSlotSendAO});
}

void FrameSlotIO::BuildChannel(QGridLayout *channels, int channel)
{
    const auto e = static_cast<std::size_t>(channel);
    TextCH[e] = MakeEntry(this, ElementName("TextCH", channel), QStringLiteral("Channel %1").arg(channel));
    TextCH[e]->setAlignment(Qt::AlignRight);
    TextCH[e]->setMinimumWidth(TextCH[e]->fontMetrics().horizontalAdvance(QStringLiteral("0000000000 ")));
    SetWritable(*TextCH[e], false);
    SelectAllOnFocus(TextCH[e]);
    GuardField(TextCH[e], [this, e] {
        return TagOf(LabCHunit[e]) == VoltageOutput ? FieldRule::VoltageOutput : FieldRule::CurrentOutput;
    });
    const auto typed = [this, e] { SetTag(TextCH[e], "Changed"); };
    const auto entered = [this, e] {
        if (TextCH[e]->text().isEmpty())
            SetTag(TextCH[e], {});
        else
            CmdSlotSendAO_Click();
        return true;
    };
    new EntryKeys(TextCH[e], typed, entered);
    Labch[e] =
        MakeLabel(this, ElementName("Labch", channel), "CH &" + std::to_string(channel) + " :", TextCH[e]);
    LabCHunit[e] = MakeLabel(this, ElementName("LabCHunit", channel), "");
    ChHA[e] = Named(new DIO(this), ElementName("ChHA", channel));
    ChHA[e]->SetCaption(QStringLiteral("High"));
    ChLA[e] = Named(new DIO(this), ElementName("ChLA", channel));
    ChLA[e]->SetCaption(QStringLiteral("Low"));
    int column = 0;
    for (QWidget *cell : {static_cast<QWidget *>(Labch[e]), static_cast<QWidget *>(TextCH[e]),
                          static_cast<QWidget *>(LabCHunit[e]), static_cast<QWidget *>(ChHA[e]),
                          static_cast<QWidget *>(ChLA[e])})
        channels->addWidget(cell, channel, column++);
}

/// What was typed for one slot, and not sent, isn't meant for the next.
void FrameSlotIO::Leave()
{
    PageFrame::Leave();
    for (QLineEdit *value : TextCH)
        SetTag(value, {});
}

/// The texts of an output slot are the operator's entries.
void FrameSlotIO::Load(PageReading &reading)
{
    if (reading.node.kind() == NodeKind::Module)
        return;
    for (QLineEdit *value : TextCH) {
        SetWritable(*value, Has(reading.model, Feature::CardOutputs));
        if (!IsTouched(value))
            SetTag(value, {});
    }
    if (reading.slot)
        LoadUnits(reading);
}

void FrameSlotIO::LoadUnits(PageReading &reading)
{
    const std::string &model = reading.model;
    const bool secondFormat = reading.slot->FormatPosition(model) == 1;
    if (Has(model, Feature::CardCounters))
        SetAll(LabCHunit, reading.slot->typeCode == CounterFrequency ? QStringLiteral("Hz") : QString());
    else if (Has(model, Feature::HexReadings) && secondFormat)
        SetAll(LabCHunit, QStringLiteral("HEX"));
    else if (Has(model, Feature::ChannelRanges))
        LoadChannelUnits(reading);
    else if (Has(model, Feature::CardInputs))
        SetAll(LabCHunit, secondFormat ? settings_.CmbSFormat->itemText(1)
                                       : ToQString(CaptionUnit(FromQString(settings_.LabSRangeLab->text()))));
}

/// Each channel has a unit of its own; that of an output tells its entry's scale, too.
void FrameSlotIO::LoadChannelUnits(PageReading &reading)
{
    const int channels = FindModel(reading.model)->channels;
    for (int i = 0; i < channels; ++i) {
        const auto value = reading.ReadOfSlot(Register::ChannelConfiguration, i);
        const std::string code = value ? SlotRecord(*value).typeCode : std::string();
        const auto position = ChannelRangePosition(reading.model, code);
        if (!position)
            continue;
        QLabel *unit = LabCHunit[static_cast<std::size_t>(i)];
        unit->setText(ToQString(ChannelUnit(reading.model, code)));
        if (Has(reading.model, Feature::CardOutputs))
            SetTag(unit, "0" + std::to_string(*position));
    }
}

/// A channel's entry that the operator types into is left alone.
bool FrameSlotIO::IsTypedInto(std::size_t channel) const
{
    return !TagOf(TextCH[channel]).empty();
}

bool FrameSlotIO::Wants(const PollStep &step, int channel)
{
    return step.condition != PollCondition::NotTyped || !IsTypedInto(static_cast<std::size_t>(channel));
}

void FrameSlotIO::ShowLive(const LiveReply &reply)
{
    if (!reply.accepted)
        return;
    const auto channel = static_cast<std::size_t>(reply.channel);
    switch (reply.step.effect) {
    case PollEffect::SlotReadings: {
        const bool hexadecimal =
            Has(reply.node.model(), Feature::HexReadings) && settings_.ShowsSecondFormat();
        const auto texts = SlotTexts(reply.node.model(), reply.text, hexadecimal);
        for (std::size_t i = 0; i < texts.size(); ++i)
            ShowInEntry(*TextCH[i], ToQString(texts[i]));
        break;
    }
    case PollEffect::SlotAlarm:
        ChHA[channel]->SetValue(IsSetAt(reply.text, 4));
        ChLA[channel]->SetValue(IsSetAt(reply.text, 5));
        break;
    case PollEffect::SlotOutput:
        if (!IsTypedInto(channel)) // typed into while the reply was on its way
            ShowInEntry(*TextCH[channel], ToQString(reply.payload));
        break;
    case PollEffect::SlotCount:
        ShowInEntry(*TextCH[channel], ToQString(CounterChannelText(settings_, reply.payload)));
        break;
    default:
        break;
    }
}

/// Puts out what was typed, as it stood at the press: each channel that the operator has changed.
void FrameSlotIO::CmdSlotSendAO_Click()
{
    std::vector<std::size_t> channels;
    for (std::size_t i = 0; i < Channels; ++i) {
        const std::string text = FromQString(TextCH[i]->text());
        if (text.empty() || !IsTypedInto(i) || asked_[i] == text)
            continue;
        asked_[i] = text;
        channels.push_back(i);
    }
    if (channels.empty())
        return;
    const auto take = [this](std::size_t channel) { return std::exchange(asked_[channel], {}); };
    const auto send = [this, channels, take, texts = asked_](const NodeKey &node) {
        for (const std::size_t channel : channels) {
            if (asked_[channel] == texts[channel])
                take(channel);
            if (FromQString(TextCH[channel]->text()) == texts[channel])
                SetTag(TextCH[channel], {});
            if (const std::string format = TagOf(LabCHunit[channel]); !format.empty())
                main().OutputFormatCode = format;
            Send(main(), node, SlotOutputCommand(node, static_cast<int>(channel), texts[channel]));
        }
    };
    const auto forget = [channels, take] {
        for (const std::size_t channel : channels)
            take(channel);
    };
    main().TakeForPage(this, nullptr, send, forget);
}

std::string CounterChannelText(const FrameSlot &settings, const std::string &payload)
{
    return CounterText(payload, settings.LabSRangeLab->text() == QStringLiteral("Frequency"),
                       FromQString(settings.LabSDataFormatLab->text()));
}

} // namespace vorn
