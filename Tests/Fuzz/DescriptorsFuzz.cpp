// What libusb makes of a device's descriptors, which contradict themselves: counts may come without their
// arrays.
#include "Platform/Transport/usb/LibusbSettings.h"
#include "Tests/Fuzz/FuzzTarget.h"

#include <algorithm>
#include <deque>
#include <libusb-1.0/libusb.h>
#include <vector>

namespace {

class Configuration {
public:
    explicit Configuration(FuzzBytes bytes) : bytes_(bytes) {
        descriptor_.bNumInterfaces = bytes_.byte();
        descriptor_.interface = arrayOf(interfaces_, descriptor_.bNumInterfaces, [this](auto &interface) {
            interface.num_altsetting = int{bytes_.byte()} - 128;
            interface.altsetting =
                arrayOf(settings_, interface.num_altsetting, [this](auto &setting) { fill(setting); });
        });
    }

    const libusb_config_descriptor &descriptor() const { return descriptor_; }

private:
    template <class Item>
    using Arrays = std::deque<std::vector<Item>>;

    /// Null, or of that many items, as libusb has it.
    template <class Item>
    const Item *arrayOf(Arrays<Item> &arrays, int count, auto fillOne) {
        if (bytes_.below(4) == 0 || bytes_.empty())
            return nullptr;
        auto &items = arrays.emplace_back(static_cast<std::size_t>(std::max(count, 0)));
        std::ranges::for_each(items, fillOne);
        return items.data();
    }
    void fill(libusb_interface_descriptor &setting) {
        for (auto *field : {&setting.bInterfaceNumber, &setting.bAlternateSetting, &setting.bInterfaceClass,
                            &setting.bInterfaceSubClass, &setting.bInterfaceProtocol, &setting.bNumEndpoints})
            *field = bytes_.byte();
        setting.endpoint = arrayOf(endpoints_, setting.bNumEndpoints, [this](auto &endpoint) {
            endpoint.bEndpointAddress = bytes_.byte();
            endpoint.bmAttributes = bytes_.byte();
            endpoint.wMaxPacketSize = static_cast<std::uint16_t>(bytes_.byte() << 8);
            endpoint.wMaxPacketSize |= bytes_.byte();
        });
    }

    FuzzBytes bytes_;
    Arrays<libusb_interface> interfaces_;
    Arrays<libusb_interface_descriptor> settings_;
    Arrays<libusb_endpoint_descriptor> endpoints_;
    libusb_config_descriptor descriptor_{};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const Configuration configuration(FuzzBytes(data, size));
    const auto settings = transport::settingsOf(configuration.descriptor());
    for (const transport::AlternateSetting &setting : settings)
        alwaysHolds((setting.bulkIn == 0) == (setting.packetSize == 0) && setting.packetSize < 2048);
    if (const auto chosen = transport::printerSetting(settings)) {
        alwaysHolds(std::ranges::find(settings, *chosen) != settings.end());
        alwaysHolds(chosen->interfaceClass == 7 && chosen->bulkIn >= 0x80 && chosen->bulkOut != 0 &&
                    chosen->bulkOut < 0x80);
    }
    return 0;
}
