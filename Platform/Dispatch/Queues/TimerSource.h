// A timer that submits its handler to a queue.
//
//     TimerSource timer(mainQueue());
//     timer.setTimer(Clock::current().now() + 1s, 250ms);
//     timer.setHandler([&] { refresh(); });
//     timer.resume();
//
// Ticks fall due at start, start + period, start + 2 * period and so on, however late one is noticed;
// missed ones are skipped. A tick that falls due while the handler is queued or running is kept, and any
// number of them are kept as one: the handler never runs twice at a time.
//
// A queue that raises instead of taking a tick is offered it again a little later. What the handler raises
// reaches the queue; the next ticks come all the same.
//
// Threads: every member is safe from every thread, also from inside the handler, but must not be called
// while holding a lock that the queue's `async` takes. Destruction cancels.
//
// Life: queue and clock must outlive the source; the queue also what the source has submitted to it.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"
#include "Platform/Dispatch/Time/Clock.h"

#include <chrono>
#include <memory>

namespace dispatch {

class TimerSource {
public:
    explicit TimerSource(Queue &queue, Clock &clock = Clock::current());
    TimerSource(const TimerSource &) = delete;
    TimerSource &operator=(const TimerSource &) = delete;
    ~TimerSource();

    /// Replaces the schedule and drops a tick that has not run yet. A start that has passed ticks at once,
    /// `distantFuture()` never does; a period of zero or less makes it tick once.
    void setTimer(Instant start, std::chrono::nanoseconds period);

    /// None: ticks pass.
    void setHandler(Block handler);

    /// Starts ticking; a source is born at rest. Calling it again does nothing. Raises what the clock raises
    /// that can have no thread, as `setTimer` does of a source that ticks.
    void resume();

    /// For good: no handler starts after it, not even a queued one, and the handler's captured objects are
    /// released (by a handler that is running: when it ends).
    void cancel();

private:
    class State;
    const std::shared_ptr<State> state_;
};

} // namespace dispatch
