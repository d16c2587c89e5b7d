// Why a printer cannot be opened: what stands between this user and one attached printer.
//
//     for (const auto &printer : transport::attachedPrintersNamed(uri, transport::attachedPrinters())) {
//         const transport::DeviceAccess access = transport::deviceAccess(printer);
//         if (!access.mayOpen && !access.udevRule)
//             ...                                  // install the udev rule
//         for (const transport::Holder &holder : access.holders)
//             ...                                  // holder.process holds the printer
//     }
//
// Everything is read from /proc, sysfs and the rule folders; no device is opened, nothing needs privilege,
// and what this user may not read is passed over. The answer is true of the moment it was made. No exceptions
// but std::bad_alloc. Thread-safe. Names of processes are foreign text: escape them before showing them.
#pragma once

#include "Platform/Transport/usb/AttachedPrinter.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace transport {

/// A program that holds the printer.
struct Holder {
    enum class Kind {
        cupsBackend, ///< CUPS prints: the backend "usb" runs as long as a job does
        ippUsb,      ///< the daemon that makes a printer a network printer of this machine
        other,
    };

    pid_t pid = 0;
    std::string process{}; // its name, e.g. "usb", "ipp-usb"
    Kind kind = Kind::other;
    /// True: it was seen to have the device open. False: this user may not see what it has open, and its name
    /// and its command line speak for it.
    bool seen = false;

    bool operator==(const Holder &) const = default;
};

struct DeviceAccess {
    std::filesystem::path node{}; // /dev/bus/usb/BBB/DDD
    bool nodeExists = false;      // false: unplugged meanwhile, or no /dev in this container
    bool mayOpen = false;         // whether this process may read and write the node
    std::vector<std::filesystem::path> printNodes{}; // of the kernel's printer driver: /dev/usb/lp0
    std::optional<std::filesystem::path> udevRule{}; // as installedUdevRule gives it
    std::string kernelDriver{};    // bound to the printer interface: "usblp", "usbfs" (a program) or empty
    std::vector<Holder> holders{}; // by process id; this process is not among them
};

/// The installed 70-zkutility.rules; the first of its folders. `root` stands in for "/".
std::optional<std::filesystem::path> installedUdevRule(const std::filesystem::path &root = "/");

/// Whether any process that this user may look into, but this one, has one of the files open.
bool isOpenSomewhere(const std::vector<std::filesystem::path> &nodes,
                     const std::filesystem::path &root = "/");

/// `root` as above.
DeviceAccess deviceAccess(const AttachedPrinter &printer, const std::filesystem::path &root = "/");

/// Which of the printers may be the one that the URI names by its device ID: the kernel tells that only while
/// its own driver has the printer, so of one that a program holds nothing but the serial number is known.
/// None: nothing speaks for any.
std::optional<DeviceAccess> accessToHeld(std::string_view uri, const std::vector<AttachedPrinter> &printers,
                                         const std::filesystem::path &root = "/");

} // namespace transport
