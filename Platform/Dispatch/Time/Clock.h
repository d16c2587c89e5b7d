// Clocks are injected: code that waits or reads the time uses a `Clock`, so that tests move time by hand.
// Only the pool measures the idleness of its threads in real time.
//
//     Clock &clock = Clock::current();
//     while (!ready && clock.waitUntil(mutex, condition, deadline)) {}
//
// Threads: every member is safe from every thread. `Clock::current()` is one clock for the whole process;
// replace it (`ClockScope`) only while no other thread waits on it.
#pragma once

#include "Platform/Dispatch/Time/Alarm.h"
#include "Platform/Dispatch/Time/Instant.h"
#include "Platform/Locking/Condition.h"

#include <functional>
#include <memory>

#pragma GCC visibility push(default)

namespace dispatch {

class Clock {
public:
    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// Monotonic time. Instants of different clocks cannot be compared.
    virtual Instant now() = 0;

    /// Seconds since 1970-01-01 00:00 UTC. Follows the wall clock, so it may jump; do not compute waits from
    /// it.
    virtual double wallTime() = 0;

    /// Waits on `condition` with its mutex, which the caller holds: returns on a notification, on a spurious
    /// wake-up or at the deadline. False says that the deadline has passed.
    virtual bool waitUntil(locking::Mutex &mutex, locking::Condition &condition, Instant deadline)
        ZK_REQUIRES(mutex) = 0;

    /// Runs `function` once, at or after `deadline`, on the thread of the clock's alarms. It must be short
    /// (all alarms share that thread) and must not throw. Destroying the returned alarm cancels it. Raises
    /// NSInvalidArgumentException for an empty function, and NSGenericException when the clock needs a thread
    /// and can start none.
    virtual Alarm callAt(Instant deadline, std::function<void()> function) = 0;

    /// The process-wide clock: the system clock, or the innermost `ClockScope`'s.
    static Clock &current();
};

/// The machine's own clocks. The thread of its alarms is started for the first alarm and never joined, so
/// that the process can end at once. If it cannot be started, the next alarm tries again.
class SystemClock final : public Clock {
public:
    static SystemClock &shared();

    Instant now() override;
    double wallTime() override;
    bool waitUntil(locking::Mutex &mutex, locking::Condition &condition, Instant deadline) override
        ZK_REQUIRES(mutex);
    Alarm callAt(Instant deadline, std::function<void()> function) override;

private:
    SystemClock() = default;
    AlarmList &alarms();
    void runAlarms(AlarmList &alarms);

    locking::Mutex starting_;
    std::shared_ptr<AlarmList> alarms_ ZK_GUARDED_BY(starting_); // stays once its thread runs
};

/// Makes `clock` the current one as long as the scope lives. Scopes nest.
class ClockScope {
public:
    explicit ClockScope(Clock &clock);
    ClockScope(const ClockScope &) = delete;
    ClockScope &operator=(const ClockScope &) = delete;
    ~ClockScope();

private:
    Clock *previous_;
};

} // namespace dispatch

#pragma GCC visibility pop
