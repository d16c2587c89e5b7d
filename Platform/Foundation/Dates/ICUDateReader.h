// Parses dates with ICU, and rejects texts that ICU misreads. A reader belongs to one thread at a time.
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

    /// Seconds since 1970-01-01 00:00 UTC, by the rules of `NSDateFormatter::dateFromString`. Nothing for
    /// other texts and for an invalid pattern.
    std::optional<double> parse(std::u16string_view text);

private:
    struct Format; ///< ICU's

    std::unique_ptr<Format> format_; ///< null for an invalid pattern
    double fraction_ = 0;            ///< of a second, in the text parsed last
    const std::shared_ptr<const TimeZoneRules> rules_;
    bool showsTime_ = false, showsZone_ = false;
};
