// Lists of examples, written as a text of words.
#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

/// What stands between blanks and ends of lines.
inline std::vector<std::string> words(const std::string &text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}
