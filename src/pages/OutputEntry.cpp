#include "pages/OutputEntry.h"

#include "platform/WidgetText.h"
#include "shell/FormMain.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

namespace vorn
{

OutputEntry::OutputEntry(FormMain &main, QLineEdit *entry, QAbstractButton *button,
                         std::function<void(const NodeKey &, const std::string &)> send)
    : QObject(entry), main_(main), entry_(entry), send_(std::move(send))
{
    entry->installEventFilter(this);
    connect(entry, &QLineEdit::textEdited, this,
            [this] { main_.OutputEditing = true; }); // also pasted, dropped
    connect(button, &QAbstractButton::clicked, this, [this] { Ask(); });
}

void OutputEntry::Ask()
{
    const std::string text = FromQString(entry_->text());
    if (text.empty() || asked_ == text)
        return;
    asked_ = text;
    const auto forget = [this, text] {
        if (asked_ == text)
            asked_.reset();
    };
    const auto send = [this, text, forget](const NodeKey &node) {
        forget();
        if (FromQString(entry_->text()) == text)
            main_.OutputEditing = false;
        send_(node, text);
    };
    main_.TakeForPage(this, nullptr, send, forget);
}

bool OutputEntry::eventFilter(QObject *, QEvent *event)
{
    return event->type() == QEvent::KeyPress && Key(*static_cast<QKeyEvent *>(event));
}

/// Return sends what the entry holds. Any other key that writes or deletes takes the entry out of the
/// refresh's hands; keys that only move don't.
bool OutputEntry::Key(const QKeyEvent &key)
{
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isEnter && !entry_->text().isEmpty()) {
        Ask();
        return true;
    }
    const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool writes = !command && !key.text().isEmpty() && key.text().at(0).isPrint();
    if (isEnter || writes || key.key() == Qt::Key_Backspace)
        main_.OutputEditing = true;
    return false;
}

} // namespace vorn
