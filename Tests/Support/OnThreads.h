// Runs a test's body on several threads that start together; returns when all have ended.
#pragma once

#include "Tests/Support/Testing.h"

#include <latch>

namespace dispatch {

inline void onThreads(int count, const std::function<void(int)> &body) {
    std::latch start(count);
    std::vector<std::jthread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            body(i);
        });
    }
}

} // namespace dispatch
