// What happens to blocks that cannot be run: those that are none, and all of them where no thread is left.
#include "Platform/Dispatch/Queues/ConcurrentQueue.h"
#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Dispatch/Queues/Pool.h"
#include "Platform/Dispatch/Queues/TimerSource.h"
#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Tests/Support/NoThreadLeft.h"
#include "Tests/Support/Raised.h"

namespace dispatch {

namespace {

TEST(RefusedBlocks, noCallTakesNone) {
    const Block none;
    ConcurrentQueue queue("refusing");
    ManualClock clock;
    const std::vector<std::function<void()>> calls = {
        [&] { globalQueue().async(none); },
        [&] { Pool::shared().submit(none); },
        [&] { mainQueue().async(none); },
        [&] { mainQueue().sync(none); },
        [&] { queue.async(none); },
        [&] { queue.barrierAsync(none); },
        [&] { queue.sync(none); },
        [&] { queue.barrierSync(none); },
        [&] { const auto alarm = clock.callAt(clock.now(), none); },
        [&] { const auto alarm = SystemClock::shared().callAt(Instant::distantFuture(), none); },
    };
    for (std::size_t i = 0; i < calls.size(); ++i)
        EXPECT_EQ(raised(calls[i]), NSInvalidArgumentException) << i;
    EXPECT_EQ(mainQueue().drain(), 0u);
    bool runs = false;
    queue.barrierSync([&] { runs = true; });
    EXPECT_TRUE(runs) << "what was refused holds nothing up";
}

/// Ends the process with 0 when everything without a thread is refused and left as if it had not been asked
/// for. In a process of its own, since threads of the pool stay.
[[noreturn]] void askWithoutThreads() {
    static auto &queue = *new ConcurrentQueue("threadless");
    static auto &ran = *new Semaphore(0);
    bool isRefused = true;
    {
        const NoThreadLeft none;
        for (const std::function<void()> &call : std::vector<std::function<void()>>{
                 [] { globalQueue().async([] { std::abort(); }); },
                 [] { queue.async([] { std::abort(); }); },
                 [] { queue.barrierAsync([] { std::abort(); }); },
                 [] { const auto alarm = SystemClock::shared().callAt(Instant::distantFuture(), [] {}); },
             })
            isRefused = isRefused && raised(call) == NSGenericException;
        queue.barrierSync([] {}); // no reader is left inside
    }
    queue.async([] { ran.signal(); });
    ran.wait();
    const auto alarm = SystemClock::shared().callAt(SystemClock::shared().now(), [] { ran.signal(); });
    ran.wait();
    const NoThreadLeft again; // the pool has one by now, and it blocks for a while
    for (int i = 0; i < 3; ++i)
        globalQueue().async([] { ran.signal(); });
    for (int i = 0; i < 3; ++i)
        ran.wait();
    std::quick_exit(isRefused ? 0 : 1);
}

TEST(RefusedBlocksDeathTest, withoutAnyThreadAskingRaises) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(askWithoutThreads(), testing::ExitedWithCode(0), "");
}

TEST(RefusedBlocks, aTickThatAQueueRefusesComesLater) {
    class Refusing final : public Queue {
    public:
        void async(Block block) override {
            if (refusals-- > 0)
                throw NSException(NSGenericException, "no room");
            blocks.push_back(std::move(block));
        }
        int refusals = 2;
        std::deque<Block> blocks;
    } queue;
    for (const auto period : {0ms, 1000ms}) {
        queue.refusals = 2;
        ManualClock clock;
        TimerSource timer(queue, clock);
        int ticks = 0;
        timer.setTimer(clock.now() + 1000ms, period);
        timer.setHandler([&] { ++ticks; });
        timer.resume();
        clock.advance(1150ms);
        EXPECT_TRUE(queue.blocks.empty());
        clock.advance(100ms);
        for (; !queue.blocks.empty(); queue.blocks.pop_front())
            queue.blocks.front()();
        EXPECT_EQ(ticks, 1);
        clock.advance(749ms);
        EXPECT_TRUE(queue.blocks.empty());
        clock.advance(1ms);
        EXPECT_EQ(queue.blocks.size(), period > 0ms ? 1u : 0u) << "back on the grid";
        queue.blocks.clear();
    }
}

} // namespace

} // namespace dispatch
