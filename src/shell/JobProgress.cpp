#include "shell/JobProgress.h"

#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"

#include <QProgressBar>
#include <QStatusBar>

namespace vorn
{

namespace
{

/// Room for the longest label of a record, and the count.
constexpr const char *LongestText = "S0C0 3H H Alarm Mode  000 / 000";

} // namespace

JobProgress::JobProgress(FormMain &main)
    : bar_(Named(new QProgressBar, "StatusBar1_2", QStringLiteral("Progress")))
{
    bar_->setFixedWidth(bar_->fontMetrics().horizontalAdvance(QLatin1String(LongestText)) + Rhythm::Margin);
    bar_->setValue(0);
    main.statusBar()->addPermanentWidget(bar_);
}

JobProgress::~JobProgress()
{
    delete bar_;
}

void JobProgress::Step(std::string_view what, int steps)
{
    bar_->setRange(0, steps);
    bar_->setValue(++done_);
    bar_->setFormat(ToQString(what) + QStringLiteral("  %v / %m"));
}

} // namespace vorn
