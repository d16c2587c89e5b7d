// Base64.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"

#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSString.h"

#include <array>

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

/// One to three bytes as four characters.
void appendGroup(std::string &out, std::span<const std::uint8_t> bytes) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
        bits = bits << 8 | (i < bytes.size() ? bytes[i] : 0u);
    for (std::size_t i = 0; i < 4; ++i)
        out += i <= bytes.size() ? alphabet[bits >> (18 - 6 * i) & 63] : '=';
}

std::string encoded(std::span<const std::uint8_t> bytes) {
    std::string text;
    text.reserve((bytes.size() / 3 + 1) * 4 * (lineLength + 1) / lineLength + 1);
    std::size_t column = 0;
    for (; !bytes.empty(); bytes = bytes.subspan(std::min<std::size_t>(bytes.size(), 3))) {
        appendGroup(text, bytes.first(std::min<std::size_t>(bytes.size(), 3)));
        column = (column + 4) % lineLength;
        if (column == 0)
            text += '\n';
    }
    if (column > 0)
        text += '\n';
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
    if (!data)
        return nullptr;
    const std::string text = encoded(data->span());
    return NSData::dataWithBytes(text.data(), text.size());
}

Ref<NSString> qn::base64EncodedString(const Ref<NSData> &data) {
    return data ? NSString::stringWithUTF8String(encoded(data->span())) : nullptr;
}

Ref<NSData> qn::base64DecodedData(const Ref<NSData> &data) {
    auto bytes = data ? decoded(data->span()) : std::nullopt;
    return bytes ? make<NSData>(std::move(*bytes)) : nullptr;
}

Ref<NSString> qn::base64DecodedString(const Ref<NSData> &data) {
    return UTF8String(base64DecodedData(data));
}
