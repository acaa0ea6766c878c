#include "pages/FrameDIO.h"

#include "shell/Controls.h"
#include "shell/DIO.h"

namespace vorn
{

namespace
{

constexpr int PointsPerRow = 4;
const char *const DesignCaption = "DO &0";

} // namespace

FrameDIO::FrameDIO() : QGroupBox(QStringLiteral("Digital Input / Output"))
{
    setObjectName(QStringLiteral("FrameDIO"));
    LabDL = MakeLabel(this, QStringLiteral("LabDL"), "");
    LabDLv = MakeLiveValue(this, QStringLiteral("LabDLv"), QStringLiteral("Low group, hexadecimal"));
    LabDH = MakeLabel(this, QStringLiteral("LabDH"), "");
    LabDHv = MakeLiveValue(this, QStringLiteral("LabDHv"), QStringLiteral("High group, hexadecimal"));
    for (QLabel *value : {LabDLv, LabDHv})
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("00000")));

    FrameGrid grid(this);
    grid.WideRow(BuildGroup(LabDL, LabDLv, DIOL, "DIOL"));
    grid.WideRow(BuildGroup(LabDH, LabDHv, DIOH, "DIOH"));
}

QLayout *FrameDIO::BuildGroup(QLabel *kind, QLabel *value, std::array<DIO *, Points> &points,
                              const char *name)
{
    auto *group = new QVBoxLayout;
    group->setSpacing(Rhythm::BetweenRows);
    auto *head = SideBySide({kind, value});
    head->addStretch();
    group->addLayout(head);
    auto *lamps = new QGridLayout;
    lamps->setSpacing(Rhythm::BetweenRows);
    for (int i = 0; i < Points; ++i) {
        DIO *&point = points[static_cast<std::size_t>(i)];
        point = Named(new DIO(this), ElementName(name, i));
        SetCaption(point, DesignCaption);
        lamps->addWidget(point, i / PointsPerRow, i % PointsPerRow);
        lamps->setColumnStretch(i % PointsPerRow, 1);
    }
    group->addLayout(lamps);
    return group;
}

} // namespace vorn
