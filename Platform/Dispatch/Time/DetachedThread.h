// A thread that is never joined.
#pragma once

#include <functional>

namespace dispatch {

/// Runs `function`, which must not throw, on a new thread. False when the system refuses a thread: then
/// nothing is run. May be called from any thread.
[[nodiscard]] bool startDetachedThread(std::function<void()> function);

} // namespace dispatch
