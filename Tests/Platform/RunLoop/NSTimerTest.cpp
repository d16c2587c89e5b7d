#include "Platform/RunLoop/NSTimer.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Ticker.h"

#include <cmath>

using dispatch::Instant;

NS_IMPLEMENTATION(Ticker) {
    cls.method<&Ticker::tick>("tick:").method<&Ticker::tickWithoutTimer>("tick");
}

using NSTimerTest = OnManualClock;

TEST_F(NSTimerTest, firesOnItsGridHoweverLate) {
    const auto timer = add(2, ticks);
    EXPECT_FALSE(loop->runOnce(NSDefaultRunLoopMode));
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant(2s));
    EXPECT_FALSE(advanceAndRun(1999ms));
    EXPECT_TRUE(advanceAndRun(1ms));
    EXPECT_FALSE(loop->runOnce(NSDefaultRunLoopMode));
    EXPECT_TRUE(advanceAndRun(2500ms)); // 4.5
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant(6s));
    EXPECT_TRUE(advanceAndRun(100h));
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant(100h + 6s));
    EXPECT_TRUE(advanceAndRun(2s));
    EXPECT_THAT(ticks, ElementsAre(2000, 4500, 360004500, 360006500));
    timer->fire();
    EXPECT_EQ(ticks.size(), 5u);
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant(100h + 8s)) << "firing by hand moves nothing";
}

TEST_F(NSTimerTest, withoutRepeatEndsWhenFiredByHand) {
    const auto once = add(1, ticks, false);
    EXPECT_FALSE(once->repeats());
    EXPECT_EQ(once->timeInterval(), 0);
    once->fire();
    EXPECT_FALSE(once->isValid());
    once->fire();
    advanceAndRun(1s);
    EXPECT_THAT(ticks, ElementsAre(0));
}

TEST_F(NSTimerTest, keepsTargetAndUserInfoUntilItIsInvalid) {
    const auto target = make<Ticker>([](const Ref<NSTimer> &) {});
    const auto info = make<NSNumber>('i', std::int64_t{3});
    Weak<NSTimer> weak;
    {
        const auto timer = NSTimer::scheduledTimerWithTimeInterval(1, target, "tick:"_sel, info, true);
        weak = timer;
        loop->addTimer(timer, NSDefaultRunLoopMode);
        loop->addTimer(timer, NSRunLoopCommonModes);
        EXPECT_EQ(timer->userInfo(), info);
        EXPECT_EQ(target.use_count(), 2);
        EXPECT_EQ(info.use_count(), 2);
        target->onTick = [&](const Ref<NSTimer> &ticking) {
            EXPECT_EQ(ticking, weak.lock());
            ticks.push_back(milliseconds());
        };
        advanceAndRun(1s);
        EXPECT_EQ(ticks.size(), 1u) << "added twice, fires once";
        EXPECT_EQ(target.use_count(), 2) << "a tick leaves no owner behind";
        timer->invalidate();
        timer->invalidate();
        EXPECT_EQ(target.use_count() + info.use_count(), 2) << "let go at once";
        EXPECT_EQ(timer->userInfo(), nullptr);
        EXPECT_FALSE(timer->isValid());
        timer->fire();
    }
    EXPECT_FALSE(advanceAndRun(5s));
    EXPECT_TRUE(weak.expired()) << "out of every mode, though only one was served";
    EXPECT_EQ(ticks.size(), 1u);
}

TEST_F(NSTimerTest, mayEndInItsOwnTick) {
    Weak<Ticker> weakTarget;
    {
        const auto target = make<Ticker>([&](const Ref<NSTimer> &timer) {
            timer->invalidate();
            EXPECT_FALSE(weakTarget.expired()) << "alive while it runs";
            ticks.push_back(milliseconds());
        });
        weakTarget = target;
        NSTimer::scheduledTimerWithTimeInterval(1, target, "tick:"_sel, nullptr, true);
    }
    advanceAndRun(1s);
    EXPECT_TRUE(weakTarget.expired());
    EXPECT_THAT(ticks, ElementsAre(1000));
}

TEST_F(NSTimerTest, selectorsWithAndWithoutTheTimer) {
    Ref<NSTimer> given;
    const auto target = make<Ticker>([&](const Ref<NSTimer> &timer) { given = timer; });
    const auto fire = [&](const id &receiver, SEL selector) {
        given = nullptr;
        const auto timer = NSTimer::timerWithTimeInterval(1, receiver, selector, nullptr, true);
        timer->fire();
        return given == timer;
    };
    EXPECT_TRUE(fire(target, "tick:"_sel));
    EXPECT_FALSE(fire(target, "tick"_sel));
    EXPECT_FALSE(fire(nullptr, "tick:"_sel));
    EXPECT_THROW(fire(target, "tock:"_sel), NSException);
    EXPECT_THROW(fire(target, nullptr), NSException);
}

TEST_F(NSTimerTest, fireDateMovesTheGrid) {
    const auto timer = add(2, ticks);
    EXPECT_EQ(timer->fireDate()->timeIntervalSinceNow(), 2);
    timer->setFireDate(NSDate::distantPast());
    EXPECT_TRUE(loop->runOnce(NSDefaultRunLoopMode));
    EXPECT_FALSE(loop->runOnce(NSDefaultRunLoopMode)) << "once, whatever was missed";
    EXPECT_GT(loop->nextInstant(NSDefaultRunLoopMode), clock.now());
    EXPECT_LE(loop->nextInstant(NSDefaultRunLoopMode), clock.now() + 2s);

    timer->setFireDate(NSDate::dateWithTimeIntervalSinceNow(3));
    clock.setWallTime(1e9);
    EXPECT_NEAR(timer->fireDate()->timeIntervalSinceNow(), 3, 1e-6) << "dates follow the wall clock";
    EXPECT_NEAR(timer->fireDate()->timeIntervalSince1970(), 1e9 + 3, 1e-6);
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), clock.now() + 3s) << "waiting does not";
}

TEST_F(NSTimerTest, onesThatMayBeLateFireInCompany) {
    std::vector<std::int64_t> late;
    add(2, ticks);
    const auto patient = add(0.5, late);
    patient->setTolerance(1.75);
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), clock.now() + 2s);
    advanceAndRun(2s);
    EXPECT_THAT(late, ElementsAre(2000));
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), clock.now() + 2s) << "of the one that must not";
    advanceAndRun(700ms);
    EXPECT_THAT(late, ElementsAre(2000, 2700)) << "whatever the loop is awake for";
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), clock.now() + 1300ms);
    add(0.1, [](const Ref<NSTimer> &timer) { timer->invalidate(); });
    advanceAndRun(100ms);
    EXPECT_THAT(ticks, ElementsAre(2000)) << "tolerance is not earliness";
    EXPECT_THAT(late, ElementsAre(2000, 2700));
    patient->setTolerance(-1);
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant(3s)) << "on its grid still";
}

TEST_F(NSTimerTest, fireDateSetInATickWins) {
    double next = 0;
    const auto timer = add(2, [&](const Ref<NSTimer> &ticking) {
        ticks.push_back(milliseconds());
        ticking->setFireDate(NSDate::dateWithTimeIntervalSinceNow(next));
    });
    advanceAndRun(2s);
    EXPECT_TRUE(loop->runOnce(NSDefaultRunLoopMode)) << "to now: due again at once";
    next = 10;
    EXPECT_TRUE(loop->runOnce(NSDefaultRunLoopMode));
    EXPECT_FALSE(advanceAndRun(9s));
    EXPECT_TRUE(advanceAndRun(1s));
    EXPECT_THAT(ticks, ElementsAre(2000, 2000, 2000, 12000));
}

TEST_F(NSTimerTest, hasFiredThoughItsTargetRaises) {
    const auto failing = [&](const Ref<NSTimer> &) {
        ticks.push_back(milliseconds());
        throw NSException(NSGenericException, "tick");
    };
    const auto once = add(1, failing, false), again = add(2, failing);
    EXPECT_THROW(advanceAndRun(1s), NSException);
    EXPECT_FALSE(once->isValid());
    EXPECT_THROW(advanceAndRun(1s), NSException);
    EXPECT_FALSE(loop->runOnce(NSDefaultRunLoopMode));
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant(4s));
    EXPECT_THAT(ticks, ElementsAre(1000, 2000));
    EXPECT_THROW(again->setFireDate(nullptr), NSException);
}

TEST_F(NSTimerTest, strangeIntervals) {
    for (const double interval : {0.0, -1.0, 1e-12, 0.99e-9, static_cast<double>(NAN)}) {
        ticks.clear();
        const auto timer = add(interval, ticks);
        EXPECT_EQ(timer->timeInterval(), 0.0001);
        EXPECT_FALSE(advanceAndRun(99us));
        advanceAndRun(1us);
        advanceAndRun(1s);
        EXPECT_EQ(ticks.size(), 2u) << interval;
        timer->invalidate();
    }
    ticks.clear();
    for (const double interval : {1e11, 1e300, static_cast<double>(INFINITY)})
        add(interval, ticks)->fire();
    advanceAndRun(100000h);
    EXPECT_EQ(ticks.size(), 3u);
    EXPECT_EQ(loop->nextInstant(NSDefaultRunLoopMode), Instant::distantFuture());
}
