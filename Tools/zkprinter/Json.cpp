#include "Tools/zkprinter/Json.h"

#include "Platform/Foundation/System/NSLog.h"
#include "Tools/zkprinter/Terminal.h"

#include <boost/json/serialize.hpp>

std::string Json::quoted(std::string_view text) {
    return boost::json::serialize(boost::json::string_view(text.data(), text.size()));
}

void printJson(const std::function<void(Json &)> &fill) {
    // Control characters beyond ASCII are left as they are. They stand in strings only, where the escapes of
    // the log are JSON's, too.
    printLine(escapedControlCharacters(Json().element(fill).text()));
}
