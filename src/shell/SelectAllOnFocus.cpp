#include "shell/SelectAllOnFocus.h"

#include <QEvent>
#include <QLineEdit>
#include <QMetaObject>

namespace vorn
{

namespace
{

class FocusSelector final : public QObject
{
public:
    explicit FocusSelector(QLineEdit *field) : QObject(field), field_(field)
    {
        field->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        // Queued, since a mouse press that brings the focus sets the cursor behind this event.
        if (event->type() == QEvent::FocusIn)
            QMetaObject::invokeMethod(field_, &QLineEdit::selectAll, Qt::QueuedConnection);
        return false;
    }

private:
    QLineEdit *field_;
};

} // namespace

void SelectAllOnFocus(QLineEdit *field)
{
    new FocusSelector(field);
}

} // namespace vorn
