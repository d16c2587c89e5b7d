#include "Platform/Dispatch/Queues/Semaphore.h"

#include "Platform/Dispatch/Time/Clock.h"

#include <thread>

namespace dispatch {

using locking::MutexLock;

// What is waited for is mostly short: giving way a few times is cheaper than going to sleep. Two threads at
// one guarded array use 0.8 times the processor time.
constexpr int yields = 20;

void Semaphore::waitSlowly() {
    for (int i = 0; i < yields; ++i) {
        std::this_thread::yield();
        if (tryWait())
            return;
    }
    const MutexLock lock(mutex_);
    state_.fetch_add(oneWaiter, std::memory_order_relaxed);
    while (!tryWait())
        signalled_.wait(mutex_);
    state_.fetch_sub(oneWaiter, std::memory_order_relaxed);
}

bool Semaphore::waitFor(Instant::Duration timeout) {
    if (tryWait())
        return true;
    Clock &clock = Clock::current();
    const Instant deadline = clock.now() + timeout;
    const MutexLock lock(mutex_);
    state_.fetch_add(oneWaiter, std::memory_order_relaxed);
    bool taken = tryWait();
    for (bool inTime = true; !taken && inTime; taken = tryWait())
        inTime = clock.waitUntil(mutex_, signalled_, deadline);
    state_.fetch_sub(oneWaiter, std::memory_order_relaxed);
    return taken;
}

// False when no thread waits any more. A waiting thread needs the mutex before it can return and destroy the
// semaphore, so with one waiting the semaphore lives until we unlock. With none, the thread that takes the
// permit may destroy it at once, so adding the permit must be our last access: `signal` does that.
bool Semaphore::signalWaiter() {
    const MutexLock lock(mutex_);
    if (waiters(state_.load(std::memory_order_relaxed)) == 0)
        return false;
    state_.fetch_add(1, std::memory_order_release);
    signalled_.notifyOne();
    return true;
}

} // namespace dispatch
