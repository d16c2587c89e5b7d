// Components of dates, simple arithmetic, and dates to texts and back. A date or text of none gives none,
// zero or false. Any thread; threads that use the same shared formatter wait for each other.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSCalendar;
class NSDate;
class NSLocale;
class NSTimeZone;

namespace qn {

// Components in the current calendar and the default time zone; 0 for a date out of the calendar's range

Ref<NSCalendar> calendar(const Ref<NSDate> &date);
Ref<NSTimeZone> timeZone(const Ref<NSDate> &date);
NSInteger era(const Ref<NSDate> &date);
NSInteger year(const Ref<NSDate> &date);
/// From 1.
NSInteger month(const Ref<NSDate> &date);
NSInteger day(const Ref<NSDate> &date);
/// 0 to 23.
NSInteger hour(const Ref<NSDate> &date);
NSInteger minute(const Ref<NSDate> &date);
NSInteger second(const Ref<NSDate> &date);
NSInteger nanosecond(const Ref<NSDate> &date);
/// Sunday is 1.
NSInteger weekday(const Ref<NSDate> &date);
/// 2 on the month's second Tuesday.
NSInteger weekdayOrdinal(const Ref<NSDate> &date);
NSInteger weekOfMonth(const Ref<NSDate> &date);
NSInteger weekOfYear(const Ref<NSDate> &date);
/// The year that `weekOfYear` belongs to, counted as `year` is.
NSInteger yearForWeekOfYear(const Ref<NSDate> &date);
/// 1 to 4.
NSInteger quarter(const Ref<NSDate> &date);
/// Always false: the flag of components that were asked for the quarter only; see NSDateComponents.
bool isLeapMonth(const Ref<NSDate> &date);
/// Whether `year`, which may be 0, is the number of a Gregorian leap year; false out of the calendar's range.
bool isLeapYear(const Ref<NSDate> &date);
bool isToday(const Ref<NSDate> &date);
bool isYesterday(const Ref<NSDate> &date);
bool isTomorrow(const Ref<NSDate> &date);

// Arithmetic in the current calendar: a day that the month does not have becomes its last. None out of the
// calendar's range

Ref<NSDate> dateByAddingYears(const Ref<NSDate> &date, NSInteger years);
Ref<NSDate> dateByAddingMonths(const Ref<NSDate> &date, NSInteger months);
Ref<NSDate> dateByAddingWeeks(const Ref<NSDate> &date, NSInteger weeks);

// Arithmetic in seconds: a day has 86,400, also where clocks change. The number of seconds wraps at 64 bits

Ref<NSDate> dateByAddingDays(const Ref<NSDate> &date, NSInteger days);
Ref<NSDate> dateByAddingHours(const Ref<NSDate> &date, NSInteger hours);
Ref<NSDate> dateByAddingMinutes(const Ref<NSDate> &date, NSInteger minutes);
Ref<NSDate> dateByAddingSeconds(const Ref<NSDate> &date, NSInteger seconds);

// Texts, by patterns of NSDateFormatter; a locale or time zone of none stands for the current one

Ref<NSString> stringWithFormat(const Ref<NSDate> &date, const Ref<NSString> &format);
Ref<NSString> stringWithFormat(const Ref<NSDate> &date, const Ref<NSString> &format,
                               const Ref<NSTimeZone> &timeZone, const Ref<NSLocale> &locale);
/// "2014-01-20T13:24:48+0100", in the default time zone.
Ref<NSString> ISOFormatString(const Ref<NSDate> &date);
Ref<NSDate> dateWithString(const Ref<NSString> &text, const Ref<NSString> &format);
Ref<NSDate> dateWithString(const Ref<NSString> &text, const Ref<NSString> &format,
                           const Ref<NSTimeZone> &timeZone, const Ref<NSLocale> &locale);
/// From the form of `ISOFormatString`.
Ref<NSDate> dateWithISOFormatString(const Ref<NSString> &text);
/// From the form of NSISO8601DateFormatter or one of those of `dateFromLengthTable`.
Ref<NSDate> dateWithString(const Ref<NSString> &text);

} // namespace qn

#pragma GCC visibility pop
