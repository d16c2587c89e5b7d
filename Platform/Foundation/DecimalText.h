// Numbers as decimal text.
#pragma once

#include <charconv>
#include <cmath>
#include <concepts>
#include <string_view>

/// Room for the text of any number.
using DecimalBuffer = char[40];

template <std::integral T>
std::string_view decimalText(T value, DecimalBuffer &buffer) {
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

/// The fewest digits that read back equal; an exponent only where plain digits would be many.
template <std::floating_point T>
std::string_view decimalText(T value, DecimalBuffer &buffer) {
    const bool plain = value == 0 || (std::abs(value) >= T(1e-5) && std::abs(value) < T(1e16));
    char *const end = buffer + sizeof buffer;
    return {buffer, plain ? std::to_chars(buffer, end, value, std::chars_format::fixed).ptr
                          : std::to_chars(buffer, end, value).ptr};
}
