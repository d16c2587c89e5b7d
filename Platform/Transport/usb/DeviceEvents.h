// The kernel's word of USB devices that come and go, as soon as they do.
//
//     DeviceEvents events;
//     poll(events.descriptor() …);
//     for (const DeviceEvent &event : events.take()) …
//
// It comes from the kernel itself (netlink), so that no udev has to run; a container may hear nothing. Needs
// no privilege. Not thread-safe.
#pragma once

#include <memory>
#include <vector>

struct udev;
struct udev_monitor;

namespace transport {

/// Something about USB changed. A printer that came may be listed only after the event of its interface.
struct DeviceEvent {
    bool removed = false; // that device, which sysfs may still show for a moment
    int bus = 0;          // as AttachedPrinter has them; 0 for an event of an interface or another part
    int address = 0;
};

class DeviceEvents {
public:
    DeviceEvents();
    ~DeviceEvents();
    DeviceEvents(const DeviceEvents &) = delete;
    DeviceEvents &operator=(const DeviceEvents &) = delete;

    /// Can be read from when events wait; -1 where the system tells none.
    int descriptor() const;
    /// Those that wait, in their order. When too many had waited, some are missing.
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
