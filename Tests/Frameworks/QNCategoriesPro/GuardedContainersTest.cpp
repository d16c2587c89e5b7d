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

#include <gmock/gmock.h>

#include <atomic>
#include <fcntl.h>
#include <map>
#include <thread>
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
    Arguments(Random &random, NSUInteger size) {
        index = random() % (size + 2);
        other = random() % (size + 2);
        range = {index, random() % (size + 1)};
        object = word(random());
        const auto more = NSMutableArray::array();
        for (auto i = random() % 4; i > 0; --i)
            more->addObject(word(random()));
        list = as<NSArray>(more->copy());
        const auto set = NSMutableIndexSet::indexSet();
        for (auto i = random() % 4; i > 0; --i)
            set->addIndex(random() % (size + 1));
        indexes = set;
        dictionary = dictionaryOf({{word(random()), object}, {word(random()), word(random())}});
    }

    NSUInteger index, other;
    NSRange range;
    Ref<NSString> object;
    Ref<NSArray> list;
    Ref<NSIndexSet> indexes;
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

/// What the step gives, or the name of what it raises.
template <class Step>
std::string outcome(const Step &step) {
    try {
        if constexpr (std::is_void_v<decltype(step())>)
            return step(), "done";
        else
            return shown(step());
    } catch (const NSException &exception) {
        return exception.name();
    }
}

template <class Container>
using Operation = std::function<std::string(const Ref<Container> &, const Arguments &)>;

#define OPERATION(Container, expression)                                                                     \
    [](const Ref<Container> &c, [[maybe_unused]] const Arguments &a) {                                       \
        return outcome([&] { return expression; });                                                          \
    }
#define ARRAY(expression) OPERATION(NSMutableArray, expression)
#define DICTIONARY(expression) OPERATION(NSMutableDictionary, expression)

bool isEarly(const id &object) {
    return as<NSString>(object)->units() < u"m";
}

NSInteger order(const id &first, const id &second, void *) {
    return static_cast<NSInteger>(compare(first, second));
}

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

const auto isEarlyAt = [](const id &object, NSUInteger, bool &) { return isEarly(object); };
const auto isEarlyEntry = [](const id &key, const id &, bool &) { return isEarly(key); };

const Operation<NSMutableArray> arrayOperations[] = {
    ARRAY(c->addObject(a.object)),
    ARRAY(c->addObject(a.object)),
    ARRAY(c->addObjectsFromArray(a.list)),
    ARRAY(c->insertObject(a.object, a.index)),
    ARRAY(c->insertObjects(a.list, a.indexes)),
    ARRAY(c->removeLastObject()),
    ARRAY(c->removeObjectAtIndex(a.index)),
    ARRAY(c->replaceObjectAtIndex(a.index, a.object)),
    ARRAY(c->setObject(a.object, a.index)),
    ARRAY(c->exchangeObjectAtIndex(a.index, a.other)),
    ARRAY(c->removeObject(a.object)),
    ARRAY(c->removeObject(a.object, a.range)),
    ARRAY(c->removeObjectIdenticalTo(a.object)),
    ARRAY(c->removeObjectIdenticalTo(a.object, a.range)),
    ARRAY(c->removeObjectsInArray(a.list)),
    ARRAY(c->removeObjectsInRange(a.range)),
    ARRAY(c->replaceObjectsInRange(a.range, a.list)),
    ARRAY(c->replaceObjectsInRange(a.range, a.list, {0, 1})),
    ARRAY(c->removeObjectsAtIndexes(a.indexes)),
    ARRAY(c->replaceObjectsAtIndexes(a.indexes, a.list)),
    ARRAY(c->sortUsingFunction(order, nullptr)),
    ARRAY(c->sortUsingSelector(a.selector)),
    ARRAY(c->sortUsingComparator(compare)),
    ARRAY(c->sortWithOptions(NSSortStable, compare)),
    ARRAY(qn::popFirstObject(c)),
    ARRAY(qn::appendObjects(c, a.list)),
    ARRAY(qn::insertObjects(c, a.list, a.index)),
    // Reads.
    ARRAY(c->count()),
    ARRAY(c->objectAtIndex(a.index)),
    ARRAY(c->objectAtIndexedSubscript(a.index)),
    ARRAY(c->getObjects(a.range)),
    ARRAY(c->allObjects()),
    ARRAY(c->objectsAtIndexes(a.indexes)),
    ARRAY(c->firstObject()),
    ARRAY(c->lastObject()),
    ARRAY(c->indexOfObject(a.object)),
    ARRAY(c->indexOfObject(a.object, a.range)),
    ARRAY(c->indexOfObjectIdenticalTo(a.object)),
    ARRAY(c->indexOfObjectIdenticalTo(c->lastObject())),
    ARRAY(c->indexOfObjectIdenticalTo(a.object, a.range)),
    ARRAY(c->containsObject(a.object)),
    ARRAY(c->firstObjectCommonWithArray(a.list)),
    ARRAY(c->arrayByAddingObject(a.object)),
    ARRAY(c->arrayByAddingObjectsFromArray(a.list)),
    ARRAY(c->subarrayWithRange(a.range)),
    ARRAY(c->componentsJoinedByString(a.object)),
    ARRAY(c->objectEnumerator()->allObjects()),
    ARRAY(c->reverseObjectEnumerator()->allObjects()),
    ARRAY(visits([&](const auto &visit) { c->enumerateObjectsUsingBlock(visit); })),
    ARRAY(visits([&](const auto &visit) { c->enumerateObjectsWithOptions(NSEnumerationReverse, visit); })),
    ARRAY(visits([&](const auto &visit) { c->enumerateObjectsAtIndexes(a.indexes, 0, visit); })),
    ARRAY(c->indexOfObjectPassingTest(isEarlyAt)),
    ARRAY(c->indexOfObjectWithOptions(NSEnumerationReverse, isEarlyAt)),
    ARRAY(c->indexOfObjectAtIndexes(a.indexes, 0, isEarlyAt)),
    ARRAY(c->indexesOfObjectsPassingTest(isEarlyAt)),
    ARRAY(c->indexesOfObjectsWithOptions(0, isEarlyAt)),
    ARRAY(c->indexesOfObjectsAtIndexes(a.indexes, NSEnumerationReverse, isEarlyAt)),
    ARRAY(c->makeObjectsPerformSelector(a.selector)),
    ARRAY(c->makeObjectsPerformSelector(a.selector, a.object)),
    ARRAY(c->sortedArrayUsingFunction(order, nullptr)),
    ARRAY(c->sortedArrayUsingFunction(order, nullptr, c->sortedArrayHint())),
    ARRAY(c->sortedArrayUsingSelector(a.selector)),
    ARRAY(c->sortedArrayUsingComparator(compare)),
    ARRAY(c->sortedArrayWithOptions(NSSortConcurrent, compare)),
    ARRAY(c->indexOfObject(a.object, a.range, NSBinarySearchingInsertionIndex, compare)),
    ARRAY(c->hash()),
    ARRAY(c->description()),
    ARRAY(c->descriptionWithLocale(nullptr)),
    ARRAY(c->descriptionWithLocale(nullptr, 2)),
    ARRAY(string(walked(c))),
    ARRAY(NSArray::arrayWithArray(c)),
    ARRAY(qn::jsonStringEncoded(c)),
    // Seldom enough for the array to grow.
    ARRAY(c->removeAllObjects()),
    ARRAY(c->setArray(a.list)),
};

const Operation<NSMutableDictionary> dictionaryOperations[] = {
    DICTIONARY(c->setObject(a.object, word(a.index))),
    DICTIONARY(c->setObject(a.object, a.object)),
    DICTIONARY(c->addEntriesFromDictionary(a.dictionary)),
    DICTIONARY(c->addEntriesFromDictionary(a.dictionary)),
    DICTIONARY(c->removeObjectForKey(a.object)),
    DICTIONARY(c->setObjectForKeyedSubscript(a.object, word(a.index))),
    DICTIONARY(c->setObjectForKeyedSubscript(nullptr, a.object)),
    DICTIONARY(c->removeObjectsForKeys(a.list)),
    DICTIONARY(qn::popObjectForKey(c, a.object)),
    // Reads.
    DICTIONARY(c->count()),
    DICTIONARY(c->objectForKey(a.object)),
    DICTIONARY(c->objectForKeyedSubscript(a.object)),
    DICTIONARY(c->keyEnumerator()->allObjects()),
    DICTIONARY(c->objectEnumerator()->allObjects()),
    DICTIONARY(c->allKeys()),
    DICTIONARY(c->allValues()),
    DICTIONARY(c->allKeysForObject(a.object)),
    DICTIONARY(c->objectsForKeys(a.list, NSNull::null())),
    DICTIONARY(c->objectsForKeys(a.list, nullptr)),
    DICTIONARY([&] {
        std::vector<id> both(4, NSNull::null());
        c->getObjects(both.data(), both.data() + 2, 2);
        return both;
    }()),
    DICTIONARY(visits([&](const auto &visit) { c->enumerateKeysAndObjectsUsingBlock(visit); })),
    DICTIONARY(visits(
        [&](const auto &visit) { c->enumerateKeysAndObjectsWithOptions(NSEnumerationReverse, visit); })),
    DICTIONARY(c->keysOfEntriesPassingTest(isEarlyEntry)),
    DICTIONARY(c->keysOfEntriesWithOptions(0, isEarlyEntry)),
    DICTIONARY(c->keysSortedByValueUsingSelector(a.selector)),
    DICTIONARY(c->keysSortedByValueUsingComparator(compare)),
    DICTIONARY(c->keysSortedByValueWithOptions(NSSortStable, compare)),
    DICTIONARY(c->hash()),
    DICTIONARY(c->description()),
    DICTIONARY(c->descriptionWithLocale(nullptr)),
    DICTIONARY(c->descriptionWithLocale(nullptr, 1)),
    DICTIONARY(c->descriptionInStringsFileFormat()),
    DICTIONARY(string(walked(c))),
    DICTIONARY(NSDictionary::dictionaryWithDictionary(c)),
    DICTIONARY(qn::jsonStringEncoded(c)),
    // Seldom enough for the dictionary to grow.
    DICTIONARY(c->removeAllObjects()),
    DICTIONARY(c->setDictionary(a.dictionary)),
};

/// Does the same long random sequence to both; results and contents must agree after every step.
template <class Container, std::size_t count>
void expectAgreement(const Operation<Container> (&operations)[count], const Ref<Container> &guarded,
                     const Ref<Container> &plain, unsigned seed) {
    Random random(seed);
    for (int step = 0; step < 6000; ++step) {
        const std::size_t choice = random() % count;
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

/// Counts the calls that take the lock for themselves.
class CountingArray final : public QNThreadSafeArray {
public:
    NSUInteger count() const override { return ++calls, QNThreadSafeArray::count(); }
    id objectAtIndex(NSUInteger index) const override {
        return ++calls, QNThreadSafeArray::objectAtIndex(index);
    }
    id firstObject() const override { return ++calls, QNThreadSafeArray::firstObject(); }
    id lastObject() const override { return ++calls, QNThreadSafeArray::lastObject(); }
    void enumerateObjectsUsingBlock(const Visitor &visitor) const override {
        ++calls, QNThreadSafeArray::enumerateObjectsUsingBlock(visitor);
    }
    void insertObject(const id &object, NSUInteger index) override {
        ++calls, QNThreadSafeArray::insertObject(object, index);
    }
    using QNThreadSafeArray::replaceObjectsInRange;
    void replaceObjectsInRange(NSRange range, const Ref<NSArray> &objects) override {
        ++calls, QNThreadSafeArray::replaceObjectsInRange(range, objects);
    }
    void performAtomically(const std::function<void(NSArray &)> &operation) override {
        ++calls, QNThreadSafeArray::performAtomically(operation);
    }
    mutable int calls = 0;
};

class CountingDictionary final : public QNThreadSafeDictionary {
public:
    NSUInteger count() const override { return ++calls, QNThreadSafeDictionary::count(); }
    id objectForKey(const id &key) const override {
        return ++calls, QNThreadSafeDictionary::objectForKey(key);
    }
    void enumerateKeysAndObjectsUsingBlock(const Visitor &visitor) const override {
        ++calls, QNThreadSafeDictionary::enumerateKeysAndObjectsUsingBlock(visitor);
    }
    void performAtomically(const std::function<void(NSDictionary &)> &operation) override {
        ++calls, QNThreadSafeDictionary::performAtomically(operation);
    }
    mutable int calls = 0;
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
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file >= 0) {
            static_cast<void>(!read(file, line, sizeof line - 1));
            close(file);
        }
        asleep = std::string_view(line).find(") S ") != std::string_view::npos ? asleep + 1 : 0;
        std::this_thread::yield();
    }
    return run->ended;
}

template <class Guarded>
bool isLocked(const Ref<Guarded> &container) {
    return !comesToItsEnd([container] { container->count(); });
}

// Tell whoever made them when they are read.

using Told = std::function<void()>;

class TellingArray final : public QNThreadSafeArray {
public:
    explicit TellingArray(Told told) : told_(std::move(told)) {}
    std::vector<id> allObjects() const override { return told_(), QNThreadSafeArray::allObjects(); }
    bool containsObject(const id &object) const override {
        return told_(), QNThreadSafeArray::containsObject(object);
    }

private:
    const Told told_;
};

class TellingDictionary final : public QNThreadSafeDictionary {
public:
    explicit TellingDictionary(Told told) : told_(std::move(told)) {}
    void enumerateKeysAndObjectsUsingBlock(const Visitor &visitor) const override {
        told_();
        QNThreadSafeDictionary::enumerateKeysAndObjectsUsingBlock(visitor);
    }

private:
    const Told told_;
};

class TellingElement final : public NSObject {
public:
    explicit TellingElement(Told told) : told_(std::move(told)) {}
    bool isEqual(const id &) const override { return told_(), true; }

private:
    const Told told_;
};

} // namespace

TEST(QNThreadSafeArray, doesWhatAnOrdinaryArrayDoes) {
    for (const unsigned seed : {1u, 2u, 3u})
        expectAgreement<NSMutableArray>(arrayOperations, QNThreadSafeArray::array(), NSMutableArray::array(),
                                        seed);
}

TEST(QNThreadSafeDictionary, doesWhatAnOrdinaryDictionaryDoes) {
    for (const unsigned seed : {1u, 2u, 3u})
        expectAgreement<NSMutableDictionary>(dictionaryOperations, QNThreadSafeDictionary::array(),
                                             NSMutableDictionary::dictionary(), seed);
}

TEST(QNThreadSafeArray, isMadeInEveryWay) {
    const id objects[] = {word(0), word(1)};
    const auto plain = arrayOf({word(0), word(1)});
    EXPECT_EQ(QNThreadSafeArray::arrayWithCapacity(5)->count() + QNThreadSafeArray::init()->count(), 0u);
    EXPECT_TRUE(plain->isEqual(QNThreadSafeArray::initWithArray(plain)));
    EXPECT_TRUE(plain->isEqual(QNThreadSafeArray::initWithObjects(objects, 2)));
    EXPECT_THROW(QNThreadSafeArray::initWithObjects(objects, NSUInteger{1} << 62), NSException);
    const TemporaryFolder folder;
    folder.put("list", "<plist version=\"1.0\"><array><string>a</string><string>b</string></array></plist>");
    const auto path = string(folder.file("list").string());
    EXPECT_TRUE(plain->isEqual(QNThreadSafeArray::initWithContentsOfFile(path)));
    EXPECT_TRUE(plain->isEqual(QNThreadSafeArray::initWithContentsOfURL(NSURL::fileURLWithPath(path))));
    EXPECT_EQ(QNThreadSafeArray::initWithContentsOfFile(string(folder.file("none").string())), nullptr);
}

TEST(QNThreadSafeDictionary, isMadeInEveryWay) {
    const id values[] = {make<NSMutableString>(u"x"), word(9)}, keys[] = {word(0), word(1)};
    const auto plain = dictionaryOf({{keys[0], values[0]}, {keys[1], values[1]}});
    EXPECT_EQ(QNThreadSafeDictionary::arrayWithCapacity(5)->count(), 0u);
    EXPECT_TRUE(as<QNThreadSafeDictionary>(class_createInstance(QNThreadSafeDictionary::class_())));
    EXPECT_TRUE(plain->isEqual(QNThreadSafeDictionary::initWithObjects(values, keys, 2)));
    EXPECT_THROW(QNThreadSafeDictionary::initWithObjects(values, keys, NSUInteger{1} << 62), NSException);
    EXPECT_TRUE(
        plain->isEqual(QNThreadSafeDictionary::initWithObjects(plain->allValues(), plain->allKeys())));
    const auto shared = QNThreadSafeDictionary::initWithDictionary(plain);
    const auto copied = QNThreadSafeDictionary::initWithDictionary(plain, true);
    as<NSMutableString>(values[0])->appendString(word(24));
    EXPECT_EQ(text(shared->objectForKey(keys[0])) + text(copied->objectForKey(keys[0])), "xyx");
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
    const auto refuseOrder = [](const id &, const id &) -> NSComparisonResult {
        throw NSException("Mine", "no");
    };
    EXPECT_EQ(raised([&] { array->objectAtIndex(7); }), NSRangeException);
    array->addObjectsFromArray(arrayOf({word(1), word(0)}));
    EXPECT_EQ(raised([&] { array->indexOfObjectPassingTest(refuse); }), "Mine");
    EXPECT_EQ(raised([&] { array->sortUsingComparator(refuseOrder); }), "Mine");
    EXPECT_EQ(raised([&] {
                  qn::insertObjects(array, array->subarrayWithRange({0, 1}), 9);
              }),
              NSRangeException);
    EXPECT_EQ(array->count(), 2u);
    dictionary->setObject(word(0), word(0));
    EXPECT_EQ(raised([&] { dictionary->setObject(nullptr, word(0)); }), NSInvalidArgumentException);
    EXPECT_EQ(raised([&] { dictionary->keysOfEntriesPassingTest(refuse); }), "Mine");
    EXPECT_EQ(dictionary->count(), 1u);
    const auto refusing = [&] {
        return QNThreadSafeArray::initWithArray(NSArray::arrayWithObjects({make<TellingElement>(refuse)}));
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
    const auto array = make<CountingArray>();
    const auto dictionary = make<CountingDictionary>();
    const auto list = arrayOf({word(0), word(1), word(2)});
    const std::function<void()> extensions[] = {
        [&] { qn::prependObjects(array, list); },
        [&] { qn::insertObjects(array, list, 1); },
        [&] { qn::randomObject(array); },
        [&] { qn::objectOrNilAtIndex(array, 1); },
        [&] { qn::reverse(array); },
        [&] { qn::shuffle(array); },
        [&] { qn::popFirstObject(array); },
        [&] { qn::popLastObject(array); },
        [&] { qn::removeFirstObject(array); },
        [&] { qn::jsonStringEncoded(array); },
        [&] { qn::jsonPrettyStringEncoded(array); },
        [&] { qn::entriesForKeys(dictionary, list); },
        [&] { qn::popObjectForKey(dictionary, word(0)); },
        [&] { qn::popEntriesForKeys(dictionary, list); },
        [&] { qn::jsonStringEncoded(dictionary); },
        [&] { qn::jsonPrettyStringEncoded(dictionary); },
    };
    for (std::size_t i = 0; i < std::size(extensions); ++i) {
        dictionary->setDictionary(NSDictionary::dictionaryWithObjects(list, list));
        array->calls = dictionary->calls = 0;
        extensions[i]();
        EXPECT_EQ(array->calls + dictionary->calls, 1) << "extension " << i;
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
            EXPECT_GT(as<NSArray>(array->copy())->count(), static_cast<NSUInteger>(i));
            EXPECT_TRUE(qn::jsonStringEncoded(array));
            static_cast<void>(snapshot->isEqual(array)); // whatever it is by now
            const auto outcome = raised([&] {
                for (const id &object : array)
                    EXPECT_TRUE(object);
            });
            EXPECT_TRUE(outcome.empty() || outcome == NSGenericException) << outcome;

            dictionary->setObject(mine, mine);
            dictionary->setObject(mine, word(static_cast<std::size_t>(i)));
            EXPECT_TRUE(qn::entriesForKeys(dictionary, dictionary->allKeys())->objectForKey(mine));
            if (i % 2)
                EXPECT_EQ(qn::popObjectForKey(dictionary, mine), mine);
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
    const auto list = make<TellingArray>([&] { seen += isLocked(array) || isLocked(dictionary); });
    const auto entries = make<TellingDictionary>([&] { seen += isLocked(dictionary); });
    list->addObject(word(0));
    const std::function<void()> twoLocks[] = {
        [&] { array->addObjectsFromArray(list); },
        [&] { array->setArray(list); },
        [&] { array->removeObjectsInArray(list); },
        [&] {
            array->replaceObjectsInRange({0, 0}, list);
        },
        [&] { array->insertObjects(list, NSIndexSet::indexSetWithIndex(0)); },
        [&] { array->replaceObjectsAtIndexes(NSIndexSet::indexSetWithIndex(0), list); },
        [&] { array->arrayByAddingObjectsFromArray(list); },
        [&] { array->firstObjectCommonWithArray(list); },
        [&] { qn::appendObjects(array, list); },
        [&] { qn::prependObjects(array, list); },
        [&] { qn::insertObjects(array, list, 0); },
        [&] { dictionary->addEntriesFromDictionary(entries); },
        [&] { dictionary->setDictionary(entries); },
        [&] { dictionary->objectsForKeys(list, list); },
        [&] { dictionary->removeObjectsForKeys(list); },
        [&] { qn::entriesForKeys(dictionary, list); },
        [&] { qn::popEntriesForKeys(dictionary, list); },
    };
    for (std::size_t i = 0; i < std::size(twoLocks); ++i) {
        seen = 0;
        twoLocks[i]();
        EXPECT_EQ(seen, 1) << "operation " << i;
    }
    seen = 0;
    static_cast<void>(array->copy()->isEqual(list));
    static_cast<void>(QNThreadSafeArray::initWithArray(list));
    static_cast<void>(NSMutableDictionary::dictionaryWithDictionary(entries));
    EXPECT_EQ(seen, 0);

    const auto one = QNThreadSafeArray::array(), two = QNThreadSafeArray::array();
    bool held = false;
    const auto element = [&] { return make<TellingElement>([&] { held = isLocked(one) && isLocked(two); }); };
    one->addObject(element());
    two->addObject(element());
    EXPECT_TRUE(one->isEqual(two) && held);
}

TEST(GuardedContainers, mayHoldThemselves) {
    const auto array = QNThreadSafeArray::array(), otherArray = QNThreadSafeArray::array();
    array->addObject(array);
    otherArray->addObject(QNThreadSafeArray::initWithArray(NSArray::arrayWithObjects({otherArray})));
    const auto dictionary = QNThreadSafeDictionary::array(),
               otherDictionary = QNThreadSafeDictionary::array();
    dictionary->setObject(NSArray::arrayWithObjects({dictionary}), word(0));
    otherDictionary->setObject(NSArray::arrayWithObjects({otherDictionary}), word(0));
    const std::string innerArray = text(array->NSObject::description());
    const std::string innerDictionary = text(dictionary->NSObject::description());
    EXPECT_TRUE(comesToItsEnd([=] {
        for (const id &itself : {id(array), id(dictionary)}) {
            EXPECT_EQ(NSJSONSerialization::dataWithJSONObject(itself, NSJSONWritingOptions::None, nullptr),
                      nullptr);
            EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(itself));
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
        EXPECT_FALSE(qn::plistData(array) || qn::plistString(dictionary));
        EXPECT_FALSE(qn::jsonStringEncoded(array) || qn::jsonPrettyStringEncoded(array));
        EXPECT_FALSE(qn::jsonString(dictionary) || qn::jsonPrettyStringEncoded(dictionary));
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
