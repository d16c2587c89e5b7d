// Hexadecimal digits of ASCII and their values.
#pragma once

#include <cstddef>
#include <optional>

#pragma GCC visibility push(default)

namespace ascii {

/// 0 to 15; nothing for a character that is not an ASCII hexadecimal digit.
constexpr std::optional<unsigned> hexDigitValue(char16_t character) {
    if (character >= '0' && character <= '9')
        return character - u'0';
    const auto letter = static_cast<char16_t>(character | 0x20);
    return letter >= 'a' && letter <= 'f' ? std::optional<unsigned>(letter - u'a' + 10u) : std::nullopt;
}

/// The digit of the lowest four bits.
template <class Unit>
constexpr Unit lowerHexDigit(std::size_t value) {
    return static_cast<Unit>("0123456789abcdef"[value & 15]);
}

template <class Unit>
constexpr Unit upperHexDigit(std::size_t value) {
    return static_cast<Unit>("0123456789ABCDEF"[value & 15]);
}

} // namespace ascii

#pragma GCC visibility pop
