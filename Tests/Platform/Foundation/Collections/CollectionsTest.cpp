#include "Platform/Foundation/Collections/ContentsHash.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Foundation/System/NSThread.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

namespace {

using Pairs = std::vector<std::pair<id, id>>;

class Silent : public NSObject {
public:
    Ref<NSString> description() const override { return nullptr; }
};

/// The primitives alone.
class PrimitiveDictionary final : public NSMutableDictionary {
public:
    NSUInteger count() const override { return entries_->count(); }
    id objectForKey(const id &key) const override { return entries_->objectForKey(key); }
    Ref<NSEnumerator> keyEnumerator() const override { return entries_->keyEnumerator(); }
    void setObject(const id &object, const id &key) override { entries_->setObject(object, key); }
    void removeObjectForKey(const id &key) override { entries_->removeObjectForKey(key); }

private:
    const Ref<NSMutableDictionary> entries_ = NSMutableDictionary::dictionary();
};

/// A key that equals others of its number and shares its hash with all of them.
class CollidingKey final : public NSObject {
public:
    explicit CollidingKey(std::size_t keyNumber) : number(keyNumber) {}
    bool isEqual(const id &other) const override {
        const auto key = as<CollidingKey>(other);
        return key && key->number == number;
    }
    NSUInteger hash() const override { return 3; }
    id copy() const override { return self(); }

    const std::size_t number;
};

/// Looks around while it is being destroyed.
class LastWords : public NSObject {
public:
    explicit LastWords(std::function<void()> speak) : speak_(std::move(speak)) {}
    ~LastWords() override { speak_(); }

private:
    const std::function<void()> speak_;
};

id someKey(std::size_t value) {
    return value % 3 == 0   ? id(NSString::stringWithFormat("key %lu", value))
           : value % 3 == 1 ? id(number(value))
                            : id(make<CollidingKey>(value));
}

void expectHolds(const NSMutableDictionary &dictionary, const Pairs &expected) {
    ASSERT_EQ(dictionary.count(), expected.size());
    Pairs walked, visited;
    const auto keys = dictionary.allKeys(), values = dictionary.allValues();
    for (NSUInteger i = 0; i < keys->count(); ++i)
        walked.emplace_back(keys->objectAtIndex(i), values->objectAtIndex(i));
    EXPECT_EQ(walked, expected) << "in the order of insertion";
    dictionary.enumerateKeysAndObjectsUsingBlock([&](const id &key, const id &value, bool &stop) {
        visited.emplace_back(key, value);
        stop = visited.size() == 3;
    });
    walked.resize(std::min<std::size_t>(walked.size(), 3));
    EXPECT_EQ(visited, walked);
    EXPECT_EQ(dictionary.keyEnumerator()->allObjects()->allObjects(), keys->allObjects());
    EXPECT_EQ(dictionary.objectEnumerator()->allObjects()->allObjects(), values->allObjects());
    EXPECT_TRUE(dictionary.copy()->isEqual(dictionary.self()) &&
                dictionary.isEqual(dictionary.mutableCopy()));
}

void tryRandomOperations(const Ref<NSMutableDictionary> &dictionary, unsigned seed, std::size_t keys) {
    Random random(seed);
    Pairs model;
    for (int step = 0; step < 1200 && !testing::Test::HasFailure(); ++step) {
        const bool shrinking = step / 200 % 2;
        const id key = someKey(random.below(keys)), value = number(step);
        const auto isSought = [&](const auto &entry) { return entry.first->isEqual(key); };
        const auto found = std::ranges::find_if(model, isSought);
        const auto operation = random.below(100);
        EXPECT_EQ(dictionary->objectForKey(key), found == model.end() ? nullptr : found->second);
        if (operation < 2) {
            dictionary->removeAllObjects();
            model.clear();
        } else if (operation < 4) {
            dictionary->setDictionary(as<NSDictionary>(dictionary->copy()));
        } else if (operation < (shrinking ? 75 : 35)) {
            dictionary->removeObjectForKey(key);
            std::erase_if(model, isSought);
        } else {
            dictionary->setObject(value, key);
            found != model.end() ? void(found->second = value) : void(model.emplace_back(key, value));
        }
        expectHolds(*dictionary, model);
    }
}

} // namespace

TEST(NSMutableDictionary, followsAPlainListThroughRandomOperations) {
    for (const unsigned seed : {1u, 2u})
        for (const std::size_t keys : {6u, 12u, 90u}) {
            tryRandomOperations(NSMutableDictionary::dictionary(), seed, keys);
            tryRandomOperations(make<PrimitiveDictionary>(), seed, keys);
        }
}

TEST(Collections, raiseOnWhatTheyCannotHoldOrHaveNot) {
    const auto array = NSMutableArray::arrayWithObjects({number(1)});
    const auto dictionary = NSMutableDictionary::dictionary();
    constexpr NSUInteger far = ~NSUInteger{0};
    const auto key = u"k"_ns;
    for (const auto &name :
         {raised([&] { array->objectAtIndex(far); }), raised([&] { array->insertObject(key, 2); }),
          raised([&] { array->replaceObjectAtIndex(1, key); }),
          raised([&] { array->getObjects(NSMakeRange(1, far)); })})
        EXPECT_EQ(name, NSRangeException);
    for (const auto &name :
         {raised([&] { array->addObject(nullptr); }), raised([&] { array->insertObject(nullptr, 0); }),
          raised([&] { array->replaceObjectAtIndex(0, nullptr); }),
          raised([&] { arrayOf(std::vector<id>(1)); }), raised([&] { dictionary->setObject(nullptr, key); }),
          raised([&] { dictionary->setObject(key, nullptr); }),
          raised([&] { dictionary->setObject(key, make<NSObject>()); }),
          raised([&] { NSDictionary::dictionaryWithObjects(arrayOf({key}), nullptr); })})
        EXPECT_EQ(name, NSInvalidArgumentException);
    // Reading, removing and taking over "none" does nothing.
    array->removeObject(nullptr), array->addObjectsFromArray(nullptr);
    dictionary->removeObjectForKey(nullptr), dictionary->addEntriesFromDictionary(nullptr);
    EXPECT_EQ(array->count(), 1u) << "a refused change changes nothing";
    EXPECT_EQ(dictionary->count(), 0u);
    EXPECT_EQ(array->indexOfObject(nullptr), NSNotFound);
    EXPECT_EQ(dictionary->objectForKey(nullptr), nullptr);
}

TEST(Collections, takeCapacitiesAsHints) {
    for (const NSUInteger capacity : {NSUInteger{0}, NSUInteger{5}, NSUInteger{1} << 62, ~NSUInteger{0}}) {
        const auto array = NSMutableArray::arrayWithCapacity(capacity);
        const auto dictionary = NSMutableDictionary::dictionaryWithCapacity(capacity);
        array->addObject(u"a"_ns);
        dictionary->setObject(u"a"_ns, u"b"_ns);
        EXPECT_EQ(array->count() + dictionary->count(), 2u);
        EXPECT_LT(text(array->descriptionWithLocale(nullptr, capacity)).size(), 8u << 10)
            << "and indentations";
        EXPECT_LT(text(dictionary->descriptionWithLocale(nullptr, capacity)).size(), 8u << 10);
    }
}

TEST(Collections, raiseForBlocksOfNone) {
    const auto full = NSMutableArray::arrayWithObjects({u"b"_ns, u"a"_ns});
    const auto two = NSIndexSet::indexSetWithIndexesInRange({0, 2});
    for (const auto &array : {full, NSMutableArray::array()}) {
        const auto dictionary = NSMutableDictionary::dictionaryWithObjects(array, array);
        const auto set = NSMutableSet::setWithArray(array);
        const std::function<void()> operations[] = {
            [&] { array->enumerateObjectsUsingBlock(nullptr); },
            [&] { array->enumerateObjectsWithOptions(NSEnumerationReverse, nullptr); },
            [&] { array->enumerateObjectsAtIndexes(two, 0, nullptr); },
            [&] { array->indexOfObjectPassingTest(nullptr); },
            [&] { array->indexesOfObjectsPassingTest(nullptr); },
            [&] { array->indexOfObjectAtIndexes(two, 0, nullptr); },
            [&] { array->indexesOfObjectsAtIndexes(two, 0, nullptr); },
            [&] { array->sortUsingComparator(nullptr); },
            [&] { array->sortUsingFunction(nullptr, nullptr); },
            [&] { array->sortedArrayWithOptions(NSSortStable, nullptr); },
            [&] { array->indexOfObject(two, NSMakeRange(0, array->count()), 0, nullptr); },
            [&] { dictionary->enumerateKeysAndObjectsUsingBlock(nullptr); },
            [&] { dictionary->enumerateKeysAndObjectsWithOptions(NSEnumerationReverse, nullptr); },
            [&] { dictionary->keysOfEntriesPassingTest(nullptr); },
            [&] { dictionary->keysSortedByValueUsingComparator(nullptr); },
            [&] { set->enumerateObjectsUsingBlock(nullptr); },
            [&] { set->objectsPassingTest(nullptr); },
            [&] { two->enumerateIndexesUsingBlock(nullptr); },
            [&] { two->enumerateRangesUsingBlock(nullptr); },
            [&] { array->performAtomically(nullptr); },
            [&] { dictionary->performAtomically(nullptr); },
            [] { NSThreadDetachNewThread(nullptr); },
            [] { make<NSEnumerator>(nullptr); },
        };
        for (std::size_t i = 0; i < std::size(operations); ++i)
            EXPECT_EQ(raised(operations[i]), NSInvalidArgumentException) << i;
    }
}

TEST(Collections, copiesAndEquality) {
    const auto changing = NSMutableArray::arrayWithObjects({number(1), u"a"_ns});
    const id frozen = changing->copy();
    const auto fixed = arrayOf({number(1.0), make<NSMutableString>(u"a")});
    EXPECT_TRUE(changing->isEqual(fixed) && fixed->isEqual(changing));
    EXPECT_TRUE(!as<NSMutableArray>(frozen) && frozen->copy() == frozen);
    changing->addObject(NSNull::null());
    EXPECT_TRUE(frozen->isEqual(fixed));
    EXPECT_FALSE(changing->isEqual(fixed) || fixed->isEqual(nullptr) || fixed->isEqual(NSData::data()));
    EXPECT_EQ(text(changing->componentsJoinedByString(u", "_ns)), "1, a, <null>");

    const auto key = make<NSMutableString>(u"name");
    const auto dictionary = NSMutableDictionary::dictionary();
    dictionary->setObject(u"one"_ns, key);
    key->appendString(u"!"_ns);
    EXPECT_EQ(text(dictionary->objectForKey(u"name"_ns)), "one") << "the key was copied";
    EXPECT_EQ(dictionary->objectForKey(key), nullptr);
    dictionary->setObject(u"two"_ns, u"name"_ns);
    const auto entries = dictionaryOf({{u"name"_ns, u"one"_ns}, {u"name"_ns, u"two"_ns}});
    EXPECT_TRUE(dictionary->isEqual(entries) && dictionary->hash() == entries->hash())
        << "the last one counts";
    EXPECT_TRUE(!as<NSMutableDictionary>(dictionary->copy()) && entries->copy() == entries);
    dictionary->setObject(number(1), number(1.0));
    EXPECT_EQ(text(dictionary->objectForKey(number(true))), "1");
    EXPECT_FALSE(dictionary->isEqual(entries) || entries->isEqual(fixed) || entries->isEqual(nullptr));
}

TEST(Collections, mayHoldThemselves) {
    const auto made = [](const Ref<NSString> &more) -> std::array<id, 3> {
        const auto array = NSMutableArray::array(), element = NSMutableArray::arrayWithObjects({more});
        array->addObjectsFromArray(arrayOf({array, more, array}));
        const auto dictionary = NSMutableDictionary::dictionary();
        dictionary->setObject(arrayOf({dictionary, more}), u"k"_ns);
        const auto set = NSMutableSet::setWithArray(arrayOf({element}));
        element->replaceObjectAtIndex(0, set); // its hash stays
        return {array, dictionary, set};
    };
    const auto inner = [](const id &object) { return text(object->NSObject::description()); };
    const auto some = made(u"x"_ns), same = made(u"x"_ns), others = made(u"y"_ns);
    EXPECT_EQ(text(some[0]), "(\n    " + inner(some[0]) + ",\n    x,\n    " + inner(some[0]) + "\n)");
    EXPECT_EQ(text(some[1]), "{\n    k = (\n        " + inner(some[1]) + ",\n        x\n    );\n}");
    EXPECT_EQ(text(some[2]), "{(\n    (\n        " + inner(some[2]) + "\n    )\n)}");
    for (std::size_t i = 0; i < some.size(); ++i) {
        EXPECT_TRUE(some[i]->isEqual(same[i]) && some[i]->hash() == same[i]->hash()) << i;
        EXPECT_EQ(some[i]->isEqual(others[i]), i == 2) << "only the sets hold nothing else";
        EXPECT_TRUE(some[i]->copy()->isEqual(some[i])) << i;
        EXPECT_TRUE(contentsHash(some[i]) == some[i]->hash()) << i;
    }
    for (const auto &[array, dictionary, set] : {some, same, others}) {
        as<NSMutableArray>(array)->removeAllObjects();
        as<NSMutableDictionary>(dictionary)->removeAllObjects();
        as<NSMutableSet>(set)->removeAllObjects();
    }
}

TEST(Collections, nestAsDeepAsMemoryReaches) {
    const std::function<id(const id &)> around[] = {
        [](const id &inner) { return arrayOf({inner}); },
        [](const id &inner) { return NSMutableArray::arrayWithObjects({inner}); },
        [](const id &inner) {
            return NSDictionary::dictionaryWithObjects(arrayOf({inner}), arrayOf({u"k"_ns}));
        },
        [](const id &inner) { return setOf({inner}); },
    };
    for (const auto &wrap : around) {
        const auto nested = [&](int levels, id inner) {
            for (; levels > 0; --levels)
                inner = wrap(inner);
            return inner;
        };
        constexpr int deep = 100'000;
        const id one = nested(deep, number(1));
        EXPECT_EQ(one->hash(), 1u);
        EXPECT_THAT(text(one), testing::HasSubstr(" <" + one->isa()->name() + ": 0x"));
        const bool isSet = as<NSSet>(one) != nullptr;
        EXPECT_EQ(one->isEqual(nested(deep, number(1))), !isSet);
        EXPECT_FALSE(one->isEqual(nested(deep, number(2))));
        EXPECT_TRUE(nested(500, number(1))->isEqual(nested(500, number(1))));
        id shared = number(1), sharedToo = number(1); // as many ways as 2^64
        for (int level = 0; level < 64 && !isSet; ++level) {
            shared = arrayOf({wrap(shared), shared});
            sharedToo = arrayOf({wrap(sharedToo), sharedToo});
        }
        EXPECT_TRUE(shared->isEqual(sharedToo));
    }
}

TEST(Collections, areWholeWhileTheirElementsGo) {
    const auto array = NSMutableArray::arrayWithObjects({u"a"_ns});
    const auto dictionary = NSMutableDictionary::dictionary();
    std::vector<std::string> seen;
    const auto watching = [&] {
        return make<LastWords>([&] {
            seen.push_back(joined(array));
            array->addObject(number(seen.size()));
        });
    };
    array->addObject(watching());
    array->removeObjectAtIndex(1);
    array->addObject(watching());
    array->replaceObjectAtIndex(2, u"b"_ns);
    array->addObject(watching());
    array->insertObject(watching(), 0);
    array->removeAllObjects();
    EXPECT_THAT(seen, ElementsAre("a", "a 1 b", "", "3"));
    EXPECT_EQ(text(array->lastObject()), "4");

    seen.clear();
    const auto growing = [&] {
        return make<LastWords>([&] {
            seen.push_back(joined(dictionary->allKeys()));
            for (std::size_t i = 0; i < 20; ++i) // makes the table grow meanwhile
                dictionary->setObject(number(i), number(i));
        });
    };
    dictionary->setObject(growing(), u"a"_ns);
    dictionary->setObject(u"b"_ns, u"a"_ns);
    dictionary->removeAllObjects();
    dictionary->setObject(growing(), u"c"_ns);
    dictionary->removeObjectForKey(u"c"_ns);
    EXPECT_EQ(dictionary->count(), 20u);
    dictionary->setObject(growing(), u"d"_ns);
    dictionary->removeAllObjects();
    EXPECT_EQ(dictionary->count(), 20u);
    EXPECT_THAT(seen, ElementsAre("a", "", ""));

    const auto element = make<NSObject>();
    array->addObject(element);
    const auto walk = array->objectEnumerator();
    EXPECT_EQ(array.use_count(), 2) << "an enumerator keeps its array";
    EXPECT_EQ(element.use_count(), 2);
    array->removeObject(element);
    EXPECT_EQ(element.use_count(), 1);
}

TEST(Collections, describeThemselves) {
    const auto inner =
        dictionaryOf({{u"zebra"_ns, number(0.5)}, {u"b b"_ns, NSArray::array()}, {u"B"_ns, number(1)}});
    EXPECT_EQ(text(arrayOf({u"plain_1"_ns, u""_ns, u"two words"_ns, u"\"\\\n\t\r\x7Fü"_ns, NSNull::null(),
                            number(true), number(-5), inner})),
              contents(NSData::dataWithContentsOfFile(ZK_TABLES "/Collections/Description.txt")));
    EXPECT_EQ(text(NSArray::array()) + text(NSDictionary::dictionary()), "(\n){\n}");
    EXPECT_EQ(text(dictionaryOf({{u"b"_ns, number(1)}, {number(2), number(3)}})),
              "{\n    b = 1;\n    2 = 3;\n}")
        << "in the order of insertion";
    const auto silent = arrayOf({make<Silent>()});
    EXPECT_EQ(text(silent), "(\n    \"(null)\"\n)");
    EXPECT_EQ(text(silent->componentsJoinedByString(u""_ns)), "(null)");
    EXPECT_EQ(text(NSString::stringWithFormat("%@", make<Silent>())), "(null)");
}

TEST(Collections, describeWhatIsSharedWithinABound) {
    for (const auto &hold : std::initializer_list<id (*)(const id &)>{
             [](const id &shared) -> id {
                 return arrayOf({shared, shared});
             },
             [](const id &shared) -> id {
                 return dictionaryOf({{u"a"_ns, shared}, {u"b"_ns, shared}});
             },
             [](const id &shared) -> id {
                 return setOf({shared, arrayOf({shared})});
             }}) {
        id tower = u"end"_ns;
        for (int level = 0; level < 40; ++level)
            tower = hold(tower);
        const auto told = text(tower);
        EXPECT_GT(told.size(), std::size_t{1} << 20);
        EXPECT_LT(told.size(), std::size_t{1} << 24);
        EXPECT_NE(told.find("\n            ..."), std::string::npos);
    }
    const auto wide = NSMutableArray::array();
    for (int i = 0; i < 200000; ++i)
        wide->addObject(u"ordinary"_ns);
    EXPECT_EQ(text(wide).find("..."), std::string::npos) << "what was told before counts no more";
}
