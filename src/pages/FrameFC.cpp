#include "pages/FrameFC.h"

#include "pages/CounterSettings.h"
#include "pages/FrameFCdata.h"
#include "pages/FrameMSet.h"
#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>

#include <optional>

namespace vorn
{

namespace
{

/// Wire form of a counter entry; nothing for a text that is no number.
std::optional<std::string> WireCount(const std::string &text)
{
    try {
        return DecToHex8(text);
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

bool HasDisplay(const NodeKey &node)
{
    return Has(node.model(), Feature::CounterDisplay);
}

} // namespace

FrameFC::FrameFC(FormMain &main, const FrameMSet &settings, FrameFCdata &live)
    : PageFrame(main, "FrameFC", "Counter 0"), settings_(settings), live_(live)
{
    BuildFields();
    FrameGrid grid(this);
    auto *state = SideBySide({OptionCch0S[1], OptionCch0S[0]});
    state->addStretch();
    grid.WideRow(state);
    grid.Row(MakeLabel(this, QStringLiteral("LabCMax"), "Ma&ximum count :", TextCMax), TextCMax);
    auto *mode = new QWidget(this);
    auto *modeLayout = new QHBoxLayout(mode);
    modeLayout->setContentsMargins(0, 0, 0, 0);
    modeLayout->addWidget(CheckPresetMode);
    modeLayout->addWidget(CmbFC0Amode, 1);
    grid.Row(Labmode, mode);
    grid.Row(LabHvalue, TextCPV);
    grid.Row(LabHHvalue, TextCIV);
    grid.Buttons({ComCUpdata});

    for (int i = 0; i < FrameFCdata::Counters; ++i) {
        const auto e = static_cast<std::size_t>(i);
        Chooses(live.CmdCounterSet[0], live.CmdCounterSet[e],
                [this, i] { return [this, i](const NodeKey &node) { CmdCounterSet_Click(node, i); }; });
        Chooses(OptionCch0S[0], OptionCch0S[e], [this, start = i == 1] {
            return [this, start, counter = CounterOfCaption(CaptionOf(this))](const NodeKey &node) {
                if (counter)
                    OptionCch0S_Click(node, *counter, start);
            };
        });
    }
    Writes(ComCUpdata, [this] {
        return [this, entered = ReadEntered()](const NodeKey &node) { ComCUpdata_Click(node, entered); };
    });
    connect(&live, &FrameFCdata::AlarmModeRead, this,
            [this](char alarm) { Select(CmbFC0Amode, alarm - '0'); });
    connect(&settings, &FrameMSet::InputModeChanged, this, [this, &settings] {
        if (!settings.IsCounting())
            hide();
    });
}

void FrameFC::BuildFields()
{
    OptionCch0S[0] = Named(new QRadioButton(QStringLiteral("STO&P"), this), "OptionCch0S_0");
    OptionCch0S[1] = Named(new QRadioButton(QStringLiteral("STA&RT"), this), "OptionCch0S_1");
    TextCMax = MakeEntry(this, QStringLiteral("TextCMax"), QStringLiteral("Maximum count"));
    TextCPV = MakeEntry(this, QStringLiteral("TextCPV"), QStringLiteral("Preset or high alarm value"));
    TextCIV = MakeEntry(this, QStringLiteral("TextCIV"), QStringLiteral("Initial or high-high alarm value"));
    CheckPresetMode = MakeStateBox(this, QStringLiteral("CheckPresetMode"), QStringLiteral("Preset mode"));
    CmbFC0Amode = Named(new QComboBox(this), "CmbFC0Amode", QStringLiteral("Alarm mode"));
    CmbFC0Amode->addItems({QStringLiteral("Disable"), QStringLiteral("Momentary"), QStringLiteral("Latch")});
    CmbFC0Amode->setCurrentIndex(-1);
    Labmode = MakeLabel(this, QStringLiteral("Labmode"), "Preset &mode :", CheckPresetMode);
    LabHvalue = MakeLabel(this, QStringLiteral("LabHvalue"), "Preset &value :", TextCPV);
    LabHHvalue = MakeLabel(this, QStringLiteral("LabHHvalue"), "&Initial value :", TextCIV);
    ComCUpdata = MakeButton(this, QStringLiteral("ComCUpdata"), "Update Cou&nter");
}

QLineEdit *FrameFC::Field(CounterField field) const
{
    switch (field) {
    case CounterField::Preset:
        return TextCPV;
    case CounterField::Initial:
        return TextCIV;
    case CounterField::Maximum:
        break;
    }
    return TextCMax;
}

/// Shows a register in its field; one that can't be read leaves the field.
void FrameFC::SetCount(CounterField field, const std::string &payload)
{
    try {
        ShowText(Field(field), Hex8ToDec(payload));
    } catch (const RuntimeError &) {
        // no hexadecimal number
    }
}

std::string FrameFC::Matter() const
{
    return CaptionOf(this);
}

void FrameFC::CmdCounterSet_Click(const NodeKey &node, int counter)
{
    if (CounterOfCaption(CaptionOf(this)) != counter)
        Leave();
    SetLoading(true);
    const auto loaded = qScopeGuard([this] { SetLoading(false); });
    SetCaption(this, "Counter " + std::to_string(counter));
    for (const CounterRead &read : CounterReads(node, counter)) {
        if (Send(main(), node, read.command))
            Show(node, counter, read);
    }
    ShowFields(node, counter);
    if (settings_.IsCounting())
        show();
}

void FrameFC::ShowState(const std::string &payload)
{
    SetTick(OptionCch0S[Val(payload) != 0 ? 1 : 0], true);
}

void FrameFC::Show(const NodeKey &node, int counter, const CounterRead &read)
{
    const std::string payload = Payload(main().ReplyText, node.checksum());
    switch (read.use) {
    case CounterReadUse::State:
        ShowState(payload);
        break;
    case CounterReadUse::Maximum:
        SetCount(CounterField::Maximum, payload);
        break;
    case CounterReadUse::Preset:
        SetCount(CounterField::Preset, payload);
        break;
    case CounterReadUse::Initial:
        SetCount(CounterField::Initial, payload);
        break;
    case CounterReadUse::PresetMode: {
        const bool preset = IsPresetMode(payload, counter);
        SetTick(CheckPresetMode, preset);
        live_.ShowPresetMode(counter, preset);
        break;
    }
    case CounterReadUse::AlarmMode:
        live_.ShowAlarmMode(CharAt(main().ReplyText, 4));
        break;
    }
}

/// Counter 1 of the models with a display has neither preset nor alarm.
void FrameFC::ShowFields(const NodeKey &node, int counter)
{
    const bool display = HasDisplay(node);
    const bool fields = !display || counter == 0;
    CheckPresetMode->setVisible(!display);
    CmbFC0Amode->setVisible(display && fields);
    ShowAll({Labmode, LabHvalue, LabHHvalue, TextCPV, TextCIV}, fields);
    const CounterCaptions captions = CounterCaptionsFor(node.model());
    SetCaption(Labmode, captions.mode);
    SetCaption(LabHvalue, captions.value);
    SetCaption(LabHHvalue, captions.highValue);
    Labmode->setBuddy(display ? static_cast<QWidget *>(CmbFC0Amode) : CheckPresetMode);
}

FrameFC::Entered FrameFC::ReadEntered() const
{
    Entered entered{.counter = CounterOfCaption(CaptionOf(this)),
                    .counts = {},
                    .preset = CheckPresetMode->isChecked(),
                    .alarmMode = CmbFC0Amode->currentIndex()};
    for (const CounterField field : {CounterField::Maximum, CounterField::Preset, CounterField::Initial})
        entered.counts.emplace(field, FromQString(Field(field)->text()));
    return entered;
}

void FrameFC::ComCUpdata_Click(const NodeKey &node, const Entered &entered)
{
    main().NowStatus("Now Counter setting is processing , Please wait moment....");
    if (const auto counter = entered.counter) {
        const Hourglass hourglass(main());
        for (const CounterWrite &write : CounterWrites(node, *counter)) {
            const auto value = WireCount(entered.counts.at(write.field));
            if (value && Send(main(), node, write.command + *value))
                WaitModuleReady(main(), node.busAddress(), node.checksum());
            else
                MsgBox(write.failureText, MsgBoxStyle::Critical, write.failureTitle);
        }
        const auto mode = CounterModeCommand(node, *counter, entered.preset, entered.alarmMode);
        if (mode)
            Send(main(), node, *mode);
        CmdCounterSet_Click(node, CounterOfCaption(CaptionOf(this)).value_or(*counter));
    }
    MsgBox("Counter setting is complete !", MsgBoxStyle::Information, "Counter setting is complete !");
}

/// What the counter does then is read. Where another one has come on show meanwhile, that one is read, too.
void FrameFC::OptionCch0S_Click(const NodeKey &node, int counter, bool start)
{
    Send(main(), node, CounterRunCommand(node, counter, start));
    WaitModuleReady(main(), node.busAddress(), node.checksum());
    const auto shown = CounterOfCaption(CaptionOf(this));
    if (Send(main(), node, CounterStateCommand(node, counter))) {
        const std::string state = Payload(main().ReplyText, node.checksum());
        live_.ShowState(counter, state);
        if (shown == counter)
            ShowState(state);
    }
    if (shown && *shown != counter)
        CmdCounterSet_Click(node, *shown);
}

} // namespace vorn
