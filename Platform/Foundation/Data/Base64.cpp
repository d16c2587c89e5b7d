#include "Platform/Foundation/Data/Base64.h"

#include <algorithm>
#include <openssl/evp.h>

namespace {

constexpr std::size_t groupText = 4, groupBytes = 3;
constexpr std::size_t mostGroups = 1 << 20; // at once: lengths of the library are ints

const unsigned char *unsignedBytes(const char *bytes) {
    return reinterpret_cast<const unsigned char *>(bytes);
}

} // namespace

std::string base64Text(std::span<const std::uint8_t> bytes) {
    std::string text((bytes.size() + groupBytes - 1) / groupBytes * groupText + 1, '\0'); // and a zero
    char *out = text.data();
    while (!bytes.empty()) {
        const auto piece = bytes.first(std::min(bytes.size(), mostGroups * groupBytes));
        out += EVP_EncodeBlock(reinterpret_cast<unsigned char *>(out), piece.data(),
                               static_cast<int>(piece.size()));
        bytes = bytes.subspan(piece.size());
    }
    text.pop_back();
    return text;
}

std::optional<std::vector<std::uint8_t>> base64Bytes(std::string_view text) {
    std::string dense;
    dense.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(dense),
                 [](char byte) { return std::string_view(" \t\r\n").find(byte) == std::string_view::npos; });
    const std::size_t padding = dense.size() - std::min(dense.size(), dense.find_last_not_of('=') + 1);
    if (dense.size() % groupText != 0 || padding > 2 || dense.find('=') < dense.size() - padding)
        return std::nullopt;
    std::vector<std::uint8_t> bytes(dense.size() / groupText * groupBytes);
    for (std::size_t at = 0; at < dense.size(); at += mostGroups * groupText) {
        const std::size_t length = std::min(dense.size() - at, mostGroups * groupText);
        if (EVP_DecodeBlock(bytes.data() + at / groupText * groupBytes, unsignedBytes(dense.data()) + at,
                            static_cast<int>(length)) < 0)
            return std::nullopt;
    }
    bytes.resize(bytes.size() - padding);
    // Bits of the last character that belong to no byte are zero.
    const std::size_t rest = bytes.size() % groupBytes;
    if (rest > 0 &&
        base64Text(std::span(bytes).last(rest)) != std::string_view(dense).substr(dense.size() - groupText))
        return std::nullopt;
    return bytes;
}
