// The Mandarin readings of Chinese characters, as ICU's transliteration from Han to Latin has them.
//
// Loading its rules takes about 0.1 s and 5 MB, once, at the first reading. Any thread; a lock lets one
// thread at a time read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qn::han {

/// Whether the character is a Chinese ideograph; Japanese and Korean use them, too.
bool isIdeograph(char32_t character);
bool hasIdeographs(std::u16string_view units);

/// One character of a text.
struct Character {
    char32_t value;       ///< an unpaired surrogate stands for itself
    std::size_t location; ///< in code units
    std::size_t length;
    std::u16string reading; ///< "dǎ"; empty for other characters and for ideographs without a reading
};

/// The characters of a text, without readings.
std::vector<Character> charactersOf(std::u16string_view units);
/// Fills in the readings. In the few cases for which ICU has rules, the neighbours decide between several
/// readings; otherwise it is the commonest.
void addReadings(std::vector<Character> &characters);

} // namespace qn::han
