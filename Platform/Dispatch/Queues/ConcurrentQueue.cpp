#include "Platform/Dispatch/Queues/ConcurrentQueue.h"

namespace dispatch {

ConcurrentQueue::ConcurrentQueue(std::string label) : label_(std::move(label)) {}

void ConcurrentQueue::async(Block read) {
    turnstile_->asyncRead(std::move(read));
}

void ConcurrentQueue::barrierAsync(Block write) {
    turnstile_->asyncBarrier(std::move(write));
}

} // namespace dispatch
