// Text without the blanks around it.
#pragma once

#include <algorithm>
#include <string_view>

#pragma GCC visibility push(default)

namespace ascii {

/// The part of the text between the first and the last character that is no blank.
constexpr std::string_view trimmed(std::string_view text, std::string_view blanks = " \t\r\n\v\f") {
    const std::size_t first = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

} // namespace ascii

#pragma GCC visibility pop
