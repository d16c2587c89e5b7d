#include "Platform/Transport/usb/DeviceEvents.h"

#include <charconv>
#include <libudev.h>
#include <string_view>

namespace transport {

namespace {

int numberOf(udev_device *device, const char *property) {
    const char *const value = udev_device_get_property_value(device, property);
    const std::string_view text = value ? value : "";
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

DeviceEvent eventOf(udev_device *device) {
    const char *const action = udev_device_get_action(device);
    const char *const type = udev_device_get_devtype(device);
    if (!type || std::string_view(type) != "usb_device")
        return {};
    return {.removed = action != nullptr && std::string_view(action) == "remove",
            .bus = numberOf(device, "BUSNUM"),
            .address = numberOf(device, "DEVNUM")};
}

} // namespace

void DeviceEvents::Release::operator()(udev *library) const {
    udev_unref(library);
}

void DeviceEvents::Release::operator()(udev_monitor *monitor) const {
    udev_monitor_unref(monitor);
}

DeviceEvents::DeviceEvents() : library_(udev_new()) {
    monitor_.reset(library_ ? udev_monitor_new_from_netlink(library_.get(), "kernel") : nullptr);
    if (monitor_ && (udev_monitor_filter_add_match_subsystem_devtype(monitor_.get(), "usb", nullptr) < 0 ||
                     udev_monitor_enable_receiving(monitor_.get()) < 0))
        monitor_.reset();
}

DeviceEvents::~DeviceEvents() = default;

int DeviceEvents::descriptor() const {
    return monitor_ ? udev_monitor_get_fd(monitor_.get()) : -1;
}

std::vector<DeviceEvent> DeviceEvents::take() {
    std::vector<DeviceEvent> events;
    while (udev_device *const device = monitor_ ? udev_monitor_receive_device(monitor_.get()) : nullptr) {
        events.push_back(eventOf(device));
        udev_device_unref(device);
    }
    return events;
}

} // namespace transport
