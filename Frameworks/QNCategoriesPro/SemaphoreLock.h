// Holds a semaphore of count 1 for the length of a scope, as a lock: of containers that are reached through
// it alone (LockedContents, BothLocks). Which one it is, and whether there is one, is seen only as the
// program runs, so that nobody checks it; everybody else has a SemaphoreMutex.
#pragma once

#include "Platform/Dispatch/Queues/Semaphore.h"

#pragma GCC visibility push(default)

class SemaphoreLock {
public:
    explicit SemaphoreLock(dispatch::Semaphore &semaphore) : SemaphoreLock(&semaphore) {}
    /// Null locks nothing.
    explicit SemaphoreLock(dispatch::Semaphore *semaphore) : semaphore_(semaphore) {
        if (semaphore_)
            semaphore_->wait();
    }
    SemaphoreLock(const SemaphoreLock &) = delete;
    SemaphoreLock &operator=(const SemaphoreLock &) = delete;
    ~SemaphoreLock() {
        if (semaphore_)
            semaphore_->signal();
    }

private:
    dispatch::Semaphore *const semaphore_;
};

#pragma GCC visibility pop
