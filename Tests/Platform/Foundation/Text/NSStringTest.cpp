#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/Unicode.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/PlainLocale.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

#include <climits>
#include <cmath>

#include <iconv.h>

namespace {

/// By the C library; none unless all is valid UTF-8.
std::optional<std::u16string> decodedByC(std::string bytes) {
    static const iconv_t converter = iconv_open("UTF-16LE", "UTF-8");
    std::u16string units(bytes.size(), u'\0');
    char *from = bytes.data(), *to = reinterpret_cast<char *>(units.data());
    std::size_t left = bytes.size(), room = 2 * units.size();
    iconv(converter, nullptr, nullptr, nullptr, nullptr); // from the start
    if (iconv(converter, &from, &left, &to, &room) != 0)
        return std::nullopt;
    units.resize(units.size() - room / 2);
    return units;
}

void checkDecoding(const std::string &bytes, std::size_t &valid) {
    const auto expected = decodedByC(bytes), actual = unicode::utf16FromUTF8(bytes);
    ASSERT_EQ(actual, expected) << testing::PrintToString(bytes);
    if (actual) {
        ++valid;
        ASSERT_EQ(unicode::utf8FromUTF16(*actual), bytes);
    } else {
        std::u16string shown;
        unicode::appendUTF16(shown, bytes);
        ASSERT_NE(shown.find(u'\uFFFD'), std::u16string::npos);
    }
}

} // namespace

TEST(Unicode, decodesExactlyWhatIsValid) {
    std::size_t valid = 0;
    const std::string borders("\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xFF", 12);
    for (int first = 0; first < 256; ++first) {
        const std::string one(1, static_cast<char>(first));
        checkDecoding(one, valid);
        for (int second = 0; second < 256; ++second)
            checkDecoding(one + static_cast<char>(second), valid);
        for (const char second : borders)
            for (const char third : borders) {
                checkDecoding(one + second + third, valid);
                for (const char fourth : first >= 0xE0 ? borders : "")
                    checkDecoding(one + second + third + fourth, valid);
            }
    }
    EXPECT_GT(valid, 20000u);
}

TEST(Unicode, encodesEveryUnitAndPair) {
    const auto isHigh = [](unsigned unit) { return unit >= 0xD800 && unit < 0xDC00; };
    const auto isLow = [](unsigned unit) { return unit >= 0xDC00 && unit < 0xE000; };
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const std::u16string text(1, static_cast<char16_t>(unit));
        const auto bytes = unicode::utf8FromUTF16(text);
        ASSERT_EQ(bytes.has_value(), !isHigh(unit) && !isLow(unit)) << unit;
        std::string shown;
        unicode::appendUTF8(shown, text);
        ASSERT_EQ(decodedByC(shown), bytes ? text : u"\uFFFD") << unit;
    }
    for (const unsigned first : {0x41u, 0xD7FFu, 0xD800u, 0xDBFFu, 0xDC00u, 0xDFFFu, 0xE000u})
        for (const unsigned second : {0x41u, 0xD800u, 0xDBFFu, 0xDC00u, 0xDFFFu, 0xFFFFu}) {
            const std::u16string text = {static_cast<char16_t>(first), static_cast<char16_t>(second)};
            const bool alone = isLow(first) || isHigh(second) || isHigh(first) != isLow(second);
            const auto bytes = unicode::utf8FromUTF16(text);
            ASSERT_EQ(bytes.has_value(), !alone) << first << " " << second;
            ASSERT_EQ(decodedByC(bytes.value_or("")), alone ? u"" : text);
        }
}

TEST(NSString, comesFromBytesAndGoesBack) {
    EXPECT_EQ(string("Grün 😀")->length(), 7u);
    EXPECT_EQ(string("\xC3"), nullptr);
    EXPECT_EQ(string(std::string_view("a\0b", 3))->length(), 3u);
    EXPECT_EQ(text(NSString::stringWithASCIIString("abc")), "abc");
    EXPECT_TRUE(!NSString::stringWithASCIIString("\x80") && !NSString::stringWithASCIIString(nullptr));
    EXPECT_EQ(text(string("ü")->dataUsingUTF8()), "<c3bc>");
    const auto lone = make<NSString>(std::u16string(1, 0xD800));
    EXPECT_TRUE(!lone->dataUsingUTF8() && !lone->strictUTF8());
    EXPECT_EQ(lone->utf8(), "\uFFFD");
    const auto set = NSCharacterSet::characterSetWithCharactersInString(u"ab");
    const auto encoded = [&](std::u16string units) {
        return text(
            make<NSString>(std::move(units))->stringByAddingPercentEncodingWithAllowedCharacters(set));
    };
    EXPECT_EQ(encoded(u"aüb😀c"), "a%C3%BCb%F0%9F%98%80%63");
    EXPECT_EQ(encoded({0, u'a', 0xFFFF}), "%00a%EF%BF%BF");
    EXPECT_EQ(encoded({u'a', 0xD83D, u'a', 0xDE00}), "(none)") << "halves that only look like a pair";
}

// The C library's numbers are the same but for hexadecimal ones, infinity and what is none.
TEST(NSString, readsLeadingNumbers) {
    constexpr std::string_view marks = " \t\n++--..,eexE0012789";
    const auto edges = std::to_array<const char *>({"", "2147483647", "2147483648", "2147483649", "1e400",
                                                    "9223372036854775807", "9223372036854775808",
                                                    "9223372036854775809", "1e-400", "5e-324", "4294967297"});
    Random random(1024);
    for (int round = 0; round < 20000; ++round) {
        const std::string digits = random.text(marks, 4) + random.of(edges) + random.text(marks, 8);
        const auto number = string(digits);
        const auto wide = std::strtoll(digits.c_str(), nullptr, 10);
        ASSERT_EQ(number->integerValue(), wide) << digits;
        ASSERT_EQ(number->intValue(), std::clamp<long long>(wide, INT_MIN, INT_MAX)) << digits;
        ASSERT_TRUE(digits.find('x') != digits.npos || number->doubleValue() == plainDouble(digits))
            << digits;
    }
    for (const char *none : {"", "- 5", "--5", "0x10", "\u0663", "inf", "nan", "infinity", "abc"}) {
        EXPECT_EQ(string(none)->integerValue(), 0) << none;
        EXPECT_EQ(string(none)->doubleValue(), 0) << none;
    }
    const auto space = NSCharacterSet::whitespaceAndNewlineCharacterSet(); // \u00A0 and \u0085 as well
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const auto seven = make<NSString>(std::u16string{static_cast<char16_t>(unit), u'7'});
        const bool isSkipped = space->characterIsMember(static_cast<char16_t>(unit));
        const bool isSeven = isSkipped || unit == '0' || unit == '+';
        ASSERT_EQ(seven->integerValue() == 7, isSeven) << unit;
        ASSERT_EQ(seven->doubleValue() == 7, isSeven) << unit;
        ASSERT_EQ(text(NSDecimalNumber::decimalNumberWithString(seven)) == "7", isSeven) << unit;
    }
}

TEST(NSString, findsReplacesAndCuts) {
    const auto value = u"aXbXXc"_ns, x = u"X"_ns, empty = u""_ns;
    const auto replaced = [](const char *whole, const char *target, const char *replacement) {
        return text(string(whole)->stringByReplacingOccurrencesOfString(string(target), string(replacement)));
    };
    EXPECT_EQ(replaced("aXbXXc", "X", ""), "abc");
    EXPECT_EQ(replaced("aXb", "X", "XX"), "aXXb") << "what was put in is not searched";
    EXPECT_EQ(replaced("aaa", "aa", "b") + replaced("abc", "", "-") + replaced("", "a", "b"), "baabc");
    EXPECT_EQ(value->rangeOfString(u"XX"_ns), NSMakeRange(3, 2));
    EXPECT_EQ(value->rangeOfString(u"y"_ns), NSMakeRange(NSNotFound, 0));
    EXPECT_TRUE(value->containsString(value) && !value->containsString(empty));
    EXPECT_TRUE(value->hasPrefix(u"aX"_ns) && value->hasPrefix(empty) && value->hasSuffix(u"Xc"_ns));
    EXPECT_FALSE(value->hasPrefix(x) || x->hasSuffix(value));
    EXPECT_EQ(value->compare(x), NSComparisonResult::OrderedDescending);
    EXPECT_EQ(x->compare(u"XX"_ns), NSComparisonResult::OrderedAscending);
    EXPECT_EQ(x->compare(u"X"_ns), NSComparisonResult::OrderedSame);

    EXPECT_EQ(text(value->substringWithRange({1, 3})), "XbX");
    EXPECT_EQ(text(value->substringFromIndex(6)) + text(value->substringToIndex(0)), "");
    constexpr NSUInteger far = ~NSUInteger{0};
    for (const NSRange range : {NSRange{0, 7}, {7, 0}, {6, 1}, {1, far}, {far, 2}})
        EXPECT_EQ(raised([&] { value->substringWithRange(range); }), NSRangeException);
    for (const NSUInteger index : {NSUInteger{7}, far}) {
        EXPECT_EQ(raised([&] { value->substringFromIndex(index); }), NSRangeException);
        EXPECT_EQ(raised([&] { value->substringToIndex(index); }), NSRangeException);
        EXPECT_EQ(raised([&] { value->characterAtIndex(index - 1); }), NSRangeException);
    }
    EXPECT_EQ(raised([&] { value->rangeOfString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raised([&] { value->stringByAppendingString(nullptr); }), NSInvalidArgumentException);
}

TEST(NSMutableString, isEqualToButIndependentOfOthers) {
    const auto changing = make<NSMutableString>(u"toner");
    const auto fixed = u"toner"_ns;
    EXPECT_TRUE(changing->isEqual(fixed) && fixed->isEqual(changing) && changing->hash() == fixed->hash());
    EXPECT_FALSE(fixed->isEqual(u"Toner"_ns) || fixed->isEqual(NSData::data()) || fixed->isEqual(nullptr));
    EXPECT_EQ(fixed->copy(), fixed);

    const auto frozen = changing->copy(), taken = id(NSString::stringWithString(changing));
    const auto twin = as<NSMutableString>(changing->mutableCopy());
    EXPECT_EQ(as<NSMutableString>(frozen), nullptr);
    changing->appendString(changing);
    changing->replaceCharactersInRange({5, 5}, changing);
    EXPECT_EQ(text(changing), "tonertonertoner") << "its own text as an argument";
    twin->insertString(u"no "_ns, 0);
    twin->deleteCharactersInRange({7, 1});
    twin->appendFormat("(%d)", 3);
    EXPECT_EQ(text(frozen) + text(taken) + text(fixed), "tonertonertoner");
    EXPECT_EQ(raised([&] { twin->insertString(fixed, 11); }), NSRangeException);
    EXPECT_EQ(raised([&] { twin->deleteCharactersInRange({10, 1}); }), NSRangeException);
    EXPECT_EQ(raised([&] { twin->appendString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(text(twin), "no tone(3)") << "a refused change changes nothing";
    twin->setString(twin);
    EXPECT_EQ(twin->length(), 10u);
}
