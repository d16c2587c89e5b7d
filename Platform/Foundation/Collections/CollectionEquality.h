// Equality of collections: they are equal if they hold equal objects, also when they nest deeply or contain
// themselves.
//
// Ordinary arrays and dictionaries are compared to any depth. Other objects within them compare themselves,
// at most 512 comparisons within one another; below that, objects equal only themselves. A pair of
// collections that is met again within its own comparison counts as equal.
//
// Threads: as for reading the collections.
#pragma once

#include "Platform/Foundation/Collections/ObjectVisit.h"

#pragma GCC visibility push(default)

class NSArray;
class NSDictionary;

namespace collections {

using ComparisonVisit = ObjectVisit<struct ComparingCollections>;

bool areEqual(const NSArray &one, const NSArray &other);
bool areEqual(const NSDictionary &one, const NSDictionary &other);

/// For other collections: the result of `compare`, which compares the elements of the two.
template <class Compare>
bool areEqual(const NSObject &one, const NSObject &other, const Compare &compare) {
    if (!ComparisonVisit::admits(one, &other))
        return ComparisonVisit::isWithin(one, &other);
    const ComparisonVisit visit(one, &other);
    return compare();
}

} // namespace collections

#pragma GCC visibility pop
