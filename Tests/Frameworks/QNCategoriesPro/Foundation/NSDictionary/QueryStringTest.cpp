// URL query strings.
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+QNURL.h"
#include "Tests/Support/Objects.h"

#include <cctype>
#include <gtest/gtest.h>

namespace {

/// A simple reference: the whole UTF-8 text, byte by byte.
std::string percentEncoded(const std::string &utf8) {
    std::string encoded;
    for (const char byte : utf8) {
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(byte)));
        const bool stays = byte > 0 && (std::isalnum(byte) ||
                                        std::string_view("-._~/?").find(byte) != std::string_view::npos);
        encoded += stays ? std::string(1, byte) : escape;
    }
    return encoded;
}

std::string escaped(const std::u16string &units) {
    return QNPercentEscapedStringFromString(make<NSString>(units))->utf8();
}

std::string query(NSDictionary::Entries entries) {
    return QNQueryStringFromParameters(dictionaryOf(entries))->utf8();
}

std::string pairs(const id &key, const id &value) {
    return joined(QNQueryStringPairsFromKeyAndValue(key, value));
}

} // namespace

TEST(QueryString, escapesAllButWhatMayStay) {
    for (char16_t unit = 0; unit < 0x100; ++unit)
        EXPECT_EQ(escaped({unit}), percentEncoded(make<NSString>(std::u16string{unit})->utf8())) << int{unit};
    EXPECT_EQ(QNPercentEscapedStringFromString(nullptr)->utf8(), "");
}

TEST(QueryString, cutsNothing) {
    const std::u16string combining = u"e" + std::u16string(120, u'\u0301');
    const std::u16string pieces[] = {
        u"é",    u"😀", u"e\u0301\u0323", u"👨\u200D👩\u200D👧", u"🇩🇪🇫🇷", u"\u1112\u1161\u11AB",
        u"\r\n", u"%", combining};
    for (const std::u16string &piece : pieces)
        for (std::size_t before = 40; before <= 105; ++before) {
            const auto units = std::u16string(before, u'a') + piece + std::u16string(60, u'&');
            ASSERT_EQ(escaped(units), percentEncoded(make<NSString>(units)->utf8())) << before;
        }
    std::u16string flags;
    for (int i = 0; i < 1'000'000; ++i)
        flags += u"\U0001F1E9";
    EXPECT_EQ(escaped(flags).size(), 12u * 1'000'000);
    for (std::size_t before = 45; before <= 55; ++before)
        for (const char16_t lone : {char16_t{0xD83D}, char16_t{0xDE00}})
            EXPECT_EQ(raised([&] { return escaped(std::u16string(before, u'a') + lone + u"b"); }),
                      NSInvalidArgumentException)
                << before;
}

TEST(QueryString, nestsParameters) {
    EXPECT_EQ(query({{u"b"_ns, number(1)},
                     {u"a"_ns, dictionaryOf({{u"y"_ns, u"2"_ns}, {u"x"_ns, arrayOf({u"p"_ns, u"q"_ns})}})},
                     {u"c"_ns, NSNull::null()}}),
              "a%5Bx%5D%5B%5D=p&a%5Bx%5D%5B%5D=q&a%5By%5D=2&b=1&c");
    EXPECT_EQ(query({{u"k"_ns, arrayOf({})}, {u"l"_ns, NSDictionary::dictionary()}}), "");
    EXPECT_EQ(query({{u"k"_ns, arrayOf({arrayOf({u"b"_ns, u"a"_ns}), NSNull::null()})}}),
              "k%5B%5D%5B%5D=b&k%5B%5D%5B%5D=a&k%5B%5D");
    EXPECT_EQ(query({{u"b"_ns, u"1"_ns}, {u"B"_ns, u"2"_ns}, {u"a b"_ns, u"ü"_ns}}), "B=2&a%20b=%C3%BC&b=1");
    EXPECT_EQ(query({{u"s"_ns, setOf({u"b"_ns, number(10), number(9), u"a"_ns})}}), "s=10&s=9&s=a&s=b");
    EXPECT_EQ(query({{number(10), u"x"_ns}, {number(9), number(true)}}), "10=x&9=1");
    const auto parameters = dictionaryOf({{u"k"_ns, u"v"_ns}});
    EXPECT_EQ(qn::queryStringFromParameters(parameters)->utf8(), "k=v");
    EXPECT_EQ(qn::queryStringFromParameters(nullptr), nullptr);
    EXPECT_EQ(QNQueryStringFromParameters(nullptr)->utf8(), "");
}

TEST(QueryString, pairsOfOddKeysAndValues) {
    EXPECT_EQ(pairs(nullptr, arrayOf({u"v"_ns, NSNull::null()})), "%28null%29%5B%5D=v %28null%29%5B%5D");
    EXPECT_EQ(pairs(nullptr, setOf({u"v"_ns})), "");
    EXPECT_EQ(QNQueryStringPairsFromKeyAndValue(nullptr, u"v"_ns)->count(), 1u) << "the empty text";
    EXPECT_EQ(pairs(u"k"_ns, NSNull::null()), "k");
    EXPECT_EQ(pairs(u"k"_ns, nullptr), "k=");
    EXPECT_EQ(pairs(number(5), dictionaryOf({{u"a"_ns, u"b"_ns}})), "5%5Ba%5D=b");
}
