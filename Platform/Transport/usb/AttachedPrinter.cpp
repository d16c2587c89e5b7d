#include "Platform/Transport/usb/AttachedPrinter.h"

#include "Platform/Transport/usb/DeviceId.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <tuple>
#include <unistd.h>

namespace fs = std::filesystem;

namespace transport {

namespace {

constexpr std::string_view printerClass = "07";

// Attributes of sysfs are at most a page long. Without a stream, as this runs hundreds of times a look.
std::optional<std::string> attribute(const fs::path &folder, const char *name) {
    const int descriptor = ::open((folder / name).c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return std::nullopt;
    }
    std::array<char, 4096> page;
    const ssize_t length = ::read(descriptor, page.data(), page.size());
    ::close(descriptor);
    if (length < 0) {
        return std::nullopt;
    }
    std::string text(page.data(), static_cast<size_t>(length));
    text.resize(text.find_last_not_of(" \t\r\n") + 1);
    return text;
}

std::string text(const fs::path &folder, const char *name) {
    std::string value = attribute(folder, name).value_or("");
    value.erase(0, value.find_first_not_of(" \t"));
    return value;
}

template <class Number>
std::optional<Number> number(const fs::path &folder, const char *name, int base) {
    const std::string value = attribute(folder, name).value_or("");
    const char *const end = value.data() + value.size();
    Number result{};
    const auto [stop, error] = std::from_chars(value.data(), end, result, base);
    return error == std::errc() && stop == end ? std::optional(result) : std::nullopt;
}

std::vector<std::string> entries(const fs::path &folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        names.push_back(entry->path().filename());
    }
    std::ranges::sort(names);
    return names;
}

std::vector<fs::path> printNodes(const fs::path &interface) {
    std::vector<fs::path> nodes;
    for (const std::string &name : entries(interface / "usbmisc")) {
        if (name.starts_with("lp")) {
            nodes.push_back("/dev/usb/" + name);
        }
    }
    return nodes;
}

std::optional<PrinterInterface> interfaceAt(const fs::path &folder) {
    if (attribute(folder, "bInterfaceClass") != printerClass) {
        return std::nullopt;
    }
    const auto interfaceNumber = number<uint8_t>(folder, "bInterfaceNumber", 16);
    if (!interfaceNumber) {
        return std::nullopt;
    }
    std::error_code none;
    return PrinterInterface{.number = *interfaceNumber,
                            .driver = fs::read_symlink(folder / "driver", none).filename(),
                            .printNodes = printNodes(folder)};
}

// An entry is a device, "1-2.3", or one of its interfaces, "1-2.3:1.0".
bool belongsTo(std::string_view device, std::string_view entry) {
    return entry.size() > device.size() && entry.starts_with(device) && entry[device.size()] == ':';
}

std::optional<AttachedPrinter> printerAt(const fs::path &folder, const std::string &name, uint16_t vid,
                                         const std::vector<std::string> &names) {
    AttachedPrinter printer{.vid = vid};
    for (const std::string &entry : names) {
        if (!belongsTo(name, entry)) {
            continue;
        }
        if (auto interface = interfaceAt(folder / entry)) {
            printer.interfaces.push_back(std::move(*interface));
            if (const auto id = attribute(folder / entry, "ieee1284_id"); id && !printer.deviceId) {
                printer.deviceId = identityOf(parseDeviceId(*id));
            }
        }
    }
    const fs::path device = folder / name;
    const auto pid = number<uint16_t>(device, "idProduct", 16);
    const auto bus = number<int>(device, "busnum", 10);
    const auto address = number<int>(device, "devnum", 10);
    if (printer.interfaces.empty() || !pid || !bus || !address) {
        return std::nullopt;
    }
    printer.pid = *pid;
    printer.bus = *bus;
    printer.address = *address;
    printer.identity = {text(device, "manufacturer"), text(device, "product"), text(device, "serial")};
    std::ranges::sort(printer.interfaces, {}, &PrinterInterface::number);
    return printer;
}

int likeness(const PrinterUri &uri, const AttachedPrinter &printer) {
    int best = uri.likeness(printer.identity);
    if (printer.deviceId) {
        PrinterIdentity id = *printer.deviceId;
        if (id.serial.empty()) {
            id.serial = printer.identity.serial;
        }
        best = std::max(best, uri.likeness(id));
    }
    return best;
}

} // namespace

fs::path AttachedPrinter::node() const {
    std::array<char, 64> path;
    std::snprintf(path.data(), path.size(), "/dev/bus/usb/%03d/%03d", bus, address);
    return path.data();
}

std::vector<AttachedPrinter> attachedPrinters(std::optional<int32_t> vid, const fs::path &root) {
    const fs::path folder = root / "sys/bus/usb/devices";
    const std::vector<std::string> names = entries(folder);
    std::vector<AttachedPrinter> printers;
    for (const std::string &name : names) {
        if (name.find(':') != std::string::npos) {
            continue;
        }
        const auto vendor = number<uint16_t>(folder / name, "idVendor", 16);
        if (!vendor || (vid && *vid != *vendor)) {
            continue;
        }
        if (auto printer = printerAt(folder, name, *vendor, names)) {
            printers.push_back(std::move(*printer));
        }
    }
    std::ranges::sort(printers, {}, [](const auto &p) { return std::tuple(p.bus, p.address); });
    return printers;
}

std::optional<AttachedPrinter> attachedPrinter(const std::string &uri,
                                               const std::vector<AttachedPrinter> &printers) {
    const std::optional<PrinterUri> wanted = PrinterUri::parse(uri);
    if (!wanted || printers.empty()) {
        return std::nullopt;
    }
    const auto fit = [&](const AttachedPrinter &printer) { return likeness(*wanted, printer); };
    const auto best = std::ranges::max_element(printers, {}, fit);
    return fit(*best) > 0 ? std::optional(*best) : std::nullopt;
}

} // namespace transport
