// What texts know of Unicode: case, white space, characters of several code units; and the truths,
// parts and hexadecimal numbers read from them.
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSScanner.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TextTable.h"

namespace {

std::string scanHexInt(const std::string &given) {
    const auto scanner = make<NSScanner>(string(given));
    const auto value = scanner->scanHexInt();
    return (value ? std::to_string(*value) : "none") + " at " + std::to_string(scanner->scanLocation());
}

} // namespace

TEST(NSString, givesWhatTheTableSays) {
    expectTable(ZK_TABLES "/Text/Operations.txt",
                {{"boolValue", [](auto &given) { return std::to_string(string(given)->boolValue()); }},
                 {"lowercaseString", [](auto &given) { return text(string(given)->lowercaseString()); }},
                 {"uppercaseString", [](auto &given) { return text(string(given)->uppercaseString()); }},
                 {"pathExtension", [](auto &given) { return text(string(given)->pathExtension()); }},
                 {"scanHexInt", scanHexInt}});
}

TEST(NSString, mapsCase) {
    const std::u16string lone = {u'A', 0xD800, u'B'};
    EXPECT_EQ(make<NSString>(lone)->lowercaseString()->units(), (std::u16string{u'a', 0xD800, u'b'}));
    const std::u16string emphatic(1000, u'\u0390'); // each becomes three units
    EXPECT_EQ(make<NSString>(emphatic)->uppercaseString()->length(), 3000u);

    EXPECT_EQ(u"TONER é"_ns->caseInsensitiveCompare(u"toner e\u0301"_ns), NSComparisonResult::OrderedSame);
    EXPECT_EQ(u"a"_ns->caseInsensitiveCompare(u"B"_ns), NSComparisonResult::OrderedAscending);
    EXPECT_EQ(u"b"_ns->caseInsensitiveCompare(u""_ns), NSComparisonResult::OrderedDescending);
}

TEST(NSString, trimsAndSplits) {
    const auto space = NSCharacterSet::whitespaceAndNewlineCharacterSet();
    EXPECT_EQ(text(u"\u3000 \t\r\n\u2028\u0085 a b\u00A0\f\v"_ns->stringByTrimmingCharactersInSet(space)),
              "a b");
    EXPECT_EQ(text(u" \n "_ns->stringByTrimmingCharactersInSet(space)), "");
    EXPECT_EQ(raised([] { return u"a"_ns->stringByTrimmingCharactersInSet(nullptr); }),
              NSInvalidArgumentException);
    EXPECT_EQ(text(u"12ab3"_ns->stringByTrimmingCharactersInSet(
                  NSCharacterSet::characterSetWithCharactersInString(u"ab")->invertedSet())),
              "ab");
    EXPECT_FALSE(space->setByRemovingCharactersInString(u" ")->characterIsMember(u' '));
    EXPECT_TRUE(space->setByRemovingCharactersInString(u" ")->characterIsMember(u'\t'));

    const auto parts = [](const Ref<NSString> &whole, const Ref<NSString> &separator) {
        std::string joined;
        for (const id &part : whole->componentsSeparatedByString(separator))
            joined += "[" + text(part) + "]";
        return joined;
    };
    EXPECT_EQ(parts(u"1.2..3."_ns, u"."_ns), "[1][2][][3][]");
    EXPECT_EQ(parts(u"aXXXb"_ns, u"XX"_ns), "[a][Xb]");
    EXPECT_EQ(parts(u""_ns, u"."_ns) + parts(u"ab"_ns, u""_ns) + parts(u"."_ns, u"."_ns), "[][ab][][]");
    EXPECT_EQ(raised([] { return u"a"_ns->componentsSeparatedByString(nullptr); }),
              NSInvalidArgumentException);
}

TEST(NSString, widensRangesToWholeCharacters) {
    // e + acute | flag of two pairs | family joined by zero-width joiners | CR LF | a lone surrogate | x
    const auto value = make<NSString>(u"e\u0301🇩🇪👩‍👧\r\n" + std::u16string(1, 0xD800) + u"x");
    const NSUInteger boundaries[] = {0, 2, 6, 11, 13, 14, 15};
    const auto atOrBefore = [&](NSUInteger i) {
        return *std::prev(std::upper_bound(std::begin(boundaries), std::end(boundaries), i));
    };
    const auto atOrAfter = [&](NSUInteger i) {
        return *std::lower_bound(std::begin(boundaries), std::end(boundaries), i);
    };
    ASSERT_EQ(value->length(), 15u);
    for (NSUInteger first = 0; first <= 15; ++first)
        for (NSUInteger last = first; last <= 15; ++last) {
            const NSUInteger from = atOrBefore(first), to = atOrAfter(last);
            EXPECT_EQ(value->rangeOfComposedCharacterSequencesForRange({first, last - first}),
                      NSMakeRange(from, to - from))
                << first << " to " << last;
        }
    EXPECT_EQ(u""_ns->rangeOfComposedCharacterSequencesForRange({0, 0}), NSMakeRange(0, 0));
    EXPECT_EQ(raised([&] { value->rangeOfComposedCharacterSequencesForRange(NSMakeRange(15, 1)); }),
              NSRangeException);
}

TEST(NSScanner, goesOnWhereItStands) {
    const auto scanner = make<NSScanner>(u"a 0xB"_ns);
    EXPECT_EQ(scanner->scanHexInt(), 10u);
    EXPECT_EQ(scanner->scanHexInt(), 11u);
    EXPECT_EQ(scanner->scanHexInt(), std::nullopt);
}
