// Unescapes the strings of JSON.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#pragma GCC visibility push(default)

struct JSONUnescaped {
    std::size_t used; ///< bytes up to the closing quote
    std::size_t made; ///< bytes of the unescaped string, never more than `used`
};

/// Unescapes the string that follows an opening quote, up to the closing one, into `out`, which has room for
/// as many bytes as `behindQuote`. Bytes above 127 are copied unchecked. Nothing for an invalid string:
/// without an end, with a control character, with an unknown escape or with half a surrogate pair. Safe from
/// any thread.
std::optional<JSONUnescaped> unescapeJSON(std::string_view behindQuote, char *out);

#pragma GCC visibility pop
