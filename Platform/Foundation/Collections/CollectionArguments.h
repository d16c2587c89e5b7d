// What collections do with their arguments: checks, which raise with the operation's name, and snapshots.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <vector>

class NSArray;

namespace collections {

/// NSRangeException unless `index` is below `bound`.
void checkIndex(const char *operation, NSUInteger index, NSUInteger bound);
/// NSRangeException unless the range lies within `count`.
void checkRange(const char *operation, NSRange range, NSUInteger count);
/// NSInvalidArgumentException unless `valid`.
void checkArgument(const char *operation, bool valid, const char *fault);
/// NSInvalidArgumentException for none.
void checkObject(const char *operation, const id &object);
/// NSInvalidArgumentException for a block, a comparator or a function of none.
void checkBlock(const char *operation, const auto &block) {
    checkArgument(operation, static_cast<bool>(block), "block cannot be nil");
}

/// How many places a collection sets aside for a capacity, which is a hint: none for one that nobody means.
constexpr NSUInteger reservedFor(NSUInteger capacity) {
    return capacity <= 1 << 20 ? capacity : 0;
}

/// The elements as they are now: the list may be guarded, or the very collection that is being changed. None
/// is empty.
std::vector<id> objectsOf(const Ref<NSArray> &array);

/// Whether two elements are the same for a collection. None equals nothing.
inline bool equal(const id &first, const id &second) {
    return first && second && (first == second || first->isEqual(second));
}

} // namespace collections
