#include "Tools/zkprinter/Json.h"

#include "Platform/Foundation/NSLog.h"
#include "Tools/zkprinter/Terminal.h"

void printJson(const std::function<void(Json &)> &fill) {
    rapidjson::StringBuffer buffer;
    Json::Writer writer(buffer);
    Json(writer).element(fill);
    // The writer leaves control characters beyond ASCII as they are. They stand in strings only, where the
    // escapes of the log are JSON's, too.
    printLine(escapedControlCharacters({buffer.GetString(), buffer.GetSize()}));
}
