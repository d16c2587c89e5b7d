// The alarms of one clock, in the order of their deadlines; equal deadlines in the order they were added.
// For the clocks only. Every member is safe from every thread.
#pragma once

#include "Platform/Dispatch/Time/Alarm.h"
#include "Platform/Dispatch/Time/Instant.h"
#include "Platform/Locking/Condition.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <thread>
#include <utility>

namespace dispatch {

class Clock;

struct AlarmEntry {
    enum class State { pending, running, over };
    using Key = std::pair<Instant, std::uint64_t>;

    Key key;
    std::function<void()> function;
    State state = State::pending; // this and the next: under the list's mutex
    std::thread::id runner;
};

class AlarmList : public std::enable_shared_from_this<AlarmList> {
public:
    using EntryRef = std::shared_ptr<AlarmEntry>;

    Alarm add(Instant deadline, std::function<void()> function);
    void cancel(AlarmEntry &entry) noexcept;

    /// Deadline of the next alarm, `distantFuture()` without one.
    Instant next() const;

    /// Takes the next alarm off the list if it is due at `limit`; none otherwise. The caller must `run` it.
    EntryRef takeDue(Instant limit);
    /// Blocks until an alarm is due by `clock`, and takes it like `takeDue`.
    EntryRef takeWhenDue(Clock &clock);
    /// Calls the alarm's function, on the thread that took the alarm.
    void run(AlarmEntry &entry);

private:
    Instant nextLocked() const ZK_REQUIRES(mutex_);
    EntryRef takeDueLocked(Instant limit) ZK_REQUIRES(mutex_);

    mutable locking::Mutex mutex_;
    locking::Condition nextChanged_;
    locking::Condition runEnded_;
    std::map<AlarmEntry::Key, EntryRef> pending_ ZK_GUARDED_BY(mutex_);
    std::uint64_t added_ ZK_GUARDED_BY(mutex_) = 0;
};

} // namespace dispatch
