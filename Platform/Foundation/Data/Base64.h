// Base64 in its standard alphabet, with padding.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// In one line.
std::string base64Text(std::span<const std::uint8_t> bytes);
/// None when the text, XML's white space apart, is anything but what `base64Text` makes of some bytes.
std::optional<std::vector<std::uint8_t>> base64Bytes(std::string_view text);
