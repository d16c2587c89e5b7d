// The capacity that a buffer or a collection is made with.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

/// The number of elements to reserve for a capacity, which is only a hint: none for one above 2^20, which may
/// be a mistake.
constexpr NSUInteger reservedFor(NSUInteger capacity) {
    return capacity <= 1 << 20 ? capacity : 0;
}
