#include "consoles/Form7276.h"

#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/PageFrame.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace vorn
{

Form7276::Form7276(FormMain &main)
    : DigitalConsole(
          main, {.name = "Form7276", .caption = "VORN-7276", .interval = 300, .updateButton = "Command1"})
{
    Watchdog.emplace(General, GeneralRows(), "0.1 sec");
    const Row row = AddPoints({"DIOL", "DO &%1", 0, "LabDL", "Data", "LabDLv"});
    DIOL = row.points;
    LabDLv = row.value;
    OnSwitch(DIOL, 0, [this](const std::string &hex) { LabDLv->setText(ToQString(hex)); });
    EndGeneral();
    Rows()->addWidget(General);
    Rows()->addWidget(FrameDIO);
    Rows()->addStretch();
}

void Form7276::AfterFirmware()
{
    AskFor(Register::Watchdog);
    Watchdog->Show(Reply);
}

/// The timer stands still under the box, so that a dead module gives one a tick.
void Form7276::ReadOutputs()
{
    tmrTimer.stop();
    const bool answers = AskFor(Register::Points);
    const std::string hex = Mid(Reply, 2, 2);
    if (answers && IsHexPair(hex)) {
        ShowOutputs(DIOL, hex);
        LabDLv->setText(ToQString(hex));
    } else {
        Box(SwitchFailed, MsgBoxStyle::Plain);
    }
    tmrTimer.start();
}

ConsoleForm::Step Form7276::UpdateMore()
{
    constexpr int SmallestTime = 20; // tenths of a second that need no question
    constexpr std::int64_t ReadTime = 20;

    if (!Watchdog->WDTChanged)
        return Step::Done;
    const double time = Val(FromQString(Watchdog->txtNewWDT->text()));
    if (time > 0 && time < SmallestTime &&
        Box("The comm WDT is too small, do you want to use the value?", MsgBoxStyle::OkCancel, "Waring") ==
            MsgBoxResult::Cancel)
        return Step::Cancelled;
    Tell(Register::Watchdog, Watchdog->Value());
    Wait(ReadTime);
    if (!AskFor(Register::Watchdog)) {
        TellInvalid();
        return Step::Failed;
    }
    Watchdog->Show(Reply);
    return Step::Done;
}

void Form7276::ClearFlags()
{
    DigitalConsole::ClearFlags();
    Watchdog->WDTChanged = false;
}

} // namespace vorn
