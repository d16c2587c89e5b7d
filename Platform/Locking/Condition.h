// A condition variable for what a Mutex guards.
#pragma once

#include "Platform/Locking/Mutex.h"

#include <chrono>
#include <condition_variable>

#pragma GCC visibility push(default)

namespace locking {

/// Waiting ends when it is notified, and may end without that.
class Condition {
public:
    void wait(Mutex &mutex) ZK_REQUIRES(mutex) {
        Adopted lock(mutex.native_);
        native_.wait(lock);
    }
    /// Waits until `end` at the latest; false when that has come.
    bool waitUntil(Mutex &mutex, std::chrono::steady_clock::time_point end) ZK_REQUIRES(mutex) {
        Adopted lock(mutex.native_);
        return native_.wait_until(lock, end) == std::cv_status::no_timeout;
    }

    void notifyOne() { native_.notify_one(); }
    void notifyAll() { native_.notify_all(); }

private:
    /// A mutex that the caller has locked, and will unlock.
    struct Adopted : std::unique_lock<std::mutex> {
        explicit Adopted(std::mutex &mutex) : unique_lock(mutex, std::adopt_lock) {}
        ~Adopted() { release(); }
    };

    std::condition_variable native_;
};

} // namespace locking

#pragma GCC visibility pop
