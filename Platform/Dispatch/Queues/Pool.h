// The threads that run concurrent blocks. The pool grows while its threads block.
//
// | situation at a submission                         | what happens                                     |
// |---------------------------------------------------|--------------------------------------------------|
// | a thread is idle                                  | it is woken, unless one is already waking for it |
// | none idle, fewer than the base count exist        | a thread is started at once                      |
// | none idle, base count reached                     | the job waits; a watcher looks after the backlog |
//
// The base count is the number of processors, at least two. Every two milliseconds in which a backlog has
// made no progress at all the watcher starts one more thread, up to `maximumThreads`; threads above the
// base count end after some idle seconds.
//
// Threads: every member is safe from every thread. The pool is never destroyed and its threads are never
// joined: a process may exit at once while jobs are blocked. A job that throws ends the process.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"

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

    /// Runs `job` on one of the threads. Throws std::system_error if no thread at all can be had.
    void submit(Block job);

    std::size_t threadCount() const;

private:
    Pool();

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
    std::size_t threads_ = 0;
    std::size_t idle_ = 0;   // threads inside waitForJob
    std::size_t waking_ = 0; // of these, notified and not yet running again
    std::uint64_t taken_ = 0;
    bool watched_ = false;
};

} // namespace dispatch
