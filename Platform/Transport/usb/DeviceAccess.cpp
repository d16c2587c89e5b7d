#include "Platform/Transport/usb/DeviceAccess.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <string_view>
#include <unistd.h>

namespace fs = std::filesystem;

namespace transport {

namespace {

constexpr const char *ruleFile = "70-zkutility.rules";
constexpr const char *ruleFolders[] = {"etc/udev/rules.d", "run/udev/rules.d", "usr/local/lib/udev/rules.d",
                                       "usr/lib/udev/rules.d", "lib/udev/rules.d"};

std::string contents(const fs::path &file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string processName(const fs::path &process) {
    std::string name = contents(process / "comm");
    name.resize(name.find_last_not_of('\n') + 1);
    return name;
}

// The first word of the command line: CUPS starts its backends with the device URI in place of the program's
// name.
std::string firstArgument(const fs::path &process) {
    const std::string arguments = contents(process / "cmdline");
    return arguments.substr(0, arguments.find('\0'));
}

struct Search {
    const AttachedPrinter &printer;
    std::vector<fs::path> nodes; // its device files
    fs::path root;
    bool claimedByProgram = false; // through usbfs
};

enum class Sight { open, notOpen, hidden };

Sight look(const fs::path &descriptors, const std::vector<fs::path> &nodes) {
    std::error_code error;
    fs::directory_iterator entry(descriptors, error);
    if (error)
        return Sight::hidden;
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code unreadable;
        const fs::path target = fs::read_symlink(entry->path(), unreadable);
        if (std::ranges::find(nodes, target) != nodes.end())
            return Sight::open;
    }
    return Sight::notOpen;
}

// While a job runs, the kernel does not know the device ID from which the job's URI was made; then the serial
// number has to do.
bool printsOn(const Search &search, const std::string &uri) {
    const auto wanted = parsePrinterUri(uri);
    return search.printer.isNamed(uri) || (wanted && !wanted->serial.empty() && !search.printer.deviceId &&
                                           wanted->serial == search.printer.identity.serial);
}

std::optional<HoldingProcess> holder(const Search &search, pid_t pid) {
    const fs::path process = search.root / "proc" / std::to_string(pid);
    const Sight sight = look(process / "fd", search.nodes);
    if (sight == Sight::notOpen)
        return std::nullopt;
    HoldingProcess found{.pid = pid, .process = processName(process), .seen = sight == Sight::open};
    const std::string argument = found.process == "usb" ? firstArgument(process) : std::string();
    if (argument.starts_with("usb://"))
        found.kind = HoldingProcess::Kind::cupsBackend;
    else if (found.process == "ipp-usb")
        found.kind = HoldingProcess::Kind::ippUsb;
    const bool likely = (found.kind == HoldingProcess::Kind::cupsBackend && printsOn(search, argument)) ||
                        (found.kind == HoldingProcess::Kind::ippUsb && search.claimedByProgram);
    return found.seen || likely ? std::optional(found) : std::nullopt;
}

// All processes but this one.
std::vector<pid_t> processes(const fs::path &root) {
    std::vector<pid_t> found;
    std::error_code error;
    fs::directory_iterator entry(root / "proc", error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename();
        pid_t pid = 0;
        const auto [stop, failure] = std::from_chars(name.data(), name.data() + name.size(), pid);
        if (failure == std::errc() && stop == name.data() + name.size() && pid != ::getpid())
            found.push_back(pid);
    }
    std::ranges::sort(found);
    return found;
}

std::vector<HoldingProcess> holders(const Search &search) {
    std::vector<HoldingProcess> found;
    for (const pid_t pid : processes(search.root))
        if (auto process = holder(search, pid))
            found.push_back(std::move(*process));
    return found;
}

} // namespace

std::optional<fs::path> installedUdevRule(const fs::path &root) {
    for (const char *const folder : ruleFolders) {
        const fs::path file = root / folder / ruleFile;
        std::error_code error;
        if (fs::exists(file, error)) // a link to /dev/null switches the rule off
            return fs::is_regular_file(file, error) ? std::optional(file) : std::nullopt;
    }
    return std::nullopt;
}

bool isOpenSomewhere(const std::vector<fs::path> &nodes, const fs::path &root) {
    return std::ranges::any_of(processes(root), [&](pid_t pid) {
        return look(root / "proc" / std::to_string(pid) / "fd", nodes) == Sight::open;
    });
}

DeviceAccess deviceAccess(const AttachedPrinter &printer, const fs::path &root) {
    const fs::path node = root / printer.node().relative_path();
    DeviceAccess access{.node = printer.node(),
                        .nodeExists = ::access(node.c_str(), F_OK) == 0,
                        .mayOpen = ::access(node.c_str(), R_OK | W_OK) == 0,
                        .printNodes = printNodes(printer, root),
                        .udevRule = installedUdevRule(root)};
    Search search{.printer = printer, .nodes = access.printNodes, .root = root};
    search.nodes.push_back(printer.node());
    for (const std::string &name : printer.interfaces) {
        const fs::path interface = root / "sys/bus/usb/devices" / name;
        std::error_code none;
        const std::string driver = fs::read_symlink(interface / "driver", none).filename();
        access.kernelDriver = access.kernelDriver.empty() ? driver : access.kernelDriver;
    }
    search.claimedByProgram = access.kernelDriver == "usbfs";
    access.holders = holders(search);
    return access;
}

std::optional<DeviceAccess> accessToHeld(std::string_view uri, const std::vector<AttachedPrinter> &printers,
                                         const fs::path &root) {
    const auto named = parsePrinterUri(uri);
    if (!named || named->serial.empty())
        return std::nullopt;
    for (const AttachedPrinter &printer : printers) {
        if (printer.deviceId || printer.identity.serial != named->serial)
            continue;
        DeviceAccess access = deviceAccess(printer, root);
        if (access.kernelDriver == "usbfs")
            return access;
    }
    return std::nullopt;
}

} // namespace transport
