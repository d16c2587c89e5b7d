// Run-loop timers that run a block, and pausing and resuming.
//
//     auto timer = qn::scheduledTimerWithTimeInterval(
//         2.0, makeBlock<void(const Ref<NSTimer> &)>([](const Ref<NSTimer> &) { … }), true);
//
// Threads: the thread whose run loop has the timer.
#pragma once

#include "Platform/RunLoop/NSTimer.h"
#include "Platform/Runtime/Object/NSBlock.h"

#pragma GCC visibility push(default)

namespace qn {

using TimerBlock = Block<void(const Ref<NSTimer> &)>;

/// Moves the next fire date to the distant future; the timer stays scheduled. Does nothing to an invalid one.
void pauseTimer(const Ref<NSTimer> &timer);
/// Moves the next fire date to now. Does nothing to an invalid timer.
void resumeTimer(const Ref<NSTimer> &timer);
/// Moves the next fire date to `seconds` from now. Does nothing to an invalid timer.
void resumeTimerAfterTimeInterval(const Ref<NSTimer> &timer, NSTimeInterval seconds);

/// A timer on the current run loop, in the default mode, that runs a copy of the block every `interval`
/// seconds, or once. The run loop owns it until it is invalidated or has fired for the last time.
Ref<NSTimer> scheduledTimerWithTimeInterval(NSTimeInterval interval, const Ref<TimerBlock> &block,
                                            bool repeats);
/// The same, but not scheduled.
Ref<NSTimer> timerWithTimeInterval(NSTimeInterval interval, const Ref<TimerBlock> &block, bool repeats);

/// What these timers call: runs the block in the timer's user info, if there is one.
void _qn_ExecBlock(const Ref<NSTimer> &timer);

} // namespace qn

#pragma GCC visibility pop
