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

constexpr int BarCharacters = 32; ///< room for the longest label of a record, and the count

} // namespace

JobProgress::JobProgress(FormMain &main)
    : bar_(Named(new QProgressBar, "StatusBar1_2", QStringLiteral("Progress")))
{
    bar_->setFixedWidth(bar_->fontMetrics().averageCharWidth() * BarCharacters);
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
