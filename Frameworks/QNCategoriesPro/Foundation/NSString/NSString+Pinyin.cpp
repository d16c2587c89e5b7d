#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+Pinyin.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/HanReading.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinSyllable.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinText.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <unicode/uchar.h>

using qn::PinyinSyllable;
using qn::han::Character;

namespace {

bool isLetterOrDigit(const Character &character) {
    return u_isalnum(static_cast<UChar32>(character.value));
}

/// The text with what `write(made, character)` appends instead of each character that has a reading.
template <class Write>
Ref<NSString> replacing(const Ref<NSString> &text, bool spaced, Write write) {
    if (!text || !qn::han::hasIdeographs(text->units()))
        return text;
    auto characters = qn::han::charactersOf(text->units());
    qn::han::addReadings(characters);
    std::u16string made;
    made.reserve(4 * characters.size());
    const Character *before = nullptr;
    for (const Character &one : characters) {
        const bool isSyllable = !one.reading.empty(), followsSyllable = before && !before->reading.empty();
        if (spaced && before && (isSyllable || followsSyllable) && (isSyllable || isLetterOrDigit(one)) &&
            (followsSyllable || isLetterOrDigit(*before)))
            made += u' ';
        if (isSyllable)
            write(made, one);
        else
            made += text->units().substr(one.location, one.length);
        before = &one;
    }
    return make<NSString>(std::move(made));
}

Ref<NSString> caseFolded(const Ref<NSString> &text) {
    std::u16string folded;
    folded.reserve(text->length());
    for (const Character &one : qn::han::charactersOf(text->units())) {
        const auto value = u_foldCase(static_cast<UChar32>(one.value), U_FOLD_CASE_DEFAULT);
        if (value > 0xFFFF)
            folded += static_cast<char16_t>(0xD7C0 + (value >> 10));
        folded += static_cast<char16_t>(value > 0xFFFF ? 0xDC00 | (value & 0x3FF) : value);
    }
    return make<NSString>(std::move(folded));
}

} // namespace

Ref<NSString> qn::pinyin(const Ref<NSString> &text) {
    return replacing(text, true, [](std::u16string &made, const Character &one) { made += one.reading; });
}

Ref<NSString> qn::pinyinWithoutToneMarks(const Ref<NSString> &text) {
    return replacing(text, true, [](std::u16string &made, const Character &one) {
        made += PinyinSyllable(one.reading).letters;
    });
}

Ref<NSString> qn::pinyinInitials(const Ref<NSString> &text) {
    return replacing(text, true, [](std::u16string &made, const Character &one) {
        made += PinyinSyllable(one.reading).initial();
    });
}

Ref<NSString> qn::pinyinFirstLetters(const Ref<NSString> &text) {
    return replacing(text, false, [](std::u16string &made, const Character &one) {
        made += PinyinSyllable(one.reading).letters.front();
    });
}

// The letters are followed by a character below all letters, so that "ha" comes before "hao".
Ref<NSString> qn::pinyinSortingKey(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    const auto folded = caseFolded(text);
    return replacing(folded, false, [&](std::u16string &made, const Character &one) {
        PinyinSyllable syllable(one.reading);
        const auto dots = static_cast<char16_t>(syllable.letters.find(u'ü') == std::u16string::npos ? 0 : 5);
        std::replace(syllable.letters.begin(), syllable.letters.end(), u'ü', u'u');
        made += syllable.letters;
        made += static_cast<char16_t>(u'0' + dots + syllable.tone);
        made += folded->units().substr(one.location, one.length);
    });
}

NSRange qn::rangeOfPinyin(const Ref<NSString> &text, const Ref<NSString> &typed) {
    return PinyinText(text).rangeOf(typed);
}

bool qn::hasPinyinPrefix(const Ref<NSString> &text, const Ref<NSString> &typed) {
    return PinyinText(text).hasPrefix(typed);
}
