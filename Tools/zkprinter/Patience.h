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

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

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

    void await(const std::string &what);
    void run();
    void update();

    const Show show_;
    const GiveUp giveUp_;
    dispatch::Clock &clock_ = dispatch::Clock::current();
    const dispatch::Instant showing_, end_;

    std::mutex screen_; // held while something is shown; locked before the other
    std::mutex mutex_;  // guards what follows
    std::condition_variable changed_;
    std::string awaited_, shown_;
    bool over_ = false;
    std::thread thread_;
};

/// The command waits for `what` as long as this lives. One at a time; does nothing without a Patience.
class Waiting {
public:
    explicit Waiting(const std::string &what);
    Waiting(const Waiting &) = delete;
    Waiting &operator=(const Waiting &) = delete;
    ~Waiting();
};
