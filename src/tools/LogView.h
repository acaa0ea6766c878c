#pragma once

#include <QPlainTextEdit>
#include <QTimer>

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace vorn
{

/// A log that takes text at the pace of the bus for as long as the window is open, and shows it. Its text is
/// bytes and kept exactly; the screen follows within a quarter of a second, and moves only while its end is
/// in view.
///
/// Where typing is on, the operator types behind the text: what comes meanwhile goes in front of the typing.
/// What is in the log can be read, chosen and copied, but not changed.
class LogView final : public QPlainTextEdit
{
    Q_OBJECT

public:
    /// What becomes of text that goes over the capacity: 7 (out of memory) is thrown and the log stays as it
    /// is, or the oldest lines make room.
    enum class WhenFull { RaiseError, DropOldest };

    /// Bytes that a log holds at most.
    static constexpr std::size_t Capacity = std::size_t{4} * 1024 * 1024;

    LogView(WhenFull whenFull, bool typing, QWidget *parent = nullptr);

    /// Adds bytes at the end of the log, in front of what is being typed.
    void Append(std::string_view bytes);
    /// Empties all, the typing too.
    void Clear();
    /// Empties the log and leaves the typing.
    void BeginAnew();

    /// All of the log, the operator's typing at its end included.
    std::string Text() const;
    std::size_t Length() const;
    /// The log without the typing, until the next change, and its length: behind it stands what was typed.
    std::string_view Log() const { return log_; }
    std::size_t LogMark() const { return log_.size(); }
    /// Takes what was typed off the end, for the caller to make something of it.
    std::string TakeTyped();
    /// Gives back what was taken, in front of what has been typed since.
    void PutTyped(std::string_view typed);

    /// Brings the screen up to the log at once.
    void Flush();

Q_SIGNALS:
    /// Return was pressed where typing is on; it does not get into the log.
    void ReturnPressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    void dropEvent(QDropEvent *event) override;

private:
    std::string Typed() const;
    int EndPosition() const;
    bool ChangesOnlyTheTyping() const;
    bool IsComposing() const;
    void MoveToTheTyping();
    bool IsFull() const { return Length() >= Capacity; }
    void MakeRoom(std::size_t size);
    void ShowMore();
    void Show(std::size_t end);
    void OnContentsChange(int position, int removed, int added);
    void ShowAnew(const QString &typing = {});

    const WhenFull whenFull_;
    std::string log_;        ///< all but the typing
    std::size_t shown_ = 0;  ///< bytes of `log_` that are on the screen
    int typingStart_ = 0;    ///< place in the document where the typing begins
    bool ownChange_ = false; ///< the document is changed by this class, not by the operator
    QTimer flush_;
    std::chrono::milliseconds pause_; ///< from the next text to its show
};

} // namespace vorn
