// Points in time, in seconds from the reference date 2001-01-01 00:00 UTC. Immutable, so any thread may use
// one.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <chrono>

#pragma GCC visibility push(default)

using NSTimeInterval = double; ///< seconds

/// The interval in nanoseconds, truncated and clamped to 64 bits; 0 for not-a-number.
std::chrono::nanoseconds nanosecondsFromTimeInterval(NSTimeInterval seconds);

/// Seconds from 1970-01-01 00:00 UTC to the reference date.
inline constexpr NSTimeInterval NSTimeIntervalSince1970 = 978307200.0;

class NSDate : public NSObject {
    NS_CLASS(NSDate, NSObject)
public:
    explicit NSDate(NSTimeInterval sinceReferenceDate) : seconds_(sinceReferenceDate) {}

    /// Now, by the current clock.
    static Ref<NSDate> date();
    static Ref<NSDate> dateWithTimeIntervalSinceNow(NSTimeInterval seconds);
    static Ref<NSDate> dateWithTimeIntervalSince1970(NSTimeInterval seconds);
    static Ref<NSDate> dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds);
    /// 4001-01-01 00:00 UTC; as the fire date of a timer it means "never".
    static Ref<NSDate> distantFuture();
    /// 0001-01-01 00:00 UTC of the Julian calendar.
    static Ref<NSDate> distantPast();

    NSTimeInterval timeIntervalSinceReferenceDate() const { return seconds_; }
    NSTimeInterval timeIntervalSince1970() const { return seconds_ + NSTimeIntervalSince1970; }
    /// Raises NSInvalidArgumentException for none.
    NSTimeInterval timeIntervalSinceDate(const Ref<NSDate> &other) const;
    NSTimeInterval timeIntervalSinceNow() const;

    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    /// In UTC: "2014-01-20 12:24:48 +0000". More than about 30,000 years from 1970, the seconds from the
    /// reference date.
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

private:
    const NSTimeInterval seconds_;
};

#pragma GCC visibility pop
