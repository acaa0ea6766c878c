#include "consoles/InputConsole.h"

#include "consoles/Lamp.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace vorn
{

namespace
{

constexpr int MostCounts = 0xFFFF; ///< of a cold-junction offset

constexpr std::size_t ReadingWidth = 7;

} // namespace

std::string ReadingAt(std::string_view reply, int channel)
{
    return Mid(reply, static_cast<std::size_t>(channel) * ReadingWidth + 2, ReadingWidth);
}

const InputConsole::Calibration InputConsole::Zero{Register::ChannelZero, "Zero", "Zero", &InputType::zero};
const InputConsole::Calibration InputConsole::Span{Register::ChannelSpan, "Span", "Span", &InputType::span};

InputConsole::InputConsole(FormMain &main, const ConsoleDesign &console, const InputDesign &design)
    : ConsoleForm(main, console), design_(design)
{
    BuildChannelPage();
    BuildDataArea();
}

void InputConsole::BuildChannelPage()
{
    Channel = Named(new QGroupBox(QStringLiteral("Channel Mode Setting"), Body()), "Channel");
    channelRows_.emplace(Channel);
    cboChannel = MakeChoice(Channel, QStringLiteral("cboChannel"), QStringLiteral("Channel"), 10);
    for (int i = 0; i < Channels(); ++i)
        cboChannel->addItem(QString::fromLatin1(design_.channelEntry).arg(i));
    channelRows_->Row(MakeLabel(Channel, QStringLiteral("LabChannel"), "C&hannel :", cboChannel), cboChannel);
    cboType = MakeChoice(Channel, QString::fromLatin1(design_.typeList), QStringLiteral("Type"), 18);
    for (const InputType &type : Types())
        cboType->addItem(ToQString(type.caption));
    cboType->setCurrentIndex(-1);
    channelRows_->Row(MakeLabel(Channel, QStringLiteral("LabType"), "&Type :", cboType), cboType);
    cmdZero = MakeButton(Channel, QString::fromLatin1(design_.zeroButton), design_.zeroCaption);
    cmdSpan = MakeButton(Channel, QString::fromLatin1(design_.spanButton), design_.spanCaption);
    cmdChannelUpdate = MakeButton(Channel, QStringLiteral("cmdChannelUpdate"), "Update");
    OnCalibration(cmdZero, Zero);
    OnCalibration(cmdSpan, Span);
}

void InputConsole::BuildDataArea()
{
    AI = Named(new QGroupBox(QStringLiteral("Data Area"), Body()), "AI");
    dataRows_.emplace(AI);
    QGridLayout *grid = dataRows_->Layout();
    for (int i = 0; i < Channels(); ++i) {
        const QString name = QStringLiteral("Channel %1").arg(i);
        lblChannel.push_back(MakeLabel(AI, ElementName("lblChannel", i), FromQString(name)));
        txtvalue.push_back(MakeLiveValue(AI, ElementName("txtvalue", i), name));
        txtvalue.back()->setMinimumWidth(
            txtvalue.back()->fontMetrics().horizontalAdvance(QStringLiteral("+0000.00 mV")) + 8);
        txtRange.push_back(
            MakeValue(AI, ElementName("txtRange", i), QStringLiteral("Type of channel %1").arg(i)));
        txtRange.back()->setMargin(2);
        int widest = 0;
        for (const InputType &type : Types())
            widest = qMax(widest, txtRange.back()->fontMetrics().horizontalAdvance(ToQString(type.caption)));
        txtRange.back()->setMinimumWidth(widest + 8);
        const int row = grid->rowCount();
        grid->addWidget(lblChannel.back(), row, 0);
        grid->addWidget(txtvalue.back(), row, 1);
        grid->addWidget(txtRange.back(), row, 3);
        if (!design_.lamps)
            continue;
        const LampNames &names = *design_.lamps;
        lamps_.push_back({new Lamp(AI, ElementName(names.normal, i), Lamp::Kind::Normal,
                                   name + QStringLiteral(" operates normally")),
                          new Lamp(AI, ElementName(names.fault, i), Lamp::Kind::Fault,
                                   name + QStringLiteral(" has an open wire or is out of range")),
                          new Lamp(AI, ElementName(names.off, i), Lamp::Kind::Off,
                                   name + QStringLiteral(" is disabled"))});
        const auto &[normal, fault, off] = lamps_.back();
        grid->addWidget(LampPlace(AI, {normal, fault, off}), row, 2);
        ShowOnly(lamps_.back(), off);
    }
    grid->setColumnStretch(1, 0);
    grid->setColumnStretch(3, 1);
}

void InputConsole::AddColdJunctionValue()
{
    txtCJCValue =
        MakeLiveValue(AI, QStringLiteral("txtCJCValue"), QStringLiteral("Cold-junction temperature"));
    dataRows_->Row(MakeLabel(AI, QStringLiteral("lblCJCValue"), "CJC Value :"), txtCJCValue,
                   MakeLabel(AI, QStringLiteral("lblCJCUnit"), "'C"));
}

void InputConsole::ReadColdJunctionValue()
{
    if (AskFor(Register::ColdJunctionTemperature))
        txtCJCValue->setText(ToQString(ReadingAt(Reply, 0)));
}

void InputConsole::Arrange(std::initializer_list<QWidget *> below)
{
    EndGeneral();
    channelRows_.reset();
    dataRows_.reset();
    auto *left = new QVBoxLayout;
    left->setSpacing(Rhythm::BetweenFrames);
    left->addWidget(General);
    left->addWidget(Channel);
    left->addStretch();
    auto *right = new QVBoxLayout;
    right->setSpacing(Rhythm::BetweenFrames);
    right->addWidget(AI);
    for (QWidget *widget : below)
        right->addWidget(widget);
    right->addStretch();
    auto *columns = new QHBoxLayout;
    columns->setSpacing(Rhythm::BetweenFrames);
    columns->addLayout(left);
    columns->addLayout(right, 1);
    Rows()->addLayout(columns);
    Rows()->addStretch();
}

bool InputConsole::IsEnabled(int channel) const
{
    return Bit(EnableBits, channel);
}

void InputConsole::ShowLamps()
{
    for (int i = 0; i < static_cast<int>(lamps_.size()); ++i) {
        const auto &[normal, fault, off] = lamps_[static_cast<std::size_t>(i)];
        ShowOnly(lamps_[static_cast<std::size_t>(i)], !IsEnabled(i)      ? off
                                                      : Bit(WireBits, i) ? fault
                                                                         : normal);
    }
}

bool InputConsole::ReadBits(Register reg, std::string &bits)
{
    if (!AskFor(reg) || !IsHexPair(Mid(Reply, 4, 2)))
        return false;
    bits = HexToBin(Mid(Reply, 4, 2));
    return true;
}

int InputConsole::ReadType(int channel)
{
    if (!AskFor(Register::ChannelType, channel))
        return -1;
    return PositionOfCode(Types(), Cut(Reply, RowOf(Register::ChannelType).value));
}

bool InputConsole::ShowRange(int channel)
{
    const int position = ReadType(channel);
    if (!IsAccepted(Reply))
        return false;
    txtRange[static_cast<std::size_t>(channel)]->setText(
        position < 0 ? QString() : ToQString(Types()[static_cast<std::size_t>(position)].caption));
    return true;
}

void InputConsole::ShowType(int position)
{
    if (!TypeChanged && position >= 0)
        cboType->setCurrentIndex(position);
}

InputConsole::ChannelEntry InputConsole::TakeEntry(bool enabled)
{
    return {cboChannel->currentIndex(), cboType->currentIndex(), enabled, std::exchange(EnableChanged, false),
            std::exchange(TypeChanged, false)};
}

/// A mask that the module didn't take counts for nothing: the next one that is sent doesn't hold it either.
bool InputConsole::WriteMask(int channel, bool enabled)
{
    std::string bits = EnableBits;
    if (bits.empty())
        return false; // it would hold the other channels, which nobody knows
    SetBit(bits, channel, enabled);
    if (!Tell(Register::ChannelMask, BinToHex(bits)))
        return false;
    EnableBits = bits;
    return true;
}

bool InputConsole::WriteType(int channel, int position)
{
    const std::string_view code = position < 0 ? "" : Types()[static_cast<std::size_t>(position)].code;
    if (!Tell(Register::ChannelType, code, channel))
        return false;
    txtRange[static_cast<std::size_t>(channel)]->setText(ToQString(CaptionOfCode(Types(), code)));
    return true;
}

void InputConsole::TellChannelSet()
{
    Box("Channel Setting is successful!", MsgBoxStyle::Information, "Channel Setting is successful");
}

void InputConsole::OnCalibration(QAbstractButton *button, const Calibration &calibration)
{
    OnPressWith(button, [this, calibration] {
        return [this, calibration, channel = cboChannel->currentIndex(), type = cboType->currentIndex()] {
            // The type of a channel that was chosen right before has been read by now.
            const bool onShow = cboChannel->currentIndex() == channel;
            CalibrateClick(calibration, channel, onShow ? cboType->currentIndex() : type);
        };
    });
}

std::string InputConsole::CalibrationTitle(const Calibration &calibration) const
{
    return std::string(design_.calibrationTitle) + " " + calibration.title + " Calibration";
}

void InputConsole::Calibrate(const Calibration &calibration, int channel, int position)
{
    Updating = true;
    Yield();
    const std::string_view value =
        position < 0 ? std::string_view{} : Types()[static_cast<std::size_t>(position)].*calibration.value;
    const std::string prompt =
        "Please apply " + std::string(value) + " to Channel " + std::to_string(channel);
    if (Box(prompt, MsgBoxStyle::OkCancel, CalibrationTitle(calibration)) == MsgBoxResult::Ok)
        Tell(calibration.step, {}, channel);
    const std::string result = std::string(calibration.kind) + " Calibration is ";
    if (IsAccepted(Reply))
        Box(result + "successful!", MsgBoxStyle::Information, result + "successful");
    else
        Box(result + "invalid!", MsgBoxStyle::Critical, result + "invalid");
    Updating = false;
}

bool InputConsole::WriteColdJunction(std::string_view refused)
{
    const auto counts = ColdJunctionCounts(FromQString(ColdJunction->txtNewCJC->text()), MostCounts);
    if (!counts) {
        Box("CJC offset is not a valid number !", MsgBoxStyle::Critical, "Calibration failure");
        return false;
    }
    if (Tell(Register::ColdJunctionOffset, *counts))
        return true;
    TellInvalid(refused);
    return false;
}

void InputConsole::ClearFlags()
{
    ConsoleForm::ClearFlags();
    if (Watchdog)
        Watchdog->WDTChanged = false;
    if (ColdJunction)
        ColdJunction->CJCChanged = false;
}

} // namespace vorn
