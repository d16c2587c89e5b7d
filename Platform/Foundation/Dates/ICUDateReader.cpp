#include "Platform/Foundation/Dates/ICUDateReader.h"

#include "Platform/Foundation/Dates/DateLocale.h"
#include "Platform/Foundation/Dates/DatePatternFields.h"
#include "Platform/Foundation/Dates/ICUTimeZone.h"
#include "Platform/Foundation/Dates/NSTimeZone.h"
#include "Platform/Foundation/Dates/TimeZoneDatabase.h"

#include <cmath>
#include <unicode/decimfmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/tzfmt.h>
#include <unicode/uchar.h>

namespace {

/// Reads the whole numbers in dates. ICU's own format would also accept exponents ("2E3"), truncate numbers
/// to 32 bits, and, for long fractions, divide by a power of ten that has overflowed to 0.
class DateNumberFormat final : public icu::DecimalFormat {
public:
    /// With `fraction`, it reads the digits of a fraction, stores their value there and returns 0 to ICU.
    explicit DateNumberFormat(const icu::DecimalFormat &format, double *fraction = nullptr)
        : icu::DecimalFormat(format), fraction_(fraction) {}

    using icu::DecimalFormat::parse;
    void parse(const icu::UnicodeString &text, icu::Formattable &result,
               icu::ParsePosition &position) const override {
        constexpr std::int32_t mostDigits = 12, enough = 40; // ICU's time grows with the square of the digits
        const std::int32_t start = position.getIndex();
        icu::DecimalFormat::parse(text.tempSubString(0, start + enough), result, position);
        icu::UnicodeString read = text.tempSubStringBetween(start, position.getIndex());
        const auto number = result.getInt64();
        if (read.countChar32() > mostDigits || read.toLower().indexOf(u'e') >= 0 ||
            (fraction_ ? number < 0 : result.getType() != icu::Formattable::kLong)) {
            position.setIndex(start);
            position.setErrorIndex(start);
        } else if (fraction_ && !read.isEmpty()) {
            *fraction_ = static_cast<double>(number) / std::pow(10, read.countChar32());
            result.setLong(0);
        }
    }
    DateNumberFormat *clone() const override { return new DateNumberFormat(*this); }

private:
    double *fraction_;
};

/// Reads time zones, with the system's rules. ICU's own format would read "+01400" as 14 minutes.
class ZoneFormat final : public icu::TimeZoneFormat {
public:
    explicit ZoneFormat(const icu::TimeZoneFormat &format) : icu::TimeZoneFormat(format) {}

    using icu::TimeZoneFormat::parse;
    icu::TimeZone *parse(UTimeZoneFormatStyle style, const icu::UnicodeString &text,
                         icu::ParsePosition &position, std::int32_t options,
                         UTimeZoneFormatTimeType *type) const override {
        const std::int32_t start = position.getIndex();
        std::unique_ptr<icu::TimeZone> zone(icu::TimeZoneFormat::parse(style, text, position, options, type));
        if (zone && isUneven(text.tempSubStringBetween(start, position.getIndex()))) {
            position.setIndex(start);
            position.setErrorIndex(start);
            return nullptr;
        }
        icu::UnicodeString name;
        std::string file;
        const auto rules =
            zone ? TimeZoneDatabase::system().rules(zone->getID(name).toUTF8String(file)) : nullptr;
        return rules ? new ICUTimeZone({name.getBuffer(), static_cast<std::size_t>(name.length())}, rules)
                     : zone.release();
    }
    ZoneFormat *clone() const override { return new ZoneFormat(*this); }

private:
    /// Whether the text ends with a sign and an odd number of digits, five or more.
    static bool isUneven(const icu::UnicodeString &text) {
        std::int32_t digits = 0;
        while (digits < text.length() && u_isdigit(text[text.length() - digits - 1]))
            ++digits;
        const char16_t sign = digits < text.length() ? text[text.length() - digits - 1] : u' ';
        return digits > 3 && digits % 2 == 1 && (sign == u'+' || sign == u'-' || sign == u'\u2212');
    }
};

std::int64_t dayOf(std::int64_t seconds) {
    constexpr std::int64_t day = 86400;
    return seconds / day - (seconds % day < 0);
}

/// The first moment of the day whose midnight has this local time; nothing for a day that clocks skip.
std::optional<double> dayShowing(std::int64_t midnight, const TimeZoneRules &rules) {
    const std::int64_t moment = rules.firstShowing(midnight);
    const std::int64_t shown = moment + rules.at(moment).seconds;
    return dayOf(shown) == dayOf(midnight) ? std::optional(static_cast<double>(moment)) : std::nullopt;
}

icu::UnicodeString alias(std::u16string_view text) {
    return {false, text.data(), static_cast<std::int32_t>(text.size())};
}

} // namespace

struct ICUDateReader::Format {
    icu::SimpleDateFormat icu;
};

ICUDateReader::ICUDateReader(std::u16string_view pattern, const std::string &locale, const NSTimeZone &zone)
    : rules_(zone.rules()) {
    static constexpr std::u16string_view timeFields = u"abBhHkKmsSA", zoneFields = u"zZOvVXx";
    walkDatePattern(
        pattern,
        [this](char16_t letter, std::size_t) {
            showsTime_ = showsTime_ || timeFields.find(letter) != timeFields.npos;
            showsZone_ = showsZone_ || zoneFields.find(letter) != zoneFields.npos;
        },
        [](char16_t) {});
    UErrorCode status = U_ZERO_ERROR;
    format_ =
        std::make_unique<Format>(Format{icu::SimpleDateFormat(alias(pattern), dateLocale(locale), status)});
    const auto *numbers = dynamic_cast<const icu::DecimalFormat *>(format_->icu.getNumberFormat());
    if (U_FAILURE(status) || !numbers) {
        format_.reset();
        return;
    }
    auto *fractions = new DateNumberFormat(*numbers, &fraction_);
    format_->icu.adoptNumberFormat(new DateNumberFormat(*numbers));
    format_->icu.adoptNumberFormat(u"S", fractions, status);
    format_->icu.adoptTimeZone(showsTime_
                                   ? static_cast<icu::TimeZone *>(new ICUTimeZone(zone.nameUnits(), rules_))
                                   : icu::TimeZone::getGMT()->clone());
    if (showsZone_)
        format_->icu.adoptTimeZoneFormat(new ZoneFormat(*format_->icu.getTimeZoneFormat()));
    format_->icu.setLenient(false);
}

ICUDateReader::~ICUDateReader() = default;

std::optional<double> ICUDateReader::parse(std::u16string_view text) {
    if (!format_)
        return std::nullopt;
    fraction_ = 0;
    const std::unique_ptr<icu::Calendar> calendar(format_->icu.getCalendar()->clone());
    calendar->clear();
    icu::ParsePosition position(0);
    format_->icu.parse(alias(text), *calendar, position);
    if (position.getIndex() != static_cast<std::int32_t>(text.size()))
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    const auto *named = dynamic_cast<const ICUTimeZone *>(&calendar->getTimeZone());
    if (showsTime_ || (showsZone_ && (!named || calendar->isSet(UCAL_ZONE_OFFSET)))) {
        const double seconds = calendar->getTime(status) / 1000 + fraction_;
        return U_SUCCESS(status) ? std::optional(seconds) : std::nullopt;
    }
    const ICUTimeZone zone = named ? *named : ICUTimeZone({}, rules_); // a copy: the calendar's is replaced
    calendar->adoptTimeZone(icu::TimeZone::getGMT()->clone());
    const double midnight = calendar->getTime(status) / 1000;
    return U_SUCCESS(status) ? dayShowing(static_cast<std::int64_t>(midnight), zone.rules()) : std::nullopt;
}
