// Changing arrays at their ends, and their order. Each is one step on a guarded array and does nothing to
// none. At the front every operation moves all elements. `removeLastObject`, which does nothing on an empty
// array, is the array's own.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"

#pragma GCC visibility push(default)

namespace qn {

/// Does nothing on an empty array.
void removeFirstObject(const Ref<NSMutableArray> &array);
/// Remove an element and return it; none on an empty array.
id popFirstObject(const Ref<NSMutableArray> &array);
id popLastObject(const Ref<NSMutableArray> &array);

void appendObject(const Ref<NSMutableArray> &array, const id &object);
void prependObject(const Ref<NSMutableArray> &array, const id &object);
/// The objects keep their order. A list of none, or an empty one, changes nothing; otherwise an index past
/// the end raises NSRangeException.
void appendObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects);
void prependObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects);
void insertObjects(const Ref<NSMutableArray> &array, const Ref<NSArray> &objects, NSUInteger index);

void reverse(const Ref<NSMutableArray> &array);
/// All orders are equally likely.
void shuffle(const Ref<NSMutableArray> &array);

} // namespace qn

#pragma GCC visibility pop
