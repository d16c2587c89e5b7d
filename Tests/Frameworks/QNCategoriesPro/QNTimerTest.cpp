#include "Frameworks/QNCategoriesPro/QNTimer.h"
#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Testing.h"

#include <cmath>

namespace {

/// Owns a timer that calls back into it.
class Owner : public NSObject {
    NS_CLASS(Owner, NSObject)
public:
    ~Owner() override {
        if (timer)
            timer->invalidate();
    }
    void refresh(const Ref<QNTimer> &ticking) { onRefresh(ticking); }

    std::function<void(const Ref<QNTimer> &)> onRefresh;
    Ref<QNTimer> timer;
};
NS_IMPLEMENTATION(Owner) {
    cls.method<&Owner::refresh>("refresh:");
}

class QNTimerTest : public testing::Test {
protected:
    QNTimerTest() {
        owner->onRefresh = [this](const Ref<QNTimer> &ticking) {
            EXPECT_EQ(ticking, owner->timer);
            ticks.push_back(clock.now().sinceOrigin() / 1ms);
        };
    }
    ~QNTimerTest() override {
        owner = nullptr;
        dispatch::mainQueue().drain();
    }

    Ref<QNTimer> start(double interval, bool repeats = true) {
        return owner->timer = QNTimer::timerWithTimeInterval(interval, owner, refresh, repeats);
    }
    void advanceAndDrain(dispatch::Instant::Duration duration) {
        clock.advance(duration);
        dispatch::mainQueue().drain();
    }

    const SEL refresh = sel_registerName("refresh:");
    dispatch::ManualClock clock;
    const dispatch::ClockScope scope{clock};
    Ref<Owner> owner = make<Owner>();
    std::vector<std::int64_t> ticks;
};

} // namespace

TEST_F(QNTimerTest, ticksOnTheMainQueueFromConstructionOn) {
    const auto timer = start(2.0);
    EXPECT_EQ(owner.use_count(), 1) << "the target is held weakly";
    for (int i = 0; i < 6; ++i)
        advanceAndDrain(1s);
    EXPECT_THAT(ticks, ElementsAre(2000, 4000, 6000));
    timer->fire();
    EXPECT_EQ(ticks.size(), 4u) << "by hand";
    ticks.clear();
    owner->timer = QNTimer::initWithFireTime(0.5, 2.0, owner, refresh, true);
    timer->invalidate();
    for (int i = 0; i < 10; ++i)
        advanceAndDrain(500ms);
    EXPECT_THAT(ticks, ElementsAre(6500, 8500, 10500));
}

TEST_F(QNTimerTest, goesOnRepeatingWhateverItsInterval) {
    for (const double interval : {0.0, -1.0, -1e300, 1e-12, 0.99e-9, static_cast<double>(NAN)}) {
        const auto timer = owner->timer = QNTimer::initWithFireTime(0.001, interval, owner, refresh, true);
        ticks.clear();
        advanceAndDrain(1ms);
        EXPECT_EQ(ticks.size(), 1u);
        for (int i = 0; i < 3; ++i) {
            advanceAndDrain(99us);
            EXPECT_EQ(ticks.size(), static_cast<std::size_t>(i + 1)) << interval;
            advanceAndDrain(1us);
            EXPECT_EQ(ticks.size(), static_cast<std::size_t>(i + 2)) << interval;
        }
        EXPECT_TRUE(timer->isValid());
        EXPECT_TRUE(std::isnan(interval) || timer->timeInterval() == interval) << "as it was given";
    }
}

TEST_F(QNTimerTest, withoutRepeatNeverReachesItsTarget) {
    const auto timer = start(1, false);
    EXPECT_FALSE(timer->repeats());
    advanceAndDrain(999ms);
    EXPECT_TRUE(timer->isValid());
    advanceAndDrain(1ms);
    EXPECT_FALSE(timer->isValid());
    start(1, false)->fire();
    EXPECT_FALSE(owner->timer->isValid());
    advanceAndDrain(5s);
    EXPECT_THAT(ticks, IsEmpty());
}

TEST_F(QNTimerTest, endsWhenItsTargetHasGone) {
    auto target = make<Owner>();
    const auto timer = QNTimer::timerWithTimeInterval(1, target, refresh, true);
    target = nullptr;
    EXPECT_TRUE(timer->isValid()) << "not noticed before the next tick";
    advanceAndDrain(1s);
    EXPECT_FALSE(timer->isValid());
    const auto without = QNTimer::timerWithTimeInterval(1, nullptr, refresh, true);
    without->fire();
    EXPECT_FALSE(without->isValid());
    EXPECT_EQ(without->timeInterval(), 1) << "still readable";
}

TEST_F(QNTimerTest, invalidateInsideATickAndAgain) {
    const auto timer = start(1);
    owner->onRefresh = [&](const Ref<QNTimer> &ticking) {
        ticks.push_back(1);
        ticking->invalidate();
        EXPECT_FALSE(ticking->isValid());
        ticking->invalidate();
    };
    advanceAndDrain(1s);
    advanceAndDrain(5s);
    timer->fire();
    EXPECT_THAT(ticks, ElementsAre(1)) << "and firing by hand reaches nobody";
}

TEST_F(QNTimerTest, aQueuedTickIsLostWithTheTimer) {
    start(1);
    clock.advance(1s);
    owner->timer->invalidate();
    dispatch::mainQueue().drain();
    start(1);
    clock.advance(1s);
    const Weak<QNTimer> weak = owner->timer;
    owner->timer = nullptr;
    EXPECT_TRUE(weak.expired()) << "neither source nor queue keeps it";
    dispatch::mainQueue().drain();
    advanceAndDrain(5s);
    EXPECT_THAT(ticks, IsEmpty());
}

TEST_F(QNTimerTest, targetMayGoInItsOwnTick) {
    start(1);
    const Weak<Owner> weakOwner = owner;
    const Weak<QNTimer> weakTimer = owner->timer;
    owner->onRefresh = [&](const Ref<QNTimer> &) {
        owner = nullptr;
        ticks.push_back(weakOwner.expired());
    };
    advanceAndDrain(1s);
    EXPECT_THAT(ticks, ElementsAre(0)) << "kept for the length of the tick";
    EXPECT_TRUE(weakOwner.expired());
    EXPECT_TRUE(weakTimer.expired()) << "the owner's end ended the timer";
    advanceAndDrain(1s);
    EXPECT_EQ(ticks.size(), 1u);
    owner = make<Owner>();
}

TEST_F(QNTimerTest, anyThreadMayAskInvalidateAndLetGo) {
    for (int round = 0; round < 100; ++round) {
        const auto timer = start(0.001);
        owner->onRefresh = [&](const Ref<QNTimer> &ticking) { ticks.push_back(ticking->timeInterval() > 0); };
        std::thread asking([&] {
            while (timer->isValid())
                EXPECT_TRUE(timer->repeats() && timer->timeInterval() == 0.001);
        });
        std::thread ending([&] { timer->invalidate(); });
        auto other = QNTimer::timerWithTimeInterval(0.001, owner, refresh, true);
        std::thread releasing([last = std::move(other)]() mutable { last = nullptr; });
        for (int i = 0; i < 5; ++i)
            advanceAndDrain(1ms);
        for (std::thread *thread : {&asking, &ending, &releasing})
            thread->join();
        const std::size_t before = ticks.size();
        advanceAndDrain(10ms);
        EXPECT_EQ(ticks.size(), before) << "nothing after the end";
    }
}
