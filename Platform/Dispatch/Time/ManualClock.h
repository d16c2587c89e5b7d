// A clock that moves only when told to, for tests and demonstrations.
//
//     ManualClock clock;
//     ClockScope scope(clock);
//     Alarm alarm = clock.callAt(clock.now() + 2s, [&] { rung = true; });
//     clock.advance(2s);                  // runs the alarm here, on this thread
//
// Threads: every member is safe from every thread. `advance` must not be called while holding a mutex that
// somebody waits with in `waitUntil`. The clock must outlive whoever waits in it.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"

#include <list>

namespace dispatch {

class ManualClock final : public Clock {
public:
    explicit ManualClock(double wallTime = 0);

    /// Steps time forward through every alarm due until then, in deadline order. Each runs on this thread
    /// with `now()` equal to its deadline (an overdue one: to the present), and may set and cancel alarms
    /// or advance the clock itself; alarms it sets within the span run too. Then wakes all waiters.
    void advance(Instant::Duration duration);

    /// While on, `waitUntil` with a finite deadline does not block: it advances, on the waiting thread and
    /// with the lock released, to the next alarm or to the deadline, whichever is first.
    void setAutoAdvance(bool on);

    /// Sets the wall clock alone, as a user or the network does; alarms do not notice.
    void setWallTime(double seconds);

    Instant now() override;
    double wallTime() override;
    bool waitUntil(std::unique_lock<std::mutex> &lock, std::condition_variable &condition,
                   Instant deadline) override;
    Alarm callAt(Instant deadline, std::function<void()> function) override;

private:
    struct Waiter {
        std::mutex *mutex;
        std::condition_variable *condition;
        int pins = 0; // wakers that still touch the two above
    };

    void advanceTo(Instant target);
    void raiseNow(Instant instant);
    void wakeWaiters();

    std::mutex mutex_;
    Instant now_;
    double wallTimeAtOrigin_;
    bool autoAdvance_ = false;
    std::list<Waiter> waiters_;
    std::condition_variable unpinned_;
    std::shared_ptr<AlarmList> alarms_;
};

} // namespace dispatch
