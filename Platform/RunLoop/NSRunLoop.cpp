#include "Platform/RunLoop/NSRunLoop.h"

#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

#include <algorithm>

using dispatch::Clock;
using dispatch::Instant;

NS_IMPLEMENTATION(NSRunLoop) {}

namespace {

/// Sets the current mode while it is served, also when serving ends with an exception.
class ModeScope {
public:
    ModeScope(std::string &current, NSRunLoopMode mode) : current_(current), previous_(current) {
        current_ = mode;
    }
    ModeScope(const ModeScope &) = delete;
    ModeScope &operator=(const ModeScope &) = delete;
    ~ModeScope() { current_ = previous_; }

private:
    std::string &current_;
    const std::string previous_;
};

} // namespace

Ref<NSRunLoop> NSRunLoop::currentRunLoop() {
    if (dispatch::isMainThread())
        return mainRunLoop();
    thread_local const auto loop = make<NSRunLoop>(false);
    return loop;
}

Ref<NSRunLoop> NSRunLoop::mainRunLoop() {
    static const auto &loop = *new Ref<NSRunLoop>([] {
        auto made = make<NSRunLoop>(true);
        dispatch::mainQueue().setWaker([raw = made.get()] { raw->wakeUp(); });
        return made;
    }());
    return loop;
}

void NSRunLoop::addTimer(const Ref<NSTimer> &timer, NSRunLoopMode mode) {
    if (mode == NSRunLoopCommonModes) {
        addTimer(timer, NSDefaultRunLoopMode);
        addTimer(timer, NSModalPanelRunLoopMode);
        return;
    }
    auto &timers = timers_[std::string(mode)];
    if (timer && std::find(timers.begin(), timers.end(), timer) == timers.end()) {
        timers.push_back(timer);
        timer->loop_ = std::static_pointer_cast<NSRunLoop>(self());
        wakeUp();
    }
}

std::vector<Ref<NSTimer>> NSRunLoop::dueTimers(NSRunLoopMode mode) {
    // Invalid timers go from every mode, since some modes are served seldom or never.
    for (auto &[name, timers] : timers_)
        std::erase_if(timers, [](const Ref<NSTimer> &timer) { return !timer->isValid(); });
    const auto found = timers_.find(mode);
    if (found == timers_.end())
        return {};
    std::vector<Ref<NSTimer>> due;
    const Instant now = Clock::current().now();
    std::copy_if(found->second.begin(), found->second.end(), std::back_inserter(due),
                 [&](const Ref<NSTimer> &timer) { return timer->isDue(now); });
    std::stable_sort(due.begin(), due.end(), [](const Ref<NSTimer> &a, const Ref<NSTimer> &b) {
        return a->fireInstant_ < b->fireInstant_;
    });
    return due;
}

bool NSRunLoop::runOnce(NSRunLoopMode mode) {
    const ModeScope scope(currentMode_, mode);
    bool ran = servesMainQueue_ && dispatch::mainQueue().drain() > 0;
    for (const Ref<NSTimer> &timer : dueTimers(mode)) {
        // An earlier timer of this round may have invalidated or moved this one.
        if (!timer->isDue(Clock::current().now()))
            continue;
        timer->tick();
        ran = true;
    }
    return ran;
}

Instant NSRunLoop::nextInstant(NSRunLoopMode mode) {
    const auto found = timers_.find(mode);
    Instant next = Instant::distantFuture();
    if (found != timers_.end())
        for (const Ref<NSTimer> &timer : found->second)
            next = std::min(next, timer->latestInstant());
    return next;
}

void NSRunLoop::run(NSRunLoopMode mode) {
    runUntilInstant(mode, Instant::distantFuture());
}

bool NSRunLoop::runUntilDate(NSRunLoopMode mode, const Ref<NSDate> &limit) {
    runtime::checkObject("NSRunLoop runUntilDate:", limit);
    return runUntilInstant(mode, Clock::current().now() +
                                     nanosecondsFromTimeInterval(limit->timeIntervalSinceNow()));
}

bool NSRunLoop::runUntilInstant(NSRunLoopMode mode, Instant limit) {
    const auto takeStop = [this] {
        const locking::MutexLock guard(mutex_);
        return stops_ > 0 && stops_-- > 0;
    };
    for (;;) {
        const bool ran = runOnce(mode);
        if (takeStop())
            return true;
        if (Clock::current().now() >= limit)
            return false;
        if (!ran)
            wait(std::min(limit, nextInstant(mode)));
    }
}

void NSRunLoop::wait(Instant deadline) {
    const locking::MutexLock lock(mutex_);
    while (!awake_ && stops_ == 0 && Clock::current().waitUntil(mutex_, woken_, deadline)) {
    }
    awake_ = false;
}

void NSRunLoop::stop() {
    {
        const locking::MutexLock guard(mutex_);
        ++stops_;
    }
    wakeUp();
}

void NSRunLoop::wakeUp() {
    {
        const locking::MutexLock guard(mutex_);
        awake_ = true;
    }
    woken_.notifyAll();
    const locking::MutexLock guard(wakerMutex_);
    if (waker_)
        waker_();
}

void NSRunLoop::setWaker(std::function<void()> waker) {
    const locking::MutexLock guard(wakerMutex_);
    waker_.swap(waker);
}
