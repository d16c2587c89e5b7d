#include "Platform/Dispatch/Time/ManualClock.h"

#include "Platform/Dispatch/Time/AlarmList.h"

#include <algorithm>

namespace dispatch {

namespace {

double seconds(Instant instant) {
    return std::chrono::duration<double>(instant.sinceOrigin()).count();
}

} // namespace

ManualClock::ManualClock(double wallTime)
    : wallTimeAtOrigin_(wallTime), alarms_(std::make_shared<AlarmList>()) {}

void ManualClock::advance(Instant::Duration duration) {
    advanceTo(now() + duration);
}

void ManualClock::advanceTo(Instant target) {
    while (const auto alarm = alarms_->takeDue(target)) {
        raiseNow(alarm->key.first);
        alarms_->run(*alarm);
    }
    raiseNow(target);
    wakeWaiters();
}

void ManualClock::raiseNow(Instant instant) {
    const std::lock_guard lock(mutex_);
    now_ = std::max(now_, instant);
}

void ManualClock::setAutoAdvance(bool on) {
    {
        const std::lock_guard lock(mutex_);
        autoAdvance_ = on;
    }
    wakeWaiters();
}

void ManualClock::setWallTime(double wallTime) {
    const std::lock_guard lock(mutex_);
    wallTimeAtOrigin_ = wallTime - seconds(now_);
}

Instant ManualClock::now() {
    const std::lock_guard lock(mutex_);
    return now_;
}

double ManualClock::wallTime() {
    const std::lock_guard lock(mutex_);
    return wallTimeAtOrigin_ + seconds(now_);
}

bool ManualClock::waitUntil(std::unique_lock<std::mutex> &lock, std::condition_variable &condition,
                            Instant deadline) {
    std::unique_lock own(mutex_);
    if (now_ >= deadline)
        return false;
    if (autoAdvance_ && deadline != Instant::distantFuture()) {
        own.unlock();
        lock.unlock();
        advanceTo(std::min(deadline, alarms_->next()));
        lock.lock();
        return now() < deadline;
    }
    // At the front: a waker under way, which walks to the back, does not meet the same thread for ever.
    const auto self = waiters_.insert(waiters_.begin(), Waiter{lock.mutex(), &condition});
    own.unlock();
    condition.wait(lock);
    lock.unlock(); // a waker that has pinned us takes it
    own.lock();
    unpinned_.wait(own, [&] { return self->pins == 0; });
    waiters_.erase(self);
    const bool inTime = now_ < deadline;
    own.unlock();
    lock.lock();
    return inTime;
}

Alarm ManualClock::callAt(Instant deadline, std::function<void()> function) {
    return alarms_->add(deadline, std::move(function));
}

void ManualClock::wakeWaiters() {
    std::unique_lock own(mutex_);
    for (auto waiter = waiters_.begin(); waiter != waiters_.end(); ++waiter) {
        ++waiter->pins;
        own.unlock();
        // Having had its mutex, we know it to be inside wait(), where the notification reaches it.
        waiter->mutex->lock();
        waiter->mutex->unlock();
        waiter->condition->notify_all();
        own.lock();
        --waiter->pins;
        unpinned_.notify_all();
    }
}

} // namespace dispatch
