#include "Platform/Foundation/Numbers/NSNumberFormatter.h"

#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSLocale.h"
#include "Platform/Foundation/Text/NSString.h"

#include <cmath>
#include <memory>
#include <unicode/uformattable.h>
#include <unicode/unum.h>

namespace {

using Formatter = std::unique_ptr<UNumberFormat, decltype(&unum_close)>;
using Parsed = std::unique_ptr<UFormattable, decltype(&ufmt_close)>;

constexpr NSUInteger longestText = 4096; ///< ICU's time grows with the square of the digits

Formatter openFormatter(const std::string &locale) {
    UErrorCode status = U_ZERO_ERROR;
    Formatter formatter(unum_open(UNUM_DECIMAL, nullptr, 0, locale.c_str(), nullptr, &status), unum_close);
    if (formatter)
        unum_setAttribute(formatter.get(), UNUM_LENIENT_PARSE, 0);
    return formatter;
}

/// Opening a formatter loads the locale's data and is slow, so each thread keeps the last one.
UNumberFormat *decimalFormatter() {
    thread_local std::string locale;
    thread_local Formatter formatter(nullptr, unum_close);
    if (std::string current = NSLocaleCurrentIdentifier(NSLocaleCategory::Numbers);
        !formatter || current != locale) {
        formatter = openFormatter(current);
        locale = std::move(current);
    }
    return formatter.get();
}

/// None for "∞", "NaN" and numbers beyond the range of doubles, which JSON cannot express.
Ref<NSNumber> finiteNumber(double value) {
    return std::isfinite(value) ? NSNumber::numberWithDouble(value) : nullptr;
}

} // namespace

Ref<NSNumber> NSNumberFormatter::numberFromString(const Ref<NSString> &text) {
    UNumberFormat *formatter = decimalFormatter();
    if (!text || text->length() > longestText || !formatter)
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    const Parsed parsed(ufmt_open(&status), ufmt_close);
    const auto length = static_cast<std::int32_t>(text->length());
    std::int32_t end = 0;
    unum_parseToUFormattable(formatter, parsed.get(), text->units().data(), length, &end, &status);
    if (U_FAILURE(status) || end != length)
        return nullptr;
    if (ufmt_getType(parsed.get(), &status) == UFMT_DOUBLE)
        return finiteNumber(ufmt_getDouble(parsed.get(), &status));
    return NSNumber::numberWithLongLong(ufmt_getInt64(parsed.get(), &status));
}
