// A clock that moves only when told to, for tests.
//
//     ManualClock clock;
//     ClockScope scope(clock);
//     Alarm alarm = clock.callAt(clock.now() + 2s, [&] { rung = true; });
//     clock.advance(2s);                  // runs the alarm here, on this thread
//
// Threads: every member is safe from every thread. `advance` must not be called while holding a mutex with
// which a thread waits in `waitUntil`. No thread may be waiting in the clock when it is destroyed.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"

#include <list>

#pragma GCC visibility push(default)

namespace dispatch {

class ManualClock final : public Clock {
public:
    /// `wallTime` in seconds since 1970-01-01 00:00 UTC.
    explicit ManualClock(double wallTime = 0);

    /// Moves time forward, running the alarms that fall due on the way in the order of their deadlines, on
    /// the calling thread. `now()` is then the alarm's deadline, or the present for an overdue one. An
    /// alarm's function may set and cancel alarms and advance the clock; alarms that it sets within the span
    /// run, too. Wakes all waiting threads at the end. A negative duration does not move time back.
    void advance(Instant::Duration duration);

    /// While on, `waitUntil` with a finite deadline does not block: it advances the clock, on the waiting
    /// thread and with the lock released, to the next alarm or to the deadline, whichever is first.
    void setAutoAdvance(bool on);

    /// Sets only the wall clock, as a user or the network does; `now()` and alarms are not affected.
    void setWallTime(double seconds);

    Instant now() override;
    double wallTime() override;
    bool waitUntil(locking::Mutex &mutex, locking::Condition &condition, Instant deadline) override
        ZK_REQUIRES(mutex);
    Alarm callAt(Instant deadline, std::function<void()> function) override;

private:
    struct Waiter {
        locking::Mutex *mutex;
        locking::Condition *condition;
        int pins = 0; // wakers that still touch the two above; under the clock's mutex
    };

    void advanceTo(Instant target);
    void raiseNow(Instant instant);
    void wakeWaiters();

    locking::Mutex mutex_;
    Instant now_ ZK_GUARDED_BY(mutex_);
    double wallTimeAtOrigin_ ZK_GUARDED_BY(mutex_);
    bool autoAdvance_ ZK_GUARDED_BY(mutex_) = false;
    std::list<Waiter> waiters_ ZK_GUARDED_BY(mutex_);
    locking::Condition unpinned_;
    const std::shared_ptr<AlarmList> alarms_;
};

} // namespace dispatch

#pragma GCC visibility pop
