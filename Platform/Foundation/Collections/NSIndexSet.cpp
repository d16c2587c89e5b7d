#include "Platform/Foundation/Collections/NSIndexSet.h"

#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <algorithm>

NS_IMPLEMENTATION(NSIndexSet) {}
NS_IMPLEMENTATION(NSMutableIndexSet) {}

namespace {

/// The end of the range, at most NSNotFound.
NSUInteger endOf(NSRange range) {
    const NSUInteger start = std::min(range.location, NSNotFound);
    return start + std::min(range.length, NSNotFound - start);
}

NSRange between(NSUInteger start, NSUInteger end) {
    return {start, end > start ? end - start : 0};
}

} // namespace

Ref<NSIndexSet> NSIndexSet::indexSetWithIndexesInRange(NSRange range) {
    runtime::checkRange("NSIndexSet initWithIndexesInRange:", range, NSNotFound);
    return make<NSIndexSet>(range.length ? std::vector<NSRange>{range} : std::vector<NSRange>());
}

std::vector<NSRange>::const_iterator NSIndexSet::endingAfter(NSUInteger index) const {
    return std::partition_point(ranges_.begin(), ranges_.end(),
                                [index](const NSRange &range) { return range.end() <= index; });
}

NSUInteger NSIndexSet::countOfIndexesInRange(NSRange range) const {
    const NSUInteger end = endOf(range);
    NSUInteger count = 0;
    for (auto i = endingAfter(range.location); i != ranges_.end() && i->location < end; ++i)
        count += between(std::max(i->location, range.location), std::min(i->end(), end)).length;
    return count;
}

bool NSIndexSet::containsIndexesInRange(NSRange range) const {
    return range.length > 0 && countOfIndexesInRange(range) == range.length;
}

bool NSIndexSet::containsIndexes(const Ref<NSIndexSet> &indexes) const {
    return !indexes || std::all_of(indexes->ranges_.begin(), indexes->ranges_.end(),
                                   [this](const NSRange &range) { return containsIndexesInRange(range); });
}

NSUInteger NSIndexSet::indexGreaterThanIndex(NSUInteger index) const {
    return index < NSNotFound ? indexGreaterThanOrEqualToIndex(index + 1) : NSNotFound;
}

NSUInteger NSIndexSet::indexGreaterThanOrEqualToIndex(NSUInteger index) const {
    const auto found = endingAfter(index);
    return found == ranges_.end() ? NSNotFound : std::max(found->location, index);
}

NSUInteger NSIndexSet::indexLessThanIndex(NSUInteger index) const {
    return index ? indexLessThanOrEqualToIndex(index - 1) : NSNotFound;
}

NSUInteger NSIndexSet::indexLessThanOrEqualToIndex(NSUInteger index) const {
    const auto found = endingAfter(index);
    if (found != ranges_.end() && found->location <= index)
        return index;
    return found == ranges_.begin() ? NSNotFound : std::prev(found)->end() - 1;
}

void NSIndexSet::enumerateIndexesWithOptions(NSEnumerationOptions options, const Visitor &visitor) const {
    runtime::checkBlock("NSIndexSet enumerateIndexesWithOptions:usingBlock:", visitor);
    auto ranges = ranges_; // the visitor may change the set
    const bool backwards = options & NSEnumerationReverse;
    if (backwards)
        std::reverse(ranges.begin(), ranges.end());
    bool stop = false;
    for (const NSRange &range : ranges)
        for (NSUInteger i = 0; !stop && i < range.length; ++i)
            visitor(backwards ? range.end() - 1 - i : range.location + i, stop);
}

void NSIndexSet::enumerateRangesUsingBlock(const RangeVisitor &visitor) const {
    runtime::checkBlock("NSIndexSet enumerateRangesUsingBlock:", visitor);
    const auto ranges = ranges_;
    bool stop = false;
    for (auto i = ranges.begin(); !stop && i != ranges.end(); ++i)
        visitor(*i, stop);
}

NSUInteger NSIndexSet::hash() const {
    return keyedHash(ranges_.data(), ranges_.size() * sizeof ranges_[0]);
}

Ref<NSString> NSIndexSet::description() const {
    std::string text;
    for (const NSRange &range : ranges_) {
        text += (text.empty() ? "" : " ") + std::to_string(range.location);
        if (range.length > 1)
            text += "-" + std::to_string(range.end() - 1);
    }
    if (ranges_.empty())
        return NSString::stringWithFormat("%@(no indexes)", NSObject::description());
    return NSString::stringWithFormat("%@[number of indexes: %lu (in %lu ranges), indexes: (%s)]",
                                      NSObject::description(), count(), ranges_.size(), text.c_str());
}

id NSIndexSet::mutableCopy() const {
    return make<NSMutableIndexSet>(ranges_);
}

void NSMutableIndexSet::addIndexesInRange(NSRange range) {
    runtime::checkRange("NSMutableIndexSet addIndexesInRange:", range, NSNotFound);
    if (!range.length)
        return;
    // All ranges that touch or overlap the new one are merged with it.
    const auto first = endingAfter(range.location ? range.location - 1 : 0);
    auto last = first;
    NSUInteger start = range.location, end = range.end();
    for (; last != ranges_.end() && last->location <= range.end(); ++last) {
        start = std::min(start, last->location);
        end = std::max(end, last->end());
    }
    ranges_.insert(ranges_.erase(first, last), between(start, end));
}

void NSMutableIndexSet::removeIndexesInRange(NSRange range) {
    if (!range.length)
        return;
    const NSUInteger end = endOf(range);
    const auto first = endingAfter(range.location);
    auto last = first;
    std::vector<NSRange> left;
    for (; last != ranges_.end() && last->location < end; ++last)
        for (const NSRange part : {between(last->location, range.location), between(end, last->end())})
            if (part.length)
                left.push_back(part);
    ranges_.insert(ranges_.erase(first, last), left.begin(), left.end());
}

void NSMutableIndexSet::addIndexes(const Ref<NSIndexSet> &indexes) {
    if (indexes)
        indexes->enumerateRangesUsingBlock([this](NSRange range, bool &) { addIndexesInRange(range); });
}

void NSMutableIndexSet::removeIndexes(const Ref<NSIndexSet> &indexes) {
    if (indexes)
        indexes->enumerateRangesUsingBlock([this](NSRange range, bool &) { removeIndexesInRange(range); });
}

void NSMutableIndexSet::shiftIndexesStartingAtIndex(NSUInteger index, NSInteger delta) {
    const NSUInteger distance = delta < 0 ? -static_cast<NSUInteger>(delta) : static_cast<NSUInteger>(delta);
    if (delta > 0 && !ranges_.empty() && ranges_.back().end() > index) // before anything changes
        runtime::checkRange("NSMutableIndexSet shiftIndexesStartingAtIndex:by:",
                            {ranges_.back().end(), distance}, NSNotFound);
    if (delta < 0)
        removeIndexesInRange(between(index - std::min(distance, index), index));
    const auto moving = make<NSMutableIndexSet>(ranges_);
    moving->removeIndexesInRange({0, index});
    if (delta < 0)
        moving->removeIndexesInRange({0, distance});
    removeIndexesInRange(between(index, NSNotFound));
    moving->enumerateRangesUsingBlock([&](NSRange range, bool &) {
        addIndexesInRange({delta < 0 ? range.location - distance : range.location + distance, range.length});
    });
}
