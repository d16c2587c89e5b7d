// When collections are equal: when they hold equal objects, however deep they nest and even where they lead
// back to themselves.
//
// Ordinary arrays and dictionaries are compared to any depth. Whatever else is met within a comparison
// compares itself: 512 comparisons within one another, below which objects equal only themselves. Two
// collections that are met within their own comparison are equal as far as that goes.
//
// Threads: any, as for reading the collections.
#pragma once

#include "Platform/Foundation/Collections/ObjectVisit.h"

class NSArray;
class NSDictionary;

namespace collections {

using ComparisonVisit = ObjectVisit<struct ComparingCollections>;

bool areEqual(const NSArray &one, const NSArray &other);
bool areEqual(const NSDictionary &one, const NSDictionary &other);

/// What `compare` says of the two, for collections that compare themselves.
template <class Compare>
bool areEqual(const NSObject &one, const NSObject &other, const Compare &compare) {
    if (!ComparisonVisit::admits(one, &other))
        return ComparisonVisit::isWithin(one, &other);
    const ComparisonVisit visit(one, &other);
    return compare();
}

} // namespace collections
