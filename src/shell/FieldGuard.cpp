#include "shell/FieldGuard.h"

#include "platform/Dialogs.h"
#include "platform/WidgetText.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QValidator>

#include <algorithm>
#include <optional>

namespace vorn
{

namespace
{

/// Longer than any entry of sense: a paste of a whole page isn't judged, which would take the square of its
/// length.
constexpr qsizetype LongestEntry = 255;

/// Whether a change takes characters out and puts none in, which is always allowed.
bool OnlyDeletes(const QString &before, const QString &after)
{
    if (after.size() >= before.size())
        return false;
    const auto [left, ignored] = std::mismatch(after.begin(), after.end(), before.begin());
    const auto head = left - after.begin();
    return before.endsWith(after.mid(head));
}

class FieldGuard final : public QValidator
{
public:
    FieldGuard(QLineEdit *field, std::function<FieldRule()> rule, std::function<std::string()> judged)
        : QValidator(field), field_(field), rule_(std::move(rule)), judged_(std::move(judged)),
          before_(field->text())
    {
        connect(field, &QLineEdit::textChanged, this, [this](const QString &text) { before_ = text; });
        field->setValidator(this);
        field->installEventFilter(this);
    }

    State validate(QString &text, int &) const override
    {
        return OnlyDeletes(before_, text) || CouldBeTyped(text) ? Acceptable : Invalid;
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        return event->type() == QEvent::KeyPress && Refuses(*static_cast<QKeyEvent *>(event));
    }

private:
    bool CouldBeTyped(const QString &text) const
    {
        return text.size() <= LongestEntry &&
               AcceptText(rule_(), FromQString(text), judged_ ? judged_() : std::string{});
    }

    /// What the rule knows a key by; nothing for keys that move, delete, copy or paste, which are none of its
    /// business.
    static std::optional<char> KeyOf(const QKeyEvent &key)
    {
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)
            return Enter;
        if (key.key() == Qt::Key_Backspace)
            return Backspace;
        const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
        if (command || key.text().isEmpty() || !key.text().at(0).isPrint())
            return std::nullopt;
        return key.text().at(0).toLatin1();
    }

    bool Refuses(const QKeyEvent &event)
    {
        const auto key = KeyOf(event);
        if (!key)
            return false;
        const int start = field_->hasSelectedText() ? field_->selectionStart() : field_->cursorPosition();
        const auto length = static_cast<std::size_t>(field_->selectedText().size());
        const std::string text = judged_ ? judged_() : FromQString(field_->text());
        const FieldVerdict verdict = AcceptKey(rule_(), text, static_cast<std::size_t>(start), length, *key);
        if (verdict.accepted)
            return false;
        if (verdict.deletesSelection)
            field_->del();
        Beep();
        return true;
    }

    QLineEdit *field_;
    std::function<FieldRule()> rule_;
    std::function<std::string()> judged_;
    /// Text before the change that is being judged, at which the field has the new one already.
    QString before_;
};

} // namespace

void GuardField(QLineEdit *field, std::function<FieldRule()> rule, std::function<std::string()> judged)
{
    new FieldGuard(field, std::move(rule), std::move(judged));
}

void GuardField(QLineEdit *field, FieldRule rule)
{
    GuardField(field, [rule] { return rule; });
}

} // namespace vorn
