// The kernel's events of USB devices that come and go.
//
//     DeviceEvents events;
//     poll(events.descriptor() …);
//     for (const DeviceEvent &event : events.take()) …
//
// They come from the kernel itself (netlink), so udev need not run; in a container there may be none. Needs
// no privilege. Not thread-safe.
#pragma once

#include <memory>
#include <vector>

struct udev;
struct udev_monitor;

namespace transport {

/// A change of some USB device. A new printer may be listed only after the event of its interface.
struct DeviceEvent {
    bool removed = false; // the device was removed; sysfs may still show it for a moment
    int bus = 0;          // as in AttachedPrinter; both are 0 for an event of an interface or another part
    int address = 0;
};

class DeviceEvents {
public:
    DeviceEvents();
    ~DeviceEvents();
    DeviceEvents(const DeviceEvents &) = delete;
    DeviceEvents &operator=(const DeviceEvents &) = delete;

    /// A descriptor to poll for waiting events; -1 where the system offers none. Owned by this object.
    int descriptor() const;
    /// The waiting events, in their order. Some are missing when too many had come.
    std::vector<DeviceEvent> take();

private:
    struct Release {
        void operator()(udev *library) const;
        void operator()(udev_monitor *monitor) const;
    };

    std::unique_ptr<udev, Release> library_;
    std::unique_ptr<udev_monitor, Release> monitor_;
};

} // namespace transport
