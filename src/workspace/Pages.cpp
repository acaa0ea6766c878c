#include "workspace/Pages.h"

#include "logger/FrameMAlarmset.h"
#include "logger/FrameMemOperation.h"
#include "logger/FrameMemory.h"
#include "pages/FrameAIn.h"
#include "pages/FrameAOut.h"
#include "pages/FrameASet.h"
#include "pages/FrameChannel.h"
#include "pages/FrameDIO.h"
#include "pages/FrameFC.h"
#include "pages/FrameFCdata.h"
#include "pages/FrameFCf.h"
#include "pages/FrameGen.h"
#include "pages/FrameLSet.h"
#include "pages/FrameMSet.h"
#include "pages/FrameSlot.h"
#include "pages/FrameSlotIO.h"
#include "platform/WidgetText.h"
#include "protocol/ModelCatalogue.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/RowList.h"

#include <QTabBar>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

constexpr int SlotRows = 8;
constexpr ListColumn SlotColumns[] = {{"Slot", 450}, {"Module", 1500}, {"Description", 4600}};

constexpr const char *LoggerTabs[] = {"Module", "Memory", "Limits", "Records"};

} // namespace

Pages::Pages(FormMain &main, QWidget *framePort)
    : FramePort(framePort), FrameMSet(new class FrameMSet(main)), FrameMemory(new class FrameMemory(main)),
      FrameMAlarmset(new class FrameMAlarmset(main)), FrameMemOperation(new class FrameMemOperation(main))
{
    BuildLists();
    auto *data = new FrameGen(main);
    auto *counters = new FrameFCdata(main, *FrameMSet);
    auto *slot = new FrameSlot(main);
    const std::initializer_list<QWidget *> inOrder{LabPC,
                                                   FramePort,
                                                   TabStrip1,
                                                   FrameMSet,
                                                   ListView3900,
                                                   slot,
                                                   new FrameSlotIO(main, *slot),
                                                   new FrameChannel(main, *slot),
                                                   data,
                                                   new FrameAIn(main, *FrameMSet),
                                                   new FrameAOut(main, *FrameMSet),
                                                   new FrameDIO(main),
                                                   counters,
                                                   new FrameFC(main, *FrameMSet, *counters),
                                                   new FrameFCf(main, *FrameMSet),
                                                   new FrameASet(main, *FrameMSet, *data),
                                                   new FrameLSet(main, *FrameMSet),
                                                   FrameMemory,
                                                   FrameMAlarmset,
                                                   FrameMemOperation};
    for (QWidget *part : inOrder)
        Add(main, part);
    main.PageLayout()->addStretch(1);
}

void Pages::BuildLists()
{
    QStringList lines;
    for (const std::string &line : LabPCLines())
        lines << ToQString(line);
    LabPC = Named(new QLabel(lines.join(QLatin1Char('\n'))), "LabPC", QStringLiteral("About this program"));
    LabPC->setTextInteractionFlags(Qt::TextSelectableByMouse);
    LabPC->setTextFormat(Qt::PlainText);

    TabStrip1 = Named(new QTabBar, "TabStrip1", QStringLiteral("Logger pages"));
    for (const char *tab : LoggerTabs)
        TabStrip1->addTab(QString::fromLatin1(tab));

    ListView3900 = Named(new RowList(SlotColumns), "ListView3900", QStringLiteral("Slots of the base unit"));
    const int row = ListView3900->fontMetrics().height() + Rhythm::BetweenRows;
    ListView3900->setMinimumHeight((SlotRows + 2) * row);
}

void Pages::Add(FormMain &main, QWidget *part)
{
    part->hide();
    main.PageLayout()->addWidget(part);
    if (auto *frame = dynamic_cast<PageFrame *>(part)) {
        frame->WatchControls();
        frames_.push_back(frame);
    }
    controls_.insert(part->objectName(), part);
    const QList<QWidget *> children = part->findChildren<QWidget *>();
    for (QWidget *child : children) {
        if (!child->objectName().isEmpty())
            controls_.insert(child->objectName(), child);
    }
}

QWidget *Pages::Control(const std::string &name) const
{
    return controls_.value(ToQString(name), nullptr);
}

} // namespace vorn
