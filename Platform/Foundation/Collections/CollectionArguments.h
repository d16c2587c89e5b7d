// Snapshots and comparisons for the arguments of collections. The checks of arguments are in Raise.h.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <vector>

#pragma GCC visibility push(default)

class NSArray;

namespace collections {

/// A copy of the elements, since the array may change meanwhile: it may be guarded, or be the collection that
/// is being changed. Empty for none.
std::vector<id> objectsOf(const Ref<NSArray> &array);

/// Whether a collection takes two elements for equal. False if either is none.
inline bool equal(const id &first, const id &second) {
    return first && second && (first == second || first->isEqual(second));
}

} // namespace collections

#pragma GCC visibility pop
