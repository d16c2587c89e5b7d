#include "Platform/Foundation/NSDateFormatter.h"

#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/NSTimeZone.h"
#include "Platform/Runtime/Class.h"

#include <cmath>
#include <limits>
#include <unicode/ucal.h>
#include <unicode/udat.h>

NS_IMPLEMENTATION(NSDateFormatter) {}

struct NSDateFormatter::Opened {
    std::string locale;
    std::u16string timeZone;
    std::unique_ptr<UDateFormat, decltype(&udat_close)> formatter;
    std::unique_ptr<UCalendar, decltype(&ucal_close)> calendar{nullptr, ucal_close}; ///< of the time zone

    /// Seconds east of Greenwich; nothing without a calendar.
    std::optional<int> offsetAt(double milliseconds) const {
        UErrorCode status = U_ZERO_ERROR;
        if (!calendar)
            return std::nullopt;
        ucal_setMillis(calendar.get(), milliseconds, &status);
        const int offset = ucal_get(calendar.get(), UCAL_ZONE_OFFSET, &status) +
                           ucal_get(calendar.get(), UCAL_DST_OFFSET, &status);
        return U_SUCCESS(status) ? std::optional(offset / 1000) : std::nullopt;
    }
};

namespace {

/// Code units of a text for each of its pattern: more than any field takes. ICU's time grows with the square
/// of the digits.
constexpr NSUInteger longestExpansion = 64;

bool fitsICU(const Ref<NSString> &text) {
    return text && text->length() <= std::numeric_limits<std::int32_t>::max();
}

/// Where ICU would read such texts in the same way.
std::optional<FixedDatePattern> fixedPattern(const Ref<NSString> &format, const Ref<NSLocale> &locale,
                                             const Ref<NSTimeZone> &timeZone) {
    if (!format || !locale || !locale->isEqual(NSLocale::posixLocale()))
        return std::nullopt;
    auto pattern = FixedDatePattern::compile(format->units());
    const bool inUTC = timeZone && timeZone->nameUnits() == u"GMT";
    return pattern && (pattern->namesOffset() || inUTC) ? pattern : std::nullopt;
}

} // namespace

NSDateFormatter::NSDateFormatter(const Ref<NSString> &dateFormat, Ref<NSLocale> locale,
                                 Ref<NSTimeZone> timeZone)
    : format_(dateFormat ? as<NSString>(dateFormat->copy()) : nullptr), locale_(std::move(locale)),
      timeZone_(std::move(timeZone)), fixed_(fixedPattern(format_, locale_, timeZone_)) {}

NSDateFormatter::~NSDateFormatter() = default;

/// Opening one reads the locale's data and takes long, so the last is kept.
const NSDateFormatter::Opened &NSDateFormatter::opened() const {
    std::string locale = locale_ ? locale_->localeIdentifier() : NSLocaleCurrentIdentifier();
    const auto zone = timeZone_ ? timeZone_ : NSTimeZone::defaultTimeZone();
    if (!opened_ || opened_->locale != locale || opened_->timeZone != zone->nameUnits()) {
        UErrorCode status = U_ZERO_ERROR;
        UDateFormat *formatter =
            udat_open(UDAT_PATTERN, UDAT_PATTERN, locale.c_str(), zone->nameUnits().data(),
                      static_cast<std::int32_t>(zone->nameUnits().size()), format_->units().data(),
                      static_cast<std::int32_t>(format_->length()), &status);
        opened_ =
            std::make_unique<Opened>(Opened{std::move(locale), zone->nameUnits(), {formatter, udat_close}});
        if (formatter)
            opened_->calendar.reset(ucal_clone(udat_getCalendar(formatter), &status));
    }
    return *opened_;
}

Ref<NSString> NSDateFormatter::stringFromDate(const Ref<NSDate> &date) const {
    if (!date || !std::isfinite(date->timeIntervalSinceReferenceDate()) || !fitsICU(format_))
        return nullptr;
    const std::scoped_lock guard(lock_);
    UDateFormat *formatter = opened().formatter.get();
    if (!formatter)
        return nullptr;
    const double milliseconds = date->timeIntervalSince1970() * 1000;
    if (const auto offset = fixed_ ? opened_->offsetAt(milliseconds) : std::nullopt)
        if (auto fixed = fixed_->format(milliseconds, *offset))
            return make<NSString>(std::move(*fixed));
    udat_setLenient(formatter, true);
    std::u16string text(64, u'\0');
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const std::int32_t length = udat_format(formatter, milliseconds, text.data(),
                                                static_cast<std::int32_t>(text.size()), nullptr, &status);
        if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR)
            return nullptr;
        text.resize(static_cast<std::size_t>(length));
        if (U_SUCCESS(status))
            return make<NSString>(std::move(text));
    }
}

Ref<NSDate> NSDateFormatter::dateFromString(const Ref<NSString> &text) const {
    if (!fitsICU(text) || !fitsICU(format_))
        return nullptr;
    if (const auto seconds = fixed_ ? fixed_->parse(text->units()) : std::nullopt)
        return NSDate::dateWithTimeIntervalSince1970(*seconds);
    if (text->length() > longestExpansion * format_->length())
        return nullptr;
    const std::scoped_lock guard(lock_);
    UDateFormat *formatter = opened().formatter.get();
    if (!formatter)
        return nullptr;
    udat_setLenient(formatter, false);
    UErrorCode status = U_ZERO_ERROR;
    const auto length = static_cast<std::int32_t>(text->length());
    std::int32_t end = 0;
    const UDate milliseconds = udat_parse(formatter, text->units().data(), length, &end, &status);
    return U_SUCCESS(status) && end == length ? NSDate::dateWithTimeIntervalSince1970(milliseconds / 1000)
                                              : nullptr;
}
