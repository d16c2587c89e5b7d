// Bytes as they go over the wire, made of texts and shown as texts.
#pragma once

#include "Tests/Support/Testing.h"

using Bytes = std::vector<std::uint8_t>;

inline Bytes bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

/// As in "<00acff21>".
inline std::string hex(const Bytes &bytes) {
    std::string text = "<";
    for (const std::uint8_t byte : bytes)
        text += {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15]};
    return text + ">";
}
