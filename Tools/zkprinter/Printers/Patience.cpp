#include "Tools/zkprinter/Printers/Patience.h"

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

void Patience::begin(const std::string &what) {
    const locking::MutexLock guard(mutex_);
    awaited_.push_back(what);
    changed_.notifyAll();
}

void Patience::end(const std::string &what) {
    bool last = false;
    {
        const locking::MutexLock guard(mutex_);
        awaited_.erase(std::ranges::find(awaited_, what));
        if (over_)
            return;
        last = awaited_.empty();
        changed_.notifyAll();
    }
    if (last)
        update(); // here, so that the result comes after it
}

// Empty when nothing is waited for, or nothing any more.
std::string Patience::awaited() const {
    if (over_ || awaited_.empty())
        return {};
    const std::size_t others = awaited_.size() - 1;
    return awaited_.front() + (others == 0 ? "" : " and " + std::to_string(others) + " more");
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
        if (shows && shown_ != awaited()) {
            const locking::MutexUnlock released(mutex_);
            update();
        } else {
            clock_.waitUntil(mutex_, changed_, shows ? end_ : std::min(showing_, end_));
        }
    }
    std::string what = awaited();
    return std::exchange(over_, true) ? std::nullopt : std::optional(std::move(what));
}

void Patience::update() {
    const locking::MutexLock turn(screen_);
    std::string what;
    {
        const locking::MutexLock guard(mutex_);
        if (shown_ == awaited())
            return;
        what = shown_ = awaited();
    }
    show_(what);
}

Waiting::Waiting(std::string what) : what_(std::move(what)), patience_(current) {
    if (patience_)
        patience_->begin(what_);
}

Waiting::~Waiting() {
    if (patience_ && patience_ == current)
        patience_->end(what_);
}
