#pragma once

#include <QObject>

#include <functional>

namespace vorn
{

/// Serves all waiting window events once and returns. The program's one yield: a handler that calls it may
/// find the selection, the page and the bus changed behind it.
void DoEvents();

/// Waits until a window event has come or `milliseconds` have gone, and serves what came. Burns no processor.
void WaitForEvents(int milliseconds);

/// Serves what the window needs to stay painted and closable: for waits that mustn't yield and last long all
/// the same. Keys, clicks and queued handlers come later, when the program yields again.
void KeepWindowAlive();

/// How many of the above are on the stack. Above 0 a handler is below that waits for its turn to go on.
int YieldDepth();

/// Runs `handler` from the event loop, never from inside the caller. Handlers that loop are entered this way,
/// so that no view is in the middle of its own event while they run.
void Queue(QObject *context, std::function<void()> handler);

/// Ends the process with status 0 at once, from inside any wait or handler.
[[noreturn]] void EndProgram();

} // namespace vorn
