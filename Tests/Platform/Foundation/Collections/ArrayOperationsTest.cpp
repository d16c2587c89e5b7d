// Arrays beyond their primitives: ranges and index sets, order, tests, batches.
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Runtime/Object/Raise.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Testing.h"

namespace {

using Objects = std::vector<id>;

std::uint64_t valueOf(const id &object) {
    return as<NSNumber>(object)->unsignedLongLongValue();
}

NSComparisonResult byValue(const id &first, const id &second) {
    return static_cast<NSComparisonResult>((valueOf(first) > valueOf(second)) -
                                           (valueOf(first) < valueOf(second)));
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
class Incomparable final : public NSObject {
public:
    bool isEqual(const id &) const override { throw NSException("Mine", "no"); }
};

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

/// What an array should do, done to a plain list.
struct PlainList {
    using Place = Objects::const_iterator;
    Objects objects;

    NSUInteger count() const { return objects.size(); }
    Place at(NSUInteger index) const { return objects.begin() + static_cast<std::ptrdiff_t>(index); }
    Objects part(NSRange range) const { return {at(range.location), at(range.end())}; }
    void splice(NSRange range, const Objects &others) {
        runtime::checkRange("splice", range, count());
        objects.insert(objects.erase(at(range.location), at(range.end())), others.begin(), others.end());
    }
    void removeWhere(NSRange range, auto goes) {
        for (NSUInteger place = range.end(); place-- > range.location;)
            if (goes(place))
                splice({place, 1}, {});
    }
    /// At each index one of the others, in place of `length` elements.
    void splice(const Ref<NSIndexSet> &indexes, NSUInteger length, const Ref<NSArray> &others) {
        if (others->count())
            runtime::checkIndex("splice", indexes->lastIndex(), count() + (1 - length) * others->count());
        NSUInteger next = 0;
        for (NSUInteger place = 0; next < others->count(); ++place)
            if (indexes->containsIndex(place))
                splice({place, length}, {others->objectAtIndex(next++)});
    }

    id objectAtIndex(NSUInteger index) const { return objects[index]; }
    void addObjectsFromArray(const Ref<NSArray> &more) { splice({count(), 0}, more->allObjects()); }
    void setObject(const id &object, NSUInteger index) { splice({index, index < count()}, {object}); }
    void insertObjects(const Ref<NSArray> &more, const Ref<NSIndexSet> &indexes) { splice(indexes, 0, more); }
    void replaceObjectsAtIndexes(const Ref<NSIndexSet> &indexes, const Ref<NSArray> &more) {
        splice(indexes, 1, more);
    }
    void replaceObjectsInRange(NSRange range, const Ref<NSArray> &more) { splice(range, more->allObjects()); }
    void replaceObjectsInRange(NSRange range, const Ref<NSArray> &, NSRange own) { splice(range, part(own)); }
    void removeObjectsInRange(NSRange range) { splice(range, {}); }
    void removeObjectAtIndex(NSUInteger index) { splice({index, 1}, {}); }
    void removeLastObject() { objects.resize(count() - (count() > 0)); }
    void removeObject(const id &object, NSRange range) {
        removeWhere(range, [&](NSUInteger place) { return objects[place]->isEqual(object); });
    }
    void removeObjectIdenticalTo(const id &object, NSRange range) {
        removeWhere(range, [&](NSUInteger place) { return objects[place] == object; });
    }
    void removeObjectsInArray(const Ref<NSArray> &others) {
        removeWhere({0, count()}, [&](NSUInteger place) { return others->containsObject(objects[place]); });
    }
    void removeObjectsAtIndexes(const Ref<NSIndexSet> &indexes) {
        removeWhere({0, count()}, [&](NSUInteger place) { return indexes->containsIndex(place); });
    }
    void exchangeObjectAtIndex(NSUInteger first, NSUInteger second) {
        runtime::checkIndex("exchange", first, count());
        std::swap(objects[first], objects[second]);
    }
    void sortWithOptions(NSSortOptions, const NSComparator &) {
        std::ranges::stable_sort(objects, {}, valueOf);
    }
};

/// What a change is given, the same for both sides; `index` and `beyond` reach past the end now and then.
struct Given {
    Ref<NSArray> itself;
    id object;
    Ref<NSArray> more, fitting; ///< `fitting` has an object for each of `beyond`
    NSRange range;
    NSUInteger index;
    Ref<NSIndexSet> indexes, beyond;
};

/// A change of an array, and the same of a plain list.
struct Change {
    explicit(false) Change(auto change) : ofArray(change), ofList(change) {}

    std::function<void(NSMutableArray &, const Given &)> ofArray;
    std::function<void(PlainList &, const Given &)> ofList;
};

const Change changes[] = {
    [](auto &list, auto &given) { list.addObjectsFromArray(given.more); },
    [](auto &list, auto &given) { list.setObject(given.object, given.index); },
    [](auto &list, auto &given) { list.insertObjects(given.fitting, given.beyond); },
    [](auto &list, auto &given) { list.replaceObjectsAtIndexes(given.beyond, given.fitting); },
    [](auto &list, auto &given) { list.replaceObjectsInRange(given.range, given.more); },
    [](auto &list, auto &given) {
        list.replaceObjectsInRange(NSMakeRange(given.range.location, 0), given.itself, given.range);
    },
    [](auto &list, auto &given) { list.removeObjectsInRange(given.range); },
    [](auto &list, auto &given) { list.removeObjectAtIndex(given.index); },
    [](auto &list, auto &) { list.removeLastObject(); },
    [](auto &list, auto &given) {
        for (NSUInteger i = given.range.length; i > 0; --i)
            list.removeObjectAtIndex(0);
    },
    [](auto &list, auto &given) { list.removeObject(given.object, given.range); },
    [](auto &list, auto &given) {
        const id first = given.range.length ? list.objectAtIndex(given.range.location) : given.object;
        list.removeObjectIdenticalTo(first, given.range);
    },
    [](auto &list, auto &given) { list.removeObjectsInArray(given.more); },
    [](auto &list, auto &given) { list.removeObjectsAtIndexes(given.indexes); },
    [](auto &list, auto &given) { list.exchangeObjectAtIndex(given.index, 0); },
    [](auto &list, auto &) { list.sortWithOptions(NSSortStable, byValue); },
};

/// Random changes, done to the array and to a plain list.
class Twin : public Random {
public:
    Twin(Ref<NSMutableArray> itsArray, unsigned seed) : Random(seed), array(std::move(itsArray)) {}

    void step() {
        const std::size_t change = oneIn(4) ? 0 : below(std::size(changes)); // the first lets it grow
        const auto beyond = someIndexes(model.count() + 2);
        const Given given{.itself = array,
                          .object = number(below(9)),
                          .more = some(below(4)),
                          .fitting = some(beyond->count()),
                          .range = someRange(),
                          .index = below(model.count() + 3),
                          .indexes = someIndexes(model.count()),
                          .beyond = beyond};
        SCOPED_TRACE(change);
        EXPECT_EQ(raised([&] { changes[change].ofArray(*array, given); }),
                  raised([&] { changes[change].ofList(model, given); }));
        expectHolds(*array, model.objects);
    }

    void read() {
        const NSRange range = someRange();
        const id object = number(below(9));
        const auto matches = [&](const id &other, auto &&...) { return other->isEqual(object); };
        const auto first = [&](NSRange within) {
            const auto end = model.at(within.end());
            const auto place = std::find_if(model.at(within.location), end, matches);
            return place == end ? NSNotFound : indexOf(place);
        };
        EXPECT_EQ(array->indexOfObject(object), first({0, model.count()}));
        EXPECT_EQ(array->indexOfObject(object, range), first(range));
        EXPECT_EQ(array->indexOfObjectIdenticalTo(object, range), NSNotFound);
        EXPECT_EQ(array->subarrayWithRange(range)->allObjects(), model.part(range));
        const auto indexes = someIndexes(model.count());
        Objects chosen;
        const auto passing = NSMutableIndexSet::indexSet();
        indexes->enumerateIndexesUsingBlock([&](NSUInteger index, bool &) {
            chosen.push_back(model.objects[index]);
            if (matches(chosen.back()))
                passing->addIndex(index);
        });
        EXPECT_EQ(array->objectsAtIndexes(indexes)->allObjects(), chosen);
        EXPECT_TRUE(array->indexesOfObjectsAtIndexes(indexes, 0, matches)->isEqual(passing));
        EXPECT_EQ(array->indexOfObjectAtIndexes(indexes, 0, matches), passing->firstIndex());
        EXPECT_EQ(array->indexOfObjectAtIndexes(indexes, NSEnumerationReverse, matches),
                  passing->lastIndex());
    }

    /// In a range of both, after sorting them.
    void searchSorted() {
        array->sortUsingComparator(byValue);
        model.sortWithOptions(NSSortStable, byValue);
        const NSRange range = someRange();
        const id wanted = number(below(10));
        const auto [lower, upper] = std::ranges::equal_range(model.at(range.location), model.at(range.end()),
                                                             valueOf(wanted), {}, valueOf);
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
    PlainList model;

private:
    NSUInteger indexOf(PlainList::Place place) const { return static_cast<NSUInteger>(place - model.at(0)); }
    NSRange someRange() {
        const NSUInteger start = below(model.count() + 1);
        return {start, below(model.count() - start + 1)};
    }
    Ref<NSArray> some(std::size_t count) {
        Objects objects(count);
        std::ranges::generate(objects, [&] { return number(below(9)); });
        return arrayOf(objects);
    }
    Ref<NSIndexSet> someIndexes(std::size_t bound) {
        const auto indexes = NSMutableIndexSet::indexSet();
        for (std::size_t i = 0; i < bound; ++i)
            if (oneIn(4))
                indexes->addIndex(i);
        return indexes;
    }
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
                if (twin.model.count() > 40) {
                    array->setArray(array);
                    array->removeAllObjects();
                    twin.model = {};
                }
            }
        }
}

TEST(NSMutableArray, movesLittleAtItsFrontAndOnceForMany) {
    constexpr std::size_t count = 4000;
    const auto array = NSMutableArray::array();
    const std::function<void(std::size_t)> steps[] = {
        [&](auto i) { array->insertObject(number(i), std::min<NSUInteger>(i, 1)); },
        [&](auto i) {
            array->replaceObjectsInRange({0, i % 2}, listOf({i, i}));
        },
        [&](auto i) {
            array->insertObjects(listOf({i, i}), indexSet(0, 1));
        },
        [&](auto) { array->removeObjectsAtIndexes(indexSet(1, 2)); },
        [&](auto) {
            array->removeObjectsInRange({0, 1});
        },
        [&](auto i) { i % 2 ? array->insertObject(number(i), 0) : array->removeObjectAtIndex(0); }};
    int moves = 0;
    const id *last = nullptr;
    for (const auto &step : steps)
        for (std::size_t i = 0; i < count; ++i) {
            step(i);
            const id *now = &array->elements()->back();
            moves += std::exchange(last, now) != now;
        }
    EXPECT_LT(moves, 100);

    const auto mutationsBy = [&](const auto &change) {
        const auto before = array->mutations()->value();
        return change(), array->mutations()->value() - before;
    };
    const auto many = indexSet(0, 2, 4, 6, 8);
    EXPECT_EQ(mutationsBy([&] { array->insertObjects(listOf({0, 1, 2, 3, 4}), many); }), 1u);
    EXPECT_EQ(mutationsBy([&] { array->removeObjectsAtIndexes(many); }), 1u);
    int comparisons = 0;
    array->setArray(nullptr);
    const auto unwanted = NSMutableArray::array();
    for (std::size_t i = 0; i < count; ++i) {
        array->addObject(make<Compared>(i, comparisons));
        unwanted->addObject(make<Compared>(2 * i, comparisons));
    }
    EXPECT_EQ(mutationsBy([&] { array->removeObjectsInArray(unwanted); }), 1u);
    EXPECT_EQ(array->count(), count / 2);
    EXPECT_LT(comparisons, static_cast<int>(count));
}

TEST(NSMutableArray, changesNothingWhenItRaises) {
    const auto array = NSMutableArray::arrayWithArray(listOf({3, 1, 2}));
    const auto two = listOf({8, 9});
    constexpr NSUInteger both = NSBinarySearchingFirstEqual | NSBinarySearchingLastEqual;
    const auto endless = NSIndexSet::indexSetWithIndexesInRange({0, NSNotFound});
    const auto contradicting = [](const id &, const id &) -> NSComparisonResult {
        throw NSException("Mine", "no");
    };
    const std::pair<std::function<void()>, const char *> table[] = {
        {[&] { array->removeObjectsInRange(NSMakeRange(1, ~NSUInteger{0})); }, NSRangeException},
        {[&] { array->replaceObjectsInRange(NSMakeRange(4, 0), two); }, NSRangeException},
        {[&] { array->replaceObjectsInRange(NSMakeRange(0, 1), two, NSMakeRange(1, 2)); }, NSRangeException},
        {[&] { array->removeObject(number(1), NSMakeRange(2, 2)); }, NSRangeException},
        {[&] { array->removeObjectsAtIndexes(indexSet(0, 3)); }, NSRangeException},
        {[&] { array->removeObjectsAtIndexes(endless); }, NSRangeException},
        {[&] { array->insertObjects(two, indexSet(0, 5)); }, NSRangeException},
        {[&] { array->insertObjects(two, indexSet(0)); }, NSInvalidArgumentException},
        {[&] { array->replaceObjectsAtIndexes(nullptr, two); }, NSInvalidArgumentException},
        {[&] { array->objectsAtIndexes(indexSet(1, 3)); }, NSRangeException},
        {[&] { array->indexOfObject(nullptr, NSMakeRange(0, 3), 0, byValue); }, NSInvalidArgumentException},
        {[&] { array->indexOfObject(two, NSMakeRange(0, 3), both, byValue); }, NSInvalidArgumentException},
        {[&] { array->sortUsingComparator(contradicting); }, "Mine"},
        {[&] { array->sortUsingSelector("compare!:"_sel); }, NSInvalidArgumentException},
    };
    for (std::size_t i = 0; i < std::size(table); ++i)
        EXPECT_EQ(raised(table[i].first), table[i].second) << i;
    EXPECT_EQ(joined(array), "3 1 2");
    array->insertObject(make<Incomparable>(), 1);
    EXPECT_EQ(raised([&] { array->removeObject(number(3)); }), "Mine");
    EXPECT_EQ(array->count(), 4u);
}

TEST(NSArray, sortsInEveryWayAndStably) {
    Random random(7);
    for (const std::size_t size : {0u, 1u, 2u, 3u, 17u, 1000u}) {
        Objects objects;
        for (std::size_t i = 0; i < size; ++i)
            objects.push_back(number(random() % (size / 4 + 1)));
        const auto array = arrayOf(objects);
        std::ranges::stable_sort(objects, {}, valueOf);
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
        const auto inconsistent = [&](const id &, const id &) {
            return static_cast<NSComparisonResult>(static_cast<int>(random() % 3) - 1);
        };
        EXPECT_TRUE(std::ranges::is_permutation(array->sortedArrayUsingComparator(inconsistent)->allObjects(),
                                                objects));
    }
    const auto words = NSMutableArray::arrayWithObjects({u"b"_ns, u"a"_ns, u"C"_ns});
    EXPECT_EQ(joined(words->sortedArrayUsingSelector("compare:"_sel)), "C a b");
    words->sortUsingSelector("caseInsensitiveCompare:"_sel);
    EXPECT_EQ(joined(words), "a b C");
}

TEST(NSArray, walksAsAsked) {
    const auto array = listOf({4, 5, 6, 7});
    std::string seen;
    const auto note = [&](const id &object, NSUInteger index, bool &stop) {
        EXPECT_EQ(valueOf(object), index + 4);
        seen += std::to_string(index);
        stop = seen.size() % 4 == 3;
    };
    array->enumerateObjectsWithOptions(NSEnumerationConcurrent, note);
    seen += ' ';
    array->enumerateObjectsWithOptions(NSEnumerationReverse, note);
    seen += ' ';
    array->enumerateObjectsAtIndexes(indexSet(0, 3), NSEnumerationReverse, note);
    EXPECT_EQ(seen, "012 321 30");
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
    const auto allTheSame = [](const id &, const id &) { return NSComparisonResult::OrderedDescending; };
    const std::function<void(NSMutableArray &)> itsChanges[] = {
        [](auto &array) { array.addObject(number(1)); },
        [](auto &array) { array.insertObject(number(1), 0); },
        [](auto &array) { array.removeObjectAtIndex(0); },
        [](auto &array) { array.removeLastObject(); },
        [](auto &array) { array.replaceObjectAtIndex(0, number(1)); },
        [](auto &array) { array.removeAllObjects(); },
        [](auto &array) { array.removeObject(array.firstObject()); },
        [](auto &array) { array.replaceObjectsInRange(NSMakeRange(0, 1), nullptr); },
        [&](auto &array) { array.sortUsingComparator(allTheSame); },
        [](auto &array) { array.exchangeObjectAtIndex(0, 0); },
    };
    // Each visits an element, and stops if it can and should.
    using Visit = std::function<bool(const id &, NSUInteger, bool &)>;
    static bool cannotStop;
    const auto walking = [](const auto &elements, const Visit &visit) {
        for (const id &object : elements)
            visit(object, 0, cannotStop);
    };
    const std::function<void(NSArray &, const Visit &)> walks[] = {
        [](auto &array, auto &visit) { array.enumerateObjectsUsingBlock(visit); },
        [](auto &array, auto &visit) { array.enumerateObjectsWithOptions(NSEnumerationReverse, visit); },
        [](auto &array, auto &visit) {
            array.enumerateObjectsAtIndexes(NSIndexSet::indexSetWithIndexesInRange({0, array.count()}), 0,
                                            visit);
        },
        [](auto &array, auto &visit) { array.indexOfObjectPassingTest(visit); },
        [](auto &array, auto &visit) { array.indexesOfObjectsWithOptions(NSEnumerationReverse, visit); },
        [&](auto &array, auto &visit) { walking(array, visit); },
        [&](auto &array, auto &visit) { walking(array.objectEnumerator(), visit); },
        [&](auto &array, auto &visit) { walking(array.reverseObjectEnumerator(), visit); },
    };
    constexpr std::size_t stoppable = 5;
    for (const std::size_t size : {1u, 5u, 40u})
        for (std::size_t walk = 0; walk < std::size(walks); ++walk)
            for (std::size_t change = 0; change < std::size(itsChanges); ++change)
                for (const bool stops : {false, true}) {
                    SCOPED_TRACE("walk " + std::to_string(walk) + ", change " + std::to_string(change));
                    const auto array = NSMutableArray::array();
                    for (std::size_t i = 0; i < size; ++i)
                        array->addObject(number(size - i));
                    std::size_t steps = 0;
                    const auto visit = [&](const id &, NSUInteger, bool &stop) {
                        if (++steps == 1)
                            itsChanges[change](*array);
                        stop = stops;
                        return false;
                    };
                    EXPECT_EQ(raised([&] { walks[walk](*array, visit); }),
                              stops && walk < stoppable ? "" : NSGenericException);
                    EXPECT_EQ(steps, 1u);
                }
    const auto array = NSMutableArray::arrayWithArray(listOf({1, 2, 3}));
    for (const id &object : array) { // changes nothing
        array->removeObjectIdenticalTo(number(valueOf(object)));
        array->removeObjectsInRange({0, 0});
    }
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
    const auto models = NSURL::fileURLWithPath(string(ZK_RESOURCES "/models.plist"));
    EXPECT_TRUE(as<NSDictionary>(NSMutableArray::arrayWithContentsOfURL(models)->firstObject()));
}
