#include "pages/FrameSlotIO.h"

#include "pages/FrameSlot.h"
#include "platform/WidgetText.h"
#include "protocol/ModelTable.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/SelectAllOnFocus.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

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

    FrameGrid grid(this);
    grid.WideRow(channels);
    grid.Buttons({CmdSlotSendAO});
}

void FrameSlotIO::BuildChannel(QGridLayout *channels, int channel)
{
    const auto e = static_cast<std::size_t>(channel);
    TextCH[e] = MakeEntry(this, ElementName("TextCH", channel), QStringLiteral("Channel %1").arg(channel));
    TextCH[e]->setAlignment(Qt::AlignRight);
    SetWritable(*TextCH[e], false);
    SelectAllOnFocus(TextCH[e]);
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

/// The texts of an output slot are the operator's entries.
void FrameSlotIO::Load(PageReading &reading)
{
    if (reading.node.kind() == NodeKind::Module)
        return;
    for (QLineEdit *value : TextCH)
        SetWritable(*value, Has(reading.model, Feature::CardOutputs));
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

std::string CounterChannelText(const FrameSlot &settings, const std::string &payload)
{
    return CounterText(payload, settings.LabSRangeLab->text() == QStringLiteral("Frequency"),
                       FromQString(settings.LabSDataFormatLab->text()));
}

} // namespace vorn
