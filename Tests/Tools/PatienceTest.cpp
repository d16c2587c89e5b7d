#include "Tools/zkprinter/Printers/Patience.h"

#include "Platform/Dispatch/Time/ManualClock.h"
#include "Tests/Support/Testing.h"

#include <future>

namespace {

/// What is shown, in its order; another thread shows it.
class Screen {
public:
    void show(const std::string &what) {
        const locking::MutexLock guard(mutex_);
        shown_.push_back(what);
        changed_.notifyAll();
    }
    /// Waits until that many were shown.
    std::vector<std::string> await(std::size_t count) {
        const locking::MutexLock lock(mutex_);
        while (shown_.size() < count)
            changed_.wait(mutex_);
        return shown_;
    }

private:
    locking::Mutex mutex_;
    locking::Condition changed_;
    std::vector<std::string> shown_ ZK_GUARDED_BY(mutex_);
};

} // namespace

TEST(Patience, showsWhatIsWaitedForAfterASecond) {
    dispatch::ManualClock clock;
    const dispatch::ClockScope scope(clock);
    Screen screen;
    {
        const Patience patience(
            std::nullopt, [&](const std::string &what) { screen.show(what); },
            [](const std::string &) { ADD_FAILURE(); });
        { const Waiting brief("nothing to see"); }
        clock.advance(Patience::beforeShowing - 1ns);
        {
            const Waiting waiting("CUPS");
            clock.advance(1ns);
            EXPECT_EQ(screen.await(1), Lines{"CUPS"});
        }
        EXPECT_EQ(screen.await(2), (Lines{"CUPS", ""})) << "gone when it is there";
        const Waiting waiting("the printer");
        EXPECT_EQ(screen.await(3), (Lines{"CUPS", "", "the printer"})) << "at once from then on";
        clock.advance(24h);
    }
    EXPECT_EQ(screen.await(4), (Lines{"CUPS", "", "the printer", ""}));
    const Waiting impatient("nobody");
}

TEST(Patience, givesUpWhenTheTimeIsOver) {
    dispatch::ManualClock clock;
    const dispatch::ClockScope scope(clock);
    for (const bool waits : {true, false}) {
        Screen screen;
        std::promise<std::string> givenUp;
        const Patience patience(
            90s, [&](const std::string &what) { screen.show(what); },
            [&](const std::string &what) { givenUp.set_value(what); });
        std::optional<Waiting> waiting, another;
        if (waits) {
            waiting.emplace("CUPS");
            another.emplace("a printer");
        }
        clock.advance(90s - 1ns);
        if (waits)
            screen.await(1);
        auto result = givenUp.get_future();
        EXPECT_EQ(result.wait_for(0s), std::future_status::timeout);
        clock.advance(1ns);
        EXPECT_EQ(result.get(), waits ? "CUPS and 1 more" : "");
        if (waits)
            EXPECT_EQ(screen.await(2), (Lines{"CUPS and 1 more", ""}));
    }
}
