// Hashes and tables before keys that somebody chose.
#include "Platform/Foundation/Collections/ContentsHash.h"
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/RandomObjects.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TextTable.h"

#include <iomanip>
#include <iostream>
#include <numeric>
#include <sstream>

namespace {

/// The hash of one object of every kind that comes from texts.
std::vector<NSUInteger> hashes() {
    const std::uint16_t value = 7;
    const auto decimal = NSDecimalNumber::decimalNumberWithString(u"0.1"_ns);
    std::vector<NSUInteger> all;
    for (const id &object :
         {id(u"text"_ns), id(make<NSMutableString>(u"other text")), id(dataOf("data")), id(number(1)),
          id(number(0.1)), id(decimal), id(NSDate::dateWithTimeIntervalSinceReferenceDate(1.5)),
          id(NSValue::valueWithBytes(&value, "S")), id(NSIndexSet::indexSetWithIndex(3)),
          id(NSURL::URLWithString(u"http://zelkor.com"_ns))})
        all.push_back(object->hash());
    return all;
}

bool allDiffer(const std::string &theirs, const std::vector<NSUInteger> &ours) {
    std::istringstream lines(theirs);
    return std::ranges::all_of(ours, [&](NSUInteger hash) {
        NSUInteger other = hash;
        return lines >> other && other != hash;
    });
}

// Keys that count how often they are compared.

int comparisons = 0;

template <class Base>
class Counted final : public Base {
public:
    using Base::Base;
    bool isEqual(const id &other) const override { return ++comparisons, Base::isEqual(other); }
    id copy() const override { return this->self(); }
};
using CountedText = Counted<NSString>;
using CountedNumber = Counted<NSNumber>;

id counted(std::size_t value) {
    return make<CountedNumber>('Q', std::uint64_t{value});
}

/// An equal object, mutable throughout, whose dictionaries were filled the other way round.
id turnedRound(const id &object) {
    if (const auto array = as<NSArray>(object)) {
        const auto made = NSMutableArray::array();
        for (const id &element : array)
            made->addObject(turnedRound(element));
        return made;
    }
    const auto dictionary = as<NSDictionary>(object);
    if (!dictionary)
        return object;
    const auto made = NSMutableDictionary::dictionary();
    dictionary->enumerateKeysAndObjectsWithOptions(
        NSEnumerationReverse,
        [&](const id &key, const id &value, bool &) { made->setObject(turnedRound(value), key); });
    return made;
}

id nested(std::size_t value, int levels) {
    id made = number(value);
    while (levels-- > 0)
        made = arrayOf({made});
    return made;
}

} // namespace

TEST(Hashing, isThatOfAnotherLibrary) {
    for (const auto &[given, expected] : rowsOf(ZK_TABLES "/Collections/SipHash.txt")) {
        HashKey key;
        std::size_t size = 0;
        std::istringstream(given) >> std::hex >> key.first >> key.second >> std::dec >> size;
        std::string bytes(size, '\0');
        std::iota(bytes.begin(), bytes.end(), '\0');
        std::ostringstream hash;
        hash << std::hex << std::setw(16) << std::setfill('0') << sipHash(key, bytes.data(), size);
        EXPECT_EQ(hash.str(), expected) << given;
    }
}

TEST(Hashing, isAnotherInEveryProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // starts the program anew
    const auto tellHashes = [] {
        for (const NSUInteger hash : hashes())
            std::cerr << hash << "\n";
        std::_Exit(0);
    };
    const auto differ = [](const std::string &theirs) { return allDiffer(theirs, hashes()); };
    EXPECT_EXIT(tellHashes(), testing::ExitedWithCode(0), testing::Truly(differ));
}

TEST(Hashing, chosenKeysCostNoMoreThanOthers) {
    constexpr std::size_t count = 1000;
    ASSERT_EQ(number((1ull << 63) + count)->doubleValue(), 0x1p63);
    using Key = id (*)(std::size_t);
    const std::pair<const char *, Key> families[] = {
        {"texts",
         [](auto i) -> id { return make<CountedText>(NSString::stringWithFormat("key %lu", i)->units()); }},
        {"numbers of one double", [](auto i) { return counted((1ull << 63) + i); }},
        {"arrays", [](auto i) -> id { return arrayOf({counted(i)}); }},
        {"nested arrays",
         [](auto i) -> id { return arrayOf({NSMutableArray::arrayWithObjects({counted(i)})}); }},
        {"dictionaries",
         [](auto i) -> id {
             return NSDictionary::dictionaryWithObjects(arrayOf({counted(i)}), arrayOf({u"k"_ns}));
         }},
        {"sets", [](auto i) -> id { return setOf({counted(i)}); }},
    };
    for (const auto &[name, keyOf] : families) {
        SCOPED_TRACE(name);
        const auto set = NSMutableSet::set();
        const auto dictionary = NSMutableDictionary::dictionary();
        comparisons = 0;
        for (std::size_t i = 0; i < count; ++i) {
            set->addObject(keyOf(i));
            dictionary->setObject(number(i), keyOf(i));
        }
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_TRUE(set->containsObject(keyOf(i)) &&
                        dictionary->objectForKey(keyOf(i))->isEqual(number(i)));
        EXPECT_EQ(set->count() + dictionary->count(), 2 * count);
        EXPECT_LT(comparisons, 4 * static_cast<int>(count))
            << "one to find each, and a few until it is noticed";
    }
}

TEST(Hashing, ofContentsAgreesForEqualOnesInAnyOrder) {
    RandomObjects random(23, RandomObjects::Kind::JSON);
    std::vector<id> objects;
    std::set<NSUInteger> hashes;
    for (int i = 0; i < 300; ++i) {
        const id object = random.container(), twin = turnedRound(object);
        ASSERT_TRUE(object->isEqual(twin));
        ASSERT_EQ(contentsHash(object), contentsHash(twin));
        if (hashes.insert(contentsHash(object)).second)
            objects.push_back(object);
        else
            EXPECT_TRUE(
                std::ranges::any_of(objects, [&](const id &other) { return other->isEqual(object); }));
    }
    EXPECT_GT(hashes.size(), 150u);
    // What is too deep, or too much, to look through is found all the same.
    const auto set = NSMutableSet::set();
    for (std::size_t i = 0; i < 40; ++i)
        set->addObject(nested(i, 600));
    for (std::size_t i = 0; i < 50; ++i)
        EXPECT_EQ(set->containsObject(nested(i, 600)), i < 40);
    const auto wide = NSMutableArray::array();
    for (std::size_t i = 0; i < 300000; ++i)
        wide->addObject(NSNull::null());
    EXPECT_EQ(contentsHash(wide), wide->hash());
    EXPECT_NE(contentsHash(nested(1, 500)), contentsHash(nested(2, 500)));
}
