#pragma once

#include "logger/RecordSheet.h"

#include <QHash>
#include <QString>
#include <QWidget>

#include <optional>
#include <utility>

class QCPAxis;
class QCPRange;
class QCustomPlot;

namespace vorn
{

/// A sheet's values as lines, one a channel. The mouse drags and its wheel zooms; with the keyboard the
/// arrows move, "+" and "-" zoom, Home shows the whole.
class RecordPlot final : public QWidget
{
public:
    explicit RecordPlot(QWidget *parent);

    void Show(const RecordSheet &sheet, RecordKind kind);
    /// Brings all values into sight.
    void ShowWhole();
    /// Writes what is in sight as PNG or, by the name's ending, SVG. Returns why it could not be written.
    std::optional<QString> Save(const QString &path) const;
    /// For tests: lines, and points of a line.
    QCustomPlot *Plot() const { return plot_; }

    QSize sizeHint() const override { return {480, 260}; }
    QSize minimumSizeHint() const override { return {240, 220}; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void TakePalette();
    void Bound(QCPAxis *axis, const QCPRange &range, const QCPRange &before);
    void Zoom(double factor);
    void Move(double alongX, double alongY);

    QCustomPlot *plot_;
    QHash<const QCPAxis *, std::pair<double, double>> whole_; ///< from and to, with all values in sight
};

} // namespace vorn
