// The USB printers of this machine as the kernel's device tree in sysfs describes them.
//
// Reading it opens no device and causes no traffic on the bus, so it never disturbs a job: cheap enough for
// a look every other second. Nothing is cached. Thread-safe.
#pragma once

#include "Platform/Transport/PrinterUri.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace transport {

/// One attached device with at least one printer-class interface, at the time it was looked at.
struct AttachedPrinter {
    PrinterIdentity identity{};
    std::optional<PrinterIdentity>
        deviceId{}; // by its IEEE 1284 device ID, where the kernel read that already
    uint16_t vid = 0;
    uint16_t pid = 0;
    int bus = 0;     // with the address: this plugging-in of this device, as no two at a time share it
    int address = 0; // changes each time the device is plugged in
    std::vector<std::string> interfaces{}; // of the printer class, by their names in sysfs, e.g. "1-2:1.0"

    /// /dev/bus/usb/BBB/DDD.
    std::filesystem::path node() const;

    /// Whether the URI names it: by its descriptors, or by its device ID, as CUPS does.
    bool isNamed(std::string_view uri) const;

    bool isSamePlugging(const AttachedPrinter &other) const {
        return bus == other.bus && address == other.address && vid == other.vid && pid == other.pid &&
               identity == other.identity;
    }
};

/// The attached printers, by bus and address; those of one vendor, or all. `root` stands in for "/".
std::vector<AttachedPrinter> attachedPrinters(std::optional<int32_t> vid = std::nullopt,
                                              const std::filesystem::path &root = "/");

/// Those that the URI names; see PrinterUri.h.
std::vector<AttachedPrinter> attachedPrintersNamed(std::string_view uri,
                                                   const std::vector<AttachedPrinter> &printers);

} // namespace transport
