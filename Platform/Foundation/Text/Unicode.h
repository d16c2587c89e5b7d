// Conversions between UTF-8 and UTF-16, which report invalid text. Safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace unicode {

/// Nothing when the bytes are not valid UTF-8.
std::optional<std::u16string> utf16FromUTF8(std::string_view bytes);
bool isValidUTF8(std::string_view bytes);
/// The index of the first lone surrogate; nothing without one.
std::optional<std::size_t> loneSurrogate(std::u16string_view units);
/// Nothing for a text with a lone surrogate.
std::optional<std::string> utf8FromUTF16(std::u16string_view units);
/// Writes the character at `index` as UTF-8 to `bytes`, which has room for 4, moves `index` behind the
/// character and returns the number of bytes: at most 3 per code unit, 0 for a lone surrogate.
std::size_t encodeCharacter(std::u16string_view units, std::size_t &index, char *bytes);
/// Appends the text; a lone surrogate becomes U+FFFD.
void appendUTF8(std::string &out, std::u16string_view units);
/// Appends the text; an invalid sequence becomes U+FFFD.
void appendUTF16(std::u16string &out, std::string_view bytes);

} // namespace unicode
