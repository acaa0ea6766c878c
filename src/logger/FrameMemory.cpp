#include "logger/FrameMemory.h"

#include "logger/LoggerSettings.h"
#include "platform/Dialogs.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "shell/Controls.h"
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

constexpr int ChannelsPerRow = 4;

} // namespace

FrameMemory::FrameMemory(FormMain &main) : PageFrame(main, "FrameMemory", "Memory Configuration")
{
    BuildChannels();
    BuildSettings();
    CmdMemConfig = MakeButton(this, QStringLiteral("CmdMemConfig"), "&Update");
    Writes(CmdMemConfig, [this] {
        return [this, configuration = Configuration()](const NodeKey &node) {
            CmdMemConfig_Click(node, configuration);
        };
    });

    FrameGrid grid(this);
    auto *channels = new QGridLayout;
    for (int i = 0; i < Channels; ++i)
        channels->addWidget(CheckCH[static_cast<std::size_t>(i)], i / ChannelsPerRow, i % ChannelsPerRow);
    grid.WideRow(channels);
    grid.Row(MakeLabel(this, QStringLiteral("LabMStand"), "Stand mode :", CheckMStandmode), CheckMStandmode);
    grid.Row(MakeLabel(this, QStringLiteral("LabMStorage"), "Storage &mode :", CmbDataStorage),
             CmbDataStorage);
    grid.Row(MakeLabel(this, QStringLiteral("LabMType"), "Storage type :"),
             {OptionStorageType[0], OptionStorageType[1]});
    grid.Row(MakeLabel(this, QStringLiteral("LabMInterval"), "Sampling &interval :", TextSamplinginterval),
             TextSamplinginterval, MakeLabel(this, QStringLiteral("LabMIntervalUnit"), "s"));
    grid.Buttons({CmdMemConfig});
}

void FrameMemory::BuildChannels()
{
    for (int i = 0; i < Channels; ++i)
        CheckCH[static_cast<std::size_t>(i)] =
            Named(new QCheckBox(QStringLiteral("CH &%1").arg(i), this), ElementName("CheckCH", i));
}

void FrameMemory::BuildSettings()
{
    CheckMStandmode =
        MakeStateBox(this, QStringLiteral("CheckMStandmode"), QStringLiteral("Stand mode"), "YES", "NO");
    CmbDataStorage = Named(new QComboBox(this), "CmbDataStorage", QStringLiteral("Storage mode"));
    CmbDataStorage->addItems(
        {QStringLiteral("Standard mode"), QStringLiteral("Event mode"), QStringLiteral("Mixed mode")});
    CmbDataStorage->setCurrentIndex(-1);
    OptionStorageType[0] = Named(new QRadioButton(QStringLiteral("&Normal"), this), "OptionStorageType_0");
    OptionStorageType[1] = Named(new QRadioButton(QStringLiteral("&Cycle"), this), "OptionStorageType_1");
    TextSamplinginterval =
        MakeEntry(this, QStringLiteral("TextSamplinginterval"), QStringLiteral("Sampling interval"));
    GuardField(TextSamplinginterval, FieldRule::SamplingInterval);
}

void FrameMemory::ShowStorageMode(const std::string &reply)
{
    if (const auto mode = ReadMemoryConfiguration(reply).storageMode; IsAccepted(reply) && mode)
        Select(CmbDataStorage, *mode);
}

void FrameMemory::ShowConfiguration(const std::string &reply)
{
    if (!IsAccepted(reply))
        return;
    const MemoryReading reading = ReadMemoryConfiguration(reply);
    for (int i = 0; i < Channels; ++i)
        SetTick(CheckCH[static_cast<std::size_t>(i)], Bit(reading.channels, i));
    SetTick(CheckMStandmode, reading.standMode);
    if (reading.typeElement)
        SetTick(OptionStorageType[static_cast<std::size_t>(*reading.typeElement)], true);
    ShowText(TextSamplinginterval, reading.interval);
}

/// The configuration of one module is none of another, which may not answer.
void FrameMemory::Leave()
{
    PageFrame::Leave();
    for (QCheckBox *channel : CheckCH)
        channel->setChecked(false);
    CheckMStandmode->setChecked(false);
    CmbDataStorage->setCurrentIndex(-1);
    ChooseNone(OptionStorageType);
    TextSamplinginterval->clear();
}

std::string FrameMemory::Configuration() const
{
    MemoryConfiguration configuration{.standMode = CheckMStandmode->isChecked(),
                                      .storageMode = CmbDataStorage->currentIndex(),
                                      .normal = OptionStorageType[0]->isChecked(),
                                      .interval = FromQString(TextSamplinginterval->text())};
    for (int i = 0; i < Channels; ++i)
        SetBit(configuration.channels, i, CheckCH[static_cast<std::size_t>(i)]->isChecked());
    return MemoryConfigurationText(configuration);
}

void FrameMemory::CmdMemConfig_Click(const NodeKey &node, const std::string &configuration)
{
    main().NowStatus("Now Memory Configuration is processing , Please wait moment....");
    RefreshHold hold(main());
    hold.Keep();
    if (Store(main(), node, Write(Register::MemoryConfiguration, node, configuration)))
        MsgBox("Configuration is successful !", MsgBoxStyle::Information, "Configuration is successful");
    else
        MsgBox("Configuration is invalid !", MsgBoxStyle::Critical, "Configuration is invalid");
    ReloadTab(node);
    main().NowStatus("");
}

} // namespace vorn
