#include "workspace/DirectOutputs.h"

#include "pages/FrameAOut.h"
#include "pages/FrameDIO.h"
#include "pages/FrameFCdata.h"
#include "pages/FrameGen.h"
#include "pages/FrameMSet.h"
#include "pages/OutputCommands.h"
#include "pages/OutputScale.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "tools/FormLED.h"
#include "workspace/ModulePageLoad.h"
#include "workspace/Pages.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

#include <array>
#include <utility>

namespace vorn
{

namespace
{

constexpr int HostDisplay = 2; ///< element of `OptionLED` that puts the display into the host's hands

template <class Points>
std::array<bool, 4> Values(const Points &points)
{
    std::array<bool, 4> values{};
    for (std::size_t i = 0; i < points.size(); ++i)
        values[i] = points[i]->value();
    return values;
}

} // namespace

DirectOutputs::DirectOutputs(FormMain &main, Pages &pages, ModulePageLoad &load)
    : main_(main), pages_(pages), load_(load)
{
    for (DIO *point : pages.FrameGen->ADIO)
        connect(point, &DIO::Click, this, [this, point] { ADIO_Click(*point); });
    for (DIO *point : pages.FrameFCdata->CounterDO)
        connect(point, &DIO::Click, this, [this, point] { CounterDO_Click(*point); });
    for (int i = 0; i < FrameDIO::Points; ++i) {
        const auto e = static_cast<std::size_t>(i);
        connect(pages.FrameDIO->DIOL[e], &DIO::Click, this, [this, i] { Point_Click(false, i); });
        connect(pages.FrameDIO->DIOH[e], &DIO::Click, this, [this, i] { Point_Click(true, i); });
    }
    for (int i = 0; i <= HostDisplay; ++i)
        OnClick(pages.FrameMSet->OptionLED[static_cast<std::size_t>(i)], this,
                [this, i] { OptionLED_Click(i); });

    OnClick(pages.FrameMSet->CmdLED, this, [this] { FormLED(main_).exec(); });

    GuardField(pages.FrameGen->TextAAOv, FieldRule::DecimalOutput);
    GuardField(pages.FrameAOut->TextAnalogOut, [this] {
        return CharAt(main_.OutputFormatCode, 1) == '2' ? FieldRule::HexOutput : FieldRule::DecimalOutput;
    });
    for (QWidget *entry : {static_cast<QWidget *>(pages.FrameGen->TextAAOv),
                           static_cast<QWidget *>(pages.FrameAOut->TextAnalogOut),
                           static_cast<QWidget *>(pages.FrameAOut->Slider1)})
        entry->installEventFilter(this);
    // However a text comes in: typed, pasted, dropped.
    for (QLineEdit *entry : {pages.FrameGen->TextAAOv, pages.FrameAOut->TextAnalogOut})
        connect(entry, &QLineEdit::textEdited, this, [this] { main_.OutputEditing = true; });
    OnClick(pages.FrameGen->CmdAOsend, this, [this] { TextAAOv_Enter(); });
    OnClick(pages.FrameAOut->CmdSendAO, this, [this] { TextAnalogOut_Enter(); });
    connect(pages.FrameAOut->Slider1, &QSlider::valueChanged, this, &DirectOutputs::Slider1_Change);
}

void DirectOutputs::ADIO_Click(const DIO &clicked)
{
    if (!IsOutputCaption(CaptionOf(&clicked)))
        return;
    const NodeKey node = main_.PageNode();
    const auto values = Values(pages_.FrameGen->ADIO);
    const int outputs = AnalogModuleOutputs(node.model());
    if (outputs > 0)
        Send(main_, node,
             OutputByteCommand(node, std::span(values).first(static_cast<std::size_t>(outputs))));
}

void DirectOutputs::CounterDO_Click(const DIO &clicked)
{
    if (!IsOutputCaption(CaptionOf(&clicked)))
        return;
    const NodeKey node = main_.PageNode();
    const auto values = Values(pages_.FrameFCdata->CounterDO);
    Send(main_, node, OutputByteCommand(node, std::span(values).first(FrameFCdata::Counters)));
}

void DirectOutputs::Point_Click(bool high, int element)
{
    const NodeKey node = main_.PageNode();
    const auto &points = high ? pages_.FrameDIO->DIOH : pages_.FrameDIO->DIOL;
    const auto command = PointCommand(node, high ? PointRow::High : PointRow::Low, element,
                                      points[static_cast<std::size_t>(element)]->value());
    if (!command)
        return;
    if (!Send(main_, node, *command, '>') && JudgesPointReply(node.model()))
        MsgBox("DO is Invalid!", MsgBoxStyle::Critical, "DO invalid");
}

void DirectOutputs::OptionLED_Click(int element)
{
    const NodeKey node = main_.PageNode();
    Send(main_, node, DisplaySourceCommand(node, element));
    if (element == HostDisplay)
        FormLED(main_).exec();
}

void DirectOutputs::TextAAOv_Enter()
{
    const std::string text = FromQString(pages_.FrameGen->TextAAOv->text());
    if (text.empty())
        return;
    main_.OutputEditing = false;
    const NodeKey node = main_.PageNode();
    Send(main_, node, ExcitationCommand(node, text));
}

void DirectOutputs::TextAnalogOut_Enter()
{
    const std::string text = FromQString(pages_.FrameAOut->TextAnalogOut->text());
    if (text.empty())
        return;
    main_.OutputEditing = false;
    load_.SetSlider(text);
    SendSlider(pages_.FrameAOut->Slider1->value());
}

/// A drag changes the value faster than the bus takes it: only the latest value is sent. Until then the
/// refresh keeps its hands off the slider; the value is kept all the same, since a poll may be on its way
/// already.
void DirectOutputs::Slider1_Change(int value)
{
    main_.OutputEditing = true;
    if (std::exchange(sliderValue_, value))
        return;
    Queue(this, [this] {
        const int latest = *std::exchange(sliderValue_, std::nullopt);
        main_.OutputEditing = sliderHeld_;
        SendSlider(latest);
    });
}

void DirectOutputs::SendSlider(int value)
{
    const std::string text = SliderText(main_.OutputFormatCode, value);
    pages_.FrameAOut->TextAnalogOut->setText(ToQString(text));
    const NodeKey node = main_.PageNode();
    Send(main_, node, AnalogOutputCommand(node, text));
}

void DirectOutputs::SliderEvent(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
        sliderHeld_ = true;
        main_.OutputEditing = true;
        break;
    case QEvent::FocusIn:
        main_.OutputEditing = true;
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::Hide:
        sliderHeld_ = false;
        main_.OutputEditing = sliderValue_.has_value();
        break;
    case QEvent::FocusOut:
        main_.OutputEditing = sliderValue_.has_value();
        break;
    default:
        break;
    }
}

/// Enter sends what the entry holds. Any other key that writes or deletes takes the entry out of the
/// refresh's hands; keys that only move don't.
bool DirectOutputs::EntryKey(const QKeyEvent &key, const QLineEdit &entry, const std::function<void()> &enter)
{
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isEnter && !entry.text().isEmpty()) {
        Queue(this, enter);
        return true;
    }
    const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool writes = !command && !key.text().isEmpty() && key.text().at(0).isPrint();
    if (isEnter || writes || key.key() == Qt::Key_Backspace)
        main_.OutputEditing = true;
    return false;
}

bool DirectOutputs::eventFilter(QObject *control, QEvent *event)
{
    if (control == pages_.FrameAOut->Slider1) {
        SliderEvent(event->type());
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    if (control == pages_.FrameGen->TextAAOv)
        return EntryKey(key, *pages_.FrameGen->TextAAOv, [this] { TextAAOv_Enter(); });
    return EntryKey(key, *pages_.FrameAOut->TextAnalogOut, [this] { TextAnalogOut_Enter(); });
}

} // namespace vorn
