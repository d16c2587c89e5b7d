#include "Platform/Transport/Utf8.h"

#include <algorithm>
#include <cstdint>

namespace transport {

namespace {

// The length of the character at the front, in bytes; 0 when it is not valid UTF-8.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t first = byte(0);
    if (first < 0x80)
        return 1;
    const std::size_t length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
    if (length == 0 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    const bool overlong = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xF0 && byte(1) < 0x90);
    const bool surrogate = first == 0xED && byte(1) >= 0xA0;
    const bool beyond = first == 0xF4 && byte(1) >= 0x90;
    return overlong || surrogate || beyond ? 0 : length;
}

} // namespace

std::string validUtf8(std::string_view text, std::size_t most) {
    constexpr std::string_view replacement = "\uFFFD";
    std::string valid;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        const std::string_view character = length > 0 ? text.substr(0, length) : replacement;
        if (character.size() > most - valid.size())
            break;
        valid += character;
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return valid;
}

} // namespace transport
