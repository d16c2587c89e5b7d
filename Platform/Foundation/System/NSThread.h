// Threads of one's own, for work that must wait where no queue may.
#pragma once

#include <functional>

/// Runs the block on a new thread that nobody waits for. A block that throws ends the process. Raises
/// NSInvalidArgumentException for none, NSGenericException when the system has no thread left.
void NSThreadDetachNewThread(std::function<void()> block);
