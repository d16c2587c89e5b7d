// The threads that run concurrent blocks. The pool grows while its threads are blocked.
//
// | situation at a submission                         | what happens                                     |
// |---------------------------------------------------|--------------------------------------------------|
// | a thread is idle                                  | it is woken, unless one is already waking for it |
// | none idle, fewer than the base count exist        | a thread is started at once                      |
// | none idle, base count reached                     | the job waits; a watcher thread is notified      |
// | none idle, and the system refuses a thread        | the job waits for the threads that exist         |
// | no thread exists, and the system refuses one      | the job is refused: NSGenericException           |
//
// The base count is the number of processors, at least two. For every 2 ms in which no job of the backlog was
// started, the watcher starts one more thread, up to `maximumThreads`. Threads above the base count end after
// 5 s without a job. A thread or watcher that could not be started is tried again at the next submission.
// The threads of the base count never end.
//
// These times are real time, not `Clock`'s: blocked threads hold up jobs even while a test's clock stands.
//
// Threads: every member is safe from every thread. The pool is never destroyed and its threads are never
// joined: a process may exit at once while jobs are blocked. A job that throws ends the process.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"
#include "Platform/Locking/Condition.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>

#pragma GCC visibility push(default)

namespace dispatch {

class Pool {
public:
    static constexpr std::size_t maximumThreads = 512;

    static Pool &shared();

    /// Runs `job` on one of the threads. Raises NSInvalidArgumentException for an empty job, and
    /// NSGenericException when there is no thread and none can be started; then the job is dropped.
    void submit(Block job);

    /// Starts a thread if there is none, so that no later submission is refused. Raises NSGenericException
    /// when none can be started.
    void requireThread() {
        if (!hasThread_.load(std::memory_order_acquire)) [[unlikely]]
            startFirstThread();
    }

    std::size_t threadCount() const;

private:
    Pool();

    void startFirstThread();
    bool startThread() ZK_REQUIRES(mutex_);
    void startWatcher() ZK_REQUIRES(mutex_);
    locking::Condition *takeIn(Block &&job) ZK_EXCLUDES(mutex_);
    void work() ZK_EXCLUDES(mutex_);
    bool waitForJob() ZK_REQUIRES(mutex_);
    void watch() ZK_EXCLUDES(mutex_);
    bool hasBacklog() const ZK_REQUIRES(mutex_) { return jobs_.size() > idle_; }

    const std::size_t base_;
    mutable locking::Mutex mutex_;
    locking::Condition jobCame_;
    locking::Condition backlogCame_;
    std::deque<Block> jobs_ ZK_GUARDED_BY(mutex_);
    std::atomic<bool> hasThread_ = false; // those of the base stay
    std::size_t threads_ ZK_GUARDED_BY(mutex_) = 0;
    std::size_t idle_ ZK_GUARDED_BY(mutex_) = 0;   // threads inside waitForJob
    std::size_t waking_ ZK_GUARDED_BY(mutex_) = 0; // of these, notified and not yet running again
    std::uint64_t taken_ ZK_GUARDED_BY(mutex_) = 0;
    bool watched_ ZK_GUARDED_BY(mutex_) = false;
};

} // namespace dispatch

#pragma GCC visibility pop
