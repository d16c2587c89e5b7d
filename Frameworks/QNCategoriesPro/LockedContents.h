// What the lock-guarded containers reach their contents through: the lock is held as long as this lives.
#pragma once

#include "Frameworks/QNCategoriesPro/SemaphoreLock.h"

/// `LockedContents(lock, contents)->operation(…)` holds the lock for that one operation, and gives it back
/// when the operation raises.
template <class Contents>
class LockedContents {
public:
    LockedContents(dispatch::Semaphore &lock, Contents &contents) : lock_(lock), contents_(contents) {}

    Contents &operator*() const { return contents_; }
    Contents *operator->() const { return &contents_; }

private:
    const SemaphoreLock lock_;
    Contents &contents_;
};
