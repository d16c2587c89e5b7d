// A counting semaphore.
//
//     Semaphore done(0);
//     globalQueue().async([&] { work(); done.signal(); });
//     done.wait();
//
// Its count must stay below 2^32. Without contention a wait and a signal are one atomic exchange each. It is
// not fair: a running thread may overtake a sleeping one.
//
// Threads: every member is safe from every thread. What happened before a `signal()` is seen after the wait
// that it ended. The thread whose wait has ended may destroy the semaphore at once if no other thread waits.
#pragma once

#include "Platform/Dispatch/Time/Instant.h"
#include "Platform/Locking/Condition.h"

#include <atomic>
#include <cstdint>

#pragma GCC visibility push(default)

namespace dispatch {

class Semaphore {
public:
    explicit Semaphore(std::uint32_t count) noexcept : state_(count) {}
    Semaphore(const Semaphore &) = delete;
    Semaphore &operator=(const Semaphore &) = delete;

    /// Takes one from the count; blocks while it is 0.
    void wait() {
        if (!tryWait())
            waitSlowly();
    }

    /// Takes one from the count if it is not 0; never blocks.
    bool tryWait() noexcept {
        std::uint64_t state = state_.load(std::memory_order_relaxed);
        while (permits(state) > 0)
            if (state_.compare_exchange_weak(state, state - 1, std::memory_order_acquire,
                                             std::memory_order_relaxed))
                return true;
        return false;
    }

    /// Like `wait`, but returns false once `timeout` has passed by `Clock::current()`.
    bool waitFor(Instant::Duration timeout);

    /// Adds one to the count, and wakes a waiting thread if there is one.
    void signal() {
        do {
            std::uint64_t state = state_.load(std::memory_order_relaxed);
            while (waiters(state) == 0)
                if (state_.compare_exchange_weak(state, state + 1, std::memory_order_release,
                                                 std::memory_order_relaxed))
                    return;
        } while (!signalWaiter());
    }

private:
    // One word: permits in the low half, waiting threads in the high half. These change under the mutex,
    // which nobody checks, since the permits change without.
    static constexpr std::uint64_t oneWaiter = std::uint64_t{1} << 32;
    static constexpr std::uint64_t permits(std::uint64_t state) { return state & (oneWaiter - 1); }
    static constexpr std::uint64_t waiters(std::uint64_t state) { return state >> 32; }

    void waitSlowly();
    bool signalWaiter();

    std::atomic<std::uint64_t> state_;
    locking::Mutex mutex_;
    locking::Condition signalled_;
};

} // namespace dispatch

#pragma GCC visibility pop
