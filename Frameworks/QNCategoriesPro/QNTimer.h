// A timer on the main queue that holds its target weakly, so that an owner may keep a timer that calls back
// into the owner.
//
//     timer_ = QNTimer::timerWithTimeInterval(2.0, self(), sel_registerName("refresh:"), true);
//
// | state   | from                                                                        |
// |---------|-----------------------------------------------------------------------------|
// | running | construction                                                                |
// | invalid | `invalidate`, destruction, a tick after the target went away, the first tick |
// |         | of a timer that does not repeat (which never reaches the target)            |
//
// Threads: the timer's own ticks run on the main thread. Everything may be called from any thread; the target
// is called without the lock, so it may call `invalidate` itself.
#pragma once

#include "Platform/Dispatch/Queues/SemaphoreMutex.h"
#include "Platform/Dispatch/Queues/TimerSource.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class QNTimer : public NSObject {
    NS_CLASS(QNTimer, NSObject)
public:
    /// A running timer that first ticks after `interval` seconds. The selector's operation takes the timer.
    static Ref<QNTimer> timerWithTimeInterval(NSTimeInterval interval, const id &target, SEL selector,
                                              bool repeats);
    /// A running timer that first ticks `fireTime` seconds from now, at once when that is past, and then by
    /// the effective interval (see NSTimer.h) of `interval`.
    static Ref<QNTimer> initWithFireTime(NSTimeInterval fireTime, NSTimeInterval interval, const id &target,
                                         SEL selector, bool repeats);

    /// For the two above, which also start the timer.
    QNTimer(NSTimeInterval interval, const id &target, SEL selector, bool repeats);
    ~QNTimer() override;

    /// One tick, on the calling thread.
    void fire();
    /// Stops the timer for good.
    void invalidate();

    bool repeats() const;
    NSTimeInterval timeInterval() const;
    bool isValid() const;

private:
    void start(NSTimeInterval fireTime);

    bool _valid ZK_GUARDED_BY(_lock) = true;
    NSTimeInterval _timeInterval ZK_GUARDED_BY(_lock);
    bool _repeats ZK_GUARDED_BY(_lock);
    Weak<NSObject> _target ZK_GUARDED_BY(_lock);
    SEL _selector ZK_GUARDED_BY(_lock);
    std::shared_ptr<dispatch::TimerSource> _source ZK_GUARDED_BY(_lock);
    mutable dispatch::SemaphoreMutex _lock;
};

#pragma GCC visibility pop
