// Dates taken apart and moved by the rules of a calendar, in a time zone.
//
//     const auto calendar = NSCalendar::currentCalendar();
//     calendar->components(NSCalendarUnit::Year | NSCalendarUnit::Month, date)->year
//
// A calendar is immutable: any thread. Components belong to one thread at a time.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <memory>
#include <string>

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

/// A component that nobody set or asked for.
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
    NSInteger quarter = NSDateComponentUndefined;        ///< 1 to 4; a 13th month is of the last
    NSInteger weekOfMonth = NSDateComponentUndefined;
    NSInteger weekOfYear = NSDateComponentUndefined;
    NSInteger yearForWeekOfYear = NSDateComponentUndefined; ///< counted as `year` is
    bool leapMonth = false; ///< comes with the month: asked for other units alone, it stays false
};

class NSCalendar : public NSObject {
    NS_CLASS(NSCalendar, NSObject)
public:
    /// The calendar that is usual where the locale is, with its weeks; that of English as of the United
    /// States for an identifier that is none. Raises NSInvalidArgumentException for an argument of none.
    NSCalendar(const Ref<NSLocale> &locale, const Ref<NSTimeZone> &timeZone);
    ~NSCalendar() override;

    /// That of the current locale and the default time zone.
    static Ref<NSCalendar> currentCalendar();

    /// "gregorian", "buddhist", "chinese" …
    Ref<NSString> calendarIdentifier() const;
    const Ref<NSTimeZone> &timeZone() const { return timeZone_; }

    /// The units asked for. Returns none if the date is none or beyond what calendars reach, about 5.8
    /// million years.
    Ref<NSDateComponents> components(NSCalendarUnit units, const Ref<NSDate> &date) const;
    /// The date moved by the components that are set, the largest first: years, months, weeks of the year. A
    /// day that the new month does not have becomes its last. None beyond what calendars reach.
    Ref<NSDate> dateByAddingComponents(const Ref<NSDateComponents> &components,
                                       const Ref<NSDate> &date) const;

    /// By the current clock; false for none.
    bool isDateInToday(const Ref<NSDate> &date) const { return isDaysFromToday(date, 0); }
    bool isDateInYesterday(const Ref<NSDate> &date) const { return isDaysFromToday(date, -1); }
    bool isDateInTomorrow(const Ref<NSDate> &date) const { return isDaysFromToday(date, 1); }

private:
    bool isDaysFromToday(const Ref<NSDate> &date, NSInteger days) const;

    const Ref<NSLocale> locale_;
    const Ref<NSTimeZone> timeZone_;
    struct Opened; ///< ICU's calendar, which is only ever cloned
    const std::unique_ptr<const Opened> opened_;
};
