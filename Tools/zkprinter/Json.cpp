#include "Tools/zkprinter/Json.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Terminal.h"

#include <boost/json/serialize.hpp>

std::string Json::quoted(std::string_view text) {
    return boost::json::serialize(boost::json::string_view(text.data(), text.size()));
}

void printJson(const std::function<void(Json &)> &fill) {
    // The serializer does not escape control characters beyond ASCII. They occur in strings only, where the
    // log's escapes are valid JSON.
    printLine(escapedControlCharacters(Json().element(fill).text()));
}
