#include "Tools/zkprinter/Printing/Json.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Printing/Terminal.h"

#include <array>
#include <boost/json/serialize.hpp>
#include <charconv>

std::string Json::quoted(std::string_view text) {
    return boost::json::serialize(boost::json::string_view(text.data(), text.size()));
}

Json &Json::field(const char *key, double number) {
    std::array<char, 64> digits;
    const auto [end, error] =
        std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, 3);
    return begin(key).put(error == std::errc() ? std::string_view(digits.data(), end) : "null");
}

void printJson(const std::function<void(Json &)> &fill) {
    // The serializer does not escape control characters beyond ASCII. They occur in strings only, where the
    // log's escapes are valid JSON.
    printLine(escapedControlCharacters(Json()
                                           .element([&](Json &document) {
                                               document.field("schema", jsonSchema);
                                               fill(document);
                                           })
                                           .text()));
}
