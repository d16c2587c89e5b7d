#include "Platform/Transport/usb/AttachedPrinter.h"

#include "Platform/Transport/usb/DeviceId.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace fs = std::filesystem;

namespace transport {

namespace {

constexpr std::string_view printerClass = "07";

fs::path treeAt(const fs::path &root) {
    return root / "sys/bus/usb/devices";
}

std::vector<std::string> namesIn(const fs::path &folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        names.push_back(entry->path().filename());
    return names;
}

// The folder with links to all devices and interfaces. Its files are read by short relative paths and without
// streams, as every look reads hundreds.
class Tree {
public:
    explicit Tree(const fs::path &root)
        : folder_(::open(treeAt(root).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}
    ~Tree() {
        if (folder_ >= 0)
            ::close(folder_);
    }
    Tree(const Tree &) = delete;
    Tree &operator=(const Tree &) = delete;

    /// The inode of the entry's folder; 0 when there is none.
    std::uint64_t folderNumber(const std::string &entry) const {
        struct stat status {};
        return ::fstatat(folder_, entry.c_str(), &status, 0) == 0 ? std::uint64_t{status.st_ino} : 0;
    }

    /// An attribute without white space at its ends; none when it cannot be read.
    std::optional<std::string> attribute(const std::string &entry, const char *name) const {
        const int file = ::openat(folder_, (entry + '/' + name).c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0)
            return std::nullopt;
        std::array<char, 4096> page; // the most that the kernel returns
        const ssize_t length = ::read(file, page.data(), page.size());
        ::close(file);
        if (length < 0)
            return std::nullopt;
        const std::string_view text(page.data(), static_cast<std::size_t>(length));
        const std::size_t first = std::min(text.find_first_not_of(blanks), text.size());
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
};

// Entries are devices, "1-2.3", and their interfaces, "1-2.3:1.0".
bool isInterfaceOf(std::string_view device, std::string_view entry) {
    return entry.size() > device.size() && entry[device.size()] == ':' && entry.starts_with(device);
}

// The device without its interfaces; none when it is being unplugged.
std::optional<AttachedPrinter> deviceAt(const Tree &tree, const std::string &name, std::uint16_t vid) {
    const auto pid = tree.number<std::uint16_t>(name, "idProduct", 16);
    const auto bus = tree.number<int>(name, "busnum", 10);
    const auto address = tree.number<int>(name, "devnum", 10);
    if (!pid || !bus || !address)
        return std::nullopt;
    return AttachedPrinter{
        .identity = {tree.text(name, "manufacturer"), tree.text(name, "product"), tree.text(name, "serial")},
        .vid = vid,
        .pid = *pid,
        .bus = *bus,
        .address = *address,
        .folder = tree.folderNumber(name),
        .name = name};
}

std::optional<AttachedPrinter> printerAt(const Tree &tree, const std::vector<std::string> &names,
                                         const std::string &name, std::uint16_t vid) {
    std::vector<std::string> interfaces;
    for (const std::string &entry : names)
        if (isInterfaceOf(name, entry) && tree.attribute(entry, "bInterfaceClass") == printerClass)
            interfaces.push_back(entry);
    auto printer = interfaces.empty() ? std::nullopt : deviceAt(tree, name, vid);
    if (printer) {
        std::ranges::sort(interfaces);
        if (const auto id = tree.attribute(interfaces.front(), "ieee1284_id"))
            printer->deviceId = identityOf(parseDeviceId(*id));
        printer->interfaces = std::move(interfaces);
    }
    return printer;
}

} // namespace

ListedPrinter AttachedPrinter::listed() const {
    std::string plugging;
    for (const std::uint64_t number :
         {std::uint64_t(bus), std::uint64_t(address), folder, std::uint64_t{vid}, std::uint64_t{pid}})
        plugging += std::to_string(number) + ' ';
    for (const std::string *const text : {&identity.manufacturer, &identity.product, &identity.serial})
        plugging += *text + '\n'; // texts of sysfs contain no line feed
    return {.identity = identity, .deviceId = deviceId, .vid = vid, .pid = pid, .plugging = plugging};
}

fs::path AttachedPrinter::node() const {
    std::array<char, 64> path;
    std::snprintf(path.data(), path.size(), "/dev/bus/usb/%03d/%03d", bus, address);
    return path.data();
}

std::vector<AttachedPrinter> attachedPrinters(std::optional<std::int32_t> vid, const fs::path &root) {
    const Tree tree(root);
    const std::vector<std::string> names = namesIn(treeAt(root));
    std::vector<AttachedPrinter> printers;
    for (const std::string &name : names) {
        if (name.find(':') != std::string::npos)
            continue;
        const auto vendor = tree.number<std::uint16_t>(name, "idVendor", 16);
        if (!vendor || (vid && *vid != *vendor))
            continue;
        if (auto printer = printerAt(tree, names, name, *vendor))
            printers.push_back(std::move(*printer));
    }
    std::ranges::sort(printers, {}, [](const auto &p) { return std::tuple(p.bus, p.address); });
    return printers;
}

bool isStillAttached(const AttachedPrinter &printer, const fs::path &root) {
    const Tree tree(root);
    const auto vendor = tree.number<std::uint16_t>(printer.name, "idVendor", 16);
    const auto device = vendor ? deviceAt(tree, printer.name, *vendor) : std::nullopt;
    return device && device->isSamePlugging(printer);
}

std::vector<AttachedPrinter> attachedPrintersNamed(std::string_view uri,
                                                   const std::vector<AttachedPrinter> &printers) {
    return namedOf(printers, [&](const AttachedPrinter &printer) { return printer.isNamed(uri); });
}

std::vector<fs::path> printNodes(const AttachedPrinter &printer, const fs::path &root) {
    std::vector<fs::path> nodes;
    for (const std::string &interface : printer.interfaces)
        for (const std::string &name : namesIn(treeAt(root) / interface / "usbmisc"))
            nodes.push_back(fs::path("/dev/usb") / name);
    return nodes;
}

} // namespace transport
