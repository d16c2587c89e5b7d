#include "Platform/Foundation/Text/NSRegularExpression.h"

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <memory>
#include <unicode/uregex.h>

NS_IMPLEMENTATION(NSRegularExpression) {}

namespace {

using Expression = std::unique_ptr<URegularExpression, decltype(&uregex_close)>;

constexpr NSUInteger longestText = 1 << 29; ///< code units; ICU counts in 32 bits

std::int32_t length(const Ref<NSString> &text) {
    return static_cast<std::int32_t>(text->length());
}

/// In ICU's units of many steps, about a millisecond each. A search in linear time through the whole text
/// stays below the limit.
std::int32_t timeLimit(const Ref<NSString> &text) {
    return 100 + length(text) / 1000;
}

} // namespace

NSRegularExpression::~NSRegularExpression() {
    uregex_close(static_cast<URegularExpression *>(expression_));
}

Ref<NSRegularExpression> NSRegularExpression::regularExpressionWithPattern(const Ref<NSString> &pattern) {
    if (!pattern || pattern->length() > longestText)
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    URegularExpression *expression =
        uregex_open(pattern->units().data(), length(pattern), 0, nullptr, &status);
    return U_SUCCESS(status) ? make<NSRegularExpression>(expression) : nullptr;
}

Ref<NSString> NSRegularExpression::stringByReplacingMatchesInString(const Ref<NSString> &text,
                                                                    const Ref<NSString> &replacement) const {
    if (!text || !replacement || text->length() > longestText || replacement->length() > longestText)
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    const Expression expression(uregex_clone(static_cast<URegularExpression *>(expression_), &status),
                                uregex_close);
    uregex_setTimeLimit(expression.get(), timeLimit(text), &status);
    uregex_setText(expression.get(), text->units().data(), length(text), &status);
    std::u16string replaced(text->length() + 64, u'\0');
    for (;;) {
        const std::int32_t size =
            uregex_replaceAll(expression.get(), replacement->units().data(), length(replacement),
                              replaced.data(), static_cast<std::int32_t>(replaced.size()), &status);
        if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR)
            return nullptr;
        replaced.resize(static_cast<std::size_t>(size));
        if (U_SUCCESS(status))
            return make<NSString>(std::move(replaced));
        status = U_ZERO_ERROR;
    }
}
