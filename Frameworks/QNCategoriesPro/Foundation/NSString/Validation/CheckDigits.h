// Check digits of numbers in texts. Any thread.
#pragma once

#include <string_view>

namespace qn {

/// Only "0" to "9", and at least one.
bool isDigits(std::u16string_view text);

/// Each expects a text of the characters that its parameter names.
bool passesLuhn(std::u16string_view digits);
bool passesMod11_2(std::u16string_view digitsAndCheck);
/// ISO 7064 MOD 97-10, letters as 10 to 35.
bool passesMod97(std::u16string_view digitsAndCapitals);

} // namespace qn
