#include "Platform/Foundation/ICUDateWriter.h"

#include "Platform/Foundation/ICUTimeZone.h"
#include "Platform/Foundation/NSTimeZone.h"

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

} // namespace

struct ICUDateWriter::Format {
    icu::SimpleDateFormat icu;
};

ICUDateWriter::ICUDateWriter(std::u16string_view pattern, const std::string &locale, const NSTimeZone &zone) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString units(false, pattern.data(), static_cast<std::int32_t>(pattern.size()));
    format_ =
        std::make_unique<Format>(Format{icu::SimpleDateFormat(units, icu::Locale(locale.c_str()), status)});
    if (U_FAILURE(status)) {
        format_.reset();
        return;
    }
    format_->icu.setLenient(true); // far dates become the last that the calendar knows
    format_->icu.adoptTimeZone(new ICUTimeZone(zone.nameUnits(), zone.rules()));
}

ICUDateWriter::~ICUDateWriter() = default;

std::optional<std::u16string> ICUDateWriter::format(double seconds, int microseconds) const {
    if (!format_)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    icu::FieldPositionIterator fields;
    format_->icu.format(seconds * 1000 + microseconds / 1000, text, &fields, status);
    if (U_FAILURE(status))
        return std::nullopt;
    writeMicroseconds(text, fields, microseconds);
    return std::u16string(text.getBuffer(), static_cast<std::size_t>(text.length()));
}
