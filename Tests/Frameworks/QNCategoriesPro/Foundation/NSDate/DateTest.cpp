// Dates: components, arithmetic, texts and back; what is read fast beside ICU.
#include "Frameworks/QNCategoriesPro/DateFromLengthTable.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDate/NSDate+QNCommon.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Foundation/Dates/FixedDatePattern.h"
#include "Platform/Foundation/Dates/NSCalendar.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Dates/NSDateFormatter.h"
#include "Platform/Foundation/Dates/NSISO8601DateFormatter.h"
#include "Platform/Foundation/Text/NSLocale.h"
#include "Tests/Support/LocaleScope.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"
#include "Tests/Support/PlainLocale.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TextTable.h"
#include "Tests/Support/TimeZoneScope.h"
#include "Tests/Support/Words.h"

#include <cmath>
#include <unicode/udat.h>

namespace {

constexpr double sample = 1390220688; // 2014-01-20 12:24:48 UTC, a Monday

Ref<NSDate> at(double since1970) {
    return NSDate::dateWithTimeIntervalSince1970(since1970);
}

/// Seconds since 1970; NaN for none, which equals nothing.
double since1970(const Ref<NSDate> &date) {
    return date ? date->timeIntervalSince1970() : NAN;
}

/// The seconds since 1970 as a table has them, or "no date".
void expectSame(const Ref<NSDate> &date, const std::string &seconds, const std::string &written) {
    if (seconds == "no date")
        EXPECT_EQ(date, nullptr) << written;
    else
        EXPECT_EQ(since1970(date), plainDouble(seconds)) << written;
}

/// By the current locale and time zone, or "(none)".
std::string shown(const Ref<NSDate> &date, std::string_view format = "yyyy-MM-dd HH:mm:ss") {
    return text(qn::stringWithFormat(date, string(format)));
}

Ref<NSTimeZone> zoneNamed(std::string_view name) {
    return NSTimeZone::timeZoneWithName(string(name));
}

/// ICU itself, in English for machines.
class ICU {
public:
    ICU(const std::u16string &pattern, std::u16string_view zone)
        : format_(udat_open(UDAT_PATTERN, UDAT_PATTERN, "en_US_POSIX", zone.data(), lengthOf(zone),
                            pattern.data(), lengthOf(pattern), &status_),
                  udat_close) {}

    std::u16string write(double milliseconds) {
        char16_t text[256];
        udat_setLenient(format_.get(), true);
        const auto length = udat_format(format_.get(), milliseconds, text, 256, nullptr, &status_);
        return {text, static_cast<std::size_t>(length)};
    }
    /// Seconds since 1970; NaN for what is no date from its first to its last character.
    double read(std::u16string_view text) {
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t end = 0;
        udat_setLenient(format_.get(), false);
        const double milliseconds = udat_parse(format_.get(), text.data(), lengthOf(text), &end, &status);
        return U_SUCCESS(status) && end == lengthOf(text) ? milliseconds / 1000 : NAN;
    }

private:
    static std::int32_t lengthOf(std::u16string_view text) { return static_cast<std::int32_t>(text.size()); }

    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<UDateFormat, decltype(&udat_close)> format_;
};

/// English for machines.
NSDateFormatter formatter(const std::u16string &pattern, const char16_t *zone) {
    return NSDateFormatter(make<NSString>(pattern), NSLocale::posixLocale(),
                           NSTimeZone::timeZoneWithName(make<NSString>(zone)));
}

class GermanDates : public testing::Test {
    const LocaleScope german_{"de_DE"};
    const TimeZoneScope berlin_{u"Europe/Berlin"};
};

class RandomDates : public Random {
public:
    using Random::Random;

    /// Whole milliseconds of the years so far from 1970.
    double milliseconds(double years) {
        constexpr double year = 31556952000;
        return std::floor((static_cast<double>((*this)()) / 0x1p63 - 1) * years * year);
    }
    /// Year, month, day and some of the other fields of a fixed pattern in random order, with text between.
    std::u16string fixedPattern() {
        static constexpr std::u16string_view texts[] = {
            u"-",   u":", u" ",  u".", u"/", u"'T'", u"'e'",  u"",     u"'x'", u"年", u"'day'",
            u"'Z'", u"∞", u"  ", u"+", u"_", u"'é'", u"'ch'", u"'.'Z", u"Z ",  u","};
        std::vector<std::u16string> fields = {u"yyyy", below(4) ? u"MM" : u"MMM", u"dd"};
        for (const auto *field : {u"HH", u"mm", u"ss", u"SSS", u"EEE"})
            if (below(2))
                fields.emplace_back(field);
        std::shuffle(fields.begin(), fields.end(), *this);
        std::u16string pattern;
        for (const auto &field : fields)
            pattern.append(field).append(below(3) ? u"-" : of(texts));
        return pattern;
    }
};

} // namespace

TEST(DateWithString, knowsEveryLength) {
    const LocaleScope thai("th_TH");
    const TimeZoneScope tokyo(u"Asia/Tokyo");
    for (const auto &[written, seconds] : rowsOf(ZK_TABLES "/Foundation/NSDate/Dates.txt"))
        expectSame(qn::dateWithString(string(written)), seconds, written);
    EXPECT_FALSE(qn::dateWithString(u""_ns) || qn::dateWithString(nullptr));
    EXPECT_EQ(qn::dateFromLengthTable(nullptr), nullptr);
    const auto internet = make<NSISO8601DateFormatter>();
    EXPECT_EQ(since1970(internet->dateFromString(u"2014-01-20T13:24:48+01:00"_ns)), sample);
    for (const char *no : {"2014-01-20T12:24:48", "2014-01-20 12:24:48Z", "2014-01-20T12:24:48.000Z",
                           "2014-1-20T12:24:48Z", "2014-01-20T12:24:48Z ", "2014-01-20T12:24:48+01"})
        EXPECT_EQ(internet->dateFromString(string(no)), nullptr) << no;
}

TEST(FixedDatePattern, readsWhatICUReads) {
    constexpr std::u16string_view characters = u"0123456789-+:. TZzJanMoxdy/,\t年٣";
    RandomDates random(4);
    int read = 0, patterns = 0;
    while (patterns < 200) {
        const auto pattern = random.fixedPattern();
        const auto fixed = FixedDatePattern::compile(pattern);
        patterns += fixed.has_value();
        const auto ours = formatter(pattern, u"GMT");
        ICU icu(pattern, u"GMT");
        for (int i = 0; i < 40 && fixed; ++i) {
            auto units = ours.stringFromDate(at(random.milliseconds(1900) / 1000))->units();
            for (auto changes = random.below(3); changes > 0; --changes)
                units.replace(random.below(units.size()), 1, random.below(2), random.of(characters));
            const double expected = icu.read(units);
            const auto date = ours.dateFromString(make<NSString>(units));
            ASSERT_EQ(date == nullptr, std::isnan(expected))
                << text(make<NSString>(pattern + u" | " + units));
            const auto parsed = fixed->parse(units);
            read += parsed.has_value();
            ASSERT_TRUE(!parsed || std::abs(*parsed - expected) < 1e-4)
                << text(make<NSString>(pattern + u" | " + units));
            ASSERT_TRUE(!date || std::abs(since1970(date) - expected) < 1e-3)
                << text(make<NSString>(pattern + u" | " + units));
        }
    }
    EXPECT_GT(read, 2000);
    for (const char16_t *no :
         {u"", u"yyyy-MM", u"yy-MM-dd", u"yyyy-MM-dd hh", u"yyyy-MM-dd'T", u"yyyy-MM-dd''", u"Zyyyy-MM-dd",
          u"yyyy'1'MM-dd", u"yyyy-MMMM-dd", u"yyyy'E'MM-dd", u"yyyy-MMM'ch'-dd"})
        EXPECT_FALSE(FixedDatePattern::compile(no));
}

TEST(FixedDatePattern, writesWhatICUWrites) {
    RandomDates random(5);
    for (const char16_t *zone :
         {u"GMT", u"Europe/Berlin", u"America/St_Johns", u"Asia/Kathmandu", u"Pacific/Apia"})
        for (const std::u16string pattern : {u"yyyy-MM-dd'T'HH:mm:ssZ", u"yyyyMMddHHmmss.SSSZ"}) {
            const auto ours = formatter(pattern, zone);
            ICU icu(pattern, zone);
            for (int i = 0; i < 1000; ++i) {
                const double milliseconds = random.milliseconds(i % 2 ? 55 : 12000);
                const auto date = at(milliseconds / 1000 + (i % 3 ? 0.0004 : 0));
                ASSERT_EQ(ours.stringFromDate(date)->units(), icu.write(milliseconds)) << milliseconds;
            }
        }
}

TEST(DateTexts, areTheSameAgainWhenReadAndWritten) {
    constexpr std::u16string_view days[] = {u"yyyy-MM-dd", u"d. MMMM y", u"EEE, dd MMM y",
                                            u"yyyyMMdd",   u"y-DDD",     u"YYYY-'W'ww-e",
                                            u"u-MM-dd",    u"g",         u"y QQQ MM dd"};
    constexpr std::u16string_view times[] = {u"",           u" HH:mm:ss",         u" HH:mm:ss.SSS",
                                             u" HHmmssSSS", u" h:mm:ss.S a",      u" A",
                                             u" kk:mm",     u" K:mm:ss,SSSSSS a", u" ss.SSSSSSSSS HH:mm"};
    constexpr std::u16string_view zones[] = {u"", u"", u" Z", u" ZZZZZ", u" xxxx", u" VV", u" OOOO"};
    constexpr const char16_t *places[] = {u"GMT",          u"Europe/Berlin",       u"America/Sao_Paulo",
                                          u"Pacific/Apia", u"America/Mexico_City", u"Asia/Almaty",
                                          u"Africa/Cairo", u"America/Havana",      u"Europe/Dublin"};
    constexpr const char *locales[] = {"en_US_POSIX",     "en_US_POSIX",     "de_DE",
                                       "th_TH",           "fa_IR",           "ja_JP",
                                       "zh@numbers=hans", "he@numbers=hebr", "en@numbers=roman"};
    RandomDates random(6);
    for (int round = 0; round < 2000; ++round) {
        const auto pattern =
            std::u16string(random.of(days)).append(random.of(times)).append(random.of(zones));
        const NSDateFormatter formatter(make<NSString>(pattern), make<NSLocale>(random.of(locales)),
                                        NSTimeZone::timeZoneWithName(make<NSString>(random.of(places))));
        const auto written = formatter.stringFromDate(at(random.milliseconds(round % 3 ? 60 : 900) / 1000 +
                                                         static_cast<double>(random.below(2)) / 8192));
        const auto again = formatter.stringFromDate(formatter.dateFromString(written));
        ASSERT_EQ(text(again), text(written)) << round << " " << text(make<NSString>(pattern));
    }
}

TEST(DateTexts, surviveAnyPatternAndAnyText) {
    const auto pieces =
        words("y yyyy M MMMM dd HH mm ss SSS Z zzzz VV B QQQ YY w e A U r G ' '' 'x t : . - ∞ 0 "
              "2014 00000000000000000 4294969310 18446744073709551616 1e9 ٢٠١٤ 一 \u200F +01400 "
              "Europe/Berlin GMT+1 Jan Mon AM");
    const auto locales = words("en_US_POSIX de_DE ar_EG zh_CN@calendar=chinese en@numbers=roman ccp "
                               "he@calendar=hebrew zh@numbers=hant @@@ x-y-z_$$$ en@calendar=nowhere");
    RandomDates random(7);
    const auto any = [&] {
        std::u16string units;
        for (auto count = random.below(8); count > 0; --count) {
            const auto piece = random.oneIn(8)
                                   ? std::u16string(1, random.of(std::u16string_view(u" \n\xD83D")))
                                   : string(random.of(pieces))->units();
            for (auto times = random.below(10) ? 1 : random.below(60); times > 0; --times)
                units += piece;
        }
        return make<NSString>(units);
    };
    for (int round = 0; round < 1500; ++round) {
        const NSDateFormatter formatter(any(), make<NSLocale>(random.oneIn(12) ? "" : random.of(locales)),
                                        nullptr);
        const auto date = at(random.milliseconds(random.below(3) ? 100 : 1e9) / 1000);
        for (const auto &units : {any(), formatter.stringFromDate(date)}) {
            const auto read = formatter.dateFromString(units);
            ASSERT_TRUE(!read || std::isfinite(since1970(read))) << text(units);
        }
    }
    const auto longest = formatter(std::u16string(100000, u'y'), u"GMT");
    EXPECT_EQ(longest.dateFromString(longest.stringFromDate(at(0))), nullptr);
}

TEST(DateTexts, areReadByThesePatterns) {
    for (const auto &[given, seconds] : rowsOf(ZK_TABLES "/Foundation/NSDate/Patterns.txt")) {
        const auto cells = string(given)->componentsSeparatedByString(u" | "_ns);
        const auto cell = [&](NSUInteger index) {
            return as<NSString>(cells->objectAtIndex(index))->units();
        };
        expectSame(formatter(cell(1), cell(0).c_str()).dateFromString(make<NSString>(cell(2))), seconds,
                   given);
    }
}

TEST(DateTexts, areInTheSystemsTimeZones) {
    const LocaleScope english("en_US");
    constexpr const char *format = "dd/MM/yyyy HH:mm:ss";
    RandomDates random(8);
    for (const char *name :
         {"America/Mexico_City", "Africa/Cairo", "Asia/Almaty", "America/Nuuk", "America/Asuncion",
          "Asia/Gaza", "Africa/Casablanca", "Asia/Manila", "Europe/Berlin", "Pacific/Apia"}) {
        const EnvironmentScope library("TZ", name);
        ::tzset();
        NSTimeZone::setDefaultTimeZone(zoneNamed(name));
        for (int i = 0; i < 100; ++i) {
            const auto date = at(std::floor(random.milliseconds(100) / 1000));
            const auto time = static_cast<std::time_t>(since1970(date));
            std::tm broken{};
            ::localtime_r(&time, &broken);
            char expected[64];
            std::strftime(expected, sizeof expected, "%d/%m/%Y %H:%M:%S", &broken);
            ASSERT_EQ(shown(date, format), expected) << name << " " << time;
            ASSERT_EQ(qn::hour(date), broken.tm_hour) << name << " " << time;
            const auto read = qn::dateWithString(string(expected + (" " + std::string(name))),
                                                 u"dd/MM/yyyy HH:mm:ss VV"_ns, zoneNamed("GMT"), nullptr);
            ASSERT_EQ(shown(read, format), expected) << name;
        }
    }
    NSTimeZone::setDefaultTimeZone(nullptr);
}

TEST(CurrentCalendar, goesByTheRulesOfTheZoneNotByItsName) {
    for (const auto &[rules, hour] : {std::pair{"GMT+05:00", 5}, {"GMT-05:00", 19}}) {
        NSTimeZone::setDefaultTimeZone(make<NSTimeZone>(u"Home", zoneNamed(rules)->rules()));
        EXPECT_EQ(qn::hour(at(0)), hour);
    }
    NSTimeZone::setDefaultTimeZone(nullptr);
    const auto locale = NSLocale::currentLocale();
    EXPECT_THROW(make<NSCalendar>(nullptr, NSTimeZone::defaultTimeZone()), NSException);
    EXPECT_THROW(make<NSCalendar>(locale, nullptr), NSException);
}

TEST(Locale, isThatOfTheEnvironment) {
    const std::array<const char *, 6> table[] = {
        // LC_ALL, LC_TIME, LC_NUMERIC, LANG; what follows for dates, for numbers
        {nullptr, nullptr, nullptr, nullptr, "en_US", "en_US"},
        {"", "", "", "", "en_US", "en_US"},
        {"", "de_DE.UTF-8", nullptr, "fr_FR.UTF-8", "de_DE", "fr_FR"},
        {nullptr, "", "ja_JP", "fr_FR", "fr_FR", "ja_JP"},
        {"C.UTF-8", "de_DE", "de_DE", "fr_FR", "en_US", "en_US"},
        {nullptr, "POSIX", "sr_RS.UTF-8@latin", "de_DE@euro", "en_US", "sr_Latn_RS"},
        {nullptr, "zh_CN@calendar=chinese", nullptr, "de_DE@euro", "zh_CN@calendar=chinese", "de_DE"}};
    for (const auto &[ofAll, ofTime, ofNumbers, ofLanguage, dates, numbers] : table) {
        const EnvironmentScope all("LC_ALL", ofAll), time("LC_TIME", ofTime),
            numeric("LC_NUMERIC", ofNumbers), language("LANG", ofLanguage);
        EXPECT_EQ(NSLocaleCurrentIdentifier(NSLocaleCategory::Dates), dates);
        EXPECT_EQ(NSLocaleCurrentIdentifier(NSLocaleCategory::Numbers), numbers);
    }
}

TEST_F(GermanDates, followLocaleAndTimeZone) {
    EXPECT_EQ(shown(at(sample), "EEEE, d. MMMM yyyy HH:mm"), "Montag, 20. Januar 2014 13:24");
    EXPECT_EQ(since1970(qn::dateWithString(u"20. Januar 2014 13:24:48"_ns, u"d. MMMM yyyy HH:mm:ss"_ns)),
              sample);
    EXPECT_EQ(text(qn::stringWithFormat(at(sample), u"d MMM yyyy HH:mm"_ns, zoneNamed("Asia/Tokyo"),
                                        make<NSLocale>("th_TH"))),
              "20 ม.ค. 2557 21:24");
    for (const char *no : {"20. Januar 2014 13:24:48 ", "20. Januar 2014", "32. Januar 2014 13:24:48",
                           "30. März 2014 02:30:00", "x"})
        EXPECT_EQ(qn::dateWithString(string(no), u"d. MMMM yyyy HH:mm:ss"_ns), nullptr) << no;
    const std::string zeros(2000, '0');
    EXPECT_EQ(qn::dateWithISOFormatString(string(zeros + "2014-01-20T12:24:48Z")), nullptr) << "too long";
    EXPECT_FALSE(qn::stringWithFormat(nullptr, u"yyyy"_ns) || qn::stringWithFormat(at(NAN), u"yyyy"_ns) ||
                 qn::dateWithString(u"2014"_ns, nullptr) || qn::dateWithString(nullptr, u"yyyy"_ns) ||
                 zoneNamed("Europe/Nowhere"));
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
    EXPECT_EQ(since1970(qn::dateByAddingMonths(inLeapMonth, -1)), 1412204400) << "an hour of winter time";
}

TEST(DateComponents, countInTheYearsOfTheCalendar) {
    RandomDates random(9);
    for (const char *calendar : {"gregorian", "buddhist", "roc", "coptic", "ethiopic", "hebrew", "islamic",
                                 "indian", "persian", "chinese"}) {
        const LocaleScope german(("de_DE@calendar=" + std::string(calendar)).c_str());
        for (int i = 0; i < 300; ++i) {
            const auto date = at(random.milliseconds(1500) / 1000);
            const NSInteger sinceMonday = (qn::weekday(date) + 5) % 7;
            ASSERT_EQ(qn::yearForWeekOfYear(date), qn::year(qn::dateByAddingDays(date, 3 - sinceMonday)))
                << calendar << " " << since1970(date); // a week is of the year that has its Thursday
            ASSERT_EQ(qn::quarter(date), std::min<NSInteger>((qn::month(date) + 2) / 3, 4)) << calendar;
        }
    }
    const LocaleScope coptic("en_US@calendar=coptic");
    const TimeZoneScope greenwich(u"GMT");
    EXPECT_EQ(shown(at(1410000000), "M 'Q'QQ QQQ qqqq, h 'o''clock'"), "13 Q04 Q4 4th quarter, 10 o'clock");
    const LocaleScope indian("en_US@calendar=indian");
    const auto year0 = at(-59680000000);
    EXPECT_EQ(qn::year(year0), 0);
    EXPECT_TRUE(qn::isLeapYear(year0));
}

TEST_F(GermanDates, addByTheCalendarOrBySeconds) {
    const auto format = u"yyyy-MM-dd HH:mm:ss"_ns;
    using Adding = Ref<NSDate> (*)(const Ref<NSDate> &, NSInteger);
    const std::tuple<const char *, Adding, NSInteger, const char *> table[] = {
        {"2014-01-31 12:00:00", qn::dateByAddingMonths, 1, "2014-02-28 12:00:00"},
        {"2014-03-28 02:30:00", qn::dateByAddingMonths, -14, "2013-01-28 02:30:00"},
        {"2012-02-29 12:00:00", qn::dateByAddingYears, 1, "2013-02-28 12:00:00"},
        {"1582-01-01 12:00:00", qn::dateByAddingYears, 1, "1583-01-01 12:00:00"},
        {"2014-03-29 12:00:00", qn::dateByAddingWeeks, 1, "2014-04-05 12:00:00"},
        {"2014-03-29 12:00:00", qn::dateByAddingDays, 1, "2014-03-30 13:00:00"}}; // the clocks go forward
    for (const auto &[day, operation, count, expected] : table)
        EXPECT_EQ(shown(operation(qn::dateWithString(string(day), format), count)), expected);
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
        for (const NSInteger far :
             {INT64_MIN, INT64_MAX, INT64_MAX - 1, NSInteger{1} << 32, NSInteger{-400000000}})
            EXPECT_EQ(operation(at(0), far), nullptr) << far;
    }
}

TEST_F(GermanDates, areOfTodayFromMidnightToMidnight) {
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

TEST_F(GermanDates, areReadByManyThreadsAtOnce) {
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
