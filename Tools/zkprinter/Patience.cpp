#include "Tools/zkprinter/Patience.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace {

std::atomic<Patience *> current = nullptr;

} // namespace

Patience::Patience(std::optional<Duration> limit, Show show, GiveUp giveUp)
    : show_(std::move(show)), giveUp_(std::move(giveUp)), showing_(clock_.now() + beforeShowing),
      end_(limit ? clock_.now() + *limit : dispatch::Instant::distantFuture()), thread_([this] { run(); }) {
    current = this;
}

Patience::~Patience() {
    current = nullptr;
    {
        const locking::MutexLock guard(mutex_);
        over_ = true;
        changed_.notifyAll();
    }
    thread_.join();
}

void Patience::await(const std::string &what) {
    {
        const locking::MutexLock guard(mutex_);
        if (over_)
            return;
        awaited_ = what;
        changed_.notifyAll();
    }
    if (what.empty())
        update(); // here, so that the result comes after it
}

void Patience::run() {
    const std::optional<std::string> what = showUntilOver();
    update();
    if (what)
        giveUp_(*what);
}

// What is waited for when the command has taken as long as it may; none when it ended before.
std::optional<std::string> Patience::showUntilOver() {
    const locking::MutexLock lock(mutex_);
    while (!over_ && clock_.now() < end_) {
        const bool shows = clock_.now() >= showing_;
        if (shows && shown_ != awaited_) {
            const locking::MutexUnlock released(mutex_);
            update();
        } else {
            clock_.waitUntil(mutex_, changed_, shows ? end_ : std::min(showing_, end_));
        }
    }
    std::string what = std::exchange(awaited_, {});
    return std::exchange(over_, true) ? std::nullopt : std::optional(std::move(what));
}

void Patience::update() {
    const locking::MutexLock turn(screen_);
    std::string what;
    {
        const locking::MutexLock guard(mutex_);
        if (shown_ == awaited_)
            return;
        what = shown_ = awaited_;
    }
    show_(what);
}

Waiting::Waiting(const std::string &what) {
    if (Patience *const patience = current)
        patience->await(what);
}

Waiting::~Waiting() {
    if (Patience *const patience = current)
        patience->await({});
}
