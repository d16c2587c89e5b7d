// The locks of two guarded containers, held while the two are compared.
#pragma once

#include "Frameworks/QNCategoriesPro/SemaphoreLock.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"

#pragma GCC visibility push(default)

/// Takes the lock of one container, then that of another, except a lock that the thread already holds: a
/// container may turn up again inside what is being compared.
class BothLocks {
public:
    BothLocks(const NSObject &one, dispatch::Semaphore &lock, const NSObject &other,
              dispatch::Semaphore &otherLock)
        : lock_(Visit::involves(one) ? nullptr : &lock),
          otherLock_(Visit::involves(other) ? nullptr : &otherLock), visit_(one, &other) {}
    BothLocks(const BothLocks &) = delete;
    BothLocks &operator=(const BothLocks &) = delete;

private:
    using Visit = ObjectVisit<BothLocks>;

    const SemaphoreLock lock_, otherLock_;
    const Visit visit_;
};

#pragma GCC visibility pop
