#include "Platform/Transport/ListedPrinter.h"

#include <cstddef>
#include <cstring>

namespace transport {

bool ListedPrinter::isNamed(std::string_view uri) const {
    if (names(uri, identity))
        return true;
    if (!deviceId)
        return false;
    const auto told = [](const std::string &text, const std::string &instead) {
        return text.empty() ? instead : text;
    };
    return names(uri, {told(deviceId->manufacturer, identity.manufacturer),
                       told(deviceId->product, identity.product), told(deviceId->serial, identity.serial)});
}

tl_usb_device_info ListedPrinter::record() const {
    constexpr std::size_t fieldSize = 256; // what fits is what is recorded
    const auto fill = [](char(&field)[fieldSize], const std::string &text) {
        std::memcpy(field, text.data(), text.size());
    };
    const PrinterIdentity texts = recorded(identity);
    tl_usb_device_info info{};
    fill(info.serial, texts.serial);
    fill(info.product, texts.product);
    fill(info.manufacturer, texts.manufacturer);
    info.pid = pid;
    info.vid = vid;
    return info;
}

} // namespace transport
