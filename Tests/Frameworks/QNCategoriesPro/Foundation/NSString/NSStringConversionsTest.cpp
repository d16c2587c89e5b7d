// Escaping, versions, times, chance; what the table of conversions cannot say.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Tests/Support/LocaleScope.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TimeZoneScope.h"

namespace {

const auto lone = std::u16string(1, 0xD83D);

} // namespace

TEST(Trim, takesWhiteSpaceOfBothEnds) {
    EXPECT_EQ(text(qn::stringByTrim(u"\r\n a\tb \u3000"_ns)), "a\tb");
    EXPECT_EQ(text(qn::stringByTrim(u" \n"_ns)), "");
    EXPECT_EQ(qn::stringByTrim(nullptr), nullptr);
    EXPECT_TRUE(qn::isAllNum(u"0123456789"_ns) && qn::isAllNum(u""_ns));
    EXPECT_FALSE(qn::isAllNum(u"-1"_ns) || qn::isAllNum(u"1 "_ns) || qn::isAllNum(u"\u0663"_ns) ||
                 qn::isAllNum(nullptr));
    EXPECT_EQ(qn::rangeOfAll(u"a😀"_ns), NSMakeRange(0, 3));
    EXPECT_EQ(qn::rangeOfAll(nullptr), NSMakeRange(0, 0));
    EXPECT_EQ(text(qn::localized(u"No such key"_ns)), "No such key");
    EXPECT_EQ(qn::localized(nullptr), nullptr);
}

TEST(UrlEscaping, leavesWhatAQueryAllows) {
    const std::string inParts = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    const std::string inQueries = inParts + "!$&'()*+,;=:@/?";
    for (char unit = 0; unit < 0x7F; ++unit) {
        const std::string one(1, unit);
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned>(unit));
        EXPECT_EQ(text(qn::URLEncode(string(one))), inQueries.find(unit) == one.npos ? escape : one);
        EXPECT_EQ(text(qn::URLEntityEncode(string(one))), inParts.find(unit) == one.npos ? escape : one);
    }
    EXPECT_EQ(text(qn::URLEncode(u"激ü\u007F"_ns)), "%E6%BF%80%C3%BC%7F");
    EXPECT_EQ(text(qn::URLEncode(u""_ns)), "");
    EXPECT_EQ(qn::URLEncode(nullptr), nullptr);
}

TEST(UrlEscaping, goesBothWays) {
    for (const auto &same : {make<NSString>(u"a " + lone), Ref<NSString>()}) {
        EXPECT_EQ(qn::URLEntityEncode(same), same);
        EXPECT_EQ(qn::URLEntityDecode(same), same);
        EXPECT_EQ(qn::URLDecode(same), nullptr);
    }
    for (std::size_t length = 0; length < 300; ++length) { // over every border of the encoder's blocks
        const std::u16string letters(length, u'a'), euros(length, u'€');
        const std::string escapes = "%F0%9F%98%80e%CC%81";
        EXPECT_EQ(text(qn::URLEncode(make<NSString>(letters + u"😀e\u0301"))),
                  repeated("a", length) + escapes);
        EXPECT_EQ(text(qn::URLEncode(make<NSString>(euros + u"😀e\u0301"))),
                  repeated("%E2%82%AC", length) + escapes);
        EXPECT_EQ(qn::URLEncode(make<NSString>(letters + lone)), nullptr);
        EXPECT_EQ(qn::URLEncode(make<NSString>(letters + lone + letters)), nullptr);
    }
    const std::u16string_view alphabet[] = {u"%", u"4", u"1",      u"C3", u"%BC", u"%2",
                                            u"ü", u"😀", u"\u0301", u" ",  lone};
    Random random(3);
    for (int i = 0; i < 20000; ++i) {
        const auto units = random.text<std::u16string>(alphabet, 7);
        const auto value = make<NSString>(units);
        const bool whole = value->strictUTF8().has_value();
        for (const auto &encoded : {qn::URLEncode(value), qn::URLEntityEncode(value)})
            ASSERT_TRUE(!whole || qn::URLDecode(encoded)->units() == units);
        const auto decoded = qn::URLDecode(value);
        ASSERT_TRUE(whole || !decoded);
        ASSERT_TRUE(qn::URLEntityDecode(value)->isEqual(decoded ? decoded : value));
    }
}

TEST(CompareVesion, goesNumberByNumber) {
    const auto compare = [](const char *current, const char *later) {
        return qn::compareVesion(string(current), string(later));
    };
    EXPECT_EQ(compare("1.2", "1.10"), -1);
    EXPECT_EQ(compare("1.02.3", "1.2.3"), 0);
    EXPECT_EQ(compare("2", "1.9.1"), 1) << "decided before one ends";
    EXPECT_EQ(compare("1.2b", "1. 3"), -1);
    EXPECT_EQ(compare("99999999999999999999", "9223372036854775807"), 0) << "clamped";
    EXPECT_EQ(compare("", "1.0") + compare("1.0", "\n ") + qn::compareVesion(nullptr, u"1"_ns) +
                  qn::compareVesion(u"1"_ns, nullptr),
              0);
    EXPECT_EQ(raised([&] { return compare("1.2", "1.2.1"); }), NSRangeException);
    EXPECT_EQ(raised([&] { return compare("1.2.1", "1.2"); }), NSRangeException);
}

TEST(RandomTexts, keepTheirForm) {
    std::set<std::string> seen;
    std::set<char> characters;
    for (int i = 0; i < 1000; ++i) {
        const std::string uuid = text(qn::UUID()), word = text(qn::getRandomString());
        EXPECT_THAT(uuid, testing::MatchesRegex(
                              "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
        EXPECT_THAT(word, testing::MatchesRegex("[0-9A-Z]{4}"));
        seen.insert(uuid);
        characters.insert(word.begin(), word.end());
    }
    EXPECT_EQ(seen.size(), 1000u);
    EXPECT_EQ(characters.size(), 36u);
}

TEST(TimeStamp, countsMilliseconds) {
    dispatch::ManualClock clock(1390220688.75);
    const dispatch::ClockScope scope(clock);
    EXPECT_EQ(text(qn::timeStamp()), "1390220688750");
    clock.setWallTime(0.000999);
    EXPECT_EQ(text(qn::timeStamp()), "0");
}

TEST(TimeStampToString, followsLocaleAndTimeZone) {
    const LocaleScope german("de_DE");
    const TimeZoneScope shanghai(u"Asia/Shanghai");
    const auto show = [](const char *seconds, const char *format) {
        return text(qn::timeStampToString(string(seconds), string(format)));
    };
    EXPECT_EQ(show("1390220688", "yyyy-MM-dd HH:mm:ss"), "2014-01-20 20:24:48");
    EXPECT_EQ(show(" 1390220688.9x", "EEEE, d. MMMM yyyy"), "Montag, 20. Januar 2014");
    EXPECT_EQ(show("-1", "HH:mm:ss"), "07:59:59");
    EXPECT_EQ(show("abc", "yyyy"), "1970");
    EXPECT_EQ(show("0", ""), "");
    const std::string longText(200, '-');
    EXPECT_EQ(show("0", ("''" + longText).c_str()), "'" + longText);
    EXPECT_NE(show("99999999999999999999", "yyyy"), "(none)");
    EXPECT_NE(show("-99999999999999999999", "yyyy"), "(none)");
    EXPECT_EQ(qn::timeStampToString(u"0"_ns, nullptr), nullptr);
    EXPECT_EQ(qn::timeStampToString(nullptr, u"yyyy"_ns), nullptr);
}

TEST(MimeType, isBinaryForWhatIsNoText) {
    EXPECT_EQ(text(qn::MIMEType(make<NSString>(lone))), "application/octet-stream");
    EXPECT_EQ(qn::MIMEType(nullptr), nullptr);
}
