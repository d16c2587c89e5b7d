#include "Platform/Dispatch/Queues/Semaphore.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Tests/Support/OnThreads.h"

namespace dispatch {

TEST(Semaphore, countsAndExcludes) {
    Semaphore two(2);
    EXPECT_TRUE(two.tryWait());
    two.wait();
    EXPECT_FALSE(two.tryWait());

    Semaphore mutex(1);
    int value = 0;
    onThreads(4, [&](int) {
        for (int i = 0; i < 2000; ++i) {
            mutex.wait();
            ++value;
            mutex.signal();
        }
    });
    EXPECT_EQ(value, 8000);
    EXPECT_TRUE(mutex.tryWait());
    EXPECT_FALSE(mutex.tryWait()) << "no permit came from nowhere";
}

TEST(Semaphore, wakesEveryWaiterAndMayGoAtOnce) {
    Semaphore many(0);
    onThreads(6, [&](int i) { i < 3 ? many.wait() : many.signal(); });
    EXPECT_FALSE(many.tryWait());

    for (int i = 0; i < 200; ++i) {
        auto done = std::make_unique<Semaphore>(0);
        const auto signal = [semaphore = done.get()] { semaphore->signal(); };
        std::jthread first(signal), second(signal);
        done->wait();
        done->wait();
        done.reset(); // the signallers may still be on their way out
    }
}

TEST(Semaphore, waitForGivesUpByTheCurrentClock) {
    ManualClock clock;
    const ClockScope scope(clock);
    clock.setAutoAdvance(true);
    Semaphore semaphore(0);
    EXPECT_FALSE(semaphore.waitFor(3s));
    EXPECT_EQ(clock.now(), Instant() + 3s);
    const Alarm alarm = clock.callAt(clock.now() + 1s, [&] { semaphore.signal(); });
    EXPECT_TRUE(semaphore.waitFor(3s));
    EXPECT_EQ(clock.now(), Instant() + 4s);
    semaphore.signal();
    semaphore.wait(); // the waits that ended left no trace
    EXPECT_FALSE(semaphore.tryWait());
}

} // namespace dispatch
