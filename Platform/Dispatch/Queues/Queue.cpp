#include "Platform/Dispatch/Queues/Queue.h"

#include "Platform/Dispatch/Queues/Pool.h"

namespace dispatch {

namespace {

class GlobalQueue final : public Queue {
public:
    void async(Block block) override { Pool::shared().submit(std::move(block)); }
};

} // namespace

Queue &globalQueue() {
    static auto *const queue = new GlobalQueue; // blocks may still come while the process ends
    return *queue;
}

} // namespace dispatch
