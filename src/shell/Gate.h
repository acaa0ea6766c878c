#pragma once

#include <QObject>
#include <QPointer>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class QWidget;

namespace vorn
{

/// The one way from what an operator does to what the program does.
///
/// Handlers wait for the bus, and windows are served while they wait, so that an operator can always be
/// faster than the program. The gate keeps that in order:
///
/// - An action is *taken* when the operator acts, together with what it is about, and *runs* at its turn: one
///   after the other, each from start to end, from the event loop, and never while a transaction is on the
///   line.
/// - While an action runs, its waits serve the windows, but nothing else begins.
/// - A modal window that a running action opens is a level of its own. Actions of that window run while it is
///   open; those of the windows below wait until it has gone.
/// - An action that was meant for a page is dropped when another page is on show at its turn.
class Gate final : public QObject
{
    Q_OBJECT

public:
    using Action = std::function<void()>;

    /// What tells whether two acts are the same one.
    struct Source {
        Source(const QObject *who = nullptr, std::string about = {}, std::string by = {})
            : object(who), matter(std::move(about)), values(std::move(by))
        {
        }
        const QObject *object; ///< the control; none for an act of which each counts
        std::string matter;    ///< which of several things that the page shows by turns
        std::string values;    ///< what it goes by: what stood in the fields, or which of several choices
    };

    struct Taken {
        /// The window, control or subsystem that acts; what has gone, or was retired, acts no more. An object
        /// that is no widget belongs to the main window.
        QPointer<QObject> context;
        Action action;
        /// Acts once: while an action of the same object, about the same page and matter, waits or runs, one
        /// by the same values is dropped. One by other values is taken in place of the one that waits, behind
        /// all that was taken between: it is what the operator wants now.
        Source source = {};
        /// Key of the page that the action is meant for; none for one that is about no page.
        std::optional<std::string> page = std::nullopt;
        /// Runs in place of the action when that is dropped with its page.
        Action dropped = {};
        /// One round of a loop that asks for the next one by itself: the refresh takes turns with it.
        bool ofLoop = false;
    };

    /// `pageOnShow` tells the key of the page that the operator sees.
    explicit Gate(std::function<std::string()> pageOnShow) : pageOnShow_(std::move(pageOnShow)) {}

    void Take(Taken taken);
    /// The same, but the action takes the place of the last one that waits if that has the same source: of
    /// several pages that are chosen one after the other, the last one is loaded.
    void TakeInPlace(Taken taken);

    /// An action runs, also one that a modal window holds up.
    bool IsRunning() const { return !running_.empty(); }
    /// An action runs or waits, the rounds of loops that wait not counted.
    bool IsBusy() const;
    bool IsOnLine() const { return onLine_ > 0; }
    /// How many actions were taken so far.
    std::uint64_t TakenNumber() const { return taken_; }
    /// Which of them the running action is, from 1 on; 0 when none runs. What the operator did at a
    /// `TakenNumber` of this or more came behind the press that the action runs for.
    std::uint64_t RunningNumber() const { return running_.empty() ? 0 : running_.back().number; }

    /// Hides a window for good and deletes it as soon as none of its actions is on the stack. Those that wait
    /// are dropped.
    void Retire(QWidget *window);

    /// A transaction is on the line for as long as this lives.
    class OnLine final
    {
    public:
        explicit OnLine(Gate &gate);
        ~OnLine();
        OnLine(const OnLine &) = delete;
        OnLine &operator=(const OnLine &) = delete;

    private:
        Gate &gate_;
    };

Q_SIGNALS:
    /// Nothing runs, nothing waits, and the line is free: the refresh may go on.
    void Idle();

private:
    struct Waiting : Taken {
        std::uint64_t number;
    };
    struct Running {
        QPointer<QObject> context;
        Source source;
        std::optional<std::string> page;
        const QWidget *modal; ///< modal window that was open when it began
        std::uint64_t number;
    };

    void Ask();
    void RunNext();
    void Run(const Waiting &taken, const QWidget *modal);
    bool IsRetired(const QObject *context) const;
    bool HoldsRunning(const QWidget *window) const;
    void DeleteRetired();

    std::function<std::string()> pageOnShow_;
    std::vector<Waiting> waiting_;
    std::vector<Running> running_; ///< the innermost last; more than one only below modal windows
    std::vector<QPointer<QWidget>> retired_;
    std::uint64_t taken_ = 0;
    int onLine_ = 0;
    bool asked_ = false; ///< `RunNext` is on its way
};

} // namespace vorn
