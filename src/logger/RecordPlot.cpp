#include "logger/RecordPlot.h"

#include "logger/PlotLibrary.h"
#include "logger/RecordSeries.h"
#include "platform/WholeFile.h"
#include "shell/Controls.h"

#include <QBuffer>
#include <QKeyEvent>
#include <QSvgGenerator>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

constexpr double ZoomStep = 0.8;
constexpr double MoveStep = 0.1; // of what is in sight
constexpr int Colours = 8;
constexpr double Least = 0.001;     // part of the room
constexpr int TimeStampDigits = 10; // of the longest number along an axis

/// Colours that differ from their neighbours and can be seen on light and dark; channels from 8 on are
/// dashed.
QPen PenOf(int channel, bool dark)
{
    constexpr int Hues[Colours] = {210, 25, 130, 350, 275, 48, 180, 310};
    constexpr int Saturation = 190;
    const int value = dark ? 235 : 170;
    QPen pen(QColor::fromHsv(Hues[channel % Colours], Saturation, value));
    if (channel >= Colours)
        pen.setStyle(Qt::DashLine);
    return pen;
}

} // namespace

RecordPlot::RecordPlot(QWidget *parent) : QWidget(parent), plot_(new QCustomPlot(this))
{
    Named(plot_, "PlotOfRecords", QStringLiteral("Plot of the records"));
    plot_->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    plot_->axisRect()->setRangeDrag(Qt::Horizontal | Qt::Vertical);
    plot_->axisRect()->setRangeZoom(Qt::Horizontal | Qt::Vertical);
    plot_->legend->setVisible(true);
    // Beside the lines, and over none of them.
    auto *side = new QCPLayoutGrid;
    plot_->plotLayout()->addElement(0, 1, side);
    plot_->plotLayout()->setColumnStretchFactor(1, Least);
    side->addElement(0, 0, plot_->legend);
    side->addElement(1, 0, new QCPLayoutElement(plot_));
    side->setRowStretchFactor(0, Least);
    plot_->legend->setFillOrder(QCPLegend::foRowsFirst);
    plot_->legend->setWrap(Colours);
    for (QCPAxis *axis : {plot_->xAxis, plot_->yAxis})
        axis->setNumberPrecision(TimeStampDigits);
    plot_->yAxis->setLabel(QStringLiteral("Value"));
    // Tens of thousands of points: thin lines are drawn by far faster.
    plot_->setNoAntialiasingOnDrag(true);
    setFocusPolicy(Qt::StrongFocus);
    plot_->setFocusProxy(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_);
    for (QCPAxis *axis : {plot_->xAxis, plot_->yAxis})
        connect(axis, qOverload<const QCPRange &, const QCPRange &>(&QCPAxis::rangeChanged), this,
                [this, axis](const QCPRange &range, const QCPRange &before) { Bound(axis, range, before); });
    TakePalette();
}

void RecordPlot::Show(const RecordSheet &sheet, RecordKind kind)
{
    plot_->clearGraphs();
    plot_->xAxis->setLabel(kind == RecordKind::Event ? QStringLiteral("Time stamp")
                                                     : QStringLiteral("Record"));
    for (const ChannelSeries &series : SeriesOf(sheet, kind)) {
        QCPGraph *graph = plot_->addGraph();
        graph->setName(QStringLiteral("CH %1").arg(series.channel));
        graph->setProperty("Channel", series.channel);
        graph->setData(QVector<double>(series.x.begin(), series.x.end()),
                       QVector<double>(series.y.begin(), series.y.end()));
        if (series.x.size() == 1)
            graph->setScatterStyle(QCPScatterStyle::ssDisc);
    }
    TakePalette();
    ShowWhole();
}

void RecordPlot::ShowWhole()
{
    whole_.clear();
    for (QCPAxis *axis : {plot_->xAxis, plot_->yAxis})
        axis->setRange(0, 1); // what a single value would keep
    plot_->rescaleAxes();
    for (QCPAxis *axis : {plot_->xAxis, plot_->yAxis}) {
        axis->scaleRange(1.0 + MoveStep);
        whole_[axis] = {axis->range().lower, axis->range().upper};
    }
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

std::optional<QString> RecordPlot::Save(const QString &path) const
{
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
        QSvgGenerator drawing;
        drawing.setOutputDevice(&bytes);
        drawing.setSize(plot_->size());
        drawing.setViewBox(plot_->rect());
        QCPPainter painter(&drawing);
        plot_->toPainter(&painter, plot_->width(), plot_->height());
    } else {
        plot_->toPixmap(plot_->width(), plot_->height()).save(&bytes, "PNG");
    }
    const QByteArray all = bytes.data();
    return WriteWholeFile(path, {all.data(), static_cast<std::size_t>(all.size())});
}

void RecordPlot::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Plus:
        return Zoom(ZoomStep);
    case Qt::Key_Minus:
        return Zoom(1 / ZoomStep);
    case Qt::Key_Home:
        return ShowWhole();
    case Qt::Key_Left:
        return Move(-MoveStep, 0);
    case Qt::Key_Right:
        return Move(MoveStep, 0);
    case Qt::Key_Up:
        return Move(0, MoveStep);
    case Qt::Key_Down:
        return Move(0, -MoveStep);
    default:
        QWidget::keyPressEvent(event);
    }
}

void RecordPlot::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        TakePalette();
    QWidget::changeEvent(event);
}

void RecordPlot::TakePalette()
{
    const QColor text = palette().color(QPalette::Text);
    const QColor base = palette().color(QPalette::Base);
    plot_->setBackground(base);
    for (QCPAxis *axis : {plot_->xAxis, plot_->yAxis}) {
        axis->setBasePen(text);
        axis->setTickPen(text);
        axis->setSubTickPen(text);
        axis->setLabelColor(text);
        axis->setTickLabelColor(text);
        axis->setLabelFont(font());
        axis->setTickLabelFont(font());
        axis->grid()->setPen(QPen(palette().color(QPalette::Mid), 0, Qt::DotLine));
    }
    plot_->legend->setBrush(base);
    plot_->legend->setTextColor(text);
    plot_->legend->setBorderPen(Qt::NoPen);
    plot_->legend->setFont(font());
    constexpr int Middle = 128;
    for (int i = 0; i < plot_->graphCount(); ++i)
        plot_->graph(i)->setPen(
            PenOf(plot_->graph(i)->property("Channel").toInt(), base.lightness() < Middle));
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

/// Keeps the records findable: nothing is zoomed or moved until only emptiness, or one number, is in sight.
void RecordPlot::Bound(QCPAxis *axis, const QCPRange &range, const QCPRange &before)
{
    constexpr double Closest = 1e-5, Farthest = 10; // of the whole
    const auto whole = whole_.constFind(axis);
    if (whole == whole_.constEnd())
        return;
    const auto [lower, upper] = *whole;
    const double size = range.size() / (upper - lower);
    const bool inSight = range.lower < upper && range.upper > lower;
    if (size < Closest || size > Farthest || !inSight)
        axis->setRange(before);
}

void RecordPlot::Zoom(double factor)
{
    plot_->xAxis->scaleRange(factor);
    plot_->yAxis->scaleRange(factor);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void RecordPlot::Move(double alongX, double alongY)
{
    plot_->xAxis->moveRange(alongX * plot_->xAxis->range().size());
    plot_->yAxis->moveRange(alongY * plot_->yAxis->range().size());
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

} // namespace vorn
