#include "Platform/Dispatch/Queues/Pool.h"

#include "Platform/Dispatch/Time/DetachedThread.h"
#include "Platform/Runtime/Object/NSException.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace dispatch {

using namespace std::chrono_literals;

constexpr auto patience = 2ms; // with a backlog, before another thread is started
constexpr auto idleLife = 5s;  // of a thread above the base count

Pool &Pool::shared() {
    static auto *const pool = new Pool; // its threads outlive static destruction
    return *pool;
}

Pool::Pool() : base_(std::max(2U, std::thread::hardware_concurrency())) {}

std::size_t Pool::threadCount() const {
    const std::lock_guard lock(mutex_);
    return threads_;
}

void Pool::submit(Block job) {
    runtime::checkBlock("dispatch::Pool::submit", job);
    requireThread();
    std::unique_lock lock(mutex_);
    jobs_.push_back(std::move(job));
    if (idle_ > waking_) {
        ++waking_;
        lock.unlock();
        jobCame_.notify_one();
    } else if (hasBacklog() && (threads_ >= base_ || !startThread())) {
        startWatcher();
        lock.unlock();
        backlogCame_.notify_one();
    }
}

void Pool::startFirstThread() {
    const std::lock_guard lock(mutex_);
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
    std::unique_lock lock(mutex_);
    while (!jobs_.empty() || waitForJob(lock)) {
        Block job = std::move(jobs_.front());
        jobs_.pop_front();
        ++taken_;
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }
    --threads_;
}

// False: idle for long enough, and not one of the base.
bool Pool::waitForJob(std::unique_lock<std::mutex> &lock) {
    ++idle_;
    while (jobs_.empty()) {
        const bool needed = threads_ <= base_;
        auto outcome = std::cv_status::no_timeout;
        if (needed)
            jobCame_.wait(lock);
        else
            outcome = jobCame_.wait_for(lock, idleLife);
        // Also when another thread has taken the job: the next submission must notify again.
        if (waking_ > 0)
            --waking_;
        if (outcome == std::cv_status::timeout && jobs_.empty() && threads_ > base_)
            break;
    }
    --idle_;
    return !jobs_.empty();
}

void Pool::watch() {
    std::unique_lock lock(mutex_);
    for (;;) {
        backlogCame_.wait(lock, [this] { return hasBacklog() && threads_ < maximumThreads; });
        const std::uint64_t taken = taken_;
        lock.unlock();
        std::this_thread::sleep_for(patience);
        lock.lock();
        if (taken == taken_ && hasBacklog() && threads_ < maximumThreads)
            startThread();
    }
}

} // namespace dispatch
