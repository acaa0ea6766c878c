#include "tools/LogView.h"

#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "tools/LogText.h"

#include <QDropEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <chrono>

namespace vorn
{

namespace
{

/// Bringing the screen up to date takes one part of the time in so many at most: a lone line is there at
/// once, a torrent isn't held up by a picture that nobody can read so fast.
constexpr int ShowingShare = 200;

/// Shortest and longest time that the screen stays behind the log.
constexpr std::chrono::milliseconds SoonestShow(20), LatestShow(250);

/// Rows that are put on the screen in one go: a few milliseconds of work.
constexpr int RowsAtOnce = 1000;

/// Characters of a typed line, which is laid out as one row at each change.
constexpr std::size_t LongestTyped = 1000;

/// Part of the log that goes at once when the oldest lines make room, so that a full log isn't moved for
/// every line.
constexpr std::size_t DroppedAtOnce = LogView::Capacity / 256;

QString ToScreen(std::string_view bytes)
{
    return QString::fromStdU16String(ShownText(bytes));
}

} // namespace

LogView::LogView(WhenFull whenFull, bool typing, QWidget *parent)
    : QPlainTextEdit(parent), whenFull_(whenFull), pause_(SoonestShow)
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setTabStopDistance(8 * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setAcceptDrops(typing);
    setReadOnly(!typing);
    if (!typing)
        setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    flush_.setSingleShot(true);
    connect(&flush_, &QTimer::timeout, this, &LogView::ShowMore);
    connect(document(), &QTextDocument::contentsChange, this, &LogView::OnContentsChange);
}

void LogView::Append(std::string_view bytes)
{
    if (Length() + bytes.size() > Capacity) {
        if (whenFull_ == WhenFull::RaiseError)
            throw RuntimeError(RuntimeErrorNumber::OutOfMemory);
        MakeRoom(bytes.size());
    }
    log_ += bytes.substr(bytes.size() - std::min(bytes.size(), Capacity));
    if (!flush_.isActive())
        flush_.start(pause_);
}

void LogView::Clear()
{
    log_.clear();
    ShowAnew();
}

void LogView::BeginAnew()
{
    log_.clear();
    ShowAnew(ToQString(Typed()));
}

std::string LogView::Text() const
{
    return log_ + Typed();
}

std::size_t LogView::Length() const
{
    return LogMark() + Typed().size();
}

std::string LogView::TakeTyped()
{
    const std::string typed = Typed();
    const QScopedValueRollback own(ownChange_, true);
    QTextCursor typing(document());
    typing.setPosition(typingStart_);
    typing.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    typing.removeSelectedText();
    return typed;
}

void LogView::PutTyped(std::string_view typed)
{
    const QScopedValueRollback own(ownChange_, true);
    QTextCursor typing(document());
    typing.setPosition(typingStart_);
    typing.insertText(ToQString(typed));
}

void LogView::Flush()
{
    flush_.stop();
    Show(log_.size());
}

/// Goes on with the next lines behind whatever else waits to be served.
void LogView::ShowMore()
{
    const auto start = std::chrono::steady_clock::now();
    Show(BehindRows(log_, shown_, RowsAtOnce));
    const auto took = std::chrono::ceil<std::chrono::milliseconds>(
        ShowingShare * (std::chrono::steady_clock::now() - start));
    pause_ = std::clamp(took, SoonestShow, LatestShow);
    if (shown_ < log_.size())
        flush_.start(IsComposing() ? pause_ : std::chrono::milliseconds(0));
}

/// Brings the screen up to a place in the log. The operator's choice, the typing and the place in view stay,
/// unless the end is in view: then it stays in view. What an input method is composing isn't torn apart.
void LogView::Show(std::size_t end)
{
    if (shown_ == end || IsComposing())
        return;
    QScrollBar *bar = verticalScrollBar();
    const bool follow = bar->value() == bar->maximum();
    const int place = bar->value();
    const int anchor = textCursor().anchor();
    const int position = textCursor().position();
    const int typingStart = typingStart_;
    {
        const QScopedValueRollback own(ownChange_, true);
        QTextCursor news(document());
        news.setPosition(typingStart);
        news.insertText(ToScreen(std::string_view(log_).substr(shown_, end - shown_)));
        typingStart_ = news.position();
    }
    shown_ = end;

    // A choice that began in front of the typing keeps its place in the log; the caret goes on with the
    // typing.
    const bool ofTyping = std::min(anchor, position) >= typingStart;
    const auto moved = [&](int at) {
        return at > typingStart || ofTyping ? at + typingStart_ - typingStart : at;
    };
    QTextCursor caret = textCursor();
    caret.setPosition(moved(anchor));
    caret.setPosition(moved(position), QTextCursor::KeepAnchor);
    setTextCursor(caret);
    bar->setValue(follow ? bar->maximum() : place);
}

std::string LogView::Typed() const
{
    if (EndPosition() <= typingStart_)
        return {};
    QTextCursor cursor(document());
    cursor.setPosition(typingStart_);
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    return BytesOfTyped(cursor.selectedText().toStdU16String());
}

int LogView::EndPosition() const
{
    return document()->characterCount() - 1; // the document ends with a paragraph mark of its own
}

/// Makes room by dropping the oldest lines from log and screen, whether or not they were on it yet.
void LogView::MakeRoom(std::size_t size)
{
    const std::size_t dropped = OldestRows(log_, std::max(size, DroppedAtOnce));
    const std::size_t offScreen = std::min(dropped, shown_);
    const int shown = static_cast<int>(ShownText(std::string_view(log_).substr(0, offScreen)).size());
    QScrollBar *bar = verticalScrollBar();
    const bool follow = bar->value() == bar->maximum();
    const int linesBefore = blockCount();
    const int place = bar->value();
    {
        const QScopedValueRollback own(ownChange_, true);
        QTextCursor oldest(document());
        oldest.setPosition(std::min(shown, EndPosition()), QTextCursor::KeepAnchor);
        oldest.removeSelectedText();
    }
    log_.erase(0, dropped);
    shown_ -= offScreen;
    typingStart_ = std::max(typingStart_ - shown, 0);
    bar->setValue(follow ? bar->maximum() : place - (linesBefore - blockCount()));
}

void LogView::ShowAnew(const QString &typing)
{
    flush_.stop();
    const QScopedValueRollback own(ownChange_, true);
    setPlainText(ToScreen(log_));
    shown_ = log_.size();
    typingStart_ = EndPosition();
    moveCursor(QTextCursor::End);
    textCursor().insertText(typing);
}

/// Whatever way a change of the log's own text comes in, it is taken back; the typing stays as it is then.
void LogView::OnContentsChange(int position, int removed, int added)
{
    if (ownChange_ || position >= typingStart_)
        return;
    typingStart_ = std::max(typingStart_ - removed, position) + added;
    Queue(this, [this] { ShowAnew(ToQString(Typed())); });
}

bool LogView::IsComposing() const
{
    return !textCursor().block().layout()->preeditAreaText().isEmpty();
}

bool LogView::ChangesOnlyTheTyping() const
{
    const QTextCursor caret = textCursor();
    return caret.selectionStart() >= typingStart_;
}

void LogView::MoveToTheTyping()
{
    Flush();
    if (!ChangesOnlyTheTyping())
        moveCursor(QTextCursor::End);
}

void LogView::keyPressEvent(QKeyEvent *event)
{
    if (isReadOnly()) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT ReturnPressed();
        return;
    }
    const bool backwards = event->key() == Qt::Key_Backspace;
    const bool forwards = event->key() == Qt::Key_Delete && !event->matches(QKeySequence::Cut);
    if (event->matches(QKeySequence::Cut) && !ChangesOnlyTheTyping()) {
        copy();
        return;
    }
    const QString text = event->text();
    const bool character = !text.isEmpty() && text.at(0).isPrint();
    if (!character && !backwards && !forwards) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    MoveToTheTyping();
    const QTextCursor caret = textCursor();
    const bool atStart = !caret.hasSelection() && caret.position() == typingStart_;
    if ((backwards && atStart) || (character && (IsFull() || Typed().size() >= LongestTyped))) {
        Beep();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void LogView::inputMethodEvent(QInputMethodEvent *event)
{
    if (!isReadOnly())
        MoveToTheTyping();
    QPlainTextEdit::inputMethodEvent(event);
}

/// A piece of the log that is dragged to the typing stays in the log.
void LogView::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    QPlainTextEdit::dropEvent(event);
}

/// A paste or a drop goes behind the log's own text, wherever it was aimed at. A command is one line: text
/// behind a line's end is refused.
void LogView::insertFromMimeData(const QMimeData *source)
{
    if (isReadOnly() || !source->hasText())
        return;
    const std::string pasted = FromQString(source->text());
    const std::string line = pasted.substr(0, pasted.find_first_of("\r\n"));
    if (line.size() < pasted.size())
        Beep();
    if (Length() + line.size() > Capacity || Typed().size() + line.size() > LongestTyped) {
        Beep();
        return;
    }
    MoveToTheTyping();
    textCursor().insertText(ToQString(line));
    ensureCursorVisible();
}

} // namespace vorn
