#pragma once

#include <QWidget>

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
    void Toggle();
    void Label1_Click();
    void Arrange();
    bool IsLockedClick(QEvent *event) const;
    void DrawLamp(QPainter &painter) const;
    bool IsSwitch() const;
    bool IsFaulty() const;
    QString PlainCaption() const;

    bool value_ = false;
    bool ac_ = false;
    bool doubleClick_ = false;
    int mnemonic_ = 0;
    QString caption_;
    QRect lamp_;  ///< place of the lamp
    QRect label_; ///< place of the caption
};

} // namespace vorn
