// Another default time zone for the length of a scope.
#pragma once

#include <string>
#include <unicode/ucal.h>

class TimeZoneScope {
public:
    explicit TimeZoneScope(const char16_t *name) { set(name); }
    ~TimeZoneScope() { set(before_.c_str()); }
    TimeZoneScope(const TimeZoneScope &) = delete;
    TimeZoneScope &operator=(const TimeZoneScope &) = delete;

private:
    static std::u16string current() {
        UErrorCode status = U_ZERO_ERROR;
        char16_t name[64];
        return {name, static_cast<std::size_t>(ucal_getDefaultTimeZone(name, 64, &status))};
    }
    static void set(const char16_t *name) {
        UErrorCode status = U_ZERO_ERROR;
        ucal_setDefaultTimeZone(name, &status);
    }
    const std::u16string before_ = current();
};
