#pragma once

#include <QWidget>

#include <cstddef>
#include <initializer_list>
#include <vector>

class QGridLayout;

namespace vorn
{

/// Buttons of one width: all in one row where there is room for it, in rows of two elsewhere. Those that the
/// page hides leave no gap.
class ButtonRows final : public QWidget
{
public:
    explicit ButtonRows(std::initializer_list<QWidget *> buttons);

    /// That of two side by side, so that the page can be made narrow again.
    QSize minimumSizeHint() const override;

    bool eventFilter(QObject *button, QEvent *event) override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    int WidthOf(std::size_t buttons) const;
    void Arrange();

    QGridLayout *grid_;
    std::vector<QWidget *> buttons_;
    std::vector<QWidget *> arranged_; ///< those that the page shows
    std::size_t perRow_ = 0;
};

} // namespace vorn
