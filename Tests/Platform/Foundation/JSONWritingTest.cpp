// JSON as it is written, and what is written read back.
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSJSONSerialization.h"
#include "Tests/Platform/Foundation/RandomObjects.h"
#include "Tests/Platform/Foundation/Text.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

using Write = NSJSONWritingOptions;
constexpr auto fragments = Write::FragmentsAllowed;

id read(std::string_view json, NSJSONReadingOptions options = NSJSONReadingOptions::AllowFragments) {
    return NSJSONSerialization::JSONObjectWithData(NSData::dataWithBytes(json.data(), json.size()), options,
                                                   nullptr);
}

/// The text, or "!" and the debug description of the refusal.
std::string written(const id &object, Write options = Write::None) {
    Ref<NSError> error;
    const auto data = NSJSONSerialization::dataWithJSONObject(object, options, &error);
    EXPECT_EQ(data == nullptr, error != nullptr);
    EXPECT_EQ(NSJSONSerialization::dataWithJSONObject(object, options, nullptr) == nullptr, data == nullptr);
    if (data)
        return {data->span().begin(), data->span().end()};
    EXPECT_EQ(error->code(), 3852);
    EXPECT_EQ(text(error->domain()), "NSCocoaErrorDomain");
    return "!" + text(error->userInfo()->objectForKey(NSDebugDescriptionErrorKey()));
}

id nested(std::size_t levels) {
    id inner = NSArray::array();
    for (std::size_t i = 1; i < levels; ++i)
        inner = i % 2 ? id(NSDictionary::dictionaryWithEntries({{u"k"_ns, inner}}))
                      : id(NSArray::arrayWithObjects({inner}));
    return inner;
}

} // namespace

TEST(JSONWriting, hasTheseForms) {
    const id object = NSDictionary::dictionaryWithEntries(
        {{u"b/c"_ns,
          NSArray::arrayWithObjects({NSNumber::numberWithInt(1), NSNull::null(), NSArray::array()})},
         {u"B"_ns, NSDictionary::dictionary()},
         {u"a"_ns, NSDictionary::dictionaryWithEntries({{u"x"_ns, NSNumber::numberWithBool(true)}})}});
    EXPECT_EQ(written(object), R"({"b\/c":[1,null,[]],"B":{},"a":{"x":true}})");
    EXPECT_EQ(written(object, Write::SortedKeys | Write::WithoutEscapingSlashes),
              R"({"B":{},"a":{"x":true},"b/c":[1,null,[]]})");
    EXPECT_EQ(written(object, Write::PrettyPrinted), R"({
  "b\/c" : [
    1,
    null,
    [

    ]
  ],
  "B" : {

  },
  "a" : {
    "x" : true
  }
})");
    EXPECT_EQ(written(NSArray::array(), Write::PrettyPrinted), "[\n\n]");
    EXPECT_EQ(written(NSDictionary::dictionary(), Write::PrettyPrinted), "{\n\n}");
}

TEST(JSONWriting, writesScalars) {
    const std::pair<id, std::string> table[] = {
        {u"\"\\/\b\f\n\r\t\u0001\u001f\u007f é激😀\u2028"_ns,
         "\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f\x7F é激😀\u2028\""},
        {make<NSString>(std::u16string{u'a', 0}), R"("a\u0000")"},
        {NSNumber::numberWithBool(false), "false"},
        {NSNumber::numberWithChar(1), "1"},
        {NSNumber::numberWithLongLong(INT64_MIN), "-9223372036854775808"},
        {NSNumber::numberWithUnsignedLongLong(UINT64_MAX), "18446744073709551615"},
        {NSNumber::numberWithDouble(0.1), "0.1"},
        {NSNumber::numberWithDouble(100), "100"},
        {NSNumber::numberWithDouble(1e300), "1e+300"},
        {NSNumber::numberWithDouble(5e-324), "5e-324"},
        {NSNumber::numberWithFloat(0.1f), "0.10000000149011612"},
        {NSNull::null(), "null"},
    };
    for (const auto &[object, expected] : table) {
        EXPECT_EQ(written(object, fragments), expected);
        EXPECT_THAT(written(object), HasSubstr("top-level"));
        EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(object));
    }
}

TEST(JSONWriting, refusesWhatJSONCannotHold) {
    const auto loneSurrogate = make<NSString>(std::u16string{u'a', 0xD800});
    const auto in = [](const id &value) { return NSArray::arrayWithObjects({value}); };
    const auto under = [](const id &key) { return NSDictionary::dictionaryWithEntries({{key, u"v"_ns}}); };
    const std::pair<id, std::string> table[] = {
        {in(NSNumber::numberWithDouble(NAN)), "finite"},
        {in(NSNumber::numberWithDouble(-INFINITY)), "finite"},
        {in(NSNumber::numberWithFloat(INFINITY)), "finite"},
        {in(NSDate::distantPast()), "type"},
        {in(NSData::data()), "type"},
        {under(NSNumber::numberWithInt(1)), "key"},
        {in(under(NSNull::null())), "key"},
        {nested(513), "nested"},
    };
    for (const auto &[object, reason] : table) {
        EXPECT_THAT(written(object), testing::AllOf(testing::StartsWith("!"), HasSubstr(reason)));
        EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(object)) << reason;
    }
    for (const id &object : {id(in(loneSurrogate)), id(under(loneSurrogate))}) {
        EXPECT_THAT(written(object), HasSubstr("surrogate"));
        EXPECT_TRUE(NSJSONSerialization::isValidJSONObject(object)) << "only writing finds out";
    }
    EXPECT_THAT(written(nullptr, fragments), HasSubstr("type"));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(nullptr));
}

TEST(JSONWriting, nestsToItsLimitAndSurvivesCycles) {
    EXPECT_TRUE(read(written(nested(512)))->isEqual(nested(512)));
    EXPECT_TRUE(read(written(nested(512), Write::PrettyPrinted))->isEqual(nested(512)));
    const auto array = NSMutableArray::array();
    const auto dictionary = NSMutableDictionary::dictionary();
    for (int i = 0; i < 3; ++i) // more than one way round
        array->addObject(dictionary);
    dictionary->setObject(array, u"k"_ns);
    EXPECT_THAT(written(array), HasSubstr("nested"));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(dictionary));
    array->removeAllObjects();
}

TEST(JSONWriting, isReadBackEqual) {
    constexpr unsigned seed = 20;
    SCOPED_TRACE(seed);
    RandomObjects objects(seed, RandomObjects::Kind::JSON);
    for (int round = 0; round < 2000; ++round) {
        const id object = objects.container();
        const auto options = static_cast<Write>(objects.below(16));
        const std::string json = written(object, options);
        const id again = read(json);
        ASSERT_TRUE(again && again->isEqual(object)) << json;
        EXPECT_EQ(written(again, options | Write::SortedKeys), written(object, options | Write::SortedKeys));
    }
}
