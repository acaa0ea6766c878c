#include "consoles/ChannelConsole.h"

#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace vorn
{

ChannelConsole::ChannelConsole(FormMain &main, const ConsoleDesign &console, const InputDesign &design)
    : InputConsole(main, console, design)
{
    chkEnable = {Named(new QRadioButton(QStringLiteral("Enable"), Channel), "chkEnable_0"),
                 Named(new QRadioButton(QStringLiteral("Disable"), Channel), "chkEnable_1")};
    ChannelRows().Row(MakeLabel(Channel, QStringLiteral("LabEnable"), "Channel is :"),
                      {chkEnable[0], chkEnable[1]});
    ChannelRows().WideRow(InPairs({cmdZero, cmdSpan}));
    ChannelRows().Buttons({cmdChannelUpdate});
    AllowUpdate();

    connect(cboChannel, &QComboBox::activated, this, [this](int channel) {
        TypeChanged = EnableChanged = false;
        AllowUpdate();
        Take(cboChannel, [this, channel] { ReadChannel(channel); });
    });
    connect(cboType, &QComboBox::activated, this, [this] {
        // The text of the channel is what the module was last known to hold.
        const auto channel = static_cast<std::size_t>(cboChannel->currentIndex());
        TypeChanged =
            Ready && chkEnable[0]->isChecked() && cboType->currentText() != txtRange[channel]->text();
        AllowUpdate();
    });
    for (QRadioButton *option : chkEnable)
        connect(option, &QRadioButton::clicked, this, [this] {
            EnableChanged = Ready;
            AllowUpdate();
        });
    OnPressWith(cmdChannelUpdate, [this] {
        return [this, entry = TakeEntry(chkEnable[0]->isChecked())] { cmdChannelUpdate_Click(entry); };
    });
}

void ChannelConsole::AllowUpdate()
{
    Allow(cmdChannelUpdate, EnableChanged || TypeChanged, "Nothing of this channel was changed.");
}

void ChannelConsole::InitialData()
{
    Poll();
    InitialChannel();
}

void ChannelConsole::Poll()
{
    if (Updating)
        return;
    InitialRange();
    ReadMore();
}

void ChannelConsole::InitialRange()
{
    for (int i = 0; i < Channels(); ++i) {
        ReadValue(i);
        ReadEnabled(i);
    }
}

/// The value goes with the unit of the channel's type. A channel that doesn't answer keeps its last text.
void ChannelConsole::ReadValue(int channel)
{
    if (!AskFor(Register::ChannelReading, channel))
        return;
    const auto i = static_cast<std::size_t>(channel);
    const int type = PositionOfCaption(Types(), FromQString(txtRange[i]->text()));
    const std::string_view unit =
        type < 0 ? std::string_view{} : Types()[static_cast<std::size_t>(type)].unit;
    txtvalue[i]->setText(ToQString(DataPayload(Reply, UsesChecksum()) + std::string(unit)));
}

/// The mask is read behind each channel, and says something about one: that of its character.
void ChannelConsole::ReadEnabled(int character)
{
    if (!ReadBits(Register::ChannelMask, EnableBits))
        return;
    const int channel = Channels() - 1 - character;
    for (QLabel *field :
         {txtvalue[static_cast<std::size_t>(channel)], txtRange[static_cast<std::size_t>(channel)]})
        field->setEnabled(IsEnabled(channel));
}

void ChannelConsole::InitialChannel()
{
    Updating = true;
    tmrTimer.stop();
    Yield();
    ShowType(ReadType(0));
    cboChannel->setCurrentIndex(0);
    ShowEnabled(IsEnabled(0));
    for (int i = 0; i < Channels(); ++i)
        ShowRange(i);
    Ready = true;
    TypeChanged = EnableChanged = false;
    tmrTimer.start();
    Updating = false;
}

void ChannelConsole::ReadChannel(int channel)
{
    Updating = true;
    ShowType(ReadType(channel));
    if (!EnableChanged)
        ShowEnabled(IsEnabled(channel));
    AllowUpdate();
    Updating = false;
}

void ChannelConsole::ShowEnabled(bool enabled)
{
    chkEnable[enabled ? 0 : 1]->setChecked(true);
}

void ChannelConsole::cmdChannelUpdate_Click(const ChannelEntry &entry)
{
    Updating = true;
    if (WriteChannel(entry))
        TellChannelSet();
    AllowUpdate();
    Updating = false;
}

bool ChannelConsole::WriteChannel(const ChannelEntry &entry)
{
    const bool type = WriteChangedType(entry);
    return WriteChangedMask(entry, "Configuration is invalid!") && type;
}

bool ChannelConsole::WriteChangedType(const ChannelEntry &entry)
{
    if (!entry.typeChanged || WriteType(entry.channel, entry.type))
        return true;
    TellInvalid();
    return false;
}

bool ChannelConsole::WriteChangedMask(const ChannelEntry &entry, std::string_view refused)
{
    if (!entry.enableChanged || WriteMask(entry.channel, entry.enabled))
        return true;
    TellInvalid(refused);
    return false;
}

void ChannelConsole::CalibrateClick(const Calibration &calibration, int channel, int position)
{
    if (IsEnabled(channel))
        Calibrate(calibration, channel, position);
    else
        Box("Please enable the channel first!", MsgBoxStyle::Plain, CalibrationTitle(calibration));
}

} // namespace vorn
