#include "Platform/RunLoop/NSRunLoop.h"
#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Runtime/Object/NSException.h"
#include "Tests/Support/Ticker.h"

using dispatch::Instant;
using dispatch::mainQueue;

using NSRunLoopTest = OnManualClock;

TEST_F(NSRunLoopTest, timersFireInTheirModesOnly) {
    std::vector<std::int64_t> both;
    add(1, ticks);
    add(1, both, true, NSRunLoopCommonModes);
    advanceAndRun(3500ms, NSModalPanelRunLoopMode);
    EXPECT_THAT(ticks, IsEmpty());
    EXPECT_THAT(both, ElementsAre(3500));
    EXPECT_EQ(loop->nextInstant(NSModalPanelRunLoopMode), Instant(4s));
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant(1s)) << "overdue";
    EXPECT_EQ(loop->nextInstant("another mode"), Instant::distantFuture());
    EXPECT_FALSE(loop->runOnce("another mode"));
    EXPECT_TRUE(loop->runOnce(NSDefaultRunLoopMode));
    EXPECT_FALSE(loop->runOnce(NSDefaultRunLoopMode)) << "once for all it missed";
    EXPECT_THAT(ticks, ElementsAre(3500));
    advanceAndRun(500ms);
    EXPECT_THAT(ticks, ElementsAre(3500, 4000));
    EXPECT_THAT(both, ElementsAre(3500, 4000));
}

TEST_F(NSRunLoopTest, servesByDateAndLooksAgainBeforeEachTimer) {
    std::vector<std::string> order;
    const auto note = [&](const char *name) {
        return [&order, name](const Ref<NSTimer> &) { order.push_back(name); };
    };
    Ref<NSTimer> ended, moved;
    add(3, note("third"));
    const auto first = add(1, [&](const Ref<NSTimer> &) {
        order.push_back("first");
        ended->invalidate();
        moved->setFireDate(NSDate::dateWithTimeIntervalSinceNow(60));
        add(0.5, note("added"))->setFireDate(NSDate::date());
    });
    ended = add(2, note("ended"));
    moved = add(2, note("moved"));
    mainQueue().async([&] { order.push_back("main queue"); });
    advanceAndRun(4s);
    EXPECT_THAT(order, ElementsAre("main queue", "first", "third"));
    loop->runOnce(NSDefaultRunLoopMode);
    EXPECT_THAT(order, ElementsAre("main queue", "first", "third", "added"))
        << "a new one waits for its turn";
    first->invalidate();
}

TEST_F(NSRunLoopTest, aTickMayRunANestedLoop) {
    std::vector<std::int64_t> others, modal;
    const auto nesting = add(1, [&](const Ref<NSTimer> &) {
        ticks.push_back(milliseconds());
        EXPECT_EQ(loop->currentMode(), NSDefaultRunLoopMode);
        advanceAndRun(10s); // the same mode again
        advanceAndRun(500ms, NSModalPanelRunLoopMode);
        EXPECT_EQ(loop->currentMode(), NSDefaultRunLoopMode);
    });
    add(1, others);
    add(2, modal, true, NSModalPanelRunLoopMode);
    advanceAndRun(1s);
    EXPECT_THAT(ticks, ElementsAre(1000)) << "not while it runs";
    EXPECT_THAT(others, ElementsAre(11000)) << "and the outer round does not fire it again";
    EXPECT_THAT(modal, ElementsAre(11500));
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant(12s)) << "back on the grid";
    EXPECT_EQ(loop->currentMode(), "");
}

TEST_F(NSRunLoopTest, stopEndsTheInnermostRun) {
    clock.setAutoAdvance(true);
    std::vector<std::string> order;
    add(
        1,
        [&](const Ref<NSTimer> &) {
            order.push_back("outer tick");
            add(
                1, [&](const Ref<NSTimer> &) { loop->stop(); }, false, NSModalPanelRunLoopMode);
            mainQueue().async([&] { order.push_back("main queue in mode " + loop->currentMode()); });
            loop->run(NSModalPanelRunLoopMode);
            order.push_back("inner ended");
            if (order.size() > 5)
                loop->stop();
        },
        true);
    loop->run(NSDefaultRunLoopMode);
    const std::string served = "main queue in mode " + std::string(NSModalPanelRunLoopMode);
    EXPECT_THAT(order, ElementsAre("outer tick", served, "inner ended", "outer tick", served, "inner ended"));
    EXPECT_EQ(milliseconds(), 4000);
}

TEST_F(NSRunLoopTest, runsUntilADate) {
    clock.setAutoAdvance(true);
    add(2, ticks);
    EXPECT_FALSE(loop->runUntilDate(NSDefaultRunLoopMode, NSDate::dateWithTimeIntervalSinceNow(5)));
    EXPECT_EQ(milliseconds(), 5000);
    EXPECT_THAT(ticks, ElementsAre(2000, 4000));
    mainQueue().async([&] { ticks.push_back(-1); });
    EXPECT_FALSE(loop->runUntilDate(NSDefaultRunLoopMode, NSDate::distantPast()))
        << "serves once all the same";
    EXPECT_THAT(ticks, ElementsAre(2000, 4000, -1));
    mainQueue().async([&] { loop->stop(); });
    EXPECT_TRUE(loop->runUntilDate(NSDefaultRunLoopMode, NSDate::distantFuture()));
    EXPECT_EQ(milliseconds(), 5000);
    EXPECT_EQ(loop->currentMode(), "");
}

TEST_F(NSRunLoopTest, anotherThreadEndsTheWait) {
    std::thread worker([&] {
        mainQueue().async([&] { ticks.push_back(1); }); // wakes the loop by itself
        mainQueue().sync([&] { ticks.push_back(2); });
        loop->wakeUp();
        loop->stop();
    });
    loop->run(NSDefaultRunLoopMode);
    worker.join();
    EXPECT_THAT(ticks, ElementsAre(1, 2));

    std::thread clockMover([&] {
        mainQueue().sync([&] {
            add(
                60, [&](const Ref<NSTimer> &) { loop->stop(); }, false);
        });
        clock.advance(1min);
    });
    loop->run(NSDefaultRunLoopMode);
    clockMover.join();
    EXPECT_EQ(milliseconds(), 60000);
}

TEST_F(NSRunLoopTest, tellsItsHostWhenToServe) {
    int wakes = 0;
    loop->setWaker([&] { ++wakes; });
    const auto timer = add(1, ticks);
    EXPECT_EQ(wakes, 1) << "a timer was added";
    timer->setFireDate(NSDate::distantFuture());
    EXPECT_EQ(wakes, 1) << "a later date can wait";
    timer->setFireDate(NSDate::dateWithTimeIntervalSinceNow(1));
    EXPECT_EQ(std::exchange(wakes, 1), 2) << "a nearer one cannot";
    mainQueue().async([] {});
    EXPECT_EQ(wakes, 2);
    loop->wakeUp();
    EXPECT_EQ(wakes, 3);
    loop->setWaker(nullptr);
    loop->wakeUp();
    loop->runOnce(NSDefaultRunLoopMode);
    EXPECT_EQ(wakes, 3);
    EXPECT_THROW(loop->runUntilDate(NSDefaultRunLoopMode, nullptr), NSException);
}

TEST_F(NSRunLoopTest, aFormerWakerRunsNoMore) {
    for (int round = 0; round < 100; ++round) {
        auto host = std::make_unique<int>(0);
        loop->setWaker([raw = host.get()] { ++*raw; });
        std::thread worker([&] {
            for (int i = 0; i < 20; ++i)
                loop->wakeUp();
        });
        loop->setWaker(nullptr);
        host = nullptr;
        worker.join();
    }
}

TEST_F(NSRunLoopTest, everyThreadHasItsOwn) {
    clock.setAutoAdvance(true);
    mainQueue().async([&] { ticks.push_back(-1); });
    Weak<NSRunLoop> theirs;
    std::thread worker([&] {
        const auto own = NSRunLoop::currentRunLoop();
        theirs = own;
        EXPECT_NE(own, loop);
        EXPECT_EQ(own, NSRunLoop::currentRunLoop());
        const auto target = make<Ticker>([&](const Ref<NSTimer> &) {
            ticks.push_back(milliseconds());
            own->stop();
        });
        NSTimer::scheduledTimerWithTimeInterval(1, target, sel_registerName("tick:"), nullptr, false);
        own->run(NSDefaultRunLoopMode);
    });
    worker.join();
    EXPECT_THAT(ticks, ElementsAre(1000)) << "the main queue is not theirs";
    EXPECT_TRUE(theirs.expired());
    EXPECT_EQ(NSRunLoop::currentRunLoop(), loop);
    loop->runOnce(NSDefaultRunLoopMode);
    EXPECT_THAT(ticks, ElementsAre(1000, -1));
}
