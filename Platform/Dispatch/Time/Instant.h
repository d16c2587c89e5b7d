// A point of monotonic time, in nanoseconds since a fixed but unspecified moment.
//
//     Instant deadline = clock.now() + std::chrono::seconds(5);
//
// Arithmetic saturates instead of overflowing; `distantFuture()` plus or minus any duration is itself.
#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <limits>

#pragma GCC visibility push(default)

namespace dispatch {

class Instant {
public:
    using Duration = std::chrono::nanoseconds;

    constexpr Instant() = default;
    constexpr explicit Instant(Duration sinceOrigin) : count_(sinceOrigin.count()) {}

    /// Means "never".
    static constexpr Instant distantFuture() { return Instant(Duration::max()); }

    constexpr Duration sinceOrigin() const { return Duration(count_); }

    friend constexpr auto operator<=>(Instant, Instant) = default;

    friend constexpr Instant operator+(Instant instant, Duration duration) {
        return instant == distantFuture() ? instant : Instant(sum(instant.count_, duration.count()));
    }
    friend constexpr Instant operator-(Instant instant, Duration duration) {
        return instant == distantFuture() ? instant : Instant(difference(instant.count_, duration.count()));
    }
    friend constexpr Duration operator-(Instant later, Instant earlier) {
        return difference(later.count_, earlier.count_);
    }

private:
    using Limits = std::numeric_limits<std::int64_t>;

    static constexpr Duration sum(std::int64_t a, std::int64_t b) {
        std::int64_t result = 0;
        return Duration(!__builtin_add_overflow(a, b, &result) ? result
                        : a < 0                                ? Limits::min()
                                                               : Limits::max());
    }
    static constexpr Duration difference(std::int64_t a, std::int64_t b) {
        std::int64_t result = 0;
        return Duration(!__builtin_sub_overflow(a, b, &result) ? result
                        : a < 0                                ? Limits::min()
                                                               : Limits::max());
    }

    std::int64_t count_ = 0;
};

} // namespace dispatch

#pragma GCC visibility pop
