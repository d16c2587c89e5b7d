// What texts know of Unicode: case, white space, characters of several code units; and the truths,
// parts and hexadecimal numbers read from them.
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSScanner.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Testing.h"

TEST(NSString, readsTruth) {
    for (const char16_t *truth : {u"YES", u"y", u"true", u"T", u"1", u"9x", u"  +007", u"-02", u"\n\tyellow"})
        EXPECT_TRUE(make<NSString>(truth)->boolValue()) << make<NSString>(truth)->utf8();
    for (const char16_t *falsehood : {u"", u"NO", u"false", u"0", u"000", u"-0x1", u"- 1", u"on", u"\u0661"})
        EXPECT_FALSE(make<NSString>(falsehood)->boolValue()) << make<NSString>(falsehood)->utf8();
}

TEST(NSString, mapsCase) {
    EXPECT_EQ(text(u"ÄB1 İΣ"_ns->lowercaseString()), "äb1 i̇ς");
    EXPECT_EQ(text(u"straße ŉ i"_ns->uppercaseString()), "STRASSE ʼN I");
    EXPECT_EQ(text(u""_ns->lowercaseString()), "");
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

TEST(NSString, knowsPathExtensions) {
    const std::pair<const char *, const char *> table[] = {
        {"a.png", "png"}, {"/tmp/a.tar.gz", "gz"}, {"/a.d/b", ""},
        {".png", ""},     {"/x/.png", ""},         {"png", ""},
        {"a.", ""},       {"a.b/", "b"},           {"", ""},
        {"///", ""},      {".x.png", "png"},       {"..", ""}};
    for (const auto &[path, extension] : table)
        EXPECT_EQ(text(string(path)->pathExtension()), extension) << path;
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

TEST(NSScanner, readsHexadecimalNumbers) {
    const auto scan = [](const char *units) {
        const auto scanner = make<NSScanner>(string(units));
        const auto value = scanner->scanHexInt();
        return (value ? std::to_string(*value) : "none") + " at " + std::to_string(scanner->scanLocation());
    };
    EXPECT_EQ(scan("1F"), "31 at 2");
    EXPECT_EQ(scan(" \n0X1fg"), "31 at 6");
    EXPECT_EQ(scan("0xFFFFFFFF"), "4294967295 at 10");
    EXPECT_EQ(scan("0x1000000001 "), "4294967295 at 12");
    EXPECT_EQ(scan("0x"), "none at 0");
    EXPECT_EQ(scan("-1"), "none at 0");
    EXPECT_EQ(scan("  "), "none at 0");
    const auto scanner = make<NSScanner>(u"a 0xB"_ns);
    EXPECT_EQ(scanner->scanHexInt(), 10u);
    EXPECT_EQ(scanner->scanHexInt(), 11u);
    EXPECT_EQ(scanner->scanHexInt(), std::nullopt);
}
