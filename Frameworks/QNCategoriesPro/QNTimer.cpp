#include "Frameworks/QNCategoriesPro/QNTimer.h"

#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/RunLoop/NSTimer.h"
#include "Platform/Runtime/Object/Message.h"

NS_IMPLEMENTATION(QNTimer) {
    cls.method<&QNTimer::fire>("fire")
        .method<&QNTimer::invalidate>("invalidate")
        .method<&QNTimer::isValid>("isValid");
}

Ref<QNTimer> QNTimer::timerWithTimeInterval(NSTimeInterval interval, const id &target, SEL selector,
                                            bool repeats) {
    return initWithFireTime(interval, interval, target, selector, repeats);
}

Ref<QNTimer> QNTimer::initWithFireTime(NSTimeInterval fireTime, NSTimeInterval interval, const id &target,
                                       SEL selector, bool repeats) {
    auto timer = make<QNTimer>(interval, target, selector, repeats);
    timer->start(fireTime);
    return timer;
}

QNTimer::QNTimer(NSTimeInterval interval, const id &target, SEL selector, bool repeats)
    : _timeInterval(interval), _repeats(repeats), _target(target), _selector(selector),
      _source(std::make_shared<dispatch::TimerSource>(dispatch::mainQueue())) {}

QNTimer::~QNTimer() {
    invalidate();
}

void QNTimer::start(NSTimeInterval fireTime) {
    std::shared_ptr<dispatch::TimerSource> source;
    {
        const locking::MutexLock locked(_lock);
        source = _source;
    }
    source->setTimer(dispatch::Clock::current().now() + nanosecondsFromTimeInterval(fireTime),
                     nanosecondsFromTimeInterval(effectiveTimerInterval(timeInterval())));
    source->setHandler([weak = Weak<NSObject>(self())] {
        if (const auto timer = as<QNTimer>(weak.lock()))
            timer->fire();
    });
    source->resume();
}

void QNTimer::fire() {
    id target;
    SEL selector = nullptr;
    bool repeats = false;
    {
        const locking::MutexLock locked(_lock);
        target = _target.lock();
        selector = _selector;
        repeats = _repeats;
    }
    if (!repeats || !target)
        return invalidate();
    objc_msgSend(target, selector, self());
}

void QNTimer::invalidate() {
    std::shared_ptr<dispatch::TimerSource> cancelled; // cancelled without the lock: its handler may be ours
    {
        const locking::MutexLock locked(_lock);
        if (!_valid)
            return;
        cancelled = std::move(_source);
        _target.reset();
        _valid = false;
    }
    cancelled->cancel();
}

bool QNTimer::repeats() const {
    const locking::MutexLock locked(_lock);
    return _repeats;
}

NSTimeInterval QNTimer::timeInterval() const {
    const locking::MutexLock locked(_lock);
    return _timeInterval;
}

bool QNTimer::isValid() const {
    const locking::MutexLock locked(_lock);
    return _valid;
}
