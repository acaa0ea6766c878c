#include "consoles/Form7234.h"

#include "consoles/ConsoleTables.h"
#include "consoles/Form7234Calibration.h"
#include "consoles/Lamp.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>
#include <optional>

namespace vorn
{

namespace
{

constexpr ConsoleDesign Design{.name = "Form7234", .caption = "VORN-7234", .interval = 200};

constexpr double Thousandths = 1000;
constexpr std::string_view CurrentOutput = "30"; ///< type that an output is calibrated in

const OutputKind *KindAt(int position)
{
    return position < 0 ? nullptr : &OutputKinds[static_cast<std::size_t>(position)];
}

/// A value of the operator's; nothing for a text that is no number.
std::optional<double> NumberOf(std::string_view text)
{
    try {
        return CDbl(text);
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

bool IsWithin(const OutputKind &kind, double value)
{
    return value >= kind.lower && value <= kind.upper;
}

std::string ChannelNumber(int channel)
{
    return std::to_string(channel + 1);
}

void AddChannels(QComboBox *list)
{
    for (int i = 0; i < Form7234::Channels; ++i)
        list->addItem(QStringLiteral("CH %1").arg(i + 1));
}

} // namespace

struct Form7234::Point {
    std::string_view name;  ///< "4mA"
    std::string_view value; ///< that the output gives
    Register coefficient;
    Register clear;
    bool full; ///< the upper of the two
};

const Form7234::Point Form7234::FourMilliamperes{"4mA", "+04.000", Register::Coefficient4mA,
                                                 Register::Clear4mA, false};
const Form7234::Point Form7234::TwentyMilliamperes{"20mA", "+20.000", Register::Coefficient20mA,
                                                   Register::Clear20mA, true};

Form7234::Form7234(FormMain &main) : ConsoleForm(main, Design)
{
    CmbSlewRate = MakeChoice(General, QStringLiteral("CmbSlewRate"), QStringLiteral("Slew rate"), 16);
    for (const std::string_view rate : SlewRates)
        CmbSlewRate->addItem(ToQString(rate));
    CmbSlewRate->setCurrentIndex(-1);
    GeneralRows().Row(MakeLabel(General, QStringLiteral("LabSlewRate"), "&Slew Rate :", CmbSlewRate),
                      CmbSlewRate);
    connect(CmbSlewRate, &QComboBox::activated, this, [this] { SlewChanged = true; });
    EndGeneral();
    BuildEmergency();
    BuildOutput();
    BuildFunctions();
    BuildCalibration();
    Arrange();
}

void Form7234::BuildEmergency()
{
    AoSetting = Named(new QGroupBox(QStringLiteral("DI(Emergency) Status"), Body()), "AoSetting");
    auto *row = new QHBoxLayout(AoSetting);
    row->setContentsMargins(Rhythm::Margin, Rhythm::Margin / 2, Rhythm::Margin, Rhythm::Margin);
    row->setSpacing(Rhythm::LabelToField);
    for (int i = 0; i < Channels; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const QString input = QStringLiteral("DI %1").arg(i + 1);
        row->addWidget(MakeLabel(AoSetting, ElementName("Label11", i), FromQString(input) + ":"));
        red[place] = new Lamp(AoSetting, ElementName("red", i), Lamp::Kind::Fault,
                              input + QStringLiteral(": emergency"));
        blue[place] = new Lamp(AoSetting, ElementName("blue", i), Lamp::Kind::Waiting,
                               input + QStringLiteral(": no emergency"));
        gray[place] = new Lamp(AoSetting, ElementName("gray", i), Lamp::Kind::Off,
                               input + QStringLiteral(": not enabled"));
        row->addWidget(LampPlace(AoSetting, {red[place], blue[place], gray[place]}));
        ShowOnly(std::array{red[place], blue[place], gray[place]}, nullptr);
        row->addStretch();
    }
}

void Form7234::BuildOutput()
{
    Frame4 =
        Named(new QGroupBox(QStringLiteral("AO Output Setting And Current Output Value"), Body()), "Frame4");
    FrameGrid rows(Frame4);
    auto *values = new QGridLayout;
    values->setHorizontalSpacing(Rhythm::LabelToField);
    values->setVerticalSpacing(Rhythm::BetweenRows);
    for (int i = 0; i < Channels; ++i) {
        const QString channel = QStringLiteral("CH %1").arg(i + 1);
        auto *value = MakeLiveValue(Frame4, ElementName("ValueText", i), channel);
        ValueText[static_cast<std::size_t>(i)] = value;
        values->addWidget(MakeLabel(Frame4, ElementName("Label4", i), FromQString(channel) + " :"), i / 2,
                          i % 2 * 2);
        values->addWidget(value, i / 2, i % 2 * 2 + 1);
    }
    values->setColumnStretch(1, 1);
    values->setColumnStretch(3, 1);
    rows.WideRow(values);
    ChannelOut = MakeChoice(Frame4, QStringLiteral("ChannelOut"), QStringLiteral("Output channel"), 6);
    AddChannels(ChannelOut);
    Directdata = MakeEntry(Frame4, QStringLiteral("Directdata"), QStringLiteral("Output value"));
    Directdata->setFixedWidth(Directdata->fontMetrics().horizontalAdvance(QStringLiteral("+000.00000")));
    Command2 = MakeButton(Frame4, QStringLiteral("Command2"), "Set");
    rows.Row(MakeLabel(Frame4, QStringLiteral("LabChannelOut"), "&Output :", ChannelOut),
             {ChannelOut, Directdata, Command2});
    HScroll1 = Named(new QScrollBar(Qt::Horizontal, Frame4), "HScroll1", QStringLiteral("Output value"));
    HScroll1->setFocusPolicy(Qt::StrongFocus);
    HScroll1->setSingleStep(10);
    HScroll1->setPageStep(1000);
    rows.WideRow(HScroll1);

    connect(ChannelOut, &QComboBox::activated, this, [this] { ChannelOut_Click(); });
    connect(HScroll1, &QScrollBar::valueChanged, this,
            [this](int value) { Directdata->setText(ToQString(TextOf(value / Thousandths))); });
    OnPressWith(Command2, [this] {
        return [this, channel = ChannelOut->currentIndex(), value = FromQString(Directdata->text())] {
            Command2_Click(channel, value);
        };
    });
}

void Form7234::BuildFunctions()
{
    Frame6 = Named(new QGroupBox(QStringLiteral("AO Function Setting"), Body()), "Frame6");
    FrameGrid rows(Frame6);
    QGridLayout *grid = rows.Layout();
    int column = 1;
    for (const char *title : {"Type", "Startup", "Stop", "Emergency"})
        grid->addWidget(new QLabel(QString::fromLatin1(title), Frame6), 0, column++);
    for (int i = 0; i < Channels; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const QString channel = QStringLiteral("CH %1").arg(i + 1);
        const auto named = [&channel](const char *what) {
            return channel + QLatin1Char(' ') + QLatin1String(what);
        };
        cboRange[place] = MakeChoice(Frame6, ElementName("cboRange", i), named("type"), 9);
        for (const OutputKind &kind : OutputKinds)
            cboRange[place]->addItem(ToQString(kind.caption));
        cboRange[place]->setCurrentIndex(-1);
        StartupValue[place] = MakeEntry(Frame6, ElementName("StartupValue", i), named("startup value"));
        StopValue[place] = MakeEntry(Frame6, ElementName("StopValue", i), named("stop value"));
        for (QLineEdit *entry : {StartupValue[place], StopValue[place]})
            entry->setFixedWidth(entry->fontMetrics().horizontalAdvance(QStringLiteral("+000.0000")));
        Check1[place] = Named(new QCheckBox(QStringLiteral("Enable"), Frame6), ElementName("Check1", i),
                              named("emergency input"));
        grid->addWidget(MakeLabel(Frame6, ElementName("Label6", i), FromQString(channel) + " :"), i + 1, 0);
        grid->addWidget(cboRange[place], i + 1, 1);
        grid->addWidget(StartupValue[place], i + 1, 2);
        grid->addWidget(StopValue[place], i + 1, 3);
        grid->addWidget(Check1[place], i + 1, 4);
    }
    Command6 = MakeButton(Frame6, QStringLiteral("Command6"), "Read");
    Command7 = MakeButton(Frame6, QStringLiteral("Command7"), "Set");
    auto *buttons = SideBySide({Command6, Command7});
    buttons->insertStretch(0);
    grid->addLayout(buttons, Channels + 1, 0, 1, 5);

    OnPress(Command6, [this] {
        const Frozen frozen(*this, Body());
        tmrTimer.stop();
        Wait(StoringTime);
        initsetting();
        tmrTimer.start();
    });
    OnPressWith(Command7, [this] {
        PerChannel<Function> functions;
        for (std::size_t i = 0; i < functions.size(); ++i)
            functions[i] = {cboRange[i]->currentIndex(), FromQString(StartupValue[i]->text()),
                            FromQString(StopValue[i]->text()), Check1[i]->isChecked()};
        return [this, functions] { Command7_Click(functions); };
    });
}

void Form7234::BuildCalibration()
{
    Frame1 = Named(new QGroupBox(QStringLiteral("AO Calibration"), Body()), "Frame1");
    FrameGrid rows(Frame1);
    ChannelCal = MakeChoice(Frame1, QStringLiteral("ChannelCal"), QStringLiteral("Channel to calibrate"), 6);
    AddChannels(ChannelCal);
    rows.Row(MakeLabel(Frame1, QStringLiteral("LabChannelCal"), "C&hannel :", ChannelCal), {ChannelCal});
    const auto addPoint = [&](const char *label, QPushButton *&set, const char *setName, QPushButton *&clear,
                              const char *clearName, const Point &point) {
        set = MakeButton(Frame1, QString::fromLatin1(setName), "Set");
        clear = MakeButton(Frame1, QString::fromLatin1(clearName), "Clear");
        const QString caption = ToQString(point.name);
        set->setAccessibleName(QStringLiteral("Calibrate ") + caption);
        clear->setAccessibleName(QStringLiteral("Clear ") + caption);
        rows.Row(MakeLabel(Frame1, QStringLiteral("Lab") + caption, label), {set, clear});
        const auto onPress = [this](QPushButton *button, const Point *which,
                                    void (Form7234::*handler)(const Point &, int)) {
            OnPressWith(button, [this, which, handler] {
                return [this, which, handler, channel = ChannelCal->currentIndex()] {
                    (this->*handler)(*which, channel);
                };
            });
        };
        onPress(set, &point, &Form7234::Calibrate);
        onPress(clear, &point, &Form7234::Clear);
    };
    addPoint("4 mA", Command1, "Command1", Command4, "Command4", FourMilliamperes);
    addPoint("20 mA", Command3, "Command3", Command5, "Command5", TwentyMilliamperes);
}

void Form7234::Arrange()
{
    auto *left = new QVBoxLayout;
    auto *right = new QVBoxLayout;
    for (QVBoxLayout *column : {left, right})
        column->setSpacing(Rhythm::BetweenFrames);
    left->addWidget(General);
    left->addWidget(Frame1);
    left->addStretch();
    right->addWidget(AoSetting);
    right->addWidget(Frame4);
    right->addWidget(Frame6);
    right->addStretch();
    auto *columns = new QHBoxLayout;
    columns->setSpacing(Rhythm::BetweenFrames);
    columns->addLayout(left);
    columns->addLayout(right, 1);
    Rows()->addLayout(columns);
    Rows()->addStretch();
}

void Form7234::ShowRecord()
{
    ShowSlewRate();
}

void Form7234::ShowSlewRate()
{
    const int position = SlewPosition(Mid(Reply, 8, 2));
    if (position < CmbSlewRate->count())
        CmbSlewRate->setCurrentIndex(position);
}

void Form7234::RecordUnread()
{
    Box("Initialize Checksum and Baud Rate Error", MsgBoxStyle::Plain);
}

void Form7234::FirmwareUnread()
{
    Box("Initialize Firmware Error", MsgBoxStyle::Plain);
}

std::string Form7234::FormatByte() const
{
    return SlewChanged ? SlewByte(CmbSlewRate->currentIndex(), chkChecksum->isChecked())
                       : ConsoleForm::FormatByte();
}

void Form7234::ClearFlags()
{
    ConsoleForm::ClearFlags();
    SlewChanged = false;
}

/// Reads what the module holds of its channels.
void Form7234::initsetting()
{
    tmrTimer.stop();
    Wait(StoringTime);
    for (std::size_t i = 0; i < Channels; ++i)
        ShowOnly(std::array{red[i], blue[i], gray[i]}, nullptr);
    for (int i = 0; i < Channels; ++i) {
        const auto place = static_cast<std::size_t>(i);
        ReadOutput(i);
        if (AskFor(Register::EmergencyFlag, i)) {
            EMSFlag[place] = Cut(Reply, RowOf(Register::EmergencyFlag).value) == "1";
            Check1[place]->setChecked(EMSFlag[place]);
        }
    }
    for (int i = 0; i < Channels; ++i) {
        const auto place = static_cast<std::size_t>(i);
        if (!AskFor(Register::OutputType, i))
            continue;
        TypeCode_[place] = Cut(Reply, RowOf(Register::OutputType).value);
        if (const int position = PositionOfOutput(TypeCode_[place]); position >= 0)
            cboRange[place]->setCurrentIndex(position);
    }
    for (int i = 0; i < Channels; ++i) {
        const auto place = static_cast<std::size_t>(i);
        if (AskFor(Register::StartupOfChannel, i))
            StartupValue[place]->setText(ToQString(Data()));
        else
            Box("read startup value error", MsgBoxStyle::Plain);
        AskFor(Register::StopOfChannel, i);
        StopValue[place]->setText(ToQString(Data()));
    }
    ReadEmergency();
    ChannelOut->setCurrentIndex(0);
    ChannelOut_Click();
    ChannelCal->setCurrentIndex(0);
    tmrTimer.start();
}

void Form7234::realtime()
{
    ReadEmergency();
    for (int i = 0; i < Channels; ++i)
        ReadOutput(i);
}

void Form7234::ReadEmergency()
{
    if (!AskFor(Register::EmergencyInputs))
        return;
    const std::string bits = HexToBin("0" + Mid(Reply, 4));
    for (std::size_t i = 0; i < Channels; ++i) {
        const Lamp *lamp = !EMSFlag[i] ? gray[i] : Bit(bits, static_cast<int>(i)) ? red[i] : blue[i];
        ShowOnly(std::array{red[i], blue[i], gray[i]}, lamp);
    }
}

bool Form7234::ReadOutput(int channel)
{
    if (!AskFor(Register::OutputOfChannel, channel))
        return false;
    ValueText[static_cast<std::size_t>(channel)]->setText(ToQString(Data()));
    return true;
}

/// The scroll bar goes to the channel's value without a word: the entry shows it as the module told it.
void Form7234::ChannelOut_Click()
{
    const auto channel = static_cast<std::size_t>(ChannelOut->currentIndex());
    Directdata->setText(ValueText[channel]->text());
    const QSignalBlocker quiet(HScroll1);
    if (const OutputKind *kind = KindAt(PositionOfOutput(TypeCode_[channel])))
        HScroll1->setRange(static_cast<int>(kind->lower * Thousandths),
                           static_cast<int>(kind->upper * Thousandths));
    const double value = Val(FromQString(ValueText[channel]->text())) * Thousandths;
    HScroll1->setValue(static_cast<int>(RoundHalfEven(value)));
}

void Form7234::Command2_Click(int channel, const std::string &text)
{
    tmrTimer.stop();
    Yield();
    const auto start = qScopeGuard([this] {
        if (Alive)
            tmrTimer.start();
    });
    const auto value = NumberOf(text);
    const OutputKind *kind = KindAt(PositionOfOutput(TypeCode_[static_cast<std::size_t>(channel)]));
    if (!value) {
        Box("The data format is invalid", MsgBoxStyle::Exclamation);
        return;
    }
    if (!kind || !vorn::IsWithin(*kind, *value)) {
        Box("The data is invalid", MsgBoxStyle::Exclamation);
        return;
    }
    if (Box("The output data is: " + text, MsgBoxStyle::OkCancel) == MsgBoxResult::Ok) {
        const bool taken = Tell(Register::OutputOfChannel, AOString(text), channel);
        Box(taken ? "Send data successfully" : "Send data failed", MsgBoxStyle::Plain);
    }
    ReadOutput(channel);
}

void Form7234::Command7_Click(const PerChannel<Function> &functions)
{
    const auto start = qScopeGuard([this] {
        if (Alive)
            tmrTimer.start();
    });
    tmrTimer.stop();
    for (int i = 0; i < Channels; ++i) {
        if (!SetFunction(i, functions[static_cast<std::size_t>(i)]))
            return;
    }
    Box("Setup out put type successfully", MsgBoxStyle::Plain);
}

/// False at the first step that fails, which is told; the steps before it stand.
bool Form7234::SetFunction(int channel, const Function &function)
{
    const auto place = static_cast<std::size_t>(channel);
    const OutputKind *kind = KindAt(function.type);
    if (!kind || !Tell(Register::OutputType, kind->code, channel)) {
        Box("Setup out put type failed on channel " + ChannelNumber(channel), MsgBoxStyle::Critical);
        return false;
    }
    TypeCode_[place] = kind->code;
    if (!IsWithin(function, channel))
        return false;
    if (!Tell(Register::StartupOfChannel, AOString(function.startup), channel) ||
        !Tell(Register::StopOfChannel, AOString(function.stop), channel) ||
        !Tell(Register::EmergencyFlag, function.emergency ? "1" : "0", channel)) {
        Box("The data is invalid on channel " + ChannelNumber(channel), MsgBoxStyle::Exclamation);
        return false;
    }
    EMSFlag[place] = function.emergency;
    return true;
}

/// Whether both values lie within the limits of the new type; told if not.
bool Form7234::IsWithin(const Function &function, int channel)
{
    const OutputKind *kind = KindAt(function.type);
    for (const std::string &text : {function.startup, function.stop}) {
        const auto value = NumberOf(text);
        if (value && kind && vorn::IsWithin(*kind, *value))
            continue;
        Box((value ? "The data is invalid on channel " : "The data format is invalid on channel ") +
                ChannelNumber(channel),
            MsgBoxStyle::Exclamation);
        return false;
    }
    return true;
}

/// An output is calibrated as a current from 0 on; told if it is another.
bool Form7234::IsCurrentOutput(int channel)
{
    if (TypeCode_[static_cast<std::size_t>(channel)] == CurrentOutput)
        return true;
    Box("Please set the Channel " + ChannelNumber(channel) + "  0~20mA first", MsgBoxStyle::Plain);
    return false;
}

void Form7234::Calibrate(const Point &point, int channel)
{
    tmrTimer.stop();
    Yield(2);
    const auto start = qScopeGuard([this] {
        if (Alive)
            tmrTimer.start();
    });
    if (!IsCurrentOutput(channel))
        return;
    const std::string number = ChannelNumber(channel);
    const std::string prompt = "Apply " + std::string(point.name) + " Calibration for Channel " + number +
                               ". Please connect METER to Channel " + number +
                               ", and check if output value equal " + std::string(point.name) + ".";
    if (Box(prompt, MsgBoxStyle::OkCancel) != MsgBoxResult::Ok)
        return;
    if (Tell(Register::OutputCalibration) && Tell(Register::OutputOfChannel, point.value, channel))
        Trim(point, channel);
}

/// Lends the port to the window in which the operator trims the output.
void Form7234::Trim(const Point &point, int channel)
{
    if (!AskFor(point.coefficient, channel))
        return;
    const std::string hex = Cut(Reply, RowOf(point.coefficient).value);
    if (!IsHexPair(hex))
        return;
    const int coefficient = CoefficientValue(hex);
    MSComm.SetPortOpen(false);
    {
        const auto calibration =
            std::make_unique<Form7234Calibration>(main(), coefficient, channel, point.full);
        calibration->ConsoleBaud = ConsoleBaud;
        calibration->Address = Address;
        calibration->NodeKey = NodeKey;
        calibration->InitState = InitState;
        calibration->ChecksumOn = ChecksumOn;
        calibration->Run();
        PortTold = calibration->PortTold;
    }
    if (!MSComm.PortOpen())
        OpenPort();
}

void Form7234::Clear(const Point &point, int channel)
{
    if (!IsCurrentOutput(channel))
        return;
    const bool cleared = Tell(point.clear, {}, channel);
    Box("Clear " + std::string(point.name) + " for Channel" + ChannelNumber(channel) +
            (cleared ? " Successfully" : " Failed"),
        MsgBoxStyle::Plain);
}

} // namespace vorn
