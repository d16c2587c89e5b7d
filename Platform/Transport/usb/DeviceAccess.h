// Why a printer cannot be opened: permissions, and programs that hold it.
//
//     for (const auto &printer : transport::attachedPrintersNamed(uri, transport::attachedPrinters())) {
//         const transport::DeviceAccess access = transport::deviceAccess(printer);
//         if (!access.mayOpen && !access.udevRule)
//             ...                                  // install the udev rule
//         for (const transport::HoldingProcess &holder : access.holders)
//             ...                                  // holder.process holds the printer
//     }
//
// Everything is read from /proc, sysfs and the rule folders; no device is opened, no privilege is needed, and
// what this user may not read is skipped. The result may be outdated as soon as it is there. Throws only
// std::bad_alloc. Thread-safe. Names of processes are foreign text: escape them before showing them.
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
struct HoldingProcess {
    enum class Kind {
        cupsBackend, ///< the backend "usb" of CUPS, which runs while a job is printed
        ippUsb,      ///< the daemon that makes a printer a network printer of this machine
        other,
    };

    pid_t pid = 0;
    std::string process{}; // its name, e.g. "usb", "ipp-usb"
    Kind kind = Kind::other;
    /// True: it has the device open. False: this user may not see its open files, but its name and command
    /// line suggest it.
    bool seen = false;

    bool operator==(const HoldingProcess &) const = default;
};

struct DeviceAccess {
    std::filesystem::path node{}; // /dev/bus/usb/BBB/DDD
    bool nodeExists = false;      // false: unplugged meanwhile, or no /dev in this container
    bool mayOpen = false;         // whether this process may read and write the node
    std::vector<std::filesystem::path> printNodes{}; // of the kernel's printer driver: /dev/usb/lp0
    std::optional<std::filesystem::path> udevRule{}; // as by installedUdevRule
    std::string kernelDriver{}; // bound to the printer interface: "usblp", "usbfs" (a program) or empty
    std::vector<HoldingProcess> holders{}; // by process id; this process is not among them
};

/// The installed 70-zkutility.rules, in the first of udev's folders that has it; none also when it is
/// overridden by something that is not a file. `root` stands for "/".
std::optional<std::filesystem::path> installedUdevRule(const std::filesystem::path &root = "/");

/// Whether another process, of those that this user may inspect, has one of the files open.
bool isOpenSomewhere(const std::vector<std::filesystem::path> &nodes,
                     const std::filesystem::path &root = "/");

/// Who may open the printer and who holds it.
DeviceAccess deviceAccess(const AttachedPrinter &printer, const std::filesystem::path &root = "/");

/// For a URI that names a printer by its device ID while a program holds that printer: the kernel knows the
/// device ID only while its own driver has the printer. Returns the access to the first held printer with an
/// unknown device ID and the URI's serial number; none without one.
std::optional<DeviceAccess> accessToHeld(std::string_view uri, const std::vector<AttachedPrinter> &printers,
                                         const std::filesystem::path &root = "/");

} // namespace transport
