#include "logger/FrameMemory.h"

#include "shell/Controls.h"

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
    auto *channels = new QGridLayout;
    for (int i = 0; i < Channels; ++i) {
        auto *&box = CheckCH[static_cast<std::size_t>(i)];
        box = Named(new QCheckBox(QStringLiteral("CH &%1").arg(i), this), ElementName("CheckCH", i));
        channels->addWidget(box, i / ChannelsPerRow, i % ChannelsPerRow);
    }
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
    CmdMemConfig = MakeButton(this, QStringLiteral("CmdMemConfig"), "&Update");

    FrameGrid grid(this);
    grid.WideRow(channels);
    grid.Row(MakeLabel(this, QStringLiteral("LabMStand"), "Stand mode :", CheckMStandmode), CheckMStandmode);
    grid.Row(MakeLabel(this, QStringLiteral("LabMStorage"), "Storage &mode :", CmbDataStorage),
             CmbDataStorage);
    auto *type = SideBySide({OptionStorageType[0], OptionStorageType[1]});
    type->addStretch();
    grid.WideRow(type);
    grid.Row(MakeLabel(this, QStringLiteral("LabMInterval"), "Sampling &interval :", TextSamplinginterval),
             TextSamplinginterval);
    grid.Buttons({CmdMemConfig});
}

} // namespace vorn
