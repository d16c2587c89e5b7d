// Run loops: one per thread. A loop serves the timers of a mode and, on the main thread, the main queue in
// every mode.
//
//     auto loop = NSRunLoop::mainRunLoop();
//     loop->addTimer(timer, NSDefaultRunLoopMode);
//     loop->run(NSDefaultRunLoopMode);              // until somebody calls loop->stop()
//
// A timer fires only in the modes it was added for. One that fell due in another mode fires once when its
// mode is served again.
//
// A host with an event loop of its own does not call `run`: it calls `runOnce`, sleeps until `nextInstant`,
// and is woken early through `setWaker`.
//
// Threads: a run loop belongs to its thread; only `wakeUp`, `stop` and `setWaker` may be called from any
// thread.
#pragma once

#include "Platform/Locking/Condition.h"
#include "Platform/RunLoop/NSTimer.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

using NSRunLoopMode = std::string_view;

inline constexpr NSRunLoopMode NSDefaultRunLoopMode = "kCFRunLoopDefaultMode";
inline constexpr NSRunLoopMode NSModalPanelRunLoopMode = "NSModalPanelRunLoopMode";
/// Only for adding timers: both modes above.
inline constexpr NSRunLoopMode NSRunLoopCommonModes = "kCFRunLoopCommonModes";

class NSRunLoop : public NSObject {
    NS_CLASS(NSRunLoop, NSObject)
public:
    /// Only for the two functions below, which make the one loop of a thread.
    explicit NSRunLoop(bool servesMainQueue) : servesMainQueue_(servesMainQueue) {}

    /// The calling thread's loop, made on first use.
    static Ref<NSRunLoop> currentRunLoop();
    /// The main thread's loop. May be called on any thread.
    static Ref<NSRunLoop> mainRunLoop();

    /// Adds the timer to the mode, and keeps it until it is invalid. Does nothing for none, and for a timer
    /// that the mode has already. A timer belongs to one loop only.
    void addTimer(const Ref<NSTimer> &timer, NSRunLoopMode mode);

    /// Serves what is due in `mode`, main-queue blocks first, then timers by date, without waiting. True when
    /// anything ran; then more may be due. What a block or a timer's target raises passes through.
    bool runOnce(NSRunLoopMode mode);
    /// Until when the loop may sleep for the timers of `mode`; `distantFuture()` without any.
    dispatch::Instant nextInstant(NSRunLoopMode mode);

    /// Serves `mode` until `stop`. Nests: `stop` ends the innermost run, or the next one when none is under
    /// way.
    void run(NSRunLoopMode mode);
    /// Serves `mode` until the date or `stop`; true when it was stopped. Raises NSInvalidArgumentException
    /// when the date is none.
    bool runUntilDate(NSRunLoopMode mode, const Ref<NSDate> &limit);
    void stop();

    /// Ends a wait, so that what was submitted meanwhile is served.
    void wakeUp();
    /// `waker` is called for every `wakeUp`, on the calling thread; the loop wakes itself when a timer is
    /// added or its date comes nearer. The waker must only wake the host: neither wake the loop nor call
    /// `setWaker`. When `setWaker` returns, the former waker is not running and is not called any more. An
    /// empty function: no waker.
    void setWaker(std::function<void()> waker);

    /// The mode being served; empty when none is.
    std::string currentMode() const { return currentMode_; }

private:
    bool runUntilInstant(NSRunLoopMode mode, dispatch::Instant limit);
    void wait(dispatch::Instant deadline);
    std::vector<Ref<NSTimer>> dueTimers(NSRunLoopMode mode);

    const bool servesMainQueue_;
    std::map<std::string, std::vector<Ref<NSTimer>>, std::less<>> timers_;
    std::string currentMode_;

    locking::Mutex mutex_;
    locking::Condition woken_;
    bool awake_ ZK_GUARDED_BY(mutex_) = false;
    std::uint64_t stops_ ZK_GUARDED_BY(mutex_) = 0;

    locking::Mutex wakerMutex_;
    std::function<void()> waker_ ZK_GUARDED_BY(wakerMutex_);
};

#pragma GCC visibility pop
