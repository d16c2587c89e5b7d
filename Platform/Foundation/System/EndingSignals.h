// The end of the process by a signal: prompt, whatever its threads wait for, with what it holds given back.
#pragma once

#include <functional>

namespace dispatch {

/// From now on INT, TERM, HUP and QUIT end the process by endProcess with the status 128 + signal; `before`,
/// which must not wait for anything, is called first, on a thread of its own. The same signal once more ends
/// it at once. A signal that is ignored by now, as under nohup, stays ignored. A write to a pipe that nobody
/// reads any more fails (EPIPE) and does not end the process. Where no thread can be had, the signals end the
/// process as they do by themselves.
///
/// Processes that are forked get the signals as usual, and so do the programs that they become.
///
/// Call it once, before any other thread starts: none of them is to get the signals.
void endOnSignals(std::function<void()> before = {});

/// Ends the process by std::quick_exit, so that what std::at_quick_exit arranged for is done. Of several
/// calls the first does so and the others wait for it, as std::quick_exit alone would let the second end the
/// process while the first is still at it. Any thread.
[[noreturn]] void endProcess(int status);

} // namespace dispatch
