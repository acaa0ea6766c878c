#include "pages/FrameAIn.h"

#include "shell/Controls.h"

#include <QCheckBox>
#include <QPushButton>

namespace vorn
{

namespace
{

constexpr int RowsPerColumn = 4;
constexpr int CellsPerChannel = 4; // check box, value, unit, gap

} // namespace

FrameAIn::FrameAIn() : QGroupBox(QStringLiteral("Analog Input"))
{
    setObjectName(QStringLiteral("FrameAIn"));
    auto *channels = new QGridLayout;
    channels->setHorizontalSpacing(Rhythm::LabelToField);
    channels->setVerticalSpacing(Rhythm::BetweenRows);
    for (int i = 0; i < Channels; ++i) {
        const auto e = static_cast<std::size_t>(i);
        CheckAI[e] = Named(new QCheckBox(QStringLiteral("CH &%1").arg(i), this), ElementName("CheckAI", i));
        LabAIv[e] = MakeLiveValue(this, ElementName("LabAIv", i), QStringLiteral("Channel %1").arg(i));
        LabAIs[e] = MakeLabel(this, ElementName("LabAIs", i), "");
        LabAIs[e]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("mmA")));
        const int column = i / RowsPerColumn * CellsPerChannel;
        channels->addWidget(CheckAI[e], i % RowsPerColumn, column);
        channels->addWidget(LabAIv[e], i % RowsPerColumn, column + 1);
        channels->addWidget(LabAIs[e], i % RowsPerColumn, column + 2);
        channels->setColumnStretch(column + 1, 1);
    }
    const auto button = [this](const char *name, const char *caption) {
        return Named(new QPushButton(QString::fromLatin1(caption), this), name);
    };
    CmdAIZero = button("CmdAIZero", "    &Zero Calibration");
    CmdAISpan = button("CmdAISpan", "   &Span Calibration");
    CmdAICJC = button("CmdAICJC", "    C&JC Calibration");

    FrameGrid grid(this);
    grid.WideRow(channels);
    grid.WideRow(InPairs({CmdAIZero, CmdAISpan, CmdAICJC}));
}

} // namespace vorn
