// The parts of a syllable of pinyin. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace qn {

struct PinyinSyllable {
    std::u16string letters; ///< without tone mark: "lü"
    char16_t tone;          ///< 1 to 4; 5 without a mark

    /// From a syllable such as "lǜ", in composed or decomposed form.
    explicit PinyinSyllable(std::u16string_view marked);

    /// The consonant at its beginning, "zh" in "zhong"; the first letter when that is a vowel.
    std::u16string_view initial() const;
};

} // namespace qn
