// The interface of queues: each submitted block is run once, later, on a thread of the queue's choice.
//
//     globalQueue().async([=] { exchange(printer); });
//
// Threads: `async` is safe from every thread and never waits for a block to run.
//
// Errors: every queue raises NSInvalidArgumentException for an empty block; a queue that runs on the pool
// also raises what `Pool::submit` raises.
#pragma once

#include <functional>

#pragma GCC visibility push(default)

namespace dispatch {

using Block = std::function<void()>;

class Queue {
public:
    Queue() = default;
    Queue(const Queue &) = delete;
    Queue &operator=(const Queue &) = delete;
    virtual ~Queue() = default;

    /// Queues `block` and returns. The block is destroyed right after its run.
    virtual void async(Block block) = 0;
};

/// The concurrent queue of the process: blocks start in the order of submission, run at the same time on
/// the threads of the pool, and may block for long. A block that throws ends the process.
Queue &globalQueue();

} // namespace dispatch

#pragma GCC visibility pop
