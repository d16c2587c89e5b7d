#include "Platform/Transport/usb/StatusText.h"

#include "Platform/Transport/Utf8.h"

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

namespace transport {

namespace {

constexpr std::uint8_t noError = 0x08, selected = 0x10, paperEmpty = 0x20;
constexpr int normal = 3, notNormal = 2;

} // namespace

std::string statusText(std::uint8_t portStatus, const DeviceId &id) {
    const bool ready = (portStatus & (noError | selected | paperEmpty)) == (noError | selected);
    boost::json::object fields;
    for (const auto &[key, value] : id)
        fields[validUtf8(key)] = validUtf8(value);
    return boost::json::serialize(boost::json::object{{"printer_status", ready ? normal : notNormal},
                                                      {"selected", (portStatus & selected) != 0},
                                                      {"paper_empty", (portStatus & paperEmpty) != 0},
                                                      {"error", (portStatus & noError) == 0},
                                                      {"device_id", fields}});
}

} // namespace transport
