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
        const std::scoped_lock guard(mutex_);
        over_ = true;
        changed_.notify_all();
    }
    thread_.join();
}

void Patience::await(const std::string &what) {
    {
        const std::scoped_lock guard(mutex_);
        if (over_)
            return;
        awaited_ = what;
        changed_.notify_all();
    }
    if (what.empty())
        update(); // here, so that the result comes after it
}

void Patience::run() {
    std::unique_lock lock(mutex_);
    while (!over_ && clock_.now() < end_) {
        const bool shows = clock_.now() >= showing_;
        if (shows && shown_ != awaited_) {
            lock.unlock();
            update();
            lock.lock();
        } else {
            clock_.waitUntil(lock, changed_, shows ? end_ : std::min(showing_, end_));
        }
    }
    const std::string what = std::exchange(awaited_, {});
    const bool givesUp = !std::exchange(over_, true);
    lock.unlock();
    update();
    if (givesUp)
        giveUp_(what);
}

void Patience::update() {
    const std::scoped_lock turn(screen_);
    std::string what;
    {
        const std::scoped_lock guard(mutex_);
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
