// The alarms of one clock, in the order of their deadlines; equal deadlines in the order they were added.
// For the clocks only. Every member is safe from every thread.
#pragma once

#include "Platform/Dispatch/Time/Alarm.h"
#include "Platform/Dispatch/Time/Instant.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace dispatch {

class Clock;

struct AlarmEntry {
    enum class State { pending, running, over };
    using Key = std::pair<Instant, std::uint64_t>;

    Key key;
    std::function<void()> function;
    State state = State::pending;
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
    Instant nextLocked() const;
    EntryRef takeDueLocked(Instant limit);

    mutable std::mutex mutex_;
    std::condition_variable nextChanged_;
    std::condition_variable runEnded_;
    std::map<AlarmEntry::Key, EntryRef> pending_;
    std::uint64_t added_ = 0;
};

} // namespace dispatch
