// Dates to texts by ICU, with the fractions of a second that ICU writes as zeros, and without a fifth quarter
// in years of 13 months. One thread at a time.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class NSTimeZone;

class ICUDateWriter {
public:
    ICUDateWriter(std::u16string_view pattern, const std::string &locale, const NSTimeZone &zone);
    ~ICUDateWriter();
    ICUDateWriter(const ICUDateWriter &) = delete;
    ICUDateWriter &operator=(const ICUDateWriter &) = delete;

    /// For whole seconds since 1970-01-01 00:00 UTC and the microseconds after them. Nothing for a pattern
    /// that is none.
    std::optional<std::u16string> format(double seconds, int microseconds) const;

private:
    struct Format; ///< ICU's, null for a bad pattern

    std::unique_ptr<Format> format_;
    std::unique_ptr<Format> ofMonth13_; ///< where that needs one of its own, or else null
};
