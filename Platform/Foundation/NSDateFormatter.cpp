#include "Platform/Foundation/NSDateFormatter.h"

#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSString.h"

#include <memory>
#include <unicode/udat.h>

Ref<NSString> NSDateFormatter::stringFromDate(const Ref<NSDate> &date, const Ref<NSString> &dateFormat) {
    if (!date || !dateFormat)
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UDateFormat, decltype(&udat_close)> formatter(
        udat_open(UDAT_PATTERN, UDAT_PATTERN, NSLocaleCurrentIdentifier().c_str(), nullptr, -1,
                  dateFormat->units().data(), static_cast<std::int32_t>(dateFormat->length()), &status),
        udat_close);
    std::u16string text(64, u'\0');
    for (;;) {
        if (U_FAILURE(status))
            return nullptr;
        const std::int32_t length =
            udat_format(formatter.get(), date->timeIntervalSince1970() * 1000, text.data(),
                        static_cast<std::int32_t>(text.size()), nullptr, &status);
        const bool fits = length <= static_cast<std::int32_t>(text.size());
        text.resize(static_cast<std::size_t>(length));
        if (status == U_BUFFER_OVERFLOW_ERROR)
            status = U_ZERO_ERROR;
        if (fits)
            return U_SUCCESS(status) ? make<NSString>(std::move(text)) : nullptr;
    }
}
