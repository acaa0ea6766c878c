#include "pages/FrameAIn.h"

#include "pages/FrameMSet.h"
#include "pages/ModuleUpdate.h"
#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Text.h"
#include "shell/ButtonRows.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace vorn
{

namespace
{

constexpr int RowsPerColumn = 4;
constexpr int CellsPerChannel = 4; // check box, value, unit, gap

} // namespace

FrameAIn::FrameAIn(FormMain &main, const FrameMSet &settings)
    : PageFrame(main, "FrameAIn", "Analog Input"), settings_(settings)
{
    auto *channels = new QGridLayout;
    channels->setHorizontalSpacing(Rhythm::LabelToField / 2); // two columns of channels fit the start size
    channels->setVerticalSpacing(Rhythm::BetweenRows);
    for (int i = 0; i < Channels; ++i) {
        const auto e = static_cast<std::size_t>(i);
        CheckAI[e] = Named(new QCheckBox(QStringLiteral("CH &%1").arg(i), this), ElementName("CheckAI", i));
        OnTick(main, CheckAI[e], this,
               [this, i](const NodeKey &node, bool enabled) { CheckAI_Click(node, i, enabled); });
        LabAIv[e] = MakeLiveValue(this, ElementName("LabAIv", i), QStringLiteral("Channel %1").arg(i));
        LabAIs[e] = MakeLabel(this, ElementName("LabAIs", i), "");
        LabAIs[e]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("mA ")));
        const int column = i / RowsPerColumn * CellsPerChannel;
        channels->addWidget(CheckAI[e], i % RowsPerColumn, column);
        channels->addWidget(LabAIv[e], i % RowsPerColumn, column + 1);
        channels->addWidget(LabAIs[e], i % RowsPerColumn, column + 2);
        channels->setColumnStretch(column + 1, 1);
    }
    CmdAIZero = MakeButton(this, QStringLiteral("CmdAIZero"), "    &Zero Calibration");
    CmdAISpan = MakeButton(this, QStringLiteral("CmdAISpan"), "   &Span Calibration");
    CmdAICJC = MakeButton(this, QStringLiteral("CmdAICJC"), "    C&JC Calibration");
    OpensCalibration(CmdAIZero, CalibrationMode::Zero);
    OpensCalibration(CmdAISpan, CalibrationMode::Span);
    OpensCalibration(CmdAICJC, CalibrationMode::CJC);

    FrameGrid grid(this);
    grid.WideRow(channels);
    grid.WideRow(new ButtonRows({CmdAIZero, CmdAISpan, CmdAICJC}));
}

void FrameAIn::Load(PageReading &reading)
{
    if (!reading.record)
        return;
    if (IsVoltageOfThermocoupleModel(reading.model, reading.record->typeCode))
        CmdAICJC->hide();
    if (!Has(reading.model, Feature::ChannelInputs))
        return;
    const auto mask = reading.Read(Register::ChannelMask);
    if (!mask)
        return;
    channels_ = HexToBin(*mask);
    for (int i = 0; i < Channels; ++i)
        ShowTick(i);
}

bool FrameAIn::Wants(const PollStep &step, int channel)
{
    if (step.effect == PollEffect::ChannelMask)
        mask_.reset();
    if (step.condition != PollCondition::ChannelEnabled)
        return true;
    if (!mask_)
        return false; // a module that doesn't tell its mask leaves all channels as they are
    if (Bit(*mask_, channel))
        return true;
    LabAIv[static_cast<std::size_t>(channel)]->clear();
    LabAIs[static_cast<std::size_t>(channel)]->clear();
    return false;
}

void FrameAIn::ShowLive(const LiveReply &reply)
{
    if (!reply.accepted)
        return;
    if (reply.step.effect == PollEffect::ChannelMask) {
        mask_ = HexToBin(Mid(reply.text, 4, 2));
    } else if (reply.step.effect == PollEffect::MaskedReading) {
        const auto channel = static_cast<std::size_t>(reply.channel);
        LabAIv[channel]->setText(ToQString(reply.payload));
        LabAIs[channel]->setText(ToQString(CaptionUnit(FromQString(settings_.CmbRange->currentText()))));
    }
}

void FrameAIn::CheckAI_Click(const NodeKey &node, int channel, bool enabled)
{
    main().NowStatus("Enable/Diaable channels is processing , Please wait moment....");
    if (!WriteChannel(node, channel, enabled)) {
        ShowTick(channel);
        return;
    }
    const DisabledWindow disabled(main());
    WaitStored(main(), node);
}

bool FrameAIn::WriteChannel(const NodeKey &node, int channel, bool enabled)
{
    if (!Send(main(), node, Query(Register::ChannelMask, node)))
        return false;
    const std::string held = Mid(main().ReplyText, 4, 2);
    const std::string wanted = ChangedMask(held, channel, enabled);
    const bool taken = Send(main(), node, Write(Register::ChannelMask, node, wanted));
    channels_ = HexToBin(taken ? wanted : held);
    return taken;
}

void FrameAIn::ShowTick(int channel)
{
    SetTick(CheckAI[static_cast<std::size_t>(channel)], Bit(channels_, channel));
}

} // namespace vorn
