#include "Platform/Dispatch/Queues/Turnstile.h"

#include "Platform/Dispatch/Queues/Pool.h"

#include <utility>

namespace dispatch {

void Turnstile::waitToRead() {
    Lock lock(mutex_);
    if (retractRead())
        waitForTurn(lock, Item::Kind::read);
}

void Turnstile::lastReaderLeft() {
    advance(Lock(mutex_));
}

void Turnstile::enterBarrier() {
    Lock lock(mutex_);
    waitForTurn(lock, Item::Kind::barrier);
}

void Turnstile::leaveBarrier() {
    Lock lock(mutex_);
    barrierInside_ = false;
    advance(std::move(lock));
}

void Turnstile::asyncRead(Block block) {
    if (state_.fetch_add(1, std::memory_order_acquire) & slow) {
        Lock lock(mutex_);
        if (retractRead()) {
            enqueue(Item::Kind::read, nullptr, std::move(block));
            return advance(std::move(lock));
        }
    }
    startRead(std::move(block));
}

void Turnstile::asyncBarrier(Block block) {
    Lock lock(mutex_);
    enqueue(Item::Kind::barrier, nullptr, std::move(block));
    advance(std::move(lock));
}

// For a reader that is counted as inside.
void Turnstile::startRead(Block block) {
    Pool::shared().submit([self = shared_from_this(), block = std::move(block)]() mutable {
        block();
        block = nullptr;
        self->leaveRead();
    });
}

// For a reader that has counted itself in and found `slow` set. False when the line has emptied meanwhile:
// then the reader is inside.
bool Turnstile::retractRead() {
    if (!(state_.load(std::memory_order_relaxed) & slow))
        return false;
    state_.fetch_sub(1, std::memory_order_relaxed);
    return true;
}

void Turnstile::enqueue(Item::Kind kind, Waiter *waiter, Block block) {
    line_.push_back({kind, waiter, std::move(block)});
    state_.fetch_or(slow, std::memory_order_relaxed);
}

// Runs the barriers ahead that nobody runs, sleeps otherwise.
void Turnstile::waitForTurn(Lock &lock, Item::Kind kind) {
    Waiter self;
    enqueue(kind, &self, nullptr);
    waiters_.push_back(&self);
    admit();
    while (!self.admitted) {
        if (barrierIsReady()) {
            runBarrier(lock);
        } else {
            self.called = false;
            lock.unlock();
            self.wanted.wait();
            lock.lock();
        }
    }
}

// Admits from the head all reads, and then a barrier whose own thread waits for it.
void Turnstile::admit() {
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

void Turnstile::admitWaiter(Waiter &waiter) {
    waiters_.pop_front();
    waiter.admitted = true;
    waiter.wanted.signal();
}

bool Turnstile::barrierIsReady() const {
    return !barrierInside_ && !line_.empty() && line_.front().kind == Item::Kind::barrier &&
           !line_.front().waiter && noReaderInside();
}

void Turnstile::runBarrier(Lock &lock) noexcept {
    Block block = std::move(line_.front().block);
    line_.pop_front();
    barrierInside_ = true;
    lock.unlock();
    block();
    block = nullptr;
    lock.lock();
    barrierInside_ = false;
    admit();
}

// Lets in what can come in, and finds a thread for an asynchronous barrier at the head.
void Turnstile::advance(Lock lock) {
    admit();
    if (!barrierIsReady())
        return;
    if (!waiters_.empty()) {
        if (!std::exchange(waiters_.front()->called, true))
            waiters_.front()->wanted.signal();
    } else if (!drainScheduled_) {
        drainScheduled_ = true;
        lock.unlock();
        Pool::shared().submit([self = shared_from_this()] { self->drain(); });
    }
}

void Turnstile::drain() {
    Lock lock(mutex_);
    while (barrierIsReady())
        runBarrier(lock);
    drainScheduled_ = false;
}

} // namespace dispatch
