#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinSyllable.h"

#include <unicode/normalizer2.h>

namespace {

constexpr std::u16string_view toneMarks = u"\u0304\u0301\u030C\u0300"; // first to fourth

icu::UnicodeString normalized(const icu::Normalizer2 *form, const icu::UnicodeString &text) {
    UErrorCode status = U_ZERO_ERROR;
    return form->normalize(text, status);
}

} // namespace

qn::PinyinSyllable::PinyinSyllable(std::u16string_view marked) : tone(5) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text(marked.data(), static_cast<std::int32_t>(marked.size()));
    const icu::UnicodeString parts = normalized(icu::Normalizer2::getNFDInstance(status), text);
    icu::UnicodeString kept;
    for (std::int32_t i = 0; i < parts.length(); ++i)
        if (const auto mark = toneMarks.find(parts[i]); mark != toneMarks.npos)
            tone = static_cast<char16_t>(mark + 1);
        else
            kept += parts[i];
    kept = normalized(icu::Normalizer2::getNFCInstance(status), kept);
    letters.assign(kept.getBuffer(), static_cast<std::size_t>(kept.length()));
}

std::u16string_view qn::PinyinSyllable::initial() const {
    const std::u16string_view all = letters;
    const bool isDouble = all.starts_with(u"zh") || all.starts_with(u"ch") || all.starts_with(u"sh");
    return all.substr(0, isDouble ? 2 : 1);
}
