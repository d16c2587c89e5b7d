// The capacity that a buffer or a collection is made with.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

/// How many places a container sets aside for a capacity, which is a hint: zero for an absurdly large one.
constexpr NSUInteger reservedFor(NSUInteger capacity) {
    return capacity <= 1 << 20 ? capacity : 0;
}
