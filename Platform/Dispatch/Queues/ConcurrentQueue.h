// A private concurrent queue with barriers: readers run side by side, a barrier runs alone.
//
//     ConcurrentQueue queue("printers");
//     queue.barrierAsync([&] { list.push_back(printer); });              // write, do not wait
//     std::size_t count = queue.sync([&] { return list.size(); });       // sees that write
//
// Order: a barrier starts when everything submitted before it has ended, and what is submitted after it
// starts when it has ended. Everything a block did is seen by the blocks that are ordered after it.
//
// Threads: every member is safe from every thread. `sync` and `barrierSync` run their function on the
// calling thread; while one of them waits it may run asynchronous barriers ahead of it on its own thread,
// so a barrier must not depend on which thread it runs on. Without barriers about, `sync` costs two atomic
// additions. Calling `sync` or `barrierSync` from inside a block of the same queue is forbidden: it may
// wait for itself. Submitting asynchronously from there is fine.
//
// Errors: what a synchronous function throws reaches its caller, and the queue goes on. An asynchronous block
// that throws ends the process. NSException is raised for a block of none, and by the asynchronous calls when
// the pool can have no thread at all.
//
// Life: the queue may be destroyed with asynchronous blocks outstanding, even by one of them; they still
// run. It must not be destroyed during a call of one of its members.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"
#include "Platform/Dispatch/Queues/Turnstile.h"
#include "Platform/Dispatch/Time/BlockArgument.h"

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace dispatch {

class ConcurrentQueue final : public Queue {
public:
    /// `label` names the queue to developers.
    explicit ConcurrentQueue(std::string label);

    const std::string &label() const { return label_; }

    /// Runs `read` now, side by side with other readers, and returns what it returns.
    template <class F>
    std::invoke_result_t<F &> sync(F &&read) const {
        checkBlock("dispatch::ConcurrentQueue::sync", read);
        const Reading reading(*turnstile_);
        return read();
    }

    /// Runs `write` alone and returns what it returns.
    template <class F>
    std::invoke_result_t<F &> barrierSync(F &&write) {
        checkBlock("dispatch::ConcurrentQueue::barrierSync", write);
        const Writing writing(*turnstile_);
        return write();
    }

    /// Runs `read` later on the pool, side by side with other readers.
    void async(Block read) override;

    /// Runs `write` later, alone. Its captured objects are released before the barrier ends.
    void barrierAsync(Block write);

private:
    struct Reading {
        explicit Reading(Turnstile &turnstile) : turnstile_(turnstile) { turnstile_.enterRead(); }
        Reading(const Reading &) = delete;
        ~Reading() { turnstile_.leaveRead(); }
        Turnstile &turnstile_;
    };
    struct Writing {
        explicit Writing(Turnstile &turnstile) : turnstile_(turnstile) { turnstile_.enterBarrier(); }
        Writing(const Writing &) = delete;
        ~Writing() { turnstile_.leaveBarrier(); }
        Turnstile &turnstile_;
    };

    const std::shared_ptr<Turnstile> turnstile_ = std::make_shared<Turnstile>();
    const std::string label_;
};

} // namespace dispatch
