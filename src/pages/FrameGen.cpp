#include "pages/FrameGen.h"

#include "pages/AlarmLimits.h"
#include "pages/OutputCommands.h"
#include "pages/OutputEntry.h"
#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Text.h"
#include "shell/ButtonRows.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "shell/SelectAllOnFocus.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace vorn
{

FrameGen::FrameGen(FormMain &main) : PageFrame(main, "FrameGen", "Live Data")
{
    BuildValues();
    BuildButtons();

    FrameGrid grid(this);
    grid.Row(LabRd, LabRdv, LabRdu);
    grid.Row(LabACt, LabACtv, CmdClearCount);
    grid.Row(LabAAO, TextAAOv, CmdAOsend);
    auto *points = SideBySide({ADIO[0], ADIO[1], ADIO[2], ADIO[3]});
    points->setSpacing(0);
    points->addStretch();
    grid.WideRow(points);
    grid.Buttons({CmdClearLatch});
    grid.WideRow(new ButtonRows({CmdGZero, CmdGSpan, CmdG0V, CmdG10V, CmdGCJC, CmdGStartup}));
}

void FrameGen::BuildValues()
{
    LabRd = MakeLabel(this, QStringLiteral("LabRd"), "Reading :");
    LabRdv = MakeLiveValue(this, QStringLiteral("LabRdv"), QStringLiteral("Reading"));
    LabRdu = MakeLabel(this, QStringLiteral("LabRdu"), "");
    LabACt = MakeLabel(this, QStringLiteral("LabACt"), "Event count :");
    LabACtv = MakeLiveValue(this, QStringLiteral("LabACtv"), QStringLiteral("Event count"));
    LabAAO = MakeLabel(this, QStringLiteral("LabAAO"), "Excitation (V) :");
    TextAAOv = MakeEntry(this, QStringLiteral("TextAAOv"), QStringLiteral("Excitation output in volts"));
    SelectAllOnFocus(TextAAOv);
    GuardField(TextAAOv, FieldRule::DecimalOutput);
    for (std::size_t i = 0; i < ADIO.size(); ++i) {
        DIO *point = ADIO[i] = Named(new DIO(this), ElementName("ADIO", static_cast<int>(i)));
        Wire(point, [this, point](const NodeKey &node) { ADIO_Click(node, *point); });
    }
    ADIO[0]->SetCaption(QStringLiteral("DO &0 "));
    ADIO[1]->SetCaption(QStringLiteral("DO &1 "));
    ADIO[2]->SetCaption(QStringLiteral("DO &2"));
    ADIO[3]->SetCaption(QStringLiteral("DI"));
}

void FrameGen::BuildButtons()
{
    const auto button = [this](const char *name, const char *caption) {
        return MakeButton(this, QString::fromLatin1(name), caption);
    };
    CmdAOsend = button("CmdAOsend", "Se&nd");
    CmdClearCount = button("CmdClearCount", "Clear C&ount");
    CmdClearLatch = button("CmdClearLatch", "Clear &Latch");
    CmdGZero = button("CmdGZero", "    &Zero Calibration");
    CmdGSpan = button("CmdGSpan", "    &Span Calibration");
    CmdGCJC = button("CmdGCJC", "    C&JC Calibration");
    CmdG0V = button("CmdG0V", "  A/O 0V Calibration");
    CmdG10V = button("CmdG10V", " A/O 10V Calibration");
    CmdGStartup = button("CmdGStartup", "  Sta&rtup Calibration");
    OpensCalibration(CmdGZero, CalibrationMode::Zero);
    OpensCalibration(CmdGSpan, CalibrationMode::Span);
    OpensCalibration(CmdGCJC, CalibrationMode::CJC);
    OpensCalibration(CmdG0V, CalibrationMode::ZeroVolts);
    OpensCalibration(CmdG10V, CalibrationMode::TenVolts);
    OpensCalibration(CmdGStartup, CalibrationMode::Startup);

    OnClick(main(), CmdClearCount, this,
            [this](const NodeKey &node) { Send(main(), node, ClearEventsCommand(node)); });
    OnClick(main(), CmdClearLatch, this,
            [this](const NodeKey &node) { Send(main(), node, ClearLatchCommand(node)); });
    new OutputEntry(main(), TextAAOv, CmdAOsend, [this](const NodeKey &node, const std::string &text) {
        Send(main(), node, ExcitationCommand(node, text));
    });
}

void FrameGen::Load(PageReading &reading)
{
    if (!reading.record || reading.record->typeCode.empty())
        return;
    if (reading.range && reading.range->setsRdu)
        LabRdu->setText(ToQString(reading.range->unit));
    reading.inputUnit = FromQString(LabRdu->text());
    // Percent and hexadecimal replace the unit of the range.
    const auto unit = HasDataFormatList(reading.model) && !reading.record->bits.empty()
                          ? DataFormatUnit(reading.record->FormatPosition())
                          : std::string_view{};
    if (!unit.empty())
        LabRdu->setText(ToQString(unit));
    if (IsVoltageOfThermocoupleModel(reading.model, reading.record->typeCode))
        CmdGCJC->hide();
    if (Has(reading.model, Feature::Excitation))
        main().OutputFormatCode = "00"; // its excitation output knows engineering units only
}

/// The excitation of one module isn't meant for the next, whose own comes with the refresh.
void FrameGen::Leave()
{
    PageFrame::Leave();
    TextAAOv->clear();
}

bool FrameGen::Wants(const PollStep &step, int)
{
    return step.condition != PollCondition::NotEditing || !main().OutputEditing;
}

void FrameGen::ShowLive(const LiveReply &reply)
{
    if (!reply.accepted)
        return;
    switch (reply.step.effect) {
    case PollEffect::AnalogPoints: {
        const std::string outputs = HexToBin(Mid(reply.text, 5, 2));
        ADIO[3]->SetValue(IsSetAt(reply.text, 8));
        ADIO[0]->SetValue(Bit(outputs, 0));
        ADIO[1]->SetValue(Bit(outputs, 1));
        break;
    }
    case PollEffect::StrainPoints:
        SetLamps(ADIO, HexToBin(Mid(reply.text, 5, 2)));
        break;
    case PollEffect::EventCount:
        LabACtv->setText(ToQString(reply.payload));
        break;
    case PollEffect::Reading:
        LabRdv->setText(ToQString(reply.payload));
        break;
    case PollEffect::ExcitationEntry:
        if (!main().OutputEditing) // typed into while the reply was on its way
            ShowInEntry(*TextAAOv, ToQString(reply.payload));
        break;
    default:
        break;
    }
}

void FrameGen::ADIO_Click(const NodeKey &node, const DIO &clicked)
{
    if (!IsOutputCaption(CaptionOf(&clicked)))
        return;
    std::array<bool, 4> values{};
    std::ranges::transform(ADIO, values.begin(), [](const DIO *point) { return point->value(); });
    const auto outputs = static_cast<std::size_t>(AnalogModuleOutputs(node.model()));
    if (outputs > 0)
        Send(main(), node, OutputByteCommand(node, std::span(values).first(outputs)));
}

} // namespace vorn
