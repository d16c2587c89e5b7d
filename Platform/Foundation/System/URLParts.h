// Splits URLs into their parts and checks them, by RFC 3986 with the zone identifiers of RFC 6874.
#pragma once

#include <optional>
#include <string_view>

#pragma GCC visibility push(default)

/// Views of the text, which must outlive them. Any text can be split; `areValid` tells whether it is a URL.
struct URLParts {
    std::optional<std::u16string_view> scheme;    ///< before ":"
    std::optional<std::u16string_view> authority; ///< behind "//"
    std::u16string_view path;
    std::optional<std::u16string_view> query;    ///< behind "?"
    std::optional<std::u16string_view> fragment; ///< behind "#"

    explicit URLParts(std::u16string_view text);

    /// Whether the parts make up an absolute or relative URL.
    bool areValid() const;
};

#pragma GCC visibility pop
