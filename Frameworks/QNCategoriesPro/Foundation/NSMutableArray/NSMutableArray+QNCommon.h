// Changing arrays at their ends, and their order. Each is one step on a guarded array; nothing happens to
// none.
// (`removeLastObject`, which does nothing on an empty array, is the array's own.)
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"

namespace qn {

/// Nothing on an empty array.
void removeFirstObject(const Ref<NSMutableArray> &array);
/// Remove an element and give it; none on an empty array.
id popFirstObject(const Ref<NSMutableArray> &array);
id popLastObject(const Ref<NSMutableArray> &array);

void appendObject(const Ref<NSMutableArray> &array, const id &object);
void prependObject(const Ref<NSMutableArray> &array, const id &object);
/// The objects stay in their order. None for objects changes nothing; an index past the end raises
/// NSRangeException.
void appendObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects);
void prependObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects);
void insertObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects, NSUInteger index);

void reverse(const Ref<NSMutableArray> &array);
/// Every order is as likely as the others.
void shuffle(const Ref<NSMutableArray> &array);

} // namespace qn
