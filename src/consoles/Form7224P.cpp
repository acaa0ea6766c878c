#include "consoles/Form7224P.h"

#include "consoles/Lamp.h"
#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/FormatByte.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace vorn
{

namespace
{

constexpr ConsoleDesign Frame{.name = "Form7224P", .caption = "VORN7224+", .interval = 300};

const InputDesign Design{.types = ThermocoupleTypes,
                         .channels = 8,
                         .channelEntry = "Ch  %1",
                         .typeList = "cboRange",
                         .zeroButton = "cmdZero",
                         .zeroCaption = "Zero Cal.",
                         .spanCaption = "Span Cal.",
                         .spanButton = "cmdSpan",
                         .calibrationTitle = "Vorn-7224+",
                         .lamps = LampNames{"Image3", "Image1", "Image2"}};

/// Position of `cboAllChannelRange`: behind its first entry come the types.
constexpr int NotUsed = 0;

} // namespace

Form7224P::Form7224P(FormMain &main) : ChannelConsole(main, Frame, Design)
{
    const auto addList = [this](const char *name, const char *label, const char *caption, int width) {
        auto *list = MakeChoice(General, QString::fromLatin1(name), QString::fromLatin1(caption), width);
        GeneralRows().Row(MakeLabel(General, QString::fromLatin1(label), caption, list), list);
        connect(list, &QComboBox::activated, this, [this] { Changed = true; });
        return list;
    };
    cboIntetime = addList("cboIntetime", "LabRange", "Integration Time", 14);
    cboIntetime->addItems({QStringLiteral("50ms (60Hz)"), QStringLiteral("60ms (50Hz)")});
    CmbDataFormat = addList("CmbDataFormat", "LabDataFormat", "&Data format :", 16);
    CmbDataFormat->addItems({QStringLiteral("Engineering units"), QStringLiteral("% of FSR"),
                             QStringLiteral("two's complement of hexadecimal")});
    cboAllChannelRange = addList("cboAllChannelRange", "AllChannelRange", "All Channel Input Range:", 14);
    cboAllChannelRange->addItem(ToQString(NotUsedType.caption));
    for (const InputType &type : Types())
        cboAllChannelRange->addItem(ToQString(type.caption));
    for (QComboBox *list : {cboIntetime, CmbDataFormat, cboAllChannelRange})
        list->setCurrentIndex(-1);
    Watchdog.emplace(General, GeneralRows(), "0.1sec");
    ColdJunction.emplace(General, GeneralRows(), "CJC offset(-99.9 to 99.9'C :");
    AddColdJunctionValue();
    BuildHint();
    Arrange({Frame1});
}

void Form7224P::BuildHint()
{
    Frame1 = Named(new QGroupBox(QStringLiteral("Hint"), Body()), "Frame1");
    FrameGrid rows(Frame1);
    const auto explain = [&](const char *label, const char *text, Lamp::Kind kind) {
        const QString meaning = QString::fromLatin1(text);
        rows.Row(new Lamp(Frame1, QString(), kind, meaning),
                 MakeLabel(Frame1, QString::fromLatin1(label), text));
    };
    explain("Label4", "This channel is disabled.", Lamp::Kind::Off);
    explain("Label3", "This channel is normal operating.", Lamp::Kind::Normal);
    explain("Label2", "This channel is opening wire.", Lamp::Kind::Fault);
}

void Form7224P::BeforeRecord()
{
    AskFor(Register::Watchdog);
    Watchdog->Show(Reply);
}

/// The common code is read in capitals.
void Form7224P::ShowRecord()
{
    const std::string code = Mid(Reply, 4, 2);
    const int type = PositionOfCode(Types(), code);
    if (code == NotUsedType.commonCode)
        cboAllChannelRange->setCurrentIndex(NotUsed);
    else if (type >= 0)
        cboAllChannelRange->setCurrentIndex(type + 1);
    ShowFormat();
}

void Form7224P::ShowFormat()
{
    if (!IsHexPair(Mid(Reply, 8, 2)))
        return;
    formatBits_ = HexToBin(Mid(Reply, 8, 2));
    const std::string format = Mid(formatBits_, 7, 2);
    if (format == "00")
        CmbDataFormat->setCurrentIndex(0);
    else if (format == "01")
        CmbDataFormat->setCurrentIndex(1);
    else if (format == "10")
        CmbDataFormat->setCurrentIndex(2);
    cboIntetime->setCurrentIndex(CharAt(formatBits_, 1) == '0' ? 0 : 1);
}

void Form7224P::BeforeFirmware()
{
    if (AskFor(Register::ColdJunctionTemperature))
        ColdJunction->Show(Reply);
}

void Form7224P::ReadMore()
{
    ReadBits(Register::OpenWiring, WireBits);
    ShowLamps();
    ReadColdJunctionValue();
    if (AskFor(Register::Watchdog))
        Watchdog->txtOldWDT->setText(ToQString(Cut(Reply, RowOf(Register::Watchdog).value)));
}

/// A channel that is disabled takes no type.
bool Form7224P::WriteChannel(const ChannelEntry &entry)
{
    const bool mask = WriteChangedMask(entry, "Configuration channel status invalid!");
    if (entry.typeChanged && !IsEnabled(entry.channel)) {
        Box("Please enable channel first!", MsgBoxStyle::Plain, "Notice");
        return false;
    }
    return WriteChangedType(entry) && mask;
}

std::string Form7224P::TypeCode() const
{
    const int position = cboAllChannelRange->currentIndex();
    return std::string(position <= NotUsed ? NotUsedType.commonCode
                                           : Types()[static_cast<std::size_t>(position - 1)].commonCode);
}

std::string Form7224P::FormatByte() const
{
    std::string bits = PadLeft(formatBits_, 8, '0');
    const int format = qMax(CmbDataFormat->currentIndex(), 0);
    SetBit(bits, FormatBit::Integration, cboIntetime->currentIndex() > 0);
    SetBit(bits, FormatBit::Checksum, chkChecksum->isChecked());
    SetBit(bits, 1, (format & 2) != 0);
    SetBit(bits, 0, (format & 1) != 0);
    return BinToHex(bits);
}

UpdateTexts Form7224P::Texts() const
{
    return {.refused = "Configuration is invalid!", .unread = "Read Configuration Status Failed!"};
}

/// A common type is the type of every channel from now on.
void Form7224P::ShowReadBack()
{
    ShowFormat();
    const int position = cboAllChannelRange->currentIndex();
    if (position <= NotUsed)
        return;
    for (QLabel *range : txtRange)
        range->setText(cboAllChannelRange->currentText());
    ShowType(position - 1);
}

ConsoleForm::Step Form7224P::UpdateMore()
{
    bool done = true;
    if (Watchdog->WDTChanged && !Tell(Register::Watchdog, Watchdog->Value())) {
        TellInvalid("Configuration of WDT is invalid!");
        done = false;
    }
    if (ColdJunction->CJCChanged)
        done = WriteColdJunction("Configuration of CJC is invalid!") && done;
    return done ? Step::Done : Step::Failed;
}

} // namespace vorn
