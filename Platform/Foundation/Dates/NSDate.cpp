#include "Platform/Foundation/Dates/NSDate.h"

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

#include <chrono>
#include <cmath>

NS_IMPLEMENTATION(NSDate) {
    cls.instantiate([] { return date(); });
}

std::chrono::nanoseconds nanosecondsFromTimeInterval(NSTimeInterval seconds) {
    using std::chrono::nanoseconds;
    const double count = seconds * 1e9;
    if (std::isnan(count))
        return nanoseconds(0);
    if (count >= 9.2e18)
        return nanoseconds::max();
    return count <= -9.2e18 ? nanoseconds::min() : nanoseconds(static_cast<std::int64_t>(count));
}

Ref<NSDate> NSDate::date() {
    return dateWithTimeIntervalSince1970(dispatch::Clock::current().wallTime());
}

Ref<NSDate> NSDate::dateWithTimeIntervalSinceNow(NSTimeInterval seconds) {
    return dateWithTimeIntervalSince1970(dispatch::Clock::current().wallTime() + seconds);
}

Ref<NSDate> NSDate::dateWithTimeIntervalSince1970(NSTimeInterval seconds) {
    return make<NSDate>(seconds - NSTimeIntervalSince1970);
}

Ref<NSDate> NSDate::dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds) {
    return make<NSDate>(seconds);
}

Ref<NSDate> NSDate::distantFuture() {
    return make<NSDate>(63113904000.0);
}

Ref<NSDate> NSDate::distantPast() {
    return make<NSDate>(-63114076800.0);
}

NSTimeInterval NSDate::timeIntervalSinceDate(const Ref<NSDate> &other) const {
    runtime::checkObject("NSDate timeIntervalSinceDate:", other);
    return seconds_ - other->seconds_;
}

NSTimeInterval NSDate::timeIntervalSinceNow() const {
    return timeIntervalSince1970() - dispatch::Clock::current().wallTime();
}

bool NSDate::isEqual(const id &other) const {
    const auto date = as<NSDate>(other);
    return date && date->seconds_ == seconds_;
}

NSUInteger NSDate::hash() const {
    return keyedHash(seconds_);
}

Ref<NSString> NSDate::description() const {
    using namespace std::chrono;
    const double whole = std::floor(timeIntervalSince1970());
    if (!(std::abs(whole) < 9.7e11)) // beyond the range of std::chrono::year
        return NSString::stringWithFormat("%f", seconds_);
    const sys_seconds point{seconds(static_cast<std::int64_t>(whole))};
    const year_month_day day(floor<days>(point));
    const hh_mm_ss time(point - floor<days>(point));
    return NSString::stringWithFormat("%04d-%02u-%02u %02ld:%02ld:%02ld +0000", static_cast<int>(day.year()),
                                      static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                                      time.hours().count(), time.minutes().count(), time.seconds().count());
}
