#include "Platform/Locking/Condition.h"
#include "Platform/Locking/SharedMutex.h"
#include "Tests/Support/OnThreads.h"

#include <gtest/gtest.h>

namespace locking {

namespace {

/// Lets threads go on in an order.
class Turns {
public:
    void take(int turn) {
        const MutexLock lock(mutex_);
        while (next_ != turn)
            changed_.wait(mutex_);
        ++next_;
        changed_.notifyAll();
    }

private:
    Mutex mutex_;
    Condition changed_;
    int next_ ZK_GUARDED_BY(mutex_) = 0;
};

/// Counted up without an atomic, so that a count is lost, and a sanitizer complains, where nothing is locked.
template <class Lockable>
struct Count {
    Lockable mutex;
    int value ZK_GUARDED_BY(mutex) = 0;
};

template <class Lockable>
int countOfFourThreads() {
    Count<Lockable> count;
    dispatch::onThreads(4, [&](int) {
        for (int i = 0; i < 1000; ++i) {
            const MutexLock lock(count.mutex);
            ++count.value;
        }
    });
    const MutexLock lock(count.mutex);
    return count.value;
}

} // namespace

TEST(Mutex, isHeldByOneAtATime) {
    EXPECT_EQ(countOfFourThreads<Mutex>(), 4000);
    EXPECT_EQ(countOfFourThreads<SharedMutex>(), 4000);
}

TEST(Mutex, isGivenAwayForAScope) {
    Turns turns;
    Count<Mutex> count;
    dispatch::onThreads(2, [&](int thread) {
        if (thread == 0) {
            const MutexLock lock(count.mutex);
            turns.take(0);
            {
                const MutexUnlock released(count.mutex);
                turns.take(3);
            }
            ++count.value;
        } else {
            turns.take(1); // the other one has it
            const MutexLock lock(count.mutex);
            turns.take(2);
            ++count.value;
        }
    });
    const MutexLock lock(count.mutex);
    EXPECT_EQ(count.value, 2);
}

TEST(SharedMutex, isSharedByAnyNumber) {
    SharedMutex mutex;
    Turns turns;
    dispatch::onThreads(4, [&](int thread) {
        const SharedMutexLock lock(mutex);
        turns.take(thread);
        turns.take(7 - thread); // when all are inside
    });
    const MutexLock lock(mutex); // which all have left
}

TEST(Condition, waitsUntilAMomentAtMost) {
    Mutex mutex;
    Condition never;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(1);
    const MutexLock lock(mutex);
    while (never.waitUntil(mutex, end)) {
    }
    EXPECT_GE(std::chrono::steady_clock::now(), end);
}

} // namespace locking
