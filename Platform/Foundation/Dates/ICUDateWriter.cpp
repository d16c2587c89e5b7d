#include "Platform/Foundation/Dates/ICUDateWriter.h"

#include "Platform/Foundation/Dates/DateLocale.h"
#include "Platform/Foundation/Dates/DatePatternFields.h"
#include "Platform/Foundation/Dates/ICUTimeZone.h"
#include "Platform/Foundation/Dates/NSTimeZone.h"

#include <unicode/fpositer.h>
#include <unicode/smpdtfmt.h>
#include <unicode/uchar.h>

namespace {

/// Puts the digits behind the milliseconds, down to the microseconds, where zeros are.
void writeMicroseconds(icu::UnicodeString &text, icu::FieldPositionIterator &fields, int microseconds) {
    for (icu::FieldPosition field; fields.next(field);) {
        if (field.getField() != UDAT_FRACTIONAL_SECOND_FIELD)
            continue;
        std::int32_t place = text.moveIndex32(field.getBeginIndex(), 3);
        for (int unit = 100; unit > 0 && place < field.getEndIndex(); unit /= 10) {
            const UChar32 zero = text.char32At(place);
            if (u_charDigitValue(zero) == 0) // followed by the other digits, of as many units
                text.replace(place, U16_LENGTH(zero), zero + microseconds % 1000 / unit % 10);
            place += U16_LENGTH(zero);
        }
    }
}

/// A format that knows no more than four quarters. Opening it takes long.
icu::SimpleDateFormat openQuarters(icu::Locale locale) {
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue("calendar", "gregorian", status);
    return {u"Q", locale, status};
}

/// What a field of quarters shows in the last one.
std::u16string lastQuarter(const std::u16string &field, icu::SimpleDateFormat &quarters) {
    constexpr UDate december = -1e9;
    icu::UnicodeString text;
    quarters.applyPattern(field.c_str());
    quarters.format(december, text);
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

/// The pattern with the last quarter as text.
std::u16string inLastQuarter(std::u16string_view pattern, const icu::Locale &locale) {
    std::u16string made, text;
    auto quarters = openQuarters(locale);
    const auto closeText = [&] {
        for (std::size_t quote = 0; (quote = text.find(u'\'', quote)) != text.npos; quote += 2)
            text.insert(quote, 1, u'\'');
        made += text.empty() ? text : u"'" + text + u"'";
        text.clear();
    };
    walkDatePattern(
        pattern,
        [&](char16_t letter, std::size_t count) {
            const std::u16string field(count, letter);
            if (letter == u'Q' || letter == u'q') {
                text += lastQuarter(field, quarters);
            } else {
                closeText();
                made += field;
            }
        },
        [&](char16_t unit) { text += unit; });
    closeText();
    return made;
}

} // namespace

struct ICUDateWriter::Format {
    icu::SimpleDateFormat icu;

    /// Null for a pattern that is none.
    static std::unique_ptr<Format> open(std::u16string_view pattern, const icu::Locale &locale,
                                        const NSTimeZone &zone) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString units(false, pattern.data(), static_cast<std::int32_t>(pattern.size()));
        auto made = std::make_unique<Format>(Format{icu::SimpleDateFormat(units, locale, status)});
        if (U_FAILURE(status))
            return nullptr;
        made->icu.setLenient(true); // far dates become the last that the calendar knows
        made->icu.adoptTimeZone(new ICUTimeZone(zone.nameUnits(), zone.rules()));
        return made;
    }
};

ICUDateWriter::ICUDateWriter(std::u16string_view pattern, const std::string &identifier,
                             const NSTimeZone &zone) {
    const icu::Locale locale = dateLocale(identifier);
    format_ = Format::open(pattern, locale, zone);
    if (format_ && pattern.find_first_of(u"Qq") != pattern.npos &&
        format_->icu.getCalendar()->getMaximum(UCAL_MONTH) == UCAL_UNDECIMBER)
        ofMonth13_ = Format::open(inLastQuarter(pattern, locale), locale, zone);
}

ICUDateWriter::~ICUDateWriter() = default;

std::optional<std::u16string> ICUDateWriter::format(double seconds, int microseconds) const {
    if (!format_)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    icu::FieldPositionIterator fields;
    const std::unique_ptr<icu::Calendar> calendar(format_->icu.getCalendar()->clone());
    const int milliseconds = microseconds / 1000;
    calendar->setTime(seconds * 1000 + milliseconds, status);
    const bool isMonth13 = ofMonth13_ && calendar->get(UCAL_MONTH, status) == UCAL_UNDECIMBER;
    (isMonth13 ? ofMonth13_ : format_)->icu.format(*calendar, text, &fields, status);
    if (U_FAILURE(status))
        return std::nullopt;
    writeMicroseconds(text, fields, microseconds);
    return std::u16string(text.getBuffer(), static_cast<std::size_t>(text.length()));
}
