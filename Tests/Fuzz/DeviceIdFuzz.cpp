// The reply to GET_DEVICE_ID, and the status text that is made of it.
#include "Platform/Transport/usb/DeviceId.h"
#include "Platform/Transport/usb/StatusText.h"
#include "Tests/Fuzz/FuzzTarget.h"

#include <boost/json/parse.hpp>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text = transport::deviceIdText({data, size});
    alwaysHolds(text.size() <= size);
    const transport::DeviceId id = transport::parseDeviceId(text);
    std::size_t total = 0;
    for (const auto &[key, value] : id) {
        alwaysHolds(!key.empty());
        total += key.size() + value.size();
    }
    alwaysHolds(total <= text.size());
    const auto &[manufacturer, product, serial] = transport::identityOf(id);
    alwaysHolds(manufacturer.size() + product.size() + serial.size() <= total);

    const std::string status = transport::statusText(size > 0 ? data[0] : std::uint8_t{0}, id);
    const boost::json::object fields = boost::json::parse(status).as_object();
    alwaysHolds(fields.at("printer_status").is_int64() &&
                fields.at("device_id").as_object().size() <= id.size());
    return 0;
}
