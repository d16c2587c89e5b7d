// The Mandarin readings of Chinese characters, as ICU's transliteration from Han to Latin has them.
//
// Its rules take some 0.1 s and 5 MB to load, which happens once, at the first reading. Any thread; readings
// are made one at a time.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qn::han {

/// Whether the character is a Chinese ideograph, of which Japanese and Korean texts have some, too.
bool isIdeograph(char32_t character);
bool hasIdeographs(std::u16string_view units);

/// One character of a text.
struct Character {
    char32_t value;       ///< half of a pair that stands alone is its own value
    std::size_t location; ///< in code units
    std::size_t length;
    std::u16string reading; ///< "dǎ"; empty for what is no ideograph and for one without a reading
};

/// The characters of a text, without readings.
std::vector<Character> charactersOf(std::u16string_view units);
/// Fills in the readings. Which of several a character has is told by its neighbours, in the few cases for
/// which ICU has rules; otherwise it has its commonest.
void addReadings(std::vector<Character> &characters);

} // namespace qn::han
