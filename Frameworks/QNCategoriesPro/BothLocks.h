// What two lock-guarded containers are compared under.
#pragma once

#include "Frameworks/QNCategoriesPro/SemaphoreLock.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"

#include <optional>

/// Holds the lock of one container and then that of another, but for those that the thread holds already: a
/// container may be met again in what is being compared.
class BothLocks {
public:
    BothLocks(const NSObject &one, dispatch::Semaphore &lock, const NSObject &other,
              dispatch::Semaphore &otherLock) {
        if (!Visit::involves(one))
            lock_.emplace(lock);
        if (!Visit::involves(other))
            otherLock_.emplace(otherLock);
        visit_.emplace(one, &other);
    }
    BothLocks(const BothLocks &) = delete;
    BothLocks &operator=(const BothLocks &) = delete;

private:
    using Visit = ObjectVisit<BothLocks>;

    std::optional<SemaphoreLock> lock_, otherLock_;
    std::optional<Visit> visit_;
};
