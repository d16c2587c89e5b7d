// The three formats of property lists: written, read back, compared with another reader and writer, and
// hostile.
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/System/NSError.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/RandomObjects.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::literals;

namespace {

using Format = NSPropertyListFormat;
using Mutability = NSPropertyListMutabilityOptions;
constexpr Format formats[] = {Format::XMLFormat_v1_0, Format::BinaryFormat_v1_0};

id read(std::string_view bytes, Mutability options = Mutability::Immutable) {
    return NSPropertyListSerialization::propertyListWithData(dataOf(bytes), options);
}

/// Empty when refused.
std::string written(const id &list, Format format) {
    const auto data = NSPropertyListSerialization::dataWithPropertyList(list, format);
    return data ? contents(data) : "";
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

/// Why the bytes are no list; empty when they are one.
std::string refusal(std::string_view bytes) {
    Ref<NSError> error;
    const id list =
        NSPropertyListSerialization::propertyListWithData(dataOf(bytes), Mutability::Immutable, &error);
    EXPECT_EQ(list == nullptr, error != nullptr);
    return error ? text(error->userInfo()->objectForKey(NSDebugDescriptionErrorKey())) : "";
}

/// What the other reader makes of each list, in binary; empty for what it refuses.
std::vector<std::string> peerAnswers(const std::vector<std::string> &lists) {
    const TemporaryFolder folder;
    std::string records;
    for (const std::string &list : lists)
        records += bigEndian(list.size(), 8) + list;
    folder.put("lists", records);
    const std::string command = ZK_PROPERTY_LIST_PEER " <'" + folder.file("lists").string() + "' >'" +
                                folder.file("answers").string() + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    const std::string all = folder.get("answers");
    std::vector<std::string> answers;
    for (std::size_t at = 0; at + 8 <= all.size();) {
        std::uint64_t length = 0;
        for (const std::size_t end = at + 8; at < end; ++at)
            length = length << 8 | static_cast<unsigned char>(all[at]);
        answers.push_back(all.substr(at, length));
        at += length;
    }
    EXPECT_EQ(answers.size(), lists.size());
    answers.resize(lists.size());
    return answers;
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
        inner = arrayOf({inner});
    return inner;
}

} // namespace

TEST(PropertyListFormats, areReadBackEqual) {
    RandomObjects objects(21, RandomObjects::Kind::PropertyList);
    for (int round = 0; round < 1000 && !HasFailure(); ++round)
        expectReadBack(objects.container());
    const id edges[] = {u"alone"_ns,
                        u"a\r\n]]>\r"_ns,
                        NSNumber::numberWithLongLong(-1),
                        number(5e-324),
                        NSDate::distantPast(),
                        number(UINT64_MAX),
                        number(INT64_MIN),
                        NSNumber::numberWithUnsignedLongLong(INT64_MAX),
                        NSNumber::numberWithDouble(-INFINITY),
                        NSNumber::numberWithDouble(NAN),
                        number(0.1f),
                        NSDate::distantFuture(),
                        NSDate::dateWithTimeIntervalSinceReferenceDate(252423993599),
                        dataOf(std::string(1000, 'x')),
                        nested(512)};
    for (const id &list : edges)
        expectReadBack(list);
    for (const Format format : formats) {
        EXPECT_TRUE(as<NSNumber>(read(written(number(true), format)))->isBoolean());
        const auto zeros = arrayOf({number(0.0), number(-0.0)});
        const auto again = as<NSArray>(read(written(zeros, format)));
        EXPECT_FALSE(std::signbit(as<NSNumber>(again->objectAtIndex(0))->doubleValue()));
        EXPECT_TRUE(std::signbit(as<NSNumber>(again->objectAtIndex(1))->doubleValue()));
    }
    expectReadBack(NSDate::dateWithTimeIntervalSinceReferenceDate(-1.0 / 3), {formats[1]});
    EXPECT_EQ(text(read(written(NSDate::dateWithTimeIntervalSinceReferenceDate(7.9), formats[0]))),
              "2001-01-01 00:00:07 +0000");
}

TEST(PropertyListFormats, writeWhatOthersRead) {
    EXPECT_EQ(written(dictionaryOf({{u"a<b"_ns, arrayOf({number(-1), u"x&y"_ns})}, {u"f"_ns, number(false)}}),
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
        written(arrayOf({u"a"_ns, u"ü"_ns}), Format::BinaryFormat_v1_0),
        "bplist00\xA2\1\2Qa\x61\0\xFC\b\v\r\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\3\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x10"s);
}

TEST(PropertyListFormats, agreeWithAnotherReaderAndWriter) {
    RandomObjects objects(22, RandomObjects::Kind::PropertyList);
    std::vector<std::string> lists;
    for (int i = 0; i < 500; ++i) {
        const id list = objects.container();
        lists.push_back(written(list, formats[0]));
        lists.push_back(written(list, formats[1]));
    }
    const auto answers = peerAnswers(lists);
    for (std::size_t i = 0; i < lists.size(); ++i)
        ASSERT_EQ(answers[i], lists[i | 1]) << lists[i & ~std::size_t{1}];
}

// The other reader overlooks much, so that it may read what ours refuses; never the other way round.
TEST(PropertyListFormats, agreeWithAnotherReaderOnMutatedLists) {
    RandomObjects objects(25, RandomObjects::Kind::PropertyList);
    std::vector<std::string> lists;
    for (std::size_t i = 0; i < 4000; ++i)
        lists.push_back(objects.mutated(written(objects.container(3), formats[i % 2]),
                                        "<>/&;\"=\\(){},U7 -x\x0F\x10\xA1\xD1\xFF"));
    const auto answers = peerAnswers(lists);
    std::size_t both[2] = {}, neither[2] = {};
    for (std::size_t i = 0; i < lists.size(); ++i) {
        const id ours = read(lists[i]), theirs = read(answers[i]);
        const bool isBeyondTheirYears = ours && !theirs && written(ours, formats[0]).empty();
        EXPECT_TRUE(!ours || isBeyondTheirYears || (theirs && ours->isEqual(theirs))) << lists[i] << "\n"
                                                                                      << text(ours) << "\n"
                                                                                      << text(theirs);
        both[i % 2] += ours && theirs;
        neither[i % 2] += !ours && !theirs;
    }
    for (const std::size_t kind : {0u, 1u}) {
        EXPECT_GT(both[kind], 200u);
        EXPECT_GT(neither[kind], 300u);
    }
}

TEST(PropertyListFormats, refuseWhatTheyCannotHold) {
    const auto cycle = NSMutableArray::array();
    cycle->addObject(cycle);
    const id nowhere[] = {nullptr,
                          NSNull::null(),
                          NSSet::set(),
                          arrayOf({NSNull::null()}),
                          dictionaryOf({{number(1), u"v"_ns}}),
                          make<NSString>(std::u16string{0xDC00}),
                          NSDate::dateWithTimeIntervalSinceReferenceDate(NAN),
                          nested(513),
                          cycle};
    for (const id &list : nowhere)
        for (const Format format : formats)
            EXPECT_EQ(written(list, format), "");
    cycle->removeAllObjects();
    const id onlyInBinary[] = {u"\u0001"_ns, u"\uFFFE"_ns, make<NSString>(std::u16string{u'a', 0, u'b'}),
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

TEST(XMLPropertyLists, readsAndRefuses) {
    const auto plist = [](const std::string &value) { return "<plist>" + value + "</plist>"; };
    const auto entry = [](const id &value) { return dictionaryOf({{u"k"_ns, value}}); };
    const std::string doctype = "<!DOCTYPE plist PUBLIC \"-//x\" \"http://localhost/x.dtd\">";
    const std::pair<std::string, id> valid[] = {
        {"<string/>", u""_ns},
        {plist("<string> a<![CDATA[<b>]]><!-- c -->&#x64;&quot;\r\n</string>\n"), u" a<b>d\"\n"_ns},
        {"<?xml version='1.0' encoding='ISO-8859-1'?>" + plist("<string>\xFC</string>"), u"ü"_ns},
        {"\xEF\xBB\xBF<?xml version='1.0'?>" + doctype + plist("<string>ü</string>"), u"ü"_ns},
        {"<\0s\0t\0r\0i\0n\0g\0>\0\x3D\xD8\0\xDE<\0/\0s\0t\0r\0i\0n\0g\0>\0"s, u"😀"_ns},
        {"\xFE\xFF\0<\0s\0t\0r\0i\0n\0g\0/\0>"s, u""_ns},
        {"<integer>\n+18446744073709551615 </integer>", number(UINT64_MAX)},
        {"<integer>-9223372036854775808</integer>", number(INT64_MIN)},
        {"<integer>010</integer>", number(10)},
        {"<integer>0xfF</integer>", number(255)},
        {"<real> +1.5E3\t</real>", number(1500)},
        {"<real>1e-400</real>", number(0)},
        {"<real>0.00001e400</real>", nullptr},
        {"<real>0." + std::string(400, '0') + "1e400</real>", number(0.1)},
        {"<real>NaN</real>", number(double{NAN})},
        {"<real>-inf</real>", number(-double{INFINITY})},
        {"<date>2001-01-02T00:00:01Z</date>", NSDate::dateWithTimeIntervalSinceReferenceDate(86401)},
        {"<date> 0000-02-29T23:59:59Z </date>", NSDate::dateWithTimeIntervalSinceReferenceDate(-63140342401)},
        {"<data> A A\nE=\t</data>", dataOf("\0\1"sv)},
        {"<data/>", NSData::data()},
        {"<true> </true>", number(true)},
        {"<dict><key>k</key><true/><key>k</key><string>2</string></dict>", entry(u"2"_ns)},
        {"<dict><key>k</key><dict version=\"&lt;\"/></dict>", entry(NSDictionary::dictionary())},
    };
    for (const auto &[source, expected] : valid)
        EXPECT_TRUE(expected ? expected->isEqual(read(source)) : !read(source))
            << source << text(read(source)) << refusal(source);
    const std::pair<std::string, std::string> invalid[] = {
        {"<?xml version='1.0'?>", "Line 1: expected <plist>, not no element found."},
        {plist("\n"), "Line 2: expected a value, not </plist>."},
        {plist("<true/><true/>"), "Line 1: expected </plist>, not <true>."},
        {"<set/>", "Line 1: expected <plist>, not <set>."},
        {plist("<set/>"), "Line 1: expected a value, not <set>."},
        {"<key>k</key>", "Line 1: expected <plist>, not <key>."},
        {plist("<true/>") + "\n<", "Line 2: expected the end, not unclosed token."},
        {plist("<true/>") + "x", "Line 1: expected the end, not junk after document element."},
        {"\n<?xml version='1.0'?>",
         "Line 2: expected <plist>, not XML or text declaration not at start of entity."},
        {"<array>\n<true>\n", "Line 3: expected </true>, not no element found."},
        {"<array>\n</dict>", "Line 2: expected a value or </array>, not mismatched tag."},
        {"<array>x</array>", "Line 1: expected a value or </array>, not text."},
        {"<dict><true/></dict>", "Line 1: expected <key> or </dict>, not <true>."},
        {"<dict>\n<key>k</key>\n</dict>", "Line 3: expected a value of the key \"k\", not </dict>."},
        {"<dict><key>k</key><key>l</key></dict>", "Line 1: expected a value of the key \"k\", not <key>."},
        {"<string><b/></string>", "Line 1: expected </string>, not <b>."},
        {"<string>&copy;</string>", "Line 1: expected </string>, not undefined entity."},
        {doctype + "<string>&copy;</string>", "Line 1: expected one of XML's own references, not &copy;."},
        {"<!DOCTYPE p [<!ENTITY a \"a\">]><string>&a;</string>",
         "Line 1: expected a document type without definitions, not [."},
        {"<string>&#0;</string>", "Line 1: expected </string>, not reference to invalid character number."},
        {"<string>\xED\xA0\x80</string>", "Line 1: expected </string>, not not well-formed (invalid token)."},
        {"<\0s\0>\0\n\0\x3D\xD8<\0"s, "Line 2: expected UTF-16, not a surrogate that stands alone."},
        {"\xFF\xFE<"s, "Line 1: expected UTF-16, not half a unit."},
        {"<?xml version='1.0' encoding='UTF-16'?><true/>",
         "Line 1: expected <plist>, not encoding specified in XML declaration is incorrect."},
        {"<?xml version='1.0' encoding='KOI8-R'?><true/>", "Line 1: expected <plist>, not unknown encoding."},
        {"<false>no</false>", "Line 1: expected </false>, not \"no\"."},
    };
    for (const auto &[source, reason] : invalid)
        EXPECT_EQ(refusal(source), reason) << source;
    const std::pair<std::string, std::vector<std::string>> leaves[] = {
        {"integer",
         {"", "abc", "1_0", "0x", "--1", "1 2", "18446744073709551616", "-9223372036854775809", "1.0"}},
        {"real", {"", "1,5", "+-1", "0x1p3", "1e400", "-1e9999999999999999999", "nan(1)", "1.5f"}},
        {"date",
         {"", "2014-01-20", "2014-02-29T00:00:00Z", "2014-01-20T24:00:00Z", "2014-01-20T12:24:60Z",
          "2014-01-20t12:24:48Z", "-014-01-20T12:24:48Z"}},
        {"data", {"AAA", "A===", "AA==AA==", "AB==", "A*A=", "=AAA"}},
    };
    for (const auto &[name, contents] : leaves)
        for (const std::string &content : contents)
            EXPECT_THAT(refusal("<" + name + ">" + content + "</" + name + ">"),
                        testing::MatchesRegex("Line 1: expected .*, not \"" +
                                              std::string(content.size(), '.') + "\"."))
                << content;
}

TEST(BinaryPropertyLists, refuseWhatTheyAreNot) {
    EXPECT_EQ(NSPropertyListSerialization::propertyListWithData(nullptr), nullptr);
    const auto whole = [](unsigned power, const std::string &bytes) {
        return binary({std::string(1, static_cast<char>(0x10 + power)) + bytes});
    };
    const std::string eight(8, '\xFF'), none(8, '\0'), least = "\x80" + std::string(7, '\0');
    EXPECT_TRUE(read(whole(4, none + eight))->isEqual(number(UINT64_MAX)));
    EXPECT_TRUE(read(whole(4, eight + least))->isEqual(number(INT64_MIN)));
    EXPECT_TRUE(read(whole(2, std::string(4, '\xFF')))->isEqual(NSNumber::numberWithLongLong(UINT32_MAX)));
    const std::pair<std::string, std::string> table[] = {
        {"bplist", "Byte 0: expected \"bplist00\"."},
        {"bplist01", "Byte 0: expected \"bplist00\"."},
        {"bplist00", "Byte 8: expected a trailer of 32 bytes."},
        {binary({}), "Byte 24: expected the number of an object."},
        {binary({"\0"s}), "Byte 8: expected a flag."},
        {whole(5, std::string(32, '\0')), "Byte 8: expected a whole number of 1 to 16 bytes."},
        {whole(4, eight + none), "Byte 8: expected a whole number of 64 bits."},
        {whole(4, none), "Byte 8: expected an object in front of the table."},
        {binary({"\x21\0\0"s}), "Byte 8: expected a real number of 4 or 8 bytes."},
        {binary({"\x32\0\0\0\0"s}), "Byte 8: expected a date of 8 bytes."},
        {binary({"\x33\x7F\xF0\0\0\0\0\0\0"s}), "Byte 8: expected a finite date."},
        {binary({"\x52\xC3\xBC"s}), "Byte 8: expected a text of ASCII characters."},
        {binary({"\x61\xDC\0"s}), "Byte 8: expected a text in which no surrogate stands alone."},
        {binary({"\x5F\x14"s + none + none}), "Byte 9: expected a count of 1 to 8 bytes."},
        {binary({"\x80\1"s}), "Byte 8: expected no reference outside of an archive."},
        {binary({"\xC0"s}), "Byte 8: expected an object of a property list."},
        {binary({"\xA1\0\0\0\5"s}), "Byte 9: expected the number of an object."},
        {binary({"\xA1\0\0\0\0"s}), "Byte 9: expected no object that holds itself."},
        {binary({"\xD1\0\0\0\1\0\0\0\1"s, "\x09"s}), "Byte 9: expected a text as a key."},
    };
    for (const auto &[bytes, reason] : table)
        EXPECT_EQ(refusal(bytes), reason) << bytes;
    const std::string list = written(arrayOf({u"a"_ns, u"ü"_ns}), formats[1]);
    for (std::size_t length = sizeof "bplist" - 1; length < list.size(); ++length)
        EXPECT_NE(refusal(list.substr(0, length)), "") << length;
}

TEST(PropertyListFormats, areMutableOnDemand) {
    const id list = dictionaryOf({{u"list"_ns, arrayOf({u"text"_ns, dataOf("\1")})}});
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
    EXPECT_EQ(read(arraysInTurn(512)), nullptr);
    const auto wide = NSMutableArray::array();
    for (int i = 0; i < 100000; ++i)
        wide->addObject(NSArray::array());
    expectReadBack(wide); // depth, not count
    EXPECT_NE(read(arraysInArrays(10, 2)), nullptr) << "sharing is fine in moderation";
    EXPECT_EQ(read(arraysInArrays(60, 2)), nullptr);
    EXPECT_EQ(read(arraysInArrays(500, 14)), nullptr);
    // What we share in writing stays within bounds, too.
    expectReadBack(arrayOf(std::vector<id>(400'000, string(std::string(200, 's')))), {formats[1]});
    const std::string references = "x&lt;" + repeated(" ;y", 3000) + repeated("&amp;", 4'000'000);
    EXPECT_EQ(text(read("<plist><string><!-- " + references + " -->" + references + "</string></plist>")),
              "x<" + repeated(" ;y", 3000) + std::string(4'000'000, '&'))
        << "minutes, if each reference moved all that follows";
}

TEST(OpenStep, readsAndRefuses) {
    const auto entry = [](const id &value) { return dictionaryOf({{u"k"_ns, value}}); };
    const auto list = [](std::initializer_list<id> elements) { return arrayOf(elements); };
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
        {"{k=<0fbd7777 1C2735ae>;}", entry(dataOf("\x0F\xBD\x77\x77\x1C\x27\x35\xAE"))},
        {"<>", NSData::data()},
        {" < da da\n>", dataOf("\xDA\xDA")},
    };
    for (const auto &[source, expected] : valid)
        EXPECT_EQ(text(read(source)), text(expected)) << source;
    for (const char *source :
         {"a b",      "{",    "{k}",      "{k=}",  "{k=v}",      "{=v;}",         "{(a)=v;}", "{k=v;",
          "{k=v;}}",  "(",    "(a",       "(a b)", "(,)",        "(a,,b)",        "(a;)",     "\"open",
          "'open\"",  "\"\\", "<0g>",     "<0f",   "<0fbd777 >", "/* never ends", "(a /*)",   "k = v",
          "k = v; (", "ü",    "\"\xFF\"", "@",     ";"})
        EXPECT_EQ(text(read(source)), "(none)") << source;
    const std::pair<std::string, std::string> reasons[] = {
        {"{a = 1;\nb 2;}", "Line 2: expected ;, not 2."},
        {"(a\n\n😀", "Line 3: expected , or ), not 😀."},
        {"{", "Line 1: expected a key or }, not the end."},
        {"k = \"v", "Line 1: expected \", not the end."},
        {"(<0fz>)", "Line 1: expected a hexadecimal digit or >, not z."},
        {"\"\xFF\"", "At the top: expected UTF-8."},
    };
    for (const auto &[source, reason] : reasons)
        EXPECT_EQ(refusal(source), reason) << source;
}

TEST(OpenStep, readsTheDescriptionsOfCollections) {
    RandomObjects objects(23, RandomObjects::Kind::Texts);
    for (int round = 0; round < 1000; ++round) {
        const id list = objects.container();
        const id again = read(text(list));
        ASSERT_TRUE(again && again->isEqual(list)) << text(list);
    }
}
