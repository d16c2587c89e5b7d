// The end of the process by a signal: prompt, whatever its threads wait for, with what it holds given back.
#pragma once

#include <functional>

namespace dispatch {

/// From now on INT, TERM and HUP end the process by std::quick_exit with the status 128 + signal, so that
/// what std::at_quick_exit arranged for is done; `before` is called first, on a thread of its own. The same
/// signal once more ends it at once. A signal that is ignored by now, as under nohup, stays ignored. A write
/// to a pipe that nobody reads any more fails (EPIPE) and does not end the process. Where no thread can be
/// had, the signals end the process as they do by themselves.
///
/// Processes that are forked get the signals as usual, and so do the programs that they become.
///
/// Call it once, before any other thread starts: none of them is to get the signals.
void endOnSignals(std::function<void()> before = {});

} // namespace dispatch
