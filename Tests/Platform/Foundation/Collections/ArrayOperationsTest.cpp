// Arrays beyond their primitives: ranges and index sets, order, tests, batches.
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

using testing::ElementsAre;

namespace {

using Objects = std::vector<id>;

std::uint64_t valueOf(const id &object) {
    return as<NSNumber>(object)->unsignedLongLongValue();
}

NSComparisonResult byValue(const id &first, const id &second) {
    return static_cast<NSComparisonResult>((valueOf(first) > valueOf(second)) -
                                           (valueOf(first) < valueOf(second)));
}

bool lessByValue(const id &first, const id &second) {
    return valueOf(first) < valueOf(second);
}

Ref<NSArray> listOf(std::initializer_list<std::size_t> values) {
    Objects objects;
    std::transform(values.begin(), values.end(), std::back_inserter(objects), number<std::size_t>);
    return arrayOf(objects);
}

Ref<NSIndexSet> indexSet(auto... indexes) {
    const auto set = NSMutableIndexSet::indexSet();
    (set->addIndex(static_cast<NSUInteger>(indexes)), ...);
    return set;
}

/// Cannot be compared.
class Incomparable : public NSObject {
    NS_CLASS(Incomparable, NSObject)
public:
    bool isEqual(const id &) const override { throw NSException("Mine", "no"); }
};
NS_IMPLEMENTATION(Incomparable) {}

/// Counts how often it is compared.
class Compared final : public NSNumber {
public:
    Compared(std::uint64_t value, int &comparisons) : NSNumber('Q', value), comparisons_(comparisons) {}
    bool isEqual(const id &other) const override { return ++comparisons_, NSNumber::isEqual(other); }

private:
    int &comparisons_;
};

/// Overrides the primitives alone; everything else must follow from them.
class PrimitiveArray final : public NSMutableArray {
public:
    NSUInteger count() const override { return objects_->count(); }
    id objectAtIndex(NSUInteger index) const override { return objects_->objectAtIndex(index); }
    void addObject(const id &object) override { objects_->addObject(object); }
    void insertObject(const id &object, NSUInteger index) override { objects_->insertObject(object, index); }
    void removeObjectAtIndex(NSUInteger index) override { objects_->removeObjectAtIndex(index); }
    void removeLastObject() override { objects_->removeLastObject(); }
    void replaceObjectAtIndex(NSUInteger index, const id &object) override {
        objects_->replaceObjectAtIndex(index, object);
    }

private:
    const Ref<NSMutableArray> objects_ = NSMutableArray::array();
};

/// Checks every reading operation against the list that the array should hold.
void expectHolds(const NSMutableArray &array, const Objects &expected) {
    ASSERT_EQ(array.allObjects(), expected);
    EXPECT_EQ(array.firstObject(), expected.empty() ? nullptr : expected.front());
    EXPECT_EQ(array.lastObject(), expected.empty() ? nullptr : expected.back());
    Objects walked;
    for (const id &object : array)
        walked.push_back(object);
    EXPECT_EQ(walked, expected);
    EXPECT_EQ(array.objectEnumerator()->allObjects()->allObjects(), expected);
    EXPECT_EQ(array.reverseObjectEnumerator()->allObjects()->allObjects(),
              Objects(expected.rbegin(), expected.rend()));
    const auto plain = arrayOf(expected);
    EXPECT_TRUE(array.isEqual(plain) && plain->isEqual(array.self()) && array.copy()->isEqual(plain));
    EXPECT_EQ(array.hash(), plain->hash());
}

using Place = Objects::iterator;

Place at(Objects &list, NSUInteger index) {
    return list.begin() + static_cast<std::ptrdiff_t>(index);
}

/// What a change is given, the same for both sides; `index` and `beyond` reach past the end now and then.
struct Given {
    id object;
    Ref<NSArray> more, fitting; ///< `fitting` has an object for each of `beyond`
    NSRange range;
    NSUInteger index;
    Ref<NSIndexSet> indexes, beyond;

    Place first(Objects &list) const { return at(list, range.location); }
    Place last(Objects &list) const { return at(list, range.end()); }
    bool has(Objects &list) const { return index < list.size(); }
};

/// A change of the array beside the same one of a plain list, which tells whether it can be made.
struct Change {
    const char *name;
    std::function<void(NSMutableArray &, const Given &)> ofArray;
    std::function<bool(Objects &, const Given &)> ofList;
};

const Change changes[] = {
    {"remove equals in a range",
     [](auto &array, auto &given) { array.removeObject(given.object, given.range); },
     [](auto &list, auto &given) {
         const auto equals = [&](const id &other) { return other->isEqual(given.object); };
         return list.erase(std::remove_if(given.first(list), given.last(list), equals), given.last(list)),
                true;
     }},
    {"remove what stands first in a range",
     [](auto &array, auto &given) {
         array.removeObjectIdenticalTo(
             given.range.length ? array.objectAtIndex(given.range.location) : given.object, given.range);
     },
     [](auto &list, auto &given) {
         const id same = given.range.length ? *given.first(list) : nullptr;
         return list.erase(std::remove(given.first(list), given.last(list), same), given.last(list)), true;
     }},
    {"remove equals of an array", [](auto &array, auto &given) { array.removeObjectsInArray(given.more); },
     [](auto &list, auto &given) {
         return std::erase_if(list, [&](const id &other) { return given.more->containsObject(other); }), true;
     }},
    {"remove a range", [](auto &array, auto &given) { array.removeObjectsInRange(given.range); },
     [](auto &list, auto &given) { return list.erase(given.first(list), given.last(list)), true; }},
    {"replace a range",
     [](auto &array, auto &given) { array.replaceObjectsInRange(given.range, given.more); },
     [](auto &list, auto &given) {
         const auto more = given.more->allObjects();
         return list.insert(list.erase(given.first(list), given.last(list)), more.begin(), more.end()), true;
     }},
    {"insert a range of itself",
     [](auto &array, auto &given) {
         array.replaceObjectsInRange({given.range.location, 0}, as<NSArray>(array.self()), given.range);
     },
     [](auto &list, auto &given) {
         const Objects copied(given.first(list), given.last(list));
         return list.insert(given.first(list), copied.begin(), copied.end()), true;
     }},
    {"remove at indexes", [](auto &array, auto &given) { array.removeObjectsAtIndexes(given.indexes); },
     [](auto &list, auto &given) {
         NSUInteger place = 0;
         return std::erase_if(list, [&](const id &) { return given.indexes->containsIndex(place++); }), true;
     }},
    {"insert at indexes", [](auto &array, auto &given) { array.insertObjects(given.fitting, given.beyond); },
     [](auto &list, auto &given) {
         const NSUInteger count = given.beyond->count();
         if (count && given.beyond->lastIndex() >= list.size() + count)
             return false;
         NSUInteger next = 0;
         given.beyond->enumerateIndexesUsingBlock([&](NSUInteger place, bool &) {
             list.insert(at(list, place), given.fitting->objectAtIndex(next++));
         });
         return true;
     }},
    {"replace at indexes",
     [](auto &array, auto &given) { array.replaceObjectsAtIndexes(given.beyond, given.fitting); },
     [](auto &list, auto &given) {
         if (given.beyond->count() && given.beyond->lastIndex() >= list.size())
             return false;
         NSUInteger next = 0;
         given.beyond->enumerateIndexesUsingBlock(
             [&](NSUInteger place, bool &) { list[place] = given.fitting->objectAtIndex(next++); });
         return true;
     }},
    {"set", [](auto &array, auto &given) { array.setObject(given.object, given.index); },
     [](auto &list, auto &given) {
         if (given.index == list.size())
             list.push_back(given.object);
         return given.has(list) && (list[given.index] = given.object);
     }},
    {"sort", [](auto &array, auto &) { array.sortWithOptions(NSSortStable, byValue); },
     [](auto &list, auto &) { return std::stable_sort(list.begin(), list.end(), lessByValue), true; }},
    {"add several", [](auto &array, auto &given) { array.addObjectsFromArray(given.more); },
     [](auto &list, auto &given) {
         const auto more = given.more->allObjects();
         return list.insert(list.end(), more.begin(), more.end()), true;
     }},
    {"remove one", [](auto &array, auto &given) { array.removeObjectAtIndex(given.index); },
     [](auto &list, auto &given) { return given.has(list) && (list.erase(at(list, given.index)), true); }},
    {"remove from the front",
     [](auto &array, auto &given) {
         for (NSUInteger i = given.range.length; i > 0; --i)
             array.removeObjectAtIndex(0);
     },
     [](auto &list, auto &given) { return list.erase(list.begin(), at(list, given.range.length)), true; }},
    {"remove the last", [](auto &array, auto &) { array.removeLastObject(); },
     [](auto &list, auto &) { return list.resize(list.size() - !list.empty()), true; }},
    {"exchange", [](auto &array, auto &given) { array.exchangeObjectAtIndex(given.index, 0); },
     [](auto &list, auto &given) {
         return given.has(list) && (std::swap(list[given.index], list[0]), true);
     }},
};

/// Random changes, done to the array and to a plain list.
class Twin {
public:
    Twin(Ref<NSMutableArray> itsArray, unsigned seed) : array(std::move(itsArray)), random_(seed) {}

    void step() {
        const auto &change =
            random_.below(4) ? random_.of(changes)
                             : *std::ranges::find(changes, std::string_view("add several"), &Change::name);
        const std::size_t size = model.size(), start = pick(size + 1);
        const auto beyond = someIndexes(size + 2);
        const Given given{.object = number(pick(9)),
                          .more = some(pick(4)),
                          .fitting = some(beyond->count()),
                          .range = {start, pick(size - start + 1)},
                          .index = pick(size + 3),
                          .indexes = someIndexes(size),
                          .beyond = beyond};
        const auto outcome = raised([&] { change.ofArray(*array, given); });
        EXPECT_EQ(outcome, change.ofList(model, given) ? "" : NSRangeException) << change.name;
        SCOPED_TRACE(change.name);
        expectHolds(*array, model);
    }

    void read() {
        const std::size_t size = model.size(), start = pick(size + 1), length = pick(size - start + 1);
        const id object = number(pick(9));
        const auto matches = [&](const id &other, auto &&...) { return other->isEqual(object); };
        const auto first = [&](Place from, Place to) {
            const auto place = std::find_if(from, to, matches);
            return place == to ? NSNotFound : indexOf(place);
        };
        EXPECT_EQ(array->indexOfObject(object), first(model.begin(), model.end()));
        EXPECT_EQ(array->indexOfObject(object, {start, length}),
                  first(at(model, start), at(model, start + length)));
        EXPECT_EQ(array->indexOfObjectIdenticalTo(object, {start, length}), NSNotFound);
        EXPECT_EQ(array->subarrayWithRange({start, length})->allObjects(),
                  Objects(at(model, start), at(model, start + length)));
        const auto indexes = someIndexes(size);
        Objects chosen;
        const auto passing = NSMutableIndexSet::indexSet();
        for (std::size_t i = 0; i < size; ++i) {
            if (!indexes->containsIndex(i))
                continue;
            chosen.push_back(model[i]);
            if (matches(model[i]))
                passing->addIndex(i);
        }
        EXPECT_EQ(array->objectsAtIndexes(indexes)->allObjects(), chosen);
        EXPECT_TRUE(array->indexesOfObjectsAtIndexes(indexes, 0, matches)->isEqual(passing));
        EXPECT_EQ(array->indexOfObjectAtIndexes(indexes, 0, matches), passing->firstIndex());
        EXPECT_EQ(array->indexOfObjectAtIndexes(indexes, NSEnumerationReverse, matches),
                  passing->lastIndex());
    }

    /// In a range of both, after sorting them.
    void searchSorted() {
        array->sortUsingComparator(byValue);
        std::stable_sort(model.begin(), model.end(), lessByValue);
        const std::size_t start = pick(model.size() + 1);
        const NSRange range{start, pick(model.size() - start + 1)};
        const auto first = at(model, range.location), last = at(model, range.end());
        const id wanted = number(pick(10));
        const auto lower = std::lower_bound(first, last, wanted, lessByValue),
                   upper = std::upper_bound(first, last, wanted, lessByValue);
        const auto search = [&](NSBinarySearchingOptions options) {
            return array->indexOfObject(wanted, range, options, byValue);
        };
        constexpr auto place = NSBinarySearchingInsertionIndex;
        EXPECT_EQ(search(NSBinarySearchingFirstEqual), lower == upper ? NSNotFound : indexOf(lower));
        EXPECT_EQ(search(NSBinarySearchingLastEqual), lower == upper ? NSNotFound : indexOf(upper - 1));
        EXPECT_EQ(search(place | NSBinarySearchingFirstEqual), indexOf(lower));
        EXPECT_EQ(search(place | NSBinarySearchingLastEqual), indexOf(upper));
        EXPECT_TRUE(search(place) >= indexOf(lower) && search(place) <= indexOf(upper));
        EXPECT_EQ(search(0) == NSNotFound, lower == upper);
    }

    const Ref<NSMutableArray> array;
    Objects model;

private:
    std::size_t pick(std::size_t bound) { return random_.below(bound); }
    NSUInteger indexOf(Place place) const {
        return static_cast<NSUInteger>(place - Objects::const_iterator(model.begin()));
    }
    Ref<NSArray> some(std::size_t count) {
        Objects objects;
        while (objects.size() < count)
            objects.push_back(number(pick(9)));
        return arrayOf(objects);
    }

    Ref<NSIndexSet> someIndexes(std::size_t bound) {
        const auto indexes = NSMutableIndexSet::indexSet();
        for (std::size_t i = 0; i < bound; ++i)
            if (pick(4) == 0)
                indexes->addIndex(i);
        return indexes;
    }

    Random random_;
};

} // namespace

TEST(NSMutableArray, followsAPlainListThroughRandomChanges) {
    for (const unsigned seed : {1u, 2u, 3u})
        for (const auto &array : {NSMutableArray::array(), Ref<NSMutableArray>(make<PrimitiveArray>())}) {
            Twin twin(array, seed);
            for (int step = 0; step < 3000 && !HasFailure(); ++step) {
                twin.step();
                twin.read();
                if (step % 16 == 0)
                    twin.searchSorted();
                if (twin.model.size() > 40) {
                    array->setArray(array);
                    array->removeAllObjects();
                    twin.model.clear();
                }
            }
        }
}

TEST(NSMutableArray, movesLittleAtItsFrontAndOnceForMany) {
    constexpr std::size_t count = 4000;
    const auto array = NSMutableArray::array();
    int moves = 0;
    const id *last = nullptr;
    const auto notice = [&](const auto &change) {
        change();
        const id *now = &array->elements()->back();
        moves += std::exchange(last, now) != now;
    };
    for (std::size_t i = 0; i < count; ++i)
        notice([&] { array->insertObject(number(i), std::min<NSUInteger>(i, 1)); });
    for (std::size_t i = 0; i < count; ++i)
        notice([&] { array->replaceObjectsInRange({0, i % 2}, listOf({i, i})); });
    for (std::size_t i = 0; i < count; ++i)
        notice([&] { array->insertObjects(listOf({i, i}), indexSet(0, 1)); });
    for (std::size_t i = 0; i < count; ++i)
        notice([&] { array->removeObjectsAtIndexes(indexSet(1, 2)); });
    for (std::size_t i = 0; i < count; ++i)
        notice([&] { array->removeObjectsInRange({0, 1}); });
    for (std::size_t i = 0; i < count; ++i)
        notice([&] { i % 2 ? array->insertObject(number(i), 0) : array->removeObjectAtIndex(0); });
    EXPECT_LT(moves, 100);

    const auto changes = [&](const auto &change) {
        const auto before = array->mutations()->value();
        return change(), array->mutations()->value() - before;
    };
    const auto many = indexSet(0, 2, 4, 6, 8);
    EXPECT_EQ(changes([&] { array->insertObjects(listOf({0, 1, 2, 3, 4}), many); }), 1u);
    EXPECT_EQ(changes([&] { array->removeObjectsAtIndexes(many); }), 1u);
    int comparisons = 0;
    array->setArray(nullptr);
    const auto unwanted = NSMutableArray::array();
    for (std::size_t i = 0; i < count; ++i) {
        array->addObject(make<Compared>(i, comparisons));
        unwanted->addObject(make<Compared>(2 * i, comparisons));
    }
    EXPECT_EQ(changes([&] { array->removeObjectsInArray(unwanted); }), 1u);
    EXPECT_EQ(array->count(), count / 2);
    EXPECT_LT(comparisons, static_cast<int>(count));
}

TEST(NSMutableArray, changesNothingWhenItRaises) {
    const auto array = NSMutableArray::arrayWithArray(listOf({3, 1, 2}));
    const auto two = listOf({8, 9});
    constexpr NSUInteger far = ~NSUInteger{0},
                         both = NSBinarySearchingFirstEqual | NSBinarySearchingLastEqual;
    const auto endless = NSIndexSet::indexSetWithIndexesInRange(NSMakeRange(0, NSNotFound));
    const auto contradicting = [](const id &, const id &) -> NSComparisonResult {
        throw NSException("Mine", "no");
    };
    const std::pair<std::function<void()>, const char *> table[] = {
        {[&] { array->removeObjectsInRange(NSMakeRange(1, far)); }, NSRangeException},
        {[&] { array->replaceObjectsInRange(NSMakeRange(4, 0), two); }, NSRangeException},
        {[&] { array->replaceObjectsInRange(NSMakeRange(0, 1), two, NSMakeRange(1, 2)); }, NSRangeException},
        {[&] { array->removeObject(number(1), NSMakeRange(2, 2)); }, NSRangeException},
        {[&] { array->removeObjectsAtIndexes(indexSet(0, 3)); }, NSRangeException},
        {[&] { array->removeObjectsAtIndexes(endless); }, NSRangeException},
        {[&] { array->insertObjects(two, indexSet(0, 5)); }, NSRangeException},
        {[&] { array->insertObjects(two, indexSet(0)); }, NSInvalidArgumentException},
        {[&] { array->replaceObjectsAtIndexes(indexSet(0, 3), two); }, NSRangeException},
        {[&] { array->replaceObjectsAtIndexes(nullptr, two); }, NSInvalidArgumentException},
        {[&] { array->setObject(number(1), 4); }, NSRangeException},
        {[&] { array->objectsAtIndexes(indexSet(1, 3)); }, NSRangeException},
        {[&] { array->indexOfObject(nullptr, NSMakeRange(0, 3), 0, byValue); }, NSInvalidArgumentException},
        {[&] { array->indexOfObject(number(1), NSMakeRange(0, 3), both, byValue); },
         NSInvalidArgumentException},
        {[&] { array->sortUsingComparator(contradicting); }, "Mine"},
        {[&] { array->sortUsingSelector("compare!:"_sel); }, NSInvalidArgumentException},
    };
    for (std::size_t i = 0; i < std::size(table); ++i)
        EXPECT_EQ(raised(table[i].first), table[i].second) << i;
    EXPECT_EQ(joined(array), "3 1 2");
    array->insertObjects(two, indexSet(0, 4)); // the last place there will be
    EXPECT_EQ(joined(array), "8 3 1 2 9");
    array->insertObject(make<Incomparable>(), 2);
    EXPECT_EQ(raised([&] { array->removeObject(number(2)); }), "Mine");
    EXPECT_EQ(array->count(), 6u);
}

TEST(NSArray, sortsInEveryWayAndStably) {
    Random random(7);
    for (const std::size_t size : {0u, 1u, 2u, 3u, 17u, 1000u}) {
        Objects objects;
        for (std::size_t i = 0; i < size; ++i)
            objects.push_back(number(random() % (size / 4 + 1)));
        const auto array = arrayOf(objects);
        std::stable_sort(objects.begin(), objects.end(), lessByValue);
        int calls = 0;
        const NSSortFunction function = [](const id &first, const id &second, void *context) {
            ++*static_cast<int *>(context);
            return static_cast<NSInteger>(byValue(first, second)) * 7;
        };
        EXPECT_EQ(array->sortedArrayUsingComparator(byValue)->allObjects(), objects);
        EXPECT_EQ(array->sortedArrayWithOptions(NSSortConcurrent, byValue)->allObjects(), objects);
        const auto sorted = array->sortedArrayUsingFunction(function, &calls, array->sortedArrayHint());
        EXPECT_EQ(sorted->allObjects(), objects);
        calls = 0;
        EXPECT_EQ(sorted->sortedArrayUsingFunction(function, &calls)->allObjects(), objects);
        EXPECT_LE(calls, static_cast<int>(size)) << "what is in order is left alone";
        // A comparison that contradicts itself gives some order of the same elements.
        auto shuffled = array
                            ->sortedArrayUsingComparator([&](const id &, const id &) {
                                return static_cast<NSComparisonResult>(static_cast<int>(random() % 3) - 1);
                            })
                            ->allObjects();
        EXPECT_TRUE(std::is_permutation(shuffled.begin(), shuffled.end(), objects.begin()));
    }
    const auto words = NSMutableArray::arrayWithObjects({u"b"_ns, u"a"_ns, u"C"_ns});
    EXPECT_EQ(joined(words->sortedArrayUsingSelector("compare:"_sel)), "C a b");
    words->sortUsingSelector("caseInsensitiveCompare:"_sel);
    EXPECT_EQ(joined(words), "a b C");
}

TEST(NSArray, walksAsAsked) {
    const auto array = listOf({4, 5, 6, 7});
    std::vector<NSUInteger> seen;
    const auto note = [&](const id &object, NSUInteger index, bool &stop) {
        EXPECT_EQ(valueOf(object), index + 4);
        seen.push_back(index);
        stop = seen.size() == 3;
    };
    array->enumerateObjectsWithOptions(NSEnumerationConcurrent, note);
    EXPECT_THAT(seen, ElementsAre(0, 1, 2));
    seen.clear();
    array->enumerateObjectsWithOptions(NSEnumerationReverse, note);
    EXPECT_THAT(seen, ElementsAre(3, 2, 1));
    seen.clear();
    array->enumerateObjectsAtIndexes(indexSet(0, 3), NSEnumerationReverse, note);
    EXPECT_THAT(seen, ElementsAre(3, 0));
    EXPECT_EQ(valueOf(array->firstObjectCommonWithArray(listOf({9, 6, 5}))), 5u);
    EXPECT_EQ(array->firstObjectCommonWithArray(nullptr), nullptr);
    EXPECT_EQ(joined(array->arrayByAddingObjectsFromArray(array)), "4 5 6 7 4 5 6 7");

    const auto inner = NSMutableArray::array();
    const auto twice = arrayOf({inner, inner});
    twice->makeObjectsPerformSelector("addObject:"_sel, number(1));
    EXPECT_EQ(joined(inner), "1 1");
    twice->makeObjectsPerformSelector("removeLastObject"_sel);
    EXPECT_EQ(inner->count(), 0u);
    EXPECT_EQ(raised([&] { array->makeObjectsPerformSelector("tick"_sel); }), NSInvalidArgumentException);
}

TEST(NSArray, rangeForKeepsItsContainerAndWalksNoneAsEmpty) {
    std::vector<std::uint64_t> seen;
    for (const id &object : listOf({1, 2, 3})->subarrayWithRange({1, 2}))
        seen.push_back(valueOf(object));
    for (const id &object : listOf({4, 5})->objectEnumerator())
        seen.push_back(valueOf(object));
    for (const id &object : Ref<NSArray>())
        seen.push_back(valueOf(object));
    EXPECT_THAT(seen, ElementsAre(2, 3, 4, 5));
}

TEST(NSArray, noticesChangesDuringAWalk) {
    const std::function<void(NSMutableArray &)> changes[] = {
        [](auto &array) { array.addObject(number(1)); },
        [](auto &array) { array.insertObject(number(1), 0); },
        [](auto &array) { array.removeObjectAtIndex(0); },
        [](auto &array) { array.removeLastObject(); },
        [](auto &array) { array.replaceObjectAtIndex(0, number(1)); },
        [](auto &array) { array.removeAllObjects(); },
        [](auto &array) { array.removeObject(array.firstObject()); },
        [](auto &array) {
            array.replaceObjectsInRange({0, 1}, nullptr);
        },
        [](auto &array) {
            array.sortUsingComparator(
                [](const id &, const id &) { return NSComparisonResult::OrderedDescending; });
        },
        [](auto &array) { array.exchangeObjectAtIndex(0, 0); },
    };
    // Each calls what it is given for an element, and tells it how to stop if it can.
    using Visit = std::function<void(bool *stop)>;
    const auto visiting = [](const Visit &visit) {
        return [&](const id &, NSUInteger, bool &stop) { return visit(&stop), false; };
    };
    const auto walking = [](const auto &elements, const Visit &visit) {
        for (const id &object : elements)
            visit(object ? nullptr : nullptr);
    };
    const std::function<void(NSArray &, const Visit &)> walks[] = {
        [&](NSArray &array, const Visit &visit) { walking(array, visit); },
        [&](NSArray &array, const Visit &visit) {
            const auto rest = array.objectEnumerator();
            while (rest->nextObject())
                visit(nullptr);
        },
        [&](NSArray &array, const Visit &visit) { walking(array.reverseObjectEnumerator(), visit); },
        [&](NSArray &array, const Visit &visit) { array.enumerateObjectsUsingBlock(visiting(visit)); },
        [&](NSArray &array, const Visit &visit) {
            array.enumerateObjectsWithOptions(NSEnumerationReverse, visiting(visit));
        },
        [&](NSArray &array, const Visit &visit) {
            array.enumerateObjectsAtIndexes(NSIndexSet::indexSetWithIndexesInRange({0, array.count()}), 0,
                                            visiting(visit));
        },
        [&](NSArray &array, const Visit &visit) { array.indexOfObjectPassingTest(visiting(visit)); },
        [&](NSArray &array, const Visit &visit) {
            array.indexesOfObjectsWithOptions(NSEnumerationReverse, visiting(visit));
        },
    };
    for (const std::size_t size : {1u, 5u, 40u})
        for (std::size_t walk = 0; walk < std::size(walks); ++walk)
            for (std::size_t change = 0; change < std::size(changes); ++change)
                for (const bool stops : {false, true}) {
                    SCOPED_TRACE("walk " + std::to_string(walk) + ", change " + std::to_string(change));
                    const auto array = NSMutableArray::array();
                    for (std::size_t i = 0; i < size; ++i)
                        array->addObject(NSNumber::numberWithUnsignedLongLong(size - i));
                    std::size_t steps = 0;
                    bool stopped = false;
                    const auto outcome = raised([&] {
                        walks[walk](*array, [&](bool *stop) {
                            if (++steps == 1)
                                changes[change](*array);
                            stopped = stops && stop;
                            if (stopped)
                                *stop = true;
                        });
                        return 0;
                    });
                    EXPECT_EQ(outcome, stopped ? "" : NSGenericException);
                    EXPECT_EQ(steps, 1u);
                }
    const auto array = NSMutableArray::arrayWithArray(listOf({1, 2, 3}));
    EXPECT_EQ(raised([&] {
                  for (const id &object : array) {
                      array->removeObjectIdenticalTo(number(valueOf(object)));
                      array->removeObjectsInRange({0, 0});
                  }
              }),
              "")
        << "nothing was changed";
    NSFastEnumerationState state;
    id batch[2];
    EXPECT_EQ(array->countByEnumeratingWithState(state, batch, 2), 2u);
    EXPECT_EQ(valueOf(batch[1]), 2u);
    EXPECT_EQ(array->countByEnumeratingWithState(state, batch, 2), 1u);
    EXPECT_EQ(array->countByEnumeratingWithState(state, batch, 2), 0u);
    array->addObject(number(4));
    EXPECT_EQ(raised([&] { array->countByEnumeratingWithState(state, batch, 2); }), NSGenericException);
}

TEST(NSArray, comesFromFilesOfArraysOnly) {
    const TemporaryFolder folder;
    folder.put("table", "<plist><dict/></plist>");
    EXPECT_EQ(NSArray::arrayWithContentsOfFile(string(folder.file("table").string())), nullptr);
    const std::string elsewhere = "http://localhost" ZK_RESOURCES "/models.plist";
    EXPECT_EQ(NSMutableArray::arrayWithContentsOfURL(NSURL::URLWithString(string(elsewhere))), nullptr);
    EXPECT_EQ(NSMutableArray::arrayWithContentsOfFile(nullptr), nullptr);
}
