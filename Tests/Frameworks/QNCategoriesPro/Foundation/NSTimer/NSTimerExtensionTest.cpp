#include "Frameworks/QNCategoriesPro/Foundation/NSTimer/NSTimer+QNCommon.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/Ticker.h"

namespace {

class NSTimerExtensionTest : public OnManualClock {
protected:
    ~NSTimerExtensionTest() override { timer->invalidate(); }

    Ref<qn::TimerBlock> noting() {
        return makeBlock<void(const Ref<NSTimer> &)>([this, held = witness](const Ref<NSTimer> &ticking) {
            EXPECT_EQ(ticking, timer);
            ticks.push_back(milliseconds());
        });
    }

    const std::shared_ptr<int> witness = std::make_shared<int>();
    Ref<NSTimer> timer;
};

} // namespace

TEST_F(NSTimerExtensionTest, theTimerClassRunsBlocksFromTheStart) {
    timer = NSTimer::timerWithTimeInterval(1, NSTimer::class_()->self(), sel_registerName("_qn_ExecBlock:"),
                                           noting(), true);
    timer->fire(); // before anything made a block timer
    EXPECT_EQ(ticks.size(), 1u);
}

TEST_F(NSTimerExtensionTest, scheduledBlockTimerRunsUntilInvalidated) {
    timer = qn::scheduledTimerWithTimeInterval(2.0, noting(), true);
    EXPECT_EQ(timer->timeInterval(), 2.0);
    EXPECT_EQ(witness.use_count(), 2) << "the timer holds the block";
    timer->fire();
    for (int i = 0; i < 4; ++i)
        advanceAndRun(1s);
    EXPECT_THAT(ticks, ElementsAre(0, 2000, 4000));
    timer->invalidate();
    EXPECT_EQ(witness.use_count(), 1);
}

TEST_F(NSTimerExtensionTest, withoutRepeatAndUnscheduled) {
    timer = qn::scheduledTimerWithTimeInterval(1, noting(), false);
    advanceAndRun(1s);
    EXPECT_FALSE(timer->isValid());
    timer = qn::timerWithTimeInterval(1, noting(), true);
    advanceAndRun(1s);
    EXPECT_THAT(ticks, ElementsAre(1000)) << "no run loop has it yet";
    loop->addTimer(timer, NSDefaultRunLoopMode);
    advanceAndRun(0s);
    EXPECT_THAT(ticks, ElementsAre(1000, 2000));
}

TEST_F(NSTimerExtensionTest, aBlockMayEndItsTimer) {
    timer = qn::scheduledTimerWithTimeInterval(
        1, makeBlock<void(const Ref<NSTimer> &)>([&, held = witness](const Ref<NSTimer> &ticking) {
            ticking->invalidate();
            EXPECT_EQ(held.use_count(), 2) << "alive while it runs";
            ticks.push_back(1);
        }),
        true);
    advanceAndRun(5s);
    EXPECT_THAT(ticks, ElementsAre(1));
    EXPECT_EQ(witness.use_count(), 1);
}

TEST_F(NSTimerExtensionTest, execBlockNeedsABlock) {
    for (const id &info :
         {id(), id(u"no block"_ns), id(makeBlock<void()>([this] { ticks.push_back(-1); }))}) {
        timer = NSTimer::timerWithTimeInterval(1, nullptr, nullptr, info, true);
        qn::_qn_ExecBlock(timer);
    }
    qn::_qn_ExecBlock(nullptr);
    timer = qn::timerWithTimeInterval(1, nullptr, true);
    timer->fire();
    EXPECT_TRUE(ticks.empty());
}

TEST_F(NSTimerExtensionTest, pausesAndResumes) {
    timer = qn::scheduledTimerWithTimeInterval(2, noting(), true);
    advanceAndRun(2s);
    qn::pauseTimer(timer);
    advanceAndRun(1000s);
    EXPECT_TRUE(timer->fireDate()->isEqual(NSDate::distantFuture()));
    qn::resumeTimer(timer);
    advanceAndRun(0s);
    advanceAndRun(2s);
    qn::resumeTimerAfterTimeInterval(timer, 5);
    advanceAndRun(4s);
    advanceAndRun(1s);
    EXPECT_THAT(ticks, ElementsAre(2000, 1002000, 1004000, 1009000));

    timer->invalidate();
    const auto date = timer->fireDate();
    qn::pauseTimer(timer);
    qn::resumeTimerAfterTimeInterval(timer, 77);
    qn::resumeTimer(timer);
    EXPECT_TRUE(timer->fireDate()->isEqual(date)) << "untouched";
    qn::pauseTimer(nullptr);
    qn::resumeTimer(nullptr);
}
