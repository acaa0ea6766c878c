#pragma once

#include <QObject>

#include <functional>

namespace vorn
{

/// Serves all waiting window events once and returns. The program's one yield: what the operator does in it
/// is taken by the gate and runs later, but windows may close and fields may change.
void DoEvents();

/// Waits until a window event has come or `milliseconds` have gone, and serves what came. Burns no processor.
void WaitForEvents(int milliseconds);

/// Runs `handler` from the event loop, never from inside the caller.
void Queue(QObject *context, std::function<void()> handler);

/// Ends the process with status 0 at once, from inside any wait or handler.
[[noreturn]] void EndProgram();

} // namespace vorn
