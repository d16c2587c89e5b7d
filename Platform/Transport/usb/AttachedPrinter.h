// The USB printers of this machine, as the kernel describes them in sysfs.
//
// Reading that opens no device and causes no traffic on the bus, so it does not disturb print jobs. Nothing
// is cached. Thread-safe.
#pragma once

#include "Platform/Transport/ListedPrinter.h"

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
    std::optional<PrinterIdentity> deviceId{}; // by its IEEE 1284 device ID, where the kernel has read that
    std::uint16_t vid = 0;
    std::uint16_t pid = 0;
    int bus = 0;              // bus and address identify the device while it is attached
    int address = 0;          // usually changes when the device is plugged in again
    std::uint64_t folder = 0; // the inode of its folder in sysfs; changes whenever it is plugged in again
    std::string name{};       // of that folder, e.g. "1-2"
    std::vector<std::string> interfaces{}; // of the printer class, by their names in sysfs, e.g. "1-2:1.0"

    /// /dev/bus/usb/BBB/DDD.
    std::filesystem::path node() const;

    /// Whether the URI names it by its descriptors, or by its device ID as CUPS does.
    bool isNamed(std::string_view uri) const { return listed().isNamed(uri); }

    bool isSamePlugging(const AttachedPrinter &other) const {
        return bus == other.bus && address == other.address && folder == other.folder && vid == other.vid &&
               pid == other.pid && identity == other.identity;
    }
    ListedPrinter listed() const;
};

/// The attached printers, by bus and address; those of one vendor, or all. `root` stands in for "/".
std::vector<AttachedPrinter> attachedPrinters(std::optional<std::int32_t> vid = std::nullopt,
                                              const std::filesystem::path &root = "/");

/// Whether the printer is still the same plugging-in; reads only its own folder.
bool isStillAttached(const AttachedPrinter &printer, const std::filesystem::path &root = "/");

/// The printers that the URI names; see PrinterUri.h.
std::vector<AttachedPrinter> attachedPrintersNamed(std::string_view uri,
                                                   const std::vector<AttachedPrinter> &printers);

/// The device files that the kernel's printer driver currently has for it, such as /dev/usb/lp0.
std::vector<std::filesystem::path> printNodes(const AttachedPrinter &printer,
                                              const std::filesystem::path &root = "/");

} // namespace transport
