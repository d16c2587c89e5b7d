// A range of indices of a text, a byte buffer or an array.
#pragma once

#include "Platform/Runtime/Object/Raise.h"
#include "Platform/Runtime/Object/Ref.h"

#pragma GCC visibility push(default)

struct NSRange {
    NSUInteger location = 0;
    NSUInteger length = 0;

    /// One past the last index; for ranges that fit, since the sum may overflow.
    NSUInteger end() const { return location + length; }
    /// Whether the range lies within `count` elements, for any range.
    bool fits(NSUInteger count) const { return location <= count && length <= count - location; }
    friend bool operator==(const NSRange &, const NSRange &) = default;
};

constexpr NSRange NSMakeRange(NSUInteger location, NSUInteger length) {
    return {location, length};
}

namespace runtime {

/// NSRangeException unless the range lies within `count`.
inline void checkRange(const char *operation, NSRange range, NSUInteger count) {
    checkRange(operation, range.location, range.length, count);
}

} // namespace runtime

#pragma GCC visibility pop
