#include "Platform/Dispatch/Queues/TimerSource.h"
#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Dispatch/Queues/Semaphore.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Runtime/Object/NSException.h"
#include "Tests/Support/Testing.h"

namespace dispatch {

class TimerSourceTest : public testing::Test {
protected:
    void advanceAndDrain(Instant::Duration duration) {
        clock.advance(duration);
        mainQueue().drain();
    }
    void start(Instant::Duration delay, Instant::Duration period) {
        source->setTimer(clock.now() + delay, period);
        source->setHandler([this, held = witness] { ticks.push_back((clock.now() - origin) / 1ms); });
        source->resume();
    }

    ManualClock clock;
    const Instant origin = clock.now();
    std::shared_ptr<int> witness = std::make_shared<int>();
    std::vector<std::int64_t> ticks; // milliseconds since the origin
    std::optional<TimerSource> source{std::in_place, mainQueue(), clock};
};

TEST_F(TimerSourceTest, ticksFromStartOnTheGrid) {
    start(10ms, 20ms);
    source->resume();
    advanceAndDrain(9ms);
    EXPECT_THAT(ticks, IsEmpty());
    for (int i = 0; i < 5; ++i)
        advanceAndDrain(10ms);
    EXPECT_THAT(ticks, ElementsAre(19, 39, 59)) << "due at 10, 30 and 50, drained later";
}

TEST_F(TimerSourceTest, mergesAndSkipsMissedTicks) {
    start(10ms, 10ms);
    advanceAndDrain(1055ms);
    EXPECT_THAT(ticks, ElementsAre(1055)) << "105 due ticks are one";
    advanceAndDrain(5ms);
    EXPECT_THAT(ticks, ElementsAre(1055, 1060)) << "still on the grid";

    ticks.clear();
    source->setTimer(clock.now() - 25ms, 10ms);
    advanceAndDrain(0ms);
    advanceAndDrain(4ms);
    EXPECT_THAT(ticks, ElementsAre(1060)) << "a start in the past ticks at once";
    advanceAndDrain(1ms);
    EXPECT_THAT(ticks, ElementsAre(1060, 1065));
}

TEST_F(TimerSourceTest, keepsTicksDueWhileTheHandlerRuns) {
    int depth = 0;
    source->setTimer(origin + 10ms, 10ms);
    source->setHandler([&] {
        EXPECT_EQ(++depth, 1) << "never two handlers at a time";
        ticks.push_back((clock.now() - origin) / 1ms);
        if (ticks.size() == 1)
            advanceAndDrain(35ms); // a nested loop
        --depth;
    });
    source->resume();
    advanceAndDrain(10ms);
    EXPECT_THAT(ticks, ElementsAre(10));
    mainQueue().drain();
    EXPECT_THAT(ticks, ElementsAre(10, 45)) << "three kept as one";
    EXPECT_EQ(mainQueue().drain(), 0U);
}

TEST_F(TimerSourceTest, ticksOnAfterItsHandlerRaised) {
    source->setTimer(origin + 10ms, 10ms);
    source->setHandler([&] {
        ticks.push_back((clock.now() - origin) / 1ms);
        if (ticks.size() < 3)
            throw NSException(NSGenericException, "tick");
    });
    source->resume();
    for (int i = 0; i < 2; ++i)
        EXPECT_THROW(advanceAndDrain(10ms), NSException);
    advanceAndDrain(10ms);
    EXPECT_THAT(ticks, ElementsAre(10, 20, 30));
}

TEST_F(TimerSourceTest, oneShotAndNever) {
    start(10ms, 0ms);
    advanceAndDrain(1s);
    advanceAndDrain(1s);
    EXPECT_THAT(ticks, ElementsAre(1000));
    source->setTimer(clock.now(), -5ms);
    clock.advance(0ms);
    source->setTimer(Instant::distantFuture(), 1ms);
    mainQueue().drain();
    advanceAndDrain(1h);
    EXPECT_THAT(ticks, ElementsAre(1000)) << "a new schedule drops the waiting tick";
}

TEST_F(TimerSourceTest, cancelAndDestructionStopAQueuedTickAndRelease) {
    for (const auto waited : {0ms, 10ms}) {
        for (const bool destroy : {false, true}) {
            source.emplace(mainQueue(), clock);
            start(10ms, 10ms);
            EXPECT_EQ(witness.use_count(), 2);
            clock.advance(waited);
            destroy ? source.reset() : source->cancel();
            EXPECT_EQ(witness.use_count(), 1);
            mainQueue().drain();
        }
    }
    source.emplace(mainQueue(), clock);
    source->cancel();
    start(10ms, 10ms);
    advanceAndDrain(1s);
    EXPECT_THAT(ticks, IsEmpty()) << "cancelled for good";
    EXPECT_EQ(witness.use_count(), 1);
}

TEST_F(TimerSourceTest, handlerMayCancelOrDestroyItsSource) {
    for (const bool destroy : {false, true}) {
        source.emplace(mainQueue(), clock);
        source->setTimer(clock.now(), 10ms);
        source->setHandler([&, destroy, held = witness] {
            ticks.push_back(1);
            destroy ? source.reset() : source->cancel();
            EXPECT_EQ(held.use_count(), 2) << "not released while running";
        });
        source->resume();
        advanceAndDrain(15ms);
        advanceAndDrain(1s);
        EXPECT_EQ(witness.use_count(), 1);
    }
    EXPECT_THAT(ticks, ElementsAre(1, 1));
}

TEST_F(TimerSourceTest, ticksOnThePoolWhileOthersChangeIt) {
    struct Witness { // outlives the test with a handler that is still running then
        Semaphore ticked{0};
        std::atomic<int> inside = 0;
    };
    const auto seen = std::make_shared<Witness>();
    const auto handler = [seen] {
        EXPECT_EQ(++seen->inside, 1);
        --seen->inside;
        seen->ticked.signal();
    };
    Clock &system = SystemClock::shared();
    source.emplace(globalQueue(), system);
    source->resume();
    for (int i = 0; i < 50; ++i) {
        source->setHandler(handler);
        source->setTimer(system.now(), 10us);
        seen->ticked.wait();
    }
}

} // namespace dispatch
