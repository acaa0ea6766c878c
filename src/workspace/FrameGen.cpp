#include "workspace/FrameGen.h"

#include "core/Controls.h"
#include "core/SelectAllOnFocus.h"
#include "tools/DIO.h"

#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

namespace
{

constexpr int CalibrationColumns = 2;

} // namespace

FrameGen::FrameGen() : QGroupBox(QStringLiteral("Live Data"))
{
    setObjectName(QStringLiteral("FrameGen"));
    BuildValues();
    BuildButtons();

    FrameGrid grid(this);
    grid.Row(LabRd, LabRdv, LabRdu);
    grid.Row(LabACt, LabACtv, CmdClearCount);
    auto *output = SideBySide({TextAAOv, CmdAOsend});
    const int row = grid.Layout()->rowCount();
    grid.Layout()->addWidget(LabAAO, row, 0);
    grid.Layout()->addLayout(output, row, 1, 1, 2);
    auto *points = SideBySide({ADIO[0], ADIO[1], ADIO[2], ADIO[3]});
    points->addStretch();
    points->addWidget(CmdClearLatch);
    grid.WideRow(points);

    auto *calibration = new QGridLayout;
    calibration->setHorizontalSpacing(Rhythm::LabelToField);
    calibration->setVerticalSpacing(Rhythm::BetweenRows);
    int place = 0;
    for (QPushButton *button : {CmdGZero, CmdGSpan, CmdG0V, CmdG10V, CmdGCJC, CmdGStartup}) {
        calibration->addWidget(button, place / CalibrationColumns, place % CalibrationColumns);
        ++place;
    }
    grid.WideRow(calibration);
}

void FrameGen::BuildValues()
{
    LabRd = MakeLabel(this, QStringLiteral("LabRd"), "Reading :");
    LabRdv = MakeLiveValue(this, QStringLiteral("LabRdv"), QStringLiteral("Reading"));
    LabRdu = MakeLabel(this, QStringLiteral("LabRdu"), "");
    LabACt = MakeLabel(this, QStringLiteral("LabACt"), "Event count :");
    LabACtv = MakeLiveValue(this, QStringLiteral("LabACtv"), QStringLiteral("Event count"));
    LabAAO = MakeLabel(this, QStringLiteral("LabAAO"), "Excitation (V) :");
    TextAAOv = Named(new QLineEdit(this), "TextAAOv", QStringLiteral("Excitation output in volts"));
    SelectAllOnFocus(TextAAOv);
    for (std::size_t i = 0; i < ADIO.size(); ++i)
        ADIO[i] = Named(new DIO(this), ElementName("ADIO", static_cast<int>(i)));
    ADIO[0]->SetCaption(QStringLiteral("DO &0 "));
    ADIO[1]->SetCaption(QStringLiteral("DO &1 "));
    ADIO[2]->SetCaption(QStringLiteral("DO &2"));
    ADIO[3]->SetCaption(QStringLiteral("DI"));
}

void FrameGen::BuildButtons()
{
    const auto button = [this](const char *name, const char *caption) {
        return Named(new QPushButton(QString::fromLatin1(caption), this), name);
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
}

} // namespace vorn
