// Conversions between UTF-8 and UTF-16 that say when a text is not valid.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace unicode {

/// None when the bytes are not valid UTF-8.
std::optional<std::u16string> utf16FromUTF8(std::string_view bytes);
bool isValidUTF8(std::string_view bytes);
/// The index of the first surrogate that stands alone; nothing when none does.
std::optional<std::size_t> loneSurrogate(std::u16string_view units);
/// None when a surrogate stands alone.
std::optional<std::string> utf8FromUTF16(std::u16string_view units);
/// Writes the character at `index`, which moves behind it, and gives how many bytes that took, at most 3 a
/// unit; 0 when a surrogate stands alone there.
std::size_t encodeCharacter(std::u16string_view units, std::size_t &index, char *bytes);
/// Appends the text; a surrogate that stands alone becomes U+FFFD.
void appendUTF8(std::string &out, std::u16string_view units);
/// Appends the text; an invalid sequence becomes U+FFFD.
void appendUTF16(std::u16string &out, std::string_view bytes);

} // namespace unicode
