#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+QNJSON.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSMutableArray/NSMutableArray+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSMutableDictionary/NSMutableDictionary+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h"
#include "Frameworks/QNCategoriesPro/QNThreadSafeArray.h"
#include "Frameworks/QNCategoriesPro/QNThreadSafeDictionary.h"
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedArchiver.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Testing.h"

#include <fcntl.h>
#include <unistd.h>

namespace {

Ref<NSString> word(std::size_t value) {
    return NSString::stringWithFormat("%c", 'a' + static_cast<char>(value % 26));
}

NSComparisonResult compare(const id &first, const id &second) {
    return as<NSString>(first)->compare(as<NSString>(second));
}

/// Everything random that an operation is given; the same for both sides.
struct Arguments {
    Arguments(Random &random, NSUInteger size)
        : index(random.below(size + 2)), other(random.below(size + 2)), range{index, random.below(size + 1)},
          object(word(random())) {
        for (auto more = random.below(4); more > 0; --more)
            list->addObject(word(random()));
        for (auto more = random.below(4); more > 0; --more)
            indexes->addIndex(random.below(size + 1));
        dictionary = dictionaryOf({{word(random()), object}, {word(random()), word(random())}});
    }

    const NSUInteger index, other;
    const NSRange range;
    const Ref<NSString> object;
    const Ref<NSMutableArray> list = NSMutableArray::array();
    const Ref<NSMutableIndexSet> indexes = NSMutableIndexSet::indexSet();
    Ref<NSDictionary> dictionary;
    SEL selector = "compare:"_sel;
};

/// Results of every type as text, so that they can be compared.
std::string shown(const id &object) {
    return as<NSIndexSet>(object) ? text(object).substr(text(object).find('>') + 1) : text(object);
}
std::string shown(std::integral auto value) {
    return std::to_string(value);
}
std::string shown(const std::vector<id> &objects) {
    return text(arrayOf(objects));
}
std::string shown(const std::string &text) {
    return text;
}

/// What several operations give, one behind the other.
std::string told(const auto &...results) {
    return ((shown(results) + "; ") + ...);
}

template <class Container>
using Operation = std::function<std::string(const Ref<Container> &, const Arguments &)>;

template <class Container>
std::vector<Operation<Container>> operations(auto... each) {
    return {each...};
}

/// What the step gives, or the name of what it raises.
template <class Step>
std::string outcome(const Step &step) {
    std::string result = "done";
    const std::string exception = raised([&] {
        if constexpr (std::is_void_v<decltype(step())>)
            step();
        else
            result = shown(step());
    });
    return exception.empty() ? result : exception;
}

#define OPERATION(Container, expression)                                                                     \
    [](const Ref<Container> &c, [[maybe_unused]] const Arguments &a) {                                       \
        return outcome([&] { return expression; });                                                          \
    }
#define ARRAY(expression) OPERATION(NSMutableArray, expression)
#define DICTIONARY(expression) OPERATION(NSMutableDictionary, expression)

const auto order = [](const id &first, const id &second, void *) {
    return static_cast<NSInteger>(compare(first, second));
};

std::string walked(const auto &container) {
    std::string seen;
    for (const id &object : container)
        seen += text(object) + " ";
    return seen;
}

/// What the visits of a walk see, one after the other.
template <class Walk>
Ref<NSString> visits(const Walk &walk) {
    const auto seen = NSMutableString::string();
    walk([&](const id &first, auto second, bool &stop) {
        seen->appendFormat("%@ ", first);
        if constexpr (std::is_same_v<decltype(second), id>)
            seen->appendFormat("%@ ", second);
        else
            seen->appendFormat("%lu ", second);
        stop = seen->length() > 20;
    });
    return seen;
}

const auto isEarly = [](const id &object, auto, bool &) { return as<NSString>(object)->units() < u"m"; };

/// Reads that never raise.
std::string reads(const Ref<NSMutableArray> &c, const Arguments &a) {
    return told(
        c->count(), c->allObjects(), c->firstObject(), c->lastObject(), c->indexOfObject(a.object),
        c->indexOfObjectIdenticalTo(a.object), c->indexOfObjectIdenticalTo(c->lastObject()),
        c->containsObject(a.object), c->firstObjectCommonWithArray(a.list), c->arrayByAddingObject(a.object),
        c->arrayByAddingObjectsFromArray(a.list), c->componentsJoinedByString(a.object),
        c->objectEnumerator()->allObjects(), c->reverseObjectEnumerator()->allObjects(), walked(c),
        visits([&](const auto &visit) { c->enumerateObjectsUsingBlock(visit); }),
        visits([&](const auto &visit) { c->enumerateObjectsWithOptions(NSEnumerationReverse, visit); }),
        c->indexOfObjectPassingTest(isEarly), c->indexesOfObjectsPassingTest(isEarly),
        c->indexOfObjectWithOptions(NSEnumerationReverse, isEarly),
        c->indexesOfObjectsWithOptions(0, isEarly), c->sortedArrayUsingFunction(order, nullptr),
        c->sortedArrayUsingFunction(order, nullptr, c->sortedArrayHint()),
        c->sortedArrayUsingSelector(a.selector), c->sortedArrayUsingComparator(compare),
        c->sortedArrayWithOptions(NSSortConcurrent, compare), c->hash(), c->description(),
        c->descriptionWithLocale(nullptr), c->descriptionWithLocale(nullptr, 2), NSArray::arrayWithArray(c),
        qn::jsonStringEncoded(c));
}

const auto arrayOperations = operations<NSMutableArray>(
    ARRAY(c->addObject(a.object)), ARRAY(c->addObjectsFromArray(a.list)),
    ARRAY(c->insertObject(a.object, a.index)), ARRAY(c->insertObjects(a.list, a.indexes)),
    ARRAY(c->removeLastObject()), ARRAY(c->removeObjectAtIndex(a.index)),
    ARRAY(c->replaceObjectAtIndex(a.index, a.object)), ARRAY(c->setObject(a.object, a.index)),
    ARRAY(c->exchangeObjectAtIndex(a.index, a.other)), ARRAY(c->removeObject(a.object)),
    ARRAY(c->removeObject(a.object, a.range)), ARRAY(c->removeObjectIdenticalTo(a.object)),
    ARRAY(c->removeObjectIdenticalTo(a.object, a.range)), ARRAY(c->removeObjectsInArray(a.list)),
    ARRAY(c->removeObjectsInRange(a.range)), ARRAY(c->replaceObjectsInRange(a.range, a.list)),
    ARRAY(c->replaceObjectsInRange(a.range, a.list, NSMakeRange(0, 1))),
    ARRAY(c->removeObjectsAtIndexes(a.indexes)), ARRAY(c->replaceObjectsAtIndexes(a.indexes, a.list)),
    ARRAY(c->sortUsingFunction(order, nullptr)), ARRAY(c->sortUsingSelector(a.selector)),
    ARRAY(c->sortUsingComparator(compare)), ARRAY(c->sortWithOptions(NSSortStable, compare)),
    ARRAY(qn::popFirstObject(c)), ARRAY(qn::appendObjects(c, a.list)),
    ARRAY(qn::insertObjects(c, a.list, a.index)), ARRAY(reads(c, a)),
    ARRAY(told(c->objectAtIndex(a.index), c->objectAtIndexedSubscript(a.index))),
    ARRAY(told(c->getObjects(a.range), c->subarrayWithRange(a.range))),
    ARRAY(told(c->indexOfObject(a.object, a.range), c->indexOfObjectIdenticalTo(a.object, a.range))),
    ARRAY(c->objectsAtIndexes(a.indexes)),
    ARRAY(visits([&](const auto &visit) { c->enumerateObjectsAtIndexes(a.indexes, 0, visit); })),
    ARRAY(c->indexOfObjectAtIndexes(a.indexes, 0, isEarly)),
    ARRAY(c->indexesOfObjectsAtIndexes(a.indexes, NSEnumerationReverse, isEarly)),
    ARRAY(c->makeObjectsPerformSelector(a.selector)),
    ARRAY(c->makeObjectsPerformSelector(a.selector, a.object)),
    ARRAY(c->indexOfObject(a.object, a.range, NSBinarySearchingInsertionIndex, compare)),
    // Seldom enough for the array to grow.
    ARRAY(c->removeAllObjects()), ARRAY(c->setArray(a.list)));

std::string reads(const Ref<NSMutableDictionary> &c, const Arguments &a) {
    std::vector<id> both(4, NSNull::null());
    c->getObjects(both.data(), both.data() + 2, 2);
    return told(both, c->count(), c->objectForKey(a.object), c->objectForKeyedSubscript(a.object),
                c->keyEnumerator()->allObjects(), c->objectEnumerator()->allObjects(), c->allKeys(),
                c->allValues(), c->allKeysForObject(a.object), c->objectsForKeys(a.list, NSNull::null()),
                walked(c), visits([&](const auto &visit) { c->enumerateKeysAndObjectsUsingBlock(visit); }),
                visits([&](const auto &visit) {
                    c->enumerateKeysAndObjectsWithOptions(NSEnumerationReverse, visit);
                }),
                c->keysOfEntriesPassingTest(isEarly), c->keysOfEntriesWithOptions(0, isEarly),
                c->keysSortedByValueUsingSelector(a.selector), c->keysSortedByValueUsingComparator(compare),
                c->keysSortedByValueWithOptions(NSSortStable, compare), c->hash(), c->description(),
                c->descriptionWithLocale(nullptr), c->descriptionWithLocale(nullptr, 1),
                c->descriptionInStringsFileFormat(), NSDictionary::dictionaryWithDictionary(c),
                qn::jsonStringEncoded(c));
}

const auto dictionaryOperations = operations<NSMutableDictionary>(
    DICTIONARY(c->setObject(a.object, word(a.index))), DICTIONARY(c->setObject(a.object, a.object)),
    DICTIONARY(c->addEntriesFromDictionary(a.dictionary)), DICTIONARY(c->removeObjectForKey(a.object)),
    DICTIONARY(c->setObjectForKeyedSubscript(a.object, word(a.index))),
    DICTIONARY(c->setObjectForKeyedSubscript(nullptr, a.object)), DICTIONARY(c->removeObjectsForKeys(a.list)),
    DICTIONARY(qn::popObjectForKey(c, a.object)), DICTIONARY(reads(c, a)),
    DICTIONARY(c->objectsForKeys(a.list, nullptr)),
    DICTIONARY(a.index ? c->removeObjectForKey(a.object) : c->removeAllObjects()),
    DICTIONARY(a.index ? c->addEntriesFromDictionary(a.dictionary) : c->setDictionary(a.dictionary)));

/// Does the same long random sequence to both; results and contents must agree after every step.
template <class Container>
void expectAgreement(const std::vector<Operation<Container>> &operations, const Ref<Container> &guarded,
                     const Ref<Container> &plain) {
    Random random(1);
    for (int step = 0; step < 18000; ++step) {
        const std::size_t choice = random.below(operations.size());
        const Arguments arguments(random, plain->count());
        ASSERT_EQ(operations[choice](guarded, arguments), operations[choice](plain, arguments))
            << "operation " << choice << ", step " << step;
        ASSERT_TRUE(plain->isEqual(guarded)) << "operation " << choice << ", step " << step;
    }
}

class GuardedSubclass : public QNThreadSafeArray {
    NS_CLASS(GuardedSubclass, QNThreadSafeArray)
};
NS_IMPLEMENTATION(GuardedSubclass) {}

// Their steps need no lock: whatever else is done while it is held never ends.

class SteppingArray final : public QNThreadSafeArray {
public:
    using QNThreadSafeArray::replaceObjectsInRange;
    void replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects) override {
        ++steps, contents->replaceObjectsInRange(range, objects);
    }
    void performAtomically(const std::function<void(NSArray &)> &operation) override {
        ++steps, operation(*contents);
    }
    const Ref<NSMutableArray> contents = NSMutableArray::arrayWithObjects({word(0), word(1)});
    int steps = 0;
};

class SteppingDictionary final : public QNThreadSafeDictionary {
public:
    void performAtomically(const std::function<void(NSDictionary &)> &operation) override {
        ++steps, operation(*contents);
    }
    const Ref<NSMutableDictionary> contents = NSMutableDictionary::dictionary();
    int steps = 0;
};

/// Whether a thread that does nothing but this comes to its end. One that goes to sleep instead waits for
/// what nobody else is about to do: for ever, unless the caller does.
bool comesToItsEnd(const std::function<void()> &operation) {
    struct Run {
        std::atomic<pid_t> thread = 0;
        std::atomic<bool> ended = false;
    };
    const auto run = std::make_shared<Run>();
    std::thread([run, operation] {
        run->thread = gettid();
        operation();
        run->ended = true;
    }).detach();
    while (run->thread == 0)
        std::this_thread::yield();
    const std::string path = "/proc/self/task/" + std::to_string(run->thread) + "/stat";
    for (int asleep = 0; asleep < 10 && !run->ended;) { // a lock inside the C library may be waited for, too
        char line[64] = "";
        const int file =
            open(path.c_str(), O_RDONLY | O_CLOEXEC); // a stream would allocate, which takes locks
        if (file >= 0) {
            static_cast<void>(!read(file, line, sizeof line - 1));
            close(file);
        }
        asleep = std::string_view(line).find(") S ") != std::string_view::npos ? asleep + 1 : 0;
        std::this_thread::yield();
    }
    return run->ended;
}

std::vector<std::function<void()>> steps(auto... each) {
    return {each...};
}

template <class Guarded>
bool isLocked(const Ref<Guarded> &container) {
    return !comesToItsEnd([container] { container->count(); });
}

// Tell when they are read.

struct Telling {
    std::function<void()> told;
};

class TellingArray final : public QNThreadSafeArray, Telling {
public:
    explicit TellingArray(Telling telling) : Telling(std::move(telling)) {}
    std::vector<id> allObjects() const override { return told(), QNThreadSafeArray::allObjects(); }
    bool containsObject(const id &object) const override {
        return told(), QNThreadSafeArray::containsObject(object);
    }
};

class TellingDictionary final : public QNThreadSafeDictionary, Telling {
public:
    explicit TellingDictionary(Telling telling) : Telling(std::move(telling)) {}
    void enumerateKeysAndObjectsUsingBlock(const Visitor &visitor) const override {
        told(), QNThreadSafeDictionary::enumerateKeysAndObjectsUsingBlock(visitor);
    }
};

class TellingElement final : public NSObject, Telling {
public:
    explicit TellingElement(Telling telling) : Telling(std::move(telling)) {}
    bool isEqual(const id &) const override { return told(), true; }
};

} // namespace

TEST(GuardedContainers, doWhatOrdinaryOnesDo) {
    expectAgreement<NSMutableArray>(arrayOperations, QNThreadSafeArray::array(), NSMutableArray::array());
    expectAgreement<NSMutableDictionary>(dictionaryOperations, QNThreadSafeDictionary::array(),
                                         NSMutableDictionary::dictionary());
}

TEST(QNThreadSafeArray, isMadeInEveryWay) {
    const id objects[] = {word(0), word(1)};
    const auto plain = arrayOf({word(0), word(1)});
    const TemporaryFolder folder;
    folder.put("list", "<plist version=\"1.0\"><array><string>a</string><string>b</string></array></plist>");
    const auto path = string(folder.file("list").string()), nowhere = string(folder.file("none").string());
    for (const auto &made :
         {QNThreadSafeArray::initWithArray(plain), QNThreadSafeArray::initWithObjects(objects, 2),
          QNThreadSafeArray::initWithContentsOfFile(path),
          QNThreadSafeArray::initWithContentsOfURL(NSURL::fileURLWithPath(path))})
        EXPECT_TRUE(plain->isEqual(made));
    EXPECT_EQ(QNThreadSafeArray::arrayWithCapacity(5)->count() + QNThreadSafeArray::init()->count(), 0u);
    EXPECT_THROW(QNThreadSafeArray::initWithObjects(objects, NSUInteger{1} << 62), NSException);
    EXPECT_EQ(QNThreadSafeArray::initWithContentsOfFile(nowhere), nullptr);
}

TEST(QNThreadSafeDictionary, isMadeInEveryWay) {
    const id values[] = {make<NSMutableString>(u"x"), word(9)}, keys[] = {word(0), word(1)};
    const auto plain = dictionaryOf({{keys[0], values[0]}, {keys[1], values[1]}});
    const auto shared = QNThreadSafeDictionary::initWithDictionary(plain),
               copied = QNThreadSafeDictionary::initWithDictionary(plain, true);
    for (const auto &made : {shared, copied, QNThreadSafeDictionary::initWithObjects(values, keys, 2),
                             QNThreadSafeDictionary::initWithObjects(plain->allValues(), plain->allKeys())})
        EXPECT_TRUE(plain->isEqual(made));
    as<NSMutableString>(values[0])->appendString(word(24));
    EXPECT_EQ(text(shared->objectForKey(keys[0])) + text(copied->objectForKey(keys[0])), "xyx");
    EXPECT_EQ(QNThreadSafeDictionary::arrayWithCapacity(5)->count(), 0u);
    EXPECT_TRUE(as<QNThreadSafeDictionary>(class_createInstance(QNThreadSafeDictionary::class_())));
    EXPECT_THROW(QNThreadSafeDictionary::initWithObjects(values, keys, NSUInteger{1} << 62), NSException);
}

TEST(GuardedContainers, equalGuardedOnesOnly) {
    const auto plain = NSMutableArray::arrayWithObjects({word(0), word(1)});
    const auto one = QNThreadSafeArray::initWithArray(plain), two = QNThreadSafeArray::initWithArray(plain);
    EXPECT_TRUE(one->isEqual(one) && one->isEqual(two) && one->isEqualToArray(two) &&
                one->isEqualToArray(one));
    EXPECT_EQ(one->hash(), two->hash());
    EXPECT_FALSE(one->isEqual(plain) || one->isEqualToArray(plain) || one->isEqual(nullptr));
    EXPECT_TRUE(plain->isEqual(one));
    two->removeLastObject();
    EXPECT_FALSE(one->isEqual(two));

    const auto entries = dictionaryOf({{word(0), word(1)}});
    const auto first = QNThreadSafeDictionary::initWithDictionary(entries),
               second = QNThreadSafeDictionary::initWithDictionary(entries);
    EXPECT_TRUE(first->isEqual(first) && first->isEqual(second) && first->isEqualToDictionary(second));
    EXPECT_FALSE(first->isEqual(entries) || first->isEqualToDictionary(entries) || first->isEqual(one));
    EXPECT_TRUE(entries->isEqual(first));
}

TEST(GuardedContainers, copiesAreGuardedMutableAndIndependent) {
    const auto element = make<NSObject>();
    const auto array = make<GuardedSubclass>();
    array->addObject(element);
    for (const id &object : {array->copy(), array->mutableCopy()}) {
        const auto copy = as<GuardedSubclass>(object);
        ASSERT_TRUE(copy && copy->isEqual(array));
        EXPECT_EQ(copy->firstObject(), element) << "shared";
        copy->removeAllObjects();
        EXPECT_EQ(array->count(), 1u);
    }
    const auto dictionary = QNThreadSafeDictionary::array();
    dictionary->setObject(element, word(0));
    const auto copy = as<QNThreadSafeDictionary>(dictionary->copy());
    ASSERT_TRUE(copy);
    copy->setObject(element, word(1));
    EXPECT_EQ(dictionary->count(), 1u);
    EXPECT_EQ(copy->count(), 2u);
}

TEST(GuardedContainers, giveTheLockBackWhatever) {
    const auto array = QNThreadSafeArray::array();
    const auto dictionary = QNThreadSafeDictionary::array();
    const auto refuse = [](auto &&...) -> bool { throw NSException("Mine", "no"); };
    const auto refuseOrder = [&](auto &&...) -> NSComparisonResult { return refuse(), compare({}, {}); };
    EXPECT_EQ(raised([&] { array->objectAtIndex(7); }), NSRangeException);
    array->addObjectsFromArray(arrayOf({word(1), word(0)}));
    EXPECT_EQ(raised([&] { array->indexOfObjectPassingTest(refuse); }), "Mine");
    EXPECT_EQ(raised([&] { array->sortUsingComparator(refuseOrder); }), "Mine");
    EXPECT_EQ(raised([&] { qn::insertObjects(array, arrayOf({word(0)}), 9); }), NSRangeException);
    EXPECT_EQ(array->count(), 2u);
    dictionary->setObject(word(0), word(0));
    EXPECT_EQ(raised([&] { dictionary->setObject(nullptr, word(0)); }), NSInvalidArgumentException);
    EXPECT_EQ(raised([&] { dictionary->keysOfEntriesPassingTest(refuse); }), "Mine");
    EXPECT_EQ(dictionary->count(), 1u);
    const auto refusing = [&] {
        return QNThreadSafeArray::initWithArray(
            NSArray::arrayWithObjects({make<TellingElement>(Telling(refuse))}));
    };
    const auto one = refusing(), two = refusing();
    EXPECT_EQ(raised([&] { static_cast<void>(one->isEqual(two)); }), "Mine");
    EXPECT_EQ(one->count() + two->count(), 2u);

    NSFastEnumerationState state;
    id batch[1];
    EXPECT_EQ(array->countByEnumeratingWithState(state, batch, 1), 1u);
    array->addObject(word(2)); // a writer between two batches
    EXPECT_EQ(raised([&] { array->countByEnumeratingWithState(state, batch, 1); }), NSGenericException);
    EXPECT_EQ(array->count(), 3u);
}

TEST(GuardedContainers, extensionsAreOneStep) {
    const auto array = make<SteppingArray>();
    const auto dictionary = make<SteppingDictionary>();
    const auto list = arrayOf({word(0), word(1), word(2)});
    const auto extensions = steps(
        [=] { qn::prependObjects(array, list); }, [=] { qn::insertObjects(array, list, 1); },
        [=] { qn::randomObject(array); }, [=] { qn::objectOrNilAtIndex(array, 1); },
        [=] { qn::reverse(array); }, [=] { qn::shuffle(array); }, [=] { qn::popFirstObject(array); },
        [=] { qn::popLastObject(array); }, [=] { qn::removeFirstObject(array); },
        [=] { qn::jsonStringEncoded(array); }, [=] { qn::jsonPrettyStringEncoded(array); },
        [=] { qn::entriesForKeys(dictionary, list); }, [=] { qn::popObjectForKey(dictionary, word(0)); },
        [=] { qn::popEntriesForKeys(dictionary, list); }, [=] { qn::jsonStringEncoded(dictionary); },
        [=] { qn::jsonPrettyStringEncoded(dictionary); });
    for (const auto &extension : extensions) {
        array->steps = dictionary->steps = 0;
        EXPECT_TRUE(comesToItsEnd([=] {
            array->QNThreadSafeArray::performAtomically([=](NSArray &) {
                dictionary->QNThreadSafeDictionary::performAtomically([=](NSDictionary &) { extension(); });
            });
        })) << "extension "
            << &extension - extensions.data();
        EXPECT_EQ(array->steps + dictionary->steps, 1) << "extension " << &extension - extensions.data();
    }
}

TEST(GuardedContainers, loseNothingAmongManyThreads) {
    constexpr int workers = 4, rounds = 150;
    const auto array = QNThreadSafeArray::array(), popped = QNThreadSafeArray::array();
    const auto dictionary = QNThreadSafeDictionary::array();
    dispatch::onThreads(workers, [&](int worker) {
        for (int i = 0; i < rounds; ++i) {
            const id mine = NSNumber::numberWithInt(worker * rounds + i);
            array->addObject(mine);
            qn::prependObjects(array, arrayOf({mine, mine}));
            EXPECT_TRUE(qn::randomObject(array));
            qn::reverse(array);
            qn::shuffle(array);
            popped->addObject(qn::popFirstObject(array));
            popped->addObject(qn::popLastObject(array));

            const auto snapshot = NSMutableArray::arrayWithArray(array);
            EXPECT_GT(snapshot->count(), static_cast<NSUInteger>(i)) << "each round leaves one";
            EXPECT_TRUE(qn::jsonStringEncoded(array) && array->copy());
            static_cast<void>(snapshot->isEqual(array)); // whatever it is by now
            const auto outcome = raised([&] {
                for (const id &object : array)
                    EXPECT_TRUE(object);
            });
            EXPECT_TRUE(outcome.empty() || outcome == NSGenericException) << outcome;

            dictionary->setObject(mine, mine);
            dictionary->setObject(mine, word(static_cast<std::size_t>(i)));
            EXPECT_TRUE(qn::entriesForKeys(dictionary, dictionary->allKeys())->objectForKey(mine));
            EXPECT_TRUE(i % 2 == 0 || qn::popObjectForKey(dictionary, mine) == mine);
        }
    });
    EXPECT_EQ(array->count(), static_cast<NSUInteger>(workers * rounds));
    std::map<std::int32_t, int> seen;
    for (const auto &part : {array, popped})
        for (const id &object : part)
            ++seen[as<NSNumber>(object)->intValue()];
    EXPECT_EQ(seen.size(), static_cast<std::size_t>(workers * rounds));
    for (const auto &[number, times] : seen)
        ASSERT_EQ(times, 3) << number << " was lost or doubled";
    EXPECT_EQ(dictionary->count(), static_cast<NSUInteger>(workers * rounds / 2 + 26));
}

TEST(GuardedContainers, takeTheLocksTheySay) {
    const auto array = QNThreadSafeArray::array();
    const auto dictionary = QNThreadSafeDictionary::array();
    int seen = 0;
    const auto list = make<TellingArray>(Telling([&] { seen += isLocked(array) || isLocked(dictionary); }));
    const auto entries = make<TellingDictionary>(Telling([&] { seen += isLocked(dictionary); }));
    list->addObject(word(0));
    const auto twoLocks = steps(
        [&] { array->addObjectsFromArray(list); }, [&] { array->setArray(list); },
        [&] { array->removeObjectsInArray(list); },
        [&] { array->replaceObjectsInRange(NSMakeRange(0, 0), list); },
        [&] { array->insertObjects(list, NSIndexSet::indexSetWithIndex(0)); },
        [&] { array->replaceObjectsAtIndexes(NSIndexSet::indexSetWithIndex(0), list); },
        [&] { array->arrayByAddingObjectsFromArray(list); }, [&] { array->firstObjectCommonWithArray(list); },
        [&] { qn::appendObjects(array, list); }, [&] { qn::prependObjects(array, list); },
        [&] { qn::insertObjects(array, list, 0); }, [&] { dictionary->addEntriesFromDictionary(entries); },
        [&] { dictionary->setDictionary(entries); }, [&] { dictionary->objectsForKeys(list, list); },
        [&] { dictionary->removeObjectsForKeys(list); }, [&] { qn::entriesForKeys(dictionary, list); },
        [&] { qn::popEntriesForKeys(dictionary, list); });
    for (const auto &operation : twoLocks) {
        seen = 0;
        operation();
        EXPECT_EQ(seen, 1) << "operation " << &operation - twoLocks.data();
    }
    seen = 0;
    static_cast<void>(array->copy()->isEqual(list));
    static_cast<void>(QNThreadSafeArray::initWithArray(list));
    static_cast<void>(NSMutableDictionary::dictionaryWithDictionary(entries));
    EXPECT_EQ(seen, 0);

    const auto one = QNThreadSafeArray::array(), two = QNThreadSafeArray::array();
    bool held = false;
    const auto element = [&] {
        return make<TellingElement>(Telling([&] { held = isLocked(one) && isLocked(two); }));
    };
    one->addObject(element());
    two->addObject(element());
    EXPECT_TRUE(one->isEqual(two) && held);
}

TEST(GuardedContainers, mayHoldThemselves) {
    const auto array = QNThreadSafeArray::array(), otherArray = QNThreadSafeArray::array();
    const auto dictionary = QNThreadSafeDictionary::array(),
               otherDictionary = QNThreadSafeDictionary::array();
    array->addObject(array);
    otherArray->addObject(QNThreadSafeArray::initWithArray(arrayOf({otherArray})));
    for (const auto &each : {dictionary, otherDictionary})
        each->setObject(arrayOf({each}), word(0));
    const std::string innerArray = text(array->NSObject::description()),
                      innerDictionary = text(dictionary->NSObject::description());
    EXPECT_TRUE(comesToItsEnd([=] {
        for (const id &itself : {id(array), id(dictionary)}) {
            EXPECT_FALSE(
                NSJSONSerialization::isValidJSONObject(itself) ||
                NSJSONSerialization::dataWithJSONObject(itself, NSJSONWritingOptions::None, nullptr));
            EXPECT_EQ(text(qn::modelToJSONString(itself)), itself == array ? "[]" : "{\"a\":[]}");
            EXPECT_TRUE(NSKeyedArchiver::archivedDataWithRootObject(itself));
            EXPECT_TRUE(itself->copy()->isEqual(itself) && itself->hash() == 1);
        }
        EXPECT_EQ(text(array), "(\n    " + innerArray + "\n)");
        EXPECT_EQ(text(array->componentsJoinedByString(nullptr)), innerArray);
        EXPECT_EQ(text(NSString::stringWithFormat("%@", dictionary)),
                  "{\n    a = (\n        " + innerDictionary + "\n    );\n}");
        EXPECT_EQ(text(dictionary->descriptionInStringsFileFormat()),
                  "\"a\" = \"(\\n    " + innerDictionary + "\\n)\";\n");
        EXPECT_FALSE(qn::plistData(array) || qn::plistString(dictionary) || qn::jsonStringEncoded(array) ||
                     qn::jsonPrettyStringEncoded(array) || qn::jsonString(dictionary) ||
                     qn::jsonPrettyStringEncoded(dictionary));
        EXPECT_TRUE(array->isEqual(otherArray) && otherArray->isEqual(array));
        EXPECT_TRUE(dictionary->isEqual(otherDictionary));
        otherDictionary->setObject(word(0), word(0));
        EXPECT_FALSE(dictionary->isEqual(otherDictionary));
    }));
    for (const auto &each : {array, otherArray})
        each->removeAllObjects();
    for (const auto &each : {dictionary, otherDictionary})
        each->removeAllObjects();
}
