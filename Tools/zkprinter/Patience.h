// How long a command may take, and what it tells the user who waits for it.
//
//     const Patience patience(90s, show, giveUp);
//     …
//     const Waiting waiting("CUPS");   // anywhere below, on the same thread
//
// A second after the command began, whatever it waits for from then on is shown until it is there. When the
// command has taken as long as it may, `giveUp` is called, which is to end the process.
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

    /// Shows what is waited for in the place of what was shown before; nothing for an empty text. One call at
    /// a time.
    using Show = std::function<void(const std::string &what)>;
    /// Gets what is waited for, if it is known.
    using GiveUp = std::function<void(const std::string &what)>;

    static constexpr Duration beforeShowing = std::chrono::seconds(1);

    /// None: the command may take as long as it likes. One at a time; both functions are called on its
    /// thread, `show` also by whoever waits.
    Patience(std::optional<Duration> limit, Show show, GiveUp giveUp);
    Patience(const Patience &) = delete;
    Patience &operator=(const Patience &) = delete;
    /// Shows nothing any more. Waits for `giveUp` if that has begun.
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

/// Says what the command waits for as long as it lives; nothing is done when there is no patience to speak
/// of.
class Waiting {
public:
    explicit Waiting(const std::string &what);
    Waiting(const Waiting &) = delete;
    Waiting &operator=(const Waiting &) = delete;
    ~Waiting();
};
