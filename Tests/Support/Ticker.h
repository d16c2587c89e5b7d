// Where the ticks of the timers under test arrive, and the clock that they go by.
#pragma once

#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/RunLoop/NSRunLoop.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Testing.h"

class Ticker : public NSObject {
    NS_CLASS(Ticker, NSObject)
public:
    explicit Ticker(std::function<void(const Ref<NSTimer> &)> function) : onTick(std::move(function)) {}

    void tick(const Ref<NSTimer> &timer) { onTick(timer); }
    void tickWithoutTimer() { onTick(nullptr); }

    std::function<void(const Ref<NSTimer> &)> onTick;
};

/// Runs on a clock moved by hand, which starts at 0; leaves the main run loop without timers.
class OnManualClock : public testing::Test {
protected:
    ~OnManualClock() override {
        for (const Ref<NSTimer> &timer : made_)
            timer->invalidate();
        loop->runOnce(NSDefaultRunLoopMode);
    }

    std::int64_t milliseconds() { return clock.now().sinceOrigin() / std::chrono::milliseconds(1); }

    /// A timer on the main run loop that notes the time of every tick.
    Ref<NSTimer> add(double interval, std::vector<std::int64_t> &times, bool repeats = true,
                     NSRunLoopMode mode = NSDefaultRunLoopMode) {
        return add(
            interval, [this, &times](const Ref<NSTimer> &) { times.push_back(milliseconds()); }, repeats,
            mode);
    }
    Ref<NSTimer> add(double interval, std::function<void(const Ref<NSTimer> &)> onTick, bool repeats = true,
                     NSRunLoopMode mode = NSDefaultRunLoopMode) {
        made_.push_back(NSTimer::timerWithTimeInterval(interval, make<Ticker>(std::move(onTick)),
                                                       sel_registerName("tick:"), nullptr, repeats));
        loop->addTimer(made_.back(), mode);
        return made_.back();
    }

    bool advanceAndRun(dispatch::Instant::Duration duration, NSRunLoopMode mode = NSDefaultRunLoopMode) {
        clock.advance(duration);
        return loop->runOnce(mode);
    }

    dispatch::ManualClock clock;
    const dispatch::ClockScope scope{clock};
    const Ref<NSRunLoop> loop = NSRunLoop::mainRunLoop();
    std::vector<std::int64_t> ticks;

private:
    std::vector<Ref<NSTimer>> made_;
};
