#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/TextMatcher.h"

#include <cstdint>
#include <limits>

namespace {

URegularExpression *opened(std::u16string_view pattern) {
    UErrorCode status = U_ZERO_ERROR;
    return uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), 0, nullptr, &status);
}

} // namespace

qn::TextMatcher::TextMatcher(std::u16string_view pattern) : expression_(opened(pattern), uregex_close) {}

bool qn::TextMatcher::asks(std::u16string_view text, Question question) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        return false;
    // ICU takes no null, even with no units.
    const char16_t *const units = text.empty() ? u"" : text.data();
    UErrorCode status = U_ZERO_ERROR;
    uregex_setText(expression_.get(), units, static_cast<std::int32_t>(text.size()), &status);
    return question(expression_.get(), 0, &status) && U_SUCCESS(status);
}
