#include "Platform/Foundation/Data/Base64.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t unused = 0xFF;

constexpr auto values = [] {
    std::array<std::uint8_t, 256> table;
    table.fill(unused);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        table[static_cast<std::uint8_t>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return table;
}();

using CharacterPair = std::array<char, 2>;

/// The two characters for each value of twelve bits, so that three bytes take two lookups.
constexpr auto pairs = [] {
    std::array<CharacterPair, 4096> table;
    for (std::size_t bits = 0; bits < table.size(); ++bits)
        table[bits] = {alphabet[bits >> 6], alphabet[bits & 63]};
    return table;
}();

/// Writes three bytes as four characters; returns their end.
std::uint8_t *writeGroup(std::uint8_t *out, std::uint8_t first, std::uint8_t second, std::uint8_t third) {
    const std::uint32_t bits = std::uint32_t{first} << 16 | std::uint32_t{second} << 8 | third;
    std::memcpy(out, &pairs[bits >> 12], 2);
    std::memcpy(out + 2, &pairs[bits & 4095], 2);
    return out + 4;
}

std::span<const std::uint8_t> unsignedBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t *>(text.data()), text.size()};
}

} // namespace

std::uint8_t *writeBase64(std::uint8_t *out, std::span<const std::uint8_t> bytes) {
    std::size_t i = 0;
    for (; i + 3 <= bytes.size(); i += 3)
        out = writeGroup(out, bytes[i], bytes[i + 1], bytes[i + 2]);
    if (const std::size_t rest = bytes.size() - i; rest > 0) {
        out = writeGroup(out, bytes[i], rest > 1 ? bytes[i + 1] : std::uint8_t{0}, 0);
        std::fill(out - (3 - rest), out, std::uint8_t{'='});
    }
    return out;
}

std::string base64Text(std::span<const std::uint8_t> bytes) {
    std::string text(base64Length(bytes.size()), '\0');
    writeBase64(reinterpret_cast<std::uint8_t *>(text.data()), bytes);
    return text;
}

std::optional<std::vector<std::uint8_t>> base64Bytes(std::string_view text) {
    std::string dense;
    dense.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(dense),
                 [](char byte) { return std::string_view(" \t\r\n").find(byte) == std::string_view::npos; });
    auto bytes = base64BytesWithin(unsignedBytes(dense));
    return bytes && base64Text(*bytes) == dense ? std::move(bytes) : std::nullopt;
}

std::optional<std::vector<std::uint8_t>> base64BytesWithin(std::span<const std::uint8_t> text) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    std::size_t digits = 0, padding = 0;
    for (const std::uint8_t character : text) {
        const bool pads = character == '=';
        if (!pads && values[character] == unused)
            continue;
        if (padding > 0 && !pads)
            return std::nullopt;
        padding += pads;
        digits += !pads;
        if (pads)
            continue;
        bits = bits << 6 | values[character];
        if (digits % 4 != 1) // in a group of four, every digit but the first completes a byte
            bytes.push_back(static_cast<std::uint8_t>(bits >> (4 - digits % 4) % 4 * 2));
    }
    return padding <= 2 && (digits + padding) % 4 == 0 ? std::optional(std::move(bytes)) : std::nullopt;
}
