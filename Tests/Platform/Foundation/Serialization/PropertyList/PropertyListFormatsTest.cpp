// The three formats of property lists: written, read back, compared with another reader and writer, and
// hostile.
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/System/NSError.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/RandomObjects.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TextTable.h"

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

/// What the list is, a number behind the letter of its type, or why the bytes are none.
std::string told(std::string_view bytes) {
    const std::string reason = refusal(bytes);
    return reason.empty() ? typed(read(bytes)) : reason;
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

/// In hexadecimal, "|" between two.
std::vector<std::string> objectsOf(const std::string &hexadecimal) {
    std::vector<std::string> objects(hexadecimal.empty() ? 0 : 1);
    for (std::size_t at = 0; at < hexadecimal.size(); ++at)
        if (hexadecimal[at] == '|')
            objects.emplace_back();
        else if (hexadecimal[at] != ' ')
            objects.back() += static_cast<char>(std::stoi(hexadecimal.substr(at++, 2), nullptr, 16));
    return objects;
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
    for (const id &list : arrayOf({u"alone"_ns, u"a\r\n]]>\r"_ns, number(INT64_MIN), number(0.1f),
                                   number(double{-INFINITY}), number(double{NAN}), NSDate::distantPast(),
                                   NSDate::dateWithTimeIntervalSinceReferenceDate(252423993599),
                                   dataOf(std::string(1000, 'x')), nested(512)}))
        expectReadBack(list);
    for (const Format format : formats) {
        const id some = arrayOf({number(true), number(0.0), number(-0.0)});
        const auto again = as<NSArray>(read(written(some, format)));
        EXPECT_TRUE(as<NSNumber>(again->objectAtIndex(0))->isBoolean());
        EXPECT_EQ(text(again), "(\n    1,\n    0,\n    \"-0\"\n)");
    }
    expectReadBack(NSDate::dateWithTimeIntervalSinceReferenceDate(-1.0 / 3), {formats[1]});
    EXPECT_EQ(text(read(written(NSDate::dateWithTimeIntervalSinceReferenceDate(7.9), formats[0]))),
              "2001-01-01 00:00:07 +0000");
}

TEST(PropertyListFormats, writeWhatOthersRead) {
    EXPECT_EQ(
        written(dictionaryOf({{u"a<b"_ns, arrayOf({number(-1), u"x&y"_ns})}, {u"f"_ns, number(false)}}),
                Format::XMLFormat_v1_0),
        contents(NSData::dataWithContentsOfFile(ZK_TABLES "/Serialization/PropertyList/Written.plist")));
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
    for (const id &list :
         {id(), id(NSNull::null()), id(NSSet::set()), id(arrayOf({NSNull::null()})),
          id(dictionaryOf({{number(1), u"v"_ns}})), id(make<NSString>(std::u16string{0xDC00})),
          id(NSDate::dateWithTimeIntervalSinceReferenceDate(NAN)), nested(513), id(cycle)})
        for (const Format format : formats)
            EXPECT_EQ(written(list, format), "");
    cycle->removeAllObjects();
    for (const id &list : arrayOf({u"\u0001"_ns, u"\uFFFE"_ns, make<NSString>(std::u16string{u'a', 0, u'b'}),
                                   NSDate::dateWithTimeIntervalSinceReferenceDate(252423993600),
                                   NSDate::dateWithTimeIntervalSinceReferenceDate(-1e11)})) {
        EXPECT_EQ(written(list, Format::XMLFormat_v1_0), "");
        expectReadBack(list, {Format::BinaryFormat_v1_0});
    }
}

TEST(XMLPropertyLists, areReadOrRefusedWithAReason) {
    for (const auto &[source, expected] : rowsOf(ZK_TABLES "/Serialization/PropertyList/XML.txt"))
        EXPECT_EQ(told(source), expected) << source;
    const std::pair<std::string, std::string> encoded[] = {
        {"<?xml version='1.0' encoding='ISO-8859-1'?><string>\xFC</string>", "ü"},
        {"\xEF\xBB\xBF<?xml version='1.0'?><string>ü</string>", "ü"},
        {"<\0s\0t\0r\0i\0n\0g\0>\0\x3D\xD8\0\xDE<\0/\0s\0t\0r\0i\0n\0g\0>\0"s, "😀"},
        {"\xFE\xFF\0<\0s\0t\0r\0i\0n\0g\0/\0>"s, ""},
        {"<\0s\0>\0\n\0\x3D\xD8<\0"s, "Line 2: expected UTF-16, not a surrogate that stands alone."},
        {"\xFF\xFE<"s, "Line 1: expected UTF-16, not half a unit."},
        {"<real>0." + std::string(400, '0') + "1e400</real>", "d 0.1"},
    };
    for (const auto &[source, expected] : encoded)
        EXPECT_EQ(told(source), expected) << source;
}

TEST(BinaryPropertyLists, refuseWhatTheyAreNot) {
    EXPECT_EQ(NSPropertyListSerialization::propertyListWithData(nullptr), nullptr);
    EXPECT_EQ(told(binary(objectsOf("14 0000000000000000 FFFFFFFFFFFFFFFF"))), "Q 18446744073709551615");
    EXPECT_EQ(told(binary(objectsOf("14 FFFFFFFFFFFFFFFF 8000000000000000"))), "q -9223372036854775808");
    EXPECT_EQ(told(binary(objectsOf("12 FFFFFFFF"))), "q 4294967295");
    for (const auto &[objects, reason] : rowsOf(ZK_TABLES "/Serialization/PropertyList/BinaryRefused.txt"))
        EXPECT_EQ(refusal(binary(objectsOf(objects))), reason) << objects;
    EXPECT_EQ(refusal("bplist"), "Byte 0: expected \"bplist00\".");
    EXPECT_EQ(refusal("bplist00"), "Byte 8: expected a trailer of 32 bytes.");
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

TEST(OpenStep, isReadOrRefusedWithAReason) {
    for (const auto &[source, expected] : rowsOf(ZK_TABLES "/Serialization/PropertyList/OpenStep.txt"))
        EXPECT_EQ(told(source), expected) << source;
    EXPECT_EQ(told("\xEF\xBB\xBFword"), "word");
    EXPECT_EQ(told("\"\xFF\""), "At the top: expected UTF-8.");
    for (const char *source :
         {"a b",           "{",       "{k}",     "{k=}",     "{k=v}", "{=v;}", "{(a)=v;}",
          "{k=v;",         "{k=v;}}", "(",       "(a",       "(a b)", "(,)",   "(a,,b)",
          "(a;)",          "\"open",  "'open\"", "\"\\",     "<0g>",  "<0f",   "<0fbd777 >",
          "/* never ends", "(a /*)",  "k = v",   "k = v; (", "ü",     "@",     ";"})
        EXPECT_EQ(read(source), nullptr) << source;
}

TEST(OpenStep, readsTheDescriptionsOfCollections) {
    RandomObjects objects(23, RandomObjects::Kind::Texts);
    for (int round = 0; round < 1000; ++round) {
        const id list = objects.container();
        const id again = read(text(list));
        ASSERT_TRUE(again && again->isEqual(list)) << text(list);
    }
}
