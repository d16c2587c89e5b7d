// Does several things at once, as each of them mostly waits for a printer of its own.
#pragma once

#include <cstddef>
#include <functional>

/// The most things that are done at once.
inline constexpr std::size_t mostAtOnce = 16;

/// Calls `act`, which must not throw, once with each number below `count`, on threads of the pool, and
/// returns when all calls have. Raises NSGenericException, before any call, when the system refuses a thread.
void sideBySide(std::size_t count, const std::function<void(std::size_t)> &act);
