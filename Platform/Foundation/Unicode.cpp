#include "Platform/Foundation/Unicode.h"

#include <algorithm>
#include <cstring>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

// ICU's macros convert between signs freely.
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"

namespace {

constexpr UChar32 replacement = 0xFFFD;

/// Looks at eight bytes at a time.
bool isASCII(std::string_view bytes) {
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::uint64_t seen = 0;
    for (std::uint64_t word; bytes.size() >= sizeof word; bytes.remove_prefix(sizeof word)) {
        std::memcpy(&word, bytes.data(), sizeof word);
        seen |= word;
    }
    return !(seen & highBits) && std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= 0; });
}

/// Appends the ASCII characters that begin at index `i` and gives the index behind them.
template <class From, class To>
std::size_t appendASCII(From text, std::size_t i, To &out) {
    const auto first = text.begin() + static_cast<std::ptrdiff_t>(i);
    const auto last =
        std::find_if(first, text.end(), [](auto unit) { return static_cast<unsigned>(unit) >= 0x80; });
    const auto at = static_cast<std::ptrdiff_t>(out.size());
    out.resize(out.size() + static_cast<std::size_t>(last - first));
    std::transform(first, last, out.begin() + at,
                   [](auto unit) { return static_cast<typename To::value_type>(unit); });
    return static_cast<std::size_t>(last - text.begin());
}

void appendUnits(std::u16string &out, UChar32 character) {
    if (character <= 0xFFFF) {
        out.push_back(static_cast<char16_t>(character));
    } else {
        out.push_back(U16_LEAD(character));
        out.push_back(U16_TRAIL(character));
    }
}

// Both converters report whether the text was valid throughout; an invalid piece is replaced.
bool convert(std::string_view bytes, std::u16string &out) {
    bool valid = true;
    const char *text = bytes.data();
    const std::size_t length = bytes.size();
    out.reserve(out.size() + length);
    for (std::size_t i = appendASCII(bytes, 0, out); i < length; i = appendASCII(bytes, i, out)) {
        UChar32 character;
        U8_NEXT(text, i, length, character);
        valid = valid && character >= 0;
        appendUnits(out, character >= 0 ? character : replacement);
    }
    return valid;
}

bool convert(std::u16string_view units, std::string &out) {
    bool valid = true;
    const auto length = units.size();
    out.reserve(out.size() + length);
    for (std::size_t i = appendASCII(units, 0, out); i < length; i = appendASCII(units, i, out)) {
        char bytes[U8_MAX_LENGTH];
        std::size_t count = unicode::encodeCharacter(units, i, bytes);
        if (count == 0) {
            valid = false;
            U8_APPEND_UNSAFE(bytes, count, replacement);
        }
        out.append(bytes, count);
    }
    return valid;
}

} // namespace

std::optional<std::u16string> unicode::utf16FromUTF8(std::string_view bytes) {
    if (isASCII(bytes))
        return std::u16string(bytes.begin(), bytes.end());
    std::u16string units;
    return convert(bytes, units) ? std::optional(std::move(units)) : std::nullopt;
}

bool unicode::isValidUTF8(std::string_view bytes) {
    return isASCII(bytes) || utf16FromUTF8(bytes);
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
