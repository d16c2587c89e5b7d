// Reading elements without checking bounds first. Each is one step on a guarded array; an array of none gives
// none. Any thread, on arrays that do not change meanwhile or are guarded.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"

#pragma GCC visibility push(default)

namespace qn {

/// A random element, all equally likely; none when the array is empty.
id randomObject(const Ref<NSArray> &array);
/// The element at the index; none when the index is not below the count.
id objectOrNilAtIndex(const Ref<NSArray> &array, NSUInteger index);

} // namespace qn

#pragma GCC visibility pop
