// A reader-writer lock that admits in order of arrival: any number of readers at a time, or one barrier
// alone. The implementation of `ConcurrentQueue`; use that one.
//
// The state word counts the readers inside and has one high bit, `slow`, set while anything is queued or a
// barrier runs. While it is clear, a reader enters and leaves with one atomic addition each. A reader that
// finds it set takes its count back under the mutex and queues.
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
#include "Platform/Dispatch/Queues/Semaphore.h"

#include <atomic>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>

namespace dispatch {

class Turnstile : public std::enable_shared_from_this<Turnstile> {
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
    // A semaphore gives way for a moment before it sleeps, which suits short turns.
    class Mutex {
    public:
        void lock() { free_.wait(); }
        void unlock() { free_.signal(); }

    private:
        Semaphore free_{1};
    };
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
    using Lock = std::unique_lock<Mutex>;

    static constexpr std::uint64_t slow = std::uint64_t{1} << 63;

    void waitToRead();
    void lastReaderLeft();
    void startRead(Block block);
    bool retractRead();
    void enqueue(Item::Kind kind, Waiter *waiter, Block block);
    void waitForTurn(Lock &lock, Item::Kind kind);
    void admit();
    void admitWaiter(Waiter &waiter);
    bool barrierIsReady() const;
    void runBarrier(Lock &lock) noexcept;
    void advance(Lock lock);
    void drain();

    bool noReaderInside() const { return (state_.load(std::memory_order_acquire) & ~slow) == 0; }

    std::atomic<std::uint64_t> state_ = 0;
    Mutex mutex_; // guards everything below; `slow` changes only under it
    std::list<Item> line_;
    std::list<Waiter *> waiters_; // those of the line, in its order
    bool barrierInside_ = false;
    bool drainScheduled_ = false;
};

} // namespace dispatch
