// Dates: components, arithmetic, texts and back; what is read fast beside ICU.
#include "Frameworks/QNCategoriesPro/Foundation/NSDate/DateFromLengthTable.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDate/NSDate+QNCommon.h"
#include "Platform/Dispatch/ManualClock.h"
#include "Platform/Foundation/FixedDatePattern.h"
#include "Platform/Foundation/NSCalendar.h"
#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSDateFormatter.h"
#include "Platform/Foundation/NSISO8601DateFormatter.h"
#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSTimeZone.h"
#include "Tests/Frameworks/LocaleScope.h"
#include "Tests/Frameworks/TimeZoneScope.h"
#include "Tests/Platform/Dispatch/OnThreads.h"
#include "Tests/Platform/Foundation/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

constexpr double sample = 1390220688; // 2014-01-20 12:24:48 UTC, a Monday

Ref<NSDate> at(double since1970) {
    return NSDate::dateWithTimeIntervalSince1970(since1970);
}

/// Seconds since 1970; NaN for none, which equals nothing.
double since1970(const Ref<NSDate> &date) {
    return date ? date->timeIntervalSince1970() : NAN;
}

/// "2014-01-20 12:24:48" in the zone, or "(none)".
std::string shown(const Ref<NSDate> &date, const char *zone = "GMT") {
    return text(qn::stringWithFormat(date, u"yyyy-MM-dd HH:mm:ss"_ns,
                                     NSTimeZone::timeZoneWithName(string(zone)), NSLocale::posixLocale()));
}

/// Two formatters of English for machines: of the pattern, and of the pattern with a quotation mark in the
/// end, which leaves the work to ICU.
std::pair<NSDateFormatter, NSDateFormatter> fastAndICU(const std::u16string &pattern, const char16_t *zone) {
    const auto timeZone = NSTimeZone::timeZoneWithName(make<NSString>(zone));
    const auto locale = NSLocale::posixLocale();
    return {std::piecewise_construct, std::tuple(make<NSString>(pattern), locale, timeZone),
            std::tuple(make<NSString>(pattern + u"''"), locale, timeZone)};
}

} // namespace

TEST(DateWithString, knowsEveryLength) {
    const LocaleScope thai("th_TH");
    const TimeZoneScope tokyo(u"Asia/Tokyo");
    const std::pair<const char *, double> table[] = {{"2014-01-20", sample - 44688},
                                                     {"2014-01-20T12:24:48", sample},
                                                     {"2014-01-20 12:24:48", sample},
                                                     {"2014-01-20T12:24:48.125", sample + 0.125},
                                                     {"2014-01-20 12:24:48.125", sample + 0.125},
                                                     {"2014-01-20T12:24:48Z", sample},
                                                     {"2014-01-20T13:24:48+0100", sample},
                                                     {"2014-01-20T12:24:48.125Z", sample + 0.125},
                                                     {"2014-01-20T06:54:48-05:30", sample},
                                                     {"2014-01-20T13:24:48.125+0100", sample + 0.125},
                                                     {"2014-01-20T13:24:48.125+01:00", sample + 0.125},
                                                     {"Mon Jan 20 12:24:48 +0000 2014", sample},
                                                     {"Mon Jan 20 13:24:48.125 +0100 2014", sample + 0.125},
                                                     {"2012-02-29", 1330473600},
                                                     {"1969-12-31 23:59:59.500", -0.5},
                                                     {"0001-01-01", -62135769600}, // of the Julian calendar
                                                     {"1582-10-15", -12219292800},
                                                     {"1500-02-29T00:00:00Z", -14825894400},
                                                     {"9999-12-31T23:59:59Z", 253402300799}};
    for (const auto &[written, seconds] : table)
        EXPECT_EQ(since1970(qn::dateWithString(string(written))), seconds) << written;
    for (const char *no :
         {"", "2014", "2014-02-30", "2013-02-29", "1900-02-29", "2014-13-01", "2014-00-10", "2014-01-32",
          "0000-01-01", "2014-01-20x12:24:48", "2014-01-20T24:00:00Z", "2014-01-20T12:60:00",
          "2014-01-20T12:24:48+2400", "Mon Foo 20 12:24:48 +0000 2014", "Mon Jan 20 13:24:48.1255 +0100 2014",
          "2014-01-20T12:24:48.125 GMT+01:00"})
        EXPECT_EQ(qn::dateWithString(string(no)), nullptr) << no;
    EXPECT_EQ(qn::dateWithString(nullptr), nullptr);
    EXPECT_EQ(qn::dateFromLengthTable(nullptr), nullptr);
    const auto internet = make<NSISO8601DateFormatter>();
    EXPECT_EQ(since1970(internet->dateFromString(u"2014-01-20T13:24:48+01:00"_ns)), sample);
    for (const char *no : {"2014-01-20T12:24:48", "2014-01-20 12:24:48Z", "2014-01-20T12:24:48.000Z",
                           "2014-1-20T12:24:48Z", "2014-01-20T12:24:48Z ", "2014-01-20T12:24:48+01"})
        EXPECT_EQ(internet->dateFromString(string(no)), nullptr) << no;
}

TEST(FixedDatePattern, readsWhatICUReads) {
    const LocaleScope thai("th_TH");
    for (const std::u16string pattern : {u"yyyy-MM-dd", u"yyyy-MM-dd'T'HH:mm:ssZ", u"yyyy-MM-dd HH:mm:ss.SSS",
                                         u"EEE MMM dd HH:mm:ss Z yyyy", u"yyyyMMddHHmmss"}) {
        const auto fixed = FixedDatePattern::compile(pattern);
        ASSERT_TRUE(fixed);
        const auto [fast, icu] = fastAndICU(pattern, u"GMT");
        std::mt19937_64 random(4);
        const std::u16string characters = u"0123456789-+:. TZzJanMo";
        int read = 0;
        for (int i = 0; i < 4000; ++i) {
            const auto milliseconds = static_cast<std::int64_t>(random() % 315537897600000) - 62135596800000;
            auto units = fast.stringFromDate(at(static_cast<double>(milliseconds) / 1000))->units();
            for (auto changes = random() % 3; changes > 0; --changes)
                units[random() % units.size()] = characters[random() % characters.size()];
            const auto expected = icu.dateFromString(make<NSString>(units + u"'"));
            const auto date = fast.dateFromString(make<NSString>(units));
            ASSERT_TRUE(date ? date->isEqual(expected) : !expected) << text(make<NSString>(units));
            const auto parsed = fixed->parse(units);
            ASSERT_TRUE(!parsed || at(*parsed)->isEqual(expected)) << text(make<NSString>(units));
            read += parsed.has_value();
        }
        EXPECT_GT(read, 1000);
    }
    for (const char16_t *no : {u"", u"yyyy-MM", u"yy-MM-dd", u"yyyy-MM-dd hh", u"yyyy-MM-dd'T",
                               u"yyyy-MM-dd''", u"Zyyyy-MM-dd", u"yyyy'1'MM-dd", u"yyyy-MMMM-dd"})
        EXPECT_FALSE(FixedDatePattern::compile(no));
}

TEST(FixedDatePattern, writesWhatICUWrites) {
    std::mt19937_64 random(5);
    for (const char16_t *zone :
         {u"GMT", u"Europe/Berlin", u"America/St_Johns", u"Asia/Kathmandu", u"Pacific/Apia"})
        for (const std::u16string pattern : {u"yyyy-MM-dd'T'HH:mm:ssZ", u"yyyyMMddHHmmss.SSSZ"}) {
            const auto [fast, icu] = fastAndICU(pattern, zone);
            for (int i = 0; i < 1000; ++i) {
                const auto milliseconds =
                    static_cast<std::int64_t>(random() % 400000000000000) - 80000000000000;
                const auto date = at(static_cast<double>(milliseconds) / 1000 + (i % 2 ? 0.0004 : 0));
                ASSERT_EQ(text(fast.stringFromDate(date)) + "'", text(icu.stringFromDate(date)))
                    << milliseconds;
            }
        }
}

TEST(DateTexts, followLocaleAndTimeZone) {
    const LocaleScope german("de_DE");
    const TimeZoneScope berlin(u"Europe/Berlin");
    EXPECT_EQ(text(qn::stringWithFormat(at(sample), u"EEEE, d. MMMM yyyy HH:mm"_ns)),
              "Montag, 20. Januar 2014 13:24");
    EXPECT_EQ(since1970(qn::dateWithString(u"20. Januar 2014 13:24:48"_ns, u"d. MMMM yyyy HH:mm:ss"_ns)),
              sample);
    EXPECT_EQ(
        text(qn::stringWithFormat(at(sample), u"d MMM yyyy HH:mm"_ns,
                                  NSTimeZone::timeZoneWithName(u"Asia/Tokyo"_ns), make<NSLocale>("th_TH"))),
        "20 ม.ค. 2557 21:24");
    for (const char *no : {"20. Januar 2014 13:24:48 ", "20. Januar 2014", "32. Januar 2014 13:24:48",
                           "30. März 2014 02:30:00", "x"})
        EXPECT_EQ(qn::dateWithString(string(no), u"d. MMMM yyyy HH:mm:ss"_ns), nullptr) << no;
    const std::string zeros(2000, '0');
    EXPECT_EQ(qn::dateWithISOFormatString(string(zeros + "2014-01-20T12:24:48Z")), nullptr) << "too long";
    EXPECT_EQ(qn::stringWithFormat(nullptr, u"yyyy"_ns), nullptr);
    EXPECT_EQ(qn::stringWithFormat(at(NAN), u"yyyy"_ns), nullptr);
    EXPECT_EQ(qn::dateWithString(u"2014"_ns, nullptr), nullptr);
    EXPECT_EQ(qn::dateWithString(nullptr, u"yyyy"_ns), nullptr);
    EXPECT_EQ(NSTimeZone::timeZoneWithName(u"Europe/Nowhere"_ns), nullptr);
    EXPECT_EQ(text(qn::ISOFormatString(at(sample + 0.75))), "2014-01-20T13:24:48+0100");
    const TimeZoneScope newYork(u"America/New_York"); // the shared formatter follows
    EXPECT_EQ(text(qn::ISOFormatString(at(sample))), "2014-01-20T07:24:48-0500");
    for (const double seconds : {sample, 0.0, -1.0, -1e10, -6e10, 253402300799.0})
        EXPECT_EQ(since1970(qn::dateWithISOFormatString(qn::ISOFormatString(at(seconds + 0.25)))), seconds);
}

TEST(DateComponents, areThoseOfTheCurrentCalendar) {
    const TimeZoneScope berlin(u"Europe/Berlin");
    using Values = std::vector<NSInteger>;
    const auto all = [](const Ref<NSDate> &date) {
        Values values;
        for (const auto part : {qn::era, qn::year, qn::month, qn::day, qn::hour, qn::minute, qn::second,
                                qn::nanosecond, qn::weekday, qn::weekdayOrdinal, qn::weekOfMonth,
                                qn::weekOfYear, qn::yearForWeekOfYear, qn::quarter})
            values.push_back(part(date));
        return values;
    };
    {
        const LocaleScope german("de_DE");
        EXPECT_EQ(all(at(sample + 0.5)),
                  (Values{1, 2014, 1, 20, 13, 24, 48, 500000000, 2, 3, 4, 4, 2014, 1}));
        EXPECT_EQ(all(at(1419980400)), (Values{1, 2014, 12, 31, 0, 0, 0, 0, 4, 5, 5, 1, 2015, 4}));
        EXPECT_EQ(text(qn::timeZone(at(0))), "Europe/Berlin");
        EXPECT_EQ(text(qn::calendar(at(0))->calendarIdentifier()), "gregorian");
        EXPECT_EQ(qn::calendar(nullptr), nullptr);
        EXPECT_EQ(qn::nanosecond(NSDate::dateWithTimeIntervalSinceReferenceDate(-1e-20)), 0);
        for (const auto &date : {Ref<NSDate>(), at(NAN), at(INFINITY), at(-1e300), at(1.9e14)}) {
            EXPECT_EQ(all(date), Values(14));
            EXPECT_FALSE(qn::isLeapYear(date) || qn::isLeapMonth(date) || qn::isToday(date));
        }
        for (const auto &[day, leap] : {std::pair{"2000-07-01", true},
                                        {"2024-07-01", true},
                                        {"1900-07-01", false},
                                        {"2023-07-01", false}})
            EXPECT_EQ(qn::isLeapYear(qn::dateWithString(string(day))), leap) << day;
    }
    const LocaleScope thai("th_TH");
    EXPECT_EQ(qn::year(at(sample)), 2557);
    const LocaleScope chinese("zh_CN@calendar=chinese");
    const auto inLeapMonth = qn::dateWithString(u"2014-11-01"_ns); // the second ninth month
    EXPECT_EQ(qn::month(inLeapMonth), 9);
    EXPECT_TRUE(qn::calendar(inLeapMonth)->components(NSCalendarUnit::Month, inLeapMonth)->leapMonth);
    EXPECT_FALSE(qn::isLeapMonth(inLeapMonth)) << "asks for the quarter alone";
    EXPECT_EQ(shown(qn::dateByAddingMonths(inLeapMonth, -1)), "2014-10-01 23:00:00")
        << "an hour of winter time";
}

TEST(DateArithmetic, isOfTheCalendarOrOfSeconds) {
    const LocaleScope german("de_DE");
    const TimeZoneScope berlin(u"Europe/Berlin");
    const auto of = [](const char *day) {
        return qn::dateWithString(string(day), u"yyyy-MM-dd HH:mm:ss"_ns);
    };
    const auto local = [](const Ref<NSDate> &date) { return shown(date, "Europe/Berlin"); };
    EXPECT_EQ(local(qn::dateByAddingMonths(of("2014-01-31 12:00:00"), 1)), "2014-02-28 12:00:00");
    EXPECT_EQ(local(qn::dateByAddingMonths(of("2014-03-28 02:30:00"), -14)), "2013-01-28 02:30:00");
    EXPECT_EQ(local(qn::dateByAddingYears(of("2012-02-29 12:00:00"), 1)), "2013-02-28 12:00:00");
    EXPECT_EQ(local(qn::dateByAddingYears(of("1582-01-01 12:00:00"), 1)), "1583-01-01 12:00:00");
    const auto beforeJump = of("2014-03-29 12:00:00"); // clocks go forward in the night
    EXPECT_EQ(local(qn::dateByAddingWeeks(beforeJump, 1)), "2014-04-05 12:00:00");
    EXPECT_EQ(local(qn::dateByAddingDays(beforeJump, 1)), "2014-03-30 13:00:00");
    EXPECT_EQ(since1970(qn::dateByAddingMonths(at(sample + 1e-6), 0)), since1970(at(sample + 1e-6)));
    EXPECT_EQ(since1970(qn::dateByAddingDays(at(0.5), -1)), -86399.5);
    EXPECT_EQ(since1970(qn::dateByAddingHours(at(0), 2)), 7200);
    EXPECT_EQ(since1970(qn::dateByAddingMinutes(at(0), -2)), -120);
    EXPECT_EQ(since1970(qn::dateByAddingSeconds(at(0), 3)), 3);
    EXPECT_EQ(since1970(qn::dateByAddingDays(at(0), INT64_MAX)), -86400) << "wraps";
    EXPECT_EQ(qn::dateByAddingDays(nullptr, 1), nullptr);
    for (const auto operation : {qn::dateByAddingYears, qn::dateByAddingMonths, qn::dateByAddingWeeks}) {
        EXPECT_EQ(operation(nullptr, 1), nullptr);
        EXPECT_EQ(operation(at(NAN), 1), nullptr);
        EXPECT_GT(since1970(operation(at(0), 5000000)), 3e12);
        for (const NSInteger far : {INT64_MIN, INT64_MAX - 1, NSInteger{1} << 32, NSInteger{-400000000}})
            EXPECT_EQ(operation(at(0), far), nullptr) << far;
    }
}

TEST(Today, runsFromMidnightToMidnight) {
    const LocaleScope german("de_DE");
    const TimeZoneScope berlin(u"Europe/Berlin");
    constexpr double midnight = 1396134000; // 2014-03-30 00:00, a day of 23 hours
    for (const double now : {midnight, midnight + 23 * 3600 - 0.001}) {
        dispatch::ManualClock clock(now);
        const dispatch::ClockScope scope(clock);
        const auto which = [](double seconds) {
            const auto date = at(seconds);
            return std::string(qn::isYesterday(date) ? "y" : "") + (qn::isToday(date) ? "t" : "") +
                   (qn::isTomorrow(date) ? "m" : "");
        };
        const std::pair<double, const char *> table[] = {
            {-86400.01, ""}, {-86400, "y"},    {-0.01, "y"}, {0, "t"},         {82799.99, "t"},
            {82800, "m"},    {169199.99, "m"}, {169200, ""}, {365 * 86400, ""}};
        for (const auto &[offset, expected] : table)
            EXPECT_EQ(which(midnight + offset), expected) << offset;
    }
}

TEST(DateThreads, shareFormattersAndCalendar) {
    const LocaleScope german("de_DE");
    const TimeZoneScope berlin(u"Europe/Berlin");
    dispatch::onThreads(4, [](int thread) {
        for (int i = 0; i < 200; ++i) {
            const auto date = at(sample + thread * 1000 + i);
            const auto iso = qn::ISOFormatString(date);
            const auto slow = make<NSString>(u" " + iso->units()); // a blank that only ICU takes
            EXPECT_TRUE(date->isEqual(qn::dateWithISOFormatString(iso)));
            EXPECT_TRUE(date->isEqual(qn::dateWithISOFormatString(slow)));
            EXPECT_EQ(qn::minute(date), (24 + (48 + thread * 1000 + i) / 60) % 60);
        }
    });
}
