#include "pages/OutputEntry.h"

#include "pages/EntryKeys.h"
#include "platform/WidgetText.h"
#include "shell/FormMain.h"

#include <QAbstractButton>
#include <QLineEdit>

#include <utility>

namespace vorn
{

OutputEntry::OutputEntry(FormMain &main, QLineEdit *entry, QAbstractButton *button,
                         std::function<void(const NodeKey &, const std::string &)> send)
    : QObject(entry), main_(main), entry_(entry), send_(std::move(send))
{
    const auto entered = [this] {
        Ask();
        return !entry_->text().isEmpty();
    };
    new EntryKeys(
        entry, [this] { main_.OutputEditing = true; }, entered);
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

} // namespace vorn
