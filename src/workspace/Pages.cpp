#include "workspace/Pages.h"

#include "discovery/FramePort.h"
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

#include <QHeaderView>
#include <QTabBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

constexpr int TwipsPerPixel = 15;
constexpr int SlotRows = 8;

struct SlotColumn {
    const char *caption;
    int twips;
};
constexpr SlotColumn SlotColumns[] = {{"Slot", 450}, {"Module", 1500}, {"Description", 4600}};

constexpr const char *LoggerTabs[] = {"Module", "Memory", "Limits", "Records"};

} // namespace

Pages::Pages(FormMain &main)
    : FramePort(new class FramePort(main)), FrameMSet(new class FrameMSet), FrameGen(new class FrameGen),
      FrameAIn(new class FrameAIn), FrameAOut(new class FrameAOut), FrameDIO(new class FrameDIO),
      FrameFCdata(new class FrameFCdata), FrameFC(new class FrameFC), FrameFCf(new class FrameFCf),
      FrameASet(new class FrameASet), FrameLSet(new class FrameLSet), FrameSlot(new class FrameSlot),
      FrameSlotIO(new class FrameSlotIO), FrameChannel(new class FrameChannel),
      FrameMemory(new class FrameMemory), FrameMAlarmset(new class FrameMAlarmset),
      FrameMemOperation(new class FrameMemOperation)
{
    BuildLists();
    const std::initializer_list<QWidget *> inOrder{
        LabPC,     FramePort,   TabStrip1,    FrameMSet,   ListView3900,   FrameGen,         FrameAIn,
        FrameAOut, FrameDIO,    FrameFCdata,  FrameFC,     FrameFCf,       FrameASet,        FrameLSet,
        FrameSlot, FrameSlotIO, FrameChannel, FrameMemory, FrameMAlarmset, FrameMemOperation};
    for (QWidget *frame : inOrder) {
        frame->hide();
        main.PageLayout()->addWidget(frame);
        Register(frame);
    }
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

    ListView3900 = Named(new QTreeWidget, "ListView3900", QStringLiteral("Slots of the base unit"));
    ListView3900->setRootIsDecorated(false);
    ListView3900->setUniformRowHeights(true);
    ListView3900->setAllColumnsShowFocus(true);
    ListView3900->setEditTriggers(QAbstractItemView::NoEditTriggers);
    QStringList captions;
    for (const SlotColumn &column : SlotColumns)
        captions << QString::fromLatin1(column.caption);
    ListView3900->setHeaderLabels(captions);
    for (int i = 0; i < ListView3900->columnCount(); ++i) {
        ListView3900->resizeColumnToContents(i);
        ListView3900->setColumnWidth(
            i, qMax(ListView3900->columnWidth(i), SlotColumns[i].twips / TwipsPerPixel));
    }
    const int row = ListView3900->fontMetrics().height() + Rhythm::BetweenRows;
    ListView3900->setMinimumHeight((SlotRows + 2) * row);
}

void Pages::Register(QWidget *frame)
{
    controls_.insert(frame->objectName(), frame);
    const QList<QWidget *> children = frame->findChildren<QWidget *>();
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
