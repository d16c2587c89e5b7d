// A syllable of pinyin taken apart. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace qn {

struct PinyinSyllable {
    std::u16string letters; ///< without tone mark: "lü"
    char16_t tone;          ///< 1 to 4; 5 without a mark

    /// Of "lǜ", composed or not.
    explicit PinyinSyllable(std::u16string_view marked);

    /// The consonant that it begins with, "zh" of "zhong"; the first letter when it begins with a vowel.
    std::u16string_view initial() const;
};

} // namespace qn
