#include "Platform/Foundation/Dates/DateLocale.h"

#include <memory>
#include <unicode/numsys.h>

icu::Locale dateLocale(const std::string &identifier) {
    icu::Locale locale(identifier.c_str());
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::NumberingSystem> numbers(icu::NumberingSystem::createInstance(locale, status));
    if (U_SUCCESS(status) && numbers->isAlgorithmic())
        locale.setKeywordValue("numbers", "latn", status);
    return locale;
}
