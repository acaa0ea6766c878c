#include "pages/FrameMSet.h"

#include "pages/CounterSettings.h"
#include "pages/ModuleUpdate.h"
#include "pages/OutputCommands.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"
#include "shell/SelectAllOnFocus.h"
#include "shell/UpDown.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace vorn
{

namespace
{

constexpr int LowestAddress = 0;
constexpr int HighestAddress = 255;
constexpr int ChoiceCharacters = 14;
constexpr std::array<const char *, 3> LedCaptions{"&CH 0", "C&H 1", "&External input"};
constexpr int HostDisplay = 2; ///< element of `OptionLED` that puts the display into the host's hands

const char *const InitStateOnly = "A module takes this setting only in its INIT state.";

constexpr const char *Invalid = "Configuration is invalid";
constexpr const char *Successful = "Configuration is successful";

} // namespace

FrameMSet::FrameMSet(FormMain &main) : PageFrame(main, "FrameMSet", "Module Setting")
{
    BuildFields();
    BuildButtons();

    FrameGrid grid(this);
    grid.Row(LabMFV, LabMFVv);
    grid.Row(MakeLabel(this, QStringLiteral("LabAddress"), "&Address :", TextAddress),
             {TextAddress, UpDownAddr, LabAddr});
    grid.Row(LabRange, CmbRange);
    grid.Row(LabDataformat, CmbDataFormat);
    grid.Row(LabSlewRate, CmbSlowRate);
    grid.Row(MakeLabel(this, QStringLiteral("LabBaudrate"), "&Baudrate :", CmbBaudrate), CmbBaudrate);
    grid.Row(MakeLabel(this, QStringLiteral("LabChecksum"), "Chec&ksum :", CheckChecksum), CheckChecksum);
    grid.Row(LabLED, {OptionLED[0], OptionLED[1], OptionLED[2]});
    grid.Buttons({CmdLED, CmdDownLoadF, CmdMUpdate});
}

void FrameMSet::BuildFields()
{
    LabMFVv = MakeValue(this, QStringLiteral("LabMFVv"), QStringLiteral("Firmware version"));
    LabMFV = MakeLabel(this, QStringLiteral("LabMFV"), "Firmware version :");
    TextAddress = MakeEntry(this, QStringLiteral("TextAddress"), QStringLiteral("Address, decimal"));
    TextAddress->setMaxLength(3);
    TextAddress->setFixedWidth(TextAddress->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16);
    SelectAllOnFocus(TextAddress);
    GuardField(TextAddress, FieldRule::Address);
    connect(TextAddress, &QLineEdit::textChanged, this, &FrameMSet::TextAddress_Change);
    UpDownAddr = Named(new UpDown(TextAddress, LowestAddress, HighestAddress), "UpDownAddr");
    LabAddr = MakeValue(this, QStringLiteral("LabAddr"), QStringLiteral("Address, hexadecimal"));

    const auto choice = [this](const char *name, const char *accessibleName) {
        return MakeChoice(this, QString::fromLatin1(name), QString::fromLatin1(accessibleName),
                          ChoiceCharacters);
    };
    CmbRange = choice("CmbRange", "Range");
    CmbDataFormat = choice("CmbDataFormat", "Data format");
    CmbSlowRate = choice("CmbSlowRate", "Slew rate");
    CmbBaudrate = choice("CmbBaudrate", "Baudrate");
    for (const BaudRow &row : BaudRows)
        CmbBaudrate->addItem(ToQString(row.caption));
    CmbBaudrate->setCurrentIndex(-1);
    CheckChecksum = MakeStateBox(this, QStringLiteral("CheckChecksum"), QStringLiteral("Checksum"));
    connect(CmbRange, &QComboBox::activated, this, [this] {
        const auto use = [this](const NodeKey &node) {
            if (!IsCounterModel(node.model()))
                return;
            Forget(CmbDataFormat); // a gate of the other mode is none of this one
            CmbRange_Click();
        };
        // At once, since a press of Update takes what the lists show; a load has to end first.
        if (IsLoading())
            this->main().TakeForPage(this, CmbRange, use);
        else
            use(NodeKey(this->main().PageOnShow()));
    });

    LabRange = MakeLabel(this, QStringLiteral("LabRange"), "&Input range :", CmbRange);
    LabDataformat = MakeLabel(this, QStringLiteral("LabDataformat"), "&Data format :", CmbDataFormat);
    LabSlewRate = MakeLabel(this, QStringLiteral("LabSlewRate"), "Sle&w rate :", CmbSlowRate);
    for (std::size_t i = 0; i < OptionLED.size(); ++i) {
        OptionLED[i] = Named(new QRadioButton(QString::fromLatin1(LedCaptions[i]), this),
                             ElementName("OptionLED", static_cast<int>(i)));
        Chooses(OptionLED[0], OptionLED[i], [this, i] {
            return [this, i](const NodeKey &node) { OptionLED_Click(node, static_cast<int>(i)); };
        });
    }
    LabLED = MakeLabel(this, QStringLiteral("LabLED"), "LED display :");
}

void FrameMSet::BuildButtons()
{
    CmdLED = MakeButton(this, QStringLiteral("CmdLED"), "  LED   Displa&y");
    CmdDownLoadF = MakeButton(this, QStringLiteral("CmdDownLoadF"), "Download Fi&rmware");
    CmdMUpdate = MakeButton(this, QStringLiteral("CmdMUpdate"), "&Update");
    OnClick(main(), CmdLED, this, [this](const NodeKey &node) { Q_EMIT DisplayAsked(node); });
    OnClick(main(), CmdDownLoadF, this, [this](const NodeKey &node) { Q_EMIT DownloadAsked(node); });
    Writes(CmdMUpdate, [this] {
        return [this, settings = ReadSettings()](const NodeKey &node) { CmdMUpdate_Click(node, settings); };
    });
}

bool FrameMSet::IsCounting() const
{
    return CmbRange->currentIndex() == RangePosition::Counter;
}

bool FrameMSet::IsFrequency() const
{
    return CmbRange->currentIndex() == RangePosition::Frequency;
}

void FrameMSet::LoadRangeTables(const std::string &model)
{
    if (const auto ranges = ModuleRanges(model); !ranges.empty())
        FillList(CmbRange, ranges);
    FillList(CmbDataFormat, DataFormatCaptions(model));
}

void FrameMSet::Load(PageReading &reading)
{
    if (reading.node.kind() != NodeKind::Module)
        return;
    const std::string addr = reading.node.busAddress();
    ShowText(TextAddress, std::to_string(static_cast<int>(HexVal(addr))));
    TextAddress_Change();
    SetAccess(reading.node);

    if (const auto version = reading.Read(Register::FirmwareVersion))
        LabMFVv->setText(ToQString(*version));
    const bool base = reading.model == BaseUnitModel;
    if (!reading.Read(base ? Register::BaseConfiguration : Register::Configuration))
        return;
    reading.record.emplace(reading.Reply(), base);
    reading.range = DecodeRange(reading.model, reading.record->typeCode);
    ShowRecord(reading);
    if (IsCounterModel(reading.model))
        LoadCounter(reading);
}

/// What may be written: baud rate, checksum and firmware in INIT state only, the address always but on a base
/// unit.
void FrameMSet::SetAccess(const NodeKey &node)
{
    const bool base = node.model() == BaseUnitModel;
    const bool init = base ? node.busAddress() == "00" : node.isInit();
    for (QWidget *control : {static_cast<QWidget *>(CmbBaudrate), static_cast<QWidget *>(CheckChecksum),
                             static_cast<QWidget *>(CmdDownLoadF)})
        Allow(control, init, InitStateOnly);
    TextAddress->setEnabled(!base);
    SetWritable(*TextAddress, !base);
    UpDownAddr->setEnabled(!base);
    Allow(CmdMUpdate, !base || init, InitStateOnly);
}

void FrameMSet::ShowRecord(const PageReading &reading)
{
    const std::string &model = reading.model;
    const std::string &bits = reading.record->bits;
    if (reading.range)
        Select(CmbRange, reading.range->position);
    if (const auto position = BaudIndexFromDigit(reading.record->baudDigit))
        Select(CmbBaudrate, *position);
    if (!bits.empty()) { // a record without a format byte leaves alone what that would tell
        SetTick(CheckChecksum, Bit(bits, FormatBit::Checksum));
        if (HasDataFormatList(model))
            Select(CmbDataFormat, reading.record->FormatPosition());
        if (HasIntegrationTime(model))
            Select(CmbDataFormat, Bit(bits, FormatBit::Integration) ? 1 : 0);
    }
    if (Has(model, Feature::AnalogOutput)) {
        FillList(CmbSlowRate, SlewRateCaptions(CmbRange->currentIndex() == RangePosition::VoltageOutput));
        if (!bits.empty())
            Select(CmbSlowRate, SlewRatePosition(bits));
    }
}

void FrameMSet::LoadCounter(PageReading &reading)
{
    if (const auto value = reading.Read(Register::DisplaySource)) {
        if (const auto element = DisplaySourceOf(*value))
            SetTick(OptionLED[static_cast<std::size_t>(*element)], true);
    }
    CmbRange_Click();
    if (IsFrequency()) {
        if (!reading.record->bits.empty())
            Select(CmbDataFormat, Bit(reading.record->bits, FormatBit::Gate) ? 1 : 0);
    } else if (const auto gate = reading.Read(Register::Gate); gate && !gate->empty()) {
        Select(CmbDataFormat, gate->front() - '0');
    }
}

bool FrameMSet::Wants(const PollStep &step, int)
{
    return step.condition != PollCondition::CounterRange || IsCounting();
}

void FrameMSet::TextAddress_Change()
{
    if (const auto label = AddressLabel(FromQString(TextAddress->text())))
        SetCaption(LabAddr, *label);
}

/// Choice of counter or frequency use of the counter modules.
void FrameMSet::CmbRange_Click()
{
    SetCaption(LabDataformat, IsCounting() ? "&Enable gate :" : "&Frequency gate :");
    Q_EMIT InputModeChanged();
    FillList(CmbDataFormat, GateCaptions(IsCounting()));
}

void FrameMSet::OptionLED_Click(const NodeKey &node, int element)
{
    Send(main(), node, DisplaySourceCommand(node, element));
    if (element == HostDisplay)
        Q_EMIT DisplayAsked(node);
}

ModuleSettings FrameMSet::ReadSettings() const
{
    const NodeKey node(main().PageOnShow());
    return {.node = node,
            .newAddress = NewAddress(node, CaptionOf(LabAddr)),
            .range = CmbRange->currentIndex(),
            .baudrate = CmbBaudrate->currentIndex(),
            .dataFormat = CmbDataFormat->currentIndex(),
            .slewRate = CmbSlowRate->currentIndex(),
            .checksum = CaptionOf(CheckChecksum) != "Disable"};
}

void FrameMSet::CmdMUpdate_Click(const NodeKey &node, ModuleSettings settings)
{
    main().NowStatus("Now Configuration is processing , Please wait moment....");
    const RefreshHold hold(main());
    DoEvents();
    settings.node = node;
    const auto siblings = main().Nodes.Children(main().Nodes.ParentKey(node.text()));
    if (IsDuplicateAddress(settings, siblings))
        MsgBox("The new address ID is duplicated !", MsgBoxStyle::Critical, Invalid);
    else if (Update(settings))
        MsgBox("Configuration is successful !", MsgBoxStyle::Information, Successful);
    else
        MsgBox("Configuration is invalid !", MsgBoxStyle::Critical, Invalid);
    Reload(main());
}

/// Writes the record and, when it was taken, waits for the module's restart and follows its new address in
/// the tree.
bool FrameMSet::Update(const ModuleSettings &settings)
{
    if (!Send(main(), settings.node, ModuleUpdateCommand(settings)))
        return false;
    const Hourglass hourglass(main());
    WaitModuleReady(main(), AddressAfterUpdate(settings), settings.node.checksum());
    if (const auto gate = GateCommand(settings)) {
        Send(main(), settings.node, *gate);
        WaitTransIdle(main());
    }
    const bool checksumChanges = CharAt(KeyAfterUpdate(settings), 2) != CharAt(settings.node.text(), 2);
    if (ChangesAddress(settings) || checksumChanges)
        MoveNode(settings);
    return true;
}

void FrameMSet::MoveNode(const ModuleSettings &settings)
{
    const std::string oldKey = settings.node.text();
    const std::string newKey = KeyAfterUpdate(settings);
    TreeNodes &nodes = main().Nodes;
    const std::string parent = nodes.ParentKey(oldKey);
    const auto siblings = nodes.Children(parent);
    const std::string text = "(" + settings.newAddress + ") " + settings.node.model();
    main().SetPage(newKey);
    const auto own = static_cast<std::size_t>(std::ranges::find(siblings, oldKey) - siblings.begin());
    const auto place = settings.node.isInit() ? std::nullopt : MovedPlace(siblings, own, newKey);
    if (place) {
        const std::string before = *place < siblings.size() ? siblings[*place] : std::string{};
        nodes.Add(parent, newKey, text, ModuleImage.normal, ModuleImage.selected, before);
        nodes.Select(newKey);
        nodes.Remove(oldKey);
    } else {
        nodes.Rename(oldKey, newKey);
        if (!settings.node.isInit())
            nodes.SetText(newKey, text);
    }
    Q_EMIT main().NodeChanged(oldKey, newKey);
}

} // namespace vorn
