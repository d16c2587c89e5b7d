// What two lock-guarded containers are compared under.
#pragma once

#include "Frameworks/QNCategoriesPro/SemaphoreLock.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"

/// Holds the lock of one container and then that of another, but for those that the thread holds already: a
/// container may be met again in what is being compared.
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
