// JSON as it is read and as it is written.
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/System/NSError.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/PlainLocale.h"
#include "Tests/Support/RandomObjects.h"

#include <boost/json.hpp>
#include <gmock/gmock.h>

using namespace std::string_literals;
using testing::HasSubstr;

namespace {

using Options = NSJSONReadingOptions;
using Write = NSJSONWritingOptions;
constexpr auto fragments = Write::FragmentsAllowed;

id read(std::string_view json, Options options = Options::AllowFragments, Ref<NSError> *error = nullptr) {
    return NSJSONSerialization::JSONObjectWithData(dataOf(json), options, error);
}

/// The debug description with which the text is refused; empty when it is read.
std::string refusal(std::string_view json, Options options = Options::None) {
    Ref<NSError> error;
    const id result = read(json, options, &error);
    EXPECT_EQ(result == nullptr, error != nullptr) << json;
    if (!error)
        return "";
    EXPECT_EQ(error->code(), 3840);
    return text(error->userInfo()->objectForKey(NSDebugDescriptionErrorKey()));
}

/// The text, or "!" and the debug description of the refusal.
std::string written(const id &object, Write options = Write::None) {
    Ref<NSError> error;
    const auto data = NSJSONSerialization::dataWithJSONObject(object, options, &error);
    EXPECT_EQ(data == nullptr, error != nullptr);
    EXPECT_EQ(NSJSONSerialization::dataWithJSONObject(object, options, nullptr) == nullptr, data == nullptr);
    if (data)
        return contents(data);
    EXPECT_EQ(error->code(), 3852);
    EXPECT_EQ(text(error->domain()), "NSCocoaErrorDomain");
    return "!" + text(error->userInfo()->objectForKey(NSDebugDescriptionErrorKey()));
}

} // namespace

TEST(JSON, readsValues) {
    const std::pair<std::string, std::string> table[] = {
        {" \t\r\nfalse ", "B 0"},
        {"null", "<null>"},
        {"-0", "q 0"},
        {"-0.0", "d -0"},
        {"4294967296", "q 4294967296"},
        {"9223372036854775807", "q 9223372036854775807"},
        {"-9223372036854775808", "q -9223372036854775808"},
        {"9223372036854775808", "Q 9223372036854775808"},
        {"18446744073709551615", "Q 18446744073709551615"},
        {"1.5", "d 1.5"},
        {"1E-2", "d 0.01"},
        {"18446744073709551616", "d 1.8446744073709552e+19"},
        {R"(["E+12345678901",0e12345678901,"e00000000001",1e00000000002,-1e-12345678901])",
         "(\n    \"E+12345678901\",\n    0,\n    e00000000001,\n    100,\n    \"-0\"\n)"},
        {R"("\"\\\/\b\f\n\r\t\u00fC")", "\"\\/\b\f\n\r\tü"},
        {R"("\ud83D\uDE00é😀a\u0000b")", "😀é😀a\0b"s},
        {"\xEF\xBB\xBF[]", "(\n)"},
        {R"({"b":2,"a":1,"b":3})", "{\n    a = 1;\n    b = 3;\n}"},
        {"[1 , [true,{}] ]", "(\n    1,\n    (\n        1,\n        {\n        }\n    )\n)"},
    };
    for (const auto &[json, expected] : table)
        EXPECT_EQ(typed(read(json)), expected) << json;
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

TEST(JSON, refusesControlCharactersAnywhere) {
    for (char control = 0; control < ' '; ++control)
        for (std::size_t before = 0; before < 40; ++before) {
            const std::string inside = std::string(before, 'x') + control + "a text that goes on";
            EXPECT_EQ(read("[\"" + inside + "\"]"), nullptr) << int{control};
            EXPECT_EQ(read("[\"\\n" + inside + "\"]"), nullptr) << int{control};
            EXPECT_EQ(read("{\"" + inside + "\":1}"), nullptr) << int{control};
            const bool isBlank = std::string_view("\t\n\r").find(control) != std::string_view::npos;
            EXPECT_EQ(read(std::string(before, ' ') + control + "1") != nullptr, isBlank) << int{control};
        }
}

// Long texts with escapes come from our own hands, the others from the parser's: it alone tells what is
// right.
TEST(JSON, readsTextsWithEscapesAsTheParserAlone) {
    constexpr unsigned seed = 1207;
    SCOPED_TRACE(seed);
    RandomObjects random(seed, RandomObjects::Kind::JSON);
    const std::string_view escapes[] = {"\\n",     "\\\"",           "\\\\",    "\\/",
                                        "\\u00e9", "\\uD83D\\ude00", "\\u0000", "\\u20AC"};
    const auto randomText = [&] {
        std::string made = "\"";
        for (auto parts = random.below(6); parts > 0; --parts) {
            made +=
                repeated(std::string(1, "abc,:{[ "[random.below(8)]), random.below(random.below(4) ? 6 : 70));
            if (random.below(3) == 0)
                made += escapes[random.below(std::size(escapes))];
        }
        return made + "\"";
    };
    std::size_t accepted = 0, refused = 0;
    for (int round = 0; round < 10000; ++round) {
        std::string json = "[{" + randomText() + " : " + randomText() + "}";
        for (auto more = random.below(6); more > 0; --more)
            json += "," + randomText();
        json += "]";
        if (random.below(2))
            json = random.mutated(json, "\"\\\"\\ud8{}[],:\n\t x\x1F\x80");
        boost::json::error_code error;
        const auto expected = boost::json::parse(json, error);
        const id made = read(json);
        ASSERT_EQ(made == nullptr, error.failed()) << json;
        ++(made ? accepted : refused);
        if (!made)
            continue;
        const std::string plain(boost::json::serialize(expected)); // with the fewest escapes
        ASSERT_EQ(written(made, Write::WithoutEscapingSlashes | fragments),
                  written(read(plain), Write::WithoutEscapingSlashes | fragments))
            << json;
        const auto *list = expected.if_array();
        for (std::size_t i = 0; list && i < list->size(); ++i) {
            if (const auto *each = (*list)[i].if_string()) {
                const std::string wanted(each->data(), each->size());
                ASSERT_EQ(text(as<NSArray>(made)->objectAtIndex(i)), wanted) << json;
            }
        }
    }
    EXPECT_GT(std::min(accepted, refused), 1000u) << "both ends were reached";
}

TEST(JSON, readsWhatItMust) {
    const std::string valid[] = {
        "[123e65]", "[0e+1]", "[0E1]", "[20e1]", "[-123]", "[1.7976931348623157e+308]", "[1e-999]",
        "[\"\\u0000\"]", "{\"\\u0000\":1}", "[\"\x7F\"]", "[\"\uFFFF\"]", "[\"\u2028\"]", "[\"a/*b*/c\"]",
        "[\"\\uDBFF\\uDFFF\"]", "[\"\\uFDD0\"]", "{\"\":0}", "{\"a\":1,\"a\":1}", "[[]   ]", "[\n1\r\n\t]",
        "[1,null,null,2]", "{\"a\":[]}", "[\"\U0010FFFF\"]", "\"\"", "0",
        // a reader may choose: a byte-order mark passes
        "\xEF\xBB\xBF{}"};
    for (const std::string &json : valid)
        EXPECT_NE(read(json), nullptr) << json;
}

TEST(JSON, refusesWithReasonAndOffset) {
    // Each with the earliest offset that may be named: the number of its row.
    const std::vector<std::string> table[] = {
        {"", "//c\n[]", "\xFE\xFF", "\0[]"s,
         // numbers
         "[1.0e+]", "[0e]", "[0x42]", "[tru]", "[-01]", "[2.e3]", "[1eE2]", "[1+2]", "[-Infinity]",
         // lists and entries
         "[1,,2]", "[1,,]", "[\"\"", "[\"\",]", "[\"a\" \"b\"]", "[3[4]]", "[a]", "[*]", "[,]", "{,}",
         "{\"a\":\"b\":\"c\"}", "{\"a\" \"b\"}", "{\"a\":\"b\",,\"c\":1}", "{\"a\":1 \"b\"}", "{'a':0}",
         "{[:1]}", "{null:1}", "{\"a\":/*c*/1}",
         // behind the value
         "{}/**/", "{}#",
         // texts
         "[\"\\u00A\"]", "[\"\\u{61}\"]", "[\"\\uD800\\uD800\"]", "[\"\\uD834\\uDd\"]", "[\"\\a\"]",
         "[\"\\\"]", "[\"\t\"]", "[\f]", "[\u00A0]", "[\\u000A\"\"]", "\x01[]", "[nul]", "nUll", "[]\x0C",
         "1 2", "\xE5", "[\"\xE9\"]", "[\"\xF4\x90\x80\x80\"]", "[\"\xFC\x80\x80\x80\x80\x80\"]",
         "[\0\"\0]\0"s, "\xFF\xFE[\0]\0"s, "[1000000000000000000e1000]"},
        {"[,1]", "{a:1}", "{1:2}", "[+1]", "[.5]", "[NaN]", "[True]", "['a']", "[\"a]", "[1e400]", "[-1e400]",
         "[\"\xFF\"]", "[\"\xC0\x80\"]", "[\"\xED\xA0\x80\"]"},
        {"  ", "[1", "[01]", "[-]", "[\"\\x\"]", "[\"\\u12g4\"]", "[\"\n\"]", "[]]", "[1}", "[\"\\ud800\"]",
         "[\"\\ud800\\u0041\"]", "[\"\\udc00\"]", "[]\0"s, "[]\0x"s, "[\"\0\"]"s},
        {"[1,]", "[1 2]", "[1.]", "[1e]", "[] []"},
        {"{\"a\"}", "\xEF\xBB\xBF["},
        {"{\"a\":}"},
        {},
        {"{\"a\":1,}"},
    };
    for (int earliest = 0; earliest < std::ssize(table); ++earliest)
        for (const std::string &json : table[earliest]) {
            const std::string reason = refusal(json);
            ASSERT_THAT(reason, HasSubstr(" Around character ")) << json;
            const int offset = std::atoi(reason.substr(reason.rfind(' ') + 1).c_str());
            EXPECT_TRUE(offset >= earliest && offset <= std::ssize(json)) << json << ": " << reason;
        }
    EXPECT_EQ(refusal("[1,]"), "Syntax error. Around character 3.");
    EXPECT_EQ(read("[1,]"), nullptr) << "nobody asked for the error";
    EXPECT_EQ(NSJSONSerialization::JSONObjectWithData(nullptr, Options::None, nullptr), nullptr);
    for (const char *json : {"1", "\"text\"", "null", " true "}) {
        EXPECT_THAT(refusal(json), HasSubstr("fragments")) << json;
        EXPECT_EQ(refusal(json, Options::AllowFragments), "") << json;
    }
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

TEST(JSON, anyMutationOfATextIsReadOrRefused) {
    RandomObjects random(977, RandomObjects::Kind::JSON);
    const std::string original =
        R"({"printers":[{"model":"L200","pages":12345,"level":0.5,"on":true,"x":null},"Gr\u00fcn 😀","\ud83d\ude00",-1e3]})";
    std::size_t accepted = 0;
    for (int round = 0; round < 20000; ++round)
        accepted += refusal(random.mutated(original, "[]{}:,\"\\u0123eE+-.dtn\x1F\x80\xC3\xED\xFF ")).empty();
    EXPECT_GT(accepted, 100u);
}

TEST(JSONWriting, hasTheseForms) {
    const id object = dictionaryOf({{u"b/c"_ns, arrayOf({number(1), NSNull::null(), NSArray::array()})},
                                    {u"B"_ns, NSDictionary::dictionary()},
                                    {u"a"_ns, dictionaryOf({{u"x"_ns, number(true)}})}});
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
    const auto in = [](const id &value) { return arrayOf({value}); };
    const auto under = [](const id &key) { return dictionaryOf({{key, u"v"_ns}}); };
    const std::pair<id, std::string> table[] = {
        {in(NSNumber::numberWithDouble(NAN)), "finite"},
        {in(NSNumber::numberWithDouble(-INFINITY)), "finite"},
        {in(NSNumber::numberWithFloat(INFINITY)), "finite"},
        {in(NSDate::distantPast()), "type"},
        {in(NSData::data()), "type"},
        {under(number(1)), "key"},
        {in(under(NSNull::null())), "key"},
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
