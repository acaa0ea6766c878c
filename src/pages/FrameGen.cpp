#include "pages/FrameGen.h"

#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/SelectAllOnFocus.h"

#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

FrameGen::FrameGen() : QGroupBox(QStringLiteral("Live Data"))
{
    setObjectName(QStringLiteral("FrameGen"));
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
    grid.WideRow(InPairs({CmdGZero, CmdGSpan, CmdG0V, CmdG10V, CmdGCJC, CmdGStartup}));
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
