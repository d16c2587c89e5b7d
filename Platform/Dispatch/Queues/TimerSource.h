// A timer that submits its handler to a queue.
//
//     TimerSource timer(mainQueue());
//     timer.setTimer(Clock::current().now() + 1s, 250ms);
//     timer.setHandler([&] { refresh(); });
//     timer.resume();
//
// Ticks fall due at start, start + period, start + 2 * period and so on, however late one is noticed; missed
// ones are skipped. Ticks that fall due while the handler is queued or running are merged into one further
// run after it: the handler never runs twice at the same time.
//
// When the queue refuses a tick with an NSException, the tick is submitted again 100 ms later. What the
// handler throws reaches the queue; later ticks still come.
//
// Threads: every member is safe from every thread, also from inside the handler, but must not be called
// while holding a lock that the queue's `async` takes. Destruction cancels.
//
// Lifetime: queue and clock must outlive the source, and the queue every block that the source has submitted.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"
#include "Platform/Dispatch/Time/Clock.h"

#include <chrono>
#include <memory>

#pragma GCC visibility push(default)

namespace dispatch {

class TimerSource {
public:
    explicit TimerSource(Queue &queue, Clock &clock = Clock::current());
    TimerSource(const TimerSource &) = delete;
    TimerSource &operator=(const TimerSource &) = delete;
    ~TimerSource();

    /// Replaces the schedule and drops a tick whose handler has not started. With a start in the past the
    /// source ticks at once, with `distantFuture()` never; with a period of zero or less it ticks once.
    /// Raises what `Clock::callAt` raises if the source was resumed.
    void setTimer(Instant start, std::chrono::nanoseconds period);

    /// With an empty handler ticks have no effect.
    void setHandler(Block handler);

    /// Starts ticking; a new source does not tick. Calling it again does nothing. Raises what `Clock::callAt`
    /// raises.
    void resume();

    /// Stops the source for good: no handler starts any more, not even a queued one. The handler's captured
    /// objects are released, at the end of the handler if it is running.
    void cancel();

private:
    class [[gnu::visibility("hidden")]] State;
    const std::shared_ptr<State> state_;
};

} // namespace dispatch

#pragma GCC visibility pop
