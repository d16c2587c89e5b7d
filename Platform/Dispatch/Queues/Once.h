// Runs a function once in the life of a token, however many threads ask.
//
//     static dispatch::Once token;
//     dispatch::once(token, [] { prepare(); });
//
// Every caller returns after the one run has ended and sees its effects. If the function throws, its
// caller gets the exception and the token stays unused, so that the next caller tries again. Asking for
// the same token from inside the function deadlocks.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <utility>

namespace dispatch {

class Once {
public:
    constexpr Once() noexcept = default;
    Once(const Once &) = delete;
    Once &operator=(const Once &) = delete;

private:
    template <class F>
    friend void once(Once &token, F &&function);

    std::atomic<bool> done_ = false;
    std::mutex mutex_;
};

template <class F>
void once(Once &token, F &&function) {
    if (token.done_.load(std::memory_order_acquire))
        return;
    const std::lock_guard lock(token.mutex_);
    if (token.done_.load(std::memory_order_relaxed))
        return;
    std::invoke(std::forward<F>(function));
    token.done_.store(true, std::memory_order_release);
}

} // namespace dispatch
