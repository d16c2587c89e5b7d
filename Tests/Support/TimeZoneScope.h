// Another default time zone for the length of a scope.
#pragma once

#include "Platform/Foundation/Dates/NSTimeZone.h"

class TimeZoneScope {
public:
    explicit TimeZoneScope(const char16_t *name) {
        NSTimeZone::setDefaultTimeZone(NSTimeZone::timeZoneWithName(make<NSString>(name)));
    }
    ~TimeZoneScope() { NSTimeZone::setDefaultTimeZone(before_); }
    TimeZoneScope(const TimeZoneScope &) = delete;
    TimeZoneScope &operator=(const TimeZoneScope &) = delete;

private:
    const Ref<NSTimeZone> before_ = NSTimeZone::defaultTimeZone();
};
