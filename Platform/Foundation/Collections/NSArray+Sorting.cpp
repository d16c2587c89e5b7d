// Sorting arrays, and searching in sorted ones.
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/StableSort.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Runtime/Object/Message.h"
#include "Platform/Runtime/Object/Raise.h"

namespace {

NSComparator comparatorOf(NSSortFunction function, void *context) {
    runtime::checkBlock("NSArray sortedArrayUsingFunction:context:", function);
    return [=](const id &first, const id &second) {
        const NSInteger order = function(first, second, context);
        return order < 0   ? NSComparisonResult::OrderedAscending
               : order > 0 ? NSComparisonResult::OrderedDescending
                           : NSComparisonResult::OrderedSame;
    };
}

NSComparator comparatorOf(SEL selector) {
    return [=](const id &first, const id &second) {
        return objc_msgSend<NSComparisonResult>(first, selector, second);
    };
}

/// The first index of the range whose element does not satisfy `before`.
template <class Before>
NSUInteger partitionPoint(const NSArray &array, NSRange range, const Before &before) {
    NSUInteger start = range.location, length = range.length;
    while (length) {
        const NSUInteger half = length / 2;
        if (before(array.objectAtIndex(start + half))) {
            start += half + 1;
            length -= half + 1;
        } else {
            length = half;
        }
    }
    return start;
}

} // namespace

Ref<NSData> NSArray::sortedArrayHint() const {
    return NSData::data();
}

Ref<NSArray> NSArray::sortedArrayUsingFunction(NSSortFunction function, void *context) const {
    return sortedArrayUsingComparator(comparatorOf(function, context));
}

Ref<NSArray> NSArray::sortedArrayUsingFunction(NSSortFunction function, void *context,
                                               const Ref<NSData> &) const {
    return sortedArrayUsingFunction(function, context);
}

Ref<NSArray> NSArray::sortedArrayUsingSelector(SEL selector) const {
    return sortedArrayUsingComparator(comparatorOf(selector));
}

Ref<NSArray> NSArray::sortedArrayUsingComparator(const NSComparator &comparator) const {
    return sortedArrayWithOptions(0, comparator);
}

Ref<NSArray> NSArray::sortedArrayWithOptions(NSSortOptions, const NSComparator &comparator) const {
    runtime::checkBlock("NSArray sortedArrayWithOptions:usingComparator:", comparator);
    return arrayWithObjects(stableSorted(allObjects(), [&](const id &earlier, const id &later) {
        return comparator(earlier, later) == NSComparisonResult::OrderedDescending;
    }));
}

NSUInteger NSArray::indexOfObject(const id &object, NSRange sortedRange, NSBinarySearchingOptions options,
                                  const NSComparator &comparator) const {
    constexpr auto operation = "NSArray indexOfObject:inSortedRange:options:usingComparator:";
    constexpr auto bothEnds = NSBinarySearchingFirstEqual | NSBinarySearchingLastEqual;
    runtime::checkObject(operation, object);
    runtime::checkArgument(operation, (options & bothEnds) != bothEnds,
                           "first and last equal exclude each other");
    runtime::checkBlock(operation, comparator);
    runtime::checkRange(operation, sortedRange, count());
    const NSUInteger lower = partitionPoint(*this, sortedRange, [&](const id &element) {
        return comparator(element, object) == NSComparisonResult::OrderedAscending;
    });
    const NSUInteger upper =
        partitionPoint(*this, {lower, sortedRange.end() - lower}, [&](const id &element) {
            return comparator(element, object) != NSComparisonResult::OrderedDescending;
        });
    const bool last = options & NSBinarySearchingLastEqual;
    if (options & NSBinarySearchingInsertionIndex)
        return last ? upper : lower;
    return lower == upper ? NSNotFound : last ? upper - 1 : lower;
}

void NSMutableArray::sortUsingFunction(NSSortFunction function, void *context) {
    sortUsingComparator(comparatorOf(function, context));
}

void NSMutableArray::sortUsingSelector(SEL selector) {
    sortUsingComparator(comparatorOf(selector));
}

void NSMutableArray::sortUsingComparator(const NSComparator &comparator) {
    sortWithOptions(0, comparator);
}

void NSMutableArray::sortWithOptions(NSSortOptions options, const NSComparator &comparator) {
    setArray(sortedArrayWithOptions(options, comparator));
}
