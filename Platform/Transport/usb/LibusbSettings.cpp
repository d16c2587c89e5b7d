#include "Platform/Transport/usb/LibusbSettings.h"

#include <cstddef>
#include <libusb-1.0/libusb.h>
#include <span>

namespace transport {

namespace {

template <class Item, class Count>
std::span<const Item> spanOf(const Item *items, Count count) {
    return !items || count <= 0 ? std::span<const Item>() : std::span(items, static_cast<std::size_t>(count));
}

AlternateSetting settingOf(const libusb_interface_descriptor &descriptor) {
    AlternateSetting setting{.interface = descriptor.bInterfaceNumber,
                             .number = descriptor.bAlternateSetting,
                             .interfaceClass = descriptor.bInterfaceClass,
                             .subclass = descriptor.bInterfaceSubClass,
                             .protocol = descriptor.bInterfaceProtocol};
    for (const auto &endpoint : spanOf(descriptor.endpoint, descriptor.bNumEndpoints)) {
        const auto packetSize = static_cast<std::uint16_t>(endpoint.wMaxPacketSize & 0x07FF);
        if ((endpoint.bmAttributes & 0x03) != LIBUSB_TRANSFER_TYPE_BULK || packetSize == 0)
            continue;
        if ((endpoint.bEndpointAddress & LIBUSB_ENDPOINT_IN) == 0) {
            setting.bulkOut = setting.bulkOut == 0 ? endpoint.bEndpointAddress : setting.bulkOut;
        } else if (setting.bulkIn == 0) {
            setting.bulkIn = endpoint.bEndpointAddress;
            setting.packetSize = packetSize;
        }
    }
    return setting;
}

} // namespace

std::vector<AlternateSetting> settingsOf(const libusb_config_descriptor &configuration) {
    std::vector<AlternateSetting> settings;
    for (const auto &interface : spanOf(configuration.interface, configuration.bNumInterfaces))
        for (const auto &alternate : spanOf(interface.altsetting, interface.num_altsetting))
            settings.push_back(settingOf(alternate));
    return settings;
}

} // namespace transport
