#pragma once

#include <QWidget>

#include <functional>
#include <optional>
#include <utility>

namespace vorn
{

/// Round lamp with a caption: one digital point. By the first letters of its caption it is an indicator
/// ("DI", "XX", an alarm) or a switch ("DO"). A set lamp is a filled disc with a highlight, a clear one a
/// hollow ring, a faulty point is crossed, so that the states differ in shape as well as in colour.
class DIO final : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool value READ value WRITE SetValue NOTIFY PropertyChanged)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption NOTIFY PropertyChanged)
    Q_PROPERTY(bool Enabled READ isEnabled WRITE SetEnabled NOTIFY PropertyChanged)
    Q_PROPERTY(bool ac READ ac WRITE SetAc NOTIFY PropertyChanged)

public:
    explicit DIO(QWidget *parent = nullptr);

    bool value() const { return value_; }
    /// Sets the lamp; raises no event.
    void SetValue(bool value);
    QString Caption() const { return caption_; }
    void SetCaption(const QString &caption);
    void SetEnabled(bool enabled);
    /// Layout: lamp and caption centred, or at the left edge.
    bool ac() const { return ac_; }
    void SetAc(bool centred);

    /// Takes an action of the operator's, to run it at its turn, or else to run what stands in when it is
    /// dropped.
    using Taker =
        std::function<void(const std::function<void()> &action, const std::function<void()> &dropped)>;
    /// Has what the operator does to the point run through `take` instead of from the event loop.
    void RunThrough(Taker take) { take_ = std::move(take); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void Click(); ///< after a toggle by the operator
    void Resize();
    void LabelClick();
    void PropertyChanged();

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void AskToToggle();
    void Toggle(bool value);
    void AskForLabelClick();
    void Label1_Click();
    void Take(const std::function<void()> &action, const std::function<void()> &dropped);
    void Arrange();
    bool IsLockedClick(QEvent *event) const;
    void DrawLamp(QPainter &painter) const;
    bool IsSwitch() const;
    bool IsFaulty() const;
    QString PlainCaption() const;

    bool value_ = false;
    bool ac_ = false;
    bool doubleClick_ = false;
    std::optional<bool> asked_; ///< value that the last toggle which waits for its turn asked for
    int toggles_ = 0;           ///< toggles that wait
    Taker take_;
    int mnemonic_ = 0;
    QString caption_;
    QRect lamp_;  ///< place of the lamp
    QRect label_; ///< place of the caption
};

} // namespace vorn
