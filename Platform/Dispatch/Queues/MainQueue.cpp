#include "Platform/Dispatch/Queues/MainQueue.h"

#include "Platform/Dispatch/Queues/Semaphore.h"
#include "Platform/Runtime/Object/NSException.h"

#include <exception>
#include <unistd.h>
#include <utility>

namespace dispatch {

using locking::MutexLock;

MainQueue &mainQueue() {
    static auto *const queue = new MainQueue; // blocks may still come while the process ends
    return *queue;
}

bool isMainThread() {
    static thread_local const bool result = gettid() == getpid();
    return result;
}

void MainQueue::async(Block block) {
    runtime::checkBlock("dispatch::MainQueue::async", block);
    {
        const MutexLock lock(mutex_);
        blocks_.push_back(std::move(block));
        if (blocks_.size() > 1)
            return;
    }
    const MutexLock lock(wakerMutex_);
    if (waker_)
        waker_();
}

void MainQueue::sync(const Block &block) {
    runtime::checkBlock("dispatch::MainQueue::sync", block);
    if (isMainThread())
        return block();
    std::exception_ptr error;
    Semaphore done(0);
    async([&] {
        try {
            block();
        } catch (...) {
            error = std::current_exception();
        }
        done.signal();
    });
    done.wait();
    if (error)
        std::rethrow_exception(std::move(error));
}

std::size_t MainQueue::drain() {
    const MutexLock lock(mutex_);
    const std::uint64_t end = taken_ + blocks_.size();
    std::size_t count = 0;
    while (taken_ < end) { // a nested call moves taken_ on as well
        Block block = std::move(blocks_.front());
        blocks_.pop_front();
        ++taken_;
        ++count;
        const locking::MutexUnlock released(mutex_);
        std::exchange(block, nullptr)();
    }
    return count;
}

bool MainQueue::hasWork() const {
    const MutexLock lock(mutex_);
    return !blocks_.empty();
}

void MainQueue::setWaker(std::function<void()> waker) {
    const MutexLock lock(wakerMutex_);
    waker_.swap(waker);
}

} // namespace dispatch
