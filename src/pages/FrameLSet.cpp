#include "pages/FrameLSet.h"

#include "pages/FrameMSet.h"
#include "pages/LinearMapping.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "protocol/ModelTable.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

FrameLSet::FrameLSet(FormMain &main, const FrameMSet &settings)
    : PageFrame(main, "FrameLSet", "Linear Mapping"), settings_(settings)
{
    BuildFields();
    const auto label = [this](const char *name, const char *caption, QWidget *buddy) {
        return MakeLabel(this, QString::fromLatin1(name), caption, buddy);
    };
    FrameGrid grid(this);
    grid.Row(label("LabLinear", "Mapping :", CheckLinearScaling), CheckLinearScaling);
    grid.Row(label("LabMLow", "Input low :", TextMLowLimit), TextMLowLimit, LabLunit[0]);
    grid.Row(label("LabMHigh", "Input high :", TextMHighLimit), TextMHighLimit, LabLunit[1]);
    grid.Row(label("LabSLow", "Output low :", TextSLowLimit), TextSLowLimit, LabLunit[2]);
    grid.Row(label("LabSHigh", "Output high :", TextSHighLimit), TextSHighLimit, LabLunit[3]);
    grid.Buttons({CmdLinearUpdata});
}

void FrameLSet::BuildFields()
{
    CheckLinearScaling =
        MakeStateBox(this, QStringLiteral("CheckLinearScaling"), QStringLiteral("Linear mapping"));
    const auto limit = [this](const char *name, const char *accessibleName) {
        QLineEdit *entry = MakeEntry(this, QString::fromLatin1(name), QString::fromLatin1(accessibleName));
        GuardField(entry, FieldRule::MappingLimit);
        return entry;
    };
    TextMLowLimit = limit("TextMLowLimit", "Input low limit");
    TextMHighLimit = limit("TextMHighLimit", "Input high limit");
    TextSLowLimit = limit("TextSLowLimit", "Output low limit");
    TextSHighLimit = limit("TextSHighLimit", "Output high limit");
    for (std::size_t i = 0; i < LabLunit.size(); ++i)
        LabLunit[i] = MakeLabel(this, ElementName("LabLunit", static_cast<int>(i)), "");
    CmdLinearUpdata = MakeButton(this, QStringLiteral("CmdLinearUpdata"), "Updat&e Mapping");
    Writes(CmdLinearUpdata, [this] {
        return [this, entered = ReadEntered()](const NodeKey &node) { CmdLinearUpdata_Click(node, entered); };
    });
}

void FrameLSet::Load(PageReading &reading)
{
    if (!reading.record || !Has(reading.model, Feature::LinearMapping))
        return;
    SetAll(LabLunit, ToQString(reading.inputUnit));
    if (const auto on = reading.Read(Register::MappingSwitch))
        SetTick(CheckLinearScaling, *on == "1");
    if (reading.Read(Register::MappingInput))
        ShowLimits(reading.Reply(), TextMLowLimit, TextMHighLimit);
    if (reading.Read(Register::MappingOutput))
        ShowLimits(reading.Reply(), TextSLowLimit, TextSHighLimit);
}

void FrameLSet::ShowLimits(const std::string &reply, QLineEdit *low, QLineEdit *high)
{
    ShowText(low, Cut(reply, ReplyPlace::LowLimit));
    ShowText(high, Cut(reply, ReplyPlace::HighLimit));
}

FrameLSet::Entered FrameLSet::ReadEntered() const
{
    const auto limits = [](const QLineEdit *low, const QLineEdit *high) {
        return LimitPair{.low = FromQString(low->text()), .high = FromQString(high->text())};
    };
    return {.mapping = CaptionOf(CheckLinearScaling) != "Disable",
            .range = settings_.CmbRange->currentIndex(),
            .input = limits(TextMLowLimit, TextMHighLimit),
            .output = limits(TextSLowLimit, TextSHighLimit)};
}

void FrameLSet::CmdLinearUpdata_Click(const NodeKey &node, const Entered &entered)
{
    main().NowStatus("Now Linear Mapping Configuration is processing , Please wait moment....");
    const RefreshHold hold(main());
    DoEvents();
    const Outcome outcome = Write(node, entered);
    MsgBox(outcome.text, outcome.success ? MsgBoxStyle::Information : MsgBoxStyle::Critical, outcome.title);
    Reload(main());
}

/// The first failure ends the sequence; what was written before stays in the module.
FrameLSet::Outcome FrameLSet::Write(const NodeKey &node, const Entered &entered)
{
    if (!Store(main(), node, MappingSwitchCommand(node, entered.mapping)))
        return {"Configuration is invalid !", "Configuration is invalid"};

    if (!AreLimitsInOrder(entered.input))
        return {"Low limit input value must be lower then high limit input value !", "Input Setting failure"};
    const LimitPair input = WireInputLimits(node.model(), entered.range, entered.input);
    if (!Store(main(), node, MappingInputCommand(node, input)))
        return {"Input Setting failure !", "Input Setting failure"};

    if (!Store(main(), node, MappingOutputCommand(node, WireOutputLimits(entered.output))))
        return {"Output Setting failure !", "Output Setting failure"};
    return {"Configuration is successful !", "Configuration is successful", true};
}

} // namespace vorn
