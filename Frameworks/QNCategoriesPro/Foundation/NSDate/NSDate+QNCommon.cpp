#include "Frameworks/QNCategoriesPro/Foundation/NSDate/NSDate+QNCommon.h"

#include "Frameworks/QNCategoriesPro/DateFromLengthTable.h"
#include "Frameworks/QNCategoriesPro/ISODateFormatter.h"
#include "Platform/Foundation/Dates/NSCalendar.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Dates/NSDateFormatter.h"
#include "Platform/Foundation/Dates/NSISO8601DateFormatter.h"
#include "Platform/Foundation/Dates/NSTimeZone.h"
#include "Platform/Foundation/Text/NSLocale.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

/// One component of the date, asked for alone.
template <class Value>
Value component(const Ref<NSDate> &date, NSCalendarUnit unit, Value NSDateComponents::*value) {
    const auto components = NSCalendar::currentCalendar()->components(unit, date);
    return components ? (*components).*value : Value{};
}

template <NSInteger NSDateComponents::*unit>
Ref<NSDate> dateByAdding(const Ref<NSDate> &date, NSInteger count) {
    if (count == NSDateComponentUndefined) // out of the calendar's range, and no component can express it
        return nullptr;
    const auto components = make<NSDateComponents>();
    (*components).*unit = count;
    return NSCalendar::currentCalendar()->dateByAddingComponents(components, date);
}

Ref<NSDate> dateByAddingSpans(const Ref<NSDate> &date, NSInteger count, std::uint64_t seconds) {
    const auto product = static_cast<std::int64_t>(static_cast<std::uint64_t>(count) * seconds);
    return date ? NSDate::dateWithTimeIntervalSinceReferenceDate(date->timeIntervalSinceReferenceDate() +
                                                                 static_cast<NSTimeInterval>(product))
                : nullptr;
}

} // namespace

Ref<NSCalendar> qn::calendar(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Calendar, &NSDateComponents::calendar);
}

Ref<NSTimeZone> qn::timeZone(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::TimeZone, &NSDateComponents::timeZone);
}

NSInteger qn::era(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Era, &NSDateComponents::era);
}

NSInteger qn::year(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Year, &NSDateComponents::year);
}

NSInteger qn::month(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Month, &NSDateComponents::month);
}

NSInteger qn::day(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Day, &NSDateComponents::day);
}

NSInteger qn::hour(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Hour, &NSDateComponents::hour);
}

NSInteger qn::minute(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Minute, &NSDateComponents::minute);
}

NSInteger qn::second(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Second, &NSDateComponents::second);
}

NSInteger qn::nanosecond(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Nanosecond, &NSDateComponents::nanosecond);
}

NSInteger qn::weekday(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Weekday, &NSDateComponents::weekday);
}

NSInteger qn::weekdayOrdinal(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::WeekdayOrdinal, &NSDateComponents::weekdayOrdinal);
}

NSInteger qn::weekOfMonth(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::WeekOfMonth, &NSDateComponents::weekOfMonth);
}

NSInteger qn::weekOfYear(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::WeekOfYear, &NSDateComponents::weekOfYear);
}

NSInteger qn::yearForWeekOfYear(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::YearForWeekOfYear, &NSDateComponents::yearForWeekOfYear);
}

NSInteger qn::quarter(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Quarter, &NSDateComponents::quarter);
}

bool qn::isLeapMonth(const Ref<NSDate> &date) {
    return component(date, NSCalendarUnit::Quarter, &NSDateComponents::leapMonth);
}

bool qn::isLeapYear(const Ref<NSDate> &date) {
    const auto components = NSCalendar::currentCalendar()->components(NSCalendarUnit::Year, date);
    return components &&
           (components->year % 400 == 0 || (components->year % 4 == 0 && components->year % 100 != 0));
}

bool qn::isToday(const Ref<NSDate> &date) {
    return NSCalendar::currentCalendar()->isDateInToday(date);
}

bool qn::isYesterday(const Ref<NSDate> &date) {
    return NSCalendar::currentCalendar()->isDateInYesterday(date);
}

bool qn::isTomorrow(const Ref<NSDate> &date) {
    return NSCalendar::currentCalendar()->isDateInTomorrow(date);
}

Ref<NSDate> qn::dateByAddingYears(const Ref<NSDate> &date, NSInteger years) {
    return dateByAdding<&NSDateComponents::year>(date, years);
}

Ref<NSDate> qn::dateByAddingMonths(const Ref<NSDate> &date, NSInteger months) {
    return dateByAdding<&NSDateComponents::month>(date, months);
}

Ref<NSDate> qn::dateByAddingWeeks(const Ref<NSDate> &date, NSInteger weeks) {
    return dateByAdding<&NSDateComponents::weekOfYear>(date, weeks);
}

Ref<NSDate> qn::dateByAddingDays(const Ref<NSDate> &date, NSInteger days) {
    return dateByAddingSpans(date, days, 86400);
}

Ref<NSDate> qn::dateByAddingHours(const Ref<NSDate> &date, NSInteger hours) {
    return dateByAddingSpans(date, hours, 3600);
}

Ref<NSDate> qn::dateByAddingMinutes(const Ref<NSDate> &date, NSInteger minutes) {
    return dateByAddingSpans(date, minutes, 60);
}

Ref<NSDate> qn::dateByAddingSeconds(const Ref<NSDate> &date, NSInteger seconds) {
    return dateByAddingSpans(date, seconds, 1);
}

Ref<NSString> qn::stringWithFormat(const Ref<NSDate> &date, const Ref<NSString> &format) {
    return stringWithFormat(date, format, nullptr, nullptr);
}

Ref<NSString> qn::stringWithFormat(const Ref<NSDate> &date, const Ref<NSString> &format,
                                   const Ref<NSTimeZone> &timeZone, const Ref<NSLocale> &locale) {
    return make<NSDateFormatter>(format, locale, timeZone)->stringFromDate(date);
}

Ref<NSString> qn::ISOFormatString(const Ref<NSDate> &date) {
    return ISODateFormatter().stringFromDate(date);
}

Ref<NSDate> qn::dateWithString(const Ref<NSString> &text, const Ref<NSString> &format) {
    return dateWithString(text, format, nullptr, nullptr);
}

Ref<NSDate> qn::dateWithString(const Ref<NSString> &text, const Ref<NSString> &format,
                               const Ref<NSTimeZone> &timeZone, const Ref<NSLocale> &locale) {
    return make<NSDateFormatter>(format, locale, timeZone)->dateFromString(text);
}

Ref<NSDate> qn::dateWithISOFormatString(const Ref<NSString> &text) {
    return ISODateFormatter().dateFromString(text);
}

Ref<NSDate> qn::dateWithString(const Ref<NSString> &text) {
    const auto date = make<NSISO8601DateFormatter>()->dateFromString(text);
    return date ? date : dateFromLengthTable(text);
}
