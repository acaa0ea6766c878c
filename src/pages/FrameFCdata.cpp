#include "pages/FrameFCdata.h"

#include "shell/Controls.h"
#include "shell/DIO.h"

#include <QPushButton>

namespace vorn
{

FrameFCdata::FrameFCdata() : QGroupBox(QStringLiteral("Live Data"))
{
    setObjectName(QStringLiteral("FrameFCdata"));
    FrameGrid grid(this);
    for (int i = 0; i < Counters; ++i) {
        const auto e = static_cast<std::size_t>(i);
        LabFCv[e] = MakeLiveValue(this, ElementName("LabFCv", i), QStringLiteral("Value %1").arg(i));
        LabFCs[e] = MakeLabel(this, ElementName("LabFCs", i), "");
        LabFCs[e]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("START")));
        CounterOverflow[e] = Named(new DIO(this), ElementName("CounterOverflow", i));
        CounterOverflow[e]->SetCaption(QStringLiteral("Overflow"));
        CounterDO[e] = Named(new DIO(this), ElementName("CounterDO", i));
        CounterDO[e]->SetCaption(QStringLiteral("DO &%1").arg(i));
        CmdClear[e] = Named(new QPushButton(QStringLiteral("Clear"), this), ElementName("CmdClear", i),
                            QStringLiteral("Clear counter %1").arg(i));
        CmdCounterSet[e] =
            Named(new QPushButton(QStringLiteral("Set ..."), this), ElementName("CmdCounterSet", i),
                  QStringLiteral("Settings of counter %1").arg(i));
        const QString caption = QStringLiteral("CH %1 :").arg(i);
        grid.Row(MakeLabel(this, ElementName("LabFC", i), caption.toStdString()), LabFCv[e], LabFCs[e]);
        auto *row = SideBySide({CounterOverflow[e], CounterDO[e]});
        row->setSpacing(0);
        row->addStretch();
        row->addWidget(CmdClear[e]);
        row->addWidget(CmdCounterSet[e]);
        grid.WideRow(row);
    }
    CmdCClearLatch = Named(new QPushButton(QStringLiteral("Clear Latc&h"), this), "CmdCClearLatch");
    grid.Buttons({CmdCClearLatch});
}

} // namespace vorn
