// Dates to texts and back by a pattern of Unicode's date fields:
//
//     const auto formatter = make<NSDateFormatter>(u"yyyy-MM-dd HH:mm"_ns);
//     formatter->stringFromDate(NSDate::date());
//
// Without a locale or a time zone, those are used that are current at the time of use. The calendar is that
// of the locale, and so are the digits; for locales whose numbers are not written in digits they are plain
// ones. Immutable and safe from any thread; threads that share one wait for each other where it takes ICU.
// Patterns and texts are data: nothing that a formatter is given raises or takes long.
#pragma once

#include "Platform/Foundation/Dates/FixedDatePattern.h"
#include "Platform/Locking/Mutex.h"
#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSDate;
class NSLocale;
class NSTimeZone;

class NSDateFormatter : public NSObject {
    NS_CLASS(NSDateFormatter, NSObject)
public:
    explicit NSDateFormatter(const Ref<NSString> &dateFormat, Ref<NSLocale> locale = nullptr,
                             Ref<NSTimeZone> timeZone = nullptr);
    ~NSDateFormatter() override;

    /// Rounds to the nearest millisecond if the pattern has fractions of a second, or to as many digits, up
    /// to six, as it has letters S; otherwise fractions are cut. A date beyond the calendar's range is shown
    /// as its last one. None when the date is none or not finite, and when the pattern is none or has a field
    /// that does not exist.
    Ref<NSString> stringFromDate(const Ref<NSDate> &date) const;
    /// Strict: the whole text must be a date, and days and times that do not exist, such as the 32nd of a
    /// month, do not roll over. The text may differ from what `stringFromDate` writes in:
    ///
    ///  * white space before a field;
    ///  * the script and the number of digits: up to twelve for a number below 2^31, but in days, minutes and
    ///    seconds at least as many as the pattern has letters. Fractions of a second have up to twelve
    ///    digits;
    ///  * upper and lower case, full and abbreviated names, and the form of offsets from UTC: all that ICU
    ///    knows ("Z", "+01", "+0100", "+01:00", "+010000", "GMT+1").
    ///
    /// Without a time of day in the pattern, the result is the first moment of the day. When clocks are set
    /// back and show a time twice, it is the later moment. In the Gregorian calendar, days before 1582-10-15
    /// are dates of the Julian one, including the ten days that were skipped.
    ///
    /// None for any other text, for a pattern without fields or of more than 200 code units, and for a text
    /// more than 64 times as long as its pattern.
    Ref<NSDate> dateFromString(const Ref<NSString> &text) const;
    /// The same, but only for texts that FixedDatePattern reads: with as many digits as the pattern has
    /// letters, in the locale en_US_POSIX, and in the zone GMT or with an offset. None for all others. Never
    /// uses ICU.
    Ref<NSDate> dateFromFixedString(const Ref<NSString> &text) const;

private:
    struct ICUFormats; ///< ICU's reader and writer for a locale and a time zone
    ICUFormats &opened(const Ref<NSTimeZone> &zone) const ZK_REQUIRES(lock_);
    Ref<NSTimeZone> zone() const;

    const Ref<NSString> format_;
    const Ref<NSLocale> locale_;
    const Ref<NSTimeZone> timeZone_;
    const std::optional<FixedDatePattern> fixed_;
    const bool isReadable_;
    const int fractionDigits_; ///< of a second, written; 3 to 6 or 0
    mutable locking::Mutex lock_;
    mutable std::unique_ptr<ICUFormats> opened_ ZK_GUARDED_BY(lock_);
};

#pragma GCC visibility pop
