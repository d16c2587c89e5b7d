// Bounds how long a command may take, and shows what it waits for.
//
//     const Patience patience(90s, show, giveUp);
//     …
//     const Waiting waiting("CUPS");   // while the command waits for something
//
// From one second after the beginning on, what the command waits for is shown while it waits. When the time
// is over, `giveUp` is called, which has to end the process.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Locking/Condition.h"

#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

class Patience {
public:
    using Duration = dispatch::Instant::Duration;

    /// Shows what is waited for, instead of what was shown before; nothing for an empty text. Called by one
    /// thread at a time.
    using Show = std::function<void(const std::string &what)>;
    /// Gets what the command waits for; empty if that is not known.
    using GiveUp = std::function<void(const std::string &what)>;

    static constexpr Duration beforeShowing = std::chrono::seconds(1);

    /// The time begins now; without a limit it never ends. There is one Patience at a time. Both functions
    /// are called on a thread of its own, `show` also on the thread on which a Waiting ends.
    Patience(std::optional<Duration> limit, Show show, GiveUp giveUp);
    Patience(const Patience &) = delete;
    Patience &operator=(const Patience &) = delete;
    /// Shows nothing any more. Waits for `giveUp` if that was called.
    ~Patience();

private:
    friend class Waiting;

    void begin(const std::string &what) ZK_EXCLUDES(screen_, mutex_);
    void end(const std::string &what) ZK_EXCLUDES(screen_, mutex_);
    std::string awaited() const ZK_REQUIRES(mutex_);
    void run() ZK_EXCLUDES(screen_, mutex_);
    std::optional<std::string> showUntilOver() ZK_EXCLUDES(screen_, mutex_);
    void update() ZK_EXCLUDES(screen_, mutex_);

    const Show show_;
    const GiveUp giveUp_;
    dispatch::Clock &clock_ = dispatch::Clock::current();
    const dispatch::Instant showing_, end_;

    locking::Mutex screen_ ZK_ACQUIRED_BEFORE(mutex_); // held while something is shown
    locking::Mutex mutex_;
    locking::Condition changed_;
    std::vector<std::string> awaited_ ZK_GUARDED_BY(mutex_); // the oldest first
    std::string shown_ ZK_GUARDED_BY(mutex_);
    bool over_ ZK_GUARDED_BY(mutex_) = false;
    std::thread thread_;
};

/// The command waits for `what` as long as this lives. Any thread; of several the oldest is shown, with the
/// number of the others. Does nothing without a Patience.
class Waiting {
public:
    explicit Waiting(std::string what);
    Waiting(const Waiting &) = delete;
    Waiting &operator=(const Waiting &) = delete;
    ~Waiting();

private:
    const std::string what_;
    Patience *const patience_;
};
