#include "shell/DIO.h"

#include "platform/Events.h"
#include "shell/Controls.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QShortcutEvent>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <utility>

namespace vorn
{

namespace
{

// Twips of the drawing.
constexpr int EdgeTwips = 120;
constexpr int InsideTwips = 30;
constexpr int Edge = Pixels(EdgeTwips);
constexpr int Inside = Pixels(InsideTwips);
constexpr int LampToCaption = 6;

constexpr QColor SwitchColour(0x1f, 0x8f, 0x4e);    // outputs
constexpr QColor IndicatorColour(0x2b, 0x7d, 0xc9); // inputs
constexpr QColor AlarmColour(0xd0, 0x3a, 0x2f);

} // namespace

DIO::DIO(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

void DIO::SetValue(bool value)
{
    if (value_ == value)
        return;
    value_ = value;
    update();
    Q_EMIT PropertyChanged();
}

void DIO::SetCaption(const QString &caption)
{
    if (caption_ == caption)
        return;
    caption_ = caption;
    if (mnemonic_)
        releaseShortcut(mnemonic_);
    const QKeySequence key = QKeySequence::mnemonic(caption);
    mnemonic_ = key.isEmpty() ? 0 : grabShortcut(key);
    setAccessibleName(PlainCaption().simplified());
    Arrange();
    updateGeometry();
    Q_EMIT PropertyChanged();
}

void DIO::SetEnabled(bool enabled)
{
    if (testAttribute(Qt::WA_ForceDisabled) != enabled)
        return; // said before, whether or not the window is disabled just now
    setEnabled(enabled);
    Q_EMIT PropertyChanged();
}

void DIO::SetAc(bool centred)
{
    if (ac_ == centred)
        return;
    ac_ = centred;
    Arrange();
    Q_EMIT PropertyChanged();
}

bool DIO::IsSwitch() const
{
    return caption_.startsWith(QLatin1String("DO"));
}

bool DIO::IsFaulty() const
{
    return caption_.startsWith(QLatin1String("XX"));
}

QString DIO::PlainCaption() const
{
    return QString(caption_).remove(QLatin1Char('&'));
}

QSize DIO::sizeHint() const
{
    const int height = fontMetrics().height() + 2 * Inside + 2;
    const int text = caption_.isEmpty() ? 0 : LampToCaption + fontMetrics().horizontalAdvance(PlainCaption());
    return {2 * Edge + height - 2 * Inside + text, height};
}

void DIO::Arrange()
{
    const int side = qMin(height() - 2 * Inside, fontMetrics().height());
    const int text = fontMetrics().horizontalAdvance(PlainCaption());
    const int gap = caption_.isEmpty() ? 0 : LampToCaption;
    const int left = ac_ ? qMax(Inside, (width() - side - gap - text) / 2) : Edge;
    lamp_ = QRect(left, (height() - side) / 2, side, side);
    label_ = QRect(left + side + gap, 0, qBound(0, text, qMax(0, width() - left - side - gap)), height());
    update();
}

void DIO::resizeEvent(QResizeEvent *)
{
    Q_EMIT Resize();
    Arrange();
}

void DIO::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        Arrange();
        updateGeometry();
    }
    QWidget::changeEvent(event);
}

bool DIO::event(QEvent *event)
{
    if (event->type() == QEvent::Shortcut &&
        static_cast<QShortcutEvent *>(event)->shortcutId() == mnemonic_) {
        setFocus(Qt::ShortcutFocusReason);
        // A key that several points share goes from one to the next; which one is meant, the space key tells.
        if (!static_cast<QShortcutEvent *>(event)->isAmbiguous())
            AskToToggle();
        return true;
    }
    if (!IsLockedClick(event))
        return QWidget::event(event);
    if (event->type() == QEvent::MouseButtonRelease)
        AskForLabelClick();
    return true;
}

/// A press or release on the caption of a point that is disabled by itself, rather than by its window. The
/// toolkit hands no click to a disabled control, yet this one is what enables an output again.
bool DIO::IsLockedClick(QEvent *event) const
{
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonRelease)
        return false;
    const bool locked =
        testAttribute(Qt::WA_ForceDisabled) && (!parentWidget() || parentWidget()->isEnabled());
    const auto *mouse = static_cast<QMouseEvent *>(event);
    return locked && mouse->button() == Qt::LeftButton && label_.contains(mouse->position().toPoint());
}

void DIO::mouseReleaseEvent(QMouseEvent *event)
{
    const QPoint place = event->position().toPoint();
    if (std::exchange(doubleClick_, false) || event->button() != Qt::LeftButton || !rect().contains(place))
        return;
    if (label_.contains(place))
        AskForLabelClick();
    else
        AskToToggle();
}

void DIO::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    // On the lamp the second press is just another click; on the caption a double click is the toggle.
    if (label_.contains(event->position().toPoint())) {
        doubleClick_ = true;
        AskToToggle();
    }
}

void DIO::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat())
        AskToToggle();
    else
        QWidget::keyPressEvent(event);
}

void DIO::Take(const std::function<void()> &action, const std::function<void()> &dropped)
{
    if (take_)
        take_(action, dropped);
    else
        Queue(this, action);
}

/// What the operator means is the opposite of what he sees, whatever the lamp shows when his turn comes.
void DIO::AskToToggle()
{
    if (!isEnabled())
        return;
    const bool value = !asked_.value_or(value_);
    asked_ = value;
    ++toggles_;
    const auto forget = [this] {
        if (--toggles_ == 0)
            asked_.reset();
    };
    const auto toggle = [this, value, forget] {
        forget();
        Toggle(value);
    };
    Take(toggle, forget);
}

void DIO::Toggle(bool value)
{
    if (!isEnabled())
        return;
    value_ = value;
    DoEvents();
    update();
    Q_EMIT PropertyChanged();
    Q_EMIT Click();
}

void DIO::AskForLabelClick()
{
    Take([this] { Label1_Click(); }, [] {});
}

void DIO::Label1_Click()
{
    SetEnabled(IsSwitch());
    Q_EMIT LabelClick();
}

void DIO::DrawLamp(QPainter &painter) const
{
    const QColor ink =
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    QColor colour = IsSwitch()                                 ? SwitchColour
                    : caption_.startsWith(QLatin1String("DI")) ? IndicatorColour
                                                               : AlarmColour;
    if (palette().color(QPalette::Window).lightness() < 128)
        colour = colour.lighter(135);

    const double line = qMax(1.5, lamp_.width() / 9.0);
    const QRectF disc = QRectF(lamp_).adjusted(line, line, -line, -line);
    painter.setPen(QPen(value_ ? colour.darker(140) : ink, line));
    painter.setBrush(value_ ? QBrush(colour) : Qt::NoBrush);
    painter.drawEllipse(disc);
    if (value_) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 255, 255, 190));
        painter.drawEllipse(QRectF(disc.left() + disc.width() * 0.2, disc.top() + disc.height() * 0.15,
                                   disc.width() * 0.35, disc.height() * 0.28));
    }
    if (IsFaulty()) {
        painter.setPen(QPen(ink, line, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(lamp_.topLeft(), lamp_.bottomRight());
        painter.drawLine(lamp_.topRight(), lamp_.bottomLeft());
    }
}

void DIO::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawLamp(painter);
    style()->drawItemText(&painter, label_,
                          Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextDontClip,
                          palette(), isEnabled(), caption_, QPalette::WindowText);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = lamp_.united(label_.adjusted(0, Inside, 0, -Inside)).adjusted(-Inside, 0, 0, 0) & rect();
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

} // namespace vorn
