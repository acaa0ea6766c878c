#pragma once

#include "protocol/NodeKey.h"

#include <functional>
#include <string>

class QAbstractButton;
class QObject;

namespace vorn
{

class FormMain;

/// Shows the hourglass pointer on the main window for as long as it lives.
class Hourglass final
{
public:
    explicit Hourglass(FormMain &main);
    ~Hourglass();
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;

private:
    FormMain &main_;
};

/// Sends a command to a page's node; true if the reply begins with `lead`.
bool Send(FormMain &main, const NodeKey &node, std::string command, char lead = '!');

/// Waits, under the hourglass, until the node answers again after a write that it stores.
void WaitStored(FormMain &main, const NodeKey &node);

/// Sends a write that the module stores and waits until it is ready again; false, without waiting, if it was
/// refused.
bool Store(FormMain &main, const NodeKey &node, std::string command);

/// Loads the page of the selected node anew, from what its module now holds, as soon as the handler has
/// ended.
void Reload(FormMain &main);

/// Runs a handler for each click of a button, from the event loop. A click while the handler still runs is
/// ignored; one that switched the button over has the handler run once more at its end, so that the module
/// gets what the screen shows. A run-time error ends the handler silently.
void OnClick(QAbstractButton *button, QObject *context, const std::function<void()> &handler);

/// The same for a handler that shows a dialog or takes a port: it begins between two transactions, since one
/// that ran underneath would stand still and hold its port. A click while it waits or runs is ignored.
void OnIdleClick(FormMain &main, QAbstractButton *button, QObject *context,
                 const std::function<void()> &handler);

} // namespace vorn
