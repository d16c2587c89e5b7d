// A private concurrent queue with barriers: readers run side by side, a barrier runs alone.
//
//     ConcurrentQueue queue("printers");
//     queue.barrierAsync([&] { list.push_back(printer); });              // write, do not wait
//     std::size_t count = queue.sync([&] { return list.size(); });       // sees that write
//
// Order: a barrier starts when everything submitted before it has ended; what is submitted after it starts
// when the barrier has ended. A block sees everything done by the blocks ordered before it.
//
// Threads: every member is safe from every thread. `sync` and `barrierSync` run their function on the calling
// thread. While waiting they may run asynchronous barriers ahead of them on that thread, so a barrier must
// not depend on the thread it runs on. Calling `sync` or `barrierSync` from inside a block of the same queue
// is forbidden, since it may deadlock; submitting asynchronously from there is fine.
//
// Errors: what a synchronous function throws reaches its caller, and the queue goes on. An asynchronous block
// that throws ends the process. Every call raises NSInvalidArgumentException for an empty block; the
// asynchronous ones raise NSGenericException when the pool has no thread and can start none.
//
// Lifetime: the queue may be destroyed with asynchronous blocks outstanding, even by one of them; they still
// run. It must not be destroyed during a call of one of its members.
#pragma once

#include "Platform/Dispatch/Queues/FairReaderWriterLock.h"
#include "Platform/Dispatch/Queues/Queue.h"
#include "Platform/Runtime/Object/NSException.h"

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#pragma GCC visibility push(default)

namespace dispatch {

class ConcurrentQueue final : public Queue {
public:
    /// `label` identifies the queue to developers.
    explicit ConcurrentQueue(std::string label);

    const std::string &label() const { return label_; }

    /// Runs `read` concurrently with other readers, and returns its result. With no barrier queued or running
    /// it does not wait, and costs two atomic additions.
    template <class F>
    std::invoke_result_t<F &> sync(F &&read) const {
        runtime::checkBlock("dispatch::ConcurrentQueue::sync", read);
        const Reading reading(*lock_);
        return read();
    }

    /// Waits for its turn, runs `write` alone and returns its result.
    template <class F>
    std::invoke_result_t<F &> barrierSync(F &&write) {
        runtime::checkBlock("dispatch::ConcurrentQueue::barrierSync", write);
        const Writing writing(*lock_);
        return write();
    }

    /// Runs `read` later on the pool, concurrently with other readers.
    void async(Block read) override;

    /// Runs `write` later, alone. Its captured objects are released before later blocks start.
    void barrierAsync(Block write);

private:
    struct Reading {
        explicit Reading(FairReaderWriterLock &lock) : lock_(lock) { lock_.enterRead(); }
        Reading(const Reading &) = delete;
        ~Reading() { lock_.leaveRead(); }
        FairReaderWriterLock &lock_;
    };
    struct Writing {
        explicit Writing(FairReaderWriterLock &lock) : lock_(lock) { lock_.enterBarrier(); }
        Writing(const Writing &) = delete;
        ~Writing() { lock_.leaveBarrier(); }
        FairReaderWriterLock &lock_;
    };

    const std::shared_ptr<FairReaderWriterLock> lock_ = std::make_shared<FairReaderWriterLock>();
    const std::string label_;
};

} // namespace dispatch

#pragma GCC visibility pop
