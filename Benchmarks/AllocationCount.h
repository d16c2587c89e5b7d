// Counts the heap allocations of the program it is linked to.
//
// One thread.
#pragma once

#include <cstddef>

/// How many there were since the program began.
std::size_t allocationCount();
