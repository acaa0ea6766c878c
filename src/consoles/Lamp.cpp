#include "consoles/Lamp.h"

#include "shell/Controls.h"

#include <QHBoxLayout>
#include <QPainter>

namespace vorn
{

namespace
{

QColor ColourOf(Lamp::Kind kind)
{
    switch (kind) {
    case Lamp::Kind::Normal:
        return QColor(0x1f, 0x8f, 0x4e);
    case Lamp::Kind::Fault:
        return QColor(0xd0, 0x3a, 0x2f);
    case Lamp::Kind::Waiting:
        return QColor(0x2b, 0x7d, 0xc9);
    case Lamp::Kind::Off:
        break;
    }
    return {};
}

} // namespace

Lamp::Lamp(QWidget *parent, const QString &name, Kind kind, const QString &meaning)
    : QWidget(parent), kind_(kind)
{
    Named(this, name, meaning);
    setToolTip(meaning);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QWidget *LampPlace(QWidget *parent, std::initializer_list<Lamp *> lamps)
{
    auto *place = new QWidget(parent);
    auto *layout = new QHBoxLayout(place);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (Lamp *lamp : lamps)
        layout->addWidget(lamp);
    place->setFixedSize((*lamps.begin())->sizeHint());
    return place;
}

QSize Lamp::sizeHint() const
{
    const int side = fontMetrics().height() + 2;
    return {side, side};
}

void Lamp::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = qMin(width(), height());
    const double line = qMax(1.5, side / 10);
    const QRectF disc = QRectF(0, 0, side, side).adjusted(line, line, -line, -line);
    if (kind_ == Kind::Off) {
        painter.setPen(QPen(palette().color(QPalette::Disabled, QPalette::WindowText), line));
        painter.drawEllipse(disc);
        return;
    }
    const QColor colour = ColourOf(kind_);
    painter.setPen(QPen(colour.darker(140), line));
    painter.setBrush(colour);
    painter.drawEllipse(disc);
    painter.setPen(QPen(Qt::white, line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    DrawMark(painter, disc);
}

void Lamp::DrawMark(QPainter &painter, const QRectF &disc) const
{
    const auto at = [&disc](double x, double y) {
        return QPointF(disc.left() + disc.width() * x, disc.top() + disc.height() * y);
    };
    switch (kind_) {
    case Kind::Normal:
        painter.drawLine(at(0.28, 0.52), at(0.44, 0.70));
        painter.drawLine(at(0.44, 0.70), at(0.73, 0.32));
        break;
    case Kind::Fault:
        painter.drawLine(at(0.5, 0.22), at(0.5, 0.56));
        painter.drawPoint(at(0.5, 0.78));
        break;
    case Kind::Waiting:
        painter.setBrush(Qt::white);
        painter.drawEllipse(at(0.5, 0.5), disc.width() / 12, disc.width() / 12);
        break;
    case Kind::Off:
        break;
    }
}

} // namespace vorn
