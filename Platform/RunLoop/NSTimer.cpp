#include "Platform/RunLoop/NSTimer.h"

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/RunLoop/NSRunLoop.h"
#include "Platform/Runtime/Object/Message.h"
#include "Platform/Runtime/Object/Raise.h"

using dispatch::Clock;
using dispatch::Instant;

NS_IMPLEMENTATION(NSTimer) {
    cls.method<&NSTimer::fire>("fire")
        .method<&NSTimer::invalidate>("invalidate")
        .method<&NSTimer::isValid>("isValid")
        .method<&NSTimer::userInfo>("userInfo");
}

namespace {
bool takesArgument(SEL selector) {
    return selector && selector->name.ends_with(':');
}
} // namespace

NSTimeInterval effectiveTimerInterval(NSTimeInterval interval) {
    return nanosecondsFromTimeInterval(interval).count() > 0 ? interval : 0.0001;
}

NSTimer::NSTimer(NSTimeInterval interval, id target, SEL selector, id userInfo, bool repeats)
    : interval_(effectiveTimerInterval(interval)), repeats_(repeats), selector_(selector),
      target_(std::move(target)), userInfo_(std::move(userInfo)),
      fireInstant_(Clock::current().now() + nanosecondsFromTimeInterval(interval_)) {}

Ref<NSTimer> NSTimer::timerWithTimeInterval(NSTimeInterval interval, const id &target, SEL selector,
                                            const id &userInfo, bool repeats) {
    return make<NSTimer>(interval, target, selector, userInfo, repeats);
}

Ref<NSTimer> NSTimer::scheduledTimerWithTimeInterval(NSTimeInterval interval, const id &target, SEL selector,
                                                     const id &userInfo, bool repeats) {
    auto timer = timerWithTimeInterval(interval, target, selector, userInfo, repeats);
    NSRunLoop::currentRunLoop()->addTimer(timer, NSDefaultRunLoopMode);
    return timer;
}

void NSTimer::fire() {
    if (!valid_)
        return;
    const id keep = self(), target = target_; // the target may invalidate the timer or release it
    try {
        if (takesArgument(selector_))
            objc_msgSend(target, selector_, keep);
        else
            objc_msgSend(target, selector_);
    } catch (...) {
        fired();
        throw;
    }
    fired();
}

void NSTimer::fired() {
    if (!repeats_)
        invalidate();
}

void NSTimer::invalidate() {
    valid_ = false;
    const id target = std::move(target_), userInfo = std::move(userInfo_);
}

void NSTimer::tick() {
    const id keep = self();
    const Instant due = fireInstant_;
    ticking_ = true;
    moved_ = false;
    try {
        fire();
    } catch (...) {
        ticked(due);
        throw;
    }
    ticked(due);
}

void NSTimer::ticked(Instant due) {
    ticking_ = false;
    if (!valid_ || moved_)
        return;
    const auto period = nanosecondsFromTimeInterval(interval_);
    const Instant now = Clock::current().now();
    fireInstant_ = now + (period - (now - due) % period);
}

Ref<NSDate> NSTimer::fireDate() const {
    if (fireInstant_ == Instant::distantFuture())
        return NSDate::distantFuture();
    const std::chrono::duration<double> ahead = fireInstant_ - Clock::current().now();
    return NSDate::dateWithTimeIntervalSinceNow(ahead.count());
}

void NSTimer::setFireDate(const Ref<NSDate> &date) {
    runtime::checkObject("NSTimer setFireDate:", date);
    moved_ = true;
    const bool never = date->isEqual(NSDate::distantFuture());
    const Instant former = fireInstant_;
    fireInstant_ = never ? Instant::distantFuture()
                         : Clock::current().now() + nanosecondsFromTimeInterval(date->timeIntervalSinceNow());
    // The loop may be asleep until the former date. During the timer's own tick it is awake.
    if (const auto loop = loop_.lock(); loop && valid_ && !ticking_ && fireInstant_ < former)
        loop->wakeUp();
}
