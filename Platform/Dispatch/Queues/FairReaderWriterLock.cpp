#include "Platform/Dispatch/Queues/FairReaderWriterLock.h"

#include "Platform/Dispatch/Queues/Pool.h"

#include <utility>

namespace dispatch {

using locking::MutexLock;
using locking::MutexUnlock;

void FairReaderWriterLock::waitToRead() {
    const MutexLock lock(mutex_);
    if (retractRead())
        waitForTurn(Item::Kind::read);
}

void FairReaderWriterLock::lastReaderLeft() {
    {
        const MutexLock lock(mutex_);
        if (!wantsDrain())
            return;
    }
    startDrain();
}

void FairReaderWriterLock::enterBarrier() {
    const MutexLock lock(mutex_);
    waitForTurn(Item::Kind::barrier);
}

void FairReaderWriterLock::leaveBarrier() {
    {
        const MutexLock lock(mutex_);
        barrierInside_ = false;
        if (!wantsDrain())
            return;
    }
    startDrain();
}

void FairReaderWriterLock::asyncRead(Block block) {
    bool drains = false;
    if (state_.fetch_add(1, std::memory_order_acquire) & slow) {
        const MutexLock lock(mutex_);
        if (retractRead()) {
            enqueue(Item::Kind::read, nullptr, std::exchange(block, nullptr));
            drains = wantsDrain();
        }
    }
    if (block)
        startRead(std::move(block));
    else if (drains)
        startDrain();
}

void FairReaderWriterLock::asyncBarrier(Block block) {
    {
        const MutexLock lock(mutex_);
        enqueue(Item::Kind::barrier, nullptr, std::move(block));
        if (!wantsDrain())
            return;
    }
    startDrain();
}

// For a reader that is counted as inside.
void FairReaderWriterLock::startRead(Block block) {
    Pool::shared().submit([self = shared_from_this(), block = std::move(block)]() mutable {
        block();
        block = nullptr;
        self->leaveRead();
    });
}

// For a reader that has counted itself in and found `slow` set. False when the line has emptied meanwhile:
// then the reader is inside.
bool FairReaderWriterLock::retractRead() {
    if (!(state_.load(std::memory_order_relaxed) & slow))
        return false;
    state_.fetch_sub(1, std::memory_order_relaxed);
    return true;
}

void FairReaderWriterLock::enqueue(Item::Kind kind, Waiter *waiter, Block block) {
    line_.push_back({kind, waiter, std::move(block)});
    state_.fetch_or(slow, std::memory_order_relaxed);
}

// Runs the barriers ahead that nobody runs, sleeps otherwise.
void FairReaderWriterLock::waitForTurn(Item::Kind kind) {
    Waiter self;
    enqueue(kind, &self, nullptr);
    waiters_.push_back(&self);
    admit();
    while (!self.admitted) {
        if (barrierIsReady()) {
            runBarrier();
        } else {
            self.called = false;
            const MutexUnlock released(mutex_);
            self.wanted.wait();
        }
    }
}

// Admits from the head all reads, and then a barrier whose own thread waits for it.
void FairReaderWriterLock::admit() {
    if (barrierInside_)
        return;
    while (!line_.empty() && line_.front().kind == Item::Kind::read) {
        state_.fetch_add(1, std::memory_order_relaxed);
        if (Waiter *waiter = line_.front().waiter)
            admitWaiter(*waiter);
        else
            startRead(std::move(line_.front().block));
        line_.pop_front();
    }
    if (line_.empty()) {
        state_.fetch_and(~slow, std::memory_order_release);
    } else if (line_.front().waiter && noReaderInside()) {
        barrierInside_ = true;
        admitWaiter(*line_.front().waiter);
        line_.pop_front();
    }
}

void FairReaderWriterLock::admitWaiter(Waiter &waiter) {
    waiters_.pop_front();
    waiter.admitted = true;
    waiter.wanted.signal();
}

bool FairReaderWriterLock::barrierIsReady() const {
    return !barrierInside_ && !line_.empty() && line_.front().kind == Item::Kind::barrier &&
           !line_.front().waiter && noReaderInside();
}

void FairReaderWriterLock::runBarrier() noexcept {
    Block block = std::move(line_.front().block);
    line_.pop_front();
    barrierInside_ = true;
    {
        const MutexUnlock released(mutex_);
        block();
        block = nullptr;
    }
    barrierInside_ = false;
    admit();
}

// Lets in what can come in, and finds a thread for an asynchronous barrier at the head. True: it is to be one
// of the pool, which is called without the mutex.
bool FairReaderWriterLock::wantsDrain() {
    admit();
    if (!barrierIsReady())
        return false;
    if (waiters_.empty())
        return !std::exchange(drainScheduled_, true);
    if (!std::exchange(waiters_.front()->called, true))
        waiters_.front()->wanted.signal();
    return false;
}

void FairReaderWriterLock::startDrain() {
    Pool::shared().submit([self = shared_from_this()] { self->drain(); });
}

void FairReaderWriterLock::drain() {
    const MutexLock lock(mutex_);
    while (barrierIsReady())
        runBarrier();
    drainScheduled_ = false;
}

} // namespace dispatch
