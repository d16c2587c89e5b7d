// The system's time zones for ICU's calendars and date formats: ICU's own rules are older. Immutable, so any
// thread may use one.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"

#include <memory>
#include <string_view>
#include <unicode/timezone.h>

class ICUTimeZone final : public icu::TimeZone {
public:
    /// By `name`, ICU finds the zone's names in each language.
    ICUTimeZone(std::u16string_view name, std::shared_ptr<const TimeZoneRules> rules)
        : icu::TimeZone({name.data(), static_cast<std::int32_t>(name.size())}), rules_(std::move(rules)) {}

    const TimeZoneRules &rules() const { return *rules_; }

    void getOffset(UDate date, UBool local, std::int32_t &raw, std::int32_t &daylight,
                   UErrorCode &status) const override;
    std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                           std::uint8_t weekday, std::int32_t milliseconds,
                           UErrorCode &status) const override;
    std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                           std::uint8_t weekday, std::int32_t milliseconds, std::int32_t daysOfMonth,
                           UErrorCode &status) const override;
    std::int32_t getRawOffset() const override;
    void setRawOffset(std::int32_t) override {} // immutable
    UBool useDaylightTime() const override;
    UBool inDaylightTime(UDate date, UErrorCode &status) const override;
    UBool hasSameRules(const icu::TimeZone &other) const override;
    ICUTimeZone *clone() const override { return new ICUTimeZone(*this); }
    UClassID getDynamicClassID() const override { return getStaticClassID(); }
    static UClassID getStaticClassID();

private:
    std::shared_ptr<const TimeZoneRules> rules_;
};
