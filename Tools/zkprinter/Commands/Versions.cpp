#include "Tools/zkprinter/Commands/Versions.h"

#include <dlfcn.h>
#include <filesystem>
#include <glib.h>
#include <memory>
#include <sys/utsname.h>

namespace {

FactValue orUnknown(std::string text) {
    return text.empty() ? FactValue() : FactValue(std::move(text));
}

/// The file that was loaded as libzkcomtl.so.1.
FactValue transportFile() {
    Dl_info where{};
    void *const function = dlsym(RTLD_DEFAULT, "tl_usb_get_device_handle");
    if (!function || !dladdr(function, &where) || !where.dli_fname)
        return {};
    std::error_code error;
    const auto file = std::filesystem::canonical(where.dli_fname, error);
    return error ? std::string(where.dli_fname) : file.string();
}

FactValue kernel() {
    utsname system{};
    if (uname(&system) != 0)
        return {};
    return std::string(system.sysname) + " " + system.release + " " + system.machine;
}

FactValue distribution() {
    const std::unique_ptr<char, decltype(&g_free)> name(g_get_os_info(G_OS_INFO_KEY_PRETTY_NAME), g_free);
    return orUnknown(name ? name.get() : "");
}

} // namespace

Facts versions(const std::string &printService) {
    return {{"zkprinter", std::string(ZK_VERSION)},
            {"transport", transportFile()},
            {"printService", orUnknown(printService)},
            {"kernel", kernel()},
            {"distribution", distribution()}};
}
