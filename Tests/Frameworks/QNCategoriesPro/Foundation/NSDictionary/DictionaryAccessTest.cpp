// Typed access to dictionaries, and the text of collections.
#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+QNJSON.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+QNCommon.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Tests/Support/Objects.h"

#include <cmath>
#include <gtest/gtest.h>
#include <sstream>

namespace {

const auto key = u"k"_ns;

Ref<NSDictionary> holding(const id &value) {
    return value ? dictionaryOf({{key, value}}) : NSDictionary::dictionary();
}

/// What every member of the family answers, aliases compared.
std::string answers(const Ref<NSDictionary> &dictionary, const id &name) {
    std::ostringstream all;
    const auto write = [&](const auto &first, const auto &...aliases) {
        const auto answer = first(dictionary, name, 7);
        all << (all.view().empty() ? "" : " ") << +answer;
        EXPECT_TRUE(((aliases(dictionary, name, 7) == answer) && ...));
    };
    write(qn::boolValueForKey);
    write(qn::charValueForKey);
    write(qn::unsignedCharValueForKey);
    write(qn::shortValueForKey);
    write(qn::unsignedShortValueForKey);
    write(qn::intValueForKey);
    write(qn::unsignedIntValueForKey);
    write(qn::longValueForKey, qn::longLongValueForKey, qn::integerValueForKey);
    write(qn::unsignedLongValueForKey, qn::unsignedLongLongValueForKey, qn::unsignedIntegerValueForKey);
    write(qn::floatValueForKey);
    write(qn::doubleValueForKey);
    return all.str();
}

// The table shows every type but this one.
static_assert(std::is_same_v<decltype(qn::floatValueForKey(nullptr, nullptr, 0)), float>);

} // namespace

TEST(TypedAccess, answersByThisTable) {
    const std::string defaults = "1 7 7 7 7 7 7 7 7 7 7", zeros = "0 0 0 0 0 0 0 0 0 0 0",
                      ones = "1 1 1 1 1 1 1 1 1 1 1";
    const std::string highest = "1 -1 255 -1 65535 -1 4294967295 -1 18446744073709551615 ";
    // value, then: bool, char and short and int and long with the unsigned of each, float, double
    const std::pair<id, std::string> table[] = {
        {nullptr, defaults},
        {NSNull::null(), defaults},
        {arrayOf({number(1)}), defaults},
        {number(true), ones},
        {number(300), "1 44 44 300 300 300 300 300 300 300 300"},
        {number(70000.5), "1 112 112 4464 4464 70000 70000 70000 70000 70000.5 70000.5"},
        {number(-1), highest + "-1 -1"},
        {number(UINT64_MAX), highest + "1.84467e+19 1.84467e+19"},
        {u"4.9"_ns, "1 4 4 4 4 4 4 4 4 4.9 4.9"},
        {u"nil"_ns, zeros}};
    for (const auto &[value, expected] : table)
        EXPECT_EQ(answers(holding(value), key), expected) << text(value);
    EXPECT_EQ(answers(holding(u"42"_ns), nullptr), defaults);
    EXPECT_EQ(answers(nullptr, key), zeros) << "a receiver of none";
}

TEST(TypedAccess, numbersFromNumbersAndTextsOnly) {
    EXPECT_FALSE(NSNumberFromID(nullptr) || NSNumberFromID(dataOf("1")));
    const auto half = number(0.5f);
    EXPECT_EQ(NSNumberFromID(half), half) << "the very number";
}

TEST(TypedAccess, numbersAndTexts) {
    const auto seven = number(7);
    const auto fallback = u"default"_ns;
    const std::tuple<id, std::string, std::string> table[] = {{nullptr, "i 7", "default"},
                                                              {NSNull::null(), "i 7", "default"},
                                                              {NSArray::array(), "i 7", "default"},
                                                              {u"null"_ns, "(none)", "null"},
                                                              {u""_ns, "q 0", ""},
                                                              {number(1.5), "d 1.5", "1.5"},
                                                              {number(true), "B 1", "1"}};
    for (const auto &[value, number, string] : table) {
        EXPECT_EQ(typed(qn::numberValueForKey(holding(value), key, seven)), number) << text(value);
        EXPECT_EQ(text(qn::stringValueForKey(holding(value), key, fallback)), string);
    }
    EXPECT_EQ(qn::numberValueForKey(holding(seven), nullptr, nullptr), nullptr);
    EXPECT_EQ(qn::numberValueForKey(nullptr, key, seven), nullptr);
    EXPECT_EQ(qn::stringValueForKey(holding(seven), nullptr, fallback), fallback);
    EXPECT_EQ(qn::stringValueForKey(nullptr, key, fallback), nullptr);
}

TEST(DictionaryParts, keysValuesAndEntries) {
    const auto dictionary =
        dictionaryOf({{u"b"_ns, u"1"_ns}, {u"C"_ns, NSNull::null()}, {u"a"_ns, u"3"_ns}, {u"B"_ns, u"4"_ns}});
    EXPECT_EQ(joined(qn::allKeysSorted(dictionary)), "a b B C");
    EXPECT_EQ(joined(qn::allValuesSortedByKeys(dictionary)), "3 1 4 <null>");
    EXPECT_TRUE(qn::containsObjectForKey(dictionary, u"C"_ns));
    EXPECT_FALSE(qn::containsObjectForKey(dictionary, u"c"_ns) ||
                 qn::containsObjectForKey(dictionary, nullptr) || qn::containsObjectForKey(nullptr, key));
    const auto entries = qn::entriesForKeys(dictionary, arrayOf({u"C"_ns, u"z"_ns, u"a"_ns, u"a"_ns}));
    EXPECT_EQ(joined(entries->allKeys()), "C a");
    EXPECT_EQ(qn::entriesForKeys(dictionary, nullptr)->count(), 0u);
    EXPECT_EQ(dictionary->count(), 4u);
    EXPECT_FALSE(qn::allKeysSorted(nullptr) || qn::allValuesSortedByKeys(nullptr) ||
                 qn::entriesForKeys(nullptr, NSArray::array()));
}

TEST(CollectionText, json) {
    const auto list = arrayOf({number(1), u"x/y"_ns});
    const auto dictionary = dictionaryOf({{u"b"_ns, list}, {u"a"_ns, NSNull::null()}});
    const std::string compact = R"({"b":[1,"x\/y"],"a":null})";
    EXPECT_EQ(text(qn::jsonString(dictionary)), compact);
    EXPECT_EQ(text(qn::jsonStringEncoded(dictionary)), compact);
    EXPECT_EQ(text(qn::jsonPrettyString(dictionary)),
              "{\n  \"a\" : null,\n  \"b\" : [\n    1,\n    \"x/y\"\n  ]\n}");
    EXPECT_EQ(text(qn::jsonPrettyStringEncoded(dictionary)),
              "{\n  \"b\" : [\n    1,\n    \"x\\/y\"\n  ],\n  \"a\" : null\n}");
    EXPECT_EQ(text(qn::jsonStringEncoded(list)), R"([1,"x\/y"])");
    EXPECT_EQ(text(qn::jsonPrettyStringEncoded(list)), "[\n  1,\n  \"x/y\"\n]");
    EXPECT_EQ(text(qn::jsonPrettyStringEncoded(arrayOf({dictionary}))),
              "[\n  {\n    \"a\" : null,\n    \"b\" : [\n      1,\n      \"x/y\"\n    ]\n  }\n]");
    for (const id &bad : {id(NSDate::distantPast()), id(NSNumber::numberWithDouble(NAN)),
                          id(make<NSString>(std::u16string{0xD800}))}) {
        const auto within = holding(bad);
        const auto beside = arrayOf({bad});
        EXPECT_FALSE(qn::jsonString(within) || qn::jsonPrettyString(within) ||
                     qn::jsonStringEncoded(within) || qn::jsonPrettyStringEncoded(within) ||
                     qn::jsonStringEncoded(beside) || qn::jsonPrettyStringEncoded(beside));
    }
    const Ref<NSDictionary> none;
    EXPECT_FALSE(qn::jsonString(none) || qn::jsonPrettyStringEncoded(none) ||
                 qn::jsonStringEncoded(Ref<NSArray>()));
}

TEST(CollectionText, propertyLists) {
    const auto list = arrayOf({number(1), u"ü"_ns});
    const auto dictionary = dictionaryOf({{key, list}});
    EXPECT_TRUE(text(qn::plistData(dictionary)).starts_with("<62706c69 73743030")) << "bplist00";
    EXPECT_TRUE(text(qn::plistString(dictionary)).starts_with("<?xml "));
    EXPECT_TRUE(dictionary->isEqual(qn::dictionaryWithPlistData(qn::plistData(dictionary))));
    EXPECT_TRUE(dictionary->isEqual(qn::dictionaryWithPlistString(qn::plistString(dictionary))));
    EXPECT_TRUE(list->isEqual(qn::arrayWithPlistData(qn::plistData(list))));
    EXPECT_TRUE(list->isEqual(qn::arrayWithPlistString(qn::plistString(list))));
    EXPECT_EQ(as<NSMutableDictionary>(qn::dictionaryWithPlistString(u"{}"_ns)), nullptr);
    const auto mutableOne = qn::dictionaryWithPlistString<NSMutableDictionary>(u"{k = (v);}"_ns);
    const auto inner = as<NSMutableArray>(mutableOne->objectForKey(key));
    EXPECT_TRUE(inner && as<NSMutableString>(inner->firstObject()));
    EXPECT_TRUE(qn::dictionaryWithPlistData<NSMutableDictionary>(qn::plistData(dictionary)));
    const auto mutableList = qn::arrayWithPlistData<NSMutableArray>(qn::plistData(list));
    EXPECT_TRUE(mutableList && as<NSMutableString>(mutableList->lastObject()));
    EXPECT_TRUE(qn::arrayWithPlistString<NSMutableArray>(u"()"_ns));

    EXPECT_FALSE(qn::dictionaryWithPlistData(qn::plistData(list)) || qn::arrayWithPlistString(u"{}"_ns) ||
                 qn::arrayWithPlistString<NSMutableArray>(u"{}"_ns) ||
                 qn::dictionaryWithPlistString(u"("_ns) || qn::dictionaryWithPlistData(nullptr) ||
                 qn::dictionaryWithPlistString(nullptr) ||
                 qn::arrayWithPlistString(make<NSString>(std::u16string{0xD800})));
    EXPECT_FALSE(qn::plistData(holding(NSNull::null())) || qn::plistString(holding(NSNull::null())) ||
                 qn::plistData(Ref<NSArray>()) || qn::plistString(Ref<NSDictionary>()));
}
