// Random indexes, seeded by the system. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

namespace qn {

/// An index below `bound`, which must not be 0; all are equally likely.
NSUInteger randomIndex(NSUInteger bound);

} // namespace qn

#pragma GCC visibility pop
