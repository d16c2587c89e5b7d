// The components of dates, and moving dates, by the rules of a calendar in a time zone.
//
//     const auto calendar = NSCalendar::currentCalendar();
//     calendar->components(NSCalendarUnit::Year | NSCalendarUnit::Month, date)->year
//
// A calendar is immutable, so any thread may use it. Components belong to one thread at a time.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <memory>
#include <string>

#pragma GCC visibility push(default)

class NSDate;
class NSLocale;
class NSTimeZone;
class NSCalendar;

enum class NSCalendarUnit : NSUInteger {
    Era = 2,
    Year = 4,
    Month = 8,
    Day = 16,
    Hour = 32,
    Minute = 64,
    Second = 128,
    Weekday = 512,
    WeekdayOrdinal = 1024,
    Quarter = 2048,
    WeekOfMonth = 4096,
    WeekOfYear = 8192,
    YearForWeekOfYear = 16384,
    Nanosecond = 32768,
    Calendar = 1048576,
    TimeZone = 2097152,
};

constexpr NSCalendarUnit operator|(NSCalendarUnit a, NSCalendarUnit b) {
    return static_cast<NSCalendarUnit>(static_cast<NSUInteger>(a) | static_cast<NSUInteger>(b));
}
constexpr bool operator&(NSCalendarUnit a, NSCalendarUnit b) {
    return (static_cast<NSUInteger>(a) & static_cast<NSUInteger>(b)) != 0;
}

/// The value of a component that was neither set nor asked for.
inline constexpr NSInteger NSDateComponentUndefined = 0x7FFFFFFFFFFFFFFF;

class NSDateComponents : public NSObject {
    NS_CLASS(NSDateComponents, NSObject)
public:
    Ref<NSCalendar> calendar;
    Ref<NSTimeZone> timeZone;
    NSInteger era = NSDateComponentUndefined;
    NSInteger year = NSDateComponentUndefined;
    NSInteger month = NSDateComponentUndefined; ///< from 1
    NSInteger day = NSDateComponentUndefined;
    NSInteger hour = NSDateComponentUndefined; ///< 0 to 23
    NSInteger minute = NSDateComponentUndefined;
    NSInteger second = NSDateComponentUndefined;
    NSInteger nanosecond = NSDateComponentUndefined;
    NSInteger weekday = NSDateComponentUndefined;        ///< Sunday is 1
    NSInteger weekdayOrdinal = NSDateComponentUndefined; ///< 2 on the month's second Tuesday
    NSInteger quarter = NSDateComponentUndefined;        ///< 1 to 4; a 13th month is in the last
    NSInteger weekOfMonth = NSDateComponentUndefined;
    NSInteger weekOfYear = NSDateComponentUndefined;
    NSInteger yearForWeekOfYear = NSDateComponentUndefined; ///< in the same era as `year`
    bool leapMonth = false;                                 ///< set together with `month`
};

class NSCalendar : public NSObject {
    NS_CLASS(NSCalendar, NSObject)
public:
    /// The locale's usual calendar, with its rules for weeks; that of "en_US" for an invalid identifier.
    /// Raises NSInvalidArgumentException for none.
    NSCalendar(const Ref<NSLocale> &locale, const Ref<NSTimeZone> &timeZone);
    ~NSCalendar() override;

    /// The calendar of the current locale and the default time zone.
    static Ref<NSCalendar> currentCalendar();

    /// "gregorian", "buddhist", "chinese" …
    Ref<NSString> calendarIdentifier() const;
    const Ref<NSTimeZone> &timeZone() const { return timeZone_; }

    /// The requested components. None when the date is none, or more than 1.8e14 seconds (5.7 million years)
    /// from 1970.
    Ref<NSDateComponents> components(NSCalendarUnit units, const Ref<NSDate> &date) const;
    /// Adds the years, then the months, then the weeks of the year that are set; other components are
    /// ignored. A day that the new month does not have becomes its last day. None when an argument is none,
    /// and for dates out of the range above.
    Ref<NSDate> dateByAddingComponents(const Ref<NSDateComponents> &components,
                                       const Ref<NSDate> &date) const;

    /// These use the current clock; false for none.
    bool isDateInToday(const Ref<NSDate> &date) const { return isDaysFromToday(date, 0); }
    bool isDateInYesterday(const Ref<NSDate> &date) const { return isDaysFromToday(date, -1); }
    bool isDateInTomorrow(const Ref<NSDate> &date) const { return isDaysFromToday(date, 1); }

private:
    bool isDaysFromToday(const Ref<NSDate> &date, NSInteger days) const;

    const Ref<NSLocale> locale_;
    const Ref<NSTimeZone> timeZone_;
    struct ICUCalendar; ///< ICU's calendar; every use clones it, so threads need no lock
    const std::unique_ptr<const ICUCalendar> opened_;
};

#pragma GCC visibility pop
