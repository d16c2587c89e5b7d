#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinText.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinSyllable.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

namespace {

constexpr std::size_t nowhere = std::u16string_view::npos;

char32_t folded(char32_t character) {
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT));
}

/// A typed character.
struct Key {
    char32_t character; ///< in lower case
    char16_t letter;    ///< as a letter of pinyin, without its tone; 0 when it is none
    bool isMark;        ///< a combining mark of the letter before it
    bool isSeparator;   ///< may stand between syllables

    explicit Key(char32_t typed)
        : character(folded(typed)), letter(letterOf(character)),
          isMark(u_charType(static_cast<UChar32>(typed)) == U_NON_SPACING_MARK),
          isSeparator(typed == U' ' || typed == U'\'' || typed == U'\u2019') {}

    bool isFor(char16_t wanted) const {
        return letter == wanted || (wanted == u'ü' && (letter == u'u' || letter == u'v'));
    }

private:
    static char16_t letterOf(char32_t character) {
        UErrorCode status = U_ZERO_ERROR;
        icu::UnicodeString parts(static_cast<UChar32>(character));
        icu::Normalizer2::getNFDInstance(status)->getDecomposition(static_cast<UChar32>(character), parts);
        if (parts[0] == u'u' && parts.indexOf(u'\u0308') > 0)
            return u'ü';
        return parts[0] >= u'a' && parts[0] <= u'z' ? parts[0] : u'\0';
    }
};

std::vector<Key> keysOf(const Ref<NSString> &typed) {
    std::vector<Key> keys;
    if (typed)
        for (const auto &one : qn::han::charactersOf(typed->units()))
            keys.emplace_back(one.value);
    return keys;
}

/// Advances matches by one character of the text. A match is known by how many keys it has used, and where it
/// starts; of several with the same keys only the longest is kept.
class Step {
public:
    Step(const std::vector<Key> &keys, std::vector<std::size_t> &starts) : keys_(keys), starts_(starts) {}

    /// Advances a match that has used the keys before `key` and starts at `start`.
    void go(const qn::han::Character &character, std::size_t key, std::size_t start) {
        if (keys_[key].character == character.value)
            reach(key + 1, start);
        for (const char16_t letter : character.reading) {
            if (key == keys_.size() || !keys_[key].isFor(letter))
                return;
            ++key;
            while (key < keys_.size() && keys_[key].isMark)
                ++key;
            reach(key, start);
            for (std::size_t next = key; next < keys_.size() && keys_[next].isSeparator;)
                reach(++next, start);
        }
    }

private:
    void reach(std::size_t key, std::size_t start) { starts_[key] = std::min(starts_[key], start); }

    const std::vector<Key> &keys_;
    std::vector<std::size_t> &starts_;
};

} // namespace

void qn::PinyinText::prepare() const {
    characters_ = han::charactersOf(text_->units());
    isUnread_ = han::hasIdeographs(text_->units());
    for (auto &one : characters_)
        one.value = folded(one.value);
}

void qn::PinyinText::read() const {
    han::addReadings(characters_);
    for (auto &one : characters_)
        if (!one.reading.empty())
            one.reading = PinyinSyllable(one.reading).letters;
    isUnread_ = false;
}

NSRange qn::PinyinText::rangeOf(const Ref<NSString> &typed) const {
    return search(typed, At::anywhere);
}

bool qn::PinyinText::hasPrefix(const Ref<NSString> &typed) const {
    return search(typed, At::beginning).length > 0;
}

NSRange qn::PinyinText::search(const Ref<NSString> &typed, At place) const {
    const std::vector<Key> keys = keysOf(typed);
    if (!text_ || keys.empty())
        return {NSNotFound, 0};
    if (characters_.empty())
        prepare();
    if (isUnread_ && std::any_of(keys.begin(), keys.end(), [](const Key &key) { return key.letter != 0; }))
        read();
    // All matches in parallel: per number of used keys, where the longest such match starts.
    std::vector<std::size_t> starts(keys.size() + 1, nowhere), next(starts);
    for (std::size_t i = 0; i < characters_.size(); ++i) {
        starts[0] = place == At::anywhere || i == 0 ? i : nowhere;
        std::fill(next.begin(), next.end(), nowhere);
        Step step(keys, next);
        for (std::size_t key = 0; key < keys.size(); ++key)
            if (starts[key] != nowhere)
                step.go(characters_[i], key, starts[key]);
        if (const std::size_t start = next.back(); start != nowhere) {
            const std::size_t location = characters_[start].location;
            return {location, characters_[i].location + characters_[i].length - location};
        }
        starts.swap(next);
    }
    return {NSNotFound, 0};
}
