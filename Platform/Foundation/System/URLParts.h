// The parts of a URL, and which texts are one: RFC 3986 with the zones of RFC 6874.
#pragma once

#include <optional>
#include <string_view>

/// Pieces of the text they were made of. Every text has parts; `areValid` says whether it is a URL.
struct URLParts {
    std::optional<std::u16string_view> scheme;    ///< before ":"
    std::optional<std::u16string_view> authority; ///< behind "//"
    std::u16string_view path;
    std::optional<std::u16string_view> query;    ///< behind "?"
    std::optional<std::u16string_view> fragment; ///< behind "#"

    explicit URLParts(std::u16string_view text);

    /// Of an absolute URL or of a relative one.
    bool areValid() const;
};
