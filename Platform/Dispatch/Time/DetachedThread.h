// A thread that nobody waits for.
#pragma once

#include <functional>

namespace dispatch {

/// Runs `function`, which must not throw, on a new thread. False when the system has no thread left: then
/// nothing is run. Any thread.
[[nodiscard]] bool startDetachedThread(std::function<void()> function);

} // namespace dispatch
