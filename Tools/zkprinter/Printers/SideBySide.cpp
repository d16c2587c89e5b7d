#include "Tools/zkprinter/Printers/SideBySide.h"

#include "Platform/Dispatch/Queues/Pool.h"
#include "Platform/Dispatch/Queues/Semaphore.h"

#include <algorithm>
#include <atomic>

void sideBySide(std::size_t count, const std::function<void(std::size_t)> &act) {
    std::atomic<std::size_t> next = 0;
    dispatch::Semaphore done(0);
    const auto work = [&] {
        for (std::size_t number = next++; number < count; number = next++)
            act(number);
        done.signal();
    };
    const std::size_t workers = std::min(count, mostAtOnce);
    dispatch::Pool &pool = dispatch::Pool::shared();
    pool.requireThread(); // so that no submission is refused while others run
    for (std::size_t worker = 0; worker < workers; ++worker)
        pool.submit(work);
    for (std::size_t worker = 0; worker < workers; ++worker)
        done.wait();
}
