// Dictionaries beyond their primitives, and sets.
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

namespace {

/// The primitives alone.
class PrimitiveSet final : public NSMutableSet {
public:
    NSUInteger count() const override { return objects_->count(); }
    id member(const id &object) const override {
        const NSUInteger index = objects_->indexOfObject(object);
        return index == NSNotFound ? nullptr : objects_->objectAtIndex(index);
    }
    Ref<NSEnumerator> objectEnumerator() const override { return objects_->objectEnumerator(); }
    void addObject(const id &object) override {
        if (!member(object))
            objects_->addObject(object);
    }
    void removeObject(const id &object) override { objects_->removeObject(object); }

private:
    const Ref<NSMutableArray> objects_ = NSMutableArray::array();
};

class DictionaryOperations : public testing::Test {
protected:
    const Ref<NSMutableDictionary> dictionary =
        NSMutableDictionary::dictionaryWithObjects(arrayOf({u"z"_ns, u"a"_ns, u"m"_ns, u"a"_ns}),
                                                   arrayOf({u"one"_ns, u"two"_ns, u"three"_ns, u"four"_ns}));
};

} // namespace

TEST_F(DictionaryOperations, findsAndOrdersKeysByTheirValues) {
    EXPECT_EQ(joined(dictionary->allKeysForObject(u"a"_ns)), "two four");
    EXPECT_EQ(dictionary->allKeysForObject(nullptr)->count(), 0u);
    EXPECT_EQ(joined(dictionary->keysSortedByValueUsingSelector("compare:"_sel)), "two four three one");
    const auto backwards = [](const id &first, const id &second) {
        return as<NSString>(second)->compare(as<NSString>(first));
    };
    EXPECT_EQ(joined(dictionary->keysSortedByValueWithOptions(NSSortStable, backwards)),
              "one three two four");
    const auto wanted = arrayOf({u"four"_ns, u"five"_ns});
    EXPECT_EQ(joined(dictionary->objectsForKeys(wanted, NSNull::null())), "a <null>");
    EXPECT_EQ(raised([&] { dictionary->objectsForKeys(wanted, nullptr); }), NSInvalidArgumentException);
    const auto isA = [](const id &, const id &value, bool &stop) {
        stop = value->isEqual(u"m"_ns);
        return value->isEqual(u"a"_ns);
    };
    EXPECT_TRUE(dictionary->keysOfEntriesPassingTest(isA)->isEqual(setOf({u"two"_ns})));
    EXPECT_TRUE(
        dictionary->keysOfEntriesWithOptions(NSEnumerationReverse, isA)->isEqual(setOf({u"four"_ns})));
    id objects[3], keys[3];
    dictionary->getObjects(objects, keys, 3);
    EXPECT_EQ(text(objects[2]) + text(keys[0]), "mone");
    dictionary->getObjects(nullptr, keys, 1);
    dictionary->getObjects(objects, nullptr, 0);
}

TEST_F(DictionaryOperations, changesByListAndBySubscript) {
    dictionary->removeObjectsForKeys(arrayOf({u"one"_ns, u"nine"_ns, u"two"_ns}));
    dictionary->setObjectForKeyedSubscript(nullptr, u"three"_ns);
    dictionary->setObjectForKeyedSubscript(u"q\"ü"_ns, u"a b"_ns);
    EXPECT_EQ(text(dictionary->objectForKeyedSubscript(u"four"_ns)), "a");
    EXPECT_EQ(text(dictionary->descriptionInStringsFileFormat()),
              "\"a b\" = \"q\\\"\\U00fc\";\n\"four\" = \"a\";\n");
    const auto word = make<NSMutableString>(u"x");
    const auto shared = NSMutableDictionary::dictionaryWithDictionary(dictionaryOf({{u"k"_ns, word}}));
    const auto copied = NSMutableDictionary::dictionaryWithDictionary(shared, true);
    word->appendString(u"y"_ns);
    EXPECT_EQ(text(shared->objectForKey(u"k"_ns)) + text(copied->objectForKey(u"k"_ns)), "xyx");
}

TEST_F(DictionaryOperations, walksNoticeNewAndLostKeysButTakeNewValues) {
    for (const id &key : dictionary)
        dictionary->setObject(key, key);
    EXPECT_EQ(text(dictionary->objectForKey(u"two"_ns)), "two");
    const auto set = NSMutableSet::setWithArray(dictionary->allKeys());
    const std::function<void()> grow = [&] {
        dictionary->setObject(number(1), number(dictionary->count()));
        set->addObject(number(set->count()));
    };
    const std::function<void()> shrink = [&] {
        dictionary->removeObjectForKey(dictionary->allKeys()->lastObject());
        set->removeObject(set->anyObject());
    };
    const std::function<void()> startAnew = [&] {
        dictionary->removeAllObjects();
        set->removeAllObjects();
        grow();
    };
    for (const auto &change : {grow, shrink, startAnew})
        for (const bool stops : {false, true}) {
            const auto visit = [&](const id &, const id &, bool &stop) {
                return change(), stop = stops, false;
            };
            const auto visitOne = [&](const id &object, bool &stop) { return visit(object, object, stop); };
            const auto walk = [&](const auto &elements) {
                for (bool stop; const id &element : elements)
                    visitOne(element, stop);
            };
            const std::string stoppable[] = {
                raised([&] { dictionary->enumerateKeysAndObjectsUsingBlock(visit); }),
                raised([&] { dictionary->enumerateKeysAndObjectsWithOptions(NSEnumerationReverse, visit); }),
                raised([&] { dictionary->keysOfEntriesWithOptions(NSEnumerationReverse, visit); }),
                raised([&] { set->enumerateObjectsUsingBlock(visitOne); }),
                raised([&] { set->objectsPassingTest(visitOne); }),
            };
            const std::string others[] = {
                raised([&] { walk(dictionary); }),
                raised([&] { walk(dictionary->keyEnumerator()); }),
                raised([&] { walk(dictionary->objectEnumerator()); }),
                raised([&] { walk(set); }),
                raised([&] { walk(set->objectEnumerator()); }),
            };
            EXPECT_THAT(stoppable, testing::Each(stops ? "" : NSGenericException));
            EXPECT_THAT(others, testing::Each(NSGenericException));
            for (int i = 0; i < 20; ++i)
                grow();
        }
}

TEST(NSSet, followsAStandardSetThroughRandomChanges) {
    for (const auto &set : {NSMutableSet::set(), Ref<NSMutableSet>(make<PrimitiveSet>())}) {
        Random random(5);
        std::set<std::size_t> model;
        for (int step = 0; step < 2000 && !HasFatalFailure(); ++step) {
            std::set<std::size_t> others;
            const auto list = NSMutableArray::array();
            for (std::size_t i = random.below(12); i > 0; --i)
                list->addObject(number(*others.insert(random.below(30)).first));
            const auto other = NSSet::setWithArray(list);
            const std::size_t value = random.below(30);
            const auto isOther = [&](std::size_t member) { return others.contains(member); };
            EXPECT_EQ(set->isSubsetOfSet(other), std::ranges::all_of(model, isOther));
            EXPECT_EQ(set->intersectsSet(other), std::ranges::any_of(model, isOther));
            switch (random.below(9)) {
            case 0:
                set->unionSet(other), model.merge(others);
                break;
            case 1:
                set->minusSet(other), std::erase_if(model, isOther);
                break;
            case 2:
                set->intersectSet(other), std::erase_if(model, std::not_fn(isOther));
                break;
            case 3:
                set->setSet(other), model = others;
                break;
            case 4:
                set->setSet(set);
                break;
            case 5:
                set->removeObject(number(value)), model.erase(value);
                break;
            default:
                set->addObject(number(value)), model.insert(value);
            }
            std::set<std::size_t> walked;
            for (const id &object : set)
                walked.insert(as<NSNumber>(object)->unsignedLongLongValue());
            ASSERT_EQ(walked, model);
            ASSERT_EQ(set->count(), model.size());
            ASSERT_EQ(set->containsObject(number(value)), model.contains(value));
            const id copy = set->copy();
            ASSERT_TRUE(copy->isEqual(set) && set->isEqual(copy) && copy->hash() == set->hash());
        }
    }
}

TEST(NSSet, keepsTheFirstOfEqualsAndDescribesItself) {
    const auto first = number(1);
    const auto set = NSMutableSet::setWithArray(arrayOf({first, number(1), u"a b"_ns}));
    EXPECT_EQ(set->member(number(1.0)), first);
    EXPECT_EQ(set->anyObject(), first);
    EXPECT_EQ(text(arrayOf({set->setByAddingObject(NSSet::set())})),
              "(\n    {(\n        1,\n        \"a b\",\n        {(\n        )}\n    )}\n)");
    EXPECT_EQ(raised([&] { set->addObject(nullptr); }), NSInvalidArgumentException);
    const auto isFirst = [&](const id &object, bool &) { return object == first; };
    EXPECT_EQ(set->objectsPassingTest(isFirst)->count(), 1u);
    set->removeAllObjects();
    EXPECT_EQ(set->anyObject(), nullptr);
}
