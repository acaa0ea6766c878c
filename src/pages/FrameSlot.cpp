#include "pages/FrameSlot.h"

#include "pages/SlotUpdate.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelTable.h"
#include "shell/ButtonRows.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QComboBox>
#include <QPushButton>

#include <algorithm>

namespace vorn
{

namespace
{

constexpr int ChoiceCharacters = 10; // beside the text of what is set; alone a list takes the whole row
constexpr std::string_view FirstThermocouple = "0E";
const char *const NothingToCalibrate = "This card has no inputs to calibrate.";

} // namespace

FrameSlot::FrameSlot(FormMain &main) : PageFrame(main, "FrameSlot", "Slot Setting")
{
    const auto list = [this](const char *name, const char *accessibleName) {
        QComboBox *choice = MakeChoice(this, QString::fromLatin1(name), QString::fromLatin1(accessibleName),
                                       ChoiceCharacters);
        choice->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        return choice;
    };
    CmbSRange = list("CmbSRange", "Range");
    CmbSFormat = list("CmbSFormat", "Data format");
    CmbSTimeSlewRate = list("CmbSTimeSlewRate", "Integration time or slew rate");
    LabSRangeLab = MakeValue(this, QStringLiteral("LabSRangeLab"), QStringLiteral("Range"));
    LabSDataFormatLab = MakeValue(this, QStringLiteral("LabSDataFormatLab"), QStringLiteral("Data format"));
    LabS_time_slewrate = MakeValue(this, QStringLiteral("LabS_time_slewrate"),
                                   QStringLiteral("Integration time or slew rate"));
    LabSRange = MakeLabel(this, QStringLiteral("LabSRange"), "Input &Range :", CmbSRange);
    LabSTimeSlewrate =
        MakeLabel(this, QStringLiteral("LabSTimeSlewrate"), "Integration &Time :", CmbSTimeSlewRate);
    CmdSUpdate = MakeButton(this, QStringLiteral("CmdSUpdate"), "&Update");
    Writes(CmdSUpdate, [this] {
        return [this, settings = ReadSettings()](const NodeKey &) { CmdSUpdate_Click(settings); };
    });
    CmdSZero = MakeButton(this, QStringLiteral("CmdSZero"), "    &Zero Calibration");
    CmdSSpan = MakeButton(this, QStringLiteral("CmdSSpan"), "   &Span Calibration");
    CmdSCJC = MakeButton(this, QStringLiteral("CmdSCJC"), "    C&JC Calibration");
    OpensCalibration(CmdSZero, CalibrationMode::Zero);
    OpensCalibration(CmdSSpan, CalibrationMode::Span);
    OpensCalibration(CmdSCJC, CalibrationMode::CJC);

    FrameGrid grid(this);
    grid.Row(LabSRange, {LabSRangeLab, CmbSRange});
    grid.Row(MakeLabel(this, QStringLiteral("LabSFormat"), "&Data Format :", CmbSFormat),
             {LabSDataFormatLab, CmbSFormat});
    grid.Row(LabSTimeSlewrate, {LabS_time_slewrate, CmbSTimeSlewRate});
    grid.Buttons({CmdSUpdate});
    grid.WideRow(new ButtonRows({CmdSZero, CmdSSpan, CmdSCJC}));
}

bool FrameSlot::ShowsSecondFormat() const
{
    return CmbSFormat->count() > 1 && LabSDataFormatLab->text() == CmbSFormat->itemText(1);
}

void FrameSlot::LoadRangeTables(const std::string &model)
{
    const auto ranges = SlotRanges(model);
    if (ranges.empty())
        return;
    FillList(CmbSRange, ranges);
    if (HasSlotFormatList(model))
        FillList(CmbSFormat, SlotFormatCaptions(model));
    if (HasSlotTimeList(model))
        FillList(CmbSTimeSlewRate, SlotTimeCaptions(model));
}

void FrameSlot::Load(PageReading &reading)
{
    if (reading.node.kind() == NodeKind::Module)
        return;
    told_ = {};
    for (QWidget *button : {CmdSZero, CmdSSpan})
        Allow(button, Has(reading.model, Feature::CardInputs), NothingToCalibrate);
    if (const auto value = reading.Read(Register::SlotConfiguration)) {
        reading.slot.emplace(*value);
        ShowRecord(reading);
    }
    ShowTexts(reading.model);
}

/// Selects what the module tells; a position that the list doesn't have tells nothing.
void FrameSlot::Tell(QComboBox *list, int &told, std::optional<int> position)
{
    if (!position || *position >= list->count())
        return;
    told = *position;
    Select(list, told);
}

/// The record of a card for outputs or digital points says nothing about either.
void FrameSlot::ShowRecord(const PageReading &reading)
{
    const std::string &model = reading.model;
    const SlotRecord &record = *reading.slot;
    if (Has(model, Feature::CardOutputs) || Has(model, Feature::CardPoints))
        return;
    Tell(CmbSRange, told_.range, SlotRangePosition(record.typeCode));
    Tell(CmbSFormat, told_.format, record.FormatPosition(model));
    if (Has(model, Feature::IntegrationTime))
        Tell(CmbSTimeSlewRate, told_.timeSlewRate, record.IntegrationTime());
    if (Has(model, Feature::CardColdJunction) && reading.node.kind() == NodeKind::Slot)
        CmdSCJC->setVisible(record.typeCode >= FirstThermocouple);
}

void FrameSlot::ShowTexts(const std::string &model)
{
    LabSRangeLab->setText(CmbSRange->itemText(told_.range));
    if (HasSlotFormatList(model))
        LabSDataFormatLab->setText(CmbSFormat->itemText(told_.format));
    LabS_time_slewrate->setText(CmbSTimeSlewRate->itemText(told_.timeSlewRate));
    // The lists beside them stand one below the other.
    for (QLabel *text : {LabSRangeLab, LabS_time_slewrate})
        text->setMinimumWidth(0);
    const int widest = std::max(LabSRangeLab->sizeHint().width(), LabS_time_slewrate->sizeHint().width());
    for (QLabel *text : {LabSRangeLab, LabS_time_slewrate})
        text->setMinimumWidth(text->text().isEmpty() ? 0 : widest);
}

void FrameSlot::LoadChannel(PageReading &reading)
{
    const std::string &model = reading.model;
    if (!Has(model, Feature::ChannelRanges))
        return;
    if (const auto value = reading.Read(Register::ChannelConfiguration)) {
        reading.channel.emplace(*value);
        Tell(CmbSRange, told_.range, ChannelRangePosition(model, reading.channel->typeCode));
    }
    if (!Has(model, Feature::SlewRate))
        return;
    FillList(CmbSTimeSlewRate, SlewRateCaptions(told_.range == RangePosition::VoltageOutput));
    if (reading.channel)
        Tell(CmbSTimeSlewRate, told_.timeSlewRate, reading.channel->SlewRate());
    ShowTexts(model);
}

SlotSettings FrameSlot::ReadSettings() const
{
    return {.node = NodeKey(main().PageOnShow()),
            .range = CmbSRange->currentIndex(),
            .format = CmbSFormat->currentIndex(),
            .timeSlewRate = CmbSTimeSlewRate->currentIndex()};
}

void FrameSlot::CmdSUpdate_Click(const SlotSettings &settings)
{
    main().NowStatus("Now Configuration is processing , Please wait moment....");
    const RefreshHold hold(main());
    DoEvents();
    if (Store(main(), settings.node, SlotUpdateCommand(settings)))
        MsgBox("Configuration is successful !", MsgBoxStyle::Information, "Configuration is successful");
    else
        MsgBox("Configuration is invalid !", MsgBoxStyle::Critical, "Configuration is invalid");
    Reload(main());
}

} // namespace vorn
