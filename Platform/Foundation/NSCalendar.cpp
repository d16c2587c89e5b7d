#include "Platform/Foundation/NSCalendar.h"

#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/NSTimeZone.h"
#include "Platform/Runtime/Class.h"

#include <cmath>
#include <mutex>
#include <optional>
#include <unicode/ucal.h>

NS_IMPLEMENTATION(NSDateComponents) {
    cls.instantiate([] { return make<NSDateComponents>(); });
}
NS_IMPLEMENTATION(NSCalendar) {}

namespace {

using Calendar = std::unique_ptr<UCalendar, decltype(&ucal_close)>;
using Component = NSInteger NSDateComponents::*;

constexpr double farthest = 1.8e14; ///< seconds on both sides of 1970 that ICU's calendars reach

struct Unit {
    NSCalendarUnit unit;
    UCalendarDateFields field;
    Component component;
    NSInteger first = 0; ///< what ICU's 0 is called
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
    {NSCalendarUnit::YearForWeekOfYear, UCAL_YEAR_WOY, &NSDateComponents::yearForWeekOfYear},
};

struct Span {
    Component component;
    UCalendarDateFields field;
    double seconds; ///< about
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
    const bool carry = fraction >= 1; // a tiny negative time, rounded
    return Instant{whole + carry + NSTimeIntervalSince1970, carry ? 0 : fraction};
}

/// A copy of the calendar, set to the time.
Calendar calendarAt(const UCalendar *calendar, const Instant &time) {
    UErrorCode status = U_ZERO_ERROR;
    Calendar copy(ucal_clone(calendar, &status), ucal_close);
    ucal_setMillis(copy.get(), time.whole * 1000, &status);
    return U_SUCCESS(status) ? std::move(copy) : Calendar(nullptr, ucal_close);
}

NSInteger get(const Calendar &calendar, UCalendarDateFields field) {
    UErrorCode status = U_ZERO_ERROR;
    return ucal_get(calendar.get(), field, &status);
}

/// Days counted from midnight to midnight in the calendar's time zone.
std::optional<NSInteger> dayNumber(const UCalendar *calendar, const Ref<NSDate> &date) {
    const auto time = instant(date);
    const auto at = time ? calendarAt(calendar, *time) : Calendar(nullptr, ucal_close);
    return at ? std::optional(get(at, UCAL_JULIAN_DAY)) : std::nullopt;
}

UCalendar *open(const Ref<NSLocale> &locale, const Ref<NSTimeZone> &timeZone) {
    UErrorCode status = U_ZERO_ERROR;
    const std::u16string &name = timeZone->nameUnits();
    return ucal_open(name.data(), static_cast<std::int32_t>(name.size()), locale->localeIdentifier().c_str(),
                     UCAL_DEFAULT, &status);
}

} // namespace

NSCalendar::NSCalendar(const Ref<NSLocale> &locale, const Ref<NSTimeZone> &timeZone)
    : locale_(locale), timeZone_(timeZone), calendar_(open(locale, timeZone)) {}

NSCalendar::~NSCalendar() {
    ucal_close(calendar_);
}

Ref<NSCalendar> NSCalendar::currentCalendar() {
    static auto &lock = *new std::mutex;
    static auto &last = *new Ref<NSCalendar>; // opening one reads the locale's data and takes long
    const auto locale = NSLocale::currentLocale();
    const auto zone = NSTimeZone::defaultTimeZone();
    const std::scoped_lock guard(lock);
    if (!last || !last->locale_->isEqual(locale) || !last->timeZone_->isEqual(zone))
        last = make<NSCalendar>(locale, zone);
    return last;
}

Ref<NSString> NSCalendar::calendarIdentifier() const {
    UErrorCode status = U_ZERO_ERROR;
    const char *type = ucal_getType(calendar_, &status);
    return NSString::stringWithASCIIString(U_SUCCESS(status) ? type : nullptr);
}

Ref<NSDateComponents> NSCalendar::components(NSCalendarUnit wanted, const Ref<NSDate> &date) const {
    const auto time = instant(date);
    const auto calendar = time ? calendarAt(calendar_, *time) : Calendar(nullptr, ucal_close);
    if (!calendar)
        return nullptr;
    auto made = make<NSDateComponents>();
    for (const Unit &unit : units)
        if (wanted & unit.unit)
            (*made).*unit.component = get(calendar, unit.field) + unit.first;
    made->leapMonth = (wanted & NSCalendarUnit::Month) && get(calendar, UCAL_IS_LEAP_MONTH) != 0;
    if (wanted & NSCalendarUnit::Quarter)
        made->quarter = get(calendar, UCAL_MONTH) / 3 + 1;
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
    const auto calendar = time ? calendarAt(calendar_, *time) : Calendar(nullptr, ucal_close);
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
        ucal_add(calendar.get(), span.field, static_cast<std::int32_t>(amount), &status);
    }
    const double moved = ucal_getMillis(calendar.get(), &status) / 1000 - time->whole;
    return U_SUCCESS(status) ? NSDate::dateWithTimeIntervalSinceReferenceDate(
                                   date->timeIntervalSinceReferenceDate() + moved)
                             : nullptr;
}

bool NSCalendar::isDaysFromToday(const Ref<NSDate> &date, NSInteger days) const {
    const auto day = dayNumber(calendar_, date), today = dayNumber(calendar_, NSDate::date());
    return day && today && *day - *today == days;
}
