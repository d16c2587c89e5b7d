// Dates from texts by ICU, without what ICU misreads. One thread at a time.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class NSTimeZone;

class ICUDateReader {
public:
    ICUDateReader(std::u16string_view pattern, const std::string &locale, const NSTimeZone &zone);
    ~ICUDateReader();
    ICUDateReader(const ICUDateReader &) = delete;
    ICUDateReader &operator=(const ICUDateReader &) = delete;

    /// Seconds since 1970-01-01 00:00 UTC, as `NSDateFormatter::dateFromString` promises them. Nothing as
    /// well for a pattern that is none.
    std::optional<double> parse(std::u16string_view text);

private:
    struct Format; ///< ICU's, null for a bad pattern

    std::unique_ptr<Format> format_;
    double fraction_ = 0; ///< of a second, where the last text has one
    const std::shared_ptr<const TimeZoneRules> rules_;
    bool showsTime_ = false, showsZone_ = false;
};
