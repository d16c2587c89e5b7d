// Sets of indexes, stored as ascending ranges that neither touch nor overlap.
//
// Indexes are below NSNotFound: adding others raises NSRangeException; in all other operations a range that
// reaches farther is cut there.
//
// Threads: an NSIndexSet is immutable and may be read from any thread; an NSMutableIndexSet belongs to one
// thread at a time.
#pragma once

#include "Platform/Foundation/Collections/NSFastEnumeration.h"
#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <functional>
#include <vector>

#pragma GCC visibility push(default)

class NSIndexSet : public NSObject {
    NS_CLASS(NSIndexSet, NSObject)
public:
    /// Set `stop` to end the walk.
    using Visitor = std::function<void(NSUInteger index, bool &stop)>;
    using RangeVisitor = std::function<void(NSRange range, bool &stop)>;

    NSIndexSet() = default;
    /// For `copy`: `ranges` are those of another set.
    explicit NSIndexSet(std::vector<NSRange> ranges) : ranges_(std::move(ranges)) {}

    static Ref<NSIndexSet> indexSet() { return make<NSIndexSet>(); }
    static Ref<NSIndexSet> indexSetWithIndex(NSUInteger index) {
        return indexSetWithIndexesInRange({index, 1});
    }
    static Ref<NSIndexSet> indexSetWithIndexesInRange(NSRange range);

    NSUInteger count() const { return countOfIndexesInRange({0, NSNotFound}); }
    NSUInteger countOfIndexesInRange(NSRange range) const;
    bool containsIndex(NSUInteger index) const { return intersectsIndexesInRange({index, 1}); }
    /// False for an empty range.
    bool containsIndexesInRange(NSRange range) const;
    /// True for none.
    bool containsIndexes(const Ref<NSIndexSet> &indexes) const;
    bool intersectsIndexesInRange(NSRange range) const { return countOfIndexesInRange(range) > 0; }

    /// These return NSNotFound when there is no such index.
    NSUInteger firstIndex() const { return indexGreaterThanOrEqualToIndex(0); }
    NSUInteger lastIndex() const { return indexLessThanIndex(NSNotFound); }
    NSUInteger indexGreaterThanIndex(NSUInteger index) const;
    NSUInteger indexGreaterThanOrEqualToIndex(NSUInteger index) const;
    NSUInteger indexLessThanIndex(NSUInteger index) const;
    NSUInteger indexLessThanOrEqualToIndex(NSUInteger index) const;

    /// These visit the indexes present at the start; the visitor may change the set. They raise
    /// NSInvalidArgumentException for an empty visitor.
    void enumerateIndexesUsingBlock(const Visitor &visitor) const { enumerateIndexesWithOptions(0, visitor); }
    void enumerateIndexesWithOptions(NSEnumerationOptions options, const Visitor &visitor) const;
    void enumerateRangesUsingBlock(const RangeVisitor &visitor) const;

    bool isEqualToIndexSet(const Ref<NSIndexSet> &other) const { return other && other->ranges_ == ranges_; }
    bool isEqual(const id &other) const override { return isEqualToIndexSet(as<NSIndexSet>(other)); }
    NSUInteger hash() const override;
    /// `<NSIndexSet: 0x…>[number of indexes: 4 (in 2 ranges), indexes: (1-3 7)]`
    Ref<NSString> description() const override;
    id copy() const override { return self(); }
    id mutableCopy() const override;

protected:
    /// The first range that contains the index or lies behind it.
    std::vector<NSRange>::const_iterator endingAfter(NSUInteger index) const;

    std::vector<NSRange> ranges_;
};

class NSMutableIndexSet : public NSIndexSet {
    NS_CLASS(NSMutableIndexSet, NSIndexSet)
public:
    using NSIndexSet::NSIndexSet;

    static Ref<NSMutableIndexSet> indexSet() { return make<NSMutableIndexSet>(); }

    void addIndex(NSUInteger index) { addIndexesInRange({index, 1}); }
    void addIndexes(const Ref<NSIndexSet> &indexes);
    void addIndexesInRange(NSRange range);
    void removeIndex(NSUInteger index) { removeIndexesInRange({index, 1}); }
    void removeIndexes(const Ref<NSIndexSet> &indexes);
    void removeIndexesInRange(NSRange range);
    void removeAllIndexes() { ranges_.clear(); }
    /// Adds `delta` to all indexes from `index` on. With a negative delta the `-delta` indexes before `index`
    /// are removed first, and indexes that would become negative are removed, too. Raises NSRangeException,
    /// without a change, when an index would become too large.
    void shiftIndexesStartingAtIndex(NSUInteger index, NSInteger delta);

    id copy() const override { return make<NSIndexSet>(ranges_); }
};

#pragma GCC visibility pop
