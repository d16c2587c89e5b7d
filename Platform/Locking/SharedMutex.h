// A mutex that one thread holds, or any number share.
#pragma once

#include "Platform/Locking/Mutex.h"

#include <shared_mutex>

#pragma GCC visibility push(default)

namespace locking {

class ZK_CAPABILITY("mutex") SharedMutex {
public:
    void lock() ZK_ACQUIRE() { native_.lock(); }
    void unlock() ZK_RELEASE() { native_.unlock(); }
    void lockShared() ZK_ACQUIRE_SHARED() { native_.lock_shared(); }
    void unlockShared() ZK_RELEASE_SHARED() { native_.unlock_shared(); }

private:
    std::shared_mutex native_;
};

/// Shares a mutex as long as the scope lives.
class ZK_SCOPED_CAPABILITY SharedMutexLock {
public:
    explicit SharedMutexLock(SharedMutex &mutex) ZK_ACQUIRE_SHARED(mutex) : mutex_(mutex) {
        mutex_.lockShared();
    }
    SharedMutexLock(const SharedMutexLock &) = delete;
    SharedMutexLock &operator=(const SharedMutexLock &) = delete;
    ~SharedMutexLock() ZK_RELEASE() { mutex_.unlockShared(); }

private:
    SharedMutex &mutex_;
};

} // namespace locking

#pragma GCC visibility pop
