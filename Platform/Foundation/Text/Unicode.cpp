#include "Platform/Foundation/Text/Unicode.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

// ICU's macros convert between signs freely.
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"

namespace {

constexpr UChar32 replacement = 0xFFFD;

/// Checks eight bytes at a time.
bool isASCII(std::string_view bytes) {
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::uint64_t seen = 0;
    for (std::uint64_t word; bytes.size() >= sizeof word; bytes.remove_prefix(sizeof word)) {
        std::memcpy(&word, bytes.data(), sizeof word);
        seen |= word;
    }
    return !(seen & highBits) && std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= 0; });
}

constexpr std::size_t atOnce = 8;
using EightBytes = unsigned char __attribute__((vector_size(atOnce)));
using EightUnits = std::uint16_t __attribute__((vector_size(2 * atOnce)));

// Both copy ASCII characters, eight at a time, up to the first eight that are not all ASCII or not complete,
// and return how many they copied.
std::size_t copyASCII(std::string_view bytes, char16_t *to) {
    std::size_t i = 0;
    for (EightBytes eight; bytes.size() - i >= atOnce; i += atOnce) {
        std::memcpy(&eight, bytes.data() + i, sizeof eight);
        if (std::bit_cast<std::uint64_t>(eight) & 0x8080808080808080u)
            break;
        const auto units = __builtin_convertvector(eight, EightUnits);
        std::memcpy(to + i, &units, sizeof units);
    }
    return i;
}

std::size_t copyASCII(std::u16string_view units, char *to) {
    std::size_t i = 0;
    for (EightUnits eight; units.size() - i >= atOnce; i += atOnce) {
        std::memcpy(&eight, units.data() + i, sizeof eight);
        const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>(eight);
        if ((halves[0] | halves[1]) & 0xFF80FF80FF80FF80u)
            break;
        const auto bytes = __builtin_convertvector(eight, EightBytes);
        std::memcpy(to + i, &bytes, sizeof bytes);
    }
    return i;
}

// Both converters append to `out` with U+FFFD for every invalid sequence, and return whether there was none.
bool convert(std::string_view bytes, std::u16string &out) {
    bool valid = true;
    const char *text = bytes.data();
    const std::size_t length = bytes.size(), before = out.size();
    out.resize(before + length); // no more units than bytes
    char16_t *to = out.data() + before;
    for (std::size_t i = 0; i < length;) {
        const std::size_t copied = copyASCII(bytes.substr(i), to);
        i += copied;
        to += copied;
        for (const std::size_t end = std::min(length, i + atOnce); i < end;) {
            UChar32 character;
            U8_NEXT(text, i, length, character);
            valid = valid && character >= 0;
            std::size_t count = 0;
            U16_APPEND_UNSAFE(to, count, character >= 0 ? character : replacement);
            to += count;
        }
    }
    out.resize(static_cast<std::size_t>(to - out.data()));
    return valid;
}

bool convert(std::u16string_view units, std::string &out) {
    bool valid = true;
    const std::size_t length = units.size(), before = out.size();
    out.resize(before + 3 * length); // a pair takes four bytes
    char *to = out.data() + before;
    for (std::size_t i = 0; i < length;) {
        const std::size_t copied = copyASCII(units.substr(i), to);
        i += copied;
        to += copied;
        for (const std::size_t end = std::min(length, i + atOnce); i < end;) {
            std::size_t count = unicode::encodeCharacter(units, i, to);
            if (count == 0) {
                valid = false;
                U8_APPEND_UNSAFE(to, count, replacement);
            }
            to += count;
        }
    }
    out.resize(static_cast<std::size_t>(to - out.data()));
    return valid;
}

} // namespace

std::optional<std::u16string> unicode::utf16FromUTF8(std::string_view bytes) {
    std::u16string units;
    return convert(bytes, units) ? std::optional(std::move(units)) : std::nullopt;
}

bool unicode::isValidUTF8(std::string_view bytes) {
    return isASCII(bytes) || utf16FromUTF8(bytes);
}

std::optional<std::size_t> unicode::loneSurrogate(std::u16string_view units) {
    for (std::size_t i = 0; i < units.size(); ++i)
        if (U16_IS_SURROGATE(units[i])) {
            const bool isPair = U16_IS_LEAD(units[i]) && i + 1 < units.size() && U16_IS_TRAIL(units[i + 1]);
            if (!isPair)
                return i;
            ++i;
        }
    return std::nullopt;
}

std::optional<std::string> unicode::utf8FromUTF16(std::u16string_view units) {
    std::string bytes;
    return convert(units, bytes) ? std::optional(std::move(bytes)) : std::nullopt;
}

std::size_t unicode::encodeCharacter(std::u16string_view units, std::size_t &index, char *bytes) {
    UChar32 character;
    U16_NEXT(units.data(), index, units.size(), character);
    std::size_t count = 0;
    if (!U_IS_SURROGATE(character))
        U8_APPEND_UNSAFE(bytes, count, character);
    return count;
}

void unicode::appendUTF8(std::string &out, std::u16string_view units) {
    convert(units, out);
}

void unicode::appendUTF16(std::u16string &out, std::string_view bytes) {
    convert(bytes, out);
}
