// Run-loop timers: a target is sent a selector when a date has come, on the thread of the run loop.
//
//     auto timer = NSTimer::scheduledTimerWithTimeInterval(3, target, selector, nullptr, true);
//     timer->invalidate();
//
// A scheduled timer is kept by its run loop, and keeps its target and user info, until it is invalid. A timer
// that does not repeat becomes invalid after it fired. A repeating one fires on the grid of its first fire
// date; dates it was too late for are skipped. One that may be late (`setTolerance`) does not wake the thread
// for itself while something else does in time.
//
// Threads: a timer belongs to the thread of its run loop.
#pragma once

#include "Platform/Dispatch/Time/Instant.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <algorithm>
#include <chrono>

class NSRunLoop;

/// The interval that counts, in seconds: 0.1 ms for one of less than a nanosecond, of zero, negative or not a
/// number.
NSTimeInterval effectiveTimerInterval(NSTimeInterval interval);

class NSTimer : public NSObject {
    NS_CLASS(NSTimer, NSObject)
public:
    /// First fires one interval from now. The interval is the effective one of what is given.
    NSTimer(NSTimeInterval interval, id target, SEL selector, id userInfo, bool repeats);

    /// A timer that no run loop has yet. The selector's operation takes the timer ("tick:") or nothing
    /// ("tick").
    static Ref<NSTimer> timerWithTimeInterval(NSTimeInterval interval, const id &target, SEL selector,
                                              const id &userInfo, bool repeats);
    /// The same, added to the current thread's run loop in the default mode.
    static Ref<NSTimer> scheduledTimerWithTimeInterval(NSTimeInterval interval, const id &target,
                                                       SEL selector, const id &userInfo, bool repeats);

    /// Sends the selector now, whatever the date; the dates to come stay. Nothing when invalid. What the
    /// target raises reaches the caller; the timer has fired all the same.
    void fire();
    /// Stops the timer for good and lets its target and user info go.
    void invalidate();

    bool isValid() const { return valid_; }
    bool repeats() const { return repeats_; }
    /// Seconds between two dates; 0 when the timer does not repeat.
    NSTimeInterval timeInterval() const { return repeats_ ? interval_ : 0; }
    /// None once invalid.
    id userInfo() const { return userInfo_; }

    /// The next date. Follows changes of the wall clock.
    Ref<NSDate> fireDate() const;
    /// Moves the next date, and the grid with it; wakes the run loop when it comes nearer. Raises
    /// NSInvalidArgumentException for none.
    void setFireDate(const Ref<NSDate> &date);

    /// How much later than its date the timer may fire, in seconds; 0 when nothing was said. The run loop
    /// sleeps until then, and fires the timer as soon as it is awake after the date. To be set before a run
    /// loop has the timer.
    void setTolerance(NSTimeInterval seconds) {
        tolerance_ = nanosecondsFromTimeInterval(std::max(seconds, 0.0));
    }

private:
    friend class NSRunLoop;

    bool isDue(dispatch::Instant now) const { return valid_ && !ticking_ && fireInstant_ <= now; }
    /// When the run loop has to be awake for it.
    dispatch::Instant latestInstant() const {
        return valid_ && !ticking_ ? fireInstant_ + tolerance_ : dispatch::Instant::distantFuture();
    }
    /// Fires on behalf of the run loop and moves on to the next date.
    void tick();
    void fired();
    void ticked(dispatch::Instant due);

    const NSTimeInterval interval_;
    const bool repeats_;
    const SEL selector_;
    id target_;
    id userInfo_;
    bool valid_ = true;
    bool ticking_ = false; // a nested run loop does not fire the timer that it runs in
    bool moved_ = false;   // to another date, since the tick began
    dispatch::Instant fireInstant_;
    std::chrono::nanoseconds tolerance_{0};
    Weak<NSRunLoop> loop_; // the one that has the timer
};
