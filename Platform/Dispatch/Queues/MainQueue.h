// The serial queue of the main thread. Whoever runs the main run loop drains it.
//
//     mainQueue().async([=] { window->show(result); });          // from a worker
//
// Threads: all but `drain` is safe from every thread; `drain` belongs to the main thread.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>

namespace dispatch {

class MainQueue final : public Queue {
public:
    void async(Block block) override;

    /// Runs `block` on the main thread, waits for its end and rethrows what it threw. On the main thread
    /// it runs at once, ahead of what is queued.
    void sync(const Block &block);

    /// Runs the blocks that are queued at this moment, in order, and says how many. Blocks that come
    /// meanwhile stay for the next call (see `hasWork`; the waker is not called again for them). A block
    /// may call `drain()` itself, through a nested run loop: that call runs the remaining ones and the
    /// outer call goes on with what is left. An exception of a block passes through; the others stay.
    std::size_t drain();

    bool hasWork() const;

    /// `waker` is called, on the submitting thread, whenever the queue stops being empty. It must only
    /// wake the loop: it must neither submit blocks nor call `setWaker`. It is not called for blocks that
    /// are queued already. When `setWaker` returns, the former one is not running and is called no more.
    void setWaker(std::function<void()> waker);

private:
    friend MainQueue &mainQueue();
    MainQueue() = default;

    mutable std::mutex mutex_;
    std::deque<Block> blocks_;
    std::uint64_t taken_ = 0;
    std::mutex wakerMutex_;
    std::function<void()> waker_;
};

MainQueue &mainQueue();

/// True on the thread that main() was called on.
bool isMainThread();

} // namespace dispatch
