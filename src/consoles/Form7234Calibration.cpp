#include "consoles/Form7234Calibration.h"

#include "consoles/ConsoleTables.h"
#include "platform/WidgetText.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

constexpr int Interval = 400; ///< of `Timer1`, milliseconds

} // namespace

/// A button that changes the coefficient.
struct Form7234Calibration::Step {
    QPushButton *Form7234Calibration::*button;
    const char *name;
    const char *caption;
    std::string_view byte; ///< on the wire: size, the top bit for downwards
    int change;
    int last; ///< from here on the button does nothing any more
};

const Form7234Calibration::Step Form7234Calibration::Steps[4] = {
    {&Form7234Calibration::Command2, "Command2", "+10", "0A", 10, 117},
    {&Form7234Calibration::Command3, "Command3", "+1", "01", 1, 126},
    {&Form7234Calibration::Command4, "Command4", "-1", "81", -1, -126},
    {&Form7234Calibration::Command5, "Command5", "-10", "8A", -10, -117},
};

Form7234Calibration::Form7234Calibration(FormMain &main, int coefficient, int channelIndex, bool full)
    : ConsoleWindow(main, "Form7234Calibration", "VORN-7234 Calibration"), full_(full)
{
    Timer1.setParent(this);
    Timer1.setObjectName(QStringLiteral("Timer1"));
    Timer1.setInterval(Interval);
    OnTick(Timer1, [this] { ReadValue(); });

    Frame3 = Named(new QGroupBox(QStringLiteral("General"), Body()), "Frame3");
    FrameGrid rows(Frame3);
    channel = MakeValue(Frame3, QStringLiteral("channel"), QStringLiteral("Channel"));
    channel->setText(QStringLiteral("CH%1").arg(channelIndex + 1));
    rows.Row(MakeLabel(Frame3, QStringLiteral("LabChannel"), "Channel :"), channel);
    value = MakeLiveValue(Frame3, QStringLiteral("value"), QStringLiteral("Output value"));
    rows.Row(MakeLabel(Frame3, QStringLiteral("LabValue"), "Value :"), value,
             MakeLabel(Frame3, QStringLiteral("LabUnit"), "mA"));
    CoeffientText = MakeEntry(Frame3, QStringLiteral("CoeffientText"), QStringLiteral("Coefficient"));
    SetWritable(*CoeffientText, false);
    CoeffientText->setText(QString::number(coefficient));
    rows.Row(MakeLabel(Frame3, QStringLiteral("Label7"), "Coefficient(-128 to +127)"), CoeffientText);

    auto *trims = new QHBoxLayout;
    trims->setSpacing(Rhythm::LabelToField);
    for (const Step &step : Steps) {
        QPushButton *button = MakeButton(Frame3, QString::fromLatin1(step.name), step.caption);
        this->*step.button = button;
        trims->addWidget(button);
        OnPress(button, [this, &step] { Trim(step); });
    }
    rows.WideRow(trims);

    Command1 = MakeButton(Body(), QStringLiteral("Command1"), "&Update");
    exit = MakeButton(Body(), QStringLiteral("exit"), "E&xit");
    OnPress(Command1, [this] { Command1_Click(); });
    connect(exit, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = SideBySide({Command1, exit});
    buttons->insertStretch(0);
    Rows()->addWidget(Frame3);
    Rows()->addLayout(buttons);
    Rows()->addStretch();
}

void Form7234Calibration::Form_Load()
{
    value->setText(full_ ? QStringLiteral("20") : QStringLiteral("4"));
    Timer1.start();
}

int Form7234Calibration::ChannelIndex() const
{
    return static_cast<int>(Val(Mid(FromQString(channel->text()), 3))) - 1;
}

void Form7234Calibration::ReadValue()
{
    if (AskFor(Register::OutputOfChannel, ChannelIndex()))
        value->setText(ToQString(Data()));
}

/// Past its limit a button ends here and the live value stands still; the operator leaves by `exit`.
void Form7234Calibration::Trim(const Step &step)
{
    Timer1.stop();
    Wait(StoringTime);
    const int coefficient = static_cast<int>(Val(FromQString(CoeffientText->text())));
    if (step.change > 0 ? coefficient > step.last : coefficient < step.last)
        return;
    if (Tell(Register::TrimOutput, step.byte, ChannelIndex()))
        CoeffientText->setText(ToQString(CoefficientText(coefficient + step.change)));
    else
        Box("Calibration Error", MsgBoxStyle::Plain);
    Timer1.start();
}

void Form7234Calibration::Command1_Click()
{
    Timer1.stop();
    Wait(StoringTime);
    const int index = ChannelIndex();
    const bool stored = Tell(full_ ? Register::Store20mA : Register::Store4mA, {}, index);
    Box(std::string("Apply ") + (full_ ? "20" : "4") + "mA Calibration for Channel " +
            std::to_string(index + 1) + (stored ? " Successfully" : " Failed"),
        MsgBoxStyle::Plain);
    Timer1.start();
}

} // namespace vorn
