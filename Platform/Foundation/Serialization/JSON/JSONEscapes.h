// What the texts of JSON stand for.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

struct JSONUnescaped {
    std::size_t used; ///< bytes up to the closing quote
    std::size_t made; ///< bytes of the text, never more
};

/// Writes what stands behind an opening quote, up to the closing one, to `out`, which has room for as much.
/// None for what is no text: one without an end, with a control character, with an escape that there is not
/// or one half of a surrogate pair. Any thread.
std::optional<JSONUnescaped> unescapeJSON(std::string_view behindQuote, char *out);
