#include "Platform/Dispatch/Time/ManualClock.h"

#include "Platform/Dispatch/Time/AlarmList.h"

#include <algorithm>

namespace dispatch {

using locking::MutexLock;
using locking::MutexUnlock;

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
    const MutexLock lock(mutex_);
    now_ = std::max(now_, instant);
}

void ManualClock::setAutoAdvance(bool on) {
    {
        const MutexLock lock(mutex_);
        autoAdvance_ = on;
    }
    wakeWaiters();
}

void ManualClock::setWallTime(double wallTime) {
    const MutexLock lock(mutex_);
    wallTimeAtOrigin_ = wallTime - seconds(now_);
}

Instant ManualClock::now() {
    const MutexLock lock(mutex_);
    return now_;
}

double ManualClock::wallTime() {
    const MutexLock lock(mutex_);
    return wallTimeAtOrigin_ + seconds(now_);
}

bool ManualClock::waitUntil(locking::Mutex &mutex, locking::Condition &condition, Instant deadline) {
    std::list<Waiter>::iterator self;
    bool advances = false;
    {
        const MutexLock own(mutex_);
        if (now_ >= deadline)
            return false;
        advances = autoAdvance_ && deadline != Instant::distantFuture();
        // At the front: a waker under way, which walks to the back, does not meet the same thread for ever.
        if (!advances)
            self = waiters_.insert(waiters_.begin(), Waiter{&mutex, &condition});
    }
    if (advances) {
        const MutexUnlock released(mutex);
        advanceTo(std::min(deadline, alarms_->next()));
        return now() < deadline;
    }
    condition.wait(mutex);
    const MutexUnlock released(mutex); // a waker that has pinned us takes it
    const MutexLock own(mutex_);
    while (self->pins > 0)
        unpinned_.wait(mutex_);
    waiters_.erase(self);
    return now_ < deadline;
}

Alarm ManualClock::callAt(Instant deadline, std::function<void()> function) {
    return alarms_->add(deadline, std::move(function));
}

void ManualClock::wakeWaiters() {
    const MutexLock own(mutex_);
    for (auto waiter = waiters_.begin(); waiter != waiters_.end(); ++waiter) {
        ++waiter->pins;
        {
            const MutexUnlock released(mutex_);
            // Having had its mutex, we know it to be inside wait(), where the notification reaches it.
            { const MutexLock theirs(*waiter->mutex); }
            waiter->condition->notifyAll();
        }
        --waiter->pins;
        unpinned_.notifyAll();
    }
}

} // namespace dispatch
