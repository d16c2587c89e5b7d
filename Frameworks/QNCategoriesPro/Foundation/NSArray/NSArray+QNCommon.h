// Reading arrays without a thought for their bounds. Each is one step on a guarded array; none gives none.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"

namespace qn {

/// Any element, each as likely as the others; none when empty.
id randomObject(const Ref<NSArray> &array);
/// None when the index is not below the count.
id objectOrNilAtIndex(const Ref<NSArray> &array, NSUInteger index);

} // namespace qn
