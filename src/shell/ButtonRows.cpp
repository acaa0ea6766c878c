#include "shell/ButtonRows.h"

#include "shell/Controls.h"

#include <QEvent>
#include <QGridLayout>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vorn
{

namespace
{

constexpr std::size_t Narrow = 2; ///< buttons side by side where there is no room for all

/// Whether the page shows a button, also before the page itself has ever been on show.
bool IsWanted(const QWidget *button)
{
    return !button->isHidden() || !button->testAttribute(Qt::WA_WState_ExplicitShowHide);
}

} // namespace

ButtonRows::ButtonRows(std::initializer_list<QWidget *> buttons)
    : grid_(new QGridLayout(this)), buttons_(buttons)
{
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setHorizontalSpacing(Rhythm::LabelToField);
    grid_->setVerticalSpacing(Rhythm::BetweenRows);
    Arrange();
    for (QWidget *button : buttons_)
        button->installEventFilter(this);
}

int ButtonRows::WidthOf(std::size_t buttons) const
{
    int widest = 0;
    for (const QWidget *button : buttons_)
        widest = std::max(widest, button->sizeHint().width());
    const int count = static_cast<int>(buttons);
    return count * widest + (count - 1) * Rhythm::LabelToField;
}

QSize ButtonRows::minimumSizeHint() const
{
    return {WidthOf(Narrow), QWidget::minimumSizeHint().height()};
}

void ButtonRows::Arrange()
{
    std::vector<QWidget *> shown;
    std::ranges::copy_if(buttons_, std::back_inserter(shown), IsWanted);
    const std::size_t perRow = width() >= WidthOf(shown.size()) ? shown.size() : Narrow;
    if (shown == arranged_ && perRow == perRow_)
        return;
    arranged_ = std::move(shown);
    perRow_ = perRow;
    for (std::size_t place = 0; place < arranged_.size(); ++place)
        grid_->addWidget(arranged_[place], static_cast<int>(place / perRow),
                         static_cast<int>(place % perRow));
    for (std::size_t column = 0; column < buttons_.size(); ++column)
        grid_->setColumnStretch(static_cast<int>(column), column < perRow ? 1 : 0);
    setHidden(arranged_.empty());
    updateGeometry();
}

void ButtonRows::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Arrange();
}

bool ButtonRows::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
        Arrange();
    return false;
}

} // namespace vorn
