#include "Platform/Dispatch/Queues/Pool.h"

#include "Platform/Dispatch/Time/DetachedThread.h"
#include "Platform/Runtime/Object/NSException.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace dispatch {

using locking::MutexLock;
using locking::MutexUnlock;
using namespace std::chrono_literals;

constexpr auto patience = 2ms; // with a backlog, before another thread is started
constexpr auto idleLife = 5s;  // of a thread above the base count

Pool &Pool::shared() {
    static auto *const pool = new Pool; // its threads outlive static destruction
    return *pool;
}

Pool::Pool() : base_(std::max(2U, std::thread::hardware_concurrency())) {}

std::size_t Pool::threadCount() const {
    const MutexLock lock(mutex_);
    return threads_;
}

void Pool::submit(Block job) {
    runtime::checkBlock("dispatch::Pool::submit", job);
    requireThread();
    if (locking::Condition *const wanted = takeIn(std::move(job)))
        wanted->notifyOne(); // whom it wakes need not wait for the mutex
}

// Whose thread is to look after it; none if it is looked after.
locking::Condition *Pool::takeIn(Block &&job) {
    const MutexLock lock(mutex_);
    jobs_.push_back(std::move(job));
    if (idle_ > waking_) {
        ++waking_;
        return &jobCame_;
    }
    if (!hasBacklog() || (threads_ < base_ && startThread()))
        return nullptr;
    startWatcher();
    return &backlogCame_;
}

void Pool::startFirstThread() {
    const MutexLock lock(mutex_);
    if (threads_ == 0 && !startThread())
        throw NSException(NSGenericException, "dispatch: no thread can be had to run blocks on");
}

bool Pool::startThread() {
    if (!startDetachedThread([this] { work(); }))
        return false;
    ++threads_;
    hasThread_.store(true, std::memory_order_release);
    return true;
}

void Pool::startWatcher() {
    watched_ = watched_ || startDetachedThread([this] { watch(); });
}

void Pool::work() {
    const MutexLock lock(mutex_);
    while (!jobs_.empty() || waitForJob()) {
        Block job = std::move(jobs_.front());
        jobs_.pop_front();
        ++taken_;
        const MutexUnlock released(mutex_);
        std::exchange(job, nullptr)();
    }
    --threads_;
}

// False: idle for long enough, and not one of the base.
bool Pool::waitForJob() {
    ++idle_;
    while (jobs_.empty()) {
        const bool needed = threads_ <= base_;
        bool inTime = true;
        if (needed)
            jobCame_.wait(mutex_);
        else
            inTime = jobCame_.waitUntil(mutex_, std::chrono::steady_clock::now() + idleLife);
        // Also when another thread has taken the job: the next submission must notify again.
        if (waking_ > 0)
            --waking_;
        if (!inTime && jobs_.empty() && threads_ > base_)
            break;
    }
    --idle_;
    return !jobs_.empty();
}

void Pool::watch() {
    const MutexLock lock(mutex_);
    for (;;) {
        while (!hasBacklog() || threads_ >= maximumThreads)
            backlogCame_.wait(mutex_);
        const std::uint64_t taken = taken_;
        {
            const MutexUnlock released(mutex_);
            std::this_thread::sleep_for(patience);
        }
        if (taken == taken_ && hasBacklog() && threads_ < maximumThreads)
            startThread();
    }
}

} // namespace dispatch
