#include "Platform/Foundation/Dates/NSCalendar.h"

#include "Platform/Foundation/Dates/ICUTimeZone.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Dates/NSTimeZone.h"
#include "Platform/Foundation/Text/NSLocale.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Locking/Mutex.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unicode/calendar.h>

NS_IMPLEMENTATION(NSDateComponents) {
    cls.instantiate([] { return make<NSDateComponents>(); });
}
NS_IMPLEMENTATION(NSCalendar) {}

namespace {

using Calendar = std::unique_ptr<icu::Calendar>;
using Component = NSInteger NSDateComponents::*;

constexpr double farthest = 1.8e14; ///< seconds on both sides of 1970 that ICU's calendars reach

struct Unit {
    NSCalendarUnit unit;
    UCalendarDateFields field;
    Component component;
    NSInteger first = 0; ///< the component's value for ICU's 0
};

constexpr Unit units[] = {
    {NSCalendarUnit::Era, UCAL_ERA, &NSDateComponents::era},
    {NSCalendarUnit::Year, UCAL_YEAR, &NSDateComponents::year},
    {NSCalendarUnit::Month, UCAL_MONTH, &NSDateComponents::month, 1},
    {NSCalendarUnit::Day, UCAL_DATE, &NSDateComponents::day},
    {NSCalendarUnit::Hour, UCAL_HOUR_OF_DAY, &NSDateComponents::hour},
    {NSCalendarUnit::Minute, UCAL_MINUTE, &NSDateComponents::minute},
    {NSCalendarUnit::Second, UCAL_SECOND, &NSDateComponents::second},
    {NSCalendarUnit::Weekday, UCAL_DAY_OF_WEEK, &NSDateComponents::weekday},
    {NSCalendarUnit::WeekdayOrdinal, UCAL_DAY_OF_WEEK_IN_MONTH, &NSDateComponents::weekdayOrdinal},
    {NSCalendarUnit::WeekOfMonth, UCAL_WEEK_OF_MONTH, &NSDateComponents::weekOfMonth},
    {NSCalendarUnit::WeekOfYear, UCAL_WEEK_OF_YEAR, &NSDateComponents::weekOfYear},
};

struct Span {
    Component component;
    UCalendarDateFields field;
    double seconds; ///< approximate length, for the check of the range
};

constexpr Span spans[] = {
    {&NSDateComponents::year, UCAL_YEAR, 365 * 86400.0},
    {&NSDateComponents::month, UCAL_MONTH, 29 * 86400.0},
    {&NSDateComponents::weekOfYear, UCAL_WEEK_OF_YEAR, 7 * 86400.0},
};

/// A date as whole seconds since 1970 and the rest, which is at least 0 and below 1.
struct Instant {
    double whole;
    double fraction;
};

std::optional<Instant> instant(const Ref<NSDate> &date) {
    if (!date || !(std::abs(date->timeIntervalSince1970()) <= farthest))
        return std::nullopt;
    const double seconds = date->timeIntervalSinceReferenceDate();
    const double whole = std::floor(seconds), fraction = seconds - whole;
    const bool carry = fraction >= 1; // a tiny negative time makes a fraction that is rounded to 1
    return Instant{whole + carry + NSTimeIntervalSince1970, carry ? 0 : fraction};
}

/// A copy of the calendar, set to the time.
Calendar calendarAt(const icu::Calendar &calendar, const Instant &time) {
    UErrorCode status = U_ZERO_ERROR;
    Calendar copy(calendar.clone());
    copy->setTime(time.whole * 1000, status);
    return U_SUCCESS(status) ? std::move(copy) : nullptr;
}

NSInteger get(const Calendar &calendar, UCalendarDateFields field) {
    UErrorCode status = U_ZERO_ERROR;
    return calendar->get(field, status);
}

/// ICU counts the years of weeks without eras and, in some calendars, like the Gregorian one: so only the
/// difference to the day's year is used. When the week belongs to the next or previous year, that year's
/// number is the one seven days later or earlier.
NSInteger yearForWeekOfYear(const Calendar &calendar) {
    const auto years = get(calendar, UCAL_YEAR_WOY) - get(calendar, UCAL_EXTENDED_YEAR);
    if (years == 0)
        return get(calendar, UCAL_YEAR);
    UErrorCode status = U_ZERO_ERROR;
    const Calendar moved(calendar->clone());
    moved->add(UCAL_DATE, years < 0 ? -7 : 7, status);
    return get(moved, UCAL_YEAR);
}

/// Days counted from midnight to midnight in the calendar's time zone.
std::optional<NSInteger> dayNumber(const icu::Calendar &calendar, const Ref<NSDate> &date) {
    const auto time = instant(date);
    const auto at = time ? calendarAt(calendar, *time) : nullptr;
    return at ? std::optional(get(at, UCAL_JULIAN_DAY)) : std::nullopt;
}

icu::Calendar *open(const Ref<NSLocale> &locale, const Ref<NSTimeZone> &timeZone) {
    runtime::checkObject("NSCalendar initWithLocale:timeZone:", locale);
    runtime::checkObject("NSCalendar initWithLocale:timeZone:", timeZone);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale wanted(locale->localeIdentifier().c_str());
    return icu::Calendar::createInstance(ICUTimeZone(timeZone->nameUnits(), timeZone->rules()),
                                         wanted.isBogus() ? icu::Locale::getUS() : wanted, status);
}

} // namespace

struct NSCalendar::ICUCalendar {
    std::unique_ptr<const icu::Calendar> calendar;
};

NSCalendar::NSCalendar(const Ref<NSLocale> &locale, const Ref<NSTimeZone> &timeZone)
    : locale_(locale), timeZone_(timeZone),
      opened_(std::make_unique<ICUCalendar>(ICUCalendar{Calendar(open(locale, timeZone))})) {}

NSCalendar::~NSCalendar() = default;

Ref<NSCalendar> NSCalendar::currentCalendar() {
    struct Last {
        locking::Mutex lock;
        Ref<NSCalendar> calendar ZK_GUARDED_BY(lock);
    };
    static auto &last = *new Last; // opening one reads the locale's data and takes long
    const auto locale = NSLocale::currentLocale();
    const auto zone = NSTimeZone::defaultTimeZone();
    const locking::MutexLock guard(last.lock);
    auto &calendar = last.calendar;
    if (!calendar || !calendar->locale_->isEqual(locale) || calendar->timeZone_->rules() != zone->rules() ||
        !calendar->timeZone_->isEqual(zone))
        calendar = make<NSCalendar>(locale, zone);
    return calendar;
}

Ref<NSString> NSCalendar::calendarIdentifier() const {
    return NSString::stringWithASCIIString(opened_->calendar->getType());
}

Ref<NSDateComponents> NSCalendar::components(NSCalendarUnit wanted, const Ref<NSDate> &date) const {
    const auto time = instant(date);
    const auto calendar = time ? calendarAt(*opened_->calendar, *time) : nullptr;
    if (!calendar)
        return nullptr;
    auto made = make<NSDateComponents>();
    for (const Unit &unit : units)
        if (wanted & unit.unit)
            (*made).*unit.component = get(calendar, unit.field) + unit.first;
    made->leapMonth = (wanted & NSCalendarUnit::Month) && get(calendar, UCAL_IS_LEAP_MONTH) != 0;
    if (wanted & NSCalendarUnit::YearForWeekOfYear)
        made->yearForWeekOfYear = yearForWeekOfYear(calendar);
    if (wanted & NSCalendarUnit::Quarter)
        made->quarter = std::min<NSInteger>(get(calendar, UCAL_MONTH) / 3 + 1, 4);
    if (wanted & NSCalendarUnit::Nanosecond)
        made->nanosecond = static_cast<NSInteger>(time->fraction * 1e9);
    if (wanted & NSCalendarUnit::Calendar)
        made->calendar = std::static_pointer_cast<NSCalendar>(self());
    if (wanted & NSCalendarUnit::TimeZone)
        made->timeZone = timeZone_;
    return made;
}

Ref<NSDate> NSCalendar::dateByAddingComponents(const Ref<NSDateComponents> &components,
                                               const Ref<NSDate> &date) const {
    const auto time = instant(date);
    const auto calendar = time ? calendarAt(*opened_->calendar, *time) : nullptr;
    if (!components || !calendar)
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    double target = time->whole;
    for (const Span &span : spans) {
        const NSInteger amount = (*components).*span.component;
        if (amount == NSDateComponentUndefined)
            continue;
        target += static_cast<double>(amount) * span.seconds;
        if (!(std::abs(target) <= farthest))
            return nullptr;
        calendar->add(span.field, static_cast<std::int32_t>(amount), status);
    }
    const double moved = calendar->getTime(status) / 1000 - time->whole;
    return U_SUCCESS(status) ? NSDate::dateWithTimeIntervalSinceReferenceDate(
                                   date->timeIntervalSinceReferenceDate() + moved)
                             : nullptr;
}

bool NSCalendar::isDaysFromToday(const Ref<NSDate> &date, NSInteger days) const {
    const auto day = dayNumber(*opened_->calendar, date),
               today = dayNumber(*opened_->calendar, NSDate::date());
    return day && today && *day - *today == days;
}
