// What collections do with their arguments, beside the checks of Raise.h: snapshots and comparisons.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <vector>

class NSArray;

namespace collections {

/// The elements as they are now: the list may be guarded, or the very collection that is being changed. None
/// is empty.
std::vector<id> objectsOf(const Ref<NSArray> &array);

/// Whether two elements are the same for a collection. None equals nothing.
inline bool equal(const id &first, const id &second) {
    return first && second && (first == second || first->isEqual(second));
}

} // namespace collections
