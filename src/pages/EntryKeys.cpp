#include "pages/EntryKeys.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

namespace vorn
{

EntryKeys::EntryKeys(QLineEdit *entry, std::function<void()> typed, std::function<bool()> entered)
    : QObject(entry), typed_(std::move(typed)), entered_(std::move(entered))
{
    entry->installEventFilter(this);
    connect(entry, &QLineEdit::textEdited, this, [this] { typed_(); });
}

bool EntryKeys::eventFilter(QObject *, QEvent *event)
{
    return event->type() == QEvent::KeyPress && Key(*static_cast<QKeyEvent *>(event));
}

bool EntryKeys::Key(const QKeyEvent &key)
{
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isEnter && entered_())
        return true;
    const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool writes = !command && !key.text().isEmpty() && key.text().at(0).isPrint();
    if (isEnter || writes || key.key() == Qt::Key_Backspace)
        typed_();
    return false;
}

} // namespace vorn
