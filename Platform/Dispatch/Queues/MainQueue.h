// The serial queue of the main thread, drained by the main run loop.
//
//     mainQueue().async([=] { window->show(result); });          // from a worker
//
// Threads: every member but `drain` is safe from every thread; only the main thread calls `drain`.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"
#include "Platform/Locking/Mutex.h"

#include <cstddef>
#include <cstdint>
#include <deque>

#pragma GCC visibility push(default)

namespace dispatch {

class MainQueue final : public Queue {
public:
    void async(Block block) override;

    /// Runs `block` on the main thread, waits for its end and rethrows what it threw. Called on the main
    /// thread, it runs the block at once, ahead of what is queued.
    void sync(const Block &block);

    /// Runs the blocks that are queued at this moment, in order, and returns their number. Blocks submitted
    /// meanwhile wait for the next call; ask `hasWork` afterwards, since the waker need not have been called
    /// for them. A block may call `drain()` itself, through a nested run loop: that call runs the remaining
    /// blocks, and the outer one goes on with what is left. An exception of a block passes through; the
    /// blocks behind it stay queued.
    std::size_t drain();

    /// Whether a block is queued.
    bool hasWork() const;

    /// `waker` is called, on the submitting thread, when a block is submitted to the empty queue. It must
    /// only wake the loop: it must neither submit blocks nor call `setWaker`. It is not called for blocks
    /// that are queued already. When `setWaker` returns, the former waker is not running and is not called
    /// any more. An empty function: no waker.
    void setWaker(std::function<void()> waker);

private:
    friend MainQueue &mainQueue();
    MainQueue() = default;

    mutable locking::Mutex mutex_;
    std::deque<Block> blocks_ ZK_GUARDED_BY(mutex_);
    std::uint64_t taken_ ZK_GUARDED_BY(mutex_) = 0;
    locking::Mutex wakerMutex_;
    std::function<void()> waker_ ZK_GUARDED_BY(wakerMutex_);
};

MainQueue &mainQueue();

/// True on the thread that main() was called on.
bool isMainThread();

} // namespace dispatch

#pragma GCC visibility pop
