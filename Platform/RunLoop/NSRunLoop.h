// Run loops: one a thread, serving timers in modes and, on the main thread, the main queue in every mode.
//
//     auto loop = NSRunLoop::mainRunLoop();
//     loop->addTimer(timer, NSDefaultRunLoopMode);
//     loop->run(NSDefaultRunLoopMode);              // until somebody calls loop->stop()
//
// A timer fires only in the modes it was added for. One that fell due in another mode fires once when its
// mode is served again.
//
// A host with an event loop of its own does not call `run`: it serves the loop with `runOnce`, sleeps until
// `nextInstant`, and is woken early through `setWaker`.
//
// Threads: a run loop belongs to its thread, but for `wakeUp` and `stop`, which any thread may call.
#pragma once

#include "Platform/RunLoop/NSTimer.h"

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

using NSRunLoopMode = std::string_view;

inline constexpr NSRunLoopMode NSDefaultRunLoopMode = "kCFRunLoopDefaultMode";
inline constexpr NSRunLoopMode NSModalPanelRunLoopMode = "NSModalPanelRunLoopMode";
/// For adding timers: stands for the two modes above together.
inline constexpr NSRunLoopMode NSRunLoopCommonModes = "kCFRunLoopCommonModes";

class NSRunLoop : public NSObject {
    NS_CLASS(NSRunLoop, NSObject)
public:
    /// For the two functions below, which make the one loop of a thread.
    explicit NSRunLoop(bool servesMainQueue) : servesMainQueue_(servesMainQueue) {}

    /// The calling thread's loop, made on first use.
    static Ref<NSRunLoop> currentRunLoop();
    static Ref<NSRunLoop> mainRunLoop();

    /// Adding a timer again to a mode it has does nothing.
    void addTimer(const Ref<NSTimer> &timer, NSRunLoopMode mode);

    /// Serves what is due in `mode`, main-queue blocks first, then timers by date, and returns at once.
    /// True when anything ran.
    bool runOnce(NSRunLoopMode mode);
    /// Until when the loop may sleep for the timers of `mode`; for ever when it has none.
    dispatch::Instant nextInstant(NSRunLoopMode mode);

    /// Serves `mode` until `stop`. Nests: `stop` ends the innermost run, or the next one when none is under
    /// way.
    void run(NSRunLoopMode mode);
    /// Serves `mode` until the date or `stop`; true when it was stopped. Raises NSInvalidArgumentException
    /// for a date of none.
    bool runUntilDate(NSRunLoopMode mode, const Ref<NSDate> &limit);
    void stop();

    /// Ends a wait, so that what was submitted meanwhile is served.
    void wakeUp();
    /// Called, on any thread, for every `wakeUp`, and on the loop's thread when a timer was added or the date
    /// of one came nearer. It must only wake the host: neither wake the loop nor call `setWaker`. When
    /// `setWaker` returns, the former one is not running and is called no more.
    void setWaker(std::function<void()> waker);

    /// The mode being served, or empty outside.
    std::string currentMode() const { return currentMode_; }

private:
    bool runUntilInstant(NSRunLoopMode mode, dispatch::Instant limit);
    void wait(dispatch::Instant deadline);
    std::vector<Ref<NSTimer>> dueTimers(NSRunLoopMode mode);

    const bool servesMainQueue_;
    std::map<std::string, std::vector<Ref<NSTimer>>, std::less<>> timers_;
    std::string currentMode_;

    std::mutex mutex_; // guards what follows
    std::condition_variable woken_;
    bool awake_ = false;
    std::uint64_t stops_ = 0;

    std::mutex wakerMutex_;
    std::function<void()> waker_;
};
