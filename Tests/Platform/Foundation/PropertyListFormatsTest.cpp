// The three formats of property lists: written, read back, read by another program, and hostile.
#include "Platform/Foundation/NSPropertyListSerialization.h"
#include "Platform/Foundation/NSSet.h"
#include "Platform/Foundation/PropertyListGuard.h"
#include "Tests/Platform/Foundation/RandomObjects.h"
#include "Tests/Platform/Foundation/Shorthand.h"
#include "Tests/Platform/Transport/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

using Format = NSPropertyListFormat;
using Mutability = NSPropertyListMutabilityOptions;
constexpr Format formats[] = {Format::XMLFormat_v1_0, Format::BinaryFormat_v1_0};

id read(std::string_view bytes, Mutability options = Mutability::Immutable) {
    return NSPropertyListSerialization::propertyListWithData(
        NSData::dataWithBytes(bytes.data(), bytes.size()), options);
}

/// Empty when refused.
std::string written(const id &list, Format format) {
    const auto data = NSPropertyListSerialization::dataWithPropertyList(list, format);
    return data ? std::string(data->span().begin(), data->span().end()) : "";
}

void expectReadBack(const id &list, std::initializer_list<Format> in = {formats[0], formats[1]}) {
    for (const Format format : in) {
        const id again = read(written(list, format));
        EXPECT_TRUE(again && again->isEqual(list)) << text(list) << "\n" << written(list, format);
    }
}

std::string bigEndian(std::uint64_t value, unsigned bytes) {
    std::string text;
    while (bytes-- > 0)
        text += static_cast<char>(value >> 8 * bytes);
    return text;
}

/// A binary list of the objects, which refer to each other with 32 bits.
std::string binary(const std::vector<std::string> &objects) {
    std::string list = "bplist00", offsets;
    for (const std::string &object : objects) {
        offsets += bigEndian(list.size(), 4);
        list += object;
    }
    const std::uint64_t table = list.size();
    return list + offsets + "\0\0\0\0\0\0\4\4"s + bigEndian(objects.size(), 8) + bigEndian(0, 8) +
           bigEndian(table, 8);
}

/// Arrays each of which holds the next `times` over; the last is empty.
std::string arraysInArrays(std::uint64_t levels, unsigned times) {
    std::vector<std::string> objects;
    for (std::uint64_t i = 1; i < levels; ++i)
        objects.push_back(static_cast<char>(0xA0 + times) + repeated(bigEndian(i, 4), times));
    objects.push_back("\xA0");
    return binary(objects);
}

/// An array of arrays each of which holds the one before it, so that whoever reads them in order meets depths
/// of one only.
std::string arraysInTurn(std::uint64_t count) {
    std::vector<std::string> objects{"\xAF\x12" + bigEndian(count, 4), "\xA0"};
    for (std::uint64_t i = 1; i <= count; ++i) {
        objects[0] += bigEndian(i, 4);
        objects.push_back("\xA1" + bigEndian(i, 4));
    }
    return binary(objects);
}

id nested(std::size_t levels) {
    id inner = NSArray::array();
    for (std::size_t i = 1; i < levels; ++i)
        inner = NSArray::arrayWithObjects({inner});
    return inner;
}

} // namespace

TEST(PropertyListFormats, areReadBackEqual) {
    constexpr unsigned seed = 21;
    SCOPED_TRACE(seed);
    RandomObjects objects(seed, RandomObjects::Kind::PropertyList);
    for (int round = 0; round < 1000 && !HasFailure(); ++round)
        expectReadBack(objects.container());
    const id edges[] = {u"alone"_ns,
                        NSNumber::numberWithUnsignedLongLong(UINT64_MAX),
                        NSNumber::numberWithLongLong(INT64_MIN),
                        NSNumber::numberWithUnsignedLongLong(INT64_MAX),
                        NSNumber::numberWithDouble(-INFINITY),
                        NSNumber::numberWithDouble(NAN),
                        NSNumber::numberWithFloat(0.1f),
                        NSDate::distantFuture(),
                        NSDate::dateWithTimeIntervalSinceReferenceDate(252423993599),
                        NSData::dataWithBytes(std::string(1000, 'x').data(), 1000),
                        nested(512)};
    for (const id &list : edges)
        expectReadBack(list);
    for (const Format format : formats)
        EXPECT_TRUE(as<NSNumber>(read(written(NSNumber::numberWithBool(true), format)))->isBoolean());
    expectReadBack(NSDate::dateWithTimeIntervalSinceReferenceDate(-1.0 / 3), {formats[1]});
    EXPECT_EQ(text(read(written(NSDate::dateWithTimeIntervalSinceReferenceDate(7.9), formats[0]))),
              "2001-01-01 00:00:07 +0000");
}

TEST(PropertyListFormats, writeWhatOthersRead) {
    EXPECT_EQ(written(NSDictionary::dictionaryWithEntries(
                          {{u"a<b"_ns, NSArray::arrayWithObjects({NSNumber::numberWithInt(-1), u"x&y"_ns})},
                           {u"f"_ns, NSNumber::numberWithBool(false)}}),
                      Format::XMLFormat_v1_0),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>a&lt;b</key>
	<array>
		<integer>-1</integer>
		<string>x&amp;y</string>
	</array>
	<key>f</key>
	<false/>
</dict>
</plist>
)");
    EXPECT_EQ(
        written(NSArray::arrayWithObjects({u"a"_ns, u"ü"_ns}), Format::BinaryFormat_v1_0),
        "bplist00\xA2\1\2Qa\x61\0\xFC\b\v\r\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\3\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x10"s);
    RandomObjects objects(22, RandomObjects::Kind::PropertyList);
    const auto lists = NSMutableArray::array();
    for (int i = 0; i < 50; ++i)
        lists->addObject(objects.container());
    const TemporaryFolder folder;
    for (const auto &[from, to] : {std::pair{formats[0], "bin"}, std::pair{formats[1], "xml"}}) {
        folder.put("ours", written(lists, from));
        const std::string command = "plistutil -f "s + to + " -i '" + folder.file("ours").string() +
                                    "' -o '" + folder.file("theirs").string() + "'";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        const id theirs = read(folder.get("theirs"));
        EXPECT_TRUE(theirs && theirs->isEqual(lists)) << to;
    }
}

TEST(PropertyListFormats, refuseWhatTheyCannotHold) {
    const auto cycle = NSMutableArray::array();
    cycle->addObject(cycle);
    const id nowhere[] = {nullptr,
                          NSNull::null(),
                          NSSet::set(),
                          NSArray::arrayWithObjects({NSNull::null()}),
                          NSDictionary::dictionaryWithEntries({{NSNumber::numberWithInt(1), u"v"_ns}}),
                          make<NSString>(std::u16string{0xDC00}),
                          make<NSString>(std::u16string{u'a', 0, u'b'}),
                          NSDate::dateWithTimeIntervalSinceReferenceDate(NAN),
                          nested(513),
                          cycle};
    for (const id &list : nowhere)
        for (const Format format : formats)
            EXPECT_EQ(written(list, format), "");
    cycle->removeAllObjects();
    const id onlyInBinary[] = {u"\u0001"_ns, u"\uFFFE"_ns,
                               NSDate::dateWithTimeIntervalSinceReferenceDate(252423993600),
                               NSDate::dateWithTimeIntervalSinceReferenceDate(-1e11)};
    for (const id &list : onlyInBinary) {
        EXPECT_EQ(written(list, Format::XMLFormat_v1_0), "");
        expectReadBack(list, {Format::BinaryFormat_v1_0});
    }
}

TEST(PropertyListFormats, readsTheModelsThatShip) {
    const auto models = NSArray::arrayWithContentsOfFile(string(ZK_RESOURCES "/models.plist"));
    ASSERT_TRUE(models && models->count() > 0);
    for (const id &model : *models)
        EXPECT_GT(as<NSString>(as<NSDictionary>(model)->objectForKey(u"ppdModel"_ns))->length(), 0u);
}

TEST(PropertyListFormats, giveNoneForWhatTheyAreNot) {
    EXPECT_EQ(NSPropertyListSerialization::propertyListWithData(nullptr), nullptr);
    for (const std::string &bytes :
         {""s, "<?xml version=\"1.0\"?>"s, "<plist><unknown/></plist>"s,
          "<plist><dict><string>no key</string></dict></plist>"s,
          "<plist><array><string>open</array></plist>"s, "<plist><string>open"s, binary({"\xA1\0\0\0\5"s}),
          binary({"\xA1\0\0\0\1"s, "\x52\xC3("}), binary({"\x80\1"}), binary({"\xA1\0\0\0\0"s})})
        EXPECT_EQ(text(read(bytes)), "(none)") << bytes;
    const std::string whole = written(NSArray::arrayWithObjects({u"a"_ns, u"ü"_ns}), formats[1]);
    for (std::size_t length = sizeof "bplist" - 1; length < whole.size(); ++length)
        EXPECT_EQ(text(read(whole.substr(0, length))), "(none)") << length;
}

TEST(PropertyListFormats, areMutableOnDemand) {
    const id list = NSDictionary::dictionaryWithEntries(
        {{u"list"_ns, NSArray::arrayWithObjects({u"text"_ns, NSData::dataWithBytes("\1", 1)})}});
    for (const std::string &bytes :
         {written(list, formats[0]), written(list, formats[1]), "{list = (text, <01>);}"s})
        for (const auto options :
             {Mutability::Immutable, Mutability::MutableContainers, Mutability::MutableContainersAndLeaves}) {
            const bool containers = options != Mutability::Immutable;
            const bool leaves = options == Mutability::MutableContainersAndLeaves;
            const id root = read(bytes, options);
            ASSERT_TRUE(root->isEqual(list)) << bytes;
            const auto array = as<NSArray>(as<NSDictionary>(root)->objectForKey(u"list"_ns));
            EXPECT_EQ(as<NSMutableDictionary>(root) != nullptr, containers);
            EXPECT_EQ(as<NSMutableArray>(array) != nullptr, containers);
            EXPECT_EQ(as<NSMutableString>(array->objectAtIndex(0)) != nullptr, leaves);
            EXPECT_EQ(as<NSMutableData>(array->objectAtIndex(1)) != nullptr, leaves);
            EXPECT_EQ(as<NSMutableString>(as<NSDictionary>(root)->allKeys()->firstObject()), nullptr);
        }
}

TEST(PropertyListFormats, cannotExhaustTheReader) {
    const auto xml = [](std::size_t levels) {
        return "<plist>" + repeated("<array>", levels) + repeated("</array>", levels) + "</plist>";
    };
    for (const std::size_t deep : {513u, 1000000u}) {
        EXPECT_EQ(read(xml(deep)), nullptr);
        EXPECT_EQ(read(arraysInArrays(deep, 1)), nullptr);
        EXPECT_EQ(read(repeated("(", deep) + repeated(")", deep)), nullptr);
        EXPECT_EQ(read(repeated("{a=", deep) + "b" + repeated(";}", deep)), nullptr);
        for (const char *piece :
             {"<array>", "<array><!-- > </array> -->", "<array><?x > </array> ?>", "<array a=\"/>\">"})
            EXPECT_EQ(read("<plist>" + repeated(piece, deep)), nullptr);
    }
    EXPECT_TRUE(read(arraysInArrays(512, 1))->isEqual(nested(512)));
    EXPECT_TRUE(read(repeated("(", 512) + repeated(")", 512))->isEqual(nested(512)));
    EXPECT_TRUE(read("<plist>" + repeated("<!-- <array> --><array a=\"/>\">", 512) +
                     repeated("</array>", 512) + "</plist>")
                    ->isEqual(nested(512)));
    EXPECT_NE(
        read("<plist>" + repeated("<array>", 512) + "<true></true>" + repeated("</array>", 512) + "</plist>"),
        nullptr);
    EXPECT_NE(read(arraysInTurn(511)), nullptr);
    EXPECT_FALSE(isHarmlessBinaryPropertyList(arraysInTurn(512)));
    const auto wide = NSMutableArray::array();
    for (int i = 0; i < 100000; ++i)
        wide->addObject(NSArray::array());
    expectReadBack(wide); // depth, not count
    EXPECT_NE(read(arraysInArrays(10, 2)), nullptr) << "sharing is fine in moderation";
    EXPECT_EQ(read(arraysInArrays(60, 2)), nullptr);
    EXPECT_EQ(read(arraysInArrays(500, 14)), nullptr);
    for (const std::string &zeroKey : {"\x51\0"s, "\x52" + "a\0"s, "\x61\0\0"s, "\x62\0a\0\0"s})
        EXPECT_EQ(read(binary({"\xD1\0\0\0\1\0\0\0\1"s, zeroKey})), nullptr) << "no key of libplist's";
    EXPECT_NE(read(binary({"\xD1\0\0\0\1\0\0\0\2"s, "\x61\1\0"s, "\x51\0"s})), nullptr);
    EXPECT_EQ(text(read("<plist><dict><key>a&#0;b</key><true/></dict></plist>")), "(none)");
    const std::string references = "x&lt;" + repeated(" ;y", 3000) + repeated("&amp;", 4'000'000);
    EXPECT_EQ(text(read("<plist><string><!-- " + references + " -->" + references + "</string></plist>")),
              "x<" + repeated(" ;y", 3000) + std::string(4'000'000, '&'))
        << "minutes, if each reference moved all that follows";
    EXPECT_EQ(read("<!DOCTYPE p [<!ENTITY a \"aaaa\">]><plist><string>&a;</string></plist>"), nullptr);
}

TEST(OpenStep, readsAndRefuses) {
    const auto entry = [](const id &value) {
        return NSDictionary::dictionaryWithEntries({{u"k"_ns, value}});
    };
    const auto list = [](std::initializer_list<id> elements) { return NSArray::arrayWithObjects(elements); };
    const std::pair<std::string, id> valid[] = {
        {"word", u"word"_ns},
        {"\xEF\xBB\xBF /usr/lib:x.y-z_$ ", u"/usr/lib:x.y-z_$"_ns},
        {R"("a \"b\" 'c' \\ \a\b\f\n\r\t\v \q")", u"a \"b\" 'c' \\ \a\b\f\n\r\t\v q"_ns},
        {"'single \"quotes\"\nover lines'", u"single \"quotes\"\nover lines"_ns},
        {R"("\101\0601\341\256\200")", u"A01Æﬁ\u00A0"_ns},
        {R"("\U00fc\U20aC\Ud83d\Ude00\UA-\u")", u"ü€😀\n-u"_ns},
        {"\"激光\"", u"激光"_ns},
        {"{}", NSDictionary::dictionary()},
        {"{ k = v ; }", entry(u"v"_ns)},
        {"{k;}", entry(u"k"_ns)},
        {"{k=1;k=2;}", entry(u"2"_ns)},
        {"k = v;", entry(u"v"_ns)},
        {"/* only */ // comments\n", NSDictionary::dictionary()},
        {" ", NSDictionary::dictionary()},
        {"()", NSArray::array()},
        {"(a,(b),)", list({u"a"_ns, list({u"b"_ns})})},
        {"(a /* b */, // c\n d)", list({u"a"_ns, u"d"_ns})},
        {"{k=<0fbd7777 1C2735ae>;}", entry(NSData::dataWithBytes("\x0F\xBD\x77\x77\x1C\x27\x35\xAE", 8))},
        {"<>", NSData::data()},
        {" < da da\n>", NSData::dataWithBytes("\xDA\xDA", 2)},
    };
    for (const auto &[source, expected] : valid)
        EXPECT_EQ(text(read(source)), text(expected)) << source;
    for (const char *source :
         {"a b",      "{",    "{k}",      "{k=}",  "{k=v}",      "{=v;}",         "{(a)=v;}", "{k=v;",
          "{k=v;}}",  "(",    "(a",       "(a b)", "(,)",        "(a,,b)",        "(a;)",     "\"open",
          "'open\"",  "\"\\", "<0g>",     "<0f",   "<0fbd777 >", "/* never ends", "(a /*)",   "k = v",
          "k = v; (", "ü",    "\"\xFF\"", "@",     ";"})
        EXPECT_EQ(text(read(source)), "(none)") << source;
}

TEST(OpenStep, readsTheDescriptionsOfCollections) {
    constexpr unsigned seed = 23;
    SCOPED_TRACE(seed);
    RandomObjects objects(seed, RandomObjects::Kind::Texts);
    for (int round = 0; round < 1000; ++round) {
        const id list = objects.container();
        const id again = read(text(list));
        ASSERT_TRUE(again && again->isEqual(list)) << text(list);
    }
}

TEST(PropertyListFormats, anyMutationIsRefusedOrWrittenAgain) {
    constexpr unsigned seed = 24;
    SCOPED_TRACE(seed);
    RandomObjects objects(seed, RandomObjects::Kind::PropertyList), texts(seed, RandomObjects::Kind::Texts);
    std::size_t accepted[3] = {};
    for (int round = 0; round < 6000; ++round) {
        const std::size_t kind = static_cast<std::size_t>(round) % 3;
        const auto bytes = kind == 2 ? text(texts.container()) : written(objects.container(3), formats[kind]);
        const id list = read(objects.mutated(bytes, "<>/&;\"=\\(){},U7 \x0F\x10\xA1\xD1\xFF"));
        accepted[kind] += list != nullptr;
        const std::string again = list ? written(list, Format::BinaryFormat_v1_0) : "";
        EXPECT_TRUE(again.empty() || read(again)->isEqual(list)) << text(list);
    }
    for (const std::size_t count : accepted)
        EXPECT_GT(count, 50u);
}
