// JSON as it is read and as it is written.
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/System/NSError.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/PlainLocale.h"
#include "Tests/Support/RandomObjects.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TextTable.h"

#include <boost/json.hpp>

using namespace std::string_literals;
using testing::EndsWith;

namespace {

using Options = NSJSONReadingOptions;
using Write = NSJSONWritingOptions;
constexpr auto fragments = Write::FragmentsAllowed;

id read(std::string_view json, Options options = Options::AllowFragments, Ref<NSError> *error = nullptr) {
    return NSJSONSerialization::JSONObjectWithData(dataOf(json), options, error);
}

/// The code and the debug description of an error that there is exactly without a result; empty without.
std::string told(const Ref<NSError> &error, bool hasResult) {
    EXPECT_EQ(error == nullptr, hasResult);
    if (!error)
        return "";
    EXPECT_EQ(text(error->domain()), "NSCocoaErrorDomain");
    return std::to_string(error->code()) + " " +
           text(error->userInfo()->objectForKey(NSDebugDescriptionErrorKey()));
}

/// What is told when the text is refused; empty when it is read.
std::string refusal(std::string_view json, Options options = Options::None) {
    Ref<NSError> error;
    const id result = read(json, options, &error);
    return told(error, result != nullptr);
}

/// The text, or what is told when it is refused.
std::string written(const id &object, Write options = Write::None) {
    Ref<NSError> error;
    const auto data = NSJSONSerialization::dataWithJSONObject(object, options, &error);
    EXPECT_EQ(NSJSONSerialization::dataWithJSONObject(object, options, nullptr) == nullptr, data == nullptr);
    const std::string reason = told(error, data != nullptr);
    return data ? contents(data) : reason;
}

/// Compares what is read, or where it is refused, with what the parser makes of it in one piece. Whether it
/// is read.
bool isReadAsByTheParser(const std::string &json) {
    boost::json::parse_options options;
    options.allow_invalid_utf8 = true;
    boost::json::parser parser({}, options);
    boost::json::error_code error;
    const std::size_t used = parser.write_some(json, error);
    const std::string reason = refusal(json, Options::AllowFragments);
    if (reason.find("UTF-8") != reason.npos || reason.find("too large") != reason.npos)
        return false; // our own to judge
    const bool isRead = !error && used == json.size();
    EXPECT_EQ(reason.empty(), isRead) << json << error.message();
    if (!isRead) {
        EXPECT_THAT(reason, EndsWith(" Around character " + std::to_string(used) + ".")) << json;
        return false;
    }
    const std::string plain(boost::json::serialize(parser.release())); // with the fewest escapes
    const auto shown = [](const std::string &text) {
        return written(read(text), Write::WithoutEscapingSlashes | fragments);
    };
    const bool mayHoldDoubles = plain.find('E') != plain.npos; // not always the nearest
    EXPECT_TRUE(mayHoldDoubles || shown(json) == shown(plain)) << json;
    return true;
}

} // namespace

TEST(JSON, isReadOrRefusedWithAReason) {
    for (const auto &[json, expected] : rowsOf(ZK_TABLES "/Serialization/JSON/JSON.txt")) {
        const std::string reason = refusal(json, Options::AllowFragments);
        EXPECT_EQ(reason.empty() ? typed(read(json)) : reason, expected) << json;
    }
    EXPECT_EQ(refusal("\xEF\xBB\xBF[]"), "");
    EXPECT_EQ(refusal("\xEF\xBB\xBF["), "3840 Incomplete JSON. Around character 4.");
    EXPECT_EQ(refusal("[\"\xC0\x80\"]"), "3840 Invalid UTF-8 in string. Around character 4.");
    EXPECT_EQ(read("[1,]"), nullptr) << "nobody asked for the error";
    EXPECT_EQ(NSJSONSerialization::JSONObjectWithData(nullptr, Options::None, nullptr), nullptr);
    for (const char *json : {"1", "\"text\"", "null", " true "}) {
        EXPECT_THAT(refusal(json), HasSubstr("fragments")) << json;
        EXPECT_EQ(refusal(json, Options::AllowFragments), "") << json;
    }
    for (const Options options : {Options::None, Options::MutableContainers}) {
        const bool wanted = options == Options::MutableContainers;
        const auto root = as<NSDictionary>(read(R"({"z":[{"x":1}],"y":2,"a":3})", options));
        const auto list = as<NSArray>(root->objectForKey(u"z"_ns));
        EXPECT_EQ(as<NSMutableDictionary>(root) != nullptr, wanted);
        EXPECT_EQ(as<NSMutableArray>(list) != nullptr, wanted);
        EXPECT_EQ(as<NSMutableDictionary>(list->firstObject()) != nullptr, wanted);
        EXPECT_EQ(joined(root->allKeys()), "z y a") << "in the text's order";
    }
}

// Near every edge: of the largest double, of the smallest, between two of them, of 64 bits, of exponents.
TEST(JSON, readsNumbersToTheNearestDouble) {
    RandomObjects random(5324, RandomObjects::Kind::JSON);
    const auto digits = [&](std::size_t count) {
        std::string made;
        while (made.size() < count)
            made += static_cast<char>('0' + random.below(10));
        return made;
    };
    const auto whole = [&](std::size_t count) { return std::to_string(1 + random.below(9)) + digits(count); };
    std::size_t refused = 0, vanished = 0;
    for (int round = 0; round < 60000; ++round) {
        const std::string forms[] = {
            "1.797693134862" + digits(random.below(12)) + "e30" + std::to_string(7 + random.below(3)),
            whole(0) + "." + digits(1 + random.below(20)) + "e-3" + digits(2),
            "0." + std::string(random.below(400), '0') + whole(random.below(30)) + "e+" + digits(3),
            whole(random.below(800)) + "E-" + digits(3),
            std::to_string((1ull << 53) + random.below(8)) + "." + repeated("0", random.below(30)) +
                digits(1),
            whole(17 + random.below(3)),
            whole(0) + "." + digits(1 + random.below(20)) + (random.below(2) ? "e-" : "e") +
                digits(1 + random.below(12)),
        };
        const std::string number = (random.below(2) ? "-" : "") + forms[random.below(std::size(forms))];
        const double nearest = plainDouble(number);
        const id made = read(number);
        ASSERT_EQ(made == nullptr, std::isinf(nearest)) << number;
        ASSERT_TRUE(!made || as<NSNumber>(made)->doubleValue() == nearest) << number;
        ASSERT_TRUE(!made || nearest != 0 || text(made) == (std::signbit(nearest) ? "-0" : "0")) << number;
        refused += made == nullptr;
        vanished += nearest == 0;
    }
    EXPECT_GT(std::min(refused, vanished), 1000u) << "both ends were reached";
}

// Long texts with escapes come from our own hands, the others from the parser's: it alone tells what is
// right.
TEST(JSON, readsWhatTheParserReads) {
    RandomObjects random(1207, RandomObjects::Kind::JSON);
    const std::string_view escapes[] = {"\\n",     "\\\"",           "\\\\",    "\\/",
                                        "\\u00e9", "\\uD83D\\ude00", "\\u0000", "\\u20AC"};
    const auto randomText = [&] {
        std::string made = "\"";
        for (auto parts = random.below(6); parts > 0; --parts) {
            made +=
                std::string(random.below(random.oneIn(4) ? 70 : 6), random.of(std::string_view("abc,:{[ ")));
            if (random.oneIn(3))
                made += random.of(escapes);
        }
        return made + "\"";
    };
    const std::string usual =
        R"({"printers":[{"model":"L200","pages":12345,"level":0.5,"on":true,"x":null},"Gr\u00fcn 😀","\ud83d\ude00",-1e3]})";
    std::size_t accepted = 0;
    constexpr std::size_t rounds = 20000;
    for (std::size_t round = 0; round < rounds && !HasFailure(); ++round) {
        std::string json = "[{" + randomText() + " : " + randomText() + "}";
        for (auto more = random.below(6); more > 0; --more)
            json += "," + randomText();
        json = round % 2 ? json + "]" : usual;
        if (round % 4 < 3)
            json = random.mutated(json, "[]{}:,\"\\u0123e8EdE+-.dtn\n\t x\x1F\x80\xC3\xED\xFF");
        accepted += isReadAsByTheParser(json);
    }
    EXPECT_GT(std::min(accepted, rounds - accepted), rounds / 5) << "both ends were reached";
}

TEST(JSON, nestsToItsLimitAndNoFurther) {
    const auto arrays = [](std::size_t levels) { return repeated("[", levels) + repeated("]", levels); };
    const auto objects = [](std::size_t levels) {
        return repeated("{\"k\":", levels) + "1" + repeated("}", levels);
    };
    for (const std::string &deepest : {arrays(512), objects(512)}) {
        const id object = read(deepest);
        EXPECT_EQ(written(object), deepest);
        EXPECT_TRUE(read(written(object, Write::PrettyPrinted))->isEqual(object));
        EXPECT_THAT(written(arrayOf({object})), HasSubstr("nested"));
        EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(arrayOf({object})));
    }
    EXPECT_EQ(refusal("[" + arrays(511) + "," + arrays(511) + "]"), "") << "depth, not count";
    for (const std::size_t levels : {513u, 100000u}) {
        EXPECT_THAT(refusal(arrays(levels)), HasSubstr("Too many nested"));
        EXPECT_THAT(refusal(objects(levels)), HasSubstr("Too many nested"));
    }
    EXPECT_THAT(refusal(repeated("[", 1000000)), HasSubstr("Too many nested"));
    const auto array = NSMutableArray::array();
    const auto dictionary = NSMutableDictionary::dictionary();
    for (int i = 0; i < 3; ++i) // more than one way round
        array->addObject(dictionary);
    dictionary->setObject(array, u"k"_ns);
    EXPECT_THAT(written(array), HasSubstr("nested"));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(dictionary));
    array->removeAllObjects();
}

TEST(JSONWriting, hasTheseForms) {
    const std::string dense = R"({"b\/c":[1,null,[]],"B":{},"a":{"x":true}})";
    const id object = read(dense);
    EXPECT_EQ(written(object), dense);
    EXPECT_EQ(written(object, Write::SortedKeys | Write::WithoutEscapingSlashes),
              R"({"B":{},"a":{"x":true},"b/c":[1,null,[]]})");
    EXPECT_EQ(written(object, Write::PrettyPrinted),
              contents(NSData::dataWithContentsOfFile(ZK_TABLES "/Serialization/JSON/Pretty.json")));
}

TEST(JSONWriting, writesScalars) {
    const std::pair<id, std::string> table[] = {
        {u"\"\\/\b\f\n\r\t\u0001\u001f\u007f é激😀\u2028"_ns,
         "\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f\x7F é激😀\u2028\""},
        {make<NSString>(std::u16string{u'a', 0}), R"("a\u0000")"},
        {number(false), "false"},
        {NSNumber::numberWithChar(1), "1"},
        {number(INT64_MIN), "-9223372036854775808"},
        {number(UINT64_MAX), "18446744073709551615"},
        {number(0.1), "0.1"},
        {number(100.0), "100"},
        {number(1e300), "1e+300"},
        {number(5e-324), "5e-324"},
        {number(0.1f), "0.10000000149011612"},
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
    const auto in = [](const id &value) -> id { return arrayOf({value}); };
    const auto under = [](const id &key) -> id { return dictionaryOf({{key, u"v"_ns}}); };
    const std::pair<id, std::string> table[] = {
        {in(number(double{NAN})), "3852 Invalid number: not finite."},
        {in(number(-INFINITY)), "finite"},
        {in(NSDate::distantPast()), "type"},
        {under(number(1)), "key"},
        {in(under(NSNull::null())), "key"},
        {in(loneSurrogate), "surrogate"},
        {under(loneSurrogate), "surrogate"},
        {nullptr, "type"},
    };
    for (const auto &[object, reason] : table) {
        EXPECT_THAT(written(object, fragments), testing::AllOf(StartsWith("3852 "), HasSubstr(reason)));
        const bool onlyWritingFindsOut = reason == "surrogate";
        EXPECT_EQ(NSJSONSerialization::isValidJSONObject(object), onlyWritingFindsOut) << reason;
    }
}

TEST(JSONWriting, isReadBackEqual) {
    RandomObjects objects(20, RandomObjects::Kind::JSON);
    for (int round = 0; round < 2000; ++round) {
        const id object = objects.container();
        const auto options = static_cast<Write>(objects.below(16));
        const std::string json = written(object, options);
        const id again = read(json);
        ASSERT_TRUE(again && again->isEqual(object)) << json;
        EXPECT_EQ(written(again, options | Write::SortedKeys), written(object, options | Write::SortedKeys));
    }
}

// Keys are remembered while a text is read; a thousand of them crowd each other out, long ones of one length
// by their ends alone.
TEST(JSONWriting, isReadBackWithManyKeys) {
    const auto records = NSMutableArray::array();
    for (int i = 0; i < 2000; ++i) {
        if (i % 1000 == 0)
            records->addObject(NSMutableDictionary::dictionary());
        as<NSMutableDictionary>(records->lastObject())
            ->setObject(number(i),
                        NSString::stringWithFormat(i % 2 ? "k%d" : "the ends are %d the same", i % 1000));
    }
    EXPECT_TRUE(records->isEqual(read(written(records))));
}
