#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/HanReading.h"

#include "Platform/Locking/Mutex.h"

#include <algorithm>
#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf16.h>

using qn::han::Character;

namespace {

/// The text in Latin letters, with a blank between each two ideographs; unchanged without ICU's rules.
void transliterate(icu::UnicodeString &text) {
    static locking::Mutex one;
    const locking::MutexLock lock(one);
    static const icu::Transliterator *const fromHanToLatin ZK_PT_GUARDED_BY(one) = [] {
        UErrorCode status = U_ZERO_ERROR;
        return icu::Transliterator::createInstance("Han-Latin", UTRANS_FORWARD, status);
    }();
    if (fromHanToLatin)
        fromHanToLatin->transliterate(text);
}

bool isOfIdeograph(const Character &character) {
    return qn::han::isIdeograph(character.value);
}

using Characters = std::vector<Character>::iterator;

void addReadingsToRun(Characters first, Characters last) {
    icu::UnicodeString text;
    std::for_each(first, last, [&](const Character &one) { text.append(static_cast<UChar32>(one.value)); });
    transliterate(text);
    std::u16string_view units(text.getBuffer(), static_cast<std::size_t>(text.length()));
    for (; first != last; ++first) {
        const std::size_t end = std::min(units.find(u' '), units.size());
        // An ideograph for which ICU has no reading stays, or becomes the one that it is a variant of.
        if (!qn::han::hasIdeographs(units.substr(0, end)))
            first->reading = units.substr(0, end);
        units.remove_prefix(std::min(end + 1, units.size()));
    }
}

/// The character at `at`, which moves behind it; an unpaired surrogate as it is.
char32_t nextCharacter(std::u16string_view units, std::size_t &at) {
    const char16_t unit = units[at++];
    if (!U16_IS_LEAD(unit) || at == units.size() || !U16_IS_TRAIL(units[at]))
        return unit;
    return static_cast<char32_t>(U16_GET_SUPPLEMENTARY(unit, units[at++]));
}

} // namespace

bool qn::han::isIdeograph(char32_t character) {
    if (character < 0x3000)
        return false;
    const auto value = static_cast<UChar32>(character);
    UErrorCode status = U_ZERO_ERROR;
    return u_hasBinaryProperty(value, UCHAR_IDEOGRAPHIC) && uscript_getScript(value, &status) == USCRIPT_HAN;
}

bool qn::han::hasIdeographs(std::u16string_view units) {
    for (std::size_t at = 0; at < units.size();)
        if (isIdeograph(nextCharacter(units, at)))
            return true;
    return false;
}

std::vector<Character> qn::han::charactersOf(std::u16string_view units) {
    std::vector<Character> characters;
    characters.reserve(units.size());
    for (std::size_t at = 0; at < units.size();) {
        const std::size_t location = at;
        const char32_t character = nextCharacter(units, at);
        characters.push_back({character, location, at - location, {}});
    }
    return characters;
}

void qn::han::addReadings(std::vector<Character> &characters) {
    const auto end = characters.end();
    for (auto first = characters.begin(); first != end;) {
        first = std::find_if(first, end, isOfIdeograph);
        const auto last = std::find_if_not(first, end, isOfIdeograph);
        if (first != last)
            addReadingsToRun(first, last);
        first = last;
    }
}
