#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

using testing::EndsWith;

namespace {

using Model = std::set<NSUInteger>;

Model walked(const NSIndexSet &indexes) {
    Model seen;
    indexes.enumerateIndexesUsingBlock([&](NSUInteger index, bool &) { seen.insert(index); });
    return seen;
}

/// Everything that reads, for every index and range near the model's.
void expectHolds(const Ref<NSIndexSet> &indexes, const Model &model, NSUInteger limit) {
    ASSERT_EQ(walked(*indexes), model);
    ASSERT_EQ(indexes->count(), model.size());
    EXPECT_EQ(indexes->firstIndex(), model.empty() ? NSNotFound : *model.begin());
    EXPECT_EQ(indexes->lastIndex(), model.empty() ? NSNotFound : *model.rbegin());
    NSUInteger ranges = 0, starts = 0;
    indexes->enumerateRangesUsingBlock([&](NSRange, bool &) { ++ranges; });
    for (const NSUInteger index : model)
        starts += !model.contains(index - 1);
    EXPECT_EQ(ranges, starts) << "ranges neither touch nor overlap";
    const auto orNone = [&](auto place) { return place == model.end() ? NSNotFound : *place; };
    const auto before = [&](auto place) { return place == model.begin() ? NSNotFound : *std::prev(place); };
    for (NSUInteger i = 0; i <= limit; ++i) {
        ASSERT_EQ(indexes->containsIndex(i), model.contains(i));
        ASSERT_EQ(indexes->indexGreaterThanIndex(i), orNone(model.upper_bound(i)));
        ASSERT_EQ(indexes->indexGreaterThanOrEqualToIndex(i), orNone(model.lower_bound(i)));
        ASSERT_EQ(indexes->indexLessThanIndex(i), before(model.lower_bound(i)));
        ASSERT_EQ(indexes->indexLessThanOrEqualToIndex(i), before(model.upper_bound(i)));
        const NSUInteger length = i % 7;
        const auto inside =
            static_cast<NSUInteger>(std::distance(model.lower_bound(i), model.lower_bound(i + length)));
        ASSERT_EQ(indexes->countOfIndexesInRange({i, length}), inside);
        ASSERT_EQ(indexes->containsIndexesInRange({i, length}), length && inside == length);
    }
}

Model shifted(const Model &model, NSUInteger from, NSInteger delta) {
    Model moved;
    const auto up = [&](NSUInteger index) { return static_cast<NSInteger>(index) + delta; };
    for (const NSUInteger index : model)
        if (index >= from && up(index) >= 0)
            moved.insert(static_cast<NSUInteger>(up(index)));
        else if (index < from && (delta > 0 || static_cast<NSInteger>(index) < up(from)))
            moved.insert(index);
    return moved;
}

} // namespace

TEST(NSMutableIndexSet, followsASetOfNumbersThroughRandomChanges) {
    constexpr NSUInteger limit = 60;
    for (const unsigned seed : {1u, 2u, 3u, 4u}) {
        Random random(seed);
        const auto indexes = NSMutableIndexSet::indexSet();
        Model model;
        for (int step = 0; step < 1500 && !HasFatalFailure(); ++step) {
            const NSUInteger start = random() % limit, length = random() % 9;
            const auto operation = random() % 20;
            if (operation == 0) {
                const auto delta = static_cast<NSInteger>(random() % 9) - 4;
                indexes->shiftIndexesStartingAtIndex(start, delta);
                model = shifted(model, start, delta);
                indexes->removeIndexesInRange({limit, NSNotFound});
                model.erase(model.lower_bound(limit), model.end());
            } else if (operation == 1) {
                const auto other = NSIndexSet::indexSetWithIndexesInRange({start, length});
                indexes->addIndexes(other);
                EXPECT_TRUE(indexes->containsIndexes(other));
                indexes->removeIndexes(other);
                model.erase(model.lower_bound(start), model.lower_bound(start + length));
            } else if (operation < 11) {
                indexes->addIndexesInRange({start, length});
                for (NSUInteger i = 0; i < length; ++i)
                    model.insert(start + i);
            } else {
                indexes->removeIndexesInRange({start, length});
                model.erase(model.lower_bound(start), model.lower_bound(start + length));
            }
            expectHolds(indexes, model, limit + 12);
        }
    }
}

TEST(NSIndexSet, copiesComparesAndDescribesItself) {
    const auto changing = NSMutableIndexSet::indexSet();
    EXPECT_THAT(text(changing), EndsWith("(no indexes)"));
    changing->addIndexesInRange({1, 3});
    changing->addIndex(7);
    EXPECT_THAT(text(changing), EndsWith("[number of indexes: 4 (in 2 ranges), indexes: (1-3 7)]"));
    const id frozen = changing->copy(), twin = changing->mutableCopy();
    EXPECT_TRUE(frozen->isEqual(changing) && changing->isEqual(frozen) && frozen->hash() == changing->hash());
    EXPECT_FALSE(as<NSMutableIndexSet>(frozen));
    as<NSMutableIndexSet>(twin)->removeAllIndexes();
    EXPECT_FALSE(twin->isEqual(changing) || changing->isEqual(nullptr));
    std::vector<NSUInteger> seen;
    changing->enumerateIndexesWithOptions(NSEnumerationReverse, [&](NSUInteger index, bool &stop) {
        seen.push_back(index);
        changing->removeIndex(index); // the walk goes on over what was there
        stop = seen.size() == 3;
    });
    EXPECT_THAT(seen, ElementsAre(7, 3, 2));
    EXPECT_EQ(walked(*changing), Model{1});
}

TEST(NSIndexSet, keepsToItsLimits) {
    const NSUInteger last = NSNotFound - 1;
    const auto indexes = NSMutableIndexSet::indexSet();
    EXPECT_EQ(raised([&] { indexes->addIndex(NSNotFound); }), NSRangeException);
    EXPECT_EQ(raised([&] { indexes->addIndexesInRange(NSMakeRange(last, 2)); }), NSRangeException);
    EXPECT_EQ(raised([] { NSIndexSet::indexSetWithIndexesInRange(NSMakeRange(1, ~NSUInteger{0})); }),
              NSRangeException);
    indexes->addIndexesInRange({3, 4});
    indexes->shiftIndexesStartingAtIndex(5, static_cast<NSInteger>(last - 6));
    EXPECT_EQ(raised([&] { return indexes->shiftIndexesStartingAtIndex(4, 1), 0; }), NSRangeException);
    EXPECT_EQ(walked(*indexes), (Model{3, 4, last - 1, last})) << "nothing was lost";
    indexes->addIndexesInRange({0, NSNotFound});
    EXPECT_EQ(indexes->count(), NSNotFound);
    EXPECT_EQ(indexes->lastIndex(), last);
    EXPECT_EQ(indexes->indexGreaterThanIndex(last), NSNotFound);
    EXPECT_FALSE(indexes->containsIndex(NSNotFound) || indexes->containsIndex(~NSUInteger{0}));
    indexes->removeIndexesInRange({1, ~NSUInteger{0}});
    EXPECT_EQ(walked(*indexes), Model{0});
}
