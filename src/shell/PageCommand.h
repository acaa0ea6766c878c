#pragma once

#include "protocol/NodeKey.h"

#include <functional>
#include <string>

class QAbstractButton;
class QObject;
class QWidget;

namespace vorn
{

class FormMain;
class Gate;

/// Sends a command to a page's node; true if the reply begins with `lead`.
bool Send(FormMain &main, const NodeKey &node, std::string command, char lead = '!');

/// Waits, under the hourglass, until the node answers again after a write that it stores.
void WaitStored(FormMain &main, const NodeKey &node);

/// Sends a write that the module stores and waits until it is ready again; false, without waiting, if it was
/// refused.
bool Store(FormMain &main, const NodeKey &node, std::string command);

/// Loads the page of the selected node again, from what its module now holds.
void Reload(FormMain &main);

/// Holds the live refresh for as long as it lives: for a handler that uses the bus for its own ends. Behind
/// it the refresh of the page on show goes on.
class RefreshHold final
{
public:
    explicit RefreshHold(FormMain &main);
    ~RefreshHold();
    /// Leaves the refresh held, until the next page is loaded.
    void Keep() { kept_ = true; }
    RefreshHold(const RefreshHold &) = delete;
    RefreshHold &operator=(const RefreshHold &) = delete;

private:
    FormMain &main_;
    bool kept_ = false;
};

/// Sets `NoYield` for as long as it lives, and puts back what it was.
class NoYieldHold final
{
public:
    explicit NoYieldHold(FormMain &main, bool noYield = true);
    ~NoYieldHold();
    NoYieldHold(const NoYieldHold &) = delete;
    NoYieldHold &operator=(const NoYieldHold &) = delete;

private:
    FormMain &main_;
    bool before_;
};

/// Runs a handler for a press of a page's button, with the node whose page was on show at the press. A press
/// while the one before waits or runs is ignored.
void OnClick(FormMain &main, QAbstractButton *button, QObject *context,
             const std::function<void(const NodeKey &node)> &handler);

/// The same as `OnClick` for a check box: each press counts, with the state that it came to.
void OnTick(FormMain &main, QAbstractButton *box, QObject *context,
            const std::function<void(const NodeKey &node, bool ticked)> &handler);

/// Runs a handler for a press of a button of a window of its own, whatever page is on show.
void OnWindowClick(Gate &gate, QAbstractButton *button, QWidget *window,
                   const std::function<void()> &handler);
/// The same for a handler that goes by what the window holds: `taken` reads that at the press, and gives it.
void OnWindowClickWith(Gate &gate, QAbstractButton *button, QWidget *window,
                       const std::function<std::function<void()>()> &taken);

} // namespace vorn
