// Base64 in the standard alphabet, with padding.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

/// The number of characters that `writeBase64` writes for that many bytes.
constexpr std::size_t base64Length(std::size_t bytes) {
    return (bytes + 2) / 3 * 4;
}
/// Writes the characters of `bytes`, without line breaks, to `out`, which has room for them, and returns
/// their end.
std::uint8_t *writeBase64(std::uint8_t *out, std::span<const std::uint8_t> bytes);

/// Without line breaks.
std::string base64Text(std::span<const std::uint8_t> bytes);
/// Strict: nothing unless the text, without its spaces, tabs and line ends, is what `base64Text` returns for
/// some bytes.
std::optional<std::vector<std::uint8_t>> base64Bytes(std::string_view text);
/// Lenient: ignores characters outside the alphabet, and bits that belong to no byte. Nothing when the number
/// of characters, with padding, is not a multiple of four, and when padding stands anywhere but at the end.
std::optional<std::vector<std::uint8_t>> base64BytesWithin(std::span<const std::uint8_t> text);

#pragma GCC visibility pop
