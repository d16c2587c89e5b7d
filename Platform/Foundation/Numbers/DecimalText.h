// Numbers as decimal text and back, the same in every locale. Safe from any thread.
#pragma once

#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>
#include <string_view>

/// Large enough for the text of any number.
using DecimalBuffer = char[40];

/// The text, which lies in the buffer.

template <std::integral T>
std::string_view decimalText(T value, DecimalBuffer &buffer) {
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

/// The fewest digits that read back equal; with an exponent below 1e-5 and from 1e16 (a float's: 1e7) on.
/// Other values are "nan", "inf" and "-inf".
template <std::floating_point T>
std::string_view decimalText(T value, DecimalBuffer &buffer) {
    if (std::isnan(value))
        return "nan";
    // From here on the plain text of a whole number would have more digits than needed.
    constexpr T many = std::numeric_limits<T>::digits10 > 6 ? T(1e16) : T(1e7);
    const bool plain = value == 0 || (std::abs(value) >= T(1e-5) && std::abs(value) < many);
    char *const end = buffer + sizeof buffer;
    const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
    return {buffer, std::to_chars(buffer, end, value, format).ptr};
}

/// The double nearest to the decimal number that the text begins with: an optional "-", digits with at most
/// one ".", an optional exponent. Infinite when it is too large, a zero with its sign when it is too small, 0
/// without a digit.
double doubleOfDecimalText(std::string_view text);
