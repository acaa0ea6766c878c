#pragma once

#include <QWidget>

#include <initializer_list>

namespace vorn
{

/// A lamp of one meaning, which is shown or hidden. The kinds differ in shape as well as in colour.
class Lamp final : public QWidget
{
    Q_OBJECT

public:
    enum class Kind {
        Normal,  ///< green, with a tick
        Fault,   ///< red, with an exclamation mark
        Waiting, ///< blue, with a dot
        Off,     ///< a hollow ring
    };

    Lamp(QWidget *parent, const QString &name, Kind kind, const QString &meaning);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void DrawMark(QPainter &painter, const QRectF &disc) const;

    Kind kind_;
};

/// The place of lamps of which at most one is shown; as large as one of them.
QWidget *LampPlace(QWidget *parent, std::initializer_list<Lamp *> lamps);

template <class Lamps>
void ShowOnly(const Lamps &lamps, const Lamp *shown)
{
    for (Lamp *lamp : lamps)
        lamp->setVisible(shown && lamp == shown);
}

} // namespace vorn
