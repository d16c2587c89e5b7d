// Checks of arguments. They raise an NSException whose reason begins with the operation's name.
//
//     runtime::checkIndex("NSArray objectAtIndex:", index, count());
//     // NSRangeException: -[NSArray objectAtIndex:]: index 3 beyond bounds; count 2
#pragma once

#include "Platform/Runtime/Object/NSException.h"
#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

namespace runtime {

/// NSRangeException unless `index` is below `bound`.
void checkIndex(const char *operation, NSUInteger index, NSUInteger bound);
/// NSRangeException unless the range lies within `count`.
void checkRange(const char *operation, NSUInteger location, NSUInteger length, NSUInteger count);
/// NSInvalidArgumentException for a count of bytes or elements of 2^40 or more, which no memory holds.
void checkCount(const char *operation, NSUInteger count);
/// NSInvalidArgumentException unless `valid`.
void checkArgument(const char *operation, bool valid, const char *fault);
/// NSInvalidArgumentException for none (a null pointer).
void checkObject(const char *operation, const auto &object) {
    checkArgument(operation, object != nullptr, "object cannot be nil");
}

} // namespace runtime

#pragma GCC visibility pop
