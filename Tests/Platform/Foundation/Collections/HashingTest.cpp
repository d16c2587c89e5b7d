// Hashes and tables before keys that somebody chose.
#include "Platform/Foundation/Collections/ContentsHash.h"
#include "Platform/Foundation/Collections/NSIndexSet.h"
#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/RandomObjects.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <set>
#include <sstream>

namespace {

std::uint64_t packagedSipHash(const HashKey &key, const std::vector<std::uint8_t> &bytes) {
    const std::unique_ptr<EVP_MAC, decltype(&EVP_MAC_free)> mac(EVP_MAC_fetch(nullptr, "SIPHASH", nullptr),
                                                                EVP_MAC_free);
    const std::unique_ptr<EVP_MAC_CTX, decltype(&EVP_MAC_CTX_free)> context(EVP_MAC_CTX_new(mac.get()),
                                                                            EVP_MAC_CTX_free);
    std::size_t size = 8;
    unsigned roundsAWord = 1, roundsAtTheEnd = 3;
    const OSSL_PARAM parameters[] = {OSSL_PARAM_construct_size_t(OSSL_MAC_PARAM_SIZE, &size),
                                     OSSL_PARAM_construct_uint(OSSL_MAC_PARAM_C_ROUNDS, &roundsAWord),
                                     OSSL_PARAM_construct_uint(OSSL_MAC_PARAM_D_ROUNDS, &roundsAtTheEnd),
                                     OSSL_PARAM_construct_end()};
    std::uint64_t hash = 0;
    EXPECT_TRUE(
        EVP_MAC_init(context.get(), reinterpret_cast<const unsigned char *>(&key), sizeof key, parameters) &&
        EVP_MAC_update(context.get(), bytes.data(), bytes.size()) &&
        EVP_MAC_final(context.get(), reinterpret_cast<unsigned char *>(&hash), &size, sizeof hash));
    return hash;
}

/// The hash of one object of every kind that comes from texts, a line each.
std::string hashes() {
    const std::uint16_t value = 7;
    const id objects[] = {u"text"_ns,
                          make<NSMutableString>(u"other text"),
                          NSData::dataWithBytes("data", 4),
                          number(1),
                          number(0.1),
                          NSDecimalNumber::decimalNumberWithString(u"0.1"_ns),
                          NSDate::dateWithTimeIntervalSinceReferenceDate(1.5),
                          NSValue::valueWithBytes(&value, "S"),
                          NSIndexSet::indexSetWithIndex(3),
                          NSURL::URLWithString(u"http://zelkor.com"_ns)};
    std::string lines;
    for (const id &object : objects)
        lines += std::to_string(object->hash()) + "\n";
    return lines;
}

bool everyLineDiffers(const std::string &some, const std::string &others) {
    std::istringstream one(some), two(others);
    bool differ = true;
    for (std::string a, b; std::getline(one, a);)
        differ = differ && std::getline(two, b) && a != b;
    return differ;
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

/// The standard library's hash takes eight bytes a step, in which a changed top bit goes through to the next
/// one. The second of two such changes undoes the first, so that each pair of steps may be written in two
/// ways.
std::u16string collidingText(std::size_t choices) {
    constexpr std::uint64_t factor = 0xc6a4a7935bd1e995, top = std::uint64_t{1} << 63;
    constexpr auto inverse = [] {
        std::uint64_t made = factor;
        for (int i = 0; i < 6; ++i)
            made *= 2 - factor * made;
        return made;
    }();
    const auto mixed = [](std::uint64_t word, std::uint64_t by) { return word ^= word >> 47, word * by; };
    std::u16string units;
    for (std::uint64_t step = 0; step < 20; ++step) {
        const bool changes = choices >> step / 2 & 1;
        const std::uint64_t goal = mixed((0x61006100610061 + step) * factor, factor) ^ (changes ? top : 0);
        const std::uint64_t word = mixed(goal * inverse, inverse);
        for (int unit = 0; unit < 4; ++unit)
            units += static_cast<char16_t>(word >> 16 * unit);
    }
    return units;
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

TEST(Hashing, isThatOfThePackagedFunction) {
    Random random(17);
    for (std::size_t size = 0; size < 200; ++size) {
        const HashKey key{random(), random()};
        std::vector<std::uint8_t> bytes(size);
        for (auto &byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        ASSERT_EQ(sipHash(key, bytes.data(), size), packagedSipHash(key, bytes)) << size;
    }
}

TEST(Hashing, isAnotherInEveryProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // starts the program anew
    EXPECT_EXIT(
        {
            std::cerr << hashes();
            std::_Exit(0);
        },
        testing::ExitedWithCode(0),
        testing::Truly([](const std::string &theirs) { return everyLineDiffers(theirs, hashes()); }));
}

TEST(Hashing, chosenKeysCostNoMoreThanOthers) {
    constexpr std::size_t count = 1000;
    ASSERT_EQ(std::hash<std::u16string>()(collidingText(5)), std::hash<std::u16string>()(collidingText(999)));
    ASSERT_EQ(number((1ull << 63) + count)->doubleValue(), 0x1p63);
    const std::pair<const char *, id (*)(std::size_t)> families[] = {
        {"any texts",
         [](std::size_t i) -> id {
             return make<CountedText>(NSString::stringWithFormat("key %lu", i)->units());
         }},
        {"texts", [](std::size_t i) -> id { return make<CountedText>(collidingText(i)); }},
        {"numbers of one double", [](std::size_t i) { return counted((1ull << 63) + i); }},
        {"arrays", [](std::size_t i) -> id { return arrayOf({counted(i)}); }},
        {"nested arrays",
         [](std::size_t i) -> id { return arrayOf({NSMutableArray::arrayWithObjects({counted(i)})}); }},
        {"dictionaries",
         [](std::size_t i) -> id {
             return dictionaryOf({{u"k"_ns, counted(i)}});
         }},
        {"sets", [](std::size_t i) -> id { return setOf({counted(i)}); }},
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
