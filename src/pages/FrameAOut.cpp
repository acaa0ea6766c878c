#include "pages/FrameAOut.h"

#include "pages/FrameMSet.h"
#include "pages/OutputCommands.h"
#include "pages/OutputEntry.h"
#include "pages/OutputScale.h"
#include "platform/Dialogs.h"
#include "platform/WidgetText.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelTable.h"
#include "protocol/Text.h"
#include "shell/ButtonRows.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

#include <algorithm>
#include <utility>

namespace vorn
{

namespace
{

constexpr char Hexadecimal = '2';

const char *const RangeNotKnown = "The module's output range is not known.";

} // namespace

FrameAOut::FrameAOut(FormMain &main, const FrameMSet &settings)
    : PageFrame(main, "FrameAOut", "Analog Output"), settings_(settings)
{
    BuildControls();
    FrameGrid grid(this);
    grid.Row(MakeLabel(this, QStringLiteral("LabReadBackCaption"), "Read back :"), LabReadBack, LabAOS[0]);
    grid.Row(MakeLabel(this, QStringLiteral("LabAnalogOut"), "Output &value :", TextAnalogOut), TextAnalogOut,
             LabAOS[1]);
    grid.WideRow(Slider1);
    grid.Buttons({CmdSendAO});
    grid.WideRow(new ButtonRows({CmdAO4mA, CmdAO20mA, CmdAOStartup}));
}

void FrameAOut::BuildControls()
{
    LabReadBack = MakeLiveValue(this, QStringLiteral("LabReadBack"), QStringLiteral("Read back"));
    TextAnalogOut = MakeEntry(this, QStringLiteral("TextAnalogOut"), QStringLiteral("Output value"));
    for (std::size_t i = 0; i < LabAOS.size(); ++i)
        LabAOS[i] = MakeLabel(this, ElementName("LabAOS", static_cast<int>(i)), "");
    Slider1 = Named(new QSlider(Qt::Horizontal, this), "Slider1", QStringLiteral("Output value"));
    Slider1->setTickPosition(QSlider::TicksBelow);
    CmdSendAO = MakeButton(this, QStringLiteral("CmdSendAO"), "Se&nd");
    CmdAO4mA = MakeButton(this, QStringLiteral("CmdAO4mA"), "    &4 mA Calibration");
    CmdAO20mA = MakeButton(this, QStringLiteral("CmdAO20mA"), "    &20 mA Calibration");
    CmdAOStartup = MakeButton(this, QStringLiteral("CmdAOStartup"), "  &Startup Calibration");
    OpensCalibration(CmdAO4mA, CalibrationMode::FourMilliamperes);
    OpensCalibration(CmdAO20mA, CalibrationMode::TwentyMilliamperes);
    OpensCalibration(CmdAOStartup, CalibrationMode::Startup);

    GuardField(TextAnalogOut, [this] {
        return CharAt(main().OutputFormatCode, 1) == Hexadecimal ? FieldRule::HexOutput
                                                                 : FieldRule::DecimalOutput;
    });
    new OutputEntry(main(), TextAnalogOut, CmdSendAO, [this](const NodeKey &node, const std::string &text) {
        TextAnalogOut_Enter(node, text);
    });
    Slider1->installEventFilter(this);
    connect(Slider1, &QSlider::valueChanged, this, &FrameAOut::Slider1_Change);
}

void FrameAOut::Load(PageReading &reading)
{
    if (reading.record && Has(reading.model, Feature::AnalogOutput))
        LoadModule(reading);
    else if (reading.node.kind() == NodeKind::Channel && Has(reading.model, Feature::CardOutputs))
        LoadChannel(reading);
}

void FrameAOut::LoadModule(const PageReading &reading)
{
    std::string_view unit =
        reading.range && reading.range->setsAOS ? reading.range->unit : std::string_view{};
    if (!reading.record->bits.empty())
        if (const auto ofFormat = DataFormatUnit(reading.record->FormatPosition()); !ofFormat.empty())
            unit = ofFormat;
    if (!unit.empty())
        SetAll(LabAOS, ToQString(unit));

    const int range = settings_.CmbRange->currentIndex();
    // Without a selection the first position counts, so that the code keeps its two digits.
    const auto digit = [](int position) { return std::to_string(std::max(0, position)); };
    main().OutputFormatCode = digit(settings_.CmbDataFormat->currentIndex()) + digit(range);
    ShowRange(range);
}

/// The outputs of a card know engineering units only.
void FrameAOut::LoadChannel(const PageReading &reading)
{
    const std::string code = reading.channel ? reading.channel->typeCode : std::string();
    const auto range = ChannelRangePosition(reading.model, code);
    if (range)
        SetAll(LabAOS, ToQString(ChannelUnit(reading.model, code)));
    main().OutputFormatCode = "0" + std::to_string(range.value_or(0));
    ShowRange(range.value_or(-1));
}

void FrameAOut::ShowRange(int range)
{
    CmdAO4mA->setVisible(range != RangePosition::VoltageOutput);
    CmdAO20mA->setVisible(range != RangePosition::VoltageOutput);
    SetScale(range >= 0);
    show();
}

/// Without a known range nobody can say what a value of the slider puts out.
void FrameAOut::SetScale(bool rangeKnown)
{
    const auto scale = rangeKnown ? SliderRangeFor(main().OutputFormatCode) : std::nullopt;
    for (QWidget *control : {static_cast<QWidget *>(Slider1), static_cast<QWidget *>(CmdSendAO)})
        Allow(control, rangeKnown, RangeNotKnown);
    if (!scale)
        return;
    const QSignalBlocker quiet(Slider1);
    Slider1->setRange(scale->min, scale->max);
    Slider1->setPageStep(scale->largeStep);
    Slider1->setSingleStep(scale->smallStep);
    Slider1->setTickInterval(scale->tick);
}

void FrameAOut::SetSlider(const std::string &value)
{
    const QSignalBlocker quiet(Slider1);
    Slider1->setValue(SliderValue(main().OutputFormatCode, value));
}

/// The value of one output isn't meant for the next, whose own comes with the refresh.
void FrameAOut::Leave()
{
    PageFrame::Leave();
    TextAnalogOut->clear();
}

bool FrameAOut::Wants(const PollStep &step, int)
{
    return step.condition != PollCondition::NotEditing || !main().OutputEditing;
}

void FrameAOut::ShowLive(const LiveReply &reply)
{
    if (!reply.accepted)
        return;
    switch (reply.step.effect) {
    case PollEffect::OutputReadBack:
        LabReadBack->setText(ToQString(reply.payload));
        break;
    case PollEffect::OutputEntry:
        ShowOutput(reply);
        break;
    case PollEffect::ChannelOutput:
        LabReadBack->setText(ToQString(reply.payload));
        ShowOutput(reply);
        break;
    default:
        break;
    }
}

/// The outputs of a slot know engineering units only; the slider takes no part in any other form.
void FrameAOut::ShowOutput(const LiveReply &reply)
{
    if (main().OutputEditing)
        return; // also when the operator began while the reply was on its way
    ShowInEntry(*TextAnalogOut, ToQString(reply.payload));
    if (reply.node.kind() == NodeKind::Module || IsOneOf(main().OutputFormatCode, {"00", "01", "02"}))
        SetSlider(reply.payload);
}

/// A value beyond the scale is refused where it was typed: nothing goes out at full scale for a slip of the
/// finger.
void FrameAOut::TextAnalogOut_Enter(const NodeKey &node, const std::string &text)
{
    const int value = SliderValue(main().OutputFormatCode, text);
    if (!Slider1->isEnabled() || value < Slider1->minimum() || value > Slider1->maximum()) {
        main().OutputEditing = true;
        Beep();
        return;
    }
    SetSlider(text);
    const bool typedOn = FromQString(TextAnalogOut->text()) != text;
    SendValue(node, value, typedOn);
}

/// A drag changes the value faster than the bus takes it: only the latest value is sent. Until then the
/// refresh keeps its hands off the slider.
void FrameAOut::Slider1_Change(int value)
{
    main().OutputEditing = true;
    if (std::exchange(moved_, value))
        return; // what waits to be sent takes the new value along
    const auto send = [this](const NodeKey &node) {
        const int latest = *std::exchange(moved_, std::nullopt);
        main().OutputEditing = sliderHeld_;
        SendValue(node, latest, false);
    };
    main().TakeForPage(this, nullptr, send, [this] { moved_.reset(); });
}

/// Puts out a value of the slider's scale; the entry shows it, unless the operator has typed on in it.
void FrameAOut::SendValue(const NodeKey &node, int value, bool typedOn)
{
    const std::string text = SliderText(main().OutputFormatCode, value);
    if (!typedOn)
        TextAnalogOut->setText(ToQString(text));
    Send(main(), node, AnalogOutputCommand(node, text));
}

void FrameAOut::SliderEvent(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
        sliderHeld_ = true;
        main().OutputEditing = true;
        break;
    case QEvent::FocusIn:
        main().OutputEditing = true;
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::Hide:
        sliderHeld_ = false;
        main().OutputEditing = moved_.has_value();
        break;
    case QEvent::FocusOut:
        main().OutputEditing = moved_.has_value();
        break;
    default:
        break;
    }
}

bool FrameAOut::eventFilter(QObject *, QEvent *event)
{
    SliderEvent(event->type());
    return false;
}

} // namespace vorn
