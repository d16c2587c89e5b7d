// Ends the process on a signal, at once whatever its threads wait for, but with its at_quick_exit functions
// run.
#pragma once

#include <functional>

#pragma GCC visibility push(default)

namespace dispatch {

/// From now on INT, TERM, HUP and QUIT end the process by endProcess with the status 128 + signal. `before`
/// is called first, on the thread that waits for the signals; it must not wait for anything. A second signal
/// ends the process at once. A signal that is already ignored, as HUP is under nohup, stays ignored. Writing
/// to a pipe that is closed at the other end fails with EPIPE and no longer ends the process. If the system
/// refuses the thread, the signals keep their default action.
///
/// Forked processes, and the programs that they execute, get the signals as usual.
///
/// To be called once, before any other thread starts, since threads inherit the blocked signals.
void endOnSignals(std::function<void()> before = {});

/// Ends the process by std::quick_exit, which runs the functions registered with std::at_quick_exit. When it
/// is called again meanwhile, on another thread, that call blocks until the process ends. Safe from any
/// thread, but not from within those functions.
[[noreturn]] void endProcess(int status);

} // namespace dispatch

#pragma GCC visibility pop
