// Dates to texts and back by a pattern of Unicode's date fields:
//
//     const auto formatter = make<NSDateFormatter>(u"yyyy-MM-dd HH:mm"_ns);
//     formatter->stringFromDate(NSDate::date());
//
// Without a locale or a time zone, those are used that are current at the time of use. The calendar is that
// of the locale. Immutable and safe from any thread; threads that share one wait for each other.
#pragma once

#include "Platform/Foundation/FixedDatePattern.h"
#include "Platform/Runtime/NSObject.h"

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

    /// None for none, for a date that is not finite, and for a pattern that is none or has a field that does
    /// not exist. Dates that are too far away become the last that the calendar knows.
    Ref<NSString> stringFromDate(const Ref<NSDate> &date) const;
    /// Strict: the text has to be a date from its first to its last character, and neither days nor times
    /// that do not exist, such as the 32nd of a month, roll over. Only the width of numbers and white space
    /// before a field do not matter. None otherwise, and for a text more than 64 times as long as its
    /// pattern. In the Gregorian calendar, days before 1582-10-15 are of the Julian one, also those ten that
    /// were skipped.
    Ref<NSDate> dateFromString(const Ref<NSString> &text) const;

private:
    struct Opened; ///< ICU's formatter, null for a bad pattern
    const Opened &opened() const;

    const Ref<NSString> format_;
    const Ref<NSLocale> locale_;
    const Ref<NSTimeZone> timeZone_;
    std::optional<FixedDatePattern> fixed_;
    mutable std::mutex lock_;
    mutable std::unique_ptr<Opened> opened_; ///< under the lock
};
