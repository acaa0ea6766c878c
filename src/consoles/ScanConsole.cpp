#include "consoles/ScanConsole.h"

#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

ScanConsole::ScanConsole(FormMain &main, const ConsoleDesign &console, const InputDesign &design,
                         const char *enableCaption)
    : InputConsole(main, console, design)
{
    chkChannel = Named(new QCheckBox(QString::fromLatin1(enableCaption), Channel), "chkChannel",
                       QStringLiteral("Channel is enabled"));
    ChannelRows().Row(nullptr, chkChannel);
    for (QLabel *range : txtRange)
        range->setAutoFillBackground(true);
    cmdExit = MakeButton(General, QStringLiteral("cmdExit"), "Exit");
    connect(cmdExit, &QPushButton::clicked, this, &QDialog::reject);

    connect(cboChannel, &QComboBox::activated, this, [this](int channel) {
        TypeChanged = EnableChanged = false;
        Take(cboChannel, [this, channel] { ReadChannel(channel); });
    });
    connect(cboType, &QComboBox::activated, this, [this] { TypeChanged = true; });
    connect(chkChannel, &QCheckBox::clicked, this, [this] { EnableChanged = true; });
    OnPressWith(cmdChannelUpdate, [this] {
        return [this, entry = TakeEntry(chkChannel->isChecked())] { cmdChannelUpdate_Click(entry); };
    });
}

void ScanConsole::BeforeRecord()
{
    AskFor(Register::Watchdog);
    Watchdog->Show(Reply);
}

void ScanConsole::InitialData()
{
    UpdateData();
    InitialRange();
    InitialChannel();
}

void ScanConsole::UpdateData()
{
    if (Updating)
        return;
    if (ReadChannels())
        ReadMore();
}

/// A module that stops answering leaves the last values on the page.
bool ScanConsole::ReadChannels()
{
    if (!ReadBits(Register::ChannelMask, EnableBits) || !ReadBits(Register::OpenWiring, WireBits))
        return false;
    AskFor(Register::AllReadings);
    if (Reply.empty())
        return false;
    for (int i = 0; i < Channels(); ++i) {
        QLabel *value = txtvalue[static_cast<std::size_t>(i)];
        const bool enabled = IsEnabled(i);
        value->setText(enabled ? ToQString(ReadingAt(Reply, i)) : QString());
        for (QLabel *field : {value, txtRange[static_cast<std::size_t>(i)]})
            field->setBackgroundRole(enabled ? QPalette::Base : QPalette::Button);
    }
    ShowWiring();
    return true;
}

void ScanConsole::InitialRange()
{
    for (int i = 0; i < Channels(); ++i) {
        if (!ShowRange(i))
            return;
    }
}

void ScanConsole::InitialChannel()
{
    cboChannel->setCurrentIndex(0);
    ReadChannel(0);
}

void ScanConsole::ReadChannel(int channel)
{
    Updating = true;
    ShowType(ReadType(channel));
    if (!EnableChanged)
        chkChannel->setChecked(IsEnabled(channel));
    Updating = false;
}

void ScanConsole::cmdChannelUpdate_Click(const ChannelEntry &entry)
{
    Updating = true;
    tmrTimer.stop();
    Yield();
    bool done = false;
    if (entry.enableChanged) {
        if (WriteMask(entry.channel, entry.enabled))
            done = true;
        else
            TellInvalid();
    }
    if (entry.typeChanged) {
        if (WriteType(entry.channel, entry.type))
            done = true;
        else
            TellInvalid();
    }
    if (done)
        TellChannelSet();
    Updating = false;
    tmrTimer.start();
}

/// True when the module says that it now holds what it was told.
bool ScanConsole::WriteWatchdog()
{
    const std::string value = Watchdog->Value();
    Tell(Register::Watchdog, value);
    Yield();
    if (!AskFor(Register::Watchdog) || Cut(Reply, RowOf(Register::Watchdog).value) != value) {
        TellInvalid();
        return false;
    }
    Watchdog->Show(Reply);
    return true;
}

ConsoleForm::Step ScanConsole::UpdateMore()
{
    bool done = true;
    if (Watchdog->WDTChanged)
        done = WriteWatchdog();
    if (ColdJunction && ColdJunction->CJCChanged)
        done = WriteColdJunction("Configuration is invalid!") && done;
    return done ? Step::Done : Step::Failed;
}

} // namespace vorn
