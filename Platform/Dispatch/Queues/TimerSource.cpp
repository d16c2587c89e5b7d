#include "Platform/Dispatch/Queues/TimerSource.h"

#include "Platform/Locking/Mutex.h"
#include "Platform/Runtime/Object/NSException.h"

#include <utility>

namespace dispatch {

using locking::MutexLock;
using namespace std::chrono_literals;

constexpr auto patience = 100ms; // before a tick is offered again to a queue that refused it

// Shared with the blocks in the queue. Cancelling an alarm waits for its function, which takes the mutex: so
// alarms are moved out (`former`) and destroyed after the mutex is released.
class TimerSource::State : public std::enable_shared_from_this<State> {
public:
    State(Queue &queue, Clock &clock) : queue_(queue), clock_(clock) {}

    void setTimer(Instant start, std::chrono::nanoseconds period);
    void setHandler(Block handler);
    void resume();
    void cancel();

private:
    void arm(Instant deadline) ZK_REQUIRES(mutex_);
    void fallDue(unsigned schedule);
    void submit() ZK_EXCLUDES(mutex_);
    void runHandler();
    void callHandler();
    void handlerEnded() ZK_EXCLUDES(mutex_);

    Queue &queue_;
    Clock &clock_;
    locking::Mutex mutex_;
    Instant start_ ZK_GUARDED_BY(mutex_) = Instant::distantFuture();
    std::chrono::nanoseconds period_ ZK_GUARDED_BY(mutex_){0};
    unsigned schedule_ ZK_GUARDED_BY(mutex_) = 0; // number of the present one
    std::shared_ptr<Block> handler_ ZK_GUARDED_BY(mutex_);
    Alarm alarm_ ZK_GUARDED_BY(mutex_);
    bool resumed_ ZK_GUARDED_BY(mutex_) = false;
    bool cancelled_ ZK_GUARDED_BY(mutex_) = false;
    bool due_ ZK_GUARDED_BY(mutex_) = false;    // a tick waits for its handler
    bool active_ ZK_GUARDED_BY(mutex_) = false; // the handler is queued or running
};

void TimerSource::State::setTimer(Instant start, std::chrono::nanoseconds period) {
    Alarm former;
    const MutexLock lock(mutex_);
    former = std::move(alarm_);
    start_ = start;
    period_ = period;
    ++schedule_;
    due_ = false;
    if (resumed_ && !cancelled_)
        arm(start);
}

void TimerSource::State::setHandler(Block handler) {
    auto next = std::make_shared<Block>(std::move(handler));
    const MutexLock lock(mutex_);
    if (!cancelled_)
        handler_.swap(next);
}

void TimerSource::State::resume() {
    const MutexLock lock(mutex_);
    if (resumed_ || cancelled_)
        return;
    arm(start_);
    resumed_ = true;
}

void TimerSource::State::cancel() {
    Alarm former;
    std::shared_ptr<Block> released;
    const MutexLock lock(mutex_);
    former = std::move(alarm_);
    released = std::move(handler_);
    cancelled_ = true;
}

void TimerSource::State::arm(Instant deadline) {
    if (deadline == Instant::distantFuture())
        return;
    alarm_ = clock_.callAt(deadline, [weak = weak_from_this(), schedule = schedule_] {
        if (const auto self = weak.lock())
            self->fallDue(schedule);
    });
}

void TimerSource::State::fallDue(unsigned schedule) {
    {
        const MutexLock lock(mutex_);
        if (cancelled_ || schedule != schedule_)
            return;
        if (period_.count() > 0) {
            const Instant now = clock_.now();
            arm(now + (period_ - (now - start_) % period_));
        }
        due_ = true;
        if (std::exchange(active_, true))
            return;
    }
    submit();
}

void TimerSource::State::submit() {
    try {
        queue_.async([self = shared_from_this()] { self->runHandler(); });
    } catch (const NSException &) { // on a thread of the clock or queue: no caller to tell
        Alarm former;
        const MutexLock lock(mutex_);
        former = std::move(alarm_);
        active_ = false;
        if (!cancelled_)
            arm(clock_.now() + patience);
    }
}

void TimerSource::State::runHandler() {
    try {
        callHandler();
    } catch (...) { // the queue deals with it; later ticks must come all the same
        handlerEnded();
        throw;
    }
    handlerEnded();
}

void TimerSource::State::callHandler() {
    std::shared_ptr<Block> handler;
    {
        const MutexLock lock(mutex_);
        if (std::exchange(due_, false) && !cancelled_)
            handler = handler_;
    }
    if (handler && *handler)
        (*handler)();
}

void TimerSource::State::handlerEnded() {
    {
        const MutexLock lock(mutex_);
        active_ = due_ && !cancelled_;
        if (!active_)
            return;
    }
    submit();
}

TimerSource::TimerSource(Queue &queue, Clock &clock) : state_(std::make_shared<State>(queue, clock)) {}

TimerSource::~TimerSource() {
    cancel();
}

void TimerSource::setTimer(Instant start, std::chrono::nanoseconds period) {
    state_->setTimer(start, period);
}

void TimerSource::setHandler(Block handler) {
    state_->setHandler(std::move(handler));
}

void TimerSource::resume() {
    state_->resume();
}

void TimerSource::cancel() {
    state_->cancel();
}

} // namespace dispatch
