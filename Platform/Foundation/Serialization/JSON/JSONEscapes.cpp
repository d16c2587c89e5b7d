#include "Platform/Foundation/Serialization/JSON/JSONEscapes.h"

#include "Platform/Ascii/HexDigit.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace {

/// The meaning of each character behind a backslash; 0 for an unknown one.
constexpr auto letters = [] {
    std::array<char, 256> table{};
    constexpr std::string_view from = "\"\\/bfnrt", to = "\"\\/\b\f\n\r\t";
    for (std::size_t i = 0; i < from.size(); ++i)
        table[static_cast<unsigned char>(from[i])] = to[i];
    return table;
}();

/// The value of each hexadecimal digit; 16 for other characters.
constexpr auto digits = [] {
    std::array<std::uint8_t, 256> table{};
    for (char16_t character = 0; character < 256; ++character)
        table[character] = static_cast<std::uint8_t>(ascii::hexDigitValue(character).value_or(16));
    return table;
}();

constexpr std::uint64_t eachByte(std::uint8_t byte) {
    return 0x0101010101010101u * byte;
}

/// Sets the highest bit of the first of eight bytes, from the low end, that is a quote, a backslash or a
/// control character, and perhaps of later ones; 0 without one.
constexpr std::uint64_t specialBytes(std::uint64_t bytes) {
    const auto zeroBytes = [](std::uint64_t word) { return (word - eachByte(1)) & ~word; };
    return (zeroBytes(bytes ^ eachByte('"')) | zeroBytes(bytes ^ eachByte('\\')) |
            ((bytes - eachByte(0x20)) & ~bytes)) &
           eachByte(0x80);
}

bool isPlain(char byte) {
    return byte != '"' && byte != '\\' && static_cast<unsigned char>(byte) >= 0x20;
}

/// Copies characters that are not escaped, and advances both pointers.
void copyPlain(const char *&from, const char *end, char *&to) {
    static_assert(std::endian::native == std::endian::little);
    const char *at = from;
    char *out = to;
    for (std::uint64_t bytes; end - at >= 8; at += 8, out += 8) {
        std::memcpy(&bytes, at, 8);
        std::memcpy(out, &bytes, 8); // bytes from a special one on are overwritten later
        if (const std::uint64_t special = specialBytes(bytes)) {
            const int plain = std::countr_zero(special) / 8;
            from = at + plain, to = out + plain;
            return;
        }
    }
    while (at < end && isPlain(*at))
        *out++ = *at++;
    from = at, to = out;
}

/// Reads the next "\\uXXXX"; returns more than 16 bits when there is none.
std::uint32_t takeUnit(const char *&from, const char *end) {
    if (end - from < 6 || from[0] != '\\' || from[1] != 'u')
        return UINT32_MAX;
    std::uint32_t value = 0, none = 0;
    for (int i = 2; i < 6; ++i) {
        const std::uint8_t digit = digits[static_cast<unsigned char>(from[i])];
        none |= digit & 16u;
        value = value << 4 | digit;
    }
    from += 6;
    return none ? UINT32_MAX : value;
}

char *put(std::uint32_t scalar, char *out) {
    const auto byte = [&](std::uint32_t value) { *out++ = static_cast<char>(value); };
    const auto rest = [&](int shift) { byte(0x80 | (scalar >> shift & 0x3F)); };
    if (scalar < 0x80) {
        byte(scalar);
        return out;
    }
    if (scalar < 0x800) {
        byte(0xC0 | scalar >> 6);
    } else {
        if (scalar < 0x10000) {
            byte(0xE0 | scalar >> 12);
        } else {
            byte(0xF0 | scalar >> 18);
            rest(12);
        }
        rest(6);
    }
    rest(0);
    return out;
}

/// Reads the next escape and writes its meaning; false for an invalid one.
bool takeEscape(const char *&from, const char *end, char *&to) {
    if (end - from < 2)
        return false;
    const auto letter = static_cast<unsigned char>(from[1]);
    if (letter != 'u') {
        *to++ = letters[letter];
        from += 2;
        return letters[letter] != 0;
    }
    std::uint32_t scalar = takeUnit(from, end);
    if (scalar >= 0xD800 && scalar < 0xDC00) {
        const std::uint32_t low = takeUnit(from, end);
        if (low < 0xDC00 || low >= 0xE000)
            return false;
        scalar = 0x10000 + ((scalar - 0xD800) << 10) + (low - 0xDC00);
    } else if (scalar >= 0xDC00 && (scalar < 0xE000 || scalar > 0xFFFF)) {
        return false;
    }
    to = put(scalar, to);
    return true;
}

} // namespace

std::optional<JSONUnescaped> unescapeJSON(std::string_view behindQuote, char *out) {
    const char *from = behindQuote.data(), *const end = from + behindQuote.size();
    char *to = out;
    for (;;) {
        copyPlain(from, end, to);
        if (from == end)
            return std::nullopt;
        if (*from == '"')
            return JSONUnescaped{static_cast<std::size_t>(from - behindQuote.data()),
                                 static_cast<std::size_t>(to - out)};
        if (*from != '\\' || !takeEscape(from, end, to))
            return std::nullopt;
    }
}
