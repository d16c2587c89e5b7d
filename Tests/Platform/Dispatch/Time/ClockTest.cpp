#include "Platform/Dispatch/Queues/Semaphore.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Tests/Support/OnThreads.h"

namespace dispatch {

TEST(Instant, saturatesAndKeepsNever) {
    const Instant never = Instant::distantFuture();
    const Instant first(Instant::Duration::min());
    EXPECT_EQ(never - 1h, never);
    EXPECT_EQ(never + -1h, never);
    EXPECT_EQ(Instant(Instant::Duration::max() - 1ns) + 5ns, never);
    EXPECT_EQ(first - 1ns, first);
    EXPECT_EQ(never - first, Instant::Duration::max());
    EXPECT_EQ(first - never, Instant::Duration::min());
    EXPECT_LT(first, Instant());
}

TEST(ManualClock, stepsThroughAlarmsInDeadlineOrder) {
    ManualClock clock(1000);
    const Instant start = clock.now();
    std::vector<std::pair<int, Instant::Duration>> runs;
    const auto note = [&](int name) { runs.emplace_back(name, clock.now() - start); };

    Alarm added;
    const Alarm late = clock.callAt(start + 3s, [&] { note(3); });
    const Alarm early = clock.callAt(start + 1s, [&] {
        note(1);
        added = clock.callAt(start + 2s, [&] { note(2); });
    });
    const Alarm second = clock.callAt(start + 3s, [&] { note(4); });
    const Alarm outside = clock.callAt(start + 5s, [&] { note(5); });

    clock.advance(4s);
    EXPECT_THAT(runs, ElementsAre(std::pair(1, 1s), std::pair(2, 2s), std::pair(3, 3s), std::pair(4, 3s)));
    EXPECT_EQ(clock.now(), start + 4s);
    EXPECT_DOUBLE_EQ(clock.wallTime(), 1004);

    const Alarm overdue = clock.callAt(start, [&] { note(6); });
    clock.setWallTime(50);
    clock.advance(0s);
    EXPECT_EQ(runs.back(), std::pair(6, Instant::Duration(4s)));
    EXPECT_DOUBLE_EQ(clock.wallTime(), 50);
}

TEST(ManualClock, alarmsCancelThemselvesAndOthers) {
    ManualClock clock;
    int runs = 0;
    auto witness = std::make_shared<int>();
    Alarm victim = clock.callAt(clock.now() + 2s, [witness] { ADD_FAILURE() << "was cancelled"; });
    Alarm self;
    self = clock.callAt(clock.now() + 1s, [&, witness] {
        ++runs;
        self.cancel();
        victim = Alarm();
        EXPECT_EQ(witness.use_count(), 2) << "the cancelled function is released";
    });
    EXPECT_EQ(witness.use_count(), 3);
    clock.advance(1h);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(witness.use_count(), 1) << "the function that ran is released";

    Alarm moved;
    {
        Alarm scoped = clock.callAt(clock.now() + 1s, [&] { ++runs; });
        moved = std::move(scoped);
    }
    clock.advance(1s);
    EXPECT_EQ(runs, 2) << "a moved alarm lives on";
}

TEST(ManualClock, advancesItselfForASingleThread) {
    ManualClock clock;
    clock.setAutoAdvance(true);
    locking::Mutex mutex;
    locking::Condition condition;
    const locking::MutexLock lock(mutex);
    const Instant deadline = clock.now() + 2s;
    EXPECT_FALSE(clock.waitUntil(mutex, condition, deadline));
    EXPECT_EQ(clock.now(), deadline);
}

TEST(ManualClock, advanceReachesEveryWaiter) {
    ManualClock clock;
    const Instant deadline = clock.now() + 1s;
    std::atomic<int> woken = 0;
    onThreads(5, [&](int thread) {
        if (thread == 0) {
            clock.advance(500ms);
            EXPECT_EQ(woken, 0);
            clock.advance(500ms); // wherever the others stand now, none may sleep on
            return;
        }
        locking::Mutex mutex;
        locking::Condition condition;
        const locking::MutexLock lock(mutex);
        while (clock.waitUntil(mutex, condition, deadline)) {
        }
        ++woken;
    });
    EXPECT_EQ(woken, 4);
}

TEST(Alarm, cancelWaitsForTheRunOnAnotherThread) {
    Semaphore running(0);
    Semaphore proceed(0);
    std::atomic<bool> ended = false;
    std::atomic<bool> cancelled = false;
    Clock &clock = SystemClock::shared();
    Alarm alarm = clock.callAt(clock.now(), [&] {
        running.signal();
        proceed.wait();
        EXPECT_FALSE(cancelled);
        ended = true;
    });
    running.wait();
    std::thread canceller([&] {
        alarm.cancel();
        cancelled = true;
        EXPECT_TRUE(ended);
    });
    proceed.signal();
    canceller.join();
}

TEST(SystemClock, runsAlarmsInOrderAndWaits) {
    Clock &clock = SystemClock::shared();
    Semaphore done(0);
    std::vector<int> order;
    const Instant base = clock.now();
    const Alarm never = clock.callAt(Instant::distantFuture(), [] { ADD_FAILURE(); });
    Alarm first, last;
    const Alarm both = clock.callAt(base, [&] { // on the clock's thread, where neither can run too early
        last = clock.callAt(base + 2ms, [&] {
            order.push_back(2);
            EXPECT_GE(clock.now(), base + 2ms);
            done.signal();
        });
        first = clock.callAt(base + 1ms, [&] { order.push_back(1); });
    });
    done.wait();
    EXPECT_THAT(order, ElementsAre(1, 2));

    locking::Mutex mutex;
    locking::Condition condition;
    const locking::MutexLock lock(mutex);
    const Instant deadline = clock.now() + 1ms;
    while (clock.waitUntil(mutex, condition, deadline)) {
    }
    EXPECT_GE(clock.now(), deadline);
}

TEST(ClockScope, nests) {
    ManualClock outer, inner;
    const ClockScope outerScope(outer);
    {
        const ClockScope innerScope(inner);
        EXPECT_EQ(&Clock::current(), &inner);
    }
    EXPECT_EQ(&Clock::current(), &outer);
}

} // namespace dispatch
