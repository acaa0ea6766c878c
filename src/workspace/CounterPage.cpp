#include "workspace/CounterPage.h"

#include "pages/CounterSettings.h"
#include "pages/FrameFC.h"
#include "pages/FrameFCdata.h"
#include "pages/FrameFCf.h"
#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"
#include "workspace/ModulePageLoad.h"
#include "workspace/Pages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <optional>

namespace vorn
{

namespace
{

constexpr const char *FilterError = "Filter setting error";

/// Decimal text of a counter register; nothing for a payload that is none.
std::optional<QString> Count(const std::string &payload)
{
    try {
        return ToQString(Hex8ToDec(payload));
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

/// Wire form of a counter entry; nothing for a text that is no number.
std::optional<std::string> WireCount(const QLineEdit &field)
{
    try {
        return DecToHex8(FromQString(field.text()));
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

bool HasDisplay(const NodeKey &node)
{
    return node.model() != "7282";
}

} // namespace

CounterPage::CounterPage(FormMain &main, Pages &pages, ModulePageLoad &load)
    : main_(main), pages_(pages), load_(load)
{
    for (int i = 0; i < FrameFCdata::Counters; ++i) {
        const auto e = static_cast<std::size_t>(i);
        OnClick(pages.FrameFCdata->CmdCounterSet[e], this, [this, i] { CmdCounterSet_Click(i); });
        OnClick(pages.FrameFC->OptionCch0S[e], this, [this, i] { OptionCch0S_Click(i == 1); });
        OnClick(pages.FrameFCf->OptionFSel[e], this, [this, i] { OptionFSel_Click(i); });
    }
    OnClick(pages.FrameFC->ComCUpdata, this, [this] { ComCUpdata_Click(); });
    OnClick(pages.FrameFCf->ComFUpdata, this, [this] { ComFUpdata_Click(); });
    GuardField(pages.FrameFCf->TextHV, FieldRule::TriggerLevel);
    GuardField(pages.FrameFCf->TextLV, FieldRule::TriggerLevel);
    GuardField(pages.FrameFCf->TextHW, FieldRule::InputWidth);
    GuardField(pages.FrameFCf->TextLW, FieldRule::InputWidth);
}

QLineEdit *CounterPage::Field(CounterField field) const
{
    switch (field) {
    case CounterField::Preset:
        return pages_.FrameFC->TextCPV;
    case CounterField::Initial:
        return pages_.FrameFC->TextCIV;
    case CounterField::Maximum:
        break;
    }
    return pages_.FrameFC->TextCMax;
}

QLineEdit *CounterPage::Field(FilterField field) const
{
    switch (field) {
    case FilterField::HighLevel:
        return pages_.FrameFCf->TextHV;
    case FilterField::LowLevel:
        return pages_.FrameFCf->TextLV;
    case FilterField::HighWidth:
        return pages_.FrameFCf->TextHW;
    case FilterField::LowWidth:
        break;
    }
    return pages_.FrameFCf->TextLW;
}

/// Shows a register in its field; one that can't be read leaves the field.
void CounterPage::SetCount(CounterField field, const std::string &payload)
{
    if (const auto count = Count(payload))
        Field(field)->setText(*count);
}

void CounterPage::CmdCounterSet_Click(int counter)
{
    SetCaption(pages_.FrameFC, "Counter " + std::to_string(counter));
    const NodeKey node = main_.PageNode();
    for (const CounterRead &read : CounterReads(node, counter)) {
        if (Send(main_, node, read.command))
            Show(node, counter, read);
    }
    ShowFields(node, counter);
    pages_.FrameFC->show();
}

void CounterPage::Show(const NodeKey &node, int counter, const CounterRead &read)
{
    const std::string payload = Payload(main_.ReplyText, node.checksum());
    const auto *frame = pages_.FrameFC;
    const auto output = [this](int element, const CounterOutput &state) {
        DIO *point = pages_.FrameFCdata->CounterDO[static_cast<std::size_t>(element)];
        SetCaption(point, state.caption);
        point->SetEnabled(state.enabled);
    };
    switch (read.use) {
    case CounterReadUse::State: {
        const auto element = static_cast<std::size_t>(Val(payload) != 0 ? 1 : 0);
        frame->OptionCch0S[element]->setChecked(true);
        break;
    }
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
        frame->CheckPresetMode->setChecked(preset);
        output(counter, CounterOutputFor(preset, counter));
        break;
    }
    case CounterReadUse::AlarmMode: {
        const char mode = CharAt(main_.ReplyText, 4);
        if (mode >= '0' && mode <= '2')
            frame->CmbFC0Amode->setCurrentIndex(mode - '0');
        for (int i = 0; i < FrameFCdata::Counters; ++i)
            output(i, CounterOutputForAlarm(mode, i));
        pages_.FrameFCdata->CmdCClearLatch->setVisible(mode == '2');
        break;
    }
    }
}

/// Counter 1 of the models with a display has neither preset nor alarm.
void CounterPage::ShowFields(const NodeKey &node, int counter)
{
    const auto *frame = pages_.FrameFC;
    const bool display = HasDisplay(node);
    const bool fields = !display || counter == 0;
    frame->CheckPresetMode->setVisible(!display);
    frame->CmbFC0Amode->setVisible(display && fields);
    for (QWidget *control : {static_cast<QWidget *>(frame->Labmode), static_cast<QWidget *>(frame->LabHvalue),
                             static_cast<QWidget *>(frame->LabHHvalue),
                             static_cast<QWidget *>(frame->TextCPV), static_cast<QWidget *>(frame->TextCIV)})
        control->setVisible(fields);
    const CounterCaptions captions = CounterCaptionsFor(node.model());
    SetCaption(frame->Labmode, captions.mode);
    SetCaption(frame->LabHvalue, captions.value);
    SetCaption(frame->LabHHvalue, captions.highValue);
    frame->Labmode->setBuddy(display ? static_cast<QWidget *>(frame->CmbFC0Amode) : frame->CheckPresetMode);
}

void CounterPage::ComCUpdata_Click()
{
    main_.NowStatus("Now Counter setting is processing , Please wait moment....");
    const NodeKey node = main_.PageNode();
    {
        const Hourglass hourglass(main_);
        if (const auto counter = CounterOfCaption(CaptionOf(pages_.FrameFC))) {
            for (const CounterWrite &write : CounterWrites(node, *counter)) {
                const auto value = WireCount(*Field(write.field));
                if (value && Send(main_, node, write.command + *value))
                    WaitModuleReady(main_, node.busAddress(), node.checksum());
                else
                    MsgBox(write.failureText, MsgBoxStyle::Critical, write.failureTitle);
            }
            const auto mode = CounterModeCommand(node, *counter, pages_.FrameFC->CheckPresetMode->isChecked(),
                                                 pages_.FrameFC->CmbFC0Amode->currentIndex());
            if (mode)
                Send(main_, node, *mode);
            CmdCounterSet_Click(*counter);
        }
    }
    MsgBox("Counter setting is complete !", MsgBoxStyle::Information, "Counter setting is complete !");
}

void CounterPage::OptionCch0S_Click(bool start)
{
    const NodeKey node = main_.PageNode();
    const auto counter = CounterOfCaption(CaptionOf(pages_.FrameFC));
    if (!counter)
        return;
    Send(main_, node, CounterRunCommand(node, *counter, start));
    WaitModuleReady(main_, node.busAddress(), node.checksum());
    if (Send(main_, node, CounterStateCommand(node, *counter)))
        SetCaption(pages_.FrameFCdata->LabFCs[static_cast<std::size_t>(*counter)],
                   CounterStateText(Payload(main_.ReplyText, node.checksum())));
}

void CounterPage::OptionFSel_Click(int element)
{
    const NodeKey node = main_.PageNode();
    Send(main_, node, InputStageCommand(node, element));
    if (Send(main_, node, "$" + node.busAddress() + "B")) {
        const std::string stage = Payload(main_.ReplyText, node.checksum());
        if (stage == "0" || stage == "1")
            pages_.FrameFCf->OptionFSel[stage == "1" ? 1U : 0U]->setChecked(true);
    }
    ReadFilter(node);
    load_.ShowInputStage(element == 1);
}

void CounterPage::ReadFilter(const NodeKey &node)
{
    for (const FilterRegister &filter : FilterReads()) {
        if (Send(main_, node, FilterCommandOf(node, filter)))
            Field(filter.field)
                ->setText(
                    ToQString(FilterFieldText(filter.field, Payload(main_.ReplyText, node.checksum()))));
    }
}

void CounterPage::ComFUpdata_Click()
{
    main_.NowStatus("Now Configuration is processing , Please wait moment....");
    const NodeKey node = main_.PageNode();
    for (const FilterRegister &filter : FilterWrites()) {
        const QLineEdit *field = Field(filter.field);
        const bool level = filter.field == FilterField::HighLevel || filter.field == FilterField::LowLevel;
        if (level && !IsShown(field))
            continue;
        const std::string value = FilterWireText(filter.field, FromQString(field->text()));
        if (!Store(main_, node, FilterCommandOf(node, filter) + value))
            MsgBox(filter.failureText, MsgBoxStyle::Critical, FilterError);
    }
    ReadFilter(node);
    MsgBox("Filter setting is complete !", MsgBoxStyle::Information, "Filter setting is complete !");
}

} // namespace vorn
