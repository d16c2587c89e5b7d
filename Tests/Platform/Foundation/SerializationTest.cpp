// JSON and property lists.
#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSJSONSerialization.h"
#include "Platform/Foundation/NSNumber.h"
#include "Platform/Foundation/NSPropertyListSerialization.h"
#include "Tests/Platform/Foundation/Text.h"

#include <gmock/gmock.h>

#include <random>

using testing::HasSubstr;

namespace {

using Options = NSJSONReadingOptions;

id readJSON(std::string_view json, Options options = Options::AllowFragments, Ref<NSError> *error = nullptr) {
    return NSJSONSerialization::JSONObjectWithData(NSData::dataWithBytes(json.data(), json.size()), options,
                                                   error);
}

/// The debug description with which the text is refused; empty when it is read.
std::string refusal(std::string_view json, Options options = Options::None) {
    Ref<NSError> error;
    const id result = readJSON(json, options, &error);
    EXPECT_EQ(result == nullptr, error != nullptr) << json;
    if (!error)
        return "";
    EXPECT_EQ(error->code(), 3840);
    return text(error->userInfo()->objectForKey(NSDebugDescriptionErrorKey()));
}

/// What the text says, a number with its type's letter.
std::string value(std::string_view json) {
    const id result = readJSON(json);
    const auto number = as<NSNumber>(result);
    return (number ? std::string(1, number->objCType()) + " " : "") + text(result);
}

std::string repeated(const std::string &piece, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += piece;
    return all;
}

id readPropertyList(std::string_view bytes) {
    return NSPropertyListSerialization::propertyListWithData(
        NSData::dataWithBytes(bytes.data(), bytes.size()));
}

std::string xml(const std::string &body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>\n";
}

/// A binary property list of the objects given, the first of them at the top; fewer than 256.
std::string binary(const std::vector<std::string> &objects) {
    std::string bytes = "bplist00", offsets, trailer(32, '\0');
    for (const std::string &object : objects) {
        offsets += {static_cast<char>(bytes.size() >> 8), static_cast<char>(bytes.size())};
        bytes += object;
    }
    trailer[6] = 2; // bytes an offset
    trailer[7] = 1; // bytes a reference
    trailer[15] = static_cast<char>(objects.size());
    trailer[30] = static_cast<char>(bytes.size() >> 8);
    trailer[31] = static_cast<char>(bytes.size());
    return bytes + offsets + trailer;
}

using namespace std::string_literals;

const std::string everyKind =
    binary({"\xD7\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E"s, "Qn", "Qr", "Qt", "Qd", "Qb",
            "Qu", "Ql", "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE"s, "\x23\x3F\xF8\0\0\0\0\0\0"s, "\x09"s,
            "\x33\x41\xB8\x8D\x4D\x10\0\0\0"s, "\x43\x01\x02\x03"s, "\x62\0\xFC\x20\xAC"s, "\xA1\x01"s});

} // namespace

// Keys are remembered while a text is read; a thousand of them crowd each other out.
TEST(JSON, ManyKeysStayApart) {
    std::string json = "[";
    for (int round = 0; round < 2; ++round) {
        json += round ? ",{" : "{";
        for (int i = 0; i < 1000; ++i)
            json += (i ? ",\"k" : "\"k") + std::to_string(i) + "\":" + std::to_string(1000 * round + i);
        json += "}";
    }
    const auto records = as<NSArray>(readJSON(json + "]"));
    ASSERT_TRUE(records);
    for (int i = 0; i < 2000; ++i) {
        const auto record = as<NSDictionary>(records->objectAtIndex(static_cast<NSUInteger>(i) / 1000));
        const auto value = as<NSNumber>(record->objectForKey(NSString::stringWithFormat("k%d", i % 1000)));
        ASSERT_TRUE(value) << i;
        EXPECT_EQ(value->intValue(), i);
    }
}

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
        {"1e-400", "d 0"},
        {R"("\"\\\/\b\f\n\r\t\u00fC")", "\"\\/\b\f\n\r\tü"},
        {R"("\ud83D\uDE00é😀a\u0000b")", "😀é😀a\0b"s},
        {"\xEF\xBB\xBF[]", "(\n)"},
        {R"({"b":2,"a":1,"b":3})", "{\n    a = 1;\n    b = 3;\n}"},
        {"[1 , [true,{}] ]", "(\n    1,\n    (\n        1,\n        {\n        }\n    )\n)"},
    };
    for (const auto &[json, expected] : table)
        EXPECT_EQ(value(json), expected) << json;
    for (const char *number :
         {"18446744073709551616", "-9223372036854775809", "0.1", "1.7976931348623157e308", "5e-324",
          "123456789012345678901234567890", "9007199254740993.0"})
        EXPECT_EQ(as<NSNumber>(readJSON(number))->doubleValue(), std::strtod(number, nullptr)) << number;
    for (const Options options : {Options::None, Options::MutableContainers}) {
        const bool wanted = options == Options::MutableContainers;
        const auto root = as<NSDictionary>(readJSON(R"({"z":[{"x":1}],"y":2,"a":3})", options));
        const auto list = as<NSArray>(root->objectForKey(u"z"_ns));
        EXPECT_EQ(as<NSMutableDictionary>(root) != nullptr, wanted);
        EXPECT_EQ(as<NSMutableArray>(list) != nullptr, wanted);
        EXPECT_EQ(as<NSMutableDictionary>(list->firstObject()) != nullptr, wanted);
        EXPECT_EQ(text(root->allKeys()->componentsJoinedByString(u""_ns)), "zya") << "in the text's order";
    }
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
        EXPECT_NE(readJSON(json), nullptr) << json;
}

TEST(JSON, refusesWithReasonAndOffset) {
    // Each with the earliest offset that may be named: the number of its row.
    const std::vector<std::string> table[] = {
        {"", "//c\n[]", "\xFE\xFF", "\0[]"s,
         // numbers
         "[1.0e+]", "[0e]", "[0x42]", "[-01]", "[2.e3]", "[1eE2]", "[1+2]", "[-Infinity]",
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
        {"{\"a\"}", "[tru]", "\xEF\xBB\xBF["},
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
    EXPECT_EQ(refusal("[1,]"), "Invalid value. Around character 3.");
    EXPECT_EQ(readJSON("[1,]"), nullptr) << "nobody asked for the error";
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
    EXPECT_EQ(refusal(arrays(512)) + refusal(objects(512)), "");
    EXPECT_EQ(refusal("[" + arrays(511) + "," + arrays(511) + "]"), "") << "depth, not count";
    for (const std::size_t levels : {513u, 100000u}) {
        EXPECT_THAT(refusal(arrays(levels)), HasSubstr("Too many nested"));
        EXPECT_THAT(refusal(objects(levels)), HasSubstr("Too many nested"));
    }
    EXPECT_THAT(refusal(repeated("[", 1000000)), HasSubstr("Too many nested"));
}

TEST(JSON, anyMutationOfATextIsReadOrRefused) {
    constexpr unsigned seed = 977;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::string original =
        R"({"printers":[{"model":"L200","pages":12345,"level":0.5,"on":true,"x":null},"Gr\u00fcn 😀","\ud83d\ude00",-1e3]})";
    constexpr std::string_view pieces = "[]{}:,\"\\u0123eE+-.dtn\x1F\x80\xC3\xED\xFF ";
    std::size_t accepted = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string json = original;
        for (auto changes = 1 + random() % 3; changes > 0; --changes)
            json.replace(random() % json.size(), random() % 3, random() % 2,
                         random() % 4 ? pieces[random() % pieces.size()] : static_cast<char>(random()));
        accepted += refusal(json).empty();
    }
    EXPECT_GT(accepted, 100u);
}

TEST(PropertyList, readsTheModelsThatShip) {
    const auto data = NSData::dataWithContentsOfFile(ZK_RESOURCES "/models.plist");
    const auto models = as<NSArray>(NSPropertyListSerialization::propertyListWithData(data));
    ASSERT_TRUE(models && models->count() > 0);
    for (const id &model : *models)
        EXPECT_GT(as<NSString>(as<NSDictionary>(model)->objectForKey(u"ppdModel"_ns))->length(), 0u);
}

TEST(PropertyList, readsEveryKind) {
    const id fromXml = readPropertyList(xml(
        "<dict><key>n</key><integer>-2</integer><key>r</key><real>1.5</real><key>t</key><true/><key>d</key>"
        "<date>2014-01-20T12:24:48Z</date><key>b</key><data>AQID</data><key>u</key><string>ü€</string>"
        "<key>l</key><array><string>n</string></array></dict>"));
    EXPECT_EQ(text(fromXml), R"({
    b = "<010203>";
    d = "2014-01-20 12:24:48 +0000";
    l = (
        n
    );
    n = "-2";
    r = "1.5";
    t = 1;
    u = "\U00fc\U20ac";
})");
    EXPECT_TRUE(fromXml->isEqual(readPropertyList(everyKind)));
    EXPECT_TRUE(as<NSNumber>(as<NSDictionary>(fromXml)->objectForKey(u"t"_ns))->isBoolean());
    EXPECT_EQ(text(readPropertyList(xml("<string>&lt;a&amp;b&gt;</string>"))), "<a&b>");
    EXPECT_EQ(text(readPropertyList(xml("<string></string>"))), "");
    const std::pair<std::string, double> dates[] = {{"\x33\x3F\xF8\0\0\0\0\0\0"s, 1.5},
                                                    {"\x33\xC0\x04\0\0\0\0\0\0"s, -2.5}};
    for (const auto &[bytes, seconds] : dates)
        EXPECT_EQ(as<NSDate>(readPropertyList(binary({bytes})))->timeIntervalSinceReferenceDate(), seconds);
}

TEST(PropertyList, givesNoneForWhatItCannotRead) {
    EXPECT_EQ(NSPropertyListSerialization::propertyListWithData(nullptr), nullptr);
    for (const std::string &bytes :
         {""s, "{ x"s, "bplist00"s, "not a property list at all"s, "<?xml version=\"1.0\"?>"s,
          xml("<unknown/>"), xml("<dict><string>no key</string></dict>"), xml("<array><string>open</array>"),
          "<plist><string>open"s, everyKind.substr(0, everyKind.size() - 1), everyKind.substr(0, 40),
          binary({"\xA1\x05"}), binary({"\xA1\x01", "\x52\xC3("}), binary({"\x80\x01"}), binary({"\xA1\0"s})})
        EXPECT_EQ(text(readPropertyList(bytes)), "(none)") << bytes;
}
