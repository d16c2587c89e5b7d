// The way from the root of a JSON text to one of its values, and where that is in the text.
//
//     JSONPath path;
//     path.push_back(JSONStep{"staff"});
//     path.push_back(JSONStep{2});
//     textOf(path);                     // staff[2]
//     placeAt(text, offsetOf(text, path));
//
// Threads: any.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace qn {

using JSONStep = std::variant<std::string, std::size_t>; ///< a key of an object, or an index of an array
using JSONPath = std::vector<JSONStep>;

/// "staff[2].name"; empty for the root.
std::string textOf(const JSONPath &path);

/// Where the value begins, in bytes; of equal keys it is that of the last. The text has to be valid JSON. For
/// a way that the text does not have, where its last step is that it has.
std::size_t offsetOf(std::string_view text, const JSONPath &path);

struct JSONPlace {
    std::size_t line, column; ///< from 1, in lines and in Unicode code points
};
JSONPlace placeAt(std::string_view text, std::size_t offset);

} // namespace qn
