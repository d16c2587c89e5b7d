#include "Platform/Dispatch/Queues/ConcurrentQueue.h"
#include "Platform/Dispatch/Queues/Semaphore.h"
#include "Tests/Support/OnThreads.h"
#include "Tests/Support/Random.h"

#include <latch>

namespace dispatch {

TEST(ConcurrentQueue, returnsValuesReferencesAndExceptions) {
    ConcurrentQueue queue("label");
    EXPECT_EQ(queue.label(), "label");
    std::string text = "a";
    std::string &same = queue.barrierSync([&]() -> std::string & { return text += "b"; });
    EXPECT_EQ(&same, &text);
    EXPECT_EQ(*queue.sync([&] { return std::make_unique<std::string>(text); }), "ab");
    EXPECT_THROW(queue.sync([] { throw std::range_error("read"); }), std::range_error);
    EXPECT_THROW(queue.barrierSync([] { throw std::range_error("write"); }), std::range_error);
    queue.barrierSync([&] { text = "c"; }); // neither left the queue closed
    EXPECT_EQ(queue.sync([&] { return text; }), "c");
}

TEST(ConcurrentQueue, readersRunSideBySide) {
    ConcurrentQueue queue("test");
    queue.barrierAsync([] {});
    std::latch together(4);
    Semaphore ended(0);
    onThreads(2, [&](int) {
        queue.async([&] {
            together.arrive_and_wait();
            ended.signal();
        });
        queue.sync([&] { together.arrive_and_wait(); });
        ended.wait();
    });
}

TEST(ConcurrentQueue, aReadRunsThePendingBarrierItself) {
    ConcurrentQueue queue("test");
    std::thread::id runner;
    int rounds = 0; // the pool may be faster now and then, not always
    while (runner != std::this_thread::get_id() && ++rounds < 100'000) {
        queue.barrierAsync([&] { runner = std::this_thread::get_id(); });
        queue.sync([] {});
    }
    EXPECT_LT(rounds, 100'000);
}

TEST(ConcurrentQueue, barriersSubmitToTheirOwnQueue) {
    ConcurrentQueue queue("test");
    int depth = 0;
    Semaphore done(0);
    std::function<void()> again = [&] {
        if (++depth < 100)
            return queue.barrierAsync(again);
        queue.async([&] {
            EXPECT_EQ(depth, 100);
            done.signal();
        });
    };
    queue.barrierAsync(again);
    done.wait();
}

TEST(ConcurrentQueue, mayGoWithBlocksOutstanding) {
    Semaphore done(0);
    int writes = 0;
    for (int i = 0; i < 50; ++i) {
        auto queue = std::make_shared<ConcurrentQueue>("short-lived");
        for (int k = 0; k < 3; ++k)
            queue->barrierAsync([&, queue] { ++writes; }); // the last block destroys the queue
        queue->async([queue] {});
        queue->barrierAsync([&, queue] { done.signal(); });
        queue.reset();
        done.wait();
        EXPECT_EQ(writes, 3 * (i + 1));
    }
}

TEST(ConcurrentQueue, aBarrierReleasesItsCapturesBeforeItEnds) {
    ConcurrentQueue queue("test");
    const auto witness = std::make_shared<int>();
    for (int i = 0; i < 200; ++i) {
        queue.barrierAsync([witness] {});
        EXPECT_EQ(queue.sync([&] { return witness.use_count(); }), 1);
    }
}

// Every kind of call from several threads. What each block checks: nobody shares the queue with a barrier,
// and the earlier writes of the thread that submitted it, and none of the later ones, have happened.
TEST(ConcurrentQueue, keepsItsPromisesUnderARandomMix) {
    constexpr int threads = 4, rounds = 1000;
    ConcurrentQueue queue("test");
    std::array<int, threads> written{};
    std::atomic<int> readers = 0, writers = 0, asynchronous = 0;

    onThreads(threads, [&](int thread) {
        Random random(static_cast<unsigned>(thread) + 1);
        const auto me = static_cast<std::size_t>(thread);
        int submitted = 0;
        const auto read = [&, me](int expected) {
            ++readers;
            EXPECT_EQ(writers, 0);
            EXPECT_EQ(written[me], expected);
            --readers;
        };
        const auto write = [&, me](int expected) {
            EXPECT_EQ(++writers, 1);
            EXPECT_EQ(readers, 0);
            EXPECT_EQ(++written[me], expected);
            --writers;
        };
        for (int i = 0; i < rounds; ++i) {
            const auto kind = random() % 8;
            const bool writes = kind < 2, waits = kind == 1 || kind > 2;
            submitted += writes;
            const auto block = [&, writes, expected = submitted] {
                writes ? write(expected) : read(expected);
            };
            if (waits) {
                writes ? queue.barrierSync(block) : queue.sync(block);
                continue;
            }
            const auto counted = [&asynchronous, block] {
                block();
                --asynchronous;
            };
            ++asynchronous;
            writes ? queue.barrierAsync(counted) : queue.async(counted);
        }
        queue.barrierSync([] {}); // after everything this thread has submitted
    });
    EXPECT_EQ(asynchronous, 0);
}

} // namespace dispatch
