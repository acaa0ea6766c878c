#include "pages/FrameFCf.h"

#include "pages/CounterSettings.h"
#include "pages/FrameMSet.h"
#include "pages/ModuleUpdate.h"
#include "platform/Dialogs.h"
#include "platform/WidgetText.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace vorn
{

namespace
{

constexpr const char *FilterError = "Filter setting error";

} // namespace

FrameFCf::FrameFCf(FormMain &main, const FrameMSet &settings)
    : PageFrame(main, "FrameFCf", "Input Setting"), settings_(settings)
{
    BuildFields();
    FrameGrid grid(this);
    auto *stage = SideBySide({OptionFSel[0], OptionFSel[1]});
    stage->addStretch();
    grid.WideRow(stage);
    grid.Row(LabTTLH, TextHV, LabTTLHu);
    grid.Row(LabTTLL, TextLV, LabTTLLu);
    grid.Row(LabFstate, CheckFilter);
    grid.Row(LabCHW, TextHW, LabCHWu);
    grid.Row(LabCLW, TextLW, LabCLWu);
    grid.Buttons({ComFUpdata});

    for (int i = 0; i < 2; ++i)
        Chooses(OptionFSel[0], OptionFSel[static_cast<std::size_t>(i)],
                [this, i] { return [this, i](const NodeKey &node) { OptionFSel_Click(node, i); }; });
    OnTick(main, CheckFilter, this,
           [this](const NodeKey &node, bool enabled) { CheckFilter_Click(node, enabled); });
    Writes(ComFUpdata, [this] {
        return [this, entered = ReadEntered()](const NodeKey &node) { ComFUpdata_Click(node, entered); };
    });
    connect(&settings, &FrameMSet::InputModeChanged, this, &FrameFCf::InputModeChanged);
}

void FrameFCf::BuildFields()
{
    OptionFSel[0] = Named(new QRadioButton(QStringLiteral("&TTL input"), this), "OptionFSel_0");
    OptionFSel[1] = Named(new QRadioButton(QStringLiteral("&Photo input"), this), "OptionFSel_1");
    const auto field = [this](const char *name, const char *accessibleName, FieldRule rule) {
        QLineEdit *entry = MakeEntry(this, QString::fromLatin1(name), QString::fromLatin1(accessibleName));
        GuardField(entry, rule);
        return entry;
    };
    TextHV = field("TextHV", "High trigger level in volts", FieldRule::TriggerLevel);
    TextLV = field("TextLV", "Low trigger level in volts", FieldRule::TriggerLevel);
    TextHW = field("TextHW", "Minimum width at high level", FieldRule::InputWidth);
    TextLW = field("TextLW", "Minimum width at low level", FieldRule::InputWidth);
    const auto label = [this](const char *name, const char *caption, QWidget *buddy = nullptr) {
        return MakeLabel(this, QString::fromLatin1(name), caption, buddy);
    };
    LabTTLH = label("LabTTLH", "High trigger level :", TextHV);
    LabTTLL = label("LabTTLL", "Low trigger level :", TextLV);
    LabTTLHu = label("LabTTLHu", "V");
    LabTTLLu = label("LabTTLLu", "V");
    CheckFilter = MakeStateBox(this, QStringLiteral("CheckFilter"), QStringLiteral("Filter"));
    LabFstate = label("LabFstate", "Filter :", CheckFilter);
    LabCHW = label("LabCHW", "Min. width, high :", TextHW);
    LabCLW = label("LabCLW", "Min. width, low :", TextLW);
    LabCHWu = label("LabCHWu", "us");
    LabCLWu = label("LabCLWu", "us");
    ComFUpdata = MakeButton(this, QStringLiteral("ComFUpdata"), "Up&date Filter");
}

QLineEdit *FrameFCf::Field(FilterField field) const
{
    switch (field) {
    case FilterField::HighLevel:
        return TextHV;
    case FilterField::LowLevel:
        return TextLV;
    case FilterField::HighWidth:
        return TextHW;
    case FilterField::LowWidth:
        break;
    }
    return TextLW;
}

void FrameFCf::Load(PageReading &reading)
{
    if (!reading.record || !IsCounterModel(reading.model))
        return;
    if (const auto photo = ReadStage(reading))
        ShowInputStage(*photo);
    ReadFilter(reading);
    if (const auto enabled = reading.Read(Register::InputFilter)) {
        filters_ = Val(*enabled) != 0;
        SetTick(CheckFilter, filters_);
        show();
    }
}

/// Shows the input stage that the module tells, and says whether it is the photo input.
std::optional<bool> FrameFCf::ReadStage(PageReading &reading)
{
    const auto stage = reading.Read(Register::InputStage);
    if (stage != "0" && stage != "1")
        return std::nullopt;
    SetTick(OptionFSel[*stage == "1" ? 1 : 0], true);
    return *stage == "1";
}

void FrameFCf::ReadFilter(PageReading &reading)
{
    for (const FilterRegister &filter : FilterReads()) {
        if (const auto value = reading.Read(filter.reg))
            ShowText(Field(filter.field), FilterFieldText(filter.field, *value));
    }
}

/// Shows the fields that belong to the TTL or to the photo input.
void FrameFCf::ShowInputStage(bool photo)
{
    ShowAll({LabTTLH, LabTTLL, LabTTLHu, LabTTLLu, TextHV, TextLV}, !photo);
    ComFUpdata->setVisible(!photo || !settings_.IsFrequency());
}

void FrameFCf::InputModeChanged()
{
    const bool counter = settings_.IsCounting();
    ShowAll({LabCHW, LabCLW, LabCHWu, LabCLWu, LabFstate, CheckFilter, TextHW, TextLW}, counter);
    ComFUpdata->setVisible(counter || !OptionFSel[1]->isChecked());
}

void FrameFCf::OptionFSel_Click(const NodeKey &node, int element)
{
    PageReading reading(main(), node);
    Send(main(), node, InputStageCommand(node, element));
    const auto told = ReadStage(reading); // a stage that was refused leaves the module at the one before
    ReadFilter(reading);
    ShowInputStage(told.value_or(element == 1));
}

void FrameFCf::CheckFilter_Click(const NodeKey &node, bool enabled)
{
    if (Store(main(), node, FilterCommand(node, enabled)))
        filters_ = enabled;
    else
        SetTick(CheckFilter, filters_);
}

FrameFCf::Entered FrameFCf::ReadEntered() const
{
    Entered entered;
    for (const FilterRegister &filter : FilterWrites())
        entered.emplace(filter.field, FromQString(Field(filter.field)->text()));
    return entered;
}

/// Which fields are written goes by the input stage as it is then.
void FrameFCf::ComFUpdata_Click(const NodeKey &node, const Entered &entered)
{
    main().NowStatus("Now Configuration is processing , Please wait moment....");
    for (const FilterRegister &filter : FilterWrites()) {
        const bool level = filter.field == FilterField::HighLevel || filter.field == FilterField::LowLevel;
        if (level && !IsShown(Field(filter.field)))
            continue;
        const std::string value = FilterWireText(filter.field, entered.at(filter.field));
        if (!Store(main(), node, FilterCommandOf(node, filter) + value))
            MsgBox(filter.failureText, MsgBoxStyle::Critical, FilterError);
    }
    PageReading reading(main(), node);
    ReadFilter(reading);
    MsgBox("Filter setting is complete !", MsgBoxStyle::Information, "Filter setting is complete !");
}

} // namespace vorn
