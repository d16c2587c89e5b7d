// Texts to numbers, in several locales.
#include "Frameworks/QNCategoriesPro/Foundation/NSNumber/NSNumber+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Tests/Support/LocaleScope.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"
#include "Tests/Support/Random.h"

#include <gtest/gtest.h>

namespace {

std::string read(const Ref<NSString> &value) {
    return typed(qn::numberWithString(value));
}
std::string read(std::string_view utf8) {
    return read(string(utf8));
}

} // namespace

TEST(NumberWithString, knowsWordsAndHexadecimal) {
    const LocaleScope locale("de_DE");
    const std::pair<const char *, Lines> table[] = {
        {"B 1", {"true", "YES"}}, {"B 0", {"False", "nO"}}, {"(none)", {"nil", "NULL", "<null>"}},
        {"q 31", {"0X1f"}},       {"q 1", {"0x1 2"}},       {"q 4294967295", {"0x100000000"}},
        {"q 0", {"0x0"}}};
    for (const auto &[expected, spellings] : table)
        for (const std::string &word : spellings)
            for (const std::string &padded : {word, " \n" + word + "\t ", "\u3000" + word})
                EXPECT_EQ(read(padded), expected) << padded;
    EXPECT_EQ(qn::numberWithString(u" yes"_ns), number(true)) << "the one boolean";
    EXPECT_EQ(qn::numberWithString(nullptr), nullptr);
    for (const char *no : {"", " ", "\r\n", "yes!", "truefalse", "y", "<nil>", "(null)", "0x", "0xg", "-0x10",
                           "+0x10", "0x-1", " -0xF"})
        EXPECT_EQ(read(no), "(none)") << no;
}

TEST(NumberWithString, followsTheCurrentLocale) {
    const char *none = "(none)";
    const std::array<const char *, 3> table[] = {
        // a text, what it is in English, and what in the other languages
        {"12,345", "q 12345", "d 12.345"},
        {"12.345", "d 12.345", "q 12345"},
        {"1,234.5", "d 1234.5", none},
        {"1.234,5", none, "d 1234.5"},
        {"1\u202F234,5", none, "d 1234.5"},
        {"١٢٬٣٤٥٫٥", none, "d 12345.5"},
        {"1.5", "d 1.5", none},
        {"1,5", none, "d 1.5"},
        {"2.0", "q 2", none}};
    for (const std::string locale : {"en_US", "en_US_POSIX", "de_DE", "fr_FR", "ar_EG"}) {
        SCOPED_TRACE(locale);
        const LocaleScope scope(locale.c_str());
        for (const auto &[number, english, other] : table)
            EXPECT_EQ(read(number), locale.starts_with("en") ? english : other) << number;
        for (const char *plain : {"42", "-5", "9223372036854775807", "-9223372036854775808"})
            EXPECT_EQ(read(plain), std::string("q ") + plain);
        EXPECT_EQ(read("٤٢"), "q 42");
        for (const char *no : {" 12", "12 ", "12x", "5%", "--5", "+", "abc"})
            EXPECT_EQ(read(no), none) << no;
    }
}

TEST(NumberWithString, givesADoubleBeyond64Bits) {
    const LocaleScope locale("en_US");
    EXPECT_EQ(read("9223372036854775808"), "d 9.223372036854776e+18");
    EXPECT_EQ(read("-9,223,372,036,854,775,809"), "d -9.223372036854776e+18");
    EXPECT_EQ(read("1E308"), "d 1e+308");
    for (const char *other : {"1E400", "-1E400", "NaN", "∞", "-∞"})
        EXPECT_EQ(read(other), "(none)") << other;
    EXPECT_EQ(qn::numberWithString(make<NSString>(std::u16string(4097, u'9'))), nullptr) << "takes too long";
}

TEST(NumberWithString, answersManyThreadsAtOnce) {
    const LocaleScope locale("en_US");
    dispatch::onThreads(4, [](int) {
        NSInteger sum = 0;
        for (int i = 0; i < 100; ++i)
            sum += qn::numberWithString(u"1,000"_ns)->integerValue() +
                   qn::numberWithString(u"yes"_ns)->intValue();
        EXPECT_EQ(sum, 100100);
    });
}

TEST(NumberWithString, standsAnyText) {
    const LocaleScope locale("en_US");
    constexpr std::u16string_view alphabet = u"0123456789.,-+eExXaf \t∞\u0663\xD83D\xDE00\u0301%yno";
    Random random(34);
    int numbers = 0;
    for (int i = 0; i < 20000; ++i) {
        const auto units = random.text<std::u16string>(alphabet, 9);
        const auto value = make<NSString>(units), padded = make<NSString>(units + u"\n");
        numbers += read(value) != "(none)";
        const bool hexadecimal = qn::stringByTrim(value)->lowercaseString()->hasPrefix(u"0x"_ns);
        ASSERT_TRUE(hexadecimal ? read(padded) == read(value)
                                : read(padded) == "(none)" || qn::numberWithString(padded)->isBoolean())
            << "only words may be padded";
    }
    EXPECT_GT(numbers, 1000);
}

TEST(NumberValues, areCutToTheirWidth) {
    const LocaleScope locale("en_US");
    constexpr std::uint64_t wide = 0xFFFFFFFFFFFFFFFF;
    const std::tuple<const char *, std::int64_t, std::uint64_t> table[] = {
        {"abc", 0, 0},
        {"yes", 1, 1},
        {"-1", -1, wide},
        {"65,664", 65664, 65664},
        {"18446744073709551616", INT64_MAX, wide},
        {"-18446744073709551616", INT64_MIN, 0x8000000000000000}};
    for (const auto &[digits, whole, wholeUnsigned] : table) {
        const auto areCut = [value = string(digits)](auto expected, auto... values) {
            return ((values(value) == static_cast<decltype(values(value))>(expected)) && ...);
        };
        EXPECT_TRUE(areCut(whole, qn::charValue, qn::unsignedCharValue, qn::shortValue,
                           qn::unsignedShortValue, qn::unsignedIntValue, qn::longValue))
            << digits;
        EXPECT_TRUE(
            areCut(wholeUnsigned, qn::unsignedLongValue, qn::unsignedLongLongValue, qn::unsignedIntegerValue))
            << digits;
    }
    EXPECT_EQ(qn::charValue(nullptr), 0);
}
