// The threads that run concurrent blocks. The pool grows while its threads block.
//
// | situation at a submission                         | what happens                                     |
// |---------------------------------------------------|--------------------------------------------------|
// | a thread is idle                                  | it is woken, unless one is already waking for it |
// | none idle, fewer than the base count exist        | a thread is started at once                      |
// | none idle, base count reached                     | the job waits; a watcher looks after the backlog |
// | none idle, and the system has no thread left      | the job waits for the threads there are          |
// | there is none, and the system has none            | the job is refused: NSGenericException           |
//
// The base count is the number of processors, at least two. Every two milliseconds in which a backlog has
// made no progress at all the watcher starts one more thread, up to `maximumThreads`; threads above the
// base count end after some idle seconds. What could not be started, threads or watcher, the next submissions
// try again. Once there is a thread there always is one.
//
// Threads: every member is safe from every thread. The pool is never destroyed and its threads are never
// joined: a process may exit at once while jobs are blocked. A job that throws ends the process.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>

namespace dispatch {

class Pool {
public:
    static constexpr std::size_t maximumThreads = 512;

    static Pool &shared();

    /// Runs `job` on one of the threads. Raises NSInvalidArgumentException for none, and NSGenericException
    /// if no thread at all can be had: then the job is not kept.
    void submit(Block job);

    /// Sees to it that there is a thread, so that no submission after it is refused. Raises
    /// NSGenericException if none can be had.
    void requireThread() {
        if (!hasThread_.load(std::memory_order_acquire)) [[unlikely]]
            startFirstThread();
    }

    std::size_t threadCount() const;

private:
    Pool();

    void startFirstThread();
    bool startThread();
    void startWatcher();
    void work();
    bool waitForJob(std::unique_lock<std::mutex> &lock);
    void watch();
    bool hasBacklog() const { return jobs_.size() > idle_; }

    const std::size_t base_;
    mutable std::mutex mutex_;
    std::condition_variable jobCame_;
    std::condition_variable backlogCame_;
    std::deque<Block> jobs_;
    std::atomic<bool> hasThread_ = false; // those of the base stay
    std::size_t threads_ = 0;
    std::size_t idle_ = 0;   // threads inside waitForJob
    std::size_t waking_ = 0; // of these, notified and not yet running again
    std::uint64_t taken_ = 0;
    bool watched_ = false;
};

} // namespace dispatch
