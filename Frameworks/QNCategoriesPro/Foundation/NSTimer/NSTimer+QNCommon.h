// Run-loop timers that run a block, and pausing and resuming.
//
//     auto timer = qn::scheduledTimerWithTimeInterval(
//         2.0, makeBlock<void(const Ref<NSTimer> &)>([](const Ref<NSTimer> &) { … }), true);
//
// Threads: the thread whose run loop owns the timer.
#pragma once

#include "Platform/RunLoop/NSTimer.h"
#include "Platform/Runtime/Object/NSBlock.h"

namespace qn {

using TimerBlock = Block<void(const Ref<NSTimer> &)>;

/// Moves the next fire date to the distant future; the timer stays scheduled. Nothing when invalid.
void pauseTimer(const Ref<NSTimer> &timer);
/// Moves the next fire date to now. Nothing when invalid.
void resumeTimer(const Ref<NSTimer> &timer);
/// Moves the next fire date to `seconds` from now. Nothing when invalid.
void resumeTimerAfterTimeInterval(const Ref<NSTimer> &timer, NSTimeInterval seconds);

/// A timer on the current run loop, in the default mode, that runs a copy of the block.
Ref<NSTimer> scheduledTimerWithTimeInterval(NSTimeInterval interval, const Ref<TimerBlock> &block,
                                            bool repeats);
/// The same, but not scheduled.
Ref<NSTimer> timerWithTimeInterval(NSTimeInterval interval, const Ref<TimerBlock> &block, bool repeats);

/// Runs the block that is the timer's user info; nothing without one.
void _qn_ExecBlock(const Ref<NSTimer> &timer);

} // namespace qn
