#include "shell/Gate.h"

#include "platform/RuntimeError.h"

#include <QApplication>
#include <QScopeGuard>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace vorn
{

namespace
{

/// Whether a context belongs to a window: is it, or one of its parts.
bool BelongsTo(const QObject *context, const QWidget *window)
{
    const auto *widget = qobject_cast<const QWidget *>(context);
    return widget && (widget == window || window->isAncestorOf(widget));
}

} // namespace

Gate::OnLine::OnLine(Gate &gate) : gate_(gate)
{
    ++gate_.onLine_;
}

Gate::OnLine::~OnLine()
{
    if (--gate_.onLine_ == 0)
        gate_.Ask();
}

void Gate::Take(Taken taken)
{
    const auto alike = [&taken](const auto &other) {
        return other.context && other.source.object == taken.source.object &&
               other.source.matter == taken.source.matter && other.page == taken.page;
    };
    const auto same = [&](const auto &other) {
        return alike(other) && other.source.values == taken.source.values;
    };
    if (taken.source.object) {
        const auto before = std::ranges::find_if(waiting_, alike); // there is one at most
        const bool waits = before != waiting_.end();
        if (waits ? same(*before) : std::ranges::any_of(running_, same))
            return;
        if (waits)
            waiting_.erase(before);
    }
    waiting_.push_back({std::move(taken), ++taken_});
    Ask();
}

void Gate::TakeInPlace(Taken taken)
{
    if (!waiting_.empty() && taken.source.object && waiting_.back().source.object == taken.source.object)
        waiting_.pop_back();
    waiting_.push_back({std::move(taken), ++taken_});
    Ask();
}

bool Gate::IsBusy() const
{
    const auto counts = [](const Taken &taken) { return taken.context && !taken.ofLoop; };
    return IsRunning() || std::ranges::any_of(waiting_, counts);
}

/// Has the event loop look for the next action. An action never begins inside the handler that takes it.
void Gate::Ask()
{
    if (!std::exchange(asked_, true))
        QMetaObject::invokeMethod(this, &Gate::RunNext, Qt::QueuedConnection);
}

void Gate::RunNext()
{
    asked_ = false;
    if (IsOnLine())
        return; // the end of the transaction asks again
    const QWidget *modal = QApplication::activeModalWidget();
    // The running action waits for something else than a window of its own; its end asks again.
    const bool ownWindow = modal && std::ranges::find(running_, modal, &Running::modal) == running_.end();
    if (IsRunning() && !ownWindow)
        return;

    std::erase_if(waiting_, [this](const Taken &taken) { return IsRetired(taken.context); });
    const auto next = std::ranges::find_if(
        waiting_, [modal](const Taken &taken) { return !modal || BelongsTo(taken.context, modal); });
    if (next != waiting_.end()) {
        const Waiting taken = std::move(*next);
        waiting_.erase(next);
        if (!taken.page || *taken.page == pageOnShow_())
            Run(taken, modal);
        else if (taken.dropped)
            taken.dropped();
        Ask();
    } else if (!IsRunning() && waiting_.empty() && !modal) {
        Q_EMIT Idle();
    }
}

void Gate::Run(const Waiting &taken, const QWidget *modal)
{
    running_.push_back({taken.context, taken.source, taken.page, modal, taken.number});
    const auto end = qScopeGuard([this] {
        running_.pop_back();
        DeleteRetired();
    });
    try {
        taken.action();
    } catch (const RuntimeError &) {
        // What the action had done by then stands.
    }
}

bool Gate::IsRetired(const QObject *context) const
{
    return !context || std::ranges::any_of(retired_, [context](const QPointer<QWidget> &window) {
        return window && BelongsTo(context, window);
    });
}

bool Gate::HoldsRunning(const QWidget *window) const
{
    return std::ranges::any_of(running_,
                               [window](const Running &action) { return BelongsTo(action.context, window); });
}

void Gate::Retire(QWidget *window)
{
    window->hide();
    retired_.emplace_back(window);
    DeleteRetired();
    Ask();
}

void Gate::DeleteRetired()
{
    std::erase_if(retired_, [](const QPointer<QWidget> &window) { return !window; });
    for (const QPointer<QWidget> &window : retired_) {
        if (!HoldsRunning(window))
            window->deleteLater();
    }
}

} // namespace vorn
