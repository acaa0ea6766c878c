#include "pages/FrameAOut.h"

#include "shell/Controls.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

namespace vorn
{

FrameAOut::FrameAOut() : QGroupBox(QStringLiteral("Analog Output"))
{
    setObjectName(QStringLiteral("FrameAOut"));
    LabReadBack = MakeLiveValue(this, QStringLiteral("LabReadBack"), QStringLiteral("Read back"));
    TextAnalogOut = Named(new QLineEdit(this), "TextAnalogOut", QStringLiteral("Output value"));
    for (std::size_t i = 0; i < LabAOS.size(); ++i)
        LabAOS[i] = MakeLabel(this, ElementName("LabAOS", static_cast<int>(i)), "");
    Slider1 = Named(new QSlider(Qt::Horizontal, this), "Slider1", QStringLiteral("Output value"));
    Slider1->setTickPosition(QSlider::TicksBelow);
    const auto button = [this](const char *name, const char *caption) {
        return Named(new QPushButton(QString::fromLatin1(caption), this), name);
    };
    CmdSendAO = button("CmdSendAO", "Se&nd");
    CmdAO4mA = button("CmdAO4mA", "    &4 mA Calibration");
    CmdAO20mA = button("CmdAO20mA", "    &20 mA Calibration");
    CmdAOStartup = button("CmdAOStartup", "  &Startup Calibration");

    FrameGrid grid(this);
    grid.Row(MakeLabel(this, QStringLiteral("LabReadBackCaption"), "Read back :"), LabReadBack, LabAOS[0]);
    grid.Row(MakeLabel(this, QStringLiteral("LabAnalogOut"), "Output &value :", TextAnalogOut), TextAnalogOut,
             LabAOS[1]);
    grid.WideRow(Slider1);
    grid.Buttons({CmdSendAO});
    grid.WideRow(InPairs({CmdAO4mA, CmdAO20mA, CmdAOStartup}));
}

} // namespace vorn
