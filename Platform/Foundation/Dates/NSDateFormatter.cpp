#include "Platform/Foundation/Dates/NSDateFormatter.h"

#include "Platform/Foundation/Dates/DatePatternFields.h"
#include "Platform/Foundation/Dates/ICUDateReader.h"
#include "Platform/Foundation/Dates/ICUDateWriter.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Dates/NSTimeZone.h"
#include "Platform/Foundation/Text/NSLocale.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <algorithm>
#include <cmath>
#include <limits>

NS_IMPLEMENTATION(NSDateFormatter) {}

/// Opening one reads the locale's data and takes 12 times as long as reading a date, so the last are kept.
struct NSDateFormatter::ICUFormats {
    std::string locale;
    Ref<NSTimeZone> zone;
    std::unique_ptr<ICUDateReader> reader; ///< null before its first use
    std::unique_ptr<ICUDateWriter> writer;
};

namespace {

/// The longest pattern, in code units, and the longest text, as a multiple of its pattern; no sensible one is
/// longer. ICU tries adjacent numbers in many ways: its time grows with the cube of their number.
constexpr NSUInteger longestPattern = 200, longestExpansion = 64;

bool fitsICU(const Ref<NSString> &text) {
    return text && text->length() <= std::numeric_limits<std::int32_t>::max();
}

/// Whether the pattern has a field, without which a text contains no date.
bool isReadable(const Ref<NSString> &format) {
    bool hasField = false;
    if (format && format->length() <= longestPattern)
        walkDatePattern(
            format->units(), [&](char16_t, std::size_t) { hasField = true; }, [](char16_t) {});
    return hasField;
}

/// The fixed pattern, if ICU would read its texts in the same way.
std::optional<FixedDatePattern> fixedPattern(const Ref<NSString> &format, const Ref<NSLocale> &locale,
                                             const Ref<NSTimeZone> &timeZone) {
    if (!format || !locale || !locale->isEqual(NSLocale::posixLocale()))
        return std::nullopt;
    auto fixed = FixedDatePattern::compile(format->units());
    const bool inUTC = timeZone && timeZone->nameUnits() == u"GMT";
    return fixed && (fixed->namesOffset() || inUTC) ? fixed : std::nullopt;
}

int fractionDigits(const Ref<NSString> &format) {
    constexpr std::size_t least = 3, most = 6;
    std::size_t digits = 0;
    walkDatePattern(
        format ? std::u16string_view(format->units()) : u"",
        [&](char16_t letter, std::size_t count) {
            if (letter == u'S' || letter == u'A')
                digits = std::max(digits, letter == u'S' ? std::clamp(count, least, most) : least);
        },
        [](char16_t) {});
    return static_cast<int>(digits);
}

/// Whole seconds since 1970-01-01 00:00 UTC and the microseconds after them.
struct Moment {
    double seconds;
    int microseconds;
};

/// The date rounded to that many digits of a second, or to fewer if a double so far from 1970 has fewer; cut
/// to whole seconds for 0 digits.
Moment moment(const NSDate &date, int digits) {
    const double seconds = date.timeIntervalSinceReferenceDate(), whole = std::floor(seconds);
    const double step = std::nextafter(std::abs(seconds) + NSTimeIntervalSince1970, INFINITY) -
                        (std::abs(seconds) + NSTimeIntervalSince1970);
    while (digits > 3 && step * std::pow(10, digits) > 0.4)
        --digits;
    const double units = std::pow(10, digits);
    const double fraction = digits > 0 ? std::round((seconds - whole) * units) : 0;
    const bool carry = digits > 0 && fraction >= units;
    return {whole + carry + NSTimeIntervalSince1970, carry ? 0 : static_cast<int>(fraction * (1e6 / units))};
}

/// Seconds east of Greenwich; 0 beyond what calendars reach.
int offsetAt(double seconds, const NSTimeZone &zone) {
    constexpr double farthest = 1e15;
    return std::abs(seconds) <= farthest ? zone.rules()->at(static_cast<std::int64_t>(seconds)).seconds : 0;
}

} // namespace

NSDateFormatter::NSDateFormatter(const Ref<NSString> &dateFormat, Ref<NSLocale> locale,
                                 Ref<NSTimeZone> timeZone)
    : format_(dateFormat ? as<NSString>(dateFormat->copy()) : nullptr), locale_(std::move(locale)),
      timeZone_(std::move(timeZone)), fixed_(fixedPattern(format_, locale_, timeZone_)),
      isReadable_(isReadable(format_)), fractionDigits_(fractionDigits(format_)) {}

NSDateFormatter::~NSDateFormatter() = default;

Ref<NSTimeZone> NSDateFormatter::zone() const {
    return timeZone_ ? timeZone_ : NSTimeZone::defaultTimeZone();
}

NSDateFormatter::ICUFormats &NSDateFormatter::opened(const Ref<NSTimeZone> &zone) const {
    std::string locale =
        locale_ ? locale_->localeIdentifier() : NSLocaleCurrentIdentifier(NSLocaleCategory::Dates);
    if (!opened_ || opened_->locale != locale || opened_->zone->rules() != zone->rules() ||
        !opened_->zone->isEqual(zone))
        opened_ = std::make_unique<ICUFormats>(ICUFormats{std::move(locale), zone, nullptr, nullptr});
    return *opened_;
}

Ref<NSString> NSDateFormatter::stringFromDate(const Ref<NSDate> &date) const {
    if (!date || !std::isfinite(date->timeIntervalSinceReferenceDate()) || !fitsICU(format_))
        return nullptr;
    const auto [seconds, microseconds] = moment(*date, fractionDigits_);
    const int milliseconds = microseconds / 1000;
    const auto zone = this->zone();
    if (fixed_)
        if (auto text = fixed_->format(seconds * 1000 + milliseconds, offsetAt(seconds, *zone)))
            return make<NSString>(std::move(*text));
    const locking::MutexLock guard(lock_);
    ICUFormats &icu = opened(zone);
    if (!icu.writer)
        icu.writer = std::make_unique<ICUDateWriter>(format_->units(), icu.locale, *zone);
    auto text = icu.writer->format(seconds, microseconds);
    return text ? make<NSString>(std::move(*text)) : nullptr;
}

Ref<NSDate> NSDateFormatter::dateFromFixedString(const Ref<NSString> &text) const {
    const auto seconds = fixed_ && text ? fixed_->parse(text->units()) : std::nullopt;
    return seconds ? NSDate::dateWithTimeIntervalSince1970(*seconds) : nullptr;
}

Ref<NSDate> NSDateFormatter::dateFromString(const Ref<NSString> &text) const {
    if (auto date = dateFromFixedString(text))
        return date;
    if (!text || text->length() == 0 || !isReadable_ || text->length() > longestExpansion * format_->length())
        return nullptr;
    const locking::MutexLock guard(lock_);
    ICUFormats &icu = opened(zone());
    if (!icu.reader)
        icu.reader = std::make_unique<ICUDateReader>(format_->units(), icu.locale, *icu.zone);
    const auto seconds = icu.reader->parse(text->units());
    return seconds ? NSDate::dateWithTimeIntervalSince1970(*seconds) : nullptr;
}
