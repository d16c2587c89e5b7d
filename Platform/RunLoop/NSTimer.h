// Run-loop timers: at a date they send a selector to a target, on the thread of the run loop.
//
//     auto timer = NSTimer::scheduledTimerWithTimeInterval(3, target, selector, nullptr, true);
//     timer->invalidate();
//
// Until it is invalid, a scheduled timer is kept by its run loop and keeps its target and user info. A timer
// that does not repeat becomes invalid when it has fired. A repeating one fires at its first date plus
// multiples of the interval; dates that it missed are skipped. One that may be late (`setTolerance`) wakes
// the thread only if nothing else does in time.
//
// Threads: a timer belongs to the thread of its run loop.
#pragma once

#include "Platform/Dispatch/Time/Instant.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <algorithm>
#include <chrono>

#pragma GCC visibility push(default)

class NSRunLoop;

/// The interval that a timer uses, in seconds: the given one, or 0.0001 if that is less than a nanosecond,
/// negative or not a number.
NSTimeInterval effectiveTimerInterval(NSTimeInterval interval);

class NSTimer : public NSObject {
    NS_CLASS(NSTimer, NSObject)
public:
    /// Use the two functions below.
    NSTimer(NSTimeInterval interval, id target, SEL selector, id userInfo, bool repeats);

    /// A timer that is not yet in a run loop. It first fires one interval from now; `interval` is in seconds,
    /// see `effectiveTimerInterval`. The selector's operation takes the timer ("tick:") or nothing ("tick").
    static Ref<NSTimer> timerWithTimeInterval(NSTimeInterval interval, const id &target, SEL selector,
                                              const id &userInfo, bool repeats);
    /// The same, added to the current thread's run loop in the default mode.
    static Ref<NSTimer> scheduledTimerWithTimeInterval(NSTimeInterval interval, const id &target,
                                                       SEL selector, const id &userInfo, bool repeats);

    /// Sends the selector now, whatever the date, without changing the dates of a repeating timer. Does
    /// nothing when invalid. What the target raises reaches the caller; the timer counts as fired.
    void fire();
    /// Stops the timer for good and releases its target and user info.
    void invalidate();

    bool isValid() const { return valid_; }
    bool repeats() const { return repeats_; }
    /// Seconds between two dates; 0 when the timer does not repeat.
    NSTimeInterval timeInterval() const { return repeats_ ? interval_ : 0; }
    /// None once invalid.
    id userInfo() const { return userInfo_; }

    /// The next date. A timer fires after the interval whatever happens to the wall clock; when that is set,
    /// the date changes.
    Ref<NSDate> fireDate() const;
    /// Sets the next date, from which a repeating timer goes on; wakes the run loop if it is earlier than the
    /// former one. Raises NSInvalidArgumentException for none.
    void setFireDate(const Ref<NSDate> &date);

    /// How many seconds later than its date the timer may fire; 0 by default, and for a negative value. The
    /// run loop sleeps that much longer, but fires the timer as soon as it is awake after the date. Set it
    /// before adding the timer to a run loop.
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
    bool ticking_ = false; // a run loop nested in its target's operation does not fire it again
    bool moved_ = false;   // setFireDate was called since the tick began
    dispatch::Instant fireInstant_;
    std::chrono::nanoseconds tolerance_{0};
    Weak<NSRunLoop> loop_; // the one that the timer was added to
};

#pragma GCC visibility pop
