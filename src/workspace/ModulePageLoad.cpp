#include "workspace/ModulePageLoad.h"

#include "pages/AlarmLimits.h"
#include "pages/CounterSettings.h"
#include "pages/FrameAIn.h"
#include "pages/FrameAOut.h"
#include "pages/FrameASet.h"
#include "pages/FrameChannel.h"
#include "pages/FrameFC.h"
#include "pages/FrameFCdata.h"
#include "pages/FrameFCf.h"
#include "pages/FrameGen.h"
#include "pages/FrameLSet.h"
#include "pages/FrameMSet.h"
#include "pages/FrameSlot.h"
#include "pages/OutputScale.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FormMain.h"
#include "shell/UpDown.h"
#include "workspace/Pages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

#include <algorithm>
#include <initializer_list>

namespace vorn
{

namespace
{

constexpr int VoltageRange = 2; ///< list position of the voltage range of the analog outputs
constexpr int CounterMode = 0;  ///< list positions of the counter modules' input mode
constexpr int FrequencyMode = 1;
constexpr int ChecksumBit = 6;
constexpr int IntegrationBit = 7;
constexpr int GateBit = 2;

const char *const InitStateOnly = "A module takes this setting only in its INIT state.";

/// Holds the pointer at hourglass and the waits of the bus without yield for the time of a page load. Loaded
/// from within a refresh, the page leaves the refresh's own state as it was.
class Loading final
{
public:
    explicit Loading(FormMain &main) : main_(main), noYield_(std::exchange(main.NoYield, true))
    {
        main_.setCursor(Qt::WaitCursor);
    }
    ~Loading()
    {
        main_.NoYield = noYield_;
        main_.unsetCursor();
    }
    Loading(const Loading &) = delete;
    Loading &operator=(const Loading &) = delete;

private:
    FormMain &main_;
    bool noYield_;
};

template <class Captions>
void Fill(QComboBox *list, const Captions &captions)
{
    list->clear();
    for (const auto &caption : captions)
        list->addItem(ToQString(caption));
    list->setCurrentIndex(-1);
}

void FillRanges(QComboBox *list, std::span<const RangeRow> rows)
{
    list->clear();
    for (const RangeRow &row : rows)
        list->addItem(ToQString(row.caption));
    list->setCurrentIndex(-1);
}

/// Selects a position; one that the list doesn't have leaves its selection.
void Select(QComboBox *list, int position)
{
    if (position >= 0 && position < list->count())
        list->setCurrentIndex(position);
}

void ShowAll(std::initializer_list<QWidget *> controls, bool show)
{
    for (QWidget *control : controls)
        control->setVisible(show);
}

template <class Labels>
void SetAll(const Labels &labels, std::string_view text)
{
    for (QLabel *label : labels)
        label->setText(ToQString(text));
}

std::string SelectedText(const QComboBox *list)
{
    return FromQString(list->currentText());
}

/// A field that the operator may write, or one that only shows, on a button-coloured field.
void SetWritable(QLineEdit *field, bool writable)
{
    field->setEnabled(writable);
    QPalette colours;
    if (!writable)
        colours.setBrush(QPalette::Base, colours.brush(QPalette::Button));
    field->setPalette(colours);
}

} // namespace

ModulePageLoad::ModulePageLoad(FormMain &main, Pages &pages) : main_(main), pages_(pages)
{
    QObject::connect(pages.FrameMSet->CmbRange, &QComboBox::activated, pages.FrameMSet, [this] {
        if (IsCounterModel(main_.PageNode().model()))
            CmbRange_Click();
    });
    QObject::connect(pages.FrameASet->CmdAlarmsetting, &QComboBox::currentIndexChanged, pages.FrameASet,
                     [this] { CmdAlarmsetting_Click(); });
}

bool ModulePageLoad::Ask(const NodeKey &node, const std::string &command)
{
    main_.trans(command.substr(0, 1) + node.busAddress() + command.substr(1), node.checksum());
    return IsAccepted(main_.ReplyText);
}

std::string ModulePageLoad::Data(const NodeKey &node) const
{
    return Payload(main_.ReplyText, node.checksum());
}

char ModulePageLoad::DataChar(std::size_t position) const
{
    return CharAt(main_.ReplyText, position);
}

void ModulePageLoad::LoadModulePage(const std::string &key)
{
    const Loading loading(main_);
    const NodeKey node(key);
    LoadRangeTables(node.model());
    if (node.hasSlot())
        LoadSlotPage(node);
    else
        LoadModule(node);
}

void ModulePageLoad::LoadRangeTables(const std::string &model)
{
    const auto *set = pages_.FrameMSet;
    if (const auto ranges = ModuleRanges(model); !ranges.empty())
        FillRanges(set->CmbRange, ranges);
    Fill(set->CmbDataFormat, DataFormatCaptions(model));

    const auto *slot = pages_.FrameSlot;
    if (const auto ranges = SlotRanges(model); !ranges.empty()) {
        FillRanges(slot->CmbSRange, ranges);
        if (HasSlotFormatList(model))
            Fill(slot->CmbSFormat, SlotFormatCaptions(model));
        if (HasSlotTimeList(model))
            Fill(slot->CmbSTimeSlewRate, SlotTimeCaptions(model));
    }
    Fill(pages_.FrameChannel->High.Type, ChannelAlarmModes(model));
    Fill(pages_.FrameChannel->Low.Type, ChannelAlarmModes(model));
}

void ModulePageLoad::LoadSlotPage(const NodeKey &node)
{
    const auto *slot = pages_.FrameSlot;
    const std::string model = node.model();
    slot->LabSRangeLab->setText(slot->CmbSRange->currentText());
    if (model != "3925" && model != "3923" && model != "3931")
        slot->LabSDataFormatLab->setText(slot->CmbSFormat->currentText());
    slot->LabS_time_slewrate->setText(slot->CmbSTimeSlewRate->currentText());
}

void ModulePageLoad::LoadModule(const NodeKey &node)
{
    const auto *set = pages_.FrameMSet;
    const std::string addr = node.busAddress();
    set->TextAddress->setText(QString::number(static_cast<int>(HexVal(addr))));
    set->LabAddr->setText(ToQString(addr + " (Hex)"));
    SetAccess(node);

    if (Ask(node, "$F"))
        set->LabMFVv->setText(ToQString(Data(node)));
    if (Ask(node, "$2"))
        LoadRecord(node);
}

/// What may be written: baud rate, checksum and firmware in INIT state only, the address always but on a base
/// unit.
void ModulePageLoad::SetAccess(const NodeKey &node)
{
    const auto *set = pages_.FrameMSet;
    const bool base = node.model() == BaseUnitModel;
    const bool init = base ? node.busAddress() == "00" : node.isInit();
    for (QWidget *control :
         {static_cast<QWidget *>(set->CmbBaudrate), static_cast<QWidget *>(set->CheckChecksum),
          static_cast<QWidget *>(set->CmdDownLoadF)}) {
        control->setEnabled(init);
        control->setToolTip(init ? QString() : QString::fromLatin1(InitStateOnly));
    }
    SetWritable(set->TextAddress, !base);
    set->UpDownAddr->setEnabled(!base);
    if (base && !init)
        set->CmdMUpdate->setEnabled(false);
    set->CmdMUpdate->setToolTip(base && !init ? QString::fromLatin1(InitStateOnly) : QString());
}

/// Reply of "$AA2": "!AATTCCFF", of a base unit "!AACCFF".
void ModulePageLoad::LoadRecord(const NodeKey &node)
{
    const auto *set = pages_.FrameMSet;
    const std::string model = node.model();
    const bool base = model == BaseUnitModel;
    const std::size_t baudDigit = base ? 5 : 7;
    const std::string record = main_.ReplyText;
    if (!base)
        ShowRange(node, Mid(record, 4, 2));
    if (const auto position = BaudIndexFromDigit(CharAt(record, baudDigit)))
        Select(set->CmbBaudrate, *position);
    std::string bits = HexToBin(Mid(record, baudDigit + 1, 2));
    if (bits.size() != 8)
        bits.clear(); // a record without a format byte leaves alone what that would tell
    const bool hasFormat = !bits.empty();
    if (hasFormat)
        set->CheckChecksum->setChecked(Bit(bits, ChecksumBit));
    if (hasFormat && !IsDigitalModel(model) && !IsCounterModel(model) && !base)
        ShowDataFormat((Bit(bits, 1) ? 2 : 0) + (Bit(bits, 0) ? 1 : 0));
    if (hasFormat && HasIntegrationTime(model))
        Select(set->CmbDataFormat, Bit(bits, IntegrationBit) ? 1 : 0);

    if (model == "7231")
        LoadAnalogOutput(bits);
    if (model == "7218")
        main_.OutputFormatCode = "00"; // its excitation output knows engineering units only
    if (IsCounterModel(model))
        LoadCounter(node, bits);
    if (HasIntegrationTime(model))
        LoadChannelMask(node);
    if (HasModuleAlarm(model))
        LoadAlarm(node);
    if (model == "7212D")
        LoadLinearMapping(node);
}

/// Percent and hexadecimal replace the unit of the range.
void ModulePageLoad::ShowDataFormat(int position)
{
    Select(pages_.FrameMSet->CmbDataFormat, position);
    const std::string_view unit = DataFormatUnit(position);
    if (unit.empty())
        return;
    pages_.FrameGen->LabRdu->setText(ToQString(unit));
    SetAll(pages_.FrameAOut->LabAOS, unit);
}

void ModulePageLoad::ShowRange(const NodeKey &node, const std::string &code)
{
    const std::string model = node.model();
    if (const auto range = DecodeRange(model, code)) {
        Select(pages_.FrameMSet->CmbRange, range->position);
        if (range->setsRdu)
            pages_.FrameGen->LabRdu->setText(ToQString(range->unit));
        if (range->setsAunit)
            SetAll(pages_.FrameASet->LabAunit, range->unit);
        if (range->setsAOS)
            SetAll(pages_.FrameAOut->LabAOS, range->unit);
        if (range->setsFCs)
            SetAll(pages_.FrameFCdata->LabFCs, range->unit);
    }
    if (model == "7212D")
        SetAll(pages_.FrameLSet->LabLunit, FromQString(pages_.FrameGen->LabRdu->text()));
    // Cold-junction calibration is for thermocouples.
    if (UsesThermocoupleRanges(model) && code < "0E") {
        pages_.FrameGen->CmdGCJC->hide();
        pages_.FrameAIn->CmdAICJC->hide();
    }
}

void ModulePageLoad::LoadAnalogOutput(const std::string &bits)
{
    const auto *set = pages_.FrameMSet;
    const auto *output = pages_.FrameAOut;
    const int range = set->CmbRange->currentIndex();
    // Without a selection the first position counts, so that the code keeps its two digits.
    const auto digit = [](int position) { return std::to_string(std::max(0, position)); };
    main_.OutputFormatCode = digit(set->CmbDataFormat->currentIndex()) + digit(range);
    output->CmdAO4mA->setVisible(range != VoltageRange);
    output->CmdAO20mA->setVisible(range != VoltageRange);
    if (const auto scale = SliderRangeFor(main_.OutputFormatCode)) {
        const QSignalBlocker quiet(output->Slider1);
        output->Slider1->setRange(scale->min, scale->max);
        output->Slider1->setPageStep(scale->largeStep);
        output->Slider1->setSingleStep(scale->smallStep);
        output->Slider1->setTickInterval(scale->tick);
    }
    Fill(set->CmbSlowRate, SlewRateCaptions(range == VoltageRange));
    pages_.FrameAOut->show();
    if (!bits.empty())
        Select(set->CmbSlowRate, SlewRatePosition(bits));
}

void ModulePageLoad::SetSlider(const std::string &value)
{
    const QSignalBlocker quiet(pages_.FrameAOut->Slider1);
    pages_.FrameAOut->Slider1->setValue(SliderValue(main_.OutputFormatCode, value));
}

void ModulePageLoad::LoadCounter(const NodeKey &node, const std::string &formatBits)
{
    const auto *set = pages_.FrameMSet;
    const auto *data = pages_.FrameFCdata;
    if (Ask(node, "$8")) {
        const int element = static_cast<int>(Val(std::string(1, DataChar(4))));
        if (DataChar(4) < '0' || element >= static_cast<int>(set->OptionLED.size()))
            throw RuntimeError(RuntimeErrorNumber::InvalidControlIndex);
        set->OptionLED[static_cast<std::size_t>(element)]->setChecked(true);
    }
    CmbRange_Click();
    const bool frequency = set->CmbRange->currentIndex() == FrequencyMode;
    if (frequency && !formatBits.empty())
        Select(set->CmbDataFormat, Bit(formatBits, GateBit) ? 1 : 0);
    else if (!frequency && Ask(node, "$A") && IsDigit(DataChar(4)))
        Select(set->CmbDataFormat, DataChar(4) - '0');
    for (int i = 0; i < FrameFCdata::Counters; ++i) {
        if (Ask(node, "$5" + std::to_string(i)))
            data->LabFCs[static_cast<std::size_t>(i)]->setText(ToQString(CounterStateText(Data(node))));
    }
    if (set->CmbRange->currentIndex() == CounterMode)
        LoadCounterOutputs(node);
    pages_.FrameFCdata->show();
    LoadInputStage(node);
}

/// Reply of "@AADI": on 7282 one digit whose bit i is the preset mode of counter i, on the display models the
/// alarm mode.
void ModulePageLoad::LoadCounterOutputs(const NodeKey &node)
{
    const auto *data = pages_.FrameFCdata;
    if (!Ask(node, "@DI"))
        return;
    const auto show = [data](int output, const CounterOutput &state) {
        DIO *point = data->CounterDO[static_cast<std::size_t>(output)];
        SetCaption(point, state.caption);
        point->SetEnabled(state.enabled);
    };
    if (node.model() == "7282") {
        for (int i = 0; i < FrameFCdata::Counters; ++i)
            show(i, CounterOutputFor(IsPresetMode(Data(node), i), i));
        return;
    }
    const char mode = DataChar(4);
    if (mode >= '0' && mode <= '2')
        Select(pages_.FrameFC->CmbFC0Amode, mode - '0');
    for (int i = 0; i < FrameFCdata::Counters; ++i)
        show(i, CounterOutputForAlarm(mode, i));
    data->CmdCClearLatch->setVisible(mode == '2');
}

void ModulePageLoad::LoadInputStage(const NodeKey &node)
{
    const auto *filter = pages_.FrameFCf;
    if (Ask(node, "$B")) {
        const char stage = DataChar(4);
        if (stage == '0' || stage == '1') {
            filter->OptionFSel[static_cast<std::size_t>(stage - '0')]->setChecked(true);
            ShowInputStage(stage == '1');
        }
    }
    if (Ask(node, "$0H"))
        filter->TextHW->setText(ToQString(FilterFieldText(FilterField::HighWidth, Data(node))));
    if (Ask(node, "$0L"))
        filter->TextLW->setText(ToQString(FilterFieldText(FilterField::LowWidth, Data(node))));
    if (Ask(node, "$1H"))
        filter->TextHV->setText(ToQString(FilterFieldText(FilterField::HighLevel, Data(node))));
    if (Ask(node, "$1L"))
        filter->TextLV->setText(ToQString(FilterFieldText(FilterField::LowLevel, Data(node))));
    if (Ask(node, "$4")) {
        filter->CheckFilter->setChecked(Val(std::string(1, DataChar(4))) != 0);
        SetCaption(filter->CheckFilter, filter->CheckFilter->isChecked() ? "Enable" : "Disable");
        pages_.FrameFCf->show();
    }
}

void ModulePageLoad::ShowInputStage(bool photo)
{
    const auto *filter = pages_.FrameFCf;
    ShowAll({filter->LabTTLH, filter->LabTTLL, filter->LabTTLHu, filter->LabTTLLu, filter->TextHV,
             filter->TextLV},
            !photo);
    filter->ComFUpdata->setVisible(!photo || pages_.FrameMSet->CmbRange->currentIndex() != FrequencyMode);
}

void ModulePageLoad::CmbRange_Click()
{
    const auto *set = pages_.FrameMSet;
    const auto *data = pages_.FrameFCdata;
    const auto *filter = pages_.FrameFCf;
    const bool counter = set->CmbRange->currentIndex() == CounterMode;
    ShowAll({filter->LabCHW, filter->LabCLW, filter->LabCHWu, filter->LabCLWu, filter->LabFstate,
             filter->CheckFilter, filter->TextHW, filter->TextLW, data->CounterDO[0], data->CounterDO[1],
             data->CounterOverflow[0], data->CounterOverflow[1], data->CmdClear[0], data->CmdClear[1],
             data->CmdCounterSet[0], data->CmdCounterSet[1]},
            counter);
    if (counter) {
        filter->ComFUpdata->show();
        SetAll(data->LabFCs, "");
        SetCaption(set->LabDataformat, "&Enable gate :");
    } else {
        pages_.FrameFC->hide();
        data->CmdCClearLatch->hide();
        SetAll(data->LabFCs, "Hz");
        SetCaption(set->LabDataformat, "&Frequency gate :");
        filter->ComFUpdata->setVisible(!filter->OptionFSel[1]->isChecked());
    }
    Fill(set->CmbDataFormat, GateCaptions(counter));
}

void ModulePageLoad::LoadChannelMask(const NodeKey &node)
{
    if (!Ask(node, "$6"))
        return;
    const std::string mask = HexToBin(Mid(main_.ReplyText, 4, 2));
    for (int i = 0; i < FrameAIn::Channels; ++i)
        pages_.FrameAIn->CheckAI[static_cast<std::size_t>(i)]->setChecked(Bit(mask, i));
}

void ModulePageLoad::LoadAlarm(const NodeKey &node)
{
    const auto *alarm = pages_.FrameASet;
    if (Ask(node, "@DI") && DataChar(4) >= '0' && DataChar(4) <= '2')
        Select(alarm->CmdAlarmsetting, DataChar(4) - '0');
    if (Ask(node, "@RH"))
        alarm->TextHighValue->setText(ToQString(Data(node)));
    if (Ask(node, "@RL"))
        alarm->TextLowValue->setText(ToQString(Data(node)));
}

void ModulePageLoad::LoadLinearMapping(const NodeKey &node)
{
    constexpr std::size_t LimitLength = 7;
    const auto *mapping = pages_.FrameLSet;
    if (Ask(node, "$B"))
        mapping->CheckLinearScaling->setChecked(DataChar(4) == '1');
    if (Ask(node, "$3")) {
        mapping->TextMLowLimit->setText(ToQString(Mid(main_.ReplyText, 4, LimitLength)));
        mapping->TextMHighLimit->setText(ToQString(Mid(main_.ReplyText, 11, LimitLength)));
    }
    if (Ask(node, "$5")) {
        mapping->TextSLowLimit->setText(ToQString(Mid(main_.ReplyText, 4, LimitLength)));
        mapping->TextSHighLimit->setText(ToQString(Mid(main_.ReplyText, 11, LimitLength)));
    }
}

void ModulePageLoad::CmdAlarmsetting_Click()
{
    const auto captions = AlarmPointCaptionsFor(SelectedText(pages_.FrameASet->CmdAlarmsetting));
    SetCaption(pages_.FrameGen->ADIO[0], captions.first);
    SetCaption(pages_.FrameGen->ADIO[1], captions.second);
}

} // namespace vorn
