// A reader-writer lock that admits in order of arrival: any number of readers at a time, or one barrier
// alone. The implementation of `ConcurrentQueue`; use that one.
//
// The state word counts the readers inside and has one high bit, `slow`, set while anything is queued or a
// barrier runs. While it is clear, a reader enters and leaves with one atomic addition each, in 0.7 times
// the time of taking the mutex twice (Benchmarks/run, guarded array). A reader that finds it set takes its
// count back under the mutex and queues.
//
// | at the head of the line   | is admitted when      | and runs on                                        |
// |---------------------------|-----------------------|----------------------------------------------------|
// | read of a waiting thread  | no barrier runs       | that thread                                        |
// | asynchronous read         | no barrier runs       | the pool                                           |
// | barrier of a thread       | no barrier, no reader | that thread                                        |
// | asynchronous barrier      | no barrier, no reader | a thread waiting further back, else the pool       |
//
// The head becomes admissible when the last reader leaves, when a barrier ends, or when it is queued with
// nothing running. The thread that does so admits the head or wakes the thread to run it, so no wake-up is
// lost.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"
#include "Platform/Dispatch/Queues/SemaphoreMutex.h"

#include <atomic>
#include <cstdint>
#include <list>
#include <memory>

#pragma GCC visibility push(default)

namespace dispatch {

class FairReaderWriterLock : public std::enable_shared_from_this<FairReaderWriterLock> {
public:
    void enterRead() {
        if (state_.fetch_add(1, std::memory_order_acquire) & slow) [[unlikely]]
            waitToRead();
    }
    void leaveRead() {
        if (state_.fetch_sub(1, std::memory_order_release) == (slow | 1)) [[unlikely]]
            lastReaderLeft();
    }
    void enterBarrier();
    void leaveBarrier();

    void asyncRead(Block block);
    void asyncBarrier(Block block);

private:
    struct Waiter {
        Semaphore wanted{0}; // signalled under the mutex, because the waiter's thread destroys it
        bool admitted = false;
        bool called = false; // to run the barrier at the head
    };
    struct Item {
        enum class Kind { read, barrier } kind;
        Waiter *waiter; // of a waiting thread; null if asynchronous, then there is a block
        Block block;
    };

    static constexpr std::uint64_t slow = std::uint64_t{1} << 63;

    void waitToRead() ZK_EXCLUDES(mutex_);
    void lastReaderLeft() ZK_EXCLUDES(mutex_);
    void startRead(Block block);
    bool retractRead() ZK_REQUIRES(mutex_);
    void enqueue(Item::Kind kind, Waiter *waiter, Block block) ZK_REQUIRES(mutex_);
    void waitForTurn(Item::Kind kind) ZK_REQUIRES(mutex_);
    void admit() ZK_REQUIRES(mutex_);
    void admitWaiter(Waiter &waiter) ZK_REQUIRES(mutex_);
    bool barrierIsReady() const ZK_REQUIRES(mutex_);
    void runBarrier() noexcept ZK_REQUIRES(mutex_);
    bool wantsDrain() ZK_REQUIRES(mutex_);
    void startDrain() ZK_EXCLUDES(mutex_);
    void drain() ZK_EXCLUDES(mutex_);

    bool noReaderInside() const { return (state_.load(std::memory_order_acquire) & ~slow) == 0; }

    std::atomic<std::uint64_t> state_ = 0;
    SemaphoreMutex mutex_; // `slow` changes only under it, which nobody checks: the readers do not take it
    std::list<Item> line_ ZK_GUARDED_BY(mutex_);
    std::list<Waiter *> waiters_ ZK_GUARDED_BY(mutex_); // those of the line, in its order
    bool barrierInside_ ZK_GUARDED_BY(mutex_) = false;
    bool drainScheduled_ ZK_GUARDED_BY(mutex_) = false;
};

} // namespace dispatch

#pragma GCC visibility pop
