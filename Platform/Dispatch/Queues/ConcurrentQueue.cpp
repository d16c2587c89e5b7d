#include "Platform/Dispatch/Queues/ConcurrentQueue.h"

#include "Platform/Dispatch/Queues/Pool.h"

namespace dispatch {

ConcurrentQueue::ConcurrentQueue(std::string label) : label_(std::move(label)) {}

void ConcurrentQueue::async(Block read) {
    runtime::checkBlock("dispatch::ConcurrentQueue::async", read);
    Pool::shared().requireThread(); // a block that has been let in must not be refused
    lock_->asyncRead(std::move(read));
}

void ConcurrentQueue::barrierAsync(Block write) {
    runtime::checkBlock("dispatch::ConcurrentQueue::barrierAsync", write);
    Pool::shared().requireThread();
    lock_->asyncBarrier(std::move(write));
}

} // namespace dispatch
