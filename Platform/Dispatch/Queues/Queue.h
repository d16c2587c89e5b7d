// Where work is sent: blocks go in, and each is run once, later, on a thread of the queue's choice.
//
//     globalQueue().async([=] { exchange(printer); });
//
// Threads: `async` is safe from every thread and never waits for a block. A block must not throw. Every queue
// raises NSInvalidArgumentException for a block of none; one that runs on the pool also what that raises.
#pragma once

#include <functional>

namespace dispatch {

using Block = std::function<void()>;

class Queue {
public:
    Queue() = default;
    Queue(const Queue &) = delete;
    Queue &operator=(const Queue &) = delete;
    virtual ~Queue() = default;

    /// Hands `block` over and returns. It is destroyed right after its run.
    virtual void async(Block block) = 0;
};

/// The concurrent queue of the process: blocks start in the order of submission, run at the same time on
/// the threads of the pool, and may block for long. A block that throws ends the process.
Queue &globalQueue();

} // namespace dispatch
