// Formats dates with ICU, and corrects two things: digits of a second beyond milliseconds, which ICU writes
// as zeros, and the fifth quarter that it shows in a 13th month. A writer belongs to one thread at a time.
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

    /// The text for whole seconds since 1970-01-01 00:00 UTC and the microseconds after them. Nothing for an
    /// invalid pattern.
    std::optional<std::u16string> format(double seconds, int microseconds) const;

private:
    struct Format; ///< ICU's

    std::unique_ptr<Format> format_;    ///< null for an invalid pattern
    std::unique_ptr<Format> ofMonth13_; ///< for dates in a 13th month; null if that needs no other format
};
