// Dates to texts and back by a pattern of Unicode's date fields:
//
//     const auto formatter = make<NSDateFormatter>(u"yyyy-MM-dd HH:mm"_ns);
//     formatter->stringFromDate(NSDate::date());
//
// Without a locale or a time zone, those are used that are current at the time of use. The calendar is that
// of the locale. Immutable and safe from any thread; threads that share one wait for each other where it
// takes ICU. Patterns and texts are data: nothing that a formatter is given raises or takes long.
#pragma once

#include "Platform/Foundation/Dates/FixedDatePattern.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <mutex>

class NSDate;
class NSLocale;
class NSTimeZone;

class NSDateFormatter : public NSObject {
    NS_CLASS(NSDateFormatter, NSObject)
public:
    explicit NSDateFormatter(const Ref<NSString> &dateFormat, Ref<NSLocale> locale = nullptr,
                             Ref<NSTimeZone> timeZone = nullptr);
    ~NSDateFormatter() override;

    /// To the nearest millisecond where the pattern has one, or as many digits up to six as it has letters S;
    /// other patterns show what has begun. Returns none if the date is none or not finite, or if the pattern
    /// is none or has a field that does not exist. Dates that are too far away become the last that the
    /// calendar knows.
    Ref<NSString> stringFromDate(const Ref<NSDate> &date) const;
    /// Strict: the text has to be a date from its first to its last character, and neither days nor times
    /// that do not exist, such as the 32nd of a month, roll over. What may differ from what is written:
    ///
    ///  * white space before a field;
    ///  * digits of any script, and how many: up to twelve that make a number below 2^31; days, minutes and
    ///    seconds have no fewer than the pattern has letters. Fractions of a second are read up to the
    ///    twelfth digit;
    ///  * names in small letters and capitals, in full or short, and of offsets from UTC all that ICU knows
    ///    ("Z", "+01", "+0100", "+01:00", "+010000", "GMT+1").
    ///
    /// Without a time of day in the pattern it is the first moment of the day. Of two moments with one name,
    /// it is the later. None otherwise, for a pattern without fields or of more than 200 code units, and for
    /// a text more than 64 times as long as its pattern. In the Gregorian calendar, days before 1582-10-15
    /// are of the Julian one, also those ten that were skipped.
    Ref<NSDate> dateFromString(const Ref<NSString> &text) const;
    /// The same, of which it only takes texts with as many digits as the pattern has letters, quickly: those
    /// that FixedDatePattern reads in the place of ICU.
    Ref<NSDate> dateFromFixedString(const Ref<NSString> &text) const;

private:
    struct Opened; ///< ICU's reader and writer for a locale and a time zone
    Opened &opened(const Ref<NSTimeZone> &zone) const;
    Ref<NSTimeZone> zone() const;

    const Ref<NSString> format_;
    const Ref<NSLocale> locale_;
    const Ref<NSTimeZone> timeZone_;
    const std::optional<FixedDatePattern> fixed_;
    const bool isReadable_;
    const int fractionDigits_; ///< of a second, written; 3 to 6 or 0
    mutable std::mutex lock_;
    mutable std::unique_ptr<Opened> opened_; ///< under the lock
};
