// Detached threads, for work that blocks for long, which would hold up a queue.
#pragma once

#include <functional>

#pragma GCC visibility push(default)

/// Runs the block on a new thread that is never joined. A block that throws ends the process. Raises
/// NSInvalidArgumentException for an empty block, and NSGenericException when the system refuses a thread.
void NSThreadDetachNewThread(std::function<void()> block);

#pragma GCC visibility pop
