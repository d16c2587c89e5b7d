// The value of one hexadecimal digit.
#pragma once

#include <optional>

/// 0 to 15; nothing for a character that is not an ASCII hexadecimal digit.
constexpr std::optional<unsigned> hexDigitValue(char16_t character) {
    if (character >= '0' && character <= '9')
        return character - u'0';
    const auto letter = static_cast<char16_t>(character | 0x20);
    return letter >= 'a' && letter <= 'f' ? std::optional<unsigned>(letter - u'a' + 10u) : std::nullopt;
}
