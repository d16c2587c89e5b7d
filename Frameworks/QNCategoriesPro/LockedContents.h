// How guarded containers reach their contents: the lock is held as long as this object lives.
#pragma once

#include "Frameworks/QNCategoriesPro/SemaphoreLock.h"

#pragma GCC visibility push(default)

/// `LockedContents(lock, contents)->operation(…)` holds the lock for that one operation, and releases it also
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

#pragma GCC visibility pop
