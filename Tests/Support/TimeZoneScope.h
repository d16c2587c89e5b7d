// Another default time zone for the length of a scope.
#pragma once

#include "Platform/Foundation/Dates/NSTimeZone.h"
#include "Tests/Support/Testing.h"

class TimeZoneScope : NoCopies {
public:
    explicit TimeZoneScope(const char16_t *name) {
        NSTimeZone::setDefaultTimeZone(NSTimeZone::timeZoneWithName(make<NSString>(name)));
    }
    ~TimeZoneScope() { NSTimeZone::setDefaultTimeZone(before_); }

private:
    const Ref<NSTimeZone> before_ = NSTimeZone::defaultTimeZone();
};
