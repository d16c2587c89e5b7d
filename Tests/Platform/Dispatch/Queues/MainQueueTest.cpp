#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Dispatch/Queues/Semaphore.h"
#include "Tests/Support/Testing.h"

namespace dispatch {

TEST(MainQueue, nestedDrainRunsTheRest) {
    std::vector<int> order;
    std::size_t nested = 0;
    mainQueue().async([&] {
        order.push_back(1);
        mainQueue().async([&] { order.push_back(4); });
        nested = mainQueue().drain();
        order.push_back(5);
    });
    mainQueue().async([&] { order.push_back(2); });
    mainQueue().async([&] {
        order.push_back(3);
        mainQueue().async([&] { order.push_back(6); }); // after the present drains, not to starve the loop
    });
    EXPECT_EQ(mainQueue().drain(), 1U);
    EXPECT_EQ(nested, 3U);
    EXPECT_THAT(order, ElementsAre(1, 2, 3, 4, 5));
    EXPECT_TRUE(mainQueue().hasWork());
    EXPECT_EQ(mainQueue().drain(), 1U);
    EXPECT_FALSE(mainQueue().hasWork());
}

TEST(MainQueue, wakesTheLoopWhenItStopsBeingEmpty) {
    int wakes = 0;
    mainQueue().setWaker([&] {
        ++wakes;
        EXPECT_TRUE(mainQueue().hasWork()) << "called outside the lock";
    });
    mainQueue().async([] {});
    mainQueue().async([] {});
    EXPECT_EQ(wakes, 1);
    mainQueue().drain();
    mainQueue().async([] {});
    EXPECT_EQ(wakes, 2);
    mainQueue().setWaker(nullptr);
    mainQueue().drain();
    mainQueue().async([] {});
    EXPECT_EQ(wakes, 2);
    mainQueue().drain();
}

TEST(MainQueue, syncFromAnotherThreadRunsHereAndRethrowsThere) {
    Semaphore work(0);
    mainQueue().setWaker([&] { work.signal(); });
    std::atomic<bool> finished = false;
    std::vector<int> order;
    std::thread worker([&] {
        EXPECT_FALSE(isMainThread());
        mainQueue().async([&] { order.push_back(1); });
        mainQueue().sync([&] {
            EXPECT_TRUE(isMainThread());
            order.push_back(2);
        });
        EXPECT_THROW(mainQueue().sync([] { throw std::range_error("beyond bounds"); }), std::range_error);
        finished = true;
        mainQueue().async([] {});
    });
    while (!finished || mainQueue().hasWork()) {
        work.wait();
        mainQueue().drain();
    }
    worker.join();
    mainQueue().setWaker(nullptr);
    mainQueue().drain();
    EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST(MainQueue, syncOnTheMainThreadGoesAhead) {
    ASSERT_TRUE(isMainThread());
    std::vector<int> order;
    mainQueue().async([&] { order.push_back(2); });
    mainQueue().sync([&] { order.push_back(1); });
    EXPECT_THROW(mainQueue().sync([] { throw std::range_error("beyond bounds"); }), std::range_error);
    mainQueue().async([] { throw std::range_error("passes through"); });
    mainQueue().async([&] { order.push_back(3); });
    EXPECT_THROW(mainQueue().drain(), std::range_error);
    EXPECT_EQ(mainQueue().drain(), 1U);
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(MainQueue, whatABlockHoldsMaySubmitAsItGoes) {
    struct Submitting {
        ~Submitting() {
            mainQueue().async([] {});
        }
    };
    mainQueue().async([held = std::make_shared<Submitting>()] {});
    mainQueue().async([held = std::make_shared<Submitting>()] { throw std::range_error("passes through"); });
    EXPECT_THROW(mainQueue().drain(), std::range_error);
    EXPECT_EQ(mainQueue().drain(), 2U);
}

} // namespace dispatch
