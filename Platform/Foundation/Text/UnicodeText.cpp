#include "Platform/Foundation/Text/UnicodeText.h"

#include "Platform/Runtime/Object/Raise.h"

#include <memory>
#include <unicode/ubrk.h>
#include <unicode/unorm.h>
#include <unicode/ustring.h>
#include <utility>

namespace {

/// ICU counts in 32 bits.
std::int32_t lengthOf(std::u16string_view units) {
    runtime::checkArgument("NSString characters", std::in_range<std::int32_t>(units.size()),
                           "text of 2^31 characters or more");
    return static_cast<std::int32_t>(units.size());
}

using CaseMapping = std::int32_t (*)(UChar *, std::int32_t, const UChar *, std::int32_t, const char *,
                                     UErrorCode *);

std::u16string mapped(CaseMapping mapping, std::u16string_view units) {
    constexpr const char *rootLocale = "";
    std::u16string result(units.size(), u'\0');
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const std::int32_t length =
            mapping(result.data(), lengthOf(result), units.data(), lengthOf(units), rootLocale, &status);
        const bool fits = length <= lengthOf(result);
        result.resize(static_cast<std::size_t>(length));
        if (fits)
            return result;
    }
}

/// One iterator per thread, since opening one loads the boundary rules.
UBreakIterator *characterBoundaries() {
    UErrorCode status = U_ZERO_ERROR;
    thread_local const std::unique_ptr<UBreakIterator, void (*)(UBreakIterator *)> iterator(
        ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status), ubrk_close);
    return iterator.get();
}

} // namespace

std::u16string unicode::lowercase(std::u16string_view units) {
    return mapped(u_strToLower, units);
}

std::u16string unicode::uppercase(std::u16string_view units) {
    return mapped(u_strToUpper, units);
}

int unicode::compareIgnoringCase(std::u16string_view a, std::u16string_view b) {
    UErrorCode status = U_ZERO_ERROR;
    return unorm_compare(a.data(), lengthOf(a), b.data(), lengthOf(b), U_COMPARE_IGNORE_CASE, &status);
}

NSRange unicode::widenedToCharacters(std::u16string_view units, NSRange range) {
    UBreakIterator *boundaries = characterBoundaries();
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(boundaries, units.data(), lengthOf(units), &status);
    auto first = static_cast<std::int32_t>(range.location);
    auto last = static_cast<std::int32_t>(range.location + range.length);
    if (!ubrk_isBoundary(boundaries, first))
        first =
            ubrk_preceding(boundaries, first + 1); // + 1: from within a surrogate pair it would skip the pair
    if (!ubrk_isBoundary(boundaries, last))
        last = ubrk_following(boundaries, last);
    return {static_cast<NSUInteger>(first), static_cast<NSUInteger>(last - first)};
}
