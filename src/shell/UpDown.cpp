#include "shell/UpDown.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

namespace vorn
{

UpDown::UpDown(QLineEdit *buddy, int lowest, int highest) : buddy_(buddy), lowest_(lowest), highest_(highest)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    const auto arrow = [this, layout](Qt::ArrowType type, const QString &name, int by) {
        auto *button = new QToolButton(this);
        button->setArrowType(type);
        button->setAutoRepeat(true);
        button->setAccessibleName(name);
        layout->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, by] { Step(by); });
    };
    arrow(Qt::DownArrow, QStringLiteral("One less"), -1);
    arrow(Qt::UpArrow, QStringLiteral("One more"), 1);
}

void UpDown::Step(int by)
{
    if (buddy_->isEnabled())
        buddy_->setText(QString::number(qBound(lowest_, buddy_->text().toInt() + by, highest_)));
}

} // namespace vorn
