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

// The folder of links to all devices and interfaces. Its files are read by short relative paths and without
// streams, as there are hundreds a look.
class Tree {
public:
    explicit Tree(const fs::path &path) : folder_(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {
        std::error_code error;
        for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
            names_.push_back(entry->path().filename());
        }
    }
    ~Tree() {
        if (folder_ >= 0) {
            ::close(folder_);
        }
    }
    Tree(const Tree &) = delete;
    Tree &operator=(const Tree &) = delete;

    const std::vector<std::string> &names() const { return names_; }

    /// Without white space at its ends; none when it cannot be read.
    std::optional<std::string> attribute(const std::string &entry, const char *name) const {
        const int file = ::openat(folder_, (entry + '/' + name).c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0) {
            return std::nullopt;
        }
        std::array<char, 4096> page; // the most that an attribute has
        const ssize_t length = ::read(file, page.data(), page.size());
        ::close(file);
        if (length < 0) {
            return std::nullopt;
        }
        const std::string_view text(page.data(), static_cast<size_t>(length));
        const size_t first = std::min(text.find_first_not_of(blanks), text.size());
        return std::string(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
    }

    std::string text(const std::string &entry, const char *name) const {
        return attribute(entry, name).value_or("");
    }

    template <class Number>
    std::optional<Number> number(const std::string &entry, const char *name, int base) const {
        const std::string value = text(entry, name);
        const char *const end = value.data() + value.size();
        Number result{};
        const auto [stop, error] = std::from_chars(value.data(), end, result, base);
        return error == std::errc() && stop == end ? std::optional(result) : std::nullopt;
    }

private:
    static constexpr std::string_view blanks = " \t\r\n";

    int folder_;
    std::vector<std::string> names_;
};

// An entry is a device, "1-2.3", or one of its interfaces, "1-2.3:1.0".
bool isInterfaceOf(std::string_view device, std::string_view entry) {
    return entry.size() > device.size() && entry[device.size()] == ':' && entry.starts_with(device);
}

std::optional<AttachedPrinter> printerAt(const Tree &tree, const std::string &name, uint16_t vid) {
    AttachedPrinter printer{.vid = vid};
    for (const std::string &entry : tree.names()) {
        if (isInterfaceOf(name, entry) && tree.attribute(entry, "bInterfaceClass") == printerClass) {
            printer.interfaces.push_back(entry);
        }
    }
    if (printer.interfaces.empty()) {
        return std::nullopt;
    }
    const auto pid = tree.number<uint16_t>(name, "idProduct", 16);
    const auto bus = tree.number<int>(name, "busnum", 10);
    const auto address = tree.number<int>(name, "devnum", 10);
    if (!pid || !bus || !address) {
        return std::nullopt;
    }
    printer.pid = *pid;
    printer.bus = *bus;
    printer.address = *address;
    printer.identity = {tree.text(name, "manufacturer"), tree.text(name, "product"),
                        tree.text(name, "serial")};
    std::ranges::sort(printer.interfaces);
    if (const auto id = tree.attribute(printer.interfaces.front(), "ieee1284_id")) {
        printer.deviceId = identityOf(parseDeviceId(*id));
    }
    return printer;
}

} // namespace

fs::path AttachedPrinter::node() const {
    std::array<char, 64> path;
    std::snprintf(path.data(), path.size(), "/dev/bus/usb/%03d/%03d", bus, address);
    return path.data();
}

bool AttachedPrinter::isNamed(std::string_view uri) const {
    if (names(uri, identity)) {
        return true;
    }
    if (!deviceId) {
        return false;
    }
    const auto told = [](const std::string &text, const std::string &instead) {
        return text.empty() ? instead : text;
    };
    return names(uri, {told(deviceId->manufacturer, identity.manufacturer),
                       told(deviceId->product, identity.product), told(deviceId->serial, identity.serial)});
}

std::vector<AttachedPrinter> attachedPrinters(std::optional<int32_t> vid, const fs::path &root) {
    const Tree tree(root / "sys/bus/usb/devices");
    std::vector<AttachedPrinter> printers;
    for (const std::string &name : tree.names()) {
        if (name.find(':') != std::string::npos) {
            continue;
        }
        const auto vendor = tree.number<uint16_t>(name, "idVendor", 16);
        if (!vendor || (vid && *vid != *vendor)) {
            continue;
        }
        if (auto printer = printerAt(tree, name, *vendor)) {
            printers.push_back(std::move(*printer));
        }
    }
    std::ranges::sort(printers, {}, [](const auto &p) { return std::tuple(p.bus, p.address); });
    return printers;
}

std::vector<AttachedPrinter> attachedPrintersNamed(std::string_view uri,
                                                   const std::vector<AttachedPrinter> &printers) {
    return namedOf(printers, [&](const AttachedPrinter &printer) { return printer.isNamed(uri); });
}

} // namespace transport
