// Base64 in its standard alphabet, with padding.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// How many characters `writeBase64` makes of so many bytes.
constexpr std::size_t base64Length(std::size_t bytes) {
    return (bytes + 2) / 3 * 4;
}
/// Writes the characters of `bytes`, in one line, and gives the end of them.
std::uint8_t *writeBase64(std::uint8_t *out, std::span<const std::uint8_t> bytes);

/// In one line.
std::string base64Text(std::span<const std::uint8_t> bytes);
/// None when the text, XML's white space apart, is anything but what `base64Text` makes of some bytes.
std::optional<std::vector<std::uint8_t>> base64Bytes(std::string_view text);
/// Looks over all that is not of the alphabet. None when the number of characters does not come out even, or
/// when padding stands anywhere but at the end; bits that belong to no byte may be anything.
std::optional<std::vector<std::uint8_t>> base64BytesWithin(std::span<const std::uint8_t> text);
