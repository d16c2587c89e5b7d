#include "Tools/zkprinter/Json.h"

#include "Tools/zkprinter/Terminal.h"

void printJson(const std::function<void(Json &)> &fill) {
    rapidjson::StringBuffer buffer;
    Json::Writer writer(buffer);
    Json(writer).element(fill);
    printLine({buffer.GetString(), buffer.GetSize()});
}
