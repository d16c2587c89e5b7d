// Holds a semaphore of count 1 for the length of a scope, as a lock.
#pragma once

#include "Platform/Dispatch/Queues/Semaphore.h"

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
