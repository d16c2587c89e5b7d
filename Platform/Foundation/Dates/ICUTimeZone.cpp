#include "Platform/Foundation/Dates/ICUTimeZone.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <unicode/gregocal.h>

namespace {

/// In whole seconds, rounded down and clamped far beyond the range of calendars.
std::int64_t secondsOf(UDate milliseconds) {
    constexpr double farthest = 1e15;
    return static_cast<std::int64_t>(std::clamp(std::floor(milliseconds / 1000), -farthest, farthest));
}

} // namespace

void ICUTimeZone::getOffset(UDate date, UBool local, std::int32_t &raw, std::int32_t &added,
                            UErrorCode &status) const {
    if (U_FAILURE(status))
        return;
    const std::int64_t time = secondsOf(date);
    const auto offset = local ? rules_->whenClocksShow(time) : rules_->at(time);
    raw = (offset.seconds - offset.daylight) * 1000;
    added = offset.daylight * 1000;
}

std::int32_t ICUTimeZone::getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                                    std::uint8_t, std::int32_t milliseconds, UErrorCode &status) const {
    if (U_FAILURE(status))
        return 0;
    using namespace std::chrono;
    const auto number = static_cast<std::int64_t>(era == icu::GregorianCalendar::AD ? year : 1 - year);
    const std::int64_t periods = number / 400;
    const auto first = std::chrono::year(static_cast<int>(number - periods * 400)) /
                       std::chrono::month(static_cast<unsigned>(month) + 1) / 1;
    const auto midnight = seconds(sys_days(first).time_since_epoch()).count() + (day - 1) * 86400LL;
    return rules_->whenClocksShow(periods * TimeZoneRules::period + midnight + milliseconds / 1000).seconds *
           1000;
}

std::int32_t ICUTimeZone::getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                                    std::uint8_t weekday, std::int32_t milliseconds, std::int32_t,
                                    UErrorCode &status) const {
    return getOffset(era, year, month, day, weekday, milliseconds, status);
}

std::int32_t ICUTimeZone::getRawOffset() const {
    const auto now = rules_->at(secondsOf(icu::Calendar::getNow()));
    return (now.seconds - now.daylight) * 1000;
}

UBool ICUTimeZone::useDaylightTime() const {
    const std::int64_t now = secondsOf(icu::Calendar::getNow());
    return rules_->at(now).daylight > 0 || rules_->at(now + 183 * 86400LL).daylight > 0;
}

UBool ICUTimeZone::inDaylightTime(UDate date, UErrorCode &status) const {
    return U_SUCCESS(status) && rules_->at(secondsOf(date)).daylight > 0;
}

UBool ICUTimeZone::hasSameRules(const icu::TimeZone &other) const {
    const auto *same = dynamic_cast<const ICUTimeZone *>(&other);
    return same && same->rules_ == rules_;
}

UClassID ICUTimeZone::getStaticClassID() {
    static char identifier = 0;
    return &identifier;
}
