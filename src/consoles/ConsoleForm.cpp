#include "consoles/ConsoleForm.h"

#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>

namespace vorn
{

namespace
{

/// Entries of `cboBaudRate`; positions as in `BaudRows`.
constexpr std::array<const char *, 8> BaudEntries{"1200   bps", "2400   bps", "4800   bps", "9600   bps",
                                                  "19.2K  bps", "38.4K  bps", "57.6K  bps", "115.2K bps"};
constexpr int FirstBaudCode = 3;

constexpr const char *OnlyInInit = "This can be changed in the initial state only.";

/// Value of the two hexadecimal digits at a position from 1; -1 where there are none.
int HexAt(std::string_view reply, std::size_t position)
{
    const int high = HexDigitValue(CharAt(reply, position));
    const int low = HexDigitValue(CharAt(reply, position + 1));
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

std::string DecimalAddress(std::string_view hexAddress)
{
    return PadLeft(std::to_string(static_cast<int>(HexVal(hexAddress))), 2, '0');
}

} // namespace

ConsoleForm::Frozen::Frozen(ConsoleForm &console, QWidget *part)
    : console_(console), part_(part), focus_(console.focusWidget())
{
    part_->setEnabled(false);
    moved_ = console_.focusWidget();
}

ConsoleForm::Frozen::~Frozen()
{
    part_->setEnabled(true);
    if (focus_ && console_.focusWidget() == moved_)
        focus_->setFocus();
}

ConsoleForm::ConsoleForm(FormMain &main, const ConsoleDesign &design)
    : ConsoleWindow(main, design.name, design.caption)
{
    tmrTimer.setParent(this);
    tmrTimer.setObjectName(QStringLiteral("tmrTimer"));
    tmrTimer.setInterval(design.interval);
    tmrTimer.setTimerType(Qt::PreciseTimer);
    OnTick(tmrTimer, [this] { Poll(); });
    BuildGeneral(design);
}

void ConsoleForm::BuildGeneral(const ConsoleDesign &design)
{
    General = Named(new QGroupBox(QStringLiteral("General Setting"), Body()), "General");
    generalRows_.emplace(General);
    txtOldAddress = MakeEntry(General, QStringLiteral("txtOldAddress"), QStringLiteral("Present address"));
    SetWritable(*txtOldAddress, false);
    txtNewAddress =
        MakeEntry(General, QStringLiteral("txtNewAddress"), QStringLiteral("New address, decimal"));
    GuardField(txtNewAddress, FieldRule::ConsoleAddress);
    const int digits = txtNewAddress->fontMetrics().horizontalAdvance(QStringLiteral("000000"));
    txtOldAddress->setFixedWidth(digits);
    txtNewAddress->setFixedWidth(digits);
    generalRows_->Row(
        MakeLabel(General, QStringLiteral("lblAddress"), design.addressLabel, txtNewAddress),
        {txtOldAddress, txtNewAddress, MakeLabel(General, QStringLiteral("Label1"), design.addressUnit)});

    cboBaudRate = MakeChoice(General, QStringLiteral("cboBaudRate"), QStringLiteral("Baud rate"), 12);
    for (const char *entry : BaudEntries)
        cboBaudRate->addItem(QString::fromLatin1(entry));
    cboBaudRate->setCurrentIndex(-1);
    generalRows_->Row(MakeLabel(General, QStringLiteral("lblBaudRate"), "Baud Rate :", cboBaudRate),
                      cboBaudRate);

    if (design.checksumLabel) {
        chkChecksum = MakeStateBox(General, QStringLiteral("chkChecksum"), QStringLiteral("Checksum"));
        generalRows_->Row(
            MakeLabel(General, QStringLiteral("lblChecksum"), design.checksumLabel, chkChecksum),
            chkChecksum);
    } else {
        chkChecksum = Named(new QCheckBox(QString::fromLatin1(design.checksumCaption), General),
                            "chkChecksum", QStringLiteral("Checksum"));
        generalRows_->Row(nullptr, chkChecksum);
    }

    txtFirmware = MakeEntry(General, QStringLiteral("txtFirmware"), QStringLiteral("Firmware version"));
    SetWritable(*txtFirmware, false);
    generalRows_->Row(MakeLabel(General, QStringLiteral("lblFirmware"), "Firmware Version :", txtFirmware),
                      txtFirmware);
    cmdGeneralUpdate = MakeButton(General, QString::fromLatin1(design.updateButton), "&Update");

    connect(txtNewAddress, &QLineEdit::textEdited, this, [this] { Changed = true; });
    connect(cboBaudRate, &QComboBox::activated, this, [this] { Changed = true; });
    connect(chkChecksum, &QCheckBox::clicked, this, [this] { Changed = ChecksumChanged = true; });
    OnPress(cmdGeneralUpdate, [this] { cmdGeneralUpdate_Click(); });
}

void ConsoleForm::EndGeneral()
{
    generalRows_->Buttons({cmdGeneralUpdate});
    generalRows_.reset();
}

void ConsoleForm::Form_Load()
{
    Updating = Changed = false;
    {
        const Frozen frozen(*this, Body());
        InitialGeneral();
        InitialData();
        ClearFlags();
    }
    txtNewAddress->setFocus();
    tmrTimer.start();
}

void ConsoleForm::Form_Unload()
{
    main().ConsoleAddress = Address;
}

void ConsoleForm::InitialGeneral()
{
    InitState = NodeKey.isInit();
    const bool stored = CharAt(NodeKey.text(), 2) == '1';
    chkChecksum->setChecked(stored);
    ChecksumOn = stored && !InitState;
    Address = NodeKey.address();
    ShowAddress();
    Allow(cboBaudRate, InitState, OnlyInInit);
    Allow(chkChecksum, InitState, OnlyInInit);

    BeforeRecord();
    if (Repeat(ReadAttempts(), Register::Configuration)) {
        ShowBaud();
        ShowRecord();
    } else {
        RecordUnread();
    }
    BeforeFirmware();
    if (Repeat(ReadAttempts(), Register::FirmwareVersion))
        txtFirmware->setText(ToQString(Data()));
    else
        FirmwareUnread();
    AfterFirmware();
}

void ConsoleForm::ShowAddress()
{
    txtOldAddress->setText(ToQString((InitState ? "*" : "") + Address));
    txtNewAddress->setText(ToQString(DecimalAddress(Address)));
}

/// Asks until the module answers, so many times at most.
bool ConsoleForm::Repeat(int attempts, Register reg)
{
    for (int i = 0; i < attempts; ++i) {
        if (AskFor(reg))
            return true;
    }
    return false;
}

/// A code that the list doesn't have leaves its selection.
void ConsoleForm::ShowBaud()
{
    const int position = HexAt(Reply, 6) - FirstBaudCode;
    if (position >= 0 && position < cboBaudRate->count())
        cboBaudRate->setCurrentIndex(position);
}

std::string ConsoleForm::FormatByte() const
{
    return chkChecksum->isChecked() ? "40" : "00";
}

void ConsoleForm::ClearFlags()
{
    Changed = ChecksumChanged = false;
}

void ConsoleForm::TellInvalid(std::string_view text)
{
    Box(text, MsgBoxStyle::Critical, "Configuration is invalid");
}

void ConsoleForm::cmdGeneralUpdate_Click()
{
    const Frozen frozen(*this, General);
    Updating = true;
    tmrTimer.stop();
    const bool record = WritesRecord();
    if (!record || UpdateRecord()) {
        const Step step = UpdateMore();
        if (step == Step::Cancelled)
            return;
        if (step == Step::Done)
            Box("Configuration is successful!", MsgBoxStyle::Information, "Configuration is successful");
        if (record)
            Address = source_;
        ClearFlags();
    }
    Updating = false;
    tmrTimer.start();
}

ConsoleForm::Record ConsoleForm::RecordToWrite() const
{
    Record record;
    const std::string shown = FromQString(txtOldAddress->text());
    record.source = HexByte(static_cast<int>(HexVal(InitState ? Mid(shown, 2) : shown)));
    record.address = HexByte(static_cast<int>(Val(FromQString(txtNewAddress->text()))));
    record.checksum = chkChecksum->isChecked();
    record.command = Write(Register::Configuration, InitState ? "00" : record.source,
                           record.address + TypeCode() + std::string(BaudCode(cboBaudRate->currentIndex())) +
                               FormatByte());
    return record;
}

/// Writes the record and reads it back, both several times over if need be. True when the page shows what the
/// module now holds. Nothing is written while the line speed isn't known, which each record holds.
bool ConsoleForm::UpdateRecord()
{
    if (cboBaudRate->currentIndex() < 0) {
        TellRefused(RecordToWrite());
        return false;
    }
    int refused = 0;
    int unread = 0;
    for (;;) {
        Wait(StoringTime);
        Yield();
        const Record record = RecordToWrite();
        source_ = record.source;
        if (!Ask(record.command)) {
            if (++refused < Attempts)
                continue;
            TellRefused(record);
            return false;
        }
        TakeOver(record);
        if (Ask(Query(Register::Configuration, InitState ? "00" : record.address))) {
            ShowCheckRead(record);
            return true;
        }
        if (++unread == Attempts) {
            TellInvalid(Texts().unread);
            Address = source_;
            ClearFlags();
            return false;
        }
    }
}

void ConsoleForm::TakeOver(const Record &record)
{
    ChecksumOn = record.checksum;
    chkChecksum->setChecked(record.checksum);
    std::string key = NodeKey.text();
    NodeKey = vorn::NodeKey(key.replace(7, 2, record.address));
    main().ConsoleNewAddress = record.address;
    main().TreeView1->viewport()->update();
    Wait(StoringTime);
}

void ConsoleForm::ShowCheckRead(const Record &record)
{
    ShowBaud();
    if (InitState) {
        txtOldAddress->setText(ToQString("*" + record.address));
    } else {
        // A reply without an address came from where it was asked for.
        source_ = HexAt(Reply, 2) < 0 ? record.address : Mid(Reply, 2, 2);
        Address = source_; // the steps that follow go to the address that the module now has
        txtOldAddress->setText(ToQString(source_));
    }
    txtNewAddress->setText(ToQString(PadLeft(FromQString(txtNewAddress->text()), 2, '0')));
    ShowReadBack();
}

void ConsoleForm::TellRefused(const Record &record)
{
    TellInvalid(Texts().refused);
    if (ChecksumChanged)
        chkChecksum->setChecked(!record.checksum);
    ChecksumChanged = false;
}

} // namespace vorn
