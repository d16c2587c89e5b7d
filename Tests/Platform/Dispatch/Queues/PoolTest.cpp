#include "Platform/Dispatch/Queues/Pool.h"
#include "Platform/Dispatch/Queues/Semaphore.h"
#include "Tests/Support/Testing.h"

#include <latch>

namespace dispatch {

TEST(Pool, blockedJobsDoNotHoldUpTheNext) {
    constexpr int blocked = 10;
    std::latch allBlocked(blocked);
    std::latch gate(1);
    Semaphore ended(0);
    for (int i = 0; i < blocked; ++i) {
        globalQueue().async([&] {
            allBlocked.count_down();
            gate.wait();
            ended.signal();
        });
    }
    allBlocked.wait();
    Semaphore eleventh(0);
    globalQueue().async([&] { eleventh.signal(); });
    eleventh.wait();
    gate.count_down();
    for (int i = 0; i < blocked; ++i)
        ended.wait();
}

TEST(Pool, shortJobsNeedFewThreads) {
    constexpr int jobs = 10'000;
    const std::size_t before = Pool::shared().threadCount();
    std::atomic<int> left = jobs;
    Semaphore done(0);
    std::size_t most = 0;
    for (int i = 0; i < jobs; ++i) {
        Pool::shared().submit([&] {
            if (left.fetch_sub(1) == 1)
                done.signal();
        });
        if (i % 100 == 0)
            most = std::max(most, Pool::shared().threadCount());
    }
    done.wait();
    most = std::max(most, Pool::shared().threadCount());
    EXPECT_LT(most, before + 64);
}

TEST(Pool, aJobIsReleasedWithItsRun) {
    Semaphore released(0);
    std::shared_ptr<void> token(nullptr, [&](void *) { released.signal(); });
    globalQueue().async([captured = std::move(token)] {});
    released.wait();
}

namespace {

void exitWithJobsBlocked() {
    static auto &started = *new Semaphore(0), &never = *new Semaphore(0); // still waited for at the end
    for (int i = 0; i < 3; ++i) {
        globalQueue().async([] {
            started.signal();
            never.wait();
        });
        started.wait();
    }
    std::exit(7);
}

} // namespace

TEST(PoolDeathTest, aProcessExitsWithJobsBlocked) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(exitWithJobsBlocked(), testing::ExitedWithCode(7), "");
}

} // namespace dispatch
