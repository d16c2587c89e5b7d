// Base64.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"

#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t lineLength = 64;
constexpr std::uint8_t unused = 0xFF;

constexpr auto values = [] {
    std::array<std::uint8_t, 256> table;
    table.fill(unused);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        table[static_cast<std::uint8_t>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return table;
}();

using CharacterPair = std::array<char, 2>;

/// The characters of every twelve bits.
constexpr auto pairs = [] {
    std::array<CharacterPair, 4096> table;
    for (std::size_t bits = 0; bits < table.size(); ++bits)
        table[bits] = {alphabet[bits >> 6], alphabet[bits & 63]};
    return table;
}();

/// Three bytes as four characters; gives the end of them.
std::uint8_t *writeGroup(std::uint8_t *out, std::uint8_t first, std::uint8_t second, std::uint8_t third) {
    const std::uint32_t bits = std::uint32_t{first} << 16 | std::uint32_t{second} << 8 | third;
    std::memcpy(out, &pairs[bits >> 12], 2);
    std::memcpy(out + 2, &pairs[bits & 4095], 2);
    return out + 4;
}

/// In lines of 64 columns, each with a line feed behind it.
std::vector<std::uint8_t> encoded(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t bytesPerLine = lineLength / 4 * 3;
    const std::size_t characters = (bytes.size() + 2) / 3 * 4;
    std::vector<std::uint8_t> text(characters + (characters + lineLength - 1) / lineLength);
    std::uint8_t *out = text.data();
    while (!bytes.empty()) {
        const auto line = bytes.first(std::min(bytes.size(), bytesPerLine));
        bytes = bytes.subspan(line.size());
        std::size_t i = 0;
        for (; i + 3 <= line.size(); i += 3)
            out = writeGroup(out, line[i], line[i + 1], line[i + 2]);
        if (const std::size_t rest = line.size() - i; rest > 0) {
            out = writeGroup(out, line[i], rest > 1 ? line[i + 1] : std::uint8_t{0}, 0);
            std::fill(out - (3 - rest), out, std::uint8_t{'='});
        }
        *out++ = '\n';
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> decoded(std::span<const std::uint8_t> text) {
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
        if (digits % 4 != 1) // from the second digit of a group on, each completes a byte
            bytes.push_back(static_cast<std::uint8_t>(bits >> (4 - digits % 4) % 4 * 2));
    }
    return padding <= 2 && (digits + padding) % 4 == 0 ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace

Ref<NSData> qn::base64EncodedData(const Ref<NSData> &data) {
    return data ? make<NSData>(encoded(data->span())) : nullptr;
}

Ref<NSString> qn::base64EncodedString(const Ref<NSData> &data) {
    if (!data)
        return nullptr;
    const auto text = encoded(data->span());
    return make<NSString>(std::u16string(text.begin(), text.end()));
}

Ref<NSData> qn::base64DecodedData(const Ref<NSData> &data) {
    auto bytes = data ? decoded(data->span()) : std::nullopt;
    return bytes ? make<NSData>(std::move(*bytes)) : nullptr;
}

Ref<NSString> qn::base64DecodedString(const Ref<NSData> &data) {
    return UTF8String(base64DecodedData(data));
}
