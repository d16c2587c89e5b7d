// A semaphore as a mutex, which gives way for a moment before it sleeps: that suits short turns.
#pragma once

#include "Platform/Dispatch/Queues/Semaphore.h"

#pragma GCC visibility push(default)

namespace dispatch {

class ZK_CAPABILITY("mutex") SemaphoreMutex {
public:
    void lock() ZK_ACQUIRE() { free_.wait(); }
    void unlock() ZK_RELEASE() { free_.signal(); }

private:
    Semaphore free_{1};
};

} // namespace dispatch

#pragma GCC visibility pop
